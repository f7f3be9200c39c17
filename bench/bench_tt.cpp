// Truth tables: every operation against moving the same bytes once.
#include "basbdtt.h"
#include "harness.h"

#include <cstdlib>
#include <cstring>
#include <random>

namespace {

using bench::keep;
using words = std::vector<std::uint32_t>;

constexpr int widths[] = {6, 10, 16, 20, 24};

BOOL_TRUTH_TABLE random_table(int width)
{
    std::mt19937 random(static_cast<unsigned>(width));
    BOOL_TRUTH_TABLE table;
    table.set_identity_for_input(width, 0);
    std::generate(table.value.words.begin(), table.value.words.end(), std::ref(random));
    return table;
}

std::vector<int> chosen_inputs(int width)
{
    std::vector<int> inputs{0, 4, 5};
    if (width - 1 > 5) {
        inputs.push_back(width - 1);
    }
    return inputs;
}

/// One row; shows the ratios it is made of when BENCH_DETAIL is set.
class row {
public:
    row(std::string name, double goal) : title(std::move(name)), wanted(goal) {}
    void add(const std::string& what, const std::function<void()>& work,
             const std::function<void()>& floor)
    {
        ratios.push_back(bench::ratio(work, floor));
        if (std::getenv("BENCH_DETAIL") != nullptr) {
            std::printf("    %-30s %8.2f\n", what.c_str(), ratios.back());
        }
    }
    ~row() { bench::print_row(title, ratios, wanted); }
    row(const row&) = delete;
    row& operator=(const row&) = delete;

private:
    std::string title;
    double wanted;
    std::vector<double> ratios;
};

std::string label(int width, int input = -1, int other = -1)
{
    std::string text = "width " + std::to_string(width);
    for (const int each : {input, other}) {
        text += each < 0 ? "" : ", " + std::to_string(each);
    }
    return text;
}

/// What an operation on a column is measured against.
struct column_floor {
    explicit column_floor(int width)
        : source(random_table(width).value.words), target(source), bytes(source.size() * 4)
    {
    }
    void copy()
    {
        std::memcpy(target.data(), source.data(), bytes);
        keep(target[0]);
    }
    void set()
    {
        std::memset(target.data(), 0x55, bytes);
        keep(target[0]);
    }
    void read() { keep(std::memchr(source.data(), 0x12, bytes)); }
    /// A new block of the given share of the column, filled by `fill`.
    template <typename filler>
    void allocated(std::size_t size, filler fill)
    {
        void* block = std::malloc(size);
        fill(block, size);
        keep(*static_cast<char*>(block));
        std::free(block);
    }

