#include "varnel/render/detail/gl_sink.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/fence.h"
#include "varnel/render/detail/gl.h"
#include "varnel/render/font.h"

namespace varnel::detail {
namespace {

constexpr GLenum kFirstClipPlane = GL_CLIP_PLANE0;

/// The vertex arrays that are used; none of them is afterwards.
template <GLenum... Arrays>
class ArrayScope {
 public:
    ArrayScope() { (glEnableClientState(Arrays), ...); }
    ~ArrayScope() { (glDisableClientState(Arrays), ...); }
    ArrayScope(const ArrayScope&) = delete;
    ArrayScope& operator=(const ArrayScope&) = delete;
};

/// State for one picture; what was set before comes back at the end.
class ImageScope {
 public:
    ImageScope() {
        glPushAttrib(GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_CURRENT_BIT);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
        glEnable(GL_TEXTURE_2D);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    }
    ~ImageScope() {
        glPopClientAttrib();
        glPopAttrib();
    }
    ImageScope(const ImageScope&) = delete;
    ImageScope& operator=(const ImageScope&) = delete;
};

/// What is drawn mixes with what is there and hides nothing.
class BlendScope {
 public:
    BlendScope() {
        glEnable(GL_BLEND);
        glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        glDepthMask(GL_FALSE);
    }
    ~BlendScope() {
        glDepthMask(GL_TRUE);
        glBlendFunc(GL_ONE, GL_ZERO);
        glDisable(GL_BLEND);
    }
    BlendScope(const BlendScope&) = delete;
    BlendScope& operator=(const BlendScope&) = delete;
};

/// Primitives of coloured vertices, whose arrays are in use.
void Draw(GLenum primitive, const std::vector<LineVertex>& vertices,
          const std::vector<std::uint32_t>& indices) {
    if (indices.empty()) return;
    constexpr auto stride = static_cast<GLsizei>(sizeof(LineVertex));
    glVertexPointer(3, GL_FLOAT, stride, vertices.front().position);
    glColorPointer(4, GL_UNSIGNED_BYTE, stride, &vertices.front().color);
    glDrawElements(primitive, static_cast<GLsizei>(indices.size()), GL_UNSIGNED_INT,
                   indices.data());
}

}  // namespace

void GLSink::Start(std::unique_ptr<GLContext> fresh) {
    if (context != nullptr && MakeCurrent()) End();
    context = std::move(fresh);
    MakeCurrent();
    m_ThinEver = 0;
    m_Lighting = m_Texture = m_Offset = m_Shading = m_Clipping = false;
    m_SentWidth = 1.0F;
    m_HasSampleShading.reset();
    m_Queue = {};
    matrixSent = false;
    AllIsNew();
    glClearDepth(1.0);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    // A chart's box may reach beyond the near and far planes when it turns; it is not cut there.
    glEnable(GL_DEPTH_CLAMP);
    glDisable(GL_POLYGON_SMOOTH);
    glPolygonOffset(1.0F, 1.0F);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_NORMALIZE);
    glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
}

void GLSink::SetClearColor(const RGBDType& color) {
    const RGBFType c = RGBDtoRGBF(color);
    glClearColor(c.r, c.g, c.b, 0.0F);
}

void GLSink::Clear(const SceneState& /*state*/, bool color, bool depth) {
    glClear((color ? GL_COLOR_BUFFER_BIT : 0U) | (depth ? GL_DEPTH_BUFFER_BIT : 0U));
}

void GLSink::DrawBatch(const SceneState& state, const PrimitiveBatch& batch) {
    const GLContext::HostContextGuard host;
    if (!MakeCurrent()) return;
    SendIdentity();
    DrawFills(state, batch);
    DrawLines(state, batch);
    m_Queue.Add(batch);
}

