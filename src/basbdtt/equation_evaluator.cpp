/// @file
/// @brief Evaluates an equation's program block by block into the column.
#include "block_evaluator.h"
#include "equation_program.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace basbdtt {

namespace {

/// Longer programs are not specialised: the room for it is set aside before.
constexpr std::size_t max_specialised_leaves = 1024;

/// @brief Writes a column half by half: the program for an input at 0, then for the input at 1,
/// down to blocks.
class column_writer {
public:
    column_writer(step_list& all_steps, int width, std::vector<std::uint32_t>& words)
        : list(all_steps), column(words),
          specialises(all_steps.leaves.size() <= max_specialised_leaves),
          pairs(std::size_t{1} << (std::min(width, block_inputs) - pair_inputs)), evaluator(pairs)
    {
    }

    /// Appends the 2^width entries of the steps from `begin` on.
    void write(std::size_t begin, int width)
    {
        const int place = width - 1 - block_inputs;
        const std::size_t end = list.steps.size();
        if (place < 0) {
            append(evaluator.run(list, begin, column.size() / (2 * pairs)));
        } else if (!uses(begin, place)) {
            write(begin, width - 1);
            repeat(words_for_width(width - 1));
        } else if (!specialises) {
            write(begin, width - 1);
            write(begin, width - 1);
        } else {
            const std::size_t leaves = list.leaves.size();
            for (const bool one : {false, true}) {
                specialise(list, begin, end, place, one);
                write(end, width - 1);
                list.steps.resize(end);
                list.leaves.resize(leaves);
            }
        }
    }

private:
    bool uses(std::size_t begin, int place) const
    {
        return std::any_of(list.steps.begin() + static_cast<std::ptrdiff_t>(begin),
                           list.steps.end(), [=](const step& each) {
                               const equation_leaf* leaf = list.leaves.data() + each.leaf;
                               return std::any_of(leaf, leaf + each.run,
                                                  [=](const equation_leaf& one) {
                                                      return ((one.care >> place) & 1U) != 0;
                                                  });
                           });
    }

    void append(const std::uint64_t* source)
    {
        std::memcpy(buffer.data(), source, pairs * sizeof(*source));
        append_buffer();
    }

    /// Appends the last `size` words once more.
    void repeat(std::size_t size)
    {
        for (std::size_t end = column.size() + size; column.size() < end;) {
            const auto source = column.end() - static_cast<std::ptrdiff_t>(size);
            std::copy_n(source, 2 * pairs, buffer.begin());
            append_buffer();
        }
    }

    void append_buffer()
    {
        column.insert(column.end(), buffer.begin(),
                      buffer.begin() + static_cast<std::ptrdiff_t>(2 * pairs));
    }

    step_list& list;
    std::vector<std::uint32_t>& column;
    bool specialises;
    std::size_t pairs; ///< pairs of words in a block
    block_evaluator evaluator;
    std::array<std::uint32_t, 2 * words_per_block> buffer;
};

/// The steps to `result`, with room for all that `column_writer` adds to them.
step_list steps_for_column(equation_program& program, const operand& result, int width)
{
    step_list list = steps_of(program, result);
    if (list.leaves.size() <= max_specialised_leaves && width > block_inputs) {
        const auto levels = static_cast<std::size_t>(width - block_inputs);
        list.steps.reserve((levels + 1) * list.steps.size());
        list.leaves.reserve((levels + 1) * list.leaves.size());
    }
    return list;
}

} // namespace

void evaluate(equation_program& program, const operand& result, int width, BOOL_TRUTH_TABLE& table)
{
    const std::size_t size = words_for_width(width);
    step_list list;
    if (width > pair_inputs) {
        list = steps_for_column(program, result, width);
    }
    std::vector<std::uint32_t> fresh;
    const bool has_room = table.value.words.capacity() >= size;
    std::vector<std::uint32_t>& column = has_room ? table.value.words : fresh;
    if (!has_room) {
        fresh.reserve(size);
    }
    // Whatever can fail has been done: the old column may go.
    if (width > pair_inputs) {
        column.clear();
        column_writer(list, width, column).write(0, width);
    } else {
        std::array<std::uint32_t, 2> pair{};
        store_pair(pair.data(), result.payload & first_pair_mask(width));
        column.assign(pair.begin(), pair.begin() + static_cast<std::ptrdiff_t>(size));
    }
    if (!has_room) {
        table.value.words.swap(fresh);
    }
    table.value.bit_count = std::int32_t{1} << width;
    table.width = static_cast<signed char>(width);
}

} // namespace basbdtt
