#include "liberty_outputs.h"

#include "basbdcells/text.h"
#include "diagnostics.h"
#include "expression_reader.h"

#include <algorithm>
#include <utility>

namespace basbdcells {

namespace {

constexpr std::array<const char*, 4> reason_texts{
    "state, an internal node or another output in an output's function",
    "a bus or bundle as output", "an output without a function",
    "a three-state output, listed as it drives"};

bool is_blank(const std::string& text)
{
    return text.find_first_not_of(blanks) == std::string::npos;
}

/// A pin without a direction is one when something drives it.
bool is_output(const liberty_pin& source)
{
    const pin_direction direction = source.result.direction;
    const bool is_driven = source.function.has_value() || source.has_state_function;
    return direction == pin_direction::output ||
           (is_driven &&
            (direction == pin_direction::inout || direction == pin_direction::unknown));
}

/// Whether a pin in the function of `user` carries a value from outside.
bool is_input(const liberty_pin& source, const liberty_pin& user)
{
    const pin_direction direction = source.result.direction;
    return &source == &user || direction == pin_direction::inout ||
           (direction != pin_direction::internal && !is_output(source));
}

} // namespace

void liberty_outputs::fail(const liberty_cell& source, int line, const std::string& message)
{
    add_diagnostic(read, {line, "cell " + shown_name(source.result.name) + ": " + message, true});
}

/// Reads the function of an output, or when it does not drive. @return whether it could be read
bool liberty_outputs::read_function(const liberty_cell& source, const liberty_pin& from,
                                    const placed_text& text, expression& to)
{
    const std::string place = "output " + shown_name(from.result.name) + ": ";
    try {
        scanner words(text.text, comments::none, text.line);
        expression made = read_expression(words, liberty_grammar);
        for (const std::string& name : made.pins) {
            const liberty_pin* pin = source.find_pin(name);
            if (pin == nullptr && source.states.count(name) == 0) {
                throw text_error(text.line, quoted(name) + " is no pin of the cell");
            }
            if (pin != nullptr && pin->is_bus && pin->result.name == name) {
                throw text_error(text.line, quoted(name) + " is a bus; expected pins of it");
            }
        }
        if (made.pins.size() > max_inputs) {
            throw text_error(text.line, std::to_string(made.pins.size()) +
                                            " inputs; expected at most " +
                                            std::to_string(max_inputs));
        }
        to = std::move(made);
        return true;
    } catch (const text_error& error) {
        fail(source, error.line, place + error.what());
        return false;
    }
}

/// Makes the output of a pin. @return why it has none, or what is peculiar about it
std::optional<liberty_outputs::reason>
liberty_outputs::classify(const liberty_cell& source, const liberty_pin& from, output& made)
{
    if (from.is_bus || from.is_member) {
        return bus;
    }
    if (from.has_state_function) {
        return state;
    }
    if (!from.function || is_blank(from.function->text)) {
        return no_function;
    }
    expression function;
    const bool is_three_state = from.three_state && !is_blank(from.three_state->text);
    if (!read_function(source, from, *from.function, function) ||
        (is_three_state && !read_function(source, from, *from.three_state, made.three_state))) {
        return std::nullopt;
    }
    for (const auto* pins : {&function.pins, &made.three_state.pins}) {
        if (!std::all_of(pins->begin(), pins->end(), [&](const std::string& name) {
                return source.states.count(name) == 0 && is_input(*source.find_pin(name), from);
            })) {
            return state;
        }
    }
    made.function = std::move(function);
    return is_three_state ? std::optional(three_state) : std::nullopt;
}

void liberty_outputs::add(liberty_cell source)
{
    std::array<bool, reasons> seen{};
    for (const liberty_pin& each : source.pins) {
        if (!is_output(each)) {
            continue;
        }
        output made;
        made.name = each.result.name;
        const std::optional<reason> why = classify(source, each, made);
        if (!made.function.steps.empty()) {
            made.line = each.function->line;
            source.result.outputs.push_back(std::move(made));
        }
        if (why && !std::exchange(seen[*why], true)) {
            tally& all = tallies[*why];
            constexpr std::size_t most_named = 8;
            if (all.count++ < most_named) {
                all.first_names += ' ' + shown_name(source.result.name);
            }
        }
    }
    for (liberty_pin& each : source.pins) {
        if (!each.is_bus) { // its members are the pins
            if (each.result.direction == pin_direction::unknown) {
                each.result.direction =
                    is_output(each) ? pin_direction::output : pin_direction::input;
            }
            source.result.pins.push_back(std::move(each.result));
        }
    }
    read.cells.push_back(std::move(source.result));
}

void liberty_outputs::finish()
{
    for (std::size_t i = 0; i < reasons; ++i) {
        const tally& all = tallies[i];
        if (all.count > 0) {
            read.diagnostics.push_back({0,
                                        "note: " + std::to_string(all.count) +
                                            (all.count == 1 ? " cell with " : " cells with ") +
                                            reason_texts[i] + ":" + all.first_names,
                                        false});
        }
    }
}

} // namespace basbdcells
