#include "varnel/axes/detail/axes_layout.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "varnel/render/detail/text_measure.h"

namespace varnel::detail {
namespace {

constexpr double kEdgeOn = 1e-6;          // sine of the angle below which a face is seen edge-on
constexpr double kKeepFace = 0.02;        // and below which a former choice is kept
constexpr double kKeepEdge = 0.15;        // how much worse a former edge may be
constexpr double kLabelGap = 0.35;        // ems between tics and labels
constexpr double kTitleGap = 0.5;         // label heights between labels and title
constexpr double kBeside = 0.5;           // ems between labels side by side
constexpr double kAbove = 0.15;           // and one above the other
constexpr double kShortestNumbers = 2.0;  // label heights that an axis takes to say something
constexpr double kShortestNames = 1.0;
constexpr double kCapHeight = 0.73;  // of capitals, in ems
constexpr double kSteep = 1.0;       // slope from which a title is turned
constexpr int kOtherAxes[3][2] = {{1, 2}, {0, 2}, {0, 1}};

double Length(PixelPoint p) {
    return std::hypot(p.x, p.y);
}

/// How well something stands in a direction: below is best, left is better than right.
double Liking(PixelPoint direction) {
    return -0.45 * direction.x - 0.9 * direction.y;
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
        }
        const double wall = edge[other] ? content[other].wallAtMax : content[other].wallAtMin;
        if (edge[other] == choice.back[other]) placed.reach = std::max(placed.reach, reach * wall);
    }
    if (content[axis].hasLine)
        placed.reach = std::max(placed.reach, best * content[axis].ticLength);
    return placed;
}

PixelBox BoxAround(PixelPoint centre, double width, double height) {
    return {centre.x - width / 2, centre.y - height / 2, centre.x + width / 2,
            centre.y + height / 2};
}

/// How a row of labels is written.
struct RowStyle {
    double size = 1.0;
    int rotation = 0;
    bool wrapped = false;
    int stride = 1;
};

/// The lines of a text; of a single one, if it is to be wrapped, two of lengths as even as its
/// spaces allow.
std::vector<CString> Lines(const CString& text, bool wrapped) {
    const std::size_t end = text.find('\n');
    if (end != CString::npos) return {text.substr(0, end), text.substr(end + 1)};
    if (!wrapped) return {text};
    std::size_t best = CString::npos;
    const auto unevenness = [&](std::size_t at) {
        return std::abs(static_cast<double>(at) * 2.0 - static_cast<double>(text.size()));
    };
    for (std::size_t at = text.find(' '); at != CString::npos; at = text.find(' ', at + 1))
        if (best == CString::npos || unevenness(at) < unevenness(best)) best = at;
    if (best == CString::npos) return {text};
    return {text.substr(0, best), text.substr(best + 1)};
}

/// The labels of one axis.
class LabelRow {
 public:
    LabelRow(const PlacedAxis& axis, int number, const AxisContent& content,
             const TextMeasure& measure)
        : m_Axis(axis), m_Number(number), m_Content(content) {
        for (const CString& text : content.texts)
            for (const CString& line : Lines(text, false)) {
                m_Ascent = std::max(m_Ascent, measure(line).ascent);
                m_Descent = std::max(m_Descent, measure(line).descent);
            }
        for (const bool wrapped : {false, true})
            for (const CString& text : content.texts) {
                Label label;
                for (const CString& line : Lines(text, wrapped)) {
                    label.lines.push_back(line);
                    label.widths.push_back(measure(line).width);
                }
                label.width = *std::max_element(label.widths.begin(), label.widths.end());
                m_Labels[wrapped ? 1 : 0].push_back(std::move(label));
            }
    }

    /// The first style in which no two labels touch.
    RowStyle ChooseStyle() const {
        const PixelPoint along = m_Axis.to - m_Axis.from;
        const bool lying = std::abs(along.x) > std::abs(along.y);
        std::vector<RowStyle> styles = {{}};
        if (m_Content.named) {
            for (const double size : {0.85, 0.7})
                styles.push_back({size, 0, false, 1});
            for (const double size : {1.0, 0.85, 0.7})
                if (lying) styles.push_back({size, 0, true, 1});
            for (const double size : {1.0, 0.85, 0.7})
                if (lying) styles.push_back({size, 90, false, 1});
        }
        const bool turn = m_Content.named && lying;
        const int count = static_cast<int>(m_Content.texts.size());
        for (int decade = 1; decade < count; decade *= 10)
            for (const int factor : {2, 3, 5, 10})
                styles.push_back(
                    {m_Content.named ? 0.7 : 1.0, turn ? 90 : 0, false, factor * decade});
        for (const RowStyle& style : styles)
            if (Fits(style)) return style;
        RowStyle one = styles.back();
        one.stride = std::max(count, 1);
        return one;
    }

