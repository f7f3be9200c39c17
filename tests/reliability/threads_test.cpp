// Objects of one's own on different threads at once; of use under ThreadSanitizer above all.

#include "basbdtt.h"
#include "bdd_oracle.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>

namespace {

/// Everything that a table can do, on tables of one's own.
void use_tables(int thread)
{
    for (int round = 0; round < 50; ++round) {
        const int width = 4 + (round + thread) % 7;
        BOOL_TRUTH_TABLE table;
        table.set_value_from_internal_equation(width, "F0=B0*~B1@(B2+~B3)");
        BOOL_TRUTH_TABLE copy;
        copy.set_value_from_hex_string(width, table.value.get_hex_string());
        copy.set_value_from_internal_equation(width, copy.get_internal_equation());
        copy.set_value_from_external_equation(width, copy.get_external_equation());
        copy.rotate_inputs(0, width - 1);
        copy.rotate_inputs(width - 1, 0);
        copy.invert_input(0);
        EXPECT_TRUE(copy.get_false_factor_for_input(0).value ==
                    table.get_true_factor_for_input(0).value);
    }
}

/// What functions of a manager of one's own become. @return their texts
std::string texts_of_bdds(int thread)
{
    std::string texts;
    for (unsigned round = 0; round < 20; ++round) {
        bdd_oracle::own_manager m(BDD_STORE_METHOD(round % 2), 12);
        BOOL_FUNC none;
        BDD_FUNC f(12, &none, &m.bdds, nullptr);
        for (unsigned i = 0; i < 12; ++i) {
            BDD_NODE* const x = m.variable((5 * i + static_cast<unsigned>(thread)) % 12);
            f.setbdd(i % 3 == 0 ? m.bdds.ifthenelse(x, negate(f.bdd), f.bdd)
                                : m.bdds.ifthenelse(x, basbdd_one, negate(f.bdd)));
        }
        BDD_FUNC copy(&f);
        copy.complsiginfn(m.signals[3]);
        copy.setsigto1(m.signals[5]);
        f.substfnforsig(m.signals[4], &copy);
        std::string text(1U << 16U, ' ');
        char names[] = "abcdefghijkl";
        f.printbddexpr(text.data(), names);
        texts += text.substr(0, text.find('\0'));
    }
    return texts;
}

template <typename task>
void on_four_threads(task work)
{
    std::array<std::thread, 4> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.at(static_cast<std::size_t>(thread)) = std::thread(work, thread);
    }
    for (std::thread& each : threads) {
        each.join();
    }
}

TEST(threads, work_on_bdds_of_their_own)
{
    std::array<std::string, 4> texts; // of the first managers in the process
    on_four_threads(
        [&](int thread) { texts.at(static_cast<std::size_t>(thread)) = texts_of_bdds(thread); });
    for (int thread = 0; thread < 4; ++thread) {
        EXPECT_EQ(texts.at(static_cast<std::size_t>(thread)), texts_of_bdds(thread));
    }
}

TEST(threads, work_on_tables_of_their_own) { on_four_threads(use_tables); }

} // namespace
