// Truth tables when memory runs out.

#include "basbdtt.h"
#include "exhaustion.h"

namespace {

/// Longer than any small-string buffer, with text that is dropped and inputs above a block.
const std::string external_sum = "A(B + !M)*!(A + B N) + (A)B + !A !B*(0 + C !(A B)) + C(1)A";
const std::string internal_sum = "F0=B0*(B1+~B2)@~(B0+B12*B13)+(B0)B1+~B0*~B1*(0+B2*~(B0@B1))@(1)";

struct tables {
    explicit tables(int table_width) : width(table_width)
    {
        table.set_identity_for_input(width, 1);
        table.value.words[0] ^= 0x35U;
        table.value.words.shrink_to_fit();
        other.set_identity_for_input(width + 1, 0);
        other.set_value(width, other.value); // the column is longer than the table's
    }

    std::string describe() const
    {
        std::string all = text;
        for (const auto* each : {&table, &other}) {
            all += ' ' + each->value.get_hex_string() + ' ' + std::to_string(each->width) + ' ' +
                   std::to_string(each->value.words.size());
        }
        return all;
    }

    int width;
    BOOL_TRUTH_TABLE table;
    BOOL_TRUTH_TABLE other;
    std::string text;
    int perm[14] = {1, 2, 0, 3, 4, 5, 6, 7, 8, 9, 13, 12, 11, 10};
};

const operation<tables> operations[] = {
    [](tables& s) { s.other = BOOL_TRUTH_TABLE(); },
    [](tables& s) { s.other = BOOL_TRUTH_TABLE(s.table); },
    [](tables& s) { s.other.value = TRUTH_TABLE_VAL(s.width + 2, 1); },
    [](tables& s) { s.table.value ^= s.other.value, s.table.value |= s.other.value; },
    [](tables& s) { s.table.value &= s.other.value; },
    [](tables& s) { s.text = s.table.value.get_hex_string(); },
    [](tables& s) { s.text = s.table.is_identity_for_input(1) ? "1" : "0"; },
    [](tables& s) { s.table.set_value(s.width + 2, s.other.value); },
    [](tables& s) { s.table.invert_input(s.width - 1); },
    [](tables& s) { s.table.rotate_inputs(0, s.width - 1); },
    [](tables& s) { s.table.rotate_inputs(s.perm); },
    [](tables& s) { s.other.rotate_inputs(s.perm); },
    [](tables& s) { s.other = s.table.get_true_factor_for_input(1); },
    [](tables& s) { s.other = s.table.get_false_factor_for_input(s.width - 1); },
    [](tables& s) { s.table.set_value_from_external_equation(s.width + 1, external_sum); },
    [](tables& s) { s.table.set_value_from_internal_equation(s.width + 1, internal_sum); },
    [](tables& s) { s.table.set_value_from_external_equation(s.width, external_sum); },
    [](tables& s) { s.table.set_value_from_internal_equation(s.width, internal_sum); },
    [](tables& s) { s.table.set_value_from_hex_string(s.width, "0xFG"); },
    [](tables& s) { s.text = BOOL_TRUTH_TABLE::get_next_eqn_item(external_sum, 0); },
    [](tables& s) { s.text = BOOL_TRUTH_TABLE::get_last_eqn_item(external_sum, 30); },
    [](tables& s) { s.text = s.table.get_external_equation(); },
    [](tables& s) { s.text = s.table.get_internal_equation(); },
};

TEST(table_exhaustion, of_every_operation)
{
    exhaust(operations, 3);
    exhaust(operations, 14);
}

/// What is documented where the object is not as it was: the width is stored before the column.
TEST(table_exhaustion, stores_the_width_before_the_column)
{
    BOOL_TRUTH_TABLE table;
    failing_heap::arm(1, 2);
    EXPECT_THROW(table.value.set_from_hex_string(20, ""), std::bad_alloc);
    EXPECT_THROW(table.set_identity_for_input(20, 2), std::bad_alloc);
    failing_heap::disarm();
    EXPECT_EQ(table.value.words.size(), 1U);
    EXPECT_EQ(table.value.bit_count, 1 << 20);
    EXPECT_EQ(table.width, 20);
}

} // namespace
