#include "varnel/platform/detail/framebuffer.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/fence.h"
#include "varnel/platform/detail/pixel_rows.h"

namespace varnel::detail {
namespace {

/// The state that reading back changes, put back at the end of the scope.
class ReadState {
 public:
    ReadState() {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &m_Draw);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &m_Read);
        m_Scissor = glIsEnabled(GL_SCISSOR_TEST);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPushAttrib(GL_PIXEL_MODE_BIT);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
        glPixelStorei(GL_PACK_SWAP_BYTES, GL_FALSE);
        glPixelStorei(GL_PACK_ROW_LENGTH, 0);
        glPixelStorei(GL_PACK_SKIP_ROWS, 0);
        glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glPixelTransferi(GL_MAP_COLOR, GL_FALSE);
        glPixelTransferf(GL_RED_SCALE, 1.0f);
        glPixelTransferf(GL_GREEN_SCALE, 1.0f);
        glPixelTransferf(GL_BLUE_SCALE, 1.0f);
        glPixelTransferf(GL_RED_BIAS, 0.0f);
        glPixelTransferf(GL_GREEN_BIAS, 0.0f);
        glPixelTransferf(GL_BLUE_BIAS, 0.0f);
    }
    ~ReadState() {
        if (m_Scissor) glEnable(GL_SCISSOR_TEST);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(m_Draw));
        glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(m_Read));
        glPopAttrib();
        glPopClientAttrib();
    }
    ReadState(const ReadState&) = delete;
    ReadState& operator=(const ReadState&) = delete;

 private:
    GLint m_Draw = 0;
    GLint m_Read = 0;
    GLboolean m_Scissor = GL_FALSE;
};

/// Waits until all is drawn, which can take long, and can be stopped: nothing has been read yet.
void FinishDrawing() {
    const std::unique_ptr<std::remove_pointer_t<GLsync>, void (*)(GLsync)> drawn(
        glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0), [](GLsync sync) { glDeleteSync(sync); });
    if (drawn == nullptr) return;  // a driver without fences waits when it is read
    WaitFor(drawn.get(), Progress);
}

/// How many rows of so many pixels are read between two looks at the clock.
int RowsAtOnce(int width) {
    constexpr int kPixels = 1 << 20;
    return std::max(1, kPixels / width);
}

/// Turns pixels as OpenGL gives them, bytes red, green, blue, alpha, into those of 32-bit bitmaps.
/// Taking the pixels in the framebuffer's own order and turning them here is twice as fast as
/// having the driver do it (0.19 and 0.42 ms for 1024 x 768 on llvmpipe).
void ToBitmapOrder(BYTE* pixels, std::size_t count) {
    constexpr bool kLittle = std::endian::native == std::endian::little;
    constexpr unsigned kFirst = kLittle ? 0 : 24;
    constexpr unsigned kThird = kLittle ? 16 : 8;
    constexpr std::uint32_t kSecond = kLittle ? 0x0000FF00u : 0x00FF0000u;
    constexpr std::uint32_t kOpaque = kLittle ? 0xFF000000u : 0x000000FFu;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t pixel;
        std::memcpy(&pixel, pixels + 4 * i, 4);
        pixel = (pixel & kSecond) | (pixel >> kThird & 255u) << kFirst |
                (pixel >> kFirst & 255u) << kThird | kOpaque;
        std::memcpy(pixels + 4 * i, &pixel, 4);
    }
}

/// The mean of scale x scale pixels of the enlarged row group starting at `from`, `stride` bytes
/// apart, for each of `count` pixels.
void AverageRow(const BYTE* from, std::size_t stride, std::size_t count, std::size_t scale,
                BYTE* out) {
    const auto area = static_cast<unsigned>(scale * scale);
    for (std::size_t x = 0; x < count; ++x) {
        unsigned sum[3] = {};
        for (std::size_t j = 0; j < scale; ++j)
            for (std::size_t i = 0; i < scale; ++i)
                for (std::size_t c = 0; c < 3; ++c)
                    sum[c] += from[j * stride + (x * scale + i) * 4 + c];
        for (std::size_t c = 0; c < 3; ++c)
            out[4 * x + c] = static_cast<BYTE>((sum[c] + area / 2) / area);
        out[4 * x + 3] = 255;
    }
}

}  // namespace

std::optional<Framebuffer> Framebuffer::Make(int width, int height, int samples, int scale) {
    GLint most = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &most);
    if (width > most / scale || height > most / scale) return std::nullopt;
    GLint before = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &before);
    Framebuffer made;
    made.m_Width = width * scale;
    made.m_Height = height * scale;
    made.m_Scale = scale;
    made.m_Wanted = samples;
    if (made.Allocate(samples)) {
        made.BindCleared();
        return made;
    }
    made.Delete();
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(before));
    // Failing to get a framebuffer is an answer here and no error of the drawing that follows.
    while (glGetError() != GL_NO_ERROR) {
    }
    return std::nullopt;
}

