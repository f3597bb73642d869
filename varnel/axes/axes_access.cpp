// The accessors of CAxes3D: attributes of its planes, and what it passes on to axes and labels.
#include "varnel/axes/axes.h"

namespace varnel {
namespace {

bool IsAxis(int axis) {
    return axis >= 0 && axis <= 2;
}
bool IsPlane(int plane) {
    return plane >= 0 && plane <= 5;
}

/// Calls a setter of an axis or of labels, when there are any.
template <class Object, class... Parameters, class... Args>
void Tell(Object* object, void (Object::*setter)(Parameters...), const Args&... args) {
    if (object != nullptr) (object->*setter)(args...);
}

/// What a getter of an axis or of labels says, a zero value when there are none.
template <class Object, class Result>
Result Ask(const Object* object, Result (Object::*getter)() const) {
    return object == nullptr ? Result{} : (object->*getter)();
}

}  // namespace

CAxis3D* CAxes3D::GetAxis(int axis) const {
    return IsAxis(axis) ? m_pAxis[axis].get() : nullptr;
}

CAxisLabels3D* CAxes3D::GetAxisLabels(int axis) const {
    return IsAxis(axis) ? m_pAxisLabels[axis].get() : nullptr;
}

void CAxes3D::EnableAxis(int axis, int v) {
    if (IsAxis(axis)) m_bAxisEnable[axis] = v;
}

int CAxes3D::GetAxisEnable(int axis) const {
    return IsAxis(axis) ? m_bAxisEnable[axis] : 0;
}

void CAxes3D::EnableAxisLabels(int axis, int v) {
    if (IsAxis(axis)) m_bAxisLabelsEnable[axis] = v;
}

int CAxes3D::GetAxisLabelsEnable(int axis) const {
    return IsAxis(axis) ? m_bAxisLabelsEnable[axis] : 0;
}

void CAxes3D::EnableGrid(int plane, int v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_bGridEnable = v;
}

int CAxes3D::GetGridEnable(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_bGridEnable : 0;
}

void CAxes3D::EnableWall(int plane, int v) {
    if (IsPlane(plane)) m_Wall[plane].m_bWallEnable = v;
}

int CAxes3D::GetWallEnable(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_bWallEnable : 0;
}

void CAxes3D::SetPlaneGrid(int plane, int nthTic1, int nthTic2, const RGBDType& color,
                           double thickness, int style, int wallFlag) {
    if (!IsPlane(plane)) return;
    m_PlaneGrid[plane] = {nthTic1, nthTic2, wallFlag, thickness, style, color, 1};
}

void CAxes3D::SetPlaneGridAttrib(int plane, const RGBDType& color, double thickness,
                                 int /*style*/) {
    SetPlaneGridColor(plane, color);
    SetPlaneGridThickness(plane, thickness);
}

void CAxes3D::SetPlaneGridNthTic1(int plane, int v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridNthTic1 = v;
}

int CAxes3D::GetPlaneGridNthTic1(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridNthTic1 : 0;
}

void CAxes3D::SetPlaneGridNthTic2(int plane, int v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridNthTic2 = v;
}

int CAxes3D::GetPlaneGridNthTic2(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridNthTic2 : 0;
}

void CAxes3D::SetPlaneGridColor(int plane, const RGBDType& v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridColor = v;
}

RGBDType CAxes3D::GetPlaneGridColor(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridColor : RGBDType{};
}

void CAxes3D::SetPlaneGridThickness(int plane, double v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridThickness = v;
}

double CAxes3D::GetPlaneGridThickness(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridThickness : 0.0;
}

void CAxes3D::SetPlaneGridStyle(int plane, int v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridStyle = v;
}

int CAxes3D::GetPlaneGridStyle(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridStyle : 0;
}

void CAxes3D::SetPlaneGridWallFlag(int plane, int v) {
    if (IsPlane(plane)) m_PlaneGrid[plane].m_GridWallFlag = v;
}

int CAxes3D::GetPlaneGridWallFlag(int plane) const {
    return IsPlane(plane) ? m_PlaneGrid[plane].m_GridWallFlag : 0;
}

void CAxes3D::SetPlaneColor(int plane, const RGBDType& fill, const RGBDType& outline) {
    ShowPlane(plane, fill, outline, kFlatPlane);
}

void CAxes3D::SetWallPlane(int plane, const RGBDType& fill, const RGBDType& outline) {
    ShowPlane(plane, fill, outline, kWall);
}

void CAxes3D::ShowPlane(int plane, const RGBDType& fill, const RGBDType& outline, int mode) {
    if (!IsPlane(plane)) return;
    m_Wall[plane].m_WallColor = fill;
    m_Wall[plane].m_OutlineColor = outline;
    m_Wall[plane].m_WallMode = mode;
    m_Wall[plane].m_bWallEnable = 1;
}

RGBDType CAxes3D::GetWallColor(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_WallColor : RGBDType{};
}

void CAxes3D::SetWallThickness(int plane, double fraction) {
    if (!IsPlane(plane)) return;
    m_Wall[plane].m_WallThickness = fraction;
    const bool forX = plane == 0 || plane == 3;
    const bool forYZ = plane == 2 || plane == 5;
    if (forX) Tell(GetAxis(0), &CAxis3D::SetAxisWallThickness, fraction);
    if (forYZ) Tell(GetAxis(1), &CAxis3D::SetAxisWallThickness, fraction);
    if (forYZ) Tell(GetAxis(2), &CAxis3D::SetAxisWallThickness, fraction);
}

double CAxes3D::GetWallThickness(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_WallThickness : 0.0;
}

void CAxes3D::SetWallOffset(int plane, double v) {
    if (IsPlane(plane)) m_Wall[plane].m_WallOffset = v;
}

double CAxes3D::GetWallOffset(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_WallOffset : 0.0;
}

void CAxes3D::SetOutlineWidth(int plane, double v) {
    if (IsPlane(plane)) m_Wall[plane].m_OutlineWidth = v;
}

double CAxes3D::GetOutlineWidth(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_OutlineWidth : 0.0;
}

void CAxes3D::SetOutlineColor(int plane, const RGBDType& v) {
    if (IsPlane(plane)) m_Wall[plane].m_OutlineColor = v;
}

RGBDType CAxes3D::GetOutlineColor(int plane) const {
    return IsPlane(plane) ? m_Wall[plane].m_OutlineColor : RGBDType{};
}

void CAxes3D::SetPlaneColorMode(int plane, int v) {
    if (IsPlane(plane)) m_PlaneColorMode[plane] = v;
}

int CAxes3D::GetPlaneColorMode(int plane) const {
    return IsPlane(plane) ? m_PlaneColorMode[plane] : 0;
}

void CAxes3D::SetAxisColorMode(int axis, int mode) {
    if (!IsAxis(axis)) return;
    m_AxisColorMode[axis] = mode;
    Tell(GetAxis(axis), &CAxis3D::SetColorMode, mode);
}

int CAxes3D::GetAxisColorMode(int axis) const {
    return IsAxis(axis) ? m_AxisColorMode[axis] : 0;
}

void CAxes3D::SetAxisLimits(int axis, double start, double stop) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisLimits, start, stop);
}

