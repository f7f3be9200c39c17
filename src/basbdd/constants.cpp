#include "basbdd.h"

BDD_NODE* basbdd_one = nullptr;
BDD_NODE* basbdd_zero = nullptr;
