#include "varnel/legend/detail/legend_painter.h"

#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/pixel_count.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {
namespace {

constexpr int kDepth = 256;
constexpr int kColorAndDepth = 16640;
constexpr int kAmbient = 4608;
constexpr int kDiffuse = 4609;
constexpr int kPosition = 4611;
constexpr RGBDType kBlack{0.0, 0.0, 0.0, 1.0};

/// Behind the letters, which lie at 0.
constexpr double kSampleDepth = 0.5;

double WholeWidth(double width) {
    constexpr double kMost = 1000.0;
    return std::isfinite(width) ? std::clamp(std::round(width), 1.0, kMost) : 1.0;
}

/// How large a symbol of code 10..15 is drawn in a square from -1 to 1, whichever way it is turned:
/// their corners lie at most 1 from the centre.
constexpr double kSymbolScale = 0.96;

void DrawSolid(COpenGL& gl, int symbol, const RGBDType& fill, const RGBDType& outline) {
    switch (symbol) {
        case 10:
            gl.DrawCube(1.0, fill, outline);
            break;
        case 11:
            gl.DrawPlusSolidObject3D(1.0, 1.0, 1.0, fill, outline);
            break;
        case 12:
            gl.DrawDiamondSolidObject3D(1.0, 1.0, 2.0, fill, outline);
            break;
        case 13:
            gl.DrawPyramidSolidObject3D(1.0, 1.0, 1.0, fill, outline);
            break;
        case 14:
            gl.DrawHourglassSolidObject3D(1.0, 1.0, 1.0, fill, outline);
            break;
        case 15:
            gl.DrawArrowSolidObject3D(1.0, 1.0, 1.0, fill, outline);
            break;
        default:
            break;
    }
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
    m_GL.SetFontScaleFactor(m_FontScale);
    m_GL.SetColorMode(m_ColorMode);
    m_GL.SetLineStyle3D(0, 1.0, kBlack);
}

void LegendPainter::UseBox() {
    m_GL.SetViewport(m_Box);
    m_GL.LoadIdentity();
    m_GL.SetColorMode(0);
}

void LegendPainter::ClearDepth() {
    m_GL.Clear(kDepth);
}

void LegendPainter::ClearBox(const RGBDType& color) {
    m_GL.SetClearColor(color.r, color.g, color.b, 0.0);
    m_GL.Clear(kColorAndDepth);
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

void LegendPainter::FrameRect(const LegendRect& rect, double width, const RGBDType& color) {
    const double left = std::round(rect.x);
    const double bottom = std::round(rect.y);
    const double w = std::round(rect.x + rect.width) - left;
    const double h = std::round(rect.y + rect.height) - bottom;
    const double edge = std::min({WholeWidth(width), w, h});
    FillRect({left, bottom, w, edge}, color);
    FillRect({left, bottom + h - edge, w, edge}, color);
    FillRect({left, bottom, edge, h}, color);
    FillRect({left + w - edge, bottom, edge, h}, color);
}

void LegendPainter::Line(const LegendRect& rect, int style, double width, const RGBDType& color) {
    // Lines of odd width run through the middle of a pixel row.
    const bool odd = std::fmod(WholeWidth(width), 2.0) != 0.0;
    const double middle = rect.y + rect.height / 2;
    const double y = DeviceY(odd ? std::floor(middle) + 0.5 : std::round(middle));
    m_GL.SetLineStyle3D(style, width, color);
    m_GL.LineAbs3D({DeviceX(std::round(rect.x)), y, kSampleDepth, 0},
                   {DeviceX(std::round(rect.x + rect.width)), y, kSampleDepth, 0});
}

void LegendPainter::Symbol(const LegendRect& rect, const SymbolSample& sample) {
    const int side = PixelCount(std::min(rect.width, rect.height));
    if (side < 1) return;
    m_GL.SetViewport({m_Box.x + PixelCount(std::round(rect.x + (rect.width - side) / 2)),
                      m_Box.y + PixelCount(std::round(rect.y + (rect.height - side) / 2)), side,
                      side});
    m_GL.LoadIdentity();
    m_GL.SetLightPosition(sample.lightPosition);
    m_GL.LoadLight(kPosition);
    m_GL.SetLightComponent(LIGHT_MODEL_AMBIENT, sample.ambient);
    m_GL.SetLightComponent(kDiffuse, sample.diffuse);
    m_GL.LoadLight(kAmbient);
    m_GL.LoadLight(kDiffuse);

    m_GL.Rotate3D(-90.0, 0);
    m_GL.Rotate3D(sample.rotation.x, 0);
    m_GL.Rotate3D(sample.rotation.y, 1);
    m_GL.Rotate3D(sample.rotation.z, 2);
    m_GL.Scale3D(kSymbolScale, kSymbolScale, kSymbolScale);
    m_GL.SetColorMode(sample.colorMode != 0 ? 1 : 0);
    m_GL.SetLineWidth3D(sample.outlineWidth);
    m_GL.SetFrameFilled(sample.outlined ? 1 : 0);
    {
        const CollectScope collect(m_GL);
        DrawSolid(m_GL, sample.symbol, sample.fill, sample.outline);
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
