// Expression trees when memory or the node pool runs out.

#include "basbdbool.h"
#include "exhaustion.h"
#include "tree_oracle.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using tree_oracle::signal;

/// A function over a tree that leans both ways, and one built signal by signal.
struct TREES {
    explicit TREES(unsigned depth)
    {
        std::string shape = "aA";
        for (unsigned i = 1; i <= depth; ++i) {
            const std::string leaf{"bcdefgh"[i % 7], "BCDEFG"[i % 6]};
            const std::string tree = '~' + std::exchange(shape, std::string(1, "*@+"[i % 3]));
            shape.append("(").append(i % 2 == 0 ? tree : leaf).append(",");
            shape.append(i % 2 == 0 ? leaf : tree).append(")");
        }
        function->root = tree_oracle::parse_shape(shape.c_str());
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

const OPERATION<TREES> operations[] = {
    [](TREES& /*s*/) { delete new BOOL_TNODE(3, signal(0)); },
    [](TREES& s) { tree_oracle::FREE_TREE()(new BOOL_TNODE(s.function->root)); },
    [](TREES& s) { s.chain->root->addsig(signal(7), 1); },
    [](TREES& s) { s.function->root->subtreeforsig(signal(3), s.chain->root, 1); },
    [](TREES& s) { s.function->root->rmsigfromtree(signal(1)); },
    [](TREES& s) { s.function->root->reducetrivialsubtrees(); },
    [](TREES& s) { s.function->root->pushbubblestoleaves(1); },
    [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(BOOL_FUNC_OR, nullptr, BOOL_VAR_A); },
    [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(s.function.get()); },
    [](TREES& s) { s.function = nullptr; },
    [](TREES& s) { s.made->setfunctype(BOOL_FUNC_XOR); },
    [](TREES& s) { s.chain->addsigtofunc(signal(7), 1); },
    [](TREES& s) { s.function->setlogic1(); },
    [](TREES& s) { s.function->setlogic0(); },
    [](TREES& s) { s.function->buildcofactexpr(signal(0), signal(1), signal(2)); },
    [](TREES& s) { s.text = s.function->islogic1() || s.function->islogic0() ? "1" : "0"; },
    [](TREES& s) { s.text = std::to_string(s.function->countsupptunion(s.chain.get())); },
    [](TREES& s) { s.text = std::to_string(s.function->getpurefunc()); },
    [](TREES& s) { s.function->setsigto1(signal(2)), s.function->setsigto0(signal(3)); },
    [](TREES& s) { s.function->complsiginfunc(signal(1)); },
    [](TREES& s) { s.function->exchangexy(), s.function->setvarname(signal(2), BOOL_VAR_QX); },
    [](TREES& s) { s.function->subsig1forsig2(signal(20), signal(2)); },
    [](TREES& s) { s.function->substfnforsig(signal(3), s.chain.get()); },
    [](TREES& s) { s.function->rmsigfromfunc(signal(1)); },
    [](TREES& s) { s.function->cleanbufs(); },
    [](TREES& s) { s.made.reset(s.chain->breakfunc(2)); },
    [](TREES& s) { s.text = std::unique_ptr<char[]>(s.function->writeeqn()).get(); },
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
    exhaust(operations, 100U);
}

} // namespace
