// The sink that makes a page of what is drawn: polygons, lines, texts and pictures with their
// places in pixels, and from them, once all is there, what shows.
//
// Each clearing of the depth starts a layer that stands before everything drawn until then, as a
// chart's rectangle stands before the view's title.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "varnel/render/detail/scene.h"
#include "varnel/vector/detail/hiding.h"
#include "varnel/vector/detail/object_picture.h"
#include "varnel/vector/detail/smooth_pieces.h"
#include "varnel/vector/detail/veil_order.h"

namespace varnel::detail {

struct PageOptions {
    /// An object of so many polygons or more becomes a picture; 0: none does.
    int pictureLimit = 50'000;
    double dotsPerPixel = 300.0 / 96.0;  ///< of such a picture
    bool textAsPaths = false;            ///< areas instead of letters of a font
};

class PageSink final : public SceneSink {
 public:
    /// For an image of this size in pixels.
    PageSink(double width, double height, const PageOptions& options)
        : m_Width(width), m_Height(height), m_Options(options) {}

    void BeginObject() override;
    void EndObject() override { m_Object = 0; }
    void Clear(const SceneState& state, bool color, bool depth) override;
    void DrawBatch(const SceneState& state, const PrimitiveBatch& batch) override;
    void DrawStrip(const SceneState& state, const LineStrip& strip) override;
    void DrawText(const SceneState& state, const TextRun& run) override;
    void DrawImage(const SceneState& state, const ImageQuad& image) override;
    void DrawShape(const SceneState& state, const ShadedShape& shape) override;

    /// How many polygons each of the objects has that become pictures.
    std::vector<std::size_t> LargeObjects() const;

    /// Puts what shows onto a canvas: areas, pictures, lines, texts.
    void Compose(PageCanvas& canvas) const;

 private:
    using Polygon = std::vector<Vec3>;

    /// Depth between layers; depths within one are a few units at most.
    static constexpr double kLayerDepth = 64.0;

    struct Fill {
        std::uint32_t first, count;  ///< in m_Places
        RGBDType color;
        int smooth = -1;  ///< in m_Smooth, for one whose corners differ in colour
        std::uint32_t object = 0;
        bool beneathLines = false;  ///< that lie in it
    };
    struct Band {
        double from, to;  ///< entries of the table of colours by value
    };
    struct Segment {
        Vec3 a, b;
        RGBDType color;
        float width;
        bool cutJoins;
        std::uint32_t object;
        std::size_t after;  ///< the first polygon in m_Fills that is drawn after it
    };
    struct Strip {
        std::vector<Vec3> places;
        RGBDType color;
        float width;
        int repeat;
        unsigned short pattern;
        std::size_t after;  ///< as that of a segment
    };
    struct Text {
        PageText text;
        std::array<Vec3, 4> outline;
        std::shared_ptr<GlyphFace> face;
        double width = 0.0;  ///< ems
        bool underlined = false;
    };
    struct Picture {
        PagePicture picture;
        std::size_t fill = 0;  ///< the polygon that it covers, in m_Fills or in m_Veils
        bool veil = false;     ///< whether it can be seen through
    };

    /// What shows of lines and texts.
    struct Visibility {
        Hiding hiding;
        std::vector<ObjectPicture> pictures;  ///< of large objects

        /// The parts of a line that show, from a on.
        void Parts(const Vec3& a, const Vec3& b, std::size_t after,
                   std::vector<SegmentPart>& parts);
        /// The share of a text, by samples, that large objects hide: 0..1.
        double HiddenShare(const Text& text) const;
    };

    /// What is drawn together: polygons, then what can be seen through, then lines.
    struct Layer {
        std::vector<std::uint32_t> fills;
        std::vector<Veil> veils;
        std::vector<std::uint32_t> lines;  ///< in the order of drawing
    };

    struct Extent {
        double left, right, bottom, top;

        /// Where a line from far away is cut is known to its last digits only.
        Vec3 Nearest(const Vec3& p) const {
            return {std::clamp(p.x, left, right), std::clamp(p.y, bottom, top), p.z};
        }
    };

