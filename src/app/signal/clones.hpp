// Kernels compiled for several instruction sets, of which the machine's best one runs.
//
// Without contraction the results are the same bits in each. Sanitized programs get one version:
// the choice is made by resolvers that run before a sanitizer is ready. Clang gets one version,
// too: it does not take these targets.
#pragma once

#if defined(TORVE_ONE_TARGET)
/// To check one instruction set on a machine that would choose another.
#define TORVE_CLONES __attribute__((target(TORVE_ONE_TARGET)))
#elif defined(__SANITIZE_ADDRESS__) || defined(__clang__) || !defined(__x86_64__)
#define TORVE_CLONES
#else
#define TORVE_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#endif

/// For what kernels call: a part of them, compiled for the same instruction set.
#define TORVE_INLINE [[gnu::always_inline]] inline
