#include "varnel/bitmap/dib_object.h"

#include <gtest/gtest.h>

#include "tests/bitmap/bmp_files.h"
#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"

namespace varnel::test {
namespace {

TEST(DibObject, RecordIsExact) {
    const RecordBytes record = RecordBytes().Distinct("2i 24d 3i s");
    ExpectRecordRules<CDIBObj3D>(record, ERR3DCLASS_DIBOBJ3D);
    CDIBObj3D object;
    ExpectLoadsAndSaves(object, record);
    EXPECT_EQ(CDIBObj3D::nSelfID, 1);
    EXPECT_EQ(object.GetTransformID(), 2);
    EXPECT_EQ(object.GetDIBFilename(), "30");
    EXPECT_EQ(object.GetDib(), nullptr);
    point3Dtype p1, p2, p3;
    object.GetPlanePoints(p1, p2, p3);
    EXPECT_EQ(p3.w, 14);
    object.GetNormPlanePoints(p1, p2, p3);
    EXPECT_EQ(p1.x, 15);
    int x = 0, y = 0;
    object.GetRepeatFactors(x, y);
    EXPECT_EQ(x, 27);
    EXPECT_EQ(y, 28);
}

TEST(DibObject, NewNameBringsNewPictureAndCopiesKeepTheirs) {
    const TempFile wide(MakeBmp24(9, 2).bytes);
    const TempFile narrow(MakeBmp24(3, 2).bytes);
    CDIBObj3D object(nullptr, nullptr, wide.Path());
    EXPECT_EQ(object.GetDib()->GetTextureWidth(), 16U);
    const CDIBObj3D copy(object);
    object.SetDIBFilename(narrow.Path());
    EXPECT_EQ(object.GetDib()->GetTextureWidth(), 4U);
    EXPECT_EQ(copy.GetDib()->GetTextureWidth(), 16U);
    EXPECT_EQ(copy.GetDIBFilename(), wide.Path());
    object = copy;
    EXPECT_EQ(object.GetDib(), copy.GetDib());
}

TEST(DibObject, FailuresAreRaised) {
    CDIBObj3D object;
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_DIBOBJ3D, "InitDIBObj",
                       [&] { object.InitDIBObj(nullptr, nullptr); }));
    EXPECT_TRUE(Raises(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_DIB, "LoadBitmapFile",
                       [&] { object.SetDIBFilename("no such folder/a.bmp"); }));
    EXPECT_EQ(object.GetDIBFilename(), "no such folder/a.bmp");
    EXPECT_TRUE(Raises(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_DIB, "LoadBitmapFile",
                       [] { CDIBObj3D(nullptr, nullptr, "no such folder/a.bmp"); }));
    object.DrawDIBObj();
}

}  // namespace
}  // namespace varnel::test
