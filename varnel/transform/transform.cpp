#include "varnel/transform/transform.h"

#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/numbers.h"

namespace varnel {
namespace {

point3Dtype Difference(const point3Dtype& a, const point3Dtype& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z, 0.0};
}

/// One coordinate's place between lo and hi as a place in -half .. +half; the order of the
/// operations fixes the rounding.
double ToBox(double q, double lo, double hi, double half) {
    return ((q - lo) * 2.0 / (hi - lo) + (-1.0)) * half;
}

double FromBox(double p, double lo, double hi, double half) {
    const double t = p / half;
    return (t + 1.0) / 2.0 * (hi - lo) + lo;
}

/// Axis numbers repeat every three; negative ones have no axis.
bool IsAxis(int axis) {
    return axis >= 0;
}

}  // namespace

int CTransform3D::nSelfIDCntr = 0;

int CTransform3D::NewSelfID() {
    return detail::Count(nSelfIDCntr);
}

CTransform3D::CTransform3D() {
    SetTransformDefaults();
}

CTransform3D::CTransform3D(COpenGL* gl) {
    SetTransformDefaults();
    InitTransform(gl);
    SetScale({-1, -1, -1, 0}, {1, 1, 1, 0});
}

CTransform3D::CTransform3D(COpenGL* gl, const point3Dtype& min, const point3Dtype& max) {
    SetTransformDefaults();
    InitTransform(gl);
    SetScale(min, max);
}

void CTransform3D::SetTransformDefaults() {
    m_pOpenGL = nullptr;
    std::fill(std::begin(m_GraphTransform), std::end(m_GraphTransform), 0.0);
    std::fill(std::begin(m_FontTransform), std::end(m_FontTransform), 0.0);
    m_Centroid = m_Offset = m_Rotation = m_ScaleFactor = {};
    m_ChartRect = {0.5, 0.5, 0.5, 0.0};
    m_ScaleMin = m_WorkingScaleMin = {};
    m_ScaleMax = m_WorkingScaleMax = {1, 1, 1, 0};
    m_AdjustedScaleMin = {1, 1, 1, 0};
    m_AdjustedScaleMax = {10, 10, 10, 0};
    m_Clipping = 0;
    std::fill(std::begin(m_AxisScaleMode), std::end(m_AxisScaleMode), 0);
    m_Reserved = 0;
    m_FontAspect = 1.0;
    m_FontHeightSF = 1.0;
    m_Signature = kSignature;
    m_SelfID = NewSelfID();
}

void CTransform3D::InitTransform(COpenGL* gl) {
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, {ERR3DCLASS_TRANSFORM3D, "InitTransform"});
    m_pOpenGL = gl;
}

void CTransform3D::SetScale(const point3Dtype& min, const point3Dtype& max) {
    m_ScaleMin = min;
    m_ScaleMax = max;
}

void CTransform3D::GetScale(point3Dtype& min, point3Dtype& max) const {
    min = m_ScaleMin;
    max = m_ScaleMax;
}

void CTransform3D::SetAxisScaleMode(int axis, int mode) {
    if (axis >= 0 && axis < 6) m_AxisScaleMode[axis] = mode;
}

int CTransform3D::GetAxisScaleMode(int axis) const {
    return axis >= 0 && axis < 6 ? m_AxisScaleMode[axis] : 0;
}

bool CTransform3D::IsLogarithmic(int axis) const {
    return IsAxis(axis) && m_AxisScaleMode[axis % 3] != 0;
}

void CTransform3D::SetAdjustedScale() {
    m_AdjustedScaleMin = m_ScaleMin;
    m_AdjustedScaleMax = m_ScaleMax;
    for (int axis = 0; axis < 3; ++axis) {
        if (!IsLogarithmic(axis)) continue;
        coordassign(m_AdjustedScaleMin, axis, AntilogLog10Ex(GetCoord3D(m_ScaleMin, axis)));
        coordassign(m_AdjustedScaleMax, axis, AntilogLog10Ex(GetCoord3D(m_ScaleMax, axis)));
    }
}

