#include "basbdd.h"
#include "constants.h"
#include "edge.h"
#include "reports.h"
#include "support.h"

#include <algorithm>
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

/// f with `g(variable)` in place of the variable of `sig`; null when there is no such variable,
/// as in a function without a manager.
template <typename G>
BDD_NODE* with_signal_replaced(const BDD_FUNC& f, TECHMAP_SIG* sig, const G& g)
{
    const unsigned short var = f.mgr == nullptr ? no_variable : f.mgr->sig2varid(sig);
    return var == no_variable ? nullptr : f.mgr->compose(f.bdd, var, g(var));
}

/// The function of an edge of another manager in nodes of this one; null when this one lacks a
/// variable that it depends on.
BDD_NODE* rebuild(BDD_MANAGER& manager, BDD_NODE* foreign)
{
    return manager.compose(foreign, no_variable, nullptr);
}

/// @brief An empty list of variables, on the stack for the cells of a library.
class SCRATCH_LIST {
public:
    explicit SCRATCH_LIST(unsigned capacity)
        : heap_(capacity < few ? nullptr : new_support_list(capacity))
    {
        *begin() = no_variable;
    }
    unsigned short* begin() { return heap_ == nullptr ? stack_ : heap_.get(); }

private:
    static constexpr unsigned few = 64;

    std::unique_ptr<unsigned short[]> heap_;
    unsigned short stack_[few];
};

} // namespace

BDD_FUNC::BDD_FUNC(unsigned short capacity, BOOL_FUNC* f, BDD_MANAGER* manager,
                   unsigned short* remap)
    : nsuppt(0), nvars(capacity), suppt(nullptr), mgr(manager), bdd(nullptr)
{
    ensure_constants();
    if (f == nullptr) {
        report(BDD_REPORT::CONVERSION_OF_NULL);
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
        report(BDD_REPORT::COPY_OF_NULL);
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
    BDD_NODE* const e = edge::node(n) == nullptr ? basbdd_zero : n;
    SCRATCH_LIST variables(nvars); // listed aside, for the walk may run out of memory
    const unsigned count = collect_support(edge::node(e), variables.begin(), nvars);
    initsupport();
    std::copy_n(variables.begin(), count, suppt);
    nsuppt = static_cast<unsigned short>(count);
    bdd = e;
}

void BDD_FUNC::initsupport() { std::fill_n(suppt, nvars + 1, no_variable); }

int BDD_FUNC::countsuppt()
{
    return static_cast<int>(std::find(suppt, suppt + nvars, no_variable) - suppt);
}

void BDD_FUNC::setsigto1(TECHMAP_SIG* sig)
{
    setbdd(with_signal_replaced(*this, sig, [](unsigned short) { return basbdd_one; }));
}

void BDD_FUNC::setsigto0(TECHMAP_SIG* sig)
{
    setbdd(with_signal_replaced(*this, sig, [](unsigned short) { return basbdd_zero; }));
}

void BDD_FUNC::complsiginfn(TECHMAP_SIG* sig)
{
    setbdd(with_signal_replaced(*this, sig, [this](unsigned short var) {
        return edge::complement(mgr->table->findoradd(var, basbdd_one, basbdd_zero));
    }));
}

void BDD_FUNC::substfnforsig(TECHMAP_SIG* sig, BDD_FUNC* fn)
{
    if (fn->mgr != mgr) {
        report(BDD_REPORT::OTHER_MANAGER);
    }
    if (fn->nvars != nvars) {
        report(BDD_REPORT::OTHER_CAPACITY);
    }
    setbdd(with_signal_replaced(*this, sig, [this, fn](unsigned short) {
        return fn->mgr == mgr ? fn->bdd : rebuild(*mgr, fn->bdd);
    }));
}
