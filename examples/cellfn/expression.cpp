#include "expression.h"

#include "text.h"

#include <string_view>
#include <unordered_map>
#include <utility>

namespace cellfn {

namespace {

/// What waits on the operator stack. The order of the operators is their binding, loosest first.
enum class waiting { parenthesis, disjunction, exclusive, conjunction, complement };

step_kind kind_of(waiting sign)
{
    switch (sign) {
    case waiting::disjunction:
        return step_kind::disjunction;
    case waiting::exclusive:
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
    expression_reader(scanner& source, std::vector<std::string> pins) : text(source)
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

    [[noreturn]] void fail(const std::string& message) { throw text_error(text.line(), message); }

    /// Signs "!" and "(", then a pin or a constant.
    void read_operand()
    {
        while (true) {
            const char c = text.peek();
            if (c == '!') {
                text.take();
                if (!operators.empty() && operators.back() == waiting::complement) {
                    operators.pop_back(); // two signs cancel
                } else {
                    operators.push_back(waiting::complement);
                }
            } else if (c == '(') {
                text.take();
                if (++nesting > max_nesting) {
                    fail("parentheses nested more than " + std::to_string(max_nesting) + " deep");
                }
                operators.push_back(waiting::parenthesis);
            } else {
                read_name();
                return;
            }
        }
    }

    void read_name()
    {
        const scanner before = text;
        const std::string name(text.take_identifier());
        if (name == "GATE" || name == "PIN" || name == "LATCH") {
            text = before; // the word opens the next statement
            fail("expected ';' before " + name);
        }
        if (name.empty()) {
            fail("expected a pin, a constant, '!' or '(' instead of " + shown(text.peek()));
        }
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            fail("expected a pin, CONST0, CONST1, '!' or '(' instead of '" + name + "'");
        }
        if (name == "CONST0" || name == "CONST1") {
            result.steps.push_back({name == "CONST0" ? step_kind::zero : step_kind::one});
            return;
        }
        result.steps.push_back({step_kind::pin, number_of(name)});
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
        const char c = text.peek();
        switch (c) {
        case '\'':
            text.take();
            complement_operand();
            return after_operand::operand_complete;
        case ')':
            close_parenthesis();
            text.take();
            return after_operand::operand_complete;
        case ';':
            finish();
            text.take();
            return after_operand::wants_operand;
        case '\0':
            fail("expected ';' before the end of the text");
        case '+':
        case '|':
            text.take();
            wait(waiting::disjunction);
            break;
        case '^':
            text.take();
            wait(waiting::exclusive);
            break;
        case '*':
        case '&':
            text.take();
            wait(waiting::conjunction);
            break;
        default: // side by side
            wait(waiting::conjunction);
        }
        return after_operand::wants_operand;
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
        --nesting;
    }

    void finish()
    {
        apply_down_to(waiting::disjunction);
        if (!operators.empty()) {
            fail("expected ')' before ';'");
        }
        finished = true;
    }

    scanner& text;
    expression result;
    std::unordered_map<std::string, std::size_t> numbers; ///< pin name to index
    std::vector<waiting> operators;
    std::size_t nesting = 0;
    bool finished = false;
};

} // namespace

expression read_expression(scanner& text, std::vector<std::string> pins)
{
    return expression_reader(text, std::move(pins)).read();
}

} // namespace cellfn
