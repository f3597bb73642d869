#include "varnel/axes/text_object.h"

#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/justify.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

int CTextObj3D::nSelfID = 0;

CTextObj3D::CTextObj3D() {
    InitTextObjDefaults();
}

CTextObj3D::CTextObj3D(COpenGL* gl, CFont3D* font, CTransform3D* transform, const CString& text)
    : CTextObj3D() {
    InitTextObj(gl, font, transform);
    m_Saved.m_String = text;
}

void CTextObj3D::InitTextObjDefaults() {
    m_Saved = {};
    m_Added = {};
    detail::Count(nSelfID);
}

void CTextObj3D::InitTextObj(COpenGL* gl, CFont3D* font, CTransform3D* transform) {
    constexpr detail::Origin origin = {ERR3DCLASS_TEXTOBJ3D, "InitTextObj"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    m_pOpenGL = gl;
    detail::Require(font, ERR3D_FONT_PARAMETER, origin);
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pTransform = transform;
    m_nTransformID = transform->GetSelfID();
}

void CTextObj3D::SetJustify(int x, int y) {
    m_Saved.m_XJustify = x;
    m_Saved.m_YJustify = y;
}

void CTextObj3D::GetJustify3D(int& x, int& y) const {
    x = m_Saved.m_XJustify;
    y = m_Saved.m_YJustify;
}

const CFont3D* CTextObj3D::CurrentFont() const {
    return m_pOpenGL == nullptr ? nullptr : m_pOpenGL->GetFont();
}

double CTextObj3D::TextWidth() const {
    const CFont3D* const font = CurrentFont();
    if (font == nullptr || m_pTransform == nullptr) return 0.0;
    return font->TextWidth3D(m_Saved.m_String) * m_pTransform->GetFontHeightSF() *
           m_pTransform->GetFontAspect();
}

double CTextObj3D::TextHeight() const {
    const CFont3D* const font = CurrentFont();
    if (font == nullptr || m_pTransform == nullptr) return 0.0;
    return font->TextHeight3D(m_Saved.m_String) * m_pTransform->GetFontHeightSF();
}

void CTextObj3D::OutText() {
    if (m_Saved.m_bTextEnable == 0 || m_pTransform == nullptr) return;
    m_pTransform->TextTransform();
    m_pTransform->NormalizePoint(m_Saved.m_Location, m_Saved.m_NormLocation);
    OutTextNorm();
}

void CTextObj3D::OutTextNorm() {
    detail::ProgressStep();
    const CFont3D* const font = CurrentFont();
    if (m_Saved.m_bTextEnable == 0 || font == nullptr || m_pTransform == nullptr) return;
    if (font->GetFontScaleFactor() == 0.0 || font->GetFace() == nullptr) return;
    // Letters are drawn in ems, so the justification is needed in ems, too.
    const detail::TextSize size = detail::TextMeasurer(font->GetFace()).Measure(m_Saved.m_String);
    point3Dtype justify;
    calccharjust(justify, size.width, size.height);
    justify.x += m_Shift.x;
    justify.y += m_Shift.y;
    point3Dtype scale;
    CalcComplexAspectRatio(scale);

    m_pOpenGL->PushMatrix();
    m_pTransform->TextTransform();
    repostextstart3D(m_Saved.m_NormLocation);
    TransformTextPlane(m_pTransform->GetRotation());
    m_pOpenGL->Scale3D(scale.x, scale.y, scale.z);
    repostextstart3D(justify);

    const int colorMode = m_pOpenGL->GetColorMode();
    m_pOpenGL->SetColorMode(0);
    m_pOpenGL->SetFillStyle3D(m_Saved.m_Color, SetRGBD(0.0, 0.0, 0.0, 1.0), m_Saved.m_Color);
    DrawLines(*font, size.width);
    m_pOpenGL->SetColorMode(colorMode);
    m_pOpenGL->PopMatrix();
}

void CTextObj3D::DrawLines(const CFont3D& font, double width) const {
    const detail::Utf8Text text(m_Saved.m_String);
    const auto lines = std::count(text.Get().begin(), text.Get().end(), '\n');
    double y = static_cast<double>(lines) * detail::kLineSpacing;
    detail::ForEachLine(text.Get(), [&](std::string_view line) {
        const double own =
            lines > 0 ? detail::TextMeasurer(font.GetFace()).Measure(line).width : width;
        m_pOpenGL->PushMatrix();
        // JustifyOffset is how far a text of that width lies before its location.
        m_pOpenGL->Translate3D(detail::JustifyOffset(own - width, m_Saved.m_XJustify), y, 0.0);
        m_pOpenGL->DrawTextRun(font, line, m_Added.halo,
                               m_Added.haloColor.a > 0.0 ? &m_Added.haloColor : nullptr);
        m_pOpenGL->PopMatrix();
        y -= detail::kLineSpacing;
    });
}

void CTextObj3D::Transform() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr) return;
    double matrix[16];
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->PushMatrix();
    m_pTransform->TransformAll();
    m_pOpenGL->GetModelView(matrix);
    m_pTransform->SetGraphTransform(matrix);
    m_pOpenGL->PopMatrix();
    m_pOpenGL->PushMatrix();
    m_pTransform->TransformRotate();
    m_pOpenGL->GetModelView(matrix);
    m_pTransform->SetFontTransform(matrix);
    m_pOpenGL->PopMatrix();
    m_pOpenGL->LoadMatrixTransform(m_pTransform->GetGraphTransform());
}

