/// @file
/// @brief Evaluates an equation's program block by block into the column.
#include "equation_program.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <utility>

/// A second version for processors with AVX2, chosen at load. ThreadSanitizer is not ready by then.
#ifdef __SANITIZE_THREAD__
#define BASBD_AVX2_CLONE
#else
#define BASBD_AVX2_CLONE __attribute__((target_clones("avx2", "default")))
#endif

namespace basbdtt {

namespace {

/// A block is 4,096 entries: 512 bytes, so that all registers in use lie in the first-level cache.
constexpr int block_inputs = 12;
constexpr std::size_t words_per_block = std::size_t{1} << (block_inputs - pattern_inputs);
using block = std::array<std::uint64_t, words_per_block>;

/// Longer programs are not specialised: the room for it is set aside before.
constexpr std::size_t max_specialised_steps = 4096;

/// The blocks of the inputs that select a word of a block, each followed by its complement.
constexpr auto make_input_blocks()
{
    std::array<block, std::size_t{2} * (block_inputs - pattern_inputs)> blocks{};
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        for (std::size_t word = 0; word < words_per_block; ++word) {
            const bool set = ((word >> (i / 2)) & 1U) != 0;
            blocks[i][word] = set != (i % 2 != 0) ? all_ones : 0;
        }
    }
    return blocks;
}
constexpr auto input_blocks = make_input_blocks();

using steps = std::vector<equation_step>;

/// A block in memory, or where `words` is null a block of one word repeated. Inputs above a block
/// are of the second kind, so that most operations on them touch no memory.
struct block_value {
    const std::uint64_t* words;
    std::uint64_t word;
};

/// Calls `work` with the operation as a function, so that each gets a loop of its own.
template <typename Work>
inline void with_operation(operation op, Work work)
{
    switch (op) {
    case operation::disjunction:
        work(std::bit_or<>());
        break;
    case operation::exclusive:
        work(std::bit_xor<>());
        break;
    case operation::conjunction:
        work(std::bit_and<>());
        break;
    }
}

/// Words that are joined at a time: all are read before the first is written, so that the result
/// may take the place of an operand and the compiler still makes vector code of the loop at -O3.
constexpr std::size_t stride = 8;

template <typename Second>
inline void join_strides(operation op, const std::uint64_t* a, Second b, std::uint64_t* into,
                         std::size_t count, std::uint64_t complement)
{
    with_operation(op, [=](auto combine) {
        for (std::size_t i = 0; i < count; i += stride) {
            std::array<std::uint64_t, stride> joined;
            for (std::size_t k = 0; k < stride; ++k) {
                joined[k] = combine(a[i + k], b(i + k)) ^ complement;
            }
            std::memcpy(into + i, joined.data(), sizeof joined);
        }
    });
}

/// Joins two blocks.
BASBD_AVX2_CLONE void join_blocks(operation op, const std::uint64_t* a, const std::uint64_t* b,
                                  std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    join_strides(
        op, a, [=](std::size_t i) { return b[i]; }, into, count, complement);
}

/// Joins a block and one word repeated.
BASBD_AVX2_CLONE void join_word(operation op, const std::uint64_t* a, std::uint64_t b,
                                std::uint64_t* into, std::size_t count, std::uint64_t complement)
{
    join_strides(
        op, a, [=](std::size_t) { return b; }, into, count, complement);
}

/// @brief Runs a program on one block of the column at a time.
class block_evaluator {
public:
    explicit block_evaluator(std::size_t words) : count(std::max(words, stride))
    {
        for (std::size_t i = 0; i < max_values; ++i) {
            storage[i] = registers[i].data();
        }
    }

    /// The result on a block; valid until the next run.
    block_value run(const equation_step* begin, const equation_step* end, std::uint64_t block_index)
    {
        std::size_t top = 0;
        for (const equation_step* step = begin; step != end; ++step) {
            if (step->what == equation_step::kind::join) {
                --top;
                stack[top - 1] = join(*step, top - 1);
            } else {
                stack[top++] = leaf(*step, block_index);
            }
        }
        return stack[0];
    }

private:
    static block_value leaf(const equation_step& step, std::uint64_t block_index)
    {
        if (step.what == equation_step::kind::pattern) {
            return {nullptr, step.pattern};
        }
        if (step.input < block_inputs) {
            const std::size_t place = std::size_t{2} * (step.input - std::size_t{pattern_inputs});
            return {input_blocks[place + (step.complement ? 1 : 0)].data(), 0};
        }
        const bool one = ((block_index >> (step.input - block_inputs)) & 1U) != 0;
        return {nullptr, one != step.complement ? all_ones : 0};
    }

    /// The values at `place` and above it, joined.
    block_value join(const equation_step& step, std::size_t place)
    {
        const std::uint64_t complement = step.complement ? all_ones : 0;
        block_value a = stack[place];
        block_value b = stack[place + 1];
        if (a.words == nullptr) {
            std::swap(a, b);
        }
        if (a.words == nullptr) {
            return {nullptr, apply(step.op, a.word, b.word) ^ complement};
        }
        if (b.words == nullptr && (b.word == 0 || b.word == all_ones)) {
            const std::uint64_t of_zero = apply(step.op, 0, b.word) ^ complement;
            const std::uint64_t of_one = apply(step.op, all_ones, b.word) ^ complement;
            if (of_zero == of_one) {
                return {nullptr, of_zero};
            }
            if (of_zero == 0) {
                return keep(a, place);
            }
        }
        std::uint64_t* into = storage[place];
        if (b.words == nullptr) {
            join_word(step.op, a.words, b.word, into, count, complement);
        } else {
            join_blocks(step.op, a.words, b.words, into, count, complement);
        }
        return {into, 0};
    }

