// CChart3D: drawing.
#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/detail/border.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/render/opengl.h"
#include "varnel/solids/aux_object.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr int kColorAndDepth = 16640;
constexpr int kAmbient = 4608;
constexpr int kDiffuse = 4609;
constexpr int kPosition = 4611;

}  // namespace

void CChart3D::DrawChart() {
    if (m_ChartEnable == 0 || m_pOpenGL == nullptr) return;
    SetChartPosition(m_ChartPosition);
    SetupOpenGL();
    SetFontFactors();
    // Texts and bitmap planes are placed by the working limits, which follow from the transforms.
    for (const auto& transform : m_TransformList)
        transform->ChartTransform();
    DrawHeader();
    DrawAxes();
    DrawChartObjs();
    DrawAuxObjects();
    DrawDIBObjects();
    DrawChartText();
}

void CChart3D::SetupOpenGL() {
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->SetViewport(m_ChartViewport);
    m_pOpenGL->SetClearColor(m_ChartBkColor.r, m_ChartBkColor.g, m_ChartBkColor.b, 0.0);
    m_pOpenGL->Clear(kColorAndDepth);
    if (m_BorderEnable != 0) DrawBorder();
    m_pOpenGL->SetLightPosition(m_LightPosition);
    m_pOpenGL->LoadLight(kPosition);
    m_pOpenGL->SetLightComponent(LIGHT_MODEL_AMBIENT, m_AmbientLight);
    m_pOpenGL->SetLightComponent(kDiffuse, m_DiffuseLight);
    // Charts of one view share the light: without loading it, each would have the last one's.
    m_pOpenGL->LoadLight(kAmbient);
    m_pOpenGL->LoadLight(kDiffuse);
    if (m_TextureMode >= 0) {
        m_pOpenGL->SetTextureMode(m_TextureMode);
        m_pOpenGL->SetTextureColorArray(m_TextureColors, m_TextureMin, m_TextureMax,
                                        m_NumTextureColors);
    }
}

void CChart3D::DrawBorder() {
    detail::DrawViewportBorder(*m_pOpenGL, m_ChartViewport.width, m_ChartViewport.height,
                               m_BorderThickness, m_BorderColor);
}

void CChart3D::DrawHeader() {
    m_pHeader->SetViewAspect(m_ViewportAspect * m_ViewAspect);
    m_pHeader->SetRelSize(m_FontHeightSF);
    m_pHeader->DrawHeader();
}

void CChart3D::DrawAxes() {
    for (const auto& axes : m_AxesList)
        axes->DrawAxes();
}

void CChart3D::DrawChartObjs() {
    for (const auto& object : m_ChartObjList)
        object->DrawChartObj();
}

void CChart3D::DrawAuxObjects() {
    for (const auto& object : m_AuxObjList)
        object->DrawAuxObj();
}

void CChart3D::DrawDIBObjects() {
    for (const auto& object : m_DIBObjList)
        object->DrawDIBObj();
}

void CChart3D::DrawChartText() {
    for (const auto& text : m_TextList)
        text->OutText();
}

}  // namespace varnel
