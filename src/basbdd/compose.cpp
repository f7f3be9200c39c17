#include "if_then_else.h"

#include <optional>

namespace basbdd {

namespace {

/// @brief Puts g in place of a variable, from the top of f down.
class composition {
public:
    composition(const BDD_MANAGER& owner, unsigned short variable, BDD_NODE* function)
        : manager(owner), var(variable), g(function)
    {
    }

    BDD_NODE* operator()(BDD_NODE* f) { return solve(*this, f); }

private:
    template <typename operation, typename problem>
    friend BDD_NODE* basbdd::solve(operation& op, problem next);

    /// A node whose children are being solved.
    struct frame {
        BDD_NODE* node;
        BDD_NODE* high;    ///< result of the high edge; null while that is being solved
        bool complemented; ///< the node was reached by a marked edge

        bool first_is_known() const { return high != nullptr; }
        void keep_first(BDD_NODE* result) { high = result; }
    };
    static constexpr bool null_ends_all = true;

    solution settle(BDD_NODE* f);
    static BDD_NODE* first(const frame& each) { return each.node->high; }
    static BDD_NODE* second(const frame& each) { return each.node->low; }
    BDD_NODE* join(const frame& each, BDD_NODE* low);
    BDD_NODE* result_for(const frame& each, BDD_NODE* low);

    BDD_NODE* if_then_else_of(const ite_triple& triple)
    {
        if (!ite) {
            ite.emplace(manager);
        }
        return with_memory_from([this] { known.give_back(); }, [&] { return (*ite)(triple); });
    }

    void give_back()
    {
        known.give_back();
        if (ite) {
            ite->give_back();
        }
    }

    const BDD_MANAGER& manager;
    const unsigned short var;
    BDD_NODE* const g;
    std::optional<if_then_else> ite; ///< cofactors need none
    small_stack<frame> open;
    memo<node_key<BDD_NODE>> known;
};

/// Solves an edge that begins below the variable or at it, or whose node is known; else opens a
/// frame for it.
solution composition::settle(BDD_NODE* f)
{
    const unsigned short top = edge::variable(f);
    if (top > var || top == no_variable) {
        return {true, f};
    }
    if (top == var) {
        if (edge::node(g) == basbdd_one) { // a cofactor: most of what mappers ask for
            return {true, g == basbdd_one ? edge::high(f) : edge::low(f)};
        }
        // The variable does not occur below; what repeats is in the memo of the if-then-else.
        return {true, if_then_else_of({g, edge::high(f), edge::low(f)})};
    }
    if (BDD_NODE* const result = known.find({edge::node(f)})) {
        return {true, edge::complement_if(result, edge::is_marked(f))};
    }
    open.push({edge::node(f), nullptr, edge::is_marked(f)});
    return {false, nullptr};
}

/// The result for a node whose children's results are known; null when it needs a node for a
/// variable that the manager does not have.
BDD_NODE* composition::result_for(const frame& each, BDD_NODE* low)
{
    const unsigned short top = each.node->varid;
    if (each.high == low) {
        return low;
    }
    if (top >= manager.nvars) {
        return nullptr;
    }
    const bool unchanged = each.high == each.node->high && low == each.node->low;
    if (unchanged && var != no_variable) {
        return each.node; // no need to search for it
    }
    // With no variable to replace, every node is made anew: it may be one of another manager.
    if (top < edge::variable(each.high) && top < edge::variable(low)) {
        return with_memory_from([this] { give_back(); },
                                [&] { return make_node(manager, top, each.high, low); });
    }
    return if_then_else_of({variable_node(manager, top), each.high, low});
}

BDD_NODE* composition::join(const frame& each, BDD_NODE* low)
{
    BDD_NODE* const result = result_for(each, low);
    if (result == nullptr) {
        return nullptr;
    }
    known.add({each.node}, result);
    return edge::complement_if(result, each.complemented);
}

} // namespace
} // namespace basbdd

BDD_NODE* BDD_MANAGER::compose(BDD_NODE* f, unsigned short var, BDD_NODE* g)
{
    return f == nullptr ? nullptr : basbdd::composition(*this, var, g)(f);
}
