#include "varnel/transform/transform.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/counts.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/numbers.h"
#include "varnel/foundation/planes.h"

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

constexpr int kY = 1;

double InTurn(double degrees) {
    return std::remainder(degrees, 360.0);
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
    m_Saved = {};
    m_Added = {};
    m_Viewport = {};
    m_PictureHeight = 0;
    m_Signature = kSignature;
    m_SelfID = NewSelfID();
}

void CTransform3D::InitTransform(COpenGL* gl) {
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, {ERR3DCLASS_TRANSFORM3D, "InitTransform"});
    m_pOpenGL = gl;
}

void CTransform3D::SetScale(const point3Dtype& min, const point3Dtype& max) {
    m_Saved.scaleMin = min;
    m_Saved.scaleMax = max;
}

void CTransform3D::GetScale(point3Dtype& min, point3Dtype& max) const {
    min = m_Saved.scaleMin;
    max = m_Saved.scaleMax;
}

void CTransform3D::SetAxisScaleMode(int axis, int mode) {
    if (axis >= 0 && axis < 6) m_Saved.scaleMode[axis] = mode;
}

int CTransform3D::GetAxisScaleMode(int axis) const {
    return axis >= 0 && axis < 6 ? m_Saved.scaleMode[axis] : 0;
}

bool CTransform3D::IsLogarithmic(int axis) const {
    return IsAxis(axis) && m_Saved.scaleMode[axis % 3] != 0;
}

void CTransform3D::SetAdjustedScale() {
    m_Saved.adjustedMin = m_Saved.scaleMin;
    m_Saved.adjustedMax = m_Saved.scaleMax;
    for (int axis = 0; axis < 3; ++axis) {
        if (!IsLogarithmic(axis)) continue;
        coordassign(m_Saved.adjustedMin, axis, AntilogLog10Ex(GetCoord3D(m_Saved.scaleMin, axis)));
        coordassign(m_Saved.adjustedMax, axis, AntilogLog10Ex(GetCoord3D(m_Saved.scaleMax, axis)));
    }
}

point3Dtype CTransform3D::GetAdjustedScaleMin() {
    SetAdjustedScale();
    return m_Saved.adjustedMin;
}

point3Dtype CTransform3D::GetAdjustedScaleMax() {
    SetAdjustedScale();
    return m_Saved.adjustedMax;
}

void CTransform3D::CalcWorkingScale(const point3Dtype& min, const point3Dtype& max) {
    m_Saved.workingMin = CPTWS(min);
    m_Saved.workingMax = CPTWS(max);
}

void CTransform3D::GetWorkingScale(point3Dtype& min, point3Dtype& max) const {
    min = m_Saved.workingMin;
    max = m_Saved.workingMax;
}

point3Dtype CTransform3D::GetRange() const {
    return Difference(m_Saved.scaleMax, m_Saved.scaleMin);
}

double CTransform3D::GetAxisRange(int axis) const {
    return GetCoord3D(GetRange(), axis);
}

point3Dtype CTransform3D::GetWorkingRange() const {
    return Difference(m_Saved.workingMax, m_Saved.workingMin);
}

double CTransform3D::GetAxisWorkingRange(int axis) const {
    return GetCoord3D(GetWorkingRange(), axis);
}

