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

constexpr int kDiffuse = 4609;

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
    CAxes3D* const axes = NewAxes(m_TransformList.GetCurrent(), min, max);
    if (a != nullptr) *a = axes;
}

CChart3D::~CChart3D() {
    m_AxesList.RemoveAll();
    m_ChartObjList.RemoveAll();
    m_TransformList.RemoveAll();
    m_TextList.RemoveAll();
    m_AuxObjList.RemoveAll();
    m_DIBObjList.RemoveAll();
    m_Signature = 0;
}

void CChart3D::InitChartDefaults() {
    m_ViewAspect = m_ViewportAspect = m_FontHeightSF = m_BorderThickness = 1.0;
    m_FontSize = 0.1;
    m_Spare = 0.05;
    m_ChartEnable = m_BorderEnable = 1;
    m_ChartViewport = {0, 0, 100, 100};
    m_ChartPosition = {0.0, 0.0, 1.0, 1.0};
    m_LightPosition = {0.0, 1.0, 1.0, 0.0};
    m_ChartBkColor = m_DiffuseLight = SetRGBD(1, 1, 1, 1);
    m_BorderColor = SetRGBD(0, 0, 0, 1);
    std::fill(std::begin(m_TextureColors), std::end(m_TextureColors), SetRGBD(0, 0, 0, 1));
    m_AmbientLight = SetRGBD(0.4, 0.4, 0.4, 1);
    m_TextureMin = 0.0;
    m_TextureMax = 1.0;
    m_TextureMode = -1;
    m_NumTextureColors = 0;
    m_Signature = kSignature;
    detail::Count(nSelfID);
    m_pHeader = detail::NewObject<CHeader3D>(At("InitChartDefaults"));
}

void CChart3D::InitChart3D(CChartView3D* view) {
    detail::Require(view, ERR3D_CVIEW_PARAMETER, At("InitChart3D"));
    detail::Require(view->GetOpenGLPntr(), ERR3D_OPENGL_PARAMETER, At("InitChart3D"));
    const GLContext::HostContextGuard host;
    m_pChartView = view;
    m_pOpenGL = view->GetOpenGLPntr();
    for (int component : {4608, kDiffuse, 4610})
        m_pOpenGL->LoadLight(component);
    m_pHeader->InitHeaders(m_pOpenGL);
}

CTransform3D* CChart3D::RequireTransform(CTransform3D* t, const char* operation) const {
    detail::Require(t, ERR3D_TRANSFORM_PARAMETER, At(operation));
    return t;
}

CTransform3D* CChart3D::NewTransform() {
    return m_TransformList.Append(detail::NewObject<CTransform3D>(At("NewTransform")));
}

CTransform3D* CChart3D::NewTransform(const point3Dtype& min, const point3Dtype& max) {
    return m_TransformList.Append(
        detail::NewObject<CTransform3D>(At("NewTransform"), m_pOpenGL, min, max));
}

CAxes3D* CChart3D::NewAxes() {
    return m_AxesList.Append(detail::NewObject<CAxes3D>(At("NewAxes")));
}

CAxes3D* CChart3D::NewAxes(CTransform3D* t, const point3Dtype& min, const point3Dtype& max) {
    RequireTransform(t, "NewAxes");
    return m_AxesList.Append(detail::NewObject<CAxes3D>(At("NewAxes"), m_pOpenGL, t, min, max));
}

CAxes3D* CChart3D::NewAxes(CTransform3D* t) {
    RequireTransform(t, "NewAxes");
    return NewAxes(t, t->GetScaleMin(), t->GetScaleMax());
}

CAxes3D* CChart3D::NewAxes(const point3Dtype& min, const point3Dtype& max) {
    return NewAxes(m_TransformList.GetCurrent(), min, max);
}

CChartObj3D* CChart3D::NewChartObj() {
    return m_ChartObjList.Append(detail::NewObject<CChartObj3D>(At("NewChartObj")));
}

CChartObj3D* CChart3D::NewChartObj(CTransform3D* t) {
    RequireTransform(t, "NewChartObj");
    return m_ChartObjList.Append(detail::NewObject<CChartObj3D>(At("NewChartObj"), m_pOpenGL, t));
}

CTextObj3D* CChart3D::NewChartTextObj() {
    return m_TextList.Append(detail::NewObject<CTextObj3D>(At("NewChartTextObj")));
}

