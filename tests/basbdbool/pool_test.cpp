/// The order in which the pool sees its blocks, against the definitions word by word.
#include "counting_pool.h"
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

using tree_oracle::count_paths;
using tree_oracle::path_counts;
using tree_oracle::random_tree;
using tree_oracle::signal;

namespace {

using owned = std::unique_ptr<BOOL_FUNC>;

bool is_operator(const BOOL_TNODE* node) { return node != nullptr && !basbd_is_leaf(*node); }

bool is_constant(const BOOL_TNODE& node)
{
    return node.op == BOOL_OP_ONE || node.op == BOOL_OP_ZERO;
}

BOOL_TNODE* copy(const BOOL_TNODE& src)
{
    auto* const node =
        new BOOL_TNODE(static_cast<char>(src.op), src.left, src.lcompl, src.right, src.rcompl);
    for (BOOL_TNODE** const child : {&node->left, &node->right}) {
        if (is_operator(&src) && *child != nullptr) {
            *child = copy(**child);
        }
    }
    return node;
}

/// Takes away the paths through a node, and frees a child with its last one.
void reclaim(BOOL_TNODE* node, path_counts& counts)
{
    --counts[node];
    for (BOOL_TNODE* const child : {node->left, node->right}) {
        if (is_operator(node) && child != nullptr) {
            reclaim(child, counts);
            if (counts[child] == 0) {
                delete child;
            }
        }
    }
}

/// @param kept  null, or a tree whose nodes stay
void free_tree(BOOL_TNODE* root, const BOOL_TNODE* kept = nullptr)
{
    path_counts counts;
    count_paths(root, counts);
    if (kept != nullptr) {
        count_paths(kept, counts);
    }
    reclaim(root, counts);
    delete root;
}

BOOL_TNODE* complement_if(unsigned char flag, BOOL_TNODE* node)
{
    if (flag != 0) {
        node->complsubtree();
    }
    return node;
}

BOOL_TNODE* reduce(BOOL_TNODE& n);

void reduce_child(BOOL_TNODE*& child, unsigned char& flag)
{
    BOOL_TNODE* const reduced = is_operator(child) ? reduce(*child) : child;
    if (reduced != child) {
        delete std::exchange(child, reduced);
        if (basbd_is_leaf(*reduced)) {
            flag ^= std::exchange(reduced->lcompl, static_cast<unsigned char>(0));
        }
    }
}

BOOL_TNODE* reduce(BOOL_TNODE& n)
{
    reduce_child(n.left, n.lcompl);
    reduce_child(n.right, n.rcompl);
    if (n.left == nullptr && n.right == nullptr) {
        n.op = BOOL_OP_ZERO;
        n.lcompl = n.rcompl = 0;
        return &n;
    }
    if (n.left == nullptr || n.right == nullptr) {
        return n.left == nullptr ? complement_if(n.rcompl, n.right)
                                 : complement_if(n.lcompl, n.left);
    }
    if (is_constant(*n.right)) {
        return n.trivialrchild();
    }
    if (is_constant(*n.left)) {
        return n.triviallchild();
    }
    const bool same =
        basbd_is_leaf(*n.left) && basbd_is_leaf(*n.right) && n.left->left == n.right->left;
    return same ? n.idempotency() : &n;
}

void delete_leaf_of(const TECHMAP_SIG* sig, BOOL_TNODE*& child)
{
    if (child != nullptr && basbd_is_leaf(*child) && basbd_leaf_signal(*child) == sig) {
        delete std::exchange(child, nullptr);
    }
}

void remove(const TECHMAP_SIG* sig, BOOL_TNODE* n)
{
    for (; is_operator(n); n = n->left) {
        remove(sig, n->right);
        delete_leaf_of(sig, n->right);
        delete_leaf_of(sig, n->left);
    }
}

/// Reduces a function's tree, and leaves no constant complemented.
void reduce_root(BOOL_FUNC& f)
{
    reduce_child(f.root, f.rootcompl);
    if (is_constant(*f.root)) {
        complement_if(std::exchange(f.rootcompl, static_cast<unsigned char>(0)), f.root);
    }
}

/// Gives a function the tree `tree`, reduced.
void replace(BOOL_FUNC& f, BOOL_TNODE* tree)
{
    free_tree(f.root);
    f.root = tree;
    reduce_root(f);
}

/// On a copy, as the library does for the sake of a pool that gives out.
void remove_from(BOOL_FUNC& f)
{
    if (basbd_is_leaf(*f.root) && basbd_leaf_signal(*f.root) == signal(0)) {
        replace(f, new BOOL_TNODE(BOOL_OP_ZERO));
        return;
    }
    BOOL_TNODE* const rest = copy(*f.root);
    remove(signal(0), rest);
    replace(f, rest);
}

/// Puts a leaf before the tree. @return the size of what is then behind the leaf
unsigned short lengthen(BOOL_FUNC& f)
{
    const auto size = static_cast<unsigned short>(f.root->countleaves());
    auto* const leaf = new BOOL_TNODE(BOOL_OP_SIG, signal(1));
    f.root = new BOOL_TNODE(BOOL_OP_AND, leaf, 1, f.root, 1);
    f.nsuppt = 0xFFFF;
    return size;
}

/// Detaches the right operand of the root, and frees the rest of the old tree last.
void break_off(BOOL_FUNC& f)
{
    BOOL_TNODE* const old = f.root;
    BOOL_TNODE* const part = std::exchange(old->right, nullptr);
    f.root = copy(*old);
    reduce_root(f);
    free_tree(old, part);
    free_tree(part);
}

const struct {
    void (*run)(owned& f);
    void (*definition)(owned& f);
} operations[] = {
    {[](owned& f) { BOOL_FUNC(f.get()); }, [](owned& f) { free_tree(copy(*f->root)); }},
    {[](owned& f) { f->setlogic0(); },
     [](owned& f) {
         auto* const zero = new BOOL_TNODE(BOOL_OP_ZERO);
         free_tree(std::exchange(f->root, zero));
         f->rootcompl = 0;
     }},
    {[](owned& f) { f->cleanbufs(); }, [](owned& f) { replace(*f, copy(*f->root)); }},
    {[](owned& f) { f->rmsigfromfunc(signal(0)); }, [](owned& f) { remove_from(*f); }},
    {[](owned& f) { delete f->breakfunc(lengthen(*f)); },
     [](owned& f) {
         lengthen(*f);
         break_off(*f);
     }},
    {[](owned& f) {
         f->root->unmarknodes();
         f->root->markusage();
         f->root->reclaim();
         delete std::exchange(f->root, nullptr);
     },
     [](owned& f) { free_tree(std::exchange(f->root, nullptr)); }},
};

/// @param result  becomes the shape of random function number `number` after an edit
/// @return what the pool saw of that
std::vector<long> events_of(void (*edit)(owned& f), unsigned number, std::string& result)
{
    std::vector<long> events;
    counting_pool::record(&events);
    std::mt19937 random(number);
    tree_oracle::tree_kind shapes;
    shapes.depth = 1 + number % 6;
    shapes.shared = number % 3 != 0;
    shapes.lone_right = number % 2 != 0;
    auto f = std::make_unique<BOOL_FUNC>();
    f->root = random_tree(random, shapes);
    f->rootcompl = number / 4 % 2;
    events.clear();
    edit(f);
    counting_pool::record(nullptr);
    result = tree_oracle::shape(*f);
    return events;
}

} // namespace

TEST(pool, sees_the_order_of_the_definitions)
{
    std::string result;
    std::string expected;
    for (unsigned number = 0; number < 2000; ++number) {
        for (const auto& operation : operations) {
            ASSERT_EQ(events_of(operation.run, number, result),
                      events_of(operation.definition, number, expected))
                << "function " << number << ", operation " << &operation - operations;
            ASSERT_EQ(result, expected);
        }
    }
}

TEST(pool, gives_a_substitution_nothing_but_what_stays)
{
    const auto substitute = [](owned& f) { f->root->subtreeforsig(signal(0), f->root, 0); };
    std::string result;
    for (unsigned number = 0; number < 100; ++number) {
        const std::vector<long> events = events_of(substitute, number, result);
        EXPECT_TRUE(std::all_of(events.begin(), events.end(), [&](long event) {
            return event > 0 || -event < events.front(); // a leaf from before the first copy
        }));
    }
    host_recorder::take_reports();
}
