// CChart3D: automatic scaling.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/detail/label_fit.h"
#include "varnel/chart/detail/label_format.h"
#include "varnel/chart/detail/scale_numbers.h"
#include "varnel/foundation/detail/counts.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/dib_section.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::kBlack;

constexpr double kNoData = std::numeric_limits<double>::quiet_NaN();

constexpr double kMajorTicLength = 0.04;
constexpr double kMinorTicLength = 0.02;
/// Where labels and tics of the x, y and z axis stand off: down, right and left.
constexpr int kOffDirection[3] = {2, 3, 0};
constexpr int kFacingViewer = 3;
constexpr int kAllEnds = 7;

/// A logarithmic axis is labelled at 1, 2 and 5 of each decade, with as many digits as a number
/// needs: a fixed number of decimals would suit one decade only.
constexpr int kLogNthTic = 10;
constexpr int kLogDigits = 6;

// Formats of labels.
constexpr int kFixed = 0;
constexpr int kEngineering = 2;
constexpr int kGeneral = 3;

detail::Origin At(const char* operation) {
    return {ERR3DCLASS_CHART3D, operation};
}

/// The corners of what several sets cover.
struct Union {
    point3Dtype min{1e100, 1e100, 1e100, 0.0};
    point3Dtype max{1e-100, 1e-100, 1e-100, 0.0};

    void Add(const point3Dtype& low, const point3Dtype& high) {
        for (int axis = 0; axis < 3; ++axis) {
            if (GetCoord3D(low, axis) < GetCoord3D(min, axis))
                coordassign(min, axis, GetCoord3D(low, axis));
            if (GetCoord3D(high, axis) > GetCoord3D(max, axis))
                coordassign(max, axis, GetCoord3D(high, axis));
        }
    }
};

/// One corner of the bounding box of n points, by `pick`, an fmin or fmax, which passes NaN over;
/// coordinates that are not finite are no data, and where there are no others the corner has 0.
template <class Pick>
point3Dtype CornerOfData(const point3Dtype* pts, int n, Pick pick) {
    point3Dtype corner;
    if (pts == nullptr || n < 1) return corner;
    AssignPoint3D(corner, kNoData, kNoData, kNoData);
    for (int i = 0; i < n; ++i) {
        if (std::isfinite(pts[i].x)) corner.x = pick(corner.x, pts[i].x);
        if (std::isfinite(pts[i].y)) corner.y = pick(corner.y, pts[i].y);
        if (std::isfinite(pts[i].z)) corner.z = pick(corner.z, pts[i].z);
    }
    for (int axis = 0; axis < 3; ++axis)
        if (std::isnan(GetCoord3D(corner, axis))) coordassign(corner, axis, 0.0);
    return corner;
}

/// The sums over nGroups rows of n values, of what is finite; NaN where there is nothing else.
void SumGroups(const double* y, int n, int nGroups, double* sums) {
    for (int i = 0; i < n; ++i) {
        bool any = false;
        double sum = 0.0;
        for (int g = 0; g < nGroups; ++g) {
            const double value = y[static_cast<std::size_t>(g) * static_cast<std::size_t>(n) +
                                   static_cast<std::size_t>(i)];
            if (!std::isfinite(value)) continue;
            sum += value;
            any = true;
        }
        sums[i] = any ? sum : kNoData;
    }
}

bool IsInverted(const CTransform3D& t, int axis) {
    return t.LogLimits(axis, GetCoord3D(t.GetScaleMax(), axis)) <
           t.LogLimits(axis, GetCoord3D(t.GetScaleMin(), axis));
}

/// Each axis runs along the edge of the box where its labels hide nothing when one looks from above
/// and a little from the left: x in front below, y on the right below, z in front on the left.
void PlaceAxis(CAxes3D& axes, const CTransform3D& t, int axis) {
    const point3Dtype min = t.GetScaleMin();
    const point3Dtype max = t.GetScaleMax();
    if (axis == 0) axes.SetAxisIntercept(axis, max.y, min.z);
    if (axis == 1) axes.SetAxisIntercept(axis, max.x, min.z);
    if (axis == 2) axes.SetAxisIntercept(axis, min.x, max.y);
}

/// The direction that leads away from the box; on a scale that runs backwards the opposite one
/// does.
int OffDirection(const CTransform3D& t, int axis) {
    const int dir = kOffDirection[axis];
    return IsInverted(t, dir % 3) ? (dir + 3) % 6 : dir;
}

