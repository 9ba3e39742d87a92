// SPDX-License-Identifier: Apache-2.0
#include "sheet/CsvScanner.h"

#include "base/Text.h"

#include <algorithm>
#include <map>

namespace zov::sheet {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
// How far a quote that is not doubled may stand from the one that closes its cell.
constexpr std::size_t kStrayReach = 1024;

bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

// The quote at `at` closes its cell when a break or the end follows, blanks aside.
bool Closes(std::string_view text, std::size_t at, char separator)
{
    std::size_t next = at + 1;
    while (next < text.size() && text[next] == ' ' && next - at < 64) {
        ++next;
    }
    return next == text.size() || text[next] == separator || IsLineEnd(text[next]);
}

// The closing quote behind a stray one, on the same line.
std::size_t ClosingBehindStray(std::string_view text, std::size_t stray, char separator)
{
    const std::size_t limit = std::min(text.size(), stray + kStrayReach);
    for (std::size_t i = stray + 1; i < limit && !IsLineEnd(text[i]); ++i) {
        if (text[i] == '"' && Closes(text, i, separator)) {
            return i;
        }
    }
    return kNone;
}

SQuotedCell Finish(std::string_view text, std::size_t start, std::size_t close, char separator,
                   bool hasDoubled)
{
    SQuotedCell cell;
    cell.text = text.substr(start + 1, close - start - 1);
    cell.hasDoubled = hasDoubled;
    std::size_t end = close + 1;
    while (end < text.size() && text[end] != separator && !IsLineEnd(text[end])) {
        ++end;
    }
    cell.end = end;
    const std::string_view tail = text.substr(close + 1, end - close - 1);
    cell.tail = tail.find_first_not_of(' ') == kNone ? std::string_view{} : tail;
    return cell;
}

// Number of cells of the line at `pos`, which is moved behind it. Quotes hide breaks.
std::size_t CountCells(std::string_view text, std::size_t& pos, char separator)
{
    std::size_t cells = 1;
    bool atStart = true;
    while (pos < text.size()) {
        if (atStart && text[pos] == '"') {
            pos = ReadQuoted(text, pos, separator).end;
            atStart = false;
            continue;
        }
        const char c = text[pos++];
        if (IsLineEnd(c)) {
            break;
        }
        atStart = c == separator;
        cells += atStart ? 1 : 0;
    }
    return cells;
}

} // namespace

SQuotedCell ReadQuoted(std::string_view text, std::size_t start, char separator)
{
    bool hasDoubled = false;
    for (std::size_t at = text.find('"', start + 1); at != kNone; at = text.find('"', at + 1)) {
        if (at + 1 < text.size() && text[at + 1] == '"') {
            hasDoubled = true;
            ++at;
            continue;
        }
        if (Closes(text, at, separator)) {
            return Finish(text, start, at, separator, hasDoubled);
        }
        const std::size_t closing = ClosingBehindStray(text, at, separator);
        return Finish(text, start, closing == kNone ? at : closing, separator,
                      hasDoubled || closing != kNone);
    }
    SQuotedCell cell;
    cell.isPlain = true;
    cell.end = start;
    while (cell.end < text.size() && text[cell.end] != separator && !IsLineEnd(text[cell.end])) {
        ++cell.end;
    }
    cell.text = text.substr(start, cell.end - start);
    return cell;
}

std::string Unquoted(const SQuotedCell& cell)
{
    std::string out;
    out.reserve(cell.text.size() + cell.tail.size());
    for (std::size_t i = 0; i < cell.text.size(); ++i) {
        const char c = cell.text[i];
        const char next = i + 1 < cell.text.size() ? cell.text[i + 1] : '\0';
        if (c == '\r') {
            if (next != '\n') {
                out += '\n';
            }
            continue;
        }
        out += c;
        i += c == '"' && next == '"' ? 1 : 0;
    }
    out += cell.tail;
    return out;
}

char SniffSeparator(std::string_view text)
{
    constexpr std::size_t kMaxLines = 200;
    constexpr std::size_t kMaxBytes = 65536;
    constexpr char kCandidates[] = {'\t', ';', '|', ','};
    const bool cut = text.size() > kMaxBytes;
    const std::string_view sample = text.substr(0, kMaxBytes);
    char best = ',';
    std::size_t bestLines = 0;
    for (char candidate : kCandidates) {
        std::map<std::size_t, std::size_t> linesByCells;
        std::size_t pos = 0;
        for (std::size_t line = 0; line < kMaxLines && pos < sample.size(); ++line) {
            const std::size_t cells = CountCells(sample, pos, candidate);
            if (cells > 1 && (!cut || pos < sample.size() || line == 0)) {
                ++linesByCells[cells];
            }
        }
        for (const auto& [cells, lines] : linesByCells) {
            if (lines > bestLines) {
                bestLines = lines;
                best = candidate;
            }
        }
    }
    return best;
}

} // namespace zov::sheet
