#include "varnel/axes/detail/label_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnel::detail {
namespace {

const CString kSuffixes = " KMBT";

CString Text(double value, int format, int decimals) {
    return LabelText(value, format, decimals, kSuffixes);
}

TEST(LabelText, HasItsFormat) {
    struct Row {
        double value;
        int format, decimals;
        const char* text;
    };
    // Fixed, exponents (which lose their third digit), engineering and general numbers.
    const Row rows[] = {
        // Fixed, as are unknown formats.
        {12.345, 0, 2, "12.35"},     {1e6, 0, 0, "1000000"},       {-3, 7, 1, "-3.0"},
        {12345, 1, 2, "1.23e+04"},   {-0.00012, 1, 1, "-1.2e-04"}, {1e100, 1, 0, "1e+00"},
        {2.5e-123, 1, 1, "2.5e-23"}, {1e100, 3, 3, "1e+00"},       {999, 2, 0, "999"},
        {1000, 2, 0, "1K"},          {1500, 2, 1, "1.5K"},         {998999, 2, 0, "999K"},
        {999000, 2, 0, "1M"},        {9.99e8, 2, 0, "1B"},         {2.5e9, 2, 1, "2.5B"},
        {9.99e11, 2, 0, "1T"},       {9.98e14, 2, 0, "998T"},      {1e15, 2, 0, "1000000B"},
        {2e15, 2, 0, "2000000B"},    {-5000, 2, 0, "-5000"},       {0.5, 3, 3, "0.5"},
        {1234567, 3, 3, "1.23e+06"}, {100000, 3, 6, "100000"}};
    for (const Row& row : rows)
        EXPECT_EQ(Text(row.value, row.format, row.decimals), row.text);
    EXPECT_EQ(LabelText(5000, 2, 0, " k"), "5k");
    EXPECT_EQ(LabelText(5e6, 2, 0, " k"), "5");
}

TEST(LabelText, SurvivesAnyArguments) {
    EXPECT_EQ(Text(std::numeric_limits<double>::infinity(), 1, 2), "inf");
    EXPECT_EQ(Text(std::numeric_limits<double>::quiet_NaN(), 2, 0), "nan");
    // No label is longer than 60 characters; what stands is right.
    EXPECT_EQ(Text(0.125, 0, std::numeric_limits<int>::max()), "0.125" + CString(55, '0'));
    EXPECT_EQ(Text(-1234.5, 0, 100), "-1234.5" + CString(53, '0'));
    EXPECT_EQ(Text(-1e300, 0, 2), "-1.00e+300");
    EXPECT_EQ(Text(5e59, 0, 9).size(), 60U);
    EXPECT_LE(Text(-1.0 / 3.0, 1, 200).size(), 60U);
    EXPECT_LE(Text(1e-200, 3, 200).size(), 60U);
    EXPECT_EQ(Text(1, 0, -1), "1.000000");
}

TEST(RemoveExpZeros, TakesTheThirdFromTheEnd) {
    for (const auto& [text, without] :
         {std::pair{"1.5e+002", "1.5e+02"}, {"1E+100", "1E+00"}, {"12345", "12345"}}) {
        CString s = text;
        RemoveExpZeros(s);
        EXPECT_EQ(s, without);
    }
}

}  // namespace
}  // namespace varnel::detail
