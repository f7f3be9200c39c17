/// @file
/// @brief What the readers of the two equation texts share: one pass from the text to a program.
///
/// A level of an equation is what stands between a pair of parentheses, or the whole text. It is
/// split at its element of the lowest rank, the leftmost of several, and so are the operands. One
/// pass comes to the same: an operator takes what is pending from the tighter ones. What the split
/// would drop is read all the same and then forgotten, together with what is wrong in it.
///
/// A level is examined before the groups inside it, so an element that is refused on a level takes
/// the place of whatever that level comes to.
#pragma once

#include "basbdtt/reading/column_writer.h"
#include "basbdtt/reading/equation_elements.h"
#include "basbdtt/reading/equation_program.h"
#include "basbdtt/reading/unbalanced_text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace basbdtt {

/// Sends the one message about a refused equation.
void report_refusal(const operand& refused, int width);

/// Reads one text.
template <typename grammar>
class equation_reader {
public:
    equation_reader(const std::string& equation, int inputs) : text(equation), width(inputs) {}

    /// The value of the text from `begin` on.
    operand read(std::size_t begin)
    {
        const std::optional<operand> result = read_balanced(begin, text.size());
        return result ? *result : read_unbalanced(begin);
    }

    equation_program& program() { return operations_of_text; }

private:
    /// @brief What is pending on a level, left to right: `A+B*~C` at its end holds A for the
    /// disjunction, B for the conjunction, the factor C and its negation.
    struct level {
        enum mark : std::uint8_t {
            has_pending_disjunction = 1,
            has_pending_exclusive = 2,
            has_pending_conjunction = 4,
            has_group = 8,
            has_leaf = 16,
            negated = 32,
            is_refused = 64 ///< `pending[0]` tells why
        };
        /// The mark of an operation, by its rank.
        static constexpr unsigned has_pending(std::size_t rank)
        {
            constexpr std::array<mark, operations> marks = {
                has_pending_disjunction, has_pending_exclusive, has_pending_conjunction};
            return marks[rank];
        }

        std::array<operand, operations> pending; ///< by the rank of the operation
        operand factor; ///< the group or the leaf that the factor has come to so far
        unsigned flags = 0;

        bool has(unsigned flag) const { return (flags & flag) != 0; }
        void refuse(const operand& why)
        {
            pending[0] = why;
            flags = is_refused | has_pending(0);
        }
    };

    /// A text whose every `)` closes a `(`, from `begin` to `end`; nothing for any other text.
    std::optional<operand> read_balanced(std::size_t begin, std::size_t end)
    {
        current = level();
        for (std::size_t i = begin; i < end;) {
            const element what = element_at<grammar>(text, i);
            switch (what) {
            case element::blank:
                ++i;
                continue;
            case element::open:
                open_group();
                ++i;
                i += grammar::prefix(text, i);
                continue;
            case element::close:
                if (outer_flags.empty()) {
                    return std::nullopt;
                }
                close_group();
                ++i;
                continue;
            default:
                break;
            }
            i = current.has(level::is_refused) ? i + 1 : take(what, i);
            if (current.has(level::is_refused) && outer_flags.empty()) {
                return current.pending[0];
            }
        }
        if (!outer_flags.empty()) {
            return std::nullopt;
        }
        return value_of_level();
    }

    /// Takes an element other than a parenthesis or a blank and returns the position after it.
    std::size_t take(element what, std::size_t i)
    {
        switch (what) {
        case element::negation:
            if (grammar::negation_outranks_group || !current.has(level::has_group)) {
                current.flags ^= level::negated;
                current.flags &= ~unsigned{level::has_group | level::has_leaf};
            }
            break;
        case element::zero:
        case element::one:
            take_leaf(operand::constant(what == element::one));
            break;
        case element::input: {
            const input_name name = grammar::read_input(text, i);
            if (name.number < 0) {
                current.refuse(operand::refused(refusal::bare_input_name));
                break;
            }
            take_leaf(leaf(name.number));
            if (name.conjunction) {
                take_operator(operation::conjunction);
            }
            return name.end;
        }
        case element::unexpected:
            current.refuse(unexpected_at(text, i));
            break;
        default:
            take_operator(static_cast<operation>(what));
            break;
        }
        return i + 1;
    }

