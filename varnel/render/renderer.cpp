#include "varnel/render/detail/renderer.h"

#include <utility>

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
    batch.AddPolygon({style.state, style.color, matrix.NormalToDevice(normal), element},
                     corners.data(), texture, n);
}

void Renderer::Start(std::unique_ptr<GLContext> context, const GLViewportType& viewport) {
    gl.Start(std::move(context));
    SceneState fresh;
    fresh.viewport = viewport;
    fresh.frameOffset = scene.frameOffset;
    scene = fresh;
    matrix = MatrixStack();
    batch.Clear();
    line = OpenLine();
    lineWidth = 1.0F;
}

void Renderer::Flush() {
    if (batch.IsEmpty()) return;
    sink->DrawBatch(scene, batch);
    batch.Clear();
}

void Renderer::DrawStippled(const OpenLine& strip, int repeat, unsigned short pattern) {
    if (strip.vertices.size() < 2) return;
    Flush();
    sink->DrawStrip(scene, {strip.vertices, strip.width, repeat, pattern, element});
}

}  // namespace varnel::detail
