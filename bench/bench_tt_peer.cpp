// Truth tables against kitty, a library of headers, whose operations are compiled into the caller.
#include "basbdtt.h"
#include "harness.h"

#include <kitty/constructors.hpp>
#include <kitty/dynamic_truth_table.hpp>
#include <kitty/operations.hpp>
#include <kitty/operators.hpp>
#include <kitty/print.hpp>

#include <array>
#include <numeric>
#include <random>

namespace {

using bench::keep;
using peer_table = kitty::dynamic_truth_table;

/// A value that the compiler does not know, as a mapper's inputs are not known to it.
int opaque(int value)
{
    asm volatile("" : "+r"(value));
    return value;
}

std::uint8_t opaque_for_peer(int value) { return static_cast<std::uint8_t>(opaque(value)); }

/// One operation at one width: the geometric means over its inputs.
class row {
public:
    template <typename work_type, typename peer_type>
    void add(const work_type& work, const peer_type& peer)
    {
        const bench::comparison times = bench::compared(work, peer);
        own.push_back(times.work * 1e9);
        peers.push_back(times.partner * 1e9);
        ratios.push_back(times.ratio);
    }

    /// @param goal  0: there is none
    void print(const std::string& name, int width, double goal) const
    {
        const double mean = bench::geometric_mean(ratios);
        std::printf("%-22s width %2d %12.1f ns %12.1f ns %6.2f", name.c_str(), width,
                    bench::geometric_mean(own), bench::geometric_mean(peers), mean);
        if (goal > 0) {
            std::printf("  goal %5.2f  %s", goal, mean <= goal ? "reached" : "MISSED");
        }
        std::printf("\n");
        std::fflush(stdout);
    }

private:
    std::vector<double> own;
    std::vector<double> peers;
    std::vector<double> ratios;
};

/// The same random function as a table of either library.
struct table_pair {
    explicit table_pair(int width) : peer(static_cast<unsigned>(width))
    {
        std::mt19937_64 random(static_cast<unsigned>(width));
        std::generate(peer.begin(), peer.end(), std::ref(random));
        own.set_value_from_hex_string(width, kitty::to_hex(peer));
    }
    BOOL_TRUTH_TABLE own;
    peer_table peer;
};

std::vector<int> chosen_inputs(int width)
{
    std::vector<int> inputs{0, 4, 5};
    if (width > 6) {
        inputs.push_back(width - 1);
    }
    return inputs;
}

/// Each input goes to its place at once; the one that was there is next.
void permute(peer_table& table, const std::vector<int>& perm)
{
    std::array<int, BASBDTT_MAX_WIDTH> target{};
    std::copy(perm.begin(), perm.end(), target.begin());
    for (std::size_t i = 0; i < perm.size(); ++i) {
        while (target[i] != static_cast<int>(i)) {
            const auto there = static_cast<std::size_t>(target[i]);
            kitty::swap_inplace(table, static_cast<std::uint8_t>(i),
                                static_cast<std::uint8_t>(there));
            std::swap(target[i], target[there]);
        }
    }
}

void permutation(row& result, int width)
{
    table_pair tables(width);
    std::mt19937 random(static_cast<unsigned>(width));
    std::vector<int> perm(static_cast<std::size_t>(width));
    std::iota(perm.rbegin(), perm.rend(), 0);
    for (int i = 0; i < 8; ++i) {
        result.add([&] { tables.own.rotate_inputs(perm.data()); },
                   [&] { permute(tables.peer, perm); });
        std::shuffle(perm.begin(), perm.end(), random);
    }
}

/// The peer's cofactor keeps its input, so the peer makes twice the entries.
void cofactors(row& result, int width, const std::vector<int>& inputs)
{
    const table_pair tables(width);
    for (const int input : inputs) {
        result.add([&] { keep(tables.own.get_false_factor_for_input(opaque(input))); },
                   [&] { keep(kitty::cofactor0(tables.peer, opaque_for_peer(input))); });
        result.add([&] { keep(tables.own.get_true_factor_for_input(opaque(input))); },
                   [&] { keep(kitty::cofactor1(tables.peer, opaque_for_peer(input))); });
    }
}

void cofactors_in_pair(row& result, int width) { cofactors(result, width, {0, 1, 2, 3, 4, 5}); }
void cofactors_of_rows(row& result, int width) { cofactors(result, width, chosen_inputs(width)); }

void constants(row& result, int width)
{
    result.add([&] { keep(TRUTH_TABLE_VAL(opaque(width), 0)); },
               [&] { keep(peer_table(static_cast<unsigned>(opaque(width)))); });
    result.add([&] { keep(TRUTH_TABLE_VAL(opaque(width), 1)); },
               [&] {
                   peer_table table(static_cast<unsigned>(opaque(width)));
                   std::fill(table.begin(), table.end(), ~std::uint64_t{0});
                   table.mask_bits();
                   keep(table);
               });
}

void inversion(row& result, int width)
{
    table_pair tables(width);
    for (const int input : chosen_inputs(width)) {
        result.add([&] { tables.own.invert_input(opaque(input)); },
                   [&] { kitty::flip_inplace(tables.peer, opaque_for_peer(input)); });
    }
}

void exchange(row& result, int width)
{
    table_pair tables(width);
    for (const int i : chosen_inputs(width)) {
        for (const int j : chosen_inputs(width)) {
            if (i < j) {
                result.add([&] { tables.own.rotate_inputs(opaque(i), opaque(j)); },
                           [&] {
                               kitty::swap_inplace(tables.peer, opaque_for_peer(i),
                                                   opaque_for_peer(j));
                           });
            }
        }
    }
}

/// In place: the peer's own operators make a new table.
template <typename operation_type>
void combine(peer_table& table, const peer_table& other, operation_type operation)
{
    std::transform(table.begin(), table.end(), other.begin(), table.begin(), operation);
}

void combining(row& result, int width)
{
    table_pair tables(width);
    const table_pair other = tables;
    result.add([&] { tables.own.value ^= other.own.value; },
               [&] { combine(tables.peer, other.peer, std::bit_xor<>()); });
    result.add([&] { tables.own.value &= other.own.value; },
               [&] { combine(tables.peer, other.peer, std::bit_and<>()); });
    result.add([&] { tables.own.value |= other.own.value; },
               [&] { combine(tables.peer, other.peer, std::bit_or<>()); });
}

void equality(row& result, int width)
{
    using namespace kitty;
    const table_pair tables(width);
    const table_pair other = tables;
    result.add([&] { keep(tables.own.value == other.own.value); },
               [&] { keep(tables.peer == other.peer); });
}

void projection(row& result, int width)
{
    table_pair tables(width);
    for (const int input : chosen_inputs(width)) {
        result.add([&] { tables.own.set_identity_for_input(width, opaque(input)); },
                   [&] { kitty::create_nth_var(tables.peer, opaque_for_peer(input)); });
    }
}

void text_out(row& result, int width)
{
    const table_pair tables(width);
    result.add([&] { keep(tables.own.value.get_hex_string()); },
               [&] { keep(kitty::to_hex(tables.peer)); });
}

void text_in(row& result, int width)
{
    table_pair tables(width);
    const std::string text = tables.own.value.get_hex_string();
    result.add([&] { tables.own.value.set_from_hex_string(width, text); },
               [&] { kitty::create_from_hex_string(tables.peer, text); });
}

constexpr std::array widths{6, 10, 16, 24};

struct operation {
    const char* name;
    void (*add_to)(row& result, int width);
    std::array<double, widths.size()> goals; ///< one for each width; 0 for none
};

constexpr operation operations[] = {
    {"rotate_inputs(perm)", permutation, {0.8, 0.9, 0, 0}},
    {"cofactors", cofactors_of_rows, {1.25, 1.1, 0, 0}},
    {"cofactors, 0 to 5", cofactors_in_pair, {0, 0, 0, 0.9}},
    {"constant column", constants, {1.3, 1.1, 0, 0}},
    {"invert_input", inversion, {2.0, 0.9, 0, 0}},
    {"rotate_inputs(i, j)", exchange, {1.5, 0.8, 0, 0}},
    {"^= &= |=", combining, {2.0, 1.2, 0, 0}},
    {"==", equality, {1.3, 0.75, 0, 0}},
    {"set_identity_for_input", projection, {3.0, 1.2, 0, 0}},
    {"hexadecimal out", text_out, {1.0, 0, 0, 0}},
    {"hexadecimal in", text_in, {1.0, 0, 0, 0}},
};

} // namespace

int main()
{
    std::printf("%-31s %15s %15s %6s\n", "Truth tables: CPU time", "this library", "kitty",
                "ratio");
    for (const operation& each : operations) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            row result;
            each.add_to(result, widths[i]);
            result.print(each.name, widths[i], each.goals[i]);
        }
    }
}
