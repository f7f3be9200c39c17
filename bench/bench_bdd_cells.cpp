// BDDs of cells against BuDDy, the memory of a node, and one thread against two.
//
// Cells are timed from before the manager is made until after it is destroyed. The model counts
// of all contenders are compared before the timing.
#include "bdd_engines.h"
#include "circuits.h"
#include "two_threads.h"

#include <malloc.h>

#include <random>

namespace {

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

void measure_threads()
{
    const auto cells = random_cells(4000);
    std::printf("two threads, times as fast as one: cells, a manager each %.2f, tree store %.2f, "
                "builds %.2f\n",
                bench::speed_up([&] { one_manager_each<basbd_with<BDD_STORE_HASH>>(cells); }),
                bench::speed_up([&] { one_manager_each<basbd_with<BDD_STORE_TREE>>(cells); }),
                bench::speed_up([] {
                    basbd_with<BDD_STORE_HASH> engine(queens<7>::variables);
                    bench::keep(queens<7>::build(engine));
                }));
}

} // namespace

int main()
{
    bench::print_heading("BDDs of cells", "BuDDy");
    std::printf("bytes per node: hash store %.1f, tree store %.1f\n",
                bytes_per_node<BDD_STORE_HASH>(), bytes_per_node<BDD_STORE_TREE>());
    measure_cells();
    measure_threads();
    return 0;
}
