// SPDX-License-Identifier: Apache-2.0
/// The text of a large file, to be read: drawn from the file's bytes, so that 200 MB cost no more
/// than an index of their lines. Lines are chosen with Shift and copied.
#pragma once

#include <QAbstractScrollArea>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace zov::app {

/// First byte of each line, and the end of the last one.
[[nodiscard]] std::vector<std::size_t> LineStartsOf(std::string_view text);

/// The next place of a text without regard to the case of ASCII letters, once around the end. Of
/// no wanted text, none.
/// @param from    forwards: the first byte looked at; backwards: the first that is not
/// @param isOver  asked every few MB; true ends the search
[[nodiscard]] std::size_t FindNoCase(std::string_view text, std::string_view wanted,
                                     std::size_t from, bool backwards,
                                     const std::function<bool()>& isOver);

class CLargeTextView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit CLargeTextView(QWidget* parent = nullptr);

    /// @param owner keeps the text
    void SetText(std::shared_ptr<const void> owner, std::string_view text,
                 std::vector<std::size_t> lineStarts, QChar comment);
    void GoToLine(std::size_t line);
    [[nodiscard]] std::size_t CurrentLine() const { return m_current; }
    /// The chosen lines and what is on the screen, to come back to when the text is read again.
    struct SPlace
    {
        std::size_t current = 1;
        std::size_t anchor = 1;
        int top = 0;
        int left = 0;
    };
    [[nodiscard]] SPlace Place() const;
    void GoTo(const SPlace& place);
    [[nodiscard]] std::size_t LineCount() const
    {
        return m_starts.empty() ? 0 : m_starts.size() - 1;
    }
    /// For searches beside the window: lives as long as anybody has it.
    [[nodiscard]] std::shared_ptr<const std::string_view> SharedText() const { return m_shared; }
    /// First byte of a line and the one behind its line end.
    [[nodiscard]] std::pair<std::size_t, std::size_t> BytesOfLine(std::size_t line) const
    {
        return {m_starts[line - 1], m_starts[line]};
    }
    [[nodiscard]] std::size_t LineOfByte(std::size_t at) const;

Q_SIGNALS:
    /// By the user's hand.
    void CurrentLineChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] int RowHeight() const { return fontMetrics().height(); }
    [[nodiscard]] int PageRows() const;
    [[nodiscard]] QString LineText(std::size_t line) const;
    [[nodiscard]] int MarginWidth() const;
    void ShowBars();
    enum class ESelect
    {
        One,   ///< the line alone
        Extend ///< from the line that was chosen before
    };
    void MoveCurrent(std::size_t line, ESelect select = ESelect::One);
    void CopyLines() const;

    std::shared_ptr<const std::string_view> m_shared;
    std::string_view m_text;
    std::vector<std::size_t> m_starts;
    QChar m_comment = QLatin1Char('|');
    std::size_t m_current = 1;
    std::size_t m_anchor = 1; ///< the other end of the chosen lines
};

} // namespace zov::app