point3Dtype CTransform3D::GetAdjustedScaleMin() {
    SetAdjustedScale();
    return m_AdjustedScaleMin;
}

point3Dtype CTransform3D::GetAdjustedScaleMax() {
    SetAdjustedScale();
    return m_AdjustedScaleMax;
}

void CTransform3D::CalcWorkingScale(const point3Dtype& min, const point3Dtype& max) {
    m_WorkingScaleMin = CPTWS(min);
    m_WorkingScaleMax = CPTWS(max);
}

void CTransform3D::GetWorkingScale(point3Dtype& min, point3Dtype& max) const {
    min = m_WorkingScaleMin;
    max = m_WorkingScaleMax;
}

point3Dtype CTransform3D::GetRange() const {
    return Difference(m_ScaleMax, m_ScaleMin);
}

double CTransform3D::GetAxisRange(int axis) const {
    return GetCoord3D(GetRange(), axis);
}

point3Dtype CTransform3D::GetWorkingRange() const {
    return Difference(m_WorkingScaleMax, m_WorkingScaleMin);
}

double CTransform3D::GetAxisWorkingRange(int axis) const {
    return GetCoord3D(GetWorkingRange(), axis);
}

int CTransform3D::IsScaleInverted(int axis) const {
    if (!IsAxis(axis)) return 0;
    return GetCoord3D(m_WorkingScaleMax, axis % 3) < GetCoord3D(m_WorkingScaleMin, axis % 3) ? 1
                                                                                             : 0;
}

double CTransform3D::LogLimits(int axis, double v) const {
    return GetAxisScaleMode(axis) != 0 ? AntilogLog10Ex(v) : v;
}

double CTransform3D::CVTWS(int axis, double v) const {
    return IsLogarithmic(axis) ? log10Ex(v) : v;
}

double CTransform3D::CVFWS(int axis, double v) const {
    return IsLogarithmic(axis) ? Antilog10Ex(v) : v;
}

point3Dtype CTransform3D::CPTWS(const point3Dtype& p) const {
    return {CVTWS(0, p.x), CVTWS(1, p.y), CVTWS(2, p.z), p.w};
}

void CTransform3D::CPFWS(point3Dtype& out, const point3Dtype& in) const {
    out.x = CVFWS(0, in.x);
    out.y = CVFWS(1, in.y);
    out.z = CVFWS(2, in.z);
}

void CTransform3D::C3DATWS(point3Dtype* pts, int n) const {
    // Data on linear axes are working coordinates as they are.
    if (pts == nullptr || !(IsLogarithmic(0) || IsLogarithmic(1) || IsLogarithmic(2))) return;
    for (int i = 0; i < n; ++i)
        pts[i] = CPTWS(pts[i]);
}

void CTransform3D::NormalizePoint(const point3Dtype& p, point3Dtype& out) const {
    const point3Dtype q = CPTWS(p);
    const point3Dtype& lo = m_WorkingScaleMin;
    const point3Dtype& hi = m_WorkingScaleMax;
    out = {ToBox(q.x, lo.x, hi.x, m_ChartRect.x), ToBox(q.y, lo.y, hi.y, m_ChartRect.y),
           ToBox(q.z, lo.z, hi.z, m_ChartRect.z), p.w};
}

void CTransform3D::UnNormalizePoint(const point3Dtype& p, point3Dtype& out) const {
    const point3Dtype& lo = m_ScaleMin;
    const point3Dtype& hi = m_ScaleMax;
    CPFWS(out, {FromBox(p.x, lo.x, hi.x, m_ChartRect.x), FromBox(p.y, lo.y, hi.y, m_ChartRect.y),
                FromBox(p.z, lo.z, hi.z, m_ChartRect.z), 0.0});
}

double CTransform3D::PositiveRotate(double angle) {
    // Not a reduction into 0..360: the settled formula, which hosts of old files rely on.
    constexpr double kTurn = 360.0;
    if (angle > kTurn) {
        const double turns = angle / kTurn;
        return (turns - std::floor(turns) * kTurn) * kTurn;
    }
    return angle < 0.0 ? angle + kTurn : angle;
}

