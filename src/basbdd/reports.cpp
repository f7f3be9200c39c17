#include "reports.h"

#include "report.h"

namespace basbdd {

namespace {

char rcsrev[] = "$Revision: 1.5 $";

} // namespace

void report(report_site site)
{
    basbd::report_internal_error(basbd::reporting_unit::bdds, static_cast<int>(site), rcsrev);
}

} // namespace basbdd
