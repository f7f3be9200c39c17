// The reader of the internal equation against its definition, and both writers on what it reads.

#include "equation_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    equation_target::run(false, {data, size});
    return 0;
}
