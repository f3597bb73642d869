#include "varnel/render/detail/renderer.h"

#include <algorithm>
#include <cstring>

#include "varnel/render/detail/gl.h"

namespace varnel::detail {
namespace {

/// Keeps values on a texel's side of its border.
constexpr double kTexelNudge = 0.004;

double TextureSource(const point3Dtype& p, int mode) {
    switch (mode) {
        case 0:
            return p.x;
        case 1:
            return p.y;
        case 3:
            return p.w;
        default:
            return p.z;
    }
}

Vec3 AsVector(const point3Dtype& p) {
    return {p.x, p.y, p.z};
}

}  // namespace

Vec3 PolygonNormal(const point3Dtype* pts, int n) {
    point3Dtype normal;
    CalcNormal(pts[0], pts[1], pts[2], normal);
    if (normal.x != 0.0 || normal.y != 0.0 || normal.z != 0.0) return AsVector(normal);
    Vec3 sum{0.0, 0.0, 0.0};
    const Vec3 origin = AsVector(pts[0]);
    for (int i = 1; i + 1 < n; ++i) {
        const Vec3 part = Cross(AsVector(pts[i]) - origin, AsVector(pts[i + 1]) - origin);
        sum = {sum.x + part.x, sum.y + part.y, sum.z + part.z};
    }
    return sum;
}

bool Renderer::ToDevice(const point3Dtype* pts, int n) {
    corners.resize(static_cast<std::size_t>(n));
    double sum = 0.0;
    for (Vec3& corner : corners) {
        corner = matrix.ToDevice(*pts++);
        sum += (corner.x + corner.y + corner.z) * 0.0;
    }
    return sum == 0.0;  // not so when any coordinate is infinite or not a number
}

void Renderer::AddFill(const SurfaceStyle& style, const point3Dtype* pts, int n,
                       const Vec3& normal) {
    if (!batch.Accepts(style.state)) Flush();
    const double* texture = nullptr;
    if (style.state.textured) {
        textures.clear();
        for (int i = 0; i < n; ++i)
            textures.push_back((TextureSource(pts[i], style.textureMode) - style.textureOffset) *
                                   style.textureScale +
                               kTexelNudge);
        texture = textures.data();
    }
    batch.AddPolygon(style.state, corners.data(), texture, n, matrix.NormalToDevice(normal),
                     style.color);
}

void Renderer::Flush() {
    if (batch.IsEmpty()) return;
    if (MakeCurrent()) {
        SendIdentity();
        DrawFills();
        DrawLines();
    }
    batch.Clear();
}

void Renderer::DrawFills() {
    if (batch.Indices().empty()) return;
    const FillState& state = batch.State();
    Lighting(state.lit);
    Texture(state.textured);
    Offset(state.framed && frameOffset);
    const FillVertex* vertices = batch.Vertices().data();
    constexpr auto stride = static_cast<GLsizei>(sizeof(FillVertex));
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, vertices->position);
    glNormalPointer(GL_FLOAT, stride, vertices->normal);
    glColorPointer(3, GL_FLOAT, stride, vertices->color);
    if (state.textured) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(1, GL_FLOAT, stride, &vertices->texture);
    }
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(batch.Indices().size()), GL_UNSIGNED_INT,
                   batch.Indices().data());
    if (state.textured) glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    Offset(false);
}

void Renderer::DrawLines() {
    constexpr auto stride = static_cast<GLsizei>(sizeof(LineVertex));
    bool started = false;
    for (const LineRun& run : batch.Lines()) {
        if (run.indices.empty()) continue;
        if (!started) {
            Lighting(false);
            Texture(false);
            glEnableClientState(GL_VERTEX_ARRAY);
            glEnableClientState(GL_COLOR_ARRAY);
            started = true;
        }
        LineWidth(run.width);
        glVertexPointer(3, GL_FLOAT, stride, run.vertices.front().position);
        glColorPointer(3, GL_FLOAT, stride, run.vertices.front().color);
        glDrawElements(GL_LINES, static_cast<GLsizei>(run.indices.size()), GL_UNSIGNED_INT,
                       run.indices.data());
    }
    if (!started) return;
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

void Renderer::DrawStippled(const std::vector<LineVertex>& vertices, float width, int factor,
                            unsigned short pattern) {
    if (vertices.size() < 2 || !MakeCurrent()) return;
    Flush();
    SendIdentity();
    Lighting(false);
    Texture(false);
    LineWidth(width);
    constexpr auto stride = static_cast<GLsizei>(sizeof(LineVertex));
    const double repeat = factor * context->PixelScale() * lineScale;
    glLineStipple(static_cast<GLint>(std::max(repeat + 0.5, 1.0)), pattern);
    glEnable(GL_LINE_STIPPLE);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, vertices.front().position);
    glColorPointer(3, GL_FLOAT, stride, vertices.front().color);
    glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(vertices.size()));
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisable(GL_LINE_STIPPLE);
}

void Renderer::SendMatrix() {
    if (matrixSent) return;
    glLoadMatrixd(matrix.Top().m.data());
    matrixSent = true;
}

void Renderer::SendIdentity() {
    glLoadIdentity();
    matrixSent = false;
}

void Renderer::LineWidth(float width) {
    const float sent = width * static_cast<float>(context->PixelScale() * lineScale);
    if (sent == m_SentWidth) return;
    glLineWidth(sent);
    m_SentWidth = sent;
}

void Renderer::SendLighting(bool on) {
    for (GLenum cap : {GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
        on ? glEnable(cap) : glDisable(cap);
}

void Renderer::SendTexture(bool on) {
    on ? glEnable(GL_TEXTURE_1D) : glDisable(GL_TEXTURE_1D);
    SendSampleShading(on);
}

/// With antialiasing, the texture is looked up at each sample: at the centre of a pixel that a
/// polygon touches only with its border, the coordinate would lie outside the polygon's, and the
/// highest values would wrap around to the first colours there.
void Renderer::SendSampleShading(bool on) {
    if (!m_HasSampleShading.has_value()) {
        const auto* const extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
        m_HasSampleShading =
            extensions != nullptr && std::strstr(extensions, "GL_ARB_sample_shading") != nullptr;
    }
    if (!*m_HasSampleShading) return;
    glMinSampleShading(1.0F);
    on ? glEnable(GL_SAMPLE_SHADING) : glDisable(GL_SAMPLE_SHADING);
}

void Renderer::SendOffset(bool on) {
    on ? glEnable(GL_POLYGON_OFFSET_FILL) : glDisable(GL_POLYGON_OFFSET_FILL);
}

}  // namespace varnel::detail
