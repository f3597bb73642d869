#include "varnel/legend/detail/legend_layout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace varnel::detail {
namespace {

// In ems. Padding and gaps are measured from the tops of capitals and from baselines, which is what
// the eye sees as the edges of a text; samples and descenders reach a little beyond.
constexpr double kPadding = 0.75;
constexpr double kTitleGap = 0.75;  // below the title's descenders
constexpr double kBlockGap = 1.1;   // between the entries and the scale
constexpr double kRowPitch = 1.5;
constexpr double kSampleHeight = 1.2;
constexpr double kSampleGap = 0.5;
constexpr double kColumnGap = 1.4;
constexpr double kBarThickness = 1.1;
constexpr double kTicLength = 0.25;
constexpr double kTicGap = 0.3;
constexpr double kLeastVertical = 5.0;
constexpr double kLeastHorizontal = 8.0;
constexpr double kNoDataGap = 0.7;   // between a standing scale and the swatch below it
constexpr double kLabelGap = 0.45;   // between labels one above the other
constexpr double kLabelSpace = 0.8;  // between labels side by side

constexpr int kMostColumns = 64;

/// Entries in rows and columns.
struct Grid {
    int rows = 0;
    int columns = 0;
    bool across = false;             ///< row by row
    std::vector<double> textWidths;  ///< by column
    double width = 0.0;

