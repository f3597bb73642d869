#include <iostream>

#include "tools/varnel/commands.h"
#include "varnel/viewer/show_chart_file.h"

namespace tool {

int View(const std::string& file, const PictureSize& size, int samples) {
    std::string problem;
    if (varnel::ShowChartFile(file, {size.width, size.height, samples, {}}, problem)) return kDone;
    std::cerr << "varnel: " << problem << '\n';
    return kFailed;
}

}  // namespace tool
