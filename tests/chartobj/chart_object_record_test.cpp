// Records, byte for byte and back.
#include <climits>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <sstream>

#include "tests/chartobj/set_ups.h"
#include "tests/chartobj/stored_text.h"
#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/platform/files.h"
#include "varnel/render/codes.h"
#include "varnel/surface/polysurface.h"

namespace varnel::test {
namespace {

constexpr std::size_t kHeader = 4 + 4 + 8 * 8 + 3 * 32 + 21 * 4 + 6 * 4 + 24 + 4;

void Add(RecordBytes& bytes, std::initializer_list<RGBDType> colors) {
    for (const RGBDType& c : colors)
        bytes.Doubles({c.r, c.g, c.b, c.a});
}

void Load(CChartObj3D& object, const std::vector<BYTE>& bytes) {
    MemoryFile file(bytes);
    object.Load(&file);
}

// Loads what an object saves, and expects that to save as the same bytes again.
CChartObj3D RoundTrip(CChartObj3D& object) {
    CChartObj3D loaded;
    const std::vector<BYTE> bytes = Saved(object);
    Load(loaded, bytes);
    EXPECT_EQ(Saved(loaded), bytes);
    return loaded;
}

int IntAt(const std::vector<BYTE>& bytes, std::size_t at) {
    std::int32_t v = 0;
    std::memcpy(&v, &bytes.at(at), sizeof v);
    return v;
}

// Places of counts in the record.
constexpr std::size_t kCounts = 4 + 4 + 64 + 96;
constexpr std::size_t kNumDataPnts = kCounts + 2 * 4;
constexpr std::size_t kNumBarHeights = kCounts + 4 * 4;
constexpr std::size_t kNum3DPoints = kCounts + 5 * 4;
constexpr std::size_t kNumGroupColors = kCounts + 6 * 4;
constexpr std::size_t kNumSegmentColors = kCounts + 7 * 4;
constexpr std::size_t kNumGroups = kCounts + 10 * 4;

/// A record's numbers as text, and the bytes of what follows its fixed fields.
std::string Described(const std::vector<BYTE>& bytes) {
    std::ostringstream text;
    std::size_t at = 0;
    const auto next = [&](auto number) {
        std::memcpy(&number, &bytes.at(at), sizeof number);
        text << ' ' << number;
        at += sizeof number;
    };
    for (int field = 0; at < kHeader; ++field)
        field < 2 || field >= 22 ? next(std::int32_t{}) : next(double{});
    for (text << ' ' << std::hex << std::setfill('0'); at < bytes.size(); ++at)
        text << std::setw(2) << static_cast<int>(bytes[at]);
    return text.str() + '\n';
}

TEST(ChartObjectRecord, EverySetUpStoresWhatItIsGiven) {
    std::ostringstream text;
    for (const SetUpCase& setUp : kSetUps) {
        SCOPED_TRACE(setUp.name);
        CChartObj3D::nSelfID = -1;
        CChartObj3D object;
        setUp.classic(object);
        text << setUp.name << ":" << Described(Saved(object));
        if (setUp.type != BARCHART3D) RoundTrip(object);
        if (setUp.spans == nullptr) continue;
        CChartObj3D::nSelfID = -1;
        CChartObj3D counted;
        setUp.spans(counted);
        EXPECT_EQ(Saved(counted), Saved(object));
        numPoints = -1;
        const std::string call = setUp.call;
        EXPECT_EQ(WhatOf([&] { setUp.classic(counted); }),
                  call.substr(0, call.find('(')) + ": the count is -1");
        numPoints = 2;
    }
    ExpectStored(text.str(), "records.txt");
}

// Whatever an object was before, its record has the data of what it is now.
TEST(ChartObjectRecord, AnObjectSetUpTwiceComesBackAsTheSecond) {
    for (const SetUpCase& first : kSetUps)
        for (const SetUpCase& second : kSetUps) {
            SCOPED_TRACE(testing::Message() << first.name << ", then " << second.name);
            CChartObj3D object;
            first.classic(object);
            second.classic(object);
            CChartObj3D loaded, fresh;
            Load(loaded, Saved(object));
            second.classic(fresh);
            if (second.type == CONTOURPOLYSURFACE3D) {
                loaded.SetNumDataPnts(2);  // the levels lie where places do
                fresh.SetNumDataPnts(2);
            }
            for (double (*datum)(const O&) :
                 {+[](const O& o) { return 1.0 * o.GetNumDataPnts(); },
                  +[](const O& o) { return o.GetIndData(1); },
                  +[](const O& o) { return o.GetDepData(1); },
                  +[](const O& o) { return o.Get3DPoint(1).w; },
                  +[](const O& o) { return o.GetGroupData(1, 1); },
                  +[](const O& o) { return o.GetPolysurfacePoint(3).z; },
                  +[](const O& o) { return o.GetContourColor(2).a; }})
                if (datum(fresh) != 0) {
                    EXPECT_EQ(datum(loaded), datum(fresh));
                }
        }
}

TEST(ChartObjectRecord, ArraysStoredByHandAreSavedToo) {
    CChartObj3D object;
    object.Set3DPointStorage(kPoints, 2);
    object.SetChartType(BARCHART25D);  // which has no data of its own
    EXPECT_EQ(IntAt(Saved(object), kNum3DPoints), 2);
    object.ScatterChart3D(kPoints, 1, 2, 10, kRed, kBlack, 0, 0);
    object.SetBarHeightsStorage(kDep);
    EXPECT_EQ(IntAt(Saved(object), kNumBarHeights), 2);
}

TEST(ChartObjectRecord, AttributesStandInTheirOrder) {
    CChartObj3D object;
    object.BarChart25D(kInd, kDep, 20, 10, 2, 50, 40, kRed, kGreen, 21, 22, 23);
    object.SetRelSize(30);
    object.SetFillGap(60);
    object.SetOutlineWidth(80);
    object.SetSymbol(1);
    object.SetSymbol2(2);
    object.SetLineWidth(3);
    object.SetLineStyle(4);
    object.SetDepJustify(5);
    object.SetProjectionPlane(6);
    object.SetTextPlane(7);
    object.SetGroupType(8);
    object.SetNumContours(9);
    object.SetContourLabelFlag(10);
    object.SetColorMode(2);
    object.SetClipping(12);
    object.SetOutlineMode(13);
    constexpr int flags[] = {31, 32, 33, 34, 35, 36};
    object.SetComboChartFlags(flags);
    object.EnableChartObj(14);
    CChartObj3D::nSelfID = 0x01020304;

    RecordBytes want;
    want.Ints({0x01020304, 0}).Doubles({10, 20, 30, 40, 50, 60, 0.02, 80});
    Add(want, {kRed, kGreen, kBlack});
    want.Ints({1, 2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 21, 5, 22, 23, 6, 7, 8, 2});
    want.Ints({0, 9, 10, 2, 12, 13, 31, 32, 33, 34, 35, 36, 14});
    EXPECT_EQ(want.Get().size(), kHeader);
    want.Doubles({2, 8, 3, 7});
    EXPECT_EQ(Saved(object), want.Get());

    CChartObj3D::nSelfID = 0;
    ExpectRecordRules<CChartObj3D>(want, ERR3DCLASS_CHARTOBJ3D);
    Load(object, want.Get());
    EXPECT_EQ(CChartObj3D::nSelfID, 0x01020304);
}

TEST(ChartObjectRecord, WhatThePlainRecordLacksComesBackFromTheBlock) {
    CChartObj3D object;
    object.ErrorBars3D(kPoints, kDep, kMore, 2, 30, 4, 3, kRed);
    object.Vectors3D(kPoints, kPoints, 2.5, 30, 1, 3, kRed);
    object.SetExactExtents(1);
    object.SetSegmentOutlines(0);
    object.SetCandleStyle(1);
    object.SetMarker(MARKER_STAR, 9);
    object.SetLineJoins(1);
    object.SetLineStyleFactor(4);
    object.SetContourStyle({1.5, 2, 1, 1, 0.7, 99});
    detail::AddedFields out;
    object.VisitAdded(out);
    MemoryFile file;
    out.WriteBlock(file);
    const std::vector<BYTE> block = file.GetBytes();

    MemoryFile in(block);
    bool complete = false;
    detail::AddedFields fields = detail::AddedFields::ReadBlock(in, complete);
    CChartObj3D loaded;
    loaded.VisitAdded(fields);
    EXPECT_EQ(loaded.GetExactExtents(), 1);
    EXPECT_EQ(loaded.GetSegmentOutlines(), 0);
    EXPECT_EQ(loaded.GetCandleStyle(), 1);
    EXPECT_EQ(loaded.GetContourStyle().labelSpacing, 99);
    detail::AddedFields again;
    loaded.VisitAdded(again);
    MemoryFile second;
    again.WriteBlock(second);
    EXPECT_EQ(second.GetBytes(), block);
    const std::string names(block.begin(), block.end());
    for (const char* name :
         {"errorsBelow", "errorsAbove", "components", "vectorScale", "flatHeads",
          "contourLineWidth", "contourLineStyle", "contourOnSurface", "contourLabels",
          "contourLabelSize", "marker", "markerSize", "lineJoins", "lineStyleFactor"})
        EXPECT_NE(names.find(name), std::string::npos) << name;
    ExpectFreshAfter(object, &CChartObj3D::InitChartObjDefaults);
}

TEST(ChartObjectRecord, WireFrameComesBackFromTheBlock) {
    CPolysurface wire;
    wire.SetWireFrame(1);
    detail::AddedFields out;
    wire.VisitAdded(out);
    MemoryFile file;
    out.WriteBlock(file);
    MemoryFile in(file.GetBytes());
    bool complete = false;
    detail::AddedFields fields = detail::AddedFields::ReadBlock(in, complete);
    CPolysurface loaded;
    loaded.VisitAdded(fields);
    EXPECT_EQ(loaded.GetWireFrame(), 1);
}

TEST(ChartObjectRecord, SegmentColoursComeBackWithThatOfTheRange) {
    CChartObj3D range;
    range.AreaRangeChart25D(kInd, kDep, kInd, 0, 2, 1, kRed, kBlack, 0, 0);
    range.InitSegmentColorsStorage(kColors);
    range.SetAreaRangeColor(kGreen);
    const CChartObj3D back = RoundTrip(range);
    EXPECT_EQ(back.GetDepData2(1, 0), 8);
    EXPECT_EQ(back.GetSegmentColor(0).r, 1);
    EXPECT_EQ(back.GetAreaRangeColor().g, 1);
    EXPECT_EQ(back.GetSegmentColorMode(), 1);
}

TEST(ChartObjectRecord, CountsAreWrittenAsWhatIsStored) {
    constexpr double ind[] = {1, 2, 3};
    CChartObj3D object;
    object.GroupBarChart25D(ind, kGroups, 0, 0, 3, 2, 0, 1, 1, kColors, kBlack, 0, 0, 0);
    object.InitSegmentColorsStorage(kColors);
    object.DeleteContourColorsStorage();
    object.SetNumDataPnts(5);  // rows of five over six values, three places known
    object.SetNumGroups(INT_MAX);
    const std::vector<BYTE> bytes = Saved(object);
    EXPECT_EQ(IntAt(bytes, kNumDataPnts), 3);
    EXPECT_EQ(IntAt(bytes, kNumGroups), 2);
    EXPECT_EQ(IntAt(bytes, kNumGroupColors), 2);
    EXPECT_EQ(IntAt(bytes, kNumSegmentColors), 0);
    CChartObj3D loaded;
    Load(loaded, bytes);
    EXPECT_EQ(loaded.GetGroupData(0, 2), 3.5);
    EXPECT_EQ(loaded.GetGroupData(1, 0), 6);
    EXPECT_TRUE(std::isnan(loaded.GetGroupData(1, 1)));

    object.DeleteGroupDataStorage();
    EXPECT_EQ(IntAt(Saved(object), kNumGroups), 0);
    EXPECT_EQ(IntAt(Saved(object), kNumDataPnts), 0);  // no dependent data either
    EXPECT_EQ(object.GetNumGroups(), INT_MAX);
}

TEST(ChartObjectRecord, DamagedRecordsAreReadAsFarAsTheyGo) {
    constexpr double ind[] = {1, 2, 3};
    CChartObj3D object;
    object.GroupBarChart25D(ind, kGroups, 0, 0, 3, 2, 0, 1, 1, kColors, kBlack, 0, 0, 0);
    const std::vector<BYTE> whole = Saved(object);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        CChartObj3D loaded;
        MemoryFile file({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
        loaded.Load(&file);
        EXPECT_TRUE(file.RanDry());
        loaded.SetNumDataPnts(1000);
        loaded.SetNumGroups(1000);
        for (int i = 0; i < 10; ++i)
            EXPECT_GE(loaded.GetGroupData(i, i), 0);
    }
    // Counts that the file cannot hold, or that contradict each other.
    for (std::size_t at = kCounts; at < kHeader; at += 4)
        for (const int count : {-1, 1, 5, 1000000, INT_MAX}) {
            std::vector<BYTE> damaged = whole;
            std::memcpy(&damaged[at], &count, sizeof count);
            CChartObj3D loaded;
            EXPECT_NO_THROW(Load(loaded, damaged));
            EXPECT_NO_THROW(Saved(loaded));
        }
}

}  // namespace
}  // namespace varnel::test
