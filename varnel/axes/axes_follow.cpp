// CAxes3D: what goes with the view and what is measured: placing, names, dates, extents.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/axes/detail/known_tics.h"
#include "varnel/axes/detail/label_row.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"
#include "varnel/scale/calendar.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::MatrixOf;
using detail::PixelPoint;
using detail::PlaneAt;

// Device units by which letters lie before the box, and lines of axes before its edges.
constexpr double kInFront = 0.02;
constexpr double kLinesInFront = 0.004;

int Opposite(int plane) {
    return (plane + 3) % 6;
}

detail::Vec3 Apply(const detail::Matrix4& m, const point3Dtype& p) {
    const auto row = [&](int i) {
        return m.At(i, 0) * p.x + m.At(i, 1) * p.y + m.At(i, 2) * p.z + m.At(i, 3);
    };
    return {row(0), row(1), row(2)};
}

/// Whether the planes across an axis of the box are seen as lines.
bool IsEdgeOn(const detail::BoxView& view, int axis) {
    const detail::Vec3& e = view.edges[axis];
    return std::abs(e.z) < 1e-6 * std::sqrt(detail::Dot(e, e));
}

}  // namespace

void CAxes3D::SetFollowView(int mode) {
    m_Added.followView = std::clamp<int>(mode, FOLLOW_OFF, FOLLOW_TURN);
    m_pLastChoice.reset();
}

void CAxes3D::SetCategories(int axis, std::span<const CString> names,
                            std::span<const double> positions, int ticsBetween) {
    CAxis3D* const line = GetAxis(axis);
    CAxisLabels3D* const labels = GetAxisLabels(axis);
    if (names.empty() || line == nullptr || labels == nullptr) return;
    SetAxisDates(axis, 0);
    std::vector<double> places(positions.begin(), positions.end());
    if (places.empty()) {
        places.resize(names.size());
        std::iota(places.begin(), places.end(), 1.0);
    }
    places.resize(std::min(places.size(), names.size()));

    std::vector<double> sorted = places;
    std::sort(sorted.begin(), sorted.end());
    double smallest = HUGE_VAL;
    std::vector<double> between;
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        if (sorted[i] > sorted[i - 1]) smallest = std::min(smallest, sorted[i] - sorted[i - 1]);
        between.push_back((sorted[i] + sorted[i - 1]) / 2.0);
    }
    const double half = std::isfinite(smallest) ? smallest / 2.0 : 0.5;
    line->SetAxisLimits(sorted.front() - half, sorted.back() + half);
    if (ticsBetween != 0) {
        between.push_back(line->GetAxisMin());
        between.push_back(line->GetAxisMax());
    }
    line->SetTicValues(ticsBetween != 0 ? between : places);
    labels->SetAxisLabelsValues(places);
    labels->SetAxisLabelsStrings(names.first(places.size()));
    SetAutoTics(axis, 0);
}

void CAxes3D::SetAxisDates(int axis, int on, const CString& format) {
    CAxis3D* const line = GetAxis(axis);
    if (line == nullptr) return;
    const bool was = m_Added.dates[axis] != 0;
    m_Added.dates[axis] = on != 0 ? 1 : 0;
    m_Added.dateFormats.resize(3);
    m_Added.dateFormats[static_cast<std::size_t>(axis)] = format;
    GetAxisLabels(axis)->SetAxisLabelsValues({});
    if (on != 0 || !was) return;
    line->SetTicValues({});
    GetAxisLabels(axis)->SetAxisLabelsStrings(nullptr, 0);
    GetAxisLabels(axis)->EnableAxisLabelsStrings(0);
}

detail::BoxView CAxes3D::ViewOfBox(double width, double height) const {
    const detail::Matrix4 toDevice = MatrixOf(m_pTransform->GetGraphTransform());
    point3Dtype low;
    point3Dtype high;
    for (int axis = 0; axis < 3; ++axis) {
        coordassign(low, axis, m_pTransform->CVTWS(axis, m_pAxis[axis]->GetAxisMin()));
        coordassign(high, axis, m_pTransform->CVTWS(axis, m_pAxis[axis]->GetAxisMax()));
    }
    detail::BoxView view;
    view.origin = Apply(toDevice, low);
    for (int axis = 0; axis < 3; ++axis) {
        point3Dtype end = low;
        coordassign(end, axis, GetCoord3D(high, axis));
        view.edges[axis] = Apply(toDevice, end) - view.origin;
    }
    view.width = width;
    view.height = height;
    return view;
}

