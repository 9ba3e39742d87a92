// SPDX-License-Identifier: Apache-2.0
// The part of CRowReader that settles a row's model definition, and the making of the record.
#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/Messages.h"
#include "batch/RowReader.h"
#include "core/LibraryFiles.h"

#include <algorithm>

namespace zov::batch {

namespace {

using enum EField;

/// Bytes as a library holds texts: valid UTF-8 without NUL. Nearly every text is that already.
void SetText(CRecordBuilder& builder, EPropId id, std::string_view text)
{
    const bool plain = std::all_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte > 0 && byte < 0x80;
    });
    if (plain) {
        builder.SetText(id, text);
    } else {
        builder.SetText(id, ToValidUtf8(text));
    }
}

} // namespace

// --- vendor library --------------------------------------------------------------------------

bool CRowReader::FindVendorPart(const SModelRow& model)
{
    const std::string_view number =
        model.texts[MfgPartNo].empty() ? model.texts[ModelName] : model.texts[MfgPartNo];
    m_part = m_setup.vendor->Find(model.texts[Manufacturer], number);
    if (m_part != nullptr) {
        return true;
    }
    SImportFinding finding = FindingAt(MfgPartNo, ESeverity::Error);
    finding.text = "maker and part number are not in the vendor library";
    m_log.Write(Text(msg::kVendorMissing, m_name, model.texts[Manufacturer], number));
    m_findings.push_back(std::move(finding));
    return false;
}

void CRowReader::TakeFromVendor(SModelRow& model)
{
    if (m_part == nullptr) {
        return;
    }
    const CZovRcdProps& vendor = *m_part->record;
    for (const EField field : {MfgPartNo, Manufacturer, Tcc, Preference, Comment}) {
        if (model.texts[field].empty()) {
            model.texts[field] = vendor.GetString(InfoOf(field).id);
        }
    }
    for (const EField field : {Cnom, Volt, ComponentCost, MountingCost, BomPenaltyCost,
                               UpperTolerance, LowerTolerance}) {
        if (!model.numbers[field]) {
            model.numbers[field] = vendor.GetDouble(InfoOf(field).id);
        }
    }
    if (model.size.empty()) {
        model.size = vendor.GetString(EPropId::Size);
    }
}

void CRowReader::TakeVendorCircuit(const SDiscreteModel& definition, SModelRow& model)
{
    model.isCircuit = true;
    model.cktDef = definition.cktDef;
    model.trackFolder = definition.trackFolder;
    if (IsCircuitText(definition.cktDef)) {
        return;
    }
    const auto found =
        LocateCircuitFile(*m_part->folder, definition.cktDef, definition.trackFolder);
    if (!found.empty()) {
        model.cktDef = m_wrapper.RelativeToLibrary(found);
        model.trackFolder.clear();
    }
}

// --- model definition ------------------------------------------------------------------------

bool CRowReader::ReadModel(SModelRow& model)
{
    const std::string_view word = Cell(ModelType);
    if (word.empty() && m_part != nullptr) {
        if (const auto definition = m_part->record->GetDiscreteModel()) {
            if (definition->isCircuit) {
                TakeVendorCircuit(*definition, model);
            } else {
                model.numbers[Resistance] = definition->resistance;
                model.numbers[Inductance] = definition->inductance;
                model.numbers[Cact] = definition->capacitance;
            }
            return true;
        }
    }
    const auto kind = FindModelKind(word);
    if (!kind) {
        Cannot(ModelType, word.empty() ? "empty" : "not a model type",
               "RLC, Circuit or Sparameter");
        return false;
    }
    if (*kind != EModelKind::Rlc) {
        return ReadCircuit(model);
    }
    ReadPlainValues(model);
    return true;
}

void CRowReader::ReadPlainValues(SModelRow& model)
{
    const auto definition =
        m_part != nullptr ? m_part->record->GetDiscreteModel() : std::optional<SDiscreteModel>();
    const auto read = [&](EField field, bool mayBeIdeal, std::optional<double> vendor) {
        const std::size_t before = m_findings.size();
        auto value = ReadNumber(field, InfoOf(field).quantity);
        if (!value && m_findings.size() == before) {
            value = vendor                              ? vendor
                    : mayBeIdeal && m_setup.assumeIdeal ? std::optional(0.0)
                                                        : std::nullopt;
            if (!value) {
                Cannot(field, "empty", ExpectedText(InfoOf(field).quantity));
            }
        }
        model.numbers[field] = value;
    };
    const bool capacitor = m_setup.type == ERecordType::Capacitor;
    read(Resistance, m_setup.type != ERecordType::Resistor,
         definition ? definition->resistance : std::nullopt);
    if (m_setup.type != ERecordType::Resistor) {
        read(Inductance, capacitor, definition ? definition->inductance : std::nullopt);
    }
    if (capacitor) {
        model.numbers[Cact] = definition ? definition->capacitance : std::nullopt;
        ReadActualCapacitance(model);
    } else {
        ReadMaxCurrent(model);
    }
}

