/// @file
/// @brief The definition of the two equation texts, step by step: a level is scanned for its
/// element of lowest rank, and the operands beside it are read as texts of their own.
#pragma once

#include "basbdtt.h"

#include <cstdint>
#include <string>

/// Reads texts over up to six inputs into a column, or throws the message as a `std::string`.
struct literal_reader {
    bool external;
    int width;

    std::uint64_t read(const std::string& text) const
    {
        std::string s = external ? with_conjunctions(text) : text;
        s.erase(0, !external && s.compare(0, 3, "F0=") == 0 ? 3 : 0);
        std::size_t chosen = std::string::npos;
        int lowest = 5;
        int depth = 0;
        for (std::size_t i = 0; i < s.size(); ++i) {
            s[i] = s[i] >= 'a' && s[i] <= 'z' ? static_cast<char>(s[i] - 32) : s[i];
            const bool examined = depth == 0 && s[i] != ')' && s[i] != ' ' && s[i] != '\t';
            depth += s[i] == '(' ? 1 : s[i] == ')' ? -1 : 0;
            const int rank = examined ? rank_of(s[i]) : lowest;
            chosen = rank < lowest ? i : chosen;
            lowest = rank < lowest ? rank : lowest;
            if (examined && !external && s[i] == 'B') {
                require(digit(s, i + 1), "Equation input 'B' without a number");
                i += digit(s, i + 2) ? 2 : 1;
            }
        }
        require(depth == 0, "Unbalanced parentheses in equation");
        if (chosen == std::string::npos) {
            require(s.find_first_not_of(" \t") == std::string::npos,
                    "Equation without an element outside parentheses");
            require(external, "Blank equation or operand");
            return ones();
        }
        return act(s, chosen);
    }

private:
    std::uint64_t ones() const { return width == 6 ? ~0ULL : (1ULL << (1U << width)) - 1; }

    static void require(bool condition, const std::string& message)
    {
        if (!condition) {
            throw message;
        }
    }

    static bool digit(const std::string& s, std::size_t i)
    {
        return i < s.size() && s[i] >= '0' && s[i] <= '9';
    }

    int rank_of(char c) const
    {
        static const std::string by_rank[2][5] = {
            {"+", "@", "*", "(~", "01B"}, {"+", "*", "!~", "(", "01ABCDEFGHIJKLMNOPQRSTUVWXYZ"}};
        int rank = 0;
        while (rank < 5 && by_rank[external ? 1 : 0][rank].find(c) == std::string::npos) {
            ++rank;
        }
        const std::string message = std::string("Unexpected equation element '") + c + "'";
        require(rank < 5, message.substr(0, message.find('\0'))); // a zero byte ends it
        return rank;
    }

    static std::string with_conjunctions(const std::string& text)
    {
        std::string s;
        for (std::size_t i = 0; i < text.size(); ++i) {
            s += text[i];
            const std::size_t next = text.find_first_not_of(" \t", i + 1);
            const char upper = static_cast<char>(text[i] & ~32);
            const bool joined = upper >= 'A' && upper <= 'Z' && next != std::string::npos &&
                                std::string(")*+").find(text[next]) == std::string::npos;
            s += joined ? "*" : "";
        }
        return s;
    }

    std::uint64_t act(const std::string& s, std::size_t i) const
    {
        const char c = s[i];
        const std::string after = BOOL_TRUTH_TABLE::get_next_eqn_item(s, static_cast<int>(i) + 1);
        if (c == '0' || c == '1') {
            return c == '0' ? 0 : ones();
        }
        if (c == '(') {
            return read(after);
        }
        if (c == '!' || c == '~') {
            return ~read(after) & ones();
        }
        if (c == '*' || c == '@' || c == '+') {
            const std::uint64_t left =
                read(BOOL_TRUTH_TABLE::get_last_eqn_item(s, static_cast<int>(i) - 1));
            const std::uint64_t right = read(after);
            return c == '*' ? left & right : c == '@' ? left ^ right : left | right;
        }
        return projection(external ? c - 'A' : std::stoi(s.substr(i + 1, 2)));
    }

    std::uint64_t projection(int input) const
    {
        const std::string name = external ? std::string{'\'', static_cast<char>('A' + input), '\''}
                                          : std::to_string(input);
        require(input < width,
                "Equation input " + name + " in a table of width " + std::to_string(width));
        std::uint64_t column = 0;
        for (unsigned x = 0; x < 1U << width; ++x) {
            column |= std::uint64_t{x >> input & 1U} << x;
        }
        return column;
    }
};
