// Texts on their way to OpenGL: the triangles of their letters in normalized device coordinates.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "varnel/foundation/colors.h"
#include "varnel/platform/glyph_outlines.h"
#include "varnel/render/detail/matrix_stack.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

/// The arrays keep their memory between texts.
class TextBatch {
 public:
    /// Adds the letters of a line of valid UTF-8, one advance after the other. `placement` leads
    /// from ems, with the first letter's origin at 0, to device coordinates.
    void Add(GlyphFace& face, std::string_view line, const Matrix4& placement,
             const RGBDType& color);
    /// Adds what surrounds the letters of a line by `width` ems, just behind them.
    void AddHalo(GlyphFace& face, std::string_view line, const Matrix4& placement, double width,
                 const RGBDType& color);
    void Clear();

    const std::vector<LineVertex>& Vertices() const { return m_Vertices; }
    /// Three a triangle, counter-clockwise where it faces the viewer.
    const std::vector<std::uint32_t>& Indices() const { return m_Indices; }

 private:
    void AddLetter(const GlyphOutline& letter, double x, const RGBDType& color);
    void AddRim(const std::vector<POINTFLOAT>& contour, double x, double width,
                const RGBDType& color);
    std::uint32_t AddPoint(double x, double y, double z, PackedColor color);

    MatrixStack m_Matrix;
    std::vector<LineVertex> m_Vertices;
    std::vector<std::uint32_t> m_Indices;
};

}  // namespace varnel::detail
