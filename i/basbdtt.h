/// @file
/// @brief Truth tables: one single-output Boolean function held as its complete output column.
///
/// Different tables may be used from different threads at once; one table from one thread at a
/// time.
#pragma once

#include "basbdapi.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// @addtogroup truth_tables Truth tables
/// @{

/// The widest table: its column of 2^30 bits is the largest that a signed 32-bit count holds.
constexpr int BASBDTT_MAX_WIDTH = 30;

/// @brief The output column of a truth table, one bit for each assignment of the inputs.
///
/// Bit i of the column is bit i mod 32 of word i / 32:
///
///     words[0]: bit 31 ... bit 1 bit 0     words[1]: bit 63 ... bit 32     ...
///
/// A column of 2^width bits has ((2^width - 1) >> 5) + 1 words; bits past the column are zero.
///
/// The fields may be set by hand: every operation takes missing words as zero. Bits beyond the
/// column are dropped where a column is rearranged, halved or tested for an input; the equation
/// writers count them when they look for a constant. The operations take time linear in the column,
/// a word or more at a step.
class BASBD_API TRUTH_TABLE_VAL {
public:
    std::vector<std::uint32_t> words; ///< the bits, least significant first
    std::int32_t bit_count;           ///< the number of meaningful bits, 2^width

    /// @brief The constant column of a function of `width` inputs.
    /// @param width  number of inputs; "width>=1", "width<=30"
    /// @param value  the constant, 0 or 1; any other value counts as 1
    TRUTH_TABLE_VAL(int width, int value)
    {
        basbd_require(width >= 1, "width>=1", __PRETTY_FUNCTION__);
        basbd_require(width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
        bit_count = std::int32_t{1} << width;
        const std::size_t size = ((static_cast<std::size_t>(bit_count) - 1) >> 5) + 1;
        if (value == 0) {
            words.assign(size, 0U);
        } else if (width >= 5) {
            words.assign(size, ~0U);
        } else {
            words.assign(size, (1U << bit_count) - 1U);
        }
    }

    /// @brief Word-by-word equality; a word missing from the shorter column counts as zero.
    /// `bit_count` takes no part.
    bool operator==(const TRUTH_TABLE_VAL& other) const;

    /// @brief Combines word by word, growing this column with zero words to the length of `other`.
    /// Words beyond the length of `other` stay as they are; `bit_count` does not change.
    void operator^=(const TRUTH_TABLE_VAL& other);
    /// @copydoc operator^=
    void operator|=(const TRUTH_TABLE_VAL& other);
    /// @brief Like `operator^=`, but words beyond the length of `other` become zero.
    void operator&=(const TRUTH_TABLE_VAL& other);

    /// @brief The column as uppercase hexadecimal text: ceil(bit_count / 4) digits, the last one
    /// holding bits 0 to 3. No prefix; a `bit_count` of 0 or less gives the empty text.
    std::string get_hex_string() const;

    /// @brief Replaces the value by the column of 2^width bits written in `text`, which has no
    /// prefix. An empty text is all zero, and so are digits that are not given.
    ///
    /// All four bits of the one digit of widths 0 and 1 are stored; zeros beyond the column are
    /// ignored. The first character from the last backwards that cannot be stored changes nothing
    /// and sends one message to `ut_status`, before anything is allocated:
    ///
    ///     Unexpected hexadecimal digit 'G'
    ///     Hexadecimal digit '1' beyond the column of width 3
    ///
    /// Where the column cannot be allocated, the old words stay and `bit_count` is the new one.
    /// @param width  "width>=0", "width<=30"
    /// @param text   hexadecimal digits of either case, the last one for bits 0 to 3
    void set_from_hex_string(int width, const std::string& text);
};

/// @brief One single-output Boolean function of `width` inputs as its truth table.
///
/// Input j has the value of bit j of the entry index, so input 0 is the least significant:
///
///     entry   C B A          A is input 0, B input 1, C input 2
///       0     0 0 0
///       1     0 0 1          entry x is bit x of `value`
///       2     0 1 0 ...
///
/// A table may keep the memory of the longest column that it had, 32 MiB after width 28;
/// `table.value.words.shrink_to_fit()` gives the excess back.
///
/// Evaluate an assignment: `table.value.words[x / 32] >> (x % 32) & 1`.
/// Print: `get_external_equation()`, `get_internal_equation()` or `value.get_hex_string()`.
class BASBD_API BOOL_TRUTH_TABLE {
public:
    TRUTH_TABLE_VAL value; ///< the output column
    signed char width;     ///< the number of inputs, 0 to 30

