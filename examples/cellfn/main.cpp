#include "commands.h"
#include "genlib.h"
#include "text.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr const char* about = "Boolean functions of cell libraries: columns, equations, expression "
                              "trees and BDDs.";
constexpr const char* legend =
    "FUNCTION is an equation like '!(A B + C)', one in the internal format like 'F0=~(B0*B1+B2)',\n"
    "or a column like 0x07. The exit status is 0 for success, 1 when no cell matches, and 2 for\n"
    "everything that a line on standard error tells: wrong arguments, a library that cannot be\n"
    "read in full, representations that disagree, output that cannot be written.";

const std::map<std::string, cellfn::graph> graphs{
    {"", cellfn::graph::none}, {"bdd", cellfn::graph::bdd}, {"tree", cellfn::graph::tree}};

/// The options that commands share.
struct arguments {
    std::string library;
    std::string function;
    int width = 0;
    bool tsv = false;
    cellfn::match_options matching;
    std::string graph;
};

void add_library(CLI::App& command, arguments& given)
{
    command.add_option("LIBRARY", given.library, "Cell library in the genlib format")->required();
    command.add_flag("--tsv", given.tsv, "Columns separated by tabs, every text in full");
}

void add_function(CLI::App& command, arguments& given)
{
    command.add_option("FUNCTION", given.function, "Equation or 0xHEX")->required();
    command.add_option("--width", given.width, "Number of inputs of FUNCTION")
        ->check(CLI::Range(1, static_cast<int>(cellfn::max_inputs)));
}

int run(int argc, char** argv)
{
    CLI::App app(about);
    app.name("cellfn");
    app.footer(legend);
    app.set_version_flag("--version", "cellfn " CELLFN_VERSION);
    app.require_subcommand(1);
    arguments given;
    int status = cellfn::exit_trouble;

    CLI::App* list = app.add_subcommand("list", "List every cell and check its representations");
    add_library(*list, given);
    list->callback([&] { status = cellfn::list(given.library, given.tsv); });

    CLI::App* match = app.add_subcommand("match", "Find the cells that implement a function");
    add_library(*match, given);
    add_function(*match, given);
    match->add_flag("--exact", given.matching.exact, "Exchange inputs only, complement nothing");
    match->add_flag("--all", given.matching.all, "Print every binding of a cell and not just one");
    match->callback([&] {
        status =
            cellfn::match(given.library, given.function, given.width, given.matching, given.tsv);
    });

    CLI::App* show = app.add_subcommand("show", "Show every representation of one function");
    add_function(*show, given);
    show->add_option("--dot", given.graph, "Write a Graphviz graph of it instead: bdd or tree")
        ->check(CLI::IsMember({"bdd", "tree"}));
    show->callback(
        [&] { status = cellfn::show(given.function, given.width, graphs.at(given.graph)); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error); // prints what --help and --version ask for
        }
        const std::vector<std::string> unknown = app.remaining(true);
        throw std::runtime_error(
            (unknown.empty() ? error.what() : "unexpected argument '" + unknown.front() + "'") +
            "; see cellfn --help");
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
        std::cerr << "cellfn: " << cellfn::one_line(error.what()) << '\n';
        return cellfn::exit_trouble;
    }
}