/// Height by width of a chart at a position of its view. Before its first drawing the view has no
/// size yet; then the size of its image counts.
double AspectToBe(const CChartView3D* view, const GLViewRType& position) {
    int width = 0;
    int height = 0;
    if (view != nullptr) view->GetViewSize(&width, &height);
    const CDIBSection* const image = view == nullptr ? nullptr : view->GetDIBSectionPntr();
    if ((width < 1 || height < 1) && image != nullptr && image->GetBitmap() != nullptr) {
        width = image->GetBitmap()->Width();
        height = image->GetBitmap()->Height();
    }
    const double aspect = height * position.height / (width * position.width);
    return std::isfinite(aspect) && aspect > 0.0 ? aspect : 1.0;
}

void ScaleLinearAxis(CAxes3D& axes, const CTransform3D& t, int axis) {
    const double min = axes.GetAxisMin(axis);
    const double max = axes.GetAxisMax(axis);
    const detail::TicMarks tics = detail::CalcAxisTicMarks(min, max);
    const double major = tics.perMajor * tics.space;
    const double center = detail::CenterInside(min, max, tics.origin, major);
    const int dir = OffDirection(t, axis);
    axes.SetAxisTics(axis, center, tics.space, tics.perMajor, kMinorTicLength, kMajorTicLength,
                     dir);
    std::vector<double> values;
    detail::WalkLinear(center, major, min, max, [&](double v, int) { values.push_back(v); });
    const detail::LabelFormat label = detail::ShortestFormat(
        values, major, axes.GetAxisLabels(axis)->GetEngString(), {kFixed, tics.decimals});
    axes.SetAxisLabels(axis, kFacingViewer, 0, dir, label.decimals, kAllEnds, kBlack);
    axes.SetAxisLabelsFormat(axis, label.format);
}

void ScaleLogAxis(CAxes3D& axes, const CTransform3D& t, int axis) {
    const detail::TicMarks tics =
        detail::CalcAxisTicMarks(axes.GetAxisMin(axis), axes.GetAxisMax(axis));
    const double min = t.LogLimits(axis, axes.GetAxisMin(axis));
    const double max = t.LogLimits(axis, axes.GetAxisMax(axis));
    const int dir = OffDirection(t, axis);
    axes.SetAxisTics(axis, detail::LowestDecade(min, max), tics.space, kLogNthTic, kMinorTicLength,
                     kMajorTicLength, dir);
    axes.SetAxisLabels(axis, kFacingViewer, 0, dir, tics.decimals, kAllEnds, kBlack);
    // From ten thousands on a suffix is shorter; below 1 only the general format has all digits.
    const bool suffixes = min >= 1.0 && max >= 1e4;
    axes.SetAxisLabelsFormat(axis, suffixes ? kEngineering : kGeneral);
    axes.SetAxisLabelsDecimals(axis, suffixes ? 0 : kLogDigits);
}

void ScaleAxis(CAxes3D& axes, const CTransform3D& t, int axis) {
    if (t.GetAxisScaleMode(axis) != 0) {
        ScaleLogAxis(axes, t, axis);
    } else {
        ScaleLinearAxis(axes, t, axis);
    }
}

/// The nearest limit of a logarithmic axis on one side of a value above 0: a decade, or 1, 2 or 5
/// times one.
double LogLimit(double v, bool up, bool decade) {
    const auto power = [](int k) { return std::pow(10.0, k); };
    int k = static_cast<int>(std::floor(std::log10(v)));
    if (power(k) > v) --k;  // the logarithm was rounded
    std::vector<double> steps = {power(k), power(k + 1)};
    if (!decade) steps.insert(steps.begin() + 1, {2.0 * power(k), 5.0 * power(k)});
    if (up)
        return *std::ranges::find_if(steps, [&](double s) { return s >= v || s == steps.back(); });
    double below = steps.front();
    for (const double s : steps)
        if (s <= v) below = s;
    return below;
}

/// Limits of a logarithmic axis.
std::pair<double, double> LogLimits(const DataRange& range, int minorOnly) {
    if (range.count == 0) return {1.0, 10.0};
    const bool decades = minorOnly == 0 && range.max >= 10.0 * range.min;
    const double min = LogLimit(range.min, false, decades);
    double max = LogLimit(range.max, true, decades);
    if (!(max > min)) max = LogLimit(1.5 * max, true, decades);
    return {min, max};
}

}  // namespace

void CChart3D::SetAutoScaleMode(int axis, int mode) {
    if (axis >= 0 && axis < 3) m_AutoScaleMode[static_cast<std::size_t>(axis)] = mode;
}

void CChart3D::AddData(AutoRanges& ranges, int axis, const double* values, int n) const {
    if (!IsLogarithmic(axis) || values == nullptr) return;
    for (int i = 0; i < n; ++i)
        if (std::isfinite(values[i])) ranges[static_cast<std::size_t>(axis)].Add(values[i], true);
}

void CChart3D::AddData25D(AutoRanges& ranges, const double* x, const double* y, int n,
                          int orientation) const {
    AddData(ranges, orientation == 1 ? 1 : 0, x, n);
    AddData(ranges, 2, y, n);
}

