// SPDX-License-Identifier: Apache-2.0
/// The fixed wordings of the generator, in one place; other tools search logs for them, so they
/// stay to the letter, misspellings included.
///
///     log.Write(Text(msg::kBeginFile, source));
#pragma once

#include <fmt/printf.h>
#include <string>
#include <string_view>

namespace zov::batch {

namespace msg {

// command line and start of a run
constexpr std::string_view kUnsupported = "Unsupport parameter:%s,please check.";
constexpr std::string_view kCommandLine = "Receive command line: %s";
constexpr std::string_view kNoSource = "Input file is empty";
constexpr std::string_view kHeaderRow = "Input header row is smaller than 1";
constexpr std::string_view kSourceExt = "source file ext wrong";
constexpr std::string_view kDestinationExt = "destination file ext wrong";
constexpr std::string_view kUnknownType = "[ERROR] unknow Component type";
constexpr std::string_view kBeginFile = "Begin to process %s file";
constexpr std::string_view kFromPolicy =
    "[ERROR] unsupport OptionFromDupPartNumber with parameter:%s";
constexpr std::string_view kAppendPolicy =
    "[ERROR] unsupport OptionAppendDupPartNumber with parameter:%s";

// units
constexpr std::string_view kBadRUnit = "[ERROR] Invalied R Unit:%s";
constexpr std::string_view kBadLUnit = "[ERROR] Invalied L Unit:%s";
constexpr std::string_view kBadCUnit = "[ERROR] Invalied Capacity Unit:%s";
constexpr std::string_view kBadCurrentUnit = "[ERROR] Invalied Current Unit:%s";
constexpr std::string_view kBadSizeUnit = "[ERROR] Invalied Unit of Size:%s";
constexpr std::string_view kBadNode = "[ERROR] Invalied External Node Assignment:%s";

// spreadsheet and mapping
constexpr std::string_view kExcelInit = "[ERROR] Init excel failed";
constexpr std::string_view kExcelTask = "[ERROR] Init excel Task failed";
constexpr std::string_view kWorksheet = "[ERROR] Active Worksheet:%s failed";
constexpr std::string_view kNoWorksheet = "[ERROR]: Worksheet name is empty ";
constexpr std::string_view kOpenFailed = "[ERROR]: Open %s failed";
constexpr std::string_view kMappingOpen = "column mapping file %s open failed";
constexpr std::string_view kMappingComma =
    "Column map file format is wrong,can not start with ',' ";
constexpr std::string_view kMapped = "%s <-> %s; column index:%d";
constexpr std::string_view kNoColumn = "[ERROR] Can not find column name:%s in xls file";
constexpr std::string_view kTaskInit = "[ERROR] ComponentType:%d not task init falied.";

// rows
constexpr std::string_view kCannotGet = "[ERROR]: Cannot get '%s' from (Row:%d, Col:%d)";
constexpr std::string_view kCannotGetType =
    "[ERROR]: Cannot get 'Model Type' (%s/%s/%s) from (Row:%d, Col:%d)";
constexpr std::string_view kFewPins =
    "Please import a valid ckt file which pin number is more than one: %s";
constexpr std::string_view kManyPins =
    "Please import a valid ckt file which pin number is less or equal to 2: %s";
constexpr std::string_view kKeptNoFile = "[WARNING]:Modelname:%s Cannot get File from %s";
constexpr std::string_view kKeptNoSpice =
    "[WARNNING]:Modelname:%s Cannot get SPICE content from %s";
constexpr std::string_view kNoFile = "[ERROR]: Cannot get File from %s";
constexpr std::string_view kNoSpice = "[ERROR]: Cannot get SPICE content from %s";
constexpr std::string_view kExportFailed = "[ERROR]:Modelname:%s export failed.";

// vendor decap lists
constexpr std::string_view kVendorList = "%s/Manufacturer_Decap_Library.txt";
constexpr std::string_view kVendorLoad = "[WARNING]%s load failed. ";
constexpr std::string_view kVendorMissing =
    "[WARNING] modelname:%s Manufacturer:%s Manufacture Part NO:%s can not find in vendor "
    "library,and export to Zov library failed.";

// destination
constexpr std::string_view kDeleted = "delete zov library file:%s success";
constexpr std::string_view kDeleteFailed = "[ERROR] delete zov library file:%s failed";
constexpr std::string_view kLoadFailed = "Cannot load ZOV model from file '%s' because '%s'";
constexpr std::string_view kSkip = "'%s' exsits in library...skip";
constexpr std::string_view kUpdating = "'%s' exsits in library,updating...";
constexpr std::string_view kImported = "%d models imported to library :%s";
constexpr std::string_view kSaveFailed = "[ERROR]: Cannot save library to %s";
constexpr std::string_view kSuccess = "%s export success!";
constexpr std::string_view kFailed = "Zov library export failed";

// generator dialog
constexpr std::string_view kStart = "%s start generating";
constexpr std::string_view kGenerating = "Generating \"%s\" models...";
constexpr std::string_view kCompleted = "Completed.";
constexpr std::string_view kStopped = "Stopped.";
constexpr std::string_view kSourceRequired = "[ERROR] \"Source File\" required";
constexpr std::string_view kDestinationRequired = "[ERROR] %s \"Destination Library\" required";
constexpr std::string_view kColumnRequired = "[ERROR] \"%s\" Tab %-25s \"XLS Prop.\" required";
constexpr std::string_view kUnitRequired = "[ERROR]  \"%s\" Tab %-25s \"Unit\" required";
constexpr std::string_view kAskReplaceModels =
    "Models with the same name already exist in the selected ZOV file. Do you want to replace "
    "them with the new models?\nIf you click No, the existing models would be retained.";
constexpr std::string_view kAskReplaceFile =
    "These ZOV files with the same name already exists.Do you want to replace the existing "
    "file?\nIf you click No, the new models in the source file would be appended to the existing "
    "ZOV file.";
constexpr std::string_view kNoExcel =
    "Microsoft Excel is not installed on your system. Install Microsoft Excel on your system.";
constexpr std::string_view kCorrupted =
    "the file is corrupted. Use another Microsoft Excel file that is useable.";

} // namespace msg

/// A wording with its places filled in, in the way of printf (%s, %d and %-25s are used).
template <class... TArgs>
[[nodiscard]] std::string Text(std::string_view wording, const TArgs&... args)
{
    return fmt::sprintf(wording, args...);
}

} // namespace zov::batch
