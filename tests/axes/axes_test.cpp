// Axes, labels and frames as far as they need no context: attributes, rules and records.
#include "varnel/axes/axes.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "tests/support/values.h"
#include "varnel/axes/text_object.h"

namespace varnel::test {
namespace {

constexpr const char* kAxisRecord = "2i 5i 8d 12d i";
constexpr const char* kTextRecord = "2i s 8d 2i 4d 3i 4i d";
// Counter and transform, axis to y justification; what follows the number of strings.
constexpr const char* kLabelsStart = "2i 9i";
constexpr const char* kLabelsRest = "10i 3d 48i 3i 8d";

RecordBytes LabelsBytes(const std::vector<std::string>& strings) {
    RecordBytes bytes;
    bytes.Distinct(kLabelsStart).Ints({static_cast<int>(strings.size())}).Distinct(kLabelsRest);
    for (const std::string& s : strings)
        bytes.String(s);
    return bytes.Record(RecordBytes().Distinct(kTextRecord));
}

RecordBytes AxesBytes() {
    RecordBytes bytes;
    bytes.Distinct("2i");
    for (int i = 0; i < 3; ++i)
        bytes.Record(RecordBytes().Distinct(kAxisRecord));
    for (int i = 0; i < 3; ++i)
        bytes.Record(LabelsBytes({}));
    for (int plane = 0; plane < 6; ++plane)
        bytes.Distinct("3i").Ints({0}).Distinct("d i").Ints({0}).Distinct("4d i").Ints({0});
    for (int plane = 0; plane < 6; ++plane)
        bytes.Distinct("11d 2i");
    bytes.Ints({0, 1, 2, 0, 2, 1, 1, 2, 0, 0, 1, 2, 0, 2, 1, 1, 2, 0});
    return bytes.Distinct("8d 3i 6i 3i 3i i");
}

TEST(TextObject, CountsAndDrawsNothingUnbound) {
    CTextObj3D::nSelfID = 10;
    CTextObj3D text;
    EXPECT_EQ(Row(CTextObj3D::nSelfID, text.GetSignature()), Row(11, 1515));
    text.SetString("x");
    EXPECT_EQ(Row(text.TextWidth(), text.TextHeight()), Row(0, 0));
    text.OutText();
    text.OutTextNorm();
    text.Transform();
    text.TransformTextPlane(point3Dtype());
}

TEST(Axis, LimitSettersAreNoMirrorImages) {
    CAxis3D axis;
    EXPECT_EQ(axis.IsAxisSet(), 0);
    axis.SetAxisLimits(10, 0);
    EXPECT_EQ(axis.IsAxisSet(), 1);
    const auto limits = [&axis] {
        return std::vector<double>{axis.GetAxisMin(), axis.GetAxisMax(), axis.GetAxisStart(),
                                   axis.GetAxisStop()};
    };
    EXPECT_EQ(limits(), (std::vector<double>{0, 10, 10, 0}));
    EXPECT_EQ(axis.GetAxisDir(), 1);
    axis.SetAxisMin(20);
    EXPECT_EQ(limits(), (std::vector<double>{10, 20, 20, 0}));
    axis.SetAxisMax(-5);
    EXPECT_EQ(limits(), (std::vector<double>{-5, -5, 20, -5}));
}

TEST(Axis, PointsAndIntercepts) {
    CAxis3D axis;
    axis.SetAxisLimits(2, 8);
    axis.SetAxisIntercept(3, 4);
    axis.SetAxisCenterPoint(5);
    point3Dtype start;
    point3Dtype end;
    axis.GetAxisEndPoints(start, end);
    EXPECT_EQ((std::vector<double>{start.x, end.x, end.y, end.z}),
              (std::vector<double>{2, 8, 3, 4}));
    for (const auto& [which, value] : {std::pair{0, 5.0}, {1, 3.0}, {2, 4.0}, {3, 0.0}})
        EXPECT_EQ(axis.GetAxisIntercept(which), value);
    EXPECT_EQ(axis.GetAxisInterceptAxis(1), 1);
    EXPECT_EQ(axis.GetAxisInterceptAxis(7), 2);
    EXPECT_EQ(CAxis3D::calcmaxstrwidth(-100, 5, 1), 6);
}

TEST(AxisRecords, FollowTheRules) {
    ExpectRecordRules<CAxis3D>(RecordBytes().Distinct(kAxisRecord), ERR3DCLASS_AXIS3D);
    ExpectRecordRules<CAxisLabels3D>(LabelsBytes({"Jan", "", "March"}), ERR3DCLASS_AXISLABELS3D);
    ExpectRecordRules<CTextObj3D>(RecordBytes().Distinct(kTextRecord), ERR3DCLASS_TEXTOBJ3D);
    ExpectRecordRules<CAxes3D>(AxesBytes(), ERR3DCLASS_AXES3D);
}

TEST(AxisRecords, FieldsHaveTheirPlaces) {
    CAxis3D axis;
    ExpectLoadsAndSaves(axis, RecordBytes().Distinct(kAxisRecord));
    EXPECT_EQ(Row(CAxis3D::nSelfID, axis.GetTransformID(), axis.GetAxisType(), axis.GetAxisTicDir(),
                  axis.GetAxisStyle(), axis.GetAxisNthTicMajor(), axis.GetColorMode(),
                  axis.GetAxisColor().r),
              Numbers(1, 8));
    EXPECT_EQ(Row(axis.GetAxisTicColor().a, axis.GetAxisThickness(), axis.GetAxisMin(),
                  axis.GetAxisMax(), axis.GetAxisStart(), axis.GetAxisStop(),
                  axis.GetAxisMinorTicLength(), axis.GetAxisMajorTicLength(),
                  axis.GetAxisWallThickness(), axis.GetAxisTicSpace(), axis.GetAxisCenterPoint(),
                  axis.GetAxisIntercept1(), axis.GetAxisIntercept2(), axis.IsAxisSet()),
              Numbers(15, 14));
    axis.SetTicValues(Numbers(1, 2));
    ExpectFreshAfter(axis, &CAxis3D::InitAxisDefaults);

    CAxisLabels3D l;
    l.SetEngString(" kmgt");
    ExpectLoadsAndSaves(l, LabelsBytes({"a"}));
    EXPECT_EQ(Row(l.GetAxisLabelsPlane(), l.GetAxisLabelsDir(), l.GetAxisLabelsRotation(),
                  l.GetAxisLabelsDecimals(), l.GetAxisLabelsFormat(), l.GetAxisLabelsEnds(),
                  l.GetAxisLabelsXJust(), l.GetAxisLabelsYJust(), l.GetAxisLabelsFlipX(),
                  l.GetAxisLabelsFlipY(), l.GetAxisTitleFlipX(), l.GetAxisTitleFlipY(),
                  l.GetAxisTitlePlane(), l.GetAxisTitleDir(), l.GetAxisTitleRotation(),
                  l.GetAxisTitleXJust(), l.GetAxisTitleYJust()),
              Numbers(4, 17));
    EXPECT_EQ(Row(l.GetTransformID(), l.GetAxisLabelsTicOffset(), l.GetAxisLabelsSize(),
                  l.GetAxisTitleSize(), l.GetTextureEnable(), l.GetAxisLabelsStringEnable(),
                  l.GetAxisLabelsColor().r, l.GetAxisTitleColor().r),
              Row(2, 22, 23, 24, 74, 75, 76, 80));
    EXPECT_EQ(l.GetAxisLabelsStrings()[0], "a");
    EXPECT_EQ(l.GetEngString(), " kmgt") << "not in the record";
    l.SetAxisLabelsHalo(1);
    ExpectFreshAfter(l, &CAxisLabels3D::InitAxisLabelsDefaults);
    EXPECT_EQ(l.GetAxisLabelsStrings(), nullptr);

    CTextObj3D t;
    ExpectLoadsAndSaves(t, RecordBytes().Distinct(kTextRecord));
    EXPECT_EQ(t.GetString(), "3");
    EXPECT_EQ(Row(t.GetTransformID(), t.GetXJustify(), t.GetYJustify(), t.GetTextPlane(),
                  t.GetFlipX(), t.GetFlipY(), t.GetRotation(), t.GetTextureEnable(),
                  t.GetClipping(), t.GetTextEnable()),
              Row(2, 12, 13, 18, 19, 20, 21, 22, 23, 24));
    EXPECT_EQ(Row(t.GetLocation().x, t.GetNormLocation().x, t.GetColor().r, t.GetCharSize()),
              Row(4, 8, 14, 25));
    t.SetHalo(1);
    ExpectFreshAfter(t, &CTextObj3D::InitTextObjDefaults);
}

TEST(AxisRecords, DefaultsAreThoseOfAFreshObject) {
    CAxes3D axes;
    RecordBytes axis;
    axis.Ints({CAxis3D::nSelfID, 0, 0, 0, 0, 5, 1}).Doubles({0, 0, 0, 1, 0, 0, 0, 1});
    axis.Doubles({1, 0, 10, 0, 10, 0.5, 1, 0.05, 1, 0, 0, 0}).Ints({0});
    RecordBytes labels;
    labels.Ints({CAxisLabels3D::nSelfID, 0, 0, 3, 0, 0, 0, 0, 7, -1, -1, 0});
    labels.Ints({0, 0, 0, 0, 3, 0, 0, 0, 1, 1}).Doubles({1.5, 1, 1});
    labels.Ints({1, 2, 0, 1, 1, 2, 0, 1, 2, 2, 2, 0, 1, 2, 0, 1});
    labels.Ints({2, 1, 2, 1, 2, 2, 2, 0, 1, 2, 2, 1, 2, 2, 2, 0});
    labels.Ints({2, 1, 1, 2, 2, 1, 1, 2, 2, 1, 1, 0, 2, 1, 1, 2});
    labels.Ints({0, 0, 0}).Doubles({0, 0, 0, 1, 0, 0, 0, 0});
    labels.Ints({CTextObj3D::nSelfID, 0}).String("").Doubles({0, 0, 0, 0, 0, 0, 0, 0});
    labels.Ints({0, 0}).Doubles({0, 0, 0, 1}).Ints({3, 0, 0, 0, 0, 0, 1}).Doubles({1});
    RecordBytes expected;
    expected.Ints({CAxes3D::nSelfID, 0}).Record(axis).Record(axis).Record(axis);
    expected.Record(labels).Record(labels).Record(labels);
    for (int plane = 0; plane < 6; ++plane)
        expected.Ints({1, 1, 0, 0}).Doubles({1}).Ints({1, 0}).Doubles({0, 0, 0, 1}).Ints({0, 0});
    for (int plane = 0; plane < 6; ++plane)
        expected.Doubles({0, 0, 0, 1, 0, 0, 0, 1, 0.06, 0.002, 2}).Ints({0, 0});
    expected.Ints({0, 1, 2, 0, 2, 1, 1, 2, 0, 0, 1, 2, 0, 2, 1, 1, 2, 0});
    expected.Doubles({0, 0, 0, 0, 0, 0, 0, 0}).Ints({1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0});
    expected.Ints({0, 0, 0, 1});
    EXPECT_EQ(Saved(axes), expected.Get());

    // A plane table that names other axes is not taken.
    auto damaged = expected.Get();
    damaged[damaged.size() - (4 + 12 + 12 + 24 + 12 + 64 + 72)] = 9;
    MemoryFile file(damaged);
    axes.Load(&file);
    EXPECT_EQ(Saved(axes), expected.Get());
}

TEST(AxisLabels, StringsWithoutStorageAreNotPromised) {
    CAxisLabels3D labels;
    const CString strings[] = {"a", "b"};
    labels.InitTicStringsStorage(strings);
    labels.InitTicStringsStorage(labels.GetAxisLabelsStrings() + 1, 1);  // from its own array
    EXPECT_EQ(labels.GetAxisLabelsStrings()[0], "b");
    labels.SetAxisLabelsStrings(nullptr, 5);
    EXPECT_EQ(labels.GetAxisLabelsStrings(), nullptr);
    EXPECT_EQ(labels.GetNumAxisLabelsStrings(), 1);
    std::int32_t count = -1;
    std::memcpy(&count, Saved(labels).data() + 8 + 36, 4);
    EXPECT_EQ(count, 0);
    labels.SetAxisLabelsStrings(std::span<const CString>());
    EXPECT_EQ(labels.GetNumAxisLabelsStrings(), 0);
}

TEST(AxisLabels, LoadNeverTakesMoreStringsThanTheFileHolds) {
    for (int count : {-1, 5, 2000000000}) {
        auto bytes = LabelsBytes({}).Get();
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
    CAxisLabels3D labels;
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXIS3D, "InitAxis",
                       [] { CAxis3D().InitAxis(nullptr, nullptr, 1); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXISLABELS3D, "InitAxisLabels",
                       [&] { labels.InitAxisLabels(nullptr, nullptr, nullptr); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_AXES3D, "InitAxes",
                       [] { CAxes3D(nullptr, nullptr, {}, {}); }));
    const CString s;
    const auto bad = [&] { labels.InitTicStringsStorage(&s, -1); };
    EXPECT_TRUE(Raises(ERR3D_OBJECT_NEW, ERR3DCLASS_AXISLABELS3D, "InitTicStringsStorage", bad));
    EXPECT_EQ(WhatOf(bad), "InitTicStringsStorage: the number of strings is -1");
}

/// Sets one attribute of axis or plane 1 to a value of its own and expects it there, at the axis or
/// the labels that it belongs to, and nowhere else.
template <class Arg, class Result, class Part>
void ExpectForwarded(const char* name, void (CAxes3D::*set)(int, Arg),
                     Result (CAxes3D::*get)(int) const, Result (Part::*direct)() const) {
    SCOPED_TRACE(name);
    CAxes3D axes;
    const Result before = (axes.*get)(0);
    const Result value = static_cast<Result>(before + 17);
    (axes.*set)(1, value);
    for (const int bad : {-1, 3, 1000})
        (axes.*set)(bad, value);
    EXPECT_EQ((axes.*get)(1), value);
    EXPECT_EQ((axes.*get)(0), before);
    EXPECT_EQ((axes.*get)(2), before);
    EXPECT_EQ((axes.*get)(3), Result{});
    if constexpr (std::is_same_v<Part, CAxis3D>) {
        EXPECT_EQ((axes.GetAxis(1)->*direct)(), value);
    } else {
        EXPECT_EQ((axes.GetAxisLabels(1)->*direct)(), value);
    }
    axes.FreeAxes();
    (axes.*set)(1, value);
    EXPECT_EQ((axes.*get)(1), Result{});
}

#define VARNEL_FORWARDED(Part, Name) \
    ExpectForwarded(#Name, &CAxes3D::Set##Name, &CAxes3D::Get##Name, &Part::Get##Name)

TEST(Axes, PassEveryAttributeOn) {
    VARNEL_FORWARDED(CAxis3D, AxisMax);
    VARNEL_FORWARDED(CAxis3D, AxisIntercept1);
    VARNEL_FORWARDED(CAxis3D, AxisIntercept2);
    VARNEL_FORWARDED(CAxis3D, AxisThickness);
    VARNEL_FORWARDED(CAxis3D, AxisStyle);
    VARNEL_FORWARDED(CAxis3D, AxisCenterPoint);
    VARNEL_FORWARDED(CAxis3D, AxisTicSpace);
    VARNEL_FORWARDED(CAxis3D, AxisMinorTicLength);
    VARNEL_FORWARDED(CAxis3D, AxisMajorTicLength);
    VARNEL_FORWARDED(CAxis3D, AxisTicDir);
    VARNEL_FORWARDED(CAxis3D, AxisNthTicMajor);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsFlipX);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsFlipY);
    VARNEL_FORWARDED(CAxisLabels3D, AxisTitleFlipX);
    VARNEL_FORWARDED(CAxisLabels3D, AxisTitleFlipY);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsNthTic);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsFormat);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsPlane);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsTicOffset);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsXJust);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsYJust);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsRotation);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsDir);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsDecimals);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsEnds);
    VARNEL_FORWARDED(CAxisLabels3D, AxisLabelsSize);
    VARNEL_FORWARDED(CAxisLabels3D, AxisTitleSize);
    VARNEL_FORWARDED(CAxisLabels3D, AxisTitlePlane);

    CAxes3D axes;
    CAxis3D& axis = *axes.GetAxis(2);
    CAxisLabels3D& labels = *axes.GetAxisLabels(2);
    axes.SetAxisLimits(2, 30, 20);
    axes.SetAxisMin(2, 18);
    axes.SetAxisTics(2, 1, 2, 3, 4, 5, 6);
    axes.SetAxisIntercept(2, 7, 8);
    EXPECT_EQ(Row(axes.GetAxisRange(2), axes.GetAxisStart(2), axes.GetAxisStop(2),
                  axes.GetAxisMin(2), axis.GetAxisMin(), axis.GetAxisCenterPoint(),
                  axis.GetAxisTicSpace(), axis.GetAxisMinorTicLength(),
                  axis.GetAxisMajorTicLength(), axis.GetAxisIntercept1(), axis.GetAxisIntercept2()),
              Row(12, 18, 20, 18, 18, 1, 2, 4, 5, 7, 8));
    axes.SetAxisAttrib(2, {0.1, 0, 0, 1}, {0.2, 0, 0, 1}, 9, 10);
    EXPECT_EQ(Row(axes.GetAxisNthTicMajor(2), axes.GetAxisTicDir(2), axes.GetAxisColor(2).r,
                  axes.GetAxisTicColor(2).r, axes.GetAxisThickness(2), axes.GetAxisStyle(2)),
              Row(3, 6, 0.1, 0.2, 9, 10));
    axes.SetAxisColor(2, {0.3, 0, 0, 1});
    axes.SetAxisTicColor(2, {0.4, 0, 0, 1});

    const CString strings[] = {"a", "b"};
    axes.SetAxisLabels(2, 1, 2, 3, 4, 5, {0.5, 0, 0, 1}, strings, 2);
    EXPECT_EQ(Row(axes.GetAxisLabelsPlane(2), axes.GetAxisLabelsRotation(2),
                  axes.GetAxisLabelsDir(2), axes.GetAxisLabelsDecimals(2),
                  axes.GetAxisLabelsEnds(2), axes.GetNumAxisLabelsStrings(2)),
              Row(1, 2, 3, 4, 5, 2));
    EXPECT_EQ(axes.GetAxisLabelsColor(2).r, 0.5);
    EXPECT_EQ(axes.GetAxisLabelsStringEnable(2), 1);
    axes.SetAxisLabelsStrings(2, strings + 1, 1);
    EXPECT_EQ(axes.GetAxisLabelsStrings(2)[0], "b");
    axes.SetAxisLabelsStrings(2, strings);
    EXPECT_EQ(labels.GetAxisLabelsStrings()[1], "b");
    axes.EnableAxisLabelsStrings(2, 0);
    EXPECT_EQ(labels.GetAxisLabelsStringEnable(), 0);
    axes.SetAxisLabelsColor(2, {0.6, 0, 0, 1});
    axes.SetAxisTitleColor(2, {0.7, 0, 0, 1});
    axes.SetAxisColorMode(2, 2);
    EXPECT_EQ(Row(axis.GetAxisColor().r, axis.GetAxisTicColor().r, labels.GetAxisLabelsColor().r,
                  axes.GetAxisTitleColor(2).r, axis.GetColorMode(), axes.GetAxisColorMode(2),
                  axes.GetAxisColorMode(1)),
              Row(0.3, 0.4, 0.6, 0.7, 2, 2, 1));
    labels.SetAxisTitle(1, 2, 3, 0, 4, 5, kRed, "");
    EXPECT_EQ(Row(labels.GetAxisTitlePlane(), labels.GetAxisTitleRotation(),
                  labels.GetAxisTitleDir(), labels.GetAxisTitleXJust(), labels.GetAxisTitleYJust()),
              Row(1, 2, 3, 4, 5));
    axes.SetAxisTitleString(2, "title");
    CString title;
    axes.GetAxisTitleString(2, title);
    EXPECT_EQ(title, "title");
}

