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

}  // namespace
}  // namespace varnel
