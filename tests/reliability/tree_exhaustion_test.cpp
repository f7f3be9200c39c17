// Expression trees when memory or the node pool runs out.

#include "basbdbool.h"
#include "exhaustion.h"
#include "tree_oracle.h"
#include "ut_msgman.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <utility>

namespace {

using tree_oracle::signal;

/// A random function with shared nodes, and one built signal by signal.
struct trees {
    explicit trees(unsigned depth)
    {
        std::mt19937 random(depth);
        tree_oracle::tree_kind shapes;
        shapes.depth = depth;
        shapes.shared = true;
        function->root = tree_oracle::random_tree(random, shapes);
        function->nsuppt = function->countsuppt();
        for (unsigned i = 0; i < 6; ++i) {
            chain->addsigtofunc(signal(i), i % 2);
        }
    }

    std::string describe() const
    {
        std::string all = text;
        for (const auto* f : {function.get(), chain.get(), made.get()}) {
            all += f == nullptr ? "none" : tree_oracle::shape(*f) + std::to_string(f->nsuppt);
        }
        return all;
    }

    using owned = std::unique_ptr<BOOL_FUNC>;
    owned function = std::make_unique<BOOL_FUNC>();
    owned chain = std::make_unique<BOOL_FUNC>(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
    owned made = std::make_unique<BOOL_FUNC>();
    std::string text;
};

/// Every operation that allocates.
const operation<trees> operations[] = {
    [](trees& s) { s.made->root = new BOOL_TNODE(s.function->root); },
    [](trees& s) { s.chain->root->addsig(signal(7), 1); },
    [](trees& s) { s.function->root->subtreeforsig(signal(3), s.chain->root, 1); },
    [](trees& s) { s.made = std::make_unique<BOOL_FUNC>(BOOL_FUNC_OR, nullptr, BOOL_VAR_A); },
    [](trees& s) { s.made = std::make_unique<BOOL_FUNC>(s.function.get()); },
    [](trees& s) { s.made->setfunctype(BOOL_FUNC_XOR); },
    [](trees& s) { s.chain->addsigtofunc(signal(7), 1); },
    [](trees& s) { s.function->setlogic1(); },
    [](trees& s) { s.function->buildcofactexpr(signal(0), signal(1), signal(2)); },
    [](trees& s) { s.text = std::to_string(s.function->getpurefunc()); },
    [](trees& s) { s.function->substfnforsig(signal(3), s.chain.get()); },
    [](trees& s) { s.function->rmsigfromfunc(signal(1)); },
    [](trees& s) { s.function->cleanbufs(); },
    [](trees& s) { s.made.reset(s.chain->breakfunc(2)); },
    [](trees& s) { s.text = std::unique_ptr<char[]>(s.function->writeeqn()).get(); },
    [](trees& s) { s.text = std::unique_ptr<char[]>(s.chain->writeeqn()).get(); }, // no names
};

/// Keeps the lines of reports without memory.
struct report_lines final : UT_MSGMAN {
    void report(const char* /*text*/, const char* /*app*/, char* id, int line, const char* /*rev*/,
                int /*kind*/, void* /*extra*/) override
    {
        std::free(id);
        lines.at(count++) = line;
    }
    std::array<int, 90> lines{};
    std::size_t count = 0;
};

TEST(tree_exhaustion, of_what_keeps_the_reports)
{
    const char* const reported[] = {"?(a,1)", "?(0,a)", "?(b,b)"};
    report_lines expected;
    std::string text = "c";
    for (int i = 89; i >= 0; --i) {
        text.insert(0, std::string("+(") + reported[i % 3] + ',') += ')';
        expected.lines.at(static_cast<std::size_t>(i)) = i % 3 == 0 ? 836 : i % 3 == 1 ? 902 : 945;
    }
    for (const bool is_exhausted : {false, true}) {
        tree_oracle::parsed_func function(text.c_str());
        report_lines seen;
        auto* const manager = std::exchange(ut_msgman, &seen);
        failing_heap::arm(1, is_exhausted ? LONG_MAX : 0);
        function.root->reducetrivialsubtrees();
        failing_heap::disarm();
        ut_msgman = manager;
        if (is_exhausted) { // what had no place came at the end, site by site
            std::sort(seen.lines.begin(), seen.lines.end());
            std::sort(expected.lines.begin(), expected.lines.end());
        }
        EXPECT_EQ(seen.lines, expected.lines);
    }
}

TEST(tree_exhaustion, of_every_operation)
{
    exhaust(operations, 3U);
    exhaust(operations, 9U);
}

} // namespace
