// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/LargeTextView.h"

#include "app/ibis/IbisColors.h"
#include "base/Text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cstring>

namespace zov::app {
namespace {

constexpr ushort kEllipsis = 0x2026;
/// What is drawn of a line.
constexpr std::size_t kShownBytes = 2000;

bool EqualsAt(std::string_view text, std::size_t at, std::string_view folded)
{
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (ToLower(text[at + i]) != folded[i]) {
            return false;
        }
    }
    return true;
}

/// First or last place in [begin, end) where the text goes on as wanted.
std::size_t FindIn(std::string_view text, std::string_view folded, std::size_t begin,
                   std::size_t end, bool backwards, const std::function<bool()>& isOver)
{
    constexpr std::size_t kStep = std::size_t{4} << 20U;
    end = std::min(end, text.size() < folded.size() ? 0 : text.size() - folded.size() + 1);
    for (std::size_t done = 0; begin + done < end; ++done) {
        const std::size_t at = backwards ? end - 1 - done : begin + done;
        if (ToLower(text[at]) == folded.front() && EqualsAt(text, at, folded)) {
            return at;
        }
        if (done % kStep == kStep - 1 && isOver()) {
            break;
        }
    }
    return std::string_view::npos;
}

} // namespace

std::vector<std::size_t> LineStartsOf(std::string_view text)
{
    std::vector<std::size_t> starts = {0};
    std::size_t at = 0;
    while (at < text.size()) {
        const void* found = std::memchr(text.data() + at, '\n', text.size() - at);
        if (found == nullptr) {
            break;
        }
        at = static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) + 1;
        starts.push_back(at);
    }
    starts.push_back(text.size());
    return starts;
}

std::size_t FindNoCase(std::string_view text, std::string_view wanted, std::size_t from,
                       bool backwards, const std::function<bool()>& isOver)
{
    if (wanted.empty()) {
        return std::string_view::npos;
    }
    std::string folded(wanted);
    std::transform(folded.begin(), folded.end(), folded.begin(), ToLower);
    const std::size_t found = backwards ? FindIn(text, folded, 0, from, true, isOver)
                                        : FindIn(text, folded, from, text.size(), false, isOver);
    if (found != std::string_view::npos || isOver()) {
        return found;
    }
    return backwards ? FindIn(text, folded, from, text.size(), true, isOver)
                     : FindIn(text, folded, 0, from, false, isOver);
}

CLargeTextView::CLargeTextView(QWidget* parent)
    : QAbstractScrollArea(parent)
{
    setObjectName(QStringLiteral("IbisLargeText"));
    QFont fixed(QStringLiteral("monospace"), font().pointSize());
    fixed.setStyleHint(QFont::Monospace);
    setFont(fixed);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
}

void CLargeTextView::SetText(std::shared_ptr<const void> owner, std::string_view text,
                             std::vector<std::size_t> lineStarts, QChar comment)
{
    struct SOwned
    {
        std::shared_ptr<const void> owner;
        std::string_view text;
    };
    const auto owned = std::make_shared<const SOwned>(SOwned{std::move(owner), text});
    m_shared = {owned, &owned->text};
    m_text = text;
    m_starts = std::move(lineStarts);
    m_comment = comment;
    m_current = 1;
    m_anchor = 1;
    ShowBars();
    verticalScrollBar()->setValue(0);
    viewport()->update();
}

int CLargeTextView::PageRows() const
{
    return std::max(1, viewport()->height() / RowHeight());
}

void CLargeTextView::ShowBars()
{
    verticalScrollBar()->setPageStep(PageRows());
    verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(LineCount()) - PageRows()));
    const int width =
        fontMetrics().horizontalAdvance(QLatin1Char('9')) * static_cast<int>(kShownBytes);
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance(QLatin1Char('9')) * 4);
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
}

QString CLargeTextView::LineText(std::size_t line) const
{
    const std::size_t begin = m_starts[line - 1];
    std::string_view text = m_text.substr(begin, m_starts[line] - begin).substr(0, kShownBytes);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    QString shown = QString::fromUtf8(text.data(), static_cast<int>(text.size()))
                        .replace(QLatin1Char('\t'), QStringLiteral("    "));
    if (text.size() == kShownBytes) {
        shown += QChar(kEllipsis);
    }
    return shown;
}

int CLargeTextView::MarginWidth() const
{
    return 12 +
           fontMetrics().horizontalAdvance(QLatin1Char('9')) * QString::number(LineCount()).size();
}

