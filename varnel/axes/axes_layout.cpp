#include "varnel/axes/detail/axes_layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "varnel/axes/detail/label_row.h"

namespace varnel::detail {
namespace {

constexpr double kEdgeOn = 1e-6;       // sine of the angle below which a face is seen edge-on
constexpr double kKeepFace = 0.02;     // and below which a former choice is kept
constexpr double kKeepEdge = 0.05;     // how much worse a former edge may be
constexpr double kMostOfFrame = 0.92;  // that a title takes along its line
constexpr double kLongestTic = 0.06;   // of the edge along which it points
constexpr double kShortestNames = 1.0;
constexpr double kSteep = 1.0;       // slope from which a title is turned
constexpr double kAxesBeside = 1.0;  // ems between labels of two axes
constexpr int kOtherAxes[3][2] = {{1, 2}, {0, 2}, {0, 1}};

void Include(PixelBox& box, const PixelBox& other) {
    box.left = std::min(box.left, other.left);
    box.bottom = std::min(box.bottom, other.bottom);
    box.right = std::max(box.right, other.right);
    box.top = std::max(box.top, other.top);
}

double Length(PixelPoint p) {
    return std::hypot(p.x, p.y);
}

/// How well something stands in a direction: below is best, and left is better than right for what
/// stands as high.
double Liking(PixelPoint direction) {
    return -0.09 * direction.x - 0.9 * direction.y;
}

/// The sine of the angle between an edge and the image; positive when its maximum is farther away.
double Depth(const BoxView& view, int axis) {
    const Vec3& e = view.edges[axis];
    const double length = std::sqrt(Dot(e, e));
    return length > 0.0 ? e.z / length : 0.0;
}

void ChooseFaces(const BoxView& view, const AxesChoice* former, AxesChoice& choice) {
    for (int axis = 0; axis < 3; ++axis) {
        const double depth = Depth(view, axis);
        if (std::abs(depth) < kEdgeOn)
            choice.back[axis] = Liking(view.EdgeInPixels(axis)) > 0.0;
        else if (former != nullptr && std::abs(depth) < kKeepFace)
            choice.back[axis] = former->back[axis];
        else
            choice.back[axis] = depth > 0.0;
    }
}

/// From the middle of the box to the middle of an edge, in pixels.
PixelPoint ToEdge(const BoxView& view, int axis, const BoxEnds& edge) {
    PixelPoint offset;
    for (const int other : kOtherAxes[axis])
        offset = offset + (edge[other] ? 0.5 : -0.5) * view.EdgeInPixels(other);
    return offset;
}

/// The direction of length 1 in which an edge looks away from the box; below where there is none.
PixelPoint Outward(const BoxView& view, int axis, const BoxEnds& edge) {
    const PixelPoint along = view.EdgeInPixels(axis);
    PixelPoint out = ToEdge(view, axis, edge);
    const double squared = Dot(along, along);
    if (squared > 0.0) out = out - (Dot(out, along) / squared) * along;
    const double length = Length(out);
    if (length < 1e-9) return {0.0, -1.0};
    return (1.0 / length) * out;
}

void ChooseEdge(const BoxView& view, int axis, const AxesChoice* former, AxesChoice& choice) {
    const int first = kOtherAxes[axis][0];
    const int second = kOtherAxes[axis][1];
    BoxEnds candidates[2] = {};
    for (int i = 0; i < 2; ++i) {
        candidates[i][first] = (i == 0) == choice.back[first];
        candidates[i][second] = (i == 1) == choice.back[second];
    }
    // The two lie opposite each other, so that one is as good as the other is bad.
    int best = Liking(Outward(view, axis, candidates[0])) > 0.0 ? 0 : 1;
    if (former != nullptr) {
        const BoxEnds& kept = former->edges[axis];
        for (int i = 0; i < 2; ++i)
            if (candidates[i][first] == kept[first] && candidates[i][second] == kept[second] &&
                Liking(Outward(view, axis, candidates[i])) > -kKeepEdge)
                best = i;
    }
    std::copy(std::begin(candidates[best]), std::end(candidates[best]), choice.edges[axis]);
}

/// The two ends of an edge along an axis.
struct EdgeLine {
    PixelPoint from;
    PixelPoint to;
};

EdgeLine LineOf(const BoxView& view, int axis, const BoxEnds& edge) {
    BoxEnds ends = {edge[0], edge[1], edge[2]};
    ends[axis] = false;
    const PixelPoint from = view.ToPixel(view.Corner(ends));
    return {from, from + view.EdgeInPixels(axis)};
}

/// Of major tics along an edge of so many pixels, as a fraction of it.
double TicLength(const AxisContent& content, double edge) {
    if (!(content.ticHeight > 0.0)) return content.ticLength;
    return std::min(content.ticHeight * content.labelEm / std::max(edge, 1.0), kLongestTic);
}

PlacedAxis PlaceLine(const BoxView& view, const AxisContent (&content)[3], int axis,
                     const AxesChoice& choice) {
    const BoxEnds& edge = choice.edges[axis];
    PlacedAxis placed;
    const EdgeLine line = LineOf(view, axis, edge);
    placed.from = line.from;
    placed.to = line.to;
    placed.outward = Outward(view, axis, edge);
    double best = -1.0;
    for (const int other : kOtherAxes[axis]) {
        const PixelPoint out = (edge[other] ? 1.0 : -1.0) * view.EdgeInPixels(other);
        const double reach = Dot(out, placed.outward);
        // Tics lie in the plane of the face in which they are seen best.
        if (reach > best) {
            best = reach;
            placed.ticDirection = edge[other] ? other + 3 : other;
            placed.ticLength = TicLength(content[axis], Length(out));
        }
        const double wall = edge[other] ? content[other].wallAtMax : content[other].wallAtMin;
        if (edge[other] == choice.back[other]) placed.reach = std::max(placed.reach, reach * wall);
    }
    if (content[axis].hasLine) placed.reach = std::max(placed.reach, best * placed.ticLength);
    return placed;
}

constexpr PixelBox kNowhere = {1e300, 1e300, -1e300, -1e300};

/// Places the rows and titles of all axes among each other.
class TextPlacement {
 public:
    TextPlacement(const BoxView& view, const AxisContent (&content)[3], const TextMeasure& measure,
                  AxesPlacement& out)
        : m_View(view), m_Content(content), m_Measure(measure), m_Out(out) {}

