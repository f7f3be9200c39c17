/// @file
/// @brief What the writers of the two equation texts share: the Shannon expansion on the highest
/// input, over views into the column and into one output buffer.
///
/// A cofactor for the highest input is half of the column, so no table is built for it. From
/// 64 entries on downwards a half is a word in a register.
#pragma once

#include "basbdtt.h"
#include "column_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace basbdtt {

/// A text of a few characters, copied as a whole.
struct short_text {
    std::array<char, 16> characters;
    std::size_t length;
};

constexpr short_text make_short_text(std::string_view text)
{
    short_text result{{}, text.size()};
    for (std::size_t i = 0; i < text.size(); ++i) {
        result.characters[i] = text[i];
    }
    return result;
}

/// Indexed by the column of four entries.
using two_input_texts = std::array<short_text, 16>;

constexpr two_input_texts make_texts(const std::array<std::string_view, 16>& texts)
{
    two_input_texts result{};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        result[i] = make_short_text(texts[i]);
    }
    return result;
}

using input_names = std::array<short_text, BASBDTT_MAX_WIDTH>;

/// @brief A string that grows ahead of what is written, so that most writes need no check.
class text_buffer {
public:
    /// Makes room for what one expansion writes by itself.
    void reserve_expansion()
    {
        constexpr std::size_t longest = 64;
        if (text.size() - length < longest) {
            text.resize(std::max<std::size_t>(240, 2 * text.size()));
        }
    }

    void write(const short_text& piece)
    {
        std::memcpy(&text[length], piece.characters.data(), piece.characters.size());
        length += piece.length;
    }

    std::string take()
    {
        text.resize(length);
        return std::move(text);
    }

private:
    std::string text;
    std::size_t length = 0;
};

/// What a column comes to.
enum class constancy : std::uint8_t { zero, one, neither };

/// Half a column in a register, or in the table's words.
struct register_view {
    std::uint64_t bits;
    int width;

    static constexpr std::uint64_t mask(int width)
    {
        return width >= 6 ? ~std::uint64_t{0} : (std::uint64_t{1} << (1 << width)) - 1;
    }
    constancy classify() const
    {
        return bits == 0             ? constancy::zero
               : bits == mask(width) ? constancy::one
                                     : constancy::neither;
    }
    register_view false_half() const { return {bits & mask(width - 1), width - 1}; }
    register_view true_half() const { return {bits >> (1 << (width - 1)), width - 1}; }
    bool operator==(const register_view& other) const { return bits == other.bits; }
    bool complements(const register_view& other) const
    {
        return (bits ^ other.bits) == mask(width);
    }
};

struct memory_view {
    const std::uint32_t* words;
    int width; ///< at least 6

    std::size_t size() const { return words_for_width(width); }
    constancy classify() const
    {
        const std::uint32_t first = words[0];
        const bool uniform = (first == 0 || first == ~0U) &&
                             std::memcmp(words, words + 1, (size() - 1) * sizeof(*words)) == 0;
        return !uniform ? constancy::neither : first == 0 ? constancy::zero : constancy::one;
    }
    memory_view false_half() const { return {words, width - 1}; }
    memory_view true_half() const { return {words + size() / 2, width - 1}; }
    register_view in_register() const { return {words[0] | std::uint64_t{words[1]} << 32, width}; }
    bool operator==(const memory_view& other) const
    {
        return std::memcmp(words, other.words, size() * sizeof(*words)) == 0;
    }
    bool complements(const memory_view& other) const
    {
        return std::equal(words, words + size(), other.words,
                          [](std::uint32_t a, std::uint32_t b) { return a == ~b; });
    }
};

/// @brief Writes one table. `Format` has, all static: the texts `names`, `negation`, `conjunction`,
/// `disjunction` and `close` (of a group inside another), `has_exclusive` for complementary halves,
/// and `constant_text(width, one, top_level)`.
template <typename Format>
class equation_writer {
public:
    std::string write(const BOOL_TRUTH_TABLE& table, bool top_level)
    {
        const int width = table.get_width();
        const std::vector<std::uint32_t>& words = table.value.words;
        if (width == 1) {
            const register_view view{words.empty() ? 0 : words[0] & 3U, 1};
            const constancy what = view.classify();
            if (what != constancy::neither) {
                return Format::constant_text(width, what == constancy::one, top_level);
            }
            write_literal(view);
            return buffer.take();
        }
        if (all_zero(words, 0)) {
            return Format::constant_text(width, false, top_level);
        }
        require_column_width(width);
        if (words.size() < words_for_width(width)) {
            std::vector<std::uint32_t> padded = words;
            padded.resize(words_for_width(width));
            return write_column(padded, width, top_level);
        }
        return write_column(words, width, top_level);
    }

private:
    /// The text of a column of at least `width` inputs; what lies beyond takes part in telling
    /// whether the column is constant, but is in no cofactor.
    std::string write_column(const std::vector<std::uint32_t>& words, int width, bool top_level)
    {
        const std::size_t size = words_for_width(width);
        const bool has_more =
            !all_zero(words, size) || (words[size - 1] & ~last_word_mask(width)) != 0;
        return width <= 6 ? write_view(in_register(words, width), has_more, top_level)
                          : write_view(memory_view{words.data(), width}, has_more, top_level);
    }

