#include "varnel/render/detail/stroke.h"

#include <gtest/gtest.h>

#include <vector>

#include "varnel/render/codes.h"
#include "varnel/render/detail/marker_shape.h"

namespace varnel::detail {
namespace {

struct Piece {
    std::vector<StrokePoint> corners;

    bool Holds(double x, double y) const {
        bool left = false;
        bool right = false;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const StrokePoint& a = corners[i];
            const StrokePoint& b = corners[(i + 1) % corners.size()];
            const double side = (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
            left = left || side > 1e-9;
            right = right || side < -1e-9;
        }
        return !(left && right);
    }
};

std::vector<Piece> PiecesOf(const StrokeStyle& style, std::vector<StrokePoint> line) {
    std::vector<Piece> pieces;
    Stroker(style).Walk(line, [&](const StrokePoint* corners, int n) {
        pieces.push_back({{corners, corners + n}});
    });
    return pieces;
}

double Distance(const std::vector<StrokePoint>& line, double x, double y) {
    double least = 1e9;
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        const StrokePoint& a = line[i];
        const double dx = line[i + 1].x - a.x;
        const double dy = line[i + 1].y - a.y;
        const double length2 = dx * dx + dy * dy;
        const double t = ((x - a.x) * dx + (y - a.y) * dy) / (length2 > 0.0 ? length2 : 1.0);
        const double s = std::clamp(t, 0.0, 1.0);
        least = std::min(least, std::hypot(x - a.x - s * dx, y - a.y - s * dy));
    }
    return least;
}

TEST(Stroke, GoesOnAtTheDepthToWhichItLeadsStraightAway) {
    const std::vector<StrokePoint> line = {
        {20, 20, 0, {}}, {80, 20, 0, {}}, {80, 20, 1, {}}, {20, 20, 1, {}}};
    for (const Piece& piece : PiecesOf({5.0, 1, 0xFFFF, 100, 100}, line))
        for (const StrokePoint& corner : piece.corners)
            EXPECT_EQ(corner.z, piece.corners.front().z);
}

TEST(Stroke, CoversWhatIsWithinHalfItsWidthAndNothingElse) {
    const std::vector<StrokePoint> lines[] = {
        {{20, 20, 0, {}}, {80, 20, 0, {}}, {30, 30, 0, {}}, {30, 30, 0, {}}, {30, 80, 0, {}}},
        {{50, 50, 0, {}}, {70, 50, 0, {}}, {50, 50.5, 0, {}}, {50, 90, 0, {}}},  // turns back
        {{50, 50, 0, {}}, {50, 50, 0, {}}},                                      // a dot
    };
    for (const auto& line : lines)
        for (const double width : {1.0, 5.0, 18.0}) {
            const std::vector<Piece> pieces = PiecesOf({width, 1, 0xFFFF, 100, 100}, line);
            for (double y = 0.25; y < 100; y += 0.5)
                for (double x = 0.25; x < 100; x += 0.5) {
                    const double distance = Distance(line, x, y);
                    const bool covered = std::any_of(pieces.begin(), pieces.end(),
                                                     [&](const Piece& p) { return p.Holds(x, y); });
                    if (distance < width / 2 - 0.15) {
                        ASSERT_TRUE(covered) << x << ' ' << y << ' ' << width;
                    } else if (distance > width / 2 + 1e-6) {
                        ASSERT_FALSE(covered) << x << ' ' << y << ' ' << width;
                    }
                }
        }
}

TEST(Stroke, DashesKeepTheirLengthAroundCorners) {
    // Two bits in four, 3 pixels each, over a corner 10 pixels along.
    const std::vector<StrokePoint> line = {{10, 10, 0, {}}, {20, 10, 0, {}}, {20, 30, 1, {}}};
    const std::vector<Piece> pieces = PiecesOf({2, 3, 0x3333, 100, 100}, line);
    const double ends[][2] = {{10, 16}, {22, 28}, {34, 40}};
    ASSERT_EQ(pieces.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto along = [](const StrokePoint& p, const StrokePoint& q) {
            const double x = (p.x + q.x) / 2;
            const double y = (p.y + q.y) / 2;
            return x + y - 10;
        };
        const auto& c = pieces[i].corners;
        EXPECT_NEAR(along(c[0], c[1]), ends[i][0], 1e-9) << i;
        EXPECT_NEAR(along(c[2], c[3]), ends[i][1], 1e-9) << i;
    }
    EXPECT_NEAR(pieces[2].corners[2].z, 1.0, 1e-9);
}

TEST(Stroke, PiecesOfWhatIsSeenThroughLieBesideEachOtherAndMitresArePointed) {
    const std::vector<StrokePoint> line = {
        {20, 20, 0, {}}, {70, 20, 0, {}}, {70, 60, 0, {}}, {30, 80, 0, {}}, {20, 20, 0, {}}};
    for (const double mitre : {0.0, 4.0})
        for (const bool solid : {true, false}) {
            const unsigned short pattern = solid ? 0xFFFF : 0x00FF;
            const std::vector<Piece> pieces =
                PiecesOf({10, 4, pattern, 100, 100, mitre, true}, line);
            for (double y = 0.27; y < 100; y += 0.5)
                for (double x = 0.23; x < 100; x += 0.5)
                    ASSERT_LE(std::count_if(pieces.begin(), pieces.end(),
                                            [&](const Piece& p) { return p.Holds(x, y); }),
                              solid ? 1 : 2)
                        << x << ' ' << y;
            const auto atTip = [](const Piece& p) { return p.Holds(74.5, 15.5); };
            EXPECT_EQ(std::any_of(pieces.begin(), pieces.end(), atTip), mitre > 0.0 && solid);
        }
}

TEST(Stroke, WhatIsFarOutsideCostsNothing) {
    const StrokeStyle style{3, 1, 0x5555, 100, 100};
    EXPECT_LT(PiecesOf(style, {{-1e6, 50, 0, {}}, {1e6, 50, 0, {}}}).size(), 70U);
    EXPECT_LT(
        PiecesOf(style, {{-1e38, -3e37, 0, {}}, {1e38, 2e38, 0, {}}, {5, 1e38, 0, {}}}).size(),
        500U);
    EXPECT_TRUE(PiecesOf(style, {{-10, -10, 0, {}}, {-10, 500, 0, {}}}).empty());
    // Nor do dashes that nobody can tell apart.
    StrokeStyle fine = style, wide = style;
    fine.bit = 1e-4;
    wide.width = 1e9;
    for (const StrokeStyle& odd : {fine, wide})
        EXPECT_LT(PiecesOf(odd, {{-1e8, 50, 0, {}}, {1e8, 50, 0, {}}}).size(), 5000u);
}

TEST(MarkerShape, KindsAreAboutEquallyLargeAndGrowEvenly) {
    for (int kind = MARKER_CIRCLE; kind <= MARKER_STAR; ++kind) {
        double area[2] = {};
        for (const int grown : {0, 1})
            for (const auto& ring : MakeMarkerShape(kind, 20, grown)) {
                double sum = 0.0;
                for (std::size_t i = 0; i < ring.size(); ++i) {
                    const MarkerCorner& a = ring[i];
                    const MarkerCorner& b = ring[(i + 1) % ring.size()];
                    sum += (a.x * b.y - b.x * a.y) / 2;
                    EXPECT_LT(std::hypot(a.x, a.y), 17) << kind;
                }
                EXPECT_GT(sum, 0) << kind;
                area[grown] += sum;
            }
        EXPECT_GT(area[0], 150) << kind;  // the circle's is 314
        EXPECT_LT(area[0], 330) << kind;
        // A border 1 pixel wide and at least as long as the circle's.
        EXPECT_GT(area[1] - area[0], 62) << kind;
    }
    EXPECT_TRUE(MakeMarkerShape(99, 20, 0).empty());
}

}  // namespace
}  // namespace varnel::detail
