// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchOptions.h"

#include "base/Number.h"
#include "base/Text.h"

#include <array>

namespace zov::batch {

namespace {

struct SNamedOption
{
    std::string_view name;
    std::string SBatchOptions::*value;
};

// The order counts: the first name that the argument begins with is taken.
constexpr std::array<SNamedOption, 16> kNamedOptions = {{
    {"SourceFile", &SBatchOptions::sourceFile},
    {"WorkSheet", &SBatchOptions::workSheet},
    {"DestinationLibrary", &SBatchOptions::destinationLibrary},
    {"ComponentType", &SBatchOptions::componentType},
    {"OptionFromDupPartNumber", &SBatchOptions::optionFromDupPartNumber},
    {"OptionAppendDupPartNumber", &SBatchOptions::optionAppendDupPartNumber},
    {"LibFileModify", &SBatchOptions::libFileModify},
    {"RUnit", &SBatchOptions::rUnit},
    {"LUnit", &SBatchOptions::lUnit},
    {"CUnit", &SBatchOptions::cUnit},
    {"CnomUnit", &SBatchOptions::cnomUnit},
    {"MaxCurrentUnit", &SBatchOptions::maxCurrentUnit},
    {"UnitOfSize", &SBatchOptions::unitOfSize},
    {"ColumnMapping", &SBatchOptions::columnMapping},
    {"VendorLibrary", &SBatchOptions::vendorLibrary},
    {"ExternalNodeAssignment", &SBatchOptions::externalNodeAssignment},
}};
constexpr std::string_view kBatchFlag = "b";
constexpr std::string_view kHeaderRow = "HeaderRow";

/// Text after the name and the one separator character behind it.
std::string_view ValueAfter(std::string_view option, std::string_view name)
{
    return option.size() > name.size() ? option.substr(name.size() + 1) : std::string_view();
}

bool TakeOption(std::string_view option, SBatchOptions& options)
{
    if (StartsWithNoCase(option, kBatchFlag)) {
        options.batch = true;
        return true;
    }
    if (StartsWithNoCase(option, kHeaderRow)) {
        options.headerRow = LeadingInt(ValueAfter(option, kHeaderRow));
        return true;
    }
    for (const SNamedOption& known : kNamedOptions) {
        if (StartsWithNoCase(option, known.name)) {
            options.*known.value = ValueAfter(option, known.name);
            return true;
        }
    }
    return false;
}

} // namespace

SBatchOptions ParseCommandLine(std::span<const std::string> arguments)
{
    SBatchOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        options.commandLine += i == 0 ? "" : " ";
        options.commandLine += argument;
        const bool isOption = argument.starts_with('-') || argument.starts_with('\\');
        if (i > 0 && isOption && !TakeOption(std::string_view(argument).substr(1), options)) {
            options.unsupported.push_back(argument);
        }
    }
    return options;
}

bool ReadPolicy(std::string_view word, ESheetDuplicate& policy)
{
    if (word.empty() || EqualsNoCase(word, "KeepTheFirst")) {
        policy = ESheetDuplicate::KeepTheFirst;
    } else if (EqualsNoCase(word, "ReplaceWithNew")) {
        policy = ESheetDuplicate::ReplaceWithNew;
    } else if (EqualsNoCase(word, "AddSuffix")) {
        policy = ESheetDuplicate::AddSuffix;
    } else {
        return false;
    }
    return true;
}

bool ReadPolicy(std::string_view word, ELibraryDuplicate& policy)
{
    if (word.empty() || EqualsNoCase(word, "KeepTheFirst")) {
        policy = ELibraryDuplicate::KeepTheFirst;
    } else if (EqualsNoCase(word, "ReplaceWithNew")) {
        policy = ELibraryDuplicate::ReplaceWithNew;
    } else {
        return false;
    }
    return true;
}

} // namespace zov::batch