int CTransform3D::IsScaleInverted(int axis) const {
    if (!IsAxis(axis)) return 0;
    const bool descends =
        GetCoord3D(m_Saved.workingMax, axis % 3) < GetCoord3D(m_Saved.workingMin, axis % 3);
    const bool mirrored = axis % 3 == kY && m_Added.rightHanded != 0;
    return descends != mirrored ? 1 : 0;
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

void CTransform3D::C3DATWS(std::span<point3Dtype> pts) const {
    C3DATWS(pts.data(), detail::CountOf(pts, {ERR3DCLASS_TRANSFORM3D, "C3DATWS"}));
}

void CTransform3D::NormalizePoint(const point3Dtype& p, point3Dtype& out) const {
    const point3Dtype q = CPTWS(p);
    const point3Dtype& lo = m_Saved.workingMin;
    const point3Dtype& hi = m_Saved.workingMax;
    const point3Dtype rect = SignedRect();
    out = {ToBox(q.x, lo.x, hi.x, rect.x), ToBox(q.y, lo.y, hi.y, rect.y),
           ToBox(q.z, lo.z, hi.z, rect.z), p.w};
}

void CTransform3D::UnNormalizePoint(const point3Dtype& p, point3Dtype& out) const {
    const point3Dtype& lo = m_Saved.scaleMin;
    const point3Dtype& hi = m_Saved.scaleMax;
    const point3Dtype rect = SignedRect();
    CPFWS(out, {FromBox(p.x, lo.x, hi.x, rect.x), FromBox(p.y, lo.y, hi.y, rect.y),
                FromBox(p.z, lo.z, hi.z, rect.z), 0.0});
}

double CTransform3D::PositiveRotate(double angle) {
    // Not a reduction into 0..360.
    constexpr double kTurn = 360.0;
    if (angle > kTurn) {
        const double turns = angle / kTurn;
        return (turns - std::floor(turns) * kTurn) * kTurn;
    }
    return angle < 0.0 ? angle + kTurn : angle;
}

void CTransform3D::TransformRotate() {
    if (m_pOpenGL == nullptr) return;
    const point3Dtype units = GetUnitScale();
    if (units.x != units.y) m_pOpenGL->Scale3D(units.x, units.y, 1.0);
    // Brings the chart's z up.
    m_pOpenGL->Rotate3D(-90.0, 0);
    const point3Dtype offset = GetDrawnOffset();
    m_pOpenGL->Translate3D(offset.x, offset.y, offset.z);
    m_pOpenGL->Rotate3D(m_Saved.rotation.x, 0);
    m_pOpenGL->Rotate3D(m_Saved.rotation.y, 1);
    m_pOpenGL->Rotate3D(m_Saved.rotation.z, 2);
}

void CTransform3D::TransformScale() {
    if (GetDiagnostics() != 0) TellBadLimits();
    SetAdjustedScale();
    CalcWorkingScale(m_Saved.adjustedMin, m_Saved.adjustedMax);
    const point3Dtype range = GetWorkingRange();
    m_Saved.scaleFactor = {2.0 / range.x, 2.0 / range.y, 2.0 / range.z, 0.0};
    if (m_pOpenGL == nullptr) return;
    m_pOpenGL->Scale3D(m_Saved.scaleFactor.x, m_Saved.scaleFactor.y, m_Saved.scaleFactor.z);
    const point3Dtype rect = SignedRect();
    m_pOpenGL->Scale3D(rect.x, rect.y, rect.z);
}

void CTransform3D::TransformTranslate() {
    const point3Dtype range = GetWorkingRange();
    m_Saved.centroid = {range.x / 2.0 + m_Saved.workingMin.x, range.y / 2.0 + m_Saved.workingMin.y,
                        range.z / 2.0 + m_Saved.workingMin.z, 0.0};
    if (m_pOpenGL != nullptr)
        m_pOpenGL->Translate3D(-m_Saved.centroid.x, -m_Saved.centroid.y, -m_Saved.centroid.z);
}

void CTransform3D::TransformAll() {
    TransformRotate();
    TransformScale();
    TransformTranslate();
}

void CTransform3D::ChartTransform() {
    const MatrixScope once(m_pOpenGL);
    if (m_pOpenGL != nullptr) {
        m_pOpenGL->LoadIdentity();
        m_pOpenGL->PushMatrix();
    }
    TransformAll();
    if (m_pOpenGL == nullptr) return;
    m_pOpenGL->GetModelView(m_Saved.graphTransform);
    m_pOpenGL->PopMatrix();
    MakeGraphTransformCurrent();
}

void CTransform3D::TextTransform() {
    if (m_pOpenGL == nullptr) return;
    const MatrixScope once(m_pOpenGL);
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->PushMatrix();
    TransformRotate();
    m_pOpenGL->GetModelView(m_Saved.fontTransform);
    m_pOpenGL->PopMatrix();
    MakeTextTransformCurrent();
}

void CTransform3D::SetGraphTransform(const double m[16]) {
    std::copy(m, m + 16, m_Saved.graphTransform);
}

void CTransform3D::SetFontTransform(const double m[16]) {
    std::copy(m, m + 16, m_Saved.fontTransform);
}

void CTransform3D::MakeGraphTransformCurrent() {
    m_pOpenGL->LoadMatrixTransform(m_Saved.graphTransform);
}

void CTransform3D::MakeTextTransformCurrent() {
    m_pOpenGL->LoadMatrixTransform(m_Saved.fontTransform);
}

void CTransform3D::SetClipping(int on) {
    m_Saved.clipping = on;
    if (m_pOpenGL == nullptr) return;
    if (on != 0) m_pOpenGL->SetClipLimits(m_Saved.workingMin, m_Saved.workingMax);
    m_pOpenGL->EnableClipping(on != 0 ? 1 : 0);
}

// A box whose y is mirrored is turned the other way about z by the same azimuth.
void CTransform3D::SetView(double azimuth, double elevation) {
    const double turn = m_Added.rightHanded != 0 ? 90.0 + azimuth : 90.0 - azimuth;
    m_Saved.rotation = {-elevation, 0.0, InTurn(turn), 0.0};
}

void CTransform3D::GetView(double& azimuth, double& elevation) const {
    const double turn = m_Saved.rotation.z;
    azimuth = InTurn(m_Added.rightHanded != 0 ? turn - 90.0 : 90.0 - turn);
    elevation = InTurn(-m_Saved.rotation.x);
}

void CTransform3D::SetBoxProportions(double x, double y, double z) {
    const bool none = x == 0.0 && y == 0.0 && z == 0.0;
    for (const double v : {x, y, z}) {
        if (!none && !(v > 0.0 && std::isfinite(v)))
            detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_TRANSFORM3D, "SetBoxProportions",
                          detail::Say("an edge is ", v));
    }
    m_Added.proportionsAsData = 0;
    m_Added.proportions = {x, y, z, 0.0};
}

