// The sink that draws: the one place that hands primitives to OpenGL, and the state that OpenGL
// has, so that no call is made to set what is set.
#pragma once

#include <memory>
#include <optional>

#include "varnel/platform/detail/gl_context.h"
#include "varnel/render/detail/coverage.h"
#include "varnel/render/detail/layer_overlay.h"
#include "varnel/render/detail/line_bands.h"
#include "varnel/render/detail/line_layer.h"
#include "varnel/render/detail/scene.h"
#include "varnel/render/detail/text_batch.h"
#include "varnel/render/detail/transparent.h"

namespace varnel::detail {

class GLSink final : public SceneSink {
 public:
    std::unique_ptr<GLContext> context;
    double lineScale = 1.0;   ///< factor on all widths and stipple patterns
    bool matrixSent = false;  ///< whether OpenGL has the matrix that the others see

    /// Makes the context current; false when there is none, or, with the reason, when it cannot be.
    bool MakeCurrent(std::string* why = nullptr) {
        return context != nullptr && context->MakeCurrent(why);
    }
    /// Whether the context is the thread's current one already.
    bool IsCurrent() const { return context != nullptr && GLContext::Current() == context.get(); }
    /// A new context: gives it the state that never changes, and remembers that nothing else is
    /// set.
    void Start(std::unique_ptr<GLContext> fresh);
    /// Deletes what is kept in the context, which must be current, when it is given up.
    void End() { m_Overlay.Delete(); }

    bool WantsRecords() const override { return false; }
    void Clear(const SceneState& state, bool color, bool depth) override;
    void DrawBatch(const SceneState& state, const PrimitiveBatch& batch) override;
    void DrawStrip(const SceneState& state, const LineStrip& strip) override;
    void DrawText(const SceneState& state, const TextRun& run) override;
    void DrawImage(const SceneState& state, const ImageQuad& image) override;
    /// What can be seen through, sorted, over what was drawn; the pictures first, from the back.
    void DrawTransparent(const SceneState& state, std::vector<ImageQuad>& images,
                         const TransparentBatch& batch);

    /// From now on, many short lines may be drawn as a layer (see LineLayer) of this viewport, or
    /// none.
    void UseLayer(bool on, const GLViewportType& viewport);
    /// Draws the layer into the image: whatever comes next may lie over it.
    void DrawLayer(const SceneState& state);

    // State of OpenGL, set only where it differs.
    static void SetClearColor(const RGBDType& color);
    void SetViewport(const GLViewportType& viewport);
    /// Which primitives a viewport of the framebuffer as it is now can show.
    Coverage MakeCoverage(const GLViewportType& viewport) const;
    /// Whether lines of a width in image pixels are one framebuffer pixel wide.
    bool IsThin(float width) const { return context != nullptr && width * ToFramebuffer() == 1.0F; }
    void SetClipping(bool on) { Switch(m_Clipping, on, &GLSink::SendClipping); }
    void SetClipPlanes(const SceneState& state);
    void Lighting(bool on) { Switch(m_Lighting, on, &GLSink::SendLighting); }
    void Texture(bool on) { Switch(m_Texture, on, &GLSink::SendTexture); }
    /// Whether a texture's colours multiply those of fills or replace them.
    void Shading(bool on) { Switch(m_Shading, on, &GLSink::SendShading); }
    void Offset(bool on) { Switch(m_Offset, on, &GLSink::SendOffset); }
    /// In image pixels.
    void LineWidth(float width);
    void SendMatrix(const Matrix4& matrix);
    void SendIdentity();
    /// Makes a colour OpenGL's current one.
    static void SendColor(const RGBDType& color);
    void UploadTable(const SceneState& state);
    void SetTableParameters();

    /// The part of the image, from its lower left corner, that may differ from its memory.
    void ReadBackDrawn();
    /// The whole image differs from its memory.
    void AllIsNew();

 private:
    GLViewportType InFramebuffer(const GLViewportType& viewport) const;
    float ToFramebuffer() const { return static_cast<float>(context->PixelScale() * lineScale); }
    void DrawFills(const SceneState& state, const PrimitiveBatch& batch);
    void DrawLines(const SceneState& state, const PrimitiveBatch& batch);
    /// Whether segments of a run are to be added to the layer.
    bool WantsLayer(const SceneState& state, const LineRun& run);
    /// The segments of a run that are the driver's, after the others have joined the layer.
    const std::vector<std::uint32_t>& AddToLayer(const LineRun& run);
    void DrawRun(const SceneState& state, const TransparentBatch& batch,
                 const TransparentBatch::Run& run);
    void PutImage(const ImageQuad& image, bool blended);
    void Extend(const GLViewportType& viewport);
    void SendClipping(bool on);
    void SendLighting(bool on);
    void SendTexture(bool on);
    void SendSampleShading(bool on);
    void SendOffset(bool on);
    void SendShading(bool on);
    void Switch(bool& state, bool on, void (GLSink::*send)(bool)) {
        if (state == on) return;
        (this->*send)(on);
        state = on;
    }

    /// What the driver was given and may not have drawn yet.
    class Queue {
     public:
        void Add(const PrimitiveBatch& batch);

     private:
        std::size_t m_Count = 0;  ///< primitives since the fence
        void* m_Fence = nullptr;  ///< of the context, which deletes it at its end
    };

    Queue m_Queue;
    bool m_Lighting = false;
    bool m_Texture = false;
    bool m_Offset = false;
    bool m_Shading = false;
    bool m_Clipping = false;
    float m_SentWidth = 1.0F;
    TextBatch m_Letters;
    LineLayer m_Layer;
    LayerOverlay m_Overlay;
    std::vector<std::uint32_t> m_Rest;  ///< of a run, what is not in the layer
    GLViewportType m_LayerViewport{};   ///< framebuffer pixels; empty: no layer
    bool m_LayerStarted = false;
    std::size_t m_ThinEver = 0;  ///< segments that a layer could have had, in this context
    std::size_t m_ThinNow = 0;   ///< and since the layer was drawn last
    LineBands m_Bands;
    std::optional<bool> m_HasSampleShading;  ///< once it was asked for
    int m_DrawnWidth = 0;
    int m_DrawnHeight = 0;
};

}  // namespace varnel::detail