    /// Names have one size, that of the row that has to shrink the most; numbers keep theirs.
    void PlaceLabels() {
        std::vector<LabelRow> rows;
        rows.reserve(3);
        for (int axis = 0; axis < 3; ++axis)
            if (m_Out.axes[axis].shown)
                rows.emplace_back(m_Out.axes[axis], axis, m_Content[axis], m_Measure,
                                  m_View.height / 3);
        double size = 1.0;
        std::vector<RowStyle> styles;
        for (const LabelRow& row : rows) {
            styles.push_back(row.ChooseStyle());
            size = std::min(size, styles.back().size);
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const bool shrinks = m_Content[rows[i].GetAxis()].named && styles[i].size > size;
            PlaceRow(rows[i], shrinks ? rows[i].ChooseStyle(size) : styles[i]);
        }
    }

    void PlaceTitle(int axis) {
        const AxisContent& content = m_Content[axis];
        if (content.title.empty()) return;
        const PlacedAxis& placed = m_Out.axes[axis];
        const TextExtent extent = m_Measure(content.title);
        const PixelPoint along = placed.to - placed.from;
        const bool turned = std::abs(along.y) > kSteep * std::abs(along.x);
        PlacedText title;
        title.axis = axis;
        title.isTitle = true;
        title.text = content.title;
        // One that is longer than the frame is written smaller.
        const double room = kMostOfFrame * (turned ? m_View.height : m_View.width);
        title.em = std::min(content.titleEm, room / std::max(extent.width, 1e-9));
        title.rotation = turned ? 90 : 0;
        double width = extent.width * title.em;
        double height = (extent.ascent + extent.descent) * title.em;
        if (turned) std::swap(width, height);
        const PixelPoint& n = placed.outward;
        const double support = (std::abs(n.x) * width + std::abs(n.y) * height) / 2;
        const double distance = m_Reach[axis] + kTitleGap * content.labelEm + support;
        FindFreePlace(title, placed, distance, width, height);
        MoveIntoFrame(title, along);
        title.start =
            turned ? PixelPoint{title.box.left + extent.ascent * title.em, title.box.bottom}
                   : PixelPoint{title.box.left, title.box.bottom + extent.descent * title.em};
        // Where there is no free place at all, the title matters more than a label.
        std::erase_if(m_Out.texts, [&](const PlacedText& other) {
            return !other.isTitle && other.Touches(title, 0.0, 0.0);
        });
        Put(title);
    }