void CTransform3D::SetBoxProportionsAsData(double z) {
    m_Added.proportionsAsData = 1;
    m_Added.proportions = {0.0, 0.0, std::max(z, 0.0), 0.0};
}

point3Dtype CTransform3D::GetUnitScale() const {
    if (m_Added.trueProportions == 0 || m_Viewport.width <= 0 || m_Viewport.height <= 0)
        return {1.0, 1.0, 1.0, 0.0};
    // The shorter side of the viewport has 2 units, the longer one more.
    const double aspect = static_cast<double>(m_Viewport.height) / m_Viewport.width;
    return {std::min(aspect, 1.0), std::min(1.0 / aspect, 1.0), 1.0, 0.0};
}

void CTransform3D::SetFit(const point3Dtype& rect, const point3Dtype& offset) {
    m_Added.fitted = 1;
    m_Added.fittedRect = rect;
    m_Added.fittedOffset = offset;
}

point3Dtype CTransform3D::GetProportions() const {
    if (m_Added.proportionsAsData == 0) return m_Added.proportions;
    const point3Dtype range = GetWorkingRange();
    point3Dtype edges{std::abs(range.x), std::abs(range.y), std::abs(range.z), 0.0};
    if (m_Added.proportions.z > 0.0) edges.z = m_Added.proportions.z * std::max(edges.x, edges.y);
    return edges;
}

point3Dtype CTransform3D::GetDrawnRect() const {
    if (m_Added.fitted != 0) return m_Added.fittedRect;
    const point3Dtype& rect = m_Saved.chartRect;
    const point3Dtype edges = GetProportions();
    const double longest = std::max({edges.x, edges.y, edges.z});
    if (!(longest > 0.0) || !std::isfinite(longest)) return rect;
    const double size = std::max({rect.x, rect.y, rect.z}) / longest;
    return {size * edges.x, size * edges.y, size * edges.z, rect.w};
}

point3Dtype CTransform3D::GetDrawnOffset() const {
    return m_Added.fitted != 0 ? m_Added.fittedOffset : m_Saved.offset;
}

/// The half extents from the minima to the maxima of the data.
point3Dtype CTransform3D::SignedRect() const {
    point3Dtype rect = GetDrawnRect();
    if (m_Added.rightHanded != 0) rect.y = -rect.y;
    return rect;
}

