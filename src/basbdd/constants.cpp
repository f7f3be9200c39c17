#include "constants.h"

#include "basbdd.h"
#include "basbddtable/edge.h"
#include "reports.h"

BDD_NODE* basbdd_one = nullptr;
BDD_NODE* basbdd_zero = nullptr;

void basbdd::ensure_constants()
{
    if (basbdd_one == nullptr || basbdd_zero == nullptr) {
        basbdd_one = new BDD_NODE(no_variable);
        basbdd_zero = basbddtable::edge::complement(basbdd_one);
    }
}

void BDD_MANAGER::mkconstants()
{
    if (basbdd_one != nullptr && basbdd_zero != nullptr) {
        basbdd::report(basbdd::report_site::second_constants);
    }
    basbdd::ensure_constants();
}
