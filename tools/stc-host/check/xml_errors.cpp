#include "tools/stc-host/check/xml_errors.h"

#include <libxml/globals.h>

namespace stc_host {

ScopedXmlErrors::ScopedXmlErrors()
    : previous_(xmlStructuredError), previous_context_(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(this, &ScopedXmlErrors::Record);
}

ScopedXmlErrors::~ScopedXmlErrors() {
    xmlSetStructuredErrorFunc(previous_context_, previous_);
}

void ScopedXmlErrors::Record(void *self, xmlErrorPtr error) {
    auto *errors = static_cast<ScopedXmlErrors *>(self);
    if (errors->any_ || !error || error->level < XML_ERR_ERROR) {
        return;
    }
    errors->any_ = true;
    errors->line_ = error->line;
    errors->message_ = error->message ? error->message : "";
    while (!errors->message_.empty() && errors->message_.back() == '\n') {
        errors->message_.pop_back();
    }
}

}  // namespace stc_host
