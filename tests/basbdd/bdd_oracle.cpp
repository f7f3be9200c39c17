#include "bdd_oracle.h"

#include <algorithm>

namespace bdd_oracle {

namespace {

BDD_NODE* cofactor(BDD_NODE* e, unsigned short var, bool value)
{
    BDD_NODE* const child = value ? node(e)->high : node(e)->low;
    return node(e)->varid != var ? e : is_marked(e) ? negate(child) : child;
}

} // namespace

BDD_NODE* ifthenelse(BDD_MANAGER& m, BDD_NODE* f, BDD_NODE* g, BDD_NODE* h)
{
    if (node(f) == basbdd_one || g == h) {
        return f == basbdd_zero ? h : g;
    }
    const auto top = std::min({node(f)->varid, node(g)->varid, node(h)->varid});
    const auto branch = [&](bool v) {
        return ifthenelse(m, cofactor(f, top, v), cofactor(g, top, v), cofactor(h, top, v));
    };
    BDD_NODE* const high = branch(true);
    BDD_NODE* const low = branch(false);
    if (high == low || !is_marked(high)) {
        return high == low ? high : m.table->findoradd(top, high, low);
    }
    return negate(m.table->findoradd(top, negate(high), negate(low)));
}

BDD_NODE* compose(BDD_MANAGER& m, BDD_NODE* f, unsigned short var, BDD_NODE* g)
{
    BDD_NODE* const n = node(f);
    if (n->varid > var) {
        return f;
    }
    BDD_NODE* const high = compose(m, n->high, var, g);
    BDD_NODE* const low = compose(m, n->low, var, g);
    BDD_NODE* const x = n->varid == var ? g : m.table->findoradd(n->varid, basbdd_one, basbdd_zero);
    BDD_NODE* const result = ifthenelse(m, x, high, low);
    return is_marked(f) ? negate(result) : result;
}

own_manager::own_manager(BDD_STORE_METHOD method, unsigned variables)
    : own(variables), signals(variables), bdds(method, static_cast<unsigned short>(variables), [&] {
          std::transform(own.begin(), own.end(), signals.begin(), [](auto& s) { return &s; });
          return signals.data();
      }())
{
}

BDD_NODE* own_manager::variable(unsigned index)
{
    return bdds.table->findoradd(static_cast<unsigned short>(index), basbdd_one, basbdd_zero);
}

bool evaluate(BDD_NODE* e, unsigned assignment)
{
    bool value = true;
    for (;; e = (assignment >> node(e)->varid & 1U) != 0 ? node(e)->high : node(e)->low) {
        value = value != is_marked(e);
        if (node(e) == basbdd_one) {
            return value;
        }
    }
}

bool is_canonical(BDD_NODE* e)
{
    BDD_NODE* const n = node(e);
    if (n == basbdd_one) {
        return n->varid == 0xFFFF && n->high == nullptr && n->low == nullptr;
    }
    return !is_marked(n->high) && n->high != n->low && n->varid < node(n->high)->varid &&
           n->varid < node(n->low)->varid && is_canonical(n->high) && is_canonical(n->low);
}

} // namespace bdd_oracle
