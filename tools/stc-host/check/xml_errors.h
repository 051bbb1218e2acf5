// libxml2 reports parse errors itself (on stderr by default); the checker takes them as findings.
#ifndef STC_TOOLS_STC_HOST_CHECK_XML_ERRORS_H_
#define STC_TOOLS_STC_HOST_CHECK_XML_ERRORS_H_

#include <libxml/xmlerror.h>

#include <string>

namespace stc_host {

// While it lives, libxml2's errors on this thread are kept from stderr; the first one is kept.
class ScopedXmlErrors {
  public:
    ScopedXmlErrors();
    ~ScopedXmlErrors();
    ScopedXmlErrors(const ScopedXmlErrors &) = delete;
    ScopedXmlErrors &operator=(const ScopedXmlErrors &) = delete;

    bool any() const { return any_; }
    long line() const { return line_; }
    // Without its line feed.
    const std::string &message() const { return message_; }

  private:
    static void Record(void *self, xmlErrorPtr error);

    xmlStructuredErrorFunc previous_;
    void *previous_context_;
    bool any_ = false;
    long line_ = 0;
    std::string message_;
};

}  // namespace stc_host

#endif  // STC_TOOLS_STC_HOST_CHECK_XML_ERRORS_H_
