// What the examples share: reading a data file, a view without a window whose pictures are saved,
// and the gallery's look.
//
// An example is called as: example_NAME [DATA [PICTURES [WIDTHxHEIGHT [SAMPLES]]]]: the folder of
// the data files, the folder for its pictures, their size in pixels (1024x768) and the samples a
// pixel of antialiasing (4; 0: none).
#pragma once

#include <string>
#include <vector>

#include "varnel/varnel.h"

namespace example {

struct Date {
    int year = 0;
    int month = 0;  ///< 1..12
    int day = 0;
};

/// A comma-separated file with a header line. What asks for a column throws std::runtime_error when
/// there is none of that name.
struct Table {
    std::vector<std::string> names;
    std::vector<std::vector<std::string>> rows;

    std::vector<std::string> Text(const std::string& column) const;
    std::vector<double> Numbers(const std::string& column) const;
    /// From YYYY-MM-DD.
    std::vector<Date> Dates(const std::string& column) const;
};

/// The mean of the values of each of the twelve months.
std::vector<double> MonthlyMeans(const std::vector<Date>& dates, const std::vector<double>& values);

inline const std::vector<varnel::CString> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
inline const std::vector<varnel::CString> kMonthInitials = {"J", "F", "M", "A", "M", "J",
                                                            "J", "A", "S", "O", "N", "D"};

/// Colours that go together: blue, orange, green, red, violet, brown, pink, grey; they repeat.
varnel::RGBDType Color(int index);
inline constexpr varnel::RGBDType kBlack{0, 0, 0, 1};
inline constexpr varnel::RGBDType kGrey{0.35, 0.35, 0.35, 1};

/// What an example is called with.
struct Options {
    std::string data = "examples/data";
    std::string pictures = ".";
    int width = 1024;
    int height = 768;
    int samples = 4;
    bool vectors = false;  ///< PDF and SVG files, too
};

/// A view on an in-memory window.
class Picture {
 public:
    explicit Picture(const Options& options);

    varnel::CChartView3D& View() { return m_View; }
    /// Reads a file of the data folder.
    Table Read(const std::string& file) const;
    /// All numbers of a file without a header line, row by row.
    std::vector<double> ReadMatrix(const std::string& file) const;
    std::string DataFile(const std::string& file) const;
    /// A file in the folder of the pictures.
    std::string PictureFile(const std::string& file) const;

    /// A chart over the whole view, with its titles; all of it in the gallery's font size and
    /// light.
    varnel::CChart3D* NewChart(const std::string& title, const std::string& subtitle,
                               const std::string& footer);
    /// The largest part of the view that is square on the screen, in the middle: what is round in
    /// device coordinates is round there.
    varnel::GLViewRType Square() const;
    /// The width of a line that is `width` pixels wide in a picture 768 pixels high.
    int Pixels(double width) const;
    /// Writes NAME.png, NAME.bmp and the chart file NAME.chart, and removes charts and legends: the
    /// next picture starts anew.
    void Save(const std::string& name);

 private:
    Options m_Options;
    varnel::CWnd m_Window;
    varnel::CChartView3D m_View;
};

/// Puts walls below, behind and on the left of a chart, where they hide nothing when it is seen
/// from above and from its right; with grid lines at every n-th tic of each axis (0: none).
void AddWalls(varnel::CAxes3D& axes, int nthX, int nthY, int nthZ);

/// Gives the y axis, which leads away from the viewer, a title that faces the viewer, and leaves
/// its label in the front corner out: the x axis has one there.
void SetDepthTitle(varnel::CAxes3D& axes, const std::string& title);

/// A text that faces the viewer, at a place of the chart's rectangle: -1..1 from its left to its
/// right and from its bottom to its top. xJustify 0 starts there, 1 is centred, 2 ends there.
varnel::CTextObj3D* AddNote(varnel::CChart3D& chart, const std::string& text, double x, double y,
                            const varnel::RGBDType& color, int xJustify = 0);

/// The names of the data sets, in their colours, one below the other in the upper right corner.
void AddKey(varnel::CChart3D& chart, const std::vector<std::string>& names,
            const std::vector<varnel::RGBDType>& colors);

/// Runs an example; a failure is told in a line and makes the program fail.
int Run(int argc, char** argv, void (*draw)(Picture& picture));

}  // namespace example
