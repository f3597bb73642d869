#include "varnel/bitmap/dib_object.h"

#include <gtest/gtest.h>

#include <cstring>

#include "tests/bitmap/bmp_files.h"
#include "tests/support/expect_error.h"
#include "varnel/platform/files.h"

namespace varnel::test {
namespace {

template <class T>
void PutScalar(std::vector<BYTE>& bytes, T value) {
    const auto* const from = reinterpret_cast<const BYTE*>(&value);
    bytes.insert(bytes.end(), from, from + sizeof value);
}

TEST(DibObject, RecordIsExact) {
    std::vector<BYTE> expected;
    for (const int field : {41, 7})
        PutScalar(expected, field);
    for (int i = 1; i <= 24; ++i)
        PutScalar(expected, i * 1.5);
    for (const int field : {3, 2, 1, 5})
        PutScalar(expected, field);
    for (const char c : {'a', '.', 'b', 'm', 'p'})
        PutScalar(expected, c);

    CDIBObj3D object;
    MemoryFile file(expected);
    object.Load(&file);
    EXPECT_FALSE(file.RanDry());
    EXPECT_EQ(file.Remaining(), 0U);
    EXPECT_EQ(object.GetTransformID(), 7);
    EXPECT_EQ(object.GetDIBFilename(), "a.bmp");
    EXPECT_EQ(object.GetDib(), nullptr);
    point3Dtype p1, p2, p3;
    object.GetPlanePoints(p1, p2, p3);
    EXPECT_EQ(p3.w, 12 * 1.5);
    object.GetNormPlanePoints(p1, p2, p3);
    EXPECT_EQ(p1.x, 13 * 1.5);
    int x = 0, y = 0;
    object.GetRepeatFactors(x, y);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, 2);

    MemoryFile saved;
    object.Save(&saved);
    EXPECT_EQ(saved.GetBytes(), expected);
    // The counter belongs to the class, so another object's record starts with it too.
    MemoryFile other;
    CDIBObj3D().Save(&other);
    EXPECT_EQ(other.GetBytes()[0], 41);
    object.Save(nullptr);
    object.Load(nullptr);
}

TEST(DibObject, SecondRepeatFactorHasNoEffect) {
    CDIBObj3D object;
    object.SetRepeatFactors(3, 5);
    int x = 0, y = 0;
    object.GetRepeatFactors(x, y);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, 3);
}

TEST(DibObject, NewNameBringsNewPictureAndCopiesKeepTheirs) {
    const TempFile wide(MakeBmp({"24", 24}, 9, 2).bytes);
    const TempFile narrow(MakeBmp({"24", 24}, 3, 2).bytes);
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
