// Areas, lines and text on a page of cairo, for PDF files and printers.
#pragma once

#include <memory>

#include "varnel/platform/detail/page_canvas.h"

struct _cairo;

namespace varnel::detail {

/// Draws on a page whose unit is a pixel of the view, y up. The page is not owned.
std::unique_ptr<PageCanvas> MakeCairoCanvas(_cairo* page);

}  // namespace varnel::detail
