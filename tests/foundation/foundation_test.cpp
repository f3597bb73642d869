#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/gl_fixture.h"
#include "tests/support/told.h"
#include "tests/support/values.h"
#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/object_list.h"
#include "varnel/platform/files.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using test::kNaN;
using test::Row;

TEST(Numbers, GuardedLogarithmKeepsItsClamps) {
    const double rows[][2] = {{0, 0}, {-5, 0}, {1e-40, 1e-30}, {1e40, 1e30}, {1e30, 30}, {1000, 3}};
    for (const auto& [v, log] : rows)
        EXPECT_EQ(log10Ex(v), log);
    EXPECT_TRUE(std::isnan(log10Ex(kNaN)));
    EXPECT_EQ(AntilogLog10Ex(-3), 1.0);
    EXPECT_NEAR(AntilogLog10Ex(250), 250, 1e-12);
    EXPECT_EQ(NearTest(1.0, 1.5, 0.5), 1);
    EXPECT_EQ(NearTest(1.0, 1.6, 0.5), 0);
}

TEST(Numbers, Extremes) {
    const double values[] = {3, -1, 7, 7, 2};
    EXPECT_EQ(GetMinimum(values, 5), -1);
    EXPECT_EQ(GetMaximum(values, 5), 7);
    EXPECT_EQ(GetMinimum(values, 0), 3) << "the first is read even then";
    EXPECT_EQ(GetMaximum(values, -1), 0);
    EXPECT_EQ(GetMinimum(nullptr, 3), 0);
    const point3Dtype points[] = {{1, 5, 3, 42}, {2, 0, 9, 7}};
    const point3Dtype low = GetMinimum3D(points, 2);
    EXPECT_EQ(
        Row(low.x, low.y, low.z, low.w, GetMaximum3D(points, 2).z, GetMaximum3D(points, -1).w),
        Row(1, 0, 3, 42, 9, 0));
}

TEST(Points, NormalIsTheCrossProductOfTheEdges) {
    point3Dtype n{9, 9, 9, 5};
    CalcNormal({0, 0, 0, 0}, {2, 0, 0, 0}, {2, 3, 0, 0}, n);
    EXPECT_EQ(Row(n.x, n.y, n.z), Row(0, 0, 6));
    EXPECT_EQ(n.w, 5) << "w is left alone";
}

TEST(Points, InterpolationRunsAlongTheNormalAxis) {
    const point3Dtype a{0, 10, 100, 1};
    const point3Dtype b{4, 20, 300, 2};
    point3Dtype q{0, 0, 150, 0};
    interpolatepoint3D(a, b, q, 3);
    EXPECT_EQ(Row(q.x, q.y, q.w), Row(1, 12.5, 1.25));
    q = {0, 15, 0, 0};
    interpolatepoint3D(a, b, q, 1);
    EXPECT_EQ(q.x, 2);
    EXPECT_EQ(q.z, 200);
    q = {3, 0, 0, 0};
    interpolatepoint3D(a, b, q, 5);
    EXPECT_EQ(q.y, 17.5);
    EXPECT_EQ(q.z, 250);
    q = {7, 8, 9, 6};
    interpolatepoint3D(a, b, q, 6);
    EXPECT_EQ(q.x + q.y + q.z + q.w, 30);
}

TEST(Planes, PermuteCoordinates) {
    struct Case {
        int plane;
        point3Dtype lands;  // of (1, 2, 3)
        int normal;
    };
    for (const Case& c : {Case{0, {1, 2, 3, 0}, 2},
                          {1, {1, 3, 2, 0}, 1},
                          {2, {3, 1, 2, 0}, 0},
                          {3, {1, 2, 3, 0}, 2},
                          {4, {1, 3, 2, 0}, 1},
                          {5, {3, 1, 2, 0}, 0},
                          {6, {0, 0, 0, 0}, 2},
                          {-1, {0, 0, 0, 0}, 2}}) {
        SCOPED_TRACE(c.plane);
        const point3Dtype out = swapcoords(c.plane, {1, 2, 3, 9});
        EXPECT_EQ(out.x, c.lands.x);
        EXPECT_EQ(out.y, c.lands.y);
        EXPECT_EQ(out.z, c.lands.z);
        EXPECT_EQ(out.w, 0);
        EXPECT_EQ(GetNormalAxis(c.plane), c.normal);
        if (c.plane < 0 || c.plane > 5) continue;
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(GetCoord3D(out, GetSwapCoordAxis(c.plane, axis)), axis + 1);
    }
    EXPECT_EQ(GetSwapCoordAxis(3, 17), 17);
    EXPECT_EQ(GetSwapCoordAxis(1, 3), 0);
    EXPECT_EQ(GetSwapCoordAxis(9, 1), 0);
}

