// The characters of a text. All text is UTF-8; bytes that are not valid UTF-8 from the first to the
// last are read as Windows-1252, so that texts and files of programs that know no UTF-8 keep their
// meaning.
#pragma once

#include <string>
#include <string_view>

#include "varnel/foundation/export.h"

namespace varnel::detail {

/// Whether all bytes together are valid UTF-8: no overlong forms, no surrogates, nothing above
/// U+10FFFF.
VARNEL_API bool IsUtf8(std::string_view text);

/// The Unicode character of a Windows-1252 byte; the five bytes without one give themselves.
VARNEL_API char32_t Windows1252ToUnicode(unsigned char byte);

/// The Windows-1252 byte of a Unicode character, -1 when it has none.
VARNEL_API int UnicodeToWindows1252(char32_t character);

/// Appends a character (a Unicode scalar value) in UTF-8.
VARNEL_API void AppendUtf8(std::string& text, char32_t character);

/// Takes the next character off the front of a text that is valid UTF-8 and not empty.
inline char32_t TakeUtf8(std::string_view& text) {
    const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80 ? 1U : first < 0xE0 ? 2U : first < 0xF0 ? 3U : 4U;
    char32_t character = length == 1 ? first : first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i)
        character = (character << 6) | (byte(i) & 0x3FU);
    text.remove_prefix(length);
    return character;
}

/// A text in UTF-8, converted where it has to be. The bytes given must outlive it.
class Utf8Text {
 public:
    explicit Utf8Text(std::string_view text) : m_Given(text), m_IsGiven(IsUtf8(text)) {
        if (m_IsGiven) return;
        for (const char c : text)
            AppendUtf8(m_Converted, Windows1252ToUnicode(static_cast<unsigned char>(c)));
    }
    std::string_view Get() const { return m_IsGiven ? m_Given : m_Converted; }

 private:
    std::string_view m_Given;
    bool m_IsGiven;
    std::string m_Converted;
};

/// Calls visit(character) for each character of valid UTF-8 in order.
template <class Visit>
void ForEachCharacter(std::string_view utf8, Visit&& visit) {
    while (!utf8.empty())
        visit(TakeUtf8(utf8));
}

/// Calls visit(line) for each line of a text, without what ends them (a line feed, or a carriage
/// return and a line feed): once for a text without line feeds.
template <class Visit>
void ForEachLine(std::string_view text, Visit&& visit) {
    for (;;) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (end != std::string_view::npos && line.ends_with('\r')) line.remove_suffix(1);
        visit(line);
        if (end == std::string_view::npos) return;
        text.remove_prefix(end + 1);
    }
}

}  // namespace varnel::detail
