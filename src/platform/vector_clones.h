// Marks a function whose loops are worth compiling thrice, for every x86-64 processor and for those
// with AVX2 or AVX-512; the loader picks one. All give the same results: vector width changes no
// operation's rounding, and the build lets no two operations be contracted into one.
#pragma once

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define SONAVEL_VECTOR_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
// That functions can be written for each of them apart, where the width has to be said.
#define SONAVEL_VECTOR_TARGETS
#else
#define SONAVEL_VECTOR_CLONES
#endif
