// SPDX-License-Identifier: Apache-2.0
/// What the generator dialog does besides showing itself: its checks, its questions and its run.
#pragma once

#include "base/Clock.h"
#include "batch/ImportJob.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zov::batch {

/// Columns of the mapping list.
constexpr std::array<std::string_view, 3> kMappingListTitles = {"Model Prop.", "XLS Prop.", "Unit"};

/// Choices for names that repeat within the sheet, as the dialog shows them.
struct SDuplicateChoice
{
    ESheetDuplicate policy;
    std::string_view label;
};
constexpr std::array<SDuplicateChoice, 3> kDuplicateChoices = {{
    {ESheetDuplicate::AddSuffix, "Add suffix to the new model"},
    {ESheetDuplicate::KeepTheFirst, "Keep the first one only"},
    {ESheetDuplicate::ReplaceWithNew, "Replace with new model"},
}};

/// One row of the mapping list.
struct SDialogMapping
{
    EField field = EField::ModelName;
    std::string title;
    std::string unit;          ///< one of the field's units, or "From File"
    std::string constant = {}; ///< stands in every row in place of a column
};

/// One tab of the dialog.
struct SDialogTab
{
    ERecordType type = ERecordType::Capacitor;
    std::string sourceFile;
    std::string workSheet;
    std::uint32_t headerRow = 1;
    std::string destination;
    std::string vendorLibrary; ///< capacitors only
    std::vector<SDialogMapping> mapping;
    ESheetDuplicate duplicates = ESheetDuplicate::KeepTheFirst;
};

/// The lines that say what is missing before a run may start; none when nothing is.
[[nodiscard]] std::vector<std::string> CheckTab(const SDialogTab& tab);

/// Yes-or-no questions to the user; the texts are the fixed wordings.
class CGeneratorQuestions
{
public:
    CGeneratorQuestions() = default;
    CGeneratorQuestions(const CGeneratorQuestions&) = delete;
    CGeneratorQuestions& operator=(const CGeneratorQuestions&) = delete;
    virtual ~CGeneratorQuestions() = default;

    virtual bool Ask(std::string_view question) = 0;
};

/// What a tab comes to, without its questions.
[[nodiscard]] SImportJob JobOf(const SDialogTab& tab);

/// How a run gets at a destination that is open in the program; empty functions for one that is
/// not. See SImportJob.
struct SOpenDestination
{
    std::function<CResult<CZovLibrary>()> load;
    std::function<CResult<void>(CZovLibrary library)> save;
};

/// Runs a tab that CheckTab found complete: start lines, questions, generation, saving, end line.
/// @param progress  as SGenerateOptions::progress; may be empty
/// Errors are told to `log`; Cancelled when the user stopped the run, nothing is saved then.
CResult<void> RunTab(const SDialogTab& tab, const FClock& clock, CGeneratorQuestions& questions,
                     const std::function<bool(std::uint32_t)>& progress, CLogSink& log,
                     SImportReport& report, const SOpenDestination& open = {});

/// The text that the desktop shows for a part list that can't be used.
/// EErr::Unspecified stands for a platform without any spreadsheet reader.
[[nodiscard]] std::string_view SheetFailureText(EErr code);

} // namespace zov::batch