/// A driver that draws in threads of its own may take up primitives faster than it draws them, and
/// keep all of them until then: 1 kB for each of a million bars was seen. With two portions under
/// way at most, it is still never idle.
void GLSink::Queue::Add(const PrimitiveBatch& batch) {
    constexpr std::size_t kPortion = 50000;
    m_Count += batch.Indices().size() / 3;
    for (const LineRun& run : batch.Lines())
        m_Count += run.indices.size() / 2;
    if (m_Count < kPortion) return;
    m_Count = 0;
    void* const earlier = std::exchange(m_Fence, glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0));
    if (earlier == nullptr) return;
    WaitFor(static_cast<GLsync>(earlier), ProgressOnly);
    glDeleteSync(static_cast<GLsync>(earlier));
}

void GLSink::DrawFills(const SceneState& state, const PrimitiveBatch& batch) {
    if (batch.Indices().empty()) return;
    const FillState& fill = batch.State();
    Lighting(false);  // the colours have it in them
    Texture(fill.textured);
    if (fill.textured) Shading(fill.shaded);
    Offset(fill.framed && state.frameOffset);
    const FillVertex* vertices = batch.Vertices().data();
    constexpr auto stride = static_cast<GLsizei>(sizeof(FillVertex));
    {
        const ArrayScope<GL_VERTEX_ARRAY, GL_COLOR_ARRAY> arrays;
        glVertexPointer(3, GL_FLOAT, stride, vertices->position);
        glColorPointer(4, GL_UNSIGNED_BYTE, stride, &vertices->color);
        if (fill.textured) {
            glEnableClientState(GL_TEXTURE_COORD_ARRAY);
            glTexCoordPointer(1, GL_FLOAT, stride, &vertices->texture);
        }
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(batch.Indices().size()), GL_UNSIGNED_INT,
                       batch.Indices().data());
        if (fill.textured) glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
    Offset(false);
}

void GLSink::DrawLines(const SceneState& state, const PrimitiveBatch& batch) {
    const auto& runs = batch.Lines();
    const auto isEmpty = [](const LineRun& run) { return run.indices.empty(); };
    if (std::all_of(runs.begin(), runs.end(), isEmpty)) return;
    Lighting(false);
    Texture(false);
    const ArrayScope<GL_VERTEX_ARRAY, GL_COLOR_ARRAY> arrays;
    const bool areas = state.lineAreas && context->GetSamples() > 1;
    for (const LineRun& run : runs) {
        if (isEmpty(run)) continue;
        const std::vector<std::uint32_t>* lines = &run.indices;
        if (areas) {
            m_Bands.Make(run, static_cast<double>(run.width * ToFramebuffer()),
                         InFramebuffer(state.viewport));
            Draw(GL_TRIANGLES, m_Bands.Vertices(), m_Bands.Indices());
            lines = &m_Bands.Lines();
        } else if (WantsLayer(state, run)) {
            lines = &AddToLayer(run);
        }
        if (lines->empty()) continue;
        LineWidth(run.width);
        Draw(GL_LINES, run.vertices, *lines);
    }
}

void GLSink::UseLayer(bool on, const GLViewportType& viewport) {
    m_LayerViewport = on ? InFramebuffer(viewport) : GLViewportType{};
    const auto* const driver = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const bool isKnown = driver != nullptr && std::strstr(driver, "llvmpipe") != nullptr;
    if (!isKnown || !LineLayer::Fits(m_LayerViewport)) m_LayerViewport = {};
}

bool GLSink::WantsLayer(const SceneState& state, const LineRun& run) {
    // Making the overlay costs as much as drawing so many segments, and drawing it as much for so
    // many pixels as drawing a segment.
    constexpr std::size_t kMaking = 1U << 16;
    constexpr std::size_t kPixels = 64;
    if (m_LayerViewport.width == 0 || !IsThin(run.width)) return false;
    if (m_LayerStarted) return true;
    m_ThinEver += run.indices.size() / 2;
    m_ThinNow += run.indices.size() / 2;
    const auto pixels = static_cast<std::size_t>(m_LayerViewport.width) *
                        static_cast<std::size_t>(m_LayerViewport.height);
    if (m_ThinEver < kMaking || m_ThinNow * kPixels < pixels || !m_Overlay.IsReady()) return false;
    m_Layer.Start(m_LayerViewport, state.clipping ? std::span(state.clipPlanes)
                                                  : std::span<const LineLayer::ClipPlane>());
    m_LayerStarted = true;
    return true;
}

