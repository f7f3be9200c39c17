// Values for the debugger to print.

#include "basbdbool.h"
#include "basbdd.h"
#include "basbdtt.h"

class TECHMAP_SIG {};

extern "C" [[gnu::noinline]] void stop_here() { asm volatile(""); }

int main()
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(3, "e8");
    BOOL_TRUTH_TABLE wide;
    wide.set_value(9, TRUTH_TABLE_VAL(9, 1));
    BOOL_TRUTH_TABLE cut = wide;
    cut.value.words.resize(9);

    TECHMAP_SIG s;
    TECHMAP_SIG t;
    const char* names[] = {"in", "clock"};
    BOOL_FUNC tree(BOOL_FUNC_AND, names, BOOL_VAR_B);
    tree.addsigtofunc(&s, 0);
    tree.addsigtofunc(&t, 1);
    tree.setvarname(&s, BOOL_VAR_A);
    tree.setvarname(&t, BOOL_VAR_B);

    TECHMAP_SIG* sigs[] = {&s, &t};
    BDD_MANAGER manager(BDD_STORE_HASH, 2, sigs);
    BDD_FUNC function(2, &tree, &manager, nullptr);
    BDD_NODE* edge = function.bdd;
    BDD_NODE* zero = basbdd_zero;
    BDD_NODE* null_edge = nullptr;
    stop_here();
    return edge == null_edge || zero == null_edge ? 1 : 0;
}
