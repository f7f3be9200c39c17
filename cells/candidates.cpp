#include "basbdcells/matcher.h"

#include "function_set.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace basbdcells {

namespace {

/// Adds the names that are new. @return the place of each
std::vector<std::size_t> join_names(std::vector<std::string>& all,
                                    const std::vector<std::string>& more)
{
    std::vector<std::size_t> places;
    for (const std::string& each : more) {
        const auto at = std::find(all.begin(), all.end(), each) - all.begin();
        places.push_back(static_cast<std::size_t>(at));
        if (static_cast<std::size_t>(at) == all.size()) {
            all.push_back(each);
        }
    }
    return places;
}

/// A table over more inputs, of which the table's own are those with the numbers `places`.
BOOL_TRUTH_TABLE spread(BOOL_TRUTH_TABLE table, std::vector<std::size_t> places, int width)
{
    table = repeated(std::move(table), width);
    for (std::size_t i = 0; i < static_cast<std::size_t>(width); ++i) { // the others in order
        if (std::find(places.begin(), places.end(), i) == places.end()) {
            places.push_back(i);
        }
    }
    std::vector<int> order(places.begin(), places.end());
    table.rotate_inputs(order.data());
    return table;
}

/// The table of an expression whose pins are now others.
BOOL_TRUTH_TABLE table_over(const std::vector<std::string>& pins,
                            const std::vector<std::size_t>& places, expression source)
{
    source.pins = pins;
    for (step& each : source.steps) {
        each.pin = each.kind == step_kind::pin ? places[each.pin] : 0;
    }
    return table_of(source);
}

/// The column, over `names`, of the assignments with which some output does not drive.
TRUTH_TABLE_VAL open_column(const cell& source, const std::vector<std::size_t>& outputs,
                            std::vector<std::string>& names)
{
    TRUTH_TABLE_VAL open(std::max(1, static_cast<int>(names.size())), 0);
    for (const std::size_t each : outputs) {
        const expression& disabled = source.outputs[each].three_state;
        if (!disabled.steps.empty()) {
            open |= table_over(names, join_names(names, disabled.pins), disabled).value;
        }
    }
    return open;
}

/// @brief Finds constants for pins that the functions leave over, with which all outputs drive
/// whatever the other pins carry.
/// @param used  pins of the functions, which come first in `pins`
/// @return whether there are any
bool tie_to_drive(const cell& source, const std::vector<std::size_t>& outputs, std::size_t used,
                  std::vector<std::string>& pins, std::vector<bool>& ties)
{
    std::vector<std::string> names;
    for (const std::size_t each : outputs) {
        join_names(names, source.outputs[each].three_state.pins);
    }
    if (names.size() > max_inputs) {
        return false;
    }
    const TRUTH_TABLE_VAL open = open_column(source, outputs, names);
    const std::vector<std::size_t> places = join_names(pins, names);
    ties.resize(pins.size());
    std::size_t free = 0; // a bit for each name that may be tied
    for (std::size_t i = 0; i < places.size(); ++i) {
        free |= places[i] < used ? 0 : std::size_t{1} << i;
    }
    std::vector<bool> is_wrong(static_cast<std::size_t>(open.bit_count));
    for (std::size_t x = 0; x < is_wrong.size(); ++x) {
        if ((open.words[x / 32] >> x % 32 & 1U) != 0) {
            is_wrong[x & free] = true;
        }
    }
    for (std::size_t x = 0; x < is_wrong.size(); ++x) {
        if ((x & ~free) == 0 && !is_wrong[x]) {
            for (std::size_t i = 0; i < places.size(); ++i) {
                ties[places[i]] = (x >> i & 1U) != 0;
            }
            return true;
        }
    }
    return false;
}

std::optional<candidate> make_candidate(const cell& source, const std::vector<std::size_t>& outputs)
{
    std::vector<std::string> pins;
    std::vector<std::vector<std::size_t>> places;
    places.reserve(outputs.size());
    for (const std::size_t each : outputs) {
        places.push_back(join_names(pins, source.outputs[each].function.pins));
    }
    if (pins.size() > max_inputs) {
        return std::nullopt;
    }
    std::vector<BOOL_TRUTH_TABLE> tables;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        tables.push_back(table_over(pins, places[i], source.outputs[outputs[i]].function));
    }
    const std::size_t used = pins.size();
    for (const pin& each : source.pins) {
        if (each.direction == pin_direction::input) {
            join_names(pins, {each.name});
        }
    }
    std::vector<bool> ties(pins.size());
    if (!tie_to_drive(source, outputs, used, pins, ties)) {
        return std::nullopt;
    }
    return candidate{&source, outputs, std::move(pins), function_set(tables), std::move(ties)};
}

