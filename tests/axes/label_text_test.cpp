#include "varnel/axes/detail/label_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnel::detail {
namespace {

const CString kSuffixes = " KMBT";

CString Text(double value, int format, int decimals) {
    return LabelText(value, format, decimals, kSuffixes);
}

TEST(LabelText, Fixed) {
    EXPECT_EQ(Text(12.345, 0, 2), "12.35");
    EXPECT_EQ(Text(1e6, 0, 0), "1000000");
    EXPECT_EQ(Text(-3, 7, 1), "-3.0");  // unknown formats are fixed
}

TEST(LabelText, ExponentsLoseTheirThirdDigit) {
    EXPECT_EQ(Text(12345, 1, 2), "1.23e+04");
    EXPECT_EQ(Text(-0.00012, 1, 1), "-1.2e-04");
    EXPECT_EQ(Text(1e100, 1, 0), "1e+00");
    EXPECT_EQ(Text(2.5e-123, 1, 1), "2.5e-23");
    EXPECT_EQ(Text(1e100, 3, 3), "1e+00");
}

TEST(LabelText, Engineering) {
    EXPECT_EQ(Text(999, 2, 0), "999");
    EXPECT_EQ(Text(1000, 2, 0), "1K");
    EXPECT_EQ(Text(1500, 2, 1), "1.5K");
    EXPECT_EQ(Text(998999, 2, 0), "999K");
    EXPECT_EQ(Text(999000, 2, 0), "1M");
    EXPECT_EQ(Text(9.99e8, 2, 0), "1B");
    EXPECT_EQ(Text(2.5e9, 2, 1), "2.5B");
    EXPECT_EQ(Text(9.99e11, 2, 0), "1T");
    EXPECT_EQ(Text(9.98e14, 2, 0), "998T");
    EXPECT_EQ(Text(1e15, 2, 0), "1000000B");
    EXPECT_EQ(Text(2e15, 2, 0), "2000000B");
    EXPECT_EQ(Text(-5000, 2, 0), "-5000");
    EXPECT_EQ(LabelText(5000, 2, 0, " k"), "5k");
    EXPECT_EQ(LabelText(5e6, 2, 0, " k"), "5");
}

TEST(LabelText, General) {
    EXPECT_EQ(Text(0.5, 3, 3), "0.5");
    EXPECT_EQ(Text(1234567, 3, 3), "1.23e+06");
    EXPECT_EQ(Text(100000, 3, 6), "100000");
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
    CString s = "1.5e+002";
    RemoveExpZeros(s);
    EXPECT_EQ(s, "1.5e+02");
    s = "1E+100";
    RemoveExpZeros(s);
    EXPECT_EQ(s, "1E+00");
    s = "12345";
    RemoveExpZeros(s);
    EXPECT_EQ(s, "12345");
}

}  // namespace
}  // namespace varnel::detail
