// Writes the column of an equation's program, block by block.
#include "basbdtt/reading/column_writer.h"

#include "basbdtt/reading/block_evaluator.h"
#include "basbdtt/reading/residual_program.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace basbdtt {

namespace {

/// @brief Appends blocks to a column that has the capacity.
class block_appender {
public:
    /// @param words  words of a block that the column has
    block_appender(std::vector<std::uint32_t>& words, std::size_t words_of_block,
                   block_evaluator& of_steps)
        : column(words), pairs(words_of_block), evaluator(of_steps)
    {
    }

    void append(const std::vector<step>& steps, operand value)
    {
        const std::size_t index = column.size() / (2 * pairs);
        const std::uint64_t* const words = evaluator.in_memory(
            value.is_pattern()
                ? block_evaluator::block_value{nullptr, equation_leaf::pattern(value.entries())}
                : evaluator.run(steps, value.steps(), index));
        std::memcpy(buffer.data(), words, pairs * sizeof *words);
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

private:
    void append_buffer()
    {
        column.insert(column.end(), buffer.begin(),
                      buffer.begin() + static_cast<std::ptrdiff_t>(2 * pairs));
    }

    std::vector<std::uint32_t>& column;
    std::size_t pairs;
    block_evaluator& evaluator;
    std::array<std::uint32_t, 2 * words_per_block> buffer;
};

/// @brief Writes a column half by half: what is left of the program for an input at 0, then for the
/// input at 1, down to blocks.
class column_writer {
public:
    column_writer(residual_program& all, block_appender& appender) : residual(all), blocks(appender)
    {
    }

    /// Appends the 2^width entries of `value`, which has at most `size` of `steps`.
    void write(const std::vector<step>& steps, operand value, std::size_t size, int width)
    {
        const int high_input = width - 1 - block_inputs;
        if (high_input < 0) {
            blocks.append(steps, value);
        } else if ((value.inputs() >> high_input & 1U) == 0) {
            write(steps, value, size, width - 1);
            blocks.repeat(words_for_width(width - 1));
        } else if (high_input == 0 || !residual.has_room_for(size)) {
            write(steps, value, size, width - 1);
            write(steps, value, size, width - 1);
        } else {
            for (const bool one : {false, true}) {
                const residual_program::state before = residual.here();
                const operand half = residual.fix(steps, value.steps(), high_input, one);
                write(residual.steps(), half, residual.steps().size() - before.steps, width - 1);
                residual.return_to(before);
            }
        }
    }

private:
    residual_program& residual;
    block_appender& blocks;
};

std::size_t count_steps(const std::vector<step>& steps, const step_list& value)
{
    std::size_t count = 1;
    for (std::size_t i = value.first; i != value.last; i = steps[i].next) {
        ++count;
    }
    return count;
}

/// Writes the column of more than six inputs to `column`, which has the capacity, once all else
/// that can fail is done.
void write_column(const equation_program& program, operand value, int width,
                  std::vector<std::uint32_t>& column)
{
    const std::size_t pairs = std::min(words_for_width(width) / 2, words_per_block);
    block_evaluator evaluator(pairs);
    block_appender blocks(column, pairs, evaluator);
    if (width <= block_inputs) {
        column.clear();
        blocks.append(program.steps, value);
        return;
    }
    // The program's other steps are of dropped parts.
    const std::size_t size = value.is_pattern() ? 0 : count_steps(program.steps, value.steps());
    residual_program residual(size, width - block_inputs, evaluator);
    column.clear();
    column_writer(residual, blocks).write(program.steps, value, size, width);
}

void write_narrow_column(operand value, int width, std::vector<std::uint32_t>& column)
{
    std::array<std::uint32_t, 2> pair{};
    store_pair(pair.data(), value.entries() & first_pair_mask(width));
    column.assign(pair.begin(), pair.begin() + static_cast<std::ptrdiff_t>(words_for_width(width)));
}

} // namespace

void evaluate(const equation_program& program, operand value, int width, BOOL_TRUTH_TABLE& table)
{
    std::vector<std::uint32_t> fresh;
    const bool has_room = table.value.words.capacity() >= words_for_width(width);
    std::vector<std::uint32_t>& column = has_room ? table.value.words : fresh;
    column.reserve(words_for_width(width));
    if (width <= pair_inputs) {
        write_narrow_column(value, width, column);
    } else {
        write_column(program, value, width, column);
    }
    if (!has_room) {
        table.value.words.swap(fresh);
    }
    table.value.bit_count = std::int32_t{1} << width;
    table.width = static_cast<signed char>(width);
}

} // namespace basbdtt
