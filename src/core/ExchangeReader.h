// SPDX-License-Identifier: Apache-2.0
/// What the readers of the record families share: the scanner, the record under construction, the
/// attributes of every element, the log. For the readers only; others use LibraryFiles.h.
///
/// A reader function returns false when the text itself is not readable; what is wrong with one
/// record is told to the log and leaves the record out.
#pragma once

#include "base/Sink.h"
#include "core/CircuitFiles.h"
#include "core/ExchangeMessages.h"
#include "core/ExchangeNumber.h"
#include "core/ExchangeScanner.h"
#include "core/LibraryFiles.h"
#include "core/RecordStore.h"

#include <algorithm>
#include <fmt/format.h>
#include <initializer_list>
#include <vector>

namespace zov::exchange {

/// Equal without regard to case, quick when the spelling is the same.
[[nodiscard]] bool SameName(std::string_view a, std::string_view b);

/// One attribute that is one property of the record.
struct SField
{
    std::string_view name;
    EPropId id;
    EPropKind kind = EPropKind::String;
    EQuantity quantity = EQuantity::None;
};

/// An element whose attributes are the record's own properties.
class CFlatElement
{
public:
    explicit CFlatElement(std::span<const SField> fields);

    [[nodiscard]] std::span<const SField> Fields() const { return m_fields; }
    CAttributeTable values;
    std::vector<CQuantityReader> numbers; ///< one per field

private:
    std::span<const SField> m_fields;
};

class CContext
{
public:
    CContext(CZovLibrary& library, std::string_view text, const SImportOptions& options,
             CLogSink& log);

    template <class... T>
    void Say(EImportMsg id, const T&... values)
    {
        m_log.Write(fmt::format(fmt::runtime(TextOf(id)), values...));
    }
    /// Says why the record under construction is not added.
    template <class... T>
    void Reject(EImportMsg id, const T&... values)
    {
        m_valid = false;
        Say(id, values...);
    }
    /// A value that is there but cannot be read: told, and left out.
    void SayUnreadable(std::string_view what, std::string_view attribute, std::string_view value);

    /// A new record; `recordName` stays valid until Finish.
    void Begin(ERecordType type, std::string_view recordName)
    {
        builder.Reset(type);
        name = recordName;
        m_valid = true;
    }
    /// Keeps the record unless it was rejected.
    void Finish()
    {
        if (m_valid) {
            m_pending.push_back(builder.Finish());
        }
    }

    /// Calls `read` with the name of every child of the element whose attributes were read just
    /// now; `read` takes the child whole.
    template <class TRead>
    bool Children(TRead&& read)
    {
        using EToken = CExchangeScanner::EToken;
        if (!scanner.HasContent()) {
            return true;
        }
        EToken token = scanner.Next();
        for (; token == EToken::Open; token = scanner.Next()) {
            if (!GoOn() || !read(scanner.Name())) {
                return false;
            }
        }
        return token == EToken::Close;
    }

    /// Sets the properties of `element` that stand in the mask of attribute positions; returns the
    /// positions of numbers that cannot be read.
    std::uint32_t SetFields(CFlatElement& element, std::uint32_t wanted);

    /// A dimensioned attribute: none when it is empty, not there or (told) not readable.
    std::optional<double> Quantity(const CAttributeTable& values, std::size_t index,
                                   std::string_view attribute, EQuantity quantity,
                                   std::string_view what);
    /// True once for each time Quantity found something that is not readable.
    bool TakeUnreadable() { return std::exchange(m_unreadable, false); }
    void SetUnreadable() { m_unreadable = true; }

    /// Asks, every few thousand elements, whether the work is to go on.
    bool GoOn()
    {
        m_cancelled = ++m_elements % kElementsAtOnce == 0 && m_options.progress &&
                      !m_options.progress(scanner.ShareDone());
        return !m_cancelled;
    }
    [[nodiscard]] bool IsCancelled() const { return m_cancelled; }

