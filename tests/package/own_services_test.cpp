// This program defines some services itself while the stand-in is loaded too: its own ones win, one
// by one, also for the calls that the library makes while it is loaded.
// usage: test_own_services OFFSET...   of each `bd_dynamic` in the library

#include "basbdbool.h"
#include "basbdtt.h"
#include "bd_dynamic_ld.h"
#include "ut_fastmem.h"
#include "ut_msgman.h"
#include "ut_text.h"

#include <dlfcn.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

int failures = 0;
// Constant initialisation only: the pool is made before any constructor of this program.
unsigned long pool_block = 0;
unsigned long pool_chunk = 0;
int blocks_out = 0;

std::string& last_status()
{
    static std::string text;
    return text;
}

void expect(bool holds, const char* what)
{
    if (!holds) {
        std::cerr << "failed: " << what << '\n';
        ++failures;
    }
}

} // namespace

std::int64_t BD_DYNAMIC_LD::dynamic_id = 20261122;

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk) : state(nullptr)
{
    pool_block = block_size;
    pool_chunk = blocks_per_chunk;
}
UT_FASTMEM::~UT_FASTMEM() { state = nullptr; }
void* UT_FASTMEM::getnewptr()
{
    ++blocks_out;
    return std::malloc(pool_block);
}
void UT_FASTMEM::free(void* block)
{
    --blocks_out;
    std::free(block);
}

void ut_status(const char* text)
{
    last_status() = text;
    std::free(const_cast<char*>(text));
}

int main(int argc, char** argv)
{
    expect(pool_block == sizeof(BOOL_TNODE) && pool_chunk == 500, "the pool is made at load");
    auto* node = new BOOL_TNODE(BOOL_OP_ONE);
    expect(blocks_out == 1, "a node comes from this program's pool");
    delete node;
    expect(blocks_out == 0, "and goes back to it");

    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(2, "B0-B1");
    expect(last_status() == "Unexpected equation element '-'", "the status comes here");

    Dl_info stand_in{};
    expect(dladdr(ut_msgman, &stand_in) != 0 &&
               std::string(stand_in.dli_fname).find("libbasbdhost") != std::string::npos,
           "a service that is not defined here is the stand-in's");

    Dl_info library{};
    expect(dladdr(dlsym(RTLD_DEFAULT, "_ZN10BOOL_TNODE7reclaimEv"), &library) != 0, "its place");
    expect(argc == 4, "three units copy the load identifier");
    for (int i = 1; i < argc; ++i) {
        const auto* copy =
            static_cast<const char*>(library.dli_fbase) + std::strtoul(argv[i], nullptr, 16);
        expect(*reinterpret_cast<const std::int64_t*>(copy) == 20261122, argv[i]);
    }
    return failures;
}
