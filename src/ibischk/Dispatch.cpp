// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Dispatch.h"

#include "base/Text.h"
#include "ibischk/Guard.h"
#include "ibischk/IllegalReport.h"
#include "ibischk/cmn.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kKeywordLimit = 1021;
/// Lines between two questions whether to go on: a few milliseconds.
constexpr std::size_t kStepLines = 4096;
constexpr const char* kModule = "ibischk/parse";

/// Nothing can be made of data here.
void DataOfNothing(SCheck& check, const SLine& line)
{
    check.report.ErrorAt(line.Place(), 907, line.text);
}

bool HasFreeText(EKeyword code)
{
    return code >= EKeyword::Source && code <= EKeyword::Copyright;
}

bool IsCommentCharKeyword(std::string_view text)
{
    return StartsWithNoCase(text, "[COMMENT_CHAR]") || StartsWithNoCase(text, "[COMMENT CHAR]");
}

std::string_view TrimBack(std::string_view text)
{
    while (!text.empty() && IsSpaceOrTab(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::size_t SkipBlanks(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && IsSpaceOrTab(text[i])) {
        ++i;
    }
    return i;
}

} // namespace

CDispatcher::CDispatcher(SCheck& check)
    : m_check(check)
    , m_state(check.state)
    , m_report(check.report)
    , m_data(&DataOfNothing)
    , m_lineLimit(LimitsOf(check.state.version).line)
{
}

void CDispatcher::Run(std::string_view bytes)
{
    CIllegalReport illegal(m_report);
    CLineReader reader(bytes, m_check.arena);
    SRawLine raw;
    SCheck& first = m_check.First();
    while (reader.Next(m_state.comment, raw, illegal)) {
        m_state.line = raw.line;
        Classify(raw);
        if (++first.steps >= kStepLines &&
            !Ask(static_cast<double>(reader.Position() - bytes.data()) /
                 static_cast<double>(bytes.size()))) {
            return;
        }
    }
    if (!m_state.endSeen && !first.stopped) {
        m_report.Error(903);
        constexpr std::string_view kEnd = "[END]";
        Keyword({kEnd, m_state.line, kEnd.data(), 0});
    }
}

/// Whether to go on. A file that another names is no share of its own.
bool CDispatcher::Ask(double share)
{
    SCheck& first = m_check.First();
    first.steps = 0;
    if (&first == &m_check) {
        first.share = share;
    }
    first.stopped = first.stopped || (first.progress != nullptr && !(*first.progress)(first.share));
    return !first.stopped;
}

void CDispatcher::Classify(const SRawLine& raw)
{
    if (raw.firstPiece) {
        m_inComment = false;
        if (raw.length > m_lineLimit && !m_state.wholeFile) {
            m_report.ErrorAt({raw.line, m_lineLimit + 1}, 905, m_lineLimit);
        }
    }
    if (raw.hasTab && !m_state.tabReported) {
        m_state.tabReported = true;
        m_report.WarningAt({raw.line, raw.columnBefore + raw.text.find('\t') + 1}, 921);
    }
    if (m_inComment) {
        return;
    }
    m_inComment = raw.comment != nullptr;
    const std::size_t indent = SkipBlanks(raw.text);
    if (indent == raw.text.size() || raw.text[indent] == m_state.comment) {
        return;
    }
    SLine line{raw.text.substr(indent), raw.line, raw.text.data(), raw.columnBefore};
    bool isKeyword = line.text.front() == '[';
    if (isKeyword && indent + raw.columnBefore != 0) {
        if (HasFreeText(m_state.current)) {
            isKeyword = false;
        } else {
            m_report.ErrorAt(line.Place(), 906);
        }
    }
    if (m_state.endSeen) {
        m_report.ErrorAt(line.Place(), 902);
        return;
    }
    if (isKeyword && IsCommentCharKeyword(line.text)) {
        CommentChar(line);
        return;
    }
    if (raw.comment != nullptr) {
        line.text = line.text.substr(0, static_cast<std::size_t>(raw.comment - line.text.data()));
    }
    line.text = TrimBack(line.text);
    if (isKeyword) {
        Keyword(line);
    } else {
        m_data(m_check, line);
    }
}

/// The line is read before its comment is cut off: it may name the character that is in force.
void CDispatcher::CommentChar(const SLine& line)
{
    constexpr std::string_view kTaken =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ[]._/=+-";
    constexpr std::string_view kTail = "_char";
    m_inComment = false;
    CTokens tokens(line.text.substr(std::string_view("[COMMENT_CHAR]").size()));
    const std::string_view token = tokens.Next();
    if (token.size() != kTail.size() + 1 || !EqualsNoCase(token.substr(1), kTail)) {
        m_report.ErrorAt(line.Place(token.empty() ? line.text : token), 917);
        return;
    }
    if (kTaken.find(token.front()) != std::string_view::npos) {
        m_report.ErrorAt(line.Place(token), 918, token.front());
        return;
    }
    m_state.comment = token.front();
    if (!tokens.AtEnd() && tokens.Rest().front() != m_state.comment) {
        m_report.ErrorAt(line.Place(tokens.Rest()), 919);
    }
}

EKeyword CDispatcher::Recognise(const SLine& line, SLine& rest)
{
    const std::size_t close = line.text.find(']');
    if (close == std::string_view::npos) {
        m_report.ErrorAt(line.Place(), 914);
        return EKeyword::NotKey;
    }
    const std::string_view name = line.text.substr(1, close - 1);
    if (name.empty() || name.size() > kKeywordLimit) {
        m_report.ErrorAt(line.Place(), 915);
        return EKeyword::NotKey;
    }
    rest.text = line.text.substr(close + 1);
    rest.text.remove_prefix(SkipBlanks(rest.text));
    const EKeyword found = FindKeyword(name);
    if (found == EKeyword::NotKey || found == EKeyword::CommentChar) {
        m_report.ErrorAt(line.Place(), 916, name);
        return EKeyword::NotKey;
    }
    return MapByContext(found, m_state.current, m_state.fileType, m_state.submodelOpen);
}

void CDispatcher::Keyword(const SLine& line)
{
    if (m_state.unterminated) {
        m_state.unterminated = false;
        m_report.ErrorAt(line.Place(), 909);
    }
    SLine rest = line;
    rest.text = {};
    const EKeyword code = Recognise(line, rest);
    if (m_close != nullptr) {
        m_close(m_check);
        m_close = nullptr;
    }
    m_state.current = code;
    m_state.keywordPlace = line.Place();
    m_data = &PassOver;
    if (code == EKeyword::NotKey) {
        m_data = &DataOfNothing;
        return;
    }
    if (!m_state.versionSeen && code != EKeyword::IBISVer) {
        m_state.versionSeen = true;
        m_report.ErrorAt(line.Place(), 1007);
    }
    const SKeyword& row = KeywordRow(code);
    m_report.Path().table = row.shown;
    if (code == EKeyword::End) {
        End(rest);
    } else if (Belongs(row)) {
        Open(row, rest);
    }
}

/// Puts the keyword into its section, which it may open or end.
/// @return false when it can't stand here
bool CDispatcher::Belongs(const SKeyword& row)
{
    const bool isPart = row.role != ERole::Opener && row.scope != EScope::File;
    if (isPart && m_state.refused != EScope::None) {
        if (row.scope == m_state.refused || row.scope != m_state.scope) {
            return false;
        }
        m_state.refused = EScope::None;
    }
    if (!m_state.AtLeast(row.since)) {
        m_report.ErrorAt(m_state.keywordPlace, 926, row.shown, VersionText(m_state.version),
                         VersionText(row.since));
        m_state.refused = row.role == ERole::Opener ? row.scope : m_state.refused;
        return false;
    }
    if (row.scope == EScope::File) {
        CountKeyword(row);
        return true;
    }
    if (row.role == ERole::Opener) {
        OpenSection(row);
        return m_state.refused == EScope::None;
    }
    return row.role == ERole::Closer ? EndSectionByKeyword(row) : PlaceInSection(row);
}

void CDispatcher::OpenSection(const SKeyword& row)
{
    m_state.bodySeen = true;
    ++m_state.seenInFile[static_cast<std::size_t>(row.code)];
    if (!AllowedInFile(row.code, m_state.fileType)) {
        m_state.refused = row.scope;
        if (row.code == EKeyword::ExternalCircuit || m_state.fileType == EFileType::Pkg) {
            m_report.ErrorAt(m_state.keywordPlace, 911);
        } else if (m_state.fileType == EFileType::Ebd) {
            m_report.ErrorAt(m_state.keywordPlace, 912);
        } else {
            m_report.ErrorAt(m_state.keywordPlace, 913, ExtensionOf(m_state.fileType));
        }
        return;
    }
    EndSection(row.code);
    m_state.refused = EScope::None;
    m_state.scope = row.scope;
    m_state.sectionPlace = m_state.keywordPlace;
    m_state.submodelOpen = row.scope == EScope::Submodel;
    m_state.seenInSection = {};
    m_state.seenInSection[static_cast<std::size_t>(row.code)] = 1;
    m_report.Path() = {{}, {}, row.shown, {}};
    if (BlockOpenedBy(row.code) != nullptr) {
        m_state.blocks[0] = row.code;
        m_state.blockPlaces[0] = m_state.keywordPlace;
        m_state.blockDepth = 1;
    }
}

/// Ends what is open because `next` begins something else.
void CDispatcher::EndSection(EKeyword next)
{
    while (m_state.blockDepth > 0) {
        PopBlock(next);
    }
    if (m_state.scope != EScope::None) {
        const EScope scope = m_state.scope;
        CloseSection(m_check, scope);
    }
    m_state.scope = EScope::None;
    m_state.submodelOpen = false;
    m_report.Path() = {};
}

/// Takes the innermost block off, which has no closing keyword.
void CDispatcher::PopBlock(EKeyword next)
{
    --m_state.blockDepth;
    const SBlock* block =
        Guarded(BlockOpenedBy(m_state.blocks[m_state.blockDepth]), kModule, __LINE__);
    if (block->open == next) {
        m_report.ErrorAt(m_state.keywordPlace, block->nestedCode, KeywordText(next),
                         KeywordText(block->open));
    } else {
        m_report.ErrorAt(m_state.blockPlaces[m_state.blockDepth], block->unclosedCode,
                         KeywordText(block->open), KeywordText(block->close));
    }
}

bool CDispatcher::EndSectionByKeyword(const SKeyword& row)
{
    const SBlock* block = Guarded(BlockClosedBy(row.code), kModule, __LINE__);
    if (m_state.scope != row.scope) {
        m_report.ErrorAt(m_state.keywordPlace, block->unopenedCode, row.shown,
                         KeywordText(block->open));
        return false;
    }
    while (m_state.blockDepth > 1) {
        PopBlock(row.code);
    }
    m_state.blockDepth = 0;
    return true;
}

bool CDispatcher::PlaceInSection(const SKeyword& row)
{
    const bool shared = m_state.scope == EScope::Submodel && SharedBySubmodel(row.code);
    if (row.scope != m_state.scope && !shared) {
        m_report.ErrorAt(m_state.keywordPlace, 1940, row.shown, KeywordText(OpenerOf(row.scope)));
        return false;
    }
    if (!EnterBlock(row)) {
        return false;
    }
    CountKeyword(row);
    return true;
}

/// Leaves the blocks that the keyword is no part of, and enters the one that it opens.
bool CDispatcher::EnterBlock(const SKeyword& row)
{
    // The section itself is the outermost block where it has a closing keyword.
    const std::size_t floor = BlockOpenedBy(OpenerOf(row.scope)) != nullptr ? 1 : 0;
    if (const SBlock* closes = BlockClosedBy(row.code); closes != nullptr) {
        const auto first = m_state.blocks.begin();
        const auto last = first + static_cast<std::ptrdiff_t>(m_state.blockDepth);
        if (std::find(first, last, closes->open) == last) {
            m_report.ErrorAt(m_state.keywordPlace, closes->unopenedCode, row.shown,
                             KeywordText(closes->open));
            return false;
        }
        while (m_state.blocks[m_state.blockDepth - 1] != closes->open) {
            PopBlock(row.code);
        }
        --m_state.blockDepth;
        return true;
    }
    while (m_state.blockDepth > floor && m_state.blocks[m_state.blockDepth - 1] != row.inside) {
        PopBlock(row.code);
    }
    if (row.inside != EKeyword::NotKey && m_state.blockDepth == floor) {
        m_report.ErrorAt(m_state.keywordPlace, 1940, row.shown, KeywordText(row.inside));
        return false;
    }
    if (BlockOpenedBy(row.code) != nullptr && m_state.blockDepth < kMaxBlockDepth) {
        m_state.blocks[m_state.blockDepth] = row.code;
        m_state.blockPlaces[m_state.blockDepth] = m_state.keywordPlace;
        ++m_state.blockDepth;
    }
    return true;
}

void CDispatcher::CountKeyword(const SKeyword& row)
{
    const auto at = static_cast<std::size_t>(row.code);
    const std::uint32_t inFile = ++m_state.seenInFile[at];
    const std::uint32_t times = row.scope == EScope::File ? inFile : ++m_state.seenInSection[at];
    if (times > 1 && row.often != EOften::Many) {
        m_report.At(row.often == EOften::Error ? EReport::Error : EReport::Warning,
                    m_state.keywordPlace, 1911, row.shown);
    }
}

void CDispatcher::Open(const SKeyword& row, const SLine& rest)
{
    if (row.argument == EArgument::None && !rest.text.empty()) {
        m_report.WarningAt(rest.Place(), 1938, rest.text, row.shown);
    }
    const SHandler& handler = HandlerOf(row.code);
    if (handler.keyword != row.code) {
        m_report.BugAt(m_state.keywordPlace, 908, kModule, __LINE__);
        return;
    }
    m_data = handler.data != nullptr ? handler.data : &DataOfNothing;
    m_close = handler.close;
    if (handler.open != nullptr) {
        handler.open(m_check, rest);
    }
    if (row.role == ERole::Closer) {
        EndSection(row.code);
    }
}

void CDispatcher::End(const SLine& rest)
{
    EndSection(EKeyword::End);
    m_state.refused = EScope::None;
    if (!rest.text.empty()) {
        m_report.ErrorAt(rest.Place(), 920);
    }
    m_state.endSeen = true;
    m_report.Path() = {};
    FinishFamilies(m_check);
    m_report.Path() = {};
}

} // namespace zov::ibischk
