// BDDs when memory runs out.

#include "basbdd.h"
#include "bdd_oracle.h"
#include "exhaustion.h"

#include <memory>
#include <vector>

namespace {

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
struct BDDS {
    BDDS()
    {
        BOOL_FUNC all(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
        for (unsigned i = 0; i < variables; ++i) {
            all.addsigtofunc(signal(i), 0);
        }
        tree.setlogic0();
        for (unsigned i = 0; i < PAIRS; ++i) {
            auto* pair = new BOOL_TNODE(0, new BOOL_TNODE(3, signal(i)), 0,
                                        new BOOL_TNODE(3, signal(i + PAIRS)), 0);
            tree.root = new BOOL_TNODE(2, tree.root, 0, pair, 0);
        }
        sum = std::make_unique<BDD_FUNC>(variables, &tree, manager.get(), nullptr);
        product = std::make_unique<BDD_FUNC>(variables, &all, manager.get(), nullptr);
        made = std::make_unique<BDD_FUNC>(sum.get());
    }

    std::string describe()
    {
        std::string description;
        for (const auto* f : {sum.get(), product.get(), made.get()}) {
            if (f != nullptr) {
                description += std::to_string(bdd_oracle::count_models(f->bdd, variables));
                description += ' ' + std::to_string(f->nsuppt);
                description.append(f->suppt, f->suppt + variables + 1);
            }
        }
        return description;
    }

    std::vector<TECHMAP_SIG*> signals = all_signals();
    std::unique_ptr<BDD_MANAGER> manager =
        std::make_unique<BDD_MANAGER>(METHOD, variables, signals.data());
    std::unique_ptr<BDD_MANAGER> second;
    BOOL_FUNC tree;
    std::unique_ptr<BDD_FUNC> sum;
    std::unique_ptr<BDD_FUNC> product;
    std::unique_ptr<BDD_FUNC> made;
    char text[256] = "";
    char names[variables + 1] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";

    static constexpr bool is_large = PAIRS > 5;
    static const exhaustion::OPERATION<BDDS> operations[];
};

// clang-format off
template <BDD_STORE_METHOD METHOD, unsigned PAIRS>
const exhaustion::OPERATION<BDDS<METHOD, PAIRS>> BDDS<METHOD, PAIRS>::operations[] = {
    OPERATION_OF(BDDS, s.second = std::make_unique<BDD_MANAGER>(METHOD, variables, s.signals.data())),
    OPERATION_OF(BDDS, s.sum = nullptr; s.product = nullptr; s.made = nullptr; s.manager = nullptr),
    OPERATION_OF(BDDS, s.made->setbdd(s.manager->table->findoradd(0, basbdd_one, s.product->bdd))),
    OPERATION_OF(BDDS, s.made->setbdd(s.manager->ifthenelse(s.sum->bdd, basbdd_zero, s.product->bdd))),
    OPERATION_OF(BDDS, s.made->setbdd(s.manager->compose(s.sum->bdd, 1, s.product->bdd))),
    OPERATION_OF(BDDS, s.made = std::make_unique<BDD_FUNC>(variables, &s.tree, s.manager.get(), nullptr)),
    OPERATION_OF(BDDS, s.made = std::make_unique<BDD_FUNC>(s.product.get())),
    OPERATION_OF(BDDS, s.made->setbdd(s.product->bdd)),
    OPERATION_OF(BDDS, s.sum->setsigto1(signal(3))),
    OPERATION_OF(BDDS, s.product->setsigto0(signal(3))),
    OPERATION_OF(BDDS, s.sum->complsiginfn(signal(2))),
    OPERATION_OF(BDDS, s.sum->substfnforsig(signal(1), s.product.get())),
    OPERATION_OF(BDDS, s.product->printbddexpr(s.text, s.names)),
};
// clang-format on

template <typename SUBJECT>
class bdd_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<BDDS<BDD_STORE_HASH, 4>, BDDS<BDD_STORE_TREE, 4>,
                                BDDS<BDD_STORE_HASH, 11>, BDDS<BDD_STORE_TREE, 11>>;
TYPED_TEST_SUITE(bdd_exhaustion, SUBJECTS);

TYPED_TEST(bdd_exhaustion, of_every_operation)
{
    for (const auto& operation : TypeParam::operations) {
        exhaustion::exhaust(operation, TypeParam::is_large);
    }
}

} // namespace
