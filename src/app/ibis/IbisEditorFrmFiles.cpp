// SPDX-License-Identifier: Apache-2.0
// The IBIS editor's files: loading, checking, saving, searching.
#include "app/ibis/IbisEditorFrm.h"
#include "app/ibis/IbisTextEdit.h"
#include "app/ibis/LargeTextView.h"
#include "base/File.h"
#include "base/Text.h"
#include "ui/Prompt.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTableView>
#include <QTextBrowser>
#include <QTextCodec>
#include <QTreeView>

#include <algorithm>

namespace zov::app {
namespace {

using ibischk::EFileType;

const char* const kIbisFilter =
    "IBIS files (*.ibs *.pkg *.ims *.ebd *.emd *.ems *.ami);;All files (*)";
constexpr EFileType kTypes[] = {EFileType::Ibs, EFileType::Pkg, EFileType::Ims, EFileType::Ebd,
                                EFileType::Emd, EFileType::Ems, EFileType::Ami};

bool HasType(const QString& path, EFileType type)
{
    const std::string_view ending = ibischk::ExtensionOf(type);
    return path.endsWith(QLatin1String(ending.data(), static_cast<int>(ending.size())),
                         Qt::CaseInsensitive);
}

} // namespace

/// What was read beside the window.
struct CIbisEditorFrm::SLoaded
{
    QString path;
    std::shared_ptr<ibis::CIBISDataParser> parser = std::make_shared<ibis::CIBISDataParser>();
    ibis::SIPCheckInfo check; ///< of files without objects
    std::string text;         ///< of those
    std::string fault;
    std::vector<std::size_t> lineStarts; ///< of large files
    QString shown;                       ///< of small ones
    bool hasObjects = true;
    bool crLf = false;
    bool utf8 = true;

    [[nodiscard]] std::string_view Text() const
    {
        return hasObjects ? parser->Data()->Text() : std::string_view(text);
    }

    void Read()
    {
        const std::filesystem::path file = TextPath(path.toStdString());
        const auto* const type =
            std::ranges::find_if(kTypes, [&](EFileType one) { return HasType(path, one); });
        hasObjects = ibis::IPFileTypeOf(file).Ok();
        CResult<void> read = hasObjects ? parser->Read(file) : ReadPlain(file, *type);
        if (!read) {
            fault = read.Error().Full();
            return;
        }
        const std::string_view bytes = Text();
        if (bytes.size() > kEditableBytes) {
            lineStarts = LineStartsOf(bytes);
            return;
        }
        crLf = bytes.find("\r\n") != std::string_view::npos;
        utf8 = IsValidUtf8(bytes);
        shown = utf8 ? QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()))
                     : QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
        shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    }

    CResult<void> ReadPlain(const std::filesystem::path& file, EFileType type)
    {
        ASSIGN_OR_RETURN(text, ReadWholeFile(file));
        CheckIbisFile(PathText(file).c_str(), &check, {type, {}});
        return {};
    }
};

bool CIbisEditorFrm::IsIbisFile(const QString& path)
{
    return std::ranges::any_of(kTypes, [&](EFileType type) { return HasType(path, type); });
}

bool CIbisEditorFrm::IsIdle() const
{
    return !m_job.IsRunning() && !m_edit->IsFilling();
}

bool CIbisEditorFrm::IsModified() const
{
    return !IsLarge() && m_edit->document()->isModified();
}

void CIbisEditorFrm::OpenFile(const QString& path)
{
    if (IsIdle() && MayLeave()) {
        Load(path, ETextToo::Yes);
    }
}

void CIbisEditorFrm::Load(const QString& path, ETextToo text)
{
    auto loaded = std::make_shared<SLoaded>();
    loaded->path = path;
    m_job.Start(tr("Checking and reading %1").arg(QFileInfo(path).fileName()),
                [this, loaded, text](CJobState&) -> CBackgroundJob::Deliver {
                    loaded->Read();
                    return [this, loaded, text] { Take(*loaded, text); };
                });
}

void CIbisEditorFrm::Take(SLoaded& loaded, ETextToo text)
{
    if (!loaded.fault.empty()) {
        m_log.Write(loaded.fault);
        ui::CPrompt::Tell(this, QString::fromStdString(loaded.fault), ui::EIcon::Error);
        return;
    }
    m_path = loaded.path;
    m_file = loaded.hasObjects ? loaded.parser : nullptr;
    const ibis::SIPCheckInfo& check = loaded.hasObjects ? loaded.parser->CheckInfo() : loaded.check;
    if (!check.problem.empty()) {
        m_log.Write(check.problem);
    }
    const std::size_t line = CurrentLine();
    m_following = true;
    m_treeModel.SetFile(m_file);
    m_report.SetMessages(check.messages);
    m_following = false;
    m_reportList->resizeColumnToContents(CReportModel::kLine);
    m_reportList->resizeColumnToContents(CReportModel::kCode);
    const QString verdict =
        check.result == ibis::kIPCheckNotDone
            ? tr("not checked")
            : tr("%1 errors, %2 warnings").arg(check.errors).arg(check.warnings);
    m_verdict->setText(verdict);
    m_log.Write(tr("%1: %2").arg(m_path, verdict).toStdString());
    m_explanation->setPlaceholderText(check.messages.empty()
                                          ? tr("The checker has nothing to say of this file.")
                                          : tr("Choose a message to read what it means."));
    while (m_curves.rowCount() > 0) {
        m_curves.Remove(m_curves.rowCount() - 1);
    }
    if (text == ETextToo::Yes) {
        ShowText(loaded);
    } else {
        GoToLine(line);
        FollowText();
    }
    ShowTitle();
}

