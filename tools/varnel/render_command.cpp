#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>

#include "tools/varnel/chart_files.h"
#include "tools/varnel/commands.h"
#include "varnel/chart/chart_view.h"
#include "varnel/platform/window.h"

namespace tool {

using namespace varnel;

namespace {

std::string LowerCaseExtension(const std::string& file) {
    std::string extension = std::filesystem::path(file).extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

}  // namespace

int Render(const std::string& file, const std::string& picture, const PictureSize& size,
           int samples) {
    CErr3D::SetErrorReportMode(0);
    const std::string extension = LowerCaseExtension(picture);
    if (extension != ".png" && extension != ".bmp") {
        std::cerr << "varnel: The picture " << picture << " has to end in .png or .bmp.\n";
        return 1;
    }
    try {
        CWnd window(size.width, size.height);
        CChartView3D view(&window, size.width, size.height);
        view.SetAntialiasing(samples);
        const Loaded loaded = LoadChartFile(view, file);
        if (!loaded.sentence.empty()) std::cerr << "varnel: " << loaded.sentence << '\n';
        if (!loaded.usable) return 1;
        extension == ".png" ? view.SaveToPNG(picture) : view.SaveToFile(picture);
        // A picture of a part of the chart is a picture, but no success.
        return loaded.sentence.empty() ? 0 : 2;
    } catch (const CErr3D& e) {
        std::cerr << "varnel: " << Describe("The picture " + picture + " cannot be made", e)
                  << '\n';
        return 1;
    }
}

}  // namespace tool