    int RowOf(int entry) const { return across ? entry / columns : entry % rows; }
    int ColumnOf(int entry) const { return across ? entry % columns : entry / rows; }
};

int CeilDiv(int a, int b) {
    return (a + b - 1) / b;
}

double SampleSpace(const LegendContent& content) {
    return content.sampleWidth > 0.0 ? content.sampleWidth + kSampleGap : 0.0;
}

Grid MakeGrid(const LegendContent& content, int columns) {
    const int n = static_cast<int>(content.entries.size());
    Grid grid;
    if (n == 0) return grid;
    grid.across = content.columns > 0;
    grid.columns = std::clamp(columns, 1, n);
    grid.rows = CeilDiv(n, grid.columns);
    if (!grid.across) grid.columns = CeilDiv(n, grid.rows);
    grid.textWidths.assign(static_cast<std::size_t>(grid.columns), 0.0);
    for (int i = 0; i < n; ++i) {
        double& width = grid.textWidths[static_cast<std::size_t>(grid.ColumnOf(i))];
        width = std::max(width, content.entries[static_cast<std::size_t>(i)]);
    }
    grid.width = (grid.columns - 1) * kColumnGap + grid.columns * SampleSpace(content);
    for (double width : grid.textWidths)
        grid.width += width;
    return grid;
}

double WidestLabel(const LegendContent& content) {
    double widest = 0.0;
    for (const ScaleLabelSize& label : content.labels)
        widest = std::max(widest, label.width);
    return widest;
}

/// Width and height of the scale without its length: what stands beside it and beyond its ends.
struct ScaleFrame {
    double across = 0.0;
    double along = 0.0;
    double before = 0.0;  ///< as much of `along` lies before the low end
};

/// Of no data's swatch beside a lying scale, with its text below it.
double SwatchWidth(const LegendContent& content) {
    return std::max(kBarThickness, content.noDataWidth);
}

ScaleFrame FrameOfScale(const LegendContent& content) {
    if (!content.hasScale) return {};
    const bool texts = !content.labels.empty() || content.noData;
    const double widest = WidestLabel(content);
    ScaleFrame frame;
    frame.across = kBarThickness + (texts ? kTicLength + kTicGap : 0.0);
    // Labels at the ends of a vertical scale reach beyond it by half their height: into the
    // padding, where they find room, or into RoomAboveScale.
    if (texts)
        frame.across +=
            content.horizontal ? content.capHeight : std::max(widest, content.noDataWidth);
    if (content.horizontal) frame.before = widest / 2;
    if (content.noData)
        frame.before +=
            content.horizontal ? SwatchWidth(content) + kLabelSpace : kBarThickness + kNoDataGap;
    frame.along = frame.before + (content.horizontal ? widest / 2 : 0.0);
    return frame;
}

double LeastLength(const LegendContent& content) {
    if (!content.hasScale) return 0.0;
    return content.horizontal ? kLeastHorizontal : kLeastVertical;
}

/// Room above the scale for the half of its topmost label, where another part stands above.
double RoomAboveScale(const LegendContent& content) {
    const bool first = content.titleWidth <= 0.0 && content.entries.empty();
    const bool reaches = content.hasScale && !content.horizontal && !content.labels.empty();
    return reaches && !first ? content.capHeight / 2 : 0.0;
}

struct Size {
    double width = 0.0;
    double height = 0.0;
};

/// The box in ems, its scale as short as it may be.
Size NeededSize(const LegendContent& content, const Grid& grid) {
    const ScaleFrame frame = FrameOfScale(content);
    const double length = frame.along + LeastLength(content);
    Size size;
    size.width =
        std::max({content.titleWidth, grid.width, content.horizontal ? length : frame.across});
    const bool more = grid.rows > 0 || content.hasScale;
    if (content.titleWidth > 0.0) {
        size.height += content.capHeight * content.titleSize;
        if (more) size.height += content.descent * content.titleSize + kTitleGap;
    }
    if (grid.rows > 0) size.height += (grid.rows - 1) * kRowPitch + content.capHeight;
    if (grid.rows > 0 && content.hasScale) size.height += kBlockGap;
    if (content.hasScale)
        size.height += RoomAboveScale(content) + (content.horizontal ? frame.across : length);
    size.width += 2 * kPadding;
    size.height += 2 * kPadding;
    return size;
}

/// The factor on the wanted em with which a box of that size fits.
double FitFactor(const Size& size, const LegendLimits& limits) {
    return std::min(
        {1.0, limits.width / (size.width * limits.em), limits.height / (size.height * limits.em)});
}

Grid ChooseGrid(const LegendContent& content, const LegendLimits& limits) {
    const int n = static_cast<int>(content.entries.size());
    if (content.columns > 0) return MakeGrid(content, content.columns);
    if (content.rows > 0)
        return MakeGrid(content, CeilDiv(n, std::min(content.rows, std::max(n, 1))));
    Grid best = MakeGrid(content, 1);
    double bestFit = FitFactor(NeededSize(content, best), limits);
    for (int columns = 2; columns <= std::min(n, kMostColumns) && bestFit < 1.0; ++columns) {
        Grid grid = MakeGrid(content, columns);
        const double fit = FitFactor(NeededSize(content, grid), limits);
        if (fit <= bestFit) continue;
        bestFit = fit;
        best = std::move(grid);
    }
    return best;
}

/// Whether the labels of a scale of that length, in ems, keep clear of each other.
bool LabelsFit(const LegendContent& content, const std::vector<int>& numbers, double length) {
    for (std::size_t i = 1; i < numbers.size(); ++i) {
        const ScaleLabelSize& a = content.labels[static_cast<std::size_t>(numbers[i - 1])];
        const ScaleLabelSize& b = content.labels[static_cast<std::size_t>(numbers[i])];
        const double need =
            content.labelGap + (content.horizontal ? (a.width + b.width) / 2 + kLabelSpace
                                                   : content.capHeight + kLabelGap);
        if (!(std::abs(b.at - a.at) * length >= need)) return false;
    }
    return true;
}

/// The labels that have room: all, or those at the multiples of 2, 5, 10, 20, ... intervals.
std::vector<int> ChooseLabels(const LegendContent& content, double length) {
    std::vector<int> numbers;
    for (int decade = 1; decade <= 100000000; decade *= 10)
        for (const int factor : {1, 2, 5}) {
            numbers.clear();
            for (std::size_t i = 0; i < content.labels.size(); ++i)
                if (content.labels[i].index % (factor * decade) == 0)
                    numbers.push_back(static_cast<int>(i));
            if (LabelsFit(content, numbers, length)) {
                if (numbers.empty() && !content.labels.empty()) numbers.push_back(0);
                return numbers;
            }
        }
    return {0};
}

/// Puts the parts into the box, from the top down.
class Placement {
 public:
    Placement(const LegendContent& content, const Grid& grid, LegendLayout& out)
        : m_Content(content), m_Grid(grid), m_Out(out), m_Em(out.em) {}

