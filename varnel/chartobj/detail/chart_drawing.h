// How a chart object is drawn: a routine for each chart type, in the file of its family, and what
// the routines share.
#pragma once

#include <cstddef>
#include <span>

#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/chart_data.h"

namespace varnel::detail {

/// The stored groups; no points for a negative number of them.
GroupView GroupsOf(const ChartObjectSaved& saved);

/// One drawing of an object that is bound, in the state that DrawChartObj has set. The members are
/// those of the object.
class ChartDrawing {
 public:
    explicit ChartDrawing(CChartObj3D& object);

    void DrawRibbonChart25D() const;
    void DrawBarChart25D() const;
    void DrawBarChart3D() const;
    void DrawAreaFillChart25D() const;
    void DrawAreaRangeChart25D() const;
    void DrawLineChart25D() const;
    void DrawScatterChart3D() const;
    void DrawLineChart3D() const;
    void DrawProjectionLineChart3D() const;
    void DrawGroupBarChart25D() const;
    void DrawGroupRibbonChart25D() const;
    void DrawGroupAreaFillChart25D() const;
    void DrawOHLCChart25D() const;
    void DrawPlaneChart3D() const;
    void DrawScatterText3D() const;
    void DrawBoxAndWhiskerChart25D() const;
    void DrawFloatingBarChart25D() const;
    void DrawPlaneChart25D() const;
    void DrawPolysurfaceChart2D() const;
    void DrawPolysurfaceChart3D() const;
    void DrawContourPolysurface3D() const;
    void DrawErrorBars3D() const;
    void DrawVectors3D() const;
    void DrawReferenceLine3D() const;
    void DrawReferenceBand3D() const;
    void DrawNote3D() const;

 private:
    // What the geometry of a chart is computed from.
    Data25D GetData25D() const;
    SegmentColors GetSegmentColors() const;
    static double calcbgoffset(double width, int justify);

    void CheckSetSegmentColor(std::size_t i) const;
    void ProjectionLine(const point3Dtype& p, const RGBDType& color) const;
    void DrawSurface(int plane, double level, int wire) const;
    void DrawContourLines(std::span<const double> levels, std::span<const RGBDType> colors) const;
    /// The markers at points in data values, where the object has any.
    void DrawMarkers(std::span<const point3Dtype> points) const;

    const CChartObj3D& m_Object;
    COpenGL* m_pOpenGL;
    CTransform3D* m_pTransform;
    const ChartObjectSaved& m_Saved;
    const ChartObjectAdded& m_Added;
    Cache<SurfaceNormals>& m_Normals;
};

}  // namespace varnel::detail
