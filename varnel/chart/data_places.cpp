// Where the data of an object are seen: every few pixels of lines, areas and bars, for what has to
// keep clear of them.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/chart/detail/data_extent.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/foundation/detail/less_work.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {
namespace {

constexpr double kPixels = 6.0;  // from place to place
constexpr int kMostSteps = 500;
constexpr int kMostColumns = 2000;
/// Of a chart, about as many as fill a picture of 1600 x 1200. Beyond them, and for data that reach
/// far out of the picture, columns have their ends alone.
constexpr std::size_t kMostPlaces = 60'000 / kLessWork;

/// From the lowest to the highest value at a place along the x or y axis.
struct Column {
    double ind = 0.0;
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Add(double value) {
        if (!IsData(value)) return;
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

/// What stands on its base, which counts as covered.
bool HasBase(const CChartObj3D& object) {
    const int type = object.GetChartType();
    return type == BARCHART25D || type == AREAFILLCHART25D || type == GROUPAREAFILLCHART25D ||
           type == GROUPBARCHART25D;
}

bool IsStacked(const CChartObj3D& object) {
    const int type = object.GetChartType();
    return type == GROUPRIBBONCHART25D || type == GROUPAREAFILLCHART25D ||
           (type == GROUPBARCHART25D && object.GetGroupType() == GROUPS_STACKED);
}

void AddValues(const CChartObj3D& object, int i, Column& column) {
    const int type = object.GetChartType();
    const int groups = type == BOXANDWHISKERCHART25D ? 5 : object.GetNumGroups();
    double total = 0.0;
    for (int g = 0; g < groups; ++g) {
        const double value = object.GetGroupData(g, i);
        if (IsData(value)) total += value;
        column.Add(IsStacked(object) ? total : value);
    }
    if (groups == 0) {
        const double value = object.GetDepData(i);
        column.Add(value);
        if (type == FLOATINGBARCHART25D) column.Add(value - object.GetBarHeight(i));
        if (type == AREARANGECHART25D) column.Add(value - object.GetDepData2(i, 0.0));
    }
    if (HasBase(object)) column.Add(IsStacked(object) ? 0.0 : object.GetBaseValue());
}

/// One for each point; several points in one where there are very many.
std::vector<Column> ColumnsOf(const CChartObj3D& object) {
    const int n = object.GetNumDataPnts();
    const int step = std::max(1, n / kMostColumns);
    std::vector<Column> columns;
    for (int i = 0; i < n; ++i) {
        if (i % step == 0) columns.push_back({object.GetIndData(i)});
        AddValues(object, i, columns.back());
    }
    std::erase_if(columns, [](const Column& c) { return !IsData(c.ind) || c.low > c.high; });
    return columns;
}

/// Collects places in pixels along straight ways between columns.
class Sampler {
 public:
    Sampler(const CChartObj3D& object, std::vector<point3Dtype>& places)
        : m_Object(object),
          m_Transform(*object.GetTransform()),
          m_Orientation{object.GetIndAxis() == INDAXIS_Y},
          m_Places(places) {}

    /// A column by itself, and with `connected` all between it and the one before.
    void Add(double ind, const Column& column, bool connected) {
        Span now;
        if (!ToPixel(ind, column.low, now.low) || !ToPixel(ind, column.high, now.high)) return;
        const int steps =
            connected
                ? Steps(std::max(Distance(m_Last.low, now.low), Distance(m_Last.high, now.high)))
                : 1;
        for (int i = 1; i <= steps; ++i) {
            const double share = static_cast<double>(i) / steps;
            Fill(steps == 1 ? now.low : Between(m_Last.low, now.low, share),
                 steps == 1 ? now.high : Between(m_Last.high, now.high, share));
        }
        m_Last = now;
    }

 private:
    struct Span {
        point3Dtype low;
        point3Dtype high;
    };

    bool ToPixel(double ind, double value, point3Dtype& pixel) const {
        const point3Dtype p = m_Orientation.Place(ind, m_Object.GetConstValue(), value);
        return m_Transform.DataToPixel(p, pixel.x, pixel.y);
    }
    static double Distance(const point3Dtype& a, const point3Dtype& b) {
        return std::hypot(a.x - b.x, a.y - b.y);
    }
    int Steps(double distance) const {
        if (m_Places.size() >= kMostPlaces) return 1;
        return detail::WholeWithin(std::ceil(distance / kPixels), 1, kMostSteps);
    }
    static point3Dtype Between(const point3Dtype& a, const point3Dtype& b, double share) {
        return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y), 0.0, 0.0};
    }
    void Fill(const point3Dtype& low, const point3Dtype& high) {
        const int steps = Steps(Distance(low, high));
        for (int i = 0; i <= steps; ++i)
            m_Places.push_back(Between(low, high, static_cast<double>(i) / steps));
    }

    const CChartObj3D& m_Object;
    const CTransform3D& m_Transform;
    Orientation m_Orientation;
    std::vector<point3Dtype>& m_Places;
    Span m_Last;
};

bool IsLine(int type) {
    return type == LINECHART25D || type == RIBBONCHART25D || type == AREAFILLCHART25D ||
           type == AREARANGECHART25D || type == GROUPRIBBONCHART25D ||
           type == GROUPAREAFILLCHART25D;
}

}  // namespace

std::vector<point3Dtype> PlacesOf(const CChartObj3D& object, int most) {
    const CPolysurface* const surface = object.GetPolysurface();
    const bool inSpace = !IsInPlane(object.GetChartType());
    const int n = surface != nullptr ? surface->GetPSNumPoints() : object.GetNumDataPnts();
    const int step = std::max(1, n / std::max(1, most));
    const Orientation orientation{object.GetIndAxis() == INDAXIS_Y};
    std::vector<point3Dtype> places;
    for (int i = 0; i < n; i += step) {
        if (surface != nullptr) {
            places.push_back(surface->GetPSPoints()[i]);
        } else if (inSpace) {
            places.push_back(object.Get3DPoint(i));
        } else if (object.GetNumGroups() == 0) {
            places.push_back(orientation.Place(object.GetIndData(i), object.GetConstValue(),
                                               object.GetDepData(i)));
        }
        for (int g = 0; !inSpace && g < object.GetNumGroups(); ++g)
            places.push_back(orientation.Place(object.GetIndData(i), object.GetConstValue(),
                                               object.GetGroupData(g, i)));
    }
    std::erase_if(places, [](const point3Dtype& p) { return !IsData(p); });
    return places;
}

void AddPixelPlaces(const CChartObj3D& object, std::vector<point3Dtype>& places) {
    if (object.GetTransform() == nullptr || object.GetChartObjEnable() == 0) return;
    const int type = object.GetChartType();
    if (!IsInPlane(type)) {
        for (const point3Dtype& p : PlacesOf(object, kMostColumns)) {
            point3Dtype pixel;
            if (object.GetTransform()->DataToPixel(p, pixel.x, pixel.y)) places.push_back(pixel);
        }
        return;
    }
    Sampler sampler(object, places);
    const bool prices = type == OHLCCHART25D || type == BOXANDWHISKERCHART25D;
    bool first = true;
    for (const Column& column : ColumnsOf(object)) {
        if (IsLine(type)) {
            sampler.Add(column.ind, column, !first);
        } else {
            const double width = object.GetIndWidth();
            const double left = column.ind + WidthOffset(width, prices ? object.GetDepJustify()
                                                                       : object.GetIndJustify());
            sampler.Add(left, column, false);
            sampler.Add(left + width, column, true);
        }
        first = false;
    }
}

}  // namespace varnel::detail
