/// @file
/// @brief Loops that gain from wider registers than the baseline's are compiled for those, too.
#pragma once

/// Put before a function: the loader picks the AVX-512 or the AVX2 version where the processor has
/// it. What the function calls is compiled into it, or the calls would lead back to the baseline's
/// version. AVX-512 joins three words at a step, so that the cofactors for the lowest inputs take
/// two thirds of the time.
///
/// A sanitizer is not yet running when the loader picks, and unoptimised loops gain nothing.
#if defined(__x86_64__) && !defined(__clang__) && __GNUC__ >= 12 && defined(__OPTIMIZE__) &&       \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define BASBDTT_CLONES __attribute__((target_clones("arch=x86-64-v4", "avx2", "default"), flatten))
#else
#define BASBDTT_CLONES
#endif
