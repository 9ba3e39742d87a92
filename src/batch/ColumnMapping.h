// SPDX-License-Identifier: Apache-2.0
/// Which worksheet column feeds which property: the column-mapping file, and the plan that results
/// from it (or from the recognised titles) for one sheet.
///
///     # property,title
///     Part NO.,PartNumber
///     Cnom,Capacitance (uF)
///     TCC
#pragma once

#include "base/Sink.h"
#include "batch/CellTolerance.h"
#include "batch/CellValue.h"
#include "batch/GeneratorFields.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::batch {

struct SMappingLine
{
    EField field = EField::ModelName;
    std::string property; ///< as the file writes it; "model name" for "Part NO."
    std::string title;    ///< empty: mapped to no column
    std::size_t line = 0; ///< counted from 1, 0 when it does not come from a file
};

/// Text of a mapping file. Blank lines and lines that begin with "#" are passed over; a byte-order
/// mark, CR LF and Windows-1252 are understood. Errors (Format): a line that begins with a comma
/// (the text is the fixed wording), an unknown property (the text lists the known ones).
CResult<std::vector<SMappingLine>> ParseColumnMapping(std::string_view text,
                                                      std::string_view shownPath);
/// The file; a failure is told to `log` in its fixed words and returned.
CResult<std::vector<SMappingLine>> ReadColumnMapping(const std::filesystem::path& path,
                                                     CLogSink& log);

/// From where a column's unit is known.
enum class EUnitSource : std::uint8_t
{
    None, ///< the field has no unit
    Default,
    Title,
    Option
};
/// How a column came to feed its field.
enum class EColumnSource : std::uint8_t
{
    None,
    MappingFile,
    Title,
    Constant
};

/// What feeds one field.
struct SColumn
{
    EColumnSource source = EColumnSource::None;
    std::uint32_t column = 0; ///< counted from 1; 0 when a constant or nothing feeds it
    std::string title;
    std::string constant;
    SColumnUnit unit;
    SToleranceUnit tolerance;
    std::string unitText; ///< as shown: "nF", "%", "From File"
    EUnitSource unitSource = EUnitSource::None;

    [[nodiscard]] bool Mapped() const { return source != EColumnSource::None; }
};
using CColumnPlan = CPerField<SColumn>;

struct SMappingRequest
{
    ERecordType type = ERecordType::Capacitor;
    /// None: the usual titles are recognised.
    std::optional<std::vector<SMappingLine>> mapping;
    CPerField<std::string> units; ///< chosen unit by field; empty: title's, else the default
    std::map<EField, std::string> constants; ///< values that take the place of a column
};

/// Ties fields to columns and logs each pair, or each title that the sheet lacks.
/// Errors: NotFound names the titles that are missing; Argument: a unit that is none of its
/// quantity.
CResult<CColumnPlan> PlanColumns(const SMappingRequest& request,
                                 std::span<const std::string_view> titles, CLogSink& log);

} // namespace zov::batch
