#include "varnel/axes/axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "varnel/axes/detail/axis_points.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/record.h"

namespace varnel {
namespace {

int FixedWidth(double v, int decimals) {
    return std::snprintf(nullptr, 0, "%1.*f", decimals, v);
}

}  // namespace

int CAxis3D::nSelfID = 0;

CAxis3D::CAxis3D() {
    InitAxisDefaults();
}

CAxis3D::CAxis3D(COpenGL* gl, CTransform3D* transform) : CAxis3D(gl, transform, 0) {
}

CAxis3D::CAxis3D(COpenGL* gl, CTransform3D* transform, int axisType) : CAxis3D() {
    InitAxis(gl, transform, axisType);
}

CAxis3D::CAxis3D(COpenGL* gl, CTransform3D* transform, int axisType, double start, double stop)
    : CAxis3D(gl, transform, axisType) {
    SetAxisLimits(start, stop);
}

void CAxis3D::InitAxisDefaults() {
    m_pOpenGL = nullptr;
    m_pTransform = nullptr;
    m_Saved = {};
    m_Added = {};
    detail::Count(nSelfID);
}

void CAxis3D::InitAxis(COpenGL* gl, CTransform3D* transform, int axisType) {
    constexpr detail::Origin origin{ERR3DCLASS_AXIS3D, "InitAxis"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    m_pOpenGL = gl;
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pTransform = transform;
    m_Saved.m_nTransformID = transform->GetSelfID();
    m_Saved.m_AxisType = axisType;
}

void CAxis3D::SetAxisLimits(double start, double stop) {
    m_Saved.m_Start = start;
    m_Saved.m_Stop = stop;
    m_Saved.m_Min = std::min(start, stop);
    m_Saved.m_Max = std::max(start, stop);
    m_Saved.m_bAxisSet = 1;
}

void CAxis3D::SetAxisMin(double v) {
    m_Saved.m_Start = v;
    const double max = m_Saved.m_Max;
    m_Saved.m_Min = std::min(max, v);
    m_Saved.m_Max = std::max(max, v);
    m_Saved.m_bAxisSet = 1;
}

void CAxis3D::SetAxisMax(double v) {
    m_Saved.m_Stop = v;
    m_Saved.m_Min = std::min(m_Saved.m_Min, v);
    m_Saved.m_Max = v;
    m_Saved.m_bAxisSet = 1;
}

double CAxis3D::GetAxisRange() const {
    return std::abs(m_Saved.m_Max - m_Saved.m_Min);
}

int CAxis3D::GetAxisScaleMode() const {
    return m_pTransform == nullptr ? 0 : m_pTransform->GetAxisScaleMode(m_Saved.m_AxisType);
}

void CAxis3D::SetAxisTics(double centerPoint, double ticSpace, int nthTicMajor,
                          double minorTicLength, double majorTicLength, int ticDir) {
    m_Saved.m_CenterPoint = centerPoint;
    m_Saved.m_TicSpace = ticSpace;
    m_Saved.m_NthTicMajor = nthTicMajor;
    m_Saved.m_MinorTicLength = minorTicLength;
    m_Saved.m_MajorTicLength = majorTicLength;
    m_Saved.m_TicDir = ticDir;
}

void CAxis3D::SetAxisIntercept(double i1, double i2) {
    m_Saved.m_Intercept1 = i1;
    m_Saved.m_Intercept2 = i2;
}

double CAxis3D::GetAxisIntercept(int which) const {
    switch (which) {
        case 0:
            return m_Saved.m_CenterPoint;
        case 1:
            return m_Saved.m_Intercept1;
        case 2:
            return m_Saved.m_Intercept2;
        default:
            return 0.0;
    }
}

int CAxis3D::GetAxisInterceptAxis(int which) const {
    if (m_Saved.m_AxisType < 0 || m_Saved.m_AxisType > 2) return 0;
    if (which == 0) return m_Saved.m_AxisType;
    constexpr int kFirst[3] = {1, 0, 0};
    constexpr int kSecond[3] = {2, 2, 1};
    return which == 1 ? kFirst[m_Saved.m_AxisType] : kSecond[m_Saved.m_AxisType];
}

void CAxis3D::SetAxisAttrib(const RGBDType& axisColor, const RGBDType& ticColor, double thickness,
                            int style) {
    m_Saved.m_AxisColor = axisColor;
    m_Saved.m_TicColor = ticColor;
    m_Saved.m_Thickness = thickness;
    m_Saved.m_AxisStyle = style;
}

void CAxis3D::GetAxisPoint(point3Dtype& p, double value) const {
    detail::PointOnAxis(m_Saved.m_AxisType, value, m_Saved.m_Intercept1, m_Saved.m_Intercept2, p);
}

void CAxis3D::GetAxisEndPoints(point3Dtype& start, point3Dtype& end) const {
    GetAxisPoint(start, m_Saved.m_Min);
    end = start;
    coordassign(end, m_Saved.m_AxisType, m_Saved.m_Max);
}

void CAxis3D::calcticpoint(point3Dtype& p, double length, int ticDir) const {
    if (m_pTransform == nullptr) return;
    detail::MoveAlong(p, ticDir, detail::WorkingDistance(*m_pTransform, ticDir, length));
}

int CAxis3D::calcmaxstrwidth(double a, double b, int decimals) {
    return std::max(FixedWidth(a, decimals), FixedWidth(b, decimals));
}

void CAxis3D::DrawAxis() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr) return;
    m_pOpenGL->SetColorMode(m_Saved.m_ColorMode);
    m_pOpenGL->EnableTexture(m_Saved.m_ColorMode == 2);
    point3Dtype start;
    point3Dtype end;
    GetAxisEndPoints(start, end);
    point3Dtype beside = end;
    calcticpoint(beside, m_Saved.m_MinorTicLength, m_Saved.m_TicDir);
    point3Dtype normal;
    CalcNormal(start, end, beside, normal);
    m_pOpenGL->SetLineNormal(normal, 1);
    DrawAxisLine();
    DrawAxisTics();
    m_pOpenGL->EnableTexture(0);
}

