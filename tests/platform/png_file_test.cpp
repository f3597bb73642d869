#include "varnel/platform/detail/png_file.h"

#include <gtest/gtest.h>
#include <png.h>

#include "tests/support/record_bytes.h"

namespace varnel::test {
namespace {

TEST(PNG, HoldsThePictureUpperLeftFirst) {
    for (const int bits : {8, 24, 32}) {
        Bitmap bitmap(3, 2, bits);
        bitmap.ColorTable[1] = {1, 0, 0, 0};
        bitmap.RowFromTop(0)[0] = 1;  // blue 1 in the upper left corner, at any depth
        MemoryFile file;
        WritePNG(bitmap, file);

        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.GetBytes().data(),
                                                     file.GetBytes().size()));
        EXPECT_EQ(image.format, static_cast<png_uint_32>(PNG_FORMAT_RGB)) << "opaque, 8 bits";
        ASSERT_EQ(PNG_IMAGE_SIZE(image), 18u);
        std::vector<BYTE> pixels(18);
        ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
        std::vector<BYTE> expected(18);
        expected[2] = 1;
        EXPECT_EQ(pixels, expected) << bits;
        FailingFile broken;
        EXPECT_THROW(WritePNG(bitmap, broken), FileException);
    }
}

}  // namespace
}  // namespace varnel::test
