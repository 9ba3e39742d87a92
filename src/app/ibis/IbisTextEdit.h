// SPDX-License-Identifier: Apache-2.0
/// The text of an IBIS file, to be edited: line numbers, colours, the current line marked.
#pragma once

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QTimer>

namespace zov::app {

class CIbisHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    explicit CIbisHighlighter(QTextDocument* document);
    /// Of the lines that are coloured from now on.
    void SetComment(QChar comment) { m_comment = comment; }

protected:
    void highlightBlock(const QString& text) override;

private:
    QChar m_comment = QLatin1Char('|');
};

class CIbisTextEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit CIbisTextEdit(QWidget* parent = nullptr);

    /// Takes a text piece by piece, so that the window stays alive; Filled comes at the end.
    void Fill(const QString& text, QChar comment);
    [[nodiscard]] bool IsFilling() const { return m_fill.isActive(); }
    /// From 1; the line comes into the middle.
    void GoToLine(std::size_t line);
    [[nodiscard]] std::size_t CurrentLine() const;
    [[nodiscard]] int MarginWidth() const;
    void PaintMargin(QPaintEvent& event);

Q_SIGNALS:
    void Filled();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void FillNext();
    void ShowCurrentLine();

    CIbisHighlighter* m_highlighter;
    QWidget* m_margin;
    QTimer m_fill;
    QString m_rest;
    int m_filled = 0;
};

} // namespace zov::app
