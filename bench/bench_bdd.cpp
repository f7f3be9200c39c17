// The BDD engine against BuDDy: same circuits, same variable order, no reordering.
//
// The operation under test is the if-then-else, so the partner of the builds is `bdd_ite`; rows
// with "apply" set the same builds against BuDDy's operators of two operands.
//
// Builds are timed from before the manager is made until after it is destroyed, for that is what
// the user of a function waits for; rows with "work alone" leave both out. Cofactors and composes
// are timed alone. The model counts of all contenders are compared before the timing.
#include "bdd_engines.h"
#include "circuits.h"

namespace {

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

} // namespace

int main()
{
    bench::print_heading("BDDs", "BuDDy");
    std::puts(
        "(first each circuit: time on the hash store and of BuDDy, their ratio, that to BuDDy's\n"
        " apply, and that of the tree store to the hash store)");
    section_lists sections;
    measure<queens<6>>("queens 6", sections);
    measure<queens<7>>("queens 7", sections);
    measure<queens<8>>("queens 8", sections);
    measure<multiplier<8>>("multiplier 8x8", sections);
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