void CAxes3D::SetAxisTics(int axis, double centerPoint, double ticSpace, int nthTicMajor,
                          double minorTicLength, double majorTicLength, int ticDir) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisTics, centerPoint, ticSpace, nthTicMajor, minorTicLength,
         majorTicLength, ticDir);
}

void CAxes3D::SetAxisIntercept(int axis, double i1, double i2) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisIntercept, i1, i2);
}

void CAxes3D::SetAxisAttrib(int axis, const RGBDType& axisColor, const RGBDType& ticColor,
                            double thickness, int style) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisAttrib, axisColor, ticColor, thickness, style);
}

void CAxes3D::SetAxisMin(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisMin, v);
}

double CAxes3D::GetAxisMin(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisMin);
}

void CAxes3D::SetAxisMax(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisMax, v);
}

double CAxes3D::GetAxisMax(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisMax);
}

void CAxes3D::SetAxisIntercept1(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisIntercept1, v);
}

double CAxes3D::GetAxisIntercept1(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisIntercept1);
}

void CAxes3D::SetAxisIntercept2(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisIntercept2, v);
}

double CAxes3D::GetAxisIntercept2(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisIntercept2);
}

void CAxes3D::SetAxisColor(int axis, const RGBDType& v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisColor, v);
}

RGBDType CAxes3D::GetAxisColor(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisColor);
}

void CAxes3D::SetAxisTicColor(int axis, const RGBDType& v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisTicColor, v);
}

RGBDType CAxes3D::GetAxisTicColor(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisTicColor);
}

void CAxes3D::SetAxisThickness(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisThickness, v);
}

double CAxes3D::GetAxisThickness(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisThickness);
}

void CAxes3D::SetAxisStyle(int axis, int v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisStyle, v);
}

int CAxes3D::GetAxisStyle(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisStyle);
}

void CAxes3D::SetAxisCenterPoint(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisCenterPoint, v);
}

double CAxes3D::GetAxisCenterPoint(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisCenterPoint);
}

void CAxes3D::SetAxisTicSpace(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisTicSpace, v);
}

double CAxes3D::GetAxisTicSpace(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisTicSpace);
}

void CAxes3D::SetAxisMinorTicLength(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisMinorTicLength, v);
}

double CAxes3D::GetAxisMinorTicLength(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisMinorTicLength);
}

void CAxes3D::SetAxisMajorTicLength(int axis, double v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisMajorTicLength, v);
}

double CAxes3D::GetAxisMajorTicLength(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisMajorTicLength);
}

void CAxes3D::SetAxisTicDir(int axis, int v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisTicDir, v);
}

int CAxes3D::GetAxisTicDir(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisTicDir);
}