double CAxes3D::EmInPixels(double height) const {
    const CFont3D* const font = m_pOpenGL->GetFont();
    if (font == nullptr) return 0.0;
    return font->GetFontScaleFactor() * m_pTransform->GetFontHeightSF() * height / 2.0 *
           m_pTransform->GetUnitScale().y;
}

bool CAxes3D::HasFace() const {
    const CFont3D* const font = m_pOpenGL->GetFont();
    return font != nullptr && font->GetFace() != nullptr;
}

bool CAxes3D::HasChosenTics() const {
    const auto isSet = [](int on) { return on != 0; };
    return std::ranges::any_of(m_Added.dates, isSet) ||
           std::ranges::any_of(m_Added.autoTics, isSet);
}

/// Tics that are chosen anew for the view, from the lengths of the axes in heights of their labels.
void CAxes3D::PrepareTics(const detail::BoxView& view) {
    for (int axis = 0; axis < 3; ++axis) {
        m_TitleNotes[axis].clear();
        const PixelPoint edge = view.EdgeInPixels(axis);
        const double em = EmInPixels(view.height) * m_pAxisLabels[axis]->GetAxisLabelsSize();
        const double length = em > 0.0 ? std::hypot(edge.x, edge.y) / em : 30.0;
        const bool across = std::abs(edge.x) > std::abs(edge.y);
        if (m_Added.dates[axis] != 0)
            PrepareDates(axis, length, across);
        else if (m_Added.autoTics[axis] != 0)
            PrepareNumbers(axis, em > 0.0 ? std::abs(edge.x) / em : 30.0,
                           em > 0.0 ? std::abs(edge.y) / em : 30.0);
    }
}

void CAxes3D::PrepareDates(int axis, double length, bool across) {
    CAxis3D& line = *m_pAxis[axis];
    CalendarOptions options;
    const auto number = static_cast<std::size_t>(axis);
    if (number < m_Added.dateFormats.size()) options.format = m_Added.dateFormats[number];
    options.length = length;
    options.across = across;
    CalendarScale scale = CalendarInside(line.GetAxisMin(), line.GetAxisMax(), options);
    // One or two labels that are long for the axis are better than none.
    for (int i = 0; i < 3 && scale.majors.size() < 2; ++i) {
        options.length *= 2.0;
        scale = CalendarInside(line.GetAxisMin(), line.GetAxisMax(), options);
    }
    line.SetTicValues(scale.majors, scale.minors);
    std::vector<CString> texts = scale.texts;
    for (std::size_t i = 0; i < texts.size() && i < scale.contexts.size(); ++i)
        if (!scale.contexts[i].empty()) texts[i] += "\n" + scale.contexts[i];
    m_pAxisLabels[axis]->SetAxisLabelsStrings(texts);
}

void CAxes3D::PrepareNumbers(int axis, double across, double up) {
    CAxis3D& line = *m_pAxis[axis];
    if (m_pTics == nullptr) m_pTics = std::make_unique<detail::KnownTics>();
    const auto along = [&](double length, bool beside) -> const detail::KnownTics::Entry& {
        // In steps, so that many views share the same tics.
        constexpr double kStep = 0.25;
        ScaleOptions options;
        options.logarithmic = m_pTransform->GetAxisScaleMode(axis) != 0;
        options.whole = m_Added.wholeTics[axis] != 0;
        options.length = std::max(kStep, kStep * std::floor(length / kStep));
        options.across = beside;
        return m_pTics->Get(line.GetAxisMin(), line.GetAxisMax(), options);
    };
    constexpr double kSlanted = 0.15;
    // Lines that lie beside each other as well may follow each other more closely than in a column.
    constexpr double kCloser = 1.8;
    const bool isWide = across >= up;
    detail::KnownTics::Entry chosen = isWide ? along(across, true) : along(up, false);
    // On a slanted axis labels may be free of each other the other way.
    if (std::min(across, up) > kSlanted * std::max(across, up)) {
        const detail::KnownTics::Entry& other =
            isWide ? along(kCloser * up, false) : along(across, true);
        if (other.labels.texts.size() > chosen.labels.texts.size()) chosen = other;
    }
    const auto& [scale, labels] = chosen;
    line.SetTicValues(scale.majors, scale.minors);
    m_pAxisLabels[axis]->SetAxisLabelsStrings(labels.texts);
    m_TitleNotes[axis] = labels.note;
}

