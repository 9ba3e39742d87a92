// SPDX-License-Identifier: Apache-2.0
#include "sheet/ReadAhead.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace zov::sheet {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{128} << 10U;
constexpr std::size_t kBlocks = 4;

struct SBlock
{
    std::vector<char> bytes;
    CResult<std::size_t> outcome{std::size_t{0}}; ///< how many bytes, 0 at the end
};

} // namespace

struct CReadAhead::SState
{
    std::unique_ptr<CByteSource> source;
    std::array<SBlock, kBlocks> blocks;
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t filled = 0;  ///< blocks read so far, by the thread
    std::size_t emptied = 0; ///< blocks given back so far, by the reader
    bool stop = false;
    std::size_t used = 0; ///< bytes of the current block, by the reader alone
    std::thread thread;

    void Work()
    {
        for (bool more = true; more;) {
            {
                std::unique_lock lock(mutex);
                changed.wait(lock, [&] { return stop || filled - emptied < kBlocks; });
                if (stop) {
                    return;
                }
            }
            SBlock& block = blocks[filled % kBlocks];
            block.outcome = source->Read(block.bytes.data(), block.bytes.size());
            more = block.outcome.Ok() && *block.outcome > 0;
            {
                const std::lock_guard lock(mutex);
                ++filled;
            }
            changed.notify_one();
        }
    }
};

CReadAhead::CReadAhead(std::unique_ptr<CByteSource> source)
    : m_state(std::make_unique<SState>())
{
    m_state->source = std::move(source);
    for (SBlock& block : m_state->blocks) {
        block.bytes.resize(kBlockBytes);
    }
    try {
        m_state->thread = std::thread([state = m_state.get()] { state->Work(); });
    } catch (const std::system_error&) {
        // No thread to be had: Read goes to the source itself.
    }
}

CReadAhead::~CReadAhead()
{
    if (m_state->thread.joinable()) {
        {
            const std::lock_guard lock(m_state->mutex);
            m_state->stop = true;
        }
        m_state->changed.notify_one();
        m_state->thread.join();
    }
}

CResult<std::size_t> CReadAhead::Read(char* buffer, std::size_t size)
{
    SState& state = *m_state;
    if (!state.thread.joinable()) {
        return state.source->Read(buffer, size);
    }
    {
        std::unique_lock lock(state.mutex);
        state.changed.wait(lock, [&] { return state.filled > state.emptied; });
    }
    SBlock& block = state.blocks[state.emptied % kBlocks];
    if (!block.outcome.Ok() || *block.outcome == 0) {
        return block.outcome; // stays as it is: the end and an error can be read again
    }
    const std::size_t count = std::min(size, *block.outcome - state.used);
    std::memcpy(buffer, block.bytes.data() + state.used, count);
    state.used += count;
    if (state.used == *block.outcome) {
        state.used = 0;
        {
            const std::lock_guard lock(state.mutex);
            ++state.emptied;
        }
        state.changed.notify_one();
    }
    return count;
}

} // namespace zov::sheet
