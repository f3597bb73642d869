#include "varnel/platform/detail/gl_context.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <set>
#include <thread>
#include <vector>

#include "tests/support/memory_target.h"

namespace varnel::test {
namespace {

std::unique_ptr<GLContext> NewContext(const MemoryTarget& target) {
    std::string why;
    auto context = GLContext::Create(target.memory, why);
    EXPECT_TRUE(context) << why;
    return context;
}

void ClearTo(float red, float green, float blue) {
    glClearColor(red, green, blue, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

/// Red in the lower half, green in the upper one, blue in the leftmost column.
void DrawThreeParts(int width, int height) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, width, height / 2);
    ClearTo(1, 0, 0);
    glScissor(0, height / 2, width, height);
    ClearTo(0, 1, 0);
    glScissor(0, 0, 1, height);
    ClearTo(0, 0, 1);
}

struct Format {
    int bits;
    unsigned lowerRight, upperRight, left;  ///< pixels as little-endian numbers
};

class GLContextFormats : public testing::TestWithParam<Format> {};

TEST_P(GLContextFormats, ReadBackWritesEveryPixelBottomUp) {
    const Format& format = GetParam();
    // 5 pixels wide: every depth but 32 bits has padded rows.
    MemoryTarget target(5, 4, format.bits);
    const auto context = NewContext(target);
    DrawThreeParts(5, 4);
    context->ReadBack();

    const auto bytes = static_cast<std::size_t>(format.bits / 8);
    for (int y = 0; y < 4; ++y) {
        const BYTE* row =
            target.bitmap->Bits() + static_cast<std::size_t>(y) * RowStride(5, format.bits);
        for (std::size_t x = 0; x < 5; ++x) {
            unsigned pixel = 0;
            std::memcpy(&pixel, row + x * bytes, bytes);
            const unsigned expected = x == 0  ? format.left
                                      : y < 2 ? format.lowerRight
                                              : format.upperRight;
            EXPECT_EQ(pixel, expected) << x << ", " << y;
        }
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

INSTANTIATE_TEST_SUITE_P(Depths, GLContextFormats,
                         testing::Values(Format{8, 0x07, 0x38, 0xC0},
                                         Format{16, 0x7C00, 0x03E0, 0x001F},
                                         Format{24, 0xFF0000, 0x00FF00, 0x0000FF},
                                         Format{32, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF}),
                         [](const auto& test) { return std::to_string(test.param.bits) + "Bits"; });

TEST(GLContext, ReadBackLeavesTheStateAsItWas) {
    MemoryTarget target(6, 6, 24);
    const auto context = NewContext(target);
    context->SetSamples(4);
    ClearTo(1, 1, 1);
    GLuint other = 0;
    GLuint buffer = 0;
    glGenFramebuffers(1, &other);
    glGenBuffers(1, &buffer);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, other);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glPixelStorei(GL_PACK_ROW_LENGTH, 99);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelTransferf(GL_RED_SCALE, 0.0f);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    const auto state = [] {
        std::vector<GLint> values;
        for (const GLenum name :
             {GL_READ_FRAMEBUFFER_BINDING, GL_DRAW_FRAMEBUFFER_BINDING,
              GL_PIXEL_PACK_BUFFER_BINDING, GL_PACK_ROW_LENGTH, GL_PACK_SKIP_PIXELS,
              GL_PACK_ALIGNMENT, GL_RED_SCALE, GL_SCISSOR_TEST, GL_READ_BUFFER,
              GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH}) {
            values.push_back(0);
            glGetIntegerv(name, &values.back());
        }
        return values;
    };
    const auto before = state();
    context->ReadBack();
    EXPECT_EQ(state(), before);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(x, y)), 0xFFFFFFu);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(GLContext, ContextsAreApart) {
    MemoryTarget first(4, 4);
    MemoryTarget second(9, 3);
    const auto a = NewContext(first);
    auto b = NewContext(second);
    ASSERT_TRUE(a->MakeCurrent());
    ClearTo(1, 0, 0);
    ASSERT_TRUE(b->MakeCurrent());
    ClearTo(0, 0, 1);
    // Reading back needs no context made current before.
    a->ReadBack();
    EXPECT_EQ(GLContext::Current(), a.get());
    b->ReadBack();
    EXPECT_EQ(Rgb(first.bitmap->PixelFromTop(3, 3)), 0xFF0000u);
    EXPECT_EQ(Rgb(second.bitmap->PixelFromTop(8, 2)), 0x0000FFu);

    ASSERT_TRUE(a->MakeCurrent());
    b.reset();
    EXPECT_EQ(GLContext::Current(), a.get()) << "destroying another one leaves the current one";
}

TEST(GLContext, DestroyingTheCurrentOneLeavesNone) {
    MemoryTarget target(4, 4);
    auto context = NewContext(target);
    target.memory.SelectObject(nullptr);
    target.bitmap.reset();
    target.memory.DeleteDC();
    context->ReadBack();
    context.reset();
    EXPECT_EQ(GLContext::Current(), nullptr);
    GLContext::MakeNonCurrent();
}

TEST(GLContext, WhatAContextLeavesIsNotSeenByTheNext) {
    MemoryTarget target(8, 8, 32);
    const auto state = [] {
        std::vector<double> out(16);
        glGetDoublev(GL_PROJECTION_MATRIX, out.data());
        for (const GLenum name :
             {GL_CURRENT_COLOR, GL_COLOR_CLEAR_VALUE, GL_VIEWPORT, GL_LINE_WIDTH, GL_DEPTH_FUNC,
              GL_MODELVIEW_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH, GL_BLEND, GL_TEXTURE_1D, GL_LIGHTING,
              GL_CLIP_PLANE0, GL_SCISSOR_TEST, GL_VERTEX_ARRAY, GL_MATRIX_MODE}) {
            double value[4] = {};
            glGetDoublev(name, value);
            out.insert(out.end(), value, value + 4);
        }
        GLint width = 0;
        glGetTexLevelParameteriv(GL_TEXTURE_1D, 0, GL_TEXTURE_WIDTH, &width);
        out.push_back(width);
        return out;
    };
    std::vector<double> fresh;
    for (int i = 0; i < 4; ++i) {
        const auto context = NewContext(target);
        EXPECT_EQ(context->GetSamples(), 0);
        if (i == 0) fresh = state();
        EXPECT_EQ(state(), fresh);
        context->ReadBack();
        EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(3, 3)), 0U);
        context->SetSamples(4 * (i % 2));
        context->ReadBack();
        EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(3, 3)), 0U);
        ClearTo(1, 1, 0);
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        for (const GLenum on :
             {GL_BLEND, GL_TEXTURE_1D, GL_LIGHTING, GL_CLIP_PLANE0, GL_SCISSOR_TEST})
            glEnable(on);
        glScissor(0, 0, 1, 1);
        glColor3f(0.5f, 0.25f, 0);
        glLineWidth(3);
        glDepthFunc(GL_ALWAYS);
        glPushMatrix();
        glMatrixMode(GL_PROJECTION);
        glRotatef(30, 1, 0, 0);
        glEnableClientState(GL_VERTEX_ARRAY);
        const unsigned char red[4] = {255, 0, 0, 255};
        glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, red);
    }
}

