#include "reports.h"

#include "ut_msgman.h"
#include "ut_text.h"

namespace {

char rcsrev[] = "$Revision: 1.5 $";

} // namespace

void report(BDD_REPORT site)
{
    constexpr int subsystem = 4;
    constexpr int bdd_engine = 1;
    ut_msgman->report("", cae_appname, neoform("%d:%d", subsystem, bdd_engine),
                      static_cast<int>(site), rcsrev, 2, nullptr);
}