const std::vector<std::uint32_t>& GLSink::AddToLayer(const LineRun& run) {
    m_Rest.clear();
    for (std::size_t i = 0; i + 1 < run.indices.size(); i += 2) {
        const std::uint32_t from = run.indices[i];
        const std::uint32_t to = run.indices[i + 1];
        if (!m_Layer.Add(run.vertices[from], run.vertices[to]))
            m_Rest.insert(m_Rest.end(), {from, to});
    }
    return m_Rest;
}

void GLSink::DrawLayer(const SceneState& state) {
    m_ThinNow = 0;
    m_LayerStarted = false;
    if (m_Layer.IsEmpty()) return;
    const GLContext::HostContextGuard host;
    if (MakeCurrent()) {
        SendIdentity();
        Lighting(false);
        Texture(false);
        SetClipping(false);
        m_Overlay.Draw(m_Layer);
        SetClipping(state.clipping);
    }
    m_Layer.Clear();
}

void GLSink::DrawStrip(const SceneState& /*state*/, const LineStrip& strip) {
    const GLContext::HostContextGuard host;
    if (!MakeCurrent()) return;
    SendIdentity();
    Lighting(false);
    Texture(false);
    LineWidth(strip.width);
    constexpr auto stride = static_cast<GLsizei>(sizeof(LineVertex));
    const double repeat = strip.repeat * context->PixelScale() * lineScale;
    glLineStipple(static_cast<GLint>(std::max(repeat + 0.5, 1.0)), strip.pattern);
    glEnable(GL_LINE_STIPPLE);
    const ArrayScope<GL_VERTEX_ARRAY, GL_COLOR_ARRAY> arrays;
    glVertexPointer(3, GL_FLOAT, stride, strip.vertices.front().position);
    glColorPointer(4, GL_UNSIGNED_BYTE, stride, &strip.vertices.front().color);
    glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(strip.vertices.size()));
    glDisable(GL_LINE_STIPPLE);
}

void GLSink::DrawText(const SceneState& /*state*/, const TextRun& run) {
    const GLContext::HostContextGuard host;
    if (!MakeCurrent()) return;
    m_Letters.Clear();
    if (run.halo > 0.0)
        m_Letters.AddHalo(*run.font.GetFace(), run.text, run.placement, run.halo, run.haloColor);
    m_Letters.Add(*run.font.GetFace(), run.text, run.placement, run.color);
    if (m_Letters.Indices().empty()) return;
    SendIdentity();
    glCullFace(GL_BACK);
    glEnable(GL_CULL_FACE);
    constexpr auto stride = static_cast<GLsizei>(sizeof(LineVertex));
    {
        const ArrayScope<GL_VERTEX_ARRAY, GL_COLOR_ARRAY> arrays;
        glVertexPointer(3, GL_FLOAT, stride, m_Letters.Vertices().front().position);
        glColorPointer(4, GL_UNSIGNED_BYTE, stride, &m_Letters.Vertices().front().color);
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(m_Letters.Indices().size()),
                       GL_UNSIGNED_INT, m_Letters.Indices().data());
    }
    glDisable(GL_CULL_FACE);
}

void GLSink::DrawImage(const SceneState& /*state*/, const ImageQuad& image) {
    const GLContext::HostContextGuard host;
    if (MakeCurrent()) PutImage(image, false);
}

