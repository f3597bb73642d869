// Storages, accessors and set-up operations.
#include "varnel/chartobj/chart_object.h"

#include <climits>
#include <cmath>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "tests/support/told.h"
#include "tests/support/values.h"
#include "varnel/chartobj/box_statistics.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

constexpr double kFour[] = {1, 2, 3, 4};
constexpr double kOther[] = {5, 6, 7, 8};

TEST(ChartObject, EveryConstructionCountsAndDefaultsDrawNothing) {
    const int before = CChartObj3D::nSelfID;
    CChartObj3D object;
    EXPECT_EQ(CChartObj3D::nSelfID, before + 1);
    const CChartObj3D copy(object);
    EXPECT_EQ(CChartObj3D::nSelfID, before + 1);
    EXPECT_EQ(object.GetSignature(), 606);
    EXPECT_EQ(object.GetChartType(), 0);
    EXPECT_EQ(object.GetFillGap(), 0.0016);
    EXPECT_EQ(object.GetTextPlane(), 1);
    EXPECT_NO_THROW(object.DrawChartObj());
}

TEST(ChartObject, WhatIsNotBoundCannotBeBoundOrDrawn) {
    CChartObj3D object;
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_CHARTOBJ3D, "InitChartObj3D",
                       [&] { object.InitChartObj3D(nullptr, nullptr); }));
    object.BarChart25D(kFour, kOther, 0, 0, 4, 1, 1, kRed, kBlack, 0, 0, 0);
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_CHARTOBJ3D, "DrawChartObj",
                       [&] { object.DrawChartObj(); }));
    object.EnableChartObj(0);
    EXPECT_NO_THROW(object.DrawChartObj());
}

TEST(ChartObject, SetDataStorage25DPutsTheSecondArrayOverTheFirst) {
    CChartObj3D object;
    object.BarChart25D(kOther, kOther, 0, 0, 4, 1, 1, kRed, kBlack, 0, 0, 0);
    constexpr double dependent[] = {9, 8, 7, 6};
    object.SetDataStorage25D(kFour, dependent, nullptr, 4);
    EXPECT_EQ(object.GetIndData(0), 9);
    EXPECT_EQ(object.GetDepData(0), 5);
    EXPECT_EQ(object.GetBarHeight(0), 0);
    object.SetDataStorage25D(kFour, dependent, kFour, 4);
    EXPECT_EQ(object.GetDepData2(2, 99), 3);
    EXPECT_EQ(object.GetBarHeight(2), 3);
}

TEST(ChartObject, IndicesOutOfRangeReadAsZeroAndAreNotWritten) {
    CChartObj3D object;
    constexpr RGBDType colors[] = {kRed, kGreen};
    constexpr double groups[] = {1, 2, 3, 4, 5, 6};
    object.GroupBarChart25D(kFour, groups, 0, 0, 3, 2, 0, 1, 1, colors, kBlack, 0, 0, 0);
    EXPECT_EQ(object.GetGroupData(1, 0), 4);
    for (const auto& [g, i] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 3}, {INT_MAX, INT_MAX}}) {
        EXPECT_EQ(object.GetGroupData(g, i), 0);
        object.SetGroupData(g, i, 77);
    }
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(object.GetGroupData(k / 3, k % 3), groups[k]);
    EXPECT_TRUE(Same(object.GetGroupColor(2), {}));
    EXPECT_EQ(object.GetDepData(0), 0);
    EXPECT_EQ(object.GetScatterTextString(0), "");
    EXPECT_EQ(object.GetPolysurfacePoint(0).x, 0);
    object.SetPolysurfacePoint(0, {1, 2, 3, 4});

    // Counts raised by hand reach no further than what is stored.
    object.SetNumDataPnts(INT_MAX);
    object.SetNumGroups(INT_MAX);
    object.SetIndData(3, 5);
    EXPECT_EQ(object.GetIndData(3), 0);
    EXPECT_EQ(object.GetGroupData(1, 0), 0);
    EXPECT_TRUE(Same(object.GetGroupColor(2), {}));
}

