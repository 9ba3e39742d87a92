// SPDX-License-Identifier: Apache-2.0
// The native library file. Framing: 40-byte header, category table, records; docs/formats/zov.md
// has the layout.
//
// A record's values follow the definitions of its category: first a bit per definition that says
// which values are there, then those values. So nothing is stored for what a record does not have,
// a reader can step over definitions that it does not know, and a double that was never given stays
// apart from zero.
#include "base/Bits.h"
#include "base/File.h"
#include "base/Text.h"
#include "core/ByteReader.h"
#include "core/LibraryFiles.h"
#include "core/RecordStore.h"
#include "core/SubModelCodec.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
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
constexpr std::size_t kLeastRecord = 4 + 8;    ///< its category and its presence bits
constexpr std::size_t kMaxDefinitions = 64;    ///< bits of the presence word
constexpr std::uint64_t kRecordsAtOnce = 4096; ///< between two words to the progress

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
    std::uint64_t word = 0;
    if (text.size() < 8) {
        return clean(LoadShort(text) | (text.empty() ? kOnes : kOnes << (8 * text.size())));
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
    CNativeReader(std::string_view bytes, CZovLibrary& library, const FLibraryProgress& progress)
        : m_in(bytes)
        , m_progress(progress)
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
            if (i % kRecordsAtOnce == 0 && m_progress &&
                !m_progress(static_cast<double>(i) / static_cast<double>(records))) {
                return Fail(EErr::Cancelled, "cancelled");
            }
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
    const FLibraryProgress& m_progress;
    CZovLibrary& m_library;
    CRecordBuilder m_builder;
    std::vector<SCategory> m_categories;
    std::vector<CZovRcdProps*> m_read;
    std::vector<SOldValue> m_old;
    const SCategory* m_current = nullptr;
};

// --- writing -----------------------------------------------------------------------------------

/// Properties of a category as bits, in the order in which records hold them: those that the type
/// usually has, and any other that a record of the library does have.
std::uint64_t LayoutOf(ERecordType type, std::uint64_t used)
{
    for (const EPropId id : PropertiesOf(type)) {
        used |= std::uint64_t{1} << CZovRcdProps::Bit(id);
    }
    return used;
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

/// Collects bytes in one block that is reused, and hands it on when it is full.
class CBlock
{
public:
    explicit CBlock(CByteWriter& out)
        : m_out(out)
        , m_bytes(kSize)
    {
    }

    void Number(std::uint64_t value)
    {
        Room(sizeof value);
        Raw(value);
    }
    void Number32(std::uint32_t value)
    {
        Room(sizeof value);
        Raw(value);
    }
    void Text(std::string_view text)
    {
        if (text.size() > kSize / 2) {
            Number32(static_cast<std::uint32_t>(text.size()));
            Flush();
            m_out.Append(text);
            return;
        }
        Room(sizeof(std::uint32_t) + text.size());
        Raw(static_cast<std::uint32_t>(text.size()));
        std::memcpy(m_bytes.data() + m_used, text.data(), text.size());
        m_used += text.size();
    }
    void Flush()
    {
        m_out.Append({m_bytes.data(), m_used});
        m_used = 0;
    }

private:
    /// Somewhat over a mebibyte: CAtomicFile then takes it as it is, without another copy.
    static constexpr std::size_t kSize = (std::size_t{1} << 20U) + (std::size_t{64} << 10U);

    void Room(std::size_t bytes)
    {
        if (m_used + bytes > kSize) {
            Flush();
        }
    }
    template <class T>
    void Raw(T value)
    {
        if constexpr (std::endian::native == std::endian::big) {
            T swapped = 0;
            for (std::size_t i = 0; i < sizeof(T); ++i) {
                swapped = static_cast<T>(swapped << 8U | (value >> (8 * i) & 0xFFU));
            }
            value = swapped;
        }
        std::memcpy(m_bytes.data() + m_used, &value, sizeof value);
        m_used += sizeof value;
    }

    CByteWriter& m_out;
    std::vector<char> m_bytes;
    std::size_t m_used = 0;
};

/// By identifier, its place among the definitions of a category.
using TRanks = std::array<std::uint8_t, static_cast<std::size_t>(kPropIdLimit)>;

TRanks RanksOf(std::uint64_t layout)
{
    TRanks ranks{};
    std::uint8_t rank = 0;
    for (std::uint64_t rest = layout; rest != 0; rest &= rest - 1) {
        ranks[static_cast<std::size_t>(std::countr_zero(rest))] = rank++;
    }
    return ranks;
}

/// A record in the layout of its category. Both ascend in the identifiers, so one walk over the
/// record's own table writes the values in order.
void AppendRecord(CBlock& out, const CZovRcdProps& record, const TRanks& ranks)
{
    static const std::uint64_t composites = [] {
        std::uint64_t mask = 0;
        for (const SPropInfo& info : Properties()) {
            mask |= std::uint64_t{info.kind == EPropKind::Composite} << CZovRcdProps::Bit(info.id);
        }
        return mask;
    }();
    const std::uint64_t doubles = DoubleProperties();
    out.Number32(static_cast<std::uint32_t>(record.Type()));
    std::uint64_t present = 0;
    for (std::uint64_t rest = record.Mask(); rest != 0; rest &= rest - 1) {
        present |= std::uint64_t{1} << ranks[static_cast<std::size_t>(std::countr_zero(rest))];
    }
    out.Number(present);
    const std::uint64_t* slot = record.Slots();
    for (std::uint64_t rest = record.Mask(); rest != 0; rest &= rest - 1, ++slot) {
        const std::uint64_t bit = rest & (~rest + 1);
        if ((doubles & bit) != 0) {
            out.Number(*slot);
        } else if ((composites & bit) != 0) {
            out.Text(EncodeSubModel(*CRecordStore::CompositeOf(*slot)));
        } else {
            out.Text(CRecordStore::TextOf(*slot));
        }
    }
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

CResult<std::vector<SOldValue>> ReadNative(std::string_view bytes, CZovLibrary& library,
                                           const FLibraryProgress& progress)
{
    if (bytes.size() < kHeaderSize) {
        return Broken(0,
                      fmt::format("{} bytes, expected a header of {}", bytes.size(), kHeaderSize));
    }
    if (!IsNativeHeader(bytes, EHeaderTest::Reopening)) {
        return Broken(0, "the header is not that of a ZOV library");
    }
    return CNativeReader(bytes, library, progress).Read();
}

void WriteNative(const CZovLibrary& library, CByteWriter& out)
{
    std::array<std::uint64_t, 8> used{};
    std::array<TRanks, 8> ranks{};
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
        const std::uint64_t layout = LayoutOf(types[i].type, used[i]);
        ranks[i] = RanksOf(layout);
        AppendLittleEndian(block, static_cast<std::uint32_t>(types[i].type));
        AppendLittleEndian(block, std::uint32_t{PopCount(layout)});
        for (std::uint64_t rest = layout; rest != 0; rest &= rest - 1) {
            AppendDefinition(block, static_cast<EPropId>(std::countr_zero(rest)));
        }
    }
    out.Append(block);
    CBlock records(out);
    for (const CZovRcdProps* record : library.Records()) {
        AppendRecord(records, *record, ranks[indexOf(record->Type())]);
    }
    records.Flush();
}

} // namespace zov
