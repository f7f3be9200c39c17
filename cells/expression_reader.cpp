#include "expression_reader.h"

#include "basbdcells/text.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace basbdcells {

namespace {

/// What waits on the operator stack. The order of the operators is their binding, loosest first.
enum class waiting {
    parenthesis,
    disjunction,
    exclusive, ///< below AND
    conjunction,
    tight_exclusive, ///< above AND
    complement
};

step_kind kind_of(waiting sign)
{
    switch (sign) {
    case waiting::disjunction:
        return step_kind::disjunction;
    case waiting::exclusive:
    case waiting::tight_exclusive:
        return step_kind::exclusive;
    case waiting::conjunction:
        return step_kind::conjunction;
    default:
        return step_kind::complement;
    }
}

/// Turns infix text into steps with a stack of waiting operators, so that depth costs no calls.
class expression_reader {
public:
    expression_reader(scanner& source, const grammar& wanted, std::vector<std::string> pins)
        : text(source), format(wanted)
    {
        for (std::string& each : pins) {
            number_of(std::move(each));
        }
    }

    expression read()
    {
        while (true) {
            read_operand();
            while (read_operator_or_close() == after_operand::operand_complete) {
            }
            if (finished) {
                return std::move(result);
            }
        }
    }

private:
    enum class after_operand { operand_complete, wants_operand };

    /// Which operators stand in a product of one level.
    struct level {
        bool has_and = false;
        bool has_xor = false;
    };

    [[noreturn]] void fail(const std::string& message) { throw text_error(text.line(), message); }

    bool is_sign(int c) const
    {
        return c != scanner::end &&
               format.signs.find(static_cast<char>(c)) != std::string_view::npos;
    }

    std::string expected_operand() const
    {
        const char* constants = format.has(named_constants) ? "CONST0, CONST1" : "0, 1";
        const char* sign = is_sign('!') ? "'!'" : "'~'";
        return std::string("expected a pin, ") + constants + ", " + sign + " or '(' instead of ";
    }

    /// Signs "!" and "(", then a pin or a constant.
    void read_operand()
    {
        while (true) {
            const int c = text.peek();
            if ((c == '!' || c == '~') && is_sign(c)) {
                text.take();
                if (!operators.empty() && operators.back() == waiting::complement) {
                    operators.pop_back(); // two signs cancel
                } else {
                    operators.push_back(waiting::complement);
                }
            } else if (c == '(') {
                text.take();
                if (levels.size() > max_nesting) {
                    fail("parentheses nested more than " + std::to_string(max_nesting) + " deep");
                }
                operators.push_back(waiting::parenthesis);
                levels.emplace_back();
            } else {
                read_name(c);
                return;
            }
        }
    }

    void read_name(int first)
    {
        if (first == '"' && format.has(quoted_pins)) {
            text.take();
            std::string name = text.take_string();
            if (name.empty()) {
                fail("expected the name of a pin between the quotation marks");
            }
            push_pin(std::move(name));
            return;
        }
        const int line = text.line();
        const bool is_single = format.has(single_letters) && first >= 'A';
        const std::string name =
            is_single ? std::string(1, static_cast<char>(first)) : text.take_word(name_characters);
        if (is_single && name_characters.contains(static_cast<char>(first))) {
            text.take();
        } else if (is_single || name.empty()) {
            fail(expected_operand() + shown(first));
        }
        const bool is_number = name.find_first_not_of("0123456789") == std::string::npos;
        if ((format.has(digit_constants) && (name == "0" || name == "1")) ||
            (format.has(named_constants) && (name == "CONST0" || name == "CONST1"))) {
            result.steps.push_back({name.back() == '0' ? step_kind::zero : step_kind::one});
        } else if (is_number) {
            throw text_error(line, expected_operand() + quoted(name));
        } else if (format.terminator == ';' && is_keyword(name)) {
            text.put_back(name); // it opens the next statement
            fail("expected ';' before " + name);
        } else {
            push_pin(name);
        }
    }

