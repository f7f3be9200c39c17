// A host that opens its mapper at run time, and with it the library, which the mapper is linked
// with. usage: opening_host MAPPER

#include "mapper.h"

#include "bd_dynamic_ld.h"

#include <dlfcn.h>

#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: opening_host MAPPER\n";
        return 2;
    }
    BD_DYNAMIC_LD::dynamic_id = 2027; // in time: the library copies it while it is loaded
    void* const mapper = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    void* const run = mapper == nullptr ? nullptr : dlsym(mapper, "run_mapper");
    if (run == nullptr) {
        std::cerr << dlerror() << '\n';
        return 1;
    }
    reinterpret_cast<decltype(&run_mapper)>(run)();
    dlclose(mapper); // the mapper goes; the library stays, and with it the pool and what came of it
}
