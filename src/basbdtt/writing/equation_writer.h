/// @file
/// @brief What the writers of the two equation texts share: the Shannon expansion on the highest
/// input, over views into the column and into one output buffer.
///
/// A cofactor for the highest input is half of the column, so no table is built for it. From
/// 64 entries on downwards a half is a word in a register, and from 8 on its text is a constant.
#pragma once

#include "basbdtt.h"
#include "basbdtt/column/canonical.h"
#include "basbdtt/writing/column_views.h"
#include "basbdtt/writing/equation_frames.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace basbdtt {

/// Of halves that differ.
template <typename format, typename view_type>
constexpr shape shape_of(const view_type& f, const view_type& t)
{
    const constancy f_is = f.classify();
    const constancy t_is = t.classify();
    if (f_is == constancy::zero) {
        return t_is == constancy::one ? shape::x : shape::x_and_t;
    }
    if (f_is == constancy::one) {
        return t_is == constancy::zero ? shape::not_x : shape::not_x_or_t;
    }
    if (t_is != constancy::neither) {
        return t_is == constancy::zero ? shape::not_x_and_f : shape::f_or_x;
    }
    if constexpr (format::has_exclusive) {
        if (f.complements(t)) {
            return shape::x_xor_f;
        }
    }
    return shape::choice;
}

/// The texts of all functions of up to three inputs inside an expansion, empty for constants.
template <typename format, int width>
constexpr auto make_small_texts();

template <typename format, int width>
constexpr auto small_texts = make_small_texts<format, width>();

template <typename format, int width>
constexpr auto make_small_texts()
{
    std::array<small_text, std::size_t{1} << (1U << width)> texts;
    for (std::size_t bits = 1; bits + 1 < texts.size(); ++bits) {
        const register_view<width> view{bits};
        const auto f = view.false_half();
        const auto t = view.true_half();
        if constexpr (width == 1) {
            texts[bits].append(
                frame_of<format>(0, t.bits != 0 ? shape::x : shape::not_x).before.view());
        } else if (f == t) {
            texts[bits] = small_texts<format, width - 1>[f.bits];
        } else {
            const shape how = shape_of<format>(f, t);
            const frame& around = frame_of<format>(width - 1, how);
            texts[bits].append(around.before.view());
            if (has_text_of_f(how)) {
                texts[bits].append(small_texts<format, width - 1>[f.bits].view());
                texts[bits].append(around.between.view());
            }
            if (has_text_of_t(how)) {
                texts[bits].append(small_texts<format, width - 1>[t.bits].view());
            }
            texts[bits].append(is_group(how) ? format::close.view() : "");
        }
    }
    return texts;
}

/// @brief A string that is written piece by piece, so that most writes need no check.
class text_buffer {
public:
    /// The most that is written at a time: the eight functions of three inputs of a register, what
    /// stands around them in three levels, and what the last copy writes in excess.
    static constexpr std::size_t expansions = 7;
    static constexpr std::size_t room =
        (expansions + 2) * sizeof(small_text) + 3 * expansions * sizeof(short_text);

    char* begin() { return piece.data(); }

    /// Where to write on after `end`, with room.
    char* with_room(char* end)
    {
        if (static_cast<std::size_t>(piece.data() + piece.size() - end) < room) {
            text.append(piece.data(), end);
            return piece.data();
        }
        return end;
    }

    std::string take(char* end)
    {
        text.append(piece.data(), end);
        return std::move(text);
    }

private:
    std::string text;
    std::array<char, 4096> piece;
};

/// @brief Writes one table. `format` has, all static: the texts `names`, `negation`, `conjunction`,
/// `disjunction`, `exclusive` and `close` (of a group inside another), `has_exclusive` for
/// complementary halves, and `constant_text(width, one, top_level)`.
template <typename format>
class equation_writer {
public:
    std::string write(const BOOL_TRUTH_TABLE& table, bool top_level)
    {
        const int width = table.get_width();
        const std::vector<std::uint32_t>& words = table.value.words;
        if (width == 1) {
            const register_view<1> view{words.empty() ? 0 : words[0] & register_view<1>::mask};
            const constancy what = view.classify();
            return what == constancy::neither
                       ? std::string(small_texts<format, 1>[view.bits].view())
                       : format::constant_text(width, what == constancy::one, top_level);
        }
        if (all_zero(words, 0)) {
            return format::constant_text(width, false, top_level);
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
        const std::uint64_t column =
            width <= pair_inputs ? load_narrow(words.data(), width) & first_pair_mask(width) : 0;
        switch (width) {
        case 2:
            return write_view(register_view<2>{column}, has_more, top_level);
        case 3:
            return write_view(register_view<3>{column}, has_more, top_level);
        case 4:
            return write_view(register_view<4>{column}, has_more, top_level);
        case 5:
            return write_view(register_view<5>{column}, has_more, top_level);
        case pair_inputs:
            return write_view(register_view<pair_inputs>{column}, has_more, top_level);
        default:
            return write_view(memory_view{words.data(), width}, has_more, top_level);
        }
    }

    template <typename view_type>
    std::string write_view(const view_type& view, bool has_more, bool top_level)
    {
        const constancy what = view.classify();
        if (what == constancy::neither) {
            return buffer.take(write_expansion(buffer.begin(), view, top_level));
        }
        // With bits beyond the column it is no constant, but equal halves make it one of a lower
        // width.
        return has_more ? format::constant_text(view.width - 1, what == constancy::one, false)
                        : format::constant_text(view.width, what == constancy::one, top_level);
    }

    /// A half that is not constant.
    template <int width>
    char* write_half(char* to, const register_view<width>& half)
    {
        if constexpr (width <= 3) {
            return small_texts<format, width>[half.bits].write(to);
        } else {
            return write_expansion(to, half, false);
        }
    }
    char* write_half(char* to, const memory_view& half)
    {
        to = buffer.with_room(to);
        to = half.width == pair_inputs
                 ? write_half(to, register_view<pair_inputs>{load_pair(half.words)})
                 : write_expansion(to, half, false);
        return buffer.with_room(to);
    }

    template <typename view_type>
    char* write_expansion(char* to, const view_type& view, bool top_level)
    {
        const auto f = view.false_half();
        const auto t = view.true_half();
        if (f == t) {
            return write_half(to, f);
        }
        const shape how = shape_of<format>(f, t);
        const frame& around = frame_of<format>(f.width, how);
        if (top_level && !is_group(how)) {
            to = open.write(to);
        }
        to = around.before.write(to);
        if (has_text_of_f(how)) {
            to = write_half(to, f);
            to = around.between.write(to);
        }
        if (has_text_of_t(how)) {
            to = write_half(to, t);
        }
        if (top_level) {
            return close.write(to);
        }
        return is_group(how) ? format::close.write(to) : to;
    }

    static constexpr short_text open{"("};
    static constexpr short_text close{")"};

    text_buffer buffer;
};

} // namespace basbdtt
