#include "support.h"

#include "basbdd.h"
#include "constants.h"
#include "edge.h"
#include "memo.h"
#include "small_stack.h"

#include <algorithm>

namespace {

/// @brief A sorted list of variables in the caller's array.
class VARIABLE_LIST {
public:
    VARIABLE_LIST(unsigned short* begin, unsigned capacity)
        : begin_(begin), end_(begin), limit_(begin + capacity)
    {
        while (end_ != limit_ && *end_ != no_variable) {
            ++end_;
        }
    }

    unsigned size() const { return static_cast<unsigned>(end_ - begin_); }

    void insert(unsigned short var)
    {
        unsigned short* const place = std::lower_bound(begin_, end_, var);
        if ((place != end_ && *place == var) || place == limit_) {
            return;
        }
        if (end_ != limit_) {
            ++end_;
        }
        std::copy_backward(place, end_ - 1, end_);
        *place = var;
    }

private:
    unsigned short* begin_;
    unsigned short* end_; ///< behind the last index
    unsigned short* limit_;
};

} // namespace

unsigned collect_support(BDD_NODE* node, unsigned short* list, unsigned capacity)
{
    VARIABLE_LIST variables(list, capacity);
    basbdd::memo<basbdd::node_key<BDD_NODE>> visited;
    SMALL_STACK<BDD_NODE*> waiting;
    waiting.push(node);
    while (!waiting.empty()) {
        BDD_NODE* const next = edge::node(waiting.top());
        waiting.pop();
        if (next == nullptr || next->varid == no_variable || visited.find({next}) != nullptr) {
            continue;
        }
        visited.add({next}, next);
        variables.insert(next->varid);
        waiting.push(next->low);
        waiting.push(next->high);
    }
    return variables.size();
}

void BDD_NODE::adduniqueidx(unsigned short* list) { collect_support(this, list, no_variable); }
