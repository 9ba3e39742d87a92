// SPDX-License-Identifier: Apache-2.0
#include "assign/ZovMapFile.h"

#include "assign/LegaliseName.h"
#include "base/Text.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace zov {

namespace {

/// Two texts as one, folded; no field of a line holds a line feed.
std::string KeyOf(std::string_view device, std::string_view refdes)
{
    return UpperCase(device) + '\n' + UpperCase(refdes);
}

std::string PathOf(const SModelRef& model, const CLibrarySet& set)
{
    for (const SLibraryEntry* entry : set.Entries()) {
        if (entry->library == model.library) {
            return PathText(entry->path);
        }
    }
    return PathText(model.library->Path());
}

SMapRow RowFor(std::string device, std::string refdes, const SModelRef& model,
               const CLibrarySet& set)
{
    return {std::move(device), std::move(refdes), std::string(model.record->Name()),
            PathOf(model, set), std::string(model.record->GetString(EPropId::SubModel))};
}

std::string Joined(std::vector<std::string> names)
{
    std::ranges::sort(names);
    std::string out;
    for (const std::string& name : names) {
        out += (out.empty() ? "" : " ") + name;
    }
    return out;
}

} // namespace

void CZovMapFile::ReadRows(CSVFile& file)
{
    std::unordered_set<std::string> seen;
    std::vector<std::string> fields;
    while (file.ReadFields(fields)) {
        fields.resize(5);
        if (!fields[0].empty() && !seen.insert(KeyOf(fields[0], fields[1])).second) {
            continue;
        }
        m_rows.push_back({fields[0], fields[1], fields[2], fields[3], fields[4]});
    }
}

void CZovMapFile::ReadOldRows(CSVFile& file, float)
{
    ReadRows(file);
}

void CZovMapFile::WriteRows(CSVFile& file) const
{
    for (const SMapRow& row : m_rows) {
        file.WriteFields({LegaliseName(row.device, false), row.refdes,
                          LegaliseName(row.model, false), row.library, row.subModel});
    }
}

CZovMapFile ExportAssignments(CAssignTable& table, const CLibrarySet& set)
{
    CZovMapFile map;
    table.VisitDesign([&](const AssignRow& row) {
        if (row.Name().empty() || row.assigned.empty()) {
            return;
        }
        const SModelRef& model = row.assigned.front();
        if (row.refdes.empty()) {
            map.Add(RowFor(row.component, Joined(table.ComponentOf(row).refdes), model, set));
            return;
        }
        const std::vector<SModelRef>& component = table.ComponentRow(row).assigned;
        if (component.empty() || component.front() != model) {
            map.Add(RowFor(row.component, row.refdes, model, set));
        }
    });
    return map;
}

/// A row of the design and the map row that speaks of it.
struct CMapImport::SPending
{
    AssignRow* row = nullptr;
    const SMapRow* map = nullptr;
    SModelRef model; ///< the first that fits
};

namespace {

/// The map's rows by what the design's rows look for.
class CMapIndex
{
public:
    explicit CMapIndex(const CZovMapFile& map)
    {
        for (const SMapRow& row : map.Rows()) {
            m_byDevice.emplace(UpperCase(row.device), &row);
            m_byBoth.emplace(KeyOf(row.device, row.refdes), &row);
        }
    }
    const SMapRow* Find(const AssignRow& row) const
    {
        if (row.refdes.empty()) {
            return At(m_byDevice, UpperCase(LegaliseName(row.component, false)));
        }
        return At(m_byBoth, KeyOf(row.component, row.refdes));
    }

private:
    using TRows = std::unordered_map<std::string, const SMapRow*>;
    static const SMapRow* At(const TRows& rows, const std::string& key)
    {
        const auto found = rows.find(key);
        return found == rows.end() ? nullptr : found->second;
    }
    TRows m_byDevice;
    TRows m_byBoth;
};

std::shared_ptr<CZovLibrary> LibraryFor(const std::string& field, const CLibrarySet& set)
{
    for (const SLibraryEntry* entry : set.Entries()) {
        if (!field.empty() && EqualsNoCase(PathText(entry->path), field)) {
            return entry->library;
        }
    }
    return set.Project() == nullptr ? nullptr : set.Project()->library;
}

bool Fits(const CZovRcdProps& record, const AssignRow& row, const SMapRow& map)
{
    const auto type = static_cast<std::uint32_t>(row.requiredType);
    const bool anyType = row.typeFree || type <= 1;
    return (anyType || record.Type() == row.requiredType) &&
           (map.subModel.empty() ||
            EqualsNoCase(record.GetString(EPropId::SubModel), map.subModel));
}

} // namespace