TEST(Axes, PlanesKeepTheirOwnAttributes) {
    CAxes3D axes;
    axes.SetPlaneGrid(4, 2, 0, SetRGBD(1, 0, 0, 1), 3, 7, 1);
    axes.SetPlaneGridAttrib(4, SetRGBD(0, 1, 0, 1), 5, 9);
    EXPECT_EQ(axes.GetPlaneGridStyle(4), 7) << "the style is not taken";
    EXPECT_EQ(
        Row(axes.GetGridEnable(4), axes.GetPlaneGridThickness(4), axes.GetPlaneGridColor(4).g,
            axes.GetPlaneGridNthTic1(4), axes.GetPlaneGridNthTic2(4), axes.GetPlaneGridWallFlag(4)),
        Row(1, 5, 1, 2, 0, 1));
    axes.SetWallThickness(1, 0.3);
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_EQ(axes.GetAxis(axis)->GetAxisWallThickness(), 0.05);
    axes.SetWallThickness(2, 0.4);
    axes.SetWallThickness(3, 0.5);
    EXPECT_EQ(axes.GetAxis(0)->GetAxisWallThickness(), 0.5);
    EXPECT_EQ(axes.GetAxis(1)->GetAxisWallThickness(), 0.4);
    EXPECT_EQ(axes.GetAxis(2)->GetAxisWallThickness(), 0.4);
    EXPECT_EQ(axes.GetWallThickness(1), 0.3);
    axes.SetWallPlane(5, {0.1, 0, 0, 1}, {0.2, 0, 0, 1});
    axes.SetWallOffset(5, 0.3);
    axes.SetOutlineWidth(5, 4);
    axes.SetPlaneColorMode(5, 2);
    EXPECT_EQ(Row(axes.GetWallColor(5).r, axes.GetOutlineColor(5).r, axes.GetWallOffset(5),
                  axes.GetOutlineWidth(5)),
              Row(0.1, 0.2, 0.3, 4));
    EXPECT_EQ(axes.GetWallEnable(5), 1);
    EXPECT_EQ(axes.GetPlaneColorMode(5), 2);
    EXPECT_EQ(axes.GetWallEnable(4), 0);
    for (int bad : {-1, 6, 1000}) {
        axes.SetWallThickness(bad, 3);
        axes.SetPlaneGrid(bad, 1, 1, {}, 1, 1, 1);
        axes.SetWallPlane(bad, {}, {});
        EXPECT_EQ(axes.GetAxis(bad), nullptr);
        EXPECT_EQ(axes.GetWallColor(bad).a, 0);
        EXPECT_EQ(axes.GetAxisLabelsStrings(bad), nullptr);
    }
    axes.FreeAxes();
    axes.DrawAxes();
    Saved(axes);
    EXPECT_NE(axes.GetAxis(2), nullptr);
}

}  // namespace
}  // namespace varnel::test
