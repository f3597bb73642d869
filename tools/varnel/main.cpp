// varnel: shows, draws and describes chart files.
//
// Everything about the command line stands once, in the options below: what is read, what --help
// says and what the man page says.
#include <CLI/CLI.hpp>

#include <iostream>

#include "tools/varnel/commands.h"
#include "tools/varnel/plot_command.h"
#include "tools/varnel/quantities.h"
#include "varnel/foundation/diagnostics.h"
#include "varnel/foundation/error.h"
#include "varnel/foundation/version.h"

namespace {

constexpr const char* kSizes =
    "Width x height in pixels, or on paper, 96 pixels to the inch, as in 180x120mm (cm, in, pt)";
constexpr const char* kTextPaths =
    "Letters in .pdf and .svg are areas: they look the same everywhere, and cannot be selected";

struct Command {
    CLI::App* app = nullptr;
    std::function<int()> run;
};

/// The program's options and where their values go.
struct Program {
    CLI::App app{"draws, shows and describes charts", "varnel"};
    std::vector<Command> commands;
    std::string file;
    std::string size = "900x650";
    std::string seconds, memory;
    int samples = 4;
    tool::RenderOptions render;
    tool::PlotOptions plot;
    std::vector<double> rotate;
    bool listKinds = false;

    Program() {
        app.require_subcommand(1);
        app.set_version_flag("--version", "varnel " VARNEL_VERSION);
        app.footer(
            "Exit status: 0 done, 1 something could not be made, 2 made from a damaged file, 3 a "
            "limit was reached, 64 wrong command line, 130 interrupted.");
        AddPlot();
        AddRender();
        AddView();
        AddInfo();
        AddDoctor();
        CLI::App* man = Add("man", "Print this program's manual page, in the format of man(1)",
                            [this] { return tool::PrintManPage(app); });
        man->group("");  // for the build
    }

    CLI::App* Add(const char* name, const char* what, std::function<int()> run) {
        CLI::App* command = app.add_subcommand(name, what);
        commands.push_back({command, std::move(run)});
        return command;
    }

    void AddPictureOptions(CLI::App& command) {
        command.add_option("--size", size, kSizes)
            ->capture_default_str()
            ->type_name("WxH")
            ->check([](const std::string& text) {
                tool::PictureSize unused;
                return tool::ParseSize(text, unused);
            });
        command
            .add_option("--samples", samples, "Samples a pixel for smooth edges; 0: exact pixels")
            ->check(CLI::Range(0, 64))
            ->type_name("N")
            ->capture_default_str();
    }

    void AddPlot() {
        CLI::App* command = Add("plot", "Draw a chart of a CSV file", [this] {
            return listKinds ? tool::ListPlotKinds() : tool::kUsage;
        });
        command->add_flag("--list", listKinds, "List the kinds, each with an example");
        command->require_subcommand(0, 1);
        command->footer("varnel plot KIND --help tells about a kind.");
        for (const tool::PlotKind& kind : tool::PlotKinds()) {
            CLI::App* sub = command->add_subcommand(kind.name, kind.what);
            AddPlotColumns(*sub);
            AddPlotTable(*sub);
            AddPlotFigure(*sub);
            sub->footer(std::string("Example: varnel plot ") + kind.example);
            commands.insert(commands.begin(), {sub, [this, &kind] {
                                                   plot.samples = samples;
                                                   if (rotate.size() == 2)
                                                       plot.rotate = {rotate[0], rotate[1]};
                                                   return tool::Plot(kind, plot);
                                               }});
        }
    }

    void AddPlotColumns(CLI::App& command) {
        command.add_option("FILE", plot.file, "The CSV file; -: standard input")
            ->required()
            ->type_name("");
        const auto column = [&](const char* name, std::string& value, const char* what) {
            command.add_option(name, value, what)->type_name("COLUMN");
        };
        column("-x", plot.x,
               "By name, number from 1 or letter; date:month, date:year and the like are parts of "
               "dates");
        command.add_option("-y", plot.y, "One or several, as in a,b,c")
            ->delimiter(',')
            ->type_name("COLUMNS");
        column("-z", plot.z, "The third column of what is drawn in space");
        column("--by", plot.by, "A series for each of its names");
        column("--color-by", plot.colorBy,
               "Colours of symbols, bars, planes and surfaces by value, with a colour bar");
        column("--text", plot.text, "The texts of kind text");
        column("--dx", plot.dx, "How far arrows reach along x, in units of the axis");
        column("--dy", plot.dy, "And along y");
        column("--dz", plot.dz, "And along z");
        command
            .add_option("--box", plot.box,
                        "Boxes that are known: least,lower,median,upper,most and perhaps mean")
            ->delimiter(',')
            ->type_name("COLUMNS");
        column("--from", plot.from, "Where bars and areas begin");
        command.add_option("--ohlc", plot.ohlc, "Open, high, low and close, as in o,h,l,c")
            ->delimiter(',')
            ->type_name("COLUMNS");
        command.add_option("--errors", plot.errors, "Errors of y: one column, or below,above")
            ->delimiter(',')
            ->type_name("COLUMNS");
        command.add_option("--names", plot.names, "Of the series, in place of their columns'")
            ->delimiter(',')
            ->type_name("NAMES");
        command.add_flag("--stack", plot.stack, "Bars above each other, not side by side");
        command.add_flag("--filled", plot.filled, "Contours as bands");
        command.add_flag("--wire", plot.wire, "A surface as a wire frame");
        command.add_flag("--tics", plot.bars, "Candles as lines with tics");
        command.add_option("--bins", plot.bins, "Of a histogram; 0: by the data")
            ->type_name("N")
            ->check(CLI::Range(0, 100000));
        command.add_option("--map", plot.map, "Colours of values")
            ->type_name("NAME")
            ->capture_default_str();
        command.add_option("--levels", plot.levels, "Of contours, as in 100,150,200")
            ->delimiter(',')
            ->type_name("VALUES");
        command
            .add_option("--marker", plot.marker,
                        "Of points and lines: circle, square, triangle, diamond, cross, plus, "
                        "star; solids: cube, pyramid, hourglass, arrow; none")
            ->type_name("NAME")
            ->check(CLI::IsMember(tool::MarkerNames()))
            ->capture_default_str();
        const auto points = [&](const char* name, double& value, const char* what) {
            command.add_option(name, value, what)
                ->type_name("POINTS")
                ->check(CLI::Range(0.1, 1000.0))
                ->capture_default_str();
        };
        points("--symbol-size", plot.symbolSize, "Size of symbols");
        points("--line-width", plot.lineWidth, "Width of lines");
        AddPlotReferences(command);
    }

