#include "varnel/surface/polysurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <vector>

#include "tests/support/expect_error.h"
#include "tests/support/files.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/platform/files.h"

namespace varnel::test {
namespace {

constexpr RGBDType kGreen{0, 1, 0, 0.5};

std::vector<point3Dtype> GridPoints(int rows, int cols) {
    std::vector<point3Dtype> points;
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c)
            points.push_back({c * 2.0, r * 3.0, r * 10.0 + c, r * 100.0 + c});
    return points;
}

CPolysurface TwoTriangles() {
    const double z[4] = {1, 2, 3, 4};
    return {2, 2, 0.0, 0.0, 1.0, 1.0, z, 1};
}

std::vector<int> Indices(const CPolysurface& surface, int i) {
    int n = 0;
    const int* const own = surface.FindPSPolygon(i, n);
    return {own, own + n};
}

std::vector<int> Neighbours(const CPolysurface& surface, int i) {
    std::vector<int> three(3);
    surface.GetAdjacentPolyList(i, three.data());
    return three;
}

void ExpectColors(const CPolysurface& surface, int i, const RGBDType& first,
                  const RGBDType& second) {
    std::vector<point3Dtype> pts(static_cast<std::size_t>(surface.GetPSLargestPolygon()) + 1);
    RGBDType a, b;
    int n = 0;
    surface.GetPolysurfacePolygon(i, pts.data(), n, a, b);
    EXPECT_TRUE(a.r == first.r && a.g == first.g && a.b == first.b && a.a == first.a) << i;
    EXPECT_TRUE(b.r == second.r && b.g == second.g && b.b == second.b && b.a == second.a) << i;
}

CPolysurface Loaded(std::vector<BYTE> bytes) {
    MemoryFile file(std::move(bytes));
    return CPolysurface(&file);
}

TEST(Polysurface, OpensNothingByDefault) {
    CPolysurface surface;
    point3Dtype p{1, 2, 3, 4};
    int n = 5;
    surface.GPSPolygon(0, &p, n);
    EXPECT_EQ(n, 0);
    const int index = 0;
    surface.AddPolysurfacePolygon(0, &index, 1, kRed, kRed);
    surface.SetPolysurfaceColors(0, kRed, kRed);
    surface.SetOnePolysurfacePoint(0, p);
    surface.CopyXYorZtoV(1, 0, 0);
    surface.CreateRGAdjacentPolygonList();
    EXPECT_EQ(surface.GetPSPMean(0, 0), 0);
    EXPECT_EQ(surface.GetPSNumPoints() + surface.GetPSNumPolygons() + surface.GetPSMaxPolygons() +
                  surface.GetPSPointsPerPolygon(),
              0);
    EXPECT_EQ(surface.GetPSPoints(), nullptr);
    EXPECT_EQ(CPolysurface(0, 10, 3).GetPSMaxPolygons(), 0);
    EXPECT_EQ(surface.GetSignature(), 1414);
}

TEST(Polysurface, KeepsPointsWithFourSpareOnes) {
    const auto points = GridPoints(2, 3);
    CPolysurface surface(points.data(), 0, 6);
    EXPECT_EQ(surface.GetPSNumPoints(), 6);
    EXPECT_EQ(surface.GetPSMaxPolygons(), 14);
    EXPECT_EQ(surface.GetPSPointsPerPolygon(), 3);
    point3Dtype p;
    surface.GetOnePolysurfacePoint(5, p);
    EXPECT_EQ(p.z, 12);
    surface.SetOnePolysurfacePoint(9, {1, 2, 3, 4});
    surface.SetOnePolysurfacePoint(10, {1, 2, 3, 4});
    surface.GetOnePolysurfacePoint(9, p);
    EXPECT_EQ(p.z, 3);

    // From a later place on, never beyond either array.
    surface.SetPolysurfacePoints(points.data(), 8, 6);
    EXPECT_EQ(surface.GetPSPoints()[8].w, points[0].w);
    EXPECT_EQ(surface.GetPSPoints()[9].w, points[1].w);
    surface.SetPolysurfacePoints(points.data(), -1, 6);
    surface.SetPolysurfacePoints(points.data(), 10, 6);
    EXPECT_EQ(surface.GetPSPoints()[0].z, 0);

    surface.CopyXYorZtoV(2, 1, 2);
    EXPECT_EQ(surface.GetPSPoints()[5].w, 22);
    EXPECT_EQ(surface.GetPSPoints()[9].w, 0);  // z 1, less 1: spare points too
    const double values[] = {7, 8};
    surface.SetPSValues(values);
    EXPECT_EQ(surface.GetPSPoints()[1].w, 8);
    surface.CopyXYorZtoV(7, 0, 3);
    EXPECT_EQ(surface.GetPSPoints()[5].w, 22);
}

TEST(Polysurface, PolygonsAreAppended) {
    CPolysurface surface(4, 3, 3);  // room for (int)(3 * 1.1 * 3) = 9 indices
    const auto points = GridPoints(2, 2);
    surface.SetPolysurfacePoints(points.data(), 0, 4);
    const int quad[4] = {0, 1, 3, 2};
    surface.AddPolysurfacePolygon(1, quad, 4, kRed, kGreen);
    surface.AddPolysurfacePolygon(0, quad, 3, kGreen, kRed);
    EXPECT_EQ(surface.GetPSNumPolygons(), 2);
    EXPECT_EQ(Indices(surface, 1), std::vector<int>({0, 1, 3, 2}));
    EXPECT_EQ(Indices(surface, 0), std::vector<int>({0, 1, 3}));
    ExpectColors(surface, 1, kRed, kGreen);
    ExpectColors(surface, 0, kGreen, kRed);

    point3Dtype closed[5];
    int n = 0;
    surface.GPSPolygon(1, closed, n);
    EXPECT_EQ(n, 4);
    EXPECT_EQ(closed[2].z, 11);
    EXPECT_EQ(closed[4].z, closed[0].z);
    EXPECT_EQ(surface.GetPSLargestPolygon(), 4);
    EXPECT_EQ(surface.GetPSPMean(1, 2), 5.5);
    EXPECT_EQ(surface.GetPSPMean(1, 3), 0);
    EXPECT_EQ(surface.GetPSPMean(2, 2), 0);

    // No room for its points, no such place, no such point.
    const int bad[2] = {0, 8};
    surface.AddPolysurfacePolygon(2, quad, 4, kRed, kRed);
    surface.AddPolysurfacePolygon(3, quad, 1, kRed, kRed);
    surface.AddPolysurfacePolygon(-1, quad, 1, kRed, kRed);
    surface.AddPolysurfacePolygon(2, bad, 2, kRed, kRed);
    surface.AddPolysurfacePolygon(2, quad, -1, kRed, kRed);
    EXPECT_EQ(surface.GetPSNumPolygons(), 2);

    surface.SetPolysurfaceColors(1, kGreen, kGreen);
    ExpectColors(surface, 1, kGreen, kGreen);
    surface.ResetPolysurfacePolygons();
    EXPECT_EQ(surface.GetPSNumPolygons(), 0);
    EXPECT_EQ(surface.GetPSMaxPolygons(), 3);
}

TEST(Polysurface, MeshesOfTrianglesKeepTheirValues) {
    const int triangles[] = {0, 1, 2, 2, 1, 9, 1, 3, 2};
    const CPolysurface mesh(GridPoints(2, 2), triangles);
    EXPECT_EQ(mesh.GetPSNumPolygons(), 2);
    EXPECT_EQ(Indices(mesh, 1), std::vector<int>({1, 3, 2}));
    EXPECT_EQ(mesh.GetPSPoints()[3].w, 101);
}

TEST(Polysurface, SizesThatNoArrayCanHaveAreErrors) {
    for (const auto& [points, polygons] : std::vector<std::pair<int, int>>{
             {-5, 1}, {5, -1}, {5, 2000000000}, {std::numeric_limits<int>::max(), 1}}) {
        EXPECT_TRUE(Raises(ERR3D_ARRAY_NEW, ERR3DCLASS_POLYSURFACE, "OpenPolysurface",
                           [&, a = points, b = polygons] { CPolysurface(a, b, 3); }));
    }
}

TEST(PolysurfaceGrid, NumbersQuadrilateralsAndTrianglesRowByRow) {
    const auto points = GridPoints(3, 4);
    const CPolysurface quads(points.data(), 3, 4, 0);
    EXPECT_EQ(quads.GetPSNumPolygons(), 6);
    EXPECT_EQ(quads.GetPSMaxPolygons(), 6);
    EXPECT_EQ(quads.GetPSPointsPerPolygon(), 4);
    EXPECT_EQ(Indices(quads, 4), std::vector<int>({5, 6, 10, 9}));
    ExpectColors(quads, 5, {0, 0, 1, 1}, {0, 0, 0, 1});
    EXPECT_EQ(quads.GetEvenGridFlag(), 1);

    const CPolysurface triangles(points.data(), 3, 4, 1);
    EXPECT_EQ(triangles.GetPSNumPolygons(), 12);
    EXPECT_EQ(triangles.GetPSMaxPolygons(), 12);
    EXPECT_EQ(Indices(triangles, 8), std::vector<int>({5, 6, 9}));
    EXPECT_EQ(Indices(triangles, 9), std::vector<int>({6, 10, 9}));
    EXPECT_EQ(triangles.GetGridType(), 1);
    EXPECT_EQ(triangles.GetAdjacentPolygonPntr(), nullptr);
}

TEST(PolysurfaceGrid, EvenGridHasTheNeighboursOfItsTriangles) {
    const double z[4] = {1, -2, 5, 4};
    CPolysurface two(2, 2, 0.0, 0.0, 1.0, 1.0, z, 1);
    EXPECT_EQ(two.GetPSNumPoints(), 4);
    EXPECT_EQ(two.GetPSMaxPolygons(), 10);
    EXPECT_EQ(Indices(two, 0), std::vector<int>({0, 1, 2}));
    EXPECT_EQ(Indices(two, 1), std::vector<int>({1, 3, 2}));
    EXPECT_EQ(two.GetGridType(), 3);
    EXPECT_EQ(two.GetPSPoints()[2].w, 5);
    ExpectColors(two, 0, {0, 0, 1, 1}, {0, 0, 0, 1});

    // Every neighbour shares the edge it is listed for, run the other way.
    std::vector<double> flat(4 * 5, 1.0);
    const CPolysurface grid(4, 5, 0.0, 0.0, 4.0, 3.0, flat.data(), 1);
    int borders = 0;
    for (int t = 0; t < grid.GetPSNumPolygons(); ++t) {
        const auto v = Indices(grid, t);
        const auto neighbours = Neighbours(grid, t);
        for (std::size_t j = 0; j < 3; ++j) {
            if (neighbours[j] == -1) {
                ++borders;
                continue;
            }
            const auto w = Indices(grid, neighbours[j]);
            bool shared = false;
            for (std::size_t k = 0; k < 3; ++k)
                shared |= w[k] == v[(j + 1) % 3] && w[(k + 1) % 3] == v[j];
            EXPECT_TRUE(shared) << t << ", " << j;
        }
    }
    EXPECT_EQ(borders, 14);

    EXPECT_EQ(CPolysurface(4, 5, 0.0, 0.0, 4.0, 3.0, flat.data(), 0).GetPSNumPolygons(), 12);
    for (const int type : {-2, -1, 2, 7})
        EXPECT_EQ(CPolysurface(4, 5, 0.0, 0.0, 4.0, 3.0, flat.data(), type).GetPSNumPolygons(), 0);
}

std::vector<BYTE> Saved(CPolysurface& surface) {
    MemoryFile file;
    surface.Save(&file);
    return file.GetBytes();
}

TEST(PolysurfaceGrid, CopiesShareUntilOneChangesAndTablesSayWhatTheGridDoes) {
    const std::vector<double> z = {1, 2, 3, 4, 5, 6};
    for (const int type : {0, 1}) {
        CPolysurface grid(2, 3, 0, 0, 1, 1, z, type);
        const CPolysurface copy(grid);
        EXPECT_EQ(copy.GetPSPoints(), std::as_const(grid).GetPSPoints());
        grid.SetOnePolysurfacePoint(0, {9, 9, 9, 9});
        EXPECT_EQ(copy.GetPSPoints()[0].z, 1);
        point3Dtype* const own = grid.GetPSPoints();
        const CPolysurface second(grid);
        own[1].z = 8;
        EXPECT_EQ(second.GetPSPoints()[1].z, 2);

        const std::vector<BYTE> implied = Saved(grid);
        CPolysurface loaded = Loaded(implied);
        EXPECT_EQ(Saved(loaded), implied);
        std::vector<int> said(4);
        int n = 0;
        RGBDType first, last;
        grid.GetPSPolygonIndices(1, said.data(), n, first, last);
        said.resize(static_cast<std::size_t>(n));
        EXPECT_EQ(Indices(grid, 1), said);
        const std::vector<int> neighbours = Neighbours(grid, 1);
        EXPECT_TRUE(
            std::equal(neighbours.begin(), neighbours.end(), grid.GetAdjacentPolygonPntr() + 3));
        EXPECT_EQ(Saved(grid), implied);
        loaded.AddPolysurfacePolygon(loaded.GetPSNumPolygons(), neighbours.data(), 0, kRed, kRed);
        EXPECT_EQ(Indices(loaded, 1), Indices(grid, 1));
    }
}

TEST(PolysurfaceGrid, ValuesThatAreNoDataAreNotAmongItsLimits) {
    const std::vector<double> z = {std::nan(""), 2, -kInf, 7, kInf, 3};
    const CPolysurface some(2, 3, 0, 0, 1, 1, z, 0);
    EXPECT_EQ(Row(some.GetRGMinZ(), some.GetRGMaxZ(), some.GetRGRangeZ()), Row(2, 7, 5));
    const std::vector<double> nothing(4, kInf);
    EXPECT_EQ(CPolysurface(2, 2, 0, 0, 1, 1, nothing, 0).GetRGRangeZ(), 0);
}

double Hill(double x, double y) {
    return 10 - x * x - y;
}

TEST(PolysurfaceGrid, FunctionGridIsTriangulatedAndCanBeReduced) {
    const CPolysurface surface(5, 4, -1.0, 0.0, 2.0, 4.0, Hill);
    EXPECT_EQ(surface.GetPSNumPolygons(), 24);
    EXPECT_EQ(surface.GetPSPoints()[6].x, 1);
    EXPECT_EQ(surface.GetPSPoints()[6].y, 1);
    EXPECT_EQ(surface.GetPSPoints()[6].z, 8);
    EXPECT_EQ(surface.GetPSPoints()[6].w, 8);
    ExpectColors(surface, 3, {0, 0, 1, 1}, {1, 1, 1, 1});
    EXPECT_NE(surface.GetAdjacentPolygonPntr(), nullptr);
    EXPECT_EQ(surface.GetRGMinZ(), 2);
    EXPECT_EQ(surface.GetRGMaxZ(), 10);
    EXPECT_EQ(surface.GetEvenGridFlag(), 1);

    const CPolysurface reduced(&surface, 2);
    EXPECT_EQ(reduced.GetRGRows(), 2);
    EXPECT_EQ(reduced.GetRGStepX(), 2);
}

TEST(PolysurfaceGrid, ReductionTakesMeansOfBlocksAndTheLastW) {
    const auto points = GridPoints(5, 5);
    const CPolysurface source(points.data(), 5, 5, 0);
    const CPolysurface reduced(&source, 2);
    ASSERT_EQ(reduced.GetPSNumPoints(), 4);
    EXPECT_EQ(reduced.GetPSNumPolygons(), 2);
    EXPECT_EQ(reduced.GetGridType(), 1);
    EXPECT_EQ(Indices(reduced, 1), std::vector<int>({1, 3, 2}));
    const point3Dtype& last = reduced.GetPSPoints()[3];
    EXPECT_EQ(Row(last.x, last.y, last.z, last.w, reduced.GetRGMaxZ()),
              Row(4, 6, (22 + 23 + 32 + 33) / 4.0, 303, 0));

    CPolysurface itself(source);
    itself.ReducePolysurface(&itself, 2, 0);
    EXPECT_EQ(itself.GetPSPoints()[3].z, last.z);
}

TEST(PolysurfaceGrid, BadGridsAreErrors) {
    const double z[4] = {};
    const auto points = GridPoints(2, 2);
    const CPolysurface grid(points, 2, 2, 1);
    const struct {
        CErr3DTypes type;
        const char* operation;
        std::function<void()> make;
    } rows[] = {
        {ERR3D_PARAMETER, "CreatePolysurfaceEvenGrid",
         [&] { CPolysurface(1, 4, 0, 0, 1, 1, z, 1); }},
        {ERR3D_PARAMETER, "CreatePolysurfaceFunction",
         [] { CPolysurface(2, 1, 0, 0, 1, 1, Hill); }},
        {ERR3D_OBJECT_NEW, "ConvertRG2PS", [&] { CPolysurface(points.data(), 0, 2, 1); }},
        {ERR3D_OBJECT_NEW, "ConvertRG2PS", [&] { CPolysurface(points.data(), 2, 2, 3); }},
        {ERR3D_ARRAY_NEW, "OpenPolysurface", [&] { CPolysurface(points.data(), 50000, 50000, 1); }},
        {ERR3D_PARAMETER, "ConvertRG2PS", [&] { CPolysurface(points, 2, 3, 1); }},
        {ERR3D_PARAMETER, "CreatePolysurfaceEvenGrid",
         [&] { CPolysurface(2, 3, 0, 0, 1, 1, std::span(z), 1); }},
        {ERR3D_PARAMETER, "ReducePolysurface", [&] { CPolysurface(&grid, 0); }},
        {ERR3D_OBJECT_NEW, "ConvertRG2PS", [&] { CPolysurface(&grid, 3); }}};
    for (const auto& row : rows)
        EXPECT_TRUE(Raises(row.type, ERR3DCLASS_POLYSURFACE, row.operation, row.make));
    EXPECT_EQ(CPolysurface(points.data(), 1, 4, 1).GetPSNumPolygons(), 0);
}

TEST(Polysurface, CopiesAreDeep) {
    CPolysurface source = TwoTriangles();
    source.SetPolysurfaceColors(1, kRed, kGreen);
    source.SetWireFrame(1);
    const auto bytes = Saved(source);
    CPolysurface copy(source);
    CPolysurface assigned(7, 7, 3);
    assigned = copy;
    assigned = *&assigned;
    CPolysurface fromPointer(&source);
    source.SetOnePolysurfacePoint(0, {9, 9, 9, 9});
    source.SetPolysurfaceColors(0, kRed, kRed);
    EXPECT_EQ(Saved(copy), bytes);
    EXPECT_EQ(Saved(assigned), bytes);
    EXPECT_EQ(Saved(fromPointer), bytes);
    EXPECT_NE(Saved(source), bytes);
    EXPECT_EQ(copy.GetWireFrame(), 1);
    assigned = CPolysurface();
    EXPECT_EQ(assigned.GetPSNumPoints(), 0);
}

TEST(PolysurfaceRecord, IsExactToTheByte) {
    CPolysurface surface(1, 2, 2);
    surface.SetOnePolysurfacePoint(0, {1, 2, 3, 4});
    surface.SetOnePolysurfacePoint(4, {5, 6, 7, 8});
    const int indices[2] = {0, 4};
    surface.AddPolysurfacePolygon(0, indices, 2, kRed, kGreen);

    RecordBytes expected;
    expected.Ints({0, 0}).Doubles({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}).Ints({0, 0, 1, 5});
    expected.Doubles({1, 2, 3, 4}).Doubles({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    expected.Doubles({5, 6, 7, 8}).Ints({2, 1, 4, 2, 2});
    expected.Doubles({1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0.5}).Ints({2, 0});
    expected.Doubles({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}).Ints({0, 0, 0, 4, 0, 0});
    EXPECT_EQ(Saved(surface), expected.Get());
    ExpectRecordRules<CPolysurface>(expected, ERR3DCLASS_POLYSURFACE);
}

TEST(PolysurfaceRecord, HoldsTheGridAndTheNeighbours) {
    const double z[6] = {1, 2, 3, 4, 5, 6};
    CPolysurface surface(2, 3, 10.0, 20.0, 14.0, 21.0, z, 1);
    surface.SetPolysurfaceColors(2, kRed, kGreen);
    const auto bytes = Saved(surface);
    RecordBytes head;
    head.Ints({2, 3}).Doubles({10, 14, 4, 20, 21, 1, 1, 6, 5, 2, 1}).Ints({1, 1, 3, 10});
    EXPECT_TRUE(std::equal(head.Get().begin(), head.Get().end(), bytes.begin()));
    constexpr std::size_t kSize = 112 + 10 * 32 + 20 + 14 * 104 + 46 * 4 + 14 * 12;
    EXPECT_EQ(bytes.size(), kSize);

    CPolysurface loaded = Loaded(bytes);
    EXPECT_EQ(Saved(loaded), bytes);
    EXPECT_EQ(loaded.GetRGStepX(), 2);
    ExpectColors(loaded, 2, kRed, kGreen);
    ExpectColors(loaded, 3, {0, 0, 1, 1}, {0, 0, 0, 1});
    EXPECT_EQ(Neighbours(loaded, 1), Neighbours(surface, 1));

    CPolysurface empty;
    const auto nothing = Saved(empty);
    EXPECT_EQ(nothing.size(), 132U);
    surface.Load(std::make_unique<MemoryFile>(nothing).get());
    EXPECT_EQ(surface.GetPSNumPoints(), 0);
    EXPECT_EQ(Saved(surface), nothing);
}

TEST(PolysurfaceRecord, TablesThatDoNotFitGiveAnEmptySurface) {
    CPolysurface surface = TwoTriangles();
    const auto good = Saved(surface);
    constexpr std::size_t kCounts = 112 + 8 * 32;
    constexpr std::size_t kPolygons = kCounts + 20;
    constexpr std::size_t kIndices = kPolygons + 10 * 104;
    constexpr std::size_t kNeighbours = kIndices + 33 * 4;
    for (const std::size_t place :
         {std::size_t{0}, std::size_t{4}, std::size_t{108}, kCounts, kCounts + 4, kCounts + 8,
          kCounts + 16, kPolygons + 96, kPolygons + 100, kIndices, kNeighbours}) {
        for (const std::int32_t value : {-1000, 1000000, INT32_MAX, INT32_MIN}) {
            auto bad = good;
            std::memcpy(bad.data() + place, &value, 4);
            EXPECT_EQ(Loaded(bad).GetPSNumPoints(), 0) << place << ", " << value;
        }
    }
    // A polygon behind those in use says nothing, in particular not how large the largest is.
    auto unused = good;
    const std::int32_t many = 1000000;
    std::memcpy(unused.data() + kPolygons + 5 * 104 + 96, &many, 4);
    EXPECT_EQ(Loaded(unused).GetPSLargestPolygon(), 3);
    // What lies behind an unfitting table can still be read.
    auto bad = good;
    const std::int32_t far = 77;
    std::memcpy(bad.data() + kIndices, &far, 4);
    bad.push_back(42);
    MemoryFile file(bad);
    CPolysurface loaded(&file);
    EXPECT_EQ(file.Remaining(), 1U);
}

TEST(PolysurfaceRecord, DamagedFilesAreSafeToUse) {
    const double z[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    CPolysurface surface(3, 3, 0.0, 0.0, 1.0, 1.0, z, 1);
    const auto good = Saved(surface);
    std::uint32_t random = 12345;
    const auto next = [&random] { return random = random * 1664525U + 1013904223U; };
    for (int round = 0; round < 3000; ++round) {
        auto bad = good;
        for (int k = 0; k < 3; ++k)
            bad[(next() >> 8) % bad.size()] = static_cast<BYTE>(next() >> 13);
        CPolysurface loaded = Loaded(bad);
        std::vector<point3Dtype> pts(static_cast<std::size_t>(loaded.GetPSLargestPolygon()) + 1);
        for (int i = 0; i < loaded.GetPSMaxPolygons(); ++i) {
            RGBDType a, b;
            int n = 0;
            loaded.GetPolysurfacePolygon(i, pts.data(), n, a, b);
        }
        CPolysurface copy(loaded);
        copy.DelaunaySurface(1);
        if (loaded.GetEvenGridFlag() != 0 && loaded.GetRGRows() > 3) {
            CPolysurface reduced(&loaded, 2);
        }
        Saved(loaded);
    }
}

TEST(PolysurfaceRecord, FilesOfTheirOwn) {
    CPolysurface surface = TwoTriangles();
    const TemporaryFolder folder;
    const CString name = folder.File("surface");
    surface.Save(name);
    CPolysurface loaded(name);
    EXPECT_EQ(Saved(loaded), Saved(surface));
    std::remove(name.c_str());
    EXPECT_TRUE(Raises(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_POLYSURFACE, "Load",
                       [&] { CPolysurface missing(name); }));
    EXPECT_TRUE(Raises(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_POLYSURFACE, "Save",
                       [&] { surface.Save(CString("/no such folder/file")); }));
    surface.Save(HANDLE{});
    surface.Load(HANDLE{});
    EXPECT_EQ(surface.GetPSNumPoints(), 4);
}

}  // namespace
}  // namespace varnel::test
