/// Linked into a test program of trees, fails it when nodes are left at its end.
#include "counting_pool.h"

#include <gtest/gtest.h>

namespace {

class every_block_comes_back final : public testing::Environment {
    void TearDown() override { EXPECT_EQ(counting_pool::live(), 0); }
};
const auto* const watch = testing::AddGlobalTestEnvironment(new every_block_comes_back);

} // namespace
