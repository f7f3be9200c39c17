// Expression trees when memory or the node pool runs out.

#include "basbdbool.h"
#include "exhaustion.h"
#include "tree_oracle.h"

#include <memory>
#include <vector>

namespace {

using tree_oracle::shape;
using tree_oracle::signal;

constexpr unsigned signals = 12;

/// A function over a tree that leans both ways, one built signal by signal, and results.
template <unsigned DEPTH>
class TREES {
public:
    TREES()
    {
        function->root = leaf(0);
        for (unsigned i = 1; i <= DEPTH; ++i) {
            BOOL_TNODE* below = function->root;
            const auto op = static_cast<char>(i % 3);
            const auto flag = static_cast<unsigned char>(i / 2 % 2);
            function->root = i % 2 == 0 ? new BOOL_TNODE(op, below, flag, leaf(i), 0)
                                        : new BOOL_TNODE(op, leaf(i), 0, below, flag);
        }
        function->rootcompl = 1;
        function->nsuppt = function->countsuppt();
        for (unsigned i = 0; i < 6; ++i) {
            chain->addsigtofunc(signal(i), i % 2);
            chain->setvarname(signal(i), static_cast<BOOL_VARNAME>(i));
        }
    }

    std::string describe() const
    {
        return describe(function) + describe(chain) + describe(made) + text;
    }

    BOOL_TNODE* root() { return function->root; }

