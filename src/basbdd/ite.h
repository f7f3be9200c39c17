/// @file
/// @brief The if-then-else operator, from which every BDD is built.
#pragma once

#include "edge.h"
#include "memo.h"
#include "small_stack.h"

class BDD_MANAGER;

/// @brief The operands of f AND g OR NOT f AND h.
struct ITE_TRIPLE {
    BDD_NODE* f;
    BDD_NODE* g;
    BDD_NODE* h;

    bool operator==(const ITE_TRIPLE& other) const
    {
        return f == other.f && g == other.g && h == other.h;
    }
    std::uint64_t hash() const
    {
        return edge::value(f) * 0x9E3779B97F4A7C15U + edge::value(g) * 0xC2B2AE3D27D4EB4FU +
               edge::value(h) * 0x165667B19E3779F9U;
    }
};

/// @brief Solves if-then-else problems of one manager, all with the same memo.
///
/// One object serves one call of a public operation. The method is that of Brace, Rudell and
/// Bryant, "Efficient Implementation of a BDD Package", 1990: standard triples, then the
/// cofactors for the top variable.
class ITE {
public:
    explicit ITE(const BDD_MANAGER& manager);

    /// @brief The edge of f AND g OR NOT f AND h.
    ///
    /// The operand that a constant f chooses; else null when an operand is null, and when the
    /// result needs a node for a variable that the manager does not have.
    BDD_NODE* solve(ITE_TRIPLE triple);

    /// @brief The edge of the function that is `high` where variable `var` is 1, else `low`.
    ///
    /// Takes what `high` is marked with out of the node, so that a stored high edge is unmarked.
    /// @param var   above the variables of both edges
    /// @param high  an edge, marked or not, as is `low`
    /// @param low   when it equals `high`, that is the result
    /// @return null when a node is needed and the manager does not have the variable
    BDD_NODE* make(unsigned short var, BDD_NODE* high, BDD_NODE* low);

private:
    /// A problem whose cofactors are being solved.
    struct FRAME {
        ITE_TRIPLE triple;
        BDD_NODE* high;     ///< result for top = 1; null while that is being solved
        unsigned short top; ///< the top variable
        bool complemented;  ///< the triple's result is to be complemented
    };

    BDD_NODE* terminal_case(ITE_TRIPLE& triple) const;
    bool settle(FRAME& frame, BDD_NODE*& result);
    bool resume(BDD_NODE*& result, ITE_TRIPLE& next);

    const BDD_MANAGER& manager_;
    BDD_NODE* const one_;
    BDD_NODE* const zero_;
    SMALL_STACK<FRAME> stack_;
    basbdd::memo<ITE_TRIPLE> memo_;
};
