#include "node.h"
#include "tree_path.h"
#include "ut_fastmem.h"

#include <utility>

namespace basbdbool {

namespace {

/// Set in `lcompl` of the nodes that a walk has been to; never outside of such a walk.
constexpr unsigned char been_here = 0x80;

bool is_marked(const BOOL_TNODE& node) { return (node.lcompl & been_here) != 0; }

/// Marks every node that is not marked, and calls `visit` for it.
template <typename visitor>
void mark_tree(BOOL_TNODE* root, visitor visit)
{
    visit_nodes(root, [&](BOOL_TNODE& node) {
        if (is_marked(node)) {
            return step::past;
        }
        visit(node);
        node.lcompl |= been_here;
        return basbd_is_leaf(node) ? step::past : step::below;
    });
}

void clear_marks(BOOL_TNODE* root)
{
    visit_nodes(root, [](BOOL_TNODE& node) {
        if (!is_marked(node)) {
            return step::past;
        }
        node.lcompl &= static_cast<unsigned char>(~been_here);
        return basbd_is_leaf(node) ? step::past : step::below;
    });
}

/// @brief Nodes of a dying tree, each found once however many paths lead to it.
///
/// A node goes back to the pool at the last path to it, children before their parent: the reverse
/// of the order in which a walk that takes right operands first finds them. None goes back before
/// all are found, for another path may lead to it.
///
/// A node that was found has the one found before it in `right`. While it waits for its right
/// child to be dealt with, it keeps its left child; the one that waited before it is the one found
/// before it (`usage` 1), or stands in the free `left` of that one (`usage` 0).
class dying_nodes {
public:
    void find_all(BOOL_TNODE* root)
    {
        BOOL_TNODE* node = find(root);
        while (node != nullptr) {
            BOOL_TNODE* const next = enter(node);
            node = next != nullptr ? next : next_waiting();
        }
    }

    void free_all()
    {
        UT_FASTMEM& pool = *BOOL_TNODE::fstmem;
        while (last != nullptr) {
            pool.free(std::exchange(last, last->right));
        }
    }

private:
    /// Adds a leaf, unless it is found already. @return an operator that is not, or null
    BOOL_TNODE* find(BOOL_TNODE* child)
    {
        if (child == nullptr || is_marked(*child)) {
            return nullptr;
        }
        if (!basbd_is_leaf(*child)) {
            return child;
        }
        add(child);
        return nullptr;
    }

    void add(BOOL_TNODE* node)
    {
        node->lcompl = been_here;
        node->right = std::exchange(last, node);
    }

    /// Adds an operator. @return where to go on below it, or null
    BOOL_TNODE* enter(BOOL_TNODE* node)
    {
        BOOL_TNODE* const before = last;
        BOOL_TNODE* const right_child = node->right;
        add(node);
        BOOL_TNODE* const right = find(right_child);
        if (right == nullptr) {
            return find(node->left);
        }
        node->usage = before == waiting ? 1 : 0;
        if (before != waiting) {
            before->left = waiting;
        }
        waiting = node;
        return right;
    }

    /// The next left child that waits and is an operator not yet found, or null.
    BOOL_TNODE* next_waiting()
    {
        BOOL_TNODE* next = nullptr;
        while (next == nullptr && waiting != nullptr) {
            BOOL_TNODE* const node = waiting;
            waiting = node->usage != 0 ? node->right : node->right->left;
            next = find(node->left);
        }
        return next;
    }

    BOOL_TNODE* last = nullptr;
    BOOL_TNODE* waiting = nullptr;
};

/// @brief Whether a tree is what adding signals builds: operators in a row to the right, each with
/// a leaf on its left, none of them marked and none twice. Marks the leaves that it has looked at.
/// @param end  where the row ends: a leaf, null, or where the answer was found to be no
bool is_unshared_chain(BOOL_TNODE* root, BOOL_TNODE*& end)
{
    for (end = root; is_operator(end); end = end->right) {
        BOOL_TNODE* const left = end->left;
        if (left == nullptr || !basbd_is_leaf(*left) || is_marked(*left) || is_marked(*end)) {
            return false;
        }
        left->lcompl |= been_here;
    }
    return end == nullptr || !is_marked(*end);
}

/// Frees such a tree: the left leaves on the way down, the operators on the way back.
void free_chain(BOOL_TNODE* root)
{
    UT_FASTMEM& pool = *BOOL_TNODE::fstmem;
    BOOL_TNODE* above = nullptr;
    BOOL_TNODE* node = root;
    while (is_operator(node)) {
        pool.free(node->left);
        node->left = std::exchange(above, node);
        node = above->right;
    }
    if (node != nullptr) {
        pool.free(node);
    }
    while (above != nullptr) {
        pool.free(std::exchange(above, above->left));
    }
}

/// Out of line, so that freeing a chain does not save registers for it.
[[gnu::noinline]] void free_branched_tree(BOOL_TNODE* root)
{
    dying_nodes dying;
    dying.find_all(root);
    dying.free_all();
}

} // namespace

void unmark_tree(BOOL_TNODE* root) noexcept
{
    // `usage` itself cannot tell where the walk has been, for it may hold anything.
    mark_tree(root, [](BOOL_TNODE& node) { node.usage = 0; });
    clear_marks(root);
}

void free_tree(BOOL_TNODE* root, BOOL_TNODE* kept) noexcept
{
    if (kept != nullptr) {
        mark_tree(kept, [](BOOL_TNODE& /*node*/) {});
    }
    BOOL_TNODE* end = nullptr;
    if (is_unshared_chain(root, end)) {
        free_chain(root);
    } else {
        for (BOOL_TNODE* node = root; node != end; node = node->right) {
            node->left->lcompl &= static_cast<unsigned char>(~been_here);
        }
        free_branched_tree(root);
    }
    if (kept != nullptr) {
        clear_marks(kept);
    }
}

} // namespace basbdbool

using namespace basbdbool;

void BOOL_TNODE::unmarknodes() { unmark_tree(this); }

void BOOL_TNODE::markusage()
{
    visit_nodes(this, [](BOOL_TNODE& node) {
        ++node.usage;
        return basbd_is_leaf(node) ? step::past : step::below;
    });
}

void BOOL_TNODE::reclaim()
{
    UT_FASTMEM& pool = *fstmem;
    const auto free_unused = [&](BOOL_TNODE* child, unsigned char /*flag*/) {
        if (child->usage == 0) {
            pool.free(child);
        }
    };
    --usage;
    if (basbd_is_leaf(*this)) {
        return;
    }
    walk_edges(
        this,
        [&](BOOL_TNODE* child, unsigned char flag) {
            if (child == nullptr) {
                return step::past;
            }
            --child->usage;
            if (!basbd_is_leaf(*child)) {
                return step::below;
            }
            free_unused(child, flag);
            return step::past;
        },
        on_edge(free_unused));
}