    void Place(double top, double barLength) {
        m_Top = top;
        if (m_Content.titleWidth > 0.0) PlaceTitle();
        if (m_Grid.rows > 0) PlaceEntries();
        if (m_Grid.rows > 0) m_Top -= kBlockGap * m_Em;
        if (m_Content.hasScale) PlaceScale(barLength);
    }

 private:
    double Centred(double width) const { return (m_Out.width - width) / 2; }
    double Cap() const { return m_Content.capHeight * m_Em; }

    void PlaceTitle() {
        const double size = m_Content.titleSize;
        m_Top -= Cap() * size;
        m_Out.title = {Centred(m_Content.titleWidth * m_Em), std::round(m_Top)};
        m_Top -= (m_Content.descent * size + kTitleGap) * m_Em;
    }

    void PlaceEntries() {
        std::vector<double> left;  // of each column
        double x = Centred(m_Grid.width * m_Em);
        for (double width : m_Grid.textWidths) {
            left.push_back(x);
            x += (SampleSpace(m_Content) + width + kColumnGap) * m_Em;
        }
        const int n = static_cast<int>(m_Content.entries.size());
        for (int i = 0; i < n; ++i) {
            // Whole pixels, so that the samples of all rows lie alike beside their texts.
            const double baseline = std::round(m_Top - Cap() - m_Grid.RowOf(i) * kRowPitch * m_Em);
            const double at = left[static_cast<std::size_t>(m_Grid.ColumnOf(i))];
            const double height = kSampleHeight * m_Em;
            m_Out.entries.push_back(
                {{at, baseline + (Cap() - height) / 2, m_Content.sampleWidth * m_Em, height},
                 {at + SampleSpace(m_Content) * m_Em, baseline}});
        }
        m_Top -= (m_Grid.rows - 1) * kRowPitch * m_Em + Cap();
    }

    void PlaceScale(double length) {
        m_Top -= RoomAboveScale(m_Content) * m_Em;
        const ScaleFrame frame = FrameOfScale(m_Content);
        const double thickness = kBarThickness * m_Em;
        if (m_Content.horizontal)
            m_Out.bar = {Centred(length + frame.along * m_Em) + frame.before * m_Em,
                         m_Top - thickness, length, thickness};
        else
            m_Out.bar = {Centred(frame.across * m_Em), m_Top - length, thickness, length};
        m_Out.ticLength = m_Content.labels.empty() ? 0.0 : kTicLength * m_Em;
        if (m_Content.noData) PlaceNoData(frame.before * m_Em);
        for (int number : ChooseLabels(m_Content, length / m_Em))
            if (!m_Content.labels.empty()) PlaceLabel(number);
    }

    void PlaceNoData(double before) {
        const LegendRect& bar = m_Out.bar;
        const double away = (kTicLength + kTicGap) * m_Em;
        const double side = kBarThickness * m_Em;
        if (m_Content.horizontal) {
            const double middle = bar.x - before + SwatchWidth(m_Content) * m_Em / 2;
            m_Out.noData = {middle - side / 2, bar.y, side, side};
            m_Out.noDataText = {middle - m_Content.noDataWidth * m_Em / 2,
                                std::round(bar.y - away - Cap())};
        } else {
            m_Out.noData = {bar.x, bar.y - before, side, side};
            m_Out.noDataText = {bar.x + side + away,
                                std::round(bar.y - before + (side - Cap()) / 2)};
        }
    }

