// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Report.h"

#include "ibischk/Catalogue.h"
#include "ibischk/Guard.h"

#include <fmt/format.h>

namespace zov::ibischk {

namespace {

struct SWords
{
    char letter;
    std::string_view plain;
};
constexpr SWords kWords[] = {
    {'N', "NOTE"},  {'C', "CAUTION"},     {'W', "WARNING"},
    {'E', "ERROR"}, {'B', "PROGRAM BUG"}, {'I', "INTERNAL ERROR"},
};

/// The two-line form is for texts of these lengths only; longer ones stay on one line.
bool OnTwoLines(std::size_t length, bool withLine)
{
    return length >= (withLine ? 60U : 72U) && length <= 75U;
}

} // namespace

void CReport::Reset()
{
    m_counts = {};
    m_file.clear();
    m_path = {};
}

bool CReport::Quiet(EReport severity) const
{
    return (severity == EReport::Error && m_quietErrors) ||
           (severity == EReport::Warning && m_quietWarnings);
}

void CReport::Count(EReport severity)
{
    switch (severity) {
    case EReport::Caution:
        ++m_counts.cautions;
        break;
    case EReport::Warning:
        ++m_counts.warnings;
        break;
    case EReport::Error:
        ++m_counts.errors;
        break;
    case EReport::Bug:
        ++m_counts.bugs;
        break;
    case EReport::Note:
    case EReport::Internal:
        break;
    }
}

void CReport::EmitList(EReport severity, SPlace place, int code, std::span<const CArg> args,
                       std::span<const SDetail> details)
{
    const SMessage* row = FindMessage(code);
    if (row == nullptr) {
        row = Guarded(FindMessage(0), "ibischk/report", __LINE__);
        severity = EReport::Internal;
        args = {};
    }
    if (Quiet(severity)) {
        return;
    }
    Count(severity);
    if (m_text == nullptr && m_findings == nullptr) {
        return;
    }
    std::vector<std::string> shown;
    const std::string message =
        FormatMessage(row->text, args, m_findings != nullptr ? &shown : nullptr);
    if (m_text != nullptr) {
        const bool lineless = severity == EReport::Caution || severity == EReport::Internal;
        Print(severity, lineless ? 0 : place.line, code, message);
    }
    if (m_findings != nullptr) {
        SFinding finding;
        finding.severity = severity;
        finding.code = code;
        finding.file = m_file;
        finding.place = place;
        finding.path = m_path;
        finding.message = message;
        finding.args = shown;
        finding.details = details;
        m_findings->Take(finding);
    }
}

void CReport::Print(EReport severity, std::size_t line, int code, std::string_view message)
{
    const SWords& words = kWords[static_cast<std::size_t>(severity)];
    m_line.clear();
    if (m_style == EStyle::Numbered) {
        fmt::format_to(std::back_inserter(m_line), "{}{:04}", words.letter, code);
    } else {
        m_line += words.plain;
    }
    if (line != 0) {
        fmt::format_to(std::back_inserter(m_line), " (line {:4})", line);
    }
    m_line += OnTwoLines(message.size(), line != 0) ? " -\n    " : " - ";
    m_line += message;
    m_line += '\n';
    m_text->Write(m_line);
}

void CReport::Progress(std::string_view text)
{
    if (m_text != nullptr && !m_quietProgress) {
        m_text->Write(text);
    }
}

void CReport::AddCounts(const SCounts& counts)
{
    m_counts.bugs += counts.bugs;
    m_counts.errors += counts.errors;
    m_counts.warnings += counts.warnings;
    m_counts.cautions += counts.cautions;
}

void CReport::PrintSummary()
{
    if (m_text == nullptr) {
        return;
    }
    std::string text;
    if (m_counts.bugs + m_counts.errors + m_counts.warnings > 0) {
        text += '\n';
    }
    if (m_counts.bugs > 0) {
        text += fmt::format("Bugs    : {}\n", m_counts.bugs);
    }
    text += fmt::format("Errors  : {}\n", m_counts.errors);
    if (m_counts.warnings > 0) {
        text += fmt::format("Warnings: {}\n", m_counts.warnings);
    }
    if (m_counts.cautions > 0) {
        text += fmt::format("Cautions: {}\n", m_counts.cautions);
    }
    text += fmt::format("\nFile {}\n", m_counts.Passed() ? "Passed" : "Failed");
    m_text->Write(text);
}

} // namespace zov::ibischk