    /// Of a genlib statement, which has begun before the expression has ended.
    static bool is_keyword(const std::string& name)
    {
        return name == "GATE" || name == "PIN" || name == "LATCH";
    }

    void push_pin(std::string name)
    {
        result.steps.push_back({step_kind::pin, number_of(std::move(name))});
    }

    /// The number of a pin, given when it is named for the first time.
    std::size_t number_of(std::string name)
    {
        const auto [known, is_new] = numbers.try_emplace(name, result.pins.size());
        if (is_new) {
            result.pins.push_back(std::move(name));
        }
        return known->second;
    }

    after_operand read_operator_or_close()
    {
        const int c = text.peek();
        const bool ends = format.terminator == '\0' ? c == scanner::end : c == format.terminator;
        if (ends) {
            finish();
            return after_operand::wants_operand;
        }
        if (c == scanner::end) {
            fail(std::string("expected '") + format.terminator + "' before the end of the text");
        }
        if (!is_sign(c) || c == '!' || c == '~' || c == '(') { // side by side
            read_neighbour(c);
            return after_operand::wants_operand;
        }
        text.take();
        switch (c) {
        case '\'':
            complement_operand();
            return after_operand::operand_complete;
        case ')':
            close_parenthesis();
            return after_operand::operand_complete;
        case '+':
        case '|':
            levels.back() = {};
            wait(waiting::disjunction);
            break;
        case '^':
        case '@':
            levels.back().has_xor = true;
            wait(format.exclusive == xor_rank::above_and ? waiting::tight_exclusive
                                                         : waiting::exclusive);
            break;
        default:
            levels.back().has_and = true;
            wait(waiting::conjunction);
        }
        return after_operand::wants_operand;
    }

    /// An operand without an operator before it.
    void read_neighbour(int first)
    {
        const bool begins_operand =
            is_sign(first) || first == '"' || name_characters.contains(static_cast<char>(first));
        if (!format.has(plain_products) || !begins_operand) {
            fail("expected an operator instead of " + shown(first));
        }
        levels.back().has_and = true;
        wait(waiting::conjunction);
    }

    void complement_operand()
    {
        if (result.steps.back().kind == step_kind::complement) {
            result.steps.pop_back();
        } else {
            result.steps.push_back({step_kind::complement});
        }
    }

    /// Applies the waiting operators that bind at least as tightly as `limit`.
    void apply_down_to(waiting limit)
    {
        while (!operators.empty() && operators.back() >= limit) {
            result.steps.push_back({kind_of(operators.back())});
            operators.pop_back();
        }
    }

    void wait(waiting sign)
    {
        if (format.exclusive == xor_rank::needs_parentheses && levels.back().has_and &&
            levels.back().has_xor) {
            fail("expected parentheses where XOR and AND stand side by side: genlib and Liberty "
                 "rank them differently");
        }
        apply_down_to(sign);
        operators.push_back(sign);
    }

    void close_parenthesis()
    {
        apply_down_to(waiting::disjunction);
        if (operators.empty()) {
            fail("')' without '('");
        }
        operators.pop_back();
        levels.pop_back();
    }

    void finish()
    {
        apply_down_to(waiting::disjunction);
        if (!operators.empty()) {
            fail(std::string("expected ')' before ") +
                 (format.terminator == '\0' ? "the end" : "';'"));
        }
        text.take();
        finished = true;
    }

    scanner& text;
    const grammar& format;
    expression result;
    std::unordered_map<std::string, std::size_t> numbers; ///< pin name to index
    std::vector<waiting> operators;
    std::vector<level> levels{1}; ///< of the parentheses that are open
    bool finished = false;
};

} // namespace

expression read_expression(scanner& text, const grammar& format, std::vector<std::string> pins)
{
    return expression_reader(text, format, std::move(pins)).read();
}

} // namespace basbdcells
