#include "reports.h"

#include "report.h"

namespace {

char rcsrev[] = "$Revision: 1.5 $";

} // namespace

void report(BDD_REPORT site)
{
    basbd::report_internal_error(basbd::reporting_unit::bdds, static_cast<int>(site), rcsrev);
}
