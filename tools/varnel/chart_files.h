// Loading chart files, and saying in a sentence what went wrong.
#pragma once

#include <string>

#include "varnel/foundation/error.h"

namespace varnel {
class CChartView3D;
}

namespace tool {

/// What loading a file gave.
struct Loaded {
    bool usable = false;   ///< there is something to show
    std::string sentence;  ///< what is wrong, also where something can be shown; empty: nothing
};

/// Loads a chart file into a view. Raises nothing.
Loaded LoadChartFile(varnel::CChartView3D& view, const std::string& file);

/// A failure as a sentence about what was being done, such as "The view cannot be drawn".
std::string Describe(const std::string& what, const varnel::Error& error);

}  // namespace tool
