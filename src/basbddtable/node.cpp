#include "basbddtable.h"

BDD_NODE::BDD_NODE() : BDD_NODE(0, nullptr, nullptr) {}

BDD_NODE::BDD_NODE(unsigned short id) : BDD_NODE(id, nullptr, nullptr) {}

BDD_NODE::BDD_NODE(unsigned short id, BDD_NODE* high_edge, BDD_NODE* low_edge)
    : varid(id), high(high_edge), low(low_edge)
{
}