TEST(Colours, BytesTruncateAndWrap) {
    EXPECT_EQ(RGBDtoCOLORREF(SetRGBD(1.0, 0.5, 0.0, 0.3)), 0x7FFFU);
    EXPECT_EQ(RGBDtoRGBB(SetRGBD(1.002, 0, 0, 0)).r, 255);
    EXPECT_EQ(RGBDtoRGBB(SetRGBD(1.01, 0, 0, 0)).r, 1);
    EXPECT_EQ(RGBDtoRGBB(SetRGBD(-0.01, 0, 0, 0)).r, 254);
    EXPECT_EQ(RGBDtoRGBB(SetRGBD(kNaN, 1e300, 0, 0)).r, 0) << "defined, whatever comes in";
    EXPECT_EQ(COLORREFtoRGDB(0x0000FF).r, 1.0);
    EXPECT_EQ(COLORREFtoRGDB(0xFF0000).b, 1.0);
    EXPECT_EQ(COLORREFtoRGDB(0).a, 1.0);
    EXPECT_EQ(RGBD2INT(SetRGBD(0, 0, 1, 1)), 0xFF0000U);
}

TEST(Errors, DescriptionsAndReporting) {
    const auto text = [](int type) {
        return CErr3D::GetErrorDescription(static_cast<CErr3DTypes>(type));
    };
    EXPECT_EQ(text(0), "Not an error");
    EXPECT_EQ(text(19), "Bad Polysurface Error");
    EXPECT_EQ(text(20), "Unknown Error");
    EXPECT_EQ(text(-1), "Unknown Error");

    std::vector<std::string> shown;
    const NoticeHandler before =
        SetNoticeHandler([&](const std::string& s) { shown.push_back(s); });
    CErr3D::SetErrorReportMode(1);
    const CErr3D error(ERR3D_OBJECT_NEW, ERR3DCLASS_CHART3D, "NewDIBObj");
    const CErr3D copy = error;
    CErr3D assigned;
    assigned = copy;
    ASSERT_EQ(shown.size(), 1U) << "once, at the error's construction alone";
    EXPECT_EQ(shown[0], "Object New Error");
    EXPECT_EQ(assigned.m_FunctionName, "NewDIBObj");
    CErr3D::SetErrorReportMode(2);
    const CErr3D silent(ERR3D_DISK_IO, ERR3DCLASS_DIB, "Save");
    EXPECT_EQ(shown.size(), 1U);
    EXPECT_EQ(CErr3D().m_ErrorClass, ERR3DCLASS_GENERAL);
    CErr3D::SetErrorReportMode(0);
    SetNoticeHandler(before);
}

TEST(Errors, AreStandardExceptionsWithASentence) {
    EXPECT_EQ(test::WhatOf([] {
                  detail::NewArray<double>(-1, {ERR3DCLASS_CHARTOBJ3D, "BarChart25D"});
              }),
              "BarChart25D: the count is -1");
    EXPECT_EQ(test::WhatOf([] { detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, "Turn"); }),
              "Turn: Parameter Error");
}

