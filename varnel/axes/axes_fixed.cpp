// CAxes3D: axes that stay where they were put: what they cover, and labels that are chosen anew.
#include <algorithm>
#include <cmath>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::MatrixOf;
using detail::PixelPoint;
using detail::PlaneAt;

void Include(detail::PixelBox& box, PixelPoint p) {
    box.left = std::min(box.left, p.x);
    box.bottom = std::min(box.bottom, p.y);
    box.right = std::max(box.right, p.x);
    box.top = std::max(box.top, p.y);
}

/// The pixels that a text object covers under the transform's matrix for text.
detail::PixelQuad ShapeOf(const CTextObj3D& text, const CFont3D& font,
                          const CTransform3D& transform, const detail::BoxView& view) {
    const detail::TextSize extent = detail::TextMeasurer(font.GetFace()).Measure(text.GetString());
    point3Dtype scale;
    text.CalcComplexAspectRatio(scale);
    point3Dtype justify;
    text.calccharjust(justify, extent.width, extent.height);
    detail::MatrixStack matrix;
    matrix.Load(MatrixOf(transform.GetFontTransform()));
    const point3Dtype at = text.GetNormLocation();
    matrix.Translate(at.x, at.y, at.z);
    for (const CTextObj3D::PlaneTurn& turn : text.PlaneTurns(transform.GetRotation()))
        matrix.Multiply(detail::Rotation(turn.degrees, turn.axis));
    matrix.Scale(scale.x, scale.y, scale.z);
    matrix.Translate(justify.x, justify.y, justify.z);
    const auto corner = [&](double x, double y) {
        return view.ToPixel(matrix.ToDevice({x, y, 0.0, 0.0}));
    };
    return {{corner(0.0, -extent.descent), corner(extent.width, -extent.descent),
             corner(extent.width, extent.height), corner(0.0, extent.height)}};
}

}  // namespace

/// Calculates labels and title; false for an automatic axis that is too short to say something. The
/// title of an automatic axis is moved away from labels that it would touch.
bool CAxes3D::CalcFixedLabels(int axis, const detail::BoxView& view) {
    CAxisLabels3D& labels = *m_pAxisLabels[axis];
    const double em = EmInPixels(view.height) * labels.GetAxisLabelsSize();
    const bool isAutomatic = m_Added.autoTics[axis] != 0 || m_Added.dates[axis] != 0;
    const PixelPoint edge = view.EdgeInPixels(axis);
    if (isAutomatic &&
        std::hypot(edge.x, edge.y) < detail::kShortestNumbers * em * detail::kCapHeight)
        return false;
    labels.FreeLabelObjs();
    labels.CalcAxisLabels();
    for (const auto& label : labels.m_LabelObjs) {
        point3Dtype at;
        m_pTransform->NormalizePoint(label->GetLocation(), at);
        label->SetNormLocation(at);
    }
    if (isAutomatic) ClearTitle(axis, view, detail::kTitleGap * em);
    return true;
}

/// Moves a title away from the axis until it is `gap` pixels off every label.
void CAxes3D::ClearTitle(int axis, const detail::BoxView& view, double gap) {
    constexpr int kMostSteps = 100;
    CAxisLabels3D& labels = *m_pAxisLabels[axis];
    CTextObj3D& title = *labels.GetTitleObj();
    const CFont3D* const font = m_pOpenGL->GetFont();
    if (font == nullptr || title.GetString().empty()) return;
    const auto boxOf = [&](const CTextObj3D& text) {
        return ShapeOf(text, *font, *m_pTransform, view).Box();
    };
    std::vector<detail::PixelBox> taken;
    for (const auto& label : labels.m_LabelObjs)
        taken.push_back(boxOf(*label));
    for (int i = 0; i < kMostSteps; ++i) {
        const detail::PixelBox box = boxOf(title);
        if (std::ranges::none_of(taken, [&](const auto& b) { return b.Touches(box, gap, gap); }))
            return;
        point3Dtype at = title.GetNormLocation();
        labels.calctitlepoint(at, 0.1 * title.TextHeight(), labels.DirectionInBox());
        title.SetNormLocation(at);
    }
}

void CAxes3D::DrawFixedLabels(int axis, const detail::BoxView& view) {
    if (m_Saved.m_bAxisLabelsEnable[axis] == 0) return;
    m_pTransform->TextTransform();
    const bool shown = CalcFixedLabels(axis, view);
    m_pTransform->ChartTransform();
    if (shown) m_pAxisLabels[axis]->DrawCalculated();
}

void CAxes3D::MeasureFixed(const detail::BoxView& view, detail::AxesExtents& extents) {
    // Walls, tics and lines are counted as the box, grown by the longest of them.
    detail::AxisContent content[3];
    for (int axis = 0; axis < 3; ++axis)
        FillContent(axis, view.height, content[axis]);
    extents.bounds = {1e300, 1e300, -1e300, -1e300};
    for (int corner = 0; corner < 8; ++corner) {
        detail::Vec3 at = view.origin;
        for (int axis = 0; axis < 3; ++axis) {
            const bool atMax = (corner >> axis & 1) != 0;
            const bool own = GetWallEnable(PlaneAt(axis, atMax)) != 0;
            const double wall = atMax ? content[axis].wallAtMax : content[axis].wallAtMin;
            const double place = (atMax ? 1.0 : 0.0) + (own ? (atMax ? wall : -wall) : 0.0);
            const detail::Vec3& e = view.edges[axis];
            at = {at.x + place * e.x, at.y + place * e.y, at.z + place * e.z};
        }
        Include(extents.bounds, view.ToPixel(at));
    }
    if (!HasFace()) return;
    const CFont3D* const font = m_pOpenGL->GetFont();
    m_pTransform->TextTransform();
    const auto add = [&](int axis, bool isTitle, const CTextObj3D& text) {
        if (text.GetString().empty()) return;
        const detail::PixelQuad shape = ShapeOf(text, *font, *m_pTransform, view);
        const detail::PixelBox box = shape.Box();
        extents.texts.push_back({axis, isTitle, text.GetString(), box, shape});
        Include(extents.bounds, {box.left, box.bottom});
        Include(extents.bounds, {box.right, box.top});
    };
    for (int axis = 0; axis < 3; ++axis) {
        CAxisLabels3D& labels = *m_pAxisLabels[axis];
        if (m_Saved.m_bAxisLabelsEnable[axis] == 0 || !CalcFixedLabels(axis, view)) continue;
        for (const auto& label : labels.m_LabelObjs)
            add(axis, false, *label);
        add(axis, true, *labels.GetTitleObj());
    }
    m_pTransform->ChartTransform();
}

}  // namespace varnel
