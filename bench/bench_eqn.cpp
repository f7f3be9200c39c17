// Equation readers and writers of truth tables against moving their texts and columns once.
#include "basbdtt.h"
#include "harness.h"

#include <sys/resource.h>

#include <cstring>
#include <numeric>
#include <random>

namespace {

constexpr int widths[] = {6, 10, 16, 20, 24};

std::mt19937 random_numbers(7); // NOLINT(cert-msc51-cpp): the same texts in every run

int random_input(int width)
{
    return static_cast<int>(random_numbers() % static_cast<unsigned>(width));
}

std::string name_of(bool external, int input)
{
    return external ? std::string(1, static_cast<char>('A' + input)) : "B" + std::to_string(input);
}

/// A sum of products of five literals each, over all inputs of the width.
std::string sum_of_products(bool external, int width, int terms)
{
    std::string text = external ? "" : "F0=";
    for (int term = 0; term < terms; ++term) {
        text += term == 0 ? "" : "+";
        for (int literal = 0; literal < 5; ++literal) {
            text += literal == 0 ? "" : "*";
            text += random_numbers() % 2 == 0 ? "~" : "";
            text += name_of(external, random_input(width));
        }
    }
    return text;
}

/// Literals and groups nested some levels deep.
std::string nested(bool external, int width, int depth)
{
    if (depth == 0) {
        return name_of(external, random_input(width));
    }
    const char* const operators[] = {"*", "+"};
    return "~(" + nested(external, width, depth - 1) + operators[random_numbers() % 2] +
           nested(external, width, depth - 1) + ")";
}

void read(BOOL_TRUTH_TABLE& table, bool external, int width, const std::string& text)
{
    if (external) {
        table.set_value_from_external_equation(width, text);
    } else {
        table.set_value_from_internal_equation(width, text);
    }
}

std::string write(const BOOL_TRUTH_TABLE& table, bool external)
{
    return external ? table.get_external_equation() : table.get_internal_equation();
}

/// A look at every character: the class of each, added up.
void read_once(const std::string& text)
{
    static const std::vector<unsigned> classes = [] {
        std::vector<unsigned> result(256);
        std::iota(result.begin(), result.end(), 0U);
        return result;
    }();
    unsigned sum = 0;
    for (const char character : text) {
        sum += classes[static_cast<unsigned char>(character)];
    }
    bench::keep(sum);
}

void read_once(const std::vector<std::uint32_t>& words)
{
    bench::keep(std::accumulate(words.begin(), words.end(), 0U, std::bit_xor<>()));
}

double reader_ratio(bool external, int width, const std::string& text)
{
    const std::size_t words = width <= 5 ? 1 : std::size_t{1} << (width - 5);
    return bench::ratio(
        [&] {
            BOOL_TRUTH_TABLE table;
            read(table, external, width, text);
            bench::keep(table);
        },
        [&] {
            read_once(text);
            bench::keep(std::vector<std::uint32_t>(words, 0x55555555U));
        });
}

double writer_ratio(bool external, const BOOL_TRUTH_TABLE& table)
{
    const std::string text = write(table, external);
    return bench::ratio([&] { bench::keep(write(table, external)); },
                        [&] {
                            read_once(table.value.words);
                            bench::keep(std::string(text));
                        });
}

void print(const std::string& name, const std::vector<double>& ratios, double goal)
{
    bench::print_row(name, ratios, goal);
    std::printf("   ");
    for (const double each : ratios) {
        std::printf(" %8.2f", each);
    }
    std::printf("\n");
}

void compare(bool external)
{
    const std::string kind = external ? "external" : "internal";
    std::vector<double> five;
    std::vector<double> thirty;
    std::vector<double> deep;
    std::vector<double> structured;
    std::vector<double> dense;
    for (const int width : widths) {
        const std::string text = sum_of_products(external, width, 5);
        five.push_back(reader_ratio(external, width, text));
        thirty.push_back(reader_ratio(external, width, sum_of_products(external, width, 30)));
        deep.push_back(reader_ratio(external, width, nested(external, width, 6)));
        BOOL_TRUTH_TABLE table;
        read(table, external, width, text);
        structured.push_back(writer_ratio(external, table));
        if (width <= 20) {
            std::generate(table.value.words.begin(), table.value.words.end(),
                          [] { return static_cast<std::uint32_t>(random_numbers()); });
            dense.push_back(writer_ratio(external, table));
        }
    }
    print(kind + " reader, sums of 5 products", five, 25);
    print(kind + " reader, sums of 30 products", thirty, 25);
    print(kind + " reader, 64 nested literals", deep, 25);
    print(kind + " writer, sums of 5 products", structured, 10);
    print(kind + " writer, random columns up to width 20", dense, 10);
}

long peak_kilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void print_peak()
{
    const std::string text = sum_of_products(true, 24, 30);
    const long before = peak_kilobytes();
    BOOL_TRUTH_TABLE table;
    table.set_value_from_external_equation(24, text);
    const long column = static_cast<long>(table.value.words.size() * sizeof(std::uint32_t) / 1024);
    std::printf("peak of reading 30 products at width 24: the column and %ld KiB\n",
                peak_kilobytes() - before - column);
}

} // namespace

int main()
{
    bench::print_heading("Equation readers and writers", "moving text and column once");
    std::printf("(below each row, width by width:");
    for (const int width : widths) {
        std::printf(" %d", width);
    }
    std::puts(")");
    print_peak();
    compare(true);
    compare(false);
}
