// Renderer: lines as areas, and what can be seen through besides polygons.
#include <algorithm>
#include <array>
#include <cmath>

#include "varnel/render/detail/renderer.h"
#include "varnel/render/font.h"

namespace varnel::detail {
namespace {

/// Of what faces the viewer in colours of its own.
constexpr FillState kPlain{};

Vec3 PlaceOf(const LineVertex& v) {
    return {static_cast<double>(v.position[0]), static_cast<double>(v.position[1]),
            static_cast<double>(v.position[2])};
}

RGBDType ColorOf(const PackedColor& c) {
    return RGBBtoRGBD({c.bytes[0], c.bytes[1], c.bytes[2], c.bytes[3]});
}

}  // namespace

/// The line's places in pixels, in m_Stroke, and what strokes them.
Stroker Renderer::StrokerFor(const OpenLine& strip, const StrokeStyle& style) {
    const double width = scene.viewport.width;
    const double height = scene.viewport.height;
    m_Stroke.clear();
    for (const LineVertex& v : strip.vertices) {
        const Vec3 p = PlaceOf(v);
        m_Stroke.push_back({(p.x + 1.0) * width / 2.0, (p.y + 1.0) * height / 2.0, p.z, v.color});
    }
    StrokeStyle all = style;
    // Narrower than a pixel a line would have gaps.
    const double scale = DrawsImage() ? gl.lineScale : 1.0;
    all.width = std::max(static_cast<double>(strip.width) * scale, 1.0);
    all.bit *= scale;
    all.viewWidth = width;
    all.viewHeight = height;
    return Stroker(all);
}

FillVertex Renderer::ToFill(const StrokePoint& p) const {
    return {{static_cast<float>(2.0 * p.x / scene.viewport.width - 1.0),
             static_cast<float>(2.0 * p.y / scene.viewport.height - 1.0), static_cast<float>(p.z)},
            p.color,
            0.0F};
}

void Renderer::AddStroke(const OpenLine& strip, double bit, unsigned short pattern, double mitre) {
    if (scene.viewport.width < 1 || scene.viewport.height < 1) return;
    StrokeStyle style;
    style.bit = bit;
    style.pattern = pattern;
    style.mitre = mitre;
    style.apart = strip.seeThrough;
    const Stroker stroker = StrokerFor(strip, style);
    if (strip.seeThrough) {
        const bool flat = DrawsImage() && FlattenStroke();
        stroker.Walk(m_Stroke, [&](const StrokePoint* points, int n) {
            corners.clear();
            m_Colors.clear();
            for (int i = 0; i < n; ++i) {
                const FillVertex v = ToFill(points[i]);
                corners.push_back(PlaceOf({{v.position[0], v.position[1], v.position[2]}, {}}));
                m_Colors.push_back(points[i].color);
            }
            KeepCorners(n, TransparentBatch::kLinesNearer, flat);
        });
        return;
    }
    if (!batch.Accepts(kPlain)) Flush();
    std::array<FillVertex, 128> fan;
    stroker.Walk(m_Stroke, [&](const StrokePoint* points, int n) {
        std::transform(points, points + n, fan.begin(),
                       [this](const StrokePoint& p) { return ToFill(p); });
        batch.AddFan(kPlain, fan.data(), n);
        if (batch.IsLarge()) HandOver();
    });
}

/// Gives a line whose places all lie at one depth a depth of its own; false for others.
bool Renderer::FlattenStroke() {
    constexpr double kSame = 1e-6;
    if (m_Stroke.empty()) return false;
    const double depth = m_Stroke.front().z;
    const auto isThere = [&](const StrokePoint& p) { return std::fabs(p.z - depth) < kSame; };
    if (!std::all_of(m_Stroke.begin(), m_Stroke.end(), isThere)) return false;
    const double own = transparent.DepthOfLine(depth);
    for (StrokePoint& p : m_Stroke)
        p.z = own;
    return true;
}

/// Keeps the polygon at hand, in m_Colors, over what it lies on.
void Renderer::KeepCorners(int n, double nearer, bool once) {
    const auto isClear = [](const PackedColor& color) { return color.bytes[3] == 0; };
    if (std::all_of(m_Colors.begin(), m_Colors.end(), isClear)) return;
    if (!DrawsImage()) {
        if (!batch.Accepts(kPlain)) Flush();
        batch.AddPolygon(kPlain, m_Colors[0], corners.data(), nullptr, n);
        batch.ColorCorners(m_Colors.data(), n);
        if (batch.KeepsRecords()) batch.AddRecord(n, ColorOf(m_Colors[0]), false, element);
        return;
    }
    transparent.SetViewport(scene.viewport);
    transparent.AddPolygon({kPlain, scene.clipping, scene.clipPlanes, once}, corners.data(),
                           m_Colors.data(), nullptr, n, nearer);
}

void Renderer::KeepSegments(const OpenLine& strip) {
    transparent.SetViewport(scene.viewport);
    for (std::size_t i = 0; i + 1 < strip.vertices.size(); ++i) {
        const LineVertex& v = strip.vertices[i];
        if (v.color.bytes[3] != 0)
            transparent.AddSegment(PlaceOf(v), PlaceOf(strip.vertices[i + 1]), v.color,
                                   static_cast<double>(strip.width) * gl.lineScale);
    }
}

void Renderer::AddMitres(const OpenLine& strip, double mitre) {
    if (scene.viewport.width < 1 || scene.viewport.height < 1 || strip.vertices.empty()) return;
    StrokeStyle style;
    style.mitre = mitre;
    const Stroker stroker = StrokerFor(strip, style);
    if (!batch.Accepts(kPlain)) Flush();
    const RGBDType color = ColorOf(strip.vertices[0].color);
    stroker.WalkJoins(m_Stroke, [&](const StrokePoint* points, int n) {
        std::array<FillVertex, 4> fan;
        std::transform(points, points + n, fan.begin(),
                       [this](const StrokePoint& p) { return ToFill(p); });
        batch.AddFan(kPlain, fan.data(), n);
        if (batch.KeepsRecords()) batch.AddRecord(n, color, false, element);
    });
}

void Renderer::KeepText(const TextRun& run) {
    m_Letters.Clear();
    m_Letters.Add(*run.font.GetFace(), run.text, run.placement, run.color);
    const auto& vertices = m_Letters.Vertices();
    const auto& indices = m_Letters.Indices();
    m_Colors.assign(3, PackWithAlpha(run.color));
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        corners.clear();
        for (std::size_t k = 0; k < 3; ++k)
            corners.push_back(PlaceOf(vertices[indices[i + k]]));
        // Letters have backs.
        if (Cross(corners[1] - corners[0], corners[2] - corners[0]).z > 0.0)
            KeepCorners(3, TransparentBatch::kLinesNearer);
    }
}

void Renderer::KeepShape(const ShadedShape& shape) {
    const auto& triangles = shape.triangles;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3) {
        corners.clear();
        m_Colors.clear();
        for (std::size_t k = 0; k < 3; ++k) {
            corners.push_back(triangles[i + k].place);
            m_Colors.push_back(PackWithAlpha(triangles[i + k].color));
        }
        KeepCorners(3, 0.0);
    }
    for (std::size_t i = 0; i + 1 < shape.lines.size(); i += 2) {
        const ShadedVertex& a = shape.lines[i];
        const ShadedVertex& b = shape.lines[i + 1];
        if (DrawsImage())
            KeepSegment(a.place, b.place, a.color);
        else
            batch.AddSegment(batch.RunOfWidth(shape.width),
                             MakeLineVertex(a.place, PackWithAlpha(a.color)),
                             MakeLineVertex(b.place, PackWithAlpha(b.color)), element);
    }
}

}  // namespace varnel::detail
