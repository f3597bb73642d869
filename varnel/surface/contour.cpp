#include "varnel/surface/contour.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "varnel/foundation/detail/counts.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/surface/detail/contour_search.h"
#include "varnel/transform/transform.h"

namespace varnel {

CContour3D::CContour3D(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                       const double* levels, const RGBDType* colors, int numLevels, double contourZ,
                       int flag) {
    InitContour(pOpenGL, pTransform, pPolysurface, levels, colors, numLevels, contourZ, flag);
}

void CContour3D::InitContour(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                             const double* levels, const RGBDType* colors, int numLevels,
                             double contourZ, int flag) {
    m_pOpenGL = pOpenGL;
    m_pTransform = pTransform;
    m_pPolysurface = pPolysurface;
    m_pContourLevels = levels;
    m_pContourColors = colors;
    m_NumContours = levels == nullptr ? 0 : std::max(0, numLevels);
    m_ContourZ = contourZ;
    m_ContourFlag = flag;
    m_ContourCount = 0;
    if (m_pOpenGL == nullptr || m_pPolysurface == nullptr || m_pContourColors == nullptr) return;

    detail::ContourSearch search(*m_pPolysurface);
    for (int i = 0; i < m_NumContours; ++i) {
        detail::Progress(i, m_NumContours);
        ++m_ContourCount;
        search.StartLevel(m_pContourLevels[i]);
        while (search.NextChain())
            PlotContourSegment3D(search, m_pContourLevels[i], m_pContourColors[i]);
    }
}

CContour3D::CContour3D(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                       std::span<const double> levels, std::span<const RGBDType> colors,
                       double contourZ, int flag) {
    InitContour(pOpenGL, pTransform, pPolysurface, levels, colors, contourZ, flag);
}

void CContour3D::InitContour(COpenGL* pOpenGL, CTransform3D* pTransform, CPolysurface* pPolysurface,
                             std::span<const double> levels, std::span<const RGBDType> colors,
                             double contourZ, int flag) {
    const detail::Origin here{ERR3DCLASS_CONTOUR3D, "InitContour"};
    if (colors.size() < levels.size())
        detail::Raise(ERR3D_PARAMETER, here.cls, here.operation,
                      detail::Say("there are ", colors.size(), " colours for ", levels.size()));
    InitContour(pOpenGL, pTransform, pPolysurface, levels.data(), colors.data(),
                detail::CountOf(levels, here), contourZ, flag);
}

void CContour3D::PlotContourSegment3D(detail::ContourSearch& search, double level,
                                      const RGBDType& color) {
    m_pOpenGL->SetFillStyle3D(color, color, color);
    m_pOpenGL->SetLineStyle3D(0, 1.0, color);
    for (int k = 0; k < search.GetCount(); ++k) {
        point3Dtype p1, p2;
        if (!search.GetSegment(search.GetList()[k], level, p1, p2)) continue;
        p1.z = m_ContourZ;
        p2.z = m_ContourZ;
        m_pOpenGL->LineAbs3D(p1, p2);
    }
}

int CContour3D::GetContourBounds(double value, double& lower) const {
    const double* const levels = m_pContourLevels;
    if (m_NumContours == 0 || value < levels[0]) return 0;
    if (value >= levels[m_NumContours - 1]) return m_NumContours;
    for (int i = 0; i + 1 < m_NumContours; ++i) {
        if (levels[i] <= value && value < levels[i + 1]) {
            lower = levels[i];
            return i + 1;
        }
    }
    return 0;
}

/// The length of a polygon's segment across the chart's box, seen from above.
double CContour3D::ContourTriLength3D(int polygon, double level) const {
    if (m_pPolysurface == nullptr || m_pTransform == nullptr) return 0.0;
    if (polygon < 0 || polygon >= m_pPolysurface->GetPSMaxPolygons()) return 0.0;
    int n = 0;
    std::vector<point3Dtype> points(
        static_cast<std::size_t>(m_pPolysurface->GetPSLargestPolygon()) + 1);
    m_pPolysurface->GPSPolygon(polygon, points.data(), n);
    point3Dtype p1, p2;
    int e1 = 0, e2 = 0;
    detail::InterpolatePolyContour3D(points.data(), n, level, p1, p2, e1, e2);
    point3Dtype q1, q2;
    m_pTransform->NormalizePoint(p1, q1);
    m_pTransform->NormalizePoint(p2, q2);
    return std::sqrt((q2.x - q1.x) * (q2.x - q1.x) + (q2.y - q1.y) * (q2.y - q1.y));
}

double CContour3D::CalcNormalDistance3D(const int* list, int count, double level, int centre,
                                        double minLength, int& lo, int& hi) const {
    lo = 0;
    hi = -1;
    if (list == nullptr || centre < 0 || centre >= count) return 0.0;
    const auto length = [&](int entry) {
        return entry < count ? ContourTriLength3D(list[entry], level) : 0.0;
    };
    double total = length(centre);
    int k = 0;
    if (minLength > total) {
        for (k = 1; k < centre; ++k) {
            total += length(centre - k) + length(centre + k);
            if (total > minLength) break;
        }
        k = std::min(k, centre);
    }
    lo = std::max(0, centre - k - 1);
    hi = std::min(count - 1, centre + k);
    return total;
}

double CContour3D::CalcNormalDistance3D(std::span<const int> list, double level, int centre,
                                        double minLength, int& lo, int& hi) const {
    return CalcNormalDistance3D(
        list.data(), detail::CountOf(list, {ERR3DCLASS_CONTOUR3D, "CalcNormalDistance3D"}), level,
        centre, minLength, lo, hi);
}

}  // namespace varnel
