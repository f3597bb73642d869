#include "tools/varnel/quantities.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tool {

namespace {

constexpr int kLargestExtent = 16384;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kPixelsPerInch = 96;

/// 0 for what is no unit.
double MillimetresOf(const std::string& unit) {
    return unit == "mm"   ? 1
           : unit == "cm" ? 10
           : unit == "in" ? kMillimetresPerInch
           : unit == "pt" ? kMillimetresPerInch / 72
                          : 0;
}

}  // namespace

PictureSize PictureSize::At(double dotsPerInch) const {
    if (!(pageWidth > 0)) return *this;
    const auto pixels = [dotsPerInch](double side) {
        return static_cast<int>(
            std::lround(std::min(side / kMillimetresPerInch * dotsPerInch, 1e6)));
    };
    return {pixels(pageWidth), pixels(pageHeight), pageWidth, pageHeight};
}

std::string ParseSize(const std::string& text, PictureSize& size) {
    const std::string wrong =
        "a size is WIDTHxHEIGHT in pixels, of at most 16384 each, as in 900x650, or on paper in "
        "mm, cm, in or pt, as in 180x120mm";
    const std::size_t at = text.find('x');
    if (at == std::string::npos) return wrong;
    double sides[2] = {};
    std::string units[2] = {text.substr(0, at), text.substr(at + 1)};
    for (std::size_t i = 0; i < 2; ++i) {
        const char* const end = units[i].data() + units[i].size();
        const auto [stop, error] = std::from_chars(units[i].data(), end, sides[i]);
        if (error != std::errc() || !(sides[i] > 0) || !std::isfinite(sides[i])) return wrong;
        units[i] = std::string(stop, end);
    }
    const double unit = MillimetresOf(units[1]);
    if (!units[0].empty() && units[0] != units[1]) return wrong;
    if (units[1].empty()) {
        // Of pixels there are no parts.
        for (const double side : sides)
            if (side != std::floor(side) || side > kLargestExtent) return wrong;
        size = {static_cast<int>(sides[0]), static_cast<int>(sides[1])};
        return {};
    }
    if (!(unit > 0)) return wrong;
    const PictureSize read = PictureSize{0, 0, sides[0] * unit, sides[1] * unit}.At(kPixelsPerInch);
    if (read.width < 1 || read.height < 1 || read.width > kLargestExtent ||
        read.height > kLargestExtent)
        return wrong;
    size = read;
    return {};
}

std::string ParseSeconds(const std::string& text, double& seconds) {
    if (text.empty()) return {};
    double read = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, read);
    if (error != std::errc() || stop != end || !(read > 0) || !std::isfinite(read))
        return "a time is a positive number of seconds, as in 30 or 0.5";
    seconds = read;
    return {};
}

std::string ParseBytes(const std::string& text, std::uint64_t& bytes) {
    if (text.empty()) return {};
    double read = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, read);
    std::string unit(stop, end);
    if (unit.ends_with('B') && unit.size() > 1) unit.pop_back();
    const double factor = unit.empty()  ? 1
                          : unit == "K" ? 1024
                          : unit == "M" ? 1024.0 * 1024
                          : unit == "G" ? 1024.0 * 1024 * 1024
                                        : 0;
    if (error != std::errc() || factor == 0 || !(read * factor >= 1) || !(read * factor < 1e18))
        return "an amount of memory is a number of bytes, as in 800M or 2G";
    bytes = static_cast<std::uint64_t>(read * factor);
    return {};
}

}  // namespace tool
