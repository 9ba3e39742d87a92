// SPDX-License-Identifier: Apache-2.0
// The native library file. Framing: 40-byte header, category table, records; docs/formats/zov.md
// has the layout.
//
// A record's values follow the definitions of its category: first a bit per definition that says
// which values are there, then those values. So nothing is stored for what a record does not have,
// a reader can step over definitions that it does not know, and a double that was never given stays
// apart from zero.
#include "base/File.h"
#include "base/Text.h"
#include "core/ByteReader.h"
#include "core/LibraryFiles.h"
#include "core/RecordStore.h"
#include "core/SubModelCodec.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fmt/format.h>

namespace zov {

namespace {

constexpr std::uint16_t kMagic = 6699;
constexpr std::string_view kTag = ".ZOVLib";
constexpr std::size_t kHeaderSize = 40;
constexpr std::size_t kTagOffset = 2;
constexpr std::size_t kCategoryCountOffset = 12;
constexpr std::size_t kRecordCountOffset = 20;
/// A definition takes at least this much: five integers, three empty texts, two flags and a short.
constexpr std::size_t kLeastDefinition = 3 * 4 + 3 * 4 + 2 + 2;
constexpr std::size_t kLeastCategory = 8;
constexpr std::size_t kLeastRecord = 4 + 8; ///< its category and its presence bits
constexpr std::size_t kMaxDefinitions = 64; ///< bits of the presence word

enum class EUse
{
    StepOver, ///< not a property of today
    Take,
    Upgrade ///< held as text, a number today
};

struct SDefinition
{
    EPropId id = EPropId::ModelName;
    EPropKind kind = EPropKind::String;
    EUse use = EUse::StepOver;
};

struct SCategory
{
    ERecordType type = ERecordType::Any;
    std::vector<SDefinition> definitions;
};

SError Broken(std::size_t offset, std::string_view what)
{
    return Fail(EErr::Format, fmt::format("offset {}: {}", offset, what));
}

/// True for text that needs no look at its characters: no byte is NUL or above 0x7F.
bool IsCleanAscii(std::string_view text)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
    constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
    const auto clean = [](std::uint64_t word) { return ((word | (word - kOnes)) & kHighs) == 0; };
    std::uint64_t word = kOnes;
    if (text.size() < 8) {
        std::memcpy(&word, text.data(), text.size());
        return clean(word);
    }
    for (std::size_t at = 0; at + 8 <= text.size(); at += 8) {
        std::memcpy(&word, text.data() + at, 8);
        if (!clean(word)) {
            return false;
        }
    }
    std::memcpy(&word, text.data() + text.size() - 8, 8);
    return clean(word);
}

bool IsTextual(EPropKind kind)
{
    return kind == EPropKind::String || kind == EPropKind::Text;
}

EUse UseOf(EPropId id, EPropKind kind)
{
    const SPropInfo* today = FindProperty(id);
    if (today == nullptr) {
        return EUse::StepOver;
    }
    if (today->kind == kind || (IsTextual(today->kind) && IsTextual(kind))) {
        return EUse::Take;
    }
    return today->kind == EPropKind::Double && IsTextual(kind) ? EUse::Upgrade : EUse::StepOver;
}

CResult<SDefinition> ReadDefinition(CByteReader& in)
{
    SDefinition definition;
    const std::size_t start = in.Offset();
    definition.id = static_cast<EPropId>(in.Int32());
    in.Text(); // the name, for people and other programs
    in.UInt8();
    const std::int32_t kind = in.Int32();
    in.Text(); // unit
    in.UInt8();
    in.Text(); // meaning
    const std::uint16_t layout = in.UInt16();
    in.UInt32();
    if (in.Failed()) {
        return Broken(start, "a property definition ends early");
    }
    if (kind < 0 || kind > static_cast<std::int32_t>(EPropKind::Text)) {
        return Broken(start, fmt::format("property kind {} is not known", kind));
    }
    definition.kind = static_cast<EPropKind>(kind);
    definition.use = UseOf(definition.id, definition.kind);
    if (definition.use == EUse::Take && definition.kind == EPropKind::Composite &&
        layout != kSubModelLayout) {
        return Broken(start, fmt::format("property {} has the layout {}, expected {}",
                                         static_cast<int>(definition.id), layout, kSubModelLayout));
    }
    return definition;
}

CResult<SCategory> ReadCategory(CByteReader& in)
{
    SCategory category;
    const std::size_t start = in.Offset();
    const auto code = static_cast<std::uint32_t>(in.Int32());
    const std::uint32_t count = in.UInt32();
    if (in.Failed()) {
        return Broken(start, "the category table ends early");
    }
    const SRecordTypeInfo* type = FindRecordType(code);
    if (type == nullptr) {
        return Broken(start, fmt::format("category {:#x} is not a record type", code));
    }
    const std::size_t most = std::min(kMaxDefinitions, in.Left() / kLeastDefinition);
    if (count > most) {
        return Broken(
            start, fmt::format("{} property definitions, at most {} can stand here", count, most));
    }
    category.type = type->type;
    for (std::uint32_t i = 0; i < count; ++i) {
        ASSIGN_OR_RETURN(const SDefinition definition, ReadDefinition(in));
        category.definitions.push_back(definition);
    }
    return category;
}

class CNativeReader
{
public:
    CNativeReader(std::string_view bytes, CZovLibrary& library)
        : m_in(bytes)
        , m_library(library)
        , m_builder(library.Store())
    {
    }

