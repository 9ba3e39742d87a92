// SPDX-License-Identifier: Apache-2.0
/// The fixed command line of the batch generator.
///
///     zovra -b -HeaderRow=1 -SourceFile=caps.xlsx -WorkSheet=Sheet1
///           -DestinationLibrary=caps.zov -ComponentType=Capacitor -ColumnMapping=map.txt
///
/// An option begins with "-" or a backslash. Its name is matched over the name's own length,
/// without regard to case, in a fixed order; one separator character follows, whatever it is, and
/// the rest is the value.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::batch {

struct SBatchOptions
{
    bool batch = false; ///< any option that begins with "b"
    int headerRow = 0;  ///< row of the titles, counted from 1
    std::string sourceFile;
    std::string workSheet;
    std::string destinationLibrary;
    std::string componentType;
    std::string optionFromDupPartNumber;
    std::string optionAppendDupPartNumber;
    std::string libFileModify;
    std::string rUnit;
    std::string lUnit;
    std::string cUnit;
    std::string cnomUnit;
    std::string maxCurrentUnit;
    std::string unitOfSize;
    std::string columnMapping;
    std::string vendorLibrary;
    std::string externalNodeAssignment;

    std::string commandLine;              ///< all arguments, joined by a blank
    std::vector<std::string> unsupported; ///< options that matched nothing, as they were given
};

/// @param arguments  the process's arguments; the first is the program and is passed over
[[nodiscard]] SBatchOptions ParseCommandLine(std::span<const std::string> arguments);

/// What becomes of a model name that an earlier row had. The numbers are those of settings.
enum class ESheetDuplicate
{
    KeepTheFirst = 0,
    ReplaceWithNew = 1,
    AddSuffix = 2
};
/// What becomes of a model that the destination holds already.
enum class ELibraryDuplicate
{
    KeepTheFirst = 1,
    ReplaceWithNew = 2
};
/// False for an unknown word; an empty one is KeepTheFirst. Without regard to case.
[[nodiscard]] bool ReadPolicy(std::string_view word, ESheetDuplicate& policy);
[[nodiscard]] bool ReadPolicy(std::string_view word, ELibraryDuplicate& policy);

} // namespace zov::batch
