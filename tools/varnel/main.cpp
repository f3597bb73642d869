// varnel: shows, draws and describes chart files.
#include <CLI/CLI.hpp>

#include <charconv>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "tools/varnel/commands.h"
#include "varnel/chart/chart_view.h"

namespace {

constexpr int kLargestExtent = 16384;

/// Reads WIDTHxHEIGHT.
tool::PictureSize ParseSize(const std::string& text) {
    tool::PictureSize size;
    const char* end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, size.width);
    if (width.ec == std::errc() && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, size.height);
        if (height.ec == std::errc() && height.ptr == end && size.width > 0 && size.height > 0 &&
            size.width <= kLargestExtent && size.height <= kLargestExtent)
            return size;
    }
    throw CLI::ValidationError("--size",
                               "a size is WIDTHxHEIGHT in pixels, as in 900x650, of at "
                               "most 16384 each");
}

/// The options that several commands have.
struct Options {
    std::string file;
    std::string picture;
    std::string size = "900x650";
    int samples = 4;

    void Add(CLI::App& command, bool draws) {
        command.add_option("FILE", file, "The chart file")->required();
        if (!draws) return;
        command.add_option("--size", size, "Width x height in pixels")->capture_default_str();
        command
            .add_option("--samples", samples, "Samples a pixel for smooth edges; 0: exact pixels")
            ->check(CLI::Range(0, 64))
            ->capture_default_str();
    }
};

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Shows, draws and describes chart files.", "varnel");
    app.require_subcommand(1);
    app.set_version_flag("--version", "varnel 0.1.0");
    Options options;
    CLI::App* view = app.add_subcommand("view", "Show a chart file in a window");
    options.Add(*view, true);
    CLI::App* render = app.add_subcommand("render", "Draw a chart file into a picture file");
    options.Add(*render, true);
    render->add_option("-o,--output", options.picture, "The picture, .png or .bmp")->required();
    CLI::App* info = app.add_subcommand("info", "List what a chart file holds");
    options.Add(*info, false);
    try {
        app.parse(argc, argv);
        const tool::PictureSize size = ParseSize(options.size);
        if (*view) return tool::View(options.file, size, options.samples);
        if (*render) return tool::Render(options.file, options.picture, size, options.samples);
        return tool::Info(options.file);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    } catch (const std::exception& e) {
        std::cerr << "varnel: " << e.what() << '\n';
        return 1;
    }
}
