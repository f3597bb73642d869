#include "varnel/chartobj/detail/set_up.h"

#include "varnel/foundation/detail/diagnose.h"

namespace varnel::detail {
namespace {

// Told here, not where each colour is drawn: components above 1 are not clamped before they are
// lit.
void TellColor(const RGBDType& color) {
    for (const double component : {color.r, color.g, color.b, color.a})
        if (component > 1.0)
            Diagnose("CChartObj3D", "a colour has the component ", component,
                     "; components run from 0 to 1");
}

}  // namespace

void SetUp::Series(const double* ind, int n, double constValue, int indAxis) const {
    m_Saved.m_NumDataPnts = n;
    m_Saved.m_ConstValue = constValue;
    m_Saved.m_IndAxis = indAxis;
    m_Object.InitIndDataStorage(ind);
}

void SetUp::Groups(const double* groupData, int numGroups, const RGBDType* groupColors) const {
    m_Saved.m_NumGroups = numGroups;
    m_Object.InitGroupDataStorage(groupData);
    m_Object.InitGroupColorsStorage(groupColors);
}

void SetUp::Points(const point3Dtype* points, int n) const {
    m_Saved.m_NumDataPnts = n;
    m_Object.Init3DPointStorage(points);
}

void SetUp::Projection(int plane, double constValue) const {
    m_Saved.m_ProjectionPlane = plane;
    m_Saved.m_ConstValue = constValue;
}

void SetUp::Widths(double indWidth, double depthWidth) const {
    m_Saved.m_IndWidth = indWidth;
    m_Saved.m_DepthWidth = depthWidth;
}

void SetUp::Justify(int indJustify, int depthJustify) const {
    m_Saved.m_IndJustify = indJustify;
    m_Saved.m_DepthJustify = depthJustify;
}

void SetUp::Colors(const RGBDType& fill, const RGBDType& outline) const {
    TellColor(fill);
    TellColor(outline);
    m_Saved.m_FillColor = fill;
    m_Saved.m_OutlineColor = outline;
}

void SetUp::Line(int style, int width, const RGBDType& color) const {
    m_Saved.m_LineStyle = style;
    m_Saved.m_LineWidth = width;
    Colors(color, color);
}

}  // namespace varnel::detail
