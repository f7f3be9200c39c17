#include "report.h"

#include "ut_msgman.h"
#include "ut_text.h"

namespace {

constexpr int report_group = 4;
constexpr int bdd_engine = 1;
char rcsrev[] = "$Revision: 1.5 $";

} // namespace

void report_internal_error(REPORT_SITE site)
{
    ut_msgman->report("", cae_appname, neoform("%d:%d", report_group, bdd_engine),
                      static_cast<int>(site), rcsrev, 2, nullptr);
}