void CTransform3D::TellBadLimits() const {
    for (int axis = 0; axis < 3; ++axis) {
        const double min = GetCoord3D(m_Saved.scaleMin, axis);
        const double max = GetCoord3D(m_Saved.scaleMax, axis);
        const char name = "xyz"[axis];
        if (min == max)
            detail::Diagnose("ChartTransform", "both limits of the ", name, " axis are ", min);
        else if (IsLogarithmic(axis) && std::min(min, max) <= 0.0)
            detail::Diagnose("ChartTransform", "the logarithmic ", name, " axis has the limit ",
                             std::min(min, max));
    }
}

// --- Pixels ------------------------------------------------------------------------------------

void CTransform3D::SetDrawnViewport(const GLViewportType& viewport, int pictureHeight) {
    m_Viewport = viewport;
    m_PictureHeight = pictureHeight;
}

bool CTransform3D::DataToPixel(const point3Dtype& data, double& x, double& y) const {
    if (m_Viewport.width <= 0) return false;
    const point3Dtype p = CPTWS(data);
    const double* const m = m_Saved.graphTransform;
    const double across = m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12];
    const double up = m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13];
    x = m_Viewport.x + (across + 1.0) / 2.0 * m_Viewport.width;
    y = m_PictureHeight - m_Viewport.y - (up + 1.0) / 2.0 * m_Viewport.height;
    return std::isfinite(x) && std::isfinite(y);
}

bool CTransform3D::PixelToData(double x, double y, int plane, point3Dtype& data) const {
    const int normal = GetNormalAxis(plane);
    const point3Dtype& limits = plane < 3 ? m_Saved.adjustedMin : m_Saved.adjustedMax;
    return PixelToData(x, y, normal, GetCoord3D(limits, normal), data);
}

bool CTransform3D::PixelToData(double x, double y, int axis, double value,
                               point3Dtype& data) const {
    if (m_Viewport.width <= 0 || axis < 0 || axis > 2) return false;
    const auto m = [this](int column, int row) {
        return m_Saved.graphTransform[std::ptrdiff_t{4} * column + row];
    };
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    const double fixed = CVTWS(axis, value);
    // Two equations, across and up, for the two coordinates in the plane.
    const double across =
        (x - m_Viewport.x) / m_Viewport.width * 2.0 - 1.0 - m(3, 0) - m(axis, 0) * fixed;
    const double up = (m_PictureHeight - y - m_Viewport.y) / m_Viewport.height * 2.0 - 1.0 -
                      m(3, 1) - m(axis, 1) * fixed;
    const double determinant = m(a, 0) * m(b, 1) - m(b, 0) * m(a, 1);
    const double size = std::hypot(m(a, 0), m(a, 1)) * std::hypot(m(b, 0), m(b, 1));
    if (!(std::abs(determinant) > 1e-9 * size)) return false;
    double place[3];
    place[axis] = fixed;
    place[a] = (across * m(b, 1) - m(b, 0) * up) / determinant;
    place[b] = (m(a, 0) * up - across * m(a, 1)) / determinant;
    CPFWS(data, {place[0], place[1], place[2], 0.0});
    return true;
}

template <class Archive>
void CTransform3D::Record(Archive& record) {
    record(m_SelfID, m_Saved.graphTransform, m_Saved.fontTransform, m_Saved.centroid,
           m_Saved.offset, m_Saved.rotation, m_Saved.scaleFactor, m_Saved.chartRect,
           m_Saved.scaleMin, m_Saved.scaleMax);
    // The working limits stand before the adjusted ones.
    record(m_Saved.workingMin, m_Saved.workingMax, m_Saved.adjustedMin, m_Saved.adjustedMax);
    record(m_Saved.scaleMode, m_Saved.clipping, m_Saved.reserved, m_Saved.fontAspect,
           m_Saved.fontHeightSF);
}

void CTransform3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("rightHanded", &Added::rightHanded);
        field("trueProportions", &Added::trueProportions);
        field("proportions", &Added::proportions);
        field("proportionsAsData", &Added::proportionsAsData);
        field("fitted", &Added::fitted);
        field("fittedRect", &Added::fittedRect);
        field("fittedOffset", &Added::fittedOffset);
    });
}

void CTransform3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_TRANSFORM3D);
}

void CTransform3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_TRANSFORM3D);
}

}  // namespace varnel
