#include "reports.h"

#include "ut_msgman.h"
#include "ut_text.h"

namespace {

char rcsrev[] = "$Revision: 1.27 $";

} // namespace

void report(REPORT site)
{
    constexpr int subsystem = 4;
    constexpr int expression_trees = 11;
    ut_msgman->report("", cae_appname, neoform("%d:%d", subsystem, expression_trees),
                      static_cast<int>(site), rcsrev, 2, nullptr);
}
