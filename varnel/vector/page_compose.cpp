// PageSink: what shows, put onto a canvas.
#include <algorithm>
#include <cmath>
#include <map>

#include "varnel/vector/detail/areas.h"
#include "varnel/vector/detail/line_chains.h"
#include "varnel/vector/detail/page_sink.h"

namespace varnel::detail {
namespace {

/// Texts of which less than this share is hidden are drawn whole.
constexpr double kHardlyHidden = 0.005;

GridPoint ToGrid(const Vec3& p) {
    return {static_cast<std::int32_t>(std::lround(p.x * kGridPerPixel)),
            static_cast<std::int32_t>(std::lround(p.y * kGridPerPixel))};
}

Vec3 Along(const Vec3& a, const Vec3& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// A colour as its 24 bits, by which what looks the same is put together.
std::uint32_t ColorKey(const RGBDType& c) {
    const auto level = [](double v) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
    };
    return level(c.r) << 16U | level(c.g) << 8U | level(c.b);
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
    ComposeFills(canvas, hiding);
    ComposePictures(canvas, hiding);
    ComposeLines(canvas, hiding);
    for (const Strip& strip : m_Strips)
        ComposeStrip(canvas, hiding, strip);
    ComposeTexts(canvas, hiding);
}

void PageSink::ComposeFills(PageCanvas& canvas, Hiding& hiding) const {
    std::map<std::uint32_t, std::vector<Area>> byColor;
    std::vector<std::pair<std::uint32_t, RGBDType>> order;
    std::size_t picture = 0;
    for (std::size_t i = 0; i < m_Fills.size(); ++i) {
        while (picture < m_Pictures.size() && m_Pictures[picture].fill < i)
            ++picture;
        if (picture < m_Pictures.size() && m_Pictures[picture].fill == i) continue;
        if (hiding.Visible(i).empty()) continue;
        const std::uint32_t key = ColorKey(m_Fills[i].color);
        std::vector<Area>& areas = byColor[key];
        if (areas.empty()) order.emplace_back(key, m_Fills[i].color);
        areas.push_back(hiding.Visible(i));
    }
    for (const auto& [key, color] : order)
        canvas.Fill(Union(byColor[key]), color, true);
}

void PageSink::ComposePictures(PageCanvas& canvas, Hiding& hiding) const {
    for (const Picture& picture : m_Pictures) {
        if (hiding.Visible(picture.fill).empty()) continue;
        canvas.BeginClip(hiding.Visible(picture.fill));
        canvas.Picture(picture.picture);
        canvas.EndClip();
    }
}

void PageSink::ComposeLines(PageCanvas& canvas, Hiding& hiding) const {
    // From the back, and of lines at one depth in the order of drawing, since of lines at one place
    // the nearest is seen, and then the last one. What looks the same and follows each other is one
    // path.
    std::vector<const Segment*> order;
    for (const Segment& segment : m_Segments)
        order.push_back(&segment);
    const auto depth = [](const Segment* s) { return std::lround((s->a.z + s->b.z) * 0.5e4); };
    std::stable_sort(order.begin(), order.end(),
                     [&depth](const Segment* s, const Segment* t) { return depth(s) > depth(t); });
    LineChains chains;
    const Segment* style = nullptr;
    const auto finish = [&] {
        if (!chains.IsEmpty())
            canvas.Stroke(chains.Take(true), {style->color, static_cast<double>(style->width), {}});
    };
    std::vector<SegmentPart> parts;
    for (const Segment* const at : order) {
        const Segment& segment = *at;
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
