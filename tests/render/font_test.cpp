#include "varnel/render/font.h"

#include <gtest/gtest.h>

#include "tests/support/expect_error.h"
#include "tests/support/record_bytes.h"
#include "varnel/platform/window.h"

namespace varnel::test {
namespace {

TEST(Font, TheDeviceContextIsCheckedBeforeTheRenderingContext) {
    CFont3D font;
    CDC none;
    CWnd window(4, 4);
    for (CDC* dc : {static_cast<CDC*>(nullptr), &none})
        EXPECT_TRUE(Raises(ERR3D_CDC_PARAMETER, ERR3DCLASS_FONT3D, "InitFont",
                           [&] { font.InitFont(nullptr, dc, 1000); }));
    EXPECT_TRUE(Raises(ERR3D_OPENGL_PARAMETER, ERR3DCLASS_FONT3D, "InitFont",
                       [&] { font.InitFont(nullptr, window.GetDC(), 1000); }));
    EXPECT_EQ(font.GetListBase(), 0);
}

TEST(Font, AFailedRegistrationKeepsFaceAndScaleOnly) {
    CFont3D font;
    EXPECT_EQ(font.RegisterFont("Times", 0.3, 400, 1, 1, 200), 0);
    MemoryFile saved;
    font.Save(&saved);
    const RecordBytes expected = RecordBytes()
                                     .Ints({0, 0, 1, 1, 400, 200})
                                     .Doubles({0.01, 0.1, 1.0, 0.05, 0.05})
                                     .String("Arial");
    EXPECT_EQ(saved.GetBytes(), expected.Get());
}

TEST(Font, RecordRepeatsTheScaleFactor) {
    CFont3D font;
    const auto record = [](double first, double second) {
        return RecordBytes()
            .Ints({7, 1256, 1, 0, 400, 255})
            .Doubles({0.02, 0.5, 1.5, first, second})
            .String("Courier New");
    };
    ExpectLoadsAndSaves(font, record(0.25, 0.25));
    EXPECT_EQ(font.GetFontExtrusion(), 0.02);
    EXPECT_EQ(font.GetFontRendering(), 0.5);
    EXPECT_EQ(font.GetListBase(), 1256);
    EXPECT_EQ(font.GetNumFontChars(), 255);

    MemoryFile file(record(0.25, 0.125).Get());
    font.Load(&file);
    EXPECT_EQ(font.GetFontScaleFactor(), 0.125);
    font.Load(nullptr);
    font.Save(nullptr);
}

}  // namespace
}  // namespace varnel::test
