// The manual page, from the same options that the command line is read with.
#include <CLI/CLI.hpp>

#include <iostream>

#include "tools/varnel/commands.h"

namespace tool {

namespace {

/// For troff: hyphens that can be copied, no accidental requests.
std::string Escape(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else if (c == '\n')
            out += "\n.br\n";
        else if ((c == '.' || c == '\'') && (out.empty() || out.back() == '\n')) {
            out += "\\&";
            out += c;
        } else
            out += c;
    }
    return out;
}

void PrintOption(const CLI::Option& option) {
    std::string name = option.get_name(true, true);
    for (std::size_t at = 0; (at = name.find(',', at)) != std::string::npos; at += 2)
        name.insert(at + 1, " ");
    // Behind a colon stands the check, in words for --help.
    std::string type = option.get_type_size() == 0 ? "" : option.get_type_name();
    type = type.substr(0, type.find(':'));
    std::cout << ".TP\n\\fB" << Escape(name) << "\\fR"
              << (type.empty() ? "" : " \\fI" + Escape(type) + "\\fR") << '\n'
              << Escape(option.get_description());
    if (!option.get_default_str().empty())
        std::cout << " (default " << Escape(option.get_default_str()) << ')';
    if (option.get_required()) std::cout << " (required)";
    std::cout << ".\n";
}

/// What stands behind a command's name: the kind, the files.
std::string Operands(const CLI::App& command) {
    if (!command.get_subcommands([](const CLI::App*) { return true; }).empty()) return " KIND FILE";
    std::string operands;
    for (const CLI::Option* option : command.get_options())
        if (option->get_positional())
            operands +=
                " " + option->get_name(true) + (option->get_items_expected_max() > 1 ? " ..." : "");
    return operands;
}

void PrintCommand(const CLI::App& command, const std::string& prefix) {
    const std::string name = prefix + " " + command.get_name();
    std::cout << ".SS " << Escape(name) << '\n' << Escape(command.get_description()) << ".\n";
    for (const CLI::Option* option : command.get_options())
        if (option->get_name() != "--help") PrintOption(*option);
    // Kinds have the same options: they are listed once, behind the examples.
    const auto kinds = command.get_subcommands([](const CLI::App*) { return true; });
    for (const CLI::App* kind : kinds)
        std::cout << ".TP\n\\fB" << Escape(command.get_name() + " " + kind->get_name()) << "\\fR\n"
                  << Escape(kind->get_description()) << ".\n.br\n"
                  << Escape(kind->get_footer()) << '\n';
    if (!kinds.empty())
        for (const CLI::Option* option : kinds.front()->get_options())
            if (option->get_name() != "--help") PrintOption(*option);
    if (!command.get_footer().empty()) std::cout << ".PP\n" << Escape(command.get_footer()) << '\n';
}

}  // namespace

int PrintManPage(const CLI::App& program) {
    std::cout << ".TH VARNEL 1\n.SH NAME\nvarnel \\- " << Escape(program.get_description())
              << "\n.SH SYNOPSIS\n";
    const auto commands = program.get_subcommands(
        [](const CLI::App* command) { return !command->get_group().empty(); });
    for (const CLI::App* command : commands)
        std::cout << "\\fBvarnel " << command->get_name() << "\\fR" << Escape(Operands(*command))
                  << " [options]\n.br\n";
    std::cout << ".SH COMMANDS\n";
    for (const CLI::App* command : commands)
        PrintCommand(*command, "varnel");
    std::cout
        << ".SH EXIT STATUS\n"
           ".IP 0\nEverything was done.\n"
           ".IP 1\nSomething could not be made; a sentence on standard error says what.\n"
           ".IP 2\nAll pictures were made, some from damaged files.\n"
           ".IP 3\nA limit of time or memory was reached.\n"
           ".IP 64\nThe command line is wrong.\n"
           ".IP 130\nInterrupted with Ctrl\\-C.\n"
           ".SH ENVIRONMENT\n"
           ".IP VARNEL_EGL\nThe driver's platform: surfaceless, device, device:n, software or "
           "default.\n"
           ".IP DISPLAY\nWhere windows are shown.\n";
    return kDone;
}

}  // namespace tool