TEST(GLContext, MovesBetweenThreads) {
    MemoryTarget target(4, 4);
    auto context = NewContext(target);
    std::thread([&] {
        EXPECT_EQ(GLContext::Current(), nullptr);
        EXPECT_FALSE(context->MakeCurrent()) << "it is current on the other thread";
    }).join();
    GLContext::MakeNonCurrent();
    EXPECT_EQ(GLContext::Current(), nullptr);
    std::thread([&] {
        ASSERT_TRUE(context->MakeCurrent());
        ClearTo(0, 1, 0);
        context->ReadBack();
    }).join();
    EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(1, 1)), 0x00FF00u);
    EXPECT_TRUE(context->MakeCurrent()) << "the other thread has ended";
    // One that is destroyed elsewhere is not taken for the thread's own afterwards.
    std::thread([&] { context.reset(); }).join();
    EXPECT_EQ(GLContext::Current(), nullptr);
}

/// The colours of a triangle whose edge runs at a slope through the picture.
std::set<unsigned> ColorsOfASlope(GLContext& context, MemoryTarget& target) {
    EXPECT_TRUE(context.MakeCurrent());
    glViewport(0, 0, 32 * context.PixelScale(), 32 * context.PixelScale());
    ClearTo(0, 0, 0);
    glBegin(GL_TRIANGLES);
    glVertex2f(-1.0f, -1.0f);
    glVertex2f(1.0f, -1.0f);
    glVertex2f(1.0f, 0.3f);
    glEnd();
    context.ReadBack();
    std::set<unsigned> colors;
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 32; ++x)
            colors.insert(Rgb(target.bitmap->PixelFromTop(x, y)));
    EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(31, 31)), 0xFFFFFFu);
    EXPECT_EQ(Rgb(target.bitmap->PixelFromTop(0, 0)), 0u);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return colors;
}

