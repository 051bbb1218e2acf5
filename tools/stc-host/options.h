#ifndef STC_TOOLS_STC_HOST_OPTIONS_H_
#define STC_TOOLS_STC_HOST_OPTIONS_H_

#include <string>

namespace stc_host {

struct Options {
    std::string session;
    std::string library;
    std::string device;
    std::string panel;
    std::string qdutils;
    std::string log_level = "W";
    std::string dump_dir;
    bool no_qdutils = false;
    bool json = false;
    bool quiet = false;  // report nothing but failed expectations
};

// Panel handed to Init when neither the command line nor the session names one.
constexpr const char *kDefaultPanel = "zuva_a1_video";

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_OPTIONS_H_
