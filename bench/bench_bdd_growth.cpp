// Builds of ten thousand to two million nodes against BuDDy, whose tables are made large
// enough beforehand: time and peak memory for each node that basbd has at the end.
//
// Each build runs in a process of its own, of which the system tells the most memory.
#include "bdd_engines.h"
#include "circuits.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct figures {
    double seconds;
    double peak_bytes;
    double nodes; ///< that basbd has made
};

double counted;

/// Empties the table, whose nodes go with the process.
double nodes_of(const basbd_engine& engine)
{
    static_cast<BDD_HASH*>(engine.table().store)->process_and_kill(0, [](void*) { ++counted; });
    return counted;
}
double nodes_of(const buddy_engine<>&) { return 0; }

template <typename engine_type, typename circuit>
figures build(table_sizes sizes)
{
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    engine_type engine(circuit::variables, sizes);
    const double start = bench::cpu_seconds();
    bench::keep(circuit::build(engine));
    const double seconds = bench::cpu_seconds() - start;
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    return {seconds, 1024.0 * static_cast<double>(after.ru_maxrss - before.ru_maxrss),
            nodes_of(engine)};
}

/// What `measured` gives, in a process of its own.
figures in_child(figures (*measured)(table_sizes), table_sizes sizes)
{
    int ends[2];
    check(pipe(ends) == 0, "no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const figures result = measured(sizes);
        check(write(ends[1], &result, sizeof result) == sizeof result, "no result");
        _exit(0);
    }
    figures result{};
    check(read(ends[0], &result, sizeof result) == sizeof result, "no result");
    waitpid(child, nullptr, 0);
    close(ends[0]);
    close(ends[1]);
    return result;
}

/// @param nodes  what BuDDy needs without growing and garbage collection
template <typename circuit>
void measure(const char* name, int nodes)
{
    const table_sizes sizes = {nodes, nodes / 8};
    std::vector<double> ratios;
    figures own{};
    figures other{};
    for (int round = 0; round < 3; ++round) {
        own = in_child(build<basbd_with<BDD_STORE_HASH>, circuit>, sizes);
        other = in_child(build<buddy_engine<>, circuit>, sizes);
        ratios.push_back(own.seconds / other.seconds);
    }
    std::printf("%-20s %9.0f nodes %8.0f ns %6.0f bytes each   BuDDy %8.0f ns %6.0f bytes  %5.2f\n",
                name, own.nodes, 1e9 * own.seconds / own.nodes, own.peak_bytes / own.nodes,
                1e9 * other.seconds / own.nodes, other.peak_bytes / own.nodes,
                bench::median(ratios));
    std::fflush(stdout);
}

} // namespace

int main()
{
    bench::print_heading("Large BDDs", "BuDDy");
    measure<queens<7>>("queens 7", 100000);
    measure<queens<8>>("queens 8", 400000);
    measure<queens<9>>("queens 9", 1500000);
    measure<queens<10>>("queens 10", 6000000);
    measure<multiplier<8>>("multiplier 8x8", 200000);
    measure<multiplier<9>>("multiplier 9x9", 600000);
    measure<multiplier<10>>("multiplier 10x10", 2000000);
    measure<multiplier<11>>("multiplier 11x11", 6000000);
    return 0;
}
