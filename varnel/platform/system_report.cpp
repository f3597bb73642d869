#include "varnel/platform/system_report.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <X11/Xlib.h>
#include <fontconfig/fontconfig.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>

#include "varnel/platform/detail/egl_display.h"

namespace varnel {

namespace {

CString GlText(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

CString PatternText(FcPattern* pattern, const char* object) {
    FcChar8* text = nullptr;
    if (FcPatternGetString(pattern, object, 0, &text) != FcResultMatch) return {};
    return reinterpret_cast<const char*>(text);
}

}  // namespace

GraphicsReport ReportGraphics() {
    GraphicsReport report;
    detail::EglContext context;
    report.usable = detail::NewEglContext(context, report.why);
    if (!report.usable) return report;
    report.platform = detail::EglPlatformName();
    report.vendor = GlText(GL_VENDOR);
    report.renderer = GlText(GL_RENDERER);
    report.version = GlText(GL_VERSION);
    glGetIntegerv(GL_MAX_SAMPLES, &report.maxSamples);
    detail::DestroyEglContext(context);
    return report;
}

FontReport ReportFont(const CString& face) {
    FontReport report;
    FcPattern* const wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(face.c_str()));
    FcPatternAddBool(wanted, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    if (FcPattern* const match = FcFontMatch(nullptr, wanted, &result)) {
        report = {PatternText(match, FC_FAMILY), PatternText(match, FC_FILE)};
        FcPatternDestroy(match);
    }
    FcPatternDestroy(wanted);
    return report;
}

bool HasDisplay() {
    const char* const name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0') return false;
    Display* const display = XOpenDisplay(name);
    if (display == nullptr) return false;
    XCloseDisplay(display);
    return true;
}

CString FindPrintCommand() {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string command = folder + "/lp";
        if (access(command.c_str(), X_OK) == 0) return command;
    }
    return {};
}

}  // namespace varnel
