// Objects of one's own on different threads at once; of use under ThreadSanitizer above all. It
// runs with the stand-in's services, pool and messages included.

#include "basbdtt.h"
#include "bdd_oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <numeric>
#include <set>
#include <sstream>
#include <string>
#include <thread>

using tree_oracle::signal;

namespace {

/// What four threads that start together return.
template <typename task>
auto on_four_threads(const task& work)
{
    std::array<decltype(work(0)), 4> results;
    std::array<std::thread, 4> threads;
    std::atomic<std::size_t> waiting{4};
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads.at(i) = std::thread([&, i] {
            for (--waiting; waiting != 0;) {
            }
            results.at(i) = work(static_cast<int>(i));
        });
    }
    std::for_each(threads.begin(), threads.end(), [](std::thread& each) { each.join(); });
    return results;
}

/// The same work on four threads and on this one must have the same results.
template <typename task>
void expect_same_on_threads(const task& work)
{
    const auto results = on_four_threads(work);
    for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_EQ(results.at(i), work(static_cast<int>(i)));
    }
}

std::string text_of(BOOL_FUNC& f)
{
    const std::unique_ptr<char[]> text(f.writeeqn());
    return text.get();
}

/// What the first of its kind in the process makes or chooses. @return the text of all names
std::string use_all(int thread)
{
    const std::string longest(BOOL_VAR_NONE, static_cast<char>('a' + thread));
    std::array<const char*, BOOL_VAR_NONE> names{};
    std::iota(names.rbegin(), names.rend(), longest.c_str()); // of 17 lengths
    BOOL_FUNC f(names.data(), BOOL_VAR_QY); // takes no lock that would order the threads
    f.setfunctype(BOOL_FUNC_OR);
    for (unsigned i = 0; i < BOOL_VAR_NONE; ++i) {
        f.addsigtofunc(signal(i), 0);
        f.setvarname(signal(i), static_cast<BOOL_VARNAME>(i));
    }
    BOOL_FUNC().addsigtofunc(signal(0), 0);
    BOOL_TRUTH_TABLE().set_value_from_internal_equation(2, "F0=B0)");
    const bdd_oracle::own_manager manager(BDD_STORE_HASH, 1);
    EXPECT_EQ(basbdd_one, negate(basbdd_zero));
    return text_of(f);
}

TEST(threads, share_the_first_use_of_all)
{
    testing::internal::CaptureStderr();
    const auto texts = on_four_threads(use_all);
    std::istringstream messages(testing::internal::GetCapturedStderr());
    std::multiset<std::string> lines;
    for (std::string line; std::getline(messages, line);) {
        lines.insert(line);
    }
    EXPECT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines.count("Unbalanced parentheses in equation"), 4U);
    EXPECT_EQ(lines.count("basbd: internal error 4:11, line 1138, $Revision: 1.27 $"), 4U);
    for (const std::string& text : texts) { // all with the names of the same thread
        EXPECT_EQ(text, texts.front());
        EXPECT_EQ(std::count(text.begin(), text.end(), text.front()), 17 * 18 / 2);
    }
}

/// What edits make of functions of one's own. @return their texts, which outgrow the first buffer
std::string texts_of_functions(int thread)
{
    constexpr tree_oracle::tree_kind shapes{BOOL_VAR_NONE, 7, false, true};
    std::mt19937 random(static_cast<unsigned>(thread));
    const auto any_signal = [&random] {
        return signal(static_cast<unsigned>(random() % BOOL_VAR_NONE));
    };
    std::string texts;
    for (int round = 0; round < 100; ++round) {
        BOOL_FUNC f;
        f.root = tree_oracle::random_tree(random, shapes);
        f.cleanbufs(); // some operators lack the left operand, which edits report
        BOOL_FUNC copy(&f);
        copy.complsiginfunc(any_signal());
        copy.rmsigfromfunc(any_signal());
        copy.exchangexy();
        f.substfnforsig(any_signal(), &copy);
        f.setsigto1(any_signal());
        texts += std::to_string(f.nsuppt) + text_of(f) + std::to_string(f.getpurefunc());
        texts += text_of(f) + text_of(copy);
    }
    return texts;
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

TEST(threads, work_on_functions_of_their_own) { expect_same_on_threads(texts_of_functions); }

TEST(threads, work_on_bdds_of_their_own) { expect_same_on_threads(texts_of_bdds); }

} // namespace