double order_of(const std::optional<double>& cost)
{
    return cost.value_or(std::numeric_limits<double>::infinity());
}

} // namespace

std::vector<candidate> candidates_of(const cell& source, std::size_t count)
{
    std::vector<candidate> found;
    std::vector<std::size_t> outputs{0}; // counts through all picks, in lexicographic order
    while (!outputs.empty() && count <= source.outputs.size()) {
        const bool is_new =
            std::find(outputs.begin(), outputs.end() - 1, outputs.back()) == outputs.end() - 1;
        if (outputs.back() == source.outputs.size()) {
            outputs.pop_back();
        } else if (is_new && outputs.size() < count) {
            outputs.push_back(0);
            continue;
        } else if (is_new) {
            if (std::optional<candidate> made = make_candidate(source, outputs)) {
                found.push_back(std::move(*made));
            }
        }
        if (!outputs.empty()) {
            ++outputs.back();
        }
    }
    return found;
}

std::optional<double> match::cost(double inverter_area) const
{
    if (!cell.source->area) {
        return std::nullopt;
    }
    return *cell.source->area + inverter_area * connections.complements();
}

void sort_matches(std::vector<match>& matches, double inverter_area)
{
    const auto key = [&](const match& each) {
        return std::tuple<double, int, const std::string&>(order_of(each.cost(inverter_area)),
                                                           each.connections.complements(),
                                                           each.cell.source->name);
    };
    std::stable_sort(matches.begin(), matches.end(),
                     [&](const match& left, const match& right) { return key(left) < key(right); });
}

void tie_the_rest(const candidate& cell, binding& how)
{
    how.pins.resize(cell.pins.size());
    for (std::size_t i = 0; i < how.pins.size(); ++i) {
        how.pins[i].constant = how.pins[i].input == connection::tied && cell.ties[i];
    }
}

std::vector<match> matcher::matches_of(const cell& source) const
{
    std::vector<match> found;
    for (candidate& pick : candidates_of(source, wanted_count())) {
        if (std::optional<binding> how = best(pick.functions)) {
            tie_the_rest(pick, *how);
            found.push_back({std::move(pick), std::move(*how)});
        }
    }
    return found;
}

std::vector<match> find_matches(const std::vector<cell>& cells, const function_set& wanted,
                                inverters use, double inverter_area)
{
    const matcher search(wanted, use);
    std::vector<match> found;
    for (const cell& each : cells) {
        for (match& one : search.matches_of(each)) {
            found.push_back(std::move(one));
        }
    }
    sort_matches(found, inverter_area);
    return found;
}

shared_functions share_inputs(const std::vector<function>& functions)
{
    shared_functions shared;
    std::vector<std::vector<std::size_t>> places;
    places.reserve(functions.size());
    for (const function& each : functions) {
        places.push_back(join_names(shared.inputs, each.inputs));
    }
    const int width = std::max(1, static_cast<int>(shared.inputs.size())); // of constants, too
    for (std::size_t i = 0; i < functions.size() && shared.inputs.size() <= max_inputs; ++i) {
        shared.tables.push_back(spread(functions[i].table, std::move(places[i]), width));
    }
    return shared;
}

} // namespace basbdcells
