// What the examples share: reading a data file, and a view without a window whose pictures are
// saved.
//
// An example is a source file with example::Draw. Its program is called as: example_NAME [DATA
// [PICTURES [WIDTHxHEIGHT [SAMPLES]]]]: the folder of the data files, the folder for its pictures,
// their size in pixels (1024x768) and the samples a pixel of antialiasing (4; 0: none).
#pragma once

#include <functional>
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
    /// Those of several columns, column by column, times a factor.
    std::vector<double> Numbers(const std::vector<std::string>& columns, double factor = 1) const;
    /// A point from three columns for each row; with a key for those that have it in its column.
    std::vector<varnel::point3Dtype> Points(const std::string& x, const std::string& y,
                                            const std::string& z, const std::string& keyColumn = {},
                                            const std::string& key = {}) const;
    /// From YYYY-MM-DD.
    std::vector<Date> Dates(const std::string& column) const;
    /// From YYYY-MM-DD, days since 1970-01-01.
    std::vector<double> Days(const std::string& column) const;
};

/// The mean of the values of each of the twelve months.
std::vector<double> MonthlyMeans(const std::vector<Date>& dates, const std::vector<double>& values);
/// The same year by year, from the first year to the last.
std::vector<double> MonthlyMeansByYear(const std::vector<Date>& dates,
                                       const std::vector<double>& values);

/// n numbers from `first` on.
std::vector<double> Count(double first, std::size_t n, double step = 1);

inline const std::vector<varnel::CString> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

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
    /// The heights of Maunga Whau in metres, as triangles over a grid of 10 m: x leads to the east,
    /// y to the north.
    varnel::CPolysurface ReadVolcano() const;
    std::string DataFile(const std::string& file) const;
    /// A file in the folder of the pictures.
    std::string PictureFile(const std::string& file) const;

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

/// Writes a .bmp file of 24 bits a pixel; colorAt(x, y) counts from the lower left.
void WriteBitmap(const std::string& path, int width, int height,
                 const std::function<varnel::RGBDType(int x, int y)>& colorAt);

/// A text that faces the viewer, centred on a place of the chart's rectangle: -1..1 from its left
/// to its right and from its bottom to its top.
varnel::CTextObj3D* AddNote(varnel::CChart3D& chart, const std::string& text, double x, double y);

/// The example: draws and saves its pictures. A failure is told in a line, and makes the program
/// fail.
void Draw(Picture& picture);

}  // namespace example