void GLSink::PutImage(const ImageQuad& image, bool blended) {
    SendIdentity();
    const ImageScope scope;
    if (blended) glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, image.width, image.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 image.pixels);
    const int places[4][2] = {
        {0, 0}, {0, image.repeatY}, {image.repeatX, image.repeatY}, {image.repeatX, 0}};
    glBegin(GL_QUADS);
    glNormal3d(image.normal.x, image.normal.y, image.normal.z);
    for (std::size_t i = 0; i < 4; ++i) {
        glTexCoord2iv(places[i]);
        glVertex3d(image.corners[i].x, image.corners[i].y, image.corners[i].z);
    }
    glEnd();
}

void GLSink::DrawTransparent(const SceneState& state, std::vector<ImageQuad>& images,
                             const TransparentBatch& batch) {
    const GLContext::HostContextGuard host;
    if (!MakeCurrent()) return;
    const BlendScope blending;
    const auto depth = [](const ImageQuad& image) {
        return image.corners[0].z + image.corners[1].z + image.corners[2].z + image.corners[3].z;
    };
    std::stable_sort(images.begin(), images.end(),
                     [&](const ImageQuad& a, const ImageQuad& b) { return depth(a) > depth(b); });
    for (const ImageQuad& image : images)
        PutImage(image, true);
    if (batch.IsEmpty()) return;
    SendIdentity();
    Lighting(false);
    constexpr auto stride = static_cast<GLsizei>(sizeof(FillVertex));
    const FillVertex* const vertices = batch.Vertices().data();
    const ArrayScope<GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY> arrays;
    glVertexPointer(3, GL_FLOAT, stride, vertices->position);
    glColorPointer(4, GL_UNSIGNED_BYTE, stride, &vertices->color);
    glTexCoordPointer(1, GL_FLOAT, stride, &vertices->texture);
    for (const TransparentBatch::Run& run : batch.Runs())
        DrawRun(state, batch, run);
    Offset(false);
    Texture(false);
    SetClipping(state.clipping);
    SetClipPlanes(state);
}

void GLSink::DrawRun(const SceneState& state, const TransparentBatch& batch,
                     const TransparentBatch::Run& run) {
    const TransparentBatch::Look& look = batch.LookOf(run);
    Texture(look.state.textured);
    if (look.state.textured) Shading(look.state.shaded);
    Offset(look.state.framed && state.frameOffset);
    SetClipping(look.clipping);
    if (look.clipping) {
        SceneState clipped = state;
        clipped.clipPlanes = look.clipPlanes;
        SetClipPlanes(clipped);
    }
    // Where a piece of a line is, another one of the same depth fails.
    if (look.once) {
        glDepthFunc(GL_LESS);
        glDepthMask(GL_TRUE);
    }
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(run.count), GL_UNSIGNED_INT,
                   batch.Indices().data() + run.first);
    if (look.once) {
        glDepthFunc(GL_LEQUAL);
        glDepthMask(GL_FALSE);
    }
}

void GLSink::SetViewport(const GLViewportType& v) {
    const GLViewportType pixels = InFramebuffer(v);
    Extend(v);
    glViewport(pixels.x, pixels.y, pixels.width, pixels.height);
    glScissor(pixels.x, pixels.y, pixels.width, pixels.height);
    glEnable(GL_SCISSOR_TEST);
}

GLViewportType GLSink::InFramebuffer(const GLViewportType& viewport) const {
    const int scale = context->PixelScale();
    return {viewport.x * scale, viewport.y * scale, viewport.width * scale,
            viewport.height * scale};
}

Coverage GLSink::MakeCoverage(const GLViewportType& viewport) const {
    const GLViewportType pixels = InFramebuffer(viewport);
    GLint bits = 0;
    GLint count = 0;
    glGetIntegerv(GL_SUBPIXEL_BITS, &bits);
    glGetIntegerv(GL_SAMPLES, &count);
    std::vector<SamplePlace> samples(static_cast<std::size_t>(std::max(count, 1)), {0.5F, 0.5F});
    for (GLint i = 0; i < count; ++i) {
        GLfloat place[2] = {0.5F, 0.5F};
        glGetMultisamplefv(GL_SAMPLE_POSITION, static_cast<GLuint>(i), place);
        samples[static_cast<std::size_t>(i)] = {place[0], place[1]};
    }
    // Half a step of the subpixel grid, twice for safety, and the rounding of places in floats.
    const float slack = 1.0F / static_cast<float>(1 << std::clamp(bits, 0, 16)) + 0.004F;
    return {pixels, samples, slack};
}

