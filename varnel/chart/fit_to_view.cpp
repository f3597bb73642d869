// CChart3D: the layout of the box in the viewport.
#include <algorithm>
#include <cmath>
#include <set>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/foundation/detail/pixel_count.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

TextSizes CChart3D::GetTextSizes() const {
    const GLViewportType& v = m_Saved.viewport;
    double own = std::min(v.width, v.height);
    double whole = own;
    int width = 0;
    int height = 0;
    if (m_pChartView != nullptr) m_pChartView->GetViewSize(&width, &height);
    if (width > 0 && height > 0) {
        // The viewport follows from the position at the next drawing.
        own = std::min(width * m_Saved.position.width, height * m_Saved.position.height);
        whole = std::min(width, height);
    }
    const int side = detail::PixelCount(std::sqrt(own * std::max(own, whole)));
    return TextSizesFor(side, side);
}

double CChart3D::DrawnFontSize() const {
    if (m_Added.autoText == 0) return m_Saved.fontSize;
    const GLViewportType& v = m_Saved.viewport;
    return 2.0 * GetTextSizes().label / std::max(1, std::min(v.width, v.height));
}

void CChart3D::SetReservedRoom(double left, double bottom, double right, double top) {
    m_Reserved = {left, bottom, right, top};
}

/// What others than the axes need at the edges: titles, the footer, legends.
FitOptions CChart3D::RoomForBox() const {
    const GLViewportType& v = m_Saved.viewport;
    FitOptions room;
    room.left = m_Reserved.left;
    room.bottom = m_Reserved.bottom;
    room.right = m_Reserved.right;
    room.top = m_Reserved.top;
    const CHeader3D& header = *m_pHeader;
    if (header.GetHeaderEnable() == 0) return room;
    // The sizes of the header's texts are in terms of an em of the chart's text.
    const double side = std::min(v.width, v.height);
    const double em = DrawnFontSize() * m_Saved.fontHeightSF * side / 2.0;
    const HeaderStrips strips = StripsFor(
        {em, em * header.GetTitle1Size(), em * header.GetTitle2Size(), em * header.GetFooterSize()},
        !header.GetTitle1().empty(), !header.GetTitle2().empty(), !header.GetFooter().empty());
    const double edge = std::max(0.0, header.GetMargin() * v.height / 2.0 - room.margin * side);
    if (strips.top > 0.0) room.top += strips.top + edge;
    if (strips.bottom > 0.0) room.bottom += strips.bottom + edge;
    return room;
}

BoxPlacement CChart3D::FitAxes(CAxes3D& axes, CTransform3D& t, FitOptions options) const {
    const GLViewportType& v = m_Saved.viewport;
    BoxPlacement start;
    start.width = v.width;
    start.height = v.height;
    start.trueProportions = t.GetTrueProportions() != 0;
    start.rotation = t.GetRotation();
    t.ClearFit();
    options.proportions = t.GetDrawnRect();
    options.fillDepth = m_Added.fillDepth;
    const MeasureFunction measure = [&](const BoxPlacement& p) {
        t.SetRotate(p.rotation);
        t.SetFit(p.rect, p.offset);
        const detail::PixelBox all = axes.MeasureAxes(v.width, v.height).bounds;
        return PixelRect{all.left, all.bottom, all.right, all.top};
    };
    const BoxPlacement chosen = m_Added.autoFit == AUTOFIT_TURN
                                    ? FitTurningBox(start, options, measure)
                                    : FitBox(start, options, measure);
    t.SetRotate(start.rotation);
    t.SetFit(chosen.rect, chosen.offset);
    return chosen;
}

namespace {

/// What the two faces of a flat box that look at the viewer and away both cover.
PixelRect InnerArea(const BoxPlacement& box) {
    int deep = 0;
    for (int axis = 1; axis < 3; ++axis)
        if (GetCoord3D(box.rect, axis) < GetCoord3D(box.rect, deep)) deep = axis;
    PixelRect inner{-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL};
    for (const double face : {-1.0, 1.0}) {
        PixelRect rect{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        for (int corner = 0; corner < 4; ++corner) {
            point3Dtype at;
            int bit = 0;
            for (int axis = 0; axis < 3; ++axis) {
                const double end = axis == deep ? face : (corner >> bit++ & 1) != 0 ? 1.0 : -1.0;
                coordassign(at, axis, end * GetCoord3D(box.rect, axis));
            }
            const PixelPoint p = BoxToPixel(box, at);
            rect.left = std::min(rect.left, p.x);
            rect.right = std::max(rect.right, p.x);
            rect.bottom = std::min(rect.bottom, p.y);
            rect.top = std::max(rect.top, p.y);
        }
        inner = {std::max(inner.left, rect.left), std::max(inner.bottom, rect.bottom),
                 std::min(inner.right, rect.right), std::min(inner.top, rect.top)};
    }
    return inner;
}

PixelRect Moved(const PixelRect& r, double x, double y) {
    return {x + r.left, y + r.bottom, x + r.right, y + r.top};
}

}  // namespace

BoxPlacement CChart3D::FitToView() {
    BoxPlacement chosen;
    if (m_pOpenGL == nullptr) return chosen;
    const GLContext::HostContextGuard host;
    if (m_pChartView != nullptr) m_pChartView->UseFont();
    SetChartPosition(m_Saved.position);
    SetFontFactors();
    const MatrixScope once(m_pOpenGL);
    const GLViewportType& v = m_Saved.viewport;
    const FitOptions room = RoomForBox();
    m_PlotArea = {v.x + room.left, v.y + room.bottom, v.x + v.width - room.right,
                  v.y + v.height - room.top};
    m_BoxArea = {0.0, 0.0, -1.0, -1.0};
    PixelRect covered{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    std::set<const CTransform3D*> done;
    for (const auto& axes : m_Objects.axes) {
        CTransform3D* const t = axes->GetTransform();
        if (t == nullptr || !done.insert(t).second) continue;
        chosen = FitAxes(*axes, *t, room);
        m_BoxArea = Moved(BoxExtent(chosen), v.x, v.y);
        m_InnerArea = m_Added.fillDepth > 0.0 ? Moved(InnerArea(chosen), v.x, v.y) : m_BoxArea;
        const detail::PixelBox all = axes->MeasureAxes(v.width, v.height).bounds;
        covered.Add({all.left, all.bottom, all.right, all.top});
    }
    // Of a chart that is being turned that would change.
    m_CoveredRight = m_PlotArea.right;
    if (m_Added.autoFit != AUTOFIT_TURN && !covered.IsEmpty()) {
        const double margin = room.margin * std::min(v.width, v.height);
        m_CoveredRight = std::min(m_PlotArea.right, v.x + covered.right + margin);
    }
    return chosen;
}

}  // namespace varnel
