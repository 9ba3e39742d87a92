// SPDX-License-Identifier: Apache-2.0
/// Package models, board descriptions and interconnect model sets.
#pragma once

#include "ibis/DataValues.h"

namespace zov::ibis {

enum class EIPPath : std::uint8_t
{
    Pin,     ///< begins a stub or a path; its name
    Node,    ///< `refdes.pin`
    Section, ///< Len, L, R, C
    Fork,
    Endfork,
    Unread
};

/// One element of a stub of [Pin Numbers] or of a [Path Description].
class CIPDataPathItem final : public CIPDataObject
{
public:
    CIPDataPathItem(EIPPath kind, std::string_view name, std::size_t line, std::string_view value)
        : CIPDataObject(name, line, value)
        , m_kind(kind)
    {
    }
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPathItem"; }
    [[nodiscard]] EIPPath Kind() const { return m_kind; }
    /// Of a section, in units of length and ohm, henry, farad (per length when Len is not 0);
    /// without text when not given.
    [[nodiscard]] SIPNumber Len() const { return Element("Len"); }
    [[nodiscard]] SIPNumber R() const { return Element("R"); }
    [[nodiscard]] SIPNumber L() const { return Element("L"); }
    [[nodiscard]] SIPNumber C() const { return Element("C"); }
    void Print(std::string& out) const override;
    /// One more `name=value` of a section.
    void Extend(std::string_view joined) { SetValue(joined); }

protected:
    [[nodiscard]] bool SameContent(const CIPDataObject& other) const override;

private:
    [[nodiscard]] SIPNumber Element(std::string_view name) const;

    EIPPath m_kind;
};

/// A keyword whose lines describe stubs or paths. Statements may go over several lines.
class CIPDataPaths : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    void TakeLine(const SIPLine& line, CArena& arena) override;
    [[nodiscard]] std::vector<const CIPDataPathItem*> Items() const
    {
        return All<CIPDataPathItem>();
    }

protected:
    /// The word that begins a stub or path is the pin's name itself, else "Pin" with the name
    /// behind.
    [[nodiscard]] virtual bool PinsAreBare() const = 0;

private:
    void TakeElement(std::string_view word, std::string_view& rest, std::size_t line,
                     CArena& arena);
    void TakeSectionPart(std::string_view word, std::string_view& rest, std::size_t line,
                         CArena& arena);

    CIPDataPathItem* m_section = nullptr; ///< open until "/"
};

/// [Pin Numbers], with sections of each pin where it has any.
class CIPDataPinNumbers final : public CIPDataPaths
{
public:
    using CIPDataPaths::CIPDataPaths;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinNumbers"; }
    [[nodiscard]] std::vector<std::string_view> Pins() const;

protected:
    [[nodiscard]] bool PinsAreBare() const override { return true; }
};

/// [Merged Pins]: the pin that stands for the others, and those.
class CIPDataMergedPins final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataMergedPins"; }
    [[nodiscard]] std::string_view Pin() const { return Value(); }
    [[nodiscard]] std::vector<std::string_view> Merged() const;
};

/// [Row] of a matrix.
class CIPDataRow final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRow"; }
    [[nodiscard]] std::string_view Pin() const { return Value(); }
    /// Sparse rows name the pin of each value.
    void SetSparse() { m_sparse = true; }
    [[nodiscard]] bool Sparse() const { return m_sparse; }
    [[nodiscard]] std::size_t Count() const { return m_values.size(); }
    /// In ohm, henry or farad. From the diagonal on unless sparse.
    [[nodiscard]] std::span<const double> Values() const { return m_values; }
    [[nodiscard]] SIPNumber At(std::size_t i) const { return {m_values[i], m_texts[i]}; }
    /// Of a sparse row: the pin that the value is for.
    [[nodiscard]] std::string_view ColumnPin(std::size_t i) const
    {
        return m_sparse ? m_pins[i] : std::string_view();
    }
    void TakeLine(const SIPLine& line, CArena& arena) override;

protected:
    [[nodiscard]] bool SameContent(const CIPDataObject& other) const override;
    void PrintContent(std::string& out) const override;

private:
    void TakeValue(std::string_view word, std::size_t line);

    std::vector<double> m_values;
    std::vector<std::string_view> m_texts;
    std::vector<std::string_view> m_pins;
    bool m_sparse = false;
};

enum class EIPMatrix : std::uint8_t
{
    Unknown,
    Sparse,
    Full,
    Banded
};

