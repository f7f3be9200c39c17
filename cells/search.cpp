#include "search.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace basbdcells {

namespace {

constexpr int word_inputs = 5; ///< inputs whose values lie inside one word

/// The ones in each block of 2^`inputs` bits of a word, every count in the place of its block.
std::uint32_t block_counts(std::uint32_t word, int inputs)
{
    constexpr std::array<std::uint32_t, word_inputs> masks{0x55555555U, 0x33333333U, 0x0F0F0F0FU,
                                                           0x00FF00FFU, 0x0000FFFFU};
    for (int i = 0; i < inputs; ++i) {
        const std::uint32_t mask = masks[static_cast<std::size_t>(i)];
        word = (word & mask) + ((word >> (1U << i)) & mask);
    }
    return word;
}

/// Whether the columns have the same number of ones in every block of 2^`inputs` bits.
bool blocks_agree(const TRUTH_TABLE_VAL& left, const TRUTH_TABLE_VAL& right, int inputs)
{
    const int in_word = std::min(inputs, word_inputs);
    const std::size_t words = std::size_t{1} << (inputs - in_word);
    for (std::size_t block = 0; block < left.words.size(); block += words) {
        std::uint32_t surplus = 0;
        for (std::size_t i = block; i < block + words; ++i) {
            surplus += block_counts(left.words[i], in_word);
            surplus -= block_counts(right.words[i], in_word);
        }
        if (surplus != 0) {
            return false;
        }
    }
    return true;
}

/// Applies a binding to a cell. @return whether the outcome is the target
bool holds(const std::vector<connection>& pins, BOOL_TRUTH_TABLE cell,
           const BOOL_TRUTH_TABLE& target)
{
    std::vector<int> places(static_cast<std::size_t>(cell.get_width()));
    std::iota(places.begin(), places.end(), 0);
    for (std::size_t i = 0; i < pins.size(); ++i) {
        places[i] = pins[i].input;
        if (pins[i].inverted) {
            cell.invert_input(static_cast<int>(i));
        }
    }
    cell.rotate_inputs(places.data());
    return cell.get_width() == target.get_width() && cell.value == target.value;
}

/// @brief Places the target's inputs on the cell's pins, one after the other.
///
/// The pins stand at the inputs of `pattern`, the pin that is placed first at the highest. Placing
/// an input moves it to its pin's place in `trial`. From then on the blocks of the two columns that
/// belong to the placed pins must hold the same number of ones, which ends most attempts early.
class placement {
public:
    placement(const prepared& cell_functions, const prepared& target_functions, search_for goal,
              int complements, const std::function<void(const std::vector<connection>&)>& callback)
        : cell(cell_functions), target(target_functions), pins(cell.traits), inputs(target.traits),
          pattern(cell.table), trial(target.table), wanted(goal), left(complements), found(callback)
    {
    }

    bool run()
    {
        const int width = static_cast<int>(pins.inputs.size());
        order_pins();
        at.resize(pins.inputs.size());
        std::iota(at.begin(), at.end(), 0);
        result.resize(pins.inputs.size());
        return blocks_agree(trial.value, pattern.value, width) && place(width - 1);
    }

private:
    struct attempt {
        std::size_t input;
        bool inverted;
    };

    /// Pins that few inputs fit are placed first.
    void order_pins()
    {
        const std::size_t width = pins.inputs.size();
        std::vector<std::ptrdiff_t> fitting(width);
        for (std::size_t pin = 0; pin < width; ++pin) {
            fitting[pin] = std::count_if(inputs.inputs.begin(), inputs.inputs.end(),
                                         [&](const input_signature& input) {
                                             return input.fits(pins.inputs[pin], false) ||
                                                    input.fits(pins.inputs[pin], true);
                                         });
        }
        pin_at.resize(width);
        std::iota(pin_at.begin(), pin_at.end(), 0);
        std::stable_sort(pin_at.begin(), pin_at.end(),
                         [&](std::size_t left_pin, std::size_t right_pin) {
                             return fitting[left_pin] > fitting[right_pin];
                         });
        std::vector<int> places(static_cast<std::size_t>(pattern.get_width()));
        std::iota(places.begin(), places.end(), 0);
        for (std::size_t place = 0; place < width; ++place) {
            places[pin_at[place]] = static_cast<int>(place);
        }
        pattern.rotate_inputs(places.data());
    }

