// SPDX-License-Identifier: Apache-2.0
/// Memory for many small objects that live and die together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zov {

/// Bump allocator over large blocks (2 MiB pages where the platform has them: first touch of fresh
/// 4 KiB pages costs more than everything else a reader does). Nothing is freed one by one, no
/// destructor is run.
class CArena
{
public:
    CArena() = default;
    CArena(CArena&& other) noexcept;
    CArena& operator=(CArena&& other) noexcept;
    CArena(const CArena&) = delete;
    CArena& operator=(const CArena&) = delete;
    ~CArena();

    /// Bytes aligned to `align` (a power of two up to 64). Throws std::bad_alloc when memory is
    /// out.
    [[nodiscard]] void* Allocate(std::size_t bytes, std::size_t align)
    {
        const std::uintptr_t start = (m_next + (align - 1)) & ~(std::uintptr_t{align} - 1);
        if (start + bytes > m_end || start < m_next) {
            return AllocateSlow(bytes, align);
        }
        m_next = start + bytes;
        return reinterpret_cast<void*>(start); // NOLINT(performance-no-int-to-ptr)
    }

    /// `count` objects of a trivial type, not initialised.
    template <class T>
    [[nodiscard]] T* AllocateArray(std::size_t count)
    {
        static_assert(std::is_trivially_destructible_v<T>);
        return static_cast<T*>(Allocate(count * sizeof(T), alignof(T)));
    }

    /// A copy of the text, without terminator.
    [[nodiscard]] std::string_view Copy(std::string_view text);

    /// Takes over all blocks of another arena; what it handed out stays valid and lives as long as
    /// this one.
    void Absorb(CArena&& other);

    [[nodiscard]] std::size_t BytesReserved() const { return m_reserved; }

private:
    struct SBlock
    {
        void* data;
        std::size_t bytes;
    };
    void* AllocateSlow(std::size_t bytes, std::size_t align);
    void Release() noexcept;

    std::uintptr_t m_next = 0;
    std::uintptr_t m_end = 0;
    std::size_t m_reserved = 0;
    std::vector<SBlock> m_blocks;
};

} // namespace zov
