#include "ut_msgman.h"

#include <cstdio>
#include <cstdlib>

void UT_MSGMAN::report(const char* text, const char* app, char* id, int line, const char* rev,
                       int /*kind*/, void* /*extra*/)
{
    std::fprintf(stderr, "%s: internal error %s, line %d, %s%s\n", app == nullptr ? "basbd" : app,
                 id, line, rev, text);
    std::free(id);
}

namespace {

class DEFAULT_MSGMAN final : public UT_MSGMAN {};
DEFAULT_MSGMAN default_msgman; // constant initialisation: usable before any constructor runs
char default_appname[] = "basbd";

} // namespace

UT_MSGMAN* ut_msgman = &default_msgman;
char* cae_appname = default_appname;
