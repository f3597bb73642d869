#include "varnel/chart/header.h"

#include <gtest/gtest.h>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"

namespace varnel {
namespace {

test::RecordBytes TextRecord(const char* text) {
    return test::RecordBytes()
        .Ints({9, 3})
        .String(text)
        .Doubles({0, 0, 0, 0, 0, 0, 0.95, 0})
        .Ints({1, 2})
        .Doubles({0, 0, 0, 1})
        .Ints({3, 0, 0, 0, 0, 0, 1})
        .Doubles({1});
}

TEST(Header, RecordHoldsTheThreeTexts) {
    CHeader3D header;
    const auto record = test::RecordBytes()
                            .Ints({4, 3})
                            .Doubles({0.05, 0.75, 1.5, 0.125})
                            .Ints({1})
                            .Record(TextRecord("Above"))
                            .Record(TextRecord(""))
                            .Record(TextRecord("Below"));
    test::ExpectLoadsAndSaves(header, record);
    EXPECT_EQ(CHeader3D::nSelfID, 4);
    EXPECT_EQ(header.GetTitle1(), "Above");
    EXPECT_EQ(header.GetTitle2(), "");
    EXPECT_EQ(header.GetFooter(), "Below");
    EXPECT_EQ(header.GetFontHeightSF(), 1.5);
    EXPECT_EQ(header.GetFontSize(), 0.125);
}

TEST(Header, WithoutAContextTextsAreKeptAndNothingIsDrawn) {
    const int before = CHeader3D::nSelfID;
    CHeader3D header;
    EXPECT_EQ(CHeader3D::nSelfID, before + 1);
    EXPECT_EQ(header.GetSignature(), 1212);
    EXPECT_EQ(header.GetHeaderEnable(), 1);
    header.SetTitle1("T");
    header.SetRelSize(2.0);
    EXPECT_EQ(header.GetFontHeightSF(), 2.0);
    header.DrawHeader();
    EXPECT_TRUE(test::Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_HEADER3D, "InitHeaders",
                             [&] { header.InitHeaders(nullptr); }));
}

}  // namespace
}  // namespace varnel
