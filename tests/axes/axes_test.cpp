// Axes, labels and frames as far as they need no context: attributes, rules and records.
#include "varnel/axes/axes.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "varnel/axes/text_object.h"
#include "varnel/foundation/error.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

using test::FailingFile;
using test::Raises;
using test::RecordBytes;
using test::Saved;

RecordBytes AxisBytes(int counter, int type, double min, double max, int colorMode = 1) {
    return RecordBytes()
        .Ints({counter, 0, type, 0, 0, 5, colorMode})
        .Doubles({0, 0, 0, 1, 0, 0, 0, 1})
        .Doubles({1, min, max, min, max, 0.5, 1, 0.05, 1, 0, 0, 0})
        .Ints({1});
}

TEST(Axis, LimitSettersAreNoMirrorImages) {
    CAxis3D axis;
    EXPECT_EQ(axis.IsAxisSet(), 0);
    axis.SetAxisLimits(10, 0);
    EXPECT_EQ(axis.IsAxisSet(), 1);
    EXPECT_EQ(axis.GetAxisMin(), 0);
    EXPECT_EQ(axis.GetAxisMax(), 10);
    EXPECT_EQ(axis.GetAxisStart(), 10);
    EXPECT_EQ(axis.GetAxisDir(), 1);
    axis.SetAxisMin(20);
    EXPECT_EQ(axis.GetAxisMin(), 10);
    EXPECT_EQ(axis.GetAxisMax(), 20);
    EXPECT_EQ(axis.GetAxisStart(), 20);
    axis.SetAxisMax(-5);
    EXPECT_EQ(axis.GetAxisMin(), -5);
    EXPECT_EQ(axis.GetAxisMax(), -5);
    EXPECT_EQ(axis.GetAxisStop(), -5);
}

TEST(Axis, PointsAndIntercepts) {
    CAxis3D axis;
    axis.SetAxisLimits(2, 8);
    axis.SetAxisIntercept(3, 4);
    axis.SetAxisCenterPoint(5);
    point3Dtype start;
    point3Dtype end;
    axis.GetAxisEndPoints(start, end);
    EXPECT_EQ(start.x, 2);
    EXPECT_EQ(end.x, 8);
    EXPECT_EQ(end.y, 3);
    EXPECT_EQ(end.z, 4);
    EXPECT_EQ(axis.GetAxisIntercept(0), 5);
    EXPECT_EQ(axis.GetAxisIntercept(2), 4);
    EXPECT_EQ(axis.GetAxisIntercept(3), 0);
    EXPECT_EQ(axis.GetAxisInterceptAxis(1), 1);
    EXPECT_EQ(axis.GetAxisInterceptAxis(7), 2);
    EXPECT_EQ(CAxis3D::calcmaxstrwidth(-100, 5, 1), 6);
}

TEST(Axis, RecordByteForByte) {
    CAxis3D axis;
    axis.SetAxisLimits(2, 9);
    const auto expected = AxisBytes(CAxis3D::nSelfID, 0, 2, 9);
    const auto bytes = Saved(axis);
    EXPECT_EQ(bytes.size(), 192U);
    EXPECT_EQ(bytes, expected.Get());

    MemoryFile file(AxisBytes(77, 2, -1, 6).Get());
    CAxis3D loaded;
    loaded.Load(&file);
    EXPECT_EQ(CAxis3D::nSelfID, 77);
    EXPECT_EQ(loaded.GetAxisType(), 2);
    EXPECT_EQ(loaded.GetAxisMax(), 6);
    EXPECT_EQ(Saved(loaded), AxisBytes(77, 2, -1, 6).Get());
}

RecordBytes LabelsBytes(int counter, int textCounter, const std::vector<std::string>& strings) {
    RecordBytes b;
    b.Ints({counter, 0});
    b.Ints({0, 3, 0, 0, 0, 0, 7, -1, -1, static_cast<int>(strings.size())});
    b.Ints({0, 0, 0, 0, 3, 0, 0, 0, 1, 1});
    b.Doubles({1.5, 1, 1});
    b.Ints({1, 2, 0, 1, 1, 2, 0, 1, 2, 2, 2, 0, 1, 2, 0, 1});
    b.Ints({2, 1, 2, 1, 2, 2, 2, 0, 1, 2, 2, 1, 2, 2, 2, 0});
    b.Ints({2, 1, 1, 2, 2, 1, 1, 2, 2, 1, 1, 0, 2, 1, 1, 2});
    b.Ints({0, 0, strings.empty() ? 0 : 1});
    b.Doubles({0, 0, 0, 1, 0, 0, 0, 0});
    for (const std::string& s : strings)
        b.String(s);
    b.Ints({textCounter, 0}).String("");  // the title
    b.Doubles({0, 0, 0, 0, 0, 0, 0, 0}).Ints({0, 0});
    b.Doubles({0, 0, 0, 1}).Ints({3, 0, 0, 0, 0, 0, 1}).Doubles({1});
    return b;
}

