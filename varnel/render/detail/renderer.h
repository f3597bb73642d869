// The part of COpenGL that collects: the matrix, the primitives in device coordinates and the sink
// that they go to.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "varnel/render/detail/gl_sink.h"
#include "varnel/render/detail/marker_shape.h"
#include "varnel/render/detail/scene.h"
#include "varnel/render/detail/stroke.h"
#include "varnel/render/detail/text_batch.h"
#include "varnel/render/detail/transparent.h"

namespace varnel::detail {

/// A polyline between its Start and its End. Solid ones join the batch; stippled ones, whose
/// pattern runs on from vertex to vertex, are drawn as one strip.
struct OpenLine {
    bool open = false;
    bool stippled = false;
    bool seeThrough = false;  ///< of a colour that can be
    float width = 1.0F;
    std::vector<LineVertex> vertices;
};

/// How the polygons of one primitive look.
struct SurfaceStyle {
    FillState state;
    bool lit = false;
    RGBDType color;
    int textureMode = 0;  ///< which coordinate is looked up: 0 x, 1 y, 3 w, others z
    double textureOffset = 0.0;
    double textureScale = 1.0;
    bool twoSided = false;  ///< lit with the normal that turns to the viewer
    /// Factors on a texture's colours that are shaded: of faces in the dark and in the light.
    double shadeLow = 0.75;
    double shadeHigh = 1.0;
    bool greyNoData = false;  ///< a polygon that lacks a value has kNoDataColor
};

/// A marker as it is drawn: both shapes in pixels, the outline's under the fill's.
struct MarkerLook {
    MarkerShape fill;
    MarkerShape outline;
    double size = 0.0;  ///< pixels
};

class Renderer {
 public:
    GLSink gl;
    SceneSink* sink = &gl;  ///< who gets what is drawn; not owned
    SceneState scene;
    MatrixStack matrix;
    PrimitiveBatch batch;
    TransparentBatch transparent;  ///< what waits for DrawTransparent
    std::vector<ImageQuad> transparentImages;
    OpenLine line;
    std::vector<Vec3> corners;     ///< of the polygon at hand, in device coordinates
    std::vector<double> textures;  ///< and its texture coordinates
    int collecting = 0;            ///< nesting of collections
    int matrixScopes = 0;          ///< in which OpenGL is not told of the matrix
    float lineWidth = 1.0F;        ///< the last width above 0, in image pixels
    Element element;               ///< what is being drawn
    MarkerLook marker;             ///< what AddMarker draws
    Coverage coverage;
    /// Keeps the host's context while something is collected.
    std::optional<GLContext::HostContextGuard> host;

    /// Begins with a new, current context: nothing of what the one before was told holds.
    void Start(std::unique_ptr<GLContext> context, const GLViewportType& viewport);

    /// Takes n points to `corners`; false when one of them cannot be placed.
    bool ToDevice(const point3Dtype* pts, int n);
    /// Adds the polygon whose n places stand in `corners`, if it can be seen. Its normal is that of
    /// its first three points, of its whole outline when they lie on one line.
    void AddFill(const SurfaceStyle& style, const point3Dtype* pts, int n);
    /// The same without asking whether it can be seen; where it is told how its corners lie to the
    /// light (NaN: as the polygon does), the light runs evenly between them, and the points are
    /// read only for a texture, of what is lit on both sides, and for corners of NaN.
    void AddSeenFill(const SurfaceStyle& style, const point3Dtype* pts, int n,
                     const Turned* turned = nullptr);
    /// Adds the segments of a polyline in one colour whose n places stand in `corners`.
    void AddOutline(int n, bool closed, const RGBDType& color);
    /// Adds the segments of a polyline whose vertices have their colours; see LineRun::cutJoins.
    void AddPolyline(float width, const std::vector<LineVertex>& vertices, bool cutJoins = false);
    /// Whether segments of a width that leave no diamond can be left out.
    bool LeavesOutSegments(float width) const {
        return coverage.IsOn() && coverage.HasDiamonds() && gl.IsThin(width);
    }
    /// What the viewport can show; to be called when it, or the framebuffer, has changed.
    void UpdateCoverage();
    /// Whether primitives that cannot be seen are left out.
    void SetCulling(bool on);
    bool IsCulling() const { return m_Culling; }

    bool IsSeeThrough(const RGBDType& color) const { return scene.transparent && color.a < 1.0; }
    /// Whether what has this colour is kept until DrawTransparent.
    bool IsKept(const RGBDType& color) const { return IsSeeThrough(color) && sink == &gl; }
    /// Keeps a segment that can be seen through.
    void KeepSegment(const Vec3& a, const Vec3& b, const RGBDType& color);
    /// Draws and forgets what can be seen through, from the back to the front.
    void DrawTransparent();
    /// Forgets it.
    void DropTransparent();

    /// The part of a line of text that is drawn: 10,000 bytes, and 400,000 of a picture. Each is
    /// hundreds of corners.
    std::string_view TakeText(std::string_view text);
    /// What is drawn next is another picture.
    void StartTexts() { m_TextBytes = 0; }

    /// Hands over and forgets what was collected; all of it is drawn then.
    void Flush();
    /// The same where more of the same kind follows: lines may wait for theirs.
    void HandOver();
    /// Hands over a strip with a stipple pattern.
    void DrawStippled(const OpenLine& strip, int repeat, unsigned short pattern);
    /// Whether lines can become areas: the image wants them so, others get them as lines.
    bool DrawsImage() const { return sink == &gl; }
    /// Adds a line as the areas that it covers, or keeps them; `bit` is the length of each bit of
    /// the pattern in image pixels, `mitre` the limit of mitred joins, 0 for round ones.
    void AddStroke(const OpenLine& strip, double bit, unsigned short pattern, double mitre);
    /// Keeps the segments of a line that can be seen through.
    void KeepSegments(const OpenLine& strip);
    /// Adds the points of mitred joins, for sinks that join lines by themselves.
    void AddMitres(const OpenLine& strip, double mitre);
    // What can be seen through as areas: kept, or handed to a sink that writes a file.

    /// The letters of a text.
    void KeepText(const TextRun& run);
    /// A shape's triangles and lines.
    void KeepShape(const ShadedShape& shape);
    /// Adds a marker with its middle at a point, in front of what is within its radius.
    void AddMarker(const point3Dtype& p, const RGBDType& fill, const RGBDType& outline);

 private:
    RGBDType Lit(const SurfaceStyle& style, const Turned& turned, bool otherSide) const;
    void LightCorners(const SurfaceStyle& style, const point3Dtype* pts, const Turned* turned,
                      int n);
    void KeepFill(const SurfaceStyle& style, const double* texture, int n);
    bool FlattenStroke();
    void KeepCorners(int n, double nearer, bool once = false);
    Stroker StrokerFor(const OpenLine& strip, const StrokeStyle& style);
    FillVertex ToFill(const StrokePoint& p) const;
    void AddShape(const MarkerShape& shape, const Vec3& middle, const RGBDType& color);

    bool m_Culling = true;
    std::size_t m_TextBytes = 0;  ///< drawn in this picture
    std::vector<StrokePoint> m_Stroke;
    TextBatch m_Letters;
    std::vector<WindowPoint> m_Window;
    std::vector<PackedColor> m_Colors;  ///< of the corners of the polygon at hand
};

}  // namespace varnel::detail
