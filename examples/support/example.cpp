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

std::vector<double> Table::Numbers(const std::vector<std::string>& columns, double factor) const {
    std::vector<double> numbers;
    for (const std::string& column : columns)
        for (double number : Numbers(column))
            numbers.push_back(factor * number);
    return numbers;
}

std::vector<point3Dtype> Table::Points(const std::string& x, const std::string& y,
                                       const std::string& z, const std::string& keyColumn,
                                       const std::string& key) const {
    const std::vector<std::string> keys =
        keyColumn.empty() ? std::vector<std::string>(rows.size(), key) : Text(keyColumn);
    const std::vector<double> xs = Numbers(x), ys = Numbers(y), zs = Numbers(z);
    std::vector<point3Dtype> points;
    for (std::size_t i = 0; i < xs.size(); ++i)
        if (keys[i] == key) points.push_back({xs[i], ys[i], zs[i], 0});
    return points;
}

std::vector<Date> Table::Dates(const std::string& column) const {
    std::vector<Date> dates;
    for (const std::string& cell : Text(column))
        dates.push_back({std::stoi(cell.substr(0, 4)), std::stoi(cell.substr(5, 2)),
                         std::stoi(cell.substr(8, 2))});
    return dates;
}

std::vector<double> Table::Days(const std::string& column) const {
    std::vector<double> days;
    for (const Date& date : Dates(column))
        days.push_back(DaysOf(date.year, date.month, date.day));
    return days;
}

namespace {

/// The means of the values that belong to each of n places.
std::vector<double> Means(const std::vector<std::size_t>& places, const std::vector<double>& values,
                          std::size_t n) {
    std::vector<double> sums(n), counts(n);
    for (std::size_t i = 0; i < places.size(); ++i) {
        sums.at(places[i]) += values.at(i);
        counts[places[i]] += 1;
    }
    for (std::size_t k = 0; k < n; ++k)
        sums[k] /= counts[k];
    return sums;
}

}  // namespace

std::vector<double> MonthlyMeans(const std::vector<Date>& dates,
                                 const std::vector<double>& values) {
    std::vector<std::size_t> months;
    for (const Date& date : dates)
        months.push_back(static_cast<std::size_t>(date.month - 1));
    return Means(months, values, 12);
}

std::vector<double> MonthlyMeansByYear(const std::vector<Date>& dates,
                                       const std::vector<double>& values) {
    std::vector<std::size_t> months;
    for (const Date& date : dates)
        months.push_back(
            static_cast<std::size_t>(12 * (date.year - dates[0].year) + date.month - 1));
    return Means(months, values, months.empty() ? 0 : months.back() / 12 * 12 + 12);
}

std::vector<double> Count(double first, std::size_t n, double step) {
    std::vector<double> numbers;
    for (std::size_t i = 0; i < n; ++i)
        numbers.push_back(first + step * static_cast<double>(i));
    return numbers;
}

Picture::Picture(const Options& options)
    : m_Options(options),
      m_Window(options.width, options.height),
      m_View(&m_Window, options.width, options.height) {
    ApplyTheme(m_View, Theme::Light());
    m_View.SetDPI(96.0 * options.height / 768);  // markers as large as lines are wide
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

CPolysurface Picture::ReadVolcano() const {
    // The file has a row for each 10 m further east, from south to north.
    constexpr std::size_t kEast = 61, kNorth = 87;
    const std::vector<double> heights = ReadMatrix("volcano.csv");
    std::vector<double> rows;
    for (std::size_t i = 0; i < kEast * kNorth; ++i)
        rows.push_back(heights.at(i % kEast * kNorth + i / kEast));
    return {kNorth, kEast, 0, 0, 10.0 * (kEast - 1), 10.0 * (kNorth - 1), rows, GRID_TRIANGLES};
}

std::string Picture::DataFile(const std::string& file) const {
    return m_Options.data + "/" + file;
}

std::string Picture::PictureFile(const std::string& file) const {
    return m_Options.pictures + "/" + file;
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
    m_View.SetAntialiasing(m_Options.samples);
    m_View.SaveToFile(path + ".bmp");
    m_View.SaveToPNG(path + ".png");
    if (m_Options.vectors) {
        m_View.SaveToPDF(path + ".pdf");
        m_View.SaveToSVG(path + ".svg");
    }
    m_View.Save(path + ".chart");
    m_View.DeleteChartViewObjects();
}

void WriteBitmap(const std::string& path, int width, int height,
                 const std::function<RGBDType(int x, int y)>& colorAt) {
    const auto stride = static_cast<std::size_t>((width * 3 + 3) / 4 * 4);
    std::string file(54 + stride * static_cast<std::size_t>(height), '\0');
    const auto put = [&file](std::size_t at, std::size_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            file[at + i] = static_cast<char>(value >> 8 * i);
    };
    const std::size_t sizes[] = {file.size(),
                                 0,
                                 54,
                                 40,
                                 static_cast<std::size_t>(width),
                                 static_cast<std::size_t>(height),
                                 1 + (24U << 16)};
    file[0] = 'B';
    file[1] = 'M';
    for (std::size_t i = 0; i < std::size(sizes); ++i)
        put(2 + 4 * i, sizes[i]);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const RGBBType color = RGBDtoRGBB(colorAt(x, y));
            const std::size_t at =
                54 + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * 3;
            file[at] = static_cast<char>(color.b);
            file[at + 1] = static_cast<char>(color.g);
            file[at + 2] = static_cast<char>(color.r);
        }
    std::ofstream(path, std::ios::binary) << file;
}

CTextObj3D* AddNote(CChart3D& chart, const std::string& text, double x, double y) {
    // Without a rotation, and with a box that fills the chart, data are device coordinates.
    CTransform3D* transform = chart.NewTransform({-1, -1, -1, 0}, {1, 1, 1, 0});
    transform->SetChartRect({1, 1, 1, 0});
    CTextObj3D* note = chart.NewChartTextObj(transform, text);
    note->SetLocation({x, 0, y, 0});
    note->SetTextPlane(TEXTPLANE_VIEWER);
    note->SetJustify(1, 0);
    note->SetCharSize(0.8);
    return note;
}

}  // namespace example

int main(int argc, char** argv) {
    varnel::CErr3D::SetErrorReportMode(0);
    varnel::SetDiagnostics(1);
    try {
        example::Picture picture(example::ReadOptions(argc, argv));
        example::Draw(picture);
        return 0;
    } catch (const std::exception& e) {
        std::cerr << argv[0] << ": " << e.what() << '\n';
    }
    return 1;
}
