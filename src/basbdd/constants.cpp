#include "constants.h"

#include "basbdd.h"
#include "basbddtable/edge.h"
#include "reports.h"

BDD_NODE* basbdd_one = nullptr;
BDD_NODE* basbdd_zero = nullptr;

bool basbdd::make_constants()
{
    bool made = false;
    // Of the threads that come here first, one makes them and the others wait.
    [[maybe_unused]] static const bool there = [&made] {
        basbdd_one = new BDD_NODE(no_variable);
        basbdd_zero = basbddtable::edge::complement(basbdd_one);
        return made = true;
    }();
    return made;
}

void BDD_MANAGER::mkconstants()
{
    if (!basbdd::make_constants()) {
        basbdd::report(basbdd::report_site::second_constants);
    }
}