    /// The texts of the labels that a style keeps, for each label one or two.
    std::vector<std::vector<PlacedText>> Place(const RowStyle& style) const {
        std::vector<std::vector<PlacedText>> row;
        for (int i = 0; i < static_cast<int>(m_Content.texts.size()); ++i)
            if (IsKept(style, i) && !m_Content.texts[static_cast<std::size_t>(i)].empty())
                row.push_back(PlaceLabel(style, i));
        return row;
    }

 private:
    struct Label {
        std::vector<CString> lines;
        std::vector<double> widths;
        double width = 0.0;  ///< of the longest, in ems
    };

    bool IsKept(const RowStyle& style, int i) const {
        return std::abs(i - m_Content.kept) % style.stride == 0;
    }

    const Label& LabelOf(const RowStyle& style, int i) const {
        return m_Labels[style.wrapped ? 1 : 0][static_cast<std::size_t>(i)];
    }

    PixelBox BoxOf(const RowStyle& style, int i) const {
        const double em = m_Content.labelEm * style.size;
        const Label& label = LabelOf(style, i);
        const auto more = static_cast<double>(label.lines.size() - 1);
        double width = label.width * em;
        double height = (m_Ascent + m_Descent + more * kLineSpacing) * em;
        if (style.rotation != 0) std::swap(width, height);
        const PixelPoint& n = m_Axis.outward;
        const double support = (std::abs(n.x) * width + std::abs(n.y) * height) / 2;
        const double distance = m_Axis.reach + kLabelGap * m_Content.labelEm + support;
        const double place = m_Content.places[static_cast<std::size_t>(i)];
        const PixelPoint at = m_Axis.from + place * (m_Axis.to - m_Axis.from);
        return BoxAround(at + distance * n, width, height);
    }

    bool Fits(const RowStyle& style) const {
        const double em = m_Content.labelEm * style.size;
        // Turned names are lines above each other that lie on their sides.
        const double beside = (style.rotation != 0 ? kAbove : kBeside) * em;
        const double above = (style.rotation != 0 ? kBeside : kAbove) * em;
        std::optional<PixelBox> last;
        for (int i = 0; i < static_cast<int>(m_Content.texts.size()); ++i) {
            if (!IsKept(style, i) || m_Content.texts[static_cast<std::size_t>(i)].empty()) continue;
            const PixelBox box = BoxOf(style, i);
            if (last && box.Touches(*last, beside, above)) return false;
            last = box;
        }
        return true;
    }

    std::vector<PlacedText> PlaceLabel(const RowStyle& style, int i) const {
        const double em = m_Content.labelEm * style.size;
        const PixelBox box = BoxOf(style, i);
        const Label& label = LabelOf(style, i);
        std::vector<PlacedText> texts;
        for (std::size_t line = 0; line < label.lines.size(); ++line) {
            PlacedText text;
            text.axis = m_Number;
            text.index = i;
            text.text = label.lines[line];
            text.em = em;
            text.rotation = style.rotation;
            const double width = label.widths[line] * em;
            if (style.rotation == 0) {
                const double top = box.top - static_cast<double>(line) * kLineSpacing * em;
                const double left = (box.left + box.right - width) / 2;
                text.start = {left, top - m_Ascent * em};
                text.box = {left, top - (m_Ascent + m_Descent) * em, left + width, top};
            } else {
                text.start = {box.left + m_Ascent * em, box.bottom};
                text.box = box;
            }
            texts.push_back(text);
        }
        return texts;
    }

    const PlacedAxis& m_Axis;
    int m_Number;
    const AxisContent& m_Content;
    std::vector<Label> m_Labels[2];  // in one line, and wrapped
    double m_Ascent = 0.0;
    double m_Descent = 0.0;
};

/// Places the rows and titles of all axes among each other.
class TextPlacement {
 public:
    TextPlacement(const AxisContent (&content)[3], const TextMeasure& measure, AxesPlacement& out)
        : m_Content(content), m_Measure(measure), m_Out(out) {}