CMapImport::CMapImport(const CZovMapFile& map, CAssignTable& table, const CLibrarySet& set)
    : m_table(table)
{
    const CMapIndex index(map);
    table.VisitDesign([&](AssignRow& row) {
        const SMapRow* found = row.Name().empty() ? nullptr : index.Find(row);
        if (found != nullptr && !(found->model.empty() && found->library.empty())) {
            m_pending.push_back({&row, found, {}});
        }
    });
    for (SPending& one : m_pending) {
        if (const auto library = LibraryFor(one.map->library, set)) {
            m_byLibrary[library].push_back(&one);
        }
    }
}

CMapImport::~CMapImport() = default;

void CMapImport::Search(const FSearchProgress& progress)
{
    // The records of a library in stored order, each compared with all rows that look for its name.
    constexpr std::size_t kProgressRecords = 4096;
    double share = 0.0;
    for (const auto& entry : m_byLibrary) {
        const auto& library = entry.first; // clang 14 captures no structured bindings
        const auto& rows = entry.second;
        std::unordered_multimap<std::string, SPending*> byModel;
        for (SPending* one : rows) {
            byModel.emplace(UpperCase(one->map->model), one);
        }
        const auto offer = [&](const std::string& name, const CZovRcdProps& record) {
            const auto [first, last] = byModel.equal_range(name);
            for (auto at = first; at != last; ++at) {
                SPending& one = *at->second;
                if (!one.model && Fits(record, *one.row, *one.map)) {
                    one.model = {library, &record, record.Type()};
                }
            }
        };
        for (std::size_t i = 0; i < library->Count(); ++i) {
            if (i % kProgressRecords == 0 && progress &&
                !progress(share + static_cast<double>(i) / static_cast<double>(library->Count()) /
                                      static_cast<double>(m_byLibrary.size()))) {
                return;
            }
            const CZovRcdProps& record = library->At(i);
            const std::string name = UpperCase(record.Name());
            offer(name, record);
            const std::string legal = UpperCase(LegaliseName(record.Name(), false));
            if (legal != name) {
                offer(legal, record);
            }
        }
        share += 1.0 / static_cast<double>(m_byLibrary.size());
    }
}

std::vector<AssignRow*> CMapImport::Apply()
{
    std::vector<AssignRow*> assigned;
    for (const SPending& one : m_pending) { // in the design's order: a component first
        const bool follows = !one.row->refdes.empty() && one.model &&
                             m_table.ModelsOf(*one.row) == std::vector{one.model};
        if (one.model && !follows) {
            m_table.SetModel(*one.row, one.model, ERefDesModels::Keep);
            assigned.push_back(one.row);
        }
    }
    return assigned;
}

std::size_t ImportAssignments(const CZovMapFile& map, CAssignTable& table, const CLibrarySet& set)
{
    CMapImport import(map, table, set);
    import.Search({});
    return import.Apply().size();
}

std::vector<SMapChange> CompareMaps(const CZovMapFile& before, const CZovMapFile& after)
{
    const auto sameModel = [](const SMapRow& a, const SMapRow& b) {
        return EqualsNoCase(LegaliseName(a.model, false), LegaliseName(b.model, false)) &&
               EqualsNoCase(a.library, b.library) && EqualsNoCase(a.subModel, b.subModel);
    };
    const auto keyOf = [](const SMapRow& row) {
        return KeyOf(LegaliseName(row.device, false), row.refdes);
    };
    std::unordered_map<std::string, const SMapRow*> old;
    for (const SMapRow& row : before.Rows()) {
        old.emplace(keyOf(row), &row);
    }
    std::vector<SMapChange> changes;
    std::unordered_set<std::string> kept;
    for (const SMapRow& row : after.Rows()) {
        const std::string key = keyOf(row);
        const auto found = old.find(key);
        kept.insert(key);
        if (found == old.end()) {
            changes.push_back({{}, row});
        } else if (!sameModel(*found->second, row)) {
            changes.push_back({*found->second, row});
        }
    }
    for (const SMapRow& row : before.Rows()) {
        if (!kept.contains(keyOf(row))) {
            changes.push_back({row, {}});
        }
    }
    return changes;
}

} // namespace zov
