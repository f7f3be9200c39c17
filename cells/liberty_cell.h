/// @file
/// @brief What a Liberty library says of one cell, and the outputs that this makes.
#pragma once

#include "basbdcells/library.h"

#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
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

/// A `cell` group.
struct liberty_cell {
    cell result;
    std::vector<liberty_pin> pins;
    std::set<std::string> states; ///< the variables of its flip-flops, latches and state tables
};

/// @brief Makes cells of what was read, and counts the outputs that get no row, or a peculiar one.
class liberty_outputs {
public:
    explicit liberty_outputs(library& to) : read(to) {}
    void add(liberty_cell source);
    /// Adds the notes.
    void finish();

private:
    /// Why an output is told of.
    enum reason : std::size_t { state, bus, no_function, three_state, reasons };

    bool read_function(const liberty_cell& source, const liberty_pin& from, const placed_text& text,
                       expression& to);
    std::optional<reason> classify(const liberty_cell& source, const liberty_pin& from,
                                   output& made);
    void fail(const liberty_cell& source, int line, const std::string& message);

    /// The cells with outputs of one kind.
    struct tally {
        std::size_t count = 0;
        std::string first_names;
    };

    library& read;
    std::array<tally, reasons> tallies;
};

} // namespace basbdcells
