// Records, byte for byte and back.
#include <climits>
#include <cmath>
#include <cstring>

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

using Span = std::span<const double>;

constexpr RGBDType kColors[] = {kRed, kGreen, {.1, .2, .3, .4}, kGreen, {.5, .6, .7, .8}, kRed};
constexpr double kInd[] = {1, 2};
constexpr double kDep[] = {5, 6};
constexpr double kMore[] = {7, 8};
constexpr double kGroups[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
constexpr point3Dtype kPoints[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
const CString kTexts[] = {"first", ""};
constexpr std::size_t kHeader = 4 + 4 + 8 * 8 + 3 * 32 + 21 * 4 + 6 * 4 + 24 + 4;

CPolysurface& Surface() {
    static constexpr double z[] = {1, 2, 3, 4};
    static CPolysurface surface(2, 2, 0, 0, 1, 1, z, 1);
    return surface;
}

void Add(RecordBytes& bytes, std::initializer_list<RGBDType> colors) {
    for (const RGBDType& c : colors)
        bytes.Doubles({c.r, c.g, c.b, c.a});
}

// What a record says, the defaults until it is told otherwise.
struct Want {
    int type = 0;
    double constValue = 0, base = 0, relSize = 1, depthWidth = 1, indWidth = 1;
    RGBDType fill{0, 0, 1, 1}, outline = kBlack, line = kBlack;
    int symbol = 0, symbol2 = 0, n = 2, dep2 = 0, heights = 0, points = 0, groupColors = 0;
    int strings = 0, surface = 0, groups = 0, lineWidth = 1, lineStyle = 0;
    int indJustify = 0, depJustify = 0, depthJustify = 0, axis = 0, plane = 0, textPlane = 1;
    int groupType = 0, contours = 0, label = 0;
    std::array<int, 6> flags = {};
    std::initializer_list<double> arrays = {};
    std::size_t colors = 0;  // how many of kColors follow

    std::vector<BYTE> Bytes() const {
        RecordBytes b;
        b.Ints({0, 0}).Doubles({constValue, base, relSize, depthWidth, indWidth, .0016, .02, 1});
        Add(b, {fill, outline, line});
        b.Ints({symbol,     symbol2,      n,       dep2,   heights,   points,    groupColors,
                0,          strings,      surface, groups, lineWidth, lineStyle, indJustify,
                depJustify, depthJustify, axis,    plane,  textPlane, groupType, type,
                0,          contours,     label,   1,      0,         1});
        for (const int flag : flags)
            b.Ints({flag});
        b.Ints({1}).Doubles(arrays);
        const auto addColors = [&](RecordBytes& to) {
            for (std::size_t i = 0; i < colors; ++i)
                Add(to, {kColors[i]});
        };
        if (surface == 0) addColors(b);
        for (int i = 0; i < strings; ++i)
            b.String(kTexts[i]);
        std::vector<BYTE> bytes = b.Get();
        if (surface == 0) return bytes;
        const std::vector<BYTE> mesh = Saved(Surface());
        bytes.insert(bytes.end(), mesh.begin(), mesh.end());
        RecordBytes contour;
        if (contours != 0) contour.Doubles({5, 6});
        addColors(contour);
        bytes.insert(bytes.end(), contour.Get().begin(), contour.Get().end());
        return bytes;
    }
};

struct SetUpCase {
    const char* name;
    void (*classic)(CChartObj3D&);
    void (*spans)(CChartObj3D&);  // the same, counted by itself; null where there is none
    Want want;
};

using O = CChartObj3D;
#define BOTH(call, spanCall) [](O& o) { o.call; }, [](O& o) { o.spanCall; }

// clang-format off
// Every set-up, each argument with a value of its own.
const SetUpCase kSetUps[] = {
    {"ribbon", BOTH(RibbonChart25D(kInd, kDep, 10, 2, 40, kRed, kGreen, 22, 23),
     RibbonChart25D(Span(kInd), Span(kDep), 10, 40, kRed, kGreen, 22, 23)), {.type = 1,
     .constValue = 10, .depthWidth = 40, .fill = kRed, .outline = kGreen, .depthJustify = 22,
     .axis = 23, .arrays = {1, 2, 5, 6}}},
    {"bar", BOTH(BarChart25D(kInd, kDep, 20, 10, 2, 50, 40, kRed, kGreen, 21, 22, 23),
     BarChart25D(Span(kInd), Span(kDep), 20, 10, 50, 40, kRed, kGreen, 21, 22, 23)), {.type = 2,
     .constValue = 10, .base = 20, .depthWidth = 40, .indWidth = 50, .fill = kRed, .outline =
     kGreen, .indJustify = 21, .depthJustify = 22, .axis = 23, .arrays = {1, 2, 5, 6}}},
    // The heights of bars in space are not in their records.
    {"bar in space", BOTH(BarChart3D(kPoints, kDep, 2, 50, 40, kRed, kGreen),
     BarChart3D(kPoints, Span(kDep), 50, 40, kRed, kGreen)), {.type = 3, .depthWidth = 40,
     .indWidth = 50, .fill = kRed, .outline = kGreen, .heights = 2, .points = 2, .arrays = {1,
     2, 3, 4, 5, 6, 7, 8}}},
    {"area", BOTH(AreaFillChart25D(kInd, kDep, 20, 10, 2, 40, kRed, kGreen, 22, 23),
     AreaFillChart25D(Span(kInd), Span(kDep), 20, 10, 40, kRed, kGreen, 22, 23)), {.type = 4,
     .constValue = 10, .base = 20, .depthWidth = 40, .fill = kRed, .outline = kGreen,
     .depthJustify = 22, .axis = 23, .arrays = {1, 2, 5, 6}}},
    {"range", BOTH(AreaRangeChart25D(kInd, kDep, kMore, 10, 2, 40, kRed, kGreen, 22, 23),
     AreaRangeChart25D(Span(kInd), Span(kDep), Span(kMore), 10, 40, kRed, kGreen, 22, 23)),
     {.type = 5, .constValue = 10, .depthWidth = 40, .fill = kRed, .outline = kGreen, .dep2 = 2,
     .depthJustify = 22, .axis = 23, .arrays = {1, 2, 5, 6, 7, 8}}},
    {"line", BOTH(LineChart25D(kInd, kDep, 10, 2, 4, 3.9, kRed, 23), LineChart25D(Span(kInd),
     Span(kDep), 10, 4, 3.9, kRed, 23)), {.type = 6, .constValue = 10, .fill = kRed, .outline =
     kRed, .lineWidth = 3, .lineStyle = 4, .axis = 23, .arrays = {1, 2, 5, 6}}},
    {"scatter", BOTH(ScatterChart3D(kPoints, 30, 2, 11, kRed, kGreen, 24, 10),
     ScatterChart3D(kPoints, 30, 11, kRed, kGreen, 24, 10)), {.type = 7, .constValue = 10,
     .relSize = 30, .fill = kRed, .outline = kGreen, .symbol = 11, .points = 2, .plane = 24,
     .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"line in space", BOTH(LineChart3D(kPoints, 2, 4, 3, kRed), LineChart3D(kPoints, 4, 3,
     kRed)), {.type = 8, .fill = kRed, .outline = kRed, .points = 2, .lineWidth = 3, .lineStyle
     = 4, .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"projection", BOTH(ProjectionLineChart3D(kPoints, 99, 2, 4, 3, kRed, 24, 10),
     ProjectionLineChart3D(kPoints, 4, 3, kRed, 24, 10)), {.type = 9, .constValue = 10, .fill =
     kRed, .outline = kRed, .points = 2, .lineWidth = 3, .lineStyle = 4, .plane = 24, .arrays =
     {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"grouped bars", BOTH(GroupBarChart25D(kInd, kGroups, 10, 20, 2, 2, 8, 50, 40, kColors,
     kGreen, 21, 22, 23), GroupBarChart25D(kInd, Span(kGroups, 4), 10, 20, 8, 50, 40, kColors,
     kGreen, 21, 22, 23)), {.type = 10, .constValue = 10, .base = 20, .depthWidth = 40,
     .indWidth = 50, .outline = kGreen, .groupColors = 2, .groups = 2, .indJustify = 21,
     .depthJustify = 22, .axis = 23, .groupType = 8, .arrays = {1, 2, 1, 2, 3, 4}, .colors =
     2}},
    {"grouped ribbons", BOTH(GroupRibbonChart25D(kInd, kGroups, 10, 2, 3, 40, kColors, kGreen,
     22, 23), GroupRibbonChart25D(kInd, Span(kGroups, 6), 10, 40, kColors, kGreen, 22, 23)),
     {.type = 11, .constValue = 10, .depthWidth = 40, .outline = kGreen, .groupColors = 3,
     .groups = 3, .depthJustify = 22, .axis = 23, .arrays = {1, 2, 1, 2, 3, 4, 5, 6}, .colors =
     3}},
    {"grouped areas", BOTH(GroupAreaFillChart25D(kInd, kGroups, 10, 2, 3, 40, kColors, kGreen,
     22, 23), GroupAreaFillChart25D(kInd, Span(kGroups, 6), 10, 40, kColors, kGreen, 22, 23)),
     {.type = 12, .constValue = 10, .depthWidth = 40, .outline = kGreen, .groupColors = 3,
     .groups = 3, .depthJustify = 22, .axis = 23, .arrays = {1, 2, 1, 2, 3, 4, 5, 6}, .colors =
     3}},
    // The fifth colour is that of the lines; the flags are all on.
    {"prices", BOTH(OHLCChart25D(kInd, kGroups, 10, 2, 11, 12, 30, 3, kColors, kGreen, 22, 24,
     23, nullptr), OHLCChart25D(kInd, Span(kGroups, 8), 10, 11, 12, 30, 3, kColors, kGreen, 22,
     24, 23, nullptr)), {.type = 13, .constValue = 10, .relSize = 30, .outline = kGreen, .line =
     kColors[4], .symbol = 11, .symbol2 = 12, .groupColors = 4, .groups = 4, .lineWidth = 3,
     .depJustify = 24, .depthJustify = 22, .axis = 23, .flags = {1, 1, 1, 1, 1, 0}, .arrays =
     {1, 2, 1, 2, 3, 4, 5, 6, 7, 8}, .colors = 4}},
    {"plane in space", BOTH(PlaneChart3D(kPoints, 2, 50, 40, kRed, kGreen),
     PlaneChart3D(kPoints, 50, 40, kRed, kGreen)), {.type = 14, .depthWidth = 40, .indWidth =
     50, .fill = kRed, .outline = kGreen, .points = 2, .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"texts", BOTH(ScatterText3D(kPoints, kTexts, 2, 30, 7, kRed, 24, 10),
     ScatterText3D(kPoints, kTexts, 30, 7, kRed, 24, 10)), {.type = 15, .constValue = 10,
     .relSize = 30, .fill = kRed, .points = 2, .strings = 2, .plane = 24, .textPlane = 7,
     .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"boxes", BOTH(BoxAndWhiskerChart25D(kInd, kGroups, 10, 2, 50, 40, 11, 30, 3, kColors,
     kGreen, 22, 24, 23, 9), BoxAndWhiskerChart25D(kInd, kGroups, 10, 50, 40, 11, 30, 3,
     kColors, kGreen, 22, 24, 23, 9)), {.type = 16, .constValue = 10, .relSize = 30, .depthWidth
     = 40, .indWidth = 50, .outline = kGreen, .symbol = 11, .groupColors = 6, .groups = 6,
     .lineWidth = 3, .depJustify = 24, .depthJustify = 22, .axis = 23, .flags = {9}, .arrays =
     {1, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, .colors = 6}},
    {"floating bars", BOTH(FloatingBarChart25D(kInd, kDep, kMore, 10, 2, 50, 40, kRed, kGreen,
     21, 22, 23), FloatingBarChart25D(Span(kInd), Span(kDep), Span(kMore), 10, 50, 40, kRed,
     kGreen, 21, 22, 23)), {.type = 17, .constValue = 10, .depthWidth = 40, .indWidth = 50,
     .fill = kRed, .outline = kGreen, .heights = 2, .indJustify = 21, .depthJustify = 22, .axis
     = 23, .arrays = {1, 2, 5, 6, 7, 8}}},
    {"plane", BOTH(PlaneChart25D(kInd, kDep, 10, 2, 50, 40, kRed, kGreen, 21, 22, 23),
     PlaneChart25D(Span(kInd), Span(kDep), 10, 50, 40, kRed, kGreen, 21, 22, 23)), {.type = 18,
     .constValue = 10, .depthWidth = 40, .indWidth = 50, .fill = kRed, .outline = kGreen,
     .indJustify = 21, .depthJustify = 22, .axis = 23, .arrays = {1, 2, 5, 6}}},
    {"flat surface", [](O& o) { o.PolysurfaceChart2D(&Surface(), 10, 24); }, nullptr, {.type =
     50, .constValue = 10, .n = 0, .surface = 1, .plane = 24}},
    {"surface", [](O& o) { o.PolysurfaceChart3D(&Surface()); }, nullptr, {.type = 51, .n = 0,
     .surface = 1}},
    {"contours", BOTH(ContourPolysurface3D(&Surface(), kDep, kColors, 2, 10, 5),
     ContourPolysurface3D(&Surface(), Span(kDep), kColors, 10, 5)), {.type = 52, .constValue =
     10, .n = 0, .surface = 1, .contours = 2, .label = 5, .colors = 3}},
    {"error bars", [](O& o) { o.ErrorBars3D(kPoints, kDep, kMore, 23, 30, 4, 3, kRed); }, nullptr,
     {.type = 60, .relSize = 30, .fill = kRed, .outline = kRed, .points = 2, .lineWidth = 3,
     .lineStyle = 4, .axis = 23, .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
    {"arrows", [](O& o) { o.Vectors3D(kPoints, kPoints, 2, 30, 1, 3, kRed); }, nullptr, {.type = 61,
     .relSize = 30, .fill = kRed, .outline = kRed, .points = 2, .lineWidth = 3, .arrays = {1, 2, 3,
     4, 5, 6, 7, 8}}},
    {"reference line", [](O& o) { o.ReferenceLine3D(23, 10, 24, 4, 3, kRed); }, nullptr, {.type =
     62, .constValue = 10, .fill = kRed, .outline = kRed, .n = 0, .lineWidth = 3, .lineStyle = 4,
     .axis = 23, .plane = 24}},
    {"reference band", [](O& o) { o.ReferenceBand3D(23, 10, 20, 24, kRed); }, nullptr, {.type = 63,
     .constValue = 10, .base = 20, .fill = kRed, .outline = kRed, .n = 0, .axis = 23, .plane = 24}},
    {"note", [](O& o) { o.Note3D("first", kPoints[0], kPoints[1], 30, 3, kRed); }, nullptr, {.type =
     64, .relSize = 30, .fill = kRed, .outline = kRed, .points = 2, .strings = 2, .lineWidth = 3,
     .arrays = {1, 2, 3, 4, 5, 6, 7, 8}}},
};
// clang-format on
#undef BOTH

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

TEST(ChartObjectRecord, EverySetUpStoresWhatItIsGiven) {
    for (const SetUpCase& setUp : kSetUps) {
        SCOPED_TRACE(setUp.name);
        CChartObj3D::nSelfID = -1;
        CChartObj3D object;
        setUp.classic(object);
        EXPECT_EQ(Saved(object), setUp.want.Bytes());
        if (setUp.want.type != BARCHART3D) RoundTrip(object);
        if (setUp.spans == nullptr) continue;
        CChartObj3D::nSelfID = -1;
        CChartObj3D counted;
        setUp.spans(counted);
        EXPECT_EQ(Saved(counted), setUp.want.Bytes());
    }
}

// Whatever an object was before, its record has the data of what it is now.
TEST(ChartObjectRecord, AnObjectSetUpTwiceComesBackAsTheSecond) {
    for (const SetUpCase& first : kSetUps)
        for (const SetUpCase& second : kSetUps) {
            SCOPED_TRACE(testing::Message() << first.name << ", then " << second.name);
            CChartObj3D object;
            first.classic(object);
            second.classic(object);
            CChartObj3D loaded;
            Load(loaded, Saved(object));
            if (second.want.type == REFERENCELINE3D || second.want.type == REFERENCEBAND3D)
                continue;
            if (second.want.contours != 0) {
                loaded.SetNumDataPnts(2);
                EXPECT_EQ(loaded.GetIndData(1), 6);
                EXPECT_EQ(loaded.GetContourColor(2).a, .4);
                continue;
            }
            if (second.want.surface != 0) {
                EXPECT_EQ(loaded.GetPolysurfacePoint(3).z, 4);
                continue;
            }
            EXPECT_EQ(loaded.GetNumDataPnts(), 2);
            if (second.want.points != 0) {
                EXPECT_EQ(loaded.Get3DPoint(1).w, 8);
                continue;
            }
            EXPECT_EQ(loaded.GetIndData(1), 2);
            if (second.want.groups != 0)
                EXPECT_EQ(loaded.GetGroupData(1, 1), 4);
            else
                EXPECT_EQ(loaded.GetDepData(1), 6);
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
    want.Doubles({1, 2, 5, 6});
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
}

TEST(ChartObjectRecord, SegmentColoursComeBackWithThatOfTheRange) {
    CChartObj3D range;
    range.AreaRangeChart25D(kInd, kDep, kInd, 0, 2, 1, kRed, kBlack, 0, 0);
    range.InitSegmentColorsStorage(kColors);
    range.SetAreaRangeColor(kGreen);
    const CChartObj3D back = RoundTrip(range);
    EXPECT_EQ(back.GetDepData2(1, 0), 2);
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
    EXPECT_EQ(loaded.GetGroupData(0, 2), 3);
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
