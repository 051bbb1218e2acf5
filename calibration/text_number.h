// The number rule shared by the plug-in's text files: a decimal integer as strtol reads it.
// Inline: the LUT reader converts about sixty thousand numbers at every Init.
#ifndef STC_CALIBRATION_TEXT_NUMBER_H_
#define STC_CALIBRATION_TEXT_NUMBER_H_

#include <climits>
#include <cstddef>

namespace snapdragoncolor {

// White space as the C locale's isspace() knows it.
inline bool IsCSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') <= 9;
}

struct DigitRun {
    unsigned long magnitude;
    const char *end;
};

// The rest of a digit run that went past 18 digits at `p`, saturating one past LONG_MAX.
DigitRun ScanLongDigits(const char *p, unsigned long magnitude);

// Reads a decimal integer at `*text` the way strtol(text, &end, 10) does: leading white space, an
// optional sign, at least one digit; a value beyond `long` saturates to LONG_MIN or LONG_MAX.
// On success stores the value, moves `*text` past the digits and returns true; otherwise leaves
// `*text` where the number should have started (after the white space) and returns false.
inline bool ScanDecimal(const char **text, long *value) {
    const char *p = *text;
    while (IsCSpace(*p)) {
        ++p;
    }
    *text = p;
    const bool negative = *p == '-';
    p += *p == '-' || *p == '+';
    if (!IsDigit(*p)) {
        return false;
    }
    // Eighteen digits always fit; only a longer run needs the careful path.
    size_t digits = 1;
    while (IsDigit(p[digits])) {
        ++digits;
    }
    unsigned long magnitude = 0;
    if (digits <= 18) {
        for (const char *end = p + digits; p < end; ++p) {
            magnitude = magnitude * 10 + static_cast<unsigned>(*p - '0');
        }
    } else {
        const DigitRun run = ScanLongDigits(p, 0);
        magnitude = run.magnitude;
        p = run.end;
    }
    constexpr unsigned long kLongLimit = static_cast<unsigned long>(LONG_MAX);
    if (negative) {
        *value = magnitude > kLongLimit ? LONG_MIN : -static_cast<long>(magnitude);
    } else {
        *value = magnitude > kLongLimit ? LONG_MAX : static_cast<long>(magnitude);
    }
    *text = p;
    return true;
}

}  // namespace snapdragoncolor

#endif  // STC_CALIBRATION_TEXT_NUMBER_H_
