// SPDX-License-Identifier: Apache-2.0
/// Lines of a file as the format's readers have always cut them: through a buffer of 1024 bytes, so
/// that a longer line goes on in the next read. Nothing is copied; only a line with an illegal
/// character is rebuilt with a blank in its place.
///
///     CLineReader lines(bytes, arena);
///     SRawLine line;
///     while (lines.Next('|', line, onIllegal)) { ... }
#pragma once

#include "base/Arena.h"
#include "ibischk/Types.h"

#include <cstddef>
#include <string_view>

namespace zov::ibischk {

/// Characters that one read takes: the buffer less its terminator.
constexpr std::size_t kReadLength = 1023;

struct SIllegalCharacter
{
    SPlace place;
    unsigned char code = 0;
    bool bufferFull = false; ///< it took the last place of the buffer
};

/// Takes illegal characters as they are met.
class CIllegalSink
{
public:
    CIllegalSink() = default;
    CIllegalSink(const CIllegalSink&) = delete;
    CIllegalSink& operator=(const CIllegalSink&) = delete;
    virtual ~CIllegalSink() = default;
    virtual void Illegal(const SIllegalCharacter& found) = 0;
};

/// What one read gives. The text lives as long as the file's bytes and the arena.
struct SRawLine
{
    std::string_view text;        ///< without its line end
    std::size_t line = 0;         ///< number of the line in the file, from 1
    std::size_t columnBefore = 0; ///< characters of the line in earlier reads
    std::size_t length = 0;       ///< of the whole line; one more than 1024 when it is longer still
    const char* comment = nullptr; ///< first comment character in the text
    bool hasTab = false;
    bool firstPiece = true;
    bool hasLineFeed = false; ///< the line ends here, and not only because the file does
};

class CLineReader
{
public:
    /// Both must outlive the reader and what it hands out.
    CLineReader(std::string_view bytes, CArena& arena)
        : m_next(bytes.data())
        , m_end(bytes.data() + bytes.size())
        , m_arena(&arena)
    {
    }

    /// The next read; false at the end of the file.
    bool Next(char comment, SRawLine& out, CIllegalSink& illegal);

    /// The next read begins a new line.
    [[nodiscard]] bool AtLineEnd() const { return !m_midLine; }
    /// The first byte that was not read yet.
    [[nodiscard]] const char* Position() const { return m_next; }
    /// Lines met so far.
    [[nodiscard]] std::size_t LineNumber() const { return m_line; }

private:
    const char* Rebuild(char comment, const char* start, const char* stop, SRawLine& out,
                        CIllegalSink& illegal);
    void Finish(const char* after, std::size_t pieceLength, SRawLine& out);

    const char* m_next;
    const char* m_end;
    CArena* m_arena;
    std::size_t m_line = 0;
    std::size_t m_columnBefore = 0;
    bool m_midLine = false;
};

} // namespace zov::ibischk
