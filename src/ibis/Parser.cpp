// SPDX-License-Identifier: Apache-2.0
#include "ibis/Parser.h"

#include "base/Text.h"
#include "ibis/Forms.h"

#include <cstring>

namespace zov::ibis {

namespace {

/// Keywords without a class that get an object each; those beyond that follow another are lines of
/// it, so that a file of such keywords takes little more than its size.
constexpr std::size_t kSingleUnknown = 1000;
/// Lines between two questions whether to go on, a power of two.
constexpr std::size_t kStepLines = 4096;
/// Ctrl-Z, with which old programs end a file. Anywhere else it is a character like others.
constexpr char kEndOfText = '\x1a';

bool IsSparse(const CIPDataObject& container)
{
    const auto* matrix = dynamic_cast<const CIPDataRLCMatrix*>(&container);
    return matrix != nullptr && matrix->Kind() == EIPMatrix::Sparse;
}

} // namespace

bool HasFreeText(EIPKeyword keyword)
{
    return keyword >= EIPKeyword::Source && keyword <= EIPKeyword::Copyright;
}

char DefinedComment(std::string_view word)
{
    constexpr std::string_view kTaken =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ[]._/=+-";
    const bool good = word.size() == 6 && EqualsNoCase(word.substr(1), "_char") &&
                      kTaken.find(word.front()) == std::string_view::npos;
    return good ? word.front() : '\0';
}

std::string_view TakeBracketed(std::string_view& text)
{
    const std::size_t close = text.find(']');
    if (close == std::string_view::npos) {
        return {};
    }
    const std::string_view name = text.substr(1, close - 1);
    text = TrimLine(text.substr(close + 1));
    return name;
}

std::unique_ptr<CIPDataFile> CParserIBS::Parse(std::string text)
{
    return ParseFor(std::move(text), kInIbs);
}

std::unique_ptr<CIPDataFile> CParserEBD::Parse(std::string text)
{
    return ParseFor(std::move(text), kInEbd);
}

void CParserBase::Reset(CIPDataFile& file, std::uint8_t files)
{
    m_comment = '|';
    m_current = EIPKeyword::None;
    m_section = EIPKeyword::None;
    m_line = 1;
    m_files = files;
    m_unknown = 0;
    m_ended = false;
    m_file = &file;
    m_open.assign(1, &file);
    m_taker = &file;
}

std::unique_ptr<CIPDataFile> CParserBase::ParseFor(std::string text, std::uint8_t files)
{
    auto file = std::make_unique<CIPDataFile>(std::move(text));
    Reset(*file, files);
    std::string_view rest = file->Text();
    if (rest.ends_with(kEndOfText)) {
        rest.remove_suffix(1);
    }
    const auto whole = static_cast<double>(rest.size());
    for (; !rest.empty(); ++m_line) {
        if (m_line % kStepLines == 0 && m_progress &&
            !m_progress(1.0 - static_cast<double>(rest.size()) / whole)) {
            break;
        }
        const void* const found = std::memchr(rest.data(), '\n', rest.size());
        const std::size_t end =
            found == nullptr
                ? rest.size()
                : static_cast<std::size_t>(static_cast<const char*>(found) - rest.data());
        TakeRaw(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    CloseDownTo(1, m_line);
    file->SetCommentCharacter(m_comment);
    m_file = nullptr;
    m_open.clear();
    m_taker = nullptr;
    return file;
}

void CParserBase::TakeRaw(std::string_view raw)
{
    const char* const start = raw.data();
    SIPLine line{TrimLine(raw), m_line};
    if (line.text.empty() || line.text.front() == m_comment) {
        return;
    }
    const bool indented = line.text.data() != start;
    const bool keyword =
        line.text.front() == '[' && !m_ended && !(indented && HasFreeText(m_current));
    if (keyword) {
        std::string_view rest = line.text;
        if (FindIPKeyword(TakeBracketed(rest)) == EIPKeyword::CommentChar) {
            TakeCommentChar(line, rest);
            return;
        }
    }
    const void* const comment = std::memchr(line.text.data(), m_comment, line.text.size());
    if (comment != nullptr) {
        line.text = TrimLine(line.text.substr(
            0, static_cast<std::size_t>(static_cast<const char*>(comment) - line.text.data())));
    }
    if (keyword) {
        TakeKeyword(line);
    } else {
        m_taker->TakeLine(line, m_file->Arena());
    }
}

/// Read before its comment is cut off: it may name the character that is in force.
void CParserBase::TakeCommentChar(const SIPLine& line, std::string_view rest)
{
    const std::string_view word = TakeWord(rest);
    const char defined = DefinedComment(word);
    const SIPForm& form = *IPFormOf(EIPKeyword::CommentChar);
    CIPDataObject& item = m_file->Add(form.make(form, line.number, word));
    if (defined == '\0') {
        item.Mark(EIPMark::Unread, line.number);
        return;
    }
    m_comment = defined;
}

void CParserBase::TakeKeyword(const SIPLine& line)
{
    std::string_view rest = line.text;
    const std::string_view name = TakeBracketed(rest);
    const EIPKeyword keyword = FindIPKeyword(name);
    m_current = keyword;
    if (keyword == EIPKeyword::None) {
        const std::size_t shown = name.empty() ? line.text.size() : name.size() + 2;
        TakeUnknown(line, line.text.substr(0, shown), name.empty() ? std::string_view() : rest);
    } else if (const SIPForm* form = IPFormOf(keyword)) {
        Open(*form, line, rest);
    } else {
        TakeCloser(keyword, line, line.text.substr(0, name.size() + 2), rest);
    }
}

void CParserBase::TakeUnknown(const SIPLine& line, std::string_view shown, std::string_view rest)
{
    const auto before = Innermost().Children();
    if (++m_unknown > kSingleUnknown && !before.empty() &&
        before.back()->Form() == &IPUnknownForm()) {
        m_taker = before.back().get();
        m_taker->TakeLine(line, m_file->Arena());
        return;
    }
    m_taker =
        &Innermost().Add(std::make_unique<CIPDataItem>(IPUnknownForm(), shown, line.number, rest));
    m_taker->Mark(EIPMark::UnknownKeyword, line.number);
}

void CParserBase::TakeCloser(EIPKeyword closer, const SIPLine& line, std::string_view shown,
                             std::string_view rest)
{
    const EIPKeyword opener = IPClosedBy(closer);
    for (std::size_t depth = m_open.size(); depth-- > 1;) {
        if (m_open[depth]->Keyword() == opener) {
            CloseDownTo(depth + 1, line.number);
            m_open.back()->Close({TrimLine(rest), line.number});
            m_open.pop_back();
            m_taker = &Innermost();
            return;
        }
    }
    TakeUnknown(line, shown, rest);
    if (m_taker->Line() == line.number) {
        m_taker->Mark(EIPMark::Unopened, line.number);
    }
}

/// Place in the stack of the container that the keyword belongs to; 0 is the file, m_open.size()
/// none.
std::size_t CParserBase::PlaceOf(const SIPForm& form) const
{
    for (std::size_t depth = m_open.size(); depth-- > 0;) {
        const EIPKeyword container = depth == 0 ? EIPKeyword::None : m_open[depth]->Keyword();
        if (IPBelongs(form, container)) {
            return depth;
        }
    }
    return m_open.size();
}

void CParserBase::Open(const SIPForm& form, const SIPLine& line, std::string_view rest)
{
    std::size_t depth = PlaceOf(form);
    const bool belongs = depth < m_open.size() && (form.files & m_files) != 0;
    if (depth == m_open.size()) {
        depth = std::min<std::size_t>(1, m_open.size() - 1);
    }
    CloseDownTo(depth + 1, line.number);
    CIPDataObject& container = Innermost();
    CIPDataObject& object = container.Add(form.make(form, line.number, rest));
    if (!belongs) {
        object.Mark(EIPMark::Misplaced, line.number);
    }
    if (form.keyword == EIPKeyword::Row && IsSparse(container)) {
        static_cast<CIPDataRow&>(object).SetSparse();
    }
    if (IPIsContainer(form.keyword) || form.closer != EIPKeyword::None) {
        m_open.push_back(&object);
    }
    if (depth == 0) {
        m_section = form.keyword;
    }
    m_ended = form.keyword == EIPKeyword::End;
    m_taker = &object;
}

void CParserBase::CloseDownTo(std::size_t depth, std::size_t line)
{
    while (m_open.size() > depth) {
        if (Innermost().Form()->closer != EIPKeyword::None) {
            Innermost().Mark(EIPMark::Unclosed, line);
        }
        m_open.pop_back();
    }
}

} // namespace zov::ibis
