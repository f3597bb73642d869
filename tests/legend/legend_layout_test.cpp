// The layout of legends: whatever they hold and however little room they have, nothing leaves its
// box and nothing overlaps.
#include "varnel/legend/detail/legend_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>

namespace varnel::detail {

std::ostream& operator<<(std::ostream& out, const LegendRect& r) {
    return out << r.width << " x " << r.height << " at " << r.x << ", " << r.y;
}

namespace {

/// Baselines are rounded to whole pixels.
constexpr double kRounding = 0.5 + 1e-6;

LegendRect TextRect(const LegendContent& content, const LegendTextPlace& place, double width,
                    double em) {
    return {place.x, place.baseline - content.descent * em, width * em,
            (content.capHeight + content.descent) * em};
}

std::vector<LegendRect> Parts(const LegendContent& content, const LegendLayout& layout) {
    std::vector<LegendRect> parts;
    if (content.titleWidth > 0.0) {
        LegendRect title = TextRect(content, layout.title, content.titleWidth, layout.em);
        title.height *= content.titleSize;
        title.y = layout.title.baseline - content.descent * content.titleSize * layout.em;
        parts.push_back(title);
    }
    for (std::size_t i = 0; i < layout.entries.size(); ++i) {
        if (content.sampleWidth > 0.0) parts.push_back(layout.entries[i].sample);
        parts.push_back(TextRect(content, layout.entries[i].text, content.entries[i], layout.em));
    }
    if (content.hasScale) parts.push_back(layout.bar);
    if (content.noData) {
        parts.push_back(layout.noData);
        parts.push_back(TextRect(content, layout.noDataText, content.noDataWidth, layout.em));
    }
    for (const auto& label : layout.labels)
        parts.push_back(TextRect(content, label.text,
                                 content.labels[static_cast<std::size_t>(label.number)].width,
                                 layout.em));
    return parts;
}

bool Overlap(const LegendRect& a, const LegendRect& b) {
    return a.x + a.width > b.x + 1e-6 && b.x + b.width > a.x + 1e-6 &&
           a.y + a.height > b.y + 2 * kRounding && b.y + b.height > a.y + 2 * kRounding;
}

/// Checks one layout; returns it for further checks.
LegendLayout Check(const LegendContent& content, const LegendLimits& limits,
                   const std::string& what) {
    SCOPED_TRACE(what);
    const LegendLayout layout = LayoutLegend(content, limits);
    EXPECT_GT(layout.em, 0.0);
    EXPECT_LE(layout.em, limits.em);
    EXPECT_LE(layout.width, limits.width);
    EXPECT_LE(layout.height, limits.height);
    if (limits.fixedWidth) {
        EXPECT_EQ(layout.width, limits.width);
    }
    if (limits.fixedHeight) {
        EXPECT_EQ(layout.height, limits.height);
    }
    EXPECT_EQ(layout.entries.size(), content.entries.size());
    const std::vector<LegendRect> parts = Parts(content, layout);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const LegendRect& p = parts[i];
        EXPECT_GE(p.x, -1e-6) << p;
        EXPECT_GE(p.y, -kRounding) << p;
        EXPECT_LE(p.x + p.width, layout.width + 1e-6) << p;
        EXPECT_LE(p.y + p.height, layout.height + kRounding) << p;
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_FALSE(Overlap(p, parts[k])) << p << " and " << parts[k];
    }
    return layout;
}

struct Room {
    const char* name;
    LegendLimits limits;
};

const Room kRooms[] = {
    {"400x300", {10.0, 388, 288}},
    {"1024x768", {25.3, 994, 738}},
    {"2000x1500", {49.5, 1940, 1440}},
    {"a strip", {25.3, 980, 60, false, true}},
    {"a column", {25.3, 150, 740, true, false}},
    {"a fixed box", {25.3, 300, 200, true, true}},
    {"a large fixed box", {25.3, 1900, 1400, true, true}},
    {"no room", {9.0, 5, 4}},
};

std::vector<double> Widths(int count, double longest) {
    std::vector<double> widths;
    for (int i = 0; i < count; ++i)
        widths.push_back(i % 3 == 1 ? longest : 1.0 + i % 5);
    return widths;
}

std::vector<ScaleLabelSize> Labels(int count) {
    std::vector<ScaleLabelSize> labels;
    for (int i = 0; i < count; ++i)
        labels.push_back({(i + 1.0) / (count + 1), 1.0 + i % 3, i - 2});
    return labels;
}

TEST(LegendLayout, NothingOverlapsOrLeavesItsBox) {
    const int grids[][2] = {{0, 0}, {1, 0}, {0, 3}, {2, 2}, {1000, 1000}, {-1, -1}};
    int checked = 0;
    for (const Room& room : kRooms)
        for (const int count : {0, 1, 2, 5, 12, 40})
            for (const double longest : {3.0, 45.0})
                for (const auto& grid : grids)
                    for (int scale = 0; scale < 3; ++scale)
                        for (const double title : {0.0, 9.0, 60.0}) {
                            LegendContent content;
                            content.titleWidth = title;
                            content.titleSize = 1.1;
                            content.entries = Widths(count, longest);
                            content.sampleWidth = count % 2 == 0 ? 2.2 : 0.0;
                            content.rows = grid[0];
                            content.columns = grid[1];
                            content.hasScale = scale > 0;
                            content.horizontal = scale == 2;
                            content.scaleLength = 300;
                            if (scale > 0) content.labels = Labels(count);
                            content.noData = scale > 0 && count % 2 == 1;
                            content.noDataWidth = 0.4 * longest;
                            if (count == 0 && scale == 0 && title == 0.0) continue;
                            Check(content, room.limits,
                                  std::string(room.name) + ", " + std::to_string(count) +
                                      " entries, rows " + std::to_string(grid[0]) + ", columns " +
                                      std::to_string(grid[1]) + ", scale " + std::to_string(scale) +
                                      ", title " + std::to_string(title));
                            ++checked;
                            if (HasFailure()) return;
                        }
    EXPECT_GT(checked, 4000);
}

TEST(LegendLayout, RowsShareBaselinesAndColumnsShareEdges) {
    LegendContent content;
    content.entries = Widths(7, 6.0);
    content.sampleWidth = 1.5;
    content.columns = 3;
    const LegendLayout across = Check(content, kRooms[1].limits, "row by row");
    EXPECT_EQ(across.entries[0].text.baseline, across.entries[2].text.baseline);
    EXPECT_GT(across.entries[2].text.baseline, across.entries[3].text.baseline);
    EXPECT_EQ(across.entries[0].text.x, across.entries[3].text.x);
    EXPECT_EQ(across.entries[1].sample.x, across.entries[4].sample.x);

    content.columns = 0;
    content.rows = 3;
    const LegendLayout down = Check(content, kRooms[1].limits, "column by column");
    EXPECT_EQ(down.entries[0].text.x, down.entries[2].text.x);
    EXPECT_LT(down.entries[2].text.x, down.entries[3].text.x);
    EXPECT_EQ(down.entries[0].text.baseline, down.entries[6].text.baseline);
    // Samples lie alike beside their texts.
    for (const auto& entry : down.entries)
        EXPECT_NEAR(entry.sample.y - entry.text.baseline,
                    down.entries[0].sample.y - down.entries[0].text.baseline, 1e-9);
}

TEST(LegendLayout, LettersKeepTheirSizeWhereThereIsRoomAndColumnsAreAdded) {
    LegendContent content;
    content.entries = Widths(20, 4.0);
    content.sampleWidth = 1.5;
    EXPECT_EQ(Check(content, kRooms[1].limits, "two columns fit").em, 25.3);
    content.columns = 1;
    EXPECT_LT(Check(content, kRooms[1].limits, "one column is too high").em, 25.3);

    // The even padding: as much to the left of the samples as below the last baseline.
    content.columns = 0;
    content.entries = {5.0};
    const LegendLayout one = Check(content, kRooms[1].limits, "one entry");
    EXPECT_NEAR(one.entries[0].sample.x, one.entries[0].text.baseline, 1.0);
}

TEST(LegendLayout, TextsTooLongForAFixedSizeAreScaledDown) {
    LegendContent content;
    content.entries = {100.0, 3.0};
    content.sampleWidth = 1.5;
    const LegendLayout layout = Check(content, kRooms[5].limits, "a fixed box");
    EXPECT_NEAR(layout.em * 100.0, 300, 20) << "as large as it can be";
}

TEST(LegendLayout, ScalesFillFixedBoxesAndDropLabelsThatDoNotFit) {
    LegendContent content;
    content.hasScale = true;
    content.scaleLength = 200;
    for (int i = 0; i <= 100; ++i)
        content.labels.push_back({i / 100.0, 2.0, i});
    const LegendLayout free = Check(content, kRooms[1].limits, "as long as wanted");
    EXPECT_EQ(free.bar.height, 200);
    ASSERT_GE(free.labels.size(), 4U);
    EXPECT_EQ(free.labels[0].number, 0);
    const int stride = free.labels[1].number;
    EXPECT_TRUE(stride == 10 || stride == 20) << stride;
    for (std::size_t i = 0; i < free.labels.size(); ++i) {
        EXPECT_EQ(free.labels[i].number, stride * static_cast<int>(i));
        EXPECT_NEAR(free.labels[i].tic, free.bar.y + free.labels[i].number * 2.0, 1e-9);
    }
    const LegendLayout fixed = Check(content, kRooms[6].limits, "a large fixed box");
    EXPECT_GT(fixed.bar.height, 1300);

    content.horizontal = true;
    content.scaleLength = 1e9;
    const LegendLayout across = Check(content, kRooms[1].limits, "longer than the view");
    EXPECT_EQ(across.width, 994);
}

TEST(LegendPlacement, CoversTheFewestData) {
    const LegendRect area{100, 50, 400, 300};
    const auto at = [&](std::vector<point3Dtype> data) {
        const LegendRect box = LeastCovered(data, area, 80, 60, 10);
        EXPECT_EQ(box.width, 80);
        return std::pair{box.x, box.y};
    };
    EXPECT_EQ(at({}), (std::pair{410.0, 280.0}));
    EXPECT_EQ(at({{450, 300, 0, 0}}), (std::pair{110.0, 280.0}));
    EXPECT_EQ(at({{450, 300, 0, 0}, {150, 300, 0, 0}, {450, 80, 0, 0}}), (std::pair{110.0, 60.0}));
    EXPECT_EQ(at({{450, 300, 0, 0}, {150, 300, 0, 0}, {450, 80, 0, 0}, {150, 80, 0, 0}}),
              (std::pair{410.0, 170.0}));
}

TEST(LegendPlacement, AcrossTakesAsManyColumnsAsKeepLettersLarge) {
    LegendContent content;
    content.entries.assign(6, 4.0);
    content.sampleWidth = 1.5;
    LegendLimits limits;
    limits.em = 10;
    limits.height = 400;
    limits.width = 1000;
    const double inOneRow = LayoutLegendAcross(content, limits).height;
    limits.width = 300;
    const LegendLayout layout = LayoutLegendAcross(content, limits);
    EXPECT_EQ(layout.em, 10);
    EXPECT_LE(layout.width, 300);
    EXPECT_GT(layout.height, inOneRow);
}

}  // namespace
}  // namespace varnel::detail
