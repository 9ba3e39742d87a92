// SPDX-License-Identifier: Apache-2.0
/// Where engines put their messages. An engine never prints: its caller hands it a sink, which is
/// the batch log, the "Output" pane, a message box, standard error or a test's vector.
#pragma once

#include "base/Result.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// Takes lines of fixed wording ("[Error] ...") as they stand, with whatever line end the wording
/// has.
class CLogSink
{
public:
    CLogSink() = default;
    CLogSink(const CLogSink&) = delete;
    CLogSink& operator=(const CLogSink&) = delete;
    virtual ~CLogSink() = default;

    virtual void Write(std::string_view text) = 0;
};

class CNullLog final : public CLogSink
{
public:
    void Write(std::string_view) override {}
};

/// Keeps every text; for tests and for callers that show messages later.
class CVectorLog final : public CLogSink
{
public:
    void Write(std::string_view text) override { m_lines.emplace_back(text); }
    [[nodiscard]] const std::vector<std::string>& Lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

class CFunctionLog final : public CLogSink
{
public:
    explicit CFunctionLog(std::function<void(std::string_view)> write)
        : m_write(std::move(write))
    {
    }
    void Write(std::string_view text) override { m_write(text); }

private:
    std::function<void(std::string_view)> m_write;
};

enum class ESeverity
{
    Note,
    Caution,
    Warning,
    Error
};

/// A finding: not a failure of the engine but something to tell about its input.
struct SDiag
{
    ESeverity severity = ESeverity::Error;
    std::string rule; ///< stable id, may be empty
    SSourcePos pos;
    std::string text;
};

/// Takes findings; readers and checkers report and go on.
class CDiagSink
{
public:
    CDiagSink() = default;
    CDiagSink(const CDiagSink&) = delete;
    CDiagSink& operator=(const CDiagSink&) = delete;
    virtual ~CDiagSink() = default;

    virtual void Report(const SDiag& diag) = 0;
};

class CNullDiag final : public CDiagSink
{
public:
    void Report(const SDiag&) override {}
};

class CVectorDiag final : public CDiagSink
{
public:
    void Report(const SDiag& diag) override { m_diags.push_back(diag); }
    [[nodiscard]] const std::vector<SDiag>& Diags() const { return m_diags; }

private:
    std::vector<SDiag> m_diags;
};

} // namespace zov
