// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisTextEdit.h"

#include "app/ibis/IbisColors.h"

#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace zov::app {
namespace {

/// About 10 ms of work.
constexpr int kPieceCharacters = 60000;

class CMargin final : public QWidget
{
public:
    explicit CMargin(CIbisTextEdit& edit)
        : QWidget(&edit)
        , m_edit(edit)
    {
    }
    [[nodiscard]] QSize sizeHint() const override { return {m_edit.MarginWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent* event) override { m_edit.PaintMargin(*event); }

private:
    CIbisTextEdit& m_edit;
};

} // namespace

CIbisHighlighter::CIbisHighlighter(QTextDocument* document)
    : QSyntaxHighlighter(document)
{
}

void CIbisHighlighter::highlightBlock(const QString& text)
{
    const auto* edit = qobject_cast<const QWidget*>(parent()->parent());
    const QPalette palette = edit != nullptr ? edit->palette() : QPalette();
    for (const SInkSpan& span : InksOf(text, m_comment)) {
        QTextCharFormat format;
        format.setForeground(ColorOf(span.ink, palette));
        if (span.ink == EIbisInk::Keyword) {
            format.setFontWeight(QFont::Bold);
        }
        setFormat(span.start, span.length, format);
    }
}

CIbisTextEdit::CIbisTextEdit(QWidget* parent)
    : QPlainTextEdit(parent)
    , m_highlighter(new CIbisHighlighter(document()))
    , m_margin(new CMargin(*this))
{
    setObjectName(QStringLiteral("IbisText"));
    QFont fixed(QStringLiteral("monospace"), font().pointSize());
    fixed.setStyleHint(QFont::Monospace);
    setFont(fixed);
    setLineWrapMode(NoWrap);
    setTabStopDistance(8.0 * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    connect(this, &QPlainTextEdit::blockCountChanged, this,
            [this] { setViewportMargins(MarginWidth(), 0, 0, 0); });
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        if (dy != 0) {
            m_margin->scroll(0, dy);
        } else {
            m_margin->update(0, rect.y(), m_margin->width(), rect.height());
        }
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CIbisTextEdit::ShowCurrentLine);
    connect(document(), &QTextDocument::contentsChange, this, &CIbisTextEdit::NoteLines);
    connect(&m_recolour, &QTimer::timeout, this, &CIbisTextEdit::RecolourNext);
    connect(&m_fill, &QTimer::timeout, this, &CIbisTextEdit::FillNext);
    setViewportMargins(MarginWidth(), 0, 0, 0);
    ShowCurrentLine();
}

void CIbisTextEdit::Fill(const QString& text, QChar comment)
{
    m_highlighter->SetComment(comment);
    m_filling = true;
    clear();
    setUndoRedoEnabled(false);
    setReadOnly(true);
    m_rest = text;
    m_filled = 0;
    FillNext();
    if (m_filled < m_rest.size()) {
        m_fill.start(0);
    }
}

void CIbisTextEdit::FillNext()
{
    // Whole lines: half a line would be coloured twice.
    int end = std::min(m_filled + kPieceCharacters, m_rest.size());
    const int lineEnd = m_rest.indexOf(QLatin1Char('\n'), end);
    end = lineEnd < 0 ? m_rest.size() : lineEnd + 1;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(m_rest.mid(m_filled, end - m_filled));
    m_filled = end;
    if (m_filled < m_rest.size()) {
        return;
    }
    m_fill.stop();
    m_filling = false;
    m_shifts.clear();
    m_saved = 0;
    m_rest.clear();
    m_filled = 0;
    moveCursor(QTextCursor::Start);
    setReadOnly(false);
    setUndoRedoEnabled(true);
    document()->setModified(false);
    Q_EMIT Filled();
}

QString CIbisTextEdit::Text() const
{
    // Not toPlainText, which makes blanks of no-break spaces.
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void CIbisTextEdit::GoToLine(std::size_t line)
{
    const QTextBlock block = document()->findBlockByNumber(
        std::clamp(static_cast<int>(line) - 1, 0, std::max(0, blockCount() - 1)));
    setTextCursor(QTextCursor(block));
    centerCursor();
}

CIbisTextEdit::SPlace CIbisTextEdit::Place() const
{
    const QTextCursor cursor = textCursor();
    const QTextBlock anchor = document()->findBlock(cursor.anchor());
    return {cursor.blockNumber(),         cursor.positionInBlock(),
            anchor.blockNumber(),         cursor.anchor() - anchor.position(),
            verticalScrollBar()->value(), horizontalScrollBar()->value()};
}

void CIbisTextEdit::GoTo(const SPlace& place)
{
    const auto positionOf = [this](int line, int column) {
        const QTextBlock block = document()->findBlockByNumber(std::min(line, blockCount() - 1));
        return block.position() + std::min(column, block.length() - 1);
    };
    QTextCursor cursor(document());
    cursor.setPosition(positionOf(place.anchorLine, place.anchorColumn));
    cursor.setPosition(positionOf(place.line, place.column), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(place.top);
    horizontalScrollBar()->setValue(place.left);
}

std::size_t CIbisTextEdit::CurrentLine() const
{
    return static_cast<std::size_t>(textCursor().blockNumber()) + 1;
}

void CIbisTextEdit::NoteLines(int position)
{
    const int by = blockCount() - m_lines;
    m_lines = blockCount();
    if (by == 0 || m_filling) {
        return;
    }
    const QTextBlock block = document()->findBlock(position);
    const bool isWhole = block.position() == position;
    m_shifts.push_back({block.blockNumber() + (isWhole ? 0 : 1), by});
}

std::size_t CIbisTextEdit::LineInText(std::size_t line) const
{
    int at = static_cast<int>(line);
    for (const SShift& shift : m_shifts) {
        at = at > shift.behind ? std::max({1, shift.behind, at + shift.by}) : at;
    }
    return static_cast<std::size_t>(at);
}

std::size_t CIbisTextEdit::LineOfFile(std::size_t line) const
{
    int at = static_cast<int>(line);
    for (auto shift = m_shifts.rbegin(); shift != m_shifts.rend(); ++shift) {
        at = at > shift->behind ? std::max({1, shift->behind, at - shift->by}) : at;
    }
    return static_cast<std::size_t>(at);
}

void CIbisTextEdit::Settle()
{
    m_shifts.erase(m_shifts.begin(), m_shifts.begin() + static_cast<std::ptrdiff_t>(m_saved));
    m_saved = 0;
}

int CIbisTextEdit::MarginWidth() const
{
    const auto digits = std::max(3, QString::number(blockCount()).size());
    return 12 + fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits;
}

void CIbisTextEdit::PaintMargin(QPaintEvent& event)
{
    QPainter painter(m_margin);
    painter.fillRect(event.rect(), palette().color(QPalette::AlternateBase));
    painter.setFont(font());
    QTextBlock block = firstVisibleBlock();
    QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    const int current = textCursor().blockNumber();
    while (block.isValid() && place.top() <= event.rect().bottom()) {
        painter.setPen(
            palette().color(block.blockNumber() == current ? QPalette::Active : QPalette::Disabled,
                            QPalette::Text));
        painter.drawText(QRectF(0, place.top(), m_margin->width() - 6, place.height()),
                         Qt::AlignRight, QString::number(block.blockNumber() + 1));
        block = block.next();
        place.moveTop(place.bottom());
    }
}

void CIbisTextEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect area = contentsRect();
    m_margin->setGeometry(area.left(), area.top(), MarginWidth(), area.height());
}

void CIbisTextEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_highlighter != nullptr) {
        ShowCurrentLine();
        m_recoloured = 0;
        m_recolour.start(0);
    }
}

void CIbisTextEdit::RecolourNext()
{
    constexpr int kBlocks = 2000;
    QTextBlock block = document()->findBlockByNumber(m_recoloured);
    for (int i = 0; i < kBlocks && block.isValid(); ++i, block = block.next()) {
        m_highlighter->rehighlightBlock(block);
    }
    m_recoloured += kBlocks;
    if (!block.isValid()) {
        m_recolour.stop();
    }
}

void CIbisTextEdit::ShowCurrentLine()
{
    QTextEdit::ExtraSelection line;
    QColor color = palette().color(QPalette::Highlight);
    color.setAlphaF(0.15);
    line.format.setBackground(color);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = textCursor();
    line.cursor.clearSelection();
    setExtraSelections({line});
    m_margin->update();
}

} // namespace zov::app
