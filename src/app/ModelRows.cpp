// SPDX-License-Identifier: Apache-2.0
#include "app/ModelRows.h"

#include "app/RecordTexts.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::app {
namespace {

constexpr std::size_t kStep = 4096;
/// Smaller libraries are searched record by record within a blink.
constexpr std::size_t kWorthABlock = 2000;
/// Pieces that are sorted at once: short enough for the window to stop the work within a blink.
constexpr std::size_t kSortPiece = 1U << 15U;
/// Of the work, what filtering counts for; the rest is sorting.
constexpr double kFilterShare = 0.5;

/// The first eight characters, upper-cased, as one number in the order of the texts: it settles
/// most comparisons without a look at them. Any character above ASCII is above all of ASCII, and
/// ends the number, since how such characters compare is for the texts to say.
std::uint64_t PrefixOf(std::string_view text)
{
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        const auto c = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
        if (c >= 0x80U) {
            return (prefix << 8U | 0x80U) << (8U * (7U - i));
        }
        prefix = prefix << 8U | static_cast<unsigned char>(ToUpper(static_cast<char>(c)));
    }
    return prefix;
}

struct SSortItem
{
    std::uint64_t prefix = 0;
    SSortKey key;
    SModelRow row;
};

/// Negative, zero or positive.
int Compare(const SSortItem& a, const SSortItem& b)
{
    if (a.prefix != b.prefix) {
        return a.prefix < b.prefix ? -1 : 1;
    }
    if (const int texts = CompareNoCase(a.key.text, b.key.text); texts != 0) {
        return texts;
    }
    if (a.key.number.has_value() != b.key.number.has_value()) {
        return a.key.number.has_value() ? -1 : 1;
    }
    if (a.key.number.value_or(0) == b.key.number.value_or(0)) {
        return 0;
    }
    return *a.key.number < *b.key.number ? -1 : 1;
}

/// Stable, and in steps that `progress` can end.
bool Sort(std::vector<SSortItem>& items, bool descending, const RowProgress& progress)
{
    const auto before = [descending](const SSortItem& a, const SSortItem& b) {
        if (a.key.IsEmpty() != b.key.IsEmpty()) {
            return b.key.IsEmpty();
        }
        return descending ? Compare(b, a) < 0 : Compare(a, b) < 0;
    };
    const auto at = [&](std::size_t index) {
        return items.begin() + static_cast<std::ptrdiff_t>(std::min(index, items.size()));
    };
    for (std::size_t from = 0; from < items.size(); from += kSortPiece) {
        std::stable_sort(at(from), at(from + kSortPiece), before);
        const double share = static_cast<double>(from) / static_cast<double>(items.size());
        if (!progress(kFilterShare + share * (1 - kFilterShare))) {
            return false;
        }
    }
    for (std::size_t length = kSortPiece; length < items.size(); length *= 2) {
        for (std::size_t from = 0; from + length < items.size(); from += 2 * length) {
            std::inplace_merge(at(from), at(from + length), at(from + 2 * length), before);
            if (!progress(1.0)) {
                return false;
            }
        }
    }
    return true;
}

/// Which records of each library a query matches.
class CMatches
{
public:
    CMatches(const std::vector<const CZovLibrary*>& libraries, const CRecordQuery& query,
             const RowProgress& progress)
        : m_libraries(libraries)
        , m_query(query)
        , m_marks(libraries.size())
    {
        if (!CRecordTexts::Helps(query)) {
            return;
        }
        for (std::size_t i = 0; i < libraries.size(); ++i) {
            const auto texts =
                libraries[i]->Count() < kWorthABlock
                    ? nullptr
                    : CRecordTextCache::Instance().Of(*libraries[i], [&] { return progress(0.0); });
            if (texts) {
                m_marks[i] = texts->Matches(*libraries[i], query);
            }
        }
    }
    /// Of the records that were marked.
    [[nodiscard]] std::size_t Count() const
    {
        std::size_t count = 0;
        for (const std::vector<std::uint8_t>& marks : m_marks) {
            count += static_cast<std::size_t>(std::ranges::count(marks, 1));
        }
        return count;
    }
    /// Empty: each record has to be asked.
    [[nodiscard]] const std::vector<std::uint8_t>& MarksOf(std::size_t source) const
    {
        return m_marks[source];
    }
    [[nodiscard]] bool Has(const SModelRow& row) const
    {
        const std::vector<std::uint8_t>& marks = m_marks[row.source];
        return marks.empty() ? m_query.Matches(m_libraries[row.source]->At(row.record))
                             : marks[row.record] != 0;
    }

private:
    const std::vector<const CZovLibrary*>& m_libraries;
    const CRecordQuery& m_query;
    std::vector<std::vector<std::uint8_t>> m_marks; ///< empty: each record is asked
};

