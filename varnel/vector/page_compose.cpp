// PageSink: what shows, put onto a canvas.
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

#include "varnel/vector/detail/areas.h"
#include "varnel/vector/detail/line_chains.h"
#include "varnel/vector/detail/page_sink.h"

namespace varnel::detail {
namespace {

/// Texts of which less than this share is hidden are drawn whole.
constexpr double kHardlyHidden = 0.005;
/// Slices into which a depth of 1 is cut; the box of a picture is 2 deep.
constexpr double kSlicesPerUnit = 32.0;

Vec3 Along(const Vec3& a, const Vec3& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// A colour as its 24 bits, by which what looks the same is put together.
std::uint32_t ColorKey(const RGBDType& c) {
    const auto level = [](double v) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
    };
    return level(c.a) << 24U | level(c.r) << 16U | level(c.g) << 8U | level(c.b);
}

double SizeOf(const Area& area) {
    double sum = 0.0;
    for (const Ring& ring : area)
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const GridPoint& a = ring[i];
            const GridPoint& b = ring[(i + 1) % ring.size()];
            sum += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
        }
    return std::fabs(sum) / 2.0 / (kGridPerPixel * kGridPerPixel);
}

double SizeOf(const std::array<Vec3, 4>& p) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
        const Vec3& a = p[i];
        const Vec3& b = p[(i + 1) % 4];
        sum += a.x * b.y - b.x * a.y;
    }
    return std::fabs(sum) / 2.0;
}

/// Lengths of marks and gaps of a stipple pattern, a mark first (of length 0 where it starts with a
/// gap).
std::vector<double> Dashes(unsigned short pattern, double bit) {
    std::vector<double> lengths;
    bool mark = true;
    double length = 0.0;
    for (unsigned i = 0; i < 16; ++i) {
        const bool set = (pattern >> i & 1U) != 0;
        if (set != mark) {
            lengths.push_back(length);
            length = 0.0;
            mark = set;
        }
        length += bit;
    }
    lengths.push_back(length);
    if (lengths.size() % 2 != 0) lengths.push_back(0.0);
    return lengths;
}

}  // namespace

void PageSink::Compose(PageCanvas& canvas) const {
    Hiding hiding(m_Width, m_Height);
    for (const Fill& fill : m_Fills)
        hiding.AddFacet({m_Places.data() + fill.first, fill.count});
    hiding.Resolve();
    const std::vector<Slice> slices = Slices(hiding);
    for (const Slice& slice : slices) {
        ComposeFills(canvas, hiding, slice.fills);
        ComposeSmooth(canvas, hiding, slice.fills);
        ComposePictures(canvas, hiding, slice.fills);
        ComposeVeils(canvas, hiding, slice.veils);
        ComposeLines(canvas, hiding, slice.segments);
    }
    for (const Strip& strip : m_Strips)
        ComposeStrip(canvas, hiding, strip);
    ComposeTexts(canvas, hiding);
}

/// What shows, in slices of depth from the back. Nothing overlaps but the widths of lines: a line
/// stands by its nearest end and a polygon by its farthest corner, so that a line covers the
/// polygons it lies on and is covered by those before it.
std::vector<PageSink::Slice> PageSink::Slices(const Hiding& hiding) const {
    std::map<long, Slice, std::greater<>> slices;
    const auto slice = [](double depth) { return std::lround(depth * kSlicesPerUnit); };
    for (std::uint32_t i = 0; i < m_Fills.size(); ++i) {
        if (hiding.Visible(i).empty()) continue;
        double farthest = m_Places[m_Fills[i].first].z;
        for (std::uint32_t k = 1; k < m_Fills[i].count; ++k)
            farthest = std::max(farthest, m_Places[m_Fills[i].first + k].z);
        slices[slice(farthest)].fills.push_back(i);
    }
    for (std::uint32_t i = 0; i < m_Segments.size(); ++i)
        slices[slice(std::min(m_Segments[i].a.z, m_Segments[i].b.z))].segments.push_back(i);
    for (std::uint32_t i = 0; i < m_Veils.size(); ++i)
        slices[slice(MeanDepth(m_Veils[i]))].veils.push_back(i);
    std::vector<Slice> ordered;
    for (auto& [depth, content] : slices)
        ordered.push_back(std::move(content));
    return ordered;
}

double PageSink::MeanDepth(const Fill& fill) const {
    double sum = 0.0;
    for (std::uint32_t i = 0; i < fill.count; ++i)
        sum += m_Places[fill.first + i].z;
    return sum / fill.count;
}

/// What can be seen through, from the back, over what stands behind it.
void PageSink::ComposeVeils(PageCanvas& canvas, Hiding& hiding,
                            std::vector<std::uint32_t> veils) const {
    std::ranges::stable_sort(veils, std::greater<>{},
                             [this](std::uint32_t i) { return MeanDepth(m_Veils[i]); });
    for (const std::uint32_t i : veils) {
        const Fill& veil = m_Veils[i];
        canvas.Fill(hiding.VisibleOf({m_Places.data() + veil.first, veil.count}), veil.color,
                    false);
    }
}

bool PageSink::IsPicture(std::uint32_t fill) const {
    return std::any_of(m_Pictures.begin(), m_Pictures.end(),
                       [fill](const Picture& picture) { return picture.fill == fill; });
}

