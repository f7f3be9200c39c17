#include "if_then_else.h"

#include <algorithm>
#include <utility>

namespace basbdd {

namespace {

using edge::complement;
using edge::complement_if;
using edge::is_marked;
using edge::variable;

/// The order by which one of several triples with the same result is chosen: by variable, then by
/// the edges themselves.
bool ranks_before(BDD_NODE* x, BDD_NODE* y)
{
    const unsigned short of_x = variable(x);
    const unsigned short of_y = variable(y);
    return of_x != of_y ? of_x < of_y : edge::value(x) < edge::value(y);
}

BDD_NODE* high_cofactor(BDD_NODE* e, unsigned short var)
{
    return variable(e) == var ? edge::high(e) : e;
}

BDD_NODE* low_cofactor(BDD_NODE* e, unsigned short var)
{
    return variable(e) == var ? edge::low(e) : e;
}

} // namespace

if_then_else::if_then_else(const BDD_MANAGER& owner)
    : manager(owner), one(basbdd_one), zero(basbdd_zero)
{
}

/// The same problem with constants in place of f and its complement: ite(f, f, h) = ite(f, 1, h),
/// ite(f, not f, h) = ite(f, 0, h), ite(f, g, f) = ite(f, g, 0), ite(f, g, not f) = ite(f, g, 1).
inline ite_triple if_then_else::without_repeats(const ite_triple& t) const
{
    const BDD_NODE* const not_f = complement(t.f);
    return {t.f,
            t.g == t.f     ? one
            : t.g == not_f ? zero
                           : t.g,
            t.h == t.f     ? zero
            : t.h == not_f ? one
                           : t.h};
}

/// The result where it is an operand or its complement; else null.
inline BDD_NODE* if_then_else::terminal_case(const ite_triple& t) const
{
    const auto& [f, g, h] = t;
    if (g == h) { // ite(f, g, g) = g
        return g;
    }
    if (g == one && h == zero) { // ite(f, 1, 0) = f
        return f;
    }
    if (g == zero && h == one) { // ite(f, 0, 1) = not f
        return complement(f);
    }
    return nullptr;
}

/// Of the triples with the same result, the one whose first operand ranks first.
inline ite_triple if_then_else::standard(const ite_triple& t) const
{
    const auto& [f, g, h] = t;
    if (g == one) { // ite(f, 1, h) = or(f, h) = ite(h, 1, f)
        return ranks_before(h, f) ? ite_triple{h, one, f} : t;
    }
    if (h == one) { // ite(f, g, 1) = or(not f, g) = ite(not g, not f, 1)
        return ranks_before(g, f) ? ite_triple{complement(g), complement(f), one} : t;
    }
    if (g == zero) { // ite(f, 0, h) = and(not f, h) = ite(not h, 0, not f)
        return ranks_before(h, f) ? ite_triple{complement(h), zero, complement(f)} : t;
    }
    if (h == zero) { // ite(f, g, 0) = and(f, g) = ite(g, f, 0)
        return ranks_before(g, f) ? ite_triple{g, f, zero} : t;
    }
    if (g == complement(h)) { // ite(f, g, not g) = xnor(f, g) = ite(g, f, not f)
        return ranks_before(g, f) ? ite_triple{g, f, complement(f)} : t;
    }
    return t;
}

inline BDD_NODE* if_then_else::node_of(unsigned short var, BDD_NODE* high, BDD_NODE* low)
{
    return with_memory_from([this] { give_back(); },
                            [&] { return make_node(manager, var, high, low); });
}

/// Solves a problem that needs no cofactors, or opens a frame for it.
inline solution if_then_else::settle(const ite_triple& problem)
{
    if (problem.f == one || problem.f == zero) { // ite(1, g, h) = g, ite(0, g, h) = h
        return {true, problem.f == one ? problem.g : problem.h};
    }
    ite_triple t = without_repeats(problem);
    if (BDD_NODE* const result = terminal_case(t)) {
        return {true, result};
    }
    t = standard(t);
    if (is_marked(t.f)) { // ite(not f, g, h) = ite(f, h, g)
        t = {complement(t.f), t.h, t.g};
    }
    const bool complemented = is_marked(t.g); // ite(f, not g, h) = not ite(f, g, not h)
    t = {t.f, complement_if(t.g, complemented), complement_if(t.h, complemented)};

    const unsigned short of_f = variable(t.f);
    const unsigned short below = std::min(variable(t.g), variable(t.h));
    if (of_f < below && edge::is_variable_node(*t.f, one)) {
        BDD_NODE* const result = node_of(of_f, t.g, t.h);
        return {true, edge::complement_unless_null(result, complemented)};
    }
    if (BDD_NODE* const result = known.find(t)) {
        return {true, complement_if(result, complemented)};
    }
    open.push({t, nullptr, std::min(of_f, below), complemented});
    return {false, nullptr};
}

inline ite_triple if_then_else::first(const frame& each)
{
    const auto& [f, g, h] = each.triple;
    return {high_cofactor(f, each.top), high_cofactor(g, each.top), high_cofactor(h, each.top)};
}

inline ite_triple if_then_else::second(const frame& each)
{
    const auto& [f, g, h] = each.triple;
    return {low_cofactor(f, each.top), low_cofactor(g, each.top), low_cofactor(h, each.top)};
}

inline BDD_NODE* if_then_else::join(const frame& each, BDD_NODE* low)
{
    // The result is often f itself, which spares the search; but a variable that the manager lacks
    // has no result, even where another manager's f has it.
    BDD_NODE* const f = each.triple.f;
    const bool is_f = variable(f) == each.top && f->high == each.high && f->low == low &&
                      each.top < manager.nvars;
    BDD_NODE* const result = is_f ? f : node_of(each.top, each.high, low);
    if (result == nullptr) {
        return nullptr;
    }
    known.add(each.triple, result);
    return complement_if(result, each.complemented);
}

// Flattened: the steps of the walk are so small that to call them would cost more than they do.
[[gnu::flatten]] BDD_NODE* if_then_else::operator()(const ite_triple& triple)
{
    const auto& [f, g, h] = triple;
    if (f == one || f == zero) {
        return f == one ? g : h;
    }
    open.clear(); // a call before may have ended without memory
    return f == nullptr || g == nullptr || h == nullptr ? nullptr : solve(*this, triple);
}

} // namespace basbdd

BDD_NODE* BDD_MANAGER::ifthenelse(BDD_NODE* f, BDD_NODE* g, BDD_NODE* h)
{
    return basbdd::if_then_else(*this)({f, g, h});
}
