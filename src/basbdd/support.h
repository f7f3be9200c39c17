/// @file
/// @brief The sorted list of the variables that a BDD depends on.
#pragma once

class BDD_NODE;

namespace basbdd {

/// @brief Adds the variables of `node` and of all nodes below it to a list.
/// @param list      ascending indexes, then `no_variable` in all free entries
/// @param capacity  indexes that the list may hold, one entry for the end apart; when there are
///                  more, the largest are dropped
/// @return the number of indexes in the list
unsigned collect_support(BDD_NODE* node, unsigned short* list, unsigned capacity);

} // namespace basbdd
