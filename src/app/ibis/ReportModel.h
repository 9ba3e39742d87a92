// SPDX-License-Identifier: Apache-2.0
/// The checker's report as a list, and what may be hidden of it. Filtering is one pass over the
/// messages, of which a large file may have a million.
#pragma once

#include "ibis/CheckReport.h"

#include <QAbstractTableModel>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
    using TMessages = std::shared_ptr<const std::vector<ibis::SIPMessage>>;
    explicit CReportModel(QObject* parent = nullptr);

    /// Null for none.
    void SetMessages(TMessages messages);
    /// Of a row that is shown.
    [[nodiscard]] const ibis::SIPMessage& At(int row) const
    {
        return (*m_messages)[m_rows[static_cast<std::size_t>(row)]];
    }
    /// Whether messages of a severity are shown.
    void SetWanted(ibis::EIPSeverity severity, bool wanted);
    /// Only those that hold the text, or whose code begins with it.
    void SetText(const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void Filter();
    [[nodiscard]] bool IsShown(const ibis::SIPMessage& message) const;

    TMessages m_messages;
    std::vector<std::uint32_t> m_rows; ///< places of the messages that are shown
    std::array<bool, 4> m_wanted = {true, true, true, true};
    std::string m_text; ///< folded
};

/// "1 error", "2 errors"
[[nodiscard]] QString CountText(std::size_t count, const QString& one, const QString& many);
/// "0 errors, 1 warning"
[[nodiscard]] QString VerdictText(std::size_t errors, std::size_t warnings);

/// What a message means, for people: HTML. Empty when nobody has written it.
[[nodiscard]] QString ExplanationOf(int code);

} // namespace zov::app
