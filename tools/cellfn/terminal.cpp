#include "terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace cellfn {

namespace {

constexpr std::size_t least_room = 12; ///< behind an indent
constexpr std::size_t least_indent = 4;

std::size_t width_of(int descriptor)
{
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0) {
        return 0;
    }
    const char* const wanted = std::getenv("COLUMNS");
    const int columns = wanted != nullptr ? std::atoi(wanted) : 0;
    return columns > 0 ? static_cast<std::size_t>(columns) : size.ws_col;
}

} // namespace

std::size_t output_width() { return width_of(STDOUT_FILENO); }

std::string wrapped(std::string line, std::size_t indent, std::size_t width, words longest)
{
    if (indent + least_room > width) {
        indent = least_indent;
    }
    if (indent + least_room > width) {
        return line;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    for (std::size_t begin = 0; line.size() - begin > width;) {
        std::size_t end = line.rfind(' ', begin + width);
        if (end == std::string::npos || end <= begin + indent) {
            end = longest == words::broken ? begin + width : line.find(' ', begin + width);
        }
        if (end == std::string::npos) {
            break;
        }
        const std::size_t stop = line.find_last_not_of(' ', end - 1) + 1;
        line.replace(stop, line.find_first_not_of(' ', end) - stop,
                     '\n' + std::string(indent, ' '));
        begin = stop + 1;
    }
    return line;
}

void tell(const std::string& message)
{
    std::cerr << wrapped(message, least_indent, width_of(STDERR_FILENO)) << '\n';
}

} // namespace cellfn
