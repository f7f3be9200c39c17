/// @file
/// @brief The outputs of the cells in a Liberty library.
#pragma once

#include "basbdcells/library.h"
#include "liberty_cell.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace basbdcells {

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