TEST(Errors, CountersAreIntsThatThreadsShare) {
    int counter = 0;
    const auto count = [&counter] {
        for (int i = 0; i < 20000; ++i)
            detail::Count(counter);
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(counter, 40000);
}

TEST(Diagnostics, AreToldOnceAndOnlyWhenOn) {
    detail::Diagnose("Draw", "nobody hears this");
    EXPECT_EQ(test::Told([] {
                  for (int i = 0; i < 3; ++i)
                      detail::Diagnose("Draw", "symbol ", 99, " is unknown");
              }),
              "Draw: symbol 99 is unknown\n");
}

TEST(Allocation, ImpossibleSizesAndFailingConstructorsAreErrors) {
    using test::ExpectError;
    constexpr detail::Origin here{ERR3DCLASS_CHARTOBJ3D, "InitIndDataStorage"};
    ExpectError(ERR3D_ARRAY_NEW, ERR3DCLASS_CHARTOBJ3D, "InitIndDataStorage",
                [&] { detail::NewArray<double>(-1, here); });
    ExpectError(ERR3D_ARRAY_NEW, ERR3DCLASS_CHARTOBJ3D, "InitIndDataStorage", [&] {
        detail::NewArray<point3Dtype>(std::numeric_limits<long long>::max() / 8, here);
    });
    struct Greedy {
        Greedy() { throw std::bad_alloc(); }
    };
    ExpectError(ERR3D_OBJECT_NEW, ERR3DCLASS_CHARTOBJ3D, "InitIndDataStorage",
                [&] { detail::NewObject<Greedy>(here); });
    EXPECT_EQ(detail::NewArray<int>(3, here)[2], 0);
}

TEST(Records, BytesAreThoseOfTheFile) {
    MemoryFile file;
    detail::RecordWriter write(file);
    const std::int32_t number = 0x01020304;
    const double one = 1.0;
    const GLViewportType viewport{1, 2, 3, -1};
    write(number, one, viewport, CString("abc"), CString());
    const std::vector<BYTE> expected = {4, 3, 2, 1,                          // number
                                        0, 0, 0, 0, 0,    0,    0xF0, 0x3F,  // 1.0
                                        1, 0, 0, 0, 2,    0,    0,    0,
                                        3, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,  // viewport
                                        3, 0, 0, 0, 'a',  'b',  'c',         // "abc"
                                        0, 0, 0, 0};                         // ""
    EXPECT_EQ(file.GetBytes(), expected);
}

TEST(Records, MissingBytesLeaveFieldsAloneAndAreRemembered) {
    MemoryFile file({7, 0, 0, 0, 1, 2, 3});
    detail::RecordReader read(file);
    std::int32_t first = 1;
    double second = 2.5;
    CString text = "kept";
    read(first);
    EXPECT_FALSE(file.RanDry());
    read(second, text);
    EXPECT_EQ(first, 7);
    EXPECT_EQ(second, 2.5);
    EXPECT_EQ(text, "kept");
    EXPECT_TRUE(file.RanDry());
}

TEST(Records, ForgedLengthsAllocateNothing) {
    for (const std::vector<BYTE>& bytes :
         {std::vector<BYTE>{0xFF, 0xFF, 0xFF, 0x7F, 'x'}, {0xFF, 0xFF, 0xFF, 0xFF, 'x'}}) {
        MemoryFile file(bytes);
        CString text = "kept";
        ReadCString(&file, text);
        EXPECT_EQ(text, "kept");
        EXPECT_TRUE(file.RanDry());
    }
    MemoryFile file({2, 0, 0, 0, 'h', 'i'});
    CString text;
    ReadCString(&file, text);
    EXPECT_EQ(text, "hi");
    EXPECT_FALSE(file.RanDry());
    ReadCString(nullptr, text);
    WriteCString(nullptr, text);
}

TEST(Records, AFileOfUnknownLengthThatEndedHasNothing) {
    class Stream : public MemoryFile {
     public:
        using MemoryFile::MemoryFile;
        std::uint64_t Remaining() const override { return std::numeric_limits<uint64_t>::max(); }
    };
    Stream stream({1, 0, 0, 0, 2, 0, 0, 0});
    detail::RecordReader record(stream);
    std::int32_t number = 0;
    record(number);
    EXPECT_TRUE(record.Has(1, 4));
    EXPECT_FALSE(record.Has(1, 5));
    EXPECT_FALSE(record.Has(1LL << 31, 32)) << "nothing is made for what does not come";
    record(number);
    EXPECT_EQ(number, 2);
    EXPECT_FALSE(record.Has(1, 1));
}

TEST(ObjectList, OwnsAndSteps) {
    static int alive = 0;
    struct Item {
        explicit Item(int n) : number(n) { ++alive; }
        ~Item() { --alive; }
        int number;
    };
    ObjectList<Item> list;
    EXPECT_EQ(list.GetAt(0), nullptr);
    EXPECT_EQ(list.Step(1), nullptr);
    for (int i = 0; i < 3; ++i)
        list.Append(std::make_unique<Item>(i));
    EXPECT_EQ(list.GetCurrent()->number, 2) << "the newest is the current one";
    EXPECT_EQ(list.GetAt(3), nullptr);
    EXPECT_EQ(list.GetAt(-1), nullptr);
    EXPECT_EQ(list.GetAt(0)->number, 0);
    EXPECT_EQ(list.GetCurrentIndex(), 2) << "looking up moves nothing";
    EXPECT_EQ(list.Step(-1)->number, 2);
    EXPECT_EQ(list.Step(0)->number, 1);
    EXPECT_EQ(list.Step(-1)->number, 1);
    EXPECT_EQ(list.Step(-1)->number, 0);
    EXPECT_EQ(list.Step(-1), nullptr) << "stepped off the head";
    list.RemoveAll();
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(list.IsEmpty());
}

}  // namespace
}  // namespace varnel
