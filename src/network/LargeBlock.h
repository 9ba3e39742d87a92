// SPDX-License-Identifier: Apache-2.0
/// Memory for matrices over frequency: large pages, not touched before it is written.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace zov::network {

/// Bytes aligned to a large page and asked for as such where the platform has them.
[[nodiscard]] void* AllocateLarge(std::size_t bytes);
void FreeLarge(void* block, std::size_t bytes) noexcept;

/// Allocator of a std::vector that does not clear its elements: resize() gives memory as it is,
/// for a reader that fills all of it.
template <class T>
struct SLargeAllocator
{
    using value_type = T;

    SLargeAllocator() = default;
    template <class U>
    SLargeAllocator(const SLargeAllocator<U>&) // NOLINT: allocators convert
    {
    }
    [[nodiscard]] T* allocate(std::size_t count) // NOLINT: the name is the library's
    {
        if (count > static_cast<std::size_t>(-1) / 2 / sizeof(T)) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(AllocateLarge(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t count) noexcept { FreeLarge(block, count * sizeof(T)); }
    template <class U>
    void construct(U*) noexcept // NOLINT
    {
    }
    template <class U, class First, class... Rest>
    void construct(U* at, First&& first, Rest&&... rest) // NOLINT
    {
        ::new (static_cast<void*>(at)) U(std::forward<First>(first), std::forward<Rest>(rest)...);
    }
    friend bool operator==(const SLargeAllocator&, const SLargeAllocator&) { return true; }
};

} // namespace zov::network
