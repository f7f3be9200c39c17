#include "basbdvars.h"

#include "bd_dynamic_ld.h"
#include "ut_fastmem.h"

namespace {

constexpr unsigned long nodes_per_chunk = 500;

/// The host's load identifier as it was when this unit was loaded.
[[gnu::used]] std::int64_t bd_dynamic = BD_DYNAMIC_LD::dynamic_id;

} // namespace

/// Lives as long as the process: trees may be freed by destructors that run at exit.
UT_FASTMEM* BOOL_TNODE::fstmem = new UT_FASTMEM(sizeof(BOOL_TNODE), nodes_per_chunk);
