#include "basbdcells/text.h"
#include "commands.h"
#include "dot.h"
#include "progress.h"
#include "representations.h"
#include "sources.h"
#include "terminal.h"

#include <iostream>
#include <stdexcept>
#include <utility>
#include <variant>

namespace cellfn {

namespace {

using basbdcells::expression;

/// What is shown: an output of a cell, or a function without either name.
struct subject {
    std::string cell;
    std::string output;
    value area;
    expression function;
};

[[noreturn]] void fail(const std::string& message) { throw std::runtime_error(message); }

basbdcells::function read(const std::string& text, int width)
{
    auto result = basbdcells::read_function(text, width);
    if (const auto* message = std::get_if<std::string>(&result)) {
        fail(*message);
    }
    return std::get<basbdcells::function>(std::move(result));
}

subject subject_of(const std::string& text, int width)
{
    basbdcells::function given = read(text, width);
    if (given.source.steps.empty()) { // a column: the library's own equation
        given.source = read(given.table.get_internal_equation(), given.table.get_width()).source;
        given.source.pins = given.inputs;
    }
    return {"", "", nullptr, std::move(given.source)};
}

/// The outputs that `cell` or `cell/output` names.
std::vector<subject> subjects_in(const sources& given, const std::string& name)
{
    std::vector<subject> found;
    for (const sources::entry& each : given.cells()) {
        for (const basbdcells::output& drives : each.cell->outputs) {
            if (name == each.cell->name || name == each.cell->name + '/' + drives.name) {
                found.push_back(
                    {each.cell->name, drives.name, area_of(*each.cell), drives.function});
            }
        }
    }
    return found;
}

value support_of(const representations& all)
{
    value names = value::array();
    for (int i = 0; i < all.bdd.nsuppt; ++i) {
        names.push_back(all.signals[all.bdd.suppt[i]].name);
    }
    return names;
}

void print_line(const std::string& name, const value& of, words longest = words::broken)
{
    const std::string head = name + std::string(10 - name.size(), ' ');
    const std::string text = basbdcells::elide(text_of(of), longest_shown);
    std::cout << wrapped(head + text, head.size(), output_width(), longest) << '\n';
}

void print_lines(const subject& what, representations& all)
{
    const value support = support_of(all);
    if (!what.cell.empty()) {
        print_line("cell", what.cell, words::whole);
        print_line("output", what.output, words::whole);
        print_line("area", what.area);
    }
    print_line("inputs", what.function.pins);
    print_line("depends", support.empty() ? "on none" : "on " + text_of(support));
    print_line("column", "0x" + all.texts.hexadecimal);
    print_line("external", all.external());
    print_line("internal", all.internal());
    print_line("tree", all.equation());
    print_line("BDD", bdd_text(all.bdd));
    print_line("nodes", std::to_string(nodes_below(all.bdd.bdd).size()) + " in the BDD, " +
                            std::to_string(all.tree.function.root->countleaves()) +
                            " leaves in the tree");
}

table make_table(format shown)
{
    std::vector<column> columns;
    for (const char* name : {"cell", "output", "area", "inputs", "column", "depends", "external",
                             "internal", "tree", "BDD", "nodes", "leaves"}) {
        columns.push_back({name, on_terminal::whole});
    }
    return {std::cout, shown, std::move(columns), 0};
}

} // namespace

int show(const selection& from, const std::string& function, int width, graph wanted)
{
    const sources given(from, sources::advice::shown);
    const bool has_error = given.print_diagnostics();
    const std::vector<subject> subjects = from.files.empty()
                                              ? std::vector<subject>{subject_of(function, width)}
                                              : subjects_in(given, function);
    progress shown("functions", subjects.size());
    table rows = make_table(from.shown);
    for (const subject& each : subjects) {
        shown.begin_item(is_large(each.function));
        representations all(each.function);
        const std::string found = all.check();
        shown.hide();
        if (wanted == graph::bdd) {
            write_bdd_graph(std::cout, all.bdd);
        } else if (wanted == graph::tree) {
            write_tree_graph(std::cout, all.tree.function);
        } else if (from.shown == format::aligned) {
            print_lines(each, all);
        } else {
            rows.add({each.cell, each.output, each.area, each.function.pins, all.texts.hexadecimal,
                      support_of(all), all.external(), all.internal(), all.equation(),
                      bdd_text(all.bdd), nodes_below(all.bdd.bdd).size(),
                      all.tree.function.root->countleaves()});
        }
        if (!found.empty()) {
            fail("function " + basbdcells::quoted(function) + ": " + found);
        }
    }
    if (from.shown != format::aligned && wanted == graph::none) {
        rows.finish();
    }
    if (subjects.empty()) {
        fail("no output of " + given.names() + " is " + basbdcells::quoted(function) +
             "; expected CELL or CELL/OUTPUT");
    }
    return has_error ? exit_trouble : exit_success;
}

} // namespace cellfn