    void AddPlotReferences(CLI::App& command) {
        const auto lines = [&](const char* name, std::vector<std::string>& values,
                               const char* what) {
            command.add_option(name, values, what)->delimiter(',')->type_name("VALUES");
        };
        lines("--line-x", plot.lineX, "Upright dashed lines across the chart, at values or dates");
        lines("--line-y", plot.lineY, "Level ones");
        const auto bands = [&](const char* name, std::vector<std::string>& values,
                               const char* what) {
            command.add_option(name, values, what)
                ->delimiter(',')
                ->expected(2)
                ->type_name("FROM,TO");
        };
        bands("--band-x", plot.bandX, "A band across the chart behind the data");
        bands("--band-y", plot.bandY, "A level one");
    }

    void AddPlotTable(CLI::App& command) {
        const auto text = [&](const char* name, std::string& value, const char* type,
                              const char* what) {
            return command.add_option(name, value, what)->type_name(type);
        };
        command
            .add_option("--where", plot.where,
                        "Rows with column=value; also != < <= > >=; all of several")
            ->type_name("CONDITION");
        text("--sort", plot.sort, "COLUMN", "Rows in this order; -COLUMN: descending");
        command.add_option("--limit", plot.limit, "The first rows only")->type_name("N");
        text("--group", plot.group, "mean|sum|count|median|min|max",
             "One row for each x (and --by)")
            ->check(CLI::IsMember({"mean", "sum", "count", "median", "min", "max"}));
        text("--delimiter", plot.delimiter, "C", "Between cells; found out without it");
        text("--decimal", plot.decimal, "C", "The decimal sign, . or ,; found out without it");
        text("--header", plot.header, "yes|no|detect", "Whether the first row names the columns")
            ->check(CLI::IsMember({"yes", "no", "detect"}))
            ->capture_default_str();
        command.add_option("--skip", plot.skip, "Lines to pass over at the start")
            ->type_name("N")
            ->check(CLI::NonNegativeNumber);
        text("--comment", plot.comment, "TEXT", "What lines that are no rows start with");
        text("--date-format", plot.dateFormat, "FORMAT", "Of dates, as in %d.%m.%Y");
    }

