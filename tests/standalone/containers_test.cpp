// Both containers against std::set, with keys and entries that are plain numbers in records of
// their own, as the library's nodes are.

#include "ut_btr_tree.h"
#include "ut_hash.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

struct Record {
    unsigned number;
};

/// What the hooks of both containers do; the newest container's view stays here for the tests.
struct Hooks {
    std::vector<unsigned> freed;
    UT_STORE* store = nullptr;

    void free_entry(void* entry)
    {
        Record probe{static_cast<Record*>(entry)->number};
        EXPECT_EQ(store->s_find(&probe), nullptr) << "an entry that is being freed is still found";
        freed.push_back(probe.number);
        delete static_cast<Record*>(entry);
    }
};
Hooks hooks;

unsigned number_of(const void* key) { return static_cast<const Record*>(key)->number; }

class HashStore : public UT_HASH {
public:
    HashStore() : UT_HASH(3089, 1) { hooks = {{}, this}; }
    ~HashStore() override { process_and_kill(1, nullptr); }
    unsigned int hash_func(const void* key) override { return number_of(key) / 8 * 64; }
    int comp_func(const void* key, void* entry) override
    {
        return number_of(key) == number_of(entry) ? 0 : 1;
    }
    void del_func(void* entry) override { hooks.free_entry(entry); }
};

class TreeStore : public UT_BTR_TREE {
public:
    TreeStore() : UT_BTR_TREE(1) { hooks = {{}, this}; }
    ~TreeStore() override { flush(nullptr); }
    void del_func(void* entry) override { hooks.free_entry(entry); }
    int comp_func(void* key, const char* entry) override
    {
        return static_cast<int>(number_of(key)) - static_cast<int>(number_of(entry));
    }
};

template <typename Store>
class stores : public testing::Test {
};
using StoreTypes = testing::Types<HashStore, TreeStore>;
TYPED_TEST_SUITE(stores, StoreTypes);

TYPED_TEST(stores, agrees_with_a_set_through_random_work)
{
    for (const unsigned range : {3U, 16U, 40U, 10000U}) {
        SCOPED_TRACE(testing::Message() << "numbers below " << range << ", seed " << range);
        std::mt19937 random(range);
        std::vector<unsigned> expected_freed;
        {
            TypeParam store;
            std::set<unsigned> numbers;
            for (int step = 0; step < 30000; ++step) {
                Record probe{static_cast<unsigned>(random()) % range};
                auto* found = static_cast<Record*>(store.s_find(&probe));
                ASSERT_EQ(found != nullptr, numbers.count(probe.number) == 1);
                if (found != nullptr) {
                    ASSERT_EQ(found->number, probe.number);
                    ASSERT_EQ(store.s_add(&probe, nullptr), found) << "an equal entry stays";
                }
                if (random() % 3 == 0) {
                    const std::unique_ptr<Record> removed(
                        static_cast<Record*>(store.s_remove(&probe)));
                    ASSERT_EQ(removed.get(), found);
                    numbers.erase(probe.number);
                } else if (found == nullptr) {
                    auto* added = new Record(probe);
                    ASSERT_EQ(store.s_add(added, nullptr), added);
                    ASSERT_EQ(store.s_find(&probe), added);
                    numbers.insert(probe.number);
                }
            }
            expected_freed.assign(numbers.begin(), numbers.end());
        }
        std::sort(hooks.freed.begin(), hooks.freed.end());
        EXPECT_EQ(hooks.freed, expected_freed);
    }
}

TYPED_TEST(stores, adds_after_a_search_for_another_key)
{
    TypeParam store;
    for (const unsigned mask : {64U, 1U}) { // of another hash, and of the same
        for (const unsigned number : {50U, 10U, 90U, 30U}) {
            Record probe{number};
            auto* found = store.s_find(&probe);
            Record other{number ^ mask};
            ASSERT_EQ(store.s_find(&other), nullptr);
            auto record = std::make_unique<Record>(probe);
            void* const stored = store.s_add(record.get(), nullptr);
            ASSERT_EQ(stored, found == nullptr ? record.release() : found) << number;
        }
    }
}

TEST(hash, shows_each_entry_and_frees_it_only_when_told)
{
    static std::set<unsigned> seen;
    HashStore table;
    std::vector<std::unique_ptr<Record>> records;
    for (unsigned number = 0; number < 100; ++number) {
        records.push_back(std::make_unique<Record>(Record{number}));
        table.s_add(records.back().get(), nullptr);
    }
    table.process_and_kill(0, [](void* entry) { seen.insert(number_of(entry)); });
    EXPECT_EQ(seen.size(), records.size());
    EXPECT_TRUE(hooks.freed.empty());
    EXPECT_EQ(table.s_find(records[0].get()), nullptr);
}

TEST(tree, shows_each_entry_in_order_before_it_is_freed)
{
    static std::vector<unsigned> seen;
    TreeStore tree;
    for (const unsigned number : {2U, 3U, 1U}) {
        tree.s_add(new Record{number}, nullptr);
    }
    tree.flush([](void** entry, void* extra) {
        EXPECT_EQ(extra, nullptr);
        seen.push_back(number_of(*entry));
    });
    EXPECT_EQ(seen, (std::vector<unsigned>{1, 2, 3}));
    EXPECT_EQ(hooks.freed, seen);
}

} // namespace
