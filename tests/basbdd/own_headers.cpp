#include "basbddtable.h"

static_assert(sizeof(BDD_HASH) == sizeof(UT_HASH) && sizeof(BDD_TREE) == sizeof(UT_BTR_TREE));
