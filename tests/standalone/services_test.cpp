#include "host_recorder.h"
#include "ut_text.h"

#include <gtest/gtest.h>

TEST(services, the_executables_status_sink_wins)
{
    ut_status(neoform("%d:%d", 4, 11));
    EXPECT_EQ(host_recorder::take_statuses(), std::vector<std::string>{"4:11"});
}
