// SPDX-License-Identifier: Apache-2.0
/// The text of an IBIS file, to be edited: line numbers, colours, the current line marked.
#pragma once

#include <QPlainTextEdit>
#include <QSyntaxHighlighter>
#include <QTimer>

#include <vector>

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
    [[nodiscard]] bool IsFilling() const { return m_filling; }
    /// The text with '\n' between lines and every character as it was typed.
    [[nodiscard]] QString Text() const;
    /// From 1; the line comes into the middle.
    void GoToLine(std::size_t line);
    [[nodiscard]] std::size_t CurrentLine() const;
    /// What the user sees and has chosen, to come back to when the text comes in anew.
    struct SPlace
    {
        int line = 0; ///< of the cursor, from 0
        int column = 0;
        int anchorLine = 0; ///< the other end of the selection
        int anchorColumn = 0;
        int top = 0; ///< of the scroll bars
        int left = 0;
    };
    [[nodiscard]] SPlace Place() const;
    void GoTo(const SPlace& place);
    /// Where a line of the text that came in, or was saved, is now that lines were added and
    /// removed; and back. Lines from 1.
    [[nodiscard]] std::size_t LineInText(std::size_t line) const;
    [[nodiscard]] std::size_t LineOfFile(std::size_t line) const;
    /// The text is written; lines are counted from it when Settle is called.
    void MarkSaved() { m_saved = m_shifts.size(); }
    void Settle();
    [[nodiscard]] int MarginWidth() const;
    void PaintMargin(QPaintEvent& event);

Q_SIGNALS:
    void Filled();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// The lines behind one moved.
    struct SShift
    {
        int behind = 0;
        int by = 0;
    };
    void FillNext();
    void NoteLines(int position);
    /// For other colours, piece by piece.
    void RecolourNext();
    void ShowCurrentLine();

    CIbisHighlighter* m_highlighter;
    QWidget* m_margin;
    QTimer m_fill;
    QTimer m_recolour;
    int m_recoloured = 0; ///< lines
    QString m_rest;
    int m_filled = 0;
    bool m_filling = false;
    int m_lines = 1;
    std::vector<SShift> m_shifts; ///< in the order in which they happened
    std::size_t m_saved = 0;      ///< those before the last save
};

} // namespace zov::app
