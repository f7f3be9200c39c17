/// The order in which the pool sees its blocks, against the definitions word by word.
#include "counting_pool.h"
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

using tree_oracle::random_tree;
using tree_oracle::signal;

namespace {

using owned = std::unique_ptr<BOOL_FUNC>;

BOOL_TNODE* copy(const BOOL_TNODE& src)
{
    auto* const node =
        new BOOL_TNODE(static_cast<char>(src.op), src.left, src.lcompl, src.right, src.rcompl);
    for (BOOL_TNODE** const child : {&node->left, &node->right}) {
        if (!basbd_is_leaf(src) && *child != nullptr) {
            *child = copy(**child);
        }
    }
    return node;
}

/// Takes 1 from `usage` for each path, and frees a child whose last one it was.
void reclaim(BOOL_TNODE* node)
{
    --node->usage;
    for (BOOL_TNODE* const child : {node->left, node->right}) {
        if (!basbd_is_leaf(*node) && child != nullptr) {
            reclaim(child);
            if (child->usage == 0) {
                delete child;
            }
        }
    }
}

void free_tree(BOOL_TNODE* root)
{
    root->unmarknodes();
    root->markusage();
    reclaim(root);
    delete root;
}

void clean(BOOL_FUNC& f)
{
    BOOL_TNODE* const cleaned = copy(*f.root);
    free_tree(f.root);
    f.root = cleaned;
    if (!basbd_is_leaf(*cleaned)) {
        f.root = cleaned->reducetrivialsubtrees();
    }
    if (f.root != cleaned) {
        delete cleaned;
    }
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
     }},
    {[](owned& f) { f->cleanbufs(); }, [](owned& f) { clean(*f); }},
    {[](owned& f) {
         f->root->unmarknodes();
         f->root->markusage();
         f->root->reclaim();
         delete std::exchange(f->root, nullptr);
     },
     [](owned& f) { free_tree(std::exchange(f->root, nullptr)); }},
};

/// What the pool sees of an edit of random function number `number`.
std::vector<long> events_of(void (*edit)(owned& f), unsigned number)
{
    std::vector<long> events;
    counting_pool::record(&events);
    std::mt19937 random(number);
    tree_oracle::tree_kind shapes;
    shapes.depth = 1 + number % 6;
    shapes.shared = number % 3 != 0;
    auto f = std::make_unique<BOOL_FUNC>();
    f->root = random_tree(random, shapes);
    events.clear();
    edit(f);
    counting_pool::record(nullptr);
    return events;
}

} // namespace

TEST(pool, sees_the_order_of_the_definitions)
{
    for (unsigned number = 0; number < 2000; ++number) {
        for (const auto& operation : operations) {
            ASSERT_EQ(events_of(operation.run, number), events_of(operation.definition, number))
                << "function " << number << ", operation " << &operation - operations;
        }
    }
}

TEST(pool, gives_a_substitution_nothing_but_what_stays)
{
    const auto substitute = [](owned& f) { f->root->subtreeforsig(signal(0), f->root, 0); };
    for (unsigned number = 0; number < 100; ++number) {
        const std::vector<long> events = events_of(substitute, number);
        EXPECT_TRUE(std::all_of(events.begin(), events.end(), [&](long event) {
            return event > 0 || -event < events.front(); // a leaf from before the first copy
        }));
    }
    host_recorder::take_reports();
}
