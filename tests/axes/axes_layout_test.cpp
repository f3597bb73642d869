// Axes that follow the view: for every rotation they hide nothing and can be read.
#include "varnel/axes/detail/axes_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "varnel/axes/detail/label_row.h"

namespace varnel::detail {
namespace {

constexpr double kWidth = 800.0;
constexpr double kHeight = 600.0;

/// A box of 1.2 x 1 x 0.8 device units, turned as charts are.
BoxView ViewAt(double elevation, double azimuth) {
    MatrixStack matrix;
    matrix.Multiply(Rotation(-90.0, 0));
    matrix.Multiply(Rotation(-elevation, 0));
    matrix.Multiply(Rotation(azimuth, 2));
    const auto at = [&](double x, double y, double z) { return matrix.ToDevice({x, y, z, 0.0}); };
    BoxView view;
    view.origin = at(-0.6, -0.5, -0.4);
    view.edges[0] = at(0.6, -0.5, -0.4) - view.origin;
    view.edges[1] = at(-0.6, 0.5, -0.4) - view.origin;
    view.edges[2] = at(-0.6, -0.5, 0.4) - view.origin;
    view.width = kWidth;
    view.height = kHeight;
    return view;
}

AxisContent Numbers(const char* title, int count) {
    AxisContent content;
    content.hasLine = true;
    for (int i = 0; i < count; ++i) {
        content.places.push_back(static_cast<double>(i) / (count - 1));
        content.texts.push_back(std::to_string(i * 100));
    }
    content.title = title;
    content.labelEm = content.titleEm = 16.0;
    content.ticLength = 0.02;
    return content;
}

TextExtent Measure(std::string_view text) {
    return {0.55 * static_cast<double>(text.size()), 0.73, 0.0};
}

/// The distance by which a point lies outside of an edge's line.
double Outside(const PlacedAxis& axis, PixelPoint p) {
    return Dot(p - axis.from, axis.outward);
}

/// How far a box stays away from the corners of the chart's box along the normal of an axis.
double Clearance(const PlacedAxis& axis, const PixelBox& box) {
    double least = 1e9;
    for (const double x : {box.left, box.right})
        for (const double y : {box.bottom, box.top})
            least = std::min(least, Outside(axis, {x, y}));
    return least;
}

/// Whether the whole box lies on the inner side of an edge.
bool IsSilhouette(const BoxView& view, const PlacedAxis& axis) {
    for (int corner = 0; corner < 8; ++corner) {
        const bool atMax[3] = {(corner & 1) != 0, (corner & 2) != 0, (corner & 4) != 0};
        if (Outside(axis, view.ToPixel(view.Corner(atMax))) > 1e-6) return false;
    }
    return true;
}

TEST(AxesLayout, EveryTextCanBeReadAtEveryRotation) {
    const AxisContent content[3] = {Numbers("a long title of x", 6), Numbers("y", 6),
                                    Numbers("values", 5)};
    AxesChoice former;
    int turns = 0;
    for (int elevation = -90; elevation <= 90; elevation += 5)
        for (int azimuth = 0; azimuth < 360; azimuth += 5) {
            SCOPED_TRACE(testing::Message() << elevation << " " << azimuth);
            const BoxView view = ViewAt(elevation, azimuth);
            const AxesPlacement placed = PlaceAxes(view, content, Measure, &former);
            former = placed.choice;
            ++turns;
            for (int axis = 0; axis < 3; ++axis) {
                EXPECT_TRUE(IsSilhouette(view, placed.axes[axis])) << axis;
                const PixelPoint along = placed.axes[axis].to - placed.axes[axis].from;
                const double length = std::hypot(along.x, along.y);
                const auto titles =
                    std::count_if(placed.texts.begin(), placed.texts.end(),
                                  [&](const PlacedText& t) { return t.isTitle && t.axis == axis; });
                EXPECT_EQ(titles, length > 24.0 ? 1 : 0) << axis << " of length " << length;
                const auto labels = std::count_if(
                    placed.texts.begin(), placed.texts.end(),
                    [&](const PlacedText& t) { return !t.isTitle && t.axis == axis; });
                if (length > 200.0) {
                    EXPECT_GE(labels, 3) << axis;
                }
            }
            for (std::size_t i = 0; i < placed.texts.size(); ++i) {
                const PlacedText& text = placed.texts[i];
                EXPECT_GT(Clearance(placed.axes[text.axis], text.box), 0.0) << text.text;
                for (std::size_t k = 0; k < i; ++k)
                    EXPECT_FALSE(text.box.Touches(placed.texts[k].box, 0.0, 0.0))
                        << text.text << " on " << placed.texts[k].text;
                EXPECT_LE(placed.bounds.left, text.box.left);
                EXPECT_GE(placed.bounds.top, text.box.top);
            }
            // Faces that look away: no corner is farther from the viewer than theirs.
            const Vec3 back = view.Corner(placed.choice.back);
            for (int corner = 0; corner < 8; ++corner) {
                const bool atMax[3] = {(corner & 1) != 0, (corner & 2) != 0, (corner & 4) != 0};
                EXPECT_LE(view.Corner(atMax).z, back.z + 0.05);
            }
        }
    EXPECT_EQ(turns, 37 * 72);
}

TEST(AxesLayout, ViewsAlongAnAxisAreFlatCharts) {
    const AxisContent content[3] = {Numbers("x", 6), Numbers("y", 6), Numbers("z", 6)};
    struct Case {
        double elevation, azimuth;
        int across, up, hidden;
    };
    for (const Case& c : {Case{0, 0, 0, 2, 1},
                          {0, 90, 1, 2, 0},
                          {0, 180, 0, 2, 1},
                          {90, 0, 0, 1, 2},
                          {-90, 0, 0, 1, 2},
                          {90, 90, 1, 0, 2}}) {
        SCOPED_TRACE(testing::Message() << c.elevation << " " << c.azimuth);
        const AxesPlacement placed = PlaceAxes(ViewAt(c.elevation, c.azimuth), content, Measure);
        EXPECT_NEAR(placed.axes[c.across].outward.y, -1.0, 1e-9) << "one axis below";
        EXPECT_NEAR(placed.axes[c.up].outward.x, -1.0, 1e-9) << "one on the left";
        EXPECT_FALSE(placed.axes[c.hidden].shown);
    }
}

TEST(AxesLayout, AChoiceIsKeptNearASwitch) {
    for (double azimuth = -3.0; azimuth <= 3.0; azimuth += 0.1) {
        const AxesChoice former = ChooseFacesAndEdges(ViewAt(20, azimuth));
        for (const double step : {-0.5, 0.5}) {
            if (std::abs(azimuth + step) > 1.0) continue;
            const AxesChoice next = ChooseFacesAndEdges(ViewAt(20, azimuth + step), &former);
            if (std::abs(azimuth + step) < 1e-9) continue;  // exactly along an axis
            EXPECT_TRUE(std::equal(std::begin(next.back), std::end(next.back), former.back))
                << azimuth << " " << step;
        }
    }
}

TEST(AxesLayout, NamesShrinkTurnAndWrapBeforeTheyAreLeftOut) {
    struct Case {
        int count;
        const char* name;
        double size;
        int rotation;
        std::size_t lines;
        bool all;
    };
    const Case cases[] = {{4, "Monday", 1.0, 0, 1, true},
                          {9, "Monday", 0.92, 0, 1, true},
                          {12, "September", 1.0, 45, 1, true},
                          {28, "September", 0.92, 45, 1, true},
                          {38, "September", 0.92, 90, 1, true},
                          {9, "a name that is longer than a third of the frame", 0.85, 90, 2, true},
                          {80, "September", 0.85, 90, 1, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        AxisContent content[3];
        content[0] = Numbers("", c.count);
        content[0].named = content[0].mayTurn = true;
        std::fill(content[0].texts.begin(), content[0].texts.end(), CString(c.name));
        const AxesPlacement placed = PlaceAxes(ViewAt(0, 0), content, Measure);
        ASSERT_FALSE(placed.texts.empty());
        EXPECT_NEAR(placed.texts[0].em, 16.0 * c.size, 1e-9);
        EXPECT_EQ(placed.texts[0].rotation, c.rotation);
        for (std::size_t i = 1; i < placed.texts.size(); ++i)
            EXPECT_FALSE(placed.texts[i].Touches(placed.texts[i - 1], 0.0, 0.0)) << i;
        if (c.all)
            EXPECT_EQ(placed.texts.size(), static_cast<std::size_t>(c.count) * c.lines);
        else
            EXPECT_GT(placed.texts.size(), 10U);
    }
}

TEST(AxesLayout, YearsAreThinnedOutAndNamesAloneShrink) {
    AxisContent content[3];
    content[0] = Numbers("", 17);
    content[2] = Numbers("", 5);
    for (int i = 0; i < 17; ++i)
        content[0].texts[static_cast<std::size_t>(i)] = std::to_string(2001 + i);
    content[0].named = true;
    AxisContent odd = content[0];
    odd.texts[3] = "2005";
    ReadNamesAsNumbers(odd);
    EXPECT_TRUE(odd.named);
    ReadNamesAsNumbers(content[0]);
    const auto yearsAt = [&](const BoxView& from, double size) {
        CString years;
        for (const PlacedText& text : PlaceAxes(from, content, Measure).texts) {
            EXPECT_NEAR(text.em, 16.0 * (text.axis == 0 ? size : 1.0), 1e-9) << text.text;
            if (text.axis == 0) years += text.text + " ";
        }
        return years;
    };
    BoxView view = ViewAt(0, 0);
    view.edges[0].x *= 0.4;
    EXPECT_EQ(yearsAt(view, 1.0), "2005 2010 2015 ");
    content[0].texts[3] = "?";
    content[0].named = true;
    view.edges[0].x *= 3.0;
    EXPECT_EQ(yearsAt(view, 0.78),
              "2001 2002 2003 ? 2005 2006 2007 2008 2009 2010 2011 2012 2013 2014 2015 2016 2017 ");
}

}  // namespace
}  // namespace varnel::detail
