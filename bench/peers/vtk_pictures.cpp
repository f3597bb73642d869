// VTK beside pictures.cpp: filled | outlined | line N [FRAMES], on an EGL buffer without a display,
// with what its makers recommend for speed (static mapper, float points, no multisampling).
#define GL_GLEXT_PROTOTYPES
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>
#include <vtkActor.h>
#include <vtkAutoInit.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkUnsignedCharArray.h>

#include <cstdlib>
#include <string_view>

#include "bench/measure.h"

VTK_MODULE_INIT(vtkRenderingOpenGL2);

// glewInit also asks for GLX and reports 4 where there is no X server, after all went well.
extern "C" unsigned glewInit() {
    const auto real = reinterpret_cast<unsigned (*)()>(dlsym(RTLD_NEXT, "glewInit"));
    const unsigned result = real();
    return result == 4 ? 0 : result;
}

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 768;

bool MakeContext() {
    const auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    EGLDisplay display = getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    eglInitialize(display, nullptr, nullptr);
    eglBindAPI(EGL_OPENGL_API);
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_NONE};
    EGLConfig config;
    EGLint count = 0;
    eglChooseConfig(display, wanted, &config, 1, &count);
    const EGLint size[] = {EGL_WIDTH, kWidth, EGL_HEIGHT, kHeight, EGL_NONE};
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 2, EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);
    return eglMakeCurrent(display, surface, surface, context);
}

vtkNew<vtkPolyData> MakeSurface(int n, const std::vector<double>& z) {
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(static_cast<vtkIdType>(n) * n);
    auto* out = static_cast<float*>(points->GetVoidPointer(0));
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            *out++ = -1 + 2.0F * static_cast<float>(c) / static_cast<float>(n - 1);
            *out++ = -1 + 2.0F * static_cast<float>(r) / static_cast<float>(n - 1);
            *out++ = static_cast<float>(z[static_cast<std::size_t>(r * n + c)]);
        }
    const vtkIdType quads = static_cast<vtkIdType>(n - 1) * (n - 1);
    vtkNew<vtkIdTypeArray> offsets, corners;
    offsets->SetNumberOfValues(quads + 1);
    corners->SetNumberOfValues(4 * quads);
    for (vtkIdType i = 0; i <= quads; ++i)
        offsets->SetValue(i, 4 * i);
    vtkIdType* to = corners->GetPointer(0);
    for (vtkIdType r = 0; r + 1 < n; ++r)
        for (vtkIdType c = 0; c + 1 < n; ++c)
            for (const vtkIdType k : {0, 1, n + 1, n})
                *to++ = r * n + c + k;
    vtkNew<vtkCellArray> cells;
    cells->SetData(offsets, corners);
    vtkNew<vtkPolyData> data;
    data->SetPoints(points);
    data->SetPolys(cells);
    return data;
}

vtkNew<vtkPolyData> MakeLine(int n) {
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(n);
    vtkNew<vtkCellArray> cells;
    cells->InsertNextCell(n);
    for (int i = 0; i < n; ++i) {
        double p[3];
        measure::CurvePoint(i, n, p);
        points->SetPoint(i, p);
        cells->InsertCellPoint(i);
    }
    vtkNew<vtkPolyData> data;
    data->SetPoints(points);
    data->SetLines(cells);
    return data;
}

void Draw(double start, vtkPolyData* data, std::string_view kind, int frames) {
    vtkNew<vtkGenericOpenGLRenderWindow> window;
    window->SetReadyForRendering(true);
    window->SetIsCurrent(true);
    window->SetSupportsOpenGL(true);
    window->SetOwnContext(0);
    window->SetFrameBlitModeToNoBlit();
    window->SetMultiSamples(0);
    window->SetSize(kWidth, kHeight);
    vtkNew<vtkRenderer> renderer;
    renderer->SetBackground(1, 1, 1);
    window->AddRenderer(renderer);
    vtkNew<vtkPolyDataMapper> mapper;
    mapper->SetInputData(data);
    mapper->ScalarVisibilityOff();
    mapper->StaticOn();
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    vtkProperty* const look = actor->GetProperty();
    look->SetColor(0.3, 0.5, 0.8);
    look->SetInterpolationToFlat();
    look->SetAmbient(0.2);
    look->SetEdgeVisibility(kind == "outlined");
    look->SetEdgeColor(0, 0, 0);
    look->SetLighting(kind != "line");
    renderer->AddActor(actor);
    renderer->GetActiveCamera()->SetPosition(1.5, -2.5, 2);
    renderer->GetActiveCamera()->SetViewUp(0, 0, 1);
    renderer->ResetCamera();
    vtkNew<vtkUnsignedCharArray> pixels;
    measure::Frames(start, frames, [&] {
        renderer->GetActiveCamera()->Azimuth(7);
        window->Render();
        window->GetPixelData(0, 0, kWidth - 1, kHeight - 1, 0, pixels.Get(), 0);
    });
    long inked = 0;
    for (vtkIdType i = 0; i < pixels->GetNumberOfValues(); ++i)
        inked += pixels->GetValue(i) != 255;
    measure::Print("inked", static_cast<double>(inked));
    measure::Print("resident_mb", measure::ResidentBytes() / 1e6);
    std::_Exit(0);  // the window would let go of a context that is not its own
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    const std::string_view kind = argv[1];
    const int n = std::atoi(argv[2]);
    const bool line = kind == "line";
    if (!line && kind != "filled" && kind != "outlined") return 1;
    const std::vector<double> z = line ? std::vector<double>() : measure::Waves(n);
    const double start = measure::CpuMs();
    if (!MakeContext()) return 2;
    Draw(start, line ? MakeLine(n) : MakeSurface(n, z), kind, argc > 3 ? std::atoi(argv[3]) : 5);
}
