// The part of COpenGL that talks to OpenGL: the context, the matrix, what is collected, and the
// state that OpenGL has, so that no call is made to set what is set.
#pragma once

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "varnel/foundation/viewports.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/render/detail/matrix_stack.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

/// A polyline between its Start and its End. Solid ones join the batch; stippled ones, whose
/// pattern runs on from vertex to vertex, are drawn as one strip.
struct OpenLine {
    bool open = false;
    bool stippled = false;
    float width = 1.0F;
    std::vector<LineVertex> vertices;
};

/// How the polygons of one primitive look.
struct SurfaceStyle {
    FillState state;
    RGBDType color;
    int textureMode = 0;  ///< which coordinate is looked up: 0 x, 1 y, 3 w, others z
    double textureOffset = 0.0;
    double textureScale = 1.0;
};

class Renderer {
 public:
    std::unique_ptr<GLContext> context;
    MatrixStack matrix;
    PrimitiveBatch batch;
    OpenLine line;
    std::vector<Vec3> corners;     ///< of the polygon at hand, in device coordinates
    std::vector<double> textures;  ///< and its texture coordinates
    int collecting = 0;            ///< nesting of collections
    bool frameOffset = true;
    bool clipping = false;
    bool matrixSent = false;  ///< whether OpenGL has the top of `matrix`
    float lineWidth = 1.0F;   ///< the last width above 0, in image pixels
    double lineScale = 1.0;   ///< factor on all widths and stipple patterns
    /// The part of the image, from its lower left corner, that may differ from its memory.
    int drawnWidth = std::numeric_limits<int>::max();
    int drawnHeight = std::numeric_limits<int>::max();

    /// Makes the context current; false when there is none.
    bool MakeCurrent() { return context != nullptr && context->MakeCurrent(); }

    /// Takes n points to `corners`; false when one of them cannot be placed.
    bool ToDevice(const point3Dtype* pts, int n);
    /// Adds the polygon whose n places stand in `corners`.
    void AddFill(const SurfaceStyle& style, const point3Dtype* pts, int n, const Vec3& normal);

    /// Draws and forgets what was collected.
    void Flush();
    /// What the viewport covers may differ from the image's memory from now on.
    void Extend(const GLViewportType& viewport) {
        const auto end = [](int before, long long start, int extent) {
            constexpr long long kMost = std::numeric_limits<int>::max();
            return std::max(before, static_cast<int>(std::clamp(start + extent, 0LL, kMost)));
        };
        drawnWidth = end(drawnWidth, viewport.x, viewport.width);
        drawnHeight = end(drawnHeight, viewport.y, viewport.height);
    }
    /// The whole image differs from its memory.
    void AllIsNew() { drawnWidth = drawnHeight = std::numeric_limits<int>::max(); }
    /// Draws a strip with a stipple pattern.
    void DrawStippled(const std::vector<LineVertex>& vertices, float width, int factor,
                      unsigned short pattern);

    void SendMatrix();
    void SendIdentity();

    // State, set only where it differs.
    void Lighting(bool on) { Switch(m_Lighting, on, &Renderer::SendLighting); }
    void Texture(bool on) { Switch(m_Texture, on, &Renderer::SendTexture); }
    void Offset(bool on) { Switch(m_Offset, on, &Renderer::SendOffset); }
    /// In image pixels.
    void LineWidth(float width);

 private:
    void DrawFills();
    void DrawLines();
    void SendLighting(bool on);
    void SendTexture(bool on);
    void SendSampleShading(bool on);
    void SendOffset(bool on);
    void Switch(bool& state, bool on, void (Renderer::*send)(bool)) {
        if (state == on) return;
        (this->*send)(on);
        state = on;
    }

    bool m_Lighting = false;
    bool m_Texture = false;
    bool m_Offset = false;
    float m_SentWidth = 1.0F;
    std::optional<bool> m_HasSampleShading;  ///< once it was asked for
};

/// The normal of a polygon's first three points; of its whole outline when they lie on one line.
/// Its length is not 1.
Vec3 PolygonNormal(const point3Dtype* pts, int n);

}  // namespace varnel::detail
