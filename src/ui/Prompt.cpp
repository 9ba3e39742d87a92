// SPDX-License-Identifier: Apache-2.0
#include "ui/Prompt.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace zov::ui {
namespace {

CScriptedAnswers*& Scripted()
{
    static CScriptedAnswers* scripted = nullptr;
    return scripted;
}

QString& CurrentFolder()
{
    static QString folder;
    return folder;
}

constexpr std::pair<QMessageBox::StandardButton, EAnswer> kAnswers[] = {
    {QMessageBox::Ok, EAnswer::Ok},
    {QMessageBox::Cancel, EAnswer::Cancel},
    {QMessageBox::Yes, EAnswer::Yes},
    {QMessageBox::No, EAnswer::No},
    {QMessageBox::YesToAll, EAnswer::YesToAll},
    {QMessageBox::NoToAll, EAnswer::NoToAll},
};

QMessageBox::StandardButtons ButtonsOf(EButtons buttons)
{
    switch (buttons) {
    case EButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case EButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case EButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case EButtons::YesNoAll:
        return QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::No | QMessageBox::NoToAll;
    case EButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon IconOf(EIcon icon)
{
    switch (icon) {
    case EIcon::Question:
        return QMessageBox::Question;
    case EIcon::Warning:
        return QMessageBox::Warning;
    case EIcon::Error:
        return QMessageBox::Critical;
    case EIcon::Information:
        break;
    }
    return QMessageBox::Information;
}

EAnswer AnswerOf(int button, EButtons buttons)
{
    for (const auto& [standard, answer] : kAnswers) {
        if (standard == button) {
            return answer;
        }
    }
    return buttons == EButtons::YesNo || buttons == EButtons::YesNoAll ? EAnswer::No
                                                                       : EAnswer::Cancel;
}

QString Remembered(const QString& path)
{
    if (!path.isEmpty()) {
        CurrentFolder() = QFileInfo(path).absolutePath();
    }
    return path;
}

/// Where a dialog starts before a file was chosen.
QString StartFolder()
{
    if (!CurrentFolder().isEmpty()) {
        return CurrentFolder();
    }
    // Started from a desktop, a program stands in the root.
    return QDir::current().isRoot() ? QDir::homePath() : QDir::currentPath();
}

/// The endings that filters name, each with its dot.
QStringList EndingsOf(const QString& filters)
{
    static const QRegularExpression ending(QStringLiteral(R"(\*(\.[A-Za-z0-9]+))"));
    QStringList endings;
    for (auto at = ending.globalMatch(filters); at.hasNext();) {
        endings += at.next().captured(1);
    }
    return endings;
}

/// "name" with the chosen filter "ZOV Library (*.zov)" is "name.zov", and so is "name v1.2" without
/// one of the endings "name v1.2.zov".
QString WithEnding(const QString& path, const QString& chosen, const QStringList& endings)
{
    const QStringList first = EndingsOf(chosen);
    const bool hasOne = std::any_of(endings.begin(), endings.end(), [&](const QString& ending) {
        return path.endsWith(ending, Qt::CaseInsensitive);
    });
    return path.isEmpty() || hasOne || first.isEmpty() ? path : path + first.front();
}

/// May the file that a dialog did not ask about be replaced?
bool MayReplace(QWidget* parent, const QString& path)
{
    return !QFileInfo::exists(path) ||
           CPrompt::Ask(parent,
                        QFileDialog::tr("%1 already exists.\nDo you want to replace it?").arg(path),
                        EButtons::YesNo, EIcon::Warning) == EAnswer::Yes;
}

/// Endings parted by commas as the toolkit wants them: "Records(*.re, *.xml)".
QString ToolkitFilter(QString filter)
{
    return filter.replace(QStringLiteral(", *"), QStringLiteral(" *"));
}

QString FirstPath(CScriptedAnswers& scripted, const QString& title, const QString& filter)
{
    const QStringList paths = scripted.NextPaths({title, filter, EButtons::OkCancel, {}});
    return paths.isEmpty() ? QString() : paths.first();
}

EAnswer ShowBox(QWidget* parent, const SShownPrompt& prompt)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return scripted->NextAnswer(prompt);
    }
    QMessageBox box(IconOf(prompt.icon), prompt.title, prompt.text, ButtonsOf(prompt.buttons),
                    parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (prompt.icon == EIcon::Warning && box.button(QMessageBox::No) != nullptr) {
        box.setDefaultButton(QMessageBox::No); // what Enter does can be undone
    }
    return AnswerOf(box.exec(), prompt.buttons);
}

} // namespace

QString CPrompt::ProgramName()
{
    return QStringLiteral("Zovra");
}

void CPrompt::SetFolder(const QString& folder)
{
    CurrentFolder() = folder;
}

EAnswer CPrompt::Ask(QWidget* parent, const QString& text, EButtons buttons, EIcon icon)
{
    return ShowBox(parent, {ProgramName(), text, buttons, icon});
}

QString CPrompt::Choose(QWidget* parent, const QString& text, const QStringList& words, EIcon icon)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        const QStringList chosen =
            scripted->NextPaths({ProgramName(), text, EButtons::OkCancel, icon});
        return chosen.isEmpty() ? QString() : chosen.first();
    }
    QMessageBox box(IconOf(icon), ProgramName(), text, QMessageBox::Cancel, parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (const QString& word : words) {
        QPushButton* button = box.addButton(word, QMessageBox::ActionRole);
        button->setObjectName(word);
        if (word == words.first()) {
            box.setDefaultButton(button);
        }
    }
    box.exec();
    const QAbstractButton* clicked = box.clickedButton();
    return clicked == nullptr || clicked == box.button(QMessageBox::Cancel) ? QString()
                                                                            : clicked->objectName();
}