    CResult<std::vector<SOldValue>> Read()
    {
        m_in.Skip(kCategoryCountOffset);
        const std::uint64_t categories = m_in.UInt64();
        const std::uint64_t records = m_in.UInt64();
        m_in.Skip(kHeaderSize - kRecordCountOffset - sizeof records);
        RETURN_IF_ERROR(ReadCategories(categories));
        if (records > m_in.Left() / kLeastRecord) {
            return Broken(kRecordCountOffset,
                          fmt::format("{} records cannot stand in {} bytes", records, m_in.Left()));
        }
        m_read.reserve(records);
        for (std::uint64_t i = 0; i < records; ++i) {
            RETURN_IF_ERROR(ReadRecord(i));
        }
        if (m_in.Left() != 0) {
            return Broken(m_in.Offset(),
                          fmt::format("{} bytes follow the last record", m_in.Left()));
        }
        m_library.Reserve(m_library.Count() + m_read.size());
        for (CZovRcdProps* record : m_read) {
            m_library.Append(record);
        }
        return std::move(m_old);
    }

private:
    CResult<void> ReadCategories(std::uint64_t count)
    {
        if (count > m_in.Left() / kLeastCategory) {
            return Broken(
                kCategoryCountOffset,
                fmt::format("{} categories cannot stand in {} bytes", count, m_in.Left()));
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            ASSIGN_OR_RETURN(SCategory category, ReadCategory(m_in));
            if (FindCategory(category.type) != nullptr) {
                return Broken(m_in.Offset(), "a category is defined twice");
            }
            m_categories.push_back(std::move(category));
        }
        return {};
    }

    [[nodiscard]] const SCategory* FindCategory(ERecordType type) const
    {
        const auto found = std::ranges::find(m_categories, type, &SCategory::type);
        return found == m_categories.end() ? nullptr : &*found;
    }

