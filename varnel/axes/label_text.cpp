#include <algorithm>
#include <cstdio>

#include "varnel/axes/detail/label_text.h"

namespace varnel::detail {
namespace {

/// No label is longer: one that has more decimals than fit loses the last ones.
constexpr int kMostCharacters = 60;

CString Print(const char* format, int decimals, double value) {
    int digits = std::min(decimals, kMostCharacters);
    int length = std::snprintf(nullptr, 0, format, digits, value);
    if (length > kMostCharacters) {
        const int others = length - std::max(digits, 0);  // the point among them
        if (others > kMostCharacters + 1) return Print("%1.*e", std::min(digits, 15), value);
        digits = std::max(0, kMostCharacters - others);
        length = std::snprintf(nullptr, 0, format, digits, value);
    }
    if (length <= 0) return {};
    CString text(static_cast<std::size_t>(length), '\0');
    std::snprintf(text.data(), text.size() + 1, format, digits, value);
    return text;
}

/// Exponents are at least three digits wide where the format of labels comes from; here they have
/// two.
void WidenExponent(CString& s) {
    const std::size_t e = s.find_first_of("eE");
    if (e == CString::npos) return;
    const std::size_t digits = s.find_first_of("0123456789", e);
    if (digits != CString::npos && s.size() - digits < 3)
        s.insert(digits, 3 - (s.size() - digits), '0');
}

CString ExponentText(const char* format, int decimals, double value) {
    CString text = Print(format, decimals, value);
    WidenExponent(text);
    RemoveExpZeros(text);
    return text;
}

CString EngineeringText(double value, int decimals, const CString& suffixes) {
    std::size_t suffix = 0;
    double scale = 1.0;
    if (9.99e11 <= value && value < 1e15) {
        suffix = 4;
        scale = 1e12;
    } else if (value >= 9.99e8) {
        suffix = 3;
        scale = 1e9;
    } else if (value >= 999000.0) {
        suffix = 2;
        scale = 1e6;
    } else if (value >= 1000.0) {
        suffix = 1;
        scale = 1000.0;
    }
    CString text = Print("%1.*f", decimals, value / scale);
    if (suffix != 0 && suffix < suffixes.size()) text += suffixes[suffix];
    return text;
}

}  // namespace

CString LabelText(double value, int format, int decimals, const CString& suffixes) {
    switch (format) {
        case 1:
            return ExponentText("%1.*e", decimals, value);
        case 2:
            return EngineeringText(value, decimals, suffixes);
        case 3:
            return ExponentText("%1.*g", decimals, value);
        default:
            return Print("%1.*f", decimals, value);
    }
}

void RemoveExpZeros(CString& s) {
    if (s.size() >= 3 && s.find_first_of("eE") != CString::npos) s.erase(s.size() - 3, 1);
}

}  // namespace varnel::detail
