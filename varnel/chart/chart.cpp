// CChart3D: construction, factories and attributes.
#include "varnel/chart/chart.h"

#include <algorithm>

#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/detail/pixel_count.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/render/opengl.h"
#include "varnel/solids/aux_object.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

detail::Origin At(const char* operation) {
    return {ERR3DCLASS_CHART3D, operation};
}

}  // namespace

int CChart3D::nSelfID = 0;

CChart3D::CChart3D() {
    InitChartDefaults();
}

CChart3D::CChart3D(CChartView3D* view) {
    InitChartDefaults();
    InitChart3D(view);
}

CChart3D::CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max)
    : CChart3D(view) {
    NewAxes(NewTransform(min, max), min, max);
}

CChart3D::CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max,
                   CTransform3D** t)
    : CChart3D(view) {
    CTransform3D* const transform = NewTransform(min, max);
    if (t != nullptr) *t = transform;
}

CChart3D::CChart3D(CChartView3D* view, const point3Dtype& min, const point3Dtype& max,
                   CTransform3D** t, CAxes3D** a)
    : CChart3D(view, min, max, t) {
    CAxes3D* const axes = NewAxes(m_Objects.transforms.GetCurrent(), min, max);
    if (a != nullptr) *a = axes;
}

CChart3D::~CChart3D() {
    m_Objects.axes.RemoveAll();
    m_Objects.objects.RemoveAll();
    m_Objects.transforms.RemoveAll();
    m_Objects.texts.RemoveAll();
    m_Objects.solids.RemoveAll();
    m_Objects.pictures.RemoveAll();
    m_Signature = 0;
}

void CChart3D::InitChartDefaults() {
    m_Saved = {};
    m_Added = {};
    m_AutoScaleMode = {};
    m_Signature = kSignature;
    detail::Count(nSelfID);
    m_pHeader = detail::NewObject<CHeader3D>(At("InitChartDefaults"));
}

void CChart3D::SetLight(const point3Dtype& direction, double ambient, double diffuse,
                        double specular, double shininess) {
    m_Added.viewLight = 1;
    m_Added.lightDirection = direction;
    m_Added.lightAmbient = ambient;
    m_Added.lightDiffuse = diffuse;
    m_Added.lightSpecular = specular;
    m_Added.lightShininess = shininess;
}

void CChart3D::InitChart3D(CChartView3D* view) {
    detail::Require(view, ERR3D_CVIEW_PARAMETER, At("InitChart3D"));
    detail::Require(view->GetOpenGLPntr(), ERR3D_OPENGL_PARAMETER, At("InitChart3D"));
    const GLContext::HostContextGuard host;
    m_pChartView = view;
    m_pOpenGL = view->GetOpenGLPntr();
    for (int component : {LIGHT_AMBIENT, LIGHT_DIFFUSE, LIGHT_SPECULAR})
        m_pOpenGL->LoadLight(component);
    m_pHeader->InitHeaders(m_pOpenGL);
}

CTransform3D* CChart3D::RequireTransform(CTransform3D* t, const char* operation) const {
    detail::Require(t, ERR3D_TRANSFORM_PARAMETER, At(operation));
    return t;
}

CTransform3D* CChart3D::NewTransform() {
    return m_Objects.transforms.Append(detail::NewObject<CTransform3D>(At("NewTransform")));
}

CTransform3D* CChart3D::NewTransform(const point3Dtype& min, const point3Dtype& max) {
    return m_Objects.transforms.Append(
        detail::NewObject<CTransform3D>(At("NewTransform"), m_pOpenGL, min, max));
}

CAxes3D* CChart3D::NewAxes() {
    return m_Objects.axes.Append(detail::NewObject<CAxes3D>(At("NewAxes")));
}

CAxes3D* CChart3D::NewAxes(CTransform3D* t, const point3Dtype& min, const point3Dtype& max) {
    RequireTransform(t, "NewAxes");
    return m_Objects.axes.Append(detail::NewObject<CAxes3D>(At("NewAxes"), m_pOpenGL, t, min, max));
}

CAxes3D* CChart3D::NewAxes(CTransform3D* t) {
    RequireTransform(t, "NewAxes");
    return NewAxes(t, t->GetScaleMin(), t->GetScaleMax());
}

CAxes3D* CChart3D::NewAxes(const point3Dtype& min, const point3Dtype& max) {
    return NewAxes(m_Objects.transforms.GetCurrent(), min, max);
}

CChartObj3D* CChart3D::NewChartObj() {
    return m_Objects.objects.Append(detail::NewObject<CChartObj3D>(At("NewChartObj")));
}

CChartObj3D* CChart3D::NewChartObj(CTransform3D* t) {
    RequireTransform(t, "NewChartObj");
    return m_Objects.objects.Append(
        detail::NewObject<CChartObj3D>(At("NewChartObj"), m_pOpenGL, t));
}

CTextObj3D* CChart3D::NewChartTextObj() {
    return m_Objects.texts.Append(detail::NewObject<CTextObj3D>(At("NewChartTextObj")));
}

