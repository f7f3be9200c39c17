/// @file
/// @brief Texts with a `)` that closes nothing, such as `A)+(B`, or with a `(` left open.
#pragma once

#include "basbdtt/reading/equation_elements.h"

#include <cstddef>
#include <optional>
#include <string>

namespace basbdtt {

/// @brief Finds what is read of an unbalanced text.
///
/// Such a text may still have an element of depth 0 to split it at. The parentheses that enclose
/// nothing then bound its operands, so the part between them is read like any other text.
template <typename grammar>
class unbalanced_text {
public:
    unbalanced_text(const std::string& equation, std::size_t start)
        : text(equation), region_begin(start), chosen_begin(start), chosen_end(start)
    {
    }

    std::size_t begin() const { return chosen_begin; }
    std::size_t end() const { return chosen_end; }

    /// Looks for the part to read. @return why there is none, if so
    std::optional<operand> find()
    {
        for (std::size_t i = region_begin; i < text.size();) {
            const element what = element_at<grammar>(text, i);
            if (what == element::open || what == element::close) {
                take_parenthesis(what, i);
                ++i;
            } else if (depth != 0 || what == element::blank) {
                ++i;
            } else if (what == element::unexpected) {
                return unexpected_at(text, i);
            } else if (what == element::input) {
                const input_name name = grammar::read_input(text, i);
                if (name.number < 0) {
                    return operand::refused(refusal::bare_input_name);
                }
                choose(name.conjunction ? element::conjunction : what);
                i = name.end;
            } else {
                choose(what);
                ++i;
            }
        }
        if (depth != 0) {
            return operand::refused(refusal::unbalanced);
        }
        if (lowest == no_rank) {
            return operand::refused(refusal::no_element);
        }
        return std::nullopt;
    }

private:
    static constexpr int no_rank = 6;

    static int rank_of(element what)
    {
        switch (what) {
        case element::disjunction:
            return 0;
        case element::exclusive:
            return 1;
        case element::conjunction:
            return 2;
        case element::negation:
            return 3;
        case element::open:
            return grammar::negation_outranks_group ? 4 : 3;
        default:
            return 5;
        }
    }

    void take_parenthesis(element what, std::size_t position)
    {
        if (what == element::close) {
            if (--depth == -1 && in_chosen_region) {
                chosen_end = position;
                in_chosen_region = false;
            }
            return;
        }
        if (depth == 0) {
            choose(what);
        }
        if (++depth == 0) {
            region_begin = position + 1;
        }
    }

    void choose(element what)
    {
        if (rank_of(what) < lowest) {
            lowest = rank_of(what);
            chosen_begin = region_begin;
            chosen_end = text.size();
            in_chosen_region = true;
        }
    }

    const std::string& text;
    int depth = 0;
    int lowest = no_rank;
    std::size_t region_begin; ///< of the elements of depth 0 without a break between them
    std::size_t chosen_begin; ///< of the region of the chosen element
    std::size_t chosen_end;
    bool in_chosen_region = false;
};

} // namespace basbdtt
