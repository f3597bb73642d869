// Construction, binding and the set-up operations of the chart types.
#include "varnel/chartobj/chart_object.h"

#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/detail/justify.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

// Line widths are whole pixels; a width that no int can hold is no line at all.
int TruncatedWidth(double width) {
    return std::abs(width) < 32768.0 ? static_cast<int>(width) : 0;
}

}  // namespace

int CChartObj3D::nSelfID = 0;

CChartObj3D::CChartObj3D() {
    InitChartObjDefaults();
}

CChartObj3D::CChartObj3D(COpenGL* gl, CTransform3D* transform) : CChartObj3D() {
    InitChartObj3D(gl, transform);
}

void CChartObj3D::InitChartObjDefaults() {
    constexpr RGBDType black{0.0, 0.0, 0.0, 1.0};
    constexpr RGBDType blue{0.0, 0.0, 1.0, 1.0};
    m_pTransform = nullptr;
    m_ConstValue = 0.0;
    m_BaseValue = 0.0;
    m_RelSize = 1.0;
    m_DepthWidth = 1.0;
    m_IndWidth = 1.0;
    m_FillGap = 0.0016;
    m_OutlineWidth = 1.0;
    m_PlaneThicknessFactor = 0.02;
    m_FillColor = blue;
    m_OutlineColor = black;
    m_LineColor = black;
    m_Symbol = 0;
    m_Symbol2 = 0;
    m_NumDataPnts = 0;
    m_NumDepData2 = 0;
    m_NumBarHeights = 0;
    m_Num3DPoints = 0;
    m_NumGroupColors = 0;
    m_NumSegmentColors = 0;
    m_NumDataStrings = 0;
    m_bPolysurface = 0;
    m_NumGroups = 0;
    m_LineWidth = 1;
    m_LineStyle = 0;
    m_IndJustify = 0;
    m_DepJustify = 0;
    m_DepthJustify = 0;
    m_IndAxis = 0;
    m_ProjectionPlane = 0;
    m_TextPlane = 1;
    m_GroupType = 0;
    m_ChartType = 0;
    m_NumContours = 0;
    m_ColorMode = 1;
    m_ContourLabelFlag = 0;
    m_SegmentColorMode = 0;
    m_Clipping = 0;
    m_OutlineMode = 1;
    std::fill_n(m_ComboChartFlags, 6, 0);
    m_Enable = 1;
    m_pIndData = {};
    m_pDepData = {};
    m_pGroupData = {};
    m_pDepData2 = {};
    m_pBarHeights = {};
    m_p3DPoints = {};
    m_pGroupColors = {};
    m_pSegmentColors = {};
    m_pPolysurface.reset();
    m_pDataStrings = {};
    m_ClassTag = kSignature;
    detail::Count(nSelfID);
}

void CChartObj3D::InitChartObj3D(COpenGL* gl, CTransform3D* transform) {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "InitChartObj3D"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    m_pOpenGL = gl;
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pTransform = transform;
    m_TransformID = transform->GetSelfID();
}

void CChartObj3D::RibbonChart25D(const double* ind, const double* dep, double constValue, int n,
                                 double depthWidth, const RGBDType& fill, const RGBDType& outline,
                                 int depthJustify, int indAxis) {
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    m_ChartType = RIBBONCHART25D;
}

void CChartObj3D::BarChart25D(const double* ind, const double* dep, double baseValue,
                              double constValue, int n, double indWidth, double depthWidth,
                              const RGBDType& fill, const RGBDType& outline, int indJustify,
                              int depthJustify, int indAxis) {
    m_NumDataPnts = n;
    m_BaseValue = baseValue;
    m_ConstValue = constValue;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_IndJustify = indJustify;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    m_ChartType = BARCHART25D;
}

void CChartObj3D::BarChart3D(const point3Dtype* points, const double* heights, int n,
                             double indWidth, double depthWidth, const RGBDType& fill,
                             const RGBDType& outline) {
    m_NumDataPnts = n;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    Init3DPointStorage(points);
    InitBarHeightsStorage(heights);
    m_ChartType = BARCHART3D;
}

void CChartObj3D::AreaFillChart25D(const double* ind, const double* dep, double baseValue,
                                   double constValue, int n, double depthWidth,
                                   const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                   int indAxis) {
    m_NumDataPnts = n;
    m_BaseValue = baseValue;
    m_ConstValue = constValue;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    m_ChartType = AREAFILLCHART25D;
}

void CChartObj3D::AreaRangeChart25D(const double* ind, const double* dep, const double* dep2,
                                    double constValue, int n, double depthWidth,
                                    const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                    int indAxis) {
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    InitDepData2Storage(dep2);
    m_ChartType = AREARANGECHART25D;
}

