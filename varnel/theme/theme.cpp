#include "varnel/theme/theme.h"
#include "varnel/foundation/detail/named_colors.h"

#include <algorithm>

namespace varnel {
namespace {

using detail::kBlack;
using detail::kWhite;

RGBDType Mix(const RGBDType& a, const RGBDType& b, double share) {
    return {a.r + share * (b.r - a.r), a.g + share * (b.g - a.g), a.b + share * (b.b - a.b), a.a};
}

/// How far towards white (positive) or black the palette is when it comes again.
constexpr double kVariations[] = {0.0, 0.45, -0.35, 0.65, -0.55};

}  // namespace

/// M. A. Petroff: Accessible Color Sequences for Data Visualization (2021), ten colours: chosen by
/// their distance under simulated colour blindness, their lightness and by people's preferences.
std::array<RGBDType, 10> Theme::DefaultPalette() {
    constexpr unsigned kColors[] = {0x3F90DA, 0xFFA90E, 0xBD1F01, 0x94A4A2, 0x832DB6,
                                    0xA96B59, 0xE76300, 0xB9AC70, 0x717581, 0x92DADD};
    std::array<RGBDType, 10> palette;
    std::ranges::transform(kColors, palette.begin(), [](unsigned c) {
        return SetRGBD((c >> 16) / 255.0, (c >> 8 & 0xFF) / 255.0, (c & 0xFF) / 255.0, 1.0);
    });
    return palette;
}

RGBDType Theme::SeriesColor(int index) const {
    const auto i = static_cast<std::size_t>(std::max(index, 0));
    const RGBDType& color = palette[i % palette.size()];
    const double variation = kVariations[i / palette.size() % std::size(kVariations)];
    return variation < 0.0 ? Mix(color, kBlack, -variation) : Mix(color, kWhite, variation);
}

Theme Theme::Light() {
    return {};
}

Theme Theme::Dark() {
    Theme theme;
    theme.background = {0.11, 0.12, 0.14, 1.0};
    theme.text = {0.90, 0.91, 0.93, 1.0};
    theme.axis = {0.70, 0.72, 0.76, 1.0};
    theme.wall = {0.17, 0.18, 0.205, 1.0};
    theme.wallEdge = {0.34, 0.36, 0.40, 1.0};
    theme.grid = {0.32, 0.34, 0.38, 1.0};
    theme.outline = {0.05, 0.055, 0.065, 1.0};
    // The dark ones of the palette would sink into the background.
    for (RGBDType& color : theme.palette)
        color = Mix(color, kWhite, 0.15);
    return theme;
}

Theme Theme::Print() {
    Theme theme;
    theme.text = theme.axis = theme.outline = kBlack;
    theme.wallEdge = theme.grid = {0.6, 0.6, 0.6, 1.0};
    theme.wall = kWhite;
    theme.walls = 0;
    return theme;
}

bool Theme::Find(const CString& name, Theme& theme) {
    if (name == "light")
        theme = Light();
    else if (name == "dark")
        theme = Dark();
    else if (name == "print")
        theme = Print();
    else
        return false;
    return true;
}

}  // namespace varnel