    words source, target;
    std::size_t bytes;
};

template <typename operation_type>
[[gnu::noinline]] void plain_loop(std::uint32_t* __restrict own, const std::uint32_t* __restrict b,
                                  std::size_t size, operation_type operation)
{
    for (std::size_t i = 0; i < size; ++i) {
        own[i] = operation(own[i], b[i]);
    }
}

void constants()
{
    row result("constant column", 1.15);
    for (const int width : widths) {
        for (const int constant : {0, 1}) {
            column_floor floor(width);
            result.add(
                label(width, constant), [=] { keep(TRUTH_TABLE_VAL(width, constant).words[0]); },
                [&] {
                    floor.allocated(floor.bytes, [=](void* block, std::size_t size) {
                        std::memset(block, constant == 0 ? 0 : 0xFF, size);
                    });
                });
        }
    }
}

void combining()
{
    row result("^= &= |=", 1.05);
    for (const int width : widths) {
        column_floor floor(width);
        TRUTH_TABLE_VAL own = random_table(width).value;
        const TRUTH_TABLE_VAL other(width, 1);
        const auto against = [&](const char* name, auto work, auto operation) {
            result.add(
                label(width) + name, [&, work] { work(); },
                [&, operation] {
                    plain_loop(floor.target.data(), floor.source.data(), floor.source.size(),
                               operation);
                    keep(floor.target[0]);
                });
        };
        against(
            " ^=", [&] { own ^= other; }, std::bit_xor<>());
        against(
            " &=", [&] { own &= other; }, std::bit_and<>());
        against(
            " |=", [&] { own |= other; }, std::bit_or<>());
    }
}

void equality()
{
    row result("==", 1.2);
    for (const int width : widths) {
        const TRUTH_TABLE_VAL own = random_table(width).value;
        const TRUTH_TABLE_VAL other = own;
        result.add(
            label(width), [&] { keep(own == other); },
            [&] { keep(std::memcmp(own.words.data(), other.words.data(), own.words.size() * 4)); });
    }
}

void inversion()
{
    row result("invert_input", 1.4);
    for (const int width : widths) {
        column_floor floor(width);
        BOOL_TRUTH_TABLE table = random_table(width);
        for (const int input : chosen_inputs(width)) {
            result.add(
                label(width, input), [&] { table.invert_input(input); }, [&] { floor.copy(); });
        }
    }
}

void exchange()
{
    row result("rotate_inputs(i, j)", 1.3);
    for (const int width : widths) {
        column_floor floor(width);
        BOOL_TRUTH_TABLE table = random_table(width);
        for (const int i : chosen_inputs(width)) {
            for (const int j : chosen_inputs(width)) {
                if (i < j) {
                    result.add(
                        label(width, i, j), [&] { table.rotate_inputs(i, j); },
                        [&] { floor.copy(); });
                }
            }
        }
    }
}

void permutation()
{
    row result("rotate_inputs(perm)", 15);
    std::mt19937 random(1);
    for (const int width : widths) {
        column_floor floor(width);
        BOOL_TRUTH_TABLE table = random_table(width);
        std::vector<int> perm(static_cast<std::size_t>(width));
        for (int i = 0; i < width; ++i) {
            perm[static_cast<std::size_t>(i)] = width - 1 - i;
        }
        for (const char* name : {" reversed", " random", " random again"}) {
            result.add(
                label(width) + name, [&] { table.rotate_inputs(perm.data()); },
                [&] { floor.copy(); });
            std::shuffle(perm.begin(), perm.end(), random);
        }
    }
}

void cofactors()
{
    row result("cofactors", 2.1);
    for (const int width : widths) {
        column_floor floor(width);
        const BOOL_TRUTH_TABLE table = random_table(width);
        const auto half = [&] {
            floor.allocated(floor.bytes / 2, [&](void* block, std::size_t size) {
                std::memcpy(block, table.value.words.data(), size);
            });
        };
        for (const int input : chosen_inputs(width)) {
            result.add(
                label(width, input) + " true",
                [&] { keep(table.get_true_factor_for_input(input)); }, half);
            result.add(
                label(width, input) + " false",
                [&] { keep(table.get_false_factor_for_input(input)); }, half);
        }
    }
}

void identity()
{
    row tested("is_identity_for_input", 1.4);
    row made("set_identity_for_input", 1.4);
    for (const int width : widths) {
        column_floor floor(width);
        std::fill(floor.source.begin(), floor.source.end(), 0x55555555U);
        BOOL_TRUTH_TABLE table = random_table(width);
        for (const int input : chosen_inputs(width)) {
            made.add(
                label(width, input) + " set", [&] { table.set_identity_for_input(width, input); },
                [&] { floor.set(); });
        }
        for (const int input : chosen_inputs(width)) {
            table.set_identity_for_input(width, input);
            tested.add(
                label(width, input) + " is", [&] { keep(table.is_identity_for_input(input)); },
                [&] { floor.read(); });
        }
    }
}

void hexadecimal()
{
    row written("get_hex_string", 2.5);
    row read("set_from_hex_string", 2.4);
    for (const int width : widths) {
        column_floor floor(width);
        TRUTH_TABLE_VAL value = random_table(width).value;
        const std::string text = value.get_hex_string();
        std::string moved_text = text;
        // Text and column are moved once each, the one that is the result into new memory.
        written.add(
            label(width) + " out", [&] { keep(value.get_hex_string()); },
            [&] {
                floor.copy();
                keep(std::string(text));
            });
        read.add(
            label(width) + " in", [&] { value.set_from_hex_string(width, text); },
            [&] {
                std::memcpy(moved_text.data(), text.data(), text.size());
                keep(moved_text[0]);
                keep(words(floor.source));
            });
    }
}

} // namespace

int main()
{
    bench::print_heading("Truth tables", "moving the same bytes once");
    constants();
    combining();
    equality();
    inversion();
    exchange();
    permutation();
    cofactors();
    identity();
    hexadecimal();
}
