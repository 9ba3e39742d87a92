// SPDX-License-Identifier: Apache-2.0
#include "batch/RowReader.h"

#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/Messages.h"

#include <algorithm>
#include <array>

namespace zov::batch {

namespace {

using enum EField;

/// Numbers that a row may lack; those of the plain-value models are read apart.
constexpr std::array kNumberFields = {Cnom, ComponentCost, MountingCost, BomPenaltyCost, Volt};

constexpr std::string_view kExpectedText = "a text";
constexpr std::string_view kExpectedSize =
    "a case-size code of at least four characters such as 0402, 0402E, 1005M";

std::string ColumnLetters(std::uint32_t column)
{
    return column == 0 ? std::string() : ColumnName(column);
}

/// Lists say more than options may.
std::optional<ESizeSystem> SizeSystemOf(std::string_view word)
{
    struct SWord
    {
        std::string_view word;
        ESizeSystem system;
    };
    constexpr std::array<SWord, 6> kWords = {{{"E", ESizeSystem::English},
                                              {"M", ESizeSystem::Metric},
                                              {"inch", ESizeSystem::English},
                                              {"imperial", ESizeSystem::English},
                                              {"EIA", ESizeSystem::English},
                                              {"mm", ESizeSystem::Metric}}};
    for (const SWord& known : kWords) {
        if (EqualsNoCase(known.word, word)) {
            return known.system;
        }
    }
    return FindSizeSystem(word);
}

} // namespace

void SModelRow::Clear()
{
    texts = {};
    numbers = {};
    size.clear();
    isCircuit = false;
    cktDef.clear();
    trackFolder.clear();
    wrappedFile.clear();
}

CRowReader::CRowReader(SRowSetup setup, CCircuitWrapper& wrapper, CLogSink& log)
    : m_setup(std::move(setup))
    , m_wrapper(wrapper)
    , m_log(log)
{
}

CRowReader::EOutcome CRowReader::Read(const SSheetRow& row, SModelRow& model)
{
    m_row = &row;
    m_part = nullptr;
    m_failed = false;
    m_cannotWrite = false;
    m_findings.clear();
    model.Clear();
    if (AllBlank()) {
        return EOutcome::Blank;
    }
    ReadTexts(model);
    if (m_failed) {
        return EOutcome::Failed;
    }
    if (m_setup.vendor != nullptr && !FindVendorPart(model)) {
        return EOutcome::Failed;
    }
    ReadNumbers(model);
    if (m_setup.type == ERecordType::Capacitor) {
        ReadSizeCell(model);
        ReadTolerances(model);
        TakeFromVendor(model);
        CheckRequired(model);
    }
    const bool modelled = ReadModel(model);
    if (m_cannotWrite) {
        m_log.Write(Text(msg::kExportFailed, m_name));
    }
    return modelled && !m_failed ? EOutcome::Ready : EOutcome::Failed;
}

// --- cells -----------------------------------------------------------------------------------

std::string_view CRowReader::Cell(EField field) const
{
    const SColumn& column = m_setup.plan[field];
    if (column.source == EColumnSource::Constant) {
        return TrimCell(column.constant);
    }
    return column.column == 0 || column.column > m_row->cells.size()
               ? std::string_view()
               : TrimCell(m_row->cells[column.column - 1]);
}

bool CRowReader::AllBlank() const
{
    for (const EField field : FieldsOf(m_setup.type)) {
        if (m_setup.plan[field].column != 0 && !Cell(field).empty()) {
            return false;
        }
    }
    return true;
}

SImportFinding CRowReader::FindingAt(EField field, ESeverity severity) const
{
    SImportFinding finding;
    finding.severity = severity;
    finding.row = m_row->number;
    finding.column = m_setup.plan[field].column;
    finding.columnName = ColumnLetters(finding.column);
    finding.property = InfoOf(field).label;
    finding.seen = Cell(field);
    return finding;
}

void CRowReader::Tell(SImportFinding finding, bool ofColumn)
{
    if (finding.severity == ESeverity::Warning) {
        m_log.Write(finding.column == 0
                        ? Text("[WARNING] (Row:%d): %s", finding.row, finding.text)
                        : Text("[WARNING] '%s' from (Row:%d, Col:%d): %s", finding.property,
                               finding.row, finding.column, finding.text));
    }
    (ofColumn ? m_columnFindings : m_findings).push_back(std::move(finding));
}

void CRowReader::Cannot(EField field, std::string_view why, std::string_view expected)
{
    m_failed = true;
    SImportFinding finding = FindingAt(field, ESeverity::Error);
    finding.expected = expected;
    finding.text = why;
    m_log.Write(field == ModelType
                    ? Text(msg::kCannotGetType, kModelKindWords[0], kModelKindWords[1],
                           kModelKindWords[2], finding.row, finding.column)
                    : Text(msg::kCannotGet, finding.property, finding.row, finding.column));
    if (!finding.seen.empty()) {
        m_log.Write(
            Text("    seen '%s' (%s), expected %s", finding.seen, finding.text, finding.expected));
    }
    m_findings.push_back(std::move(finding));
}

bool CRowReader::CheckComma(EField field, const SCellReading& reading)
{
    SColumnMemory& memory = m_memory[field];
    if (reading.maybeDecimalComma) {
        if (memory.decimalComma) {
            Cannot(field, "the comma may part thousands or decimals",
                   "a decimal comma or point that can't be a separator of thousands");
            return false;
        }
        if (memory.ambiguousRow == 0) {
            memory.ambiguousRow = m_row->number;
        }
    }
    memory.decimalComma = memory.decimalComma || reading.decimalComma;
    if (reading.decimalComma && memory.ambiguousRow != 0) {
        WarnOfColumn(field, memory.toldComma,
                     Text("'%s' has a decimal comma, but the comma in row %d was taken to part "
                          "thousands; check the column",
                          Cell(field), memory.ambiguousRow));
    }
    return true;
}

void CRowReader::WarnOfColumn(EField field, bool& told, std::string text)
{
    if (told) {
        return;
    }
    told = true;
    SImportFinding finding = FindingAt(field, ESeverity::Warning);
    finding.text = std::move(text);
    Tell(std::move(finding), true);
}

/// A unit that nobody gave is a guess; what speaks against it is told once a column.
void CRowReader::CheckUnit(EField field, EQuantity quantity, const SCellReading& reading)
{
    const SColumn& column = m_setup.plan[field];
    SColumnMemory& memory = m_memory[field];
    if (!memory.toldImplausible && !IsPlausible(reading.value, quantity)) {
        WarnOfColumn(field, memory.toldImplausible,
                     Text("'%s' read in %s is no plausible value; is the column's unit another?",
                          Cell(field), reading.ownUnit ? "its unit" : column.unitText));
    }
    if (column.unitSource != EUnitSource::Default || column.unit.exponent == 0 ||
        memory.toldMixed || reading.value == 0) {
        return;
    }
    std::uint32_t& row = reading.ownUnit ? memory.unitRow : memory.bareRow;
    row = row == 0 ? m_row->number : row;
    if (memory.bareRow != 0 && memory.unitRow != 0) {
        WarnOfColumn(field, memory.toldMixed,
                     Text("row %d has no unit and is read in %s, the default, while row %d carries "
                          "its unit; name the column's unit",
                          memory.bareRow, column.unitText, memory.unitRow));
    }
}

std::optional<double> CRowReader::ReadNumber(EField field, EQuantity quantity)
{
    if (!m_setup.plan[field].Mapped()) {
        return std::nullopt;
    }
    const SCellReading reading = ReadQuantity(Cell(field), quantity, m_setup.plan[field].unit);
    if (reading.state == ECell::Bad) {
        Cannot(field, reading.why, ExpectedText(quantity));
        return std::nullopt;
    }
    if (reading.state == ECell::Empty || !CheckComma(field, reading)) {
        return std::nullopt;
    }
    if (field == Cnom && reading.value == 0) {
        Cannot(field, "zero", ExpectedText(quantity));
        return std::nullopt;
    }
    CheckUnit(field, quantity, reading);
    return reading.value;
}

// --- properties ------------------------------------------------------------------------------

void CRowReader::ReadTexts(SModelRow& model)
{
    for (const EField field : kTextFields) {
        const std::string_view text = Cell(field);
        model.texts[field] = field != Comment && IsEmptyWord(text) ? std::string_view() : text;
        if (IsErrorValue(model.texts[field])) {
            Cannot(field, "the sheet shows an error", kExpectedText);
        }
    }
    m_name = model.texts[ModelName];
    if (m_name.empty()) {
        Cannot(ModelName, "empty", kExpectedText);
    }
}

void CRowReader::ReadNumbers(SModelRow& model)
{
    for (const EField field : kNumberFields) {
        model.numbers[field] = ReadNumber(field, InfoOf(field).quantity);
    }
}

void CRowReader::ReadTolerances(SModelRow& model)
{
    const SColumn& upper = m_setup.plan[UpperTolerance];
    const SColumn& lower = m_setup.plan[LowerTolerance];
    if (upper.Mapped()) {
        ReadOneTolerance(UpperTolerance, model);
    }
    if (lower.Mapped() && (lower.column == 0 || lower.column != upper.column)) {
        ReadOneTolerance(LowerTolerance, model);
    }
}

void CRowReader::ReadOneTolerance(EField field, SModelRow& model)
{
    const SColumn& column = m_setup.plan[field];
    const SToleranceReading reading =
        ReadTolerance(Cell(field), EQuantity::Capacitance, model.numbers[Cnom], column.tolerance);
    const SColumn& other = m_setup.plan[field == UpperTolerance ? LowerTolerance : UpperTolerance];
    // One column feeds both sides, or the cell says both and nothing else feeds the other side.
    const bool both = (column.column != 0 && column.column == other.column) ||
                      (reading.bothSides && !other.Mapped());
    const auto& own = field == UpperTolerance ? reading.up : reading.low;
    if (reading.state == ECell::Bad || (reading.state == ECell::Value && !both && !own)) {
        Cannot(field, reading.state == ECell::Bad ? reading.why : "of the other side",
               ExpectedText(EQuantity::Tolerance));
        return;
    }
    if (reading.state == ECell::Empty) {
        return;
    }
    if (reading.takenAsFraction) {
        WarnOfColumn(field, m_memory[field].toldFraction,
                     Text("'%s' without %% is taken as a fraction; numbers of 1 and more are taken "
                          "as percent",
                          Cell(field)));
    }
    if (both) {
        model.numbers[UpperTolerance] = reading.up;
        model.numbers[LowerTolerance] = reading.low;
    } else {
        model.numbers[field] = own;
    }
}

void CRowReader::ReadSizeCell(SModelRow& model)
{
    ESizeSystem system = m_setup.sizeSystem;
    const std::string_view word = Cell(SizeUnit);
    if (!IsEmptyWord(word)) {
        const auto found = SizeSystemOf(word);
        if (!found) {
            Cannot(SizeUnit, "not a size system", "English or Metric");
            return;
        }
        system = *found;
    }
    SSizeReading reading = ReadSize(Cell(Size), system);
    if (reading.state == ECell::Bad) {
        m_cannotWrite = true;
        Cannot(Size, reading.why, kExpectedSize);
        return;
    }
    SColumnMemory& memory = m_memory[Size];
    if (reading.completed && !memory.toldCompleted) {
        memory.toldCompleted = true;
        SImportFinding finding = FindingAt(Size, ESeverity::Note);
        finding.text = "a leading zero that the sheet had lost is put back";
        Tell(std::move(finding), true);
    }
    if (reading.unknown) {
        SImportFinding finding = FindingAt(Size, ESeverity::Warning);
        finding.expected = kExpectedSize;
        finding.text = Text("no case-size code in '%s', kept as it stands", finding.seen);
        Tell(std::move(finding));
    }
    model.size = std::move(reading.size);
}

void CRowReader::CheckRequired(const SModelRow& model)
{
    const auto told = [&](EField field) {
        return std::any_of(m_findings.begin(), m_findings.end(),
                           [&](const SImportFinding& finding) {
                               return finding.severity == ESeverity::Error &&
                                      finding.property == InfoOf(field).label;
                           });
    };
    if (!model.numbers[Cnom]) {
        m_cannotWrite = true;
        if (!told(Cnom)) {
            Cannot(Cnom, "empty", ExpectedText(EQuantity::Capacitance));
        }
    }
    if (model.size.empty()) {
        m_cannotWrite = true;
        if (!told(Size) && !told(SizeUnit)) {
            Cannot(Size, "empty", kExpectedSize);
        }
    }
}

} // namespace zov::batch
