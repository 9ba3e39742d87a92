// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks a loop function: two lanes with what every x86-64 has, four where the processor can. The
/// operations and their order are the same, and so are the bits.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && defined(__OPTIMIZE__) &&    \
    !defined(__SANITIZE_ADDRESS__)
#define ZOV_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define ZOV_WIDE
#endif