void CTransform3D::TransformRotate() {
    if (m_pOpenGL == nullptr) return;
    // Brings the chart's z up.
    m_pOpenGL->Rotate3D(-90.0, 0);
    m_pOpenGL->Translate3D(m_Offset.x, m_Offset.y, m_Offset.z);
    m_pOpenGL->Rotate3D(m_Rotation.x, 0);
    m_pOpenGL->Rotate3D(m_Rotation.y, 1);
    m_pOpenGL->Rotate3D(m_Rotation.z, 2);
}

void CTransform3D::TransformScale() {
    SetAdjustedScale();
    CalcWorkingScale(m_AdjustedScaleMin, m_AdjustedScaleMax);
    const point3Dtype range = GetWorkingRange();
    m_ScaleFactor = {2.0 / range.x, 2.0 / range.y, 2.0 / range.z, 0.0};
    if (m_pOpenGL == nullptr) return;
    m_pOpenGL->Scale3D(m_ScaleFactor.x, m_ScaleFactor.y, m_ScaleFactor.z);
    m_pOpenGL->Scale3D(m_ChartRect.x, m_ChartRect.y, m_ChartRect.z);
}

void CTransform3D::TransformTranslate() {
    const point3Dtype range = GetWorkingRange();
    m_Centroid = {range.x / 2.0 + m_WorkingScaleMin.x, range.y / 2.0 + m_WorkingScaleMin.y,
                  range.z / 2.0 + m_WorkingScaleMin.z, 0.0};
    if (m_pOpenGL != nullptr) m_pOpenGL->Translate3D(-m_Centroid.x, -m_Centroid.y, -m_Centroid.z);
}

void CTransform3D::TransformAll() {
    TransformRotate();
    TransformScale();
    TransformTranslate();
}

void CTransform3D::ChartTransform() {
    if (m_pOpenGL != nullptr) {
        m_pOpenGL->LoadIdentity();
        m_pOpenGL->PushMatrix();
    }
    TransformAll();
    if (m_pOpenGL == nullptr) return;
    m_pOpenGL->GetModelView(m_GraphTransform);
    m_pOpenGL->PopMatrix();
    MakeGraphTransformCurrent();
}

void CTransform3D::TextTransform() {
    if (m_pOpenGL == nullptr) return;
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->PushMatrix();
    TransformRotate();
    m_pOpenGL->GetModelView(m_FontTransform);
    m_pOpenGL->PopMatrix();
    MakeTextTransformCurrent();
}

void CTransform3D::SetGraphTransform(const double m[16]) {
    std::copy(m, m + 16, m_GraphTransform);
}

void CTransform3D::SetFontTransform(const double m[16]) {
    std::copy(m, m + 16, m_FontTransform);
}

void CTransform3D::MakeGraphTransformCurrent() {
    m_pOpenGL->LoadMatrixTransform(m_GraphTransform);
}

void CTransform3D::MakeTextTransformCurrent() {
    m_pOpenGL->LoadMatrixTransform(m_FontTransform);
}

void CTransform3D::SetClipping(int on) {
    m_Clipping = on;
    if (m_pOpenGL == nullptr) return;
    if (on != 0) m_pOpenGL->SetClipLimits(m_WorkingScaleMin, m_WorkingScaleMax);
    m_pOpenGL->EnableClipping(on != 0 ? 1 : 0);
}

template <class Archive>
void CTransform3D::Record(Archive& record) {
    record(m_SelfID, m_GraphTransform, m_FontTransform, m_Centroid, m_Offset, m_Rotation,
           m_ScaleFactor, m_ChartRect, m_ScaleMin, m_ScaleMax);
    // The working limits stand before the adjusted ones.
    record(m_WorkingScaleMin, m_WorkingScaleMax, m_AdjustedScaleMin, m_AdjustedScaleMax);
    record(m_AxisScaleMode, m_Clipping, m_Reserved, m_FontAspect, m_FontHeightSF);
}

void CTransform3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_TRANSFORM3D);
}

void CTransform3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_TRANSFORM3D);
}

}  // namespace varnel
