// SPDX-License-Identifier: Apache-2.0
/// From the text of a file to its objects, in one pass and without copying it.
///
///     CParserIBS parser;
///     std::unique_ptr<CIPDataFile> file = parser.Parse(std::move(text));
///     for (const CIPDataModel* model : file->Models()) ...
///
/// Nothing stops a parse: what can't be read is kept as text where it stands and is marked.
#pragma once

#include "ibis/DataFile.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zov::ibis {

/// Told of the share of the text that is parsed, 0 to 1; false stops.
using FIPProgress = std::function<bool(double)>;

/// Keywords whose lines are text, in which indented brackets are no keyword.
[[nodiscard]] bool HasFreeText(EIPKeyword keyword);
/// The character of "#_char"; 0 when it is none that can be used.
[[nodiscard]] char DefinedComment(std::string_view word);
/// The name between brackets at the front of a text, which is moved behind them. Empty, and the
/// text as it was, without a closing one.
[[nodiscard]] std::string_view TakeBracketed(std::string_view& text);

/// Reads lines, keeps track of open sections, and hands data lines to the object of the current
/// keyword.
class CParserBase
{
public:
    CParserBase() = default;
    CParserBase(const CParserBase&) = delete;
    CParserBase& operator=(const CParserBase&) = delete;
    virtual ~CParserBase() = default;

    /// The whole file. Begins anew each time.
    [[nodiscard]] virtual std::unique_ptr<CIPDataFile> Parse(std::string text) = 0;
    /// Asked every few thousand lines of the texts to come; a parse that it stops gives the objects
    /// so far.
    void SetProgress(FIPProgress progress) { m_progress = std::move(progress); }

    [[nodiscard]] char CommentCharacter() const { return m_comment; }
    [[nodiscard]] EIPKeyword CurrentKeyword() const { return m_current; }
    [[nodiscard]] EIPKeyword SectionKeyword() const { return m_section; }
    [[nodiscard]] std::size_t LineNumber() const { return m_line; }

protected:
    /// Parses with the sections of the first level that the kind of file has.
    /// @param files  EIPFiles
    [[nodiscard]] std::unique_ptr<CIPDataFile> ParseFor(std::string text, std::uint8_t files);

private:
    void Reset(CIPDataFile& file, std::uint8_t files);
    void TakeRaw(std::string_view raw);
    void TakeCommentChar(const SIPLine& line, std::string_view rest);
    void TakeKeyword(const SIPLine& line);
    void TakeUnknown(const SIPLine& line, std::string_view shown, std::string_view rest);
    void TakeCloser(EIPKeyword closer, const SIPLine& line, std::string_view shown,
                    std::string_view rest);
    void Open(const SIPForm& form, const SIPLine& line, std::string_view rest);
    [[nodiscard]] std::size_t PlaceOf(const SIPForm& form) const;
    void CloseDownTo(std::size_t depth, std::size_t line);
    [[nodiscard]] CIPDataObject& Innermost() { return *m_open.back(); }

    char m_comment = '|';
    EIPKeyword m_current = EIPKeyword::None;
    EIPKeyword m_section = EIPKeyword::None; ///< of the first level
    std::size_t m_line = 1;
    std::uint8_t m_files = 0;
    std::size_t m_unknown = 0; ///< keywords without a class so far
    bool m_ended = false;
    CIPDataFile* m_file = nullptr;
    std::vector<CIPDataObject*> m_open; ///< the file and the containers that are open in it
    CIPDataObject* m_taker = nullptr;   ///< of data lines
    FIPProgress m_progress;
};

/// ".ibs" files; also ".pkg" and ".ims", whose sections may stand in ".ibs" files too.
class CParserIBS final : public CParserBase
{
public:
    [[nodiscard]] std::unique_ptr<CIPDataFile> Parse(std::string text) override;
};

/// ".ebd" files.
class CParserEBD final : public CParserBase
{
public:
    [[nodiscard]] std::unique_ptr<CIPDataFile> Parse(std::string text) override;
};

} // namespace zov::ibis
