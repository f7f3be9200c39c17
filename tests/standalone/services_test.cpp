#include "ut_msgman.h"
#include "ut_text.h"

#include <gtest/gtest.h>

TEST(messages, are_lines_on_standard_error)
{
    testing::internal::CaptureStderr();
    ut_status(neoform("width %d", 31));
    ut_msgman->report("", cae_appname, neoform("4:%d", 11), 252, "1.0", 2, nullptr);
    ut_msgman->report(nullptr, nullptr, nullptr, 7, nullptr, 2, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "width 31\n"
                                                      "basbd: internal error 4:11, line 252, 1.0\n"
                                                      "basbd: internal error , line 7, \n");
}
