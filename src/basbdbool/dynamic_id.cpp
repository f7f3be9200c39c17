#include "bd_dynamic_ld.h"

/// The library's own, where the host defines none. Apart from the units that copy it: a compiler
/// that sees the initial value may copy that one when it compiles, and the host's would be lost.
std::int64_t BD_DYNAMIC_LD::dynamic_id = 0;
