#include "varnel/surface/color_map.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/expect_error.h"
#include "varnel/surface/color_scale.h"

namespace varnel::test {
namespace {

constexpr int kMost = 256;

/// CIE 1976 lightness of an sRGB colour, 0..100.
double Lightness(const RGBDType& color) {
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    const double y = 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    return y > 216.0 / 24389.0 ? 116.0 * std::cbrt(y) - 16.0 : y * 24389.0 / 27.0;
}

std::vector<RGBDType> Colors(const CString& name, int n) {
    std::vector<RGBDType> colors(static_cast<std::size_t>(n));
    EXPECT_TRUE(ColorMap(name, n, colors.data())) << name;
    return colors;
}

unsigned Packed(const RGBDType& c) {
    const auto byte = [](double v) { return static_cast<unsigned>(std::lround(v * 255.0)); };
    return byte(c.r) << 16 | byte(c.g) << 8 | byte(c.b);
}

TEST(ColorMap, EndsAndMiddles) {
    struct Expected {
        const char* name;
        unsigned first, middle, last;
    };
    for (const Expected& e : {Expected{"viridis", 0x440154, 0x21918C, 0xFDE725},
                              Expected{"magma", 0x000004, 0xB73779, 0xFCFDBF},
                              Expected{"coolwarm", 0x3B4CC0, 0xDDDDDD, 0xB40426},
                              Expected{"grey", 0x000000, 0x808080, 0xFFFFFF},
                              Expected{"inferno", 0x000004, 0xBC3754, 0xFCFFA4},
                              Expected{"plasma", 0x0D0887, 0xCC4778, 0xF0F921},
                              Expected{"cividis", 0x00224E, 0x7D7C78, 0xFEE838},
                              Expected{"turbo", 0x30123B, 0xA4FC3C, 0x7A0403},
                              Expected{"RdBu", 0x67001F, 0xF7F7F7, 0x053061},
                              Expected{"terrain", 0x333399, 0xFFFF99, 0xFFFFFF},
                              Expected{"viridis_r", 0xFDE725, 0x21918C, 0x440154}}) {
        for (const int n : {2, 3, kMost}) {
            const auto colors = Colors(e.name, n);
            EXPECT_EQ(Packed(colors.front()), e.first) << e.name;
            EXPECT_EQ(Packed(colors.back()), e.last) << e.name;
            EXPECT_EQ(colors.back().a, 1.0);
        }
        const auto middle = Colors(e.name, 1);
        for (const int shift : {0, 8, 16})
            EXPECT_NEAR(static_cast<int>(Packed(middle[0]) >> shift & 255),
                        static_cast<int>(e.middle >> shift & 255), 1)
                << e.name;
    }
}

TEST(ColorMap, UniformMapsRiseEvenlyInLightness) {
    for (const char* name : {"viridis", "magma", "inferno", "plasma", "cividis", "grey"}) {
        const auto colors = Colors(name, kMost);
        const double mean = (Lightness(colors.back()) - Lightness(colors.front())) / (kMost - 1);
        for (std::size_t i = 1; i < colors.size(); ++i) {
            const double step = Lightness(colors[i]) - Lightness(colors[i - 1]);
            EXPECT_GT(step, 0.0) << name << " " << i;
            EXPECT_LT(step, 2.0 * mean) << name << " " << i;
        }
    }
}

TEST(ColorMap, RefusesWhatItCannotDo) {
    RGBDType color = SetRGBD(0.25, 0.5, 0.75, 1.0);
    EXPECT_FALSE(ColorMap("jet", 1, &color));
    EXPECT_FALSE(ColorMap("viridis", 0, &color));
    EXPECT_FALSE(ColorMap("viridis", 257, &color));
    EXPECT_FALSE(ColorMap("viridis", 1, nullptr));
    EXPECT_EQ(color.g, 0.5);
    for (const CString& name : ColorMapNames())
        EXPECT_TRUE(ColorMap(name, 1, &color)) << name;
    EXPECT_EQ(ColorMapNames().size(), 10U);
}

TEST(ColorScale, ColoursFollowTheirMode) {
    struct Case {
        ColorScale scale;
        double value, place;
    };
    const double kNone = std::nan("");
    for (const Case& c :
         {Case{{.min = 10, .max = 20}, 12.5, .25}, Case{{.min = 10, .max = 20}, 25, 1.5},
          Case{{.min = 3, .max = 3}, 3, .5}, Case{{.min = 1, .max = 100, .mode = 1}, 10, .5},
          Case{{.min = 1, .max = 100, .mode = 1}, -1, kNone},
          // The longer side, of 8, is as far from the centre as the shorter one could be.
          Case{{.min = 0, .max = 10, .mode = 2, .center = 2}, 2, .5},
          Case{{.min = 0, .max = 10, .mode = 2, .center = 2}, 0, .375}})
        EXPECT_TRUE(c.scale.Place(c.value) == c.place ||
                    (std::isnan(c.place) && std::isnan(c.scale.Place(c.value))))
            << c.value;

    ColorScale scale{.map = "grey", .min = 0, .max = 4, .bands = 4};
    EXPECT_EQ(scale.BandLimits(), (std::vector<double>{0, 1, 2, 3, 4}));
    EXPECT_EQ(Packed(scale.Color(0.9)), 0x000000U);
    EXPECT_EQ(Packed(scale.Color(1)), 0x555555U);
    EXPECT_EQ(Packed(scale.Color(4)), 0xFFFFFFU);
    EXPECT_EQ(Packed(scale.Color(9)), 0xFFFFFFU);
    scale.below = SetRGBD(1, 0, 0, 1);
    scale.above = SetRGBD(0, 0, 1, 1);
    EXPECT_EQ(Packed(scale.Color(-1)), 0xFF0000U);
    EXPECT_EQ(Packed(scale.Color(9)), 0x0000FFU);
    EXPECT_EQ(Packed(scale.Color(kNone)), 0x999999U);
    scale.bands = 0;
    EXPECT_EQ(Packed(scale.Color(2)), 0x808080U);
    EXPECT_TRUE(Raises(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, "ColorScale",
                       [] { ColorScale{.map = "jet"}.Colors(); }));
    EXPECT_TRUE(Raises(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, "ColorScale",
                       [] { ColorScale{.mode = COLORSCALE_LOGARITHMIC}.Colors(); }));
}

}  // namespace
}  // namespace varnel::test
