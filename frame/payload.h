// Access to the record behind a property payload, with the size check every handler starts with.
#ifndef STC_FRAME_PAYLOAD_H_
#define STC_FRAME_PAYLOAD_H_

#include <sys/types.h>

#include <cstdint>

#include "platform/stc_log.h"
#include "sc_post_blend_interface.h"

namespace snapdragoncolor {

// The host's record at the payload's address, unchecked; null when there is none.
template <typename T>
T *RecordAt(const ScPayload &payload) {
    return reinterpret_cast<T *>(static_cast<uintptr_t>(payload.payload));
}

// The host's record when the payload carries exactly one T, otherwise null.
template <typename T>
T *SizedRecord(const ScPayload &payload) {
    return payload.len == sizeof(T) ? RecordAt<T>(payload) : nullptr;
}

// As SizedRecord, but a refusal is logged on behalf of `function`, as setters do.
template <typename T>
T *CheckedRecord(const ScPayload &payload, const char *function) {
    T *record = SizedRecord<T>(payload);
    if (!record) {
        STC_LOGE("%s: len of Input params act %zd exp %d\n", function,
                 static_cast<ssize_t>(payload.len), static_cast<int>(sizeof(T)));
    }
    return record;
}

}  // namespace snapdragoncolor

#endif  // STC_FRAME_PAYLOAD_H_
