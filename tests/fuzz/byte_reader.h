// The byte encoding of host_calls_fuzz's sessions: read front to back, so that seeds can be
// written by hand (host_calls_seeds.py).
#ifndef STC_TESTS_FUZZ_BYTE_READER_H_
#define STC_TESTS_FUZZ_BYTE_READER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace stc_fuzz {

// Past the end of the input every value is 0.
class ByteReader {
  public:
    ByteReader(const uint8_t *data, size_t size) : data_(data), size_(size) {}

    size_t Remaining() const { return size_ - pos_; }
    uint8_t Byte() { return pos_ < size_ ? data_[pos_++] : 0; }
    bool Bool() { return Byte() & 1; }
    // 0 .. n-1.
    size_t Range(size_t n) { return Byte() % n; }
    uint32_t U32() { return Raw<uint32_t>(); }
    int32_t I32() { return Raw<int32_t>(); }
    float F32() { return Raw<float>(); }
    double F64() { return Raw<double>(); }
    // Up to 600 bytes, after a two-byte length.
    std::string Text() {
        const size_t low = Byte(), high = Byte();
        size_t n = std::min<size_t>((low | high << 8) % 601, Remaining());
        std::string text(reinterpret_cast<const char *>(data_ + pos_), n);
        pos_ += n;
        return text;
    }

  private:
    template <typename T>
    T Raw() {
        uint8_t bytes[sizeof(T)];
        for (uint8_t &b : bytes) {
            b = Byte();
        }
        T value;
        std::memcpy(&value, bytes, sizeof(T));
        return value;
    }

    const uint8_t *data_;
    size_t size_;
    size_t pos_ = 0;
};

template <typename T, size_t N>
T Pick(ByteReader &in, const T (&table)[N]) {
    return table[in.Range(N)];
}

}  // namespace stc_fuzz

#endif  // STC_TESTS_FUZZ_BYTE_READER_H_