void CPrompt::Tell(QWidget* parent, const QString& text, EIcon icon)
{
    Ask(parent, text, EButtons::Ok, icon);
}

void CPrompt::TellUnder(QWidget* parent, const QString& caption, const QString& text, EIcon icon)
{
    ShowBox(parent, {caption, text, EButtons::Ok, icon});
}

QString CPrompt::OpenFile(QWidget* parent, const QString& title, const QString& filter)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return FirstPath(*scripted, title, filter);
    }
    return Remembered(
        QFileDialog::getOpenFileName(parent, title, StartFolder(), ToolkitFilter(filter)));
}

QStringList CPrompt::OpenFiles(QWidget* parent, const QString& title, const QString& filter)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return scripted->NextPaths({title, filter, EButtons::OkCancel, {}});
    }
    QStringList paths = QFileDialog::getOpenFileNames(parent, title, StartFolder(), filter);
    if (!paths.isEmpty()) {
        Remembered(paths.first());
    }
    return paths;
}

QString CPrompt::SaveFile(QWidget* parent, const QString& title, const QString& filter,
                          const QString& suggestion)
{
    QStringList endings = EndingsOf(filter);
    const bool isFile = QFileInfo(suggestion).isAbsolute();
    if (const QString own = QFileInfo(suggestion).suffix(); isFile && !own.isEmpty()) {
        endings += QLatin1Char('.') + own; // a file keeps its ending
    }
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return WithEnding(FirstPath(*scripted, title, filter), filter, endings);
    }
    const QString start = isFile ? suggestion : StartFolder() + QLatin1Char('/') + suggestion;
    QFileDialog dialog(parent, title, QFileInfo(start).path(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.selectFile(QFileInfo(start).fileName());
    // With the ending known to the dialog, it asks about the file that is really written.
    const auto setEnding = [&dialog](const QString& chosen) {
        dialog.setDefaultSuffix(EndingsOf(chosen).value(0));
    };
    setEnding(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, setEnding);
    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        const QString selected = dialog.selectedFiles().first();
        const QString path = WithEnding(selected, dialog.selectedNameFilter(), endings);
        if (path == selected || MayReplace(parent, path)) {
            return Remembered(path);
        }
    }
    return {};
}

QString CPrompt::Folder(QWidget* parent, const QString& title)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return FirstPath(*scripted, title, {});
    }
    const QString folder = QFileDialog::getExistingDirectory(parent, title, StartFolder());
    if (!folder.isEmpty()) {
        CurrentFolder() = folder;
    }
    return folder;
}

QString CPrompt::Text(QWidget* parent, const QString& title, const QString& label,
                      const QString& suggestion)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        return FirstPath(*scripted, title, label);
    }
    bool accepted = false;
    const QString text =
        QInputDialog::getText(parent, title, label, QLineEdit::Normal, suggestion, &accepted);
    return accepted ? (text.isNull() ? QStringLiteral("") : text) : QString();
}

void CPrompt::ShowFolder(const QString& path)
{
    if (CScriptedAnswers* scripted = CScriptedAnswers::Active()) {
        scripted->NextAnswer({ProgramName(), path, EButtons::Ok, EIcon::Information});
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

CScriptedAnswers::CScriptedAnswers()
    : m_outer(std::exchange(Scripted(), this))
{
}

CScriptedAnswers::~CScriptedAnswers()
{
    Scripted() = m_outer;
}

CScriptedAnswers* CScriptedAnswers::Active()
{
    return Scripted();
}

CScriptedAnswers& CScriptedAnswers::Then(EAnswer answer)
{
    m_answers.push_back(answer);
    return *this;
}

CScriptedAnswers& CScriptedAnswers::ThenPath(const QString& path)
{
    return ThenPaths({path});
}

CScriptedAnswers& CScriptedAnswers::ThenPaths(const QStringList& paths)
{
    m_paths.push_back(paths);
    return *this;
}

CScriptedAnswers& CScriptedAnswers::ThenDialog(std::function<void(QDialog&)> drive)
{
    m_drivers.push_back(std::move(drive));
    return *this;
}

void CScriptedAnswers::DriveDialog(QDialog& dialog)
{
    m_shown.push_back({dialog.windowTitle(), dialog.objectName(), EButtons::OkCancel, {}});
    if (m_drivers.empty()) {
        ++m_unexpected;
        return;
    }
    const std::function<void(QDialog&)> drive = std::move(m_drivers.front());
    m_drivers.pop_front();
    drive(dialog);
}

EAnswer CScriptedAnswers::NextAnswer(SShownPrompt shown)
{
    const bool onlyOk = shown.buttons == EButtons::Ok;
    const EButtons buttons = shown.buttons;
    m_shown.push_back(std::move(shown));
    if (onlyOk) {
        return EAnswer::Ok;
    }
    if (m_answers.empty()) {
        ++m_unexpected;
        return AnswerOf(-1, buttons);
    }
    const EAnswer answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

QStringList CScriptedAnswers::NextPaths(SShownPrompt shown)
{
    m_shown.push_back(std::move(shown));
    if (m_paths.empty()) {
        ++m_unexpected;
        return {};
    }
    QStringList paths = m_paths.front();
    m_paths.pop_front();
    return paths;
}

} // namespace zov::ui
