#include "constants.h"

#include "basbdd.h"
#include "edge.h"
#include "reports.h"

BDD_NODE* basbdd_one = nullptr;
BDD_NODE* basbdd_zero = nullptr;

void ensure_constants()
{
    if (basbdd_one == nullptr || basbdd_zero == nullptr) {
        basbdd_one = new BDD_NODE(no_variable);
        basbdd_zero = edge::complement(basbdd_one);
    }
}

void BDD_MANAGER::mkconstants()
{
    if (basbdd_one != nullptr && basbdd_zero != nullptr) {
        report(BDD_REPORT::SECOND_CONSTANTS);
    }
    ensure_constants();
}
