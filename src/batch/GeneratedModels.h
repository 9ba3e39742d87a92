// SPDX-License-Identifier: Apache-2.0
/// The models of one run before they go into the library: repeated names are settled here.
#pragma once

#include "base/Sink.h"
#include "batch/BatchOptions.h"
#include "batch/CircuitWrapper.h"
#include "batch/ImportReport.h"
#include "batch/RowReader.h"
#include "core/RecordStore.h"
#include "core/ZovLibrary.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zov::batch {

struct SGenerateOptions;

class CGeneratedModels
{
public:
    CGeneratedModels(ERecordType type, ESheetDuplicate policy, SImportReport& report,
                     CLogSink& log);

    /// @param place  of the row in the report, none when it is not listed
    void Take(const SModelRow& row, std::uint32_t number, std::optional<std::size_t> place);

    /// Names for the rows that repeat one: "%s_%d", counted from 1 to the first that is free. Done
    /// when all rows are in, so that a row's own name is never taken from it.
    void NameSuffixed(CCircuitWrapper& wrapper);

    /// Moves the models over; counts and report rows say what became of each.
    void AddTo(CZovLibrary& library, const SGenerateOptions& options);

private:
    struct SModel
    {
        CZovRcdProps* record;
        std::uint32_t row;
        std::uint32_t place; ///< in the report, kUnlisted for none
    };
    struct SSuffixed
    {
        std::size_t model;
        std::string wrappedFile;
        ENodeAssignment node;
    };
    static constexpr std::uint32_t kUnlisted = UINT32_MAX;

    void SetAction(const SModel& model, ERowAction action);
    void ReplaceEarlier(CZovRcdProps& earlier, const SModelRow& row, const SModel& model);
    void AddAll(CZovLibrary& library);
    void AddOneByOne(CZovLibrary& library, const SGenerateOptions& options);
    std::size_t IndexOf(const CZovRcdProps& record);

    ERecordType m_type;
    ESheetDuplicate m_policy;
    SImportReport& m_report;
    CLogSink& m_log;
    CZovLibrary m_staging;
    CRecordBuilder m_builder;
    std::vector<SModel> m_models;
    std::vector<SSuffixed> m_suffixed;
    std::unordered_map<const CZovRcdProps*, std::size_t> m_indexOf; ///< built when first needed
};

} // namespace zov::batch
