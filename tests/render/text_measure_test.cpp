#include "varnel/render/detail/text_measure.h"

#include <gtest/gtest.h>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/strings.h"

namespace varnel::detail {
namespace {

TEST(Characters, AreUtf8OrElseWindows1252AsAWhole) {
    const struct {
        const char* bytes;
        const char* utf8;
    } texts[] = {
        {"plain", "plain"},
        {"Temp\xC3\xA9rature, \xE6\x97\xA5\xE6\x9C\xAC", "Température, 日本"},
        {"\xF0\x9F\x98\x80 \xF4\x8F\xBF\xBF", "\U0001F600 \U0010FFFF"},
        {"\xED\x9F\xBF\xEE\x80\x80", "\uD7FF\uE000"},
        {"\xB5m \xC3\xA9", "µm Ã©"},           // one byte is wrong: none is UTF-8
        {"5 \x80 \x81\x99", "5 € \xC2\x81™"},  // 81 is no character and stays itself
        {"\xC0\x80", "À€"},                    // overlong
        {"\xE0\x9F\xBF", "àŸ¿"},               // overlong
        {"\xF0\x8F\xBF\xBF", "ð\xC2\x8F¿¿"},   // overlong
        {"\xED\xA0\x80", "í\xC2\xA0€"},        // a surrogate
        {"\xF4\x90\x80\x80", "ô\xC2\x90€€"},   // above the last character
        {"\xE6\x97", "æ—"},                    // cut off
        {"\x80", "€"},                         // a tail without a head
        {"\xC3(", "Ã("},
    };
    for (const auto& [bytes, utf8] : texts)
        EXPECT_EQ(ToUtf8(bytes), utf8);
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(UnicodeToWindows1252(Windows1252ToUnicode(static_cast<unsigned char>(byte))),
                  byte);
}

TEST(TextMeasure, SumsCharactersNotBytes) {
    LOGFONT font;
    font.lfFaceName = "Arial";
    const TextMeasurer arial(font);
    ASSERT_TRUE(arial.HasFace());
    const auto width = [&arial](std::string_view text) { return arial.Measure(text).width; };
    const auto height = [&arial](std::string_view text) { return arial.Measure(text).height; };
    EXPECT_EQ(width("é"), width("\xE9"));
    EXPECT_DOUBLE_EQ(width("Aé日−"), width("A") + width("é") + width("日") + width("−"));
    EXPECT_EQ(height("xÉ"), height("É"));
    EXPECT_EQ(arial.Measure("xg").descent, arial.Measure("g").descent);
    EXPECT_GT(arial.Measure("g").descent, 0.1);

    // The block of several lines: the longest, from the first line's top to the last baseline.
    const TextSize block = arial.Measure("Height\r\nin metres\ng");
    EXPECT_EQ(block.lines, 3);
    EXPECT_EQ(block.width, width("in metres"));
    EXPECT_DOUBLE_EQ(block.height, height("Height") + 2 * kLineSpacing);
    EXPECT_EQ(block.descent, arial.Measure("g").descent);
    // What is one byte too many for UTF-8 is so for all lines.
    EXPECT_EQ(width("é\n\xFF"), width("Ã©"));

    EXPECT_EQ(arial.Measure("").lines, 0);
    EXPECT_EQ(TextMeasurer().Measure("text").width, 0.0);
}

}  // namespace
}  // namespace varnel::detail
