// COpenGL: the one light.
#include <algorithm>

#include "varnel/render/detail/gl.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/opengl.h"

namespace varnel {

void COpenGL::SetLightComponent(int which, const RGBDType& c) {
    const RGBFType color = RGBDtoRGBF(c);
    switch (which) {
        case LIGHT_AMBIENT:
            m_LightAmbient = color;
            break;
        case LIGHT_DIFFUSE:
            m_LightDiffuse = color;
            break;
        case LIGHT_SPECULAR:
            m_LightSpecular = color;
            break;
        case LIGHT_MODEL_AMBIENT:
            m_LightModelAmbient = color;
            break;
        default:
            break;
    }
}

RGBDType COpenGL::GetLightComponent(int which) const {
    switch (which) {
        case LIGHT_AMBIENT:
            return RGBFtoRGBD(m_LightAmbient);
        case LIGHT_DIFFUSE:
            return RGBFtoRGBD(m_LightDiffuse);
        case LIGHT_SPECULAR:
            return RGBFtoRGBD(m_LightSpecular);
        case LIGHT_MODEL_AMBIENT:
            return RGBFtoRGBD(m_LightModelAmbient);
        default:
            return {};
    }
}

void COpenGL::SetLightPosition(const point3Dtype& p) {
    // Directional (w = 0). The chart's z is up and its y goes towards the viewer; OpenGL's y is up
    // and its z goes away from the viewer.
    m_LightPosition[0] = static_cast<float>(p.x);
    m_LightPosition[1] = static_cast<float>(p.z);
    m_LightPosition[2] = static_cast<float>(-p.y);
    m_LightPosition[3] = 0.0F;
}

void COpenGL::LoadLight(int which) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    detail::SceneLight& light = m_Renderer->scene.light;
    switch (which) {
        case LIGHT_AMBIENT:
            light.ambient = m_LightAmbient;
            light.sceneAmbient = m_LightModelAmbient;
            glLightfv(GL_LIGHT0, GL_AMBIENT, &m_LightAmbient.r);
            glLightModelfv(GL_LIGHT_MODEL_AMBIENT, &m_LightModelAmbient.r);
            break;
        case LIGHT_DIFFUSE:
            light.diffuse = m_LightDiffuse;
            glLightfv(GL_LIGHT0, GL_DIFFUSE, &m_LightDiffuse.r);
            break;
        case LIGHT_SPECULAR:
            glLightfv(GL_LIGHT0, GL_SPECULAR, &m_LightSpecular.r);
            break;
        case LIGHT_POSITION:
            light.direction = detail::Normalized(m_Renderer->matrix.DirectionToDevice(
                {static_cast<double>(m_LightPosition[0]), static_cast<double>(m_LightPosition[1]),
                 static_cast<double>(m_LightPosition[2])}));
            m_Renderer->gl.SendMatrix(m_Renderer->matrix.Top());
            glLightfv(GL_LIGHT0, GL_POSITION, m_LightPosition);
            break;
        default:
            break;
    }
}

void COpenGL::SetGloss(double brightness, double shininess) {
    m_Renderer->scene.light.gloss = std::max(brightness, 0.0);
    m_Renderer->scene.light.shininess = std::max(shininess, 1.0);
}

void COpenGL::SetLightLimit(int on) {
    m_Renderer->scene.light.limited = on != 0;
}

void COpenGL::EnableLight(int cap) {
    const GLContext::HostContextGuard host;
    if (!Ready()) return;
    m_Renderer->Flush();
    glEnable(static_cast<GLenum>(cap));
}

}  // namespace varnel
