// What the data sets of a chart cover, as automatic limits want to know it.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "varnel/foundation/points.h"
#include "varnel/scale/auto_scale.h"

namespace varnel {

class CChartObj3D;

namespace detail {

/// How the limits of an axis are to be chosen.
enum class AxisData {
    kNone,    ///< the depth of charts that lie in one plane
    kValues,  ///< points, lines: round limits with a little room
    kFilled,  ///< surfaces, areas along their independent axis: the limits are the data's own
    kBars,    ///< places of bars: half a gap of room at both ends
};

/// What is covered along one axis, in data units.
struct AxisExtent {
    DataRange range;
    AxisData kind = AxisData::kNone;
    double gap = 0.0;            ///< of kBars: between neighbouring bars
    std::optional<double> base;  ///< what bars and areas stand on, along the value axis
    bool whole = true;           ///< of kBars and kFilled: all data stand at whole numbers
};

struct ChartExtent {
    std::array<AxisExtent, 3> axes;
    bool flat = true;            ///< all data lie in vertical planes of one direction (2.5D)
    int depthAxis = 1;           ///< of 2.5D data: across their planes
    std::vector<double> planes;  ///< where 2.5D data stand along the depth axis, each once
    bool solid = false;          ///< bars, bands and boxes with a depth
    bool surface = false;        ///< a surface in space
    bool empty = true;

    /// Takes in what an object covers. Logarithmic axes leave out what is not positive.
    void Add(const CChartObj3D& object, const std::array<bool, 3>& logarithmic);
};

/// Places of an object's data, in data units: all of few, evenly picked ones of many.
std::vector<point3Dtype> PlacesOf(const CChartObj3D& object, int most);

/// Adds where an object that is shown is seen, in pixels from the upper left corner: its points, or
/// every few pixels of lines, areas and bars. After its transform's ChartTransform.
void AddPixelPlaces(const CChartObj3D& object, std::vector<point3Dtype>& places);

/// Whether a chart type's data lie in a vertical plane.
bool IsInPlane(int type);
/// From a value to the start of a width placed at it.
double WidthOffset(double width, int justify);

}  // namespace detail
}  // namespace varnel
