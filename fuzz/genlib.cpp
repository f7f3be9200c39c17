// genlib, or whatever the first words make of the text.

#include "library_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    read_and_check(fuzz_input(data, size).rest());
    return 0;
}
