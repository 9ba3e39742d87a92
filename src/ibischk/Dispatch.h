// SPDX-License-Identifier: Apache-2.0
/// From a line to the family that it belongs to: classes of lines, recognition and placement of
/// keywords.
#pragma once

#include "ibischk/Check.h"
#include "ibischk/Family.h"
#include "ibischk/LineReader.h"

#include <string_view>

namespace zov::ibischk {

/// Sends the lines of one file through the families. The version must be set in the check's state.
class CDispatcher
{
public:
    explicit CDispatcher(SCheck& check);

    /// All lines, [End] or what stands for it, and the checks of the whole file. Ends early when
    /// the check is stopped.
    void Run(std::string_view bytes);

private:
    [[nodiscard]] bool Ask(double share);
    void Classify(const SRawLine& raw);
    void CommentChar(const SLine& line);
    void Keyword(const SLine& line);
    void End(const SLine& rest);

    EKeyword Recognise(const SLine& line, SLine& rest);
    bool Belongs(const SKeyword& row);
    void OpenSection(const SKeyword& row);
    void EndSection(EKeyword next);
    bool EndSectionByKeyword(const SKeyword& row);
    bool PlaceInSection(const SKeyword& row);
    bool EnterBlock(const SKeyword& row);
    void PopBlock(EKeyword next);
    void CountKeyword(const SKeyword& row);
    void Open(const SKeyword& row, const SLine& rest);

    SCheck& m_check;
    SCheckState& m_state;
    CReport& m_report;
    FLine m_data;
    FStep m_close = nullptr; ///< of the current keyword, when it was opened
    std::size_t m_lineLimit;
    bool m_inComment = false; ///< the line goes on in a comment
};

} // namespace zov::ibischk
