#include "ut_msgman.h"

#include <cstdio>
#include <cstdlib>

namespace {

const char* shown(const char* text) { return text == nullptr ? "" : text; }

} // namespace

void UT_MSGMAN::report(const char* text, const char* app, char* id, int line, const char* rev,
                       int /*kind*/, void* /*extra*/)
{
    std::fprintf(stderr, "%s: internal error %s, line %d, %s%s\n", app == nullptr ? "basbd" : app,
                 shown(id), line, shown(rev), shown(text));
    std::free(id);
}

namespace {

class default_manager final : public UT_MSGMAN {};
default_manager manager; // constant initialisation: usable before any constructor runs
char default_appname[] = "basbd";

} // namespace

UT_MSGMAN* ut_msgman = &manager;
char* cae_appname = default_appname;
