#include "varnel/platform/detail/put_pixels.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "varnel/platform/detail/pixel_rows.h"

namespace varnel::detail {
namespace {

bool SameColors(const Bitmap& a, const Bitmap& b) {
    return std::equal(a.ColorTable.begin(), a.ColorTable.end(), b.ColorTable.begin(),
                      [](const RGBQUAD& p, const RGBQUAD& q) {
                          return p.rgbRed == q.rgbRed && p.rgbGreen == q.rgbGreen &&
                                 p.rgbBlue == q.rgbBlue;
                      });
}

bool SameFormat(const Bitmap& a, const Bitmap& b) {
    return a.BitsPerPixel() == b.BitsPerPixel() && (a.BitsPerPixel() != 8 || SameColors(a, b));
}

void CopyRows(Bitmap& target, const CopySpan& h, const CopySpan& v, const Bitmap& source) {
    const auto bytes = static_cast<std::size_t>(target.BitsPerPixel() / 8);
    for (int y = 0; y < v.count; ++y) {
        // Inside one bitmap the rows are taken in the order that reads each before it is
        // overwritten.
        const int row = v.target > v.source ? v.count - 1 - y : y;
        std::memmove(target.RowFromTop(v.target + row) + static_cast<std::size_t>(h.target) * bytes,
                     source.RowFromTop(v.source + row) + static_cast<std::size_t>(h.source) * bytes,
                     static_cast<std::size_t>(h.count) * bytes);
    }
}

void ConvertRows(Bitmap& target, const CopySpan& h, const CopySpan& v, const Bitmap& source) {
    const auto count = static_cast<std::size_t>(h.count);
    const auto bytes = static_cast<std::size_t>(target.BitsPerPixel() / 8);
    std::vector<BYTE> row(count * 4);
    std::optional<ColorMatcher> matcher;
    if (target.BitsPerPixel() == 8) matcher.emplace(target.ColorTable);
    for (int y = 0; y < v.count; ++y) {
        UnpackRow(source, h.source, v.source + y, count, row.data());
        BYTE* out = target.RowFromTop(v.target + y) + static_cast<std::size_t>(h.target) * bytes;
        if (!matcher) {
            PackRow(row.data(), count, target.BitsPerPixel(), out);
            continue;
        }
        for (std::size_t i = 0; i < count; ++i)
            out[i] = matcher->Match(row[4 * i + 2], row[4 * i + 1], row[4 * i]);
    }
}

}  // namespace

CopySpan ClipCopy(int target, int source, int count, int targetSize, int sourceSize) {
    const long long skipped =
        std::max({0LL, -static_cast<long long>(target), -static_cast<long long>(source)});
    const long long end =
        std::min({static_cast<long long>(count), static_cast<long long>(targetSize) - target,
                  static_cast<long long>(sourceSize) - source});
    if (end <= skipped) return {0, 0, 0};
    return {static_cast<int>(target + skipped), static_cast<int>(source + skipped),
            static_cast<int>(end - skipped)};
}

void PutPixels(Bitmap& target, int x, int y, int width, int height, const Bitmap& source,
               int sourceX, int sourceY) {
    const CopySpan h = ClipCopy(x, sourceX, width, target.Width(), source.Width());
    const CopySpan v = ClipCopy(y, sourceY, height, target.Height(), source.Height());
    if (h.count == 0 || v.count == 0) return;
    if (SameFormat(target, source))
        CopyRows(target, h, v, source);
    else
        ConvertRows(target, h, v, source);
}

}  // namespace varnel::detail
