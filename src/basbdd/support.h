/// @file
/// @brief The sorted list of the variables that a BDD depends on.
#pragma once

class BDD_NODE;

/// @brief Adds the variables of `node` and of all nodes below it to a list.
/// @param list      ascending indexes, then `no_variable` in all free entries
/// @param capacity  indexes that the list may hold, one entry for the end apart; when there are
///                  more, those of the lower variables are dropped
void collect_support(BDD_NODE* node, unsigned short* list, unsigned capacity);
