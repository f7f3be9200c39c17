/// @file
/// @brief What a Liberty library says of one cell.
#pragma once

#include "basbdcells/library.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace basbdcells {

/// A text and where it stands.
struct placed_text {
    std::string text;
    int line;
};

/// A `pin` group, or a `bus` or `bundle` group.
struct liberty_pin {
    pin result;
    std::optional<placed_text> function;
    bool has_state_function = false;
    std::optional<placed_text> three_state;
    bool is_bus = false;    ///< the group of a bus or bundle
    bool is_member = false; ///< belongs to the last bus or bundle before it
};

/// Pins that one group makes: indices into `liberty_cell::pins`.
struct pin_range {
    std::size_t first = 0;
    std::size_t last = 0; ///< behind them
};

/// A `cell` group.
struct liberty_cell {
    cell result;
    std::vector<liberty_pin> pins;
    std::set<std::string> states; ///< the variables of its flip-flops, latches and state tables

    /// The pin that a name in a function means: a member of a bus may have no group of its own.
    const liberty_pin* find_pin(const std::string& name) const;

    /// @param sample  what all of them are but for the name
    pin_range add_pins(const std::vector<std::string>& names, const liberty_pin& sample);
    /// Adds the variables of a group that holds state; nothing of any other.
    void add_states(const std::string& kind, const std::vector<std::string>& names);
    /// @brief Gives the members of a bus or bundle, which are its last pins, its direction.
    void close_bus(pin_range bus);

    /// @return what is wrong with the value, empty when nothing is
    std::string set_attribute(const std::string& name, const std::string& value);
    /// Sets an attribute of some pins. @return what is wrong with the value
    std::string set_pin_attribute(pin_range of, const std::string& name, const placed_text& value);

private:
    std::unordered_map<std::string, std::size_t> numbers; ///< of the first pin of each name
};

/// Whether a group of this kind makes pins.
bool is_pin_group(std::string_view kind);

/// Whether a group of this kind holds the state of a cell.
bool is_state_group(std::string_view kind);

} // namespace basbdcells
