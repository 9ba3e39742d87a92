// SPDX-License-Identifier: Apache-2.0
/// The base of everything that a file's keywords become: a tree of named values with their lines.
///
///     void Show(const CIPDataObject& object, int depth)
///     {
///         Line(depth, object.Name(), object.Value());
///         for (const auto& child : object.Children()) {
///             Show(*child, depth + 1);
///         }
///     }
///
/// All texts are views into the file's text or its arena: an object lives no longer than its file.
#pragma once

#include "base/Arena.h"
#include "ibis/Keywords.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

struct SIPForm;
class CIPDataTable;

constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

/// A number in SI units with the text that it was read from.
struct SIPNumber
{
    double value = kNoValue; ///< kNoValue for NA, for a missing word and for one that is no number
    std::string_view text;   ///< empty when the word is missing

    [[nodiscard]] bool Has() const { return value == value; }
    /// A word stands there that is neither a number nor NA.
    [[nodiscard]] bool Unreadable() const;
};

/// Reads a word with its scale letter: "4.0pF" is 4e-12.
[[nodiscard]] SIPNumber ReadIPNumber(std::string_view word);

/// Takes the next word of a text: what stands before a blank, tab or carriage return. Empty at the
/// end.
std::string_view TakeWord(std::string_view& text);
/// Without blanks, tabs and carriage returns at both ends.
[[nodiscard]] std::string_view TrimLine(std::string_view text);
/// The words of a text.
[[nodiscard]] std::vector<std::string_view> WordsOf(std::string_view text);

/// Why an object is not quite what its keyword asks for. Whatever is marked is kept and printed.
enum class EIPMark : std::uint8_t
{
    Unread,         ///< no value of the keyword could be made of the text
    Missing,        ///< words that the form asks for are not there
    Extra,          ///< more words than the form has places for
    Misplaced,      ///< the keyword does not belong where it stands
    UnknownKeyword, ///< a keyword without a class; its lines are kept as text
    Unclosed,       ///< the keyword that ends it is missing
    Unopened,       ///< ends what was not open
    AfterEnd,       ///< stands behind [End]
    Checker         ///< the checker has a message about one of its lines
};
[[nodiscard]] std::string_view IPMarkText(EIPMark mark);

struct SIPMark
{
    EIPMark mark = EIPMark::Unread;
    std::size_t line = 0;
    std::size_t message = 0; ///< Checker: place in the list of messages
};

/// A line of the file: comment cut off, trimmed.
struct SIPLine
{
    std::string_view text;
    std::size_t number = 0;
};

class CIPDataObject
{
public:
    /// A keyword's object.
    CIPDataObject(const SIPForm& form, std::size_t line, std::string_view value);
    /// A named value below a keyword.
    CIPDataObject(std::string_view name, std::size_t line, std::string_view value);
    CIPDataObject(const CIPDataObject&) = delete;
    CIPDataObject& operator=(const CIPDataObject&) = delete;
    virtual ~CIPDataObject();

    /// "CIPDataRamp"
    [[nodiscard]] virtual std::string_view ClassName() const = 0;
    /// The keyword with its brackets, or a sub-parameter's, pin's or row's name.
    [[nodiscard]] std::string_view Name() const { return m_name; }
    /// What stands behind the name.
    [[nodiscard]] std::string_view Value() const { return m_value; }
    /// None for values below a keyword.
    [[nodiscard]] EIPKeyword Keyword() const;
    /// Line of the file, from 1.
    [[nodiscard]] std::size_t Line() const { return m_line; }
    /// The last line of the value: the same but for runs of lines that were kept as one text.
    [[nodiscard]] std::size_t LastLine() const;
    /// In the order of the file.
    [[nodiscard]] std::span<const std::unique_ptr<CIPDataObject>> Children() const
    {
        return m_children;
    }
    [[nodiscard]] std::span<const SIPMark> Marks() const { return m_marks; }
    [[nodiscard]] bool Has(EIPMark mark) const
    {
        return (m_markKinds >> static_cast<unsigned>(mark) & 1U) != 0;
    }
    /// The columns of numbers that stand below; null for none.
    [[nodiscard]] virtual const CIPDataTable* Table() const { return nullptr; }
    /// Its closing keyword was there.
    [[nodiscard]] bool Closed() const { return m_closed != EClosed::No; }

