// SPDX-License-Identifier: Apache-2.0
#include "app/OutputPane.h"

#include "base/Text.h"

#include <QFontDatabase>
#include <QMetaObject>
#include <QScrollBar>
#include <QTime>

namespace zov::app {

COutputPane::COutputPane(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("Output"));
    setReadOnly(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setMaximumBlockCount(kMaxLines);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setPlaceholderText(tr("Messages of loading, importing and saving appear here."));
    // Also when the horizontal bar comes up and takes a line's room.
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this](int, int maximum) {
        if (m_follows) {
            verticalScrollBar()->setValue(maximum);
        }
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int value) { m_follows = value == verticalScrollBar()->maximum(); });
}

void COutputPane::Write(std::string_view text)
{
    const std::lock_guard lock(m_mutex);
    m_pending += text;
    if (!text.ends_with('\n')) {
        m_pending += '\n';
    }
    if (!m_flushDue) {
        m_flushDue = true;
        QMetaObject::invokeMethod(this, &COutputPane::Flush, Qt::QueuedConnection);
    }
}

void COutputPane::Flush()
{
    std::string text;
    {
        const std::lock_guard lock(m_mutex);
        text.swap(m_pending);
        m_flushDue = false;
    }
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss  "));
    QString shown;
    for (const std::string_view line : Split(Trim(text), '\n')) {
        shown += time + QString::fromUtf8(line.data(), static_cast<int>(line.size())).trimmed() +
                 QLatin1Char('\n');
    }
    shown.chop(1);
    const bool follows = m_follows;
    appendPlainText(shown);
    if (follows) { // somebody who reads further up is not pulled away
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    m_follows = follows;
    if (!isVisible()) {
        Q_EMIT Unseen();
    }
}

} // namespace zov::app
