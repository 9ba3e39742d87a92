// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/ReportModel.h"

#include "app/ibis/IbisTreeModel.h"
#include "base/Text.h"
#include "ibischk/Explain.h"

#include <QCoreApplication>

#include <algorithm>

namespace zov::app {
namespace {

constexpr char kSeverityLetters[] = "EWNC";

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// "E1009"; empty without a number.
std::string CodeOf(const ibis::SIPMessage& message)
{
    return message.code == 0 ? std::string()
                             : kSeverityLetters[static_cast<std::size_t>(message.severity)] +
                                   std::to_string(message.code);
}

QString Part(const QString& title, const std::string& text, bool asLines = false)
{
    if (text.empty()) {
        return {};
    }
    const QString body = Text(text).toHtmlEscaped();
    return QStringLiteral("<p><b>%1</b><br/>%2</p>")
        .arg(title, asLines ? QStringLiteral("<pre>%1</pre>").arg(body) : body);
}

} // namespace

CReportModel::CReportModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void CReportModel::SetMessages(TMessages messages)
{
    m_messages = std::move(messages);
    Filter();
}

void CReportModel::SetWanted(ibis::EIPSeverity severity, bool wanted)
{
    m_wanted[static_cast<std::size_t>(severity)] = wanted;
    Filter();
}

void CReportModel::SetText(const QString& text)
{
    m_text = text.toStdString();
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), ToLower);
    Filter();
}

bool CReportModel::IsShown(const ibis::SIPMessage& message) const
{
    if (!m_wanted[static_cast<std::size_t>(message.severity)]) {
        return false;
    }
    const auto same = [](char a, char b) { return ToLower(a) == b; };
    return m_text.empty() || StartsWithNoCase(CodeOf(message), m_text) ||
           std::search(message.text.begin(), message.text.end(), m_text.begin(), m_text.end(),
                       same) != message.text.end();
}

void CReportModel::Filter()
{
    beginResetModel();
    m_rows.clear();
    for (std::size_t i = 0; m_messages && i < m_messages->size(); ++i) {
        if (IsShown((*m_messages)[i])) {
            m_rows.push_back(static_cast<std::uint32_t>(i));
        }
    }
    endResetModel();
}

int CReportModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CReportModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QVariant CReportModel::data(const QModelIndex& index, int role) const
{
    const ibis::SIPMessage& message = At(index.row());
    if (role == Qt::DecorationRole && index.column() == kLine) {
        return SeverityImage(message.severity);
    }
    if (role == Qt::ToolTipRole && index.column() == kText) {
        return Text(message.text);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    switch (index.column()) {
    case kLine:
        return message.line == 0 ? QVariant() : QVariant(static_cast<qulonglong>(message.line));
    case kCode:
        return Text(CodeOf(message));
    default:
        return Text(message.text);
    }
}

QVariant CReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    const QString titles[] = {tr("Line"), tr("Code"), tr("Message")};
    return titles[section];
}

QString CountText(std::size_t count, const QString& one, const QString& many)
{
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : many);
}

QString VerdictText(std::size_t errors, std::size_t warnings)
{
    return CountText(errors, CReportModel::tr("error"), CReportModel::tr("errors")) +
           QStringLiteral(", ") +
           CountText(warnings, CReportModel::tr("warning"), CReportModel::tr("warnings"));
}

QString ExplanationOf(int code)
{
    const ibischk::SMessage* message = ibischk::FindMessage(code);
    if (message == nullptr) {
        return {};
    }
    const std::string rule = ibischk::RuleName(*message);
    const auto explanation = ibischk::Explain(rule);
    if (!explanation) {
        return {};
    }
    const auto tr = [](const char* text) {
        return QCoreApplication::translate("Explanation", text);
    };
    return QStringLiteral("<h3>%1</h3><p>%2</p>")
               .arg(Text(rule).toHtmlEscaped(), Text(explanation->meaning).toHtmlEscaped()) +
           Part(tr("Why it matters"), explanation->why) +
           Part(tr("Usual causes"), explanation->causes) +
           Part(tr("What to do"), explanation->action) +
           Part(tr("Wrong"), explanation->wrong, true) +
           Part(tr("Right"), explanation->right, true);
}

} // namespace zov::app