    void PlaceLabels(int axis) {
        const PlacedAxis& placed = m_Out.axes[axis];
        const LabelRow row(placed, axis, m_Content[axis], m_Measure);
        m_Reach[axis] = placed.reach;
        const double em = m_Content[axis].labelEm;
        for (const std::vector<PlacedText>& label : row.Place(row.ChooseStyle())) {
            // At a corner the last label of one axis may come too close to one of another.
            const bool free = std::none_of(label.begin(), label.end(), [&](const PlacedText& line) {
                return IsTaken(line.box, axis, kBeside * em, kAbove * em);
            });
            if (!free) continue;
            for (const PlacedText& line : label) {
                m_Reach[axis] = std::max(m_Reach[axis], Farthest(placed, line.box));
                m_Out.texts.push_back(line);
            }
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
        title.em = content.titleEm;
        title.rotation = turned ? 90 : 0;
        double width = extent.width * title.em;
        double height = (extent.ascent + extent.descent) * title.em;
        if (turned) std::swap(width, height);
        const PixelPoint& n = placed.outward;
        const double support = (std::abs(n.x) * width + std::abs(n.y) * height) / 2;
        const double distance = m_Reach[axis] + kTitleGap * content.labelEm + support;
        title.box = FreeBox(axis, placed, distance, width, height);
        title.start =
            turned ? PixelPoint{title.box.left + extent.ascent * title.em, title.box.bottom}
                   : PixelPoint{title.box.left, title.box.bottom + extent.descent * title.em};
        // Where there is no free place at all, the title matters more than a label.
        std::erase_if(m_Out.texts, [&](const PlacedText& other) {
            return !other.isTitle && other.box.Touches(title.box, 0.0, 0.0);
        });
        m_Out.texts.push_back(title);
    }

 private:
    static double Farthest(const PlacedAxis& axis, const PixelBox& box) {
        const PixelPoint& n = axis.outward;
        const double x = n.x > 0.0 ? box.right : box.left;
        const double y = n.y > 0.0 ? box.top : box.bottom;
        return Dot(PixelPoint{x, y} - axis.from, n);
    }

    bool IsTaken(const PixelBox& box, int axis, double beside, double above) const {
        return std::any_of(m_Out.texts.begin(), m_Out.texts.end(), [&](const PlacedText& other) {
            return other.axis != axis && other.box.Touches(box, beside, above);
        });
    }

    /// A box that no other axis needs: at the middle of the axis or beside it, or farther out.
    PixelBox FreeBox(int axis, const PlacedAxis& placed, double distance, double width,
                     double height) const {
        const double em = m_Content[axis].titleEm;
        const PixelPoint along = placed.to - placed.from;
        for (int step = 0; step <= 10; ++step)
            for (const double place : {0.5, 0.4, 0.6, 0.3, 0.7}) {
                const PixelPoint at =
                    placed.from + place * along + (distance + 0.5 * step * em) * placed.outward;
                const PixelBox box = BoxAround(at, width, height);
                if (!IsTaken(box, axis, kTitleGap * em, kTitleGap * em)) return box;
            }
        return BoxAround(placed.from + 0.5 * along + distance * placed.outward, width, height);
    }

    const AxisContent (&m_Content)[3];
    const TextMeasure& m_Measure;
    AxesPlacement& m_Out;
    double m_Reach[3] = {};
};

void Include(PixelBox& box, const PixelBox& other) {
    box.left = std::min(box.left, other.left);
    box.bottom = std::min(box.bottom, other.bottom);
    box.right = std::max(box.right, other.right);
    box.top = std::max(box.top, other.top);
}

/// What the box with its walls, tics and texts covers.
PixelBox BoundsOf(const BoxView& view, const AxisContent (&content)[3],
                  const AxesPlacement& placement) {
    constexpr double kFar = 1e300;
    PixelBox bounds = {kFar, kFar, -kFar, -kFar};
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
    TextPlacement texts(content, measure, out);
    for (int axis = 0; axis < 3; ++axis)
        if (out.axes[axis].shown) texts.PlaceLabels(axis);
    for (int axis = 0; axis < 3; ++axis)
        if (out.axes[axis].shown) texts.PlaceTitle(axis);
    out.bounds = BoundsOf(view, content, out);
    return out;
}

}  // namespace varnel::detail
