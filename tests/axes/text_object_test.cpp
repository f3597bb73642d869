#include "varnel/axes/text_object.h"

#include <gtest/gtest.h>

#include "tests/support/record_bytes.h"

namespace varnel {
namespace {

TEST(TextObject, RecordIsKeptByteForByte) {
    CTextObj3D text;
    const auto record = test::RecordBytes()
                            .Ints({41, 5})
                            .String("Umsatz in T\x80")
                            .Doubles({1, 2, 3, 4})
                            .Doubles({-0.1, 0.2, -0.3, 0.4})
                            .Ints({1, 2})
                            .Doubles({0.5, 0.25, 0.125, 1})
                            .Ints({2, 0, 1, 90, 1, 1, 0})
                            .Doubles({1.5});
    test::ExpectLoadsAndSaves(text, record);
    EXPECT_EQ(CTextObj3D::nSelfID, 41);
    EXPECT_EQ(text.GetTransformID(), 5);
    EXPECT_EQ(text.GetString(), "Umsatz in T\x80");
    EXPECT_EQ(text.GetLocation().z, 3.0);
    EXPECT_EQ(text.GetNormLocation().x, -0.1);
    EXPECT_EQ(text.GetXJustify(), 1);
    EXPECT_EQ(text.GetYJustify(), 2);
    EXPECT_EQ(text.GetColor().g, 0.25);
    EXPECT_EQ(text.GetTextPlane(), 2);
    EXPECT_EQ(text.GetFlipX(), 0);
    EXPECT_EQ(text.GetFlipY(), 1);
    EXPECT_EQ(text.GetRotation(), 90);
    EXPECT_EQ(text.GetTextureEnable(), 1);
    EXPECT_EQ(text.GetClipping(), 1);
    EXPECT_EQ(text.GetTextEnable(), 0);
    EXPECT_EQ(text.GetCharSize(), 1.5);
}

TEST(TextObject, ATruncatedRecordLeavesTheRest) {
    CTextObj3D text;
    MemoryFile file(test::RecordBytes().Ints({1, 2}).String("ab").Doubles({7}).Get());
    text.Load(&file);
    EXPECT_TRUE(file.RanDry());
    EXPECT_EQ(text.GetString(), "ab");
    EXPECT_EQ(text.GetTextPlane(), 3);
    EXPECT_EQ(text.GetCharSize(), 1.0);
}

TEST(TextObject, DefaultsCountAndDrawNothingUnbound) {
    CTextObj3D::nSelfID = 10;
    CTextObj3D text;
    EXPECT_EQ(CTextObj3D::nSelfID, 11);
    EXPECT_EQ(text.GetSignature(), 1515);
    text.SetString("x");
    EXPECT_EQ(text.TextWidth(), 0.0);
    EXPECT_EQ(text.TextHeight(), 0.0);
    text.OutText();
    text.OutTextNorm();
    text.Transform();
    text.TransformTextPlane(point3Dtype());
}

TEST(TextObject, JustificationShiftsByHalfOrAll) {
    CTextObj3D text;
    const double shift[] = {0.0, -0.5, -1.0, 0.0};  // other codes as 0
    for (int x = 0; x < 4; ++x)
        for (int y = 0; y < 4; ++y) {
            text.SetJustify(x, y);
            point3Dtype offset{9, 9, 9, 9};
            text.calccharjust(offset, 3.0, 2.0);
            EXPECT_EQ(offset.x, 3.0 * shift[x]);
            EXPECT_EQ(offset.y, 2.0 * shift[y]);
            EXPECT_EQ(offset.z, 0.0);
        }
}

}  // namespace
}  // namespace varnel
