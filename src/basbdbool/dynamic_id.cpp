#include "bd_dynamic_ld.h"

/// The library's own, where the host defines none. In a file of its own: a compiler that sees the
/// initial value might use that for the units' copies and miss the host's.
std::int64_t BD_DYNAMIC_LD::dynamic_id = 0;
