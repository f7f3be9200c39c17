#include "liberty_cell.h"

#include "basbdcells/text.h"
#include "liberty_statement.h"
#include "numbers.h"

#include <utility>

namespace basbdcells {

namespace {

pin_direction direction_of(const std::string& text)
{
    return text == "input"      ? pin_direction::input
           : text == "output"   ? pin_direction::output
           : text == "inout"    ? pin_direction::inout
           : text == "internal" ? pin_direction::internal
                                : pin_direction::unknown;
}

} // namespace

const liberty_pin* liberty_cell::find_pin(const std::string& name) const
{
    auto found = numbers.find(name);
    if (found != numbers.end()) {
        return &pins[found->second];
    }
    found = numbers.find(name.substr(0, name.find_last_of("[<")));
    return found != numbers.end() && pins[found->second].is_bus ? &pins[found->second] : nullptr;
}

pin_range liberty_cell::add_pins(const std::vector<std::string>& names, const liberty_pin& sample)
{
    const std::size_t first = pins.size();
    for (const std::string& name : names) {
        numbers.try_emplace(name, pins.size());
        pins.push_back(sample);
        pins.back().result.name = name;
    }
    return {first, pins.size()};
}

bool is_pin_group(std::string_view kind)
{
    return kind == "pin" || kind == "bus" || kind == "bundle";
}

bool is_state_group(std::string_view kind)
{
    return kind == "ff" || kind == "latch" || kind == "ff_bank" || kind == "latch_bank" ||
           kind == "statetable";
}

void liberty_cell::add_states(const std::string& kind, const std::vector<std::string>& names)
{
    const std::size_t first = kind == "statetable" ? 1 : 0; // the first list is of inputs
    for (std::size_t i = first; is_state_group(kind) && i < names.size(); ++i) {
        for (std::string& name : names_in(names[i])) {
            states.insert(std::move(name));
        }
    }
}

void liberty_cell::close_bus(pin_range bus)
{
    for (std::size_t i = bus.last; i < pins.size(); ++i) {
        pin_direction& direction = pins[i].result.direction;
        if (direction == pin_direction::unknown) {
            direction = pins[bus.first].result.direction;
        }
    }
}

std::string liberty_cell::set_attribute(const std::string& name, const std::string& value)
{
    if (name == "area") {
        result.area = to_value(value);
        return result.area ? "" : "expected a number as the area instead of " + quoted(value);
    }
    if (name == "dont_use") {
        result.dont_use = value == "true" || value == "TRUE";
    } else {
        result.attributes.push_back({name, value});
    }
    return "";
}

std::string liberty_cell::set_pin_attribute(pin_range of, const std::string& name,
                                            const placed_text& value)
{
    for (std::size_t i = of.first; i < of.last; ++i) {
        liberty_pin& made = pins[i];
        if (name == "direction") {
            made.result.direction = direction_of(value.text);
        } else if (name == "function") {
            made.function = value;
        } else if (name == "three_state") {
            made.three_state = value;
        } else {
            made.has_state_function |= name == "state_function";
            made.result.attributes.push_back({name, value.text});
        }
    }
    const bool is_wrong = name == "direction" && direction_of(value.text) == pin_direction::unknown;
    return is_wrong ? "expected a direction instead of " + quoted(value.text) : "";
}

} // namespace basbdcells