void GLSink::Extend(const GLViewportType& viewport) {
    const auto end = [](int before, long long start, int extent) {
        constexpr long long kMost = std::numeric_limits<int>::max();
        return std::max(before, static_cast<int>(std::clamp(start + extent, 0LL, kMost)));
    };
    m_DrawnWidth = end(m_DrawnWidth, viewport.x, viewport.width);
    m_DrawnHeight = end(m_DrawnHeight, viewport.y, viewport.height);
}

void GLSink::AllIsNew() {
    m_DrawnWidth = m_DrawnHeight = std::numeric_limits<int>::max();
}

void GLSink::ReadBackDrawn() {
    context->ReadBack(m_DrawnWidth, m_DrawnHeight);
    m_DrawnWidth = m_DrawnHeight = 0;
}

void GLSink::SetClipPlanes(const SceneState& state) {
    SendIdentity();
    GLenum id = kFirstClipPlane;
    for (const auto& plane : state.clipPlanes)
        glClipPlane(id++, plane.data());
}

void GLSink::SendClipping(bool on) {
    for (GLenum i = 0; i < 6; ++i)
        on ? glEnable(kFirstClipPlane + i) : glDisable(kFirstClipPlane + i);
}

void GLSink::SendMatrix(const Matrix4& matrix) {
    if (matrixSent) return;
    glLoadMatrixd(matrix.m.data());
    matrixSent = true;
}

void GLSink::SendIdentity() {
    glLoadIdentity();
    matrixSent = false;
}

void GLSink::SendColor(const RGBDType& color) {
    glColor3d(color.r, color.g, color.b);
}

void GLSink::LineWidth(float width) {
    const float sent = width * ToFramebuffer();
    if (sent == m_SentWidth) return;
    glLineWidth(sent);
    m_SentWidth = sent;
}

void GLSink::UploadTable(const SceneState& state) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA, state.textureSize, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 state.texture.data());
}

void GLSink::SetTableParameters() {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    m_Shading = false;
    SendShading(false);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    // Values beyond the range wrap around.
    glTexParameteri(GL_TEXTURE_1D, GL_TEXTURE_WRAP_S, GL_REPEAT);
}

void GLSink::SendLighting(bool on) {
    for (GLenum cap : {GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
        on ? glEnable(cap) : glDisable(cap);
}

void GLSink::SendTexture(bool on) {
    on ? glEnable(GL_TEXTURE_1D) : glDisable(GL_TEXTURE_1D);
    SendSampleShading(on);
}

/// With antialiasing, the texture is looked up at each sample: at the centre of a pixel that a
/// polygon touches only with its border, the coordinate would lie outside the polygon's, and the
/// highest values would wrap around to the first colours there.
void GLSink::SendSampleShading(bool on) {
    if (!m_HasSampleShading.has_value()) {
        const auto* const extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
        m_HasSampleShading =
            extensions != nullptr && std::strstr(extensions, "GL_ARB_sample_shading") != nullptr;
    }
    if (!*m_HasSampleShading) return;
    glMinSampleShading(1.0F);
    on ? glEnable(GL_SAMPLE_SHADING) : glDisable(GL_SAMPLE_SHADING);
}

void GLSink::SendShading(bool on) {
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, on ? GL_MODULATE : GL_DECAL);
}

void GLSink::SendOffset(bool on) {
    on ? glEnable(GL_POLYGON_OFFSET_FILL) : glDisable(GL_POLYGON_OFFSET_FILL);
}

}  // namespace varnel::detail