    [[nodiscard]] bool Valid() const { return m_valid; }
    [[nodiscard]] std::vector<CZovRcdProps*>& Pending() { return m_pending; }
    [[nodiscard]] const SImportOptions& Options() const { return m_options; }
    [[nodiscard]] CToleranceLog& Tolerance() { return m_tolerance; }

private:
    const SImportOptions& m_options;
    CLogSink& m_log;
    CToleranceLog m_tolerance;
    static constexpr std::size_t kElementsAtOnce = 2048;
    std::size_t m_elements = 0;
    bool m_cancelled = false;
    bool m_valid = true;
    bool m_unreadable = false;
    std::vector<CZovRcdProps*> m_pending; ///< added to the library when the whole text was read

public:
    CExchangeScanner scanner;
    CRecordBuilder builder;
    CCircuitLocator locator;
    std::string_view name; ///< of the record under construction
    CAttributeTable through;
    CAttributeTable throughInfo;
};

/// Every reader takes the element that was just opened, its attributes not yet read.
class CDiscreteReader
{
public:
    explicit CDiscreteReader(CContext& context);
    bool ReadCapacitor();
    bool ReadInductor();
    bool ReadResistor();

private:
    void ReadSize();
    void TakeCapacitorModel(std::uint32_t& wanted);
    void LocateCircuit(CFlatElement& element, std::size_t cktDef, EImportMsg missing);
    bool TakeWordModel(CFlatElement& element, std::size_t modelType, ERecordType type);
    bool FinishWithThrough();
    void TellUnreadable(const CFlatElement& element, std::uint32_t unreadable,
                        std::string_view what);

    CContext& m_context;
    CFlatElement m_capacitor;
    CFlatElement m_inductor;
    CFlatElement m_resistor;
};

/// DC, DC-DC converter, AC and VRM models.
class CPowerReader
{
public:
    explicit CPowerReader(CContext& context);
    bool ReadDc();
    bool ReadDcConv();
    bool ReadAc();
    /// @param kind  "VRM Model" or "IC/VRM Model", as messages say
    bool ReadVrm(std::string_view kind);

private:
    struct SSpiceWords
    {
        EImportMsg file;
        EImportMsg locate;
        EImportMsg model;
        bool modelRequired;
    };
    bool ReadSpice(const SSpiceWords& words, std::string_view kind,
                   std::optional<SSpiceRef>& spice);
    bool ReadDcRail(SDcRail& rail);
    bool ReadAcRail(SAcRail& rail);
    bool ReadVrmRail(SVrmRail& rail, std::string_view kind);
    void ReadConvPin(SConvPin& pin);
    std::optional<double> NominalVoltage(const CAttributeTable& values, std::size_t index,
                                         std::string_view kind);

    CContext& m_context;
    CAttributeTable m_spice;
    CAttributeTable m_dc;
    CAttributeTable m_dcRail;
    CAttributeTable m_equalCurrent;
    CAttributeTable m_dcConv;
    CAttributeTable m_convPin;
    CAttributeTable m_acRail;
    CAttributeTable m_feqImp;
    CAttributeTable m_vrmRail;
    CAttributeTable m_pin;
    CAttributeTable m_none;
};

/// IC and VRM records, and connectors, packages and SPICE circuits.
class CRecordReader
{
public:
    explicit CRecordReader(CContext& context);
    bool ReadIc();
    bool ReadVrmRecord();
    bool ReadCircuit(ERecordType type);

private:
    bool Begin(ERecordType type, CFlatElement& element, EImportMsg nameMissing,
               std::string_view shown);

    CContext& m_context;
    CPowerReader m_power;
    CFlatElement m_ic;
    CFlatElement m_circuit;
};

bool ReadIoModel(CContext& context);
bool ReadThermal(CContext& context);
bool ReadThrough(CContext& context);

/// Children of a vendor decap list's root.
bool ReadDecapList(CContext& context);

/// A case size of a capacitor as memory holds it; empty when the code is too short.
[[nodiscard]] std::string SizeOf(std::string_view code, std::string_view unit);

/// What a `ModelType` says, whatever spelling: true circuit, false plain values.
[[nodiscard]] std::optional<bool> IsCircuitType(std::string_view word, ERecordType type);

/// The names in a text, separated by white space.
[[nodiscard]] std::vector<std::string> NamesOf(std::string_view text);

} // namespace zov::exchange
