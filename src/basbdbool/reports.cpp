#include "reports.h"

#include "ut_msgman.h"
#include "ut_text.h"

#include <algorithm>
#include <new>
#include <utility>

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

void LATER_REPORTS::add(REPORT site, unsigned long count) noexcept { run_of(site).count += count; }

/// The run that a report of `site` belongs to, made if need be.
LATER_REPORTS::RUN& LATER_REPORTS::run_of(REPORT site) noexcept
{
    if (size != 0 && runs[size - 1].site == site) {
        return runs[size - 1];
    }
    if (size < capacity || grow()) {
        return runs[size++] = {site, 0};
    }
    RUN* const end = counted + counted_sites;
    RUN* const run = std::find_if(counted, end, [=](const RUN& each) { return each.site == site; });
    if (run == end) {
        ++counted_sites;
        *run = {site, 0};
    }
    return *run;
}

bool LATER_REPORTS::grow() noexcept
{
    std::unique_ptr<RUN[]> larger(new (std::nothrow) RUN[2 * capacity]);
    if (larger == nullptr) {
        return false;
    }
    runs = std::copy_n(runs, size, larger.get()) - size;
    more = std::move(larger);
    capacity *= 2;
    return true;
}

void LATER_REPORTS::send_all() const
{
    const auto send_run = [](const RUN& run) {
        for (unsigned long i = 0; i < run.count; ++i) {
            report(run.site);
        }
    };
    std::for_each(runs, runs + size, send_run);
    std::for_each_n(counted, counted_sites, send_run);
}
