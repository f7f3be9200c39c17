// A mapper in small: its netlist is two signals. It takes one function through all three
// representations and prints what the library told the host meanwhile.

#include "mapper.h"

#include "services.h"

#include "basbdbool.h"
#include "basbdd.h"
#include "basbdtt.h"

#include <array>
#include <iostream>
#include <memory>
#include <string>

/// The library compares addresses of signals and never looks inside.
class TECHMAP_SIG {
public:
    std::string net;
};

namespace {

std::string bdd_text(BDD_FUNC& function)
{
    std::array<char, 64> text{}; // ample for two variables
    std::array<char, 3> names{"ab"};
    function.printbddexpr(text.data(), names.data());
    return text.data();
}

} // namespace

void run_mapper()
{
    TECHMAP_SIG s{"net 1"};
    TECHMAP_SIG t{"net 2"};

    BOOL_FUNC function(BOOL_FUNC_AND, nullptr, BOOL_VAR_QY);
    function.addsigtofunc(&s, 0);
    function.addsigtofunc(&t, 1);
    function.setvarname(&s, BOOL_VAR_A);
    function.setvarname(&t, BOOL_VAR_B);
    const std::unique_ptr<char[]> equation(function.writeeqn());
    std::cout << "tree:  " << equation.get() << '\n';

    for (const BDD_STORE_METHOD method : {BDD_STORE_HASH, BDD_STORE_TREE}) {
        std::array<TECHMAP_SIG*, 2> signals{&s, &t};
        BDD_MANAGER manager(method, 2, signals.data());
        BDD_FUNC bdd(2, &function, &manager, nullptr);
        std::cout << "BDD:   " << bdd_text(bdd) << '\n';
        bdd.setsigto0(&t);
        std::cout << "t = 0: " << bdd_text(bdd) << '\n';
    }

    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(2, "F0=(B0*~B1)");
    std::cout << "table: " << table.value.get_hex_string() << '\n';

    // Mistakes: a text that cannot be read, and a name that does not exist.
    table.set_value_from_internal_equation(2, "B0-B1");
    function.setvarname(&s, BOOL_VAR_NONE);
    for (const std::string& line : message_log()) {
        std::cout << line << '\n';
    }
}
