/// @file
/// @brief A host that records what the library tells it.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace host_recorder {

/// One call of `UT_MSGMAN::report`.
struct report {
    std::string text;
    std::string app;
    std::string id;
    int line;
    std::string rev;
    int kind;
    void* extra;
};

/// When set, called with the line of each report.
extern std::function<void(int)> on_report;

/// The messages that went to `ut_status` since the last call.
std::vector<std::string> take_statuses();

/// The reports since the last call, in order. The recorder is the message manager from the start.
std::vector<report> take_reports();

/// The lines of `take_reports()`, where nothing else is of interest.
std::vector<int> take_report_lines();

} // namespace host_recorder
