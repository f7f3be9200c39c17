/// @file
/// @brief The if-then-else operator, from which every BDD is built.
#pragma once

#include "constants.h"
#include "memo.h"
#include "nodes.h"
#include "small_stack.h"
#include "walk.h"

namespace basbdd {

/// @brief The operands of f AND g OR NOT f AND h.
struct ite_triple {
    BDD_NODE* f;
    BDD_NODE* g;
    BDD_NODE* h;

    bool operator==(const ite_triple& other) const
    {
        return f == other.f && g == other.g && h == other.h;
    }
    /// Each operand has an odd multiplier of its own, so that exchanged operands hash differently.
    std::uint64_t hash() const
    {
        return edge::value(f) * golden_ratio + edge::value(g) * 0xC2B2AE3D27D4EB4FU +
               edge::value(h) * 0x165667B19E3779F9U;
    }
};

/// @brief Solves if-then-else problems of one manager, all with the same memo.
///
/// One object serves one call of a public operation. The method is that of Brace, Rudell and
/// Bryant, "Efficient Implementation of a BDD Package", 1990: standard triples, then the
/// cofactors for the top variable.
class if_then_else {
public:
    explicit if_then_else(const BDD_MANAGER& owner);

    /// @brief The edge of f AND g OR NOT f AND h.
    ///
    /// The operand that a constant f chooses; else null when an operand is null, and when the
    /// result needs a node for a variable that the manager does not have.
    BDD_NODE* operator()(const ite_triple& triple);

    /// @brief Frees memory that a call can do without.
    void give_back() { known.give_back(); }

private:
    template <typename operation, typename problem>
    friend BDD_NODE* solve(operation& op, problem next);

    /// A problem whose cofactors are being solved.
    struct frame {
        ite_triple triple;
        BDD_NODE* high;     ///< result for top = 1; null while that is being solved
        unsigned short top; ///< the top variable
        bool complemented;  ///< the triple's result is to be complemented

        bool first_is_known() const { return high != nullptr; }
        void keep_first(BDD_NODE* result) { high = result; }
    };
    static constexpr bool null_ends_all = true;

    ite_triple without_repeats(const ite_triple& triple) const;
    BDD_NODE* terminal_case(const ite_triple& triple) const;
    ite_triple standard(const ite_triple& triple) const;
    solution settle(const ite_triple& problem);
    static ite_triple first(const frame& each);
    static ite_triple second(const frame& each);
    BDD_NODE* join(const frame& each, BDD_NODE* low);
    BDD_NODE* node_of(unsigned short var, BDD_NODE* high, BDD_NODE* low);

    const BDD_MANAGER& manager;
    BDD_NODE* const one;
    BDD_NODE* const zero;
    small_stack<frame> open;
    memo<ite_triple> known;
};

} // namespace basbdd