void CAxis3D::DrawAxisLine() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr || m_Saved.m_bAxisSet == 0) return;
    m_pOpenGL->SetLineStyle3D(m_Saved.m_AxisStyle, m_Saved.m_Thickness, m_Saved.m_AxisColor);
    point3Dtype start;
    point3Dtype end;
    GetAxisEndPoints(start, end);
    m_pOpenGL->StartLineAbs3D(m_pTransform->CPTWS(start));
    m_pOpenGL->EndLineAbs3D(m_pTransform->CPTWS(end));
}

void CAxis3D::SetTicValues(std::span<const double> majors, std::span<const double> minors) {
    m_Added.majors.assign(majors.begin(), majors.end());
    m_Added.minors.assign(minors.begin(), minors.end());
}

void CAxis3D::DrawTicValues() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr || m_Saved.m_bAxisSet == 0) return;
    m_pOpenGL->SetLineStyle3D(m_Saved.m_AxisStyle, m_Saved.m_Thickness, m_Saved.m_TicColor);
    for (const bool major : {true, false})
        for (const double value : major ? m_Added.majors : m_Added.minors)
            if (m_Saved.m_Min <= value && value <= m_Saved.m_Max) DrawTic(value, major);
}

void CAxis3D::DrawAxisTics() {
    if (HasTicValues()) return DrawTicValues();
    if (GetAxisScaleMode() != 0) {
        DrawLogAxisTics();
    } else {
        DrawLinAxisTics();
    }
}

void CAxis3D::DrawLinAxisTics() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr || m_Saved.m_bAxisSet == 0) return;
    m_pOpenGL->SetLineStyle3D(m_Saved.m_AxisStyle, m_Saved.m_Thickness, m_Saved.m_TicColor);
    if (m_Saved.m_NthTicMajor == 0) return;
    detail::WalkLinear(
        m_Saved.m_CenterPoint, m_Saved.m_TicSpace, m_Saved.m_Min, m_Saved.m_Max,
        [this](double v, int count) { DrawTic(v, count % m_Saved.m_NthTicMajor == 0); });
}

void CAxis3D::DrawLogAxisTics() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr || m_Saved.m_bAxisSet == 0) return;
    m_pOpenGL->SetLineStyle3D(m_Saved.m_AxisStyle, m_Saved.m_Thickness, m_Saved.m_TicColor);
    detail::WalkDecades(m_pTransform->LogLimits(m_Saved.m_AxisType, m_Saved.m_CenterPoint),
                        m_pTransform->LogLimits(m_Saved.m_AxisType, m_Saved.m_Min),
                        m_pTransform->LogLimits(m_Saved.m_AxisType, m_Saved.m_Max),
                        [this](double v, bool decade) { DrawTic(v, decade); });
}

void CAxis3D::DrawTic(double value, bool major) {
    if (!m_pOpenGL->TakeAxisLine()) return;
    point3Dtype from;
    GetAxisPoint(from, value);
    from = m_pTransform->CPTWS(from);
    point3Dtype to = from;
    calcticpoint(to, major ? m_Saved.m_MajorTicLength : m_Saved.m_MinorTicLength, m_Saved.m_TicDir);
    m_pOpenGL->StartLineAbs3D(from);
    m_pOpenGL->EndLineAbs3D(to);
}

template <class Archive>
void CAxis3D::Record(Archive& record) {
    // A transform may have got another identifier since the axis was bound to it.
    if (!Archive::kLoading && m_pTransform != nullptr)
        m_Saved.m_nTransformID = m_pTransform->GetSelfID();
    record(detail::CounterField{nSelfID}, m_Saved.m_nTransformID);
    record(m_Saved.m_AxisType, m_Saved.m_TicDir, m_Saved.m_AxisStyle, m_Saved.m_NthTicMajor,
           m_Saved.m_ColorMode);
    record(m_Saved.m_AxisColor, m_Saved.m_TicColor);
    record(m_Saved.m_Thickness, m_Saved.m_Min, m_Saved.m_Max, m_Saved.m_Start, m_Saved.m_Stop,
           m_Saved.m_MinorTicLength, m_Saved.m_MajorTicLength, m_Saved.m_WallThickness,
           m_Saved.m_TicSpace, m_Saved.m_CenterPoint, m_Saved.m_Intercept1, m_Saved.m_Intercept2);
    record(m_Saved.m_bAxisSet);
}

void CAxis3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("majors", &Added::majors);
        field("minors", &Added::minors);
    });
}

void CAxis3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_AXIS3D);
}

void CAxis3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_AXIS3D);
}

}  // namespace varnel
