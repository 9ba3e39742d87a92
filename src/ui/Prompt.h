// SPDX-License-Identifier: Apache-2.0
/// The one way to message boxes and file dialogs. Tests and the event player set the next answers;
/// without one the real box is shown.
///
///     if (CPrompt::Ask(this, tr("Remove the selected libraries or library collections?"),
///                      EButtons::YesNo) == EAnswer::Yes) ...
#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

class QDialog;
class QWidget;

namespace zov::ui {

/// Result codes of modal boxes and dialogs.
enum class EAnswer
{
    Ok = 1,
    Cancel = 2,
    Abort = 3,
    Retry = 4,
    Ignore = 5,
    Yes = 6,
    No = 7,
    YesToAll = 8,
    NoToAll = 9
};

enum class EButtons
{
    Ok,
    OkCancel,
    YesNo,
    YesNoCancel,
    YesNoAll ///< yes, yes to all, no, no to all
};

enum class EIcon
{
    Information,
    Question,
    Warning,
    Error
};

/// What was shown: kept while answers are scripted, so that tests compare the words.
struct SShownPrompt
{
    QString title;
    QString text;
    EButtons buttons = EButtons::Ok;
    EIcon icon = EIcon::Information;
};

class CPrompt
{
public:
    /// Shows a box and waits. Closing it by other means than a button is Cancel, or No where there
    /// is no Cancel, or Ok where that is all. Enter is the first button, or No in a box that warns.
    static EAnswer Ask(QWidget* parent, const QString& text, EButtons buttons,
                       EIcon icon = EIcon::Question);
    /// A box whose buttons have these words, the first being the default, and Cancel behind them.
    /// @return the word, empty when cancelled
    static QString Choose(QWidget* parent, const QString& text, const QStringList& words,
                          EIcon icon = EIcon::Question);
    static void Tell(QWidget* parent, const QString& text, EIcon icon = EIcon::Information);
    /// A message under a caption of its own in place of the program's name.
    static void TellUnder(QWidget* parent, const QString& caption, const QString& text, EIcon icon);

    /// @param filter "ZOV Library (*.zov)", several joined by ";;"
    /// @return the path, empty when cancelled
    static QString OpenFile(QWidget* parent, const QString& title, const QString& filter);
    static QStringList OpenFiles(QWidget* parent, const QString& title, const QString& filter);
    /// The first ending of the chosen filter is added to a name without one; an existing file is
    /// asked about by the dialog.
    static QString SaveFile(QWidget* parent, const QString& title, const QString& filter,
                            const QString& suggestion = {});
    static QString Folder(QWidget* parent, const QString& title);
    /// One line of text; a null string when cancelled.
    static QString Text(QWidget* parent, const QString& title, const QString& label,
                        const QString& suggestion = {});

    /// Shows a folder in the desktop's file manager.
    static void ShowFolder(const QString& path);

    /// The title of all boxes.
    static QString ProgramName();
    /// Where file dialogs begin; follows the user from one to the next.
    static void SetFolder(const QString& folder);
};

/// While one lives, boxes and dialogs don't appear: they take the next scripted answer. An answer
/// that is missing is Cancel (an empty path), and counts as unexpected.
class CScriptedAnswers
{
public:
    CScriptedAnswers();
    CScriptedAnswers(const CScriptedAnswers&) = delete;
    CScriptedAnswers& operator=(const CScriptedAnswers&) = delete;
    ~CScriptedAnswers();

    CScriptedAnswers& Then(EAnswer answer);
    CScriptedAnswers& ThenPath(const QString& path);
    CScriptedAnswers& ThenPaths(const QStringList& paths);
    /// What is done with the next dialog of the program's own, which is on the screen by then.
    CScriptedAnswers& ThenDialog(std::function<void(QDialog&)> drive);
    CScriptedAnswers& ThenChoice(const QString& word) { return ThenPath(word); }
    CScriptedAnswers& ThenText(const QString& text) { return ThenPath(text); }

    [[nodiscard]] const std::vector<SShownPrompt>& Shown() const { return m_shown; }
    [[nodiscard]] int Unexpected() const { return m_unexpected; }
    [[nodiscard]] bool AllUsed() const
    {
        return m_answers.empty() && m_paths.empty() && m_drivers.empty();
    }

    EAnswer NextAnswer(SShownPrompt shown);
    QStringList NextPaths(SShownPrompt shown);
    void DriveDialog(QDialog& dialog);
    /// The innermost that lives, null for none.
    static CScriptedAnswers* Active();

private:
    CScriptedAnswers* m_outer;
    std::deque<EAnswer> m_answers;
    std::deque<QStringList> m_paths;
    std::deque<std::function<void(QDialog&)>> m_drivers;
    std::vector<SShownPrompt> m_shown;
    int m_unexpected = 0;
};

} // namespace zov::ui
