// PageSink: the lines that show, and the layers of the page, which lines make necessary.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "varnel/foundation/detail/progress.h"
#include "varnel/vector/detail/line_chains.h"
#include "varnel/vector/detail/page_sink.h"
#include "varnel/vector/detail/shades.h"

namespace varnel::detail {
namespace {

/// Slices into which a depth of 1 is cut; the box of a picture is 2 deep.
constexpr double kSlicesPerUnit = 32.0;

Vec3 Along(const Vec3& a, const Vec3& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// Of the styles of lines with dashes, and of those whose joins are cut off.
constexpr std::uint64_t kDashed = std::uint64_t{1} << 31U;
constexpr std::uint64_t kCutJoins = std::uint64_t{1} << 30U;

double LengthOf(const Vec3& a, const Vec3& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
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

long SliceAt(double depth) {
    return -std::lround(depth * kSlicesPerUnit);
}

}  // namespace

/// A polygon stands by its farthest corner, so that a line covers the polygons it lies on.
long PageSink::SliceOf(const Fill& fill) const {
    double farthest = m_Places[fill.first].z;
    for (std::uint32_t k = 1; k < fill.count; ++k)
        farthest = std::max(farthest, m_Places[fill.first + k].z);
    return SliceAt(farthest);
}

/// And a line by its nearest end.
long PageSink::SliceOf(const OrderedLine& line) {
    return SliceAt(std::min(line.a.z, line.b.z));
}

void PageSink::Visibility::Parts(const Vec3& a, const Vec3& b, std::size_t after,
                                 std::vector<SegmentPart>& parts) {
    hiding.VisibleParts(a, b, parts, after);
    for (const ObjectPicture& picture : pictures)
        picture.CutHidden(a, b, parts);
}

std::vector<OrderedLine> PageSink::VisibleLines(Visibility& visibility) const {
    std::vector<OrderedLine> lines;
    std::vector<SegmentPart> parts;
    double done = 0.0;
    for (const Segment& s : m_Segments) {
        Progress(done++, static_cast<double>(m_Segments.size()));
        if (IsLarge(s.object)) continue;
        visibility.Parts(s.a, s.b, s.after, parts);
        const std::uint64_t style =
            std::uint64_t{ColorKey(s.color)} << 32U | (s.cutJoins ? kCutJoins : 0) |
            static_cast<std::uint32_t>(std::lround(s.width * kGridPerPixel));
        for (const SegmentPart& part : parts)
            lines.push_back({Along(s.a, s.b, part.from), Along(s.a, s.b, part.to),
                             static_cast<double>(s.width), style});
    }
    for (const Strip& strip : m_Strips)
        AddVisible(visibility, strip, lines);
    return lines;
}

/// A line with dashes is in a style of its own, by its number.
void PageSink::AddVisible(Visibility& visibility, const Strip& strip,
                          std::vector<OrderedLine>& lines) const {
    const auto number = static_cast<std::uint64_t>(&strip - m_Strips.data());
    const std::uint64_t style = std::uint64_t{ColorKey(strip.color)} << 32U | kDashed | number;
    double start = 0.0;
    std::vector<SegmentPart> parts;
    for (std::size_t i = 0; i + 1 < strip.places.size(); ++i) {
        ProgressStep();
        const Vec3& a = strip.places[i];
        const Vec3& b = strip.places[i + 1];
        const double length = LengthOf(a, b);
        if (!(length > 0.0)) continue;
        visibility.Parts(a, b, strip.after, parts);
        for (const SegmentPart& part : parts)
            lines.push_back({Along(a, b, part.from), Along(a, b, part.to),
                             static_cast<double>(strip.width), style, 0,
                             start + part.from * length});
        start += length;
    }
}

/// The slices of depth with which a layer begins, from the back. What shows of the polygons does
/// not overlap; but lines have a width. A line whose side is covered by a polygon before it must be
/// drawn before that one.
std::vector<long> PageSink::LayerStarts(Hiding& hiding,
                                        const std::vector<OrderedLine>& lines) const {
    std::vector<std::pair<long, long>>
        coverers;  // slices of a polygon and of a line that it covers
    std::vector<std::size_t> facets;
    for (const OrderedLine& line : lines) {
        hiding.Overlappers(line.a, line.b, line.width, facets);
        for (const std::size_t facet : facets)
            if (SliceOf(m_Fills[facet]) > SliceOf(line))
                coverers.emplace_back(SliceOf(m_Fills[facet]), SliceOf(line));
    }
    std::set<long> starts;
    // As few as do: each begins as late as the first pair that needs it allows.
    std::sort(coverers.begin(), coverers.end());
    for (const auto& [polygon, line] : coverers) {
        const auto next = starts.upper_bound(line);
        if (next == starts.end() || *next > polygon) starts.insert(polygon);
    }
    return {starts.begin(), starts.end()};
}

void PageSink::ComposeLines(PageCanvas& canvas, const std::vector<OrderedLine>& lines,
                            const std::vector<std::uint32_t>& order) const {
    std::vector<OrderedLine> run;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const OrderedLine& line = lines[order[i]];
        run.push_back(line);
        if (i + 1 < order.size() && lines[order[i + 1]].style == line.style) continue;
        if ((line.style & kDashed) != 0) {
            ComposeDashes(canvas, m_Strips[line.style & (kDashed - 1)], run);
        } else {
            LineChains chains;
            for (const OrderedLine& piece : run)
                chains.Add(ToGrid(piece.a), ToGrid(piece.b));
            const auto level = [&line](unsigned shift) {
                return static_cast<double>(line.style >> shift & 255U) / 255.0;
            };
            canvas.Stroke(chains.Take(true), {{level(48), level(40), level(32), level(56)},
                                              line.width,
                                              {},
                                              (line.style & kCutJoins) != 0});
        }
        run.clear();
    }
}

/// Draws again what of the lines, in the order of drawing, stands before a text, which is drawn
/// after them.
void PageSink::ComposeBefore(PageCanvas& canvas, const Text& text,
                             const std::vector<OrderedLine>& lines) const {
    constexpr double kBefore = 1e-4;
    const Vec3& corner = text.outline[0];
    const Vec3& right = text.outline[1];
    const Vec3& up = text.outline[3];
    const double ux = right.x - corner.x;
    const double uy = right.y - corner.y;
    const double vx = up.x - corner.x;
    const double vy = up.y - corner.y;
    const double turn = ux * vy - uy * vx;
    const double height = std::hypot(vx, vy);
    const double width = std::hypot(ux, uy);
    if (turn == 0.0 || text.text.places.empty()) return;
    const double halo = text.text.halo * std::hypot(text.text.placement[0], text.text.placement[1]);
    std::vector<OrderedLine> before;
    std::vector<std::uint32_t> order;
    for (const OrderedLine& line : lines) {
        if ((line.style >> 56U) < 255U) continue;  // once is enough of what can be seen through
        double from = 0.0;
        double to = 1.0;
        const auto cut = [&](double va, double vb) {
            if (va < 0.0 && vb < 0.0) to = -1.0;
            if ((va < 0.0) == (vb < 0.0)) return;
            (va < 0.0 ? from : to) =
                va < 0.0 ? std::max(from, va / (va - vb)) : std::min(to, va / (va - vb));
        };
        // Shares of the text's width and height, and how far it lies behind.
        const auto u = [&](const Vec3& p) {
            return ((p.x - corner.x) * vy - (p.y - corner.y) * vx) / turn;
        };
        const auto v = [&](const Vec3& p) {
            return (ux * (p.y - corner.y) - uy * (p.x - corner.x)) / turn;
        };
        const auto behind = [&](const Vec3& p) {
            return corner.z + u(p) * (right.z - corner.z) + v(p) * (up.z - corner.z) - p.z -
                   kBefore;
        };
        const double aside = line.width / 2.0 + halo;
        for (const double sign : {1.0, -1.0}) {
            const double rest = sign > 0.0 ? 0.0 : 1.0;
            cut(sign * u(line.a) + rest + aside / width, sign * u(line.b) + rest + aside / width);
            cut(sign * v(line.a) + rest + aside / height, sign * v(line.b) + rest + aside / height);
        }
        cut(behind(line.a), behind(line.b));
        if (from >= to) continue;
        order.push_back(static_cast<std::uint32_t>(before.size()));
        before.push_back({Along(line.a, line.b, from), Along(line.a, line.b, to), line.width,
                          line.style, 0, line.start + from * LengthOf(line.a, line.b)});
    }
    ComposeLines(canvas, before, order);
}

/// The parts of a line with dashes that are drawn together: one path where that is all of it, each
/// mark by itself else.
void PageSink::ComposeDashes(PageCanvas& canvas, const Strip& strip,
                             const std::vector<OrderedLine>& pieces) {
    constexpr double kSameLength = 0.01;
    const std::vector<double> dashes = Dashes(strip.pattern, strip.repeat);
    double period = 0.0;
    for (const double length : dashes)
        period += length;
    double whole = 0.0;
    for (std::size_t i = 0; i + 1 < strip.places.size(); ++i)
        whole += LengthOf(strip.places[i], strip.places[i + 1]);
    LineChains all;
    LineChains marks;
    double shown = 0.0;
    for (const OrderedLine& piece : pieces) {
        const double length = LengthOf(piece.a, piece.b);
        shown += length;
        all.Add(ToGrid(piece.a), ToGrid(piece.b));
        double at = piece.start - std::fmod(piece.start, period);
        for (std::size_t k = 0; at < piece.start + length; k = (k + 1) % dashes.size()) {
            const double from = std::max(at, piece.start) - piece.start;
            const double to = std::min(at + dashes[k], piece.start + length) - piece.start;
            at += dashes[k];
            if (k % 2 == 0 && from < to)
                marks.Add(ToGrid(Along(piece.a, piece.b, from / length)),
                          ToGrid(Along(piece.a, piece.b, to / length)));
        }
    }
    PageStroke stroke{strip.color, static_cast<double>(strip.width), {}, false};
    std::vector<Ring> path = all.Take(false);
    if (path.size() == 1 && std::fabs(shown - whole) < kSameLength) {
        stroke.dashes = dashes;
        canvas.Stroke(path, stroke);
    } else {
        canvas.Stroke(marks.Take(false), stroke);
    }
}

}  // namespace varnel::detail