void CAxes3D::SetAxisNthTicMajor(int axis, int v) {
    Tell(GetAxis(axis), &CAxis3D::SetAxisNthTicMajor, v);
}

int CAxes3D::GetAxisNthTicMajor(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisNthTicMajor);
}

double CAxes3D::GetAxisRange(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisRange);
}

double CAxes3D::GetAxisStart(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisStart);
}

double CAxes3D::GetAxisStop(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisStop);
}

int CAxes3D::GetAxisScaleMode(int axis) const {
    return Ask(GetAxis(axis), &CAxis3D::GetAxisScaleMode);
}

void CAxes3D::SetAxisLabels(int axis, int plane, int rotation, int dir, int decimals, int ends,
                            const RGBDType& color, const CString* strings, int count) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabels, plane, rotation, dir, decimals, ends,
         color, strings, count);
}

void CAxes3D::SetAxisLabelsFlipX(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsFlipX, v);
}

int CAxes3D::GetAxisLabelsFlipX(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsFlipX);
}

void CAxes3D::SetAxisLabelsFlipY(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsFlipY, v);
}

int CAxes3D::GetAxisLabelsFlipY(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsFlipY);
}

void CAxes3D::SetAxisTitleFlipX(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitleFlipX, v);
}

int CAxes3D::GetAxisTitleFlipX(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisTitleFlipX);
}

void CAxes3D::SetAxisTitleFlipY(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitleFlipY, v);
}

int CAxes3D::GetAxisTitleFlipY(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisTitleFlipY);
}

void CAxes3D::SetAxisLabelsNthTic(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsNthTic, v);
}

int CAxes3D::GetAxisLabelsNthTic(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsNthTic);
}

void CAxes3D::SetAxisLabelsFormat(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsFormat, v);
}

int CAxes3D::GetAxisLabelsFormat(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsFormat);
}

void CAxes3D::SetAxisLabelsPlane(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsPlane, v);
}

int CAxes3D::GetAxisLabelsPlane(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsPlane);
}

void CAxes3D::SetAxisLabelsTicOffset(int axis, double v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsTicOffset, v);
}

double CAxes3D::GetAxisLabelsTicOffset(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsTicOffset);
}

void CAxes3D::SetAxisLabelsXJust(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsXJust, v);
}

int CAxes3D::GetAxisLabelsXJust(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsXJust);
}

void CAxes3D::SetAxisLabelsYJust(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsYJust, v);
}

int CAxes3D::GetAxisLabelsYJust(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsYJust);
}

void CAxes3D::SetAxisLabelsRotation(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsRotation, v);
}

int CAxes3D::GetAxisLabelsRotation(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsRotation);
}

void CAxes3D::SetAxisLabelsDir(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsDir, v);
}

int CAxes3D::GetAxisLabelsDir(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsDir);
}

void CAxes3D::SetAxisLabelsDecimals(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsDecimals, v);
}

int CAxes3D::GetAxisLabelsDecimals(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsDecimals);
}

void CAxes3D::SetAxisLabelsEnds(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsEnds, v);
}

int CAxes3D::GetAxisLabelsEnds(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsEnds);
}

void CAxes3D::SetAxisLabelsColor(int axis, const RGBDType& v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsColor, v);
}

RGBDType CAxes3D::GetAxisLabelsColor(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsColor);
}

void CAxes3D::SetAxisLabelsSize(int axis, double v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsSize, v);
}

double CAxes3D::GetAxisLabelsSize(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsSize);
}

void CAxes3D::SetAxisTitleSize(int axis, double v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitleSize, v);
}

double CAxes3D::GetAxisTitleSize(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisTitleSize);
}

void CAxes3D::SetAxisTitleColor(int axis, const RGBDType& v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitleColor, v);
}

RGBDType CAxes3D::GetAxisTitleColor(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisTitleColor);
}

void CAxes3D::SetAxisTitlePlane(int axis, int v) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitlePlane, v);
}

int CAxes3D::GetAxisTitlePlane(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisTitlePlane);
}

void CAxes3D::SetAxisLabelsStrings(int axis, const CString* strings, int count) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisLabelsStrings, strings, count);
}

CString* CAxes3D::GetAxisLabelsStrings(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsStrings);
}

int CAxes3D::GetNumAxisLabelStrings(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetNumAxisLabelsStrings);
}

void CAxes3D::EnableAxisLabelsStrings(int axis, int on) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::EnableAxisLabelsStrings, on);
}

int CAxes3D::GetAxisLabelsStringEnable(int axis) const {
    return Ask(GetAxisLabels(axis), &CAxisLabels3D::GetAxisLabelsStringEnable);
}

void CAxes3D::SetAxisTitleString(int axis, const CString& title) {
    Tell(GetAxisLabels(axis), &CAxisLabels3D::SetAxisTitleString, title);
}

void CAxes3D::GetAxisTitleString(int axis, CString& title) const {
    if (const CAxisLabels3D* labels = GetAxisLabels(axis)) labels->GetAxisTitleString(title);
}

}  // namespace varnel
