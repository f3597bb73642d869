// What chart objects bring to the screen, and the state that they leave behind.
#include "varnel/chartobj/chart_object.h"

#include <climits>
#include <cmath>

#include "tests/chartobj/set_ups.h"
#include "tests/support/gl_fixture.h"
#include "tests/support/values.h"
#include "varnel/chartobj/detail/hiding_surfaces.h"
#include "varnel/render/font.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

constexpr RGBDType kSegments[] = {kRed, kGreen, kBlue, kRed};
constexpr double kPlaces[] = {2, 4, 6, 8};

class ChartObjects : public GLFixture {
 protected:
    void SetUp() override {
        GLFixture::SetUp();
        m_Transform = std::make_unique<CTransform3D>(&GL(), point3Dtype{0, 0, 0, 0},
                                                     point3Dtype{10, 10, 10, 0});
        m_Transform->SetRotate({-20, 0, 25, 0});
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
        EXPECT_EQ(GL().GetLineStyle(), LINE_SOLID);
    }

    std::unique_ptr<CTransform3D> m_Transform;
};

TEST_F(ChartObjects, EveryTypeDrawsInEveryModeAndTakesItsStateBack) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    for (const SetUpCase& setUp : kSetUps)
        for (const int indAxis : {0, 1})
            for (const int mode : {0, 1, 2}) {
                SCOPED_TRACE(testing::Message()
                             << setUp.name << " axis " << indAxis << " mode " << mode);
                CChartObj3D object = Object();
                setUp.classic(object);
                // Marks on walls have an axis of their own, and lie where clipping cuts.
                const bool onWall = setUp.type == REFERENCELINE3D || setUp.type == REFERENCEBAND3D;
                if (!onWall) object.SetIndAxis(indAxis);
                object.SetColorMode(mode);
                if (!onWall) object.SetClipping(mode);
                object.SetOutlineMode(mode);
                object.SetLineStyle(LINE_DOTS_WIDE);
                // Contour colours lie in the same place.
                if (mode == 1 && setUp.type != 52) object.InitSegmentColorsStorage(kSegments);
                Draw([&] { object.DrawChartObj(); });
                EXPECT_GT(Inked(), 5);
                ExpectStateTakenBack();
            }
}

TEST_F(ChartObjects, MissingArraysAndUnknownTypesDrawNothing) {
    for (const SetUpCase& setUp : kSetUps) {
        if (setUp.type == REFERENCELINE3D || setUp.type == REFERENCEBAND3D) continue;
        CChartObj3D object = Object();
        setUp.classic(object);
        for (void (O::*array)() :
             {&O::DeleteIndDataStorage, &O::DeleteDepDataStorage, &O::DeleteGroupDataStorage,
              &O::DeleteDepData2Storage, &O::DeleteBarHeightsStorage, &O::DeleteGroupColorsStorage,
              &O::DeleteContourColorsStorage, &O::Delete3DPointStorage,
              &O::DeletePolysurfaceStorage, &O::DeleteDataStringsStorage})
            (object.*array)();
        object.SetNumDataPnts(100);
        object.SetNumContours(100);
        object.SetSegmentColorMode(1);
        Draw([&] { object.DrawChartObj(); });
        EXPECT_EQ(Inked(), 0) << setUp.name;
    }
    for (const int type : {0, 19, 49, 53, 65, -1}) {
        CChartObj3D object = Object();
        object.SetChartType(type);
        Draw([&] { object.DrawChartObj(); });
        EXPECT_EQ(Inked(), 0) << type;
    }
}

