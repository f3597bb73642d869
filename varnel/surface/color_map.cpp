#include "varnel/surface/color_map.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace varnel {

namespace {

// Every fifth of the 256 colours of the maps that S. van der Walt and N. Smith put into the public
// domain (CC0) in 2015. Straight lines between these keep within one 255th of the others.
constexpr std::uint32_t kViridis[] = {
    0x440154, 0x46085C, 0x471063, 0x481769, 0x481D6F, 0x482475, 0x472A7A, 0x46307E, 0x453781,
    0x433D84, 0x414287, 0x3F4889, 0x3D4E8A, 0x3A538B, 0x38598C, 0x355E8D, 0x33638D, 0x31688E,
    0x2E6D8E, 0x2C718E, 0x2A768E, 0x297B8E, 0x27808E, 0x25848E, 0x23898E, 0x218E8D, 0x20928C,
    0x1F978B, 0x1E9C89, 0x1FA188, 0x21A585, 0x24AA83, 0x28AE80, 0x2EB37C, 0x35B779, 0x3DBC74,
    0x46C06F, 0x50C46A, 0x5AC864, 0x65CB5E, 0x70CF57, 0x7CD250, 0x89D548, 0x95D840, 0xA2DA37,
    0xB0DD2F, 0xBDDF26, 0xCAE11F, 0xD8E219, 0xE5E419, 0xF1E51D, 0xFDE725};
constexpr std::uint32_t kMagma[] = {
    0x000004, 0x02020B, 0x050416, 0x090720, 0x0E0B2B, 0x140E36, 0x1A1042, 0x21114E, 0x29115A,
    0x311165, 0x390F6E, 0x420F75, 0x4A1079, 0x52137C, 0x5A167E, 0x621980, 0x6A1C81, 0x721F81,
    0x792282, 0x812581, 0x892881, 0x912B81, 0x992D80, 0xA1307E, 0xAA337D, 0xB2357B, 0xBA3878,
    0xC23B75, 0xCA3E72, 0xD2426F, 0xD9466B, 0xE04C67, 0xE75263, 0xEC5860, 0xF1605D, 0xF4695C,
    0xF7725C, 0xF97B5D, 0xFB8560, 0xFC8E64, 0xFD9869, 0xFEA16E, 0xFEAA74, 0xFEB47B, 0xFEBD82,
    0xFEC68A, 0xFECF92, 0xFED89A, 0xFDE2A3, 0xFDEBAC, 0xFCF4B6, 0xFCFDBF};

// Computed by the method of K. Moreland, "Diverging Color Maps for Scientific Visualization"
// (2009), between the two colours that he recommends, (59, 76, 192) and (180, 4, 38).
constexpr std::uint32_t kCoolWarm[] = {
    0x3B4CC0, 0x445ACC, 0x4E68D7, 0x5875E1, 0x6282EA, 0x6C8EF1, 0x779AF7, 0x82A5FB, 0x8DB0FE,
    0x98B9FF, 0xA3C2FF, 0xAEC9FD, 0xB8D0F9, 0xC2D5F4, 0xCCD9EE, 0xD5DBE6, 0xDDDDDD, 0xE5D8D1,
    0xECD3C6, 0xF1CCB9, 0xF5C4AD, 0xF7BBA0, 0xF7B194, 0xF7A687, 0xF49A7B, 0xF18D6F, 0xEC7F63,
    0xE57057, 0xDE614C, 0xD55042, 0xCB3E38, 0xC0282F, 0xB40426};

constexpr std::uint32_t kGrey[] = {0x000000, 0xFFFFFF};

/// A map's colours at even distances, as 0xRRGGBB.
struct NamedMap {
    const char* name;
    std::span<const std::uint32_t> colors;
};

constexpr NamedMap kMaps[] = {
    {"viridis", kViridis}, {"magma", kMagma}, {"coolwarm", kCoolWarm}, {"grey", kGrey}};

constexpr int kMostColors = 256;

/// The colour at `place`, 0..1 along the map.
RGBDType ColorAt(std::span<const std::uint32_t> colors, double place) {
    const double position = place * static_cast<double>(colors.size() - 1);
    const std::size_t below = std::min(static_cast<std::size_t>(position), colors.size() - 2);
    const double part = position - static_cast<double>(below);
    const auto component = [&](int shift) {
        const double from = colors[below] >> shift & 0xFF;
        const double to = colors[below + 1] >> shift & 0xFF;
        return (from + (to - from) * part) / 255.0;
    };
    return SetRGBD(component(16), component(8), component(0), 1.0);
}

}  // namespace

bool ColorMap(const CString& name, int n, RGBDType* out) {
    const auto* const map = std::find_if(std::begin(kMaps), std::end(kMaps),
                                         [&name](const NamedMap& m) { return name == m.name; });
    if (map == std::end(kMaps) || n < 1 || n > kMostColors || out == nullptr) return false;
    for (int i = 0; i < n; ++i)
        out[i] = ColorAt(map->colors, n == 1 ? 0.5 : i / (n - 1.0));
    return true;
}

std::vector<CString> ColorMapNames() {
    std::vector<CString> names;
    for (const NamedMap& map : kMaps)
        names.emplace_back(map.name);
    return names;
}

}  // namespace varnel
