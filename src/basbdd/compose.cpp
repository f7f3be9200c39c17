#include "basbdd.h"
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
    using KEY = NODE_KEY<BDD_NODE>;

    BDD_NODE* settle(BDD_NODE* f);
    BDD_NODE* join(const FRAME& frame, BDD_NODE* low);

    const BDD_MANAGER& manager_;
    const unsigned short var_;
    BDD_NODE* const g_;
    ITE ite_;
    SMALL_STACK<FRAME> stack_;
    MEMO<KEY> memo_;
};

/// The result where no descent is needed: f ends above the variable, or its node is known.
BDD_NODE* COMPOSE::settle(BDD_NODE* f)
{
    if (edge::variable(f) > var_) {
        return f;
    }
    BDD_NODE* const known = memo_.find({edge::node(f)});
    return known == nullptr ? nullptr : edge::complement_if(known, edge::is_marked(f));
}

/// The result for a node whose children's results are known; null stays null.
BDD_NODE* COMPOSE::join(const FRAME& frame, BDD_NODE* low)
{
    const unsigned short var = frame.node->varid;
    BDD_NODE* result = nullptr;
    if (var == var_) {
        result = ite_.solve({g_, frame.high, low});
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
        BDD_NODE* result = settle(f);
        if (result == nullptr) {
            stack_.push({edge::node(f), nullptr, edge::is_marked(f)});
            f = edge::node(f)->high;
            continue;
        }
        while (!stack_.empty() && stack_.top().high != nullptr) {
            result = join(stack_.top(), result);
            if (result == nullptr) {
                return nullptr;
            }
            stack_.pop();
        }
        if (stack_.empty()) {
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
