// SPDX-License-Identifier: Apache-2.0
/// The small objects that all sections are made of: named values, numbers, triples, rows of words.
#pragma once

#include "ibis/DataObject.h"

#include <array>

namespace zov::ibis {

/// What stands between a name and its value: nothing but blanks, unless it is a field whose value
/// begins with an equals sign, of which the reader takes the first for its own.
[[nodiscard]] std::string_view IPSeparator(const CIPDataObject& object);

/// One named value of a keyword or sub-parameter, or a line of text; also a keyword that holds free
/// text, each further line of which is a child without a name.
class CIPDataItem final : public CIPDataObject
{
public:
    using CIPDataObject::CIPDataObject;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataItem"; }
    /// For keywords without a class: the keyword as it stands in the file.
    CIPDataItem(const SIPForm& form, std::string_view shown, std::size_t line,
                std::string_view value);
    /// The value and the lines below it, joined by line feeds.
    [[nodiscard]] std::string Text() const;
    void TakeLine(const SIPLine& line, CArena& arena) override;

protected:
    [[nodiscard]] std::string_view Separator() const override { return IPSeparator(*this); }
};

/// One number.
class CIPDataNumber final : public CIPDataObject
{
public:
    CIPDataNumber(const SIPForm& form, std::size_t line, std::string_view value);
    CIPDataNumber(std::string_view name, std::size_t line, std::string_view value);
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataNumber"; }
    [[nodiscard]] const SIPNumber& Number() const { return m_number; }

protected:
    [[nodiscard]] std::string_view Separator() const override
    {
        return Form() != nullptr ? "  " : " = ";
    }

private:
    void Read();
    SIPNumber m_number;
};

/// A voltage step and the time that it takes, of [Ramp].
struct SIPSlope
{
    SIPNumber volt;
    SIPNumber second;
};

/// A typ/min/max triple. Each may be absent, written NA.
class CIPDataValueRange final : public CIPDataObject
{
public:
    CIPDataValueRange(const SIPForm& form, std::size_t line, std::string_view value);
    /// @param slopes  each value is `dV/dt`; its number is the quotient in V/s
    CIPDataValueRange(std::string_view name, std::size_t line, std::string_view value,
                      bool slopes = false);
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataValueRange"; }
    [[nodiscard]] const SIPNumber& Typ() const { return m_values[0]; }
    [[nodiscard]] const SIPNumber& Min() const { return m_values[1]; }
    [[nodiscard]] const SIPNumber& Max() const { return m_values[2]; }
    /// 0 typ, 1 min, 2 max
    [[nodiscard]] const SIPNumber& Corner(std::size_t corner) const { return m_values[corner]; }
    /// Both parts of a slope; without values when it is none.
    [[nodiscard]] SIPSlope Slope(std::size_t corner) const;

protected:
    [[nodiscard]] std::string_view Separator() const override { return IPSeparator(*this); }

private:
    void Read(bool slopes);
    std::array<SIPNumber, 3> m_values;
};

/// A row of words. The first is the name, the others stay as they are and are read when asked for.
class CIPDataRowItem : public CIPDataObject
{
public:
    CIPDataRowItem(std::size_t line, std::string_view text,
                   std::span<const std::string_view> words);
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRowItem"; }
    [[nodiscard]] std::span<const std::string_view> Words() const { return m_words; }
    /// By place; empty when the row is shorter.
    [[nodiscard]] std::string_view Word(std::size_t i) const
    {
        return i < m_words.size() ? m_words[i] : std::string_view();
    }
    [[nodiscard]] SIPNumber NumberAt(std::size_t i) const { return ReadIPNumber(Word(i)); }

private:
    std::span<const std::string_view> m_words;
};

/// A keyword with sub-parameters and rows of words, as its form says.
class CIPDataSection : public CIPDataObject
{
public:
    using CIPDataObject::CIPDataObject;
    void TakeLine(const SIPLine& line, CArena& arena) override;

    /// Values of sub-parameters; null when they are not there.
    [[nodiscard]] const CIPDataValueRange* Range(std::string_view name) const;
    [[nodiscard]] const CIPDataNumber* Number(std::string_view name) const;
    /// Value of a part that is a triple on its keyword's line, as [Voltage Range].
    [[nodiscard]] const CIPDataValueRange* RangePart(EIPKeyword keyword) const;
    /// Its rows of words.
    [[nodiscard]] std::vector<const CIPDataRowItem*> Rows() const { return All<CIPDataRowItem>(); }

protected:
    virtual std::unique_ptr<CIPDataRowItem> MakeRow(std::size_t line, std::string_view text,
                                                    std::span<const std::string_view> words);

private:
    void TakeRow(const SIPLine& line, CArena& arena);

    std::size_t m_oddRows = 0; ///< with too few or too many words
};

/// Adds the sub-parameter of a line to an object.
/// @return false when its first word is none of the form's names
bool TakeIPField(CIPDataObject& to, const SIPLine& line);

/// The words of a text, in the arena.
[[nodiscard]] std::span<const std::string_view> KeepWords(std::string_view text, CArena& arena);

} // namespace zov::ibis
