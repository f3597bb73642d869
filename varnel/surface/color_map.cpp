#include "varnel/surface/color_map.h"

#include <algorithm>
#include <string_view>

#include "varnel/surface/detail/named_maps.h"

namespace varnel {

namespace {

constexpr int kMostColors = 256;
constexpr std::string_view kReversed = "_r";

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
    const bool reversed = std::string_view(name).ends_with(kReversed);
    const CString base = name.substr(0, name.size() - (reversed ? kReversed.size() : 0));
    const std::span<const detail::NamedMap> maps = detail::NamedMaps();
    const auto map = std::find_if(maps.begin(), maps.end(),
                                  [&base](const detail::NamedMap& m) { return base == m.name; });
    if (map == maps.end() || n < 1 || n > kMostColors || out == nullptr) return false;
    for (int i = 0; i < n; ++i) {
        const double place = n == 1 ? 0.5 : i / (n - 1.0);
        out[i] = ColorAt(map->colors, reversed ? 1.0 - place : place);
    }
    return true;
}

bool ColorMap(const CString& name, std::span<RGBDType> out) {
    return ColorMap(name, static_cast<int>(std::min<std::size_t>(out.size(), kMostColors + 1)),
                    out.data());
}

std::vector<CString> ColorMapNames() {
    std::vector<CString> names;
    for (const detail::NamedMap& map : detail::NamedMaps())
        names.emplace_back(map.name);
    return names;
}

}  // namespace varnel
