#include "basbdd.h"
#include "basbdtt.h"

#include <iostream>
#include <memory>

/// A signal of your netlist: the library keeps its address and never looks inside.
class TECHMAP_SIG {};

int main()
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_external_equation(3, "A B + A C + B C");
    table.invert_input(2);
    std::cout << table.value.get_hex_string() << "  " << table.get_internal_equation() << '\n';

    TECHMAP_SIG a;
    TECHMAP_SIG b;
    BOOL_FUNC tree(BOOL_FUNC_AND, nullptr, BOOL_VAR_A); // null: the default variable names
    tree.addsigtofunc(&a, 0);
    tree.addsigtofunc(&b, 1);
    tree.setvarname(&a, BOOL_VAR_A);
    tree.setvarname(&b, BOOL_VAR_B);
    const std::unique_ptr<char[]> equation(tree.writeeqn());

    TECHMAP_SIG* order[] = {&a, &b};
    BDD_MANAGER manager(BDD_STORE_HASH, 2, order);
    BDD_FUNC bdd(2, &tree, &manager, nullptr);
    char text[80];
    char names[] = "ab";
    bdd.printbddexpr(text, names);
    std::cout << equation.get() << "  " << text << '\n';
}
