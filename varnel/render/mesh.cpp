#include "varnel/render/detail/mesh.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/render/detail/mesh_normals.h"

namespace varnel::detail {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr float kUnknown = 2.0F;  // no cosine
/// How many polygons are drawn between two looks at the clock.
constexpr int kAtOnce = 1024;

/// What is being drawn is afterwards what it was before.
class ElementScope {
 public:
    explicit ElementScope(Element& element) : m_Element(element), m_Before(element) {}
    ~ElementScope() { m_Element = m_Before; }
    ElementScope(const ElementScope&) = delete;
    ElementScope& operator=(const ElementScope&) = delete;

 private:
    Element& m_Element;
    Element m_Before;
};

}  // namespace

void MeshEdges::Reset(int numPolygons) {
    // Two rows of a large grid fit; the table stays in the cache.
    constexpr unsigned kMost = 1U << 16;
    const unsigned wanted = static_cast<unsigned>(std::max(numPolygons, 16)) * 4U;
    const unsigned size = std::bit_ceil(std::min(wanted, kMost));
    m_Shift = 32U - static_cast<unsigned>(std::countr_zero(size));
    m_Slots.assign(size, Slot{});
}

bool MeshEdges::Insert(int a, int b, PackedColor color) {
    const Slot edge{std::min(a, b), std::max(a, b), color};
    // Edges that lie alike and begin at neighbouring points have neighbouring slots, so that those
    // of a grid's row are in the cache when the next row asks for them.
    const std::uint32_t alike = static_cast<std::uint32_t>(edge.high - edge.low) * 0x9E3779B1U;
    const std::size_t place = (alike >> m_Shift) + static_cast<std::uint32_t>(edge.low);
    Slot& slot = m_Slots[place & (m_Slots.size() - 1)];
    if (slot == edge) return false;
    slot = edge;
    return true;
}

void MeshPainter::PlacePoints(const MatrixStack& matrix, const MeshSource& mesh) {
    constexpr int kBlock = 1024;
    constexpr auto kNowhere = static_cast<float>(kNone);
    const int n = mesh.NumPoints();
    m_Places.resize(static_cast<std::size_t>(n));
    m_Kept = nullptr;
    std::vector<point3Dtype> scratch(static_cast<std::size_t>(std::min(n, kBlock)));
    Place* out = m_Places.data();
    const ProgressPart part(0.0, 0.1);
    for (int first = 0; first < n; first += kBlock) {
        Progress(first, n);
        const int count = std::min(kBlock, n - first);
        const point3Dtype* points = mesh.Points(first, count, scratch.data());
        if (first == 0) m_Kept = points;
        if (points == scratch.data()) m_Kept = nullptr;
        for (int i = 0; i < count; ++i) {
            const Vec3 p = matrix.ToDevice(points[i]);
            const bool isData = (p.x + p.y + p.z) * 0.0 == 0.0;
            *out++ = isData ? Place{static_cast<float>(p.x), static_cast<float>(p.y),
                                    static_cast<float>(p.z)}
                            : Place{kNowhere, kNowhere, kNowhere};
        }
    }
}

/// Collects the corners' places in the window; false when one of them is no data.
bool MeshPainter::Gather(const Coverage& coverage, const int* numbers, int n) {
    m_Window.resize(static_cast<std::size_t>(n));
    float sum = 0.0F;
    for (WindowPoint& corner : m_Window) {
        const Place& p = m_Places[static_cast<std::size_t>(*numbers++)];
        corner = coverage.ToWindow(p.x, p.y);
        sum += p.x;
    }
    return sum == sum;
}

Turned MeshPainter::LightOf(const Renderer& renderer, const MeshNormals& normals, int k,
                            int point) {
    const auto compute = [&] {
        const Vec3 normal = renderer.matrix.NormalToDevice(normals.At(k, point));
        const Turned turned = TurnedBy(renderer.scene.light, normal);
        const bool none = normal.x == 0.0 && normal.y == 0.0 && normal.z == 0.0;
        return none ? Turned{kNone, kNone, 0.0} : turned;
    };
    if (normals.IsSharp(point)) return compute();
    PointLight& kept = m_Light[static_cast<std::size_t>(point)];
    if (kept.toLight == kUnknown) {
        const Turned turned = compute();
        kept = {static_cast<float>(turned.toLight), static_cast<float>(turned.toHighlight),
                static_cast<float>(turned.aside)};
    }
    return {static_cast<double>(kept.toLight), static_cast<double>(kept.toHighlight),
            static_cast<double>(kept.aside)};
}

