/// @file
/// @brief The texts that stand around the halves of a Shannon expansion.
#pragma once

#include "basbdtt/column/bit_positions.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace basbdtt {

/// A text of bounded length, copied as a whole.
template <std::size_t capacity>
struct bounded_text {
    std::array<char, capacity> characters{};
    std::uint8_t length = 0;

    constexpr bounded_text() = default;
    constexpr explicit bounded_text(std::string_view text) { append(text); }

    constexpr bounded_text& append(std::string_view text)
    {
        for (const char character : text) {
            characters[length++] = character;
        }
        return *this;
    }
    constexpr std::string_view view() const { return {characters.data(), length}; }

    /// Needs room for `capacity` characters. @return the end of the text
    char* write(char* to) const
    {
        std::memcpy(to, characters.data(), capacity);
        return to + length;
    }
};

/// What stands before, between and after the halves, such as "(!C + ".
using short_text = bounded_text<8>;

/// The text of a function of three inputs. Text that did not fit would not compile.
using small_text = bounded_text<40>;

using input_names = std::array<short_text, BASBDTT_MAX_WIDTH>;

/// How the halves f and t, for the expanded input x at 0 and at 1, make a text.
enum class shape : std::uint8_t {
    x,
    not_x,
    x_and_t,
    not_x_or_t,
    choice,
    not_x_and_f,
    f_or_x,
    x_xor_f
};
constexpr std::size_t shapes = 8;

constexpr bool has_text_of_f(shape how) { return how >= shape::choice; }
constexpr bool has_text_of_t(shape how) { return how >= shape::x_and_t && how <= shape::choice; }
constexpr bool is_group(shape how) { return how >= shape::x_and_t; }

/// What stands around the halves' texts, without what closes a group.
struct frame {
    short_text before;  ///< of the half that comes first
    short_text between; ///< after f
};

template <typename format>
constexpr frame make_frame(shape how, std::string_view x)
{
    frame result;
    short_text& before = result.before;
    before.append(is_group(how) ? "(" : "");
    switch (how) {
    case shape::x:
        before.append(x);
        break;
    case shape::not_x:
        before.append(format::negation).append(x);
        break;
    case shape::x_and_t:
        before.append(x).append(format::conjunction);
        break;
    case shape::not_x_or_t:
        before.append(format::negation).append(x).append(format::disjunction);
        break;
    case shape::choice:
        before.append(format::negation).append(x).append(format::conjunction);
        result.between.append(format::disjunction).append(x).append(format::conjunction);
        break;
    case shape::not_x_and_f:
        before.append(format::negation).append(x).append(format::conjunction);
        break;
    case shape::f_or_x:
        result.between.append(format::disjunction).append(x);
        break;
    case shape::x_xor_f:
        before.append(x).append(format::exclusive);
        break;
    }
    return result;
}

template <typename format>
constexpr auto make_frames()
{
    std::array<std::array<frame, shapes>, BASBDTT_MAX_WIDTH> frames;
    for (std::size_t input = 0; input < frames.size(); ++input) {
        for (std::size_t how = 0; how < shapes; ++how) {
            frames[input][how] =
                make_frame<format>(static_cast<shape>(how), format::names[input].view());
        }
    }
    return frames;
}

/// By input and shape.
template <typename format>
constexpr auto frames = make_frames<format>();

template <typename format>
constexpr const frame& frame_of(int input, shape how)
{
    return frames<format>[static_cast<std::size_t>(input)][static_cast<std::size_t>(how)];
}

} // namespace basbdtt
