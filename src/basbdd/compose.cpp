#include "basbdd.h"
#include "constants.h"
#include "ite.h"

namespace {

/// @brief Puts g in place of a variable, from the top of f down.
class COMPOSE {
public:
    COMPOSE(const BDD_MANAGER& manager, unsigned short var, BDD_NODE* g)
        : manager_(manager), var_(var), g_(g), ite_(manager)
    {
    }

    BDD_NODE* solve(BDD_NODE* f);

private:
    /// A node whose children are being solved.
    struct FRAME {
        BDD_NODE* node;
        BDD_NODE* high;    ///< result of the high edge; null while that is being solved
        bool complemented; ///< the node was reached by a marked edge
    };
    using KEY = basbdd::node_key<BDD_NODE>;

    bool settle(BDD_NODE* f, BDD_NODE*& result);
    BDD_NODE* join(const FRAME& frame, BDD_NODE* low);

    const BDD_MANAGER& manager_;
    const unsigned short var_;
    BDD_NODE* const g_;
    ITE ite_;
    SMALL_STACK<FRAME> stack_;
    basbdd::memo<KEY> memo_;
};

/// @brief Solves an edge that needs no descent: f begins below the variable or has it at the top,
/// or its node is known.
/// @return whether `result` holds the result, which may be null
bool COMPOSE::settle(BDD_NODE* f, BDD_NODE*& result)
{
    const unsigned short top = edge::variable(f);
    if (top > var_ || top == no_variable) {
        result = f;
        return true;
    }
    if (top == var_) {
        if (edge::node(g_) == basbdd_one) { // a cofactor: most of what mappers ask for
            result = g_ == basbdd_one ? edge::high(f) : edge::low(f);
            return true;
        }
        // The variable does not occur below; what repeats is in the memo of the if-then-else.
        result = ite_.solve({g_, edge::high(f), edge::low(f)});
        return true;
    }
    BDD_NODE* const known = memo_.find({edge::node(f)});
    result = edge::complement_unless_null(known, edge::is_marked(f));
    return known != nullptr;
}

/// The result for a node whose children's results are known; null when it needs a node for a
/// variable that the manager does not have. Where no node has the variable, every node is made
/// again, for it may be one of another manager.
BDD_NODE* COMPOSE::join(const FRAME& frame, BDD_NODE* low)
{
    const unsigned short var = frame.node->varid;
    BDD_NODE* result = nullptr;
    if (frame.high == low) {
        result = low;
    } else if (frame.high == frame.node->high && low == frame.node->low && var < manager_.nvars &&
               var_ != no_variable) {
        result = frame.node; // nothing has changed below: no need to search for it
    } else if (var < edge::variable(frame.high) && var < edge::variable(low)) {
        result = ite_.make(var, frame.high, low);
    } else if (var < manager_.nvars) {
        BDD_NODE* const x = manager_.table->findoradd(var, basbdd_one, basbdd_zero);
        result = ite_.solve({x, frame.high, low});
    }
    if (result == nullptr) {
        return nullptr;
    }
    memo_.add({frame.node}, result);
    return edge::complement_if(result, frame.complemented);
}

BDD_NODE* COMPOSE::solve(BDD_NODE* f)
{
    for (;;) {
        BDD_NODE* result = nullptr;
        if (!settle(f, result)) {
            stack_.push({edge::node(f), nullptr, edge::is_marked(f)});
            f = edge::node(f)->high;
            continue;
        }
        while (result != nullptr && !stack_.empty() && stack_.top().high != nullptr) {
            result = join(stack_.top(), result);
            stack_.pop();
        }
        if (result == nullptr || stack_.empty()) {
            return result;
        }
        stack_.top().high = result;
        f = stack_.top().node->low;
    }
}

} // namespace

BDD_NODE* BDD_MANAGER::compose(BDD_NODE* f, unsigned short var, BDD_NODE* g)
{
    return f == nullptr ? nullptr : COMPOSE(*this, var, g).solve(f);
}
