#include "status.h"

#include "basbdcells/text.h"
#include "ut_text.h"

#include <cstdlib>
#include <utility>

namespace {

std::string messages;

} // namespace

/// Takes the place of the service in basbd::host: this program shows messages where they belong.
/// The library quotes single bytes, and one above 127 alone is no character.
void ut_status(const char* text)
{
    messages += messages.empty() ? "" : "; ";
    messages += basbdcells::printable(text);
    std::free(const_cast<char*>(text));
}

namespace cellfn {

std::string take_messages() { return std::exchange(messages, {}); }

} // namespace cellfn
