#include <algorithm>
#include <cmath>

#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/chartobj/detail/stock_geometry.h"

namespace varnel {
namespace {

constexpr int kPriceSeries = 4;  // open, high, low, close
constexpr int kLineColor = 4;    // behind those of the series

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

// How much of z, in working units, is a pixel high on the screen; 0 where z points at the viewer.
double PixelHeight(COpenGL& gl, const CTransform3D& transform) {
    GLViewportType viewport;
    gl.GetViewport(viewport);
    const double* const m = transform.GetGraphTransform();
    const double pixels = std::hypot(m[8] * viewport.width, m[9] * viewport.height) / 2;
    return pixels > 0.0 ? 1.0 / pixels : 0.0;
}

}  // namespace

void CChartObj3D::OHLCChart25D(const double* ind, const double* groupData, double constValue, int n,
                               int symbol, int symbol2, double relSize, int lineWidth,
                               const RGBDType* colors, const RGBDType& outline, int depthJustify,
                               int depJustify, int indAxis, const int* flags) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, kPriceSeries, colors);
    m_Saved.m_Symbol = symbol;
    m_Saved.m_Symbol2 = symbol2;
    m_Saved.m_RelSize = relSize;
    m_Saved.m_LineWidth = lineWidth;
    if (colors != nullptr) m_Saved.m_LineColor = colors[kLineColor];
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_DepJustify = depJustify;
    for (int i = 0; i < 5; ++i)
        m_Saved.m_ComboChartFlags[i] = flags != nullptr ? flags[i] : 1;
    m_Saved.m_ChartType = OHLCCHART25D;
}

void CChartObj3D::OHLCChart25D(std::span<const double> ind, std::span<const double> groupData,
                               double constValue, int symbol, int symbol2, double relSize,
                               int lineWidth, std::span<const RGBDType> colors,
                               const RGBDType& outline, int depthJustify, int depJustify,
                               int indAxis, const int* flags) {
    const int n =
        detail::GroupCount("OHLCChart25D", ind, groupData, kPriceSeries, colors, kLineColor + 1);
    OHLCChart25D(ind.data(), groupData.data(), constValue, n, symbol, symbol2, relSize, lineWidth,
                 detail::DataOf(colors), outline, depthJustify, depJustify, indAxis, flags);
}

void detail::ChartDrawing::DrawOHLCChart25D() const {
    const StockColors colors{m_Object.GroupColor(0), m_Object.GroupColor(1), m_Object.GroupColor(2),
                             m_Object.GroupColor(3), m_Saved.m_LineColor,    m_Saved.m_OutlineColor,
                             GetSegmentColors()};
    detail::SymbolPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_RelSize);
    detail::Data25D data = GetData25D();
    data.indOffset = calcbgoffset(m_Saved.m_IndWidth, m_Saved.m_DepJustify);
    if (m_Added.m_CandleStyle != 0) {
        const double depth = std::abs(data.indWidth) / 3;
        data.depthOffset += (data.depthWidth - depth) / 2;
        data.depthWidth = depth;
        data.leastHeight = PixelHeight(*m_pOpenGL, *m_pTransform) *
                           std::max(1.0, m_Saved.m_LineWidth * m_pOpenGL->GetLineUnit());
    }
    detail::WalkStocks(
        *m_pTransform, data, detail::StockParts(m_Saved.m_ComboChartFlags),
        StockPainter{*m_pOpenGL, pen, colors, m_Saved.m_Symbol, m_Saved.m_Symbol2,
                     m_Saved.m_LineStyle, m_Saved.m_LineWidth, m_Saved.m_OutlineWidth});
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

}  // namespace varnel
