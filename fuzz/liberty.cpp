// What stands in a library in the Liberty format.

#include "library_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    read_and_check("library(l){" + fuzz_input(data, size).rest());
    return 0;
}
