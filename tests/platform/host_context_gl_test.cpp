#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/support/memory_target.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/varnel.h"

namespace {

/// What the stand-ins for GLX below were told.
struct GlxState {
    int context = 0;  ///< its address is the host's context
    int display = 0;
    bool isCurrent = false;
    unsigned long draw = 0, read = 0;
    bool mixed = false;  ///< whether GLX was made current while EGL was
};
GlxState glx;

}  // namespace

// The library looks GLX up in its process, as it would find a host's.
#define GLX_EXPORT extern "C" __attribute__((visibility("default")))

GLX_EXPORT void* glXGetCurrentContext() {
    return glx.isCurrent ? &glx.context : nullptr;
}
GLX_EXPORT void* glXGetCurrentDisplay() {
    return &glx.display;
}
GLX_EXPORT unsigned long glXGetCurrentDrawable() {
    return glx.draw;
}
GLX_EXPORT unsigned long glXGetCurrentReadDrawable() {
    return glx.read;
}
GLX_EXPORT int glXMakeContextCurrent(void* display, unsigned long draw, unsigned long read,
                                     void* context) {
    glx.isCurrent = display == &glx.display && context == &glx.context;
    glx.draw = draw;
    glx.read = read;
    if (glx.isCurrent) glx.mixed = eglGetCurrentContext() != EGL_NO_CONTEXT;
    return 1;
}

