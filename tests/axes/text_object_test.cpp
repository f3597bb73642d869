#include "varnel/axes/text_object.h"

#include <gtest/gtest.h>

namespace varnel {
namespace {

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
