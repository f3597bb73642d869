// A picture of one object of very many polygons, cut to what shows of it, for pages on which its
// polygons would be too many.
//
// Coordinates as in Hiding. The picture is drawn in strips, so that memory grows with its own size
// and not with its samples.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/platform/detail/page_canvas.h"
#include "varnel/render/detail/matrix_stack.h"
#include "varnel/vector/detail/hiding.h"

namespace varnel::detail {

class ObjectPicture {
 public:
    /// For an image of this size in pixels, with `dotsPerPixel` dots a pixel.
    ObjectPicture(double width, double height, double dotsPerPixel);

    /// A flat convex polygon of the object; of those at one depth the later one is seen.
    void AddPolygon(std::span<const Vec3> corners, const RGBDType& color);
    /// A triangle of the object whose colour runs evenly between those of its corners.
    void AddTriangle(std::span<const Vec3> corners, const std::array<RGBDType, 3>& colors);
    /// A line of the object, of a width in pixels. It lies before the polygons it is on.
    void AddLine(const Vec3& a, const Vec3& b, double width, const RGBDType& color);
    /// A polygon of something else, which hides what lies behind it.
    void AddHider(std::span<const Vec3> corners);

    /// Makes the picture, once everything was added.
    void Draw();

    /// What shows; transparent where nothing of the object does. Of size 0 when nothing does.
    const PagePicture& Picture() const { return m_Picture; }

    /// Whether the object stands before a place.
    bool Hides(const Vec3& place) const;
    /// Leaves the parts of a line that the object does not hide.
    void CutHidden(const Vec3& a, const Vec3& b, std::vector<SegmentPart>& parts) const;
    /// Whether it hides all of a flat convex polygon.
    bool HidesAll(std::span<const Vec3> corners) const;

 private:
    enum class Kind : std::uint8_t { Polygon, Line, Hider };
    /// A function of the place, linear in it.
    struct Linear {
        double x = 0.0, y = 0.0, at0 = 0.0;
        double At(double px, double py) const { return x * px + y * py + at0; }
    };
    struct Item {
        std::uint32_t first, count;  ///< in m_Corners, in samples
        Kind kind;
        Linear depth;
        std::array<Linear, 3> color;
    };
    struct Sample {
        float depth;
        float behind;  ///< from where on lines are hidden
        std::array<BYTE, 3> color;
        bool own;
    };

    void Add(Kind kind, std::span<const Vec3> corners, const RGBDType* colors);
    std::vector<std::vector<std::uint32_t>> SortIntoStrips() const;
    void DrawStrip(int firstRow, const std::vector<std::uint32_t>& items);
    void DrawItem(const Item& item, int firstRow, int lastRow);
    void Resolve(int firstRow);

    double m_Width, m_Height;     ///< pixels of the image
    double m_Dots;                ///< a pixel
    std::vector<Vec3> m_Corners;  ///< in samples
    std::vector<Item> m_Items;
    int m_Columns = 0, m_Rows = 0;  ///< dots of the picture
    int m_Left = 0, m_Bottom = 0;   ///< dots of the page
    std::vector<Sample> m_Samples;  ///< of the strip at hand
    std::vector<float> m_Depth;     ///< by dots from the lowest row, the farthest of their samples
    PagePicture m_Picture;
};

}  // namespace varnel::detail
