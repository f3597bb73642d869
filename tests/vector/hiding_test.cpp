// What shows of random scenes, against a depth buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <random>
#include <vector>

#include "varnel/vector/detail/hiding.h"

namespace varnel::detail {
namespace {

constexpr int kSize = 32;  // pixels

using Polygon = std::vector<Vec3>;

struct Line {
    Vec3 a, b;
};

/// Boxes and triangles of random place, size and rotation, many of them crossing, and lines.
struct Scene {
    explicit Scene(unsigned seed) : random(seed) {
        for (int i = 0; i < 3; ++i)
            AddBox();
        for (int i = 0; i < 6; ++i)
            AddTriangle(i % 2 == 0);
        for (int i = 0; i < 5; ++i)
            lines.push_back({Place(), Place()});
    }

    double Number(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    Vec3 Place() { return {Number(-4, 36), Number(-4, 36), Number(-0.9, 0.9)}; }

    /// With a corner twice, as the sides of a pyramid come, or without.
    void AddTriangle(bool twice) {
        const Vec3 last = Place();
        polygons.push_back({Place(), Place(), last});
        if (twice) polygons.back().push_back(last);
    }

    void AddBox() {
        const Matrix4 turn =
            Rotation(Number(0, 360), 2) * Rotation(Number(0, 360), 0) * Rotation(Number(0, 360), 1);
        const Vec3 centre = Place();
        const Vec3 half{Number(1, 12), Number(1, 12), Number(1, 12)};
        std::array<Vec3, 8> corners;
        for (std::size_t i = 0; i < 8; ++i) {
            const std::array<double, 3> c = {(i & 1U) != 0 ? half.x : -half.x,
                                             (i & 2U) != 0 ? half.y : -half.y,
                                             (i & 4U) != 0 ? half.z : -half.z};
            std::array<double, 3> out{};
            for (int r = 0; r < 3; ++r)
                for (int k = 0; k < 3; ++k)
                    out[static_cast<std::size_t>(r)] +=
                        turn.At(r, k) * c[static_cast<std::size_t>(k)];
            corners[i] = {centre.x + out[0], centre.y + out[1], centre.z + out[2] / kSize};
        }
        constexpr std::size_t kFaces[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                              {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
        for (const auto& face : kFaces) {
            Polygon& polygon = polygons.emplace_back();
            for (const std::size_t corner : face)
                polygon.push_back(corners[corner]);
        }
    }

    std::mt19937 random;
    std::vector<Polygon> polygons;
    std::vector<Line> lines;
};

double Cross2(const Vec3& a, const Vec3& b, double x, double y) {
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

/// The depth of a polygon at a place, if it covers it.
std::optional<double> DepthAt(const Polygon& p, double x, double y) {
    bool left = false;
    bool right = false;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const double side = Cross2(p[i], p[(i + 1) % p.size()], x, y);
        left = left || side > 0;
        right = right || side < 0;
    }
    if (left && right) return std::nullopt;
    const Vec3 normal = Cross(p[1] - p[0], p[2] - p[0]);
    if (std::fabs(normal.z) < 1e-6) return std::nullopt;
    return p[0].z - (normal.x * (x - p[0].x) + normal.y * (y - p[0].y)) / normal.z;
}

/// At each pixel the polygon of the least depth, or -1, and which polygons' visible areas cover it.
struct Buffer {
    int nearest = -1;
    double depth = 2.0;
    int shown = -1;
    int count = 0;  ///< of areas: 1 where a polygon shows
};

class Buffers {
 public:
    Buffers(const Scene& scene, const Hiding& hiding) : m_Pixels(kSize * kSize) {
        for (int i = 0; i < static_cast<int>(scene.polygons.size()); ++i) {
            const auto polygon = static_cast<std::size_t>(i);
            for (int y = 0; y < kSize; ++y) {
                const std::vector<double> crossings = Crossings(hiding.Visible(polygon), y);
                for (int x = 0; x < kSize; ++x) {
                    Buffer& pixel = At(x, y);
                    const auto z = DepthAt(scene.polygons[polygon], x, y);
                    if (z && *z <= pixel.depth) {
                        pixel.nearest = i;
                        pixel.depth = *z;
                    }
                    const auto before = std::count_if(crossings.begin(), crossings.end(),
                                                      [x](double at) { return at < x; });
                    if (before % 2 == 0) continue;
                    pixel.shown = i;
                    ++pixel.count;
                }
            }
        }
    }
    Buffer& At(int x, int y) { return m_Pixels[static_cast<std::size_t>(y * kSize + x)]; }

    /// Whether the same polygon is nearest all around, so that no edge runs close by.
    bool IsInside(int x, int y) {
        if (x < 1 || y < 1 || x + 1 >= kSize || y + 1 >= kSize) return false;
        for (int k = 0; k < 9; ++k)
            if (At(x + k % 3 - 1, y + k / 3 - 1).nearest != At(x, y).nearest) return false;
        return true;
    }

 private:
    /// Where the outlines of an area cross a row of pixels.
    static std::vector<double> Crossings(const Area& area, int y) {
        std::vector<double> at;
        for (const Ring& ring : area)
            for (std::size_t i = 0; i < ring.size(); ++i) {
                const GridPoint& a = ring[i];
                const GridPoint& b = ring[(i + 1) % ring.size()];
                const double row = y * kGridPerPixel;
                if ((a.y > row) != (b.y > row))
                    at.push_back((a.x + (row - a.y) * (b.x - a.x) / (b.y - a.y)) / kGridPerPixel);
            }
        return at;
    }

    std::vector<Buffer> m_Pixels;
};

TEST(Hiding, RandomScenesAgreeWithADepthBuffer) {
    int tested = 0;
    int wrong = 0;
    int linesTested = 0;
    int linesWrong = 0;
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        const Scene scene(seed);
        Hiding hiding(kSize, kSize);
        for (const Polygon& polygon : scene.polygons)
            hiding.AddFacet(polygon);
        hiding.Resolve();
        Buffers buffers(scene, hiding);
        for (int k = 0; k < kSize * kSize; ++k) {
            if (!buffers.IsInside(k % kSize, k / kSize)) continue;
            const Buffer& pixel = buffers.At(k % kSize, k / kSize);
            ++tested;
            if (pixel.shown != pixel.nearest || pixel.count > 1) ++wrong;
        }
        std::vector<SegmentPart> parts;
        for (const Line& line : scene.lines) {
            hiding.VisibleParts(line.a, line.b, parts);
            for (int k = 1; k < 40; ++k) {
                const double t = k / 40.0;
                const Vec3 p{line.a.x + t * (line.b.x - line.a.x),
                             line.a.y + t * (line.b.y - line.a.y),
                             line.a.z + t * (line.b.z - line.a.z)};
                const int x = static_cast<int>(std::lround(p.x));
                const int y = static_cast<int>(std::lround(p.y));
                if (!buffers.IsInside(x, y)) continue;
                const int nearest = buffers.At(x, y).nearest;
                const double z =
                    nearest < 0
                        ? 2.0
                        : *DepthAt(scene.polygons[static_cast<std::size_t>(nearest)], p.x, p.y);
                if (std::fabs(z - p.z) < 0.02) continue;
                ++linesTested;
                const bool shows = std::any_of(parts.begin(), parts.end(), [t](const auto& part) {
                    return part.from <= t && t <= part.to;
                });
                if (shows != (p.z < z)) ++linesWrong;
            }
        }
    }
    EXPECT_GT(tested, 100000);
    EXPECT_LE(wrong, tested / 1000) << "of " << tested;
    EXPECT_GT(linesTested, 50000);
    EXPECT_LE(linesWrong, linesTested / 1000) << "of " << linesTested;
}

TEST(Hiding, AtEqualDepthTheLaterPolygonShows) {
    Hiding hiding(10, 10);
    const Polygon floor = {{0, 0, 0.5}, {10, 0, 0.5}, {10, 10, 0.5}, {0, 10, 0.5}};
    const Polygon band = {{2, 2, 0.5}, {2, 8, 0.5}, {8, 8, 0.5}, {8, 2, 0.5}};
    const Polygon behind = {{3, 3, 0.6}, {4, 3, 0.6}, {4, 4, 0.6}};
    hiding.AddFacet(floor);
    hiding.AddFacet(band);
    hiding.AddFacet(behind);
    hiding.Resolve();
    EXPECT_EQ(hiding.Visible(0).size(), 2U) << "a ring and its hole";
    EXPECT_EQ(hiding.Visible(1).size(), 1U);
    EXPECT_TRUE(hiding.Visible(2).empty());
    EXPECT_EQ(hiding.VisibleOf(band).size(), 1U) << "a text in the plane of the band";
    std::vector<SegmentPart> parts;
    hiding.VisibleParts({0, 5, 0.5}, {10, 5, 0.5}, parts);
    ASSERT_EQ(parts.size(), 1U) << "a line in the plane of both";
    EXPECT_EQ(parts[0].from, 0.0);
    EXPECT_EQ(parts[0].to, 1.0);
}

}  // namespace
}  // namespace varnel::detail
