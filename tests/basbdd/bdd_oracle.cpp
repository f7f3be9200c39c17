#include "bdd_oracle.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace bdd_oracle {

namespace {

bool ranks_before(BDD_NODE* x, BDD_NODE* y)
{
    return std::make_pair(node(x)->varid, bits(x)) < std::make_pair(node(y)->varid, bits(y));
}

BDD_NODE* cofactor(BDD_NODE* e, unsigned short var, bool value)
{
    if (node(e)->varid != var) {
        return e;
    }
    BDD_NODE* child = value ? node(e)->high : node(e)->low;
    return is_marked(e) ? negate(child) : child;
}

} // namespace

BDD_NODE* ifthenelse(BDD_MANAGER& m, BDD_NODE* f, BDD_NODE* g, BDD_NODE* h)
{
    BDD_NODE* const one = basbdd_one;
    BDD_NODE* const zero = basbdd_zero;
    if (f == one || f == zero) {
        return f == one ? g : h;
    }
    g = g == f ? one : g == negate(f) ? zero : g;
    h = h == f ? zero : h == negate(f) ? one : h;
    if (g == h) {
        return g;
    }
    if ((g == one && h == zero) || (g == zero && h == one)) {
        return g == one ? f : negate(f);
    }
    const bool g_first = ranks_before(g, f);
    const bool h_first = ranks_before(h, f);
    const auto call = [&](BDD_NODE* a, BDD_NODE* b, BDD_NODE* c) { f = a, g = b, h = c; };
    const int standard = g == one ? 0 : h == one ? 1 : g == zero ? 2 : h == zero ? 3 : 4;
    if (h_first && (standard == 0 || standard == 2)) {
        standard == 0 ? call(h, one, f) : call(negate(h), zero, negate(f));
    } else if (g_first && (standard == 1 || standard == 3)) {
        standard == 1 ? call(negate(g), negate(f), one) : call(g, f, zero);
    } else if (g_first && standard == 4 && g == negate(h)) {
        call(g, f, negate(f));
    }
    if (is_marked(f)) {
        call(negate(f), h, g);
    }
    const bool flip = is_marked(g);
    if (flip) {
        call(f, negate(g), negate(h));
    }
    const auto top = std::min({node(f)->varid, node(g)->varid, node(h)->varid});
    const auto branch = [&](bool v) {
        return ifthenelse(m, cofactor(f, top, v), cofactor(g, top, v), cofactor(h, top, v));
    };
    BDD_NODE* const high = branch(true);
    BDD_NODE* const low = branch(false);
    BDD_NODE* const result = high == low ? high : m.table->findoradd(top, high, low);
    return flip ? negate(result) : result;
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

void* NUMBERING_STORE::s_add(const void* key, void* data)
{
    const auto* added_node = static_cast<const BDD_NODE*>(key);
    numbers.emplace(added_node, numbers.size());
    added.push_back(std::to_string(added_node->varid) + " " + name(added_node->high) + " " +
                    name(added_node->low));
    return behind->s_add(key, data);
}

std::string NUMBERING_STORE::name(BDD_NODE* e) const
{
    const bool constant = node(e) == basbdd_one;
    return (is_marked(e) ? "~" : "") + (constant ? "1" : "n" + std::to_string(numbers.at(node(e))));
}

MANAGER::MANAGER(BDD_STORE_METHOD method, unsigned variables)
    : own(variables), addresses([this] {
          std::vector<TECHMAP_SIG*> all;
          std::transform(own.begin(), own.end(), std::back_inserter(all),
                         [](TECHMAP_SIG& s) { return &s; });
          return all;
      }()),
      bdds(method, static_cast<unsigned short>(variables), addresses.data())
{
}

BDD_NODE* MANAGER::variable(unsigned index)
{
    return bdds.table->findoradd(static_cast<unsigned short>(index), basbdd_one, basbdd_zero);
}

NUMBERING_STORE& MANAGER::number_nodes()
{
    auto* store = new NUMBERING_STORE(new BDD_HASH);
    delete bdds.table->store;
    bdds.table->store = store;
    for (unsigned i = 0; i < signals.size(); ++i) {
        variable(i);
    }
    return *store;
}

BDD_NODE* MANAGER::function(unsigned variables, const std::vector<bool>& values)
{
    std::vector<BDD_NODE*> level;
    std::transform(values.begin(), values.end(), std::back_inserter(level),
                   [](bool value) { return value ? basbdd_one : basbdd_zero; });
    // The last variable is the highest bit of an assignment, so it halves the list.
    for (unsigned var = variables; var-- > 0;) {
        const std::size_t half = level.size() / 2;
        for (std::size_t i = 0; i < half; ++i) {
            level[i] = bdd_oracle::ifthenelse(bdds, variable(var), level[i + half], level[i]);
        }
        level.resize(half);
    }
    return level[0];
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

std::vector<bool> column(BDD_NODE* e, unsigned variables)
{
    std::vector<bool> values(std::size_t{1} << variables);
    for (unsigned assignment = 0; assignment < values.size(); ++assignment) {
        values[assignment] = evaluate(e, assignment);
    }
    return values;
}

double count_models(BDD_NODE* e, unsigned variables)
{
    // No share is subtracted from another: that would lose digits.
    std::map<BDD_NODE*, double> shares{{basbdd_one, 1.0}, {basbdd_zero, 0.0}};
    const std::function<double(BDD_NODE*)> share = [&](BDD_NODE* edge) {
        const auto known = shares.find(edge);
        if (known != shares.end()) {
            return known->second;
        }
        const auto child = [&](BDD_NODE* c) { return share(is_marked(edge) ? negate(c) : c); };
        const double both = child(node(edge)->high) + child(node(edge)->low);
        return shares[edge] = both / 2;
    };
    return std::ldexp(share(e), static_cast<int>(variables));
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
