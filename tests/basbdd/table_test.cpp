// The unique table and its stores, and what they ask of the host's containers.

#include "bdd_oracle.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// The calls that the definitions below have passed on to the stand-in.
std::ostringstream calls;

template <typename... argument>
void pass_on(const char* name, argument... args)
{
    reinterpret_cast<void (*)(argument...)>(dlsym(RTLD_NEXT, name))(args...);
}

} // namespace

UT_HASH::UT_HASH(unsigned int size, unsigned char keep_flag)
{
    calls << "UT_HASH(" << size << ", " << int{keep_flag} << ") ";
    pass_on("_ZN7UT_HASHC2Ejh", this, size, keep_flag);
}

void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    calls << "process_and_kill(" << int{kill} << ", " << (each != nullptr) << ") ";
    pass_on("_ZN7UT_HASH16process_and_killEhPFvPvE", this, kill, each);
}

UT_BTR_TREE::UT_BTR_TREE(unsigned char keep_flag)
{
    calls << "UT_BTR_TREE(" << int{keep_flag} << ") ";
    pass_on("_ZN11UT_BTR_TREEC2Eh", this, keep_flag);
}

void UT_BTR_TREE::flush(void (*each)(void**, void*))
{
    calls << "flush(" << (each != nullptr) << ") ";
    pass_on("_ZN11UT_BTR_TREE5flushEPFvPPvS0_E", this, each);
}

TEST(table, makes_the_containers_and_empties_them)
{
    calls.str("");
    for (const int method : {0, 1, 7}) {
        const BDD_TABLE table{BDD_STORE_METHOD(method)};
        EXPECT_EQ(table.method, method);
        delete table.store;
    }
    BDD_NODE of_another(3);
    {
        BDD_HASH hash;
        hash.s_add(&of_another, nullptr);
        hash.flag = 0; // its nodes stay
    }
    EXPECT_EQ(calls.str(), "UT_HASH(3089, 1) process_and_kill(1, 0) UT_BTR_TREE(1) flush(0) "
                           "UT_BTR_TREE(1) flush(0) UT_HASH(3089, 1) ");
}

TEST(table, hashes_and_orders_by_edges_with_their_marks)
{
    BDD_HASH hash;
    BDD_TREE tree;
    BDD_NODE high;
    BDD_NODE low;
    BDD_NODE nodes[] = {{1, &high, &low}, {1, &high, negate(&low)}, {2, nullptr, nullptr}};
    const auto value = bdd_oracle::bits(&high) / 8 + 2 * (bdd_oracle::bits(&low) + 1) + 1;
    EXPECT_EQ(hash.hash_func(&nodes[1]), static_cast<unsigned>(value));
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            const int expected = i == j ? 0 : i < j ? -1 : 1;
            EXPECT_EQ(hash.comp_func(&nodes[i], &nodes[j]), expected);
            const void* entry = &nodes[j];
            EXPECT_EQ(tree.comp_func(&nodes[i], static_cast<const char*>(entry)), expected);
        }
    }
}
