/// Expression trees, per node, against taking and returning as many blocks with malloc and free.
#include "basbdbool.h"
#include "harness.h"
#include "two_threads.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>

class TECHMAP_SIG {};

namespace {

TECHMAP_SIG signals[20];

using function_list = std::vector<std::unique_ptr<BOOL_FUNC>>;

constexpr int most_signals = 20;

void add_signals(BOOL_FUNC& function, int count)
{
    for (int i = 0; i < count; ++i) {
        function.addsigtofunc(&signals[i], static_cast<unsigned char>((i * count) % 2));
    }
}

BOOL_FUNCTYPE type_of(int count) { return static_cast<BOOL_FUNCTYPE>(count % 3); }

/// Functions of 2 to 20 signals, built signal by signal.
function_list build_functions()
{
    function_list functions;
    for (int count = 2; count <= most_signals; ++count) {
        functions.push_back(std::make_unique<BOOL_FUNC>(type_of(count), nullptr, BOOL_VAR_A));
        add_signals(*functions.back(), count);
        for (int i = 0; i < count; ++i) {
            functions.back()->setvarname(&signals[i], static_cast<BOOL_VARNAME>(i % BOOL_VAR_NONE));
        }
    }
    return functions;
}

int count_nodes(const BOOL_TNODE* node)
{
    if (node == nullptr) {
        return 0;
    }
    return basbd_is_leaf(*node) ? 1 : 1 + count_nodes(node->left) + count_nodes(node->right);
}

/// Takes and returns the blocks of each function's nodes, function by function.
class malloc_floor {
public:
    explicit malloc_floor(const function_list& functions)
    {
        for (const auto& function : functions) {
            counts.push_back(count_nodes(function->root));
        }
    }
    void operator()() const
    {
        void* blocks[64];
        for (const int count : counts) {
            for (int i = 0; i < count; ++i) {
                blocks[i] = std::malloc(sizeof(BOOL_TNODE));
                bench::keep(blocks[i]);
            }
            for (int i = 0; i < count; ++i) {
                std::free(blocks[i]);
            }
        }
    }

private:
    std::vector<int> counts;
};

/// A writer like the library's that asks for the text's length on entry to every node.
class slow_writer {
public:
    char* write(const BOOL_FUNC& function)
    {
        capacity = 256;
        start = new char[capacity];
        cur = start;
        write(*function.root);
        *cur = '\0';
        return start;
    }

private:
    void write(const BOOL_TNODE& node)
    {
        *cur = '\0';
        const std::size_t length = std::strlen(start);
        if (length + 16 >= capacity) {
            capacity *= 2;
            char* const larger = new char[capacity];
            std::memcpy(larger, start, length);
            delete[] start;
            start = larger;
            cur = start + length;
        }
        if (basbd_is_leaf(node)) {
            static const char* const names[] = {"A", "B", "C", "D", "E", "F", "G",  "I", "J",
                                                "K", "L", "M", "N", "O", "P", "QX", "QY"};
            for (const char* name = names[node.op - BOOL_OP_FIRST_NAMED]; *name != '\0'; ++name) {
                *cur++ = *name;
            }
            return;
        }
        write_operand(*node.left, node.lcompl, true);
        *cur++ = "*@+"[node.op];
        write_operand(*node.right, node.rcompl, node.right->op != node.op || node.rcompl != 0);
    }

    void write_operand(const BOOL_TNODE& operand, unsigned char flag, bool in_parentheses)
    {
        if (flag != 0) {
            *cur++ = '~';
        }
        if (basbd_is_leaf(operand) || !in_parentheses) {
            write(operand);
            return;
        }
        *cur++ = '(';
        write(operand);
        *cur++ = ')';
    }