void CLargeTextView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.setFont(font());
    const int margin = MarginWidth();
    const int height = RowHeight();
    const int left = margin + 4 - horizontalScrollBar()->value();
    auto line = static_cast<std::size_t>(verticalScrollBar()->value()) + 1;
    for (int y = 0; y < viewport()->height() && line <= LineCount(); y += height, ++line) {
        const bool isChosen =
            line >= std::min(m_anchor, m_current) && line <= std::max(m_anchor, m_current);
        if (isChosen) {
            QColor color = palette().color(QPalette::Highlight);
            color.setAlphaF(m_anchor == m_current ? 0.15 : 0.3);
            painter.fillRect(0, y, viewport()->width(), height, color);
        }
        const QString text = LineText(line);
        int from = 0;
        const auto put = [&](int end, const QColor& color) {
            painter.setPen(color);
            painter.drawText(left + fontMetrics().horizontalAdvance(text, from),
                             y + fontMetrics().ascent(), text.mid(from, end - from));
            from = end;
        };
        for (const SInkSpan& span : InksOf(text, m_comment)) {
            put(span.start, palette().color(QPalette::Text));
            put(span.start + span.length, ColorOf(span.ink, palette()));
        }
        put(text.size(), palette().color(QPalette::Text));
        painter.fillRect(0, y, margin, height, palette().color(QPalette::AlternateBase));
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(QRect(0, y, margin - 6, height), Qt::AlignRight, QString::number(line));
    }
}

void CLargeTextView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    ShowBars();
}

void CLargeTextView::MoveCurrent(std::size_t line, ESelect select)
{
    m_current = std::clamp<std::size_t>(line, 1, std::max<std::size_t>(1, LineCount()));
    if (select == ESelect::One) {
        m_anchor = m_current;
    }
    const int row = static_cast<int>(m_current) - 1;
    const int top = verticalScrollBar()->value();
    if (row < top) {
        verticalScrollBar()->setValue(row);
    } else if (row >= top + PageRows()) {
        verticalScrollBar()->setValue(row - PageRows() + 1);
    }
    viewport()->update();
}

std::size_t CLargeTextView::LineOfByte(std::size_t at) const
{
    return static_cast<std::size_t>(std::ranges::upper_bound(m_starts, at) - m_starts.begin());
}

void CLargeTextView::GoToLine(std::size_t line)
{
    MoveCurrent(line);
    verticalScrollBar()->setValue(static_cast<int>(m_current) - PageRows() / 2);
    viewport()->update();
}

CLargeTextView::SPlace CLargeTextView::Place() const
{
    return {m_current, m_anchor, verticalScrollBar()->value(), horizontalScrollBar()->value()};
}

void CLargeTextView::GoTo(const SPlace& place)
{
    const std::size_t last = std::max<std::size_t>(1, LineCount());
    m_current = std::min(place.current, last);
    m_anchor = std::min(place.anchor, last);
    verticalScrollBar()->setValue(place.top);
    horizontalScrollBar()->setValue(place.left);
    viewport()->update();
}

/// At most as much as a clipboard is good for.
void CLargeTextView::CopyLines() const
{
    constexpr std::size_t kMostBytes = std::size_t{16} << 20U;
    if (m_starts.empty()) {
        return;
    }
    const std::size_t begin = m_starts[std::min(m_anchor, m_current) - 1];
    const std::size_t end = m_starts[std::max(m_anchor, m_current)];
    const std::string_view text = m_text.substr(begin, std::min(end - begin, kMostBytes));
    QGuiApplication::clipboard()->setText(
        QString::fromUtf8(text.data(), static_cast<int>(text.size())));
}

void CLargeTextView::mousePressEvent(QMouseEvent* event)
{
    MoveCurrent(
        static_cast<std::size_t>(verticalScrollBar()->value() + event->pos().y() / RowHeight()) + 1,
        (event->modifiers() & Qt::ShiftModifier) != 0 ? ESelect::Extend : ESelect::One);
    Q_EMIT CurrentLineChanged();
}

void CLargeTextView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        CopyLines();
        return;
    }
    const auto page = static_cast<std::size_t>(PageRows());
    const ESelect select =
        (event->modifiers() & Qt::ShiftModifier) != 0 ? ESelect::Extend : ESelect::One;
    switch (event->key()) {
    case Qt::Key_Up:
        MoveCurrent(m_current - 1, select);
        break;
    case Qt::Key_Down:
        MoveCurrent(m_current + 1, select);
        break;
    case Qt::Key_PageUp:
        MoveCurrent(m_current > page ? m_current - page : 1, select);
        break;
    case Qt::Key_PageDown:
        MoveCurrent(m_current + page, select);
        break;
    case Qt::Key_Home:
        MoveCurrent(1, select);
        break;
    case Qt::Key_End:
        MoveCurrent(LineCount(), select);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    Q_EMIT CurrentLineChanged();
}

} // namespace zov::app
