// Reading a session's JSON text strictly: a key given twice in one object and a number beyond
// the range of a double are errors that name their JSON path, like every other session error.
#ifndef STC_TOOLS_STC_HOST_SESSION_JSON_INPUT_H_
#define STC_TOOLS_STC_HOST_SESSION_JSON_INPUT_H_

#include <istream>
#include <stdexcept>
#include <string>

#include "tools/stc-host/records/record_json.h"

namespace stc_host {

// A mistake in the session file, with the JSON path of the value at fault ("$.calls[2].value").
class SessionError : public std::runtime_error {
  public:
    SessionError(const std::string &json_path, const std::string &message)
        : std::runtime_error(message), json_path_(json_path) {}
    const std::string &json_path() const { return json_path_; }

  private:
    std::string json_path_;
};

// Parses the whole stream; throws SessionError.
Json ParseStrictJson(std::istream &in);

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_SESSION_JSON_INPUT_H_