    /// First child of the keyword; null for none.
    [[nodiscard]] const CIPDataObject* Part(EIPKeyword keyword) const;
    /// First child of the sub-parameter's name, without regard to case; null for none.
    [[nodiscard]] const CIPDataObject* Field(std::string_view name) const;
    /// Value of such a child; empty for none.
    [[nodiscard]] std::string_view FieldText(std::string_view name) const;

    /// First child of a class, and all children of it.
    template <class T>
    [[nodiscard]] const T* First() const
    {
        for (const auto& child : m_children) {
            if (const auto* found = dynamic_cast<const T*>(child.get())) {
                return found;
            }
        }
        return nullptr;
    }
    template <class T>
    [[nodiscard]] const T* Part(EIPKeyword keyword) const
    {
        return dynamic_cast<const T*>(Part(keyword));
    }
    template <class T>
    [[nodiscard]] std::vector<const T*> All() const
    {
        std::vector<const T*> found;
        for (const auto& child : m_children) {
            if (const auto* one = dynamic_cast<const T*>(child.get())) {
                found.push_back(one);
            }
        }
        return found;
    }

    /// Same class, keyword, name, words, numbers, statements in their order and keywords in theirs;
    /// lines and marks do not count.
    [[nodiscard]] bool Equals(const CIPDataObject& other) const;
    /// Appends the lines that read back to an equal object; they end in LF.
    virtual void Print(std::string& out) const;

    // --- for the parser --------------------------------------------------------------------
    /// A data line of the keyword. What it can't use it keeps as an unread item.
    virtual void TakeLine(const SIPLine& line, CArena& arena);
    CIPDataObject& Add(std::unique_ptr<CIPDataObject> child);
    /// Behind the first thousand, further marks of kinds that are there already are left out, but
    /// those of the checker.
    void Mark(EIPMark mark, std::size_t line, std::size_t message = 0);
    /// The closing keyword was read. Words behind it are kept as the last child.
    void Close(const SIPLine& behind);
    [[nodiscard]] const SIPForm* Form() const { return m_form; }

protected:
    [[nodiscard]] virtual bool SameContent(const CIPDataObject& other) const;
    /// What stands between the name and the value.
    [[nodiscard]] virtual std::string_view Separator() const { return "  "; }
    /// Lines that stand between the keyword's own and the children's.
    virtual void PrintContent(std::string& /*out*/) const {}
    /// Keeps a line as a nameless item. Behind the first thousand children, lines that follow each
    /// other become one item, so that a file that is no IBIS file takes little more than its size.
    CIPDataObject& AddUnread(const SIPLine& line, EIPMark mark = EIPMark::Unread);
    void AddText(const SIPLine& line);
    void SetName(std::string_view name) { m_name = name; }
    void SetValue(std::string_view value) { m_value = value; }

private:
    [[nodiscard]] bool SameChildren(const CIPDataObject& other, bool keywords) const;
    /// The last child when it is a run that the line continues, which is done; else null.
    CIPDataObject* ContinueRun(const SIPLine& line, const EIPMark* mark);

    const SIPForm* m_form = nullptr;
    std::string_view m_name;
    std::string_view m_value;
    std::size_t m_line;
    std::vector<std::unique_ptr<CIPDataObject>> m_children;
    std::vector<SIPMark> m_marks;
    std::uint16_t m_markKinds = 0; ///< bit per EIPMark
    enum class EClosed : std::uint8_t
    {
        No,
        Yes,
        WithWords
    };

    EClosed m_closed = EClosed::No;
};

} // namespace zov::ibis
