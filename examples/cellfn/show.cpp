#include "commands.h"
#include "diagram.h"
#include "dot.h"
#include "function_argument.h"
#include "progress.h"
#include "representations.h"
#include "text.h"

#include <iostream>
#include <stdexcept>

namespace cellfn {

int show(const std::string& function, int width, graph wanted)
{
    const function_argument argument(function, width);
    progress shown("functions", 1);
    const expression source = argument.source();
    shown.begin_item(is_large(source));
    representations all(source);
    std::string found = all.check();
    shown.hide();
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
                  << "external  " << elide(all.external(), longest_shown) << '\n'
                  << "internal  " << elide(all.internal(), longest_shown) << '\n'
                  << "tree      " << elide(all.equation(), longest_shown) << '\n'
                  << "BDD       " << elide(bdd_text(all.bdd), longest_shown) << '\n'
                  << "nodes     " << nodes_below(all.bdd.bdd).size() << " in the BDD, "
                  << all.tree.function.root->countleaves() << " leaves in the tree\n";
    }
    if (!(all.table.value == argument.table.value)) {
        found += "; the library reads the column " + argument.table.value.get_hex_string();
    }
    if (!found.empty()) {
        throw std::runtime_error("function '" + function + "': " + found);
    }
    return exit_success;
}

} // namespace cellfn