void PageSink::ComposeFills(PageCanvas& canvas, const Hiding& hiding,
                            const std::vector<std::uint32_t>& fills) const {
    std::map<std::uint32_t, std::vector<Area>> byColor;
    std::vector<std::pair<std::uint32_t, RGBDType>> order;
    for (const std::uint32_t i : fills) {
        if (IsPicture(i) || m_Fills[i].smooth >= 0) continue;
        const std::uint32_t key = ColorKey(m_Fills[i].color);
        std::vector<Area>& areas = byColor[key];
        if (areas.empty()) order.emplace_back(key, m_Fills[i].color);
        areas.push_back(hiding.Visible(i));
    }
    for (const auto& [key, color] : order)
        canvas.Fill(Union(byColor[key]), color, true);
}

/// Triangles that show whole go together; others are cut to what shows.
void PageSink::ComposeSmooth(PageCanvas& canvas, const Hiding& hiding,
                             const std::vector<std::uint32_t>& fills) const {
    std::vector<SmoothTriangle> whole;
    for (const std::uint32_t i : fills) {
        if (m_Fills[i].smooth < 0) continue;
        const SmoothTriangle& triangle = m_Smooth[static_cast<std::size_t>(m_Fills[i].smooth)];
        const Area& visible = hiding.Visible(i);
        const Area all = {{triangle.corners.begin(), triangle.corners.end()}};
        if (SizeOf(visible) >= (1.0 - kHardlyHidden) * SizeOf(all)) {
            whole.push_back(triangle);
            continue;
        }
        canvas.BeginClip(visible);
        canvas.FillSmooth({triangle});
        canvas.EndClip();
    }
    canvas.FillSmooth(whole);
}

void PageSink::ComposePictures(PageCanvas& canvas, const Hiding& hiding,
                               const std::vector<std::uint32_t>& fills) const {
    for (const Picture& picture : m_Pictures) {
        if (!std::binary_search(fills.begin(), fills.end(),
                                static_cast<std::uint32_t>(picture.fill)))
            continue;
        canvas.BeginClip(hiding.Visible(picture.fill));
        canvas.Picture(picture.picture);
        canvas.EndClip();
    }
}

void PageSink::ComposeLines(PageCanvas& canvas, Hiding& hiding,
                            const std::vector<std::uint32_t>& segments) const {
    // From the back, and of lines at one depth in the order of drawing, since of lines at one place
    // the nearest is seen, and then the last one. What looks the same and follows each other is one
    // path.
    std::vector<std::uint32_t> order = segments;
    const auto depth = [this](std::uint32_t i) {
        return std::lround((m_Segments[i].a.z + m_Segments[i].b.z) * 0.5e4);
    };
    std::stable_sort(order.begin(), order.end(),
                     [&depth](std::uint32_t s, std::uint32_t t) { return depth(s) > depth(t); });
    LineChains chains;
    const Segment* style = nullptr;
    const auto finish = [&] {
        if (!chains.IsEmpty())
            canvas.Stroke(chains.Take(true), {style->color, static_cast<double>(style->width), {}});
    };
    std::vector<SegmentPart> parts;
    for (const std::uint32_t i : order) {
        const Segment& segment = m_Segments[i];
        hiding.VisibleParts(segment.a, segment.b, parts);
        if (parts.empty()) continue;
        if (style != nullptr &&
            (ColorKey(style->color) != ColorKey(segment.color) || style->width != segment.width))
            finish();
        style = &segment;
        for (const SegmentPart& part : parts)
            chains.Add(ToGrid(Along(segment.a, segment.b, part.from)),
                       ToGrid(Along(segment.a, segment.b, part.to)));
    }
    finish();
}

void PageSink::ComposeStrip(PageCanvas& canvas, Hiding& hiding, const Strip& strip) const {
    const std::vector<double> dashes = Dashes(strip.pattern, strip.repeat);
    double period = 0.0;
    for (const double length : dashes)
        period += length;
    LineChains whole;
    LineChains marks;
    bool hidden = false;
    double start = 0.0;
    std::vector<SegmentPart> parts;
    for (std::size_t i = 0; i + 1 < strip.places.size(); ++i) {
        const Vec3& a = strip.places[i];
        const Vec3& b = strip.places[i + 1];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        if (!(length > 0.0)) continue;
        hiding.VisibleParts(a, b, parts);
        hidden = hidden || parts.size() != 1 || parts[0].from > 0.0 || parts[0].to < 1.0;
        whole.Add(ToGrid(a), ToGrid(b));
        // Each mark by itself, cut to the parts that show, for lines that show in parts only.
        double at = start - std::fmod(start, period);
        for (std::size_t k = 0; at < start + length; k = (k + 1) % dashes.size()) {
            const double from = std::max(at, start);
            const double to = std::min(at + dashes[k], start + length);
            at += dashes[k];
            if (k % 2 != 0 || from >= to) continue;
            for (const SegmentPart& part : parts) {
                const double s = std::max((from - start) / length, part.from);
                const double t = std::min((to - start) / length, part.to);
                if (s < t) marks.Add(ToGrid(Along(a, b, s)), ToGrid(Along(a, b, t)));
            }
        }
        start += length;
    }
    const PageStroke solid{strip.color, static_cast<double>(strip.width), {}};
    if (hidden)
        canvas.Stroke(marks.Take(false), solid);
    else
        canvas.Stroke(whole.Take(false), {solid.color, solid.width, dashes});
}

void PageSink::ComposeTexts(PageCanvas& canvas, Hiding& hiding) const {
    for (const Text& text : m_Texts) {
        const Area visible = hiding.VisibleOf(text.outline);
        if (visible.empty()) continue;
        const bool cut = SizeOf(visible) < (1.0 - kHardlyHidden) * SizeOf(text.outline);
        if (cut) canvas.BeginClip(visible);
        canvas.Text(text.text);
        if (cut) canvas.EndClip();
    }
}

}  // namespace varnel::detail