bool Framebuffer::Allocate(int samples) {
    for (const GLenum depth : {GL_DEPTH_COMPONENT32, GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT24}) {
        if (!Attach(m_Drawn, m_Width, m_Height, samples, depth)) {
            Delete(m_Drawn);
            continue;
        }
        if (samples == 0) return true;
        glBindRenderbuffer(GL_RENDERBUFFER, m_Drawn.color);
        glGetRenderbufferParameteriv(GL_RENDERBUFFER, GL_RENDERBUFFER_SAMPLES, &m_Samples);
        return Attach(m_Resolved, m_Width, m_Height, 0, 0);
    }
    return false;
}

bool Framebuffer::Attach(Target& target, int width, int height, int samples, unsigned depthFormat) {
    const auto attach = [&](GLuint& name, GLenum format, GLenum point) {
        glGenRenderbuffers(1, &name);
        glBindRenderbuffer(GL_RENDERBUFFER, name);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, point, GL_RENDERBUFFER, name);
    };
    glGenFramebuffers(1, &target.framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
    attach(target.color, GL_RGBA8, GL_COLOR_ATTACHMENT0);
    if (depthFormat != 0) attach(target.depth, depthFormat, GL_DEPTH_ATTACHMENT);
    glBindRenderbuffer(GL_RENDERBUFFER, 0);
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

void Framebuffer::Delete(Target& target) {
    glDeleteFramebuffers(1, &target.framebuffer);
    glDeleteRenderbuffers(1, &target.color);
    glDeleteRenderbuffers(1, &target.depth);
    target = {};
}

void Framebuffer::Delete() {
    Delete(m_Drawn);
    Delete(m_Resolved);
}

void Framebuffer::Bind() const {
    glBindFramebuffer(GL_FRAMEBUFFER, m_Drawn.framebuffer);
}

void Framebuffer::BindCleared() const {
    Bind();
    glPushAttrib(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_SCISSOR_BIT);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPopAttrib();
}

void Framebuffer::Read(int width, int height, int rowLength, BYTE* pixels) const {
    const ReadState state;
    FinishDrawing();
    GLuint source = m_Drawn.framebuffer;
    if (m_Samples > 0) {
        glDisable(GL_SCISSOR_TEST);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, m_Drawn.framebuffer);
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_Resolved.framebuffer);
        glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT,
                          GL_NEAREST);
        source = m_Resolved.framebuffer;
        FinishDrawing();
    }
    glBindFramebuffer(GL_READ_FRAMEBUFFER, source);
    glPixelStorei(GL_PACK_ROW_LENGTH, rowLength);
    const auto stride = static_cast<std::size_t>(rowLength) * 4;
    const int rows = RowsAtOnce(width);
    for (int y = 0; y < height; y += rows) {
        ProgressOnly(y, height);
        glReadPixels(0, y, width, std::min(rows, height - y), GL_RGBA, GL_UNSIGNED_BYTE,
                     pixels + static_cast<std::size_t>(y) * stride);
    }
}

void Framebuffer::ReadBack(Bitmap& bitmap, int width, int height) const {
    width = std::min(width, bitmap.Width());
    height = std::min(height, bitmap.Height());
    if (width <= 0 || height <= 0) return;
    const auto count = static_cast<std::size_t>(width);
    if (m_Scale == 1 && bitmap.BitsPerPixel() == 32) {
        Read(width, height, m_Width, bitmap.Bits());
        for (int y = 0; y < height; ++y) {
            if (y % 64 == 0) ProgressOnly(y, height);
            ToBitmapOrder(bitmap.Bits() + static_cast<std::size_t>(y) * bitmap.Stride(), count);
        }
        return;
    }
    const auto scale = static_cast<std::size_t>(m_Scale);
    const std::size_t stride = count * scale * 4;
    std::vector<BYTE> pixels(stride * scale * static_cast<std::size_t>(height));
    Read(width * m_Scale, height * m_Scale, width * m_Scale, pixels.data());
    std::vector<BYTE> averaged(scale > 1 ? count * 4 : 0);
    for (int y = 0; y < height; ++y) {
        if (y % 16 == 0) ProgressOnly(y, height);
        BYTE* const rows = pixels.data() + static_cast<std::size_t>(y) * scale * stride;
        ToBitmapOrder(rows, stride * scale / 4);
        const BYTE* row = rows;
        if (scale > 1) {
            AverageRow(row, stride, count, scale, averaged.data());
            row = averaged.data();
        }
        PackRow(row, count, bitmap.BitsPerPixel(),
                bitmap.Bits() + static_cast<std::size_t>(y) * bitmap.Stride());
    }
}

}  // namespace varnel::detail
