#include "numbers.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace basbdcells {

std::optional<double> to_number(std::string_view text)
{
    double value = 0;
    const char* const stop = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), stop, value);
    if (error != std::errc() || end != stop || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

} // namespace basbdcells
