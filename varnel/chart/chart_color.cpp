// CChart3D: colour by height from a named colour map.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/chart/chart.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/surface/color_map.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr int kColors = 256;
constexpr int kTextureByHeight = 2;
constexpr int kColorByValue = 2;

/// The colours end this much above the highest value, as a fraction of the range: texture
/// coordinates are shifted up by a colour, and those from 1 on wrap around to the first colours.
/// The highest value gets the very beginning of the last colour, because pixels on an edge, whose
/// values are extrapolated by up to a pixel, must not wrap either.
constexpr double kHeadroom = 1.0 / (1.0 - 0.004 - 0.97 / kColors) - 1.0;

struct Range {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
};

/// The heights of the polygons' corners in working coordinates, in which colours are looked up.
Range HeightRange(const CPolysurface& surface, const CTransform3D& transform) {
    constexpr int kZ = 2;
    Range range;
    for (int polygon = 0; polygon < surface.GetPSNumPolygons(); ++polygon) {
        int n = 0;
        const int* const corners = surface.FindPSPolygon(polygon, n);
        for (int i = 0; i < n; ++i) {
            const double z = transform.CVTWS(kZ, surface.GetPSPoints()[corners[i]].z);
            if (!std::isfinite(z)) continue;
            range.min = std::min(range.min, z);
            range.max = std::max(range.max, z);
        }
    }
    return range;
}

}  // namespace

bool CChart3D::ColorSurfaceByHeight(CChartObj3D* surfaceObject, const CString& colorMap) {
    if (surfaceObject == nullptr || surfaceObject->GetChartType() != POLYSURFACECHART3D ||
        surfaceObject->GetPolysurface() == nullptr || surfaceObject->GetTransform() == nullptr)
        return false;
    RGBDType colors[kColors];
    if (!ColorMap(colorMap, kColors, colors)) return false;
    const Range range =
        HeightRange(*surfaceObject->GetPolysurface(), *surfaceObject->GetTransform());
    if (!(range.min <= range.max)) return false;
    const double extent = range.max - range.min;
    const double around = extent > 0 ? 0 : std::max(std::abs(range.max), 1.0) / 2;
    SetTextureColorArray(colors, range.min - around, range.max + extent * kHeadroom + around,
                         kColors);
    SetTextureMode(kTextureByHeight);
    surfaceObject->SetColorMode(kColorByValue);
    return true;
}

}  // namespace varnel
