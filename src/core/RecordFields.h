// SPDX-License-Identifier: Apache-2.0
/// Every field of a record as data: pages of fields per record type, each with its name, its kind
/// and how its value is read from and put into a record. Editors, tables and pasted cells are made
/// from it.
///
///     for (const SRecordPage& page : PagesOf(record.Type())) {
///         for (const SRecordField& field : page.fields) {
///             text = FieldText(field.Get(record), field.info, units);
#pragma once

#include "base/Result.h"
#include "core/ZovRcdProps.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zov {

enum class EFieldKind : std::uint8_t
{
    Text,
    LongText, ///< may hold line breaks
    File,     ///< name of a file, relative to the library's folder or absolute
    Circuit,  ///< name of a file, or the text of a circuit
    Number,
    Choice, ///< one of `choices`, by index
    Names,  ///< typed with blanks between them
    Pairs,  ///< of names: "A B; C D"
    Rows    ///< a table of `columns`
};

struct SFieldInfo
{
    const char* name = "";  ///< of the property or member: "Cnom", "NominalVoltage"
    const char* label = ""; ///< as users see it
    EFieldKind kind = EFieldKind::Text;
    EQuantity quantity = EQuantity::None; ///< of Number
    bool required = false;
    std::span<const std::string_view> choices = {};
    std::span<const SFieldInfo> (*columns)() = nullptr;
};

struct SFieldValue;
using TFieldRow = std::vector<SFieldValue>; ///< a value per column
using TFieldRows = std::vector<TFieldRow>;

/// Nothing where a record holds none. Text, LongText, File, Circuit: string; Number: SI value;
/// Choice: index.
struct SFieldValue
{
    using THeld = std::variant<std::monostate, std::string, double, int, std::vector<std::string>,
                               std::vector<TNamePair>, TFieldRows>;
    THeld held;

    SFieldValue() = default;
    SFieldValue(THeld value) // NOLINT: implicit on purpose
        : held(std::move(value))
    {
    }
    [[nodiscard]] bool IsNone() const { return held.index() == 0; }
    /// Null when it is of another kind.
    template <class T>
    [[nodiscard]] const T* As() const
    {
        return std::get_if<T>(&held);
    }
    bool operator==(const SFieldValue&) const = default;
};

struct SRecordField
{
    SFieldInfo info = {};
    EPropId owner = EPropId::ModelName; ///< the property that holds it
    std::size_t member = 0;             ///< of the owner
    /// Usable only while the page's first field, a choice, has this index; -1: always.
    int onlyWhenFirstIs = -1;
    /// Required only while it has this index; -1: always, if at all.
    int requiredWhenFirstIs = -1;
    SFieldValue (*get)(const CZovRcdProps&, const SRecordField&) = nullptr;
    void (*set)(CZovRcdProps&, const SRecordField&, const SFieldValue&) = nullptr;

    [[nodiscard]] SFieldValue Get(const CZovRcdProps& record) const { return get(record, *this); }
    /// A sub-model that is not there yet is made; none removes a flat property.
    void Set(CZovRcdProps& record, const SFieldValue& value) const { set(record, *this, value); }
};

struct SRecordPage
{
    EModelPage page = EModelPage::First;
    const char* title = "";
    const char* form = ""; ///< name of its dialog form
    std::vector<SRecordField> fields = {};
    /// The sub-model that a record may have or not; ModelName when the page is always there.
    EPropId optional = EPropId::ModelName;
    TSubModel (*make)() = nullptr; ///< an empty one

    [[nodiscard]] bool IsOptional() const { return make != nullptr; }
};

/// The pages of a record type in the order in which they are shown; the first one holds its flat
/// properties.
[[nodiscard]] std::span<const SRecordPage> PagesOf(ERecordType type);

/// As users read it; empty for none. `exact` keeps every digit of a number, otherwise six.
[[nodiscard]] std::string FieldText(const SFieldValue& value, const SFieldInfo& info,
                                    const CDisplayUnits& units, bool exact = false);
/// What a user typed: numbers with any unit of their quantity, without one in the display unit; an
/// empty text is none. Errors (Argument) say what is expected.
[[nodiscard]] CResult<SFieldValue> ParseField(std::string_view text, const SFieldInfo& info,
                                              const CDisplayUnits& units);

/// False when the exchange form can't hold the text: it escapes neither quotes nor ampersands nor
/// angle brackets.
[[nodiscard]] bool FitsExchange(std::string_view text);

} // namespace zov
