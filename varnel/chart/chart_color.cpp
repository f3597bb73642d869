// CChart3D: colour by height or by another value from a named colour map.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/chart/chart.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/render/codes.h"
#include "varnel/surface/color_map.h"
#include "varnel/surface/detail/polygon_reader.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr int kColors = 256;

/// The colours end this much above the highest value, as a fraction of the range: texture
/// coordinates are shifted up by a colour, and those from 1 on wrap around to the first colours.
/// The highest value gets the very beginning of the last colour, because pixels on an edge, whose
/// values are extrapolated by up to a pixel, must not wrap either.
constexpr double kHeadroom = 1.0 / (1.0 - 0.004 - 0.97 / kColors) - 1.0;

struct Range {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    bool hasGaps = false;  ///< where there is no value
};

/// The values of the polygons' corners by which colours are looked up.
template <class ValueOf>
Range RangeOf(const CPolysurface& surface, ValueOf&& valueOf) {
    Range range;
    detail::PolygonReader reader(surface);
    for (int polygon = 0; polygon < surface.GetPSNumPolygons(); ++polygon) {
        int n = 0;
        const int* const corners = reader.Read(polygon, n);
        for (int i = 0; i < n; ++i) {
            const double value = valueOf(surface.GetPSPoints()[corners[i]]);
            range.hasGaps = range.hasGaps || !std::isfinite(value);
            if (!std::isfinite(value)) continue;
            range.min = std::min(range.min, value);
            range.max = std::max(range.max, value);
        }
    }
    return range;
}

bool IsSurface(const CChartObj3D* object) {
    return object != nullptr && object->GetChartType() == POLYSURFACECHART3D &&
           object->GetPolysurface() != nullptr && object->GetTransform() != nullptr;
}

/// Gives a chart the colours of a map over a range and an object the mode to be coloured by them.
bool ColorBy(CChart3D& chart, CChartObj3D& object, const CString& colorMap, const Range& range,
             int textureMode) {
    RGBDType colors[kColors];
    if (!ColorMap(colorMap, kColors, colors) || !(range.min <= range.max)) return false;
    const double extent = range.max - range.min;
    const double around = extent > 0 ? 0 : std::max(std::abs(range.max), 1.0) / 2;
    chart.SetTextureColorArray(colors, range.min - around, range.max + extent * kHeadroom + around,
                               kColors);
    chart.SetTextureMode(textureMode);
    object.SetColorMode(COLOR_MODE_VALUE);
    return true;
}

}  // namespace

bool CChart3D::ColorSurfaceByHeight(CChartObj3D* surfaceObject, const CString& colorMap) {
    if (!IsSurface(surfaceObject)) return false;
    const CTransform3D& transform = *surfaceObject->GetTransform();
    // In working coordinates, in which the heights are drawn.
    const Range range = RangeOf(*surfaceObject->GetPolysurface(),
                                [&](const point3Dtype& p) { return transform.CVTWS(2, p.z); });
    return ColorBy(*this, *surfaceObject, colorMap, range, TEXTURE_Z);
}

bool CChart3D::ColorSurfaceByValue(CChartObj3D* surfaceObject, std::span<const double> values,
                                   const CString& colorMap) {
    if (!IsSurface(surfaceObject)) return false;
    RGBDType first;
    if (!ColorMap(colorMap, 1, &first)) return false;
    surfaceObject->SetPolysurfaceValues(values);
    const Range range =
        RangeOf(*surfaceObject->GetPolysurface(), [](const point3Dtype& p) { return p.w; });
    if (range.hasGaps) SetNoDataGrey(1);
    return ColorBy(*this, *surfaceObject, colorMap, range, TEXTURE_VALUE);
}

}  // namespace varnel
