// Draws the parts of a legend into its box in the current image, in pixels from the box's lower
// left corner.
//
// Rectangles cover whole pixels, so that they are sharp at every size. Solids get viewports of
// their own: in them device units are square and the light falls as in a chart.
#pragma once

#include <span>

#include "varnel/axes/text_object.h"
#include "varnel/foundation/viewports.h"
#include "varnel/legend/detail/legend_layout.h"
#include "varnel/render/opengl.h"

namespace varnel::detail {

/// A place in pixels, from the lower left corner of the legend's box.
struct LegendPoint {
    double x, y;
};

/// A line as a chart draws it.
struct LineSample {
    int style = 0;
    double width = 1.0;  ///< pixels
    RGBDType color;
    int joins = 0;  ///< see COpenGL::SetLineJoins
    int styleFactor = 1;
};

/// A symbol solid as a chart draws it.
struct SymbolSample {
    int symbol = 0;
    int colorMode = 1;
    bool outlined = true;
    double outlineWidth = 1.0;  ///< pixels
    RGBDType fill;
    RGBDType outline;
    point3Dtype rotation;
    point3Dtype lightPosition;
    RGBDType diffuse;
    RGBDType ambient;
};

/// Sets the context up for the box and gives fonts and styles back at its end.
class LegendPainter {
 public:
    /// `text` is bound to `transform`, which is the legend's own.
    LegendPainter(COpenGL& gl, CTransform3D& transform, CTextObj3D& text,
                  const GLViewportType& box);
    ~LegendPainter();
    LegendPainter(const LegendPainter&) = delete;
    LegendPainter& operator=(const LegendPainter&) = delete;

    /// What was drawn in the box before no longer hides anything.
    void ClearDepth();
    /// The same, and the box gets a colour.
    void ClearBox(const RGBDType& color);

    void FillRect(const LegendRect& rect, const RGBDType& color);
    /// A triangle whose base is an end of a rectangle and whose tip is the middle of the other end:
    /// lying or standing, the tip at the end (right, up) or at the beginning.
    void FillArrow(const LegendRect& rect, bool across, bool tipAtEnd, const RGBDType& color);
    /// A closed line through points.
    void Outline(std::span<const LegendPoint> ring, double width, const RGBDType& color);
    /// The inner edge of a rectangle, `width` pixels wide.
    void FrameRect(const LegendRect& rect, double width, const RGBDType& color);
    /// A line along the middle of a rectangle, as long as that is wide.
    void Line(const LegendRect& rect, const LineSample& sample);
    /// A marker in the middle of a rectangle, no larger than that is high; `size` is in points.
    void Marker(const LegendRect& rect, int kind, double size, double outlineWidth,
                const RGBDType& fill, const RGBDType& outline);
    /// A symbol in the middle of a rectangle, filling the largest square that fits.
    void Symbol(const LegendRect& rect, const SymbolSample& sample);
    /// A text in letters of `em` pixels.
    void Text(const CString& text, const LegendTextPlace& place, double em, const RGBDType& color);

    double GetEm() const { return m_Em; }
    /// The size of letters that samples go with, in pixels.
    void SetEm(double em) { m_Em = em; }

 private:
    void UseBox();
    void LoadLight(const SymbolSample& sample);
    double DeviceX(double x) const { return 2.0 * x / m_Box.width - 1.0; }
    double DeviceY(double y) const { return 2.0 * y / m_Box.height - 1.0; }

    COpenGL& m_GL;
    CTransform3D& m_Transform;
    CTextObj3D& m_Text;
    GLViewportType m_Box;
    double m_Em = 0.0;
    double m_FontScale;
    int m_ColorMode;
};

}  // namespace varnel::detail
