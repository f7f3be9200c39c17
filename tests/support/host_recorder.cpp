#include "host_recorder.h"

#include "ut_msgman.h"
#include "ut_text.h"

#include <cstdlib>
#include <utility>

namespace {

std::vector<std::string> statuses;
std::vector<host_recorder::report> reports;

class recording_manager final : public UT_MSGMAN {
public:
    recording_manager() { ut_msgman = this; }
    void report(const char* text, const char* app, char* id, int line, const char* rev, int kind,
                void* extra) override
    {
        reports.push_back({text, app, id, line, rev, kind, extra});
        std::free(id);
        if (host_recorder::on_report) {
            host_recorder::on_report(line);
        }
    }
};
recording_manager recorder;

} // namespace

/// Defined in the test program, so it takes the place of the stand-in's.
void ut_status(const char* text)
{
    statuses.emplace_back(text);
    std::free(const_cast<char*>(text));
}

namespace host_recorder {

std::function<void(int)> on_report;

std::vector<std::string> take_statuses() { return std::exchange(statuses, {}); }

std::vector<report> take_reports() { return std::exchange(reports, {}); }

std::vector<int> take_report_lines()
{
    std::vector<int> lines;
    for (const report& each : take_reports()) {
        lines.push_back(each.line);
    }
    return lines;
}

} // namespace host_recorder
