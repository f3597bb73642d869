#include "tests/support/gl_fixture.h"

#include <algorithm>

namespace varnel::test {
namespace {

constexpr int kVertexFloats = 7;  // GL_3D_COLOR: x y z r g b a

const float* ReadVertices(const float* at, int count, FeedbackPrimitive& out) {
    for (int i = 0; i < count; ++i, at += kVertexFloats)
        out.vertices.push_back({at[0], at[1], at[2], at[3], at[4], at[5], at[6]});
    return at;
}

}  // namespace

std::vector<FeedbackPrimitive> Feedback(const std::function<void()>& draw) {
    std::vector<float> buffer(4 << 20);
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_3D_COLOR, buffer.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const GLint size = glRenderMode(GL_RENDER);
    EXPECT_GE(size, 0) << "the feedback buffer overflowed";
    std::vector<FeedbackPrimitive> primitives;
    const float* at = buffer.data();
    const float* const end = at + std::max(size, 0);
    while (at < end) {
        FeedbackPrimitive primitive{static_cast<int>(*at++), {}};
        int count = 0;
        switch (primitive.token) {
            case GL_POLYGON_TOKEN:
                count = static_cast<int>(*at++);
                break;
            case GL_LINE_TOKEN:
            case GL_LINE_RESET_TOKEN:
                count = 2;
                break;
            case GL_POINT_TOKEN:
            case GL_BITMAP_TOKEN:
                count = 1;
                break;
            default:
                ++at;
                continue;
        }
        at = ReadVertices(at, count, primitive);
        primitives.push_back(std::move(primitive));
    }
    return primitives;
}

Extent ExtentOf(const std::vector<FeedbackPrimitive>& primitives) {
    Extent e;
    for (const auto& primitive : primitives)
        for (const auto& v : primitive.vertices) {
            e.left = std::min(e.left, v.x);
            e.right = std::max(e.right, v.x);
            e.bottom = std::min(e.bottom, v.y);
            e.top = std::max(e.top, v.y);
        }
    return e;
}

int CountPolygons(const std::vector<FeedbackPrimitive>& primitives) {
    return static_cast<int>(std::count_if(primitives.begin(), primitives.end(),
                                          [](const auto& p) { return p.IsPolygon(); }));
}

int CountLines(const std::vector<FeedbackPrimitive>& primitives) {
    return static_cast<int>(std::count_if(primitives.begin(), primitives.end(),
                                          [](const auto& p) { return p.IsLine(); }));
}

void GLFixture::Open(int bitsPerPixel) {
    Close();
    m_Window = std::make_unique<CWnd>(kSize, kSize, bitsPerPixel);
    CDC* const screen = m_Window->GetDC();
    m_Memory.CreateCompatibleDC(screen);
    m_Section = std::make_unique<CDIBSection>(screen, &m_Memory, kSize, kSize, bitsPerPixel);
    m_Memory.SelectObject(m_Section->GetBitmap());
    m_GL = std::make_unique<COpenGL>(screen, m_Section.get());
    m_GL->SetViewport({0, 0, kSize, kSize});
}

void GLFixture::Close() {
    if (m_GL != nullptr) m_GL->Close();
    m_GL.reset();
    m_Section.reset();
}

void GLFixture::SetUp() {
    CErr3D::SetErrorReportMode(0);
    Open();
}

void GLFixture::TearDown() {
    if (m_GL == nullptr) return;
    m_GL->MakeCurrent();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    for (GLenum cap :
         {GL_LINE_STIPPLE, GL_TEXTURE_2D, GL_CULL_FACE, GL_BLEND, GL_POLYGON_OFFSET_FILL,
          GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY, GL_TEXTURE_COORD_ARRAY})
        EXPECT_FALSE(glIsEnabled(cap)) << "left enabled: " << std::hex << cap;
    GLint mode[2] = {0, 0};
    glGetIntegerv(GL_POLYGON_MODE, mode);
    EXPECT_EQ(mode[0], GL_FILL);
    Close();
}

void GLFixture::Draw(const std::function<void()>& draw) {
    m_GL->MakeCurrent();
    m_GL->SetClearColor(1, 1, 1, 1);
    m_GL->Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    m_GL->ReadBack();
}

RGBQUAD GLFixture::Pixel(int x, int y) const {
    return m_Section->GetBitmap()->PixelFromTop(x, kSize - 1 - y);
}

int GLFixture::Inked() const {
    int count = 0;
    for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) {
            const RGBQUAD p = Pixel(x, y);
            if (p.rgbRed != 255 || p.rgbGreen != 255 || p.rgbBlue != 255) ++count;
        }
    return count;
}

}  // namespace varnel::test
