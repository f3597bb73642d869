#include "varnel/render/detail/layer_overlay.h"

#include "varnel/render/detail/gl.h"

namespace varnel::detail {
namespace {

/// Each pixel takes its own texel.
constexpr const char* kShader = R"(#version 130
#extension GL_ARB_shader_bit_encoding : require
uniform usampler2D layer;
uniform ivec2 origin;
void main() {
    uvec2 pixel = texelFetch(layer, ivec2(gl_FragCoord.xy) - origin, 0).xy;
    if (pixel.x == 0xFFFFFFFFu) discard;
    gl_FragDepth = uintBitsToFloat(pixel.x);
    gl_FragColor =
        vec4(pixel.y & 255u, (pixel.y >> 8) & 255u, (pixel.y >> 16) & 255u, 255u) / 255.0;
}
)";

}  // namespace

void LayerOverlay::Delete() {
    if (m_Program != 0) glDeleteProgram(m_Program);
    if (m_Texture != 0) glDeleteTextures(1, &m_Texture);
    *this = {};
}

bool LayerOverlay::IsReady() {
    if (m_State == State::kNew) m_State = Compile() ? State::kReady : State::kFailed;
    return m_State == State::kReady;
}

bool LayerOverlay::Compile() {
    const GLuint shader = glCreateShader(GL_FRAGMENT_SHADER);
    glShaderSource(shader, 1, &kShader, nullptr);
    glCompileShader(shader);
    m_Program = glCreateProgram();
    glAttachShader(m_Program, shader);
    glLinkProgram(m_Program);
    glDeleteShader(shader);
    GLint linked = GL_FALSE;
    glGetProgramiv(m_Program, GL_LINK_STATUS, &linked);
    m_Origin = glGetUniformLocation(m_Program, "origin");
    glGenTextures(1, &m_Texture);
    glBindTexture(GL_TEXTURE_2D, m_Texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
    return linked == GL_TRUE;
}

void LayerOverlay::Draw(const LineLayer& layer) {
    const GLViewportType& viewport = layer.Viewport();
    const GLViewportType part = layer.Touched();
    glBindTexture(GL_TEXTURE_2D, m_Texture);
    if (m_Width != viewport.width || m_Height != viewport.height) {
        m_Width = viewport.width;
        m_Height = viewport.height;
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RG32UI, m_Width, m_Height, 0, GL_RG_INTEGER,
                     GL_UNSIGNED_INT, nullptr);
    }
    const int x = part.x - viewport.x;
    const int y = part.y - viewport.y;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, viewport.width);
    glTexSubImage2D(GL_TEXTURE_2D, 0, x, y, part.width, part.height, GL_RG_INTEGER, GL_UNSIGNED_INT,
                    layer.At(part.x, part.y));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glUseProgram(m_Program);
    glUniform2i(m_Origin, viewport.x, viewport.y);
    glRectd(2.0 * x / m_Width - 1.0, 2.0 * y / m_Height - 1.0,
            2.0 * (x + part.width) / m_Width - 1.0, 2.0 * (y + part.height) / m_Height - 1.0);
    glUseProgram(0);
    glBindTexture(GL_TEXTURE_2D, 0);
}

}  // namespace varnel::detail