TEST(AxisLabels, RecordByteForByte) {
    CAxisLabels3D labels;
    const CString strings[] = {"Jan", "", "March"};
    labels.SetAxisLabelsStrings(strings, 3);
    EXPECT_EQ(labels.GetAxisLabelsStringEnable(), 1);
    const auto expected =
        LabelsBytes(CAxisLabels3D::nSelfID, CTextObj3D::nSelfID, {"Jan", "", "March"});
    EXPECT_EQ(Saved(labels), expected.Get());

    MemoryFile file(expected.Get());
    CAxisLabels3D loaded;
    loaded.SetEngString(" kmgt");
    loaded.Load(&file);
    ASSERT_EQ(loaded.GetNumAxisLabelsStrings(), 3);
    EXPECT_EQ(loaded.GetAxisLabelsStrings()[2], "March");
    EXPECT_EQ(loaded.GetEngString(), " kmgt");
    EXPECT_EQ(Saved(loaded), expected.Get());
}

TEST(AxisLabels, StringsWithoutStorageAreNotPromised) {
    CAxisLabels3D labels;
    const CString strings[] = {"a", "b"};
    labels.InitTicStringsStorage(strings, 2);
    labels.InitTicStringsStorage(labels.GetAxisLabelsStrings() + 1, 1);  // from its own array
    EXPECT_EQ(labels.GetAxisLabelsStrings()[0], "b");
    labels.SetAxisLabelsStrings(nullptr, 5);
    EXPECT_EQ(labels.GetAxisLabelsStrings(), nullptr);
    EXPECT_EQ(labels.GetNumAxisLabelsStrings(), 1);
    const auto bytes = Saved(labels);
    std::int32_t count = -1;
    std::memcpy(&count, bytes.data() + 8 + 36, 4);
    EXPECT_EQ(count, 0);
}

TEST(AxisLabels, LoadNeverTakesMoreStringsThanTheFileHolds) {
    for (int count : {-1, 5, 2000000000}) {
        auto bytes = LabelsBytes(1, 1, {}).Get();
        bytes.resize(8 + 40 + 24 + 16 + 24 + 192 + 12 + 64 + 6);
        std::memcpy(bytes.data() + 8 + 36, &count, 4);
        MemoryFile file(bytes);
        CAxisLabels3D labels;
        labels.Load(&file);
        EXPECT_EQ(labels.GetNumAxisLabelsStrings(), 0);
        EXPECT_TRUE(file.RanDry());
    }
}

TEST(Axes, FailuresAreNamed) {
    CAxis3D axis;
    CAxisLabels3D labels;
    CAxes3D axes;
    FailingFile file;
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXIS3D, "InitAxis",
                       [&] { axis.InitAxis(nullptr, nullptr, 1); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXISLABELS3D, "InitAxisLabels",
                       [&] { labels.InitAxisLabels(nullptr, nullptr, &axis); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXES3D, "InitAxes",
                       [] { CAxes3D(nullptr, nullptr, {}, {}); }));
    EXPECT_TRUE(Raises(ERR3D_OBJECT_NEW, ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage", [&] {
        const CString s;
        labels.InitTicStringsStorage(&s, -1);
    }));
    EXPECT_TRUE(Raises(ERR3D_DISK_IO, ERR3DCLASS_AXIS3D, "Save", [&] { axis.Save(&file); }));
    EXPECT_TRUE(
        Raises(ERR3D_DISK_IO, ERR3DCLASS_AXISLABELS3D, "Load", [&] { labels.Load(&file); }));
    EXPECT_TRUE(Raises(ERR3D_DISK_IO, ERR3DCLASS_AXES3D, "Save", [&] { axes.Save(&file); }));
    axes.Save(nullptr);
    axes.Load(nullptr);
}

TEST(Axes, StartWithEverythingOff) {
    const CAxes3D axes;
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(axes.GetAxisEnable(axis), 0);
        EXPECT_EQ(axes.GetAxisLabelsEnable(axis), 0);
    }
    for (int plane = 0; plane < 6; ++plane) {
        EXPECT_EQ(axes.GetGridEnable(plane), 0);
        EXPECT_EQ(axes.GetWallEnable(plane), 0);
    }
}

TEST(Axes, WallThicknessReachesSomeAxes) {
    CAxes3D axes;
    axes.SetWallThickness(1, 0.3);
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_EQ(axes.GetAxis(axis)->GetAxisWallThickness(), 0.05);
    axes.SetWallThickness(2, 0.4);
    axes.SetWallThickness(3, 0.5);
    EXPECT_EQ(axes.GetAxis(0)->GetAxisWallThickness(), 0.5);
    EXPECT_EQ(axes.GetAxis(1)->GetAxisWallThickness(), 0.4);
    EXPECT_EQ(axes.GetAxis(2)->GetAxisWallThickness(), 0.4);
    EXPECT_EQ(axes.GetWallThickness(1), 0.3);
}

