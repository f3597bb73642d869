#include "varnel/chart/detail/data_extent.h"

#include <span>
#include <vector>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"
#include "varnel/surface/polysurface.h"

namespace varnel::detail {
double WidthOffset(double width, int justify) {
    if (justify == WIDTH_CENTERED) return -width / 2.0;
    return justify == WIDTH_ENDS ? -width : 0.0;
}

bool IsInPlane(int type) {
    switch (type) {
        case BARCHART3D:
        case SCATTERCHART3D:
        case LINECHART3D:
        case PROJECTIONLINECHART3D:
        case PLANECHART3D:
        case SCATTERTEXT3D:
        case POLYSURFACECHART2D:
        case POLYSURFACECHART3D:
        case CONTOURPOLYSURFACE3D:
        case ERRORBARS3D:
        case VECTORS3D:
        case NOTE3D:
            return false;
        default:
            return true;
    }
}

namespace {

constexpr int kX = 0;
constexpr int kY = 1;
constexpr int kZ = 2;

/// One object's data poured into the extents of the axes that they run along.
class Pourer {
 public:
    Pourer(ChartExtent& extent, const CChartObj3D& object, const std::array<bool, 3>& logarithmic)
        : m_Extent(extent), m_Object(object), m_Log(logarithmic) {
        const Orientation orientation{object.GetIndAxis() == INDAXIS_Y};
        m_Ind = orientation.IndAxis();
        m_Depth = orientation.DepthAxis();
    }

    void Pour();

 private:
    void Add(int axis, double v) { Axis(axis).range.Add(v, m_Log[static_cast<std::size_t>(axis)]); }
    AxisExtent& Axis(int axis) { return m_Extent.axes[static_cast<std::size_t>(axis)]; }
    void Is(int axis, AxisData kind) {
        // What wants room keeps it beside what does not.
        Axis(axis).kind = std::max(Axis(axis).kind, kind);
    }
    void Base(double base) {
        AxisExtent& values = Axis(kZ);
        values.base = values.base ? std::min(*values.base, base) : base;
    }
    void InPlane(AxisData ind);
    /// As bars of the object's width, placed by a justification code.
    void BarsInPlane(int justify) {
        InPlane(AxisData::kBars);
        const double width = m_Object.GetIndWidth();
        AlongInd(width, WidthOffset(width, justify));
    }
    void Filled(int type);
    void Bars(int type);
    void GroupedBars();
    void InSpace(AxisData horizontal);
    void AlongInd(double width, double offset);
    void CheckWhole(int axis, std::span<const double> places);
    void AddGap(int axis, std::vector<double> places, double width);
    void Values(int groups);
    void Totals();
    void Points();
    void Surface();
    void Marks();

