// The empty table.
#include "basbdtt.h"

#include <cstddef>

static_assert(sizeof(TRUTH_TABLE_VAL) == 32 && offsetof(TRUTH_TABLE_VAL, words) == 0 &&
                  offsetof(TRUTH_TABLE_VAL, bit_count) == 24 && sizeof(BOOL_TRUTH_TABLE) == 40 &&
                  offsetof(BOOL_TRUTH_TABLE, value) == 0 && offsetof(BOOL_TRUTH_TABLE, width) == 32,
              "hosts rely on the layout of a table and its column");

BOOL_TRUTH_TABLE::BOOL_TRUTH_TABLE() : value(1, 0), width(0) {}
