#include "varnel/viewer/chart_files.h"

#include <unistd.h>

#include <filesystem>

#include "varnel/chart/chart_view.h"
#include "varnel/foundation/diagnostics.h"

namespace varnel {

namespace {

std::string WhyNotOpened(const std::string& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return "There is no file " + file + ".";
    if (status.type() == std::filesystem::file_type::directory)
        return file + " is a folder, not a chart file.";
    if (access(file.c_str(), R_OK) != 0) return "The file " + file + " cannot be read.";
    return file + " is not a chart file.";
}

}  // namespace

std::string Describe(const std::string& what, const Error& error) {
    return what + ": " + error.what() + ".";
}

namespace {

/// What loading has to say is said in the sentence alone.
struct QuietDiagnostics {
    int before = GetDiagnostics();
    QuietDiagnostics() { SetDiagnostics(0); }
    ~QuietDiagnostics() { SetDiagnostics(before); }
};

}  // namespace

Loaded LoadChartFile(CChartView3D& view, const std::string& file) {
    const QuietDiagnostics quiet;
    try {
        view.Load(file);
    } catch (const Error& e) {
        if (e.m_ErrorType == ERR3D_FILE_OPEN_INPUT && e.m_ErrorClass == ERR3DCLASS_CHARTVIEW3D)
            return {false, WhyNotOpened(file)};
        return {false, Describe("The file " + file + " cannot be loaded", e)};
    }
    if (view.GetLoadComplete() == 0)
        return {true, file + " is damaged: it ends too early. What could be read is shown."};
    return {true, {}};
}

}  // namespace varnel