 private:
    void PlaceRow(const LabelRow& row, const RowStyle& style) {
        const int axis = row.GetAxis();
        const PlacedAxis& placed = m_Out.axes[axis];
        m_Reach[axis] = placed.reach;
        const double em = style.size * m_Content[axis].labelEm;
        for (const std::vector<PlacedText>& label : row.Place(style)) {
            // At a corner the last label of one axis may come too close to one of another: the two
            // must not read as one number.
            const bool free = std::none_of(label.begin(), label.end(), [&](const PlacedText& line) {
                return IsTaken(line, kAxesBeside * em, kLabelsAbove * em);
            });
            if (!free) continue;
            for (const PlacedText& line : label) {
                m_Reach[axis] = std::max(m_Reach[axis], Farthest(placed, line.box));
                Put(line);
            }
        }
    }

    static double Farthest(const PlacedAxis& axis, const PixelBox& box) {
        const PixelPoint& n = axis.outward;
        const double x = n.x > 0.0 ? box.right : box.left;
        const double y = n.y > 0.0 ? box.top : box.bottom;
        return Dot(PixelPoint{x, y} - axis.from, n);
    }

    void Put(const PlacedText& text) {
        m_Out.texts.push_back(text);
        Include(m_Covered[text.axis], text.box);
    }

    /// Whether a text of another axis is there. Most places are far from all of those, which one
    /// look at what they cover shows: thousands of labels would be compared with each other.
    bool IsTaken(const PlacedText& text, double beside, double above) const {
        bool near = false;
        for (int axis = 0; axis < 3; ++axis)
            near |= axis != text.axis && m_Covered[axis].Touches(text.box, beside, above);
        if (!near) return false;
        return std::any_of(m_Out.texts.begin(), m_Out.texts.end(), [&](const PlacedText& other) {
            return other.axis != text.axis && other.Touches(text, beside, above);
        });
    }

    /// A place that no other axis needs: at the middle of the axis or beside it, or farther out.
    void FindFreePlace(PlacedText& title, const PlacedAxis& placed, double distance, double width,
                       double height) const {
        const PixelPoint along = placed.to - placed.from;
        const auto put = [&](double place, double out) {
            title.box =
                BoxAround(placed.from + place * along + out * placed.outward, width, height);
            const PixelBox& b = title.box;
            title.shape = {
                {{b.left, b.bottom}, {b.right, b.bottom}, {b.right, b.top}, {b.left, b.top}}};
        };
        for (int step = 0; step <= 10; ++step)
            for (const double place : {0.5, 0.4, 0.6, 0.3, 0.7}) {
                put(place, distance + 0.5 * step * title.em);
                if (!IsTaken(title, kTitleGap * title.em, kTitleGap * title.em)) return;
            }
        put(0.5, distance);
    }

    /// While a chart is turned, a title may stick out of the frame a little: it is moved along its
    /// axis then.
    void MoveIntoFrame(PlacedText& title, PixelPoint along) const {
        constexpr double kFarthest = 1.5;  // ems
        const PixelBox& b = title.box;
        const double x = b.left < 0.0 ? -b.left : std::min(0.0, m_View.width - b.right);
        const double y = b.bottom < 0.0 ? -b.bottom : std::min(0.0, m_View.height - b.top);
        if ((x == 0.0 && y == 0.0) || std::max(std::abs(x), std::abs(y)) > kFarthest * title.em)
            return;
        const bool isSteep = std::abs(along.y) > std::abs(along.x);
        const double steps = isSteep ? y / along.y : x / along.x;
        if (std::isfinite(steps)) Shift(title, steps * along);
    }

    static void Shift(PlacedText& text, PixelPoint by) {
        text.box = {text.box.left + by.x, text.box.bottom + by.y, text.box.right + by.x,
                    text.box.top + by.y};
        for (PixelPoint& corner : text.shape.corners)
            corner = corner + by;
    }

