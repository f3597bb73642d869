// What the examples share: reading a data file, and a view without a window whose picture is saved.
//
// An example is called with the folder of the data files and the folder for its pictures.
#pragma once

#include <string>
#include <vector>

#include "varnel/varnel.h"

namespace example {

/// A comma-separated file with a header line.
struct Table {
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> rows;

    /// The cells of a column; throws std::runtime_error when there is no such column.
    std::vector<std::string> Text(const std::string& column) const;
    std::vector<double> Numbers(const std::string& column) const;
};

/// Colours that go together: blue, orange, green, red, violet, brown, pink, grey; they repeat.
varnel::RGBDType Color(int index);
inline constexpr varnel::RGBDType kBlack{0, 0, 0, 1};
inline constexpr varnel::RGBDType kGrey{0.35, 0.35, 0.35, 1};

/// A view of 1024 x 768 pixels on an in-memory window, antialiased.
class Picture {
   public:
    Picture(int argc, char** argv, int width = 1024, int height = 768);

    varnel::CChartView3D& View() { return m_View; }
    /// Reads a file of the data folder.
    Table Read(const std::string& file) const;
    std::string DataFile(const std::string& file) const;
    /// Writes NAME.png and NAME.bmp.
    void Save(const std::string& name);

   private:
    std::string m_Data;
    std::string m_Pictures;
    varnel::CWnd m_Window;
    varnel::CChartView3D m_View;
};

/// Puts walls behind, beside and below a chart, and grid lines on them at the major tics of z (and
/// of the others where `allGrids`).
void AddWalls(varnel::CAxes3D& axes, bool allGrids = false);

/// Runs an example; a failure is told in a line and makes the program fail.
int Run(int argc, char** argv, void (*draw)(Picture& picture));

}  // namespace example
