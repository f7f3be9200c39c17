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
struct table_sizes {
    int nodes;
    int cache;
};
constexpr table_sizes small_sizes = {1000, 100};
constexpr table_sizes medium_sizes = {100000, 10000};

/// @brief basbd with one of its stores.
template <int store>
struct basbd_with : basbd_engine {
    explicit basbd_with(unsigned variables, table_sizes /*of BuDDy's tables*/ = {})
        : basbd_engine(BDD_STORE_METHOD(store), variables)
    {
    }
};

/// How BuDDy is asked for AND, OR and XOR.
enum class calls { ite, apply };

/// @brief BuDDy behind the same operations.
template <calls used = calls::ite>
class buddy_engine {
public:
    using edge = bdd;

    buddy_engine(unsigned variables, table_sizes sizes)
    {
        bdd_init(sizes.nodes, sizes.cache);
        bdd_setvarnum(static_cast<int>(variables));
        bdd_gbc_hook(nullptr); // the default one prints
    }
    buddy_engine(const buddy_engine&) = delete;
    buddy_engine& operator=(const buddy_engine&) = delete;
    ~buddy_engine() { bdd_done(); }

    edge constant(bool value) { return value ? bdd_true() : bdd_false(); }
    edge variable(unsigned i) { return bdd_ithvar(static_cast<int>(i)); }
    edge negate(const edge& f) { return bdd_not(f); }
    edge conjunction(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, g, bdd_false()) : bdd_and(f, g);
    }
    edge disjunction(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, bdd_true(), g) : bdd_or(f, g);
    }
    edge parity(const edge& f, const edge& g)
    {
        return used == calls::ite ? bdd_ite(f, bdd_not(g), g) : bdd_xor(f, g);
    }
    edge choice(const edge& f, const edge& g, const edge& h) { return bdd_ite(f, g, h); }
    edge cofactor(const edge& f, unsigned i, bool value)
    {
        const int var = static_cast<int>(i);
        return bdd_restrict(f, value ? bdd_ithvar(var) : bdd_nithvar(var));
    }
    edge compose(const edge& f, unsigned i, const edge& g)
    {
        return bdd_compose(f, g, static_cast<int>(i));
    }
    double models(const edge& f) { return bdd_satcount(f); }
};

// ---- what is done with a built circuit

template <typename circuit>
struct cofactors {
    template <typename engine_type>
    static void run(engine_type& e, const edges<engine_type>& outputs)
    {
        for (const auto& output : outputs) {
            for (unsigned i = 0; i < circuit::variables; ++i) {
                bench::keep(e.cofactor(output, i, false));
                bench::keep(e.cofactor(output, i, true));
            }
        }
    }
};

/// Puts the parity of its neighbours in place of every fourth variable.
template <typename circuit>
struct composes {
    template <typename engine_type>
    static void run(engine_type& e, const edges<engine_type>& outputs)
    {
        constexpr unsigned n = circuit::variables;
        for (const auto& output : outputs) {
            for (unsigned i = 0; i < n; i += 4) {
                const auto g = e.parity(e.variable((i + n - 1) % n), e.variable((i + 1) % n));
                bench::keep(e.compose(output, i, g));
            }
        }
    }
};

// ---- timing

enum class time_span {
    whole_life, ///< making the manager, the work and the destruction
    work        ///< the work alone
};

/// Seconds of `work(engine, prepare(engine))` on a fresh engine.
template <typename engine_type, typename preparation, typename task>
double sample(time_span timed, unsigned variables, preparation prepare, task work)
{
    double seconds = 0;
    int runs = 0;
    for (; seconds < 2e-3; ++runs) {
        double start = bench::cpu_seconds();
        {
            engine_type engine(variables, medium_sizes);
            auto input = prepare(engine);
            if (timed == time_span::work) {
                start = bench::cpu_seconds();
            }
            work(engine, input);
            if (timed == time_span::work) {
                seconds += bench::cpu_seconds() - start;
            }
        }
        if (timed == time_span::whole_life) {
            seconds += bench::cpu_seconds() - start;
        }
    }
    return seconds / runs;
}

