/// @file
/// @brief The BDD engine against BuDDy: same circuits, same variable order, no reordering.
///
/// BuDDy is set up as its manual advises a user who does not know the number of nodes beforehand:
/// bdd_init(100000, 10000) for the circuits and for the one manager of all cells, the manual's
/// medium size, and bdd_init(1000, 100) for a manager per cell, its smallest. Growing and garbage
/// collection stay as they are by default, so functions are held by the class `bdd`, which counts
/// references. The operation under test is the if-then-else, so the partner of the builds is
/// `bdd_ite`; rows with "apply" set the same builds against BuDDy's operators of two operands.
///
/// Cells and builds are timed from before the manager is made until after it is destroyed, for
/// that is what the user of a function waits for; rows with "work alone" leave both out. Cofactors
/// and composes are timed alone. The model counts of all contenders are compared before the timing.
#include "basbd_engine.h"
#include "circuits.h"
#include "harness.h"

#include <bdd.h>
#include <malloc.h>

#include <cstdlib>
#include <random>

namespace {

/// Fails loudly: a ratio of unequal work means nothing.
void check(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

/// The arguments of bdd_init.
struct SIZES {
    int nodes;
    int cache;
};
constexpr SIZES small_sizes = {1000, 100};
constexpr SIZES medium_sizes = {100000, 10000};

/// @brief basbd with one of its stores.
template <int METHOD>
struct BASBD : BASBD_ENGINE {
    explicit BASBD(unsigned variables, SIZES /*of BuDDy's tables*/ = {})
        : BASBD_ENGINE(BDD_STORE_METHOD(METHOD), variables)
    {
    }
};

/// How BuDDy is asked for AND, OR and XOR.
enum class CALLS { ITE, APPLY };

/// @brief BuDDy behind the same operations.
template <CALLS USED = CALLS::ITE>
class BUDDY {
public:
    using EDGE = bdd;

    BUDDY(unsigned variables, SIZES sizes)
    {
        bdd_init(sizes.nodes, sizes.cache);
        bdd_setvarnum(static_cast<int>(variables));
        bdd_gbc_hook(nullptr); // the default one prints
    }
    BUDDY(const BUDDY&) = delete;
    BUDDY& operator=(const BUDDY&) = delete;
    ~BUDDY() { bdd_done(); }

    EDGE constant(bool value) { return value ? bdd_true() : bdd_false(); }
    EDGE variable(unsigned i) { return bdd_ithvar(static_cast<int>(i)); }
    EDGE negate(const EDGE& f) { return bdd_not(f); }
    EDGE conjunction(const EDGE& f, const EDGE& g)
    {
        return USED == CALLS::ITE ? bdd_ite(f, g, bdd_false()) : bdd_and(f, g);
    }
    EDGE disjunction(const EDGE& f, const EDGE& g)
    {
        return USED == CALLS::ITE ? bdd_ite(f, bdd_true(), g) : bdd_or(f, g);
    }
    EDGE parity(const EDGE& f, const EDGE& g)
    {
        return USED == CALLS::ITE ? bdd_ite(f, bdd_not(g), g) : bdd_xor(f, g);
    }
    EDGE choice(const EDGE& f, const EDGE& g, const EDGE& h) { return bdd_ite(f, g, h); }
    EDGE cofactor(const EDGE& f, unsigned i, bool value)
    {
        const int var = static_cast<int>(i);
        return bdd_restrict(f, value ? bdd_ithvar(var) : bdd_nithvar(var));
    }
    EDGE compose(const EDGE& f, unsigned i, const EDGE& g)
    {
        return bdd_compose(f, g, static_cast<int>(i));
    }
    double models(const EDGE& f) { return bdd_satcount(f); }
};

// ---- what is done with a built circuit

template <typename CIRCUIT>
struct cofactors {
    template <typename ENGINE>
    static void run(ENGINE& e, const EDGES<ENGINE>& outputs)
    {
        for (const auto& output : outputs) {
            for (unsigned i = 0; i < CIRCUIT::variables; ++i) {
                bench::keep(e.cofactor(output, i, false));
                bench::keep(e.cofactor(output, i, true));
            }
        }
    }
};

/// Puts the parity of its neighbours in place of every fourth variable.
template <typename CIRCUIT>
struct composes {
    template <typename ENGINE>
    static void run(ENGINE& e, const EDGES<ENGINE>& outputs)
    {
        constexpr unsigned n = CIRCUIT::variables;
        for (const auto& output : outputs) {
            for (unsigned i = 0; i < n; i += 4) {
                const auto g = e.parity(e.variable((i + n - 1) % n), e.variable((i + 1) % n));
                bench::keep(e.compose(output, i, g));
            }
        }
    }
};

// ---- timing

enum class TIMED {
    WHOLE_LIFE, ///< making the manager, the work and the destruction
    WORK        ///< the work alone
};

/// Seconds of `work(engine, prepare(engine))` on a fresh engine.
template <typename ENGINE, typename PREPARE, typename WORK>
double sample(TIMED timed, unsigned variables, PREPARE prepare, WORK work)
{
    double seconds = 0;
    int runs = 0;
    for (; seconds < 2e-3; ++runs) {
        double start = bench::cpu_seconds();
        {
            ENGINE engine(variables, medium_sizes);
            auto input = prepare(engine);
            if (timed == TIMED::WORK) {
                start = bench::cpu_seconds();
            }
            work(engine, input);
            if (timed == TIMED::WORK) {
                seconds += bench::cpu_seconds() - start;
            }
        }
        if (timed == TIMED::WHOLE_LIFE) {
            seconds += bench::cpu_seconds() - start;
        }
    }
    return seconds / runs;
}

template <typename ENGINE>
struct CONTENDER {
    using TYPE = ENGINE;
};

/// The ratios of all circuits, one for each.
struct RATIOS {
    std::vector<double> ite;          ///< hash store / BuDDy by bdd_ite
    std::vector<double> apply;        ///< hash store / BuDDy by bdd_and, bdd_or, bdd_xor
    std::vector<double> tree_by_hash; ///< tree store / hash store
};

template <typename PREPARE, typename WORK>
void compare(TIMED timed, const std::string& name, unsigned variables, PREPARE prepare, WORK work,
             RATIOS& ratios)
{
    const auto seconds = [&](auto contender) {
        return sample<typename decltype(contender)::TYPE>(timed, variables, prepare, work);
    };
    RATIOS rounds;
    std::vector<double> own;
    std::vector<double> buddy;
    for (int round = 0; round < 7; ++round) {
        const double hash = seconds(CONTENDER<BASBD<BDD_STORE_HASH>>());
        const double ite = seconds(CONTENDER<BUDDY<CALLS::ITE>>());
        own.push_back(hash);
        buddy.push_back(ite);
        rounds.ite.push_back(hash / ite);
        rounds.apply.push_back(hash / seconds(CONTENDER<BUDDY<CALLS::APPLY>>()));
        rounds.tree_by_hash.push_back(seconds(CONTENDER<BASBD<BDD_STORE_TREE>>()) / hash);
    }
    ratios.ite.push_back(bench::median(rounds.ite));
    ratios.apply.push_back(bench::median(rounds.apply));
    ratios.tree_by_hash.push_back(bench::median(rounds.tree_by_hash));
    std::printf("  %-36s %9.1f us  BuDDy %9.1f us  ratio %5.2f  apply %5.2f  tree/hash %5.2f\n",
                name.c_str(), 1e6 * bench::median(own), 1e6 * bench::median(buddy),
                ratios.ite.back(), ratios.apply.back(), ratios.tree_by_hash.back());
    std::fflush(stdout);
}

struct SECTIONS {
    RATIOS builds;
    RATIOS builds_alone;
    RATIOS cofactors;
    RATIOS composes;
};

template <typename CIRCUIT, typename ENGINE>
std::vector<double> models()
{
    ENGINE engine(CIRCUIT::variables, medium_sizes);
    std::vector<double> counts;
    for (const auto& output : CIRCUIT::build(engine)) {
        counts.push_back(engine.models(output));
    }
    return counts;
}

template <typename CIRCUIT>
void measure(const std::string& name, SECTIONS& sections)
{
    const auto counts = models<CIRCUIT, BUDDY<CALLS::ITE>>();
    check(models<CIRCUIT, BUDDY<CALLS::APPLY>>() == counts, "unequal models");
    check(models<CIRCUIT, BASBD<BDD_STORE_HASH>>() == counts, "unequal models");
    check(models<CIRCUIT, BASBD<BDD_STORE_TREE>>() == counts, "unequal models");

    constexpr unsigned n = CIRCUIT::variables;
    const auto nothing = [](auto&) { return 0; };
    const auto build = [](auto& e) { return CIRCUIT::build(e); };
    const auto build_only = [](auto& e, int) { bench::keep(CIRCUIT::build(e)); };
    const auto take_cofactors = [](auto& e, auto& f) { cofactors<CIRCUIT>::run(e, f); };
    const auto compose = [](auto& e, auto& f) { composes<CIRCUIT>::run(e, f); };
    compare(TIMED::WHOLE_LIFE, name + ", build", n, nothing, build_only, sections.builds);
    compare(TIMED::WORK, name + ", build alone", n, nothing, build_only, sections.builds_alone);
    compare(TIMED::WORK, name + ", cofactors", n, build, take_cofactors, sections.cofactors);
    compare(TIMED::WORK, name + ", composes", n, build, compose, sections.composes);
}

// ---- cells

/// A random expression over a cell's inputs: operand numbers below `inputs` are variables, the
/// others earlier steps.
struct CELL {
    struct STEP {
        unsigned operation;
        unsigned left;
        unsigned right;
        bool complemented;
    };
    static constexpr unsigned max_values = 23; // of 8 inputs and 15 steps between 16 leaves
    unsigned inputs;
    std::vector<STEP> steps;

    template <typename ENGINE>
    typename ENGINE::EDGE build(ENGINE& e) const
    {
        typename ENGINE::EDGE values[max_values] = {};
        for (unsigned i = 0; i < inputs; ++i) {
            values[i] = e.variable(i);
        }
        unsigned next = inputs;
        for (const STEP& step : steps) {
            const auto left = step.complemented ? e.negate(values[step.left]) : values[step.left];
            const auto right = values[step.right];
            values[next++] = step.operation == 0   ? e.conjunction(left, right)
                             : step.operation == 1 ? e.parity(left, right)
                                                   : e.disjunction(left, right);
        }
        return values[next - 1];
    }

    template <typename ENGINE>
    void build_and_take_cofactors(ENGINE& e) const
    {
        const auto f = build(e);
        for (unsigned i = 0; i < inputs; ++i) {
            bench::keep(e.cofactor(f, i, false));
            bench::keep(e.cofactor(f, i, true));
        }
    }
};

/// A row for comparison, which has no goal.
void print_extra(const char* name, const std::vector<double>& ratios)
{
    std::printf("%-44s %8.2f\n", name, bench::geometric_mean(ratios));
}

std::vector<CELL> random_cells(unsigned count)
{
    std::mt19937 random(8);
    std::vector<CELL> cells;
    while (cells.size() < count) {
        CELL cell{3 + static_cast<unsigned>(random() % 6), {}};
        std::vector<unsigned> open; // each value is used once: the expression is a tree
        for (unsigned i = 0; i < 2 * cell.inputs; ++i) {
            open.push_back(i % cell.inputs);
        }
        std::shuffle(open.begin(), open.end(), random);
        unsigned next = cell.inputs;
        while (open.size() > 1) {
            const std::size_t at = random() % (open.size() - 1);
            cell.steps.push_back(
                {static_cast<unsigned>(random() % 3), open[at], open[at + 1], random() % 2 == 0});
            open[at] = next++;
            open.erase(open.begin() + static_cast<std::ptrdiff_t>(at) + 1);
        }
        cells.push_back(cell);
    }
    return cells;
}

template <typename ENGINE>
void one_manager_each(const std::vector<CELL>& cells)
{
    for (const CELL& cell : cells) {
        ENGINE engine(cell.inputs, small_sizes);
        cell.build_and_take_cofactors(engine);
    }
}

template <typename ENGINE>
void one_manager_for_all(const std::vector<CELL>& cells)
{
    ENGINE engine(8, medium_sizes);
    for (const CELL& cell : cells) {
        cell.build_and_take_cofactors(engine);
    }
}

void measure_cells()
{
    using HASH = BASBD<BDD_STORE_HASH>;
    using TREE = BASBD<BDD_STORE_TREE>;
    using ITE = BUDDY<CALLS::ITE>;
    using APPLY = BUDDY<CALLS::APPLY>;
    const auto cells = random_cells(4000);
    for (const CELL& cell : cells) {
        HASH hash(cell.inputs);
        ITE buddy(cell.inputs, small_sizes);
        check(hash.models(cell.build(hash)) == buddy.models(cell.build(buddy)), "unequal cells");
    }
    const auto each = [&](auto ours, auto theirs) {
        return std::vector<double>{
            bench::ratio([&] { one_manager_each<typename decltype(ours)::TYPE>(cells); },
                         [&] { one_manager_each<typename decltype(theirs)::TYPE>(cells); }, 9)};
    };
    const auto all = [&](auto ours, auto theirs) {
        return std::vector<double>{
            bench::ratio([&] { one_manager_for_all<typename decltype(ours)::TYPE>(cells); },
                         [&] { one_manager_for_all<typename decltype(theirs)::TYPE>(cells); }, 9)};
    };
    const CONTENDER<HASH> hash;
    const CONTENDER<TREE> tree;
    const CONTENDER<ITE> ite;
    const CONTENDER<APPLY> apply;
    bench::print_row("cells, a manager each, hash / BuDDy", each(hash, ite), 0.25);
    bench::print_row("cells, a manager each, tree / BuDDy", each(tree, ite), 0.5);
    bench::print_row("cells, one manager, hash / BuDDy", all(hash, ite), 0.65);
    bench::print_row("cells, one manager, tree / BuDDy", all(tree, ite), 1.3);
    print_extra("cells, a manager each, hash / BuDDy, apply", each(hash, apply));
    print_extra("cells, one manager, hash / BuDDy, apply", all(hash, apply));
}

/// Bytes of the heap for each node of a table of 100,000: record and container entry.
template <int METHOD>
double bytes_per_node()
{
    const auto used = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    constexpr unsigned variables = 125;
    const double before = used();
    BASBD<METHOD> engine(variables);
    for (unsigned short var = 0; var < 25; ++var) {
        for (unsigned i = 0; i < 40; ++i) {
            for (unsigned j = 0; j < 100; ++j) {
                bench::keep(engine.node(var, engine.variable(25 + i),
                                        engine.negate(engine.variable(25 + j))));
            }
        }
    }
    return (used() - before) / (100000 + variables);
}

} // namespace

int main()
{
    bench::print_heading("BDDs", "BuDDy");
    std::printf("bytes per node: hash store %.1f, tree store %.1f\n",
                bytes_per_node<BDD_STORE_HASH>(), bytes_per_node<BDD_STORE_TREE>());
    measure_cells();
    SECTIONS sections;
    measure<queens<6>>("queens 6", sections);
    measure<queens<7>>("queens 7", sections);
    measure<queens<8>>("queens 8", sections);
    measure<multiplier8>("multiplier 8x8", sections);
    measure<adder16>("adder 16", sections);
    measure<symmetric20>("symmetric 20", sections);
    measure<hidden_weighted_bit16>("hidden weighted bit 16", sections);
    measure<random_sums30>("random sums 30", sections);
    bench::print_row("builds, hash / BuDDy", sections.builds.ite, 1.0);
    bench::print_row("cofactors, hash / BuDDy", sections.cofactors.ite, 0.8);
    bench::print_row("composes, hash / BuDDy", sections.composes.ite, 0.9);
    bench::print_row("builds, tree / hash", sections.builds.tree_by_hash, 2.0);
    bench::print_row("cofactors, tree / hash", sections.cofactors.tree_by_hash, 2.0);
    bench::print_row("composes, tree / hash", sections.composes.tree_by_hash, 2.0);
    print_extra("builds, hash / BuDDy, apply", sections.builds.apply);
    print_extra("builds, hash / BuDDy, work alone", sections.builds_alone.ite);
    print_extra("builds, hash / BuDDy, apply, work alone", sections.builds_alone.apply);
    return 0;
}
