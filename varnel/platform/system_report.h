// What this machine gives a chart: a driver to draw with, fonts, a print system, a clipboard.
//
// For programs that tell their user why there is no picture. Asking may take a second: a driver is
// started for it.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

struct GraphicsReport {
    bool usable = false;  ///< an image can be drawn
    CString why;          ///< where it cannot: what was tried, and what each attempt answered
    CString platform;     ///< the EGL platform, as the environment variable VARNEL_EGL names it
    CString vendor, renderer, version;  ///< OpenGL's own texts
    int maxSamples = 0;                 ///< the most samples a pixel for smooth edges
};

/// Starts the driver that views use.
VARNEL_API GraphicsReport ReportGraphics();

/// The installed face that stands in for a font, and its file; both empty where there is no font.
struct FontReport {
    CString family;
    CString file;
};
VARNEL_API FontReport ReportFont(const CString& face);

/// Whether the display server that DISPLAY names can be reached, and with it windows and the
/// clipboard of other programs.
VARNEL_API bool HasDisplay();

/// The path of the print system's command, empty where there is none.
VARNEL_API CString FindPrintCommand();

}  // namespace varnel