/// [Resistance Matrix], [Inductance Matrix], [Capacitance Matrix]
class CIPDataRLCMatrix final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRLCMatrix"; }
    [[nodiscard]] EIPMatrix Kind() const;
    [[nodiscard]] std::vector<const CIPDataRow*> MatrixRows() const { return All<CIPDataRow>(); }
    /// Of a banded matrix; null for none.
    [[nodiscard]] const CIPDataNumber* Bandwidth() const { return First<CIPDataNumber>(); }
};

/// [Model Data]
class CIPDataModelData final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataModelData"; }
    [[nodiscard]] const CIPDataRLCMatrix* Resistance() const
    {
        return Part<CIPDataRLCMatrix>(EIPKeyword::ResistanceMatrix);
    }
    [[nodiscard]] const CIPDataRLCMatrix* Inductance() const
    {
        return Part<CIPDataRLCMatrix>(EIPKeyword::InductanceMatrix);
    }
    [[nodiscard]] const CIPDataRLCMatrix* Capacitance() const
    {
        return Part<CIPDataRLCMatrix>(EIPKeyword::CapacitanceMatrix);
    }
};

/// [Define Package Model]
class CIPDataDefinePkgMdl final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataDefinePkgMdl"; }
    [[nodiscard]] const CIPDataNumber* NumberOfPins() const
    {
        return Part<CIPDataNumber>(EIPKeyword::NumberOfPins);
    }
    [[nodiscard]] const CIPDataNumber* NumberOfSections() const
    {
        return Part<CIPDataNumber>(EIPKeyword::NumberOfSections);
    }
    [[nodiscard]] const CIPDataPinNumbers* PinNumbers() const { return First<CIPDataPinNumbers>(); }
    [[nodiscard]] std::vector<const CIPDataMergedPins*> MergedPins() const
    {
        return All<CIPDataMergedPins>();
    }
    [[nodiscard]] const CIPDataModelData* ModelData() const { return First<CIPDataModelData>(); }
};

/// [Pin List] of a board: rows of pin and signal_name.
class CIPDataPinList final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPinList"; }
};

/// [Path Description]
class CIPDataPathDescription final : public CIPDataPaths
{
public:
    using CIPDataPaths::CIPDataPaths;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataPathDescription"; }

protected:
    [[nodiscard]] bool PinsAreBare() const override { return false; }
};

struct SIPDesignator
{
    std::string_view designator;
    std::string_view file;
    std::string_view component;
};

/// [Reference Designator Map]
class CIPDataRefDesignatorMap final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataRefDesignatorMap"; }
    [[nodiscard]] std::vector<SIPDesignator> Designators() const;
};

/// [Begin Board Description]
class CIPDataBoardDescription final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataBoardDescription"; }
    [[nodiscard]] const CIPDataNumber* NumberOfPins() const
    {
        return Part<CIPDataNumber>(EIPKeyword::NumberOfPins);
    }
    [[nodiscard]] const CIPDataPinList* Pins() const { return First<CIPDataPinList>(); }
    [[nodiscard]] std::vector<const CIPDataPathDescription*> Paths() const
    {
        return All<CIPDataPathDescription>();
    }
    [[nodiscard]] const CIPDataRefDesignatorMap* Designators() const
    {
        return First<CIPDataRefDesignatorMap>();
    }
};

/// [Interconnect Model]
class CIPDataInterconnectModel final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataInterconnectModel"; }
    [[nodiscard]] const CIPDataNumber* NumberOfTerminals() const
    {
        return Number("Number_of_terminals");
    }
    [[nodiscard]] const CIPDataNumber* UnusedPortTermination() const
    {
        return Number("Unused_port_termination");
    }
    /// Rows of number, type, qualifier, entry, Aggressor_Only.
    [[nodiscard]] std::vector<const CIPDataRowItem*> Terminals() const { return Rows(); }
};

/// [Interconnect Model Set]
class CIPDataInterconnectModelSet final : public CIPDataSection
{
public:
    using CIPDataSection::CIPDataSection;
    [[nodiscard]] std::string_view ClassName() const override
    {
        return "CIPDataInterconnectModelSet";
    }
    [[nodiscard]] std::vector<const CIPDataInterconnectModel*> Models() const
    {
        return All<CIPDataInterconnectModel>();
    }
};

} // namespace zov::ibis
