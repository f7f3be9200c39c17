// Both containers against std::set, with numbers in records of their own as entries, as the
// library's nodes are. Eight numbers at a time share a hash.

#include "ut_btr_tree.h"
#include "ut_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <vector>

namespace {

struct record {
    unsigned number;
};

unsigned number_of(const void* key) { return static_cast<const record*>(key)->number; }

std::vector<unsigned> seen;
std::vector<unsigned> freed;

template <typename CONTAINER>
class freeing : public CONTAINER {
public:
    using CONTAINER::CONTAINER;
    void del_func(void* entry) override
    {
        EXPECT_EQ(this->s_find(entry), nullptr) << "an entry that is being freed is still found";
        freed.push_back(number_of(entry));
        delete static_cast<record*>(entry);
    }
};

class hash_store : public freeing<UT_HASH> {
public:
    hash_store() : freeing(3089, 1) {}
    ~hash_store() override { process_and_kill(1, nullptr); }
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
    int comp_func(void* key, const char* entry) override
    {
        return static_cast<int>(number_of(key)) - static_cast<int>(number_of(entry));
    }
};

template <typename STORE>
class stores : public testing::Test {
};
using STORE_TYPES = testing::Types<hash_store, tree_store>;
TYPED_TEST_SUITE(stores, STORE_TYPES);

TYPED_TEST(stores, agree_with_a_set_through_random_work)
{
    for (const unsigned range : {3U, 16U, 40U, 10000U}) {
        SCOPED_TRACE(testing::Message() << "numbers below " << range << ", seed " << range);
        std::mt19937 random(range);
        std::set<unsigned> numbers;
        freed.clear();
        {
            TypeParam store;
            for (int step = 0; step < 30000; ++step) {
                record probe{static_cast<unsigned>(random()) % range};
                auto* found = static_cast<record*>(store.s_find(&probe));
                ASSERT_EQ(found != nullptr, numbers.count(probe.number) == 1);
                ASSERT_TRUE(found == nullptr || found->number == probe.number);
                if (random() % 2 == 0) { // an addition or removal also follows another search
                    record other{static_cast<unsigned>(random()) % range};
                    store.s_find(&other);
                }
                if (random() % 3 == 0) {
                    const std::unique_ptr<record> removed(
                        static_cast<record*>(store.s_remove(&probe)));
                    ASSERT_EQ(removed.get(), found);
                    numbers.erase(probe.number);
                } else {
                    auto fresh = std::make_unique<record>(probe);
                    void* const stored = store.s_add(fresh.get(), nullptr);
                    ASSERT_EQ(stored, found == nullptr ? fresh.release() : found);
                    numbers.insert(probe.number);
                }
            }
        }
        std::sort(freed.begin(), freed.end());
        EXPECT_EQ(freed, std::vector<unsigned>(numbers.begin(), numbers.end()));
    }
}

TEST(containers, show_every_entry_once_and_free_it_when_told)
{
    record kept[100];
    hash_store table;
    tree_store tree;
    std::vector<unsigned> numbers;
    for (unsigned number = 0; number < std::size(kept); ++number) {
        kept[number].number = number;
        table.s_add(&kept[number], nullptr);
        tree.s_add(new record{99 - number}, nullptr);
        numbers.push_back(number);
    }
    seen.clear();
    freed.clear();
    table.process_and_kill(0, [](void* entry) { seen.push_back(number_of(entry)); });
    std::sort(seen.begin(), seen.end());
    EXPECT_EQ(seen, numbers);
    EXPECT_TRUE(freed.empty());
    EXPECT_EQ(table.s_find(&kept[0]), nullptr);

    seen.clear();
    tree.flush([](void** entry, void* extra) {
        EXPECT_EQ(extra, nullptr);
        seen.push_back(number_of(*entry));
    });
    EXPECT_EQ(seen, numbers) << "in order";
    EXPECT_EQ(freed, numbers);
}

} // namespace
