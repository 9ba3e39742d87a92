// SPDX-License-Identifier: Apache-2.0
#include "ui/Command.h"

#include <algorithm>

namespace zov::ui {

QString StatusText(const SCommand& command)
{
    return QString::fromUtf8(command.tip).section(QLatin1Char('\n'), 0, 0).trimmed();
}

QString ToolTip(const SCommand& command)
{
    const QString tip = QString::fromUtf8(command.tip).section(QLatin1Char('\n'), 1).trimmed();
    if (!tip.isEmpty()) {
        return tip;
    }
    QString text = QString::fromUtf8(command.text);
    text.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
    return text;
}

const SCommand* FindCommand(std::span<const SCommand> table, unsigned id)
{
    const auto at = std::ranges::find(table, id, &SCommand::id);
    return at == table.end() ? nullptr : &*at;
}

} // namespace zov::ui
