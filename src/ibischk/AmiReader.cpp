// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiReader.h"

#include "ibischk/IllegalReport.h"
#include "ibischk/LineReader.h"

#include <algorithm>
#include <new>

namespace zov::ibischk {

namespace {

constexpr char kComment = '|';

/// Puts the modes of a parameter tree in place of those of the caller, who may be in the middle of
/// another file.
class CWholeFileMode
{
public:
    explicit CWholeFileMode(SCheckState& state)
        : m_state(state)
        , m_type(state.fileType)
        , m_wholeFile(state.wholeFile)
    {
        state.wholeFile = true;
        state.inQuotes = false;
        state.comment = kComment;
    }
    ~CWholeFileMode()
    {
        m_state.fileType = m_type;
        m_state.wholeFile = m_wholeFile;
    }
    CWholeFileMode(const CWholeFileMode&) = delete;
    CWholeFileMode& operator=(const CWholeFileMode&) = delete;

private:
    SCheckState& m_state;
    EFileType m_type;
    bool m_wholeFile;
};

/// The part of a text before a comment that stands outside strings.
/// @param quoteLine  set to `line` where a string opens
std::string_view UsefulPart(std::string_view text, std::size_t line, bool& inQuotes,
                            std::size_t& quoteLine)
{
    for (std::size_t i = text.find_first_of("\"|"); i != std::string_view::npos;
         i = text.find_first_of("\"|", i + 1)) {
        if (text[i] == '"') {
            inQuotes = !inQuotes;
            quoteLine = inQuotes ? line : quoteLine;
        } else if (!inQuotes) {
            return text.substr(0, i);
        }
    }
    return text;
}

/// Room for all that the file can give; false when there is not that much memory.
bool MakeRoom(SAmiText& out, std::string_view bytes)
{
    try {
        out.text.reserve(bytes.size() + 1);
        out.lineStarts.reserve(static_cast<std::size_t>(std::ranges::count(bytes, '\n')) + 1);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace

std::size_t SAmiText::LineAt(std::size_t offset) const
{
    const auto after = std::ranges::upper_bound(lineStarts, offset);
    return std::max<std::size_t>(1, static_cast<std::size_t>(after - lineStarts.begin()));
}

SPlace SAmiText::Place(std::string_view part) const
{
    const auto offset = static_cast<std::size_t>(part.data() - text.data());
    const std::size_t line = LineAt(offset);
    return {line, lineStarts.empty() ? 1 : offset - lineStarts[line - 1] + 1};
}

std::optional<SAmiText> ReadAmiText(SCheck& check, std::string_view bytes)
{
    const CWholeFileMode mode(check.state);
    CIllegalReport illegal(check.report);
    CLineReader reader(bytes, check.arena);
    SAmiText out;
    if (!MakeRoom(out, bytes)) {
        check.report.Error(922, "ibischk/parse", __LINE__);
        return std::nullopt;
    }
    std::size_t quoteLine = 0;
    bool inComment = false;
    SRawLine raw;
    while (reader.Next(kComment, raw, illegal)) {
        check.state.line = raw.line;
        if (raw.firstPiece) {
            inComment = false;
            out.lineStarts.push_back(out.text.size());
        }
        if (!inComment) {
            const std::string_view useful =
                UsefulPart(raw.text, raw.line, check.state.inQuotes, quoteLine);
            inComment = useful.size() < raw.text.size();
            out.text += useful;
        }
        // A comment becomes one blank together with its line end.
        if (raw.hasLineFeed || (inComment && reader.AtLineEnd())) {
            out.text += ' ';
        }
    }
    if (check.state.inQuotes) {
        check.report.Error(924, quoteLine);
        check.report.Error(925);
        return std::nullopt;
    }
    return out;
}

} // namespace zov::ibischk
