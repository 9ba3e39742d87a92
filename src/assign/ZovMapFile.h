// SPDX-License-Identifier: Apache-2.0
/// Map files: the assignments of a design, out and in again.
///
///     CZovMapFile map = ExportAssignments(table);
///     if (const TDataSetResult failed = map.Save("board_map.csv")) ...
#pragma once

#include "assign/AssignTable.h"
#include "assign/csvDataSet.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zov {

struct SMapRow
{
    std::string device; ///< the component's name
    std::string refdes; ///< one, or all of the component separated by blanks
    std::string model;
    std::string library; ///< path of the library
    std::string subModel;
    bool operator==(const SMapRow&) const = default;
};

class CZovMapFile final : public csvDataSet
{
public:
    void Clear() override { m_rows.clear(); }
    /// A row whose device and designators an earlier one has already is dropped.
    void ReadRows(CSVFile& file) override;
    void ReadOldRows(CSVFile& file, float version) override;
    void WriteRows(CSVFile& file) const override;
    [[nodiscard]] std::string_view Title() const override { return "ZOV MAP FILE"; }
    [[nodiscard]] std::string_view Header() const override
    {
        return "Device Type,Reference Designator,Model Name,Library,SubModel";
    }

    [[nodiscard]] const std::vector<SMapRow>& Rows() const { return m_rows; }
    void Add(SMapRow row) { m_rows.push_back(std::move(row)); }

private:
    std::vector<SMapRow> m_rows;
};

/// A row for each component that has a model of its own, and one for each reference designator that
/// has another than its component.
[[nodiscard]] CZovMapFile ExportAssignments(CAssignTable& table, const CLibrarySet& set);

/// Gives the rows of the design the models that the map names; rows of which it says nothing, and
/// models that are not there, change nothing. A designator whose component has that model already
/// goes on to follow it. Returns the number of rows that got a model.
std::size_t ImportAssignments(const CZovMapFile& map, CAssignTable& table, const CLibrarySet& set);

/// The same in steps, the middle one for a thread beside the window: it reads the libraries and the
/// rows, which must not change meanwhile.
class CMapImport
{
public:
    /// All must outlive this.
    CMapImport(const CZovMapFile& map, CAssignTable& table, const CLibrarySet& set);
    ~CMapImport();
    CMapImport(const CMapImport&) = delete;
    CMapImport& operator=(const CMapImport&) = delete;

    /// Finds the records that the map names.
    void Search(const FSearchProgress& progress);
    /// Gives the rows their models; these rows.
    std::vector<AssignRow*> Apply();

private:
    struct SPending;
    using TByLibrary = std::unordered_map<std::shared_ptr<CZovLibrary>, std::vector<SPending*>>;

    CAssignTable& m_table;
    std::vector<SPending> m_pending;
    TByLibrary m_byLibrary;
};

/// What differs between two maps, without regard to case and to the order of the rows.
struct SMapChange
{
    SMapRow before; ///< all empty: the row is new
    SMapRow after;  ///< all empty: the row is gone
};
[[nodiscard]] std::vector<SMapChange> CompareMaps(const CZovMapFile& before,
                                                  const CZovMapFile& after);

} // namespace zov
