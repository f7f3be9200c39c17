#include "node.h"
#include "tree_path.h"
#include "ut_fastmem.h"

#include <utility>

namespace {

/// Set in `lcompl` of the nodes that a walk has been to; never outside of such a walk.
constexpr unsigned char been_here = 0x80;

bool is_marked(const BOOL_TNODE& node) { return (node.lcompl & been_here) != 0; }

/// Marks every node that is not marked, and calls `visit` for it.
template <typename VISIT>
void mark_tree(BOOL_TNODE* root, VISIT visit)
{
    visit_nodes(root, [&](BOOL_TNODE& node) {
        if (is_marked(node)) {
            return WALK::PAST;
        }
        visit(node);
        node.lcompl |= been_here;
        return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
    });
}

void clear_marks(BOOL_TNODE* root)
{
    visit_nodes(root, [](BOOL_TNODE& node) {
        if (!is_marked(node)) {
            return WALK::PAST;
        }
        node.lcompl &= static_cast<unsigned char>(~been_here);
        return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
    });
}

/// @brief Nodes of a dying tree, each found once however many paths lead to it.
///
/// None may go back to the pool before the end, for another path may lead to it.
class DYING_NODES {
public:
    /// Whether no path has led to this node before.
    static bool find(BOOL_TNODE* node)
    {
        if (is_marked(*node)) {
            return false;
        }
        node->lcompl = been_here;
        return true;
    }

    /// Takes a node whose children are no longer needed.
    void add(BOOL_TNODE* node) { node->left = std::exchange(last, node); }

    /// The left operand of an operator, unless it is missing or a leaf, which is taken at once: it
    /// is the most frequent operand.
    BOOL_TNODE* left_to_visit(const BOOL_TNODE& node)
    {
        if (is_operator(node.left)) {
            return node.left;
        }
        if (node.left != nullptr && find(node.left)) {
            add(node.left);
        }
        return nullptr;
    }

    void free_all()
    {
        UT_FASTMEM& pool = *BOOL_TNODE::fstmem;
        while (last != nullptr) {
            pool.free(std::exchange(last, last->left));
        }
    }

private:
    BOOL_TNODE* last = nullptr; ///< the others follow by `left`
};

} // namespace

void unmark_tree(BOOL_TNODE* root) noexcept
{
    // `usage` itself cannot tell where the walk has been, for it may hold anything.
    mark_tree(root, [](BOOL_TNODE& node) { node.usage = 0; });
    clear_marks(root);
}

void BOOL_TNODE::unmarknodes() { unmark_tree(this); }

void BOOL_TNODE::markusage()
{
    visit_nodes(this, [](BOOL_TNODE& node) {
        ++node.usage;
        return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
    });
}

void BOOL_TNODE::reclaim()
{
    UT_FASTMEM& pool = *fstmem;
    visit_nodes(
        this,
        [](BOOL_TNODE& node) {
            --node.usage;
            return basbd_is_leaf(node) ? WALK::PAST : WALK::BELOW;
        },
        [&](BOOL_TNODE* child) {
            if (child->usage == 0) {
                pool.free(child);
            }
        });
}

void free_tree(BOOL_TNODE* root, BOOL_TNODE* kept) noexcept
{
    if (kept != nullptr) {
        mark_tree(kept, [](BOOL_TNODE& /*node*/) {});
    }
    DYING_NODES dying;
    BOOL_TNODE* unfinished = nullptr; // with a right child still to come, linked by `left`
    for (BOOL_TNODE* node = root; node != nullptr;) {
        BOOL_TNODE* next = nullptr;
        if (DYING_NODES::find(node)) {
            BOOL_TNODE* const left = basbd_is_leaf(*node) ? nullptr : dying.left_to_visit(*node);
            next = left != nullptr ? left : node->right;
            if (left != nullptr && node->right != nullptr) {
                node->left = std::exchange(unfinished, node);
            } else {
                dying.add(node);
            }
        }
        if (next == nullptr && unfinished != nullptr) {
            BOOL_TNODE* const parent = std::exchange(unfinished, unfinished->left);
            next = parent->right;
            dying.add(parent);
        }
        node = next;
    }
    dying.free_all();
    if (kept != nullptr) {
        clear_marks(kept);
    }
}