    /// `value` as it is. Where it lies in the register above, the two exchange their memory.
    block_value keep(block_value value, std::size_t place)
    {
        if (value.words == storage[place + 1]) {
            std::swap(storage[place], storage[place + 1]);
        }
        return value;
    }

    std::size_t count; ///< words of a block that the column has, in whole strides
    std::array<block, max_values> registers;
    std::array<std::uint64_t*, max_values> storage;
    std::array<block_value, max_values> stack;
};

/// @brief Fixes one input of a program: appends what is left of the steps from `begin` to `end` to
/// the same vector, which has the capacity.
class specialiser {
public:
    specialiser(steps& all_steps, int input, bool one)
        : out(all_steps), fixed_input(input), fixed_pattern(one ? all_ones : 0)
    {
    }

    void run(std::size_t begin, std::size_t end)
    {
        std::size_t top = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const equation_step step = out[i];
            if (step.what == equation_step::kind::join) {
                --top;
                stack[top - 1] = join(step, stack[top - 1], stack[top]);
            } else {
                stack[top++] = leaf(step);
            }
        }
        emit_pattern(stack[0]);
    }

private:
    /// A pattern, which has no steps yet, or the steps from `start` on.
    struct value {
        std::size_t start;
        std::uint64_t pattern;
        bool is_pattern;

        bool is_constant() const { return is_pattern && (pattern == 0 || pattern == all_ones); }
    };

    value leaf(const equation_step& step)
    {
        if (step.what == equation_step::kind::pattern) {
            return {out.size(), step.pattern, true};
        }
        if (step.input == fixed_input) {
            return {out.size(), step.complement ? ~fixed_pattern : fixed_pattern, true};
        }
        out.push_back(step);
        return {out.size() - 1, 0, false};
    }

    value join(const equation_step& step, value a, value b)
    {
        const std::uint64_t complement = step.complement ? all_ones : 0;
        if (a.is_pattern && b.is_pattern) {
            return {a.start, apply(step.op, a.pattern, b.pattern) ^ complement, true};
        }
        if (a.is_pattern) {
            std::swap(a, b); // they start at the same step
        }
        if (b.is_constant()) {
            const std::uint64_t of_zero = apply(step.op, 0, b.pattern) ^ complement;
            const std::uint64_t of_one = apply(step.op, all_ones, b.pattern) ^ complement;
            if (of_zero == of_one) {
                out.erase(out.begin() + static_cast<std::ptrdiff_t>(a.start), out.end());
                return {a.start, of_zero, true};
            }
            out.back().complement = out.back().complement != (of_zero != 0);
            return a;
        }
        emit_pattern(b);
        out.push_back(step);
        return a;
    }

    void emit_pattern(const value& each)
    {
        if (each.is_pattern) {
            out.push_back({each.pattern, equation_step::kind::pattern, {}, false, 0});
        }
    }

    steps& out;
    int fixed_input;
    std::uint64_t fixed_pattern;
    std::array<value, max_values> stack;
};

/// @brief Writes a column half by half: the program for an input at 0, then for the input at 1,
/// down to blocks.
class column_writer {
public:
    column_writer(steps& all_steps, int width, std::vector<std::uint32_t>& words)
        : program(all_steps), column(words),
          pairs(std::size_t{1} << (std::min(width, block_inputs) - pattern_inputs)),
          evaluator(pairs)
    {
    }

    /// Appends the 2^width entries of the steps from `begin` on.
    void write(std::size_t begin, int width)
    {
        const std::size_t end = program.size();
        if (width <= block_inputs) {
            const std::size_t block_index = column.size() / (2 * pairs);
            append(evaluator.run(&program[begin], program.data() + end, block_index));
        } else if (!uses(begin, width - 1)) {
            write(begin, width - 1);
            repeat(words_for_width(width - 1));
        } else if (end - begin > max_specialised_steps) {
            write(begin, width - 1);
            write(begin, width - 1);
        } else {
            for (const bool one : {false, true}) {
                specialiser(program, width - 1, one).run(begin, end);
                write(end, width - 1);
                program.erase(program.begin() + static_cast<std::ptrdiff_t>(end), program.end());
            }
        }
    }

private:
    bool uses(std::size_t begin, int input) const
    {
        return std::any_of(program.begin() + static_cast<std::ptrdiff_t>(begin), program.end(),
                           [input](const equation_step& step) {
                               return step.what == equation_step::kind::input &&
                                      step.input == input;
                           });
    }

    void append(const block_value& value)
    {
        block filled;
        if (value.words == nullptr) {
            std::fill_n(filled.begin(), pairs, value.word);
        }
        static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the low word of a pair is first");
        const std::uint64_t* source = value.words == nullptr ? filled.data() : value.words;
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

    steps& program;
    std::vector<std::uint32_t>& column;
    std::size_t pairs; ///< pairs of words in a block
    block_evaluator evaluator;
    std::array<std::uint32_t, 2 * words_per_block> buffer;
};

} // namespace

void write_column(std::vector<equation_step>& steps, int width, std::vector<std::uint32_t>& column)
{
    if (steps.size() <= max_specialised_steps && width > block_inputs) {
        const auto levels = static_cast<std::size_t>(width - block_inputs);
        steps.reserve((levels + 1) * steps.size());
    }
    column_writer(steps, width, column).write(0, width);
}

} // namespace basbdtt
