// COpenGL: the one light.
#include "varnel/render/detail/gl.h"
#include "varnel/render/detail/renderer.h"
#include "varnel/render/opengl.h"

namespace varnel {

void COpenGL::SetLightComponent(int which, const RGBDType& c) {
    const RGBFType color = RGBDtoRGBF(c);
    switch (which) {
        case GL_AMBIENT:
            m_LightAmbient = color;
            break;
        case GL_DIFFUSE:
            m_LightDiffuse = color;
            break;
        case GL_SPECULAR:
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
        case GL_AMBIENT:
            return RGBFtoRGBD(m_LightAmbient);
        case GL_DIFFUSE:
            return RGBFtoRGBD(m_LightDiffuse);
        case GL_SPECULAR:
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
    if (!Ready()) return;
    m_Renderer->Flush();
    switch (which) {
        case GL_AMBIENT:
            glLightfv(GL_LIGHT0, GL_AMBIENT, &m_LightAmbient.r);
            glLightModelfv(GL_LIGHT_MODEL_AMBIENT, &m_LightModelAmbient.r);
            break;
        case GL_DIFFUSE:
            glLightfv(GL_LIGHT0, GL_DIFFUSE, &m_LightDiffuse.r);
            break;
        case GL_SPECULAR:
            glLightfv(GL_LIGHT0, GL_SPECULAR, &m_LightSpecular.r);
            break;
        case GL_POSITION:
            m_Renderer->SendMatrix();
            glLightfv(GL_LIGHT0, GL_POSITION, m_LightPosition);
            break;
        default:
            break;
    }
}

void COpenGL::EnableLight(int cap) {
    if (!Ready()) return;
    m_Renderer->Flush();
    glEnable(static_cast<GLenum>(cap));
}

}  // namespace varnel
