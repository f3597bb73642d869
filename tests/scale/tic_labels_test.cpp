#include "varnel/scale/tic_labels.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varnel {
namespace {

std::string Join(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : " ") + text;
    return all;
}

TEST(TicLabels, TheShortestExactNotation) {
    using S = LabelStyle;
    LabelOptions note;
    note.allowNote = true;
    LabelOptions log;
    log.logarithmic = true;
    LabelOptions two;
    two.decimals = 2;
    LabelOptions ascii;
    ascii.asciiMinus = true;
    const auto style = [](LabelStyle s) {
        LabelOptions options;
        options.style = s;
        return options;
    };
    const struct {
        std::vector<double> values;
        LabelOptions options;
        const char* texts;
        const char* note;
    } cases[] = {
        {{0, 500, 1000}, {}, "0 500 1000", ""},
        {{-0.0, 0.25, 0.1 + 0.2 + 0.2}, {}, "0.00 0.25 0.50", ""},
        {{1.1e9, 1.5e9, 1.9e9}, {}, "1.1B 1.5B 1.9B", ""},
        {{0, 50000, 100000}, {}, "0 50K 100K", ""},
        {{1e-9, 2e-9}, {}, "1n 2n", ""},
        {{0, 2e-6}, {}, "0 2µ", ""},
        {{-2e-9, 2e-9}, {}, "−2n 2n", ""},
        {{-2e-9, 2e-9}, ascii, "-2n 2n", ""},
        {{0, 1e-30, 5e-30}, {}, "0 10⁻³⁰ 5×10⁻³⁰", ""},
        {{1.5e308}, {}, "1.5×10³⁰⁸", ""},
        {{1000000001, 1000000002}, {}, "1000000001 1000000002", ""},
        {{1000000001, 1000000002}, note, "1 2", "+ 10⁹"},
        {{-1234500.5, -1234500.25}, note, "−0.50 −0.25", "− 1234500"},
        {{1e300, 1.5e300}, note, "1.0 1.5", "×10³⁰⁰"},
        {{1000, 1500}, note, "1000 1500", ""},
        {{0.1, 1, 10, 100}, log, "0.1 1.0 10.0 100.0", ""},
        {{1e-3, 1, 1e3, 1e6}, log, "10⁻³ 10⁰ 10³ 10⁶", ""},
        {{0.125, 0.25}, two, "0.12 0.25", ""},
        {{1500, 2000000}, style(S::kFixed), "1500 2000000", ""},
        {{1500, 2000000}, style(S::kEngineering), "0.0015M 2.0000M", ""},
        {{1500, 2000000}, style(S::kGeneral), "1500 2e6", ""},
        {{1500, 2000000}, style(S::kScientific), "1.5×10³ 2.0×10⁶", ""},
        {{std::nan(""), 1, INFINITY}, {}, "1 ", ""},
        {{}, note, "", ""},
    };
    for (const auto& c : cases) {
        const TicLabels labels = ChooseLabels(c.values, c.options);
        EXPECT_EQ(Join(labels.texts), c.texts);
        EXPECT_EQ(labels.note, c.note) << c.texts;
    }
}

TEST(TicLabels, NumbersByThemselves) {
    EXPECT_EQ(NumberText(1234567.891), "1234570");
    EXPECT_EQ(NumberText(1234567.891, 17), "1234567.891");
    EXPECT_EQ(NumberText(2e9), "2×10⁹");
    EXPECT_EQ(NumberText(-5.25e-12, 3), "−5.25×10⁻¹²");
    EXPECT_EQ(NumberText(1.0 / 3, 3, LabelStyle::kEngineering), "333m");
    EXPECT_EQ(NumberText(0), "0");
    EXPECT_EQ(NumberText(INFINITY), "");
}

}  // namespace
}  // namespace varnel