    ChartExtent& m_Extent;
    const CChartObj3D& m_Object;
    const std::array<bool, 3>& m_Log;
    int m_Ind = 0;
    int m_Depth = 1;
};

/// A 2.5D object: its plane, with its depth.
void Pourer::InPlane(AxisData ind) {
    m_Extent.depthAxis = m_Depth;
    Is(m_Ind, ind);
    Is(kZ, AxisData::kValues);
    const double depth = m_Object.GetDepthWidth();
    const double start = m_Object.GetConstValue() + WidthOffset(depth, m_Object.GetDepthJustify());
    std::vector<double>& planes = m_Extent.planes;
    if (std::find(planes.begin(), planes.end(), m_Object.GetConstValue()) == planes.end())
        planes.push_back(m_Object.GetConstValue());
    const bool isLine = m_Object.GetChartType() == LINECHART25D;
    Add(m_Depth, isLine ? m_Object.GetConstValue() : start);
    if (isLine) return;
    Add(m_Depth, start + depth);
    m_Extent.solid = true;
}

void Pourer::InSpace(AxisData horizontal) {
    m_Extent.flat = false;
    Is(kX, horizontal);
    Is(kY, horizontal);
    Is(kZ, AxisData::kValues);
}

void Pourer::CheckWhole(int axis, std::span<const double> places) {
    constexpr double kNear = 1e-6;
    for (const double v : places)
        if (std::abs(v - std::round(v)) > kNear) Axis(axis).whole = false;
}

/// The room between bars that stand next to each other, from the middles of all.
void Pourer::AddGap(int axis, std::vector<double> places, double width) {
    CheckWhole(axis, places);
    std::sort(places.begin(), places.end());
    double nearest = 0.0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        const double distance = places[i] - places[i - 1];
        if (distance > 0.0 && (nearest == 0.0 || distance < nearest)) nearest = distance;
    }
    const double gap = nearest > width ? nearest - width : 0.25 * width;
    Axis(axis).gap = std::max(Axis(axis).gap, gap);
}

void Pourer::AlongInd(double width, double offset) {
    std::vector<double> places;
    for (int i = 0; i < m_Object.GetNumDataPnts(); ++i) {
        const double v = m_Object.GetIndData(i);
        if (!IsData(v)) continue;
        places.push_back(v + offset + width / 2.0);
        Add(m_Ind, v + offset);
        if (width != 0.0) Add(m_Ind, v + offset + width);
    }
    if (width != 0.0)
        AddGap(m_Ind, std::move(places), std::abs(width));
    else
        CheckWhole(m_Ind, places);
}

void Pourer::Values(int groups) {
    for (int g = 0; g < groups; ++g) {
        for (int i = 0; i < m_Object.GetNumDataPnts(); ++i)
            Add(kZ, m_Object.GetGroupData(g, i));
    }
}

/// The running totals of stacked groups.
void Pourer::Totals() {
    for (int i = 0; i < m_Object.GetNumDataPnts(); ++i) {
        double total = 0.0;
        for (int g = 0; g < m_Object.GetNumGroups(); ++g) {
            const double v = m_Object.GetGroupData(g, i);
            if (!IsData(v)) continue;
            total += v;
            Add(kZ, total);
        }
    }
}

void Pourer::Points() {
    const bool bars = m_Object.GetChartType() == BARCHART3D;
    const bool wide = bars || m_Object.GetChartType() == PLANECHART3D;
    std::vector<double> places[2];
    for (int i = 0; i < m_Object.GetNumDataPnts(); ++i) {
        const point3Dtype p = m_Object.Get3DPoint(i);
        if (!IsData(p)) continue;
        Add(kX, p.x);
        Add(kY, p.y);
        Add(kZ, p.z);
        if (!wide) continue;
        places[0].push_back(p.x + m_Object.GetIndWidth() / 2.0);
        places[1].push_back(p.y + m_Object.GetDepthWidth() / 2.0);
        Add(kX, p.x + m_Object.GetIndWidth());
        Add(kY, p.y + m_Object.GetDepthWidth());
        if (bars) Base(m_Object.GetBarHeight(i));
    }
    if (!wide) return;
    AddGap(kX, std::move(places[0]), m_Object.GetIndWidth());
    AddGap(kY, std::move(places[1]), m_Object.GetDepthWidth());
}

void Pourer::Surface() {
    const CPolysurface* const surface = m_Object.GetPolysurface();
    if (surface == nullptr) return;
    const bool inSpace = m_Object.GetChartType() == POLYSURFACECHART3D;
    m_Extent.surface = m_Extent.surface || inSpace;
    for (int i = 0; i < surface->GetPSNumPoints(); ++i) {
        const point3Dtype& p = surface->GetPSPoints()[i];
        if (!IsData(p)) continue;
        Add(kX, p.x);
        Add(kY, p.y);
        CheckWhole(kX, {&p.x, 1});
        CheckWhole(kY, {&p.y, 1});
        if (inSpace) Add(kZ, p.z);
    }
    if (!inSpace) Add(kZ, m_Object.GetConstValue());
}

/// What stands beside data widens their limits, and does not say what kind of data they are: error
/// bars, arrows with their tips, references and notes.
void Pourer::Marks() {
    const int axis = m_Object.GetIndAxis();
    const bool known = axis >= kX && axis <= kZ;
    switch (m_Object.GetChartType()) {
        case ERRORBARS3D:
        case VECTORS3D:
        case NOTE3D:
            Points();
            break;
        case REFERENCEBAND3D:
            if (known) Add(axis, m_Object.GetBaseValue());
            [[fallthrough]];
        case REFERENCELINE3D:
            if (known) Add(axis, m_Object.GetConstValue());
            return;
        default:
            return;
    }
    const auto count = static_cast<std::size_t>(m_Object.GetNumDataPnts());
    const auto components = m_Object.GetVectorComponents();
    const double scale = m_Object.GetVectorScale();
    const auto below = m_Object.GetErrorsBelow();
    const auto above = m_Object.GetErrorsAbove();
    for (std::size_t i = 0; i < count; ++i) {
        const point3Dtype p = m_Object.Get3DPoint(static_cast<int>(i));
        if (!IsData(p)) continue;
        if (m_Object.GetChartType() == VECTORS3D && i < components.size() &&
            IsData(components[i])) {
            Add(kX, p.x + scale * components[i].x);
            Add(kY, p.y + scale * components[i].y);
            Add(kZ, p.z + scale * components[i].z);
        }
        if (m_Object.GetChartType() == ERRORBARS3D && known && i < below.size() &&
            i < above.size() && IsData(below[i]) && IsData(above[i])) {
            Add(axis, GetCoord3D(p, axis) - below[i]);
            Add(axis, GetCoord3D(p, axis) + above[i]);
        }
    }
}

/// Lines, ribbons and areas of one series.
void Pourer::Filled(int type) {
    InPlane(AxisData::kFilled);
    AlongInd(0.0, 0.0);
    for (int i = 0; i < m_Object.GetNumDataPnts(); ++i) {
        Add(kZ, m_Object.GetDepData(i));
        if (type == AREARANGECHART25D)
            Add(kZ, m_Object.GetDepData(i) - m_Object.GetDepData2(i, 0.0));
    }
    if (type == AREAFILLCHART25D) Base(m_Object.GetBaseValue());
}

void Pourer::Bars(int type) {
    BarsInPlane(m_Object.GetIndJustify());
    for (int i = 0; i < m_Object.GetNumDataPnts(); ++i) {
        Add(kZ, m_Object.GetDepData(i));
        if (type == FLOATINGBARCHART25D) Add(kZ, m_Object.GetDepData(i) - m_Object.GetBarHeight(i));
    }
    if (type == BARCHART25D) Base(m_Object.GetBaseValue());
}

void Pourer::GroupedBars() {
    BarsInPlane(m_Object.GetIndJustify());
    if (m_Object.GetGroupType() == GROUPS_STACKED) {
        Totals();
        Base(0.0);
    } else {
        Values(m_Object.GetNumGroups());
        Base(m_Object.GetBaseValue());
    }
}

void Pourer::Pour() {
    const int type = m_Object.GetChartType();
    switch (type) {
        case LINECHART25D:
        case RIBBONCHART25D:
        case AREAFILLCHART25D:
        case AREARANGECHART25D:
            Filled(type);
            break;
        case BARCHART25D:
        case FLOATINGBARCHART25D:
        case PLANECHART25D:
            Bars(type);
            break;
        case GROUPBARCHART25D:
            GroupedBars();
            break;
        case GROUPRIBBONCHART25D:
        case GROUPAREAFILLCHART25D:
            InPlane(AxisData::kFilled);
            AlongInd(0.0, 0.0);
            Totals();
            if (type == GROUPAREAFILLCHART25D) Base(m_Object.GetBaseValue());
            break;
        case OHLCCHART25D:
        case BOXANDWHISKERCHART25D:
            BarsInPlane(m_Object.GetDepJustify());
            Values(type == OHLCCHART25D ? 4 : 5);
            break;
        case BARCHART3D:
        case PLANECHART3D:
            InSpace(AxisData::kBars);
            Points();
            break;
        case SCATTERCHART3D:
        case LINECHART3D:
        case PROJECTIONLINECHART3D:
        case SCATTERTEXT3D:
            InSpace(AxisData::kValues);
            Points();
            break;
        case VECTORS3D:
            InSpace(AxisData::kValues);
            Marks();
            break;
        case POLYSURFACECHART2D:
        case POLYSURFACECHART3D:
        case CONTOURPOLYSURFACE3D:
            InSpace(AxisData::kFilled);
            Surface();
            break;
        default:
            Marks();
            return;
    }
    m_Extent.empty = false;
}

}  // namespace

void ChartExtent::Add(const CChartObj3D& object, const std::array<bool, 3>& logarithmic) {
    Pourer(*this, object, logarithmic).Pour();
}

}  // namespace varnel::detail