void CAxes3D::SetAutoTics(int axis, int on, int whole) {
    CAxisLabels3D* const labels = GetAxisLabels(axis);
    if (labels == nullptr) return;
    m_Added.autoTics[axis] = on;
    m_Added.wholeTics[axis] = whole;
    if (on == 0) return;
    m_Added.dates[axis] = 0;
    labels->SetAxisLabelsValues({});
}

void CAxes3D::SetTicHeights(double major, double minor) {
    m_Added.ticHeights[0] = major;
    m_Added.ticHeights[1] = minor;
}

void CAxes3D::FillContent(int axis, double height, detail::AxisContent& content) const {
    const CAxis3D& line = *m_pAxis[axis];
    const CAxisLabels3D& labels = *m_pAxisLabels[axis];
    content.hasLine = m_Saved.m_bAxisEnable[axis] != 0;
    content.ticLength = std::max(line.GetAxisMajorTicLength(), 0.0);
    content.ticHeight = m_Added.ticHeights[0];
    content.mayTurn = m_pTransform->GetTrueProportions() != 0;
    const double em = EmInPixels(height);
    content.labelEm = em * labels.GetAxisLabelsSize();
    content.titleEm = em * labels.GetAxisTitleSize();
    if (m_Saved.m_bAxisLabelsEnable[axis] != 0) labels.FillContent(content);
    // Dates are names as far as words go, but leave every second one out rather than shrink.
    if (m_Added.dates[axis] != 0 || m_Added.autoTics[axis] != 0) content.named = false;
    if (content.named) detail::ReadNamesAsNumbers(content);
    if (!m_TitleNotes[axis].empty())
        content.title += (content.title.empty() ? "" : ", ") + m_TitleNotes[axis];
    for (const bool atMax : {false, true}) {
        const int plane = PlaneAt(axis, atMax);
        const int used =
            PlaneInUse(plane, GetWallEnable(Opposite(plane)) != 0, GetWallEnable(plane) != 0);
        if (used < 0) continue;
        const Wall& wall = m_Saved.m_Wall[used];
        (atMax ? content.wallAtMax : content.wallAtMin) =
            wall.m_WallMode == kWall ? wall.m_WallThickness * (1.0 + kWallGaps * wall.m_WallOffset)
                                     : wall.m_WallOffset;
    }
}

/// The plane whose attributes a plane has: its own, or those of the one opposite; -1 for none.
int CAxes3D::PlaneInUse(int plane, bool hasOpposite, bool hasOwn) const {
    if (hasOwn) return plane;
    return hasOpposite ? Opposite(plane) : -1;
}

detail::AxesPlacement CAxes3D::PlaceFollowing(const detail::BoxView& view) const {
    detail::AxisContent content[3];
    for (int axis = 0; axis < 3; ++axis)
        FillContent(axis, view.height, content[axis]);
    const CFont3D* const font = m_pOpenGL->GetFont();
    const detail::TextMeasurer measurer(font == nullptr ? nullptr : font->GetFace());
    const auto measure = [&measurer](std::string_view line) {
        const detail::TextSize size = measurer.Measure(line);
        return detail::TextExtent{size.width, size.height, size.descent};
    };
    return detail::PlaceAxes(view, content, measure, m_pLastChoice.get());
}

detail::AxesExtents CAxes3D::MeasureAxes(int width, int height) {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr || !IsComplete()) return {};
    // Before its first drawing a transform does not know in what proportions it is seen.
    const bool isNew = m_pTransform->GetDrawnViewport().width <= 0;
    if (isNew) m_pTransform->SetDrawnViewport({0, 0, width, height}, height);
    detail::AxesExtents extents = MeasureNow(width, height);
    if (isNew) m_pTransform->SetDrawnViewport({}, 0);
    return extents;
}

