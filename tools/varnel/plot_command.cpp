#include "tools/varnel/plot_command.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "varnel/chart/chart_view.h"
#include "varnel/platform/system_report.h"
#include "varnel/plot.h"

namespace tool {

using namespace varnel::plot;

namespace {

char SignOf(const std::string& text, const char* option) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() > 1)
        throw std::runtime_error(std::string(option) + " is one character, or tab, not " + text);
    return text.empty() ? '\0' : text[0];
}

Table ReadTable(const PlotOptions& options) {
    CsvOptions csv;
    csv.delimiter = SignOf(options.delimiter, "--delimiter");
    csv.decimal = SignOf(options.decimal, "--decimal");
    csv.header = options.header == "yes"  ? Header::Yes
                 : options.header == "no" ? Header::No
                                          : Header::Detect;
    csv.skip = options.skip;
    csv.comment = options.comment;
    csv.date_format = options.dateFormat;
    if (options.file != "-") return ReadCSV(options.file, csv);
    csv.name = "standard input";
    return ReadCSV(std::cin, csv);
}

/// A number or a date, read as the table reads its cells.
double ReadValue(const std::string& text) {
    const Values value = ReadCSVText("v\n" + text + "\n", {.header = Header::Yes}).Column("v");
    if (value.size() != 1 || value.Kind() == DataKind::Names)
        throw std::runtime_error("\"" + text + "\" is neither a number nor a date.");
    return value[0];
}

/// column=value, or with != < <= > >= a comparison of numbers.
Table Filter(const Table& table, const std::string& condition) {
    const std::size_t at = condition.find_first_of("=<>!");
    if (at == std::string::npos || at == 0)
        throw std::runtime_error("--where is column=value, not " + condition);
    const std::string column = condition.substr(0, at);
    const std::size_t length = condition.size() > at + 1 && condition[at + 1] == '=' ? 2 : 1;
    const std::string sign = condition.substr(at, length), value = condition.substr(at + length);
    if (sign == "=" || sign == "==") return table.Where(column, value);
    if (sign == "!=") return table.WhereNot(column, value);
    if (sign == "!") throw std::runtime_error("--where is column!=value, not " + condition);
    const double limit = ReadValue(value);
    return table.Where(column, [&](double cell) {
        return sign == "<"    ? cell < limit
               : sign == "<=" ? cell <= limit
               : sign == ">"  ? cell > limit
                              : cell >= limit;
    });
}

Statistic StatisticOf(const std::string& name) {
    return name == "sum"      ? Statistic::Sum
           : name == "count"  ? Statistic::Count
           : name == "median" ? Statistic::Median
           : name == "min"    ? Statistic::Min
           : name == "max"    ? Statistic::Max
                              : Statistic::Mean;
}

varnel::Theme ThemeOf(const std::string& name) {
    varnel::Theme theme;
    if (!varnel::Theme::Find(name, theme))
        throw std::runtime_error("--theme is light, dark or print, not " + name);
    return theme;
}

Legend LegendOf(const std::string& place) {
    return place == "top"      ? Legend::Top
           : place == "bottom" ? Legend::Bottom
           : place == "inside" ? Legend::Inside
           : place == "none"   ? Legend::None
           : place == "right"  ? Legend::Right
                               : Legend::Auto;
}

/// What a part of a date ("date:month") is called in the table of groups.
void Rename(std::string& column, const Table& groups) {
    const std::size_t colon = column.rfind(':');
    if (colon != std::string::npos && groups.Has(column.substr(colon + 1)))
        column = column.substr(colon + 1);
}

Table Prepare(Table table, PlotOptions& options) {
    for (const std::string& condition : options.where)
        table = Filter(table, condition);
    if (!options.sort.empty()) {
        const bool descending = options.sort.front() == '-';
        table = table.Sort(options.sort.substr(descending), descending);
    }
    if (!options.group.empty()) {
        if (options.x.empty()) throw std::runtime_error("--group needs -x, what to group by.");
        std::vector<std::string> by = {options.x};
        const bool second = !options.z.empty() && !options.y.empty();
        if (second) by.push_back(options.y[0]);
        if (!options.by.empty()) by.push_back(options.by);
        table = table.Group(by, StatisticOf(options.group));
        Rename(options.x, table);
        Rename(options.by, table);
        if (second) Rename(options.y[0], table);
        if (options.group == "count" && options.y.empty()) options.y = {"count"};
    }
    return options.limit > 0 ? table.Limit(options.limit) : table;
}

