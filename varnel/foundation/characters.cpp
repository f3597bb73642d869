#include <algorithm>
#include <array>
#include <cstddef>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/strings.h"

namespace varnel {
namespace {

/// Windows-1252's bytes 0x80 to 0x9F; elsewhere byte and character are the same number.
constexpr std::array<char16_t, 32> k80To9F = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The bytes of the valid sequence that the text starts with, 0 when there is none. The second byte
/// has a narrower range after E0, ED, F0 and F4 (The Unicode Standard, table 3-7).
std::size_t SequenceLength(std::string_view text) {
    const auto in = [&text](std::size_t i, unsigned low, unsigned high) {
        const auto byte = static_cast<unsigned char>(text[i]);
        return byte >= low && byte <= high;
    };
    if (in(0, 0x00, 0x7F)) return 1;
    const std::size_t length = in(0, 0xC2, 0xDF)   ? 2
                               : in(0, 0xE0, 0xEF) ? 3
                               : in(0, 0xF0, 0xF4) ? 4
                                                   : 0;
    if (length == 0 || text.size() < length) return 0;
    const unsigned low = in(0, 0xE0, 0xE0) ? 0xA0 : in(0, 0xF0, 0xF0) ? 0x90 : 0x80;
    const unsigned high = in(0, 0xED, 0xED) ? 0x9F : in(0, 0xF4, 0xF4) ? 0x8F : 0xBF;
    if (!in(1, low, high)) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!in(i, 0x80, 0xBF)) return 0;
    return length;
}

}  // namespace

bool detail::IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

char32_t detail::Windows1252ToUnicode(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? k80To9F[byte - 0x80U] : byte;
}

int detail::UnicodeToWindows1252(char32_t character) {
    const auto found = std::find(k80To9F.begin(), k80To9F.end(), character);
    if (found != k80To9F.end()) return 0x80 + static_cast<int>(found - k80To9F.begin());
    return character < 0x100 && (character < 0x80 || character >= 0xA0)
               ? static_cast<int>(character)
               : -1;
}

void detail::AppendUtf8(std::string& text, char32_t character) {
    const auto put = [&text](char32_t bits) { text += static_cast<char>(bits); };
    const auto tail = [&](unsigned shift) { put(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) return put(character);
    if (character < 0x800) {
        put(0xC0 | (character >> 6));
    } else if (character < 0x10000) {
        put(0xE0 | (character >> 12));
        tail(6);
    } else {
        put(0xF0 | (character >> 18));
        tail(12);
        tail(6);
    }
    tail(0);
}

CString ToUtf8(const CString& text) {
    return CString(detail::Utf8Text(text).Get());
}

}  // namespace varnel