TEST(ChartObject, PointsAndSegmentColorsTreatNullAsOff) {
    CChartObj3D object;
    constexpr point3Dtype points[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    constexpr RGBDType colors[] = {kRed, kGreen};
    object.Set3DPointStorage(points, 2);
    EXPECT_EQ(object.Get3DPoint(1).w, 8);
    object.InitSegmentColorsStorage(colors);
    EXPECT_EQ(object.GetSegmentColorMode(), 1);
    object.InitSegmentColorsStorage(nullptr);
    EXPECT_EQ(object.GetSegmentColorMode(), 0);
    EXPECT_TRUE(Same(object.GetSegmentColor(1), kGreen));
    object.Init3DPointStorage(nullptr);
    EXPECT_EQ(object.GetNumDataPnts(), 0);
}

TEST(ChartObject, ContourColorsHaveTwoBounds) {
    CChartObj3D object;
    constexpr RGBDType colors[] = {kRed, kGreen, kBlack};
    object.SetContourStorage(nullptr, kFour, colors, 2);
    object.SetContourColor(2, kRed);
    object.SetContourColor(3, kRed);
    EXPECT_TRUE(Same(object.GetContourColor(0), kRed));
    EXPECT_TRUE(Same(object.GetContourColor(1), {}));  // there are no data points
    object.SetNumDataPnts(2);
    EXPECT_TRUE(Same(object.GetContourColor(2), kRed));
    EXPECT_TRUE(Same(object.GetContourColor(3), {}));
    object.SetContourValue(1, 42);
    EXPECT_EQ(object.GetIndData(1), 42);
}

TEST(ChartObject, TheAreaRangeColorLiesBehindThePointColors) {
    CChartObj3D object;
    object.AreaRangeChart25D(kFour, kFour, kFour, 0, 2, 1, kRed, kBlack, 0, 0);
    object.SetAreaRangeColor(kGreen);  // nothing to lie behind yet
    EXPECT_TRUE(Same(object.GetAreaRangeColor(), kRed));
    constexpr RGBDType colors[] = {kBlack, kBlack};
    object.InitSegmentColorsStorage(colors);
    EXPECT_TRUE(Same(object.GetAreaRangeColor(), kRed));
    object.SetAreaRangeColor(kGreen);
    EXPECT_TRUE(Same(object.GetAreaRangeColor(), kGreen));
    EXPECT_TRUE(Same(object.GetSegmentColor(1), kBlack));
    EXPECT_TRUE(Same(object.GetSegmentColor(2), {}));
}

TEST(ChartObject, SizesThatNoMemoryHasRaiseTheStoragesOwnError) {
    CChartObj3D object;
    const auto arrayError = [&](const char* operation, auto&& call) {
        EXPECT_TRUE(Raises(ERR3D_ARRAY_NEW, ERR3DCLASS_CHARTOBJ3D, operation, call));
    };
    object.SetNumDataPnts(-1);
    arrayError("InitIndDataStorage", [&] { object.InitIndDataStorage(kFour); });
    arrayError("InitDataStringsStorage", [&] {
        const CString text;
        object.InitDataStringsStorage(&text);
    });
    object.SetNumGroups(-2);
    arrayError("InitGroupDataStorage", [&] { object.InitGroupDataStorage(kFour); });
    object.SetNumGroups(INT_MAX);
    object.SetNumDataPnts(INT_MAX);
    arrayError("InitGroupDataStorage", [&] { object.InitGroupDataStorage(kFour); });
    object.SetNumContours(-1);
    arrayError("InitContourColorsStorage", [&] { object.InitContourColorsStorage(&kRed); });
}

TEST(ChartObject, CopiesShareTheirArraysAndOutliveEachOther) {
    CChartObj3D copy;
    {
        CChartObj3D object;
        object.LineChart25D(kFour, kOther, 0, 4, 2, 3.9, kRed, 0);
        copy = object;
        object.SetIndData(0, 11);
        object.DeleteDepDataStorage();
        EXPECT_EQ(object.GetDepData(0), 0);
    }
    EXPECT_EQ(Row(copy.GetIndData(0), copy.GetDepData(3), copy.GetLineWidth()), Row(11, 8, 3));
}

TEST(ChartObject, SetUpsKeepTheFlagsThatTheyDoNotTake) {
    CChartObj3D object;
    constexpr int all[] = {9, 9, 9, 9, 9, 9};
    constexpr RGBDType colors[6] = {};
    object.SetComboChartFlags(all);
    object.OHLCChart25D(kFour, nullptr, 3.0, 1, 10, 11, 0.5, 2, colors, kBlack, 0, 1, 0, nullptr);
    object.BoxAndWhiskerChart25D(kFour, nullptr, 0, 1, 1, 1, 10, 1, 1, colors, kBlack, 0, 1, 0, 0);
    int flags[6] = {};
    object.GetComboChartFlags(flags);
    EXPECT_EQ(std::vector<int>(flags, flags + 6), (std::vector<int>{0, 1, 1, 1, 1, 9}));
    object.LineChart25D(nullptr, nullptr, 0, 0, 0, std::nan(""), kRed, 0);
    EXPECT_EQ(object.GetLineWidth(), 0);
}

TEST(ChartObject, SpansThatDoNotBelongTogetherStoreNothingAndSayWhy) {
    CChartObj3D object;
    const std::span<const double> four(kFour), three(kFour, 3);
    const auto what = [&](auto&& call) {
        try {
            call();
        } catch (const Error& error) {
            EXPECT_EQ(error.m_ErrorType, ERR3D_PARAMETER);
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(what([&] { object.RibbonChart25D(four, three, 0, 1, kRed, kBlack, 0, 0); }),
              "RibbonChart25D: one array has 4 elements, another one 3");
    EXPECT_EQ(what([&] { object.SetGroupDataStorage(three, four, {}); }),
              "SetGroupDataStorage: 4 values are no groups of 3");
    EXPECT_EQ(what([&] { object.SetContourStorage(nullptr, four, std::span(&kRed, 1)); }),
              "SetContourStorage: there are 1 colours for 5");
    EXPECT_EQ(
        what([&] { object.OHLCChart25D(four, four, 0, 0, 0, 1, 1, {}, kBlack, 0, 0, 0, nullptr); }),
        "OHLCChart25D: 4 values are not 4 groups of 4");
    EXPECT_EQ(object.GetNumDataPnts(), 0);
    object.SetSeriesStorage(three, three);
    EXPECT_EQ(object.GetDepData(2), 3);
    object.SetDataStorage25D(four, four, {});
    EXPECT_EQ(object.GetBarHeight(0), 0);
}

TEST(ChartObject, WhatIsSilentlyNothingIsTold) {
    CChartObj3D object;
    const std::string told = Told([&] {
        object.PolysurfaceChart3D(nullptr);
        object.LineChart25D(kFour, nullptr, 0, 1, 0, 1, {1, 0, 255, 1}, 0);
        object.SetChartType(19);
        object.DrawChartObj();
        Saved(object);
    });
    EXPECT_EQ(told,
              "InitPolysurfaceStorage: no surface is given, so what was stored before stays\n"
              "InitDepDataStorage: no array is given, so what was stored before stays\n"
              "CChartObj3D: a colour has the component 255; components run from 0 to 1\n"
              "DrawChartObj: there is no chart type 19\n"
              "Save: the object has no transform; a chart with it cannot be loaded\n");
}

TEST(BoxStatistics, InterpolatesQuartilesAndLeavesOutWhatIsNoData) {
    double six[12] = {};
    constexpr double samples[] = {4, 1, std::numeric_limits<double>::quiet_NaN(), 3, 2};
    BoxStatistics(samples, 5, six + 1, 2);
    EXPECT_EQ(std::vector<double>(six, six + 12),
              (std::vector<double>{0, 1, 0, 1.75, 0, 2.5, 0, 3.25, 0, 4, 0, 2.5}));

    constexpr double one[] = {7};
    BoxStatistics(one, 1, six);
    for (int k = 0; k < 6; ++k)
        EXPECT_EQ(six[k], 7);
    BoxStatistics(nullptr, 0, six);
    for (int k = 0; k < 6; ++k)
        EXPECT_TRUE(std::isnan(six[k]));
    EXPECT_TRUE(Raises(ERR3D_NULL_POINTER, ERR3DCLASS_CHARTOBJ3D, "BoxStatistics",
                       [&] { BoxStatistics(nullptr, 3, six); }));
}

}  // namespace
}  // namespace varnel::test
