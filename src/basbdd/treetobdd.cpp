#include "basbdd.h"
#include "constants.h"
#include "ite.h"
#include "reports.h"

#include <unordered_map>

namespace {

/// @brief Finds the variables of signals.
///
/// Scans the manager's signals while that is cheap. Once the call has turned out large, an index
/// of them all costs less than further scans.
class SIGNAL_LOOKUP {
public:
    explicit SIGNAL_LOOKUP(BDD_MANAGER& manager) : manager_(manager) {}

    /// @return the first variable of the signal, `no_variable` when there is none
    unsigned short variable(TECHMAP_SIG* sig)
    {
        constexpr unsigned few = 64;
        if (manager_.nvars <= few || ++lookups_ <= few) {
            return manager_.sig2varid(sig);
        }
        if (index_.empty()) {
            fill_index();
        }
        const auto found = index_.find(sig);
        return found == index_.end() ? no_variable : found->second;
    }

private:
    void fill_index()
    {
        index_.reserve(manager_.nvars);
        for (unsigned short var = 0; var < manager_.nvars; ++var) {
            index_.emplace(manager_.varsigs[var], var); // the first variable of a signal stays
        }
    }

    BDD_MANAGER& manager_;
    std::size_t lookups_ = 0;
    std::unordered_map<TECHMAP_SIG*, unsigned short> index_;
};

/// @brief Converts an expression tree, left before right.
///
/// A signal without a variable makes every tree above it null; all further leaves are converted
/// all the same, so that each is reported, once for each path to it.
class CONVERSION {
public:
    CONVERSION(BDD_MANAGER& manager, const unsigned short* remap)
        : manager_(manager), remap_(remap), signals_(manager), ite_(manager)
    {
    }

    BDD_NODE* convert(BOOL_TNODE* tree);

private:
    /// An operator whose operands are being converted.
    struct FRAME {
        BOOL_TNODE* tree;
        BDD_NODE* left;
        bool left_is_known;
    };
    using KEY = basbdd::node_key<BOOL_TNODE>;

    bool settle(BOOL_TNODE* tree, BDD_NODE*& result);
    BDD_NODE* leaf(const BOOL_TNODE& tree);
    BDD_NODE* join(const BOOL_TNODE& tree, BDD_NODE* left, BDD_NODE* right);

    BDD_MANAGER& manager_;
    const unsigned short* remap_;
    SIGNAL_LOOKUP signals_;
    ITE ite_;
    SMALL_STACK<FRAME> stack_;
    basbdd::memo<KEY> memo_;
};

BDD_NODE* CONVERSION::leaf(const BOOL_TNODE& tree)
{
    if (tree.op == BOOL_OP_ONE) {
        return basbdd_one;
    }
    if (tree.op == BOOL_OP_ZERO) {
        return basbdd_zero;
    }
    unsigned short var = signals_.variable(basbd_leaf_signal(tree));
    if (remap_ != nullptr && var < manager_.nvars) {
        var = remap_[var];
    }
    if (var >= manager_.nvars) {
        report(BDD_REPORT::UNKNOWN_SIGNAL);
        return nullptr;
    }
    return manager_.table->findoradd(var, basbdd_one, basbdd_zero);
}

/// Whether `result` holds the edge of the tree, which may be null, without a look at operands.
bool CONVERSION::settle(BOOL_TNODE* tree, BDD_NODE*& result)
{
    if (basbd_is_leaf(*tree)) {
        result = leaf(*tree);
        return true;
    }
    if (tree->left == nullptr) {
        result = basbdd_zero;
        return true;
    }
    result = memo_.find({tree});
    return result != nullptr;
}

/// The edge of an operator with both operands; null when one of them is.
BDD_NODE* CONVERSION::join(const BOOL_TNODE& tree, BDD_NODE* left, BDD_NODE* right)
{
    const bool is_null = left == nullptr || right == nullptr;
    switch (tree.op) {
    case BOOL_OP_AND:
        return is_null ? nullptr : ite_.solve({left, right, basbdd_zero});
    case BOOL_OP_XOR:
        return is_null ? nullptr : ite_.solve({left, edge::complement(right), right});
    case BOOL_OP_OR:
        return is_null ? nullptr : ite_.solve({left, basbdd_one, right});
    default:
        report(BDD_REPORT::UNKNOWN_OPERATOR);
        return nullptr;
    }
}

BDD_NODE* CONVERSION::convert(BOOL_TNODE* tree)
{
    for (;;) {
        BDD_NODE* result = nullptr;
        if (!settle(tree, result)) {
            stack_.push({tree, nullptr, false});
            tree = tree->left;
            continue;
        }
        while (!stack_.empty()) {
            FRAME& frame = stack_.top();
            if (!frame.left_is_known) {
                result = edge::complement_unless_null(result, frame.tree->lcompl != 0);
                if (frame.tree->right != nullptr) {
                    break;
                }
            } else {
                result = join(*frame.tree, frame.left,
                              edge::complement_unless_null(result, frame.tree->rcompl != 0));
            }
            if (result != nullptr) {
                // A null result is not kept: the reports below it recur on every path.
                memo_.add({frame.tree}, result);
            }
            stack_.pop();
        }
        if (stack_.empty()) {
            return result;
        }
        FRAME& frame = stack_.top();
        frame.left = result;
        frame.left_is_known = true;
        tree = frame.tree->right;
    }
}

} // namespace

BDD_NODE* BOOL_TNODE::treetobdd(BDD_MANAGER* mgr, unsigned short* remap)
{
    return CONVERSION(*mgr, remap).convert(this);
}
