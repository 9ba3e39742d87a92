// SPDX-License-Identifier: Apache-2.0
/// Vendor decap lists: every item becomes a capacitor.
#include "base/Text.h"
#include "core/ExchangeReader.h"

#include <array>

namespace zov::exchange {

namespace {

using enum EPropKind;

enum EItem : std::size_t
{
    PartNo,
    Manuf,
    MfgPartNumber,
    UpTolerance,
    LowTolerance,
    Volt,
    Prefer,
    Cnom,
    PriceA,
    PriceB,
    PriceC,
    Description,
    Comment,
    FieldCount, ///< up to here one attribute is one property
    Size = FieldCount,
    SizeUnit,
    Tcc,
    ModelType,
    CktDef,
    SParameterPath,
    TrackFolder,
    Count
};

constexpr std::array<SField, EItem::Count> kItemFields = {{
    {"PartNo", EPropId::ModelName},
    {"Manuf", EPropId::Manuf},
    {"MfgPartNumber", EPropId::MfgPartNumber},
    {"UpTolerance", EPropId::UpTolerance, Double, EQuantity::Tolerance},
    {"LowTolerance", EPropId::LowTolerance, Double, EQuantity::Tolerance},
    {"Volt", EPropId::Volt, Double, EQuantity::Voltage},
    {"Prefer", EPropId::Prefer},
    {"Cnom", EPropId::Cnom, Double, EQuantity::Capacitance},
    {"PriceA", EPropId::PriceA, Double},
    {"PriceB", EPropId::PriceB, Double},
    {"PriceC", EPropId::PriceC, Double},
    {"Description", EPropId::Description, Text},
    {"Comment", EPropId::Comment, Text},
    {"Size", EPropId::Size},
    {"SizeUnit", EPropId::Size},
    {"TCC", EPropId::Tcc},
    {"ModelType", EPropId::CapacitorModel},
    {"CktDef", EPropId::CktDef},
    {"SParameterPath", EPropId::CktDef},
    {"TrackFolder", EPropId::TrackFolder},
}};

class CItemReader
{
public:
    explicit CItemReader(CContext& context)
        : m_context(context)
        , m_item(kItemFields)
    {
    }

    bool Read()
    {
        if (!m_context.scanner.ReadAttributes(m_item.values)) {
            return false;
        }
        m_context.Begin(ERecordType::Capacitor, m_item.values[EItem::PartNo]);
        if (m_context.name.empty()) {
            m_context.Reject(EImportMsg::DecapPartNo);
        } else {
            ReadValues();
            ReadSize();
            ReadModel();
        }
        m_context.Finish();
        return !m_context.scanner.HasContent() || m_context.scanner.SkipRest();
    }

private:
    void ReadValues()
    {
        constexpr std::uint32_t kFields = (1U << EItem::FieldCount) - 1;
        std::uint32_t unreadable = m_context.SetFields(m_item, kFields);
        for (; unreadable != 0; unreadable &= unreadable - 1) {
            const auto i = static_cast<std::size_t>(std::countr_zero(unreadable));
            m_context.SayUnreadable("Decap Library", kItemFields[i].name, m_item.values[i]);
        }
        if (const std::string_view tcc = m_item.values[EItem::Tcc]; !SameName(tcc, "NULL")) {
            m_context.builder.SetText(EPropId::Tcc, tcc);
        }
    }

    void ReadSize()
    {
        const std::string_view size = m_item.values[EItem::Size];
        if (size.empty()) {
            m_context.Reject(EImportMsg::DecapSize);
            return;
        }
        const std::string joined = SizeOf(size, m_item.values[EItem::SizeUnit]);
        if (joined.empty()) {
            m_context.Reject(EImportMsg::DecapBadSize, m_context.name, size);
        }
        m_context.builder.SetText(EPropId::Size, joined);
    }

    void ReadModel()
    {
        if (m_item.values[EItem::ModelType].empty()) {
            m_context.Reject(EImportMsg::DecapModelType);
            return;
        }
        // The words for the kind of model differ between vendors; whether a file is named does not.
        std::string_view file = m_item.values[EItem::CktDef];
        file = file.empty() ? m_item.values[EItem::SParameterPath] : file;
        if (file.empty()) {
            return;
        }
        const std::string_view track = m_item.values[EItem::TrackFolder];
        m_context.builder.SetDouble(EPropId::ModelIsCircuit, 1.0);
        m_context.builder.SetText(EPropId::CktDef, file);
        m_context.builder.SetText(EPropId::TrackFolder, track);
        if (!IsCircuitText(file) && !m_context.locator.IsThere(file, track)) {
            m_context.Say(EImportMsg::DecapFile, m_context.name, file);
        }
    }

    CContext& m_context;
    CFlatElement m_item;
};

} // namespace

bool ReadDecapList(CContext& context)
{
    CItemReader reader(context);
    bool any = false;
    const bool read = context.Children([&](std::string_view child) {
        if (!SameName(child, "DecapLibItem") && !SameName(child, "PopDecapLibItem")) {
            return context.scanner.Skip();
        }
        any = true;
        return reader.Read();
    });
    if (read && !any) {
        context.Say(EImportMsg::DecapItem);
    }
    return read;
}

} // namespace zov::exchange
