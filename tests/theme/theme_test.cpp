#include "varnel/theme/theme.h"

#include <gtest/gtest.h>

#include <cmath>

#include "varnel/render/detail/scene.h"

namespace varnel {
namespace {

using Rgb = std::array<double, 3>;

double Linear(double c) {
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

/// Lightness and the two opponent colours of a colour in linear light (CIE 1976 L*a*b*, D65).
Rgb Lab(const Rgb& c) {
    const double xyz[3] = {(0.4124 * c[0] + 0.3576 * c[1] + 0.1805 * c[2]) / 0.9505,
                           0.2126 * c[0] + 0.7152 * c[1] + 0.0722 * c[2],
                           (0.0193 * c[0] + 0.1192 * c[1] + 0.9505 * c[2]) / 1.089};
    double f[3];
    for (int i = 0; i < 3; ++i)
        f[i] = xyz[i] > 0.008856 ? std::cbrt(xyz[i]) : 7.787 * xyz[i] + 16.0 / 116.0;
    return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

/// How a colour looks to people who lack the long (kind 1) or middle (2) cones: F. Vienot,
/// H. Brettel, J. Mollon: Digital Video Colourmaps for Checking the Legibility of Displays by
/// Dichromats (1999). Kind 0 lacks none.
Rgb Seen(const RGBDType& color, int kind) {
    const Rgb c = {Linear(color.r), Linear(color.g), Linear(color.b)};
    if (kind == 0) return c;
    const double l = kind == 1 ? 0.11238 : 0.29275;
    const double s = kind == 1 ? 0.00401 : -0.02234;
    const double y = l * c[0] + (1 - l) * c[1];
    return {y, y, s * c[0] - s * c[1] + c[2]};
}

double Distance(const RGBDType& a, const RGBDType& b, int kind) {
    const Rgb p = Lab(Seen(a, kind));
    const Rgb q = Lab(Seen(b, kind));
    return std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
}

TEST(Theme, TheColoursOfDataAreToldApartAndFromTheBackground) {
    for (const char* name : {"light", "dark", "print"}) {
        Theme theme;
        ASSERT_TRUE(Theme::Find(name, theme));
        for (int kind = 0; kind < 3; ++kind)
            for (int i = 0; i < 10; ++i) {
                EXPECT_GT(Distance(theme.SeriesColor(i), theme.background, kind), 15) << name << i;
                for (int k = 0; k < i; ++k)
                    EXPECT_GT(Distance(theme.SeriesColor(i), theme.SeriesColor(k), kind), 8)
                        << name << ' ' << kind << ": " << i << " and " << k;
            }
        EXPECT_GT(Distance(theme.text, theme.background, 0), 70) << name;
        EXPECT_GT(Distance(theme.SeriesColor(13), theme.SeriesColor(3), 0), 12);
    }
    Theme theme;
    EXPECT_FALSE(Theme::Find("pink", theme));
    EXPECT_EQ(theme.SeriesColor(-3).r, theme.SeriesColor(0).r);
}

TEST(Theme, ItsLightShowsColoursAsTheyAreAndSlopesOnAllSides) {
    const Theme theme;
    const point3Dtype& l = theme.lightPosition;
    const float ambient = static_cast<float>(theme.ambientLight.r) + 0.1F;
    detail::SceneLight light;
    light.sceneAmbient = {ambient, ambient, ambient, 1.0F};
    light.diffuse = RGBDtoRGBF(theme.diffuseLight);
    light.direction = detail::Normalized({l.x, l.z, -l.y});
    light.limited = true;
    const auto brightness = [&](double x, double y) {
        const detail::Vec3 normal{x, y, -std::sqrt(1.0 - x * x - y * y)};
        return LitColor(light, TurnedBy(light, normal), {0.8, 0.8, 0.8, 1.0}).r / 0.8;
    };
    EXPECT_NEAR(brightness(0.0, 0.0), 1.0, 2.0 / 255);
    for (const auto& [x, y] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
        EXPECT_LT(brightness(0.5 * x, 0.5 * y), 1.0 - 2.0 / 255) << x << ", " << y;
        EXPECT_LT(brightness(0.9 * x, 0.9 * y), brightness(0.5 * x, 0.5 * y) - 0.01);
    }
}

}  // namespace
}  // namespace varnel
