#include "tools/varnel/quantities.h"

#include <charconv>
#include <cmath>

namespace tool {

namespace {

constexpr int kLargestExtent = 16384;

}  // namespace

std::string ParseSize(const std::string& text, PictureSize& size) {
    const char* const end = text.data() + text.size();
    PictureSize read;
    const auto width = std::from_chars(text.data(), end, read.width);
    if (width.ec == std::errc() && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, read.height);
        if (height.ec == std::errc() && height.ptr == end && read.width > 0 && read.height > 0 &&
            read.width <= kLargestExtent && read.height <= kLargestExtent) {
            size = read;
            return {};
        }
    }
    return "a size is WIDTHxHEIGHT in pixels, as in 900x650, of at most 16384 each";
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
