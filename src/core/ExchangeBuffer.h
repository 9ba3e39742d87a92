// SPDX-License-Identifier: Apache-2.0
/// Text on its way to a file: one buffer, nothing allocated while it is filled. A second buffer
/// that another thread writes out was tried: on a busy machine waiting for that thread costs more
/// than it saves.
#pragma once

#include "base/File.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace zov {

class CExchangeBuffer
{
public:
    explicit CExchangeBuffer(CByteWriter& out);

    template <std::size_t N>
    void Literal(const char (&text)[N]) // NOLINT: the length of a literal is known
    {
        MakeRoom(N);
        std::memcpy(m_next, text, N - 1);
        m_next += N - 1;
    }
    /// The text as it stands. False when it holds a quote, an ampersand or an angle bracket.
    bool Text(std::string_view text);
    /// "%g"
    void Number(double value);
    void Flush();

private:
    static constexpr std::size_t kBytes = (std::size_t{1} << 20U) + (std::size_t{64} << 10U);

    void MakeRoom(std::size_t bytes)
    {
        if (static_cast<std::size_t>(m_end - m_next) < bytes) {
            Flush();
        }
    }
    bool LongText(std::string_view text);

    CByteWriter& m_out;
    std::unique_ptr<char[]> m_buffer; // NOLINT: written before it is read, so not set to zero
    char* m_next;
    char* m_end;
};

/// "%g" of the value into a buffer of at least 32 characters; returns the end.
char* WriteShortG(char* out, double value);

} // namespace zov
