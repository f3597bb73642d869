// varnel: shows, draws and describes chart files.
//
// Everything about the command line stands once, in the options below: what is read, what --help
// says and what the man page says.
#include <CLI/CLI.hpp>

#include <iostream>

#include "tools/varnel/commands.h"
#include "tools/varnel/quantities.h"
#include "varnel/foundation/diagnostics.h"
#include "varnel/foundation/error.h"

namespace {

struct Command {
    CLI::App* app = nullptr;
    std::function<int()> run;
};

/// The program's options and where their values go.
struct Program {
    CLI::App app{"Draws charts, shows and describes chart files.", "varnel"};
    std::vector<Command> commands;
    std::string file;
    std::string size = "900x650";
    std::string seconds, memory;
    int samples = 4;
    tool::RenderOptions render;

    Program() {
        app.require_subcommand(1);
        app.set_version_flag("--version", "varnel 0.1.0");
        app.footer(
            "Exit status: 0 done, 1 something could not be made, 2 made from a damaged file, 3 a "
            "limit was reached, 64 wrong command line, 130 interrupted.");
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
        command.add_option("--size", size, "Width x height in pixels")
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
                         "The picture, .png or .bmp; with several files, or ending in /, a folder")
            ->type_name("PATH")
            ->required();
        AddPictureOptions(*command);
        command->add_option("--format", render.format, "What is written into a folder")
            ->check(CLI::IsMember({"png", "bmp"}))
            ->type_name("png|bmp")
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
