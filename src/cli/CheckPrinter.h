// SPDX-License-Identifier: Apache-2.0
/// The forms of `zov check`'s report. A printer is handed one file after the other and keeps none.
#pragma once

#include "cli/CheckFindings.h"
#include "cli/Streams.h"

#include <memory>

namespace zov::cli {

enum class EFailOn : std::uint8_t
{
    Error,
    Warning,
    Never
};

struct SCheckStyle
{
    bool details = false;
    bool baseline = false; ///< findings were compared with a baseline
    EFailOn failOn = EFailOn::Error;
};

/// Whether a finding makes the command's status "not right".
[[nodiscard]] bool Fails(const SCheckFinding& finding, EFailOn failOn);

class CCheckPrinter
{
public:
    CCheckPrinter() = default;
    CCheckPrinter(const CCheckPrinter&) = delete;
    CCheckPrinter& operator=(const CCheckPrinter&) = delete;
    virtual ~CCheckPrinter() = default;

    virtual void Begin() {}
    virtual void File(const SCheckedFile& file) = 0;
    /// @param complete  every argument gave files that could be read
    virtual void End(bool complete) { static_cast<void>(complete); }
};

/// As the checker prints it, with its summary.
std::unique_ptr<CCheckPrinter> MakeTextPrinter(COutput& out, const SCheckStyle& style);
/// "file:line:column: error: message [family/rule]", which editors understand.
std::unique_ptr<CCheckPrinter> MakeGccPrinter(COutput& out, const SCheckStyle& style);
/// One document, a finding a line.
std::unique_ptr<CCheckPrinter> MakeJsonPrinter(COutput& out, const SCheckStyle& style);
/// SARIF 2.1.0, a result a line.
std::unique_ptr<CCheckPrinter> MakeSarifPrinter(COutput& out, const SCheckStyle& style);
/// A test suite per file, a failed case per finding that fails the command.
std::unique_ptr<CCheckPrinter> MakeJunitPrinter(COutput& out, const SCheckStyle& style);

} // namespace zov::cli
