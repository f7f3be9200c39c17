#include "diagnostics.h"

#include "basbdcells/text.h"

#include <utility>

namespace basbdcells {

std::string shown_name(std::string_view name) { return printable(elide(name, longest_quoted)); }

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
