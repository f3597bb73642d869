#include "examples/support/example.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace example {

using namespace varnel;

namespace {

constexpr double kFontSize = 0.085;

std::vector<std::string> Split(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, ',');)
        cells.push_back(cell);
    return cells;
}

Options ReadOptions(int argc, char** argv) {
    Options options;
    if (argc > 1) options.data = argv[1];
    if (argc > 2) options.pictures = argv[2];
    if (argc > 3 && std::sscanf(argv[3], "%dx%d", &options.width, &options.height) != 2)
        throw std::runtime_error(std::string("not a size: ") + argv[3]);
    if (argc > 4) options.samples = std::stoi(argv[4]);
    options.vectors = argc > 5 && std::string(argv[5]) == "vectors";
    return options;
}

bool RunsBackwards(const CAxes3D& axes, int axis) {
    const CTransform3D& transform = *axes.GetTransform();
    return GetCoord3D(transform.GetScaleMax(), axis) < GetCoord3D(transform.GetScaleMin(), axis);
}

}  // namespace

std::vector<std::string> Table::Text(const std::string& column) const {
    const auto found = std::find(names.begin(), names.end(), column);
    if (found == names.end()) throw std::runtime_error("no column " + column);
    const auto index = static_cast<std::size_t>(found - names.begin());
    std::vector<std::string> cells;
    for (const auto& row : rows)
        cells.push_back(row.at(index));
    return cells;
}

std::vector<double> Table::Numbers(const std::string& column) const {
    std::vector<double> numbers;
    for (const std::string& cell : Text(column))
        numbers.push_back(std::stod(cell));
    return numbers;
}

std::vector<Date> Table::Dates(const std::string& column) const {
    std::vector<Date> dates;
    for (const std::string& cell : Text(column))
        dates.push_back({std::stoi(cell.substr(0, 4)), std::stoi(cell.substr(5, 2)),
                         std::stoi(cell.substr(8, 2))});
    return dates;
}

std::vector<double> MonthlyMeans(const std::vector<Date>& dates,
                                 const std::vector<double>& values) {
    std::vector<double> sums(12), counts(12);
    for (std::size_t i = 0; i < dates.size(); ++i) {
        const auto month = static_cast<std::size_t>(dates[i].month - 1);
        sums[month] += values.at(i);
        counts[month] += 1;
    }
    for (std::size_t m = 0; m < 12; ++m)
        sums[m] /= counts[m];
    return sums;
}

RGBDType Color(int index) {
    constexpr RGBDType colors[] = {
        {0.22, 0.49, 0.72, 1}, {0.95, 0.55, 0.16, 1}, {0.30, 0.63, 0.29, 1}, {0.82, 0.20, 0.22, 1},
        {0.58, 0.40, 0.74, 1}, {0.55, 0.34, 0.29, 1}, {0.89, 0.47, 0.76, 1}, {0.50, 0.50, 0.50, 1}};
    return colors[static_cast<std::size_t>(index) % std::size(colors)];
}

Picture::Picture(const Options& options)
    : m_Options(options),
      m_Window(options.width, options.height),
      m_View(&m_Window, options.width, options.height) {
    m_View.SetAntialiasing(options.samples);
    m_View.SetFont("Arial", 400, 256);
    m_View.EnableBorder(0);
}

Table Picture::Read(const std::string& file) const {
    std::ifstream in(DataFile(file));
    if (!in) throw std::runtime_error("cannot read " + DataFile(file));
    Table table;
    std::string line;
    std::getline(in, line);
    table.names = Split(line);
    while (std::getline(in, line))
        table.rows.push_back(Split(line));
    return table;
}

std::vector<double> Picture::ReadMatrix(const std::string& file) const {
    std::ifstream in(DataFile(file));
    if (!in) throw std::runtime_error("cannot read " + DataFile(file));
    std::vector<double> numbers;
    for (std::string line; std::getline(in, line);)
        for (const std::string& cell : Split(line))
            numbers.push_back(std::stod(cell));
    return numbers;
}

std::string Picture::DataFile(const std::string& file) const {
    return m_Options.data + "/" + file;
}

std::string Picture::PictureFile(const std::string& file) const {
    return m_Options.pictures + "/" + file;
}