    std::unique_ptr<BOOL_FUNC> function = std::make_unique<BOOL_FUNC>();
    std::unique_ptr<BOOL_FUNC> chain =
        std::make_unique<BOOL_FUNC>(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    std::unique_ptr<BOOL_FUNC> made = std::make_unique<BOOL_FUNC>();
    std::string text;

    static const exhaustion::OPERATION<TREES> operations[];

private:
    static BOOL_TNODE* leaf(unsigned i)
    {
        return new BOOL_TNODE(static_cast<char>(4 + i % signals), signal(i % signals));
    }
    static std::string describe(const std::unique_ptr<BOOL_FUNC>& f)
    {
        return f == nullptr ? "none\n"
                            : std::to_string(f->rootcompl) + shape(f->root) + " of " +
                                  std::to_string(f->nsuppt) + '\n';
    }
};

template <unsigned DEPTH>
const exhaustion::OPERATION<TREES<DEPTH>> TREES<DEPTH>::operations[] = {
    {"node", [](TREES&) { delete new BOOL_TNODE(); }},
    {"operator node", [](TREES&) { delete new BOOL_TNODE(char{BOOL_OP_AND}); }},
    {"node with an operand", [](TREES& s) { delete new BOOL_TNODE(0, s.root()); }},
    {"leaf", [](TREES&) { delete new BOOL_TNODE(3, signal(0)); }},
    {"whole node", [](TREES& s) { delete new BOOL_TNODE(0, s.root(), 0, s.root(), 1); }},
    {"deep copy",
     [](TREES& s) { tree_oracle::FREE_TREE()(new BOOL_TNODE(s.root())); }},
    {"unmarknodes", [](TREES& s) { s.root()->unmarknodes(); }},
    {"addsig", [](TREES& s) { s.chain->root->addsig(signal(7), 1); }},
    {"issiginsuppt", [](TREES& s) { s.text = s.root()->issiginsuppt(signal(30)) ? "1" : "0"; }},
    {"issigcompl", [](TREES& s) { s.text = s.root()->issigcompl(signal(0)) ? "1" : "0"; }},
    {"isvarinsuppt", [](TREES& s) { s.text = s.root()->isvarinsuppt(BOOL_VAR_QY) ? "1" : "0"; }},
    {"getsigvname", [](TREES& s) { s.text = std::to_string(s.root()->getsigvname(signal(0))); }},
    {"subtreeforsig", [](TREES& s) { s.root()->subtreeforsig(signal(3), s.chain->root, 1); }},
    {"rmsigfromtree", [](TREES& s) { s.root()->rmsigfromtree(signal(1)); }},
    {"countleaves", [](TREES& s) { s.text = std::to_string(s.root()->countleaves()); }},
    {"reducetrivialsubtrees", [](TREES& s) { s.root()->reducetrivialsubtrees(); }},
    {"pushbubblestoleaves", [](TREES& s) { s.root()->pushbubblestoleaves(1); }},
    {"issubtreepure", [](TREES& s) { s.text = s.chain->root->issubtreepure(0) ? "1" : "0"; }},
    {"function without a tree", [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(); }},
    {"function",
     [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(BOOL_FUNC_OR, nullptr, BOOL_VAR_A); }},
    {"function copy", [](TREES& s) { s.made = std::make_unique<BOOL_FUNC>(s.function.get()); }},
    {"destruction", [](TREES& s) { s.function = nullptr; }},
    {"setfunctype", [](TREES& s) { s.made->setfunctype(BOOL_FUNC_XOR); }},
    {"addsigtofunc", [](TREES& s) { s.chain->addsigtofunc(signal(7), 1); }},
    {"setlogic1", [](TREES& s) { s.function->setlogic1(); }},
    {"setlogic0", [](TREES& s) { s.function->setlogic0(); }},
    {"buildcofactexpr",
     [](TREES& s) { s.function->buildcofactexpr(signal(0), signal(1), signal(2)); }},
    {"islogic1", [](TREES& s) { s.text = s.function->islogic1() ? "1" : "0"; }},
    {"islogic0", [](TREES& s) { s.text = s.function->islogic0() ? "1" : "0"; }},
    {"getvarname", [](TREES& s) { s.text = std::to_string(s.function->getvarname(signal(2))); }},
    {"countsuppt", [](TREES& s) { s.text = std::to_string(s.function->countsuppt()); }},
    {"countsupptunion",
     [](TREES& s) { s.text = std::to_string(s.function->countsupptunion(s.chain.get())); }},
    {"getpurefunc", [](TREES& s) { s.text = std::to_string(s.function->getpurefunc()); }},
    {"setvarname", [](TREES& s) { s.function->setvarname(signal(2), BOOL_VAR_QX); }},
    {"setsigto1", [](TREES& s) { s.function->setsigto1(signal(2)); }},
    {"setsigto0", [](TREES& s) { s.function->setsigto0(signal(3)); }},
    {"exchangexy", [](TREES& s) { s.function->exchangexy(); }},
    {"subsig1forsig2", [](TREES& s) { s.function->subsig1forsig2(signal(20), signal(2)); }},
    {"substfnforsig", [](TREES& s) { s.function->substfnforsig(signal(3), s.chain.get()); }},
    {"rmsigfromfunc", [](TREES& s) { s.function->rmsigfromfunc(signal(1)); }},
    {"cleanbufs", [](TREES& s) { s.function->cleanbufs(); }},
    {"breakfunc", [](TREES& s) { s.made.reset(s.chain->breakfunc(2)); }},
    {"breakfunc, no such part", [](TREES& s) { s.made.reset(s.function->breakfunc(3)); }},
    {"writeeqn",
     [](TREES& s) { s.text = std::unique_ptr<char[]>(s.function->writeeqn()).get(); }},
    {"catvars",
     [](TREES& s) {
         char names[1024] = "F";
         s.function->catvars(names);
         s.text = names;
     }},
};

template <typename SUBJECT>
class tree_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<TREES<3>, TREES<100>>;

/// The first function with names chooses the table for good, so this comes before all others.
TEST(name_table_exhaustion, is_chosen_once_it_is_complete)
{
    const std::string text = "a name that takes a block of its own";
    std::vector<const char*> names(BOOL_VAR_QY + 1, text.c_str());
    BOOL_FUNC function;
    function.setfunctype(BOOL_FUNC_AND);
    function.addsigtofunc(signal(0), 0);
    function.setvarname(signal(0), BOOL_VAR_QY);
    bool chosen = false;
    for (long at = 1; !chosen; ++at) {
        for (const auto mode : {failing_heap::FAIL::FROM_THERE, failing_heap::FAIL::ONCE}) {
            const long live_before = failing_heap::live_blocks();
            failing_heap::arm(at, mode);
            try {
                const BOOL_FUNC first(BOOL_FUNC_OR, names.data(), BOOL_VAR_QY);
                chosen = true;
            } catch (const std::bad_alloc&) {
                chosen = false;
            }
            failing_heap::disarm();
            if (!chosen) {
                ASSERT_EQ(failing_heap::live_blocks(), live_before) << "allocation " << at;
            }
            const std::unique_ptr<char[]> equation(function.writeeqn());
            ASSERT_EQ(equation.get(), chosen ? text : "QY");
        }
    }
}

TYPED_TEST_SUITE(tree_exhaustion, SUBJECTS);

TYPED_TEST(tree_exhaustion, of_every_operation)
{
    for (const auto& operation : TypeParam::operations) {
        exhaustion::exhaust(operation);
    }
}

} // namespace
