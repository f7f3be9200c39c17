#include "report.h"

#include "ut_msgman.h"
#include "ut_text.h"

void basbd::report_internal_error(reporting_unit unit, int line, const char* revision)
{
    constexpr int subsystem = 4;
    constexpr int kind = 2;
    char* const id = neoform("%d:%d", subsystem, static_cast<int>(unit));
    ut_msgman->report("", cae_appname, id, line, revision, kind, nullptr);
}
