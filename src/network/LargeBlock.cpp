// SPDX-License-Identifier: Apache-2.0
#include "network/LargeBlock.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zov::network {

namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20U;

constexpr std::align_val_t AlignmentOf(std::size_t bytes)
{
    return std::align_val_t{bytes >= kLargePage ? kLargePage : 64};
}

} // namespace

void* AllocateLarge(std::size_t bytes)
{
    void* block = ::operator new(bytes, AlignmentOf(bytes));
#if defined(__linux__)
    if (bytes >= kLargePage) {
        madvise(block, bytes, MADV_HUGEPAGE);
    }
#endif
    return block;
}

void FreeLarge(void* block, std::size_t bytes) noexcept
{
    ::operator delete(block, AlignmentOf(bytes));
}

} // namespace zov::network