template <typename engine_type>
struct contender {
    using type = engine_type;
};

/// The ratios of all circuits, one for each.
struct ratio_lists {
    std::vector<double> ite;          ///< hash store / BuDDy by bdd_ite
    std::vector<double> apply;        ///< hash store / BuDDy by bdd_and, bdd_or, bdd_xor
    std::vector<double> tree_by_hash; ///< tree store / hash store
};

template <typename preparation, typename task>
void compare(time_span timed, const std::string& name, unsigned variables, preparation prepare,
             task work, ratio_lists& ratios)
{
    const auto seconds = [&](auto contender) {
        return sample<typename decltype(contender)::type>(timed, variables, prepare, work);
    };
    ratio_lists rounds;
    std::vector<double> own;
    std::vector<double> buddy;
    for (int round = 0; round < 7; ++round) {
        const double hash = seconds(contender<basbd_with<BDD_STORE_HASH>>());
        const double ite = seconds(contender<buddy_engine<calls::ite>>());
        own.push_back(hash);
        buddy.push_back(ite);
        rounds.ite.push_back(hash / ite);
        rounds.apply.push_back(hash / seconds(contender<buddy_engine<calls::apply>>()));
        rounds.tree_by_hash.push_back(seconds(contender<basbd_with<BDD_STORE_TREE>>()) / hash);
    }
    ratios.ite.push_back(bench::median(rounds.ite));
    ratios.apply.push_back(bench::median(rounds.apply));
    ratios.tree_by_hash.push_back(bench::median(rounds.tree_by_hash));
    std::printf("  %-36s %9.1f us  BuDDy %9.1f us  ratio %5.2f  apply %5.2f  tree/hash %5.2f\n",
                name.c_str(), 1e6 * bench::median(own), 1e6 * bench::median(buddy),
                ratios.ite.back(), ratios.apply.back(), ratios.tree_by_hash.back());
    std::fflush(stdout);
}

struct section_lists {
    ratio_lists builds;
    ratio_lists builds_alone;
    ratio_lists cofactors;
    ratio_lists composes;
};

template <typename circuit, typename engine_type>
std::vector<double> models()
{
    engine_type engine(circuit::variables, medium_sizes);
    std::vector<double> counts;
    for (const auto& output : circuit::build(engine)) {
        counts.push_back(engine.models(output));
    }
    return counts;
}

template <typename circuit>
void measure(const std::string& name, section_lists& sections)
{
    const auto counts = models<circuit, buddy_engine<calls::ite>>();
    check(models<circuit, buddy_engine<calls::apply>>() == counts, "unequal models");
    check(models<circuit, basbd_with<BDD_STORE_HASH>>() == counts, "unequal models");
    check(models<circuit, basbd_with<BDD_STORE_TREE>>() == counts, "unequal models");

    constexpr unsigned n = circuit::variables;
    const auto nothing = [](auto&) { return 0; };
    const auto build = [](auto& e) { return circuit::build(e); };
    const auto build_only = [](auto& e, int) { bench::keep(circuit::build(e)); };
    const auto take_cofactors = [](auto& e, auto& f) { cofactors<circuit>::run(e, f); };
    const auto compose = [](auto& e, auto& f) { composes<circuit>::run(e, f); };
    compare(time_span::whole_life, name + ", build", n, nothing, build_only, sections.builds);
    compare(time_span::work, name + ", build alone", n, nothing, build_only, sections.builds_alone);
    compare(time_span::work, name + ", cofactors", n, build, take_cofactors, sections.cofactors);
    compare(time_span::work, name + ", composes", n, build, compose, sections.composes);
}

// ---- cells

