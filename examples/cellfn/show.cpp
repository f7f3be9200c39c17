#include "commands.h"
#include "diagram.h"
#include "dot.h"
#include "function_argument.h"
#include "representations.h"
#include "text_table.h"

#include <iostream>

namespace cellfn {

namespace {

/// @brief A function that is only known as a table, as an expression over its inputs.
///
/// The library's own text is a good one: it drops inputs without effect and finds XOR. Only its
/// signs are written differently.
expression expression_of(const BOOL_TRUTH_TABLE& table)
{
    std::string text;
    for (const char c : table.get_internal_equation().substr(3)) { // behind "F0="
        switch (c) {
        case '~':
            text += '!';
            break;
        case '@':
            text += '^';
            break;
        default:
            text += c;
        }
    }
    if (text == "0" || text == "1") {
        text.insert(0, "CONST");
    }
    text += ';';
    std::vector<std::string> pins(static_cast<std::size_t>(table.get_width()));
    for (std::size_t i = 0; i < pins.size(); ++i) {
        pins[i] = "B" + std::to_string(i);
    }
    scanner source(text);
    return read_expression(source, std::move(pins));
}

} // namespace

int show(const std::string& function, int width, graph wanted)
{
    const function_argument argument = read_function(function, width);
    expression source = expression_of(argument.table);
    source.pins = argument.inputs;
    representations all(source);
    if (wanted == graph::bdd) {
        write_bdd_graph(std::cout, all.bdd);
    } else if (wanted == graph::tree) {
        write_tree_graph(std::cout, all.tree.function);
    } else {
        std::string support;
        for (int i = 0; i < all.bdd.nsuppt; ++i) {
            support += (i == 0 ? "" : " ") + argument.inputs[all.bdd.suppt[i]];
        }
        std::cout << "inputs    " << joined(argument.inputs) << '\n'
                  << "depends   " << (support.empty() ? "on none" : "on " + support) << '\n'
                  << "column    0x" << elide(all.texts.hexadecimal, longest_shown) << '\n'
                  << "external  " << elide(all.texts.external, longest_shown) << '\n'
                  << "internal  " << elide(all.texts.internal, longest_shown) << '\n'
                  << "tree      " << elide(all.equation(), longest_shown) << '\n'
                  << "BDD       " << elide(bdd_text(all.bdd), longest_shown) << '\n'
                  << "nodes     " << nodes_below(all.bdd.bdd).size() << " in the BDD, "
                  << all.tree.function.root->countleaves() << " leaves in the tree\n";
    }
    const std::string found = all.check();
    if (!found.empty()) {
        std::cerr << "cellfn: '" << function << "': " << found << '\n';
        return exit_failure;
    }
    return exit_success;
}

} // namespace cellfn