void MeshPainter::AddFill(Renderer& renderer, const MeshSource& mesh, const SurfaceStyle& style,
                          const MeshNormals* normals, int k) {
    int n = 0;
    const int* const numbers = mesh.Polygon(k, n);
    const auto count = static_cast<std::size_t>(n);
    renderer.corners.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        renderer.corners[i] = ToVec3(m_Places[static_cast<std::size_t>(numbers[i])]);
    const bool smooth = style.lit && normals != nullptr;
    bool needsPoints = !smooth || style.twoSided || style.state.textured;
    m_Turned.resize(count);
    for (std::size_t i = 0; smooth && i < count; ++i) {
        m_Turned[i] = LightOf(renderer, *normals, k, numbers[i]);
        needsPoints = needsPoints || std::isnan(m_Turned[i].toLight);
    }
    m_Corners.resize(count);
    for (std::size_t i = 0; needsPoints && i < count; ++i) {
        point3Dtype scratch;
        m_Corners[i] =
            m_Kept != nullptr ? m_Kept[numbers[i]] : *mesh.Points(numbers[i], 1, &scratch);
    }
    renderer.AddSeenFill(style, m_Corners.data(), n, smooth ? m_Turned.data() : nullptr);
}

void MeshPainter::AddFrame(Renderer& renderer, LineRun& run, const int* numbers, int n,
                           const RGBDType& color) {
    const PackedColor packed = renderer.batch.KeepsRecords() ? PackWithAlpha(color) : Pack(color);
    for (int i = 0; i < n; ++i) {
        const int j = i + 1 < n ? i + 1 : 0;
        const auto a = static_cast<std::size_t>(i);
        const auto b = static_cast<std::size_t>(j);
        if (!m_AllSegments && !renderer.coverage.MayDraw(m_Window[a], m_Window[b])) continue;
        if (!m_Edges.Insert(numbers[i], numbers[j], packed)) continue;
        const Place& p = m_Places[static_cast<std::size_t>(numbers[i])];
        const Place& q = m_Places[static_cast<std::size_t>(numbers[j])];
        if (renderer.IsKept(color))
            renderer.KeepSegment(ToVec3(p), ToVec3(q), color);
        else
            renderer.batch.AddSegment(run, {{p.x, p.y, p.z}, packed}, {{q.x, q.y, q.z}, packed},
                                      renderer.element);
    }
}

void MeshPainter::Paint(Renderer& renderer, const MeshSource& mesh, const MeshLook& look) {
    const bool lines = look.framed || !look.filled;
    const ElementScope element(renderer.element);
    PlacePoints(renderer.matrix, mesh);
    m_AllSegments = !renderer.LeavesOutSegments(renderer.lineWidth);
    if (lines) m_Edges.Reset(mesh.NumPolygons());
    if (look.normals != nullptr) m_Light.assign(m_Places.size(), {kUnknown, 0.0F, 0.0F});
    SurfaceStyle style = look.style;
    RGBDType fill;
    RGBDType frame;
    const ProgressPart part(0.1, 1.0);
    for (int k = 0; k < mesh.NumPolygons(); ++k) {
        if (k % kAtOnce == 0) Progress(k, mesh.NumPolygons());
        int n = 0;
        const int* numbers = mesh.Polygon(k, n);
        if (n < 2 || !Gather(renderer.coverage, numbers, n)) continue;
        const bool covers = look.filled && n > 2 && renderer.coverage.MayCover(m_Window.data(), n);
        if (!covers && !lines) continue;
        renderer.element.index = k;
        mesh.Colors(k, fill, frame);
        if (covers) {
            if (look.ownColors) style.color = fill;
            style.color.a = fill.a;
            AddFill(renderer, mesh, style, look.normals, k);
        }
        if (lines)
            AddFrame(renderer, renderer.batch.RunOfWidth(renderer.lineWidth), numbers, n,
                     look.oneLineColor ? look.lineColor : frame);
        if (look.framed && !look.ownColors) style.color = frame;  // the colour drawn with last
        if (renderer.batch.IsLarge()) renderer.HandOver();
    }
}

}  // namespace varnel::detail