/// A random expression over a cell's inputs: operand numbers below `inputs` are variables, the
/// others earlier steps.
struct cell_expression {
    struct gate {
        unsigned operation;
        unsigned left;
        unsigned right;
        bool complemented;
    };
    static constexpr unsigned max_values = 23; // of 8 inputs and 15 steps between 16 leaves
    unsigned inputs;
    std::vector<gate> steps;

    template <typename engine_type>
    typename engine_type::edge build(engine_type& e) const
    {
        typename engine_type::edge values[max_values] = {};
        for (unsigned i = 0; i < inputs; ++i) {
            values[i] = e.variable(i);
        }
        unsigned next = inputs;
        for (const gate& step : steps) {
            const auto left = step.complemented ? e.negate(values[step.left]) : values[step.left];
            const auto right = values[step.right];
            values[next++] = step.operation == 0   ? e.conjunction(left, right)
                             : step.operation == 1 ? e.parity(left, right)
                                                   : e.disjunction(left, right);
        }
        return values[next - 1];
    }

    template <typename engine_type>
    void build_and_take_cofactors(engine_type& e) const
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

std::vector<cell_expression> random_cells(unsigned count)
{
    std::mt19937 random(8);
    std::vector<cell_expression> cells;
    while (cells.size() < count) {
        cell_expression cell{3 + static_cast<unsigned>(random() % 6), {}};
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

template <typename engine_type>
void one_manager_each(const std::vector<cell_expression>& cells)
{
    for (const cell_expression& cell : cells) {
        engine_type engine(cell.inputs, small_sizes);
        cell.build_and_take_cofactors(engine);
    }
}

template <typename engine_type>
void one_manager_for_all(const std::vector<cell_expression>& cells)
{
    engine_type engine(8, medium_sizes);
    for (const cell_expression& cell : cells) {
        cell.build_and_take_cofactors(engine);
    }
}

void measure_cells()
{
    using hash_engine = basbd_with<BDD_STORE_HASH>;
    using tree_engine = basbd_with<BDD_STORE_TREE>;
    using ite_engine = buddy_engine<calls::ite>;
    using apply_engine = buddy_engine<calls::apply>;
    const auto cells = random_cells(4000);
    for (const cell_expression& cell : cells) {
        hash_engine hash(cell.inputs);
        ite_engine buddy(cell.inputs, small_sizes);
        check(hash.models(cell.build(hash)) == buddy.models(cell.build(buddy)), "unequal cells");
    }
    const auto each = [&](auto ours, auto theirs) {
        return std::vector<double>{
            bench::ratio([&] { one_manager_each<typename decltype(ours)::type>(cells); },
                         [&] { one_manager_each<typename decltype(theirs)::type>(cells); }, 9)};
    };
    const auto all = [&](auto ours, auto theirs) {
        return std::vector<double>{
            bench::ratio([&] { one_manager_for_all<typename decltype(ours)::type>(cells); },
                         [&] { one_manager_for_all<typename decltype(theirs)::type>(cells); }, 9)};
    };
    const contender<hash_engine> hash;
    const contender<tree_engine> tree;
    const contender<ite_engine> ite;
    const contender<apply_engine> apply;
    bench::print_row("cells, a manager each, hash / BuDDy", each(hash, ite), 0.25);
    bench::print_row("cells, a manager each, tree / BuDDy", each(tree, ite), 0.5);
    bench::print_row("cells, one manager, hash / BuDDy", all(hash, ite), 0.65);
    bench::print_row("cells, one manager, tree / BuDDy", all(tree, ite), 1.3);
    print_extra("cells, a manager each, hash / BuDDy, apply", each(hash, apply));
    print_extra("cells, one manager, hash / BuDDy, apply", all(hash, apply));
}

/// Bytes of the heap for each node of a table of 100,000: record and container entry.
template <int store>
double bytes_per_node()
{
    const auto used = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    constexpr unsigned variables = 125;
    const double before = used();
    basbd_with<store> engine(variables);
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
    section_lists sections;
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
