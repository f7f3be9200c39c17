/// @file
/// @brief What every public header of basbd shares: the export mark and the precondition check.
#pragma once

/// Marks a class or an object that the shared library exports; everything else stays hidden.
#define BASBD_API __attribute__((visibility("default")))

/// The C library's assertion failure: prints file, line, signature and text, then aborts.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the C library's
extern "C" void __assert_fail(const char* text, const char* file, unsigned int line,
                              const char* signature) noexcept __attribute__((__noreturn__));

/// @brief Stops the process in the standard assertion format when a precondition does not hold.
///
/// Unlike `assert` it is live in every build type, also where the including program defines NDEBUG.
/// @param holds      the condition
/// @param text       the condition's text, which is part of the interface: its blanks are fixed
/// @param signature  `__PRETTY_FUNCTION__` of the operation that was called
/// @param file       the caller's, filled in by the compiler
/// @param line       the caller's, filled in by the compiler
inline void basbd_require(bool holds, const char* text, const char* signature,
                          const char* file = __builtin_FILE(), unsigned int line = __builtin_LINE())
{
    if (!holds) {
        __assert_fail(text, file, line, signature);
    }
}
