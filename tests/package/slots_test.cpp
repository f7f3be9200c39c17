// The virtual slots that hosts and the library agree on, read from the objects' virtual tables.

#include "basbddtable.h"
#include "ut_msgman.h"

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

/// Whether a place in an object's virtual table holds the function of a mangled name. Functions
/// that do the same may share an address, so the addresses are compared and not the names.
bool holds(const void* object, std::size_t place, const char* name)
{
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return table[place] == dlsym(RTLD_DEFAULT, name);
}

void expect_slots(UT_STORE* store, const std::vector<const char*>& names)
{
    // A virtual destructor takes two places, one for whole objects and one that also frees them.
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        EXPECT_TRUE(holds(store, slot + (slot == 0 ? 0 : 1), names[slot])) << names[slot];
    }
    delete store;
}

class quiet_manager final : public UT_MSGMAN {};

TEST(slots, of_the_hash_store)
{
    expect_slots(BDD_TABLE(BDD_STORE_HASH).store,
                 {"_ZN8BDD_HASHD1Ev", "_ZN7UT_HASH5s_addEPKvPv", "_ZN7UT_HASH6s_findEPKv",
                  "_ZN7UT_HASH8s_removeEPKv", "_ZN8BDD_HASH9hash_funcEPKv",
                  "_ZN8BDD_HASH9comp_funcEPKvPv", "_ZN8BDD_HASH8del_funcEPv"});
}

TEST(slots, of_the_tree_store)
{
    expect_slots(BDD_TABLE(BDD_STORE_TREE).store,
                 {"_ZN8BDD_TREED1Ev", "_ZN11UT_BTR_TREE5s_addEPKvPv", "_ZN11UT_BTR_TREE6s_findEPKv",
                  "_ZN11UT_BTR_TREE8s_removeEPKv", "_ZN8BDD_TREE8del_funcEPv",
                  "_ZN8BDD_TREE9comp_funcEPvPKc"});
}

TEST(slots, report_is_the_fourteenth_of_the_message_manager)
{
    const quiet_manager manager;
    EXPECT_TRUE(holds(&manager, 13, "_ZN9UT_MSGMAN6reportEPKcS1_PciS1_iPv"));
}

} // namespace
