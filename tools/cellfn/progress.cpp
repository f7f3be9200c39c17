#include "progress.h"

#include <unistd.h>

#include <iostream>
#include <utility>

namespace cellfn {

namespace {

constexpr std::chrono::milliseconds interval{200};
constexpr const char* clear_line = "\r\033[K";

} // namespace

progress::progress(std::string what, std::size_t count)
    : label(std::move(what)), total(count), is_terminal(isatty(STDERR_FILENO) == 1),
      next_time(clock::now() + interval)
{
}

progress::~progress() { hide(); }

void progress::hide()
{
    if (is_shown) {
        std::cerr << clear_line << std::flush;
        is_shown = false;
    }
}

void progress::begin_item(bool is_long)
{
    ++item;
    if (is_terminal && (is_long || clock::now() >= next_time)) {
        std::cerr << clear_line << label << ": " << item << " of " << total << std::flush;
        is_shown = true;
        next_time = clock::now() + interval;
    }
}

} // namespace cellfn
