// The scene as data: what COpenGL collects, and the consumer it is handed to.
//
// One consumer at a time gets everything that is drawn, in the order of drawing: GLSink, which
// draws it into the image, or another one, which writes a file or finds what lies under a pixel.
// All places are normalized device coordinates of the viewport: x right, y up, z away from the
// viewer, -1..1 each; what lies outside of -1..1 in x and y is not seen (z may be anything). Widths
// are in pixels of the image.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string_view>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/viewports.h"
#include "varnel/render/detail/matrix_stack.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel {
class CFont3D;
}

namespace varnel::detail {

/// The one light, as OpenGL has it.
struct SceneLight {
    RGBFType sceneAmbient{0.2F, 0.2F, 0.2F, 1.0F};
    RGBFType ambient{0.0F, 0.0F, 0.0F, 1.0F};
    RGBFType diffuse{1.0F, 1.0F, 1.0F, 1.0F};
    Vec3 direction{0.0, 0.0, 1.0};  ///< towards the light, in device coordinates, length 1
    double gloss = 0.0;             ///< brightness of the white highlight
    double shininess = 1.0;         ///< the larger, the smaller is the highlight
    bool limited = false;           ///< by how a surface lies to the viewer; see Share
};

/// What holds for all primitives until it changes.
struct SceneState {
    GLViewportType viewport{};  ///< pixels of the image, from its lower left corner
    RGBDType background;        ///< the colour of Clear
    SceneLight light;
    bool clipping = false;
    /// (a, b, c, d): what has a x + b y + c z + d < 0 is cut off. Count only while clipping is on.
    std::array<std::array<double, 4>, 6> clipPlanes{};
    /// Colours by value, `textureSize` entries (0: none yet); see TextureIndex.
    std::array<RGBBType, 256> texture{};
    int textureSize = 0;
    bool transparent = false;  ///< whether colours with an alpha below 1 can be seen through
    bool lineAreas = false;    ///< whether lines become areas where a pixel has several samples
    bool frameOffset = true;   ///< whether fills that get a frame lie behind their lines
};

/// How a surface lies to the light: cosines, which change their sign with the side.
struct Turned {
    double toLight = 0.0;
    double toHighlight = 0.0;  ///< of the direction of its brightest highlight; 0 without gloss
    double aside = 0.0;        ///< of limited light alone, and the same from both sides
};

/// By a normal of length 1 (or 0: no light but the ambient one).
Turned TurnedBy(const SceneLight& light, const Vec3& normal);

/// How bright the highlight is.
double Highlight(const SceneLight& light, double toHighlight);

/// Of the diffuse light, 0..1. Limited light has all of it on what faces the viewer, and less the
/// more something is turned aside, slowly towards the light and quickly away from it: nothing is
/// brighter than its own colour, and slopes are seen on both sides.
inline double Share(const SceneLight& light, const Turned& turned) {
    if (!light.limited) return std::max(0.0, turned.toLight);
    return std::clamp(1.0 - turned.aside + turned.toLight, 0.0, 1.0);
}

/// The colour of a surface, each component within 0..1.
inline RGBDType LitColor(const SceneLight& light, const Turned& turned, const RGBDType& color) {
    // OpenGL's sum for one directional light: the material's ambient and diffuse
    // colour is the current one, and a face that looks away from the light gets the ambient alone.
    const double facing = Share(light, turned);
    const bool glossy = light.gloss > 0.0 && facing > 0.0;
    const double highlight = glossy ? Highlight(light, turned.toHighlight) : 0.0;
    const auto component = [=](double material, float scene, float ambient, float diffuse) {
        const double least = static_cast<double>(scene) + static_cast<double>(ambient);
        const double more = light.limited
                                ? std::min(static_cast<double>(diffuse), std::max(0.0, 1.0 - least))
                                : static_cast<double>(diffuse);
        return std::clamp(material * (least + facing * more) + highlight, 0.0, 1.0);
    };
    return {component(color.r, light.sceneAmbient.r, light.ambient.r, light.diffuse.r),
            component(color.g, light.sceneAmbient.g, light.ambient.g, light.diffuse.g),
            component(color.b, light.sceneAmbient.b, light.ambient.b, light.diffuse.b), color.a};
}

/// How much of the light a surface gets, as a part of what one gets that faces the viewer: 0..1.
double Facing(const SceneLight& light, const Turned& turned);

/// The entry of the colour table for a texture coordinate: the nearest one, repeated beyond 0..1.
inline int TextureIndex(const SceneState& state, double coordinate) {
    const double place = (coordinate - std::floor(coordinate)) * state.textureSize;
    return place < state.textureSize ? static_cast<int>(place) : state.textureSize - 1;
}
/// What OpenGL makes of a (lit) colour and the texture's: the texture's, as far as it is opaque; of
/// shaded fills the product of both.
RGBDType TexturedColor(const SceneState& state, double coordinate, const RGBDType& color,
                       bool shaded);

/// A polyline whose dashes run on from vertex to vertex.
struct LineStrip {
    std::span<const LineVertex> vertices;
    float width;             ///< pixels
    int repeat;              ///< pixels for each bit of the pattern, 1..256
    unsigned short pattern;  ///< 16 bits, the lowest first; a bit that is set is drawn
    Element element;
};

/// A text on one line.
struct TextRun {
    std::string_view text;  ///< valid UTF-8
    const CFont3D& font;
    Matrix4 placement;  ///< from ems, the first letter's origin at 0, to device coordinates
    RGBDType color;
    Element element;
    double halo = 0.0;  ///< how far a colour surrounds the letters, in ems
    RGBDType haloColor{};
};

/// A picture on a quadrilateral, repeated over it.
struct ImageQuad {
    const BYTE* pixels;  ///< red, green, blue, alpha; the lowest row first
    int width;
    int height;
    std::array<Vec3, 4> corners;  ///< lower left, upper left, upper right, lower right
    int repeatX;
    int repeatY;
    Vec3 normal;  ///< length 1
    Element element;
};

/// A corner of a triangle, or an end of a line, with the colour that is seen there.
struct ShadedVertex {
    Vec3 place;
    RGBDType color;
};

/// A shape that OpenGL makes itself: three vertices a triangle, two a line.
struct ShadedShape {
    std::vector<ShadedVertex> triangles;
    std::vector<ShadedVertex> lines;
    float width = 1.0F;  ///< of the lines, in pixels
    Element element;
};

/// A consumer of the scene.
class SceneSink {
 public:
    SceneSink() = default;
    SceneSink(const SceneSink&) = delete;
    SceneSink& operator=(const SceneSink&) = delete;
    virtual ~SceneSink() = default;

    /// Whether batches are to carry the records of polygons and the elements of segments.
    virtual bool WantsRecords() const { return true; }

    /// What comes until EndObject is one object: a chart object, axes, a legend. Objects do not
    /// hold each other; not all that is drawn belongs to one.
    virtual void BeginObject() {}
    virtual void EndObject() {}

    /// The viewport becomes the background colour, or nothing stands in front any more, or both.
    virtual void Clear(const SceneState& state, bool color, bool depth) = 0;
    /// Fills, and then the lines on them.
    virtual void DrawBatch(const SceneState& state, const PrimitiveBatch& batch) = 0;
    virtual void DrawStrip(const SceneState& state, const LineStrip& strip) = 0;
    virtual void DrawText(const SceneState& state, const TextRun& run) = 0;
    virtual void DrawImage(const SceneState& state, const ImageQuad& image) = 0;
    /// Never called for the sink that draws with OpenGL, which has drawn such a shape already.
    virtual void DrawShape(const SceneState& /*state*/, const ShadedShape& /*shape*/) {}
};

}  // namespace varnel::detail