CTextObj3D* CChart3D::NewChartTextObj(CTransform3D* t, const CString& text) {
    RequireTransform(t, "NewChartTextObj");
    CFont3D* const font = m_pOpenGL != nullptr ? m_pOpenGL->GetFont() : nullptr;
    return m_Objects.texts.Append(
        detail::NewObject<CTextObj3D>(At("NewChartTextObj"), m_pOpenGL, font, t, text));
}

CTextObj3D* CChart3D::NewChartTextObj(const CString& text) {
    return NewChartTextObj(m_Objects.transforms.GetAt(0), text);
}

CAuxObj3D* CChart3D::NewAuxObj() {
    return m_Objects.solids.Append(detail::NewObject<CAuxObj3D>(At("NewAuxObj")));
}

CAuxObj3D* CChart3D::NewAuxObj(CTransform3D* t, int shape) {
    RequireTransform(t, "NewAUXObj");
    return m_Objects.solids.Append(
        detail::NewObject<CAuxObj3D>(At("NewAuxObj"), m_pOpenGL, t, shape));
}

CAuxObj3D* CChart3D::NewAuxObj(int shape) {
    return NewAuxObj(m_Objects.transforms.GetAt(0), shape);
}

CDIBObj3D* CChart3D::NewDIBObj() {
    return m_Objects.pictures.Append(detail::NewObject<CDIBObj3D>(At("NewDIBObj")));
}

CDIBObj3D* CChart3D::NewDIBObj(CTransform3D* t, const CString& file) {
    RequireTransform(t, "NewDIBObj");
    return m_Objects.pictures.Append(
        detail::NewObject<CDIBObj3D>(At("NewDIBObj"), m_pOpenGL, t, file));
}

CDIBObj3D* CChart3D::NewDIBObj(const CString& file) {
    return NewDIBObj(m_Objects.transforms.GetAt(0), file);
}

CTransform3D* CChart3D::MatchTransformID(int id) const {
    return FindTransform(m_Objects, id);
}

void CChart3D::SetLightComponent(int code, const RGBDType& c) {
    if (code == LIGHT_DIFFUSE) m_Saved.diffuseLight = c;
    if (code == LIGHT_MODEL_AMBIENT) m_Saved.ambientLight = c;
}

RGBDType CChart3D::GetLightComponent(int code) const {
    if (code == LIGHT_DIFFUSE) return m_Saved.diffuseLight;
    if (code == LIGHT_MODEL_AMBIENT) return m_Saved.ambientLight;
    return {};
}

void CChart3D::SetTextureColorArray(const RGBDType* colors, double min, double max, int n) {
    if (colors == nullptr || n < 0 || n > kTextureColors) return;
    SetTextureColorArray(std::span(colors, static_cast<std::size_t>(n)), min, max);
}

void CChart3D::SetTextureColorArray(std::span<const RGBDType> colors, double min, double max) {
    if (colors.size() > kTextureColors)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_CHART3D, "SetTextureColorArray",
                      detail::Say(colors.size(), " colours are more than ", kTextureColors));
    m_Saved.textureMin = min;
    m_Saved.textureMax = max;
    m_Saved.numTextureColors = static_cast<int>(colors.size());
    std::ranges::copy(colors, m_Saved.textureColors.begin());
}

void CChart3D::GetTextureColorArray(RGBDType* colors, double* min, double* max) const {
    if (colors != nullptr)
        std::copy_n(m_Saved.textureColors.begin(),
                    std::clamp(m_Saved.numTextureColors, 0, kTextureColors), colors);
    if (min != nullptr) *min = m_Saved.textureMin;
    if (max != nullptr) *max = m_Saved.textureMax;
}

void CChart3D::SetChartPosition(const GLViewRType& p) {
    m_Saved.position = p;
    if (m_pChartView == nullptr) return;
    int w = 0;
    int h = 0;
    m_pChartView->GetViewSize(&w, &h);
    SetChartViewport({detail::PixelCount(w * p.x), detail::PixelCount(h * p.y),
                      detail::PixelCount(w * p.width), detail::PixelCount(h * p.height)});
}

void CChart3D::SetChartViewport(const GLViewportType& v) {
    m_Saved.viewport = v;
    m_Saved.viewportAspect = static_cast<double>(v.height) / static_cast<double>(v.width);
}

void CChart3D::SetFontFactors() {
    if (m_pOpenGL != nullptr) m_pOpenGL->SetFontScaleFactor(DrawnFontSize());
    int width = 0;
    int height = 0;
    if (m_pChartView != nullptr) m_pChartView->GetViewSize(&width, &height);
    for (const auto& transform : m_Objects.transforms) {
        transform->SetDrawnViewport(m_Saved.viewport, height);
        // Units of a transform that keeps its proportions are as wide as high already.
        const double aspect = transform->GetTrueProportions() != 0 ? 1.0 : m_Saved.viewportAspect;
        transform->SetFontAspect(aspect * m_Saved.viewAspect);
        transform->SetFontHeightSF(m_Saved.fontHeightSF);
    }
}

}  // namespace varnel
