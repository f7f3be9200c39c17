#include "ite.h"

#include "basbdd.h"

#include <algorithm>
#include <utility>

namespace {

using edge::complement;
using edge::complement_if;
using edge::is_marked;
using edge::variable;

/// The order that picks one of the equal triples: by variable, then by the edges themselves.
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

ITE_TRIPLE high_cofactors(const ITE_TRIPLE& t, unsigned short var)
{
    return {high_cofactor(t.f, var), high_cofactor(t.g, var), high_cofactor(t.h, var)};
}

ITE_TRIPLE low_cofactors(const ITE_TRIPLE& t, unsigned short var)
{
    return {low_cofactor(t.f, var), low_cofactor(t.g, var), low_cofactor(t.h, var)};
}

/// Leaves f and g unmarked. @return whether the result is to be complemented
bool unmark_condition_and_then(ITE_TRIPLE& t)
{
    if (is_marked(t.f)) {
        t.f = complement(t.f);
        std::swap(t.g, t.h);
    }
    const bool complemented = is_marked(t.g);
    t.g = complement_if(t.g, complemented);
    t.h = complement_if(t.h, complemented);
    return complemented;
}

} // namespace

ITE::ITE(const BDD_MANAGER& manager) : manager_(manager), one_(basbdd_one), zero_(basbdd_zero) {}

/// @brief The result where it is an operand, its complement or a constant; else null.
///
/// Otherwise the triple becomes the standard one of the triples with the same result.
inline BDD_NODE* ITE::terminal_case(ITE_TRIPLE& t) const
{
    auto& [f, g, h] = t;
    if (f == one_) {
        return g;
    }
    if (f == zero_) {
        return h;
    }
    const BDD_NODE* const not_f = complement(f);
    g = g == f ? one_ : g == not_f ? zero_ : g;
    h = h == f ? zero_ : h == not_f ? one_ : h;
    if (g == h) {
        return g;
    }
    if (g == one_) {
        if (h == zero_) {
            return f;
        }
        if (ranks_before(h, f)) {
            t = {h, one_, f};
        }
    } else if (h == one_) {
        if (g == zero_) {
            return complement(f);
        }
        if (ranks_before(g, f)) {
            t = {complement(g), complement(f), one_};
        }
    } else if (g == zero_) {
        if (ranks_before(h, f)) {
            t = {complement(h), zero_, complement(f)};
        }
    } else if (h == zero_) {
        if (ranks_before(g, f)) {
            t = {g, f, zero_};
        }
    } else if (g == complement(h)) {
        if (ranks_before(g, f)) {
            t = {g, f, complement(f)};
        }
    }
    return nullptr;
}

BDD_NODE* ITE::make(unsigned short var, BDD_NODE* high, BDD_NODE* low)
{
    if (high == low) {
        return high;
    }
    if (var >= manager_.nvars) {
        return nullptr;
    }
    const bool complemented = is_marked(high);
    return complement_if(manager_.table->findoradd(var, complement_if(high, complemented),
                                                   complement_if(low, complemented)),
                         complemented);
}

/// @brief Solves a problem that needs no cofactors.
/// @return whether `result` holds the result, which may be null; otherwise `frame` is the problem
///         in its standard form, ready for the cofactors
inline bool ITE::settle(FRAME& frame, BDD_NODE*& result)
{
    ITE_TRIPLE& t = frame.triple;
    result = terminal_case(t);
    if (result != nullptr) {
        return true;
    }
    frame.complemented = unmark_condition_and_then(t);
    const unsigned short of_f = variable(t.f);
    const unsigned short below = std::min(variable(t.g), variable(t.h));
    if (of_f < below && edge::is_variable_node(*t.f, one_)) {
        result = make(of_f, t.g, t.h);
        if (result == nullptr) {
            return true;
        }
    } else {
        result = memo_.find(t);
        if (result == nullptr) {
            frame.top = std::min(of_f, below);
            frame.high = nullptr;
            return false;
        }
    }
    result = complement_if(result, frame.complemented);
    return true;
}

/// @brief Hands a result to the problems that wait for it.
/// @return whether `next` is to be solved now; otherwise `result` is the result of the call
inline bool ITE::resume(BDD_NODE*& result, ITE_TRIPLE& next)
{
    while (!stack_.empty()) {
        FRAME& frame = stack_.top();
        if (frame.high == nullptr) {
            frame.high = result;
            next = low_cofactors(frame.triple, frame.top);
            return true;
        }
        BDD_NODE* const f = frame.triple.f; // often the result itself: no need to search for it
        const bool is_f = variable(f) == frame.top && f->high == frame.high && f->low == result &&
                          frame.top < manager_.nvars;
        result = is_f ? f : make(frame.top, frame.high, result);
        if (result == nullptr) {
            stack_.clear();
            return false;
        }
        memo_.add(frame.triple, result);
        result = complement_if(result, frame.complemented);
        stack_.pop();
    }
    return false;
}

BDD_NODE* ITE::solve(ITE_TRIPLE t)
{
    if (t.f == one_ || t.f == zero_) {
        return t.f == one_ ? t.g : t.h;
    }
    if (t.f == nullptr || t.g == nullptr || t.h == nullptr) {
        return nullptr;
    }
    for (;;) {
        FRAME frame; // NOLINT(cppcoreguidelines-pro-type-member-init): settle fills what it needs
        frame.triple = t;
        BDD_NODE* result = nullptr;
        if (!settle(frame, result)) {
            stack_.push(frame);
            t = high_cofactors(frame.triple, frame.top);
        } else if (result == nullptr) {
            stack_.clear();
            return nullptr;
        } else if (!resume(result, t)) {
            return result;
        }
    }
}

BDD_NODE* BDD_MANAGER::ifthenelse(BDD_NODE* f, BDD_NODE* g, BDD_NODE* h)
{
    return ITE(*this).solve({f, g, h});
}
