/// @file
/// @brief Figures of a function that no exchange of its inputs changes.
#pragma once

#include "basbdtt.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace basbdcells {

/// How two inputs of a function may be exchanged without changing it.
struct symmetry {
    bool plain = false;        ///< as they are
    bool complemented = false; ///< with both complemented
};

/// What tells an input from others.
struct input_signature {
    std::int64_t low_ones = 0;  ///< ones in the cofactor for 0
    std::int64_t high_ones = 0; ///< ones in the cofactor for 1
    int symmetries = 0;         ///< symmetries with other inputs, of either kind

    /// Whether inputs with these signatures may stand for each other, one of them complemented
    /// when `inverted`.
    bool fits(const input_signature& other, bool inverted) const;
};

struct signature {
    /// @param table   a function that depends on its first inputs
    /// @param number  how many of them take part
    signature(const BOOL_TRUTH_TABLE& table, std::size_t number);

    /// Whether a search may find that one function is the other with its inputs exchanged and,
    /// unless `exact`, complemented.
    bool fits(const signature& other, bool exact) const;
    /// The fewest inputs that must be complemented for it, as far as the counts tell.
    int least_complements(const signature& other) const;

    std::int64_t ones;
    std::vector<input_signature> inputs;
    std::vector<std::vector<symmetry>> symmetries; ///< of each pair of inputs
};

/// The ones of a column.
std::int64_t count_ones(const TRUTH_TABLE_VAL& column);

} // namespace basbdcells