namespace varnel::test {
namespace {

/// A context of the host's own, current with a surface.
class HostContext {
 public:
    explicit HostContext(EGLenum api) {
        m_Display =
            eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
        if (!eglInitialize(m_Display, nullptr, nullptr)) return;
        const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
                                     EGL_OPENGL_BIT | EGL_OPENGL_ES2_BIT, EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        eglChooseConfig(m_Display, attributes, &config, 1, &count);
        const EGLint size[] = {EGL_WIDTH, 2, EGL_HEIGHT, 2, EGL_NONE};
        m_Surface = eglCreatePbufferSurface(m_Display, config, size);
        eglBindAPI(api);
        const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 2, EGL_NONE};
        m_Context = eglCreateContext(m_Display, config, EGL_NO_CONTEXT, version);
        eglMakeCurrent(m_Display, m_Surface, m_Surface, m_Context);
    }
    ~HostContext() {
        eglMakeCurrent(m_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(m_Display, m_Context);
        eglDestroySurface(m_Display, m_Surface);
    }
    HostContext(const HostContext&) = delete;
    HostContext& operator=(const HostContext&) = delete;

    bool IsCurrent() const {
        return m_Context != EGL_NO_CONTEXT && eglGetCurrentContext() == m_Context &&
               eglGetCurrentSurface(EGL_DRAW) == m_Surface &&
               eglGetCurrentSurface(EGL_READ) == m_Surface;
    }

 private:
    EGLDisplay m_Display = EGL_NO_DISPLAY;
    EGLSurface m_Surface = EGL_NO_SURFACE;
    EGLContext m_Context = EGL_NO_CONTEXT;
};

class HostContextGuard : public testing::TestWithParam<EGLenum> {};

TEST_P(HostContextGuard, GivesBackWhatTheHostHadCurrent) {
    MemoryTarget target(4, 4);
    std::string why;
    std::unique_ptr<GLContext> context;
    const HostContext host(GetParam());
    ASSERT_TRUE(host.IsCurrent());
    {
        const GLContext::HostContextGuard guard;
        context = GLContext::Create(target.memory, why);
        ASSERT_TRUE(context) << why;
        {
            const GLContext::HostContextGuard inner;
            ASSERT_TRUE(context->MakeCurrent());
        }
        EXPECT_EQ(GLContext::Current(), context.get())
            << "the outer guard gives back, no inner one";
    }
    EXPECT_TRUE(host.IsCurrent());
    EXPECT_EQ(eglQueryAPI(), GetParam());
    EXPECT_EQ(GLContext::Current(), nullptr);

    GLContext::MakeNonCurrent();
    EXPECT_TRUE(host.IsCurrent()) << "what is not the library's stays";
    {
        const GLContext::HostContextGuard guard;
        context->ReadBack();
        context.reset();
    }
    EXPECT_TRUE(host.IsCurrent());
}

INSTANTIATE_TEST_SUITE_P(Interfaces, HostContextGuard,
                         testing::Values(EGL_OPENGL_API, EGL_OPENGL_ES_API));

TEST(HostContextGuardOfGlx, ReleasesBeforeAndGivesBackAfter) {
    MemoryTarget target(4, 4);
    std::string why;
    std::unique_ptr<GLContext> context;
    glx = {};
    glXMakeContextCurrent(&glx.display, 7, 9, &glx.context);
    ASSERT_TRUE(glx.isCurrent);
    {
        const GLContext::HostContextGuard guard;
        EXPECT_FALSE(glx.isCurrent) << "EGL refuses while GLX is current";
        context = GLContext::Create(target.memory, why);
        ASSERT_TRUE(context) << why;
    }
    EXPECT_TRUE(glx.isCurrent);
    EXPECT_FALSE(glx.mixed);
    EXPECT_EQ(glx.draw, 7u);
    EXPECT_EQ(glx.read, 9u);
    EXPECT_EQ(GLContext::Current(), nullptr);
    glx = {};
}

TEST(HostContextGuardOfOperations, TheHostsContextComesBackAfterEachOfThem) {
    CWnd window(40, 40);
    CChartView3D view(&window, 40, 40);
    double x[] = {1, 2, 3};
    double y[] = {3, 1, 2};
    CChart3D* const chart = view.NewChart3D();
    CTransform3D* const transform = chart->AutoTransform25D(x, y, 3, 1.0, 0, 0);
    CAxes3D* const axes = chart->AutoAxes(transform);
    CChartObj3D* const bars = chart->NewChartObj(transform);
    bars->BarChart25D(x, y, 0.0, 0.5, 3, 0.7, 0.5, {0, 0, 1, 1}, {0, 0, 0, 1}, 1, 1, 0);
    CTextObj3D* const text = chart->NewChartTextObj(transform, "text");
    CLegend3D* const legend = view.NewLegend3D();
    COpenGL& gl = *view.GetOpenGLPntr();
    const point3Dtype corners[] = {{0, 0, 0, 0}, {1, 0, 0, 0}, {1, 0, 1, 0}};
    const GLViewportType small{0, 0, 9, 9};
    const HostContext host(EGL_OPENGL_API);
    const std::pair<const char*, std::function<void()>> operations[] = {
        {"DrawView", [&] { view.DrawView(); }},
        {"NewChart3D", [&] { view.NewChart3D(); }},
        {"SetAntialiasing", [&] { view.SetAntialiasing(4); }},
        {"DrawChart", [&] { chart->DrawChart(); }},
        {"DrawAxes", [&] { axes->DrawAxes(); }},
        {"DrawChartObj", [&] { bars->DrawChartObj(); }},
        {"OutTextNorm", [&] { text->OutTextNorm(); }},
        {"DrawLegend", [&] { legend->DrawLegend(); }},
        {"DrawHeader", [&] { view.GetHeader()->DrawHeader(); }},
        {"ChartTransform", [&] { transform->ChartTransform(); }},
        {"PolyFillAbs3D", [&] { gl.PolyFillAbs3D(corners, 3); }},
        {"PolyAbs3D", [&] { gl.PolyAbs3D(corners, 3); }},
        {"SetViewport", [&] { gl.SetViewport(small); }},
        {"Clear", [&] { gl.Clear(GL_COLOR_BUFFER_BIT); }},
        {"SetColorMode", [&] { gl.SetColorMode(1); }},
        {"RegisterFont", [&] { gl.RegisterFont("Arial", 0.1, 400, 0, 0, 128); }},
        {"ReadBack", [&] { gl.ReadBack(); }},
        {"SetCulling", [&] { gl.SetCulling(1); }},
        {"SaveToSVG", [&] { view.SaveToSVG("/dev/null"); }},
        {"SaveToPNG", [&] { view.SaveToPNG("/dev/null"); }},
        {"CopyToClipboard", [&] { view.CopyToClipboard(); }},
        {"NewFont3D", [&] { gl.NewFont3D(); }},
        {"DeleteChartViewObjects", [&] { view.DeleteChartViewObjects(); }},
    };
    for (const auto& [name, operation] : operations) {
        operation();
        EXPECT_TRUE(host.IsCurrent()) << name;
    }
}

TEST(HostContextGuardWithoutHost, LeavesTheLibrarysContextCurrent) {
    MemoryTarget target(4, 4);
    std::string why;
    const EGLenum before = eglQueryAPI();
    std::unique_ptr<GLContext> context;
    {
        const GLContext::HostContextGuard guard;
        context = GLContext::Create(target.memory, why);
        ASSERT_TRUE(context) << why;
    }
    EXPECT_EQ(GLContext::Current(), context.get());
    EXPECT_EQ(eglQueryAPI(), before);
    { const GLContext::HostContextGuard guard; }
    EXPECT_EQ(GLContext::Current(), context.get());
}

}  // namespace
}  // namespace varnel::test