    /// @brief Whether a symmetry of the target makes `next` fail as `failed` did.
    ///
    /// An exchange of complemented inputs changes how many complements there are.
    bool fails_like(const attempt& failed, const attempt& next) const
    {
        const symmetry& both = inputs.symmetries[failed.input][next.input];
        return failed.inverted == next.inverted ? both.plain
                                                : both.complemented && wanted == search_for::any;
    }

    bool may_try(const attempt& next, std::size_t pin, const std::vector<attempt>& failed) const
    {
        return !(next.inverted && left == 0) &&
               inputs.inputs[next.input].fits(pins.inputs[pin], next.inverted) &&
               std::none_of(failed.begin(), failed.end(),
                            [&](const attempt& each) { return fails_like(each, next); });
    }

    /// Fills the place `top` and those below. The calls nest as deep as there are inputs.
    bool place(int top)
    {
        if (top < 0) {
            return emit();
        }
        const std::size_t pin = pin_at[static_cast<std::size_t>(top)];
        std::vector<attempt> failed;
        bool any = false;
        for (int from = top; from >= 0; --from) {
            for (const bool inverted : {false, true}) {
                const attempt next{at[static_cast<std::size_t>(from)], inverted};
                if (!may_try(next, pin, failed)) {
                    continue;
                }
                const bool success = try_attempt(from, top, inverted);
                any |= success;
                if (success && wanted != search_for::each_exactly) {
                    return true;
                }
                if (!success) {
                    failed.push_back(next);
                }
            }
        }
        return any;
    }

    bool try_attempt(int from, int top, bool inverted)
    {
        exchange(from, top);
        if (inverted) {
            --left;
            trial.invert_input(top);
        }
        result[pin_at[static_cast<std::size_t>(top)]].inverted = inverted;
        const bool success = blocks_agree(trial.value, pattern.value, top) && place(top - 1);
        if (inverted) {
            ++left;
            trial.invert_input(top);
        }
        exchange(from, top);
        return success;
    }

    void exchange(int place, int other)
    {
        trial.rotate_inputs(place, other);
        std::swap(at[static_cast<std::size_t>(place)], at[static_cast<std::size_t>(other)]);
    }

    bool emit()
    {
        if (wanted == search_for::each_exactly && left > 0) {
            return false;
        }
        for (std::size_t place = 0; place < at.size(); ++place) {
            result[pin_at[place]].input = static_cast<int>(at[place]);
        }
        if (!holds(result, cell.table, target.table)) {
            throw std::logic_error("a binding that was found does not hold");
        }
        found(result);
        return true;
    }

    const prepared& cell;
    const prepared& target;
    const signature& pins;
    const signature& inputs;
    BOOL_TRUTH_TABLE pattern;
    BOOL_TRUTH_TABLE trial;
    search_for wanted;
    int left; ///< complements that may still be used
    const std::function<void(const std::vector<connection>&)>& found;
    std::vector<std::size_t> pin_at; ///< the pin at each place of `pattern`
    std::vector<std::size_t> at;     ///< the target's input at each place of `trial`
    std::vector<connection> result;
};

} // namespace

bool search(const prepared& cell, const prepared& target, search_for wanted, int complements,
            const std::function<void(const std::vector<connection>&)>& found)
{
    const bool is_exact = wanted != search_for::any && complements == 0;
    if (cell.table.get_width() != target.table.get_width() ||
        cell.traits.inputs.size() != target.traits.inputs.size() ||
        !cell.traits.fits(target.traits, is_exact)) {
        return false;
    }
    const int most = wanted == search_for::any ? cell.table.get_width() : complements;
    return placement(cell, target, wanted, most, found).run();
}

} // namespace basbdcells
