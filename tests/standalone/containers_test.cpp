// Both containers against std::set, with numbers in records of their own as entries, as the
// library's nodes are. Eight numbers at a time share a hash.

#include "ut_btr_tree.h"
#include "ut_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

struct record {
    unsigned number;
};

unsigned number_of(const void* key) { return static_cast<const record*>(key)->number; }

std::vector<unsigned> seen;
std::vector<unsigned> freed;

void see(const void* entry) { seen.push_back(number_of(entry)); }

template <typename container>
class freeing : public container {
public:
    using container::container;
    void del_func(void* entry) override
    {
        EXPECT_EQ(this->s_find(entry), nullptr) << "an entry that is being freed is still found";
        freed.push_back(number_of(entry));
        static_cast<record*>(entry)->number = ~0U; // not to be looked at again
    }
};

class hash_store : public freeing<UT_HASH> {
public:
    hash_store() : freeing(3089, 1) {}
    ~hash_store() override { process_and_kill(1, nullptr); }
    void show()
    {
        process_and_kill(0, [](void* entry) { see(entry); });
    }
    unsigned int hash_func(const void* key) override { return number_of(key) / 8 * 64; }
    int comp_func(const void* key, void* entry) override
    {
        return number_of(key) == number_of(entry) ? 0 : 1;
    }
};

class tree_store : public freeing<UT_BTR_TREE> {
public:
    tree_store() : freeing(1) {}
    ~tree_store() override { flush(nullptr); }
    void show()
    {
        flush([](void** entry, void* extra) {
            EXPECT_EQ(extra, nullptr);
            see(*entry);
        });
        EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
        EXPECT_EQ(std::exchange(freed, {}), seen);
    }
    int comp_func(void* key, const char* entry) override
    {
        return static_cast<int>(number_of(key)) - static_cast<int>(number_of(entry));
    }
};

template <typename store>
class stores : public testing::Test {
};
using store_types = testing::Types<hash_store, tree_store>;
TYPED_TEST_SUITE(stores, store_types, );

/// Random additions and removals.
void work(UT_STORE& store, std::set<unsigned>& numbers, std::deque<record>& records, unsigned range)
{
    std::mt19937 random(range);
    for (int step = 0; step < 30000; ++step) {
        record probe{static_cast<unsigned>(random()) % range};
        auto* const found = static_cast<record*>(store.s_find(&probe));
        ASSERT_EQ(found != nullptr, numbers.count(probe.number) == 1);
        ASSERT_TRUE(found == nullptr || found->number == probe.number);
        if (random() % 2 == 0) { // an addition or removal also follows another search
            record other{static_cast<unsigned>(random()) % range};
            store.s_find(&other);
        }
        if (random() % 3 == 0) {
            ASSERT_EQ(store.s_remove(&probe), found);
            numbers.erase(probe.number);
        } else {
            record* const fresh = &records.emplace_back(probe);
            ASSERT_EQ(store.s_add(fresh, nullptr), found == nullptr ? fresh : found);
            numbers.insert(probe.number);
        }
    }
}

TYPED_TEST(stores, agree_with_a_set_through_random_work)
{
    for (const unsigned range : {3U, 16U, 40U, 10000U}) {
        SCOPED_TRACE(testing::Message() << "numbers below " << range << ", seed " << range);
        std::deque<record> records;
        std::set<unsigned> numbers;
        seen.clear();
        freed.clear();
        {
            TypeParam store;
            work(store, numbers, records, range);
            store.show();
            EXPECT_TRUE(freed.empty());
            std::sort(seen.begin(), seen.end());
            EXPECT_EQ(seen, std::vector<unsigned>(numbers.begin(), numbers.end()));
            numbers.clear();
            work(store, numbers, records, range);
        }
        std::sort(freed.begin(), freed.end());
        EXPECT_EQ(freed, std::vector<unsigned>(numbers.begin(), numbers.end()));
    }
}

} // namespace
