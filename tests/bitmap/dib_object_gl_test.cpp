#include "tests/bitmap/bmp_files.h"
#include "tests/support/gl_fixture.h"
#include "tests/support/record_bytes.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/platform/files.h"
#include "varnel/transform/transform.h"

namespace varnel::test {
namespace {

point3Dtype Point(double x, double y, double z) {
    return {x, y, z, 0.0};
}

class DibObjectGL : public GLFixture {
 protected:
    void SetUp() override {
        GLFixture::SetUp();
        m_Transform = std::make_unique<CTransform3D>(m_GL.get());
    }

    /// An object that shows the picture over the whole image.
    CDIBObj3D Filling(const std::string& path) {
        CDIBObj3D object(m_GL.get(), m_Transform.get(), path);
        object.SetNormPlanePoints(Point(-1, 0, -1), Point(-1, 0, 1), Point(1, 0, 1));
        return object;
    }

    RGB At(double right, double up) const {
        const RGBQUAD color = Pixel(static_cast<int>(right * kSize), static_cast<int>(up * kSize));
        return {color.rgbRed, color.rgbGreen, color.rgbBlue};
    }

    const BmpSample m_Sample = MakeBmp24(2, 2);
    const TempFile m_File{m_Sample.bytes};
    std::unique_ptr<CTransform3D> m_Transform;
};

TEST_F(DibObjectGL, PictureStandsUprightAndUnlit) {
    CDIBObj3D object = Filling(m_File.Path());
    GL().SetColorMode(1);
    Draw([&] { object.DrawDIBObj(); });
    EXPECT_EQ(At(0.25, 0.75), m_Sample.pixels[0]);
    EXPECT_EQ(At(0.75, 0.75), m_Sample.pixels[1]);
    EXPECT_EQ(At(0.25, 0.25), m_Sample.pixels[2]);
    EXPECT_EQ(At(0.75, 0.25), m_Sample.pixels[3]);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    GL().SetColorMode(0);
}

TEST_F(DibObjectGL, RepeatsAlikeInBothDirections) {
    CDIBObj3D object = Filling(m_File.Path());
    object.SetRepeatFactors(3, 5);
    Draw([&] { object.DrawDIBObj(); });
    for (int row = 0; row < 6; ++row)
        for (int column = 0; column < 6; ++column)
            EXPECT_EQ(At((column + 0.5) / 6, (row + 0.5) / 6),
                      m_Sample.pixels[static_cast<std::size_t>(2 * (1 - row % 2) + column % 2)])
                << column << " " << row;
}

TEST_F(DibObjectGL, DataCornersFollowTheScaleAndNormalizedOnesDoNot) {
    CDIBObj3D object(m_GL.get(), m_Transform.get(), m_File.Path());
    const auto extent = [&] {
        m_Transform->ChartTransform();
        return ExtentOf(Feedback([&] { object.DrawDIBObj(); }));
    };
    // The limits -1..1 cover half the image: (0, 0, 0) to (1, 0, 1) is its box's upper right.
    ExpectBox(extent(), 50, 75, 50, 75, 0.01);
    m_Transform->SetScale(Point(0, -1, 0), Point(2, 1, 4));
    ExpectBox(extent(), 25, 50, 25, 37.5, 0.01);

    // Point 2 only sets where the left side ends; the lower right corner is derived.
    object.SetNormPlanePoints(Point(-0.5, 0, -0.5), Point(-0.5, 0, 0.2), Point(0.5, 0, 0.2));
    EXPECT_NEAR(extent().bottom, 25, 0.01);
    m_Transform->SetScale(Point(5, 5, 5), Point(9, 9, 9));
    ExpectBox(extent(), 25, 75, 25, 60, 0.01);

    m_Transform->SetScale(Point(1, 1, 1), Point(1, 1, 1));
    object.SetPlanePoints(Point(1, 1, 1), Point(1, 1, 2), Point(2, 1, 2));
    EXPECT_EQ(CountPolygons(Feedback([&] { object.DrawDIBObj(); })), 0) << "no finite corners";
}

TEST_F(DibObjectGL, NewNameShowsTheNewPicture) {
    CDIBObj3D object = Filling(m_File.Path());
    const BmpSample other = MakeBmp24(1, 1);
    const TempFile file(other.bytes);
    object.SetDIBFilename(file.Path());
    Draw([&] { object.DrawDIBObj(); });
    EXPECT_EQ(At(0.3, 0.6), other.pixels[0]);
}

TEST_F(DibObjectGL, WhatIsNoBitmapIsBlack) {
    const NoticeLog notices;
    const TempFile file({'X'});
    CDIBObj3D object = Filling(file.Path());
    EXPECT_EQ(notices.texts, std::vector<std::string>{"Not a bitmap file"});
    Draw([&] { object.DrawDIBObj(); });
    EXPECT_EQ(At(0.5, 0.5), (RGB{0, 0, 0}));
}

/// The counter that records begin with.
int Counter() {
    MemoryFile file;
    CDIBObj3D().Save(&file);
    return file.GetBytes()[0] | file.GetBytes()[1] << 8;
}

TEST_F(DibObjectGL, InitBindsChecksAndCounts) {
    CDIBObj3D object(nullptr, nullptr, m_File.Path());
    Draw([&] { object.DrawDIBObj(); });
    EXPECT_EQ(Inked(), 0);

    const int before = Counter();
    ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_DIBOBJ3D, "InitDIBObj",
                [&] { object.InitDIBObj(m_GL.get(), nullptr); });
    EXPECT_EQ(Counter(), before);
    object.InitDIBObj(m_GL.get(), m_Transform.get());
    EXPECT_EQ(Counter(), before + 1);
    EXPECT_EQ(object.GetTransformID(), m_Transform->GetSelfID());
    Draw([&] { object.DrawDIBObj(); });
    EXPECT_GT(Inked(), 0);
}

/// An object loaded from a record that names the file.
CDIBObj3D Reloaded(const std::string& path) {
    MemoryFile read(RecordBytes().Ints({0, 0}).Distinct("24d").Ints({1, 1, 0}).String(path).Get());
    CDIBObj3D loaded;
    loaded.Load(&read);
    loaded.SetPlanePoints(Point(0, 0, 0), Point(0, 0, 1), Point(1, 0, 1));
    return loaded;
}

TEST_F(DibObjectGL, LoadedObjectsWithoutTheirFileAreBlackPlanes) {
    const NoticeLog notices;
    CDIBObj3D found = Reloaded(m_File.Path());
    found.InitDIBObj(m_GL.get(), m_Transform.get());
    EXPECT_EQ(found.GetDib()->GetDibWidth(), 2);
    CDIBObj3D nameless = Reloaded("");
    nameless.InitDIBObj(m_GL.get(), m_Transform.get());
    EXPECT_EQ(nameless.GetDib(), nullptr);
    EXPECT_TRUE(notices.texts.empty());

    CDIBObj3D lost = Reloaded("no such folder/a.bmp");
    lost.InitDIBObj(m_GL.get(), m_Transform.get());
    EXPECT_EQ(notices.texts, std::vector<std::string>{
                                 "Error Opening File for Input: no such folder/a.bmp: No such "
                                 "file or directory"});
    lost.SetNormPlanePoints(Point(-1, 0, -1), Point(-1, 0, 1), Point(1, 0, 1));
    Draw([&] { lost.DrawDIBObj(); });
    EXPECT_EQ(At(0.5, 0.5), (RGB{0, 0, 0}));
    // Named by the host again, a missing file is an error.
    ExpectError(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_DIB, "LoadBitmapFile",
                [&] { lost.InitDIBObj(m_GL.get(), m_Transform.get()); });
}

}  // namespace
}  // namespace varnel::test