TEST_F(ChartObjects, CountsRaisedByHandDrawWhatIsStored) {
    for (const SetUpCase& setUp : kSetUps) {
        SCOPED_TRACE(setUp.name);
        CChartObj3D object = Object();
        setUp.classic(object);
        object.SetOutlineMode(0);  // the gap depends on the number of points
        if (setUp.type != 52) object.InitSegmentColorsStorage(kSegments);
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
    object.ScatterText3D(kPoints, kTexts, 2, 1, 3, kRed, 0, 0);
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
    object.BarChart25D(kPlaces, kPlaces, 0, 5, 2, 1, 1, kRed, kBlack, 1, 1, 0);
    object.SetOutlineMode(0);
    object.SetDepData(1, 25);
    object.SetClipping(1);
    ExpectBox(ExtentOf(Drawn(object)), 15, 45, 0, 100, 0.2);
}

TEST_F(ChartObjects, LinesTakeTheSegmentColoursOfTheirInnerPoints) {
    LookAlongY();
    constexpr double level[] = {5, 5, 5, 5};
    CChartObj3D object = Object();
    object.LineChart25D(kPlaces, level, 5, 4, 0, 3, kBlack, 0);
    object.SetColorMode(0);
    object.InitSegmentColorsStorage(kSegments);
    Draw([&] { object.DrawChartObj(); });
    EXPECT_LT(Pixel(21, 50).rgbGreen, 60);   // the first point keeps the line's black
    EXPECT_GT(Pixel(40, 50).rgbGreen, 200);  // the second is green
    EXPECT_GT(Pixel(59, 50).rgbBlue, 200);   // the third blue, and so is the last
    EXPECT_GT(Pixel(78, 50).rgbBlue, 200);
}

TEST_F(ChartObjects, BarsCandlesAndRibbonsHaveTheirColours) {
    LookAlongY();
    constexpr double prices[] = {3, 7, 9, 9, 1, 1, 6, 4};
    constexpr RGBDType colors[] = {kBlack, kGreen, kBlue, kBlack, kRed};
    constexpr int flags[] = {1, 0, 0, 0, 0, 1};
    const auto colorAt = [&](CChartObj3D& object, int x, int z) {
        object.SetColorMode(0);
        object.SetOutlineMode(0);
        Draw([&] { object.DrawChartObj(); });
        const RGBQUAD p = Pixel(x, z);
        return p.rgbRed << 16 | p.rgbGreen << 8 | p.rgbBlue;
    };
    CChartObj3D candles = Object();
    candles.OHLCChart25D(kPlaces, prices, 5, 2, 0, 0, 1, 3, colors, kBlack, 1, 1, 0, flags);
    candles.SetComboChartFlags(flags);
    EXPECT_EQ(colorAt(candles, 20, 45), 0x00FF00) << "rose from 3 to 6";
    EXPECT_EQ(colorAt(candles, 40, 55), 0x0000FF) << "fell from 7 to 4";
    EXPECT_EQ(colorAt(candles, 20, 80), 0xFF0000) << "the line above the body";
    CChartObj3D bars = Object();
    bars.BarChart25D(kPlaces, kPlaces, 0, 5, 2, 1, 1, kRed, kBlack, 1, 1, 0);
    bars.InitSegmentColorsStorage(kSegments);
    EXPECT_EQ(colorAt(bars, 40, 10), 0x00FF00);
    bars.FloatingBarChart25D(kPlaces, kPlaces, kPlaces, 5, 2, 1, 1, kRed, kBlack, 1, 1, 0);
    bars.InitSegmentColorsStorage(kSegments);
    EXPECT_EQ(colorAt(bars, 40, 10), 0x00FF00);
    constexpr double values[] = {1, 1, 2, 2, 3, 3};
    CChartObj3D ribbons = Object();
    ribbons.GroupRibbonChart25D(kPlaces, values, 5, 2, 3, 1, colors, kBlack, 0, 0);
    ribbons.SetFillGap(0.5);
    m_Transform->SetRotate({-90, 0, 0, 0});
    EXPECT_EQ(colorAt(ribbons, 30, 45), 0x0000FF) << "the third on the others";
    // The gap of the ribbons is their own default, not this object's.
    EXPECT_NEAR(ExtentOf(Drawn(ribbons)).right, 40 - 0.16, 0.01);
    ribbons.SetSegmentOutlines(0);
    EXPECT_NEAR(ExtentOf(Drawn(ribbons)).right, 40, 0.01);
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

TEST_F(ChartObjects, NotesHaveTheirTextAndBandsTheirColour) {
    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    CChartObj3D object = Object();
    object.Note3D("note", kPoints[0], kPoints[1], 1, 2, kRed);
    EXPECT_GT(CountPolygons(Drawn(object)), 0);
    GL().SetColorMode(COLOR_MODE_LIT);
    object.ReferenceBand3D(2, 2, 8, 1, kRed);
    for (const auto& primitive : Drawn(object))
        EXPECT_EQ(primitive.vertices[0].r, 1.0F) << "as it is, not lit";
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
    object.AreaFillChart25D(kPlaces, dep, 0, 5, 3, 1, kRed, kBlack, 0, 0);
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
    object.AreaFillChart25D(kPlaces, dep, 4, 5, 3, 1, kBlack, kBlack, 0, 0);
    object.SetColorMode(0);
    object.SetOutlineMode(0);
    object.InitSegmentColorsStorage(kSegments);
    Draw([&] { object.DrawChartObj(); });
    EXPECT_EQ(Pixel(24, 45).rgbGreen, 255);  // piece 1, above the base
    EXPECT_EQ(Pixel(37, 35).rgbBlue, 255);   // piece 2, below it
    EXPECT_EQ(Pixel(50, 30).rgbBlue, 255);   // piece 3 has no colour of its own

    object.AreaRangeChart25D(kPlaces, dep, dep, 5, 3, 1, kBlack, kBlack, 0, 0);
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
    object.ContourPolysurface3D(&ramp, level, kSegments, 1, 0, 0);
    object.SetContourStyle({.lineWidth = 2});
    const auto whole = Drawn(object);
    EXPECT_EQ(CountPolygons(whole), 0);
    const Extent extent = ExtentOf(whole);  // at a level that points lie on
    ExpectNear(Row(extent.left, extent.right, extent.top), Row(0, 100, 50), 0.01);
    EXPECT_NEAR(whole[0].vertices[0].z, 1, 1e-3);  // on the floor

    ASSERT_NE(GL().RegisterFont("Arial", 0.2, 400, 0, 128), 0);
    object.SetContourStyle({.onSurface = 1, .labels = 1, .labelSize = 0.5});
    std::vector<FeedbackPrimitive> lines;
    const auto labelled = Drawn(object);
    for (const FeedbackPrimitive& primitive : labelled)
        if (primitive.IsLine()) lines.push_back(primitive);
    EXPECT_GT(CountPolygons(labelled), 0);
    EXPECT_EQ(lines.size(), whole.size() + 1);  // in two parts
    EXPECT_NEAR(lines[0].vertices[0].z, 0.5, 0.02);
    ExpectStateTakenBack();

    // Where a surface hides the label there is none, and no gap for it.
    CChartObj3D wall = Object();
    for (const double height : {9.0, 2.0}) {
        wall.PolysurfaceChart2D(&ramp, height, 0);
        object.SetHiddenBy(
            std::make_shared<detail::HidingSurfaces>(std::vector<const CChartObj3D*>{&wall}));
        EXPECT_EQ(CountPolygons(Drawn(object)) > 0, height < 5.0) << height;
    }
    object.SetHiddenBy(nullptr);

    // A closed line ends where it starts.
    constexpr double peak[] = {1, 1, 1, 1, 9, 1, 1, 1, 1};
    CPolysurface hill(3, 3, 0, 0, 10, 10, peak, 1);
    object.ContourPolysurface3D(&hill, level, kSegments, 1, 0, 0);
    object.SetContourStyle({});
    const auto ring = Drawn(object);
    EXPECT_EQ(ring.front().vertices[0].x, ring.back().vertices[1].x);
    EXPECT_EQ(ring.front().vertices[0].y, ring.back().vertices[1].y);

    // Where the surface has the level when it is drawn by logarithms.
    m_Transform->SetScale({1, 1, 1, 0}, {100, 100, 100, 0});
    for (const int axis : {0, 1, 2})
        m_Transform->SetAxisScaleMode(axis, 1);
    constexpr double steep[] = {1, 1, 100, 100}, ten[] = {10};
    CPolysurface logarithmic(2, 2, 1, 1, 100, 100, steep, 1);
    object.ContourPolysurface3D(&logarithmic, ten, kSegments, 1, 1, 0);
    object.SetContourStyle({});
    EXPECT_NEAR(ExtentOf(Drawn(object)).bottom, 50, 0.01);
}

TEST_F(ChartObjects, FlattenedWiresAreDrawnInTheLineColour) {
    CPolysurface surface(SetUpSurface());
    surface.SetWireFrame(1);
    CChartObj3D object = Object();
    object.PolysurfaceChart3D(&surface);
    // The copy is wire as well; frames in space are in the polygons' second colour, black.
    GL().SetLineColor3D(kRed);
    for (const auto& primitive : Drawn(object))
        for (const auto& v : primitive.vertices)
            EXPECT_EQ(v.r, 0);
    object.PolysurfaceChart2D(&surface, 1, 0);
    const auto flat = Drawn(object);
    EXPECT_EQ(CountPolygons(flat), 0);
    ASSERT_GT(CountLines(flat), 0);
    for (const auto& primitive : flat)
        for (const auto& v : primitive.vertices)
            EXPECT_EQ(v.r, 1);
}

}  // namespace
}  // namespace varnel::test
