// SPDX-License-Identifier: Apache-2.0
/// The checker's report as a list, and what may be hidden of it.
#pragma once

#include "ibis/CheckReport.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

namespace zov::app {

class CReportModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum EColumn
    {
        kLine,
        kCode,
        kText,
        kColumns
    };
    explicit CReportModel(QObject* parent = nullptr);

    void SetMessages(std::vector<ibis::SIPMessage> messages);
    [[nodiscard]] const ibis::SIPMessage& At(int row) const
    {
        return m_messages[static_cast<std::size_t>(row)];
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ibis::SIPMessage> m_messages;
};

/// Messages of chosen severities that hold a text.
class CReportFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    CReportFilter(CReportModel& report, QObject* parent);

    void SetWanted(ibis::EIPSeverity severity, bool wanted);
    void SetText(const QString& text);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    CReportModel& m_report;
    bool m_wanted[4] = {true, true, true, true};
    QString m_text;
};

/// What a message means, for people: HTML. Empty when nobody has written it.
[[nodiscard]] QString ExplanationOf(int code);

} // namespace zov::app