    /// @brief A table of width 0 with the zero column of width 1.
    BOOL_TRUTH_TABLE();

    /// @brief The number of inputs.
    int get_width() const { return width; }

    /// @brief Sets the column to the entries of `v` below 2^width and then the width.
    ///
    /// `bit_count` is taken over from `v`, and so are words of `v` beyond the column, as zeros; `v`
    /// may be this table's own column.
    /// @param new_width  the number of inputs; "width>0", "width<=30"
    /// @param v          the column, of any length; missing words count as zero
    void set_value(int new_width, const TRUTH_TABLE_VAL& v)
    {
        basbd_require(new_width > 0, "width>0", __PRETTY_FUNCTION__);
        basbd_require(new_width <= BASBDTT_MAX_WIDTH, "width<=30", __PRETTY_FUNCTION__);
        const std::size_t size = (((std::size_t{1} << new_width) - 1) >> 5) + 1;
        value.words.reserve(std::max(size, v.words.size())); // fails, if at all, with nothing done
        value = v;
        if (value.words.size() < size) {
            value.words.resize(size);
        } else {
            std::fill(value.words.begin() + static_cast<std::ptrdiff_t>(size), value.words.end(),
                      0U);
        }
        if (new_width < 5) {
            value.words[0] &= (1U << (1 << new_width)) - 1U;
        }
        width = static_cast<signed char>(new_width);
    }

    /// @brief Sets the table from hexadecimal text, with or without the prefix "0x" or "0X".
    ///
    /// The text "0x" alone is no prefix. A text that `TRUTH_TABLE_VAL::set_from_hex_string` refuses
    /// changes nothing and sends that operation's message.
    /// @param new_width  the number of inputs; "width>0", "width<=30". It stays when the column
    ///                   cannot be allocated
    /// @param text       the digits, the last one for entries 0 to 3
    void set_value_from_hex_string(int new_width, const std::string& text);

    /// @brief Whether the table is the value of one input. Entries beyond the column take no part;
    /// the search ends near the first entry that differs.
    ///
    /// A width above 30 stops as the column's constructor does: "width<=30".
    /// @param input  "input>=0", "input<get_width()"
    bool is_identity_for_input(int input) const;

    /// @brief Makes the table the value of one input of `new_width`.
    /// @param new_width  the number of inputs; "width>0", "width<=30". It is stored first and stays
    ///                   when the column cannot be allocated
    /// @param input      "input>=0", "input<width"
    void set_identity_for_input(int new_width, int input);

    /// @brief Complements one input: entry x becomes entry x XOR 2^input.
    ///
    /// Works in place, as does the exchange of two inputs. Both `rotate_inputs` and this leave a
    /// column of exactly 2^width bits, and the old column where an allocation fails; a width that
    /// was set above 30 stops them as it does the column's constructor: "width<=30". Only
    /// `rotate_inputs(i, i)` returns without a look at column or width.
    /// @param input  "input>=0 && input<get_width()"
    void invert_input(int input);

    /// @brief Exchanges two inputs in place; the same input twice changes nothing, not even a
    /// column of other length.
    /// @param i0  "i0>=0 && i0<get_width() && i1>=0 && i1<get_width()"
    /// @param i1  the other input; the same assertion
    void rotate_inputs(int i0, int i1);

    /// @brief Renumbers all inputs: old input j becomes new input perm[j].
    ///
    /// Up to width 12 it works in place, one exchange after the other; a wider column takes at most
    /// five passes and one new column beside it. The width is at least 1: "width>=1".
    /// @param perm  `get_width()` entries of the caller, a permutation of 0 to width - 1:
    ///              "perm[i]>=0 && perm[i]<get_width() && !(x & (1<<perm[i]))"
    void rotate_inputs(int* perm);

