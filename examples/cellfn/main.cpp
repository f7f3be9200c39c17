#include "commands.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace {

int run(int argc, char** argv)
{
    CLI::App app("Boolean functions of cell libraries");
    app.name("cellfn");
    app.set_version_flag("--version", "cellfn " CELLFN_VERSION);
    app.require_subcommand(1);

    std::string library;
    bool tsv = false;
    int status = cellfn::exit_usage;
    const auto add_command = [&](const char* name, const char* description) {
        CLI::App* command = app.add_subcommand(name, description);
        command->add_flag("--tsv", tsv, "Columns separated by tabs, every text in full");
        return command;
    };

    CLI::App* list = add_command("list", "List every cell of a library and check its texts");
    list->add_option("LIBRARY", library, "Cell library in the genlib format")->required();
    list->callback([&] { status = cellfn::list(library, tsv); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? cellfn::exit_success : cellfn::exit_usage;
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const int status = run(argc, argv);
        if (!std::cout.flush()) {
            throw std::runtime_error("the output cannot be written");
        }
        return status;
    } catch (const std::exception& error) {
        std::cerr << "cellfn: " << error.what() << '\n';
        return cellfn::exit_failure;
    }
}
