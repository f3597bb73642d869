#include "tools/varnel/chart_files.h"

#include <filesystem>

#include "varnel/chart/chart_view.h"

namespace tool {

using namespace varnel;

namespace {

/// Whether what was read can have been a chart file: the format has no mark of its own, but its
/// first word is a font weight.
bool LooksLikeAChartFile(const CChartView3D& view) {
    const int weight = view.GetFontWeight();
    return weight >= 0 && weight <= 1000 &&
           (view.GetNumCharts() > 0 || view.GetLoadComplete() != 0);
}

std::string WhyNotOpened(const std::string& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return "There is no file " + file + ".";
    if (status.type() == std::filesystem::file_type::directory)
        return file + " is a folder, not a chart file.";
    return "The file " + file + " cannot be read.";
}

}  // namespace

std::string Describe(const std::string& what, const CErr3D& error) {
    return what + ": " + CErr3D::GetErrorDescription(error.m_ErrorType) + " (" +
           error.m_FunctionName + ").";
}

Loaded LoadChartFile(CChartView3D& view, const std::string& file) {
    try {
        view.Load(file);
    } catch (const CErr3D& e) {
        if (e.m_ErrorType == ERR3D_FILE_OPEN_INPUT && e.m_ErrorClass == ERR3DCLASS_CHARTVIEW3D)
            return {false, WhyNotOpened(file)};
        return {false, Describe("The file " + file + " cannot be loaded", e)};
    }
    if (!LooksLikeAChartFile(view)) return {false, file + " is not a chart file."};
    if (view.GetLoadComplete() == 0)
        return {true, file + " is damaged: it ends too early. What could be read is shown."};
    return {true, {}};
}

}  // namespace tool