    Vec3 Place(const SceneState& state, const Vec3& device) const;
    Extent SeenOf(const GLViewportType& viewport) const;
    bool Clip(const SceneState& state);
    bool ClipSegment(const SceneState& state, Vec3& a, Vec3& b) const;
    void AddFill(const SceneState& state, const RGBDType& color);
    void AddShaded(const SceneState& state, const ShadedVertex* corners);
    bool AddSmooth(const SceneState& state, const PrimitiveBatch& batch,
                   const PolygonRecord& record);
    void AddRecord(const SceneState& state, const PrimitiveBatch& batch,
                   const PolygonRecord& record);
    void AddTiles(Picture tile, const std::array<Vec3, 3>& area, int across, int up);
    bool IsSmall(const SceneState& state) const;
    void FindBands(const SceneState& state);
    void AddTextured(const SceneState& state, const PrimitiveBatch& batch,
                     const std::array<std::uint32_t, 3>& vertices, const RGBDType& color);

    /// Depth in steps that grow towards the viewer.
    long SliceOf(const Fill& fill) const;
    static long SliceOf(const OrderedLine& line);
    bool IsLarge(std::uint32_t object) const;
    void FindVisible(Visibility& visibility) const;
    ObjectPicture DrawLarge(std::uint32_t object) const;
    std::vector<OrderedLine> VisibleLines(Visibility& visibility) const;
    std::vector<Veil> OrderedVeils() const;
    std::vector<Layer> FindLayers(Hiding& hiding, std::vector<OrderedLine>& lines) const;
    std::vector<long> LayerStarts(Hiding& hiding, const std::vector<OrderedLine>& lines) const;
    bool IsPicture(std::uint32_t fill, bool veil) const;
    void PutPictures(PageCanvas& canvas, std::uint32_t fill, bool veil, const Area& visible) const;
    void ComposeFills(PageCanvas& canvas, const Hiding& hiding,
                      const std::vector<std::uint32_t>& fills) const;
    void ComposeSmooth(PageCanvas& canvas, const Hiding& hiding,
                       const std::vector<std::uint32_t>& fills) const;
    void ComposeVeils(PageCanvas& canvas, Hiding& hiding, const std::vector<Veil>& veils) const;
    void ComposePictures(PageCanvas& canvas, const Hiding& hiding,
                         const std::vector<std::uint32_t>& fills) const;
    void AddVisible(Visibility& visibility, const Strip& strip,
                    std::vector<OrderedLine>& lines) const;
    void ComposeLines(PageCanvas& canvas, const std::vector<OrderedLine>& lines,
                      const std::vector<std::uint32_t>& order) const;
    void ComposeBefore(PageCanvas& canvas, const Text& text,
                       const std::vector<OrderedLine>& lines) const;
    static void ComposeDashes(PageCanvas& canvas, const Strip& strip,
                              const std::vector<OrderedLine>& pieces);
    void ComposeText(PageCanvas& canvas, Hiding& hiding, const Text& text) const;
    static GridPoint OnPage(const Text& text, double x, double y);
    static Ring Bar(const Text& text);
    static Area LetterAreas(const Text& text);

    double m_Width, m_Height;
    PageOptions m_Options;
    std::uint32_t m_Object = 0;                   ///< the one at hand, 0: none
    bool m_BeneathLines = false;                  ///< whether its polygons lie behind its lines
    std::vector<std::size_t> m_PolygonCounts{0};  ///< by object
    double m_Layer = 0.0;                         ///< depth of the front of the layer at hand
    std::vector<Vec3> m_Places;
    std::vector<Fill> m_Fills;
    std::vector<SmoothTriangle> m_Smooth;
    std::vector<Fill> m_Veils;  ///< what can be seen through and hides nothing
    std::vector<Segment> m_Segments;
    std::vector<Strip> m_Strips;
    std::vector<Text> m_Texts;
    std::vector<Picture> m_Pictures;
    std::vector<RGBBType> m_BandColors;  ///< the table of colours by value
    std::vector<Band> m_Bands;           ///< of each of its entries
    std::size_t m_NumPieces = 0;         ///< of triangles, in bands
    Polygon m_Polygon, m_Spare;          ///< the one at hand, in device coordinates
};

}  // namespace varnel::detail