    CResult<void> ReadRecord(std::uint64_t index)
    {
        const std::size_t start = m_in.Offset();
        const auto code = static_cast<ERecordType>(m_in.Int32());
        if (m_current == nullptr || m_current->type != code) {
            m_current = FindCategory(code);
        }
        if (m_current == nullptr) {
            return Broken(start, fmt::format("record {} has the unknown category {:#x}", index + 1,
                                             static_cast<std::uint32_t>(code)));
        }
        std::uint64_t present = m_in.UInt64();
        const std::size_t definitions = m_current->definitions.size();
        if (definitions < kMaxDefinitions && (present >> definitions) != 0) {
            return Broken(start,
                          fmt::format("record {} has values beyond its category's {} properties",
                                      index + 1, definitions));
        }
        m_builder.Reset(m_current->type);
        for (; present != 0; present &= present - 1) {
            const auto bit = static_cast<std::size_t>(std::countr_zero(present));
            const SDefinition& definition = m_current->definitions[bit];
            if (!ReadValue(definition)) {
                return Broken(start,
                              fmt::format("record {} ends early or is damaged in property {}",
                                          index + 1, static_cast<int>(definition.id)));
            }
        }
        if (m_in.Failed()) {
            return Broken(start, fmt::format("record {} ends early", index + 1));
        }
        m_read.push_back(m_builder.Finish());
        return {};
    }

    /// One value of a record. False when it ends early or a composite is not well formed.
    bool ReadValue(const SDefinition& definition)
    {
        if (definition.kind == EPropKind::Double) {
            const double value = m_in.Double();
            if (definition.use == EUse::Take) {
                m_builder.SetDouble(definition.id, value);
            }
            return !m_in.Failed();
        }
        const std::string_view text = m_in.Text();
        if (m_in.Failed()) {
            return false;
        }
        switch (definition.use) {
        case EUse::StepOver:
            return true;
        case EUse::Upgrade:
            if (!text.empty()) {
                m_old.push_back(
                    {m_library.Count() + m_read.size(), definition.id, ToValidUtf8(text)});
            }
            return true;
        case EUse::Take:
            break;
        }
        return definition.kind == EPropKind::Composite ? TakeSubModel(definition.id, text)
                                                       : TakeText(definition.id, text);
    }

    bool TakeText(EPropId id, std::string_view text)
    {
        if (IsCleanAscii(text)) {
            m_builder.SetText(id, text);
        } else {
            m_builder.SetText(id, ToValidUtf8(text));
        }
        return true;
    }

    bool TakeSubModel(EPropId id, std::string_view bytes)
    {
        auto model = DecodeSubModel(id, bytes);
        if (model) {
            m_builder.SetComposite(std::move(*model));
        }
        return model.has_value();
    }

    CByteReader m_in;
    CZovLibrary& m_library;
    CRecordBuilder m_builder;
    std::vector<SCategory> m_categories;
    std::vector<CZovRcdProps*> m_read;
    std::vector<SOldValue> m_old;
    const SCategory* m_current = nullptr;
};

// --- writing -----------------------------------------------------------------------------------

/// Properties of a category in the order in which records hold them: those that the type usually
/// has, and any other that a record of the library does have.
std::vector<EPropId> LayoutOf(ERecordType type, std::uint64_t used)
{
    for (const EPropId id : PropertiesOf(type)) {
        used |= std::uint64_t{1} << CZovRcdProps::Bit(id);
    }
    std::vector<EPropId> layout;
    for (; used != 0; used &= used - 1) {
        layout.push_back(static_cast<EPropId>(std::countr_zero(used)));
    }
    return layout;
}

void AppendDefinition(std::string& out, EPropId id)
{
    const SPropInfo& info = *FindProperty(id);
    const auto units = UnitsOf(info.quantity);
    AppendLittleEndian(out, static_cast<std::uint32_t>(id));
    AppendSizedText(out, info.name);
    AppendLittleEndian(out, std::uint8_t{id == EPropId::ModelName}); // required
    AppendLittleEndian(out, static_cast<std::uint32_t>(info.kind));
    AppendSizedText(out, units.empty() ? std::string_view{} : units.front().suffix);
    AppendLittleEndian(out, std::uint8_t{info.kind != EPropKind::Double}); // of varying length
    AppendSizedText(out, info.meaning);
    AppendLittleEndian(out, kSubModelLayout);
    AppendLittleEndian(out, std::uint32_t{info.kind == EPropKind::Double ? 8U : 0U});
}

/// Appends a record in the layout of its category, which is ascending in the identifiers, as the
/// record's own table is: the presence word is the record's bits moved together.
void AppendRecord(std::string& out, const CZovRcdProps& record, const std::vector<EPropId>& layout)
{
    AppendLittleEndian(out, static_cast<std::uint32_t>(record.Type()));
    const std::size_t presentAt = out.size();
    AppendLittleEndian(out, std::uint64_t{0});
    std::uint64_t present = 0;
    for (std::size_t bit = 0; bit < layout.size(); ++bit) {
        const EPropId id = layout[bit];
        if (!record.Has(id)) {
            continue;
        }
        present |= std::uint64_t{1} << bit;
        const EPropKind kind = FindProperty(id)->kind;
        if (kind == EPropKind::Double) {
            AppendLittleEndian(out, std::bit_cast<std::uint64_t>(*record.GetDouble(id)));
        } else if (kind == EPropKind::Composite) {
            AppendSizedText(out, EncodeSubModel(*record.GetComposite(id)));
        } else {
            AppendSizedText(out, record.GetString(id));
        }
    }
    std::string word;
    AppendLittleEndian(word, present);
    out.replace(presentAt, word.size(), word);
}

} // namespace

