// CContour3D: the contour lines of a surface, drawn flat on one plane.
//
// Making or initializing the object draws everything at once: for each level the lines along which
// the surface's z crosses it, each line followed from polygon to neighbouring polygon, in the
// level's colour and at one fixed z. Coordinates are those of the surface. The surface needs its
// neighbour table; without one each polygon is a line of its own. Polygons with a corner that is
// not finite have no lines.
//
// Which to choose: here both ends of an edge count as crossed, so that at a level that points lie
// on lines have gaps and stubs; levels between the data are drawn whole. Whole lines at every
// level, as data without drawing, are in surface/contour_lines.h; a contour chart draws those, with
// labels and on logarithmic axes too, once it is given a style (CChartObj3D::SetContourStyle).
#pragma once

#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/points.h"

namespace varnel {

class COpenGL;
class CPolysurface;
class CTransform3D;

namespace detail {
class ContourSearch;
}

class VARNEL_API CContour3D {
 public:
    /// As InitContour.
    CContour3D(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
               const double* levels, const RGBDType* colors, int numLevels, double contourZ,
               int flag);
    CContour3D(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
               std::span<const double> levels, std::span<const RGBDType> colors, double contourZ,
               int flag);

    /// Draws `numLevels` levels, ascending, with one colour each (colors[i] that of levels[i]), one
    /// pixel wide, at z = contourZ. Nothing is owned: everything must live as long as this object
    /// is used. `flag` is kept and has no effect. Raises "Array New Error" ("InitContour"). Without
    /// a context, surface, levels or colours nothing is drawn.
    void InitContour(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                     const double* levels, const RGBDType* colors, int numLevels, double contourZ,
                     int flag);
    /// Fewer colours than levels raise "Parameter Error".
    void InitContour(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                     std::span<const double> levels, std::span<const RGBDType> colors,
                     double contourZ, int flag);

    /// The band that a value is in: 0 below the first level, the number of levels from the last one
    /// on, else i + 1 between level i and the next, with level i in `lower` (which stays as it was
    /// otherwise).
    int GetContourBounds(double value, double& lower) const;

    /// How far a chain of polygons must reach around its entry `centre` so that the line through it
    /// is at least minLength long, in units of the chart's box: entries lo..hi. Returns the length;
    /// 0 and an empty range (0..-1) for an entry that does not exist.
    double CalcNormalDistance3D(const int* list, int count, double level, int centre,
                                double minLength, int& lo, int& hi) const;
    double CalcNormalDistance3D(std::span<const int> list, double level, int centre,
                                double minLength, int& lo, int& hi) const;

 private:
    void PlotContourSegment3D(detail::ContourSearch& search, double level, const RGBDType& color);
    double ContourTriLength3D(int polygon, double level) const;

    COpenGL* m_pOpenGL = nullptr;
    CTransform3D* m_pTransform = nullptr;
    CPolysurface* m_pPolysurface = nullptr;
    const double* m_pContourLevels = nullptr;
    const RGBDType* m_pContourColors = nullptr;
    int m_NumContours = 0;
    double m_ContourZ = 0.0;
    int m_ContourFlag = 0;
    int m_ContourCount = 0;  ///< levels drawn
};

}  // namespace varnel
