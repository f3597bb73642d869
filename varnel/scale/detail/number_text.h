// How single numbers are written, and how long a text is.
#pragma once

#include <string>
#include <string_view>

namespace varnel::detail {

/// The number of characters of a UTF-8 text.
inline std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (const char c : text)
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    return count;
}

/// mantissa * 10^exponent with 1 <= |mantissa| < 10 and so many digits after the point; 0 is 0 * 1.
struct Exponential {
    std::string mantissa;
    int exponent = 0;
};
Exponential ToExponential(double value, int decimals);

/// The value with so many digits after the point; never "-0".
std::string FixedText(double value, int decimals);

/// Without zeros at the end behind a point, and without the point when nothing follows it.
std::string WithoutTrailingZeros(std::string text);

}  // namespace varnel::detail