    const BoxView& m_View;
    const AxisContent (&m_Content)[3];
    const TextMeasure& m_Measure;
    AxesPlacement& m_Out;
    double m_Reach[3] = {};
    PixelBox m_Covered[3] = {kNowhere, kNowhere, kNowhere};  ///< by the texts of an axis so far
};

/// What the box with its walls, tics and texts covers.
PixelBox BoundsOf(const BoxView& view, const AxisContent (&content)[3],
                  const AxesPlacement& placement) {
    PixelBox bounds = kNowhere;
    for (int corner = 0; corner < 8; ++corner) {
        Vec3 at = view.origin;
        for (int axis = 0; axis < 3; ++axis) {
            const bool atMax = (corner >> axis & 1) != 0;
            const double place =
                atMax ? 1.0 + (placement.choice.back[axis] ? content[axis].wallAtMax : 0.0)
                      : 0.0 - (placement.choice.back[axis] ? 0.0 : content[axis].wallAtMin);
            const Vec3& e = view.edges[axis];
            at = {at.x + place * e.x, at.y + place * e.y, at.z + place * e.z};
        }
        Include(bounds, BoxAround(view.ToPixel(at), 0.0, 0.0));
    }
    for (const PlacedAxis& axis : placement.axes)
        for (const PixelPoint& end : {axis.from, axis.to})
            Include(bounds, BoxAround(end + axis.reach * axis.outward, 0.0, 0.0));
    for (const PlacedText& text : placement.texts)
        Include(bounds, text.box);
    return bounds;
}

}  // namespace

PixelBox BoxAround(PixelPoint centre, double width, double height) {
    return {centre.x - width / 2, centre.y - height / 2, centre.x + width / 2,
            centre.y + height / 2};
}

PixelBox PixelQuad::Box() const {
    PixelBox box = BoxAround(corners[0], 0.0, 0.0);
    for (const PixelPoint& corner : corners)
        Include(box, BoxAround(corner, 0.0, 0.0));
    return box;
}

/// By the axes of both rectangles: where their shadows on one of them lie apart, so do they.
bool PixelQuad::Touches(const PixelQuad& other) const {
    const auto shadow = [](const PixelQuad& quad, PixelPoint axis) {
        double from = Dot(quad.corners[0], axis);
        double to = from;
        for (const PixelPoint& corner : quad.corners) {
            from = std::min(from, Dot(corner, axis));
            to = std::max(to, Dot(corner, axis));
        }
        return std::pair(from, to);
    };
    for (const PixelQuad* quad : {this, &other})
        for (const std::size_t end : {std::size_t{1}, std::size_t{3}}) {
            const PixelPoint edge = quad->corners[end] - quad->corners[0];
            const PixelPoint axis{-edge.y, edge.x};
            const auto [a, b] = shadow(*this, axis);
            const auto [c, d] = shadow(other, axis);
            if (b <= c || d <= a) return false;
        }
    return true;
}

Vec3 BoxView::Corner(const bool (&atMax)[3]) const {
    Vec3 at = origin;
    for (int axis = 0; axis < 3; ++axis)
        if (atMax[axis]) at = {at.x + edges[axis].x, at.y + edges[axis].y, at.z + edges[axis].z};
    return at;
}

AxesChoice ChooseFacesAndEdges(const BoxView& view, const AxesChoice* former) {
    if (former != nullptr && !former->isSet) former = nullptr;
    AxesChoice choice;
    choice.isSet = true;
    ChooseFaces(view, former, choice);
    for (int axis = 0; axis < 3; ++axis)
        ChooseEdge(view, axis, former, choice);
    return choice;
}

AxesPlacement PlaceAxes(const BoxView& view, const AxisContent (&content)[3],
                        const TextMeasure& measure, const AxesChoice* former) {
    AxesPlacement out;
    out.choice = ChooseFacesAndEdges(view, former);
    for (int axis = 0; axis < 3; ++axis) {
        PlacedAxis& placed = out.axes[axis];
        placed = PlaceLine(view, content, axis, out.choice);
        const double shortest = content[axis].named ? kShortestNames : kShortestNumbers;
        placed.shown =
            Length(placed.to - placed.from) >= shortest * content[axis].labelEm * kCapHeight;
    }
    TextPlacement texts(view, content, measure, out);
    texts.PlaceLabels();
    for (int axis = 0; axis < 3; ++axis)
        if (out.axes[axis].shown) texts.PlaceTitle(axis);
    out.bounds = BoundsOf(view, content, out);
    return out;
}

}  // namespace varnel::detail
