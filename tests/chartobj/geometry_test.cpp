// The geometry of the chart families: a few cases worked out by hand, and each family in every
// orientation and scale against what is stored in walks.txt.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <type_traits>

#include "tests/chartobj/geometry_fixture.h"
#include "tests/chartobj/stored_text.h"
#include "varnel/chartobj/detail/areas_geometry.h"
#include "varnel/chartobj/detail/bars_geometry.h"
#include "varnel/chartobj/detail/boxes_geometry.h"
#include "varnel/chartobj/detail/lines_geometry.h"
#include "varnel/chartobj/detail/planes_geometry.h"
#include "varnel/chartobj/detail/ribbons_geometry.h"
#include "varnel/chartobj/detail/seams.h"
#include "varnel/chartobj/detail/stock_geometry.h"
#include "varnel/chartobj/detail/surfaces_geometry.h"

namespace varnel::test {
namespace {

using namespace detail;

/// A visitor of every family: each call is a line of its name and the numbers that it was given,
/// points without their fourth one.
class Log {
 public:
    template <class... Args>
    void operator()(const Args&... args) {
        Call("", args...);
    }
#define VARNEL_CALL(Name)            \
    template <class... Args>         \
    void Name(const Args&... args) { \
        Call(#Name " ", args...);    \
    }
    VARNEL_CALL(Start)
    VARNEL_CALL(Append)
    VARNEL_CALL(End)
    VARNEL_CALL(Line)
    VARNEL_CALL(Body)
    VARNEL_CALL(OpenSymbol)
    VARNEL_CALL(CloseSymbol)
    VARNEL_CALL(Box)
    VARNEL_CALL(Median)
    VARNEL_CALL(Mean)
#undef VARNEL_CALL
    std::string Text() const {
        return m_Text.str();
    }

 private:
    template <class... Args>
    void Call(const char* name, const Args&... args) {
        m_Text << name;
        (Add(args), ...);
        m_Text << '\n';
    }
    template <class T>
    requires(std::is_arithmetic_v<T> || std::is_enum_v<T>) void Add(T value) {
        const auto v = static_cast<double>(value);
        m_Text << (std::abs(v) < 1e-12 ? 0.0 : v) << ' ';
    }
    void Add(const point3Dtype& p) {
        Add(p.x), Add(p.y), Add(p.z);
    }
    void Add(const Prism& p) {
        for (const double v : {p.x, p.y, p.z, p.dx, p.dy, p.dz})
            Add(v);
    }
    template <std::size_t n>
    void Add(const std::array<point3Dtype, n>& points) {
        for (const point3Dtype& p : points)
            Add(p);
    }

    std::ostringstream m_Text;
};

constexpr point3Dtype kPoints[] = {{1, 2, 3, 0},  {2, 4, 100, 0}, {3, kNaN, 5, 0}, {4, 1, 0.5, 0},
                                   {5, 3, -2, 0}, {6, 2, 4, 0},   {7, 3, kNaN, 0}, {8, 8, 8, 0}};

#define WALK(call) [](const CTransform3D& t, const Data25D& d, Log& log) { call; }
const struct {
    const char* name;
    void (*walk)(const CTransform3D&, const Data25D&, Log&);
} kWalks[] = {
    {"area", WALK(WalkAreaFill(t, d, log))},
    {"area range", WALK(WalkAreaRange(t, d, log))},
    {"stacked areas", WALK(WalkGroupAreas(t, d, log))},
    {"bars", WALK(WalkBars25D(t, d, log))},
    {"floating bars", WALK(WalkFloatingBars(t, d, log))},
    {"bars side by side", WALK(WalkBarsSideBySide(t, d, log))},
    {"stacked bars", WALK(WalkStackedBars(t, d, log))},
    {"bars in space",
     WALK(WalkBars3D(t, kPoints, d.heights, d.indWidth, d.depthWidth, d.exact, log))},
    {"planes", WALK(WalkPlanes25D(t, d, 0.02, log))},
    {"planes in space",
     WALK(WalkPlanes3D(t, kPoints, d.indWidth, d.depthWidth, 0.02, d.exact, log))},
    {"ribbon", WALK(WalkRibbon(t, d, log))},
    {"line", WALK(WalkLine25D(t, d, log))},
    {"boxes", WALK(WalkBoxes(t, d, !d.exact, log))},
    {"prices",
     [](const CTransform3D& t, const Data25D& d, Log& log) {
         for (int part = 0; part < 6; ++part) {
             int flags[6] = {};
             flags[part] = 1;
             WalkStocks(t, d, StockParts(flags), log);
         }
     }},
    {"lines in space",
     [](const CTransform3D& t, const Data25D&, Log& log) {
         WalkLine3D(t, kPoints, log);
         for (int plane = -1; plane <= 6; ++plane) {
             point3Dtype from, to;
             WalkProjectedLine(t, std::span(kPoints, 4), plane, 9, log);
             if (ProjectPoint(t, kPoints[0], plane, 9, from, to)) log(from, to);
         }
     }},
};

/// What one of the walks tells.
std::string Walked(const std::string& name, const CTransform3D& t, const Data25D& data) {
    Log log;
    for (const auto& [known, walk] : kWalks)
        if (known == name) walk(t, data, log);
    return log.Text();
}

constexpr double kInd[] = {1, 2, 3, 4, 5, 6, kNaN, 7, 8};
// Through the base of 1 and along it, with a gap.
constexpr double kDep[] = {3, 5, -2, kNaN, 1, 1, 4, 2, 0.98};
constexpr double kBelow[] = {1, 0.005, -2, 1, kNaN, 2, 3, 8, 4};
constexpr double kFeet[] = {1, 4, -1, 2, kNaN, 0.5};
// Groups that rise and fall, with gaps, zeros and changes of sign; the last one is not whole.
constexpr double kGroups[] = {2, 4, 8, 1, 1, 3, 1, 5, 6,    1, 2, -2, 9, 0, 2,  4,    6, 7,
                              3, 1, 1, 0, 3, 2, 2, 3, kNaN, 4, 3, -1, 5, 2, -1, kNaN, 4, 6,
                              7, 5, 3, 6, 5, 1, 1, 2, 9,    5, 4, 2,  3, 4, 1,  2,    -3};

Data25D Series() {
    Data25D data;
    data.ind = kInd;
    data.dep = kDep;
    data.dep2 = kBelow;
    data.heights = kFeet;
    data.groups = {kGroups, 4, std::size(kInd)};
    data.constValue = 5;
    data.baseValue = 1;
    data.indWidth = 0.5;
    data.depthWidth = 2;
    data.indOffset = -0.25;
    data.depthOffset = -1;
    data.gap = 0.25;
    data.leastHeight = 1.5;
    return data;
}

TEST(Geometry, IsWhatIsStoredInEveryOrientationAndScale) {
    std::ostringstream text;
    std::map<std::string, std::string> known;
    Data25D data = Series();
    for (const auto& [name, walk] : kWalks)
        for (int logAxis = -1; logAxis < 3; ++logAxis)
            for (data.indAxis = 0; data.indAxis < (logAxis < 0 ? 3 : 2); ++data.indAxis)
                for (const bool exact : {false, true}) {
                    data.exact = exact;
                    std::ostringstream title;
                    title << name << ", logarithmic " << logAxis << ", along " << data.indAxis
                          << (exact ? ", exact" : "");
                    Log log;
                    walk(Scaled({0.5, 0.25, -5, 0}, {10, 20, 15, 0}, logAxis), data, log);
                    const auto [same, isNew] = known.try_emplace(log.Text(), title.str());
                    text << title.str()
                         << (isNew ? "\n" + log.Text() : " = " + same->second + '\n');
                }
    ExpectStored(text.str(), "walks.txt");
}

/// Series with a few points of their own.
Data25D Short(std::span<const double> ind, std::span<const double> dep) {
    Data25D data = Series();
    data.ind = ind;
    data.dep = dep;
    data.gap = data.baseValue = 0;
    return data;
}

TEST(Geometry, CasesWorkedOutByHand) {
    const CTransform3D linear = Linear();
    const CTransform3D byDecades = Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2);
    constexpr double ind[] = {0, 1}, fall[] = {5, -5}, high[] = {8, 9}, less[] = {3, -2};
    constexpr double decades[] = {1001, 11}, turn[] = {4, 8, 2, -2}, piles[] = {2, 0, -1, 0, 3, 0};
    constexpr double prices[] = {3, kNaN, 8, 5, 1, 4, 6, 2};
    constexpr double boxes[] = {1, 1, 2, 2, 4, 4, 7, 7, 9, 9, 5, kNaN};
    Data25D cut = Short(ind, fall), range = Short(ind, high), stack = Short(ind, {});
    range.dep2 = less;
    stack.groups = {turn, 2, 2};
    Data25D pile = stack, exactPile = stack, price = stack, box = stack;
    pile.groups = exactPile.groups = {piles, 1000000, 2};  // of which three are stored
    exactPile.exact = true;
    price.groups = {prices, 4, 2};
    box.groups = {boxes, 6, 2};
    Data25D bars = Short(ind, decades);
    bars.baseValue = 1;
    const struct {
        const char* walk;
        const CTransform3D& transform;
        const Data25D& data;
        const char* first;  ///< what the calls begin with
    } cases[] = {
        // Cut at the base, whose edge is lowered by 1/500 of the range of z; below it the ends are
        // exchanged both ways, and the data edge is at the bottom.
        {"area", linear, cut,
         "1 0 4 -0.02 0 6 -0.02 0.5 6 -0.02 0.5 4 -0.02 0 4 5 0 6 5 0.5 6 0 0.5 4 0 \n"
         "2 1 6 -5 1 4 -5 0.5 4 0 0.5 6 0 1 6 -0.02 1 4 -0.02 0.5 4 -0.02 0.5 6 -0.02 \n"},
        // 8 - 3 is not above 8, so it is thickened by 0.01; 9 + 2 is left as it is.
        {"area range", linear, range,
         "1 0 4 8 0 6 8 1 6 9 1 4 9 0 4 5.01 0 6 5.01 1 6 11 1 4 11 \n"},
        // Group 1 goes from +2 to -2 on totals of 4 and 8: it vanishes halfway, at 6. The hanging
        // piece stands out by 1/500 of the depth and 1/1000 of the range of z.
        {"stacked areas", linear, stack,
         "1 0 0 4 0 0 6 0 1 6 0 1 4 0 0 4 4 0 6 4 1 6 8 1 4 8 \n"
         "1 1 0 4 4 0 6 4 0.5 6 6 0.5 4 6 0 4 6 0 6 6 0.5 6 6 0.5 4 6 \n"
         "1 1 0.5 3.996 6 0.5 6.004 6 1 6.004 6 1 3.996 6 0.5 3.996 6.01 0.5 6.004 6.01 1 6.004 "
         "8.01 1 3.996 8.01 \n"},
        // The difference to the base is converted, not its ends: log10(1000), log10(10).
        {"bars", byDecades, bars, "0 -0.25 4 0 0.5 2 3 \n1 0.75 4 0 0.5 2 1 \n"},
        // A bar stands on the total that it started from.
        {"stacked bars", linear, pile,
         "0 0 -0.25 4 0 0.5 2 2 \n0 1 -0.25 4 2 0.5 2 1 \n"
         "0 2 -0.25 4 1 0.5 2 3 \n"},
        {"stacked bars", linear, exactPile,
         "0 0 -0.25 4 0 0.5 2 2 \n0 1 -0.25 4 0 0.5 2 -1 \n"
         "0 2 -0.25 4 2 0.5 2 3 \n"},
        // Stem, tics left and right, symbols in the box -0.5 .. 0.5, and the body of a rise.
        {"prices", linear, price,
         "Line 0 0 5 1 0 5 8 \nLine 0 -0.25 5 3 0 5 3 \nLine 0 0 5 6 0.25 5 6 \n"
         "OpenSymbol 0 -0.525 0 -0.2 \nCloseSymbol 0 -0.475 0 0.1 \n"
         "Body 0 1 -0.25 4 3 0.5 2 3 \n"},
        // Whiskers with their caps, two boxes, and the median 1/1000 of the ranges around them.
        {"boxes", linear, box,
         "Line 0 0 5 2 0 5 1 \nLine 0 -0.125 5 1 0.125 5 1 \nBox 1 -0.25 4 2 0.5 2 2 \n"
         "Box 3 -0.25 4 4 0.5 2 3 \nMedian -0.26 3.99 4 0.26 3.99 4 0.26 6.01 4 -0.26 6.01 4 "
         "-0.26 3.99 4 \nLine 4 0 5 7 0 5 9 \nLine 4 -0.125 5 9 0.125 5 9 \n"
         "Mean -0.5 -0.1 0 \nMean -0.5 0.1 0 \n"},
        {"ribbon", linear, range, "1 0 4 8 1 4 9 1 6 9 0 6 8 0 4 8 \n"},
        // A gap ends a line; what stands alone is a line of one point.
        {"lines in space", linear, cut,
         "Start 1 2 3 \nEnd 1 2 4 100 \nStart 4 1 0.5 \nAppend 4 5 3 -2 \nEnd 5 6 2 4 \n"
         "Start 8 8 8 \nEnd 7 8 8 8 \n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Walked(c.walk, c.transform, c.data).substr(0, std::string(c.first).size()),
                  c.first)
            << c.walk;
}

TEST(Geometry, OnePointAndTheLoweredBase) {
    EXPECT_EQ(Walked("line", Linear(), Short(std::span(kInd, 1), kDep)),
              "Start 1 5 3 \nEnd 0 1 5 3 \n");
    // The level run at the height of the lowered base is not cut there, the fall from it is.
    const double lowered[] = {-0.02, -0.02, -1};
    const std::string solids = Walked("area", Linear(), Short(std::span(kInd, 3), lowered));
    EXPECT_EQ(std::count(solids.begin(), solids.end(), '\n'), 3);
    EXPECT_EQ(solids.find("nan"), std::string::npos);
}

TEST(Geometry, NeighboursAreJoinedWhereTheyTouch) {
    constexpr double dep[] = {3, -1, kNaN, 2, 2}, ind[] = {0, 1, 2, 3, 4};
    for (const int indAxis : {0, 1}) {
        Data25D data = Short(ind, dep);
        data.indAxis = indAxis;
        const std::size_t start = indAxis == 1 ? 0 : 1, end = indAxis == 1 ? 5 : 2;
        SeamedBand band(indAxis == 1, 10.0 / 250);
        std::vector<std::array<int, 6>> drawn;
        const auto draw = [&](const SolidCorners&, const std::array<int, 6>& flags) {
            drawn.push_back(flags);
        };
        WalkAreaFill(Linear(), data,
                     [&](std::size_t, const SolidCorners& c) { band.Add(c, draw); });
        band.End(draw);
        ASSERT_EQ(drawn.size(), 3U);
        EXPECT_EQ(drawn[0][start], 1);
        EXPECT_EQ(drawn[0][end], -1);
        // The piece below the base is given the other way round.
        EXPECT_EQ(drawn[1][end], -1);
        EXPECT_EQ(drawn[1][start], 1);
        EXPECT_EQ(drawn[2], (std::array<int, 6>{1, 1, 1, 1, 1, 1}));
    }
}

TEST(Geometry, SurfacesAreFlattenedBeforeTheyAreConverted) {
    constexpr double z[] = {1, 10, 100, 1000, kNaN, 1};
    const CPolysurface surface(3, 2, 1, 1, 2, 3, z, 0);
    const CTransform3D t = Scaled({0, 0, 1, 0}, {10, 10, 1000, 0}, 2);
    const auto third = [&](const Flattening& flat) {
        point3Dtype p[5];
        EXPECT_TRUE(std::isnan(SurfaceMesh(t, surface, flat).Points(0, 5, p)[4].x))
            << "no data stays none on a plane";
        return p[3];
    };
    ExpectPoint(third({}), 2, 2, 3);
    ExpectPoint(third({0, 100}), 2, 2, 2);
    ExpectPoint(third({2, 7}), 7, 2, 3);
    ExpectPoint(third({3, 7}), 2, 2, 3);
    const SurfaceMesh asItIs(Linear(), surface, {});
    point3Dtype room;
    EXPECT_EQ(asItIs.Points(2, 1, &room), surface.GetPSPoints() + 2);
    int n = 0;
    EXPECT_EQ(asItIs.Polygon(1, n)[2], 5);
    EXPECT_EQ(n, 4);
}

}  // namespace
}  // namespace varnel::test
