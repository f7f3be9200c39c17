#include "diagnostics.h"

#include <utility>

namespace basbdcells {

void add_diagnostic(library& to, diagnostic added)
{
    std::vector<diagnostic>& all = to.diagnostics;
    if (all.size() < most_diagnostics) {
        all.push_back(std::move(added));
        return;
    }
    if (all.size() == most_diagnostics) {
        all.push_back({added.line, "further messages are left out", added.is_error});
    }
    all.back().is_error |= added.is_error;
}

} // namespace basbdcells
