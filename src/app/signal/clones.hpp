// Kernels compiled for several instruction sets, of which the machine's best one runs.
//
// Without contraction the results are the same bits in each. Sanitized programs get one version:
// the choice is made by resolvers that run before a sanitizer is ready. Clang gets one version,
// too: it does not take these targets.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__clang__) || !defined(__x86_64__)
#define TORVE_CLONES
#define TORVE_FMA_CLONES
#else
/// For plain loops.
#define TORVE_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
/// For loops with std::fma, which is an instruction only in the first two.
#define TORVE_FMA_CLONES \
  __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#endif
