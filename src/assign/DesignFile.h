// SPDX-License-Identifier: Apache-2.0
/// A design out of a file: a component list (`.csv`, `.xlsx`, `.xls`) or a KiCad netlist.
///
///     ASSIGN_OR_RETURN(SDesignFile file, ReadDesignFile("board.csv", diagnostics));
///     CAssignTable table(file.design, set, search);
#pragma once

#include "assign/Design.h"
#include "base/Result.h"
#include "base/Sink.h"
#include "sheet/Workbook.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zov {

/// A column of a list that was used, and for what.
struct SDesignColumn
{
    /// "component", "reference designators", "original model", "required type", "quantity"
    std::string use;
    std::string title;
    std::uint32_t column = 0; ///< counted from 1
};

struct SDesignFile
{
    SDesign design;
    std::string form;                   ///< "component list", "KiCad netlist"
    std::vector<SDesignColumn> columns; ///< of a list
};

struct SDesignOptions
{
    std::string sheet; ///< empty: the first that is visible
    std::string
        component; ///< title of the column that names components; empty: by the usual titles
};

/// Reads either form; a netlist has the extension ".net" or ".kicad_net". Rows of one component
/// name become one component. What could not be used is told to `diag` with its row as a warning; a
/// type that is none, and a quantity that differs from the number of designators, as a note.
/// Errors: those of OpenWorkbook; NotFound: no row of titles that names a component; Format: a
/// broken netlist.
CResult<SDesignFile> ReadDesignFile(const std::filesystem::path& path,
                                    const SDesignOptions& options, CDiagSink& diag);

CResult<SDesignFile> ReadDesignList(CWorkbook& book, const std::string& shown,
                                    const std::string& componentTitle, CDiagSink& diag);
/// KiCad's S-expression netlist: `(export ... (components (comp (ref ..) (value ..) ..)))`.
CResult<SDesignFile> ReadKicadNetlist(std::string_view text, const std::string& shown);

/// Components by name, each once, in the order in which they came.
class CDesignBuilder
{
public:
    /// A later row adds its designators; what an earlier one left open it may fill in.
    void Add(SDesignComponent component);
    [[nodiscard]] SDesign Take();

private:
    SDesign m_design;
    std::unordered_map<std::string, std::size_t> m_places; ///< by upper-cased name
};

/// A required type as lists name it: "C", "cap", "Ceramic Capacitor", "resistors", "IC", the type
/// code in decimal or as 0x...; empty, "any" and "0" are Any. None when it is not understood, or
/// when its words name two types.
[[nodiscard]] std::optional<ERecordType> RequiredTypeOf(std::string_view text);

/// Lower-case letters and digits of a column or field title: "Mfg. Part No." is "mfgpartno".
[[nodiscard]] std::string TitleKeyOf(std::string_view title);
/// How well a title names a component: the lower the better; none when it does not.
[[nodiscard]] std::optional<std::size_t> ComponentTitleRank(std::string_view titleKey);
[[nodiscard]] bool IsOriginalModelTitle(std::string_view titleKey);

} // namespace zov