void CRowReader::ReadActualCapacitance(SModelRow& model)
{
    const std::size_t before = m_findings.size();
    if (const auto value = ReadNumber(Cact, EQuantity::Capacitance)) {
        model.numbers[Cact] = value;
        return;
    }
    if (model.numbers[Cact] || m_findings.size() != before) {
        return;
    }
    model.numbers[Cact] = model.numbers[Cnom];
    if (!m_setup.assumeIdeal) {
        WarnOfColumn(Cact, m_memory[Cact].toldCact,
                     "no actual capacitance in this and perhaps further rows, the nominal one is "
                     "taken");
    }
}

void CRowReader::ReadMaxCurrent(SModelRow& model)
{
    const std::size_t before = m_findings.size();
    model.numbers[MaxCurrent] = ReadNumber(MaxCurrent, EQuantity::Current);
    if (!model.numbers[MaxCurrent] && m_setup.plan[MaxCurrent].Mapped() && !m_setup.assumeIdeal &&
        m_findings.size() == before) {
        Cannot(MaxCurrent, "empty", ExpectedText(EQuantity::Current));
    }
}

bool CRowReader::ReadNode(SModelRow& model)
{
    model.node = m_setup.node;
    const std::string_view word = Cell(NodeAssignment);
    if (IsEmptyWord(word)) {
        return true;
    }
    const auto node = FindNodeAssignment(word);
    if (!node) {
        Cannot(NodeAssignment, "not a node assignment", "Series or Shunt");
        return false;
    }
    model.node = *node;
    return true;
}

bool CRowReader::ReadCircuit(SModelRow& model)
{
    const std::string_view name = Cell(FileName);
    if (IsEmptyWord(name) || IsErrorValue(name)) {
        Cannot(FileName, "no file name", "the name of a .s1p, .s2p, .ckt, .mod or .sp file");
        return false;
    }
    const bool read = ReadNode(model);
    if (m_setup.type != ERecordType::Capacitor) {
        model.numbers[MaxCurrent] = ReadNumber(MaxCurrent, EQuantity::Current);
    }
    model.isCircuit = true;
    model.wrappedFile = JoinFilePath(Cell(FilePath), name);
    SCircuit circuit = m_wrapper.Wrap(m_name, model.wrappedFile, model.node);
    if (circuit.fault != SCircuit::EFault::None) {
        return TellCircuitFault(circuit, model) && read;
    }
    model.cktDef = std::move(circuit.text);
    return read;
}

bool CRowReader::TellCircuitFault(const SCircuit& circuit, SModelRow& model)
{
    const bool noFile = circuit.fault == SCircuit::EFault::NoFile;
    const bool kept = m_setup.type == ERecordType::Capacitor;
    const bool fixedWords = circuit.why.starts_with("Please");
    if (fixedWords) {
        m_log.Write(circuit.why);
    }
    if (kept) {
        m_log.Write(Text(noFile ? msg::kKeptNoFile : msg::kKeptNoSpice, m_name, model.wrappedFile));
    } else {
        m_log.Write(Text(noFile ? msg::kNoFile : msg::kNoSpice, model.wrappedFile));
    }
    if (!fixedWords) {
        m_log.Write("    " + circuit.why);
    }
    SImportFinding finding = FindingAt(FileName, kept ? ESeverity::Warning : ESeverity::Error);
    finding.seen = model.wrappedFile;
    finding.text = circuit.why;
    m_findings.push_back(std::move(finding));
    model.cktDef = std::move(model.wrappedFile);
    model.wrappedFile.clear();
    return kept;
}

// --- record ----------------------------------------------------------------------------------

CZovRcdProps* BuildRecord(const SModelRow& model, ERecordType type, CRecordBuilder& builder)
{
    builder.Reset(type);
    for (const EField field : kTextFields) {
        if (IsFieldOf(field, type)) {
            SetText(builder, InfoOf(field).id, model.texts[field]);
        }
    }
    const auto put = [&](EPropId id, const std::optional<double>& value) {
        if (value) {
            builder.SetDouble(id, *value);
        }
    };
    for (const EField field : {Cnom, ComponentCost, MountingCost, BomPenaltyCost, Volt,
                               UpperTolerance, LowerTolerance, MaxCurrent}) {
        put(InfoOf(field).id, model.numbers[field]);
    }
    SetText(builder, EPropId::Size, model.size);
    if (model.isCircuit) {
        builder.SetDouble(EPropId::ModelIsCircuit, 1.0);
        SetText(builder, EPropId::CktDef, model.cktDef);
        SetText(builder, EPropId::TrackFolder, model.trackFolder);
        return builder.Finish();
    }
    const bool capacitor = type == ERecordType::Capacitor;
    put(capacitor ? EPropId::Rv : EPropId::Resistance, model.numbers[Resistance]);
    put(capacitor ? EPropId::Lv : EPropId::Inductance, model.numbers[Inductance]);
    put(EPropId::Cv, model.numbers[Cact]);
    return builder.Finish();
}

} // namespace zov::batch
