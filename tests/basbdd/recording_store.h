/// @file
/// @brief A manager's store that keeps what it is asked.
#pragma once

#include "bdd_oracle.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

namespace bdd_oracle {

struct store_record {
    /// The nodes in the order in which they were made, each with its children's places in that
    /// order and their marks.
    std::vector<std::array<std::size_t, 3>> nodes;
    std::size_t searches = 0;
};

/// Gives a new manager, which has a store of that class, a store that keeps a record.
template <typename base_store>
const store_record& record_store(BDD_MANAGER& manager)
{
    struct recording_store final : base_store {
        store_record record;
        std::map<BDD_NODE*, std::size_t> places{{basbdd_one, 0}};
        void* s_find(const void* key) override
        {
            ++record.searches;
            return base_store::s_find(key);
        }
        void* s_add(const void* key, void* data) override
        {
            EXPECT_EQ(data, nullptr);
            auto* const made = static_cast<BDD_NODE*>(const_cast<void*>(key));
            const auto place = [&](BDD_NODE* e) {
                return 2 * places.at(node(e)) + (is_marked(e) ? 1 : 0);
            };
            record.nodes.push_back({made->varid, place(made->high), place(made->low)});
            places.emplace(made, record.nodes.size());
            return base_store::s_add(key, data);
        }
    };
    delete manager.table->store;
    auto* const store = new recording_store;
    manager.table->store = store;
    return store->record;
}

} // namespace bdd_oracle
