// BDDs when memory runs out.

#include "basbdd.h"
#include "bdd_oracle.h"
#include "exhaustion.h"

#include <array>
#include <memory>

namespace {

constexpr unsigned short variables = 36;

/// A sum of pairs in an order that makes it large, and a conjunction of all variables.
struct bdd_subject {
    bdd_subject(BDD_STORE_METHOD method, unsigned pairs)
        : owner(std::make_unique<bdd_oracle::own_manager>(method, variables)), manager(owner->bdds)
    {
        for (TECHMAP_SIG* const each : owner->signals) {
            tree.addsigtofunc(each, 0);
        }
        product = std::make_unique<BDD_FUNC>(variables, &tree, &manager, nullptr);
        BOOL_FUNC none;
        sum = std::make_unique<BDD_FUNC>(variables, &none, &manager, nullptr);
        for (unsigned i = 0; i < pairs; ++i) {
            BDD_NODE* const last = owner->variable(i + pairs);
            BDD_NODE* const pair = manager.ifthenelse(owner->variable(i), last, basbdd_zero);
            sum->setbdd(manager.ifthenelse(pair, basbdd_one, sum->bdd));
        }
        made = std::make_unique<BDD_FUNC>(sum.get());
    }

    std::string describe() const
    {
        std::string all;
        for (const auto* f : {sum.get(), product.get(), made.get()}) {
            if (f != nullptr) {
                all += std::to_string(count_models(f->bdd, variables)) + ' ' +
                       std::to_string(f->nsuppt);
                all.append(f->suppt, f->suppt + variables + 1);
            }
        }
        return all;
    }

    std::unique_ptr<bdd_oracle::own_manager> owner;
    BDD_MANAGER& manager;
    BOOL_FUNC tree{BOOL_FUNC_AND, nullptr, BOOL_VAR_A};
    std::unique_ptr<BDD_FUNC> sum;
    std::unique_ptr<BDD_FUNC> product;
    std::unique_ptr<BDD_FUNC> made;
};

const operation<bdd_subject> operations[] = {
    [](bdd_subject& /*s*/) { bdd_oracle::own_manager(BDD_STORE_HASH, variables); },
    [](bdd_subject& /*s*/) { bdd_oracle::own_manager(BDD_STORE_TREE, variables); },
    [](bdd_subject& s) {
        s.sum = nullptr, s.product = nullptr, s.made = nullptr, s.owner = nullptr;
    },
    [](bdd_subject& s) {
        s.made->setbdd(s.manager.table->findoradd(0, basbdd_one, s.product->bdd));
    },
    [](bdd_subject& s) {
        s.made->setbdd(s.manager.ifthenelse(s.sum->bdd, basbdd_zero, s.product->bdd));
    },
    [](bdd_subject& s) {
        s.made = std::make_unique<BDD_FUNC>(variables, &s.tree, &s.manager, nullptr);
    },
    [](bdd_subject& s) { s.made = std::make_unique<BDD_FUNC>(s.product.get()); },
    [](bdd_subject& s) { s.sum->setsigto1(s.owner->signals.at(3)); },
    [](bdd_subject& s) { s.product->setsigto0(s.owner->signals.at(3)); },
    [](bdd_subject& s) { s.sum->complsiginfn(s.owner->signals.at(2)); },
    [](bdd_subject& s) { s.sum->substfnforsig(s.owner->signals.at(1), s.product.get()); },
};

TEST(bdd_exhaustion, of_every_operation)
{
    for (const auto method : {BDD_STORE_HASH, BDD_STORE_TREE}) {
        exhaust(operations, method, 9U);
    }
}

/// What memos take counts for nothing: a large result and a deep one, with blocks of 16 MiB, with
/// small ones, and with little more memory than the result's nodes take.
TEST(bdd_exhaustion, of_memos_makes_operations_slower_at_most)
{
    constexpr unsigned pairs = 17;
    constexpr unsigned short depth = 20000;
    constexpr std::size_t unlimited = SIZE_MAX / 2;
    constexpr std::pair<std::size_t, std::size_t> limits[] = {
        {std::size_t{16} << 20U, unlimited}, {48U << 10U, unlimited}, {unlimited, 25U << 20U}};
    for (const auto& [largest, total] : limits) {
        bdd_subject s(BDD_STORE_TREE, pairs);
        bdd_oracle::own_manager deep(BDD_STORE_TREE, depth);
        BDD_NODE* const last = s.owner->variable(variables - 1);
        std::array<BDD_NODE*, 3> left{basbdd_one, basbdd_zero, basbdd_zero}; // when divided by 3
        for (unsigned i = depth; i-- > 0;) {
            const auto next = [&](BDD_NODE* high, BDD_NODE* low) {
                return deep.bdds.ifthenelse(deep.variable(i), high, low);
            };
            left = {next(left[2], left[0]), next(left[0], left[1]), next(left[1], left[2])};
        }
        const long blocks_before = failing_heap::live_blocks();
        failing_heap::refuse_above(largest, failing_heap::live_bytes() + total);
        BDD_NODE* const result = s.manager.ifthenelse(s.sum->bdd, basbdd_one, last);
        const std::size_t beside = failing_heap::peak_bytes() - failing_heap::live_bytes();
        const auto nodes = static_cast<std::size_t>(failing_heap::live_blocks() - blocks_before);
        EXPECT_GT(nodes, std::size_t{2} << pairs);
        EXPECT_LT(beside, 100 * nodes);
        EXPECT_EQ(s.manager.compose(result, variables - 2, last), result);
        const auto cofactor = [&](BDD_NODE* g) { return deep.bdds.compose(left[0], depth - 1, g); };
        EXPECT_EQ(deep.bdds.ifthenelse(deep.variable(depth - 1), cofactor(basbdd_one),
                                       cofactor(basbdd_zero)),
                  left[0]);
        if (&largest == &limits->first) {
            s.sum->setbdd(result);
        } else { // the walk for the support cannot do without
            EXPECT_THROW(s.sum->setbdd(result), std::bad_alloc);
        }
        failing_heap::disarm();
        EXPECT_EQ(s.sum->nsuppt, &largest == &limits->first ? variables - 1 : 2 * pairs);
    }
}

} // namespace
