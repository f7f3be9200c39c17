#include "numbers.h"

#include "scanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>
#include <vector>

namespace basbdcells {

namespace {

constexpr char negation = '~'; ///< a "-" before its operand

int rank(char sign)
{
    return sign == '(' ? 0 : sign == '+' || sign == '-' ? 1 : sign == negation ? 3 : 2;
}

/// Evaluates with a stack of operands and one of operators, so that depth costs no calls.
class arithmetic {
public:
    explicit arithmetic(std::string_view expression) : text(expression) {}

    std::optional<double> value()
    {
        for (pass_blanks(); !text.empty(); pass_blanks()) {
            if (!(is_operand_next ? take_operand() : take_operator())) {
                return std::nullopt;
            }
        }
        if (is_operand_next) {
            return std::nullopt;
        }
        apply_down_to(rank('+'));
        return signs.empty() && std::isfinite(operands.back()) ? std::optional(operands.back())
                                                               : std::nullopt;
    }

private:
    void pass_blanks()
    {
        text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    }

    /// Takes a sign, a "(" or a number. @return whether there was one
    bool take_operand()
    {
        const char c = text.front();
        if (c == '+' || c == '-' || c == '(') {
            text.remove_prefix(1);
            if (c != '+') {
                signs.push_back(c == '-' ? negation : c);
            }
            return true;
        }
        double number = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
        operands.push_back(number);
        is_operand_next = false;
        return error == std::errc() && std::isfinite(number);
    }

    /// Takes an operator or a ")". @return whether there was one
    bool take_operator()
    {
        const char c = text.front();
        text.remove_prefix(1);
        if (c == ')') {
            apply_down_to(rank('+'));
            if (signs.empty()) {
                return false;
            }
            signs.pop_back();
            return true;
        }
        const bool is_known = std::string_view("+-*/").find(c) != std::string_view::npos;
        if (is_known) {
            apply_down_to(rank(c));
            signs.push_back(c);
            is_operand_next = true;
        }
        return is_known;
    }

    void apply_down_to(int least)
    {
        for (; !signs.empty() && rank(signs.back()) >= least; signs.pop_back()) {
            if (signs.back() == negation) {
                operands.back() = -operands.back();
            } else {
                const double right = operands.back();
                operands.pop_back();
                apply(signs.back(), operands.back(), right);
            }
        }
    }

    static void apply(char sign, double& left, double right)
    {
        switch (sign) {
        case '+':
            left += right;
            break;
        case '-':
            left -= right;
            break;
        case '*':
            left *= right;
            break;
        default:
            left /= right;
        }
    }

    std::string_view text;
    bool is_operand_next = true;
    std::vector<double> operands;
    std::vector<char> signs;
};

} // namespace

std::optional<double> to_number(std::string_view text)
{
    double value = 0;
    const char* const stop = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), stop, value);
    if (error != std::errc() || end != stop || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> to_value(std::string_view expression)
{
    return arithmetic(expression).value();
}

} // namespace basbdcells