    void AddPlotFigure(CLI::App& command) {
        const auto text = [&](const char* name, std::string& value, const char* type,
                              const char* what) {
            command.add_option(name, value, what)->type_name(type);
        };
        text(
            "-o,--output", plot.output, "PATH",
            ".png, .bmp, .pdf, .svg or .chart; -: a PNG on standard output; without it a window is "
            "shown");
        text("--save-view", plot.chartFile, "PATH", "The chart file as well");
        command.add_flag("--show", plot.show, "A window as well");
        text("--title", plot.title, "TEXT", "Over the chart");
        text("--subtitle", plot.subtitle, "TEXT", "Below the title, smaller");
        text("--footer", plot.footer, "TEXT", "Below the chart");
        text("--x-title", plot.xTitle, "TEXT", "Of an axis; its column's name without");
        text("--y-title", plot.yTitle, "TEXT", "Likewise");
        text("--z-title", plot.zTitle, "TEXT", "Likewise");
        text("--log", plot.log, "AXES", "Logarithmic axes, as in y or xy");
        command
            .add_option_function<std::string>(
                "--size", [this](const std::string& s) { tool::ParseSize(s, plot.size); },
                "Width x height in pixels, or on paper with mm, cm, in or pt behind: at --dpi, "
                "which is 300 then")
            ->default_str("1200x800")
            ->type_name("WxH")
            ->check([](const std::string& s) {
                tool::PictureSize unused;
                return tool::ParseSize(s, unused);
            });
        command.add_flag("--text-paths", plot.textPaths, kTextPaths);
        command.add_option("--dpi", plot.dpi, "Pixels an inch: widths of lines follow")
            ->type_name("N")
            ->check(CLI::Range(10, 2400))
            ->default_str("by the size");
        command
            .add_option("--samples", samples, "Samples a pixel for smooth edges; 0: exact pixels")
            ->check(CLI::Range(0, 64))
            ->type_name("N")
            ->capture_default_str();
        command.add_option("--theme", plot.theme, "The look of the picture")
            ->type_name("light|dark|print")
            ->check(CLI::IsMember({"light", "dark", "print"}))
            ->capture_default_str();
        command.add_option("--legend", plot.legend, "Beside the chart, or where data are fewest")
            ->type_name("auto|right|top|bottom|inside|none")
            ->check(CLI::IsMember({"auto", "right", "top", "bottom", "inside", "none"}))
            ->capture_default_str();
        command
            .add_option("--depth", plot.depth,
                        "Depth of flat kinds as a share of their width, seen from the side and "
                        "above; 0: flat")
            ->type_name("N")
            ->check(CLI::Range(0.0, 4.0))
            ->capture_default_str();
        command
            .add_option("--rotate", rotate,
                        "Azimuth and elevation in degrees; flat kinds show their depth")
            ->delimiter(',')
            ->expected(2)
            ->type_name("AZ,EL");
    }

    void AddRender() {
        CLI::App* command = Add("render", "Draw chart files into picture files", [this] {
            tool::ParseSize(size, render.size);
            render.samples = samples;
            tool::ParseSeconds(seconds, render.limitSeconds);
            tool::ParseBytes(memory, render.limitMemory);
            return tool::Render(render);
        });
        command->add_option("FILE", render.files, "Chart files")->required()->type_name("");
        command
            ->add_option("-o,--output", render.output,
                         "The picture, .png, .bmp, .pdf or .svg; with several files, or ending in "
                         "/, a folder")
            ->type_name("PATH")
            ->required();
        AddPictureOptions(*command);
        command->add_option("--theme", render.theme, "Another look; as the file says without it")
            ->check(CLI::IsMember({"light", "dark", "print"}))
            ->type_name("light|dark|print");
        command->add_flag("--text-paths", render.textPaths, kTextPaths);
        command->add_option("--format", render.format, "What is written into a folder")
            ->check(CLI::IsMember({"png", "bmp", "pdf", "svg"}))
            ->type_name("png|bmp|pdf|svg")
            ->capture_default_str();
        command
            ->add_option("--limit-time", seconds,
                         "Seconds for each file, as in 30; it is drawn in a process of its own, "
                         "which is ended then")
            ->type_name("SECONDS")
            ->check([](const std::string& text) {
                double unused = 0;
                return tool::ParseSeconds(text, unused);
            });
        command
            ->add_option("--limit-memory", memory,
                         "Address space for each file, as in 2G or 800M; it is drawn in a process "
                         "of its own, which cannot have more")
            ->type_name("BYTES")
            ->check([](const std::string& text) {
                std::uint64_t unused = 0;
                return tool::ParseBytes(text, unused);
            });
        command->footer(
            "Broken files are told and passed over; the others are drawn. Files of unknown origin "
            "belong under both limits: whatever they do then, in the graphics driver too, ends "
            "with their own process.\n"
            "Example: varnel render *.chart -o out/ --limit-time 30 --limit-memory 2G");
    }

    void AddView() {
        CLI::App* command = Add("view", "Show a chart file in a window", [this] {
            tool::PictureSize extent;
            tool::ParseSize(size, extent);
            return tool::View(file, extent, samples);
        });
        command->add_option("FILE", file, "The chart file")->required()->type_name("");
        AddPictureOptions(*command);
        command->footer("Drag to turn, wheel to enlarge, h for help.");
    }

    void AddInfo() {
        CLI::App* command =
            Add("info", "List what a chart file holds", [this] { return tool::Info(file); });
        command->add_option("FILE", file, "The chart file")->required()->type_name("");
    }

    void AddDoctor() {
        CLI::App* command =
            Add("doctor", "Tell what this machine lacks for charts", [] { return tool::Doctor(); });
        command->footer("Exit status 0 only when a picture could be made.");
    }

    int Run() {
        for (const Command& command : commands)
            if (*command.app) return command.run();
        return tool::kUsage;
    }
};

}  // namespace

int main(int argc, char** argv) {
    varnel::SetDiagnostics(1);
    varnel::CErr3D::SetErrorReportMode(0);
    Program program;
    try {
        program.app.parse(argc, argv);
        return program.Run();
    } catch (const CLI::ParseError& e) {
        return program.app.exit(e) == 0 ? tool::kDone : tool::kUsage;
    } catch (const varnel::Error& e) {
        std::cerr << "varnel: " << e.what() << '\n';
    } catch (const std::exception& e) {
        std::cerr << "varnel: " << e.what() << '\n';
    }
    return tool::kFailed;
}
