// A page as an SVG picture.
#pragma once

#include <string>

#include "varnel/platform/detail/page_canvas.h"

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
    bool FillGradient(const SmoothTriangle& triangle);
    void Subdivide(const SmoothTriangle& triangle, int depth);

    double m_Height;
    std::string m_Out;
    Group m_Group = Group::None;
    int m_Clips = 0;
    int m_Gradients = 0;
};

}  // namespace varnel::detail