TEST(Axes, GridAttributesKeepTheStyle) {
    CAxes3D axes;
    axes.SetPlaneGrid(4, 2, 0, SetRGBD(1, 0, 0, 1), 3, 7, 1);
    axes.SetPlaneGridAttrib(4, SetRGBD(0, 1, 0, 1), 5, 9);
    EXPECT_EQ(axes.GetGridEnable(4), 1);
    EXPECT_EQ(axes.GetPlaneGridStyle(4), 7);
    EXPECT_EQ(axes.GetPlaneGridThickness(4), 5);
    EXPECT_EQ(axes.GetPlaneGridColor(4).g, 1);
    EXPECT_EQ(axes.GetPlaneGridNthTic1(4), 2);
    EXPECT_EQ(axes.GetPlaneGridNthTic2(4), 0);
    EXPECT_EQ(axes.GetPlaneGridWallFlag(4), 1);
}

TEST(Axes, BadIndicesAndFreedAxesAreIgnored) {
    CAxes3D axes;
    for (int bad : {-1, 6, 1000}) {
        axes.SetAxisMin(bad, 3);
        axes.SetAxisLabelsSize(bad, 3);
        axes.SetWallThickness(bad, 3);
        axes.SetPlaneGridStyle(bad, 3);
        EXPECT_EQ(axes.GetAxis(bad), nullptr);
        EXPECT_EQ(axes.GetAxisMax(bad), 0);
        EXPECT_EQ(axes.GetAxisLabelsStrings(bad), nullptr);
        EXPECT_EQ(axes.GetWallColor(bad).a, 0);
    }
    axes.FreeAxes();
    axes.SetAxisLimits(0, 1, 2);
    EXPECT_EQ(axes.GetAxisMax(0), 0);
    axes.DrawAxes();
    MemoryFile file;
    axes.Save(&file);
    EXPECT_NE(axes.GetAxis(2), nullptr);
}

TEST(Axes, RecordByteForByte) {
    CAxes3D axes;
    axes.SetAxesLimits({1, 2, 3, 0}, {10, 20, 30, 0});
    axes.SetPlaneGrid(1, 2, 3, SetRGBD(0.1, 0.2, 0.3, 1), 1.5, 4, 1);
    axes.SetWallPlane(5, SetRGBD(0.4, 0.5, 0.6, 1), SetRGBD(0.7, 0.8, 0.9, 1));
    axes.EnableAxis(1, 1);
    axes.EnableAxisLabels(2, 1);
    axes.SetAxisColorMode(0, 0);
    axes.SetPlaneColorMode(3, 2);

    RecordBytes b;
    b.Ints({CAxes3D::nSelfID, 0});
    b.Record(AxisBytes(CAxis3D::nSelfID, 0, 1, 10, 0));
    b.Record(AxisBytes(CAxis3D::nSelfID, 0, 2, 20));
    b.Record(AxisBytes(CAxis3D::nSelfID, 0, 3, 30));
    for (int i = 0; i < 3; ++i)
        b.Record(LabelsBytes(CAxisLabels3D::nSelfID, CTextObj3D::nSelfID, {}));
    for (int plane = 0; plane < 6; ++plane) {
        const bool set = plane == 1;
        b.Ints({set ? 2 : 1, set ? 3 : 1, set ? 1 : 0, 0}).Doubles({set ? 1.5 : 1.0});
        b.Ints({set ? 4 : 1, 0});
        if (set)
            b.Doubles({0.1, 0.2, 0.3, 1});
        else
            b.Doubles({0, 0, 0, 1});
        b.Ints({set ? 1 : 0, 0});
    }
    for (int plane = 0; plane < 6; ++plane) {
        const bool set = plane == 5;
        if (set)
            b.Doubles({0.4, 0.5, 0.6, 1, 0.7, 0.8, 0.9, 1});
        else
            b.Doubles({0, 0, 0, 1, 0, 0, 0, 1});
        b.Doubles({0.06, 0.002, 2}).Ints({set ? 1 : 0, set ? 1 : 0});
    }
    b.Ints({0, 1, 2, 0, 2, 1, 1, 2, 0, 0, 1, 2, 0, 2, 1, 1, 2, 0});
    b.Doubles({1, 2, 3, 0, 10, 20, 30, 0});
    b.Ints({0, 1, 1}).Ints({1, 1, 1, 2, 1, 1}).Ints({0, 1, 0}).Ints({0, 0, 1}).Ints({1});
    EXPECT_EQ(Saved(axes), b.Get());

    CAxes3D loaded;
    MemoryFile file(b.Get());
    loaded.Load(&file);
    EXPECT_EQ(file.Remaining(), 0U);
    EXPECT_EQ(loaded.GetAxisMax(2), 30);
    EXPECT_EQ(Saved(loaded), b.Get());

    // A plane table that names other axes is not taken.
    auto damaged = b.Get();
    const std::size_t table = damaged.size() - (4 + 12 + 12 + 24 + 12 + 64 + 72);
    damaged[table] = 9;
    MemoryFile other(damaged);
    loaded.Load(&other);
    EXPECT_EQ(Saved(loaded), b.Get());
}

}  // namespace
}  // namespace varnel
