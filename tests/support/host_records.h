// Host-side helpers: payloads and output lists built the way the colour framework builds them.
#ifndef STC_TESTS_SUPPORT_HOST_RECORDS_H_
#define STC_TESTS_SUPPORT_HOST_RECORDS_H_

#include <cstdint>
#include <memory>
#include <string>

#include "sc_post_blend_interface.h"

namespace stc_test {

template <typename T>
snapdragoncolor::ScPayload PayloadOf(T *record, uint32_t len = sizeof(T),
                                     snapdragoncolor::ScProperty prop = snapdragoncolor::kInvalid) {
    snapdragoncolor::ScPayload payload;
    payload.len = len;
    payload.prop = prop;
    payload.payload = reinterpret_cast<uint64_t>(record);
    return payload;
}

// An output entry for `block` holding `record` (may be null for an empty payload).
template <typename T>
snapdragoncolor::HwConfigPayload Entry(const std::string &block, std::shared_ptr<T> record) {
    snapdragoncolor::HwConfigPayload entry;
    entry.hw_asset = block;
    entry.hw_payload = record;
    entry.hw_payload_len = record ? record->version : 0;
    return entry;
}

inline snapdragoncolor::HwConfigPayload EmptyEntry(const std::string &block) {
    snapdragoncolor::HwConfigPayload entry;
    entry.hw_asset = block;
    return entry;
}

template <typename T>
T *RecordOf(const snapdragoncolor::HwConfigPayload &entry) {
    return static_cast<T *>(entry.hw_payload.get());
}

inline snapdragoncolor::ModeRenderInputParams ModeInput(uint32_t gamut, uint32_t gamma,
                                                        uint32_t intent, uint32_t id = 0) {
    snapdragoncolor::ModeRenderInputParams input;
    input.color_mode.gamut = gamut;
    input.color_mode.gamma = gamma;
    input.color_mode.intent = intent;
    input.id = id;
    return input;
}

}  // namespace stc_test

#endif  // STC_TESTS_SUPPORT_HOST_RECORDS_H_
