#include "varnel/chartobj/detail/boxes_geometry.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/set_up.h"

namespace varnel {
namespace {

constexpr int kBoxSeries = 6;  // minimum, quartile, median, quartile, maximum, mean

template <class ColorOf>
struct BoxPainter {
    COpenGL& gl;
    detail::SymbolPen& pen;
    ColorOf colorOf;  // of a part
    RGBDType outline;
    int symbol;
    int lineStyle, lineWidth;
    double outlineWidth, medianWidth;

    void Line(detail::BoxPart part, const point3Dtype& p, const point3Dtype& q) {
        gl.SetLineStyle3D(lineStyle, lineWidth, colorOf(part));
        gl.LineAbs3D(p, q);
    }
    void Box(detail::BoxPart part, const detail::Prism& box) {
        gl.SetLineWidth3D(outlineWidth);
        Draw(gl, box, colorOf(part), outline);
    }
    void Median(const std::array<point3Dtype, 5>& loop) {
        gl.SetLineStyle3D(lineStyle, medianWidth, colorOf(detail::kMedianLine));
        gl.StartLineAbs3D(loop[0]);
        for (std::size_t i = 1; i < 4; ++i)
            gl.AppendLineAbs3D(loop[i]);
        gl.EndLineAbs3D(loop[4]);
    }
    void Mean(const point3Dtype& place) {
        gl.SetLineWidth3D(outlineWidth);
        pen.Draw(symbol, place, colorOf(detail::kMeanSymbol), outline);
    }
};

}  // namespace

void CChartObj3D::BoxAndWhiskerChart25D(const double* ind, const double* groupData,
                                        double constValue, int n, double indWidth,
                                        double depthWidth, int symbol, double relSize,
                                        int lineWidth, const RGBDType* colors,
                                        const RGBDType& outline, int depthJustify, int depJustify,
                                        int indAxis, int flag) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, kBoxSeries, colors);
    set.Widths(indWidth, depthWidth);
    m_Saved.m_Symbol = symbol;
    m_Saved.m_RelSize = relSize;
    m_Saved.m_LineWidth = lineWidth;
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_DepJustify = depJustify;
    m_Saved.m_ComboChartFlags[0] = flag;
    m_Saved.m_ChartType = BOXANDWHISKERCHART25D;
}

void CChartObj3D::BoxAndWhiskerChart25D(std::span<const double> ind,
                                        std::span<const double> groupData, double constValue,
                                        double indWidth, double depthWidth, int symbol,
                                        double relSize, int lineWidth,
                                        std::span<const RGBDType> colors, const RGBDType& outline,
                                        int depthJustify, int depJustify, int indAxis, int flag) {
    const int n =
        detail::GroupCount("BoxAndWhiskerChart25D", ind, groupData, kBoxSeries, colors, kBoxSeries);
    BoxAndWhiskerChart25D(ind.data(), groupData.data(), constValue, n, indWidth, depthWidth, symbol,
                          relSize, lineWidth, detail::DataOf(colors), outline, depthJustify,
                          depJustify, indAxis, flag);
}

void detail::ChartDrawing::DrawBoxAndWhiskerChart25D() const {
    const auto colorOf = [this](detail::BoxPart part) -> const RGBDType& {
        return m_Object.GroupColor(part);
    };
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_RelSize);
    detail::Data25D data = GetData25D();
    data.indOffset = calcbgoffset(m_Saved.m_IndWidth, m_Saved.m_DepJustify);
    detail::WalkBoxes(
        *m_pTransform, data, m_Saved.m_ComboChartFlags[0] != 0,
        BoxPainter<decltype(colorOf)>{
            *m_pOpenGL, pen, colorOf, m_Saved.m_OutlineColor, m_Saved.m_Symbol, m_Saved.m_LineStyle,
            m_Saved.m_LineWidth, m_Saved.m_OutlineWidth,
            m_Added.m_MedianWidth > 0.0 ? m_Added.m_MedianWidth : m_Saved.m_LineWidth});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

}  // namespace varnel
