// BDDs when memory runs out.

#include "basbdd.h"
#include "bdd_oracle.h"
#include "exhaustion.h"
#include "tree_oracle.h"

#include <memory>
#include <vector>

namespace {

using exhaustion::AFTER;

constexpr unsigned short variables = 40;
TECHMAP_SIG own_signals[variables];

TECHMAP_SIG* signal(unsigned index) { return &own_signals[index]; }

std::vector<TECHMAP_SIG*> all_signals()
{
    std::vector<TECHMAP_SIG*> signals;
    for (TECHMAP_SIG& each : own_signals) {
        signals.push_back(&each);
    }
    return signals;
}

/// A sum of pairs in an order that makes it large, and a conjunction of all variables.
template <BDD_STORE_METHOD METHOD, unsigned PAIRS>
class BDDS {
public:
    BDDS()
    {
        for (unsigned i = 0; i < PAIRS; ++i) {
            BOOL_FUNC term(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
            term.addsigtofunc(signal(i), 0);
            term.addsigtofunc(signal(i + PAIRS), i % 2);
            tree.root = tree.root == nullptr
                            ? std::exchange(term.root, nullptr)
                            : new BOOL_TNODE(2, tree.root, 0, std::exchange(term.root, nullptr), 0);
        }
        for (unsigned i = 0; i < variables; ++i) {
            all.addsigtofunc(signal(i), 0);
        }
        sum = std::make_unique<BDD_FUNC>(variables, &tree, manager.get(), nullptr);
        product = std::make_unique<BDD_FUNC>(variables, &all, manager.get(), nullptr);
        made = std::make_unique<BDD_FUNC>(sum.get());
    }

    std::string describe() { return describe(sum) + describe(product) + describe(made); }

    std::vector<TECHMAP_SIG*> signals = all_signals();
    std::unique_ptr<BDD_MANAGER> manager =
        std::make_unique<BDD_MANAGER>(METHOD, variables, signals.data());
    BOOL_FUNC tree;
    BOOL_FUNC all = BOOL_FUNC(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    std::unique_ptr<BDD_FUNC> sum;
    std::unique_ptr<BDD_FUNC> product;
    std::unique_ptr<BDD_FUNC> made;
    std::unique_ptr<BDD_MANAGER> second;
    std::string text;

    static const exhaustion::OPERATION<BDDS> operations[];

    static std::string print(BDD_FUNC& f)
    {
        static char out[1U << 16U];
        static char names[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";
        f.printbddexpr(out, names);
        return out;
    }

    static constexpr bool is_large = PAIRS > 5;

private:
    std::string describe(const std::unique_ptr<BDD_FUNC>& f)
    {
        if (f == nullptr) {
            return "none\n";
        }
        std::string line = text + ' ' + std::to_string(f->nsuppt);
        if (is_large) {
            line += ' ' + std::to_string(bdd_oracle::count_models(f->bdd, variables));
        } else {
            line += ' ' + print(*f);
        }
        for (unsigned i = 0; i <= f->nvars; ++i) {
            line += ' ' + std::to_string(f->suppt[i]);
        }
        return line + '\n';
    }
};

template <BDD_STORE_METHOD METHOD, unsigned PAIRS>
const exhaustion::OPERATION<BDDS<METHOD, PAIRS>> BDDS<METHOD, PAIRS>::operations[] = {
    {"manager",
     [](BDDS& s) {
         s.second = std::make_unique<BDD_MANAGER>(METHOD, variables, s.signals.data());
     }},
    {"manager, destruction",
     [](BDDS& s) {
         s.sum = nullptr;
         s.product = nullptr;
         s.made = nullptr;
         s.manager = nullptr;
     }},
    {"mkconstants", [](BDDS& s) { s.manager->mkconstants(); }},
    {"sig2varid", [](BDDS& s) { s.text = std::to_string(s.manager->sig2varid(s.signals[9])); }},
    {"findoradd",
     [](BDDS& s) { s.made->setbdd(s.manager->table->findoradd(0, basbdd_one, s.product->bdd)); }},
    {"ifthenelse",
     [](BDDS& s) {
         s.made->setbdd(s.manager->ifthenelse(s.sum->bdd, basbdd_zero, s.product->bdd));
     }},
    {"compose", [](BDDS& s) { s.made->setbdd(s.manager->compose(s.sum->bdd, 1, s.product->bdd)); }},
    {"treetobdd",
     [](BDDS& s) {
         s.second = std::make_unique<BDD_MANAGER>(METHOD, variables, s.signals.data());
         s.tree.root->treetobdd(s.second.get(), nullptr);
     },
     AFTER::BEGUN},
    {"function",
     [](BDDS& s) {
         s.made = std::make_unique<BDD_FUNC>(variables, &s.tree, s.manager.get(), nullptr);
     }},
    {"function copy", [](BDDS& s) { s.made = std::make_unique<BDD_FUNC>(s.product.get()); }},
    {"setbdd", [](BDDS& s) { s.made->setbdd(s.product->bdd); }},
    {"adduniqueidx",
     [](BDDS& s) {
         s.made->initsupport();
         bdd_oracle::node(s.sum->bdd)->adduniqueidx(s.made->suppt);
     },
     AFTER::BEGUN},
    {"countsuppt", [](BDDS& s) { s.text = std::to_string(s.sum->countsuppt()); }},
    {"setsigto1", [](BDDS& s) { s.sum->setsigto1(signal(3)); }},
    {"setsigto0", [](BDDS& s) { s.product->setsigto0(signal(3)); }},
    {"complsiginfn", [](BDDS& s) { s.sum->complsiginfn(signal(2)); }},
    {"substfnforsig", [](BDDS& s) { s.sum->substfnforsig(signal(1), s.product.get()); }},
    {"printbddexpr", [](BDDS& s) { s.text = print(*s.product); }},
};

template <typename SUBJECT>
class bdd_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<BDDS<BDD_STORE_HASH, 4>, BDDS<BDD_STORE_TREE, 4>,
                                BDDS<BDD_STORE_HASH, 11>, BDDS<BDD_STORE_TREE, 11>>;
TYPED_TEST_SUITE(bdd_exhaustion, SUBJECTS);

/// The constant node stays, so this comes before all other managers.
TEST(constant_exhaustion, are_made_both_or_none)
{
    TECHMAP_SIG* signals[] = {signal(0)};
    const long live_before = failing_heap::live_blocks();
    bool made = false;
    for (long at = 1; !made; ++at) {
        failing_heap::arm(at, failing_heap::FAIL::FROM_THERE);
        try {
            const BDD_MANAGER manager(BDD_STORE_HASH, 1, signals);
            made = true;
        } catch (const std::bad_alloc&) {
            ASSERT_EQ(basbdd_one == nullptr, basbdd_zero == nullptr);
        }
        failing_heap::disarm();
        ASSERT_EQ(failing_heap::live_blocks(), live_before + (basbdd_one == nullptr ? 0 : 1));
    }
}

TYPED_TEST(bdd_exhaustion, of_every_operation)
{
    for (const auto& operation : TypeParam::operations) {
        exhaustion::exhaust(operation, TypeParam::is_large);
    }
}

} // namespace
