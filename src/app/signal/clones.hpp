// Kernels compiled for several instruction sets, of which the machine's best one runs.
//
// Without contraction the results are the same bits in each. Sanitized programs get one version:
// the choice is made by resolvers that run before a sanitizer is ready. Clang gets one version,
// too: it does not take these targets.
//
// Where only the ends of a sum are made, fused multiplications and additions save a third of the
// time. Such a kernel is a template that is told whether to use them, in two functions: one with
// TORVE_CLONES, and one with TORVE_FUSED_CLONES that only runs if there are fused_operations().
#pragma once

#if defined(TORVE_ONE_TARGET)
#define TORVE_FUSED_CLONES
/// To check one instruction set on a machine that would choose another.
#define TORVE_CLONES __attribute__((target(TORVE_ONE_TARGET)))
#elif defined(__SANITIZE_ADDRESS__) || defined(__clang__) || !defined(__x86_64__)
#define TORVE_CLONES
#define TORVE_FUSED_CLONES
#else
#define TORVE_FUSED_MACHINES
#define TORVE_FUSED_CLONES \
  __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#define TORVE_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#endif

/// Before a loop whose steps do not depend on each other, though the compiler cannot tell. Clang
/// warns where it cannot follow, and with the checks of sanitizers in the loop it cannot.
#if defined(__clang__)
#if __has_feature(address_sanitizer)
#define TORVE_INDEPENDENT
#else
#define TORVE_INDEPENDENT _Pragma("clang loop vectorize(assume_safety)")
#endif
#else
#define TORVE_INDEPENDENT _Pragma("GCC ivdep")
#endif

/// For what kernels call: a part of them, compiled for the same instruction set.
#define TORVE_INLINE [[gnu::always_inline]] inline

namespace torve {

/// Whether the machine has what TORVE_FUSED_CLONES are compiled for.
[[nodiscard]] inline bool fused_operations() {
#if defined(TORVE_FUSED_MACHINES)
  return __builtin_cpu_supports("fma") != 0 && __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

}  // namespace torve
