// Truth tables when memory runs out.

#include "basbdtt.h"
#include "exhaustion.h"

#include <memory>
#include <numeric>
#include <vector>

namespace {

using exhaustion::AFTER;

std::string fields(const TRUTH_TABLE_VAL& value)
{
    std::string text = std::to_string(value.bit_count);
    for (const std::uint32_t word : value.words) {
        text += ' ' + std::to_string(word);
    }
    return text;
}

/// A table with an irregular column, a second one and what operations return.
template <int WIDTH>
class TABLES {
public:
    TABLES()
    {
        table.set_identity_for_input(WIDTH, 1);
        for (std::size_t i = 0; i < table.value.words.size(); i += 3) {
            table.value.words[i] ^= 0x35U << (i % 2);
        }
        table.value.words.shrink_to_fit();
        other.set_identity_for_input(WIDTH + 1, 0);
        perm.resize(WIDTH);
        std::iota(perm.rbegin(), perm.rend(), 0);
    }

    std::string describe() const
    {
        return std::to_string(table.width) + ": " + fields(table.value) + " | " +
               std::to_string(other.width) + ": " + fields(other.value) + " | " + text;
    }

    BOOL_TRUTH_TABLE table;
    BOOL_TRUTH_TABLE other;
    std::vector<int> perm;
    std::string text;

    static const exhaustion::OPERATION<TABLES> operations[];
};

/// Longer than any small-string buffer, with text that is dropped.
const std::string external_sum = "A(B + !C)*!(A + B C) + (A)B + !A !B*(0 + C !(A B)) + C(1)A";
const std::string internal_sum = "F0=B0*(B1+~B2)@~(B0+B1*B2)+(B0)B1+~B0*~B1*(0+B2*~(B0@B1))@(1)";

template <int WIDTH>
const exhaustion::OPERATION<TABLES<WIDTH>> TABLES<WIDTH>::operations[] = {
    {"constant column", [](TABLES& s) { s.other.value = TRUTH_TABLE_VAL(WIDTH + 2, 1); }},
    {"default table", [](TABLES& s) { s.other = BOOL_TRUTH_TABLE(); }},
    {"copy", [](TABLES& s) { s.other = BOOL_TRUTH_TABLE(s.table); }},
    {"==", [](TABLES& s) { s.text = s.table.value == s.other.value ? "=" : "!"; }},
    {"^=", [](TABLES& s) { s.table.value ^= s.other.value; }},
    {"|=", [](TABLES& s) { s.table.value |= s.other.value; }},
    {"&=", [](TABLES& s) { s.table.value &= s.other.value; }},
    {"get_hex_string", [](TABLES& s) { s.text = s.table.value.get_hex_string(); }},
    {"set_from_hex_string", [](TABLES& s) { s.table.value.set_from_hex_string(WIDTH + 2, "7e"); },
     AFTER::BEGUN},
    {"set_from_hex_string, refused",
     [](TABLES& s) { s.table.value.set_from_hex_string(WIDTH, "7g"); }},
    {"set_value", [](TABLES& s) { s.table.set_value(WIDTH + 2, s.other.value); }},
    {"set_value_from_hex_string",
     [](TABLES& s) { s.table.set_value_from_hex_string(WIDTH + 2, "0x7e"); }, AFTER::BEGUN},
    {"is_identity_for_input",
     [](TABLES& s) { s.text = s.table.is_identity_for_input(1) ? "1" : "0"; }},
    {"set_identity_for_input", [](TABLES& s) { s.table.set_identity_for_input(WIDTH + 2, 2); },
     AFTER::BEGUN},
    {"invert_input", [](TABLES& s) { s.table.invert_input(WIDTH - 1); }},
    {"rotate_inputs, two", [](TABLES& s) { s.table.rotate_inputs(0, WIDTH - 1); }},
    {"rotate_inputs, all", [](TABLES& s) { s.table.rotate_inputs(s.perm.data()); }},
    {"get_true_factor_for_input",
     [](TABLES& s) { s.other = s.table.get_true_factor_for_input(1); }},
    {"get_false_factor_for_input",
     [](TABLES& s) { s.other = s.table.get_false_factor_for_input(WIDTH - 1); }},
    {"external reader",
     [](TABLES& s) { s.table.set_value_from_external_equation(WIDTH + 1, external_sum); }},
    {"internal reader",
     [](TABLES& s) { s.table.set_value_from_internal_equation(WIDTH + 1, internal_sum); }},
    {"external reader, refused",
     [](TABLES& s) { s.table.set_value_from_external_equation(2, external_sum); }},
    {"internal reader, refused",
     [](TABLES& s) { s.table.set_value_from_internal_equation(2, internal_sum); }},
    {"get_next_eqn_item",
     [](TABLES& s) { s.text = BOOL_TRUTH_TABLE::get_next_eqn_item(external_sum, 0); }},
    {"get_last_eqn_item",
     [](TABLES& s) { s.text = BOOL_TRUTH_TABLE::get_last_eqn_item(external_sum, 30); }},
    {"get_external_equation", [](TABLES& s) { s.text = s.table.get_external_equation(); }},
    {"get_internal_equation", [](TABLES& s) { s.text = s.table.get_internal_equation(); }},
    {"get_external_equation_recurse",
     [](TABLES& s) { s.text = BOOL_TRUTH_TABLE::get_external_equation_recurse(s.table, false); }},
    {"get_internal_equation_recurse",
     [](TABLES& s) { s.text = BOOL_TRUTH_TABLE::get_internal_equation_recurse(s.table, false); }},
};

using TABLES_3 = TABLES<3>;
using TABLES_14 = TABLES<14>;

template <typename SUBJECT>
class table_exhaustion : public testing::Test {
};
using SUBJECTS = testing::Types<TABLES_3, TABLES_14>;
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
    TABLES_14 tables;
    const std::vector<std::uint32_t> words = tables.table.value.words;
    for (const auto set :
         {+[](BOOL_TRUTH_TABLE& table) { table.set_value_from_hex_string(20, ""); },
          +[](BOOL_TRUTH_TABLE& table) { table.set_identity_for_input(20, 2); }}) {
        tables.table.width = 14;
        failing_heap::arm(1, failing_heap::FAIL::FROM_THERE);
        EXPECT_THROW(set(tables.table), std::bad_alloc);
        failing_heap::disarm();
        EXPECT_EQ(tables.table.get_width(), 20);
        EXPECT_EQ(tables.table.value.words, words);
    }
}

} // namespace
