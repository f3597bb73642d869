// Records, byte for byte and back.
#include <bit>
#include <climits>
#include <cmath>
#include <cstring>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/platform/files.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

constexpr RGBDType kRed{1, 0, 0, 1};
constexpr RGBDType kGreen{0, 1, 0, 1};
constexpr RGBDType kBlack{0, 0, 0, 1};
constexpr double kInd[] = {1, 2, 3, 4};
constexpr double kDep[] = {5, 6, 7, 8};
constexpr std::size_t kHeader = 4 + 4 + 8 * 8 + 3 * 32 + 21 * 4 + 6 * 4 + 24 + 4;

// A record written down by hand, field by field.
struct Bytes : std::vector<BYTE> {
    Bytes& Int(std::int32_t v) { return Put(std::bit_cast<std::uint32_t>(v), 4); }
    Bytes& Double(double v) { return Put(std::bit_cast<std::uint64_t>(v), 8); }
    Bytes& Color(const RGBDType& c) { return Double(c.r).Double(c.g).Double(c.b).Double(c.a); }

 private:
    Bytes& Put(std::uint64_t v, int width) {
        for (int k = 0; k < width; ++k)
            push_back(static_cast<BYTE>(v >> (8 * k)));
        return *this;
    }
};

using test::Saved;

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
constexpr std::size_t kNumGroupColors = kCounts + 6 * 4;
constexpr std::size_t kNumSegmentColors = kCounts + 7 * 4;
constexpr std::size_t kNumGroups = kCounts + 10 * 4;

TEST(ChartObjectRecord, FieldsStandInTheirOrder) {
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

    Bytes want;
    want.Int(0x01020304).Int(0);
    for (const double v : {10., 20., 30., 40., 50., 60., 0.02, 80.})
        want.Double(v);
    want.Color(kRed).Color(kGreen).Color(kBlack);
    for (const int v : {1, 2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 3, 4, 21, 5, 22, 23, 6, 7, 8, 2})
        want.Int(v);
    for (const int v : {0, 9, 10, 2, 12, 13, 31, 32, 33, 34, 35, 36, 14})
        want.Int(v);
    EXPECT_EQ(want.size(), kHeader);
    want.Double(1).Double(2).Double(5).Double(6);
    EXPECT_EQ(Saved(object), want);

    CChartObj3D::nSelfID = 0;
    RoundTrip(object);
    Load(object, want);
    EXPECT_EQ(CChartObj3D::nSelfID, 0x01020304);
    object.Save(nullptr);
    object.Load(nullptr);
}

TEST(ChartObjectRecord, EveryKindOfDataComesBack) {
    constexpr RGBDType colors[] = {kRed, kGreen, kBlack, kRed, kGreen, kBlack};
    constexpr point3Dtype points[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    const CString texts[] = {"first", ""};
    constexpr double groups[] = {1, 2, 3, 4, 5, 6};

    CChartObj3D range;
    range.AreaRangeChart25D(kInd, kDep, kInd, 0, 4, 1, kRed, kBlack, 0, 0);
    range.InitSegmentColorsStorage(colors);
    range.SetAreaRangeColor(kGreen);
    CChartObj3D back = RoundTrip(range);
    EXPECT_EQ(back.GetDepData2(3, 0), 4);
    EXPECT_EQ(back.GetAreaRangeColor().g, 1);
    EXPECT_EQ(back.GetSegmentColorMode(), 1);

    CChartObj3D bars;
    bars.GroupBarChart25D(kInd, groups, 0, 0, 3, 2, 0, 1, 1, colors, kBlack, 0, 0, 1);
    back = RoundTrip(bars);
    EXPECT_EQ(back.GetGroupData(1, 2), 6);
    EXPECT_EQ(back.GetGroupColor(1).g, 1);

    CChartObj3D text;
    text.ScatterText3D(points, texts, 2, 1, 3, kRed, 0, 0);
    back = RoundTrip(text);
    EXPECT_EQ(back.GetScatterTextString(0), "first");
    EXPECT_EQ(back.Get3DPoint(1).w, 8);

    CChartObj3D floating;
    floating.FloatingBarChart25D(kInd, kDep, kInd, 0, 4, 1, 1, kRed, kBlack, 0, 0, 0);
    EXPECT_EQ(RoundTrip(floating).GetBarHeight(3), 4);

    constexpr double z[] = {1, 2, 3, 4};
    CPolysurface surface(2, 2, 0, 0, 1, 1, z, 1);
    CChartObj3D contour;
    contour.ContourPolysurface3D(&surface, kInd, colors, 3, 0, 0);
    contour.SetNumDataPnts(2);
    CChartObj3D loaded;
    Load(loaded, Saved(contour));
    EXPECT_EQ(loaded.GetNumDataPnts(), 0);
    EXPECT_EQ(loaded.GetNumContours(), 3);
    EXPECT_EQ(loaded.GetPolysurfacePoint(3).z, 4);
    loaded.SetNumDataPnts(3);
    EXPECT_EQ(loaded.GetIndData(2), 3);
    EXPECT_EQ(loaded.GetContourColor(3).r, 1);
}

TEST(ChartObjectRecord, BarHeightsOf3DBarsAreLost) {
    constexpr point3Dtype points[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    CChartObj3D object;
    object.BarChart3D(points, kInd, 2, 1, 1, kRed, kBlack);
    EXPECT_EQ(Saved(object).size(), kHeader + 64);
    CChartObj3D loaded;
    Load(loaded, Saved(object));
    EXPECT_EQ(loaded.Get3DPoint(1).z, 7);
    EXPECT_EQ(loaded.GetBarHeight(1), 0);
}

TEST(ChartObjectRecord, CountsAreWrittenAsWhatIsStored) {
    constexpr RGBDType colors[] = {kRed, kGreen, kBlack, kRed};
    constexpr double groups[] = {1, 2, 3, 4, 5, 6};
    CChartObj3D object;
    object.GroupBarChart25D(kInd, groups, 0, 0, 3, 2, 0, 1, 1, colors, kBlack, 0, 0, 0);
    object.InitSegmentColorsStorage(colors);
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
    constexpr RGBDType colors[] = {kRed, kGreen};
    constexpr double groups[] = {1, 2, 3, 4, 5, 6};
    CChartObj3D object;
    object.GroupBarChart25D(kInd, groups, 0, 0, 3, 2, 0, 1, 1, colors, kBlack, 0, 0, 0);
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

TEST(ChartObjectRecord, FailingMediaAreDiskErrors) {
    test::FailingFile file;
    CChartObj3D object;
    EXPECT_TRUE(
        test::Raises(ERR3D_DISK_IO, ERR3DCLASS_CHARTOBJ3D, "Save", [&] { object.Save(&file); }));
    EXPECT_TRUE(
        test::Raises(ERR3D_DISK_IO, ERR3DCLASS_CHARTOBJ3D, "Load", [&] { object.Load(&file); }));
}

}  // namespace
}  // namespace varnel
