#include "varnel/render/detail/text_batch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "varnel/foundation/detail/characters.h"

namespace varnel::detail {

void TextBatch::Add(GlyphFace& face, std::string_view line, const Matrix4& placement,
                    const RGBDType& color) {
    m_Matrix.Load(placement);
    double x = 0.0;
    ForEachCharacter(line, [&](char32_t character) {
        AddLetter(face.Outline(character), x, color);
        x += static_cast<double>(face.Metrics(character).gmfCellIncX);
    });
}

void TextBatch::AddHalo(GlyphFace& face, std::string_view line, const Matrix4& placement,
                        double width, const RGBDType& color) {
    // Device units: letters' fronts lie before it, whichever way their depth runs.
    constexpr double kBehind = 0.0005;
    Matrix4 behind = placement;
    behind.m[14] += kBehind;
    m_Matrix.Load(behind);
    double x = 0.0;
    ForEachCharacter(line, [&](char32_t character) {
        for (const auto& contour : face.Outline(character).contours)
            AddRim(contour, x, width, color);
        x += static_cast<double>(face.Metrics(character).gmfCellIncX);
    });
}

std::uint32_t TextBatch::AddPoint(double x, double y, double z, PackedColor color) {
    const Vec3 place = m_Matrix.ToDevice({x, y, z, 0.0});
    m_Vertices.push_back(
        {{static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z)},
         color});
    return static_cast<std::uint32_t>(m_Vertices.size() - 1);
}

void TextBatch::AddLetter(const GlyphOutline& letter, double x, const RGBDType& color) {
    const std::size_t first = m_Vertices.size();
    m_Vertices.resize(first + letter.points.size(), {{}, Pack(color)});
    LineVertex* vertex = m_Vertices.data() + first;
    for (const GlyphPoint& p : letter.points) {
        const Vec3 place =
            m_Matrix.ToDevice({x + static_cast<double>(p.x), static_cast<double>(p.y),
                               static_cast<double>(p.z), 0.0});
        vertex->position[0] = static_cast<float>(place.x);
        vertex->position[1] = static_cast<float>(place.y);
        vertex->position[2] = static_cast<float>(place.z);
        ++vertex;
    }
    const std::size_t before = m_Indices.size();
    m_Indices.resize(before + letter.triangles.size());
    std::transform(
        letter.triangles.begin(), letter.triangles.end(), m_Indices.data() + before,
        [first](std::uint32_t point) { return static_cast<std::uint32_t>(first) + point; });
}

/// A strip along the outside of a contour, which has its letter to the left, with a fan at each
/// corner that points outward.
void TextBatch::AddRim(const std::vector<POINTFLOAT>& contour, double x, double width,
                       const RGBDType& color) {
    constexpr double kStep = 0.6;  // radians from point to point of a fan
    const PackedColor packed = Pack(color);
    const std::size_t n = contour.size();
    const auto point = [&](std::size_t i, double angle, double out) {
        const POINTFLOAT& p = contour[i % n];
        return AddPoint(x + static_cast<double>(p.x) + out * std::cos(angle),
                        static_cast<double>(p.y) + out * std::sin(angle), 0.0, packed);
    };
    const auto outward = [&](std::size_t i) {
        const POINTFLOAT& a = contour[i % n];
        const POINTFLOAT& b = contour[(i + 1) % n];
        return std::atan2(static_cast<double>(a.x - b.x), static_cast<double>(b.y - a.y));
    };
    for (std::size_t i = 0; i < n; ++i) {
        const double angle = outward(i);
        const std::uint32_t a = point(i, angle, 0.0);
        const std::uint32_t b = point(i + 1, angle, 0.0);
        const std::uint32_t outA = point(i, angle, width);
        const std::uint32_t outB = point(i + 1, angle, width);
        m_Indices.insert(m_Indices.end(), {a, outA, outB, a, outB, b});
        const double turn = std::remainder(outward(i + 1) - angle, 2.0 * std::numbers::pi);
        std::uint32_t last = outB;
        for (double done = 0.0; done < turn;) {
            done = std::min(done + kStep, turn);
            const std::uint32_t next = point(i + 1, angle + done, width);
            m_Indices.insert(m_Indices.end(), {b, last, next});
            last = next;
        }
    }
}

void TextBatch::Clear() {
    m_Vertices.clear();
    m_Indices.clear();
}

}  // namespace varnel::detail
