#include "support.h"

#include "constants.h"
#include "memo.h"
#include "nodes.h"
#include "small_stack.h"

#include <algorithm>

namespace basbdd {

namespace {

/// @brief A sorted list of variables in the caller's array.
class variable_list {
public:
    variable_list(unsigned short* begin, unsigned capacity)
        : first(begin), end(begin), limit(begin + capacity)
    {
        while (end != limit && *end != no_variable) {
            ++end;
        }
    }

    unsigned size() const { return static_cast<unsigned>(end - first); }

    void insert(unsigned short var)
    {
        unsigned short* const place = std::lower_bound(first, end, var);
        if ((place != end && *place == var) || place == limit) {
            return;
        }
        if (end != limit) { // else the largest is overwritten
            ++end;
        }
        std::copy_backward(place, end - 1, end);
        *place = var;
    }

private:
    unsigned short* first;
    unsigned short* end; ///< behind the last index
    unsigned short* limit;
};

} // namespace

unsigned collect_support(BDD_NODE* node, unsigned short* list, unsigned capacity)
{
    variable_list variables(list, capacity);
    memo<node_key<BDD_NODE>> visited;
    small_stack<BDD_NODE*> waiting;
    waiting.push(node);
    while (!waiting.empty()) {
        BDD_NODE* const next = edge::node(waiting.top());
        waiting.pop();
        if (next == nullptr || next->varid == no_variable || visited.find({next}) != nullptr) {
            continue;
        }
        visited.add_for_good({next}, next);
        variables.insert(next->varid);
        waiting.push(next->low);
        waiting.push(next->high);
    }
    return variables.size();
}

} // namespace basbdd

void BDD_NODE::adduniqueidx(unsigned short* list)
{
    basbdd::collect_support(this, list, basbdd::no_variable);
}
