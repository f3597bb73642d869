// What chart objects bring to the screen, and the state that they leave behind.
#include "varnel/chartobj/chart_object.h"

#include <climits>
#include <cmath>

#include "tests/support/gl_fixture.h"
#include "tests/support/values.h"
#include "varnel/render/font.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

constexpr RGBDType kColors[6] = {kRed, kGreen, kBlue, kRed, kGreen, kBlue};
constexpr double kInd[] = {2, 4, 6, 8};
constexpr double kDep[] = {3, 7, 4, 6};
constexpr double kHeights[] = {1, 2, 1, 2};
constexpr point3Dtype kPoints[] = {{2, 2, 5, 0}, {4, 6, 7, 0}, {6, 3, 3, 0}, {8, 8, 8, 0}};
// Six groups that rise one above the other; as prices: open, high, low, close.
constexpr double kGroups[] = {2, 2, 2, 2, 9, 9, 9, 9, 1, 1, 1, 1,
                              6, 6, 6, 6, 8, 8, 8, 8, 5, 5, 5, 5};
constexpr double kBoxes[] = {1, 1, 1, 1, 2, 2, 2, 2, 4, 4, 4, 4,
                             6, 6, 6, 6, 9, 9, 9, 9, 5, 5, 5, 5};

class ChartObjects : public GLFixture {
 protected:
    void SetUp() override {
        GLFixture::SetUp();
        m_Transform = std::make_unique<CTransform3D>(&GL(), point3Dtype{0, 0, 0, 0},
                                                     point3Dtype{10, 10, 10, 0});
        m_Transform->SetRotate({-20, 0, 25, 0});
        constexpr double z[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
        m_Surface = std::make_unique<CPolysurface>(3, 3, 1, 1, 9, 9, z, 1);
    }

    CChartObj3D Object() { return {&GL(), m_Transform.get()}; }

    std::vector<FeedbackPrimitive> Drawn(CChartObj3D& object) {
        GL().SetCulling(0);  // what would cover no pixel is counted, too
        return Feedback([&] { object.DrawChartObj(); });
    }

    /// A square view along y: x and z of 0..10 are 0..100 pixels.
    void LookAlongY() {
        m_Transform->SetRotate({0, 0, 0, 0});
        m_Transform->SetChartRect({1, 1, 1, 0});
    }

    void ExpectStateTakenBack() {
        GL().SyncState();
        EXPECT_EQ(GL().GetFrameFilled(), 0);
        EXPECT_EQ(m_Transform->GetClipping(), 0);
        for (const GLenum cap : {GL_CLIP_PLANE0, GL_CLIP_PLANE5, GL_TEXTURE_1D})
            EXPECT_FALSE(glIsEnabled(cap));
        EXPECT_EQ(GL().GetLineWidth3D(), 1.0);
    }

    /// Sets an object up as `type`, with data or with null arrays.
    void SetUpType(CChartObj3D& o, int type, bool data) {
        const double* const ind = data ? kInd : nullptr;
        const double* const dep = data ? kDep : nullptr;
        const double* const heights = data ? kHeights : nullptr;
        const double* const groups = data ? kGroups : nullptr;
        const double* const boxes = data ? kBoxes : nullptr;
        const point3Dtype* const points = data ? kPoints : nullptr;
        const CString strings[] = {"a", "b", "c", "d"};
        CPolysurface* const surface = data ? m_Surface.get() : nullptr;
        const auto k = kColors;
        switch (type) {
            case 1:
                return o.RibbonChart25D(ind, dep, 5, 4, 1, kRed, kBlack, 1, 0);
            case 2:
                return o.BarChart25D(ind, dep, 0, 5, 4, 1, 1, kRed, kBlack, 1, 1, 0);
            case 3:
                return o.BarChart3D(points, heights, 4, 1, 1, kRed, kBlack);
            case 4:
                return o.AreaFillChart25D(ind, dep, 5, 5, 4, 1, kRed, kBlack, 1, 0);
            case 5:
                return o.AreaRangeChart25D(ind, dep, heights, 5, 4, 1, kRed, kBlack, 1, 0);
            case 6:
                return o.LineChart25D(ind, dep, 5, 4, 0, 2, kRed, 0);
            case 7:
                return o.ScatterChart3D(points, 1, 4, 12, kRed, kBlack, 0, 0);
            case 8:
                return o.LineChart3D(points, 4, 0, 2, kRed);
            case 9:
                return o.ProjectionLineChart3D(points, 0, 4, 0, 2, kRed, 1, 5);
            case 10:
                return o.GroupBarChart25D(ind, groups, 5, 0, 4, 2, 0, 1, 1, k, kBlack, 1, 1, 0);
            case 11:
                return o.GroupRibbonChart25D(ind, groups, 5, 4, 3, 1, k, kBlack, 1, 0);
            case 12:
                return o.GroupAreaFillChart25D(ind, groups, 5, 4, 3, 1, k, kBlack, 1, 0);
            case 13:
                return o.OHLCChart25D(ind, groups, 5, 4, 10, 11, 0.3, 2, k, kBlack, 1, 1, 0,
                                      nullptr);
            case 14:
                return o.PlaneChart3D(points, 4, 1, 1, kRed, kBlack);
            case 15:
                return o.ScatterText3D(points, data ? strings : nullptr, 4, 1, 3, kRed, 0, 0);
            case 16:
                return o.BoxAndWhiskerChart25D(ind, boxes, 5, 4, 1, 1, 12, 0.3, 2, k, kBlack, 1, 1,
                                               0, 1);
            case 17:
                return o.FloatingBarChart25D(ind, dep, heights, 5, 4, 1, 1, kRed, kBlack, 1, 1, 0);
            case 18:
                return o.PlaneChart25D(ind, dep, 5, 4, 1, 1, kRed, kBlack, 1, 1, 0);
            case 50:
                return o.PolysurfaceChart2D(surface, 1, 0);
            case 51:
                return o.PolysurfaceChart3D(surface);
            case 52:
                return o.ContourPolysurface3D(surface, dep, data ? k : nullptr, 3, 5, 0);
            case 60:
                return o.ErrorBars3D(Points(data), Doubles(heights), Doubles(heights), 2, 0.3, 0, 2,
                                     kRed);
            case 61:
                return o.Vectors3D(Points(data), Points(data), 0.2, 0.5, 0, 2, kRed);
            case 62:
                return o.ReferenceLine3D(2, 5, data ? 1 : 7, 0, 2, kRed);
            case 63:
                return o.ReferenceBand3D(0, 2, 4, data ? 0 : 7, kRed);
            case 64:
                o.Note3D("here", kPoints[0], kPoints[2], 1, 2, kRed);
                return data ? void() : o.DeleteDataStringsStorage();
            default:
                return o.SetChartType(type);
        }
    }

    static std::span<const point3Dtype> Points(bool data) {
        return data ? std::span(kPoints) : std::span<const point3Dtype>();
    }
    static std::span<const double> Doubles(const double* values) {
        return {values, values != nullptr ? 4U : 0U};
    }

    static constexpr int kTypes[] = {60, 61, 62, 63, 64, 1,  2,  3,  4,  5,  6,  7,  8,
                                     9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 50, 51, 52};

    std::unique_ptr<CTransform3D> m_Transform;
    std::unique_ptr<CPolysurface> m_Surface;
};

TEST_F(ChartObjects, EveryTypeDrawsInEveryModeAndTakesItsStateBack) {
    for (const int type : kTypes)
        for (const int indAxis : {0, 1})
            for (const int mode : {0, 1, 2}) {
                SCOPED_TRACE(testing::Message() << type << " axis " << indAxis << " mode " << mode);
                CChartObj3D object = Object();
                SetUpType(object, type, true);
                // Marks on walls have an axis of their own, and lie where clipping cuts.
                const bool onWall = type == REFERENCELINE3D || type == REFERENCEBAND3D;
                if (!onWall) object.SetIndAxis(indAxis);
                object.SetColorMode(mode);
                if (!onWall) object.SetClipping(mode);
                object.SetOutlineMode(mode);
                // Contour colours lie in the same place.
                if (mode == 1 && type != 52) object.InitSegmentColorsStorage(kColors);
                Draw([&] { object.DrawChartObj(); });
                EXPECT_GT(Inked(), 20);
                ExpectStateTakenBack();
            }
}

TEST_F(ChartObjects, MissingArraysAndUnknownTypesDrawNothing) {
    for (const int type : kTypes) {
        CChartObj3D object = Object();
        SetUpType(object, type, false);
        object.SetNumDataPnts(100);
        object.SetNumContours(100);
        object.SetSegmentColorMode(1);
        Draw([&] { object.DrawChartObj(); });
        EXPECT_EQ(Inked(), 0) << type;
    }
    for (const int type : {0, 19, 49, 53, 65, -1}) {
        CChartObj3D object = Object();
        object.SetChartType(type);
        Draw([&] { object.DrawChartObj(); });
        EXPECT_EQ(Inked(), 0) << type;
    }
}

TEST_F(ChartObjects, CountsRaisedByHandDrawWhatIsStored) {
    for (const int type : kTypes) {
        SCOPED_TRACE(type);
        CChartObj3D object = Object();
        SetUpType(object, type, true);
        object.SetOutlineMode(0);  // the gap depends on the number of points
        if (type != 52) object.InitSegmentColorsStorage(kColors);
        object.SetSegmentColorMode(0);
        const bool grouped = object.GetNumGroups() != 0;
        const auto before = Drawn(object);
        object.SetNumGroups(INT_MAX);
        object.SetNumContours(INT_MAX);
        if (!grouped) object.SetNumDataPnts(INT_MAX);
        const auto after = Drawn(object);
        // Side by side, more groups are narrower bars; all else is as it was.
        EXPECT_EQ(CountPolygons(before), CountPolygons(after));
        EXPECT_EQ(CountLines(before), CountLines(after));
        object.SetNumDataPnts(INT_MAX);
        object.SetSegmentColorMode(1);
        Drawn(object);
    }
}

TEST_F(ChartObjects, AFailureInsideTheDrawingTakesTheStateBack) {
    CChartObj3D object = Object();
    SetUpType(object, SCATTERTEXT3D, true);
    object.SetColorMode(2);
    object.SetClipping(1);
    GL().SetCurrentFont(7);
    ExpectError(ERR3D_FONT_PARAMETER, ERR3DCLASS_TEXTOBJ3D, "InitTextObj",
                [&] { object.DrawChartObj(); });
    ExpectStateTakenBack();
}

TEST_F(ChartObjects, ClippingEndsAtTheLimits) {
    LookAlongY();
    CChartObj3D object = Object();
    object.BarChart25D(kInd, kDep, 0, 5, 2, 1, 1, kRed, kBlack, 1, 1, 0);
    object.SetOutlineMode(0);
    object.SetDepData(1, 25);
    object.SetClipping(1);
    ExpectBox(ExtentOf(Drawn(object)), 15, 45, 0, 100, 0.2);
}

TEST_F(ChartObjects, LinesTakeTheSegmentColoursOfTheirInnerPoints) {
    LookAlongY();
    constexpr double level[] = {5, 5, 5, 5};
    CChartObj3D object = Object();
    object.LineChart25D(kInd, level, 5, 4, 0, 3, kBlack, 0);
    object.SetColorMode(0);
    object.InitSegmentColorsStorage(kColors);
    Draw([&] { object.DrawChartObj(); });
    EXPECT_LT(Pixel(21, 50).rgbGreen, 60);   // the first point keeps the line's black
    EXPECT_GT(Pixel(40, 50).rgbGreen, 200);  // the second is green
    EXPECT_GT(Pixel(59, 50).rgbBlue, 200);   // the third blue, and so is the last
    EXPECT_GT(Pixel(78, 50).rgbBlue, 200);
}

TEST_F(ChartObjects, SymbolsHaveOneSizeAndAreJoinedToTheirProjection) {
    LookAlongY();
    constexpr point3Dtype point[] = {{5, 5, 5, 0}};
    CChartObj3D object = Object();
    object.ScatterChart3D(point, 2, 1, 10, kRed, kBlack, -1, 0);
    object.SetOutlineMode(0);
    auto drawn = Drawn(object);
    EXPECT_EQ(CountLines(drawn), 0);
    const Extent extent = ExtentOf(drawn);  // 0.2 of the -1..1 that 100 pixels are
    EXPECT_NEAR(extent.left, 45, 0.01);
    EXPECT_NEAR(extent.top, 55, 0.01);

    object.SetSymbol(9);
    object.SetProjectionPlane(3);
    drawn = Drawn(object);
    EXPECT_EQ(CountPolygons(drawn), 0);
    ASSERT_EQ(CountLines(drawn), 1);
    EXPECT_NEAR(ExtentOf(drawn).bottom, 0, 0.01);
    object.SetProjectionPlane(6);
    EXPECT_EQ(CountLines(Drawn(object)), 0);
}

TEST_F(ChartObjects, OnLogarithmicAxesScatterProjectsFromTheTwiceConvertedValue) {
    LookAlongY();
    m_Transform->SetScale({0, 0, 1, 0}, {10, 10, 1e4, 0});
    m_Transform->SetAxisScaleMode(2, 1);
    constexpr point3Dtype point[] = {{5, 5, 1e3, 0}};
    const CString text = "";
    CChartObj3D object = Object();
    object.ScatterChart3D(point, 1, 1, 0, kRed, kBlack, 0, 1);
    EXPECT_NEAR(ExtentOf(Drawn(object)).top, 25 * std::log10(3), 0.01);
    object.SetExactExtents(1);
    EXPECT_NEAR(ExtentOf(Drawn(object)).top, 75, 0.01);
    object.ScatterText3D(point, &text, 1, 1, 3, kRed, 0, 1);
    EXPECT_NEAR(ExtentOf(Drawn(object)).top, 75, 0.01);
}

TEST_F(ChartObjects, MarkersStandWholeAtPointsOfTheBoxAndBeforeTheirLine) {
    // On the box's lower corner, where the clip planes would cut a marker, inside, and outside.
    m_Transform->SetScale({0, 0, 0, 0}, {10, 10, 10, 0});
    constexpr point3Dtype points[] = {{0, 0, 0, 0}, {5, 5, 5, 0}, {12, 5, 5, 0}};
    CChartObj3D line = Object();
    line.LineChart3D(points, 3, 0, 1, kRed);
    line.SetClipping(1);
    ASSERT_EQ(test::CountPolygons(Drawn(line)), 0);
    line.SetMarker(MARKER_SQUARE, 12);
    const auto drawn = Drawn(line);
    std::vector<test::FeedbackPrimitive> squares;
    for (const auto& primitive : drawn)
        if (primitive.IsPolygon()) squares.push_back(primitive);
    ASSERT_EQ(squares.size(), 4U);  // two triangles each
    const auto first = test::ExtentOf({squares[0], squares[1]});
    // 12 points are 16 pixels, a square's side 0.89 of that.
    EXPECT_NEAR(first.right - first.left, 16 * 0.89, 0.1);
    EXPECT_NEAR(first.top - first.bottom, 16 * 0.89, 0.1);
}

TEST_F(ChartObjects, LinesWithJoinsAreAreas) {
    constexpr point3Dtype points[] = {{2, 5, 2, 0}, {8, 5, 2, 0}, {8, 5, 8, 0}};
    CChartObj3D line = Object();
    line.LineChart3D(points, 3, LINE_DASHES, 5, kRed);
    const auto before = Drawn(line);
    EXPECT_EQ(test::CountPolygons(before), 0);
    line.SetLineJoins(1);
    EXPECT_EQ(CountLines(Drawn(line)), 0);
    line.SetLineStyleFactor(4);
    EXPECT_LT(test::CountPolygons(Drawn(line)), 40);  // two triangles for each of few dashes
    EXPECT_EQ(GL().GetLineJoins(), 0);
    EXPECT_EQ(GL().GetLineStyleFactor(), 1);
}

TEST_F(ChartObjects, JoinedAreasHaveNoLinesBetweenTheirSegments) {
    constexpr double dep[] = {5, 5, 5};
    CChartObj3D object = Object();
    object.AreaFillChart25D(kInd, dep, 0, 5, 3, 1, kRed, kBlack, 0, 0);
    const int apart = CountLines(Drawn(object));
    object.SetSegmentOutlines(0);
    // Each segment has three visible faces with nine edges. Joined, one keeps seven of them, the
    // other one, whose end is the seam, five.
    EXPECT_EQ(apart, 18);
    EXPECT_EQ(CountLines(Drawn(object)), 12);
}

TEST_F(ChartObjects, AreasTakeSegmentColoursByPieceAndRangesTheirOwn) {
    LookAlongY();
    constexpr double dep[] = {6, 2, 2};
    CChartObj3D object = Object();
    object.AreaFillChart25D(kInd, dep, 4, 5, 3, 1, kBlack, kBlack, 0, 0);
    object.SetColorMode(0);
    object.SetOutlineMode(0);
    object.InitSegmentColorsStorage(kColors);
    Draw([&] { object.DrawChartObj(); });
    EXPECT_EQ(Pixel(24, 45).rgbGreen, 255);  // piece 1, above the base
    EXPECT_EQ(Pixel(37, 35).rgbBlue, 255);   // piece 2, below it
    EXPECT_EQ(Pixel(50, 30).rgbBlue, 255);   // piece 3 has no colour of its own

    object.AreaRangeChart25D(kInd, dep, dep, 5, 3, 1, kBlack, kBlack, 0, 0);
    object.SetAreaRangeColor(kGreen);
    Draw([&] { object.DrawChartObj(); });
    EXPECT_EQ(Pixel(50, 10).rgbGreen, 255);
}

TEST_F(ChartObjects, StyledContoursAreWholeLinesWithTheirLabels) {
    m_Transform->SetRotate({-90, 0, 0, 0});  // from above: y is up
    m_Transform->SetChartRect({1, 1, 1, 0});
    constexpr double z[] = {1, 1, 1, 5, 5, 5, 9, 9, 9}, level[] = {5};
    CPolysurface ramp(3, 3, 0, 0, 10, 10, z, 1);
    CChartObj3D object = Object();
    object.ContourPolysurface3D(&ramp, level, kColors, 1, 0, 0);
    object.SetContourStyle({.lineWidth = 2});
    const auto whole = Drawn(object);
    EXPECT_EQ(CountPolygons(whole), 0);
    const Extent extent = ExtentOf(whole);  // at a level that points lie on
    EXPECT_NEAR(extent.left, 0, 0.01);
    EXPECT_NEAR(extent.right, 100, 0.01);
    EXPECT_NEAR(extent.top, 50, 0.01);
    EXPECT_NEAR(whole[0].vertices[0].z, 1, 1e-3);  // on the floor

    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    object.SetContourStyle({.onSurface = 1, .labels = 1, .labelSize = 0.5});
    std::vector<FeedbackPrimitive> lines;
    const auto labelled = Drawn(object);
    for (const FeedbackPrimitive& primitive : labelled)
        if (primitive.IsLine()) lines.push_back(primitive);
    EXPECT_GT(CountPolygons(labelled), 0);
    EXPECT_EQ(lines.size(), whole.size() + 1);  // in two parts
    EXPECT_NEAR(lines[0].vertices[0].z, 0.5, 0.01);
    ExpectStateTakenBack();

    // Where the surface has the level when it is drawn by logarithms.
    m_Transform->SetScale({1, 1, 1, 0}, {100, 100, 100, 0});
    for (const int axis : {0, 1, 2})
        m_Transform->SetAxisScaleMode(axis, 1);
    constexpr double steep[] = {1, 1, 100, 100}, ten[] = {10};
    CPolysurface logarithmic(2, 2, 1, 1, 100, 100, steep, 1);
    object.ContourPolysurface3D(&logarithmic, ten, kColors, 1, 1, 0);
    object.SetContourStyle({});
    EXPECT_NEAR(ExtentOf(Drawn(object)).bottom, 50, 0.01);
}

TEST_F(ChartObjects, FlattenedWiresAreDrawnInTheLineColour) {
    m_Surface->SetWireFrame(1);
    CChartObj3D object = Object();
    SetUpType(object, POLYSURFACECHART3D, true);
    // The copy is wire as well; frames in space are in the polygons' second colour, black.
    GL().SetLineColor3D(kRed);
    for (const auto& primitive : Drawn(object))
        for (const auto& v : primitive.vertices)
            EXPECT_EQ(v.r, 0);
    SetUpType(object, POLYSURFACECHART2D, true);
    const auto flat = Drawn(object);
    EXPECT_EQ(CountPolygons(flat), 0);
    ASSERT_GT(CountLines(flat), 0);
    for (const auto& primitive : flat)
        for (const auto& v : primitive.vertices)
            EXPECT_EQ(v.r, 1);
}

}  // namespace
}  // namespace varnel::test
