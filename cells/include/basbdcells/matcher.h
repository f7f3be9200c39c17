/// @file
/// @brief Which cells implement functions, and how they are connected.
#pragma once

#include "basbdcells/function.h"
#include "basbdcells/library.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace basbdcells {

/// @addtogroup cells Cell libraries
/// @{

/// What an input pin of a cell is connected to.
struct connection {
    static constexpr int tied = -1; ///< as `input`: a constant
    int input = tied;               ///< an input of the functions, or `tied`
    bool inverted = false;          ///< through an inverter
    bool constant = false;          ///< what it is tied to
};

/// How cells with some outputs implement as many functions.
struct binding {
    std::vector<bool> inverted_outputs; ///< function i is the complement of output i
    std::vector<connection> pins;       ///< of each input of the cell
    BASBD_API int complements() const;  ///< how many inverters that takes
};

/// The most functions that are matched at once: every choice of their complements is tried.
constexpr std::size_t max_functions = 16;

/// @brief Functions of the same inputs, made ready to be compared.
///
/// Cheap to copy. The inputs on which no function depends take no part.
class BASBD_API function_set {
public:
    /// @param functions  1 to `max_functions`, all of one width from 1 to `max_inputs`; asserted
    explicit function_set(const std::vector<BOOL_TRUTH_TABLE>& functions);

    std::size_t size() const;                ///< the number of functions
    const std::vector<int>& support() const; ///< the inputs on which they depend

    struct state; ///< private to this library
    const state& data() const { return *shared; }

private:
    std::shared_ptr<const state> shared;
};

/// Whether inverters may stand before a cell and behind it.
enum class inverters { allowed, none };

struct match;

/// @brief Finds the bindings with which cells implement some functions.
///
/// Every binding is applied and compared before it is told. Cofactor counts and symmetries of the
/// inputs leave little to try; the worst case is exponential in their number.
class BASBD_API matcher {
public:
    /// @param wanted  what the cells are to implement, all at once
    /// @param use     whether complements count as found
    explicit matcher(const function_set& wanted, inverters use = inverters::allowed);

    /// The number of functions that are wanted.
    std::size_t wanted_count() const;
    /// The binding with the fewest complements, if there is one.
    std::optional<binding> best(const function_set& cell) const;
    /// The best match of each pick of the cell's outputs; views of the cell.
    std::vector<match> matches_of(const cell& source) const;
    std::vector<match> matches_of(const cell&&) const = delete;
    /// Whether there is one.
    bool implements(const function_set& cell) const;
    /// @brief Calls `found` for every binding with so many complements.
    /// @return whether there was one
    bool for_each(const function_set& cell, int complements,
                  const std::function<void(const binding&)>& found) const;
    /// More complements than this no binding of `cell` has.
    int most_complements(const function_set& cell) const;

private:
    struct state;
    std::shared_ptr<const state> shared;
    bool exact;
};

/// @brief Some outputs of a cell as functions of its pins.
struct candidate {
    const cell* source;               ///< the cell, which outlives this
    std::vector<std::size_t> outputs; ///< indices into `source->outputs`
    /// @brief All inputs of the cell, first those of the outputs' functions as these name them.
    std::vector<std::string> pins;
    function_set functions; ///< of the first of `pins`; the others are tied in any binding
    std::vector<bool>
        ties; ///< what each of `pins` is tied to where it is, so that the outputs drive
};

/// @brief Every way to pick `count` outputs of a cell in an order.
/// @return views of the cell, which outlives them. Left out are those of more than `max_inputs`
/// inputs, and three-state outputs that no tie makes drive
BASBD_API std::vector<candidate> candidates_of(const cell& source, std::size_t count = 1);
std::vector<candidate> candidates_of(const cell&&, std::size_t count = 1) = delete;

/// Completes a binding of a candidate's functions by what its other pins are tied to.
BASBD_API void tie_the_rest(const candidate& cell, binding& how);

/// A candidate, and how it implements the functions that are wanted.
struct match {
    candidate cell;      ///< the outputs that implement them
    binding connections; ///< of all the cell's inputs

    /// The cell's area, if it is known, and that of the inverters.
    BASBD_API std::optional<double> cost(double inverter_area) const;
};

/// @brief The best match of each candidate: the cheapest first, then by complements and name.
/// @param cells   views of them are returned
/// @param wanted  what the cells are to implement, all at once
/// @param use     whether inverters may stand before and behind a cell
/// @param inverter_area  what each of them costs, at least 0
BASBD_API std::vector<match> find_matches(const std::vector<cell>& cells,
                                          const function_set& wanted,
                                          inverters use = inverters::allowed,
                                          double inverter_area = 0);
std::vector<match> find_matches(const std::vector<cell>&&, const function_set&,
                                inverters use = inverters::allowed,
                                double inverter_area = 0) = delete;

/// Sorts matches in the order of `find_matches`.
BASBD_API void sort_matches(std::vector<match>& matches, double inverter_area);

/// Sets of functions over the union of their inputs.
struct shared_functions {
    std::vector<std::string> inputs;      ///< their names, each once
    std::vector<BOOL_TRUTH_TABLE> tables; ///< of each function over all `inputs`
};

/// @brief Functions over the inputs of all of them, which are joined by name. The union has at most
/// `max_inputs`, else there are no tables.
BASBD_API shared_functions share_inputs(const std::vector<function>& functions);

/// An output of a cell.
struct cell_output {
    const cell* source; ///< the cell, which outlives this
    std::size_t output; ///< index into `source->outputs`
};

/// Outputs that are one function.
struct cell_class {
    std::vector<int> support;         ///< inputs of the first one that its function depends on
    std::vector<cell_output> members; ///< the cheapest first
};

/// @brief Sorts the outputs of cells into classes of one function up to the order of its inputs
/// and, where inverters are allowed, to complements of inputs and output.
/// @param cells  views of them are returned
/// @param use    whether complements are one function
/// @return the classes by number of inputs, then by the area of the cheapest member
BASBD_API std::vector<cell_class> classes_of(const std::vector<const cell*>& cells,
                                             inverters use = inverters::allowed);

/// @}

} // namespace basbdcells
