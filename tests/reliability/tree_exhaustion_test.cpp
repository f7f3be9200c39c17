// Expression trees when memory or the node pool runs out.

#include "basbdbool.h"
#include "exhaustion.h"
#include "tree_oracle.h"

#include <memory>
#include <vector>

namespace {

using tree_oracle::signal;

/// A function over a tree that leans both ways, and one built signal by signal.
template <unsigned DEPTH>
struct TREES {
    TREES()
    {
        function->root = new BOOL_TNODE(4, signal(0));
        for (unsigned i = 1; i <= DEPTH; ++i) {
            BOOL_TNODE* below = function->root;
            auto* leaf = new BOOL_TNODE(static_cast<char>(4 + i % 12), signal(i % 12));
            const auto op = static_cast<char>(i % 3);
            function->root = i % 2 == 0 ? new BOOL_TNODE(op, below, 1, leaf, 0)
                                        : new BOOL_TNODE(op, leaf, 0, below, 1);
        }
        function->nsuppt = function->countsuppt();
        for (unsigned i = 0; i < 6; ++i) {
            chain->addsigtofunc(signal(i), i % 2);
        }
    }

    std::string describe() const
    {
        std::string description = text;
        for (const auto* f : {function.get(), chain.get(), made.get()}) {
            description += f == nullptr ? "none" : tree_oracle::shape(f->root);
            description += f == nullptr ? "" : std::to_string(f->rootcompl * 100 + f->nsuppt);
        }
        return description;
    }

    using OWNED = std::unique_ptr<BOOL_FUNC>;
    OWNED function = std::make_unique<BOOL_FUNC>();
    OWNED chain = std::make_unique<BOOL_FUNC>(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    OWNED made = std::make_unique<BOOL_FUNC>();
    std::string text;

    static const exhaustion::OPERATION<TREES> operations[];
};

// clang-format off
template <unsigned DEPTH>
const exhaustion::OPERATION<TREES<DEPTH>> TREES<DEPTH>::operations[] = {
    OPERATION_OF(TREES, delete new BOOL_TNODE(3, signal(0))),
    OPERATION_OF(TREES, tree_oracle::FREE_TREE()(new BOOL_TNODE(s.function->root))),
    OPERATION_OF(TREES, s.chain->root->addsig(signal(7), 1)),
    OPERATION_OF(TREES, s.function->root->subtreeforsig(signal(3), s.chain->root, 1)),
    OPERATION_OF(TREES, s.function->root->rmsigfromtree(signal(1))),
    OPERATION_OF(TREES, s.function->root->reducetrivialsubtrees()),
    OPERATION_OF(TREES, s.function->root->pushbubblestoleaves(1)),
    OPERATION_OF(TREES, s.made = std::make_unique<BOOL_FUNC>(BOOL_FUNC_OR, nullptr, BOOL_VAR_A)),
    OPERATION_OF(TREES, s.made = std::make_unique<BOOL_FUNC>(s.function.get())),
    OPERATION_OF(TREES, s.function = nullptr),
    OPERATION_OF(TREES, s.made->setfunctype(BOOL_FUNC_XOR)),
    OPERATION_OF(TREES, s.chain->addsigtofunc(signal(7), 1)),
    OPERATION_OF(TREES, s.function->setlogic1()),
    OPERATION_OF(TREES, s.function->setlogic0()),
    OPERATION_OF(TREES, s.function->buildcofactexpr(signal(0), signal(1), signal(2))),
    OPERATION_OF(TREES, s.text = s.function->islogic1() ? "1" : "0"),
    OPERATION_OF(TREES, s.text = s.function->islogic0() ? "1" : "0"),
    OPERATION_OF(TREES, s.text = std::to_string(s.function->countsupptunion(s.chain.get()))),
    OPERATION_OF(TREES, s.text = std::to_string(s.function->getpurefunc())),
    OPERATION_OF(TREES, s.function->setvarname(signal(2), BOOL_VAR_QX)),
    OPERATION_OF(TREES, s.function->setsigto1(signal(2))),
    OPERATION_OF(TREES, s.function->setsigto0(signal(3))),
    OPERATION_OF(TREES, s.function->complsiginfunc(signal(1))),
    OPERATION_OF(TREES, s.function->exchangexy()),
    OPERATION_OF(TREES, s.function->subsig1forsig2(signal(20), signal(2))),
    OPERATION_OF(TREES, s.function->substfnforsig(signal(3), s.chain.get())),
    OPERATION_OF(TREES, s.function->rmsigfromfunc(signal(1))),
    OPERATION_OF(TREES, s.function->cleanbufs()),
    OPERATION_OF(TREES, s.made.reset(s.chain->breakfunc(2))),
    OPERATION_OF(TREES, s.text = std::unique_ptr<char[]>(s.function->writeeqn()).get()),
};
// clang-format on

template <typename SUBJECT>
class tree_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<TREES<3>, TREES<100>>;
TYPED_TEST_SUITE(tree_exhaustion, SUBJECTS);

/// The first function with names chooses the table for good, so this comes before all others.
TEST(name_table_exhaustion, is_chosen_once_it_is_complete)
{
    const std::string text = "a name that takes a block of its own";
    std::vector<const char*> names(BOOL_VAR_QY + 1, text.c_str());
    long live_before = 0;
    bool chosen = false;
    for (long at = 1; !chosen; ++at) {
        live_before = failing_heap::live_blocks();
        failing_heap::arm(at, failing_heap::FAIL::FROM_THERE);
        try {
            const BOOL_FUNC first(BOOL_FUNC_OR, names.data(), BOOL_VAR_QY);
            chosen = true;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(failing_heap::live_blocks(), live_before) << "allocation " << at;
        }
        failing_heap::disarm();
    }
    EXPECT_EQ(failing_heap::live_blocks(), live_before + BOOL_VAR_QY + 1) << "a copy of each name";
}

TYPED_TEST(tree_exhaustion, of_every_operation)
{
    for (const auto& operation : TypeParam::operations) {
        exhaustion::exhaust(operation);
    }
}

} // namespace
