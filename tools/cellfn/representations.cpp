#include "representations.h"

#include "forms.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace cellfn {

namespace {

std::vector<TECHMAP_SIG> signals_of(const std::vector<std::string>& pins)
{
    std::vector<TECHMAP_SIG> signals;
    std::transform(pins.begin(), pins.end(), std::back_inserter(signals),
                   [](const std::string& each) { return TECHMAP_SIG{each}; });
    return signals;
}

std::vector<TECHMAP_SIG*> addresses(std::vector<TECHMAP_SIG>& signals)
{
    std::vector<TECHMAP_SIG*> all;
    std::transform(signals.begin(), signals.end(), std::back_inserter(all),
                   [](TECHMAP_SIG& each) { return &each; });
    return all;
}

unsigned short count(const std::vector<TECHMAP_SIG>& signals)
{
    return static_cast<unsigned short>(signals.size());
}

literal_counts literals_of(BOOL_FUNC& tree, std::vector<TECHMAP_SIG>& signals)
{
    std::vector<TECHMAP_SIG*> from_highest = addresses(signals);
    std::reverse(from_highest.begin(), from_highest.end());
    BDD_MANAGER manager(BDD_STORE_HASH, count(signals), from_highest.data());
    return count_literals(BDD_FUNC(count(signals), &tree, &manager, nullptr).bdd);
}

std::string shown(const std::optional<std::string>& equation, std::uint64_t literals)
{
    return equation ? *equation : "(" + std::to_string(literals) + " literals)";
}

/// @return the first assignment on which the BDD differs from the column, empty when none does
std::string bdd_difference(const BDD_FUNC& bdd, const BOOL_TRUTH_TABLE& table)
{
    for (std::uint64_t x = 0; x < std::uint64_t{1} << table.get_width(); ++x) {
        const bool expected = (table.value.words[x / 32] >> (x % 32) & 1U) != 0;
        if (bdd_value(bdd, x) != expected) {
            return "the BDD differs from the column in entry " + std::to_string(x);
        }
    }
    return "";
}

} // namespace

representations::representations(const basbdcells::expression& source)
    : signals(signals_of(source.pins)), table(basbdcells::table_of(source)), tree(source, signals),
      manager(BDD_STORE_HASH, count(signals), addresses(signals).data()),
      bdd(count(signals), &tree.function, &manager, nullptr),
      literals(literals_of(tree.function, signals)), texts(table, literals)
{
}

std::string representations::external() const { return shown(texts.external, literals.external); }

std::string representations::internal() const { return shown(texts.internal, literals.internal); }

std::string representations::equation()
{
    return signals.size() > named_variables ? "-" : tree_equation(tree.function);
}

std::string representations::check() const
{
    std::string found = check_texts(table, texts);
    const auto add = [&](const std::string& each) {
        found += (found.empty() || each.empty() ? "" : "; ") + each;
    };
    const TRUTH_TABLE_VAL column = tree_column(tree.function, signals);
    if (!(column == table.value)) {
        add("the tree's column is " + column.get_hex_string());
    }
    add(bdd_difference(bdd, table));
    return found;
}

} // namespace cellfn