    operand leaf(int number)
    {
        return number < width
                   ? operations_of_text.of_input(number)
                   : operand::refused(grammar::beyond_width, static_cast<std::uint64_t>(number));
    }

    void take_leaf(const operand& value)
    {
        if (!current.has(level::has_group | level::has_leaf)) {
            current.factor = value;
            current.flags |= level::has_leaf;
        }
    }

    void take_operator(operation op)
    {
        const auto rank = static_cast<std::size_t>(op);
        current.pending[rank] = join_pending(rank);
        current.flags |= level::has_pending(rank);
    }

    /// The value of the factor, joined with what is pending for `rank` and for tighter operations.
    operand join_pending(std::size_t rank)
    {
        operand value =
            current.has(level::has_group | level::has_leaf) ? current.factor : grammar::blank;
        if (current.has(level::negated)) {
            value = operations_of_text.complement(value);
        }
        for (std::size_t tighter = operations; tighter-- > rank;) {
            if (current.has(level::has_pending(tighter))) {
                value = operations_of_text.combine(static_cast<operation>(tighter),
                                                   current.pending[tighter], value);
            }
        }
        current.flags &= level::has_pending(rank) - 1; // what is pending for looser operations
        return value;
    }

    operand value_of_level()
    {
        return current.has(level::is_refused) ? current.pending[0] : join_pending(0);
    }

    /// Sets the level aside. Only what it has is kept: a million open groups take a byte each.
    void open_group()
    {
        current.flags &= ~unsigned{level::has_leaf}; // a group outranks it
        for (std::size_t rank = 0; rank < operations; ++rank) {
            if (current.has(level::has_pending(rank))) {
                outer_operands.push_back(current.pending[rank]);
            }
        }
        if (current.has(level::has_group)) {
            outer_operands.push_back(current.factor);
        }
        outer_flags.push_back(static_cast<std::uint8_t>(current.flags));
        current.flags = 0;
    }

    void close_group()
    {
        const operand group = value_of_level();
        current.flags = outer_flags.back();
        outer_flags.pop_back();
        if (current.has(level::has_group)) {
            current.factor = outer_operands.back(); // the group on the left is chosen, not this one
            outer_operands.pop_back();
        } else {
            current.factor = group;
        }
        for (std::size_t rank = operations; rank-- > 0;) {
            if (current.has(level::has_pending(rank))) {
                current.pending[rank] = outer_operands.back();
                outer_operands.pop_back();
            }
        }
        if (!current.has(level::is_refused)) {
            current.flags |= level::has_group;
        }
    }

    /// A text whose parentheses do not match; see `unbalanced_text`.
    operand read_unbalanced(std::size_t begin)
    {
        unbalanced_text<grammar> part(text, begin);
        const std::optional<operand> refused = part.find();
        if (refused) {
            return *refused;
        }
        forget_levels();
        return *read_balanced(part.begin(), part.end());
    }

    void forget_levels()
    {
        outer_flags.clear();
        outer_operands.clear();
    }

    const std::string& text;
    int width;
    equation_program operations_of_text;
    level current;
    std::vector<std::uint8_t> outer_flags; ///< of the levels around the current one
    std::vector<operand> outer_operands;   ///< what those levels have pending, by their flags
};

/// @brief Makes `table` the function of `width` inputs that `text` denotes from `begin` on, or
/// sends one message and leaves it as it was.
template <typename grammar>
void read_equation(BOOL_TRUTH_TABLE& table, int width, const std::string& text, std::size_t begin)
{
    equation_reader<grammar> reader(text, width);
    const operand result = reader.read(begin);
    if (result.is_refused()) {
        report_refusal(result, width);
    } else {
        evaluate(reader.program(), result, width, table);
    }
}

} // namespace basbdtt