    /// @brief The Shannon cofactor for an input at 1: a table without that input, the inputs above
    /// it one lower. A one-input table gives one of width 0 with a one-bit column.
    ///
    /// This table does not change; its missing words count as zero. A width above 30 stops as the
    /// column's constructor does: "width<=30".
    /// @param input  "input>=0 && input<get_width() && get_width()>0"
    BOOL_TRUTH_TABLE get_true_factor_for_input(int input) const;

    /// @brief The Shannon cofactor for an input at 0; see `get_true_factor_for_input`.
    BOOL_TRUTH_TABLE get_false_factor_for_input(int input) const;

    /// @brief Sets the table from an external equation, such as `A B + !C`; docs/equations.md has
    /// the grammar.
    ///
    /// A text that cannot be read sends one message to `ut_status` and changes nothing; neither
    /// does a failed allocation. Takes time linear in the text, and then evaluates what the text
    /// joins: an operand of inputs 0 to 11 alone at most twice, for 4,096 entries; any other one at
    /// most once for each 4,096 entries of the column. Of the former, one of few terms may be
    /// evaluated as often as the latter: of no more terms than a 1,024th of the text's characters,
    /// rounded up. A term is an input, or a product or sum of inputs. The memory beside the column
    /// is linear in the text, and 1 MiB; the stack does not grow with the text.
    /// @param new_width  the number of inputs; "width>0", "width<=30"
    /// @param text       the equation; letters of either case, `A` for input 0. A blank text or
    ///                   operand is the constant 1
    void set_value_from_external_equation(int new_width, const std::string& text);

    /// @brief Sets the table from an internal equation, such as `F0=(B1*B0+~B2)`.
    ///
    /// Failures and costs are those of `set_value_from_external_equation`.
    /// @param new_width  the number of inputs; "width>0", "width<=30"
    /// @param text       the equation, with or without `F0=`; `B0` for input 0. A blank text or
    ///                   operand is refused
    void set_value_from_internal_equation(int new_width, const std::string& text);

    /// @brief The rest of the level that position `i` of an equation stands in: up to the `)` that
    /// closes a group opened before `i`, or to the end.
    /// @param s  the equation
    /// @param i  any number; the result is empty where `s` has no such position
    static std::string get_next_eqn_item(const std::string& s, int i);

    /// @brief The level that position `i` of an equation stands in, from the `(` that opens it, or
    /// the start, up to and including `i`.
    /// @param s  the equation
    /// @param i  any number; a negative one gives the empty text, one beyond the end counts as the
    /// last
    static std::string get_last_eqn_item(const std::string& s, int i);

    /// @brief The table as external equation: a Shannon expansion on the highest input, and on the
    /// next one in each half, such as `(!C A + C B )`.
    ///
    /// `set_value_from_external_equation` reads it back for widths 1 to 26; the names of inputs
    /// above 25 are no letters. A width of 0 gives "0" for the zero column; else "width>=1", and
    /// "width<=30" for a field set by hand. The text of a function without much structure is as
    /// long as the column has entries, and more. No table is built for a cofactor.
    std::string get_external_equation() const;

    /// @brief The text of `table`; `get_external_equation` with `top_level` true.
    /// @param table      the table
    /// @param top_level  false for the text inside a larger equation: constant 1 is then the empty
    ///                   text, a single input has no parentheses and a group ends in a blank
    static std::string get_external_equation_recurse(const BOOL_TRUTH_TABLE& table, bool top_level);

    /// @brief The table as internal equation: `F0=` and the expansion, with `@` where the halves
    /// are complements of each other, such as `F0=(B2@(B1@B0))`.
    ///
    /// `set_value_from_internal_equation` reads it back for every width, unless bits beyond the
    /// column make a constant the empty text. Preconditions and costs
    /// are those of `get_external_equation`.
    std::string get_internal_equation() const;

    /// @brief The text of `table` without `F0=`; `get_internal_equation` has `top_level` true.
    /// @param table      the table
    /// @param top_level  false for the text inside a larger equation: constant 1 is then the empty
    ///                   text and a single input has no parentheses
    static std::string get_internal_equation_recurse(const BOOL_TRUTH_TABLE& table, bool top_level);
};

/// @}
