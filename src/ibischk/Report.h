// SPDX-License-Identifier: Apache-2.0
/// What the checker says: a text report of fixed form and, beside it, the same findings as data.
///
///     report.ErrorAt(line.Place(token), 1008, token);     // "E1008 (line   12) - Illegal ..."
///     report.Warning(1915, "Date", fileName);             // "W1915 - Required ..."
///
/// A report looks its code up in the catalogue, formats the text, counts and hands it on. An
/// unknown code prints the text of entry 0 as an internal error and is not counted.
#pragma once

#include "base/Sink.h"
#include "ibischk/Message.h"
#include "ibischk/Types.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class EReport : std::uint8_t
{
    Note, ///< not counted
    Caution,
    Warning,
    Error,
    Bug,     ///< a fault of the checker itself
    Internal ///< a report with an unknown code
};

enum class EStyle : std::uint8_t
{
    Numbered, ///< "E1009 (line    4) - ..."
    Plain     ///< "ERROR (line    4) - ..."
};

struct SCounts
{
    std::uint32_t bugs = 0;
    std::uint32_t errors = 0;
    std::uint32_t warnings = 0;
    std::uint32_t cautions = 0;

    [[nodiscard]] bool Passed() const { return bugs == 0 && errors == 0; }
    bool operator==(const SCounts&) const = default;
};

/// What of the file a finding is about; empty where it does not apply. A pin, a row or a path
/// stands in `table` as text.
struct SObjectPath
{
    std::string_view component;
    std::string_view model; ///< also a submodel, package, board, set, module
    std::string_view table; ///< the keyword: "Pulldown"
    std::string_view corner;
};

/// One more fact for machines and for the detailed report.
struct SDetail
{
    std::string_view name;
    std::string value;
};

/// A finding as data. Views live as long as the call that hands it over.
struct SFinding
{
    EReport severity = EReport::Error;
    int code = 0;
    std::string_view file;
    SPlace place;
    SObjectPath path;
    std::string_view message;
    std::span<const std::string> args;
    std::span<const SDetail> details;
};

class CFindingSink
{
public:
    CFindingSink() = default;
    CFindingSink(const CFindingSink&) = delete;
    CFindingSink& operator=(const CFindingSink&) = delete;
    virtual ~CFindingSink() = default;

    virtual void Take(const SFinding& finding) = 0;
};

class CReport
{
public:
    // --- where it goes ---------------------------------------------------------------------
    /// The text report; null for none. It must outlive the report.
    void SetText(CLogSink* text) { m_text = text; }
    /// The findings as data; null for none.
    void SetFindings(CFindingSink* findings) { m_findings = findings; }
    void SetStyle(EStyle style) { m_style = style; }
    [[nodiscard]] EStyle Style() const { return m_style; }
    /// While set, errors (with and without line), or warnings, are neither printed nor counted.
    void SetQuietErrors(bool quiet) { m_quietErrors = quiet; }
    void SetQuietWarnings(bool quiet) { m_quietWarnings = quiet; }
    /// While set, the texts of Progress are not printed.
    void SetQuietProgress(bool quiet) { m_quietProgress = quiet; }
    /// Also what is too common to be worth a note in an ordinary run. Off at first.
    void SetVerbose(bool verbose) { m_verbose = verbose; }
    [[nodiscard]] bool Verbose() const { return m_verbose; }

    // --- what it is about ------------------------------------------------------------------
    /// Counters to zero, no file, no object.
    void Reset();
    void SetFile(std::string_view file) { m_file = file; }
    [[nodiscard]] std::string_view File() const { return m_file; }
    /// The object that findings are about from now on.
    [[nodiscard]] SObjectPath& Path() { return m_path; }

    // --- reports ---------------------------------------------------------------------------
    template <class... T>
    void Error(int code, const T&... args)
    {
        Emit(EReport::Error, {}, code, {CArg(args)...});
    }
    template <class... T>
    void ErrorAt(SPlace place, int code, const T&... args)
    {
        Emit(EReport::Error, place, code, {CArg(args)...});
    }
    template <class... T>
    void Warning(int code, const T&... args)
    {
        Emit(EReport::Warning, {}, code, {CArg(args)...});
    }
    template <class... T>
    void WarningAt(SPlace place, int code, const T&... args)
    {
        Emit(EReport::Warning, place, code, {CArg(args)...});
    }
    template <class... T>
    void Note(int code, const T&... args)
    {
        Emit(EReport::Note, {}, code, {CArg(args)...});
    }
    template <class... T>
    void NoteAt(SPlace place, int code, const T&... args)
    {
        Emit(EReport::Note, place, code, {CArg(args)...});
    }
    /// A caution is about an object and prints no line; the place, when known, goes to the data.
    template <class... T>
    void Caution(SPlace place, int code, const T&... args)
    {
        Emit(EReport::Caution, place, code, {CArg(args)...});
    }
    template <class... T>
    void BugAt(SPlace place, int code, const T&... args)
    {
        Emit(EReport::Bug, place, code, {CArg(args)...});
    }
    /// By the severity given; for rules whose severity depends on the version.
    template <class... T>
    void At(EReport severity, SPlace place, int code, const T&... args)
    {
        Emit(severity, place, code, {CArg(args)...});
    }
    /// The general form, with facts for the detailed report.
    void Emit(EReport severity, SPlace place, int code, std::initializer_list<CArg> args,
              std::span<const SDetail> details = {})
    {
        EmitList(severity, place, code, {args.begin(), args.size()}, details);
    }
    void EmitList(EReport severity, SPlace place, int code, std::span<const CArg> args,
                  std::span<const SDetail> details);

    /// Text that is no finding: what is being read.
    void Progress(std::string_view text);

    // --- the end ---------------------------------------------------------------------------
    [[nodiscard]] const SCounts& Counts() const { return m_counts; }
    /// Adds the counters of a check that ran on behalf of this one.
    void AddCounts(const SCounts& counts);
    void PrintSummary();

private:
    [[nodiscard]] bool Quiet(EReport severity) const;
    void Count(EReport severity);
    void Print(EReport severity, std::size_t line, int code, std::string_view message);

    CLogSink* m_text = nullptr;
    CFindingSink* m_findings = nullptr;
    EStyle m_style = EStyle::Numbered;
    bool m_quietErrors = false;
    bool m_quietWarnings = false;
    bool m_quietProgress = false;
    bool m_verbose = false;

    SCounts m_counts;
    std::string m_file;
    SObjectPath m_path;
    std::string m_line; // reused: the printed form
};

/// Sets the object of findings for as long as it lives.
class CPathScope
{
public:
    CPathScope(CReport& report, SObjectPath path)
        : m_report(report)
        , m_before(report.Path())
    {
        report.Path() = path;
    }
    ~CPathScope() { m_report.Path() = m_before; }
    CPathScope(const CPathScope&) = delete;
    CPathScope& operator=(const CPathScope&) = delete;

private:
    CReport& m_report;
    SObjectPath m_before;
};

/// Findings are about another file, and about no object of this one, as long as it lives.
class CFileScope
{
public:
    CFileScope(CReport& report, std::string_view file)
        : m_report(report)
        , m_before(report.File())
        , m_path(report, {})
    {
        report.SetFile(file);
    }
    ~CFileScope() { m_report.SetFile(m_before); }
    CFileScope(const CFileScope&) = delete;
    CFileScope& operator=(const CFileScope&) = delete;

private:
    CReport& m_report;
    std::string m_before;
    CPathScope m_path;
};

} // namespace zov::ibischk