    static bool all_zero(const std::vector<std::uint32_t>& words, std::size_t begin)
    {
        return std::all_of(words.begin() + static_cast<std::ptrdiff_t>(begin), words.end(),
                           [](std::uint32_t word) { return word == 0; });
    }

    static register_view in_register(const std::vector<std::uint32_t>& words, int width)
    {
        const std::uint64_t high = width == 6 ? words[1] : 0;
        return {(words[0] | high << 32) & register_view::mask(width), width};
    }

    template <typename View>
    std::string write_view(View view, bool has_more, bool top_level)
    {
        const constancy what = view.classify();
        if (what == constancy::neither) {
            write_expansion(view, top_level);
            return buffer.take();
        }
        // With bits beyond the column it is no constant, but equal halves make it one of a lower
        // width.
        return has_more ? Format::constant_text(view.width - 1, what == constancy::one, false)
                        : Format::constant_text(view.width, what == constancy::one, top_level);
    }

    /// A function of one input.
    void write_literal(const register_view& view)
    {
        buffer.reserve_expansion();
        if (view.bits == 1) {
            buffer.write(Format::negation);
        }
        buffer.write(Format::names[0]);
    }

    /// A half that is not constant.
    void write_half(const register_view& half)
    {
        if (half.width == 1) {
            write_literal(half);
        } else if (half.width == 2) {
            buffer.reserve_expansion();
            buffer.write(Format::two_input_texts[half.bits]);
        } else {
            write_expansion(half, false);
        }
    }
    void write_half(const memory_view& half)
    {
        if (half.width == 6) {
            write_expansion(half.in_register(), false);
        } else {
            write_expansion(half, false);
        }
    }

    template <typename View>
    void write_expansion(const View& view, bool top_level)
    {
        const View f = view.false_half();
        const View t = view.true_half();
        if (f == t) {
            write_half(f);
            return;
        }
        const constancy f_is = f.classify();
        const constancy t_is = t.classify();
        const bool grouped = top_level || f_is == constancy::neither || t_is == constancy::neither;
        buffer.reserve_expansion();
        if (grouped) {
            buffer.write(open);
        }
        write_halves(f, t, f_is, t_is, Format::names[static_cast<std::size_t>(f.width)]);
        if (grouped) {
            buffer.reserve_expansion();
            buffer.write(top_level ? close : Format::close);
        }
    }

    template <typename View>
    void write_halves(const View& f, const View& t, constancy f_is, constancy t_is,
                      const short_text& name)
    {
        if constexpr (Format::has_exclusive) {
            if (f_is == constancy::neither && t_is == constancy::neither && f.complements(t)) {
                buffer.write(name);
                buffer.write(Format::exclusive);
                write_half(f);
                return;
            }
        }
        if (f_is == constancy::neither && t_is == constancy::one) {
            write_half(f);
            buffer.reserve_expansion();
            buffer.write(Format::disjunction);
            buffer.write(name);
            return;
        }
        if (f_is != constancy::zero) {
            buffer.write(Format::negation);
            buffer.write(name);
            if (f_is == constancy::neither) {
                buffer.write(Format::conjunction);
                write_half(f);
                buffer.reserve_expansion();
            }
            if (t_is != constancy::zero) {
                buffer.write(Format::disjunction);
            }
        }
        if (t_is != constancy::zero) {
            if (f_is != constancy::one) {
                buffer.write(name);
                if (t_is == constancy::neither) {
                    buffer.write(Format::conjunction);
                }
            }
            if (t_is == constancy::neither) {
                write_half(t);
            }
        }
    }

    static constexpr short_text open = make_short_text("(");
    static constexpr short_text close = make_short_text(")");

    text_buffer buffer;
};

} // namespace basbdtt
