#include "names.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace basbdbool {

namespace {

const char* const vardefnametbl[name_count] = {"A", "B", "C", "D", "E", "F", "G",  "I", "J",
                                               "K", "L", "M", "N", "O", "P", "QX", "QY"};
const char* varappnametbl[name_count];

std::unique_ptr<char[]> private_copy(const char* text)
{
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::copy_n(text, size, copy.get());
    return copy;
}

const char* const* chosen_table(char const** names, BOOL_VARNAME last)
{
    if (names == nullptr) {
        return vardefnametbl;
    }
    const int count = std::min<int>(static_cast<unsigned short>(last), BOOL_VAR_QY) + 1;
    std::unique_ptr<char[]> copies[name_count];
    std::transform(names, names + count, copies, private_copy);
    std::transform(copies, copies + name_count, varappnametbl,
                   [](std::unique_ptr<char[]>& copy) { return copy.release(); }); // never freed
    return varappnametbl;
}

} // namespace

std::atomic<const char* const*> varnametbl = vardefnametbl;

void choose_name_table(char const** names, BOOL_VARNAME last)
{
    // Of the threads that come here first, one chooses and the others wait;
    // if it throws, the next one tries.
    [[maybe_unused]] static const bool is_chosen = [=] {
        varnametbl.store(chosen_table(names, last), std::memory_order_release);
        return true;
    }();
}

} // namespace basbdbool
