// A page as an SVG picture.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "varnel/platform/detail/font_face.h"
#include "varnel/platform/detail/page_canvas.h"
#include "varnel/platform/detail/repeated_shapes.h"
#include "varnel/vector/detail/smooth_pieces.h"

namespace varnel::detail {

class SvgCanvas : public PageCanvas {
 public:
    /// A picture of `width` x `height` pixels on `pageWidth` x `pageHeight` millimetres of paper.
    SvgCanvas(double pageWidth, double pageHeight, double width, double height,
              const CString& title);

    void Fill(const Area& area, const RGBDType& color, bool seal) override;
    void FillSmooth(const std::vector<SmoothTriangle>& triangles) override;
    void Stroke(const std::vector<Ring>& lines, const PageStroke& stroke) override;
    void Text(const PageText& text) override;
    void Picture(const PagePicture& picture) override;
    void BeginClip(const Area& area) override;
    void EndClip() override;

    /// The whole file. Nothing can be drawn afterwards.
    std::string Finish();

 private:
    enum class Group { None, Plain, Sealed };

    void Enter(Group group);
    void Path(const std::vector<Ring>& rings, bool closed);
    void Number(long long value, bool first);
    void FillGradient(const SmoothTriangle& triangle, const StraightGradient& gradient);

    std::array<long long, 2> ToUnits(const GridPoint& p) const;

    /// Null for one that cannot be read.
    const FontFace* Face(const GlyphSource& source);

    double m_UnitsPerPixel;
    double m_Height;     ///< pixels
    std::string m_Seal;  ///< the width of the strokes that close cracks
    std::string m_Out;
    Group m_Group = Group::None;
    std::map<std::pair<std::string, int>, std::unique_ptr<FontFace>> m_Faces;
    RepeatedShapes m_Shapes;
    int m_Clips = 0;
    int m_Gradients = 0;
};

}  // namespace varnel::detail
