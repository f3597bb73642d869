// VTK beside pictures.cpp: filled | outlined | changed | line | bars | cubes N [FRAMES] and
// start FILE, on an EGL buffer without a display, with what its makers recommend for speed (static
// mapper, float points, glyphs for cubes, no multisampling); contours N [TIMES] by flying edges,
// which leave the segments loose.
#define GL_GLEXT_PROTOTYPES
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>
#include <vtkActor.h>
#include <vtkAutoInit.h>
#include <vtkCamera.h>
#include <vtkCellArray.h>
#include <vtkCubeSource.h>
#include <vtkDoubleArray.h>
#include <vtkFlyingEdges2D.h>
#include <vtkGenericOpenGLRenderWindow.h>
#include <vtkGlyph3DMapper.h>
#include <vtkIdTypeArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderer.h>
#include <vtkUnsignedCharArray.h>
#include <vtkWindowToImageFilter.h>

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
constexpr int kMostBars = 100000;  // beyond, they take 7 GB

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

void PlacePoints(vtkPoints* points, int n, const std::vector<double>& z) {
    auto* out = static_cast<float*>(points->GetVoidPointer(0));
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            *out++ = -1 + 2.0F * static_cast<float>(c) / static_cast<float>(n - 1);
            *out++ = -1 + 2.0F * static_cast<float>(r) / static_cast<float>(n - 1);
            *out++ = static_cast<float>(z[static_cast<std::size_t>(r * n + c)]);
        }
}

/// Polygons of four corners each, whose numbers `write` writes one after the other.
template <class Write>
vtkNew<vtkPolyData> MakeQuadrilaterals(vtkPoints* points, vtkIdType count, Write&& write) {
    vtkNew<vtkIdTypeArray> offsets, corners;
    offsets->SetNumberOfValues(count + 1);
    corners->SetNumberOfValues(4 * count);
    for (vtkIdType i = 0; i <= count; ++i)
        offsets->SetValue(i, 4 * i);
    write(corners->GetPointer(0));
    vtkNew<vtkCellArray> cells;
    cells->SetData(offsets, corners);
    vtkNew<vtkPolyData> data;
    data->SetPoints(points);
    data->SetPolys(cells);
    return data;
}

