#include "constants.h"
#include "nodes.h"
#include "reports.h"
#include "support.h"

#include <algorithm>
#include <cstddef>
#include <memory>

static_assert(sizeof(BDD_FUNC) == 32 && offsetof(BDD_FUNC, nsuppt) == 0 &&
                  offsetof(BDD_FUNC, nvars) == 2 && offsetof(BDD_FUNC, suppt) == 8 &&
                  offsetof(BDD_FUNC, mgr) == 16 && offsetof(BDD_FUNC, bdd) == 24,
              "hosts rely on the layout of a function");

namespace basbdd {

namespace {

std::unique_ptr<unsigned short[]> new_support_list(unsigned capacity)
{
    return std::unique_ptr<unsigned short[]>(new unsigned short[capacity + 1]);
}

/// The edge of f's tree; null when it has none.
BDD_NODE* convert(BOOL_FUNC* f, BDD_MANAGER* mgr, unsigned short* remap)
{
    return f == nullptr || f->root == nullptr ? nullptr : f->root->treetobdd(mgr, remap);
}

/// f with `g(variable)` in place of the variable of `sig`; null when there is no such variable,
/// as in a function without a manager.
template <typename replacement>
BDD_NODE* with_signal_replaced(const BDD_FUNC& f, TECHMAP_SIG* sig, const replacement& g)
{
    const unsigned short var = f.mgr == nullptr ? no_variable : f.mgr->sig2varid(sig);
    return var == no_variable ? nullptr : f.mgr->compose(f.bdd, var, g(var));
}

/// The function of another manager's edge in nodes of this manager: to compose with no variable
/// makes every node anew. Null when this manager lacks a variable that it depends on.
BDD_NODE* rebuild(BDD_MANAGER& manager, BDD_NODE* foreign)
{
    return manager.compose(foreign, no_variable, nullptr);
}

/// @brief An empty list of variables, which is on the stack when it is as short as for a cell.
class scratch_list {
public:
    explicit scratch_list(unsigned capacity)
        : on_heap(capacity < few ? nullptr : new_support_list(capacity))
    {
        *begin() = no_variable;
    }
    unsigned short* begin() { return on_heap == nullptr ? on_stack : on_heap.get(); }

private:
    static constexpr unsigned few = 64;

    std::unique_ptr<unsigned short[]> on_heap;
    unsigned short on_stack[few];
};

} // namespace
} // namespace basbdd

BDD_FUNC::BDD_FUNC(unsigned short capacity, BOOL_FUNC* f, BDD_MANAGER* manager,
                   unsigned short* remap)
    : nsuppt(0), nvars(capacity), suppt(nullptr), mgr(manager), bdd(nullptr)
{
    basbdd::make_constants();
    if (f == nullptr) {
        basbdd::report(basbdd::report_site::conversion_of_null);
    }
    auto list = basbdd::new_support_list(capacity);
    suppt = list.get();
    setbdd(basbdd::convert(f, mgr, remap));
    if (f != nullptr && f->rootcompl != 0) {
        bdd = basbdd::edge::complement(bdd);
    }
    list.release();
}

BDD_FUNC::BDD_FUNC(BDD_FUNC* src) : nsuppt(0), nvars(0), suppt(nullptr), mgr(nullptr), bdd(nullptr)
{
    if (src == nullptr) {
        basbdd::report(basbdd::report_site::copy_of_null);
        basbdd::make_constants();
        suppt = basbdd::new_support_list(nvars).release();
        setbdd(nullptr);
        return;
    }
    nvars = src->nvars;
    nsuppt = src->nsuppt;
    mgr = src->mgr;
    bdd = src->bdd;
    suppt = basbdd::new_support_list(nvars).release();
    std::copy_n(src->suppt, nvars + 1, suppt);
}

BDD_FUNC::~BDD_FUNC() { delete[] suppt; }

void BDD_FUNC::setbdd(BDD_NODE* n)
{
    BDD_NODE* const e = basbdd::edge::node(n) == nullptr ? basbdd_zero : n;
    // Listed aside: when memory ends on the way, the function is as it was.
    basbdd::scratch_list variables(nvars);
    const unsigned count = basbdd::collect_support(basbdd::edge::node(e), variables.begin(), nvars);
    initsupport();
    std::copy_n(variables.begin(), count, suppt);
    nsuppt = static_cast<unsigned short>(count);
    bdd = e;
}

void BDD_FUNC::initsupport() { std::fill_n(suppt, nvars + 1, basbdd::no_variable); }

int BDD_FUNC::countsuppt()
{
    return static_cast<int>(std::find(suppt, suppt + nvars, basbdd::no_variable) - suppt);
}

void BDD_FUNC::setsigto1(TECHMAP_SIG* sig)
{
    setbdd(basbdd::with_signal_replaced(*this, sig, [](unsigned short) { return basbdd_one; }));
}

void BDD_FUNC::setsigto0(TECHMAP_SIG* sig)
{
    setbdd(basbdd::with_signal_replaced(*this, sig, [](unsigned short) { return basbdd_zero; }));
}

void BDD_FUNC::complsiginfn(TECHMAP_SIG* sig)
{
    setbdd(basbdd::with_signal_replaced(*this, sig, [this](unsigned short var) {
        return basbdd::edge::complement(basbdd::variable_node(*mgr, var));
    }));
}

void BDD_FUNC::substfnforsig(TECHMAP_SIG* sig, BDD_FUNC* fn)
{
    if (fn->mgr != mgr) {
        basbdd::report(basbdd::report_site::other_manager);
    }
    if (fn->nvars != nvars) {
        basbdd::report(basbdd::report_site::other_capacity);
    }
    BDD_NODE* const result =
        basbdd::with_signal_replaced(*this, sig, [fn](unsigned short) { return fn->bdd; });
    setbdd(fn->mgr == mgr || result == nullptr ? result : basbdd::rebuild(*mgr, result));
}