bool IsNativeHeader(std::string_view bytes, EHeaderTest test)
{
    if (bytes.size() < kHeaderSize || CByteReader(bytes).UInt16() != kMagic) {
        return false;
    }
    const std::string_view tag = bytes.substr(kTagOffset, kTag.size());
    return test == EHeaderTest::FirstOpening ? EqualsNoCase(tag, kTag) : tag == kTag;
}

CResult<std::vector<SOldValue>> ReadNative(std::string_view bytes, CZovLibrary& library)
{
    if (bytes.size() < kHeaderSize) {
        return Broken(0,
                      fmt::format("{} bytes, expected a header of {}", bytes.size(), kHeaderSize));
    }
    if (!IsNativeHeader(bytes, EHeaderTest::Reopening)) {
        return Broken(0, "the header is not that of a ZOV library");
    }
    return CNativeReader(bytes, library).Read();
}

void WriteNative(const CZovLibrary& library, CByteWriter& out)
{
    std::array<std::uint64_t, 8> used{};
    std::array<std::vector<EPropId>, 8> layouts;
    const auto types = RecordTypes();
    const auto indexOf = [&](ERecordType type) {
        return static_cast<std::size_t>(&InfoOf(type) - types.data());
    };
    for (const CZovRcdProps* record : library.Records()) {
        used[indexOf(record->Type())] |= record->Mask();
    }
    std::string block;
    AppendLittleEndian(block, kMagic);
    block += kTag;
    block.resize(kCategoryCountOffset, '\0');
    AppendLittleEndian(block, std::uint64_t{types.size()});
    AppendLittleEndian(block, std::uint64_t{library.Count()});
    block.resize(kHeaderSize, '\0');
    for (std::size_t i = 0; i < types.size(); ++i) {
        layouts[i] = LayoutOf(types[i].type, used[i]);
        AppendLittleEndian(block, static_cast<std::uint32_t>(types[i].type));
        AppendLittleEndian(block, static_cast<std::uint32_t>(layouts[i].size()));
        for (const EPropId id : layouts[i]) {
            AppendDefinition(block, id);
        }
    }
    constexpr std::size_t kBlock = std::size_t{256} << 10U;
    for (const CZovRcdProps* record : library.Records()) {
        AppendRecord(block, *record, layouts[indexOf(record->Type())]);
        if (block.size() >= kBlock) {
            out.Append(block);
            block.clear();
        }
    }
    out.Append(block);
}

} // namespace zov
