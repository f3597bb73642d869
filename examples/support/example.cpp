#include "examples/support/example.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace example {

using namespace varnel;

namespace {

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, ',');) cells.push_back(cell);
    return cells;
}

}  // namespace

std::vector<std::string> Table::Text(const std::string& column) const {
    const auto found = std::find(names.begin(), names.end(), column);
    if (found == names.end()) throw std::runtime_error("no column " + column);
    const auto index = static_cast<std::size_t>(found - names.begin());
    std::vector<std::string> cells;
    for (const auto& row : rows) cells.push_back(row.at(index));
    return cells;
}

std::vector<double> Table::Numbers(const std::string& column) const {
    std::vector<double> numbers;
    for (const std::string& cell : Text(column)) numbers.push_back(std::stod(cell));
    return numbers;
}

RGBDType Color(int index) {
    constexpr RGBDType colors[] = {{0.22, 0.49, 0.72, 1}, {0.95, 0.55, 0.16, 1},
                                   {0.30, 0.63, 0.29, 1}, {0.82, 0.20, 0.22, 1},
                                   {0.58, 0.40, 0.74, 1}, {0.55, 0.34, 0.29, 1},
                                   {0.89, 0.47, 0.76, 1}, {0.50, 0.50, 0.50, 1}};
    return colors[static_cast<std::size_t>(index) % std::size(colors)];
}

Picture::Picture(int argc, char** argv, int width, int height)
    : m_Data(argc > 1 ? argv[1] : "examples/data"),
      m_Pictures(argc > 2 ? argv[2] : "."),
      m_Window(width, height),
      m_View(&m_Window, width, height) {
    m_View.SetAntialiasing(4);
    m_View.EnableBorder(0);
}

Table Picture::Read(const std::string& file) const {
    std::ifstream in(DataFile(file));
    if (!in) throw std::runtime_error("cannot read " + DataFile(file));
    Table table;
    std::string line;
    std::getline(in, line);
    table.names = Split(line);
    while (std::getline(in, line)) table.rows.push_back(Split(line));
    return table;
}

std::string Picture::DataFile(const std::string& file) const { return m_Data + "/" + file; }

void Picture::Save(const std::string& name) {
    m_View.SaveToFile(m_Pictures + "/" + name + ".bmp");
    m_View.SaveToPNG(m_Pictures + "/" + name + ".png");
}

void AddWalls(CAxes3D& axes, bool allGrids) {
    const RGBDType wall{0.93, 0.94, 0.96, 1};
    const RGBDType line{0.62, 0.65, 0.70, 1};
    // The planes behind the data when a chart is seen from above and from its right: the floor, the
    // plane of the smallest y at the back and that of the smallest x at the left.
    for (int plane : {0, 1, 2}) {
        axes.SetPlaneColor(plane, wall, line);
        axes.SetOutlineWidth(plane, 1.0);
        axes.SetPlaneColorMode(plane, 0);
    }
    for (int plane : {1, 2}) {
        const int nth = axes.GetAxisNthTicMajor(2);
        axes.SetPlaneGrid(plane, allGrids ? axes.GetAxisNthTicMajor(plane == 1 ? 0 : 1) : 0, nth,
                          line, 1.0, 0, 0);
    }
}

int Run(int argc, char** argv, void (*draw)(Picture& picture)) {
    CErr3D::SetErrorReportMode(0);
    try {
        Picture picture(argc, argv);
        draw(picture);
        return 0;
    } catch (const CErr3D& e) {
        std::cerr << argv[0] << ": " << e.m_FunctionName << ": "
                  << CErr3D::GetErrorDescription(e.m_ErrorType) << '\n';
    } catch (const std::exception& e) {
        std::cerr << argv[0] << ": " << e.what() << '\n';
    }
    return 1;
}

}  // namespace example