CChart3D* Picture::NewChart(const std::string& title, const std::string& subtitle,
                            const std::string& footer) {
    CChart3D* chart = m_View.NewChart3D();
    chart->EnableBorder(0);
    chart->SetFontSize(kFontSize);
    // From the front and above: tops, fronts and sides differ.
    chart->SetLightPosition({0, 1.4, 0.9, 0});
    chart->GetHeader()->SetTitle1(title);
    chart->GetHeader()->SetTitle2(subtitle);
    chart->GetHeader()->SetFooter(footer);
    return chart;
}

GLViewRType Picture::Square() const {
    const double side = std::min(m_Options.width, m_Options.height);
    const double width = side / m_Options.width;
    const double height = side / m_Options.height;
    return {(1 - width) / 2, (1 - height) / 2, width, height};
}

int Picture::Pixels(double width) const {
    return std::max(1, static_cast<int>(std::lround(width * m_Options.height / 768)));
}

void Picture::Save(const std::string& name) {
    const std::string path = PictureFile(name);
    m_View.SaveToFile(path + ".bmp");
    m_View.SaveToPNG(path + ".png");
    if (m_Options.vectors) {
        m_View.SaveToPDF(path + ".pdf");
        m_View.SaveToSVG(path + ".svg");
    }
    m_View.Save(path + ".chart");
    m_View.DeleteChartViewObjects();
}

void AddWalls(CAxes3D& axes, int nthX, int nthY, int nthZ) {
    constexpr RGBDType wall{0.92, 0.93, 0.95, 1};
    constexpr RGBDType edge{0.62, 0.65, 0.70, 1};
    constexpr RGBDType line{0.66, 0.69, 0.75, 1};
    constexpr double thickness = 0.03;  // device units, whatever the box's size
    const point3Dtype box = axes.GetTransform()->GetChartRect();
    const int nth[3][2] = {{nthX, nthY}, {nthX, nthZ}, {nthY, nthZ}};
    const double across[3] = {box.z, box.y, box.x};
    for (int lowest : {0, 1, 2}) {
        // Planes 3 to 5 lie at the largest values, which are in those places on a scale that runs
        // backwards.
        const int plane = RunsBackwards(axes, 2 - lowest) ? lowest + 3 : lowest;
        axes.SetWallPlane(plane, wall, edge);
        axes.SetWallThickness(plane, thickness / (2 * across[lowest]));
        axes.SetWallOffset(plane, 0.001);
        axes.SetOutlineWidth(plane, 1.0);
        axes.SetPlaneColorMode(plane, 0);
        axes.SetPlaneGrid(plane, nth[lowest][0], nth[lowest][1], line, 1.0, 0, 0);
    }
}

void SetDepthTitle(CAxes3D& axes, const std::string& title) {
    constexpr int kY = 1;
    const int facingViewer = 3;
    axes.GetAxisLabels(kY)->SetAxisTitle(facingViewer, 0, axes.GetAxisLabelsDir(kY), 0, 0, 1,
                                         kBlack, title);
    const int atMinimum = 1, atMaximum = 4, all = 7;
    axes.SetAxisLabelsEnds(kY, all - (RunsBackwards(axes, kY) ? atMinimum : atMaximum));
}

CTextObj3D* AddNote(CChart3D& chart, const std::string& text, double x, double y,
                    const RGBDType& color, int xJustify) {
    // Without a rotation, and with a box that fills the chart, data are device coordinates.
    CTransform3D* transform = chart.NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
    transform->SetChartRect({1, 1, 1, 0});
    CTextObj3D* note = chart.NewChartTextObj(transform, text);
    note->SetLocation({x, 0, y, 0});
    note->SetTextPlane(3);
    note->SetJustify(xJustify, 0);
    note->SetColor(color);
    note->SetCharSize(0.8);
    return note;
}

void AddKey(CChart3D& chart, const std::vector<std::string>& names,
            const std::vector<RGBDType>& colors) {
    for (std::size_t i = 0; i < names.size(); ++i)
        AddNote(chart, names[i], 0.97, 0.72 - 0.1 * static_cast<double>(i), colors.at(i), 2);
}

int Run(int argc, char** argv, void (*draw)(Picture& picture)) {
    CErr3D::SetErrorReportMode(0);
    try {
        Picture picture(ReadOptions(argc, argv));
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
