#include "basbdcells/matcher.h"

#include "function_set.h"
#include "signature.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

namespace basbdcells {

namespace {

double area_of(const cell_output& member)
{
    return member.source->area.value_or(std::numeric_limits<double>::infinity());
}

/// An output and its function.
struct classified {
    cell_output member;
    function_set functions;
};

/// What functions of one class have in common: the inputs, and the ones of function or complement.
std::pair<std::size_t, std::int64_t> key_of(const function_set& functions, inverters use)
{
    const TRUTH_TABLE_VAL& column = functions.data().table.value;
    const std::int64_t ones = count_ones(column);
    const std::int64_t least =
        use == inverters::none ? ones : std::min(ones, column.bit_count - ones);
    return {functions.support().size(), least};
}

std::vector<classified> outputs_of(const std::vector<const cell*>& cells)
{
    std::vector<classified> all;
    for (const cell* each : cells) {
        for (candidate& one : candidates_of(*each)) {
            all.push_back({{each, one.outputs.front()}, std::move(one.functions)});
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const classified& left, const classified& right) {
        return std::tuple<double, const std::string&>(area_of(left.member),
                                                      left.member.source->name) <
               std::tuple<double, const std::string&>(area_of(right.member),
                                                      right.member.source->name);
    });
    return all;
}

} // namespace

std::vector<cell_class> classes_of(const std::vector<const cell*>& cells, inverters use)
{
    struct known {
        matcher finds;
        std::size_t number;
    };
    std::vector<cell_class> classes;
    std::map<std::pair<std::size_t, std::int64_t>, std::vector<known>> by_key;
    for (classified& each : outputs_of(cells)) {
        std::vector<known>& alike = by_key[key_of(each.functions, use)];
        const auto found = std::find_if(alike.begin(), alike.end(), [&](const known& one) {
            return one.finds.implements(each.functions);
        });
        if (found != alike.end()) {
            classes[found->number].members.push_back(each.member);
        } else {
            alike.push_back({matcher(each.functions, use), classes.size()});
            classes.push_back({each.functions.support(), {each.member}});
        }
    }
    std::stable_sort(
        classes.begin(), classes.end(), [](const cell_class& left, const cell_class& right) {
            return left.support.size() < right.support.size(); // in each the cheapest came first
        });
    return classes;
}

} // namespace basbdcells