    char* start = nullptr;
    char* cur = nullptr;
    std::size_t capacity = 0;
};

BOOL_TNODE* random_tree(std::mt19937& random, int leaves)
{
    if (leaves == 1) {
        const auto index = random() % 17;
        return new BOOL_TNODE(static_cast<char>(BOOL_OP_FIRST_NAMED + index), &signals[index]);
    }
    const int left = 1 + static_cast<int>(random() % static_cast<unsigned>(leaves - 1));
    BOOL_TNODE* const first = random_tree(random, left);
    BOOL_TNODE* const second = random_tree(random, leaves - left);
    return new BOOL_TNODE(static_cast<char>(random() % 3), first,
                          static_cast<unsigned char>(random() % 2), second,
                          static_cast<unsigned char>(random() % 2));
}

void compare_writers(const char* name, int leaves)
{
    std::mt19937 random(7);
    BOOL_FUNC function;
    function.root = random_tree(random, leaves);
    slow_writer slow;
    const std::unique_ptr<char[]> text(function.writeeqn());
    const std::unique_ptr<char[]> same_text(slow.write(function));
    if (std::strcmp(text.get(), same_text.get()) != 0) {
        std::puts("the writers differ");
        std::exit(1);
    }
    bench::print_row(name,
                     {bench::ratio([&] { delete[] function.writeeqn(); },
                                   [&] { delete[] slow.write(function); })},
                     0.5);
}

/// The time to free copies of the functions against the floor, in the same round.
double free_ratio(const function_list& functions, const malloc_floor& floor)
{
    constexpr int batch = 200;
    std::vector<double> ratios;
    for (int round = 0; round < 31; ++round) {
        function_list copies;
        for (int i = 0; i < batch; ++i) {
            for (const auto& function : functions) {
                copies.push_back(std::make_unique<BOOL_FUNC>(function.get()));
            }
        }
        const double work = bench::timed(
            [&] {
                for (auto& copy : copies) {
                    copy->~BOOL_FUNC(); // leaves out the record of the function itself
                    new (copy.get()) BOOL_FUNC();
                }
            },
            1);
        ratios.push_back(work / batch / bench::timed([&] { floor(); }, batch));
    }
    return bench::median(ratios);
}

void measure_threads()
{
    constexpr int batch = 2000;
    const auto trees = [] {
        const function_list functions = build_functions();
        for (int i = 0; i < batch; ++i) {
            for (const auto& function : functions) {
                BOOL_FUNC copy(function.get());
                copy.rmsigfromfunc(&signals[1]);
            }
        }
    };
    const auto texts = [] {
        const function_list functions = build_functions();
        for (int i = 0; i < batch; ++i) {
            for (const auto& function : functions) {
                delete[] function->writeeqn();
            }
        }
    };
    std::printf("two threads, times as fast as one: trees %.2f, texts %.2f\n",
                bench::speed_up(trees), bench::speed_up(texts));
}

} // namespace

int main()
{
    const function_list functions = build_functions();
    const malloc_floor floor(functions);
    const auto row = [&](const char* name, double goal, auto edit) {
        const auto work = [&] {
            for (const auto& function : functions) {
                edit(*function);
            }
        };
        bench::print_row(name, {bench::ratio(work, floor)}, goal);
    };

    bench::print_heading("Expression trees", "malloc and free of as many blocks");
    const auto build = [] {
        for (int count = 2; count <= most_signals; ++count) {
            BOOL_FUNC function(type_of(count), nullptr, BOOL_VAR_A);
            add_signals(function, count);
        }
    };
    bench::print_row("build and free", {bench::ratio(build, floor)}, 0.9);
    row("copy and free", 0.6, [](BOOL_FUNC& function) { const BOOL_FUNC copy(&function); });
    bench::print_row("free alone", {free_ratio(functions, floor)}, 0.7);
    row("cleanbufs", 0.9, [](BOOL_FUNC& function) { function.cleanbufs(); });
    row("copy, remove a signal, free", 2.0, [](BOOL_FUNC& function) {
        BOOL_FUNC copy(&function);
        copy.rmsigfromfunc(&signals[1]);
    });
    row("writeeqn", 2.0, [](BOOL_FUNC& function) { delete[] function.writeeqn(); });
    row("setsigto1", 0.3, [](BOOL_FUNC& function) { function.setsigto1(&signals[1]); });

    std::puts("against a writer that takes the text's length at every node");
    compare_writers("writeeqn, 20 leaves", 20);
    compare_writers("writeeqn, 200 leaves", 200);
    compare_writers("writeeqn, 2,000 leaves", 2000);
    compare_writers("writeeqn, 20,000 leaves", 20000);

    measure_threads();
    return 0;
}