CTextObj3D* CChart3D::NewChartTextObj(CTransform3D* t, const CString& text) {
    RequireTransform(t, "NewChartTextObj");
    CFont3D* const font = m_pOpenGL != nullptr ? m_pOpenGL->GetFont() : nullptr;
    return m_TextList.Append(
        detail::NewObject<CTextObj3D>(At("NewChartTextObj"), m_pOpenGL, font, t, text));
}

CTextObj3D* CChart3D::NewChartTextObj(const CString& text) {
    return NewChartTextObj(m_TransformList.GetAt(0), text);
}

CAuxObj3D* CChart3D::NewAuxObj() {
    return m_AuxObjList.Append(detail::NewObject<CAuxObj3D>(At("NewAuxObj")));
}

CAuxObj3D* CChart3D::NewAuxObj(CTransform3D* t, int shape) {
    RequireTransform(t, "NewAUXObj");
    return m_AuxObjList.Append(detail::NewObject<CAuxObj3D>(At("NewAuxObj"), m_pOpenGL, t, shape));
}

CAuxObj3D* CChart3D::NewAuxObj(int shape) {
    return NewAuxObj(m_TransformList.GetAt(0), shape);
}

CDIBObj3D* CChart3D::NewDIBObj() {
    return m_DIBObjList.Append(detail::NewObject<CDIBObj3D>(At("NewDIBObj")));
}

CDIBObj3D* CChart3D::NewDIBObj(CTransform3D* t, const CString& file) {
    RequireTransform(t, "NewDIBObj");
    return m_DIBObjList.Append(detail::NewObject<CDIBObj3D>(At("NewDIBObj"), m_pOpenGL, t, file));
}

CDIBObj3D* CChart3D::NewDIBObj(const CString& file) {
    return NewDIBObj(m_TransformList.GetAt(0), file);
}

CTransform3D* CChart3D::MatchTransformID(int id) const {
    for (const auto& transform : m_TransformList)
        if (transform->GetSelfID() == id) return transform.get();
    return nullptr;
}

void CChart3D::SetLightComponent(int code, const RGBDType& c) {
    if (code == kDiffuse) m_DiffuseLight = c;
    if (code == LIGHT_MODEL_AMBIENT) m_AmbientLight = c;
}

RGBDType CChart3D::GetLightComponent(int code) const {
    if (code == kDiffuse) return m_DiffuseLight;
    if (code == LIGHT_MODEL_AMBIENT) return m_AmbientLight;
    return {};
}

void CChart3D::SetTextureColorArray(const RGBDType* colors, double min, double max, int n) {
    if (colors == nullptr || n < 0 || n > kTextureColors) return;
    m_TextureMin = min;
    m_TextureMax = max;
    m_NumTextureColors = n;
    std::copy(colors, colors + n, m_TextureColors);
}

void CChart3D::GetTextureColorArray(RGBDType* colors, double* min, double* max) const {
    if (colors != nullptr)
        std::copy(m_TextureColors,
                  m_TextureColors + std::clamp(m_NumTextureColors, 0, kTextureColors), colors);
    if (min != nullptr) *min = m_TextureMin;
    if (max != nullptr) *max = m_TextureMax;
}

void CChart3D::SetChartPosition(const GLViewRType& p) {
    m_ChartPosition = p;
    if (m_pChartView == nullptr) return;
    int w = 0;
    int h = 0;
    m_pChartView->GetViewSize(&w, &h);
    SetChartViewport({detail::PixelCount(w * p.x), detail::PixelCount(h * p.y),
                      detail::PixelCount(w * p.width), detail::PixelCount(h * p.height)});
}

void CChart3D::SetChartViewport(const GLViewportType& v) {
    m_ChartViewport = v;
    m_ViewportAspect = static_cast<double>(v.height) / static_cast<double>(v.width);
}

void CChart3D::SetFontFactors() {
    if (m_pOpenGL != nullptr) m_pOpenGL->SetFontScaleFactor(m_FontSize);
    int width = 0;
    int height = 0;
    if (m_pChartView != nullptr) m_pChartView->GetViewSize(&width, &height);
    for (const auto& transform : m_TransformList) {
        transform->SetDrawnViewport(m_ChartViewport, height);
        // Units of a transform that keeps its proportions are as wide as high already.
        const double aspect = transform->GetTrueProportions() != 0 ? 1.0 : m_ViewportAspect;
        transform->SetFontAspect(aspect * m_ViewAspect);
        transform->SetFontHeightSF(m_FontHeightSF);
    }
}

}  // namespace varnel