TEST(GLContext, MultisamplingSoftensEdges) {
    MemoryTarget target(32, 32);
    const auto context = NewContext(target);
    EXPECT_EQ(context->GetSamples(), 0);
    EXPECT_EQ(ColorsOfASlope(*context, target).size(), 2u);
    context->SetSamples(4);
    EXPECT_GE(context->GetSamples(), 2);
    EXPECT_GT(ColorsOfASlope(*context, target).size(), 3u);
    context->SetSamples(1000);
    EXPECT_GE(context->GetSamples(), 2) << "more than the driver has is its most";
    context->SetSamples(0);
    EXPECT_EQ(context->GetSamples(), 0);
    EXPECT_EQ(ColorsOfASlope(*context, target).size(), 2u);
}

TEST(GLContext, DrawingLargerStandsInForMultisampling) {
    for (const int bits : {32, 24}) {
        MemoryTarget target(32, 32, bits);
        const auto context = NewContext(target);
        ::setenv("VARNEL_OVERSAMPLE", "1", 1);
        context->SetSamples(4);
        ::unsetenv("VARNEL_OVERSAMPLE");
        EXPECT_EQ(context->PixelScale(), 2);
        EXPECT_EQ(context->GetSamples(), 4);
        const std::set<unsigned> colors = ColorsOfASlope(*context, target);
        EXPECT_EQ(colors, (std::set<unsigned>{0, 0x404040, 0x808080, 0xBFBFBF, 0xFFFFFF}));
        context->SetSamples(0);
        EXPECT_EQ(context->PixelScale(), 1);
    }
}

TEST(GLContext, SaysWhyThereIsNone) {
    CWnd window(8, 8);
    CDC memory;
    std::string why;
    EXPECT_EQ(GLContext::Create(memory, why), nullptr);
    EXPECT_NE(why, "");
    memory.CreateCompatibleDC(window.GetDC());
    EXPECT_EQ(GLContext::Create(memory, why), nullptr);
    EXPECT_NE(why.find("no bitmap"), std::string::npos) << why;
    memory.SelectObject(std::make_shared<Bitmap>(1 << 20, 1, 8));
    EXPECT_EQ(GLContext::Create(memory, why), nullptr);
    EXPECT_NE(why.find("1048576 x 1"), std::string::npos) << why;
    EXPECT_EQ(GLContext::Current(), nullptr);
}

/// Ends the process with 0 when a context comes up under the environment variable, with 1 and the
/// reason on standard error when none does.
[[noreturn]] void TryUnder(const char* variable, const char* value) {
    ::unsetenv("DISPLAY");
    ::setenv(variable, value, 1);
    MemoryTarget target(4, 4);
    std::string why;
    const auto context = GLContext::Create(target.memory, why);
    std::cerr << why << '\n';
    std::_Exit(context ? 0 : 1);
}

using testing::ExitedWithCode;

// Each runs in a process of its own, because EGL reads its environment once.
TEST(GLContextDeathTest, NamesEveryAttemptWhereThereIsNoDriver) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(TryUnder("__EGL_VENDOR_LIBRARY_DIRS", "/nonexistent"), ExitedWithCode(1),
                "surfaceless: .*EGL_BAD.*default display: .*EGL_");
    EXPECT_EXIT(TryUnder("LIBGL_DRIVERS_PATH", "/nonexistent"), ExitedWithCode(1),
                "surfaceless: .*eglInitialize.*; device 0: .*default display: ");
}

TEST(GLContextDeathTest, TakesTheDisplayThatTheEnvironmentNames) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "surfaceless"), ExitedWithCode(0), "");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "device:0"), ExitedWithCode(0), "");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "software"), ExitedWithCode(0), "");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "default"), ExitedWithCode(1),
                "^[^;]*default display: [^;]*$");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "device:99"), ExitedWithCode(1), "VARNEL_EGL=device:99");
    EXPECT_EXIT(TryUnder("VARNEL_EGL", "glass"), ExitedWithCode(1), "VARNEL_EGL=glass");
}

}  // namespace
}  // namespace varnel::test
