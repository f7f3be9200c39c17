#include "reports.h"

#include "report.h"

#include <algorithm>
#include <new>
#include <utility>

namespace basbdbool {

namespace {

char rcsrev[] = "$Revision: 1.27 $";

} // namespace

void report(report_site site)
{
    basbd::report_internal_error(basbd::reporting_unit::expression_trees, static_cast<int>(site),
                                 rcsrev);
}

void later_reports::add(report_site site, unsigned long count) noexcept
{
    run_of(site).count += count;
}

/// The run that a report of `site` belongs to, made if need be.
later_reports::run& later_reports::run_of(report_site site) noexcept
{
    if (size != 0 && runs[size - 1].site == site) {
        return runs[size - 1];
    }
    if (size < capacity || grow()) {
        return runs[size++] = {site, 0};
    }
    run* const end = counted + counted_sites;
    run* const found =
        std::find_if(counted, end, [=](const run& each) { return each.site == site; });
    if (found == end) {
        ++counted_sites;
        *found = {site, 0};
    }
    return *found;
}

bool later_reports::grow() noexcept
{
    std::unique_ptr<run[]> larger(new (std::nothrow) run[2 * capacity]);
    if (larger == nullptr) {
        return false;
    }
    runs = std::copy_n(runs, size, larger.get()) - size;
    more = std::move(larger);
    capacity *= 2;
    return true;
}

void later_reports::send_all() const
{
    const auto send_run = [](const run& each) {
        for (unsigned long i = 0; i < each.count; ++i) {
            report(each.site);
        }
    };
    std::for_each(runs, runs + size, send_run);
    std::for_each_n(counted, counted_sites, send_run);
}

} // namespace basbdbool