std::vector<SModelRow> Filter(const std::vector<const CZovLibrary*>& libraries,
                              const SRowRequest& request, const RowProgress& progress,
                              const TBaseRows& base)
{
    std::size_t total = 0;
    for (const CZovLibrary* library : libraries) {
        total += library->Count();
    }
    const CMatches matches(libraries, request.query, progress);
    const bool hides = request.hide.Any();
    std::vector<SModelRow> rows;
    rows.reserve(matches.Count());
    std::size_t done = 0;
    const auto hasType = [&](const SModelRow& row) {
        return request.type == ERecordType::Any ||
               libraries[row.source]->At(row.record).Type() == request.type;
    };
    const auto goesOnWith = [&](const SModelRow& row) {
        if (hasType(row) && matches.Has(row) &&
            !(hides && request.hide.Hides(libraries[row.source]->At(row.record)))) {
            rows.push_back(row);
        }
        return ++done % kStep != 0 ||
               progress(static_cast<double>(done) / static_cast<double>(total) * kFilterShare);
    };
    if (base) {
        static_cast<void>(std::ranges::all_of(*base, goesOnWith));
        return rows;
    }
    for (std::uint32_t source = 0; source < libraries.size(); ++source) {
        const auto count = static_cast<std::uint32_t>(libraries[source]->Count());
        const std::vector<std::uint8_t>& marks = matches.MarksOf(source);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!marks.empty() && marks[i] == 0) {
                continue;
            }
            if (!goesOnWith({source, i})) {
                return rows;
            }
        }
    }
    return rows;
}

SSortKey KeyOf(const CZovRcdProps& record, const SRowOrder& order)
{
    if (!order.values) {
        return ModelSortKey(record, order.column);
    }
    const auto value = order.values->find(&record);
    return {value == order.values->end() ? std::nullopt : std::optional(value->second), {}};
}

bool Below(const SHideLimit& limit, const std::optional<double>& value)
{
    return limit.on && value && *value < limit.limit;
}

bool Above(const SHideLimit& limit, const std::optional<double>& value)
{
    return limit.on && value && *value > limit.limit;
}

} // namespace

SHideRules SHideRules::Of(const SZovSettings& settings)
{
    return {settings.capacitanceLess, settings.capacitanceMore, settings.voltageLess,
            settings.voltageMore};
}

bool SHideRules::Hides(const CZovRcdProps& record) const
{
    if (!Any() || record.Type() != ERecordType::Capacitor) {
        return false;
    }
    const std::optional<double> farad = record.GetDouble(EPropId::Cnom);
    const std::optional<double> volt = record.GetDouble(EPropId::Volt);
    return Below(capacitanceLess, farad) || Above(capacitanceMore, farad) ||
           Below(voltageLess, volt) || Above(voltageMore, volt);
}

std::vector<SModelRow> SelectRows(const std::vector<const CZovLibrary*>& libraries,
                                  const SRowRequest& request, const RowProgress& progress,
                                  const TBaseRows& base)
{
    std::vector<SModelRow> rows = Filter(libraries, request, progress, base);
    if (!request.order.sorted || base) {
        return rows;
    }
    std::vector<SSortItem> items;
    items.reserve(rows.size());
    for (const SModelRow& row : rows) {
        SSortItem item;
        item.key = KeyOf(libraries[row.source]->At(row.record), request.order);
        item.prefix = PrefixOf(item.key.text);
        item.row = row;
        items.push_back(item);
    }
    if (Sort(items, request.order.descending, progress)) {
        std::ranges::transform(items, rows.begin(), &SSortItem::row);
    }
    return rows;
}

} // namespace zov::app
