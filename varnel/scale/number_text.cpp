#include "varnel/scale/detail/number_text.h"

#include <array>
#include <charconv>

namespace varnel::detail {
namespace {

/// std::to_chars takes no notice of the locale, whose comma would end up in labels.
std::string Print(double value, std::chars_format format, int decimals) {
    // The longest double has 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, decimals);
    return end.ec == std::errc() ? std::string(buffer.data(), end.ptr) : std::string();
}

}  // namespace

std::string FixedText(double value, int decimals) {
    std::string text = Print(value, std::chars_format::fixed, decimals);
    if (text.find_first_of("123456789") == std::string::npos && text.starts_with('-'))
        text.erase(0, 1);
    return text;
}

Exponential ToExponential(double value, int decimals) {
    const std::string text = Print(value, std::chars_format::scientific, decimals);
    const std::size_t e = text.find('e');
    if (e == std::string::npos) return {text, 0};
    int exponent = 0;
    const char* digits = text.data() + e + 1;
    if (*digits == '+') ++digits;
    std::from_chars(digits, text.data() + text.size(), exponent);
    return {text.substr(0, e), exponent};
}

std::string WithoutTrailingZeros(std::string text) {
    if (text.find('.') == std::string::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

}  // namespace varnel::detail