std::vector<CTextObj3D::PlaneTurn> CTextObj3D::PlaneTurns(const point3Dtype& chartRotation) const {
    const auto rotation = static_cast<double>(m_Saved.m_Rotation);
    std::vector<PlaneTurn> turns;
    switch (m_Saved.m_TextPlane) {
        case TEXTPLANE_XY:
            turns = {{180.0, 0}, {rotation, 2}};
            break;
        case TEXTPLANE_XZ:
            turns = {{rotation, 1}, {90.0, 0}};
            break;
        case TEXTPLANE_YZ:
            turns = {{rotation, 0}, {90.0, 0}, {-90.0, 1}};
            break;
        case TEXTPLANE_VIEWER:
            // Undoes the chart's rotation and its turn of z upward.
            turns = {{-chartRotation.z, 2},
                     {-chartRotation.y, 1},
                     {-chartRotation.x, 0},
                     {90.0, 0},
                     {rotation, 2}};
            break;
        default:
            break;
    }
    if (m_Saved.m_FlipX != 0) turns.push_back({180.0, 0});
    if (m_Saved.m_FlipY != 0) turns.push_back({180.0, 1});
    return turns;
}

void CTextObj3D::TransformTextPlane(const point3Dtype& chartRotation) {
    if (m_pOpenGL == nullptr) return;
    for (const PlaneTurn& turn : PlaneTurns(chartRotation))
        m_pOpenGL->Rotate3D(turn.degrees, turn.axis);
}

void CTextObj3D::CalcComplexAspectRatio(point3Dtype& scale) const {
    const CFont3D* const font = CurrentFont();
    if (font == nullptr || m_pTransform == nullptr) return;
    if (m_Saved.m_TextPlane >= 0 && m_Saved.m_TextPlane <= 3) {
        // Layouts depend on this rounded constant: at 90 degrees the cosine is 0.0003, not 0.
        const double theta = m_Saved.m_Rotation * 0.01745;
        const double c = std::abs(std::cos(theta));
        const double s = std::abs(std::sin(theta));
        const double aspect = m_pTransform->GetFontAspect();
        // Where units are as wide as high, there is nothing to make up for, and a text at 45
        // degrees would be too large.
        const bool isEven = m_pTransform->GetTrueProportions() != 0 && aspect == 1.0;
        scale.x = isEven ? 1.0 : aspect * c + s;
        scale.y = isEven ? 1.0 : aspect * s + c;
        scale.z = scale.x;
    }
    const double size =
        font->GetFontScaleFactor() * m_pTransform->GetFontHeightSF() * m_Saved.m_CharSize;
    scale.x *= size;
    scale.y *= size;
    scale.z *= size;
}

void CTextObj3D::calccharjust(point3Dtype& offset, double width, double height) const {
    offset.x = detail::JustifyOffset(width, m_Saved.m_XJustify);
    offset.y = detail::JustifyOffset(height, m_Saved.m_YJustify);
    offset.z = 0.0;
}

void CTextObj3D::repostextstart3D(const point3Dtype& p) {
    if (m_pOpenGL != nullptr) m_pOpenGL->Translate3D(p.x, p.y, p.z);
}

template <class Archive>
void CTextObj3D::Record(Archive& record) {
    record(detail::CounterField{nSelfID}, m_nTransformID, m_Saved.m_String, m_Saved.m_Location,
           m_Saved.m_NormLocation, m_Saved.m_XJustify, m_Saved.m_YJustify);
    record(m_Saved.m_Color, m_Saved.m_TextPlane, m_Saved.m_FlipX, m_Saved.m_FlipY,
           m_Saved.m_Rotation, m_Saved.m_bTextureEnable, m_Saved.m_Clipping);
    record(m_Saved.m_bTextEnable, m_Saved.m_CharSize);
}

void CTextObj3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("halo", &Added::halo);
        field("haloColor", &Added::haloColor);
    });
}

void CTextObj3D::Save(HANDLE file) {
    detail::SaveRecord(*this, file, ERR3DCLASS_TEXTOBJ3D);
}
void CTextObj3D::Load(HANDLE file) {
    detail::LoadRecord(*this, file, ERR3DCLASS_TEXTOBJ3D);
}

}  // namespace varnel
