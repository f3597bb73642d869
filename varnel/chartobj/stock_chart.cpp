#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/stock_geometry.h"

namespace varnel {
namespace {

struct StockColors {
    RGBDType open, rose, fell, close, line, outline;
    detail::SegmentColors segments;
};

struct StockPainter {
    COpenGL& gl;
    detail::SymbolPen& pen;
    const StockColors& colors;
    int symbol, symbol2;
    int lineStyle, lineWidth;
    double outlineWidth;

    void Line(std::size_t i, const point3Dtype& p, const point3Dtype& q) {
        gl.SetLineStyle3D(lineStyle, lineWidth, colors.segments.At(i, colors.line));
        gl.LineAbs3D(p, q);
    }
    void Body(std::size_t, bool rose, const detail::Prism& body) {
        gl.SetLineWidth3D(outlineWidth);
        Draw(gl, body, rose ? colors.rose : colors.fell, colors.outline);
    }
    void OpenSymbol(std::size_t, const point3Dtype& place) {
        gl.SetLineWidth3D(outlineWidth);
        pen.Draw(symbol, place, colors.open, colors.outline);
    }
    void CloseSymbol(std::size_t, const point3Dtype& place) {
        gl.SetLineWidth3D(outlineWidth);
        pen.Draw(symbol2, place, colors.close, colors.outline);
    }
};

}  // namespace

void CChartObj3D::DrawOHLCChart25D() {
    const StockColors colors{GroupColor(0), GroupColor(1),  GroupColor(2),     GroupColor(3),
                             m_LineColor,   m_OutlineColor, GetSegmentColors()};
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_RelSize);
    detail::Data25D data = GetData25D();
    data.indOffset = calcbgoffset(m_IndWidth, m_DepJustify);
    detail::WalkStocks(*m_pTransform, data, detail::StockParts(m_ComboChartFlags),
                       StockPainter{*m_pOpenGL, pen, colors, m_Symbol, m_Symbol2, m_LineStyle,
                                    m_LineWidth, m_OutlineWidth});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_OutlineColor);
}

}  // namespace varnel
