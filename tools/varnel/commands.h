// The commands of the program and what they are called with. Each returns the program's exit status
// and tells failures in one sentence on standard error.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

/// The program's exit statuses; the man page lists them.
enum ExitStatus : int {
    kDone = 0,
    kFailed = 1,   ///< something asked for could not be made
    kDamaged = 2,  ///< all was made, some of it from damaged files
    kLimit = 3,    ///< a limit of time or memory was reached
    kUsage = 64,   ///< the command line is wrong
    kInterrupted = 130,
};

struct PictureSize {
    int width = 900;  ///< pixels
    int height = 650;
    /// Millimetres on paper; 0: it was given in pixels, 96 to the inch.
    double pageWidth = 0;
    double pageHeight = 0;

    /// The size on paper at another resolution.
    PictureSize At(double dotsPerInch) const;
};

/// Shows a chart file in a window.
int View(const std::string& file, const PictureSize& size, int samples);

struct RenderOptions {
    std::vector<std::string> files;
    /// A picture file for one chart file; a folder, which is made, for several.
    std::string output;
    PictureSize size;
    int samples = 4;
    std::string format = "png";     ///< of pictures in a folder
    std::string theme;              ///< light, dark or print; empty: as the file says
    bool textPaths = false;         ///< letters of PDF and SVG files are areas
    double limitSeconds = 0;        ///< for each file, by the clock; 0: none
    std::uint64_t limitMemory = 0;  ///< bytes of address space for each file; 0: none
};

/// Draws chart files into picture files.
int Render(const RenderOptions& options);

/// Lists what a chart file holds.
int Info(const std::string& file);

/// Lists what this machine has for charts and what is missing.
int Doctor();

/// Prints the man page of a program in the format of man.
int PrintManPage(const CLI::App& program);

}  // namespace tool
