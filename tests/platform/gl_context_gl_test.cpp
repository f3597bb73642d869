#include "varnel/platform/gl_context.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "varnel/platform/window.h"

namespace varnel {
namespace {

/// A memory device with a bitmap of its window's depth.
struct Target {
    Target(int width, int height, int bitsPerPixel = 32)
        : window(width, height, bitsPerPixel),
          bitmap(std::make_shared<Bitmap>(width, height, bitsPerPixel)) {
        memory.CreateCompatibleDC(window.GetDC());
        memory.SelectObject(bitmap);
    }

    CWnd window;
    CDC memory;
    HBITMAP bitmap;
};

TEST(GLContext, ClearsIntoTheBitmap) {
    Target target(7, 5);
    std::string why;
    const auto context = GLContext::Create(target.memory, why);
    ASSERT_TRUE(context) << why;
    EXPECT_EQ(GLContext::Current(), context.get());
    glClearColor(1.0f, 0.5f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    context->ReadBack();
    for (int i = 0; i < 7 * 5; ++i) {
        const BYTE* pixel = target.bitmap->Bits() + 4 * i;
        EXPECT_EQ(pixel[0], 0);
        EXPECT_NEAR(pixel[1], 128, 1);
        EXPECT_EQ(pixel[2], 255);
        EXPECT_EQ(pixel[3], 255);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace varnel
