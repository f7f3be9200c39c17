// A host that is linked with its mapper, and with it the library.

#include "mapper.h"

int main() { run_mapper(); }
