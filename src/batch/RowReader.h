// SPDX-License-Identifier: Apache-2.0
/// One row of the sheet as the values of one model, with every cell that can't be understood told
/// by row and column.
#pragma once

#include "base/Sink.h"
#include "batch/CaseSize.h"
#include "batch/CircuitWrapper.h"
#include "batch/ColumnMapping.h"
#include "batch/ImportReport.h"
#include "batch/VendorLibrary.h"
#include "core/RecordStore.h"
#include "sheet/Workbook.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov::batch {

/// Fields whose cell is taken as it stands.
inline constexpr std::array kTextFields = {
    EField::ModelName,  EField::MfgPartNo, EField::Manufacturer, EField::Tcc,
    EField::Preference, EField::Comment,   EField::LookupKeyword};

/// Values of a model; views are into the row and live as long as its visit.
struct SModelRow
{
    CPerField<std::string_view> texts;        ///< of text fields, trimmed
    CPerField<std::optional<double>> numbers; ///< of numeric fields, SI
    std::string size;                         ///< with system letter
    bool isCircuit = false;
    std::string cktDef;
    std::string trackFolder;
    /// How the circuit text was made, to make it anew under another name; empty when it does not
    /// depend on the name.
    std::string wrappedFile;
    ENodeAssignment node = ENodeAssignment::Series;

    void Clear();
};

struct SRowSetup
{
    ERecordType type = ERecordType::Capacitor;
    CColumnPlan plan;
    ESizeSystem sizeSystem = ESizeSystem::FromFile;
    ENodeAssignment node = ENodeAssignment::Series;
    /// Series R and L that a capacitor lacks are 0 and its Cact is Cnom; an inductor's missing R is
    /// 0; a missing current is left out.
    bool assumeIdeal = false;
    const CVendorLibrary* vendor = nullptr;
};

class CRowReader
{
public:
    CRowReader(SRowSetup setup, CCircuitWrapper& wrapper, CLogSink& log);

    enum class EOutcome
    {
        Blank, ///< nothing in any mapped column
        Failed,
        Ready
    };
    EOutcome Read(const SSheetRow& row, SModelRow& model);

    /// Of the row read last.
    [[nodiscard]] std::vector<SImportFinding>& Findings() { return m_findings; }
    /// Of columns as a whole, told once each.
    [[nodiscard]] std::vector<SImportFinding>& ColumnFindings() { return m_columnFindings; }

    [[nodiscard]] const SRowSetup& Setup() const { return m_setup; }
    /// A finding about the row at hand or the column as a whole; written to the log as well unless
    /// it is a note.
    void Tell(SImportFinding finding, bool ofColumn = false);

private:
    struct SColumnMemory
    {
        std::uint32_t ambiguousRow = 0; ///< first row whose comma could be two things
        std::uint32_t bareRow = 0;      ///< first row with a number without unit
        std::uint32_t unitRow = 0;      ///< first row with a unit of its own
        bool toldMixed = false;
        bool toldImplausible = false;
        bool decimalComma = false;
        bool toldComma = false;
        bool toldFraction = false;
        bool toldCompleted = false;
        bool toldCact = false;
    };

    [[nodiscard]] std::string_view Cell(EField field) const;
    [[nodiscard]] bool AllBlank() const;
    void Cannot(EField field, std::string_view why, std::string_view expected);
    SImportFinding FindingAt(EField field, ESeverity severity) const;

    void ReadTexts(SModelRow& model);
    void ReadNumbers(SModelRow& model);
    void ReadTolerances(SModelRow& model);
    void ReadOneTolerance(EField field, SModelRow& model);
    void ReadSizeCell(SModelRow& model);
    bool FindVendorPart(const SModelRow& model);
    void TakeFromVendor(SModelRow& model);
    void TakeVendorCircuit(const SDiscreteModel& definition, SModelRow& model);
    void CheckRequired(const SModelRow& model);
    bool ReadModel(SModelRow& model);
    void ReadPlainValues(SModelRow& model);
    void ReadActualCapacitance(SModelRow& model);
    void ReadMaxCurrent(SModelRow& model);
    bool ReadCircuit(SModelRow& model);
    bool ReadNode(SModelRow& model);
    bool TellCircuitFault(const SCircuit& circuit, SModelRow& model);
    std::optional<double> ReadNumber(EField field, EQuantity quantity);
    bool CheckComma(EField field, const SCellReading& reading);
    void CheckUnit(EField field, EQuantity quantity, const SCellReading& reading);
    void WarnOfColumn(EField field, bool& told, std::string text);

    SRowSetup m_setup;
    CCircuitWrapper& m_wrapper;
    CLogSink& m_log;
    const SSheetRow* m_row = nullptr;
    const CVendorLibrary::SPart* m_part = nullptr;
    std::string m_name;
    bool m_failed = false;
    bool m_cannotWrite = false; ///< a value that every such record needs is missing
    CPerField<SColumnMemory> m_memory;
    std::vector<SImportFinding> m_findings;
    std::vector<SImportFinding> m_columnFindings;
};

/// The row as a record in the builder's memory; the builder is reset first.
[[nodiscard]] CZovRcdProps* BuildRecord(const SModelRow& model, ERecordType type,
                                        CRecordBuilder& builder);

} // namespace zov::batch