vtkNew<vtkPolyData> MakeSurface(int n, const std::vector<double>& z) {
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(static_cast<vtkIdType>(n) * n);
    PlacePoints(points, n, z);
    return MakeQuadrilaterals(points, static_cast<vtkIdType>(n - 1) * (n - 1), [n](vtkIdType* to) {
        for (vtkIdType r = 0; r + 1 < n; ++r)
            for (vtkIdType c = 0; c + 1 < n; ++c)
                for (const vtkIdType k : {0, 1, n + 1, n})
                    *to++ = r * n + c + k;
    });
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

/// n boxes from the plane z = -1, or from 0, up to their heights.
vtkNew<vtkPolyData> MakeBars(int n, double foot, double width) {
    static constexpr int kFaces[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                         {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(8L * n);
    auto* out = static_cast<float*>(points->GetVoidPointer(0));
    for (int i = 0; i < n; ++i) {
        const measure::Place p = measure::PlaceOf(i, n);
        for (int corner = 0; corner < 8; ++corner) {
            *out++ = static_cast<float>(p.x + ((corner & 1) != 0 ? width / p.side : 0.0));
            *out++ = static_cast<float>(p.y + ((corner & 2) != 0 ? width / p.side : 0.0));
            *out++ = static_cast<float>((corner & 4) != 0 ? p.z : foot);
        }
    }
    return MakeQuadrilaterals(points, 6L * n, [n](vtkIdType* to) {
        for (vtkIdType i = 0; i < n; ++i)
            for (const auto& face : kFaces)
                for (const int corner : face)
                    *to++ = 8 * i + corner;
    });
}

vtkNew<vtkPolyData> MakePlaces(int n) {
    vtkNew<vtkPoints> points;
    points->SetNumberOfPoints(n);
    for (int i = 0; i < n; ++i) {
        const measure::Place p = measure::PlaceOf(i, n);
        points->SetPoint(i, p.x, p.y, p.z);
    }
    vtkNew<vtkPolyData> data;
    data->SetPoints(points);
    return data;
}

void Contours(int n, int times) {
    std::vector<double> z = measure::Rough(n);
    vtkNew<vtkDoubleArray> heights;
    heights->SetArray(z.data(), static_cast<vtkIdType>(z.size()), 1);
    vtkNew<vtkImageData> image;
    image->SetDimensions(n, n, 1);
    image->GetPointData()->SetScalars(heights);
    vtkIdType segments = 0;
    measure::Repeat(times, [&] {
        vtkNew<vtkFlyingEdges2D> edges;
        edges->SetInputData(image);
        for (int k = 0; k < measure::kLevels; ++k)
            edges->SetValue(k, measure::Level(k));
        edges->Update();
        segments = edges->GetOutput()->GetNumberOfLines();
    });
    measure::Print("segments", static_cast<double>(segments));
}

/// Writes what a window shows.
void Write(vtkRenderWindow* window, const char* file) {
    vtkNew<vtkWindowToImageFilter> image;
    image->SetInput(window);
    image->ReadFrontBufferOff();
    image->ShouldRerenderOff();
    vtkNew<vtkPNGWriter> writer;
    writer->SetInputConnection(image->GetOutputPort());
    writer->SetCompressionLevel(1);
    writer->SetFileName(file);
    writer->Write();
    std::_Exit(0);
}

void Draw(double start, vtkPolyData* data, std::string_view kind, int frames,
          const char* file = nullptr) {
    vtkNew<vtkGenericOpenGLRenderWindow> window;
    window->SetReadyForRendering(true);
    window->SetIsCurrent(true);
    window->SetSupportsOpenGL(true);
    window->SetOwnContext(0);
    window->SetFrameBlitModeToNoBlit();
    window->SetMultiSamples(0);
    file != nullptr ? window->SetSize(640, 480) : window->SetSize(kWidth, kHeight);
    vtkNew<vtkRenderer> renderer;
    renderer->SetBackground(1, 1, 1);
    window->AddRenderer(renderer);
    vtkNew<vtkPolyDataMapper> plain;
    plain->SetInputData(data);
    vtkNew<vtkGlyph3DMapper> glyphs;
    vtkNew<vtkCubeSource> cube;
    const double size = 0.3 / std::cbrt(static_cast<double>(data->GetNumberOfPoints()));
    cube->SetXLength(size);
    cube->SetYLength(size);
    cube->SetZLength(size);
    glyphs->SetInputData(data);
    glyphs->SetSourceConnection(cube->GetOutputPort());
    glyphs->ScalingOff();
    glyphs->OrientOff();
    vtkMapper* const mapper = kind == "cubes" ? static_cast<vtkMapper*>(glyphs) : plain;
    mapper->ScalarVisibilityOff();
    plain->StaticOn();
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    vtkProperty* const look = actor->GetProperty();
    look->SetColor(0.3, 0.5, 0.8);
    look->SetInterpolationToFlat();
    look->SetAmbient(0.2);
    look->SetEdgeVisibility(kind == "outlined" || kind == "bars");
    look->SetEdgeColor(0, 0, 0);
    look->SetLighting(kind != "line");
    renderer->AddActor(actor);
    renderer->GetActiveCamera()->SetPosition(1.5, -2.5, 2);
    renderer->GetActiveCamera()->SetViewUp(0, 0, 1);
    renderer->ResetCamera();
    if (file != nullptr) {
        window->Render();
        Write(window, file);
    }
    const int n = static_cast<int>(std::sqrt(static_cast<double>(data->GetNumberOfPoints())));
    std::vector<double> z = kind == "changed" ? measure::Waves(n) : std::vector<double>();
    vtkNew<vtkUnsignedCharArray> pixels;
    measure::Frames(start, frames, [&] {
        if (kind == "changed") {
            for (double& height : z)
                height = -0.97 * height;
            PlacePoints(data->GetPoints(), n, z);
            data->GetPoints()->Modified();
            data->Modified();
        }
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
    const int frames = argc > 3 ? std::atoi(argv[3]) : 5;
    const bool surface = kind == "filled" || kind == "outlined" || kind == "changed";
    if (kind == "contours") {
        Contours(n, frames);
        return 0;
    }
    if (!surface && kind != "line" && kind != "bars" && kind != "cubes" && kind != "start")
        return 1;
    if (kind == "bars" && n > kMostBars) return 1;
    const std::vector<double> z = surface ? measure::Waves(n) : std::vector<double>();
    const double start = measure::CpuMs();
    if (!MakeContext()) return 2;
    if (kind == "start")
        Draw(start, MakeBars(10, 0.0, 1.4), "bars", 0, argv[2]);
    else if (surface)
        Draw(start, MakeSurface(n, z), kind, frames);
    else if (kind == "line")
        Draw(start, MakeLine(n), kind, frames);
    else
        Draw(start, kind == "bars" ? MakeBars(n, -1.0, 1.4) : MakePlaces(n), kind, frames);
}
