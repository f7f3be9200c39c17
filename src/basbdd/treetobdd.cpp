#include "if_then_else.h"
#include "reports.h"

#include <unordered_map>

namespace basbdd {

namespace {

/// @brief Finds the variables of signals.
///
/// Scans the manager's signals while that is cheap. Once the call has turned out large, an index
/// of them all costs less than further scans.
class signal_lookup {
public:
    explicit signal_lookup(BDD_MANAGER& owner) : manager(owner) {}

    /// @return the first variable of the signal, `no_variable` when there is none
    unsigned short variable(TECHMAP_SIG* sig)
    {
        constexpr unsigned few = 64;
        if (manager.nvars <= few || ++lookups <= few || !has_index()) {
            return manager.sig2varid(sig);
        }
        const auto found = index.find(sig);
        return found == index.end() ? no_variable : found->second;
    }

private:
    /// Makes the index, if there is memory for it.
    bool has_index()
    try {
        if (index.empty()) {
            index.reserve(manager.nvars);
            for (unsigned short var = 0; var < manager.nvars; ++var) {
                index.emplace(manager.varsigs[var], var); // the first variable of a signal stays
            }
        }
        return true;
    } catch (const std::bad_alloc&) {
        index.clear();
        lookups = 0;
        return false;
    }

    BDD_MANAGER& manager;
    std::size_t lookups = 0;
    std::unordered_map<TECHMAP_SIG*, unsigned short> index;
};

/// @brief Converts an expression tree, left before right.
///
/// A signal without a variable makes every tree above it null; all further leaves are converted
/// all the same, so that each is reported, once for each path to it.
class conversion {
public:
    conversion(BDD_MANAGER& owner, const unsigned short* variables)
        : manager(owner), remap(variables), signals(owner), ite(owner)
    {
    }

    BDD_NODE* operator()(BOOL_TNODE* tree) { return solve(*this, tree); }

private:
    template <typename operation, typename problem>
    friend BDD_NODE* basbdd::solve(operation& op, problem next);

    /// An operator whose operands are being converted.
    struct frame {
        BOOL_TNODE* tree;
        BDD_NODE* left;
        bool left_is_known;

        bool first_is_known() const { return left_is_known; }
        void keep_first(BDD_NODE* result)
        {
            left = edge::complement_unless_null(result, tree->lcompl != 0);
            left_is_known = true;
        }
    };
    static constexpr bool null_ends_all = false;

    solution settle(BOOL_TNODE* tree);
    static BOOL_TNODE* first(const frame& each) { return each.tree->left; }
    static BOOL_TNODE* second(const frame& each) { return each.tree->right; }
    BDD_NODE* join(const frame& each, BDD_NODE* right);
    BDD_NODE* leaf(const BOOL_TNODE& tree);
    BDD_NODE* combine(char op, BDD_NODE* left, BDD_NODE* right);

    BDD_MANAGER& manager;
    const unsigned short* remap;
    signal_lookup signals;
    if_then_else ite;
    small_stack<frame> open;
    memo<node_key<BOOL_TNODE>> known;
};

/// Converts what needs no look at operands, or opens a frame for it. A right operand that is
/// missing has no result.
solution conversion::settle(BOOL_TNODE* tree)
{
    if (tree == nullptr) {
        return {true, nullptr};
    }
    if (basbd_is_leaf(*tree)) {
        return {true, leaf(*tree)};
    }
    if (tree->left == nullptr) {
        return {true, basbdd_zero};
    }
    if (BDD_NODE* const result = known.find({tree})) {
        return {true, result};
    }
    open.push({tree, nullptr, false});
    return {false, nullptr};
}

BDD_NODE* conversion::leaf(const BOOL_TNODE& tree)
{
    if (tree.op == BOOL_OP_ONE) {
        return basbdd_one;
    }
    if (tree.op == BOOL_OP_ZERO) {
        return basbdd_zero;
    }
    unsigned short var = signals.variable(basbd_leaf_signal(tree));
    if (remap != nullptr && var < manager.nvars) {
        var = remap[var];
    }
    if (var >= manager.nvars) {
        report(report_site::unknown_signal);
        return nullptr;
    }
    return variable_node(manager, var);
}

BDD_NODE* conversion::join(const frame& each, BDD_NODE* right)
{
    const BOOL_TNODE& tree = *each.tree;
    BDD_NODE* const result =
        tree.right == nullptr
            ? each.left
            : combine(tree.op, each.left, edge::complement_unless_null(right, tree.rcompl != 0));
    if (result != nullptr) {
        // A null result is not kept: the reports below it recur on every path.
        known.add({each.tree}, result);
    }
    return result;
}

/// The edge of an operator with both operands; null when one of them is.
BDD_NODE* conversion::combine(char op, BDD_NODE* left, BDD_NODE* right)
{
    const bool is_null = left == nullptr || right == nullptr;
    const auto solved = [&](const ite_triple& triple) {
        return with_memory_from([this] { known.give_back(); }, [&] { return ite(triple); });
    };
    switch (op) {
    case BOOL_OP_AND:
        return is_null ? nullptr : solved({left, right, basbdd_zero});
    case BOOL_OP_XOR:
        return is_null ? nullptr : solved({left, edge::complement(right), right});
    case BOOL_OP_OR:
        return is_null ? nullptr : solved({left, basbdd_one, right});
    default:
        report(report_site::unknown_operator);
        return nullptr;
    }
}

} // namespace
} // namespace basbdd

BDD_NODE* BOOL_TNODE::treetobdd(BDD_MANAGER* mgr, unsigned short* remap)
{
    return basbdd::conversion(*mgr, remap)(this);
}
