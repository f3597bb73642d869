// The sink that makes a page of what is drawn: polygons, lines, texts and pictures with their
// places in pixels, and from them, once all is there, what shows.
//
// Each clearing of the depth starts a layer that stands before everything drawn until then, as a
// chart's rectangle stands before the view's title.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "varnel/render/detail/scene.h"
#include "varnel/vector/detail/hiding.h"

namespace varnel::detail {

class PageSink final : public SceneSink {
 public:
    /// For an image of this size in pixels.
    PageSink(double width, double height) : m_Width(width), m_Height(height) {}

    void Clear(const SceneState& state, bool color, bool depth) override;
    void DrawBatch(const SceneState& state, const PrimitiveBatch& batch) override;
    void DrawStrip(const SceneState& state, const LineStrip& strip) override;
    void DrawText(const SceneState& state, const TextRun& run) override;
    void DrawImage(const SceneState& state, const ImageQuad& image) override;
    void DrawShape(const SceneState& state, const ShadedShape& shape) override;

    std::size_t PolygonCount() const { return m_Fills.size(); }

    /// Puts what shows onto a canvas: areas, pictures, lines, texts.
    void Compose(PageCanvas& canvas) const;

 private:
    using Polygon = std::vector<Vec3>;

    struct Fill {
        std::uint32_t first, count;  ///< in m_Places
        RGBDType color;
        int smooth = -1;  ///< in m_Smooth, for one whose corners differ in colour
    };
    struct Segment {
        Vec3 a, b;
        RGBDType color;
        float width;
    };
    struct Strip {
        std::vector<Vec3> places;
        RGBDType color;
        float width;
        int repeat;
        unsigned short pattern;
    };
    struct Text {
        PageText text;
        std::array<Vec3, 4> outline;
    };
    struct Picture {
        PagePicture picture;
        std::size_t fill;  ///< the polygon that it covers
    };

    /// Fills and segments of about one depth, in the order of drawing.
    struct Slice {
        std::vector<std::uint32_t> fills;
        std::vector<std::uint32_t> segments;
        std::vector<std::uint32_t> veils;
    };

    Vec3 Place(const SceneState& state, const Vec3& device) const;
    bool Clip(const SceneState& state);
    bool ClipSegment(const SceneState& state, Vec3& a, Vec3& b) const;
    void AddFill(const SceneState& state, const RGBDType& color);
    void AddShaded(const SceneState& state, const ShadedVertex* corners);
    bool AddSmooth(const SceneState& state, const PrimitiveBatch& batch,
                   const PolygonRecord& record);
    void AddRecord(const SceneState& state, const PrimitiveBatch& batch,
                   const PolygonRecord& record);
    void AddTextured(const SceneState& state, const PrimitiveBatch& batch, std::uint32_t a,
                     std::uint32_t b, std::uint32_t c, const RGBDType& color);

    std::vector<Slice> Slices(const Hiding& hiding) const;
    bool IsPicture(std::uint32_t fill) const;
    void ComposeFills(PageCanvas& canvas, const Hiding& hiding,
                      const std::vector<std::uint32_t>& fills) const;
    void ComposeSmooth(PageCanvas& canvas, const Hiding& hiding,
                       const std::vector<std::uint32_t>& fills) const;
    void ComposeVeils(PageCanvas& canvas, Hiding& hiding, std::vector<std::uint32_t> veils) const;
    double MeanDepth(const Fill& fill) const;
    void ComposePictures(PageCanvas& canvas, const Hiding& hiding,
                         const std::vector<std::uint32_t>& fills) const;
    void ComposeLines(PageCanvas& canvas, Hiding& hiding,
                      const std::vector<std::uint32_t>& segments) const;
    void ComposeStrip(PageCanvas& canvas, Hiding& hiding, const Strip& strip) const;
    void ComposeTexts(PageCanvas& canvas, Hiding& hiding) const;

    double m_Width, m_Height;
    double m_Layer = 0.0;  ///< depth of the front of the layer at hand
    std::vector<Vec3> m_Places;
    std::vector<Fill> m_Fills;
    std::vector<SmoothTriangle> m_Smooth;
    std::vector<Fill> m_Veils;  ///< what can be seen through and hides nothing
    std::vector<Segment> m_Segments;
    std::vector<Strip> m_Strips;
    std::vector<Text> m_Texts;
    std::vector<Picture> m_Pictures;
    Polygon m_Polygon, m_Spare;  ///< the one at hand, in device coordinates
};

}  // namespace varnel::detail
