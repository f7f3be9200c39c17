// Truth tables when memory runs out.

#include "basbdtt.h"
#include "exhaustion.h"

#include <array>

namespace {

/// Longer than any small-string buffer, with text that is dropped.
const std::string external_sum = "A(B + !C)*!(A + B C) + (A)B + !A !B*(0 + C !(A B)) + C(1)A";
const std::string internal_sum = "F0=B0*(B1+~B2)@~(B0+B1*B2)+(B0)B1+~B0*~B1*(0+B2*~(B0@B1))@(1)";

template <int WIDTH>
struct TABLES {
    TABLES()
    {
        table.set_identity_for_input(WIDTH, 1);
        table.value.words[0] ^= 0x35U;
        table.value.words.shrink_to_fit();
        other.set_identity_for_input(WIDTH + 1, 0);
    }

    std::string describe() const { return fields(table) + fields(other) + text; }

    static std::string fields(const BOOL_TRUTH_TABLE& t)
    {
        return t.value.get_hex_string() + ' ' + std::to_string(t.width) + ' ' +
               std::to_string(t.value.words.size()) + '\n';
    }

    BOOL_TRUTH_TABLE table;
    BOOL_TRUTH_TABLE other;
    std::string text;
    std::array<int, 14> perm = {1, 2, 0, 3, 4, 5, 6, 7, 8, 9, 13, 12, 11, 10};

    static const exhaustion::OPERATION<TABLES> operations[];
};

// clang-format off
template <int WIDTH>
const exhaustion::OPERATION<TABLES<WIDTH>> TABLES<WIDTH>::operations[] = {
    OPERATION_OF(TABLES, s.other = BOOL_TRUTH_TABLE()),
    OPERATION_OF(TABLES, s.other = BOOL_TRUTH_TABLE(s.table)),
    OPERATION_OF(TABLES, s.other.value = TRUTH_TABLE_VAL(WIDTH + 2, 1)),
    OPERATION_OF(TABLES, s.table.value ^= s.other.value),
    OPERATION_OF(TABLES, s.table.value |= s.other.value),
    OPERATION_OF(TABLES, s.table.value &= s.other.value),
    OPERATION_OF(TABLES, s.text = s.table.value.get_hex_string()),
    OPERATION_OF(TABLES, s.text = s.table.is_identity_for_input(1) ? "1" : "0"),
    OPERATION_OF(TABLES, s.table.set_value(WIDTH + 2, s.other.value)),
    OPERATION_OF(TABLES, s.table.invert_input(WIDTH - 1)),
    OPERATION_OF(TABLES, s.table.rotate_inputs(0, WIDTH - 1)),
    OPERATION_OF(TABLES, s.table.rotate_inputs(s.perm.data())),
    OPERATION_OF(TABLES, s.other = s.table.get_true_factor_for_input(1)),
    OPERATION_OF(TABLES, s.other = s.table.get_false_factor_for_input(WIDTH - 1)),
    OPERATION_OF(TABLES, s.table.set_value_from_external_equation(WIDTH + 1, external_sum)),
    OPERATION_OF(TABLES, s.table.set_value_from_internal_equation(WIDTH + 1, internal_sum)),
    OPERATION_OF(TABLES, s.table.set_value_from_external_equation(2, external_sum)),
    OPERATION_OF(TABLES, s.table.set_value_from_internal_equation(2, internal_sum)),
    OPERATION_OF(TABLES, s.text = BOOL_TRUTH_TABLE::get_next_eqn_item(external_sum, 0)),
    OPERATION_OF(TABLES, s.text = BOOL_TRUTH_TABLE::get_last_eqn_item(external_sum, 30)),
    OPERATION_OF(TABLES, s.text = s.table.get_external_equation()),
    OPERATION_OF(TABLES, s.text = s.table.get_internal_equation()),
};
// clang-format on

template <typename SUBJECT>
class table_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<TABLES<3>, TABLES<14>>;
TYPED_TEST_SUITE(table_exhaustion, SUBJECTS);

TYPED_TEST(table_exhaustion, of_every_operation)
{
    for (const auto& operation : TypeParam::operations) {
        exhaustion::exhaust(operation);
    }
}

/// What is documented where the object is not as it was: the width is stored before the column.
TEST(table_exhaustion, stores_the_width_before_the_column)
{
    void (*const sets[])(BOOL_TRUTH_TABLE&) = {
        [](BOOL_TRUTH_TABLE& table) { table.value.set_from_hex_string(20, ""); },
        [](BOOL_TRUTH_TABLE& table) { table.set_value_from_hex_string(20, ""); },
        [](BOOL_TRUTH_TABLE& table) { table.set_identity_for_input(20, 2); }};
    for (const auto set : sets) {
        BOOL_TRUTH_TABLE table;
        failing_heap::arm(1, failing_heap::FAIL::ONCE);
        EXPECT_THROW(set(table), std::bad_alloc);
        failing_heap::disarm();
        EXPECT_EQ(table.value.words.size(), 1U);
        EXPECT_TRUE(table.width == 20 || table.value.bit_count == 1 << 20);
    }
}

} // namespace
