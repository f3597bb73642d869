#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/boxes_geometry.h"

namespace varnel {
namespace {

template <class ColorOf>
struct BoxPainter {
    COpenGL& gl;
    detail::SymbolPen& pen;
    ColorOf colorOf;  // of a part
    RGBDType outline;
    int symbol;
    int lineStyle, lineWidth;
    double outlineWidth;

    void Line(detail::BoxPart part, const point3Dtype& p, const point3Dtype& q) {
        gl.SetLineStyle3D(lineStyle, lineWidth, colorOf(part));
        gl.LineAbs3D(p, q);
    }
    void Box(detail::BoxPart part, const detail::Prism& box) {
        gl.SetLineWidth3D(outlineWidth);
        Draw(gl, box, colorOf(part), outline);
    }
    void Median(const std::array<point3Dtype, 5>& loop) {
        gl.SetLineStyle3D(lineStyle, lineWidth, colorOf(detail::kMedianLine));
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

void CChartObj3D::DrawBoxAndWhiskerChart25D() {
    const auto colorOf = [this](detail::BoxPart part) -> const RGBDType& {
        return GroupColor(part);
    };
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_RelSize);
    detail::Data25D data = GetData25D();
    data.indOffset = calcbgoffset(m_IndWidth, m_DepJustify);
    detail::WalkBoxes(*m_pTransform, data, m_ComboChartFlags[0] != 0,
                      BoxPainter{*m_pOpenGL, pen, colorOf, m_OutlineColor, m_Symbol, m_LineStyle,
                                 m_LineWidth, m_OutlineWidth});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_OutlineColor);
}

}  // namespace varnel