    void PlaceLabel(int number) {
        const ScaleLabelSize& label = m_Content.labels[static_cast<std::size_t>(number)];
        const LegendRect& bar = m_Out.bar;
        const double away = (kTicLength + kTicGap) * m_Em;
        if (m_Content.horizontal) {
            const double tic = bar.x + label.at * bar.width;
            m_Out.labels.push_back(
                {number, tic, {tic - label.width * m_Em / 2, std::round(bar.y - away - Cap())}});
        } else {
            const double tic = bar.y + label.at * bar.height;
            m_Out.labels.push_back(
                {number, tic, {bar.x + bar.width + away, std::round(tic - Cap() / 2)}});
        }
    }

    const LegendContent& m_Content;
    const Grid& m_Grid;
    LegendLayout& m_Out;
    double m_Em;
    double m_Top = 0.0;
};

}  // namespace

LegendLayout LayoutLegend(const LegendContent& content, const LegendLimits& limits) {
    const Grid grid = ChooseGrid(content, limits);
    const Size needed = NeededSize(content, grid);
    LegendLayout out;
    out.em = limits.em * FitFactor(needed, limits);
    Size box{needed.width * out.em, needed.height * out.em};

    // A scale is as long as wanted where there is room, and fills a box of fixed size.
    const double least = LeastLength(content) * out.em;
    double length = least;
    if (content.hasScale) {
        const bool across = content.horizontal;
        const double beside =
            across ? (2 * kPadding + FrameOfScale(content).along) * out.em : box.height - least;
        const double most = std::max((across ? limits.width : limits.height) - beside, least);
        const bool fills = across ? limits.fixedWidth : limits.fixedHeight;
        length = fills ? most : std::clamp(content.scaleLength, least, most);
        double& side = across ? box.width : box.height;
        side = std::max(side, beside + length);
    }
    const auto whole = [](double need, double limit, bool fixed) {
        return fixed ? limit : std::min(std::ceil(need - 1e-6), limit);
    };
    out.width = whole(box.width, limits.width, limits.fixedWidth);
    out.height = whole(box.height, limits.height, limits.fixedHeight);
    const double top = (out.height + box.height) / 2 - kPadding * out.em;
    Placement(content, grid, out).Place(top, length);
    return out;
}

LegendLayout LayoutLegendAcross(LegendContent content, const LegendLimits& limits) {
    LegendLayout layout;
    for (content.columns = std::max(static_cast<int>(content.entries.size()), 1);
         content.columns >= 1; --content.columns) {
        LegendLayout next = LayoutLegend(content, limits);
        if (next.em > layout.em) layout = std::move(next);
        if (layout.em >= limits.em) break;
    }
    return layout;
}

LegendRect LeastCovered(std::span<const point3Dtype> data, const LegendRect& area, double width,
                        double height, double margin, std::ptrdiff_t* hidden) {
    constexpr double kPlaces[8][2] = {{1, 1},   {0, 1},   {1, 0},   {0, 0},
                                      {1, 0.5}, {0, 0.5}, {0.5, 1}, {0.5, 0}};
    LegendRect best;
    std::ptrdiff_t fewest = -1;
    for (const auto& [across, up] : kPlaces) {
        const LegendRect box{area.x + margin + across * (area.width - width - 2 * margin),
                             area.y + margin + up * (area.height - height - 2 * margin), width,
                             height};
        const std::ptrdiff_t covered =
            std::count_if(data.begin(), data.end(), [&](const point3Dtype& p) {
                return p.x > box.x - margin && p.x < box.x + width + margin &&
                       p.y > box.y - margin && p.y < box.y + height + margin;
            });
        if (fewest >= 0 && covered >= fewest) continue;
        fewest = covered;
        best = box;
    }
    if (hidden != nullptr) *hidden = fewest;
    return best;
}

}  // namespace varnel::detail
