// Draws a layer of lines over the image. Works on the current context.
#pragma once

#include "varnel/render/detail/line_layer.h"

namespace varnel::detail {

class LayerOverlay {
 public:
    /// Forgets the objects of a context that has ended.
    void Start() { *this = {}; }
    /// Deletes them; the context lives on.
    void Delete();
    /// Whether it can draw; the first call compiles, which takes about 20 ms until the first
    /// drawing is done.
    bool IsReady();
    /// Draws the pixels that are nearer than what the image has, or as near. The viewport is the
    /// layer's, the matrices are identities, and nothing but the depth test, depth clamping and a
    /// scissor is enabled; so it is afterwards.
    void Draw(const LineLayer& layer);

 private:
    enum class State { kNew, kReady, kFailed };

    bool Compile();

    State m_State = State::kNew;
    unsigned m_Program = 0;
    unsigned m_Texture = 0;
    int m_Width = 0;  ///< of the texture
    int m_Height = 0;
    int m_Origin = -1;  ///< the place of the uniform
};

}  // namespace varnel::detail
