#include "ut_text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>

char* neoform(const char* format, ...)
{
    char* text = nullptr;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vasprintf(&text, format, arguments);
    va_end(arguments);
    if (length < 0) {
        throw std::bad_alloc();
    }
    return text;
}

void ut_status(const char* text)
{
    std::fprintf(stderr, "%s\n", text);
    std::free(const_cast<char*>(text));
}
