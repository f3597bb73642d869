// Legends as far as they need no context: entries, errors and records.
#include <gtest/gtest.h>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/platform/files.h"
#include "varnel/varnel.h"

namespace varnel::test {
namespace {

constexpr RGBDType kGrey{0.5, 0.5, 0.5, 1};

RecordBytes EntryBytes(int counter) {
    RecordBytes bytes;
    bytes.Ints({counter}).String("A line").Ints({1, 6, 0, 1, 1, 1}).Doubles({3, 1});
    bytes.Doubles({1, 0, 0, 1, 0, 0, 0, 1});     // fill, outline
    bytes.Doubles({-20, 0, 25, 0, 0, 1, 1, 0});  // rotation, light
    return bytes.Doubles({1, 1, 1, 1, 0.4, 0.4, 0.4, 1});
}

TEST(LegendRecord, ByteForByte) {
    CLegend3D legend;
    legend.SetLegendTitle("Title");
    legend.SetLegendPlace(LEGEND_LOWER_LEFT);
    legend.SetLegendRows(2);
    legend.SetBorderColor(kGreen);
    legend.EnableBackground(0);
    const RGBDType colors[] = {kRed, kGreen};
    legend.SetColorBar(colors, 2, -1, 3);
    legend.SetScaleFormat(2, 1);
    legend.SetScaleTicSpace(0.5);
    CLegendObj3D* const entry = legend.NewLegendObj();
    entry->SetLineSample(6, 3, kRed);
    entry->SetString("A line");
    CLegend3D::nSelfID = 7;
    CLegendObj3D::nSelfID = 9;

    RecordBytes expected;
    expected.Ints({7, 1, 3}).Doubles({0, 0, 0, 0, 0.02}).Ints({2, 0}).Doubles({1}).String("Title");
    expected.Doubles({0, 0, 0, 1})
        .Ints({1})
        .Doubles({1, 0, 1, 0, 1})
        .Ints({0})
        .Doubles({1, 1, 1, 1});
    expected.Ints({1, 0}).Doubles({0.4}).Ints({2, 1}).Doubles({0.5}).String(" KMBT");
    expected.Ints({2}).Doubles({-1, 3}).Ints({2}).Doubles({1, 0, 0, 1, 0, 1, 0, 1});
    expected.Ints({1}).Record(EntryBytes(9));
    const std::vector<BYTE> bytes = Saved(legend);
    EXPECT_EQ(bytes, expected.Get());

    CLegend3D::nSelfID = 0;
    CLegend3D loaded;
    loaded.NewLegendObj();
    MemoryFile file(bytes);
    loaded.Load(&file);
    EXPECT_FALSE(file.RanDry());
    EXPECT_EQ(CLegend3D::nSelfID, 7);
    EXPECT_EQ(loaded.GetNumLegendObjs(), 1) << "what it had before is replaced";
    EXPECT_EQ(Saved(loaded), bytes);
    loaded.SetPlace(LEGEND_LEAST_DATA);
    loaded.SetChartEm(90);
    ExpectFreshAfter(loaded, &CLegend3D::InitLegendDefaults);
    EXPECT_NE(loaded.GetEm(100, 100), 90);
}

TEST(LegendRecord, FollowsTheRules) {
    const RecordBytes entry = RecordBytes().Distinct("i s 6i 2d 8d 8d 8d");
    ExpectRecordRules<CLegendObj3D>(entry, ERR3DCLASS_LEGENDOBJ3D);
    RecordBytes legend = RecordBytes().Distinct("3i 5d 2i d s 4d i 5d i 4d 2i d 2i d s");
    legend.Ints({2}).Doubles({1, 2}).Ints({1}).Doubles({1, 2, 3, 4}).Ints({2});
    legend.Record(entry).Record(entry);
    ExpectRecordRules<CLegend3D>(legend, ERR3DCLASS_LEGEND3D);
}

TEST(LegendRecord, AColorBarOfAChartIsThatOfItsColoursAndRange) {
    const RGBDType colors[] = {kRed, kGreen, kGrey};
    CChart3D chart;
    chart.SetTextureColorArray(colors, -1, 7, 3);
    CLegend3D ofChart, ofColors;
    ofChart.SetColorBar(&chart);
    ofColors.SetColorBar(colors, 3, -1, 7);
    EXPECT_EQ(Saved(ofChart), Saved(ofColors));
}

TEST(LegendRecord, ForgedCountsAllocateNothing) {
    CLegend3D legend;
    std::vector<BYTE> bytes = Saved(legend);
    // The last three integers are the counts of values, colours and entries.
    for (const BYTE high : {BYTE{0x7F}, BYTE{0xFF}})
        for (std::size_t k = 1; k <= 3; ++k) {
            std::vector<BYTE> forged = bytes;
            forged[forged.size() - 4 * k + 3] = high;
            CLegend3D loaded;
            MemoryFile file(forged);
            loaded.Load(&file);
            EXPECT_EQ(loaded.GetNumLegendObjs(), 0);
            EXPECT_EQ(Saved(loaded).size(), bytes.size());
        }
}

TEST(LegendRecord, Failures) {
    CLegend3D legend;
    EXPECT_TRUE(Raises(ERR3D_CHARTVIEW_PARAMETER, ERR3DCLASS_LEGEND3D, "InitLegend3D",
                       [] { CLegend3D unbound(nullptr); }));
    CChartView3D noContext;
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_LEGEND3D, "InitLegend3D",
                       [&] { CLegend3D unbound(&noContext); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "NewLegend3D",
                       [&] { noContext.NewLegend3D(); }));
    EXPECT_TRUE(Raises(ERR3D_PARAMETER, ERR3DCLASS_LEGEND3D, "AddChartObj",
                       [&] { legend.AddChartObj(nullptr, "x"); }));
    EXPECT_TRUE(Raises(ERR3D_PARAMETER, ERR3DCLASS_LEGEND3D, "SetColorBar",
                       [&] { legend.SetColorBar(nullptr); }));
    EXPECT_EQ(legend.GetNumLegendObjs(), 0);
    legend.DrawLegend();  // not bound: nothing
}

TEST(LegendEntries, TakeTheirSamplesFromChartObjects) {
    CLegend3D legend;
    const point3Dtype points[] = {{0, 0, 0, 0}, {1, 1, 1, 0}};
    CChartObj3D object;
    object.LineChart3D(points, 2, 5, 3, kRed);
    CLegendObj3D* entry = legend.AddChartObj(&object, "line");
    EXPECT_EQ(entry->GetString(), "line");
    EXPECT_EQ(entry->GetSampleType(), LEGEND_LINE);
    EXPECT_EQ(entry->GetLineStyle(), 5);
    EXPECT_EQ(entry->GetLineWidth(), 3);
    EXPECT_TRUE(Same(entry->GetFillColor(), kRed));

    object.ScatterChart3D(points, 1, 2, 12, kGreen, kGrey, -1, 0);
    entry = legend.AddChartObj(&object, "symbol");
    EXPECT_EQ(entry->GetSampleType(), LEGEND_SYMBOL);
    EXPECT_EQ(entry->GetSymbol(), 12);
    EXPECT_TRUE(Same(entry->GetOutlineColor(), kGrey));
    object.SetSymbol(3);
    EXPECT_EQ(legend.AddChartObj(&object, "")->GetSampleType(), LEGEND_LINE)
        << "a scatter chart without symbols is its projection lines";

    object.PlaneChart3D(points, 2, 1, 1, kRed, kGrey);
    object.SetOutlineMode(0);
    entry = legend.AddChartObj(&object, "planes");
    EXPECT_EQ(entry->GetSampleType(), LEGEND_RECTANGLE);
    EXPECT_EQ(entry->GetOutlineMode(), 0);
}

TEST(LegendEntries, OneForEachGroup) {
    const double ind[] = {1};
    const double groups[] = {1, 2, 3, 4, 5, 6};
    const RGBDType colors[] = {kRed, kGreen, kGrey, kRed, kGreen, kGrey};
    CChartObj3D object;
    object.GroupBarChart25D(ind, groups, 0, 0, 1, 3, 0, 1, 1, colors, kGrey, 0, 0, 0);
    CLegend3D legend;
    const CString names[] = {"a", "", "c"};
    legend.AddGroups(&object, names);
    ASSERT_EQ(legend.GetNumLegendObjs(), 2) << "a group without a name is left out";
    EXPECT_EQ(legend.GetLegendObj(1)->GetString(), "c");
    EXPECT_TRUE(Same(legend.GetLegendObj(1)->GetFillColor(), kGrey));
    legend.DeleteLegendObjs();
    legend.AddGroups(&object, nullptr);
    ASSERT_EQ(legend.GetNumLegendObjs(), 3);
    EXPECT_EQ(legend.GetLegendObj(2)->GetString(), "3");

    object.BoxAndWhiskerChart25D(ind, groups, 0, 1, 1, 1, 11, 1, 2, colors, kGrey, 0, 1, 0, 1);
    legend.DeleteLegendObjs();
    legend.AddGroups(&object, nullptr);
    ASSERT_EQ(legend.GetNumLegendObjs(), 6);
    const int types[] = {LEGEND_LINE,      LEGEND_RECTANGLE, LEGEND_LINE,
                         LEGEND_RECTANGLE, LEGEND_LINE,      LEGEND_SYMBOL};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(legend.GetLegendObj(i)->GetSampleType(), types[i]) << i;

    const RGBDType prices[] = {kRed, kGreen, kGrey, kRed, kGreen};
    object.OHLCChart25D(ind, groups, 0, 1, 10, 0, 1, 2, prices, kGrey, 0, 1, 0, nullptr);
    EXPECT_TRUE(Same(legend.AddChartObj(&object, "")->GetFillColor(), kGreen)) << "line colour";
    legend.DeleteLegendObjs();
    legend.AddGroups(&object, nullptr);
    EXPECT_EQ(legend.GetLegendObj(0)->GetSymbol(), 10);
    EXPECT_EQ(legend.GetLegendObj(2)->GetSampleType(), LEGEND_RECTANGLE);
}

TEST(LegendEntries, ContourLinesFromTheHighestDown) {
    CChartObj3D object;
    const double levels[] = {0.5, 1, 2};
    const RGBDType colors[] = {kRed, kGreen, kGrey, kRed};
    object.ContourPolysurface3D(nullptr, levels, colors, 3, 0, 0);
    CLegend3D legend;
    legend.SetContours(&object, 0);
    ASSERT_EQ(legend.GetNumLegendObjs(), 3);
    EXPECT_EQ(legend.GetLegendObj(0)->GetString(), "2.0");
    EXPECT_TRUE(Same(legend.GetLegendObj(0)->GetFillColor(), kGrey));
    EXPECT_EQ(legend.GetLegendObj(2)->GetString(), "0.5");
    EXPECT_EQ(object.GetNumDataPnts(), 0) << "the object stays as it was";
    legend.SetContours(&object, 1, 0, 2);
    EXPECT_EQ(legend.GetScaleType(), 2);
    legend.SetColorBar(colors, 300, 0, 1);
    EXPECT_EQ(legend.GetScaleType(), 0) << "too many colours";
}

}  // namespace
}  // namespace varnel::test
