#include "varnel/render/detail/renderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "varnel/foundation/detail/less_work.h"

namespace varnel::detail {
namespace {

/// Keeps values on a texel's side of its border.
constexpr double kTexelNudge = 0.004;

double TextureSource(const point3Dtype& p, int mode) {
    switch (mode) {
        case 0:
            return p.x;
        case 1:
            return p.y;
        case 3:
            return p.w;
        default:
            return p.z;
    }
}

/// How a polygon looks whose colour goes by a value that it does not have.
SurfaceStyle WithoutValue(SurfaceStyle style) {
    style.state.textured = style.state.shaded = false;
    const double alpha = style.color.a;
    style.color = kNoDataColor;
    style.color.a = alpha;
    return style;
}

Vec3 AsVector(const point3Dtype& p) {
    return {p.x, p.y, p.z};
}

/// The normal of a polygon's first three points; of its whole outline when they lie on one line.
/// Its length is not 1.
Vec3 PolygonNormal(const point3Dtype* pts, int n) {
    point3Dtype normal;
    CalcNormal(pts[0], pts[1], pts[2], normal);
    if (normal.x != 0.0 || normal.y != 0.0 || normal.z != 0.0) return AsVector(normal);
    Vec3 sum{0.0, 0.0, 0.0};
    const Vec3 origin = AsVector(pts[0]);
    for (int i = 1; i + 1 < n; ++i) {
        const Vec3 part = Cross(AsVector(pts[i]) - origin, AsVector(pts[i + 1]) - origin);
        sum = {sum.x + part.x, sum.y + part.y, sum.z + part.z};
    }
    return sum;
}

}  // namespace

bool Renderer::ToDevice(const point3Dtype* pts, int n) {
    corners.resize(static_cast<std::size_t>(n));
    double sum = 0.0;
    for (Vec3& corner : corners) {
        corner = matrix.ToDevice(*pts++);
        sum += (corner.x + corner.y + corner.z) * 0.0;
    }
    return sum == 0.0;  // not so when any coordinate is infinite or not a number
}

void Renderer::UpdateCoverage() {
    const bool useful = m_Culling && sink == &gl;
    coverage = useful ? gl.MakeCoverage(scene.viewport) : Coverage();
    gl.UseLayer(coverage.IsOn() && coverage.HasDiamonds(), scene.viewport);
}

void Renderer::SetCulling(bool on) {
    m_Culling = on;
    UpdateCoverage();
}

void Renderer::AddFill(const SurfaceStyle& style, const point3Dtype* pts, int n) {
    if (coverage.IsOn()) {
        m_Window.clear();
        for (const Vec3& corner : corners)
            m_Window.push_back(
                coverage.ToWindow(static_cast<float>(corner.x), static_cast<float>(corner.y)));
        if (!coverage.MayCover(m_Window.data(), n)) return;
    }
    AddSeenFill(style, pts, n);
}

/// The colour of a fill that is lit, or the factor on its texture's.
RGBDType Renderer::Lit(const SurfaceStyle& style, const Turned& turned, bool otherSide) const {
    const double side = otherSide ? -1.0 : 1.0;
    const Turned seen{turned.toLight * side, turned.toHighlight * side, turned.aside};
    if (!style.state.shaded) return LitColor(scene.light, seen, style.color);
    const double shade =
        style.shadeLow + (style.shadeHigh - style.shadeLow) * Facing(scene.light, seen);
    return {shade, shade, shade, style.color.a};
}

void Renderer::LightCorners(const SurfaceStyle& style, const point3Dtype* pts, const Turned* turned,
                            int n) {
    const auto isMissing = [](const Turned& t) { return std::isnan(t.toLight); };
    const bool otherSide = style.twoSided && matrix.LeadsAway(PolygonNormal(pts, n));
    Turned whole;
    if (std::any_of(turned, turned + n, isMissing))
        whole = TurnedBy(scene.light, matrix.NormalToDevice(PolygonNormal(pts, n)));
    m_Colors.resize(static_cast<std::size_t>(n));
    const std::uint8_t alpha = PackWithAlpha(style.color).bytes[3];
    for (PackedColor& color : m_Colors) {
        color = Pack(Lit(style, isMissing(*turned) ? whole : *turned, otherSide));
        color.bytes[3] = alpha;
        ++turned;
    }
}

/// Keeps a polygon with the colours at hand.
void Renderer::KeepFill(const SurfaceStyle& style, const double* texture, int n) {
    if (!(style.color.a > 0.0)) return;
    transparent.SetViewport(scene.viewport);
    transparent.AddPolygon({style.state, scene.clipping, scene.clipPlanes}, corners.data(),
                           m_Colors.data(), texture, n);
}

void Renderer::KeepSegment(const Vec3& a, const Vec3& b, const RGBDType& color) {
    if (!(color.a > 0.0)) return;
    transparent.SetViewport(scene.viewport);
    transparent.AddSegment(a, b, PackWithAlpha(color),
                           static_cast<double>(lineWidth) * gl.lineScale);
}

void Renderer::DrawTransparent() {
    if (transparent.IsEmpty() && transparentImages.empty()) return;
    Flush();
    transparent.Sort();
    gl.DrawTransparent(scene, transparentImages, transparent);
    DropTransparent();
}

void Renderer::DropTransparent() {
    transparent.Clear();
    transparentImages.clear();
}

void Renderer::AddSeenFill(const SurfaceStyle& style, const point3Dtype* pts, int n,
                           const Turned* turned) {
    const double* texture = nullptr;
    if (style.state.textured) {
        textures.clear();
        bool missing = false;
        for (int i = 0; i < n; ++i) {
            const double value = TextureSource(pts[i], style.textureMode);
            missing = missing || !std::isfinite(value);
            textures.push_back((value - style.textureOffset) * style.textureScale + kTexelNudge);
        }
        if (missing && style.greyNoData) return AddSeenFill(WithoutValue(style), pts, n, turned);
        texture = textures.data();
    }
    const bool kept = IsKept(style.color);
    if (!kept && !batch.Accepts(style.state)) Flush();
    RGBDType seen = style.color;
    const bool smooth = style.lit && turned != nullptr;
    if (style.lit && !smooth) {
        // The viewer stands on the side of negative z.
        const Vec3 normal = matrix.NormalToDevice(PolygonNormal(pts, n));
        seen = Lit(style, TurnedBy(scene.light, normal), style.twoSided && normal.z > 0.0);
    }
    if (smooth)
        LightCorners(style, pts, turned, n);
    else if (kept)
        m_Colors.assign(static_cast<std::size_t>(n), PackWithAlpha(seen));
    if (kept) return KeepFill(style, texture, n);
    batch.AddPolygon(style.state, Pack(seen), corners.data(), texture, n);
    if (smooth) batch.ColorCorners(m_Colors.data(), n);
    if (batch.KeepsRecords()) batch.AddRecord(n, style.color, style.lit, element);
}

void Renderer::AddOutline(int n, bool closed, const RGBDType& color) {
    if (IsKept(color)) {
        const auto count = static_cast<std::size_t>(n);
        for (std::size_t i = 0; i + 1 < count; ++i)
            KeepSegment(corners[i], corners[i + 1], color);
        if (closed && n > 2) KeepSegment(corners[count - 1], corners[0], color);
        return;
    }
    const bool all = !LeavesOutSegments(lineWidth);
    const auto window = [this](const Vec3& p) {
        return coverage.ToWindow(static_cast<float>(p.x), static_cast<float>(p.y));
    };
    batch.AddOutline(lineWidth, corners.data(), n, closed, color, element, [&](int i) {
        const auto a = static_cast<std::size_t>(i);
        const auto b = static_cast<std::size_t>(i + 1 < n ? i + 1 : 0);
        return all || coverage.MayDraw(window(corners[a]), window(corners[b]));
    });
}

void Renderer::AddPolyline(float width, const std::vector<LineVertex>& vertices, bool cutJoins) {
    const bool all = !LeavesOutSegments(width);
    const auto window = [this](const LineVertex& v) {
        return coverage.ToWindow(v.position[0], v.position[1]);
    };
    LineRun& run = batch.RunOfWidth(width, cutJoins);
    batch.AddPolyline(run, vertices.data(), vertices.size(), element, [&](std::size_t i) {
        return all || coverage.MayDraw(window(vertices[i]), window(vertices[i + 1]));
    });
    if (batch.IsLarge()) HandOver();
}

void Renderer::Start(std::unique_ptr<GLContext> context, const GLViewportType& viewport) {
    gl.Start(std::move(context));
    SceneState fresh;
    fresh.viewport = viewport;
    fresh.frameOffset = scene.frameOffset;
    fresh.lineAreas = scene.lineAreas;
    scene = fresh;
    matrix = MatrixStack();
    batch.Clear();
    DropTransparent();
    line = OpenLine();
    lineWidth = 1.0F;
    UpdateCoverage();
}

std::string_view Renderer::TakeText(std::string_view text) {
    constexpr std::size_t kLongest = 10'000 / kLessWork;
    constexpr std::size_t kMost = 400'000 / kLessWork;
    std::size_t size = std::min({text.size(), kLongest, kMost - std::min(m_TextBytes, kMost)});
    // Not in the middle of a character.
    while (size > 0 && size < text.size() && (static_cast<unsigned>(text[size]) & 0xC0U) == 0x80U)
        --size;
    m_TextBytes += size;
    return text.substr(0, size);
}

void Renderer::Flush() {
    HandOver();
    gl.DrawLayer(scene);
}

void Renderer::HandOver() {
    if (batch.IsEmpty()) return;
    sink->DrawBatch(scene, batch);
    batch.Clear();
}

void Renderer::DrawStippled(const OpenLine& strip, int repeat, unsigned short pattern) {
    if (strip.vertices.size() < 2) return;
    Flush();
    sink->DrawStrip(scene, {strip.vertices, strip.width, repeat, pattern, element});
}

void Renderer::AddShape(const MarkerShape& shape, const Vec3& middle, const RGBDType& color) {
    const double sx = 2.0 / scene.viewport.width;
    const double sy = 2.0 / scene.viewport.height;
    const bool kept = IsKept(color);
    const PackedColor packed = kept ? PackWithAlpha(color) : Pack(color);
    SurfaceStyle style;
    style.color = color;
    for (const auto& ring : shape) {
        corners.clear();
        for (const MarkerCorner& corner : ring)
            corners.push_back({middle.x + corner.x * sx, middle.y + corner.y * sy, middle.z});
        const int n = static_cast<int>(ring.size());
        if (kept) {
            m_Colors.assign(ring.size(), packed);
            KeepFill(style, nullptr, n);
            continue;
        }
        batch.AddPolygon(FillState{}, packed, corners.data(), nullptr, n);
        if (batch.KeepsRecords()) batch.AddRecord(n, color, false, element);
    }
}

void Renderer::AddMarker(const point3Dtype& p, const RGBDType& fill, const RGBDType& outline) {
    Vec3 middle = matrix.ToDevice(p);
    if (!(std::fabs(middle.x) < 1e6 && std::fabs(middle.y) < 1e6 && std::fabs(middle.z) < 1e6))
        return;
    if (scene.viewport.width < 1 || scene.viewport.height < 1) return;
    // A disc before the front of the ball that it stands for: neither the line that leads through
    // it nor the surface that it lies on, unless that is very steep, cuts it.
    middle.z -= 2.0 * marker.size / std::min(scene.viewport.width, scene.viewport.height);
    if (!batch.Accepts(FillState{})) Flush();
    // The outline's shape lies under the fill, through which it would be seen.
    if (!IsKept(fill)) AddShape(marker.outline, middle, outline);
    AddShape(marker.fill, middle, fill);
    if (batch.IsLarge()) HandOver();
}

}  // namespace varnel::detail
