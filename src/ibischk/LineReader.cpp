// SPDX-License-Identifier: Apache-2.0
#include "ibischk/LineReader.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zov::ibischk {

namespace {

constexpr char kCtrlZ = 26;

/// Below 32 or above 127: everything that ends a line, needs a blank in its place or is a tab.
constexpr bool IsSpecial(char c)
{
    return static_cast<signed char>(c) < 32;
}

/// First special or comment character in [at, stop), or stop.
const char* FindSpecial(const char* at, const char* stop, char comment)
{
#if defined(__SSE2__)
    const __m128i blank = _mm_set1_epi8(32);
    const __m128i mark = _mm_set1_epi8(comment);
    for (; stop - at >= 16; at += 16) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i hit = _mm_or_si128(_mm_cmplt_epi8(chunk, blank), _mm_cmpeq_epi8(chunk, mark));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hit));
        if (mask != 0) {
            return at + std::countr_zero(mask);
        }
    }
#endif
    for (; at != stop; ++at) {
        if (IsSpecial(*at) || *at == comment) {
            return at;
        }
    }
    return stop;
}

/// What stands at a special character of the file.
enum class EEnd
{
    None,
    LineFeed,
    FileEnd
};

EEnd LineEndAt(const char* at, const char* end, std::size_t& bytes)
{
    if (*at == '\n') {
        bytes = 1;
        return EEnd::LineFeed;
    }
    if (*at == '\r' && end - at > 1 && at[1] == '\n') {
        bytes = 2;
        return EEnd::LineFeed;
    }
    if (*at == kCtrlZ && end - at == 1) {
        bytes = 1;
        return EEnd::FileEnd;
    }
    return EEnd::None;
}

} // namespace

void CLineReader::Finish(const char* after, std::size_t pieceLength, SRawLine& out)
{
    // A read that stops in the middle of a line; when nothing but the line end is left of it, the
    // rest is not worth a read of its own.
    std::size_t bytes = 0;
    const EEnd ending = after != m_end ? LineEndAt(after, m_end, bytes) : EEnd::FileEnd;
    out.hasLineFeed = ending == EEnd::LineFeed;
    if (ending != EEnd::None) {
        after += bytes;
        m_midLine = false;
    } else {
        m_midLine = true;
    }
    m_next = after;
    out.length = m_columnBefore + pieceLength;
    if (m_midLine) {
        // Whether the line keeps within the longest limit shows in its next two characters.
        const char* look = after + 1;
        const bool endsNext = look >= m_end || LineEndAt(look, m_end, bytes) != EEnd::None;
        out.length += endsNext ? 1U : 2U;
        m_columnBefore += pieceLength;
    } else {
        m_columnBefore = 0;
    }
}

/// Copies [start, stop) character by character, telling what is illegal.
/// @return where the read stopped in the file
const char* CLineReader::Rebuild(char comment, const char* start, const char* stop, SRawLine& out,
                                 CIllegalSink& illegal)
{
    const auto room = static_cast<std::size_t>(stop - start);
    char* const copy = m_arena->AllocateArray<char>(room);
    out.comment = nullptr;
    std::size_t length = 0;
    const char* at = start;
    std::size_t bytes = 0;
    // A line end takes no place when a carriage return is dropped, so `stop` bounds what is kept.
    for (; at != stop && LineEndAt(at, m_end, bytes) == EEnd::None; ++at) {
        char c = *at;
        if (IsSpecial(c) && c != '\t') {
            illegal.Illegal({{m_line, m_columnBefore + length + 1},
                             static_cast<unsigned char>(c),
                             length + 1 == kReadLength});
            c = ' ';
        }
        out.hasTab = out.hasTab || c == '\t';
        if (c == comment && out.comment == nullptr) {
            out.comment = copy + length;
        }
        copy[length++] = c;
    }
    out.text = {copy, length};
    return at;
}

bool CLineReader::Next(char comment, SRawLine& out, CIllegalSink& illegal)
{
    const char* const start = m_next;
    if (start == m_end) {
        return false;
    }
    out.firstPiece = !m_midLine;
    if (out.firstPiece) {
        ++m_line;
    }
    out.line = m_line;
    out.columnBefore = m_columnBefore;
    out.comment = nullptr;
    out.hasTab = false;
    const char* const stop =
        start + std::min<std::size_t>(kReadLength, static_cast<std::size_t>(m_end - start));

    const char* at = FindSpecial(start, stop, comment);
    while (at != stop) {
        std::size_t bytes = 0;
        if (!IsSpecial(*at)) {
            if (out.comment == nullptr) {
                out.comment = at;
            }
        } else if (*at == '\t') {
            out.hasTab = true;
        } else if (LineEndAt(at, m_end, bytes) != EEnd::None) {
            break;
        } else {
            at = Rebuild(comment, start, stop, out, illegal);
            Finish(at, out.text.size(), out);
            return true;
        }
        // Behind the first comment character only special ones matter.
        at = FindSpecial(at + 1, stop, out.comment != nullptr ? '\n' : comment);
    }
    out.text = {start, static_cast<std::size_t>(at - start)};
    Finish(at, out.text.size(), out);
    return true;
}

} // namespace zov::ibischk
