// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/ReportModel.h"

#include "app/ibis/IbisTreeModel.h"
#include "ibischk/Explain.h"

#include <QCoreApplication>

namespace zov::app {
namespace {

constexpr char kSeverityLetters[] = "EWNC";

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
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

void CReportModel::SetMessages(std::vector<ibis::SIPMessage> messages)
{
    beginResetModel();
    m_messages = std::move(messages);
    endResetModel();
}

int CReportModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_messages.size());
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
        return message.code == 0
                   ? QString()
                   : QLatin1Char(kSeverityLetters[static_cast<std::size_t>(message.severity)]) +
                         QString::number(message.code);
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

CReportFilter::CReportFilter(CReportModel& report, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_report(report)
{
    setSourceModel(&report);
}

void CReportFilter::SetWanted(ibis::EIPSeverity severity, bool wanted)
{
    m_wanted[static_cast<std::size_t>(severity)] = wanted;
    invalidateFilter();
}

void CReportFilter::SetText(const QString& text)
{
    m_text = text;
    invalidateFilter();
}

bool CReportFilter::filterAcceptsRow(int row, const QModelIndex&) const
{
    const ibis::SIPMessage& message = m_report.At(row);
    const QString code =
        m_report.data(m_report.index(row, CReportModel::kCode), Qt::DisplayRole).toString();
    return m_wanted[static_cast<std::size_t>(message.severity)] &&
           (m_text.isEmpty() || Text(message.text).contains(m_text, Qt::CaseInsensitive) ||
            code.startsWith(m_text, Qt::CaseInsensitive));
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
