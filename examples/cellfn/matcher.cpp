#include "matcher.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace cellfn {

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

/// @brief Places the target's inputs on the cell's pins, one after the other.
///
/// The pins stand at the inputs of `pattern`, the pin that is placed first at the highest. Placing
/// an input moves it to its pin's place in `trial`. From then on the blocks of the two columns that
/// belong to the placed pins must hold the same number of ones, which ends most attempts early.
class search {
public:
    search(const matchable& cell, const matchable& target, bool invert_output, bool exact_only,
           bool every_one, const std::function<void(const binding&)>& callback)
        : cell_function(cell.function.table), target_function(target.function.table),
          pins(cell.traits), inputs(invert_output ? target.traits.complemented() : target.traits),
          pattern(cell_function), trial(target_function), exact(exact_only), all(every_one),
          found(callback)
    {
        result.output_inverted = invert_output;
        if (invert_output) {
            complement(trial);
        }
    }

    bool run()
    {
        if (!pins.fits(inputs, exact)) {
            return false;
        }
        const std::size_t width = pins.inputs.size();
        order_pins();
        at.resize(width);
        std::iota(at.begin(), at.end(), 0);
        result.input.resize(width);
        result.inverted.resize(width);
        return place(static_cast<int>(width) - 1);
    }

private:
    struct candidate {
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
        std::stable_sort(pin_at.begin(), pin_at.end(), [&](std::size_t left, std::size_t right) {
            return fitting[left] > fitting[right];
        });
        std::vector<int> places(width);
        for (std::size_t place = 0; place < width; ++place) {
            places[pin_at[place]] = static_cast<int>(place);
        }
        pattern.rotate_inputs(places.data());
    }

    /// Whether a symmetry of the target makes `next` fail as `failed` did.
    bool fails_like(const candidate& failed, const candidate& next) const
    {
        const symmetry& both = inputs.symmetries[failed.input][next.input];
        return failed.inverted == next.inverted ? both.plain : both.complemented;
    }

    /// Fills the place `top` and those below. The calls nest as deep as there are inputs.
    bool place(int top)
    {
        if (top < 0) {
            emit();
            return true;
        }
        const input_signature& pin = pins.inputs[pin_at[static_cast<std::size_t>(top)]];
        std::vector<candidate> failed;
        bool any = false;
        for (int from = top; from >= 0; --from) {
            for (const bool inverted : {false, true}) {
                const candidate next{at[static_cast<std::size_t>(from)], inverted};
                if ((inverted && exact) || !inputs.inputs[next.input].fits(pin, inverted) ||
                    std::any_of(failed.begin(), failed.end(),
                                [&](const candidate& each) { return fails_like(each, next); })) {
                    continue;
                }
                const bool success = try_candidate(from, top, inverted);
                any |= success;
                if (success && !all) {
                    return true;
                }
                if (!success) {
                    failed.push_back(next);
                }
            }
        }
        return any;
    }

    bool try_candidate(int from, int top, bool inverted)
    {
        exchange(from, top);
        if (inverted) {
            trial.invert_input(top);
        }
        result.inverted[pin_at[static_cast<std::size_t>(top)]] = inverted;
        const bool success = blocks_agree(trial.value, pattern.value, top) && place(top - 1);
        if (inverted) {
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

    void emit()
    {
        for (std::size_t place = 0; place < at.size(); ++place) {
            result.input[pin_at[place]] = static_cast<int>(at[place]);
        }
        if (!holds(result, cell_function, target_function)) {
            throw std::logic_error("a binding that was found does not hold");
        }
        found(result);
    }

    const BOOL_TRUTH_TABLE& cell_function;
    const BOOL_TRUTH_TABLE& target_function;
    const signature& pins;
    signature inputs;
    BOOL_TRUTH_TABLE pattern;
    BOOL_TRUTH_TABLE trial;
    bool exact;
    bool all;
    const std::function<void(const binding&)>& found;
    std::vector<std::size_t> pin_at; ///< the pin at each place of `pattern`
    std::vector<std::size_t> at;     ///< the target's input at each place of `trial`
    binding result;
};

/// A constant has no inputs to bind: its cell is right, wrong or inverted.
bool match_constant(const matchable& cell, const matchable& target, bool exact,
                    const std::function<void(const binding&)>& found)
{
    binding connection;
    connection.output_inverted = !(cell.function.table.value == target.function.table.value);
    if (exact && connection.output_inverted) {
        return false;
    }
    found(connection);
    return true;
}

} // namespace

bool match_cell(const matchable& cell, const matchable& target, match_options options,
                const std::function<void(const binding&)>& found)
{
    if (cell.function.inputs.size() != target.function.inputs.size()) {
        return false;
    }
    if (cell.function.inputs.empty()) {
        return match_constant(cell, target, options.exact, found);
    }
    const auto run = [&](bool invert_output, bool exact) {
        return search(cell, target, invert_output, exact, options.all, found).run();
    };
    if (options.exact) {
        return run(false, true);
    }
    if (options.all) {
        const bool upright = run(false, false);
        return run(true, false) || upright;
    }
    return run(false, true) || run(false, false) || run(true, false);
}

} // namespace cellfn
