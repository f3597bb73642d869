// The viewer as one function: a chart file in a window of its own, turned, enlarged, saved, copied
// and printed by its user.
#pragma once

#include <string>

#include "varnel/foundation/export.h"

namespace varnel {

struct ShowOptions {
    int width = 900;  ///< pixels
    int height = 650;
    int samples = 4;      ///< a pixel, for smooth edges; 0: exact pixels
    std::string title{};  ///< of the window; empty: the file's name
};

/// Shows the file until the window is closed. False, with a sentence in `problem`, where there is
/// no display, nothing to show, or the display is lost.
VARNEL_API bool ShowChartFile(const std::string& file, const ShowOptions& options,
                              std::string& problem);

}  // namespace varnel
