#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

#include "varnel/plot/detail/cell_text.h"

namespace varnel::plot::detail {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool EqualsLower(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if ((text[i] | 0x20) != (lower[i] | 0x20)) return false;
    return true;
}

/// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> kPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Plain decimals of at most 15 digits: both their digits and the power of ten are exact, so that
/// one division rounds correctly (W. D. Clinger, "How to read floating point numbers accurately",
/// 1990). False for everything else.
bool ParsePlain(std::string_view text, char decimal, double& number) {
    const char* p = text.data();
    const char* const end = p + text.size();
    const bool negative = p != end && *p == '-';
    p += negative;
    std::uint64_t digits = 0;
    const char* const first = p;
    const char* point = nullptr;
    for (; p != end; ++p) {
        const auto digit = static_cast<unsigned>(*p - '0');
        if (digit <= 9)
            digits = 10 * digits + digit;
        else if (*p == decimal && point == nullptr)
            point = p;
        else
            return false;
    }
    const auto count = (end - first) - (point != nullptr);
    if (count < 1 || count > 15) return false;
    const auto value = static_cast<double>(digits);
    const auto decimals = point == nullptr ? 0 : end - point - 1;
    const double magnitude = value / kPowersOfTen[static_cast<std::size_t>(decimals)];
    number = negative ? -magnitude : magnitude;
    return true;
}

/// The length of the space or apostrophe that sets thousands apart at `at`, 0 for none.
std::size_t GroupSign(std::string_view text, std::size_t at, char decimal) {
    const std::string_view rest = text.substr(at);
    if (rest.front() == (decimal == ',' ? '.' : ',') || rest.front() == '\'' ||
        rest.front() == ' ' || (rest.front() == '\xA0'))
        return 1;
    // The no-break, thin and narrow no-break spaces and the typographic apostrophe.
    for (const std::string_view sign : {"\u00A0", "\u2009", "\u202F", "\u2019"})
        if (rest.starts_with(sign)) return sign.size();
    return 0;
}

/// The number as std::from_chars wants it: '.' for the decimal sign, no group signs, no plus. Empty
/// when groups are not of three digits.
std::string Canonical(std::string_view text, char decimal) {
    std::string out;
    std::size_t i = 0;
    if (!text.empty() && text[0] == '+') i = 1;
    if (text.starts_with("\u2212")) {  // the minus of typesetting
        out = "-";
        i = 3;
    } else if (i < text.size() && text[i] == '-' && i == 0) {
        out = "-";
        i = 1;
    }
    std::size_t group = 0;  // digits since the last group sign
    bool grouped = false;
    while (i < text.size()) {
        if (IsDigit(text[i])) {
            out += text[i++];
            ++group;
            continue;
        }
        const std::size_t sign = GroupSign(text, i, decimal);
        if (sign == 0) break;
        if (group == 0 || group > 3 || (grouped && group != 3)) return {};
        grouped = true;
        group = 0;
        i += sign;
    }
    if (grouped && group != 3) return {};
    if (i < text.size() && text[i] == decimal) {
        out += '.';
        ++i;
    }
    return out.append(text.substr(i));
}

bool ParseAny(std::string_view text, char decimal, double& number) {
    if (!text.empty() && text.back() == '%') text = Trim(text.substr(0, text.size() - 1));
    if (text.empty()) return false;
    const std::string canonical = Canonical(text, decimal);
    // Words that std::from_chars takes for numbers ("infinity", "nan(...)") come no further than
    // "inf".
    const char first = canonical.empty() ? '\0' : canonical[canonical[0] == '-'];
    if (!IsDigit(first) && first != '.') {
        const bool negative = canonical.starts_with('-');
        if (!EqualsLower(std::string_view(canonical).substr(negative), "inf")) return false;
        number = negative ? -std::numeric_limits<double>::infinity()
                          : std::numeric_limits<double>::infinity();
        return true;
    }
    double value = 0.0;
    const char* const end = canonical.data() + canonical.size();
    const auto [stop, error] = std::from_chars(canonical.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument) return false;
    // Too large or too small for a double: std::from_chars does not say which.
    if (error == std::errc::result_out_of_range) {
        const std::size_t e = canonical.find_first_of("eE");
        const bool tiny = e != std::string::npos && canonical[e + 1] == '-';
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
        if (canonical[0] == '-') value = -value;
    }
    number = value;
    return true;
}

}  // namespace

std::string_view Trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

bool IsMissing(std::string_view trimmed) {
    if (trimmed.empty()) return true;
    if (trimmed.size() > 4 || IsDigit(trimmed.front())) return false;
    if (trimmed == "-") return true;
    for (const std::string_view word : {"na", "n/a", "nan", "null"})
        if (EqualsLower(trimmed, word)) return true;
    return false;
}

bool ParseNumber(std::string_view trimmed, char decimal, double& number) {
    return ParsePlain(trimmed, decimal, number) || ParseAny(trimmed, decimal, number);
}

bool IsUtf8(std::string_view bytes) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = p + bytes.size();
    while (p != end) {
        // Eight ASCII characters at a time.
        std::uint64_t eight = 0;
        while (end - p >= 8) {
            std::memcpy(&eight, p, 8);
            if ((eight & 0x8080808080808080U) != 0) break;
            p += 8;
        }
        if (p == end) break;
        if (*p < 0x80) {
            ++p;
            continue;
        }
        // The second byte's range excludes overlong forms, surrogates and what is above U+10FFFF.
        const unsigned lead = *p;
        const int more = lead >= 0xC2 && lead <= 0xDF   ? 1
                         : (lead & 0xF0) == 0xE0        ? 2
                         : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                        : 0;
        if (more == 0 || end - p <= more) return false;
        const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (p[1] < low || p[1] > high) return false;
        for (int i = 2; i <= more; ++i)
            if ((p[i] & 0xC0) != 0x80) return false;
        p += more + 1;
    }
    return true;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
    constexpr std::array<std::uint16_t, 32> high = {
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::string out;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const unsigned code = byte >= 0x80 && byte < 0xA0 ? high[byte - 0x80] : byte;
        if (code < 0x80) {
            out += c;
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return out;
}

}  // namespace varnel::plot::detail
