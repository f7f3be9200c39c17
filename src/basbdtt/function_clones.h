/// @file
/// @brief Loops that gain from wider registers than the baseline's are compiled twice.
#pragma once

/// Put before a function: the loader picks the AVX2 version where the processor has it. What the
/// function calls is compiled into it, or the calls would lead back to the baseline's version.
///
/// A sanitizer is not yet running when the loader picks, and unoptimised loops gain nothing.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && defined(__OPTIMIZE__) &&    \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define BASBDTT_CLONES __attribute__((target_clones("avx2", "default"), flatten))
#else
#define BASBDTT_CLONES
#endif