/// Makes those axes of a new transform logarithmic that have ranges to be.
CTransform3D* CChart3D::Scaled(CTransform3D* t, const AutoRanges& ranges, int minorOnly) const {
    point3Dtype min = t->GetScaleMin();
    point3Dtype max = t->GetScaleMax();
    for (int axis = 0; axis < 3; ++axis) {
        const DataRange& range = ranges[static_cast<std::size_t>(axis)];
        if (!IsLogarithmic(axis) || range.count + range.leftOut == 0) continue;
        if (range.leftOut > 0)
            detail::Diagnose("AutoTransform", range.leftOut,
                             " values are not positive, and no data on the logarithmic axis ",
                             axis);
        const auto [low, high] = LogLimits(range, minorOnly);
        coordassign(min, axis, low);
        coordassign(max, axis, high);
        t->SetAxisScaleMode(axis, SCALE_LOGARITHMIC);
    }
    t->SetScale(min, max);
    return t;
}

void CChart3D::RoundAxis(double& min, double& max, int minorOnly) {
    detail::RoundAxis(min, max, minorOnly);
}

void CChart3D::CalcAxisTicMarks(double min, double max, double& ticOrigin, double& ticSpace,
                                int& ticsPerMajor, int& decimals) {
    const detail::TicMarks tics = detail::CalcAxisTicMarks(min, max);
    ticOrigin = tics.origin;
    ticSpace = tics.space;
    ticsPerMajor = tics.perMajor;
    decimals = tics.decimals;
}

CTransform3D* CChart3D::AutoTransform3D(const point3Dtype* pts, int n, int minorOnly) {
    point3Dtype min = CornerOfData(pts, n, [](double a, double b) { return std::fmin(a, b); });
    point3Dtype max = CornerOfData(pts, n, [](double a, double b) { return std::fmax(a, b); });
    RoundAxis(min.x, max.x, minorOnly);
    RoundAxis(min.y, max.y, minorOnly);
    RoundAxis(min.z, max.z, minorOnly);
    AutoRanges ranges;
    for (int i = 0; i < n && pts != nullptr; ++i)
        for (int axis = 0; axis < 3; ++axis) {
            const double value = GetCoord3D(pts[i], axis);
            AddData(ranges, axis, &value, 1);
        }
    return Scaled(NewTransform(min, max), ranges, minorOnly);
}

CTransform3D* CChart3D::AutoTransformPolysurface(CPolysurface* ps, int minorOnly) {
    if (ps == nullptr) return AutoTransform3D(nullptr, 0, minorOnly);
    return AutoTransform3D(std::as_const(*ps).GetPSPoints(), ps->GetPSNumPoints(), minorOnly);
}

void CChart3D::MinMaxValues25D(const double* x, const double* y, int n, double depth,
                               int orientation, int minorOnly, point3Dtype& min, point3Dtype& max) {
    min = point3Dtype{};
    max = point3Dtype{};
    const bool alongY = orientation == 1;
    double& low = alongY ? min.y : min.x;
    double& high = alongY ? max.y : max.x;
    low = detail::MinimumOfData(x, n);
    high = detail::MaximumOfData(x, n);
    RoundAxis(low, high, minorOnly);
    (alongY ? max.x : max.y) = depth;
    min.z = detail::MinimumOfData(y, n);
    max.z = detail::MaximumOfData(y, n);
    RoundAxis(min.z, max.z, minorOnly);
}

CTransform3D* CChart3D::AutoTransform25D(const double* x, const double* y, int n, double depth,
                                         int orientation, int minorOnly) {
    point3Dtype min;
    point3Dtype max;
    MinMaxValues25D(x, y, n, depth, orientation, minorOnly, min, max);
    AutoRanges ranges;
    AddData25D(ranges, x, y, n, orientation);
    return Scaled(NewTransform(min, max), ranges, minorOnly);
}

CTransform3D* CChart3D::AutoTransformN25D(double** x, double** y, const int* counts, int nSets,
                                          double depth, int orientation, int minorOnly) {
    Union all;
    AutoRanges ranges;
    if (x == nullptr || y == nullptr || counts == nullptr) nSets = 0;
    for (int i = 0; i < nSets; ++i) {
        point3Dtype min;
        point3Dtype max;
        MinMaxValues25D(x[i], y[i], counts[i], depth, orientation, minorOnly, min, max);
        AddData25D(ranges, x[i], y[i], counts[i], orientation);
        all.Add(min, max);
    }
    return Scaled(NewTransform(all.min, all.max), ranges, minorOnly);
}