void CIbisEditorFrm::ShowText(SLoaded& loaded)
{
    const char comment = m_file ? m_file->Data()->CommentCharacter() : '|';
    if (!loaded.lineStarts.empty()) {
        m_edit->clear();
        m_edit->document()->setModified(false);
        m_texts->setCurrentWidget(m_large);
        std::shared_ptr<const void> owner = loaded.parser;
        std::string_view text = loaded.Text();
        if (!loaded.hasObjects) {
            auto kept = std::make_shared<const std::string>(std::move(loaded.text));
            text = *kept;
            owner = kept;
        }
        m_large->SetText(std::move(owner), text, std::move(loaded.lineStarts),
                         QLatin1Char(comment));
        statusBar()->showMessage(
            tr("The file is large: it is shown and checked, and not to be edited here."));
        return;
    }
    m_crLf = loaded.crLf;
    m_utf8 = loaded.utf8;
    m_texts->setCurrentWidget(m_edit);
    m_edit->Fill(loaded.shown, QLatin1Char(comment));
}

void CIbisEditorFrm::ShowTitle()
{
    setWindowTitle(m_path.isEmpty() ? tr("IBIS Editor[*]")
                                    : tr("%1[*] - IBIS Editor").arg(QFileInfo(m_path).fileName()));
    setWindowModified(IsModified());
}

void CIbisEditorFrm::OnIbisOpen()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Open IBIS File"), tr(kIbisFilter));
    if (!path.isEmpty()) {
        OpenFile(path);
    }
}

bool CIbisEditorFrm::SaveTo(const QString& path)
{
    QString text = m_edit->toPlainText();
    if (m_crLf) {
        text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    }
    const bool asLatin1 = !m_utf8 && QTextCodec::codecForName("ISO-8859-1")->canEncode(text);
    const QByteArray bytes = asLatin1 ? text.toLatin1() : text.toUtf8();
    const CResult<void> saved = WriteFileAtomic(
        TextPath(path.toStdString()), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    if (!saved) {
        const std::string fault = saved.Error().Full();
        m_log.Write(fault);
        ui::CPrompt::Tell(this, QString::fromStdString(fault), ui::EIcon::Error);
        return false;
    }
    m_edit->document()->setModified(false);
    return true;
}

void CIbisEditorFrm::OnIbisSave()
{
    if (SaveTo(m_path)) {
        Load(m_path, ETextToo::No);
    }
}

void CIbisEditorFrm::OnIbisSaveAs()
{
    const QString path = ui::CPrompt::SaveFile(this, tr("Save IBIS File"), tr(kIbisFilter),
                                               QFileInfo(m_path).absoluteFilePath());
    if (!path.isEmpty() && SaveTo(path)) {
        Load(path, ETextToo::No);
    }
}

void CIbisEditorFrm::OnIbisCheck()
{
    // The checker reads the file, so an edited text has to get there first.
    if (IsModified()) {
        if (ui::CPrompt::Ask(this, tr("The text was edited. Save it and check the file?"),
                             ui::EButtons::YesNo) != ui::EAnswer::Yes) {
            return;
        }
        OnIbisSave();
    } else {
        Load(m_path, IsLarge() ? ETextToo::Yes : ETextToo::No);
    }
}

bool CIbisEditorFrm::MayLeave()
{
    if (!IsModified()) {
        return true;
    }
    const ui::EAnswer answer =
        ui::CPrompt::Ask(this, tr("Save the changes of '%1'?").arg(QFileInfo(m_path).fileName()),
                         ui::EButtons::YesNoCancel);
    return answer == ui::EAnswer::No || (answer == ui::EAnswer::Yes && SaveTo(m_path));
}

void CIbisEditorFrm::closeEvent(QCloseEvent* event)
{
    event->setAccepted(MayLeave());
}

void CIbisEditorFrm::OnIbisGoToLine()
{
    bool good = false;
    const QString text =
        ui::CPrompt::Text(this, tr("Go to Line"), tr("Line:"), QString::number(CurrentLine()));
    const qulonglong line = text.toULongLong(&good);
    if (good) {
        GoToLine(static_cast<std::size_t>(line));
    }
}

void CIbisEditorFrm::Find(bool backwards)
{
    const QString text = m_find->text();
    if (text.isEmpty()) {
        OnIbisFind();
        return;
    }
    bool found = false;
    if (IsLarge()) {
        found = FindInLarge(text, backwards);
    } else {
        const QTextDocument::FindFlags flags =
            backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
        found = m_edit->find(text, flags);
        if (!found) { // once around
            m_edit->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
            found = m_edit->find(text, flags);
        }
    }
    statusBar()->showMessage(found ? QString() : tr("'%1' is not in the text.").arg(text));
}

bool CIbisEditorFrm::FindInLarge(const QString& text, bool backwards)
{
    const std::string wanted = text.toStdString();
    const std::string_view all = m_large->Text();
    const auto [begin, end] = m_large->BytesOfLine(m_large->CurrentLine());
    std::size_t at =
        backwards ? (begin == 0 ? all.npos : all.rfind(wanted, begin - 1)) : all.find(wanted, end);
    if (at == all.npos) {
        at = backwards ? all.rfind(wanted) : all.find(wanted);
    }
    if (at == all.npos) {
        return false;
    }
    GoToLine(m_large->LineOfByte(at));
    return true;
}

void CIbisEditorFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void CIbisEditorFrm::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile()) {
        event->acceptProposedAction();
        OpenFile(urls.first().toLocalFile());
    }
}

} // namespace zov::app