void CChartObj3D::LineChart25D(const double* ind, const double* dep, double constValue, int n,
                               int lineStyle, double lineWidth, const RGBDType& color,
                               int indAxis) {
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_LineStyle = lineStyle;
    m_LineWidth = TruncatedWidth(lineWidth);
    m_FillColor = color;
    m_OutlineColor = color;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    m_ChartType = LINECHART25D;
}

void CChartObj3D::ScatterChart3D(const point3Dtype* points, double relSize, int n, int symbol,
                                 const RGBDType& fill, const RGBDType& outline, int projectionPlane,
                                 double constValue) {
    m_NumDataPnts = n;
    m_RelSize = relSize;
    m_Symbol = symbol;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_ProjectionPlane = projectionPlane;
    m_ConstValue = constValue;
    Init3DPointStorage(points);
    m_ChartType = SCATTERCHART3D;
}

void CChartObj3D::LineChart3D(const point3Dtype* points, int n, int lineStyle, int lineWidth,
                              const RGBDType& color) {
    m_NumDataPnts = n;
    m_LineStyle = lineStyle;
    m_LineWidth = lineWidth;
    m_FillColor = color;
    m_OutlineColor = color;
    Init3DPointStorage(points);
    m_ChartType = LINECHART3D;
}

void CChartObj3D::ProjectionLineChart3D(const point3Dtype* points, double, int n, int lineStyle,
                                        int lineWidth, const RGBDType& color, int projectionPlane,
                                        double constValue) {
    m_NumDataPnts = n;
    m_LineStyle = lineStyle;
    m_LineWidth = lineWidth;
    m_FillColor = color;
    m_OutlineColor = color;
    m_ProjectionPlane = projectionPlane;
    m_ConstValue = constValue;
    Init3DPointStorage(points);
    m_ChartType = PROJECTIONLINECHART3D;
}

void CChartObj3D::GroupBarChart25D(const double* ind, const double* groupData, double constValue,
                                   double baseValue, int n, int numGroups, int groupType,
                                   double indWidth, double depthWidth, const RGBDType* groupColors,
                                   const RGBDType& outline, int indJustify, int depthJustify,
                                   int indAxis) {
    m_NumDataPnts = n;
    m_NumGroups = numGroups;
    m_ConstValue = constValue;
    m_BaseValue = baseValue;
    m_GroupType = groupType;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_OutlineColor = outline;
    m_IndJustify = indJustify;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitGroupDataStorage(groupData);
    InitGroupColorsStorage(groupColors);
    m_ChartType = GROUPBARCHART25D;
}

void CChartObj3D::SetUpStackedGroups(const double* ind, const double* groupData, double constValue,
                                     int n, int numGroups, double depthWidth,
                                     const RGBDType* groupColors, const RGBDType& outline,
                                     int depthJustify, int indAxis) {
    m_NumDataPnts = n;
    m_NumGroups = numGroups;
    m_ConstValue = constValue;
    m_DepthWidth = depthWidth;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitGroupDataStorage(groupData);
    InitGroupColorsStorage(groupColors);
}

void CChartObj3D::GroupRibbonChart25D(const double* ind, const double* groupData, double constValue,
                                      int n, int numGroups, double depthWidth,
                                      const RGBDType* groupColors, const RGBDType& outline,
                                      int depthJustify, int indAxis) {
    SetUpStackedGroups(ind, groupData, constValue, n, numGroups, depthWidth, groupColors, outline,
                       depthJustify, indAxis);
    m_ChartType = GROUPRIBBONCHART25D;
}

void CChartObj3D::GroupAreaFillChart25D(const double* ind, const double* groupData,
                                        double constValue, int n, int numGroups, double depthWidth,
                                        const RGBDType* groupColors, const RGBDType& outline,
                                        int depthJustify, int indAxis) {
    SetUpStackedGroups(ind, groupData, constValue, n, numGroups, depthWidth, groupColors, outline,
                       depthJustify, indAxis);
    m_ChartType = GROUPAREAFILLCHART25D;
}

void CChartObj3D::OHLCChart25D(const double* ind, const double* groupData, double constValue, int n,
                               int symbol, int symbol2, double relSize, int lineWidth,
                               const RGBDType* colors, const RGBDType& outline, int depthJustify,
                               int depJustify, int indAxis, const int* flags) {
    m_NumGroups = 4;
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_Symbol = symbol;
    m_Symbol2 = symbol2;
    m_RelSize = relSize;
    m_LineWidth = lineWidth;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_DepJustify = depJustify;
    m_IndAxis = indAxis;
    InitGroupColorsStorage(colors);
    if (colors != nullptr) m_LineColor = colors[4];
    InitIndDataStorage(ind);
    InitGroupDataStorage(groupData);
    for (int i = 0; i < 5; ++i)
        m_ComboChartFlags[i] = flags != nullptr ? flags[i] : 1;
    m_ChartType = OHLCCHART25D;
}