void SetAxes(Figure& figure, const PlotOptions& options) {
    const auto isLog = [&](char axis) { return options.log.find(axis) != std::string::npos; };
    figure.x({.title = options.xTitle, .log = isLog('x')});
    figure.y({.title = options.yTitle, .log = isLog('y')});
    if (!options.zTitle.empty() || isLog('z'))
        figure.z({.title = options.zTitle, .log = isLog('z')});
    if (options.rotate) figure.Rotate(options.rotate->first, options.rotate->second);
}

/// Lines and bands across the chart, behind its data.
void AddReferences(Figure& figure, const PlotOptions& options) {
    for (std::size_t i = 0; i + 1 < options.bandX.size(); i += 2)
        figure.BandAtX(ReadValue(options.bandX[i]), ReadValue(options.bandX[i + 1]));
    for (std::size_t i = 0; i + 1 < options.bandY.size(); i += 2)
        figure.BandAtY(ReadValue(options.bandY[i]), ReadValue(options.bandY[i + 1]));
    const LineOptions line{.width = 1.0, .dash = Dash::Dashed};
    for (const std::string& x : options.lineX)
        figure.LineAtX(ReadValue(x), line);
    for (const std::string& y : options.lineY)
        figure.LineAtY(ReadValue(y), line);
}

/// The PNG on standard output, whole or not at all.
void WriteToOutput(Figure& figure) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("varnel-" + std::to_string(getpid()) + ".png");
    figure.Save(file.string());
    std::ifstream picture(file, std::ios::binary);
    std::cout << picture.rdbuf() << std::flush;
    picture.close();
    std::filesystem::remove(file);
    if (!std::cout) throw std::runtime_error("The picture cannot be written to standard output.");
}

int Show(Figure& figure) {
    if (!varnel::HasDisplay()) {
        std::cerr << "varnel: There is no display to show the chart on. A picture can be made "
                     "with -o picture.png; a window needs DISPLAY to be set.\n";
        return kFailed;
    }
    figure.Show();
    return kDone;
}

}  // namespace

int ListPlotKinds() {
    for (const PlotKind& kind : PlotKinds())
        std::cout << kind.name << std::string(11 - std::string(kind.name).size(), ' ') << kind.what
                  << "\n           varnel plot " << kind.example << '\n';
    return kDone;
}

int Plot(const PlotKind& kind, const PlotOptions& given) {
    PlotOptions options = given;
    const Table table = Prepare(ReadTable(options), options);
    if (table.NumRows() == 0) {
        std::cerr << "varnel: " << options.file << " has no rows"
                  << (options.where.empty() ? "" : " that match --where") << ".\n";
        return kFailed;
    }
    // On paper a picture has the resolution of print.
    constexpr double kPrintDPI = 300;
    if (options.size.pageWidth > 0) {
        if (!(options.dpi > 0)) options.dpi = kPrintDPI;
        options.size = options.size.At(options.dpi);
    }
    Figure figure({.title = options.title,
                   .subtitle = options.subtitle,
                   .footer = options.footer,
                   .size = {options.size.width, options.size.height},
                   .dpi = options.dpi,
                   .samples = options.samples,
                   .theme = ThemeOf(options.theme),
                   .legend = LegendOf(options.legend),
                   .depth = options.depth});
    SetAxes(figure, options);
    kind.draw(figure, table, options);
    AddReferences(figure, options);
    if (options.textPaths) figure.View().SetVectorTextPaths(1);
    if (!options.chartFile.empty()) figure.Save(options.chartFile);
    if (options.output == "-")
        WriteToOutput(figure);
    else if (!options.output.empty())
        figure.Save(options.output);
    const bool isKept = !options.output.empty() || !options.chartFile.empty();
    return options.show || !isKept ? Show(figure) : kDone;
}

}  // namespace tool
