// SPDX-License-Identifier: Apache-2.0
#include "base/Arena.h"

#include <algorithm>
#include <new>
#include <utility>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace zov {

namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20U;
constexpr std::size_t kFirstBlock = std::size_t{64} << 10U;
constexpr std::size_t kLargestBlock = std::size_t{32} << 20U;

} // namespace

CArena::CArena(CArena&& other) noexcept
    : m_next(std::exchange(other.m_next, 0))
    , m_end(std::exchange(other.m_end, 0))
    , m_reserved(std::exchange(other.m_reserved, 0))
    , m_blocks(std::exchange(other.m_blocks, {}))
{
}

CArena& CArena::operator=(CArena&& other) noexcept
{
    if (this != &other) {
        Release();
        m_next = std::exchange(other.m_next, 0);
        m_end = std::exchange(other.m_end, 0);
        m_reserved = std::exchange(other.m_reserved, 0);
        m_blocks = std::exchange(other.m_blocks, {});
    }
    return *this;
}

CArena::~CArena()
{
    Release();
}

void CArena::Release() noexcept
{
    for (const SBlock& block : m_blocks) {
        ::operator delete (block.data,
                           std::align_val_t{block.bytes >= kLargePage ? kLargePage : 64});
    }
    m_blocks.clear();
}

void* CArena::AllocateSlow(std::size_t bytes, std::size_t align)
{
    // Blocks double from small (a library of ten records stays small) to a size at which their
    // number no longer matters.
    std::size_t size =
        m_blocks.empty() ? kFirstBlock : std::min(m_blocks.back().bytes * 2, kLargestBlock);
    size = std::max(size, bytes + align);
    if (size > kLargePage / 2) {
        size = (size + kLargePage - 1) / kLargePage * kLargePage;
    }
    m_blocks.reserve(m_blocks.size() + 1);
    void* data = ::operator new (size, std::align_val_t{size >= kLargePage ? kLargePage : 64});
#if defined(__linux__)
    if (size >= kLargePage) {
        madvise(data, size, MADV_HUGEPAGE);
    }
#endif
    m_blocks.push_back({data, size});
    m_reserved += size;
    m_next = reinterpret_cast<std::uintptr_t>(data);
    m_end = m_next + size;
    return Allocate(bytes, align);
}

std::string_view CArena::Copy(std::string_view text)
{
    if (text.empty()) {
        return {};
    }
    char* copy = AllocateArray<char>(text.size());
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

void CArena::Absorb(CArena&& other)
{
    m_blocks.insert(m_blocks.begin(), other.m_blocks.begin(), other.m_blocks.end());
    m_reserved += other.m_reserved;
    other.m_blocks.clear();
    other = CArena();
}

} // namespace zov
