/// A pool or heap that gives out: the function stays as it was, and nothing leaks.
#include "counting_pool.h"
#include "host_recorder.h"
#include "tree_oracle.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <new>

namespace {

std::vector<std::size_t> array_sizes;
std::size_t largest_array = SIZE_MAX;

} // namespace

void* operator new[](std::size_t size)
{
    array_sizes.push_back(size);
    void* const block = size > largest_array ? nullptr : std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { std::free(block); }

using namespace tree_oracle; // NOLINT(google-build-using-namespace): the subject of this file

namespace {

using EDIT = std::function<void(BOOL_FUNC&, BOOL_FUNC& other)>;

const EDIT edits[] = {
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.addsigtofunc(signal(0), 1); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.setlogic0(); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.buildcofactexpr(signal(0), signal(1), signal(2)); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.cleanbufs(); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.getpurefunc(); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { f.rmsigfromfunc(signal(0)); },
    [](BOOL_FUNC& f, BOOL_FUNC& other) { f.substfnforsig(signal(0), &other); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { delete f.breakfunc(1); },
    [](BOOL_FUNC& f, BOOL_FUNC&) { const BOOL_FUNC copy(&f); },
    [](BOOL_FUNC&, BOOL_FUNC&) { const BOOL_FUNC made(BOOL_FUNC_OR, nullptr, BOOL_VAR_A); },
};

} // namespace

TEST(failures, each_request_to_the_pool)
{
    std::mt19937 random(1);
    const long before = counting_pool::live();
    for (int i = 0; i < 200; ++i) {
        BOOL_FUNC function;
        BOOL_FUNC other;
        SHAPES shapes;
        shapes.shared = i % 2 == 0;
        function.root = random_tree(random, shapes);
        function.nsuppt = function.countsuppt();
        other.root = random_tree(random, shapes);
        for (const EDIT& edit : edits) {
            const std::string was = shape(function.root);
            const unsigned short nsuppt = function.nsuppt;
            const long live = counting_pool::live();
            for (long requests = 0;; ++requests) {
                counting_pool::fail_after(requests);
                try {
                    edit(function, other);
                    break;
                } catch (const std::bad_alloc&) {
                    ASSERT_EQ(shape(function.root), was);
                    ASSERT_EQ(function.nsuppt, nsuppt);
                    ASSERT_EQ(counting_pool::live(), live);
                }
            }
            counting_pool::fail_after(-1);
        }
    }
    EXPECT_EQ(counting_pool::live(), before);
}

TEST(failures, text_buffer_doubles_and_may_not_grow)
{
    for (const auto& [leaves, sizes] : std::vector<std::pair<int, std::vector<std::size_t>>>{
             {120, {256}}, {121, {256, 512}}, {248, {256, 512}}, {249, {256, 512, 1024}}}) {
        BOOL_FUNC function(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A);
        for (int i = 0; i < leaves; ++i) {
            function.addsigtofunc(signal(0), 0);
        }
        function.setvarname(signal(0), BOOL_VAR_A);
        array_sizes.clear();
        const std::unique_ptr<char[]> text(function.writeeqn());
        EXPECT_EQ(array_sizes, sizes) << leaves;
        const std::string was = shape(function.root);
        largest_array = sizes.back() - 1;
        EXPECT_THROW(function.writeeqn(), std::bad_alloc);
        largest_array = SIZE_MAX;
        EXPECT_EQ(shape(function.root), was);
    }
}
