// SPDX-License-Identifier: Apache-2.0
/// What the readers behind Workbook.h share: the bytes they read from and the bounds they keep.
#pragma once

#include "base/File.h"
#include "sheet/Workbook.h"

#include <memory>
#include <string>
#include <string_view>

namespace zov::sheet {

constexpr std::uint32_t kMaxRows = 1048576;
constexpr std::uint32_t kMaxColumns = 16384;
/// More text than this in one row is no table any more.
constexpr std::size_t kMaxRowText = std::size_t{256} << 20U;

/// The bytes of a workbook, mapped or owned, and how to call it in messages. Shared, so that the
/// views that readers keep stay valid when a workbook is moved about.
struct SSource
{
    CFileView file;
    std::string owned;
    std::string name;
    SOpenOptions options;

    [[nodiscard]] std::string_view Bytes() const
    {
        return owned.empty() ? file.Bytes() : std::string_view(owned);
    }
    [[nodiscard]] SError Failure(EErr code, std::string text) const
    {
        return FailAt(code, SSourcePos{name, 0, 0}, std::move(text));
    }
};
using CSourcePtr = std::shared_ptr<const SSource>;

/// Zip container: .xlsx, .xlsm; .xlsb and .ods are told apart and refused.
CResult<std::unique_ptr<CWorkbook>> OpenXlsx(CSourcePtr source);
/// OLE container, or the bare record stream that old programs wrote without one.
CResult<std::unique_ptr<CWorkbook>> OpenXls(CSourcePtr source);
/// Separated text; its only sheet has the file's name without extension.
CResult<std::unique_ptr<CWorkbook>> OpenCsv(CSourcePtr source);

} // namespace zov::sheet