CTransform3D* CChart3D::AutoTransformGroup25D(const double* x, const double* y, double base, int n,
                                              int nGroups, double depth, int orientation,
                                              int stacked, int minorOnly) {
    if (stacked != 0) {
        const auto sums =
            detail::NewArray<double>(n, {ERR3DCLASS_CHART3D, "AutoTransformGroup25D"});
        if (y != nullptr) SumGroups(y, n, nGroups, sums.get());
        CTransform3D* const t = AutoTransform25D(x, sums.get(), n, depth, orientation, minorOnly);
        point3Dtype min = t->GetScaleMin();
        if (min.z > base && (base > 0.0 || t->GetAxisScaleMode(2) == 0)) {
            min.z = base;
            t->SetScaleMin(min);
        }
        return t;
    }
    Union all;
    AutoRanges ranges;
    if (base > 0.0) AddData(ranges, 2, &base, 1);
    for (int g = 0; g < nGroups; ++g) {
        const double* row = y == nullptr ? nullptr : y + static_cast<std::ptrdiff_t>(g) * n;
        point3Dtype min;
        point3Dtype max;
        MinMaxValues25D(x, row, n, depth, orientation, minorOnly, min, max);
        AddData25D(ranges, x, row, n, orientation);
        all.Add(min, max);
    }
    if (all.min.z > base) all.min.z = base;
    return Scaled(NewTransform(all.min, all.max), ranges, minorOnly);
}

CTransform3D* CChart3D::AutoTransform3D(std::span<const point3Dtype> pts, int minorOnly) {
    return AutoTransform3D(pts.data(), detail::CountOf(pts, At("AutoTransform3D")), minorOnly);
}

void CChart3D::MinMaxValues25D(std::span<const double> x, std::span<const double> y, double depth,
                               int orientation, int minorOnly, point3Dtype& min, point3Dtype& max) {
    const int n = detail::SameCount(x, y, At("MinMaxValues25D"));
    // An array's first value is looked at whatever its count.
    MinMaxValues25D(n != 0 ? x.data() : nullptr, n != 0 ? y.data() : nullptr, n, depth, orientation,
                    minorOnly, min, max);
}

CTransform3D* CChart3D::AutoTransform25D(std::span<const double> x, std::span<const double> y,
                                         double depth, int orientation, int minorOnly) {
    const int n = detail::SameCount(x, y, At("MinMaxValues25D"));
    return AutoTransform25D(n != 0 ? x.data() : nullptr, n != 0 ? y.data() : nullptr, n, depth,
                            orientation, minorOnly);
}

CTransform3D* CChart3D::AutoTransformN25D(std::span<const std::span<const double>> x,
                                          std::span<const std::span<const double>> y, double depth,
                                          int orientation, int minorOnly) {
    const int sets = detail::SameCount(x, y, At("AutoTransformN25D"));
    Union all;
    AutoRanges ranges;
    for (std::size_t i = 0; i < static_cast<std::size_t>(sets); ++i) {
        point3Dtype min;
        point3Dtype max;
        MinMaxValues25D(x[i], y[i], depth, orientation, minorOnly, min, max);
        AddData25D(ranges, x[i].data(), y[i].data(), static_cast<int>(x[i].size()), orientation);
        all.Add(min, max);
    }
    return Scaled(NewTransform(all.min, all.max), ranges, minorOnly);
}

CTransform3D* CChart3D::AutoTransformGroup25D(std::span<const double> x, std::span<const double> y,
                                              double base, int nGroups, double depth,
                                              int orientation, int stacked, int minorOnly) {
    const detail::Origin here = At("AutoTransformGroup25D");
    const int n = detail::CountOf(x, here);
    if (nGroups < 0 || y.size() != x.size() * static_cast<std::size_t>(nGroups))
        detail::Raise(ERR3D_PARAMETER, here.cls, here.operation,
                      detail::Say(nGroups, " groups of ", n, " values are not ", y.size()));
    return AutoTransformGroup25D(n != 0 ? x.data() : nullptr, n != 0 ? y.data() : nullptr, base, n,
                                 nGroups, depth, orientation, stacked, minorOnly);
}

CAxes3D* CChart3D::AutoAxes(CTransform3D* t) {
    CAxes3D* const axes = NewAxes(t);
    const detail::TextScale text{m_Saved.fontSize * m_Saved.fontHeightSF,
                                 AspectToBe(m_pChartView, m_Saved.position)};
    for (int axis = 0; axis < 3; ++axis) {
        PlaceAxis(*axes, *t, axis);
        ScaleAxis(*axes, *t, axis);
        axes->SetAxisColor(axis, kBlack);
        axes->SetAxisTicColor(axis, kBlack);
        axes->SetAxisLabelsSize(axis, detail::FittingLabelSize(*axes, *t, axis, text));
        axes->EnableAxis(axis, 1);
        axes->EnableAxisLabels(axis, 1);
    }
    axes->SetAxisTitleSize(2, detail::FittingTitleSize(text));
    return axes;
}

}  // namespace varnel
