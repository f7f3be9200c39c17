// Expression trees when memory or the node pool runs out.

#include "basbdbool.h"
#include "exhaustion.h"
#include "tree_oracle.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using tree_oracle::signal;

/// A random function with shared nodes, and one built signal by signal.
struct TREES {
    explicit TREES(unsigned depth)
    {
        std::mt19937 random(depth);
        tree_oracle::SHAPES shapes;
        shapes.depth = depth;
        shapes.shared = true;
        function->root = tree_oracle::random_tree(random, shapes);
        function->nsuppt = function->countsuppt();
        for (unsigned i = 0; i < 6; ++i) {
            chain->addsigtofunc(signal(i), i % 2);
        }
    }

    std::string describe() const
    {
        std::string all = text;
        for (const auto* f : {function.get(), chain.get(), made.get()}) {
            all += f == nullptr ? "none" : tree_oracle::shape(*f) + std::to_string(f->nsuppt);
        }
        return all;
    }

    using OWNED = std::unique_ptr<BOOL_FUNC>;
    OWNED function = std::make_unique<BOOL_FUNC>();
    OWNED chain = std::make_unique<BOOL_FUNC>(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    OWNED made = std::make_unique<BOOL_FUNC>();
    std::string text;
};

/// Every operation that allocates.
const OPERATION<TREES> operations[] = {
    [](TREES& s) { s.made->root = new BOOL_TNODE(s.function->root); },
    [](TREES& s) { s.chain->root->addsig(signal(7), 1); },
    [](TREES& s) { s.function->root->subtreeforsig(signal(3), s.chain->root, 1); },
    [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(BOOL_FUNC_OR, nullptr, BOOL_VAR_A); },
    [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(s.function.get()); },
    [](TREES& s) { s.made->setfunctype(BOOL_FUNC_XOR); },
    [](TREES& s) { s.chain->addsigtofunc(signal(7), 1); },
    [](TREES& s) { s.function->setlogic1(); },
    [](TREES& s) { s.function->buildcofactexpr(signal(0), signal(1), signal(2)); },
    [](TREES& s) { s.text = std::to_string(s.function->getpurefunc()); },
    [](TREES& s) { s.function->substfnforsig(signal(3), s.chain.get()); },
    [](TREES& s) { s.function->rmsigfromfunc(signal(1)); },
    [](TREES& s) { s.function->cleanbufs(); },
    [](TREES& s) { s.made.reset(s.chain->breakfunc(2)); },
    [](TREES& s) { s.text = std::unique_ptr<char[]>(s.function->writeeqn()).get(); },
    [](TREES& s) { s.text = std::unique_ptr<char[]>(s.chain->writeeqn()).get(); }, // no names
};

/// The first function with names chooses the table for good, so this comes before all others.
TEST(name_table_exhaustion, is_chosen_once_it_is_complete)
{
    std::vector<const char*> names(BOOL_VAR_QY + 1, "a name in a block of its own");
    const long live_before = failing_heap::live_blocks();
    bool chosen = false;
    for (long at = 1; !chosen; ++at) {
        ASSERT_EQ(failing_heap::live_blocks(), live_before) << "allocation " << at - 1;
        failing_heap::arm(at, LONG_MAX);
        try {
            const BOOL_FUNC function(BOOL_FUNC_OR, names.data(), BOOL_VAR_QY);
            chosen = true;
        } catch (const std::bad_alloc&) {
        }
        failing_heap::disarm();
    }
    EXPECT_EQ(failing_heap::live_blocks(), live_before + BOOL_VAR_QY + 1) << "a copy of each name";
}

TEST(tree_exhaustion, of_every_operation)
{
    exhaust(operations, 3U);
    exhaust(operations, 9U);
}

} // namespace
