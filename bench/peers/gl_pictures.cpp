// Bare EGL and OpenGL beside pictures.cpp: start FILE. Ten lit boxes and three lines, without text:
// what any picture drawn by OpenGL costs before a library adds anything.
#define GL_GLEXT_PROTOTYPES
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>
#include <png.h>

#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;

bool MakeContext() {
    const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    EGLDisplay display = getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (!eglInitialize(display, nullptr, nullptr)) return false;
    eglBindAPI(EGL_OPENGL_API);
    EGLContext context = eglCreateContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, nullptr);
    return eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context);
}

void MakeFramebuffer() {
    GLuint framebuffer = 0;
    GLuint buffers[2] = {};
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glGenRenderbuffers(2, buffers);
    glBindRenderbuffer(GL_RENDERBUFFER, buffers[0]);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, kWidth, kHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, buffers[0]);
    glBindRenderbuffer(GL_RENDERBUFFER, buffers[1]);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT32, kWidth, kHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, buffers[1]);
    glViewport(0, 0, kWidth, kHeight);
}

void Box(double x, double height) {
    const double low[3] = {x - 0.08, -0.3, -0.8};
    const double high[3] = {x + 0.08, 0.3, -0.8 + height};
    for (int axis = 0; axis < 3; ++axis)
        for (const bool far : {false, true}) {
            double normal[3] = {};
            normal[axis] = far ? 1 : -1;
            glNormal3dv(normal);
            for (const int corner : {0, 1, 3, 2}) {
                double p[3];
                p[axis] = far ? high[axis] : low[axis];
                p[(axis + 1) % 3] = (corner & 1) != 0 ? high[(axis + 1) % 3] : low[(axis + 1) % 3];
                p[(axis + 2) % 3] = (corner & 2) != 0 ? high[(axis + 2) % 3] : low[(axis + 2) % 3];
                glVertex3dv(p);
            }
        }
}

void Draw() {
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glRotated(-60, 1, 0, 0);
    glRotated(25, 0, 0, 1);
    glScaled(0.6, 0.6, 0.6);
    for (const GLenum capability : {GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL, GL_NORMALIZE})
        glEnable(capability);
    glColor3d(0.3, 0.5, 0.8);
    glBegin(GL_QUADS);
    for (int i = 0; i < 10; ++i)
        Box(-0.9 + 0.2 * i, 0.4 * (1 + i % 4));
    glEnd();
    glDisable(GL_LIGHTING);
    glColor3d(0, 0, 0);
    glBegin(GL_LINES);
    for (int axis = 0; axis < 3; ++axis) {
        double p[3] = {-1, -1, -0.8};
        glVertex3dv(p);
        p[axis] = 1;
        glVertex3dv(p);
    }
    glEnd();
}

bool Write(const char* file) {
    std::vector<unsigned char> pixels(4UL * kWidth * kHeight);
    glReadPixels(0, 0, kWidth, kHeight, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    std::FILE* const out = std::fopen(file, "wb");
    if (out == nullptr) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, out);
    png_set_compression_level(png, 1);
    png_set_filter(png, 0, PNG_FILTER_NONE);
    png_set_IHDR(png, info, kWidth, kHeight, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = kHeight - 1; y >= 0; --y)
        png_write_row(png, pixels.data() + 4UL * kWidth * static_cast<unsigned>(y));
    png_write_end(png, info);
    return std::fclose(out) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3 || std::string_view(argv[1]) != "start") return 1;
    if (!MakeContext()) return 2;
    MakeFramebuffer();
    Draw();
    return Write(argv[2]) ? 0 : 3;
}
