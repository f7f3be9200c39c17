#include "basbdd.h"
#include "constants.h"
#include "edge.h"
#include "report.h"
#include "support.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

static_assert(sizeof(BDD_FUNC) == 32 && offsetof(BDD_FUNC, nsuppt) == 0 &&
                  offsetof(BDD_FUNC, nvars) == 2 && offsetof(BDD_FUNC, suppt) == 8 &&
                  offsetof(BDD_FUNC, mgr) == 16 && offsetof(BDD_FUNC, bdd) == 24,
              "hosts rely on the layout of a function");

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

/// The variable of a signal, `no_variable` when the function has no manager either.
unsigned short variable_of(BDD_MANAGER* mgr, TECHMAP_SIG* sig)
{
    return mgr == nullptr ? no_variable : mgr->sig2varid(sig);
}

/// f with `g` in place of the variable of `sig`; null when there is no such variable.
BDD_NODE* with_signal_replaced(const BDD_FUNC& f, TECHMAP_SIG* sig, BDD_NODE* g)
{
    const unsigned short var = variable_of(f.mgr, sig);
    return var == no_variable ? nullptr : f.mgr->compose(f.bdd, var, g);
}

} // namespace

BDD_FUNC::BDD_FUNC(unsigned short capacity, BOOL_FUNC* f, BDD_MANAGER* manager,
                   unsigned short* remap)
    : nsuppt(0), nvars(capacity), suppt(nullptr), mgr(manager), bdd(nullptr)
{
    if (f == nullptr) {
        report_internal_error(REPORT_SITE::conversion_of_null);
    }
    auto list = new_support_list(capacity);
    suppt = list.get();
    setbdd(convert(f, mgr, remap));
    if (f != nullptr && f->rootcompl != 0) {
        bdd = edge::complement(bdd);
    }
    list.release();
}

BDD_FUNC::BDD_FUNC(BDD_FUNC* src) : nsuppt(0), nvars(0), suppt(nullptr), mgr(nullptr), bdd(nullptr)
{
    if (src == nullptr) {
        report_internal_error(REPORT_SITE::copy_of_null);
        ensure_constants();
        suppt = new_support_list(nvars).release();
        setbdd(nullptr);
        return;
    }
    nvars = src->nvars;
    nsuppt = src->nsuppt;
    mgr = src->mgr;
    bdd = src->bdd;
    suppt = new_support_list(nvars).release();
    std::copy_n(src->suppt, nvars + 1, suppt);
}

BDD_FUNC::~BDD_FUNC() { delete[] suppt; }

void BDD_FUNC::setbdd(BDD_NODE* n)
{
    // Listed aside, for the walk may run out of memory; on the stack for the cells of a library.
    constexpr std::size_t few = 64;
    std::array<unsigned short, few> on_stack;
    std::unique_ptr<unsigned short[]> on_heap;
    if (nvars >= few) {
        on_heap = new_support_list(nvars);
    }
    unsigned short* const list = on_heap == nullptr ? on_stack.data() : on_heap.get();
    std::fill_n(list, nvars + 1, no_variable);
    BDD_NODE* const e = edge::node(n) == nullptr ? basbdd_zero : n;
    if (edge::node(e) != basbdd_one) {
        collect_support(edge::node(e), list, nvars);
    }
    std::copy_n(list, nvars + 1, suppt);
    bdd = e;
    nsuppt = static_cast<unsigned short>(countsuppt());
}

void BDD_FUNC::initsupport() { std::fill_n(suppt, nvars + 1, no_variable); }

int BDD_FUNC::countsuppt()
{
    return static_cast<int>(std::find(suppt, suppt + nvars, no_variable) - suppt);
}

void BDD_FUNC::setsigto1(TECHMAP_SIG* sig) { setbdd(with_signal_replaced(*this, sig, basbdd_one)); }

void BDD_FUNC::setsigto0(TECHMAP_SIG* sig)
{
    setbdd(with_signal_replaced(*this, sig, basbdd_zero));
}

void BDD_FUNC::complsiginfn(TECHMAP_SIG* sig)
{
    const unsigned short var = variable_of(mgr, sig);
    if (var == no_variable) {
        setbdd(nullptr);
        return;
    }
    BDD_NODE* const x = mgr->table->findoradd(var, basbdd_one, basbdd_zero);
    setbdd(mgr->compose(bdd, var, edge::complement(x)));
}

void BDD_FUNC::substfnforsig(TECHMAP_SIG* sig, BDD_FUNC* fn)
{
    if (fn->mgr != mgr) {
        report_internal_error(REPORT_SITE::other_manager);
    }
    if (fn->nvars != nvars) {
        report_internal_error(REPORT_SITE::other_capacity);
    }
    setbdd(with_signal_replaced(*this, sig, fn->bdd));
}
