#include "bd_dynamic_ld.h"

namespace basbdd {

namespace {

/// The host's load identifier as it was when this unit was loaded.
[[gnu::used]] std::int64_t bd_dynamic = BD_DYNAMIC_LD::dynamic_id;

} // namespace
} // namespace basbdd
