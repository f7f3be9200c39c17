/// @file
/// @brief Cell libraries: what a mapper asks of them, read from genlib or Liberty.
#pragma once

#include "basbdcells/expression.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace basbdcells {

/// @addtogroup cells Cell libraries
/// @{

/// What a file says of a cell or a pin and this library does not look into.
struct attribute {
    std::string name;  ///< `pg_type`, say
    std::string value; ///< as the file has it, without quotation marks
};

/// How a signal passes a pin. Where Liberty does not tell, what is driven is an output, all else an
/// input.
enum class pin_direction { unknown, input, output, inout, internal };

/// A pin of a cell. Supply pins are none, nor are buses and bundles, but their members are.
struct pin {
    std::string name;                                 ///< as the file has it
    pin_direction direction = pin_direction::unknown; ///< known once the cell is read
    std::vector<attribute> attributes; ///< of Liberty the simple attributes, of genlib the PIN line
};

/// An output that is a function of input pins.
struct output {
    std::string name;    ///< of its pin
    expression function; ///< its pins in the order in which the text names them
    /// While it is 1 the output does not drive; without steps where the output always drives.
    expression three_state;
    int line = 0; ///< where its function stands
};

/// @brief A cell. One that holds state, or nothing but filling, has no `outputs`.
struct cell {
    std::string name;                  ///< in a faulty library several cells may share it
    std::optional<double> area;        ///< in the library's unit; none where the file has none
    std::vector<output> outputs;       ///< as far as they are functions of input pins
    std::vector<pin> pins;             ///< all that are not for supply
    std::vector<attribute> attributes; ///< of Liberty the simple ones
    bool dont_use = false;             ///< the library advises against it
    int line = 0;                      ///< where it begins
};

/// @brief Something that whoever reads the library must know.
struct diagnostic {
    int line;            ///< 0 when it concerns the whole file
    std::string message; ///< printable, on one line
    bool is_error;       ///< something could not be read; a note otherwise
};

/// A cell library as far as it could be read.
struct library {
    std::vector<cell> cells;             ///< in the order of the file
    std::vector<diagnostic> diagnostics; ///< in the order in which they were found
    bool has_error() const;              ///< whether a diagnostic is one
};

inline bool library::has_error() const
{
    return std::any_of(diagnostics.begin(), diagnostics.end(),
                       [](const diagnostic& each) { return each.is_error; });
}

/// @brief Reads a library from memory, in genlib or Liberty as its first words tell.
///
/// What cannot be read gives a diagnostic and the rest is read on; nothing is thrown but
/// std::bad_alloc. Time is linear in the text; memory grows with what is kept. Nothing is
/// recursive. Of Liberty, `library`, `cell`, `pin`, `bus`, `bundle` and the names of state groups
/// are looked into. Outputs that are no function of input pins are left out with one note for each
/// reason, which counts the cells and names the first eight. Of more than 1000 diagnostics the last
/// says that there are more. Files that a Liberty text includes are not read, and that is an error.
/// @param text  plain
BASBD_API library read_library(std::string_view text);

/// @brief Reads a library from a file, plain or compressed by gzip, as its content tells.
///
/// As `read_library`; a file that cannot be read, or is damaged, is a diagnostic, too.
/// @param path  the file; "-" is standard input
BASBD_API library read_library_file(const std::string& path);

/// @}

} // namespace basbdcells
