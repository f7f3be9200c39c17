#include "basbdcells/text.h"
#include "commands.h"
#include "terminal.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <exception>
#include <iostream>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr const char* about =
    "Boolean functions of cell libraries: columns, equations, trees and BDDs.";
constexpr const char* legend =
    "LIBRARY is a file in the genlib or Liberty format, plain or compressed by gzip;\n"
    "- is standard input. FUNCTION names pins as libraries do, like '!(a1*a2 + b)'\n"
    "or 'A ^ B', or is an equation of single letters like 'AB + !C', one in the\n"
    "internal format like 'F0=~(B0*B1+B2)', or a column like 0x07. The exit status\n"
    "is 0 for success, 1 when no cell matches, and 2 for everything that a line on\n"
    "standard error tells: wrong arguments, a library that cannot be read in full,\n"
    "representations that disagree, output that cannot be written.";

const std::map<std::string, cellfn::graph> graphs{
    {"", cellfn::graph::none}, {"bdd", cellfn::graph::bdd}, {"tree", cellfn::graph::tree}};

/// What the options and arguments of all commands say.
struct arguments {
    cellfn::selection from;
    std::string first_library; ///< of `match`, whose other arguments are functions
    std::string function;
    cellfn::match_request wanted;
    bool is_exact = false;
    std::string graph;

    basbdcells::inverters inverters() const
    {
        return is_exact ? basbdcells::inverters::none : basbdcells::inverters::allowed;
    }
};

/// A check with our own message: the parser's differ from release to release.
template <class predicate>
CLI::Validator expected(const std::string& what, predicate is_right)
{
    const auto check = [what, is_right](const std::string& text) {
        return is_right(text) ? "" : "expected " + what + " instead of " + basbdcells::quoted(text);
    };
    return {check, ""};
}

/// A number of these limits, and nothing behind it.
template <class number>
CLI::Validator expected_number(const std::string& what, number least, number most)
{
    return expected(what, [least, most](const std::string& text) {
        number value{};
        const char* const stop = text.data() + text.size();
        const auto [end, error] = std::from_chars(text.data(), stop, value);
        return error == std::errc() && end == stop && value >= least && value <= most;
    });
}

void add_format(CLI::App& command, arguments& given)
{
    const auto choose = [&given](cellfn::format wanted) {
        return [&given, wanted](std::int64_t) { given.from.shown = wanted; };
    };
    auto* tsv = command.add_flag_function("--tsv", choose(cellfn::format::tsv),
                                          "Columns separated by tabs, every text in full");
    command
        .add_flag_function("--json", choose(cellfn::format::json),
                           "An array of objects, every text in full")
        ->excludes(tsv);
}

void add_exclusion(CLI::App& command, arguments& given,
                   const char* with_dont_use = "Take the cells marked with dont_use, too")
{
    command
        .add_option("--dont-use", given.from.excluded,
                    "Leave out the cells whose name matches GLOB")
        ->type_name("GLOB")
        ->allow_extra_args(false);
    command.add_flag("--with-dont-use", given.from.with_dont_use, with_dont_use);
}

void add_libraries(CLI::App& command, arguments& given)
{
    command.add_option("LIBRARY", given.from.files, "Cell libraries")->required()->type_name("");
}

void add_more_libraries(CLI::App& command, arguments& given, const char* what)
{
    command.add_option("--library", given.from.files, what)
        ->type_name("LIBRARY")
        ->allow_extra_args(false);
}

void add_exact(CLI::App& command, arguments& given)
{
    command.add_flag("--exact", given.is_exact, "Exchange inputs only, complement nothing");
}

void add_width(CLI::App& command, arguments& given)
{
    const auto take = [&given](const std::string& text) { given.wanted.width = std::stoi(text); };
    command.add_option_function<std::string>("--width", take, "Number of inputs of FUNCTION")
        ->type_name("INT")
        ->check(expected_number("a number from 1 to " + std::to_string(basbdcells::max_inputs), 1,
                                static_cast<int>(basbdcells::max_inputs)));
}

void add_list(CLI::App& app, arguments& given, int& status)
{
    CLI::App* list = app.add_subcommand("list", "List every cell and check its representations");
    add_libraries(*list, given);
    add_format(*list, given);
    add_exclusion(*list, given, "No change: cells with dont_use are listed");
    list->callback([&] { status = cellfn::list(given.from); });
}

void add_match(CLI::App& app, arguments& given, int& status)
{
    CLI::App* match = app.add_subcommand("match", "Find the cells that implement a function");
    match->add_option("LIBRARY", given.first_library, "Cell library")->required()->type_name("");
    match
        ->add_option("FUNCTION", given.wanted.functions,
                     "What the cells implement, each by one output")
        ->required()
        ->type_name("");
    add_more_libraries(*match, given, "Another cell library");
    add_width(*match, given);
    add_format(*match, given);
    add_exclusion(*match, given);
    add_exact(*match, given);
    match->add_flag("--all", given.wanted.all, "Print every binding of a cell and not just one");
    match
        ->add_option("--inverter-area", given.wanted.inverter_area,
                     "Area of an inverter, which each complement costs")
        ->check(expected_number("a number from 0 up", 0.0, std::numeric_limits<double>::max()))
        ->type_name("AREA");
    match->callback([&] {
        given.from.files.insert(given.from.files.begin(), given.first_library);
        given.wanted.inverters = given.inverters();
        status = cellfn::match(given.from, given.wanted);
    });
}

void add_classes(CLI::App& app, arguments& given, int& status)
{
    CLI::App* classes =
        app.add_subcommand("classes", "Group the cells by function, the cheapest first");
    add_libraries(*classes, given);
    add_format(*classes, given);
    add_exclusion(*classes, given);
    add_exact(*classes, given);
    classes->callback([&] { status = cellfn::classes(given.from, given.inverters()); });
}

void add_show(CLI::App& app, arguments& given, int& status)
{
    CLI::App* show = app.add_subcommand("show", "Show every representation of one function");
    show->add_option("FUNCTION", given.function,
                     "A function or, with --library, CELL or CELL/OUTPUT")
        ->required()
        ->type_name("");
    add_more_libraries(*show, given, "Take the function from a cell of this library");
    add_width(*show, given);
    add_format(*show, given);
    show->add_option("--dot", given.graph, "Write a Graphviz graph of it instead: bdd or tree")
        ->check(expected(
            "bdd or tree",
            [](const std::string& text) { return !text.empty() && graphs.count(text) == 1; }))
        ->excludes(show->get_option("--tsv"))
        ->excludes(show->get_option("--json"));
    show->get_option("--width")->excludes(show->get_option("--library"));
    show->callback([&] {
        status =
            cellfn::show(given.from, given.function, given.wanted.width, graphs.at(given.graph));
    });
}

/// @return what is wrong with the arguments
std::string explain(const CLI::App& app, const CLI::ParseError& error)
{
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty()) {
        return app.get_subcommands().empty() ? "expected list, match, classes or show"
                                             : error.what();
    }
    const bool is_subcommand = app.get_subcommands().empty() && unknown.front().front() != '-';
    return (is_subcommand ? "unknown subcommand " : "unexpected argument ") +
           basbdcells::quoted(unknown.front());
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
    add_list(app, given, status);
    add_match(app, given, status);
    add_classes(app, given, status);
    add_show(app, given, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error); // prints what --help and --version ask for
        }
        throw std::runtime_error(explain(app, error) + "; see cellfn --help");
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
        cellfn::tell("cellfn: " + basbdcells::printable(error.what()));
        return cellfn::exit_trouble;
    }
}
