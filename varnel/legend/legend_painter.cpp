#include "varnel/legend/detail/legend_painter.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "varnel/chartobj/detail/symbol_pen.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/pixel_count.h"

namespace varnel::detail {
namespace {

/// Behind the letters, which lie at 0.
constexpr double kSampleDepth = 0.5;

double WholeWidth(double width) {
    constexpr double kMost = 1000.0;
    return std::isfinite(width) ? std::clamp(std::round(width), 1.0, kMost) : 1.0;
}

/// Factor on the symbols' unit sizes. However they are turned they stay between the near and far
/// planes: no corner lies further than 1 from the centre.
constexpr double kSymbolScale = 0.96;

/// A part of a symbol: half its width and depth, its lower and upper end.
struct SymbolPart {
    double x, y, bottom, top;
};

/// Parts whose corners are those of a symbol as seen from anywhere.
std::vector<SymbolPart> PartsOf(int symbol) {
    switch (symbol) {
        case SYMBOL_PLUS:
            return {{0.5, 0.5, -0.25, 0.25}, {0.25, 0.25, -0.5, 0.5}};
        case SYMBOL_DIAMOND:
            return {{0.5, 0.5, 0.0, 0.0}, {0.0, 0.0, -1.0, 1.0}};
        case SYMBOL_PYRAMID:
            return {{0.5, 0.5, -0.5, -0.5}, {0.0, 0.0, 0.5, 0.5}};
        case SYMBOL_ARROW:
            return {{0.25, 0.25, -0.5, 0.0}, {0.5, 0.5, 0.0, 0.0}, {0.0, 0.25, 0.25, 0.25}};
        default:
            return {{0.5, 0.5, -0.5, 0.5}};
    }
}

/// What a symbol covers on the screen under a column-major matrix.
struct ScreenBox {
    double left = 1.0, right = -1.0, bottom = 1.0, top = -1.0;
};

ScreenBox BoxOf(int symbol, const double m[16]) {
    ScreenBox box;
    for (const SymbolPart& part : PartsOf(symbol))
        for (int corner = 0; corner < 8; ++corner) {
            const double x = (corner & 1) != 0 ? part.x : -part.x;
            const double y = (corner & 2) != 0 ? part.y : -part.y;
            const double z = (corner & 4) != 0 ? part.top : part.bottom;
            const double screenX = m[0] * x + m[4] * y + m[8] * z;
            const double screenY = m[1] * x + m[5] * y + m[9] * z;
            box.left = std::min(box.left, screenX);
            box.right = std::max(box.right, screenX);
            box.bottom = std::min(box.bottom, screenY);
            box.top = std::max(box.top, screenY);
        }
    return box;
}

}  // namespace

LegendPainter::LegendPainter(COpenGL& gl, CTransform3D& transform, CTextObj3D& text,
                             const GLViewportType& box)
    : m_GL(gl),
      m_Transform(transform),
      m_Text(text),
      m_Box(box),
      m_FontScale(gl.GetFontScaleFactor()),
      m_ColorMode(gl.GetColorMode()) {
    UseBox();
    m_GL.EnableTexture(0);
    m_GL.EnableClipping(0);
    m_GL.SetFrameFilled(0);
}

LegendPainter::~LegendPainter() {
    m_GL.DrawTransparent();
    m_GL.SetFontScaleFactor(m_FontScale);
    m_GL.SetColorMode(m_ColorMode);
    m_GL.SetLineStyle3D(0, 1.0, kBlack);
}

void LegendPainter::UseBox() {
    m_GL.DrawTransparent();  // in the viewport that it was meant for
    m_GL.SetViewport(m_Box);
    m_GL.LoadIdentity();
    m_GL.SetColorMode(0);
}

void LegendPainter::ClearDepth() {
    m_GL.Clear(CLEAR_DEPTH);
}

void LegendPainter::ClearBox(const RGBDType& color) {
    m_GL.SetClearColor(color.r, color.g, color.b, 0.0);
    m_GL.Clear(CLEAR_COLOR_AND_DEPTH);
}

void LegendPainter::FillRect(const LegendRect& rect, const RGBDType& color) {
    const double left = std::round(rect.x);
    const double bottom = std::round(rect.y);
    const double right = std::round(rect.x + rect.width);
    const double top = std::round(rect.y + rect.height);
    if (!(right > left) || !(top > bottom)) return;
    const double x0 = DeviceX(left);
    const double x1 = DeviceX(right);
    const double y0 = DeviceY(bottom);
    const double y1 = DeviceY(top);
    const point3Dtype corners[5] = {{x0, y0, kSampleDepth, 0},
                                    {x0, y1, kSampleDepth, 0},
                                    {x1, y1, kSampleDepth, 0},
                                    {x1, y0, kSampleDepth, 0},
                                    {x0, y0, kSampleDepth, 0}};
    m_GL.SetFillStyle3D(color, kBlack, color);
    m_GL.PolyFillAbs3D(corners, 5);
}

void LegendPainter::FillArrow(const LegendRect& rect, bool across, bool tipAtEnd,
                              const RGBDType& color) {
    const auto corner = [this](double x, double y) {
        return point3Dtype{DeviceX(x), DeviceY(y), kSampleDepth, 0};
    };
    const double right = rect.x + rect.width;
    const double top = rect.y + rect.height;
    const double base =
        std::round(across ? (tipAtEnd ? rect.x : right) : (tipAtEnd ? rect.y : top));
    const double tip = across ? (tipAtEnd ? right : rect.x) : (tipAtEnd ? top : rect.y);
    const point3Dtype ring[3] = {
        across ? corner(base, rect.y) : corner(rect.x, base),
        across ? corner(base, top) : corner(right, base),
        across ? corner(tip, (rect.y + top) / 2) : corner((rect.x + right) / 2, tip)};
    m_GL.SetFillStyle3D(color, kBlack, color);
    m_GL.PolyFillAbs3D(ring, 3);
}

void LegendPainter::Outline(std::span<const LegendPoint> ring, double width,
                            const RGBDType& color) {
    const auto place = [this](const LegendPoint& p) {
        return point3Dtype{DeviceX(p.x), DeviceY(p.y), kSampleDepth, 0};
    };
    const int joins = m_GL.GetLineJoins();
    m_GL.SetLineStyle3D(0, width / m_GL.GetLineUnit(), color);
    m_GL.SetLineJoins(1);
    m_GL.StartLineAbs3D(place(ring.front()));
    for (const LegendPoint& p : ring.subspan(1))
        m_GL.AppendLineAbs3D(place(p));
    m_GL.EndLineAbs3D(place(ring.front()));
    m_GL.SetLineJoins(joins);
}

void LegendPainter::FrameRect(const LegendRect& rect, double width, const RGBDType& color) {
    const double left = std::round(rect.x);
    const double bottom = std::round(rect.y);
    const double w = std::round(rect.x + rect.width) - left;
    const double h = std::round(rect.y + rect.height) - bottom;
    const double edge = std::min({WholeWidth(width * m_GL.GetLineUnit()), w, h});
    FillRect({left, bottom, w, edge}, color);
    FillRect({left, bottom + h - edge, w, edge}, color);
    FillRect({left, bottom, edge, h}, color);
    FillRect({left + w - edge, bottom, edge, h}, color);
}

void LegendPainter::Line(const LegendRect& rect, const LineSample& sample) {
    // Lines of odd width run through the middle of a pixel row.
    const bool odd = std::fmod(WholeWidth(sample.width * m_GL.GetLineUnit()), 2.0) != 0.0;
    const double middle = rect.y + rect.height / 2;
    const double y = DeviceY(odd ? std::floor(middle) + 0.5 : std::round(middle));
    const int joins = m_GL.GetLineJoins();
    const int factor = m_GL.GetLineStyleFactor();
    m_GL.SetLineStyle3D(sample.style, sample.width, sample.color);
    if (sample.joins != 0) m_GL.SetLineJoins(sample.joins);
    if (sample.styleFactor != 1) m_GL.SetLineStyleFactor(sample.styleFactor);
    m_GL.LineAbs3D({DeviceX(std::round(rect.x)), y, kSampleDepth, 0},
                   {DeviceX(std::round(rect.x + rect.width)), y, kSampleDepth, 0});
    m_GL.SetLineJoins(joins);
    m_GL.SetLineStyleFactor(factor);
}

void LegendPainter::Marker(const LegendRect& rect, int kind, double size, double outlineWidth,
                           const RGBDType& fill, const RGBDType& outline) {
    if (kind == MARKER_NONE) return;
    const double most = rect.height * 72.0 / m_GL.GetResolution();
    m_GL.SetMarker3D(kind, std::min(size, most), outlineWidth);
    m_GL.MarkerAbs3D(
        {DeviceX(rect.x + rect.width / 2), DeviceY(rect.y + rect.height / 2), kSampleDepth, 0},
        fill, outline);
}

void LegendPainter::LoadLight(const SymbolSample& sample) {
    m_GL.LoadIdentity();
    m_GL.SetLightPosition(sample.lightPosition);
    m_GL.LoadLight(LIGHT_POSITION);
    m_GL.SetLightComponent(LIGHT_MODEL_AMBIENT, sample.ambient);
    m_GL.SetLightComponent(LIGHT_DIFFUSE, sample.diffuse);
    m_GL.LoadLight(LIGHT_AMBIENT);
    m_GL.LoadLight(LIGHT_DIFFUSE);
}

void LegendPainter::Symbol(const LegendRect& rect, const SymbolSample& sample) {
    const double square = std::min(rect.width, rect.height);
    if (!(square >= 1.0)) return;
    m_GL.DrawTransparent();
    LoadLight(sample);
    m_GL.Rotate3D(-90.0, 0);
    m_GL.Rotate3D(sample.rotation.x, 0);
    m_GL.Rotate3D(sample.rotation.y, 1);
    m_GL.Rotate3D(sample.rotation.z, 2);
    m_GL.Scale3D(kSymbolScale, kSymbolScale, kSymbolScale);
    double matrix[16];
    m_GL.GetModelView(matrix);

    // A viewport in which the symbol fills the square; the solid itself keeps its depth.
    const ScreenBox seen = BoxOf(sample.symbol, matrix);
    const double side = 2.0 * square / std::max(seen.right - seen.left, seen.top - seen.bottom);
    const double x = rect.x + (rect.width - side) / 2 - (seen.left + seen.right) * side / 4;
    const double y = rect.y + (rect.height - side) / 2 - (seen.bottom + seen.top) * side / 4;
    m_GL.SetViewport({m_Box.x + PixelCount(std::round(x)), m_Box.y + PixelCount(std::round(y)),
                      PixelCount(std::round(side)), PixelCount(std::round(side))});

    m_GL.SetColorMode(sample.colorMode != 0 ? 1 : 0);
    m_GL.SetLineWidth3D(sample.outlineWidth);
    m_GL.SetFrameFilled(sample.outlined ? 1 : 0);
    {
        const CollectScope collect(m_GL);
        DrawSymbol(m_GL, sample.symbol, sample.fill, sample.outline);
    }
    m_GL.SetFrameFilled(0);
    UseBox();
}

void LegendPainter::Text(const CString& text, const LegendTextPlace& place, double em,
                         const RGBDType& color) {
    m_Transform.SetFontAspect(static_cast<double>(m_Box.height) / m_Box.width);
    m_Transform.SetFontHeightSF(1.0);
    m_GL.SetFontScaleFactor(2.0 * em / m_Box.height);
    m_Text.SetString(text);
    m_Text.SetColor(color);
    m_Text.SetJustify(0, 0);
    point3Dtype location;
    AssignPoint3D(location, DeviceX(place.x), 0.0, DeviceY(place.baseline));
    m_Text.SetNormLocation(location);
    m_Text.OutTextNorm();
}

}  // namespace varnel::detail
