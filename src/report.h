/// @file
/// @brief The one form of an internal-error report.
#pragma once

namespace basbd {

/// The units that report, as their message identifiers number them.
enum class reporting_unit : int { bdds = 1, expression_trees = 11 };

/// @brief Tells the host's message manager; the reporting operation then goes on.
/// @param line      a fixed number that tells the report site, whatever line its code stands in
/// @param revision  the unit's own writable text
[[gnu::cold]] void report_internal_error(reporting_unit unit, int line, const char* revision);

} // namespace basbd
