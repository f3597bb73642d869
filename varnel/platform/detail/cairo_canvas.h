// Areas, lines and text on a page of cairo, for PDF files and printers.
#pragma once

#include <memory>

#include "varnel/platform/detail/page_canvas.h"

struct _cairo;  // NOLINT(bugprone-reserved-identifier): cairo's own name

namespace varnel::detail {

/// Draws a picture `height` pixels high on a page whose unit is a pixel, y down. The page is not
/// owned.
std::unique_ptr<PageCanvas> MakeCairoCanvas(_cairo* page, double height);

}  // namespace varnel::detail
