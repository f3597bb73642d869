// What OpenGL calls draw, as data: for shapes that are made by GLU.
#pragma once

#include <functional>

#include "varnel/render/detail/scene.h"

namespace varnel::detail {

/// The triangles and lines that `draw` gives OpenGL, with their places after the current matrix and
/// their lit colours. The image is left alone. `draw` may be called more than once. A context must
/// be current.
ShadedShape CaptureShape(const std::function<void()>& draw);

}  // namespace varnel::detail
