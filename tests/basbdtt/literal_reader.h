/// @file
/// @brief The definition of the two equation texts, step by step: a level is scanned for its
/// element of lowest rank, and the operands beside it are read as texts of their own.
#pragma once

#include <cstdint>
#include <string>

/// Reads texts over up to six inputs into a column, or throws the message as a `std::string`.
struct literal_reader {
    bool external;
    int width;

    std::uint64_t read(const std::string& text) const
    {
        std::string s = external ? with_conjunctions(text) : text;
        if (!external && s.compare(0, 3, "F0=") == 0) {
            s.erase(0, 3);
        }
        std::size_t chosen = std::string::npos;
        int lowest = 5;
        int depth = 0;
        const auto choose = [&](int rank, std::size_t i) {
            chosen = rank < lowest ? i : chosen;
            lowest = rank < lowest ? rank : lowest;
        };
        for (std::size_t i = 0; i < s.size(); ++i) {
            s[i] = s[i] >= 'a' && s[i] <= 'z' ? static_cast<char>(s[i] - 32) : s[i];
            if (s[i] == '(' && ++depth == 1) {
                choose(3, i);
            } else if (s[i] == ')') {
                --depth;
            } else if (depth == 0 && s[i] != ' ' && s[i] != '\t' && s[i] != '(') {
                if (rank_of(s[i]) < 0) {
                    throw "Unexpected equation element '" + std::string(1, s[i]) + "'";
                }
                choose(rank_of(s[i]), i);
                if (!external && s[i] == 'B') {
                    if (!digit(s, i + 1)) {
                        throw std::string("Equation input 'B' without a number");
                    }
                    i += digit(s, i + 2) ? 2 : 1;
                }
            }
        }
        if (depth != 0) {
            throw std::string("Unbalanced parentheses in equation");
        }
        if (chosen == std::string::npos) {
            return blank(s);
        }
        return act(s, chosen);
    }

private:
    std::uint64_t ones() const { return width == 6 ? ~0ULL : (1ULL << (1U << width)) - 1; }

    static bool digit(const std::string& s, std::size_t i)
    {
        return i < s.size() && s[i] >= '0' && s[i] <= '9';
    }

    int rank_of(char c) const
    {
        switch (c) {
        case '+':
            return 0;
        case '@':
            return external ? -1 : 1;
        case '*':
            return external ? 1 : 2;
        case '!':
            return external ? 2 : -1;
        case '~':
            return external ? 2 : 3;
        case '0':
        case '1':
            return 4;
        default:
            return c == 'B' || (external && c >= 'A' && c <= 'Z') ? 4 : -1;
        }
    }

    static std::string with_conjunctions(const std::string& text)
    {
        std::string s;
        for (std::size_t i = 0; i < text.size(); ++i) {
            s += text[i];
            const std::size_t next = text.find_first_not_of(" \t", i + 1);
            const char upper = static_cast<char>(text[i] & ~32);
            if (upper >= 'A' && upper <= 'Z' && next != std::string::npos &&
                std::string(")*+").find(text[next]) == std::string::npos) {
                s += '*';
            }
        }
        return s;
    }

    std::uint64_t blank(const std::string& s) const
    {
        if (s.find_first_not_of(" \t") != std::string::npos) {
            throw std::string("Equation without an element outside parentheses");
        }
        if (!external) {
            throw std::string("Blank equation or operand");
        }
        return ones();
    }

    static std::string before(const std::string& s, std::size_t i)
    {
        std::string item;
        for (int depth = 0; i-- > 0;) {
            depth += s[i] == ')' ? 1 : s[i] == '(' ? -1 : 0;
            if (depth < 0) {
                break;
            }
            item.insert(0, 1, s[i]);
        }
        return item;
    }

    static std::string after(const std::string& s, std::size_t i)
    {
        std::string item;
        for (int depth = 0; ++i < s.size();) {
            depth += s[i] == '(' ? 1 : s[i] == ')' ? -1 : 0;
            if (depth < 0) {
                break;
            }
            item += s[i];
        }
        return item;
    }

    std::uint64_t act(const std::string& s, std::size_t i) const
    {
        switch (s[i]) {
        case '0':
            return 0;
        case '1':
            return ones();
        case '(':
            return read(after(s, i));
        case '!':
        case '~':
            return ~read(after(s, i)) & ones();
        case '*':
        case '@':
        case '+': {
            const std::uint64_t left = read(before(s, i));
            const std::uint64_t right = read(after(s, i));
            return s[i] == '*' ? left & right : s[i] == '@' ? left ^ right : left | right;
        }
        default:
            return projection(external ? s[i] - 'A' : std::stoi(s.substr(i + 1, 2)));
        }
    }

    std::uint64_t projection(int input) const
    {
        if (input >= width) {
            throw "Equation input " + std::to_string(input) + " in a table of width " +
                std::to_string(width);
        }
        std::uint64_t column = 0;
        for (unsigned x = 0; x < 1U << width; ++x) {
            column |= std::uint64_t{x >> input & 1U} << x;
        }
        return column;
    }
};
