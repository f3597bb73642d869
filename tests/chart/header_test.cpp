#include "varnel/chart/header.h"

#include <gtest/gtest.h>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"

namespace varnel::test {
namespace {

RecordBytes TextRecord(const char* text) {
    return RecordBytes()
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
    const auto record = RecordBytes()
                            .Ints({4, 3})
                            .Doubles({0.05, 0.75, 1.5, 0.125})
                            .Ints({1})
                            .Record(TextRecord("Above"))
                            .Record(TextRecord(""))
                            .Record(TextRecord("Below"));
    ExpectLoadsAndSaves(header, record);
    EXPECT_EQ(CHeader3D::nSelfID, 4);
    EXPECT_EQ(header.GetTitle1(), "Above");
    EXPECT_EQ(header.GetTitle2(), "");
    EXPECT_EQ(header.GetFooter(), "Below");
    EXPECT_EQ(header.GetFontHeightSF(), 1.5);
    EXPECT_EQ(header.GetFontSize(), 0.125);
}

TEST(Header, WithoutAContextTextsAreKeptAndNothingIsDrawn) {
    CHeader3D header;
    EXPECT_EQ(header.GetSignature(), 1212);
    header.SetTitle1("T");
    header.DrawHeader();
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_HEADER3D, "InitHeaders",
                       [&] { header.InitHeaders(nullptr); }));
}

}  // namespace
}  // namespace varnel::test
