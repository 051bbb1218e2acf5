// Access to the record behind a property payload, with the size check every handler starts with.
#ifndef STC_FRAME_PAYLOAD_H_
#define STC_FRAME_PAYLOAD_H_

#include <sys/types.h>

#include <cstdint>
#include <memory>

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

// The configuration record of a block entry as the type its block name carries; null when empty.
template <typename T>
T *BlockRecord(const HwConfigPayload &entry) {
    return static_cast<T *>(entry.hw_payload.get());
}

// The first entry of `output` for `block`, or null.
inline HwConfigPayload *FirstBlock(HwConfigOutputParams *output, const std::string &block) {
    if (output) {
        for (HwConfigPayload &entry : output->payload) {
            if (entry.hw_asset == block) {
                return &entry;
            }
        }
    }
    return nullptr;
}

// The entry's record, made first when the host left the entry empty. std::make_shared of the
// concrete type lets the control block destroy it although the entry holds a shared_ptr<void>.
// `made` is set, never cleared, when a record had to be made.
template <typename T>
T &EnsureBlockRecord(HwConfigPayload &entry, bool &made) {
    if (!entry.hw_payload) {
        entry.hw_payload = std::make_shared<T>();
        made = true;
    }
    return *BlockRecord<T>(entry);
}

}  // namespace snapdragoncolor

#endif  // STC_FRAME_PAYLOAD_H_
