// Loading chart files, and saying in a sentence what went wrong.
#pragma once

#include <string>

#include "varnel/foundation/error.h"
#include "varnel/foundation/export.h"

namespace varnel {

class CChartView3D;

/// What loading a file gave.
struct Loaded {
    bool usable = false;   ///< there is something to show
    std::string sentence;  ///< what is wrong, also where something can be shown; empty: nothing
};

/// Loads a chart file into a view. Raises nothing.
VARNEL_API Loaded LoadChartFile(CChartView3D& view, const std::string& file);

/// A failure as a sentence about what was being done, such as "The view cannot be drawn".
VARNEL_API std::string Describe(const std::string& what, const Error& error);

}  // namespace varnel