void CChartObj3D::PlaneChart3D(const point3Dtype* points, int n, double indWidth, double depthWidth,
                               const RGBDType& fill, const RGBDType& outline) {
    m_NumDataPnts = n;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    Init3DPointStorage(points);
    m_ChartType = PLANECHART3D;
}

void CChartObj3D::ScatterText3D(const point3Dtype* points, const CString* strings, int n,
                                double relSize, int textPlane, const RGBDType& color,
                                int projectionPlane, double constValue) {
    m_NumDataPnts = n;
    m_RelSize = relSize;
    m_TextPlane = textPlane;
    m_FillColor = color;
    m_ProjectionPlane = projectionPlane;
    m_ConstValue = constValue;
    Init3DPointStorage(points);
    InitDataStringsStorage(strings);
    m_ChartType = SCATTERTEXT3D;
}

void CChartObj3D::BoxAndWhiskerChart25D(const double* ind, const double* groupData,
                                        double constValue, int n, double indWidth,
                                        double depthWidth, int symbol, double relSize,
                                        int lineWidth, const RGBDType* colors,
                                        const RGBDType& outline, int depthJustify, int depJustify,
                                        int indAxis, int flag) {
    m_NumGroups = 6;
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_Symbol = symbol;
    m_RelSize = relSize;
    m_LineWidth = lineWidth;
    m_OutlineColor = outline;
    m_DepthJustify = depthJustify;
    m_DepJustify = depJustify;
    m_IndAxis = indAxis;
    InitGroupColorsStorage(colors);
    InitIndDataStorage(ind);
    InitGroupDataStorage(groupData);
    m_ComboChartFlags[0] = flag;
    m_ChartType = BOXANDWHISKERCHART25D;
}

void CChartObj3D::FloatingBarChart25D(const double* ind, const double* dep, const double* heights,
                                      double constValue, int n, double indWidth, double depthWidth,
                                      const RGBDType& fill, const RGBDType& outline, int indJustify,
                                      int depthJustify, int indAxis) {
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_IndJustify = indJustify;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    InitBarHeightsStorage(heights);
    m_ChartType = FLOATINGBARCHART25D;
}

void CChartObj3D::PlaneChart25D(const double* ind, const double* dep, double constValue, int n,
                                double indWidth, double depthWidth, const RGBDType& fill,
                                const RGBDType& outline, int indJustify, int depthJustify,
                                int indAxis) {
    m_NumDataPnts = n;
    m_ConstValue = constValue;
    m_IndWidth = indWidth;
    m_DepthWidth = depthWidth;
    m_FillColor = fill;
    m_OutlineColor = outline;
    m_IndJustify = indJustify;
    m_DepthJustify = depthJustify;
    m_IndAxis = indAxis;
    InitIndDataStorage(ind);
    InitDepDataStorage(dep);
    m_ChartType = PLANECHART25D;
}

void CChartObj3D::PolysurfaceChart2D(CPolysurface* surface, double constValue,
                                     int projectionPlane) {
    m_ConstValue = constValue;
    m_ProjectionPlane = projectionPlane;
    InitPolysurfaceStorage(surface);
    m_ChartType = POLYSURFACECHART2D;
}

void CChartObj3D::PolysurfaceChart3D(CPolysurface* surface) {
    InitPolysurfaceStorage(surface);
    m_ChartType = POLYSURFACECHART3D;
}

void CChartObj3D::ContourPolysurface3D(CPolysurface* surface, const double* values,
                                       const RGBDType* colors, int numContours, double constValue,
                                       int contourLabelFlag) {
    m_ContourLabelFlag = contourLabelFlag;
    m_NumContours = numContours;
    m_ConstValue = constValue;
    m_ChartType = CONTOURPOLYSURFACE3D;
    InitPolysurfaceStorage(surface);
    InitContourValueStorage(values);
    InitContourColorsStorage(colors);
}

double CChartObj3D::calcbgoffset(double width, int justify) {
    return detail::JustifyOffset(width, justify);
}

double CChartObj3D::GetSmallGap() const {
    if (m_OutlineMode == 0 || m_NumDataPnts >= 200 || m_pTransform == nullptr) return 0.0;
    if (m_IndAxis != 0 && m_IndAxis != 1) return 0.0;
    return m_pTransform->GetAxisWorkingRange(m_IndAxis) * m_FillGap;
}

}  // namespace varnel