detail::AxesExtents CAxes3D::MeasureNow(int width, int height) {
    detail::AxesExtents extents;
    m_pTransform->ChartTransform();
    const detail::BoxView view = ViewOfBox(width, height);
    PrepareTics(view);
    if (m_Added.followView == FOLLOW_OFF) {
        MeasureFixed(view, extents);
        return extents;
    }
    detail::AxesPlacement placement = PlaceFollowing(view);
    extents.bounds = placement.bounds;
    if (!HasFace()) return extents;
    extents.texts.reserve(placement.texts.size());
    for (detail::PlacedText& text : placement.texts)
        extents.texts.push_back(
            {text.axis, text.isTitle, std::move(text.text), text.box, text.shape});
    return extents;
}

void CAxes3D::DrawFollowing(const detail::BoxView& view) {
    const detail::AxesPlacement placement = PlaceFollowing(view);
    if (m_Added.followView == FOLLOW_TURN)
        m_pLastChoice = std::make_unique<detail::AxesChoice>(placement.choice);
    // The planes that look away, in the attributes of those that are switched on. One that is seen
    // edge-on would be no more than a line over that of an axis.
    const Saved kept = m_Saved;
    for (int normal = 0; normal < 3; ++normal) {
        const int plane = PlaneAt(normal, placement.choice.back[normal]);
        const int other = Opposite(plane);
        const int wall = PlaneInUse(plane, GetWallEnable(other) != 0, GetWallEnable(plane) != 0);
        const int grid = PlaneInUse(plane, GetGridEnable(other) != 0, GetGridEnable(plane) != 0);
        if (wall >= 0) m_Saved.m_Wall[plane] = kept.m_Wall[wall];
        if (wall >= 0) m_Saved.m_PlaneColorMode[plane] = kept.m_PlaneColorMode[wall];
        if (grid >= 0) m_Saved.m_PlaneGrid[plane] = kept.m_PlaneGrid[grid];
        for (const int hidden : {other, IsEdgeOn(view, normal) ? plane : other}) {
            m_Saved.m_Wall[hidden].m_bWallEnable = 0;
            m_Saved.m_PlaneGrid[hidden].m_bGridEnable = 0;
        }
    }
    DrawAxesPlanes();
    m_Saved = kept;

    // Lines of axes lie before the edges of the planes that end there.
    detail::Matrix4 nearer = MatrixOf(m_pTransform->GetGraphTransform());
    nearer.m[14] -= kLinesInFront;
    m_pOpenGL->LoadMatrixTransform(nearer.m.data());
    for (int axis = 0; axis < 3; ++axis)
        if (placement.axes[axis].shown) DrawFollowingAxis(axis, placement);
    m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());

    m_pTransform->TextTransform();
    detail::TextPlace place;
    place.em = EmInPixels(view.height);
    place.units = m_pTransform->GetUnitScale();
    place.toDevice = MatrixOf(m_pTransform->GetFontTransform());
    for (std::size_t i = 0; i < 4; ++i) {
        place.toDevice.m[4 * i] /= place.units.x;
        place.toDevice.m[4 * i + 1] /= place.units.y;
    }
    place.width = view.width;
    place.height = view.height;
    place.depth = view.origin.z - kInFront;
    for (const detail::Vec3& edge : view.edges)
        place.depth += std::min(edge.z, 0.0);
    if (!(place.em > 0.0)) return;
    for (const auto& labels : m_pAxisLabels)
        labels->DrawPlaced(placement.texts, place);
}

void CAxes3D::DrawFollowingAxis(int axis, const detail::AxesPlacement& placement) {
    m_pOpenGL->SetColorMode(m_Saved.m_AxisColorMode[axis]);
    if (m_Saved.m_bAxisEnable[axis] == 0) return;
    CAxis3D placed = *m_pAxis[axis];
    const auto at = [&](int which) {
        const int other = placed.GetAxisInterceptAxis(which);
        const CAxis3D& crossed = *m_pAxis[other];
        return placement.choice.edges[axis][other] ? crossed.GetAxisMax() : crossed.GetAxisMin();
    };
    placed.SetAxisIntercept(at(1), at(2));
    placed.SetAxisTicDir(placement.axes[axis].ticDirection);
    if (m_Added.ticHeights[0] > 0.0) {
        const double length = placement.axes[axis].ticLength;
        placed.SetAxisMajorTicLength(length);
        placed.SetAxisMinorTicLength(length * m_Added.ticHeights[1] / m_Added.ticHeights[0]);
    }
    placed.DrawAxis();
}

}  // namespace varnel
