// SPDX-License-Identifier: Apache-2.0
/// A source that is read by a thread of its own, a few blocks ahead of its reader: unpacking a
/// large sheet takes as long as looking at its cells, and so both go on at once.
#pragma once

#include "sheet/XmlScanner.h"

#include <memory>

namespace zov::sheet {

class CReadAhead final : public CByteSource
{
public:
    /// Reads the source from now on; nobody else may.
    explicit CReadAhead(std::unique_ptr<CByteSource> source);
    CReadAhead(const CReadAhead&) = delete;
    CReadAhead& operator=(const CReadAhead&) = delete;
    /// Waits for the thread, which stops at its next block.
    ~CReadAhead() override;

    CResult<std::size_t> Read(char* buffer, std::size_t size) override;

private:
    struct SState;
    std::unique_ptr<SState> m_state;
};

} // namespace zov::sheet
