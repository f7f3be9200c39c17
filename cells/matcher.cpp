#include "basbdcells/matcher.h"

#include "function_set.h"
#include "search.h"

#include <algorithm>
#include <bitset>
#include <limits>
#include <tuple>
#include <utility>

namespace basbdcells {

namespace {

int count_bits(unsigned bits)
{
    return static_cast<int>(std::bitset<std::numeric_limits<unsigned>::digits>(bits).count());
}

} // namespace

/// The functions that are wanted, once for each choice of complemented outputs.
struct matcher::state {
    function_set wanted;
    std::vector<prepared> phases; ///< bit j of the index complements function j

    /// Puts a binding of what the functions depend on into terms of all pins and inputs.
    binding expand(const function_set& cell, unsigned phase,
                   const std::vector<connection>& reduced) const
    {
        binding all;
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            all.inverted_outputs.push_back((phase >> i & 1U) != 0);
        }
        const std::vector<int>& pins = cell.support();
        all.pins.resize(pins.empty() ? 0 : static_cast<std::size_t>(pins.back()) + 1);
        for (std::size_t i = 0; i < pins.size(); ++i) {
            const int input = wanted.support()[static_cast<std::size_t>(reduced[i].input)];
            all.pins[static_cast<std::size_t>(pins[i])] = {input, reduced[i].inverted};
        }
        return all;
    }

    bool may_match(const function_set& cell) const
    {
        return cell.size() == wanted.size() && cell.support().size() == wanted.support().size();
    }
};

int binding::complements() const
{
    return static_cast<int>(std::count(inverted_outputs.begin(), inverted_outputs.end(), true) +
                            std::count_if(pins.begin(), pins.end(),
                                          [](const connection& each) { return each.inverted; }));
}

matcher::matcher(const function_set& wanted, inverters use)
{
    state made{wanted, {}};
    const unsigned phases = use == inverters::none ? 1U : 1U << wanted.size();
    for (unsigned phase = 0; phase < phases; ++phase) {
        made.phases.emplace_back(wanted.data().with_complements(phase), wanted.support().size());
    }
    shared = std::make_shared<const state>(std::move(made));
    exact = use == inverters::none;
}

std::size_t matcher::wanted_count() const { return shared->wanted.size(); }

std::optional<binding> matcher::best(const function_set& cell) const
{
    if (!shared->may_match(cell)) {
        return std::nullopt;
    }
    const prepared source(cell.data().table, cell.support().size());
    std::vector<std::pair<unsigned, int>> possible; // phases, and the fewest complements of each
    for (unsigned phase = 0; phase < shared->phases.size(); ++phase) {
        const prepared& target = shared->phases[phase];
        const auto wanted = exact ? search_for::at_most : search_for::any;
        if (search(source, target, wanted, 0, [](const auto&) {})) {
            possible.emplace_back(phase, count_bits(phase) +
                                             source.traits.least_complements(target.traits));
        }
    }
    std::optional<binding> result;
    for (int count = 0; !possible.empty() && !result; ++count) {
        for (const auto& [phase, fewest] : possible) {
            const auto keep = [&, &of = phase](const std::vector<connection>& pins) {
                result = shared->expand(cell, of, pins);
            };
            if (fewest <= count && search(source, shared->phases[phase], search_for::at_most,
                                          count - count_bits(phase), keep)) {
                break;
            }
        }
    }
    return result;
}

bool matcher::implements(const function_set& cell) const
{
    if (!shared->may_match(cell)) {
        return false;
    }
    const prepared source(cell.data().table, cell.support().size());
    const auto wanted = exact ? search_for::at_most : search_for::any;
    return std::any_of(shared->phases.begin(), shared->phases.end(), [&](const prepared& target) {
        return search(source, target, wanted, 0, [](const auto&) {});
    });
}

int matcher::most_complements(const function_set& cell) const
{
    return exact ? 0 : static_cast<int>(cell.size() + cell.support().size());
}

bool matcher::for_each(const function_set& cell, int complements,
                       const std::function<void(const binding&)>& found) const
{
    bool any = false;
    if (shared->may_match(cell) && complements <= most_complements(cell)) {
        const prepared source(cell.data().table, cell.support().size());
        for (unsigned phase = 0; phase < shared->phases.size(); ++phase) {
            const int of_inputs = complements - count_bits(phase);
            any |= of_inputs >= 0 &&
                   search(source, shared->phases[phase], search_for::each_exactly, of_inputs,
                          [&](const auto& pins) { found(shared->expand(cell, phase, pins)); });
        }
    }
    return any;
}

} // namespace basbdcells
