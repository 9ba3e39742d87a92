// SPDX-License-Identifier: Apache-2.0
// The IBIS editor's files: loading, checking, saving, searching.
#include "app/ReleaseBeside.h"
#include "app/ibis/EmptyHint.h"
#include "app/ibis/IbisEditorFrm.h"
#include "app/ibis/IbisTextEdit.h"
#include "app/ibis/LargeTextView.h"
#include "base/File.h"
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
#include <QTreeView>

#include <algorithm>
#include <utility>

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
    int revision = 0; ///< of the edited text when reading began
    std::shared_ptr<ibis::CIBISDataParser> parser = std::make_shared<ibis::CIBISDataParser>();
    /// Of files without objects.
    std::shared_ptr<ibis::SIPCheckInfo> check = std::make_shared<ibis::SIPCheckInfo>();
    std::string text; ///< of those
    std::string fault;
    std::vector<std::size_t> lineStarts; ///< of large files
    CIbisFileText fileText;              ///< of small ones
    QString shown;                       ///< of those
    std::optional<SFileState> state;
    bool hasObjects = true;

    [[nodiscard]] std::string_view Text() const
    {
        return hasObjects ? parser->Data()->Text() : std::string_view(text);
    }

    [[nodiscard]] const ibis::SIPCheckInfo& Check() const
    {
        return hasObjects ? parser->CheckInfo() : *check;
    }
    [[nodiscard]] CReportModel::TMessages Messages() const
    {
        return hasObjects ? CReportModel::TMessages(parser, &parser->CheckInfo().messages)
                          : CReportModel::TMessages(check, &check->messages);
    }

    void Read(CJobState& job)
    {
        const std::filesystem::path file = TextPath(path.toStdString());
        const auto* const type =
            std::ranges::find_if(kTypes, [&](EFileType one) { return HasType(path, one); });
        hasObjects = ibis::IPFileTypeOf(file).Ok();
        const auto stamp = FileStampOf(file);
        const auto goOn = [&](double share) {
            job.SetFraction(share);
            return !job.Cancelled();
        };
        CResult<void> read = hasObjects ? parser->Read(file, {ibis::EIPCheckFirst::Yes, {}, goOn})
                                        : ReadPlain(file, *type, goOn);
        if (!read) {
            fault = read.Error().Full();
            return;
        }
        const std::string_view bytes = Text();
        if (stamp) {
            state = SFileState{*stamp, ContentHash(bytes)};
        }
        if (bytes.size() > kEditableBytes || CIbisFileText::LongestLine(bytes) > kEditableLine) {
            lineStarts = LineStartsOf(bytes);
            return;
        }
        fileText = CIbisFileText(std::string(bytes));
        shown = fileText.Shown();
    }

    CResult<void> ReadPlain(const std::filesystem::path& file, EFileType type,
                            const std::function<bool(double)>& goOn)
    {
        ASSIGN_OR_RETURN(text, ReadWholeFile(file));
        CheckIbisFile(PathText(file).c_str(), check.get(), {type, {}, goOn, text});
        return {};
    }
};

bool CIbisEditorFrm::IsIbisFile(const QString& path)
{
    return std::ranges::any_of(kTypes, [&](EFileType type) { return HasType(path, type); });
}

bool CIbisEditorFrm::IsIdle() const
{
    return !m_job.IsRunning() && !m_search.IsRunning() && !m_edit->IsFilling();
}

bool CIbisEditorFrm::IsModified() const
{
    // While a text comes in piece by piece there is nothing of the user's in it.
    return !IsLarge() && !m_edit->IsFilling() && m_edit->document()->isModified();
}

void CIbisEditorFrm::OpenFile(const QString& path)
{
    if (MayLeave()) {
        Load(path, ETextToo::Yes);
    }
}

void CIbisEditorFrm::Load(const QString& path, ETextToo text)
{
    m_search.Abandon();
    m_job.Abandon();
    auto loaded = std::make_shared<SLoaded>();
    loaded->path = path;
    loaded->revision = m_edit->document()->revision();
    m_job.Start(tr("Checking and reading %1").arg(QFileInfo(path).fileName()),
                [this, loaded, text](CJobState& state) -> CBackgroundJob::Deliver {
                    loaded->Read(state);
                    return [this, loaded, text] { Take(*loaded, text); };
                });
}

bool CIbisEditorFrm::MayTakeText(const SLoaded& loaded)
{
    if (!IsModified() || m_edit->document()->revision() == loaded.revision) {
        return true; // nothing typed, or asked about before
    }
    if (m_path != loaded.path) {
        return MayLeave();
    }
    m_noticeText->setText(tr("Another program changed this file since it was read."));
    m_notice->findChild<QWidget*>(QStringLiteral("ReadAgain"))->setEnabled(true);
    m_notice->show();
    return false;
}

void CIbisEditorFrm::Take(SLoaded& loaded, ETextToo text)
{
    if (!loaded.fault.empty()) {
        m_log.Write(loaded.fault);
        ui::CPrompt::Tell(this, QString::fromStdString(loaded.fault), ui::EIcon::Error);
        return;
    }
    if (text == ETextToo::Yes && !MayTakeText(loaded)) {
        return;
    }
    const bool isSame = m_path == loaded.path;
    m_path = loaded.path;
    if (!loaded.Check().problem.empty()) {
        m_log.Write(loaded.Check().problem);
    }
    m_following = true;
    std::shared_ptr<const void> before =
        std::exchange(m_file, loaded.hasObjects ? loaded.parser : nullptr);
    ClearCurves();
    m_treeModel.SetFile(m_file);
    ShowReport(loaded);
    m_following = false;
    if (text == ETextToo::Yes) {
        m_state = loaded.state;
        m_notice->hide();
        ShowTextInPlace(loaded, isSame);
    }
    // Nobody else has it any more.
    ReleaseBeside(std::move(before));
    if (text == ETextToo::No) {
        m_edit->Settle();
        FollowText();
    }
    ShowTitle();
}

void CIbisEditorFrm::ShowReport(const SLoaded& loaded)
{
    const ibis::SIPCheckInfo& check = loaded.Check();
    m_report.SetMessages(loaded.Messages());
    m_reportList->resizeColumnToContents(CReportModel::kLine);
    m_reportList->resizeColumnToContents(CReportModel::kCode);
    const QString verdict = check.result == ibis::kIPCheckNotDone
                                ? tr("not checked")
                                : VerdictText(check.errors, check.warnings);
    ShowVerdict(verdict);
    m_log.Write(tr("%1: %2").arg(m_path, verdict).toStdString());
    m_reportHint->setText(check.messages.empty()
                              ? tr("The checker has nothing to say of this file.")
                              : tr("No message fits the filter."));
    m_explanation->clear();
}

void CIbisEditorFrm::ShowVerdict(const QString& verdict)
{
    m_verdict->setText(verdict);
}

/// A text that is read again stays where the user was in it.
void CIbisEditorFrm::ShowTextInPlace(SLoaded& loaded, bool isSame)
{
    m_goBack = nullptr;
    if (isSame && !IsLarge()) {
        m_goBack = [this, place = m_edit->Place()] { m_edit->GoTo(place); };
    }
    const bool wasLarge = IsLarge();
    const CLargeTextView::SPlace place = m_large->Place();
    ShowText(loaded);
    if (isSame && wasLarge && IsLarge()) {
        m_large->GoTo(place);
        FollowText();
    }
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
        m_readOnly->show();
        return;
    }
    m_readOnly->hide();
    m_large->SetText({}, {}, {}, QLatin1Char(comment));
    m_fileText = std::move(loaded.fileText);
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

bool CIbisEditorFrm::MayReplace(const QString& path)
{
    const std::filesystem::path file = TextPath(path.toStdString());
    if (path != m_path || !m_state || !std::filesystem::is_regular_file(file) ||
        ChangeSince(*m_state, file) != EFileChange::Changed) {
        return true;
    }
    return ui::CPrompt::Ask(this,
                            tr("'%1' was changed by another program since it was read here. "
                               "Replace it?")
                                .arg(QFileInfo(path).fileName()),
                            ui::EButtons::YesNo, ui::EIcon::Warning) == ui::EAnswer::Yes;
}

bool CIbisEditorFrm::SaveTo(const QString& path)
{
    if (!MayReplace(path)) {
        return false;
    }
    const std::filesystem::path file = TextPath(path.toStdString());
    CIbisFileText written(m_fileText.BytesOf(m_edit->Text()));
    const CResult<void> saved = WriteFileAtomic(file, written.Bytes());
    if (!saved) {
        const std::string fault = saved.Error().Full();
        m_log.Write(fault);
        ui::CPrompt::Tell(this, QString::fromStdString(fault), ui::EIcon::Error);
        return false;
    }
    m_state.reset();
    if (const auto stamp = FileStampOf(file)) {
        m_state = SFileState{*stamp, ContentHash(written.Bytes())};
    }
    m_fileText = std::move(written);
    m_edit->MarkSaved();
    m_notice->hide();
    m_edit->document()->setModified(false);
    return true;
}

void CIbisEditorFrm::LookAtDisk()
{
    if (m_path.isEmpty() || !m_state || m_job.IsRunning()) {
        return;
    }
    const auto stamp = FileStampOf(TextPath(m_path.toStdString()));
    const bool isTold = stamp.Ok() ? m_seen == *stamp : m_seen == SFileStamp();
    if ((stamp.Ok() && *stamp == m_state->stamp) || isTold) {
        return;
    }
    // What was told is not told again; a large file's bytes are not compared, which takes time.
    m_seen = stamp.Ok() ? *stamp : SFileStamp();
    if (!IsLarge() && ChangeSince(*m_state, TextPath(m_path.toStdString())) == EFileChange::None) {
        return;
    }
    m_noticeText->setText(stamp.Ok() ? tr("Another program changed this file since it was read.")
                                     : tr("The file is not there any more."));
    m_notice->findChild<QWidget*>(QStringLiteral("ReadAgain"))->setEnabled(stamp.Ok());
    m_notice->show();
}

void CIbisEditorFrm::ReadAgain()
{
    if (!IsModified() ||
        ui::CPrompt::Ask(this, tr("The text was edited here. Give up these changes?"),
                         ui::EButtons::YesNo) == ui::EAnswer::Yes) {
        Load(m_path, ETextToo::Yes);
    }
}

void CIbisEditorFrm::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        LookAtDisk();
    }
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
        // What another program wrote is checked and shown.
        const bool isSame =
            !IsLarge() && m_state &&
            ChangeSince(*m_state, TextPath(m_path.toStdString())) == EFileChange::None;
        Load(m_path, isSame ? ETextToo::No : ETextToo::Yes);
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
    if (event->isAccepted()) {
        m_search.Abandon();
        m_job.Abandon();
    }
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
    if (IsLarge()) {
        FindInLarge(text, backwards);
        return;
    }
    const QTextDocument::FindFlags flags =
        backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    QTextCursor found = m_edit->document()->find(text, m_edit->textCursor(), flags);
    if (found.isNull()) { // once around
        QTextCursor edge(m_edit->document());
        edge.movePosition(backwards ? QTextCursor::End : QTextCursor::Start);
        found = m_edit->document()->find(text, edge, flags);
    }
    if (!found.isNull()) {
        m_edit->setTextCursor(found);
        m_edit->centerCursor();
    }
    ShowFound(!found.isNull());
}

void CIbisEditorFrm::ShowFound(bool found)
{
    statusBar()->showMessage(found ? QString()
                                   : tr("'%1' is not in the text.").arg(m_find->text()));
}

/// Beside the window: a text of 200 MB is looked through in a part of a second.
void CIbisEditorFrm::FindInLarge(const QString& text, bool backwards)
{
    const auto [begin, end] = m_large->BytesOfLine(m_large->CurrentLine());
    const std::size_t from = backwards ? begin : end;
    m_search.Abandon();
    m_search.Start(tr("Searching"),
                   [this, all = m_large->SharedText(), wanted = text.toStdString(), from,
                    backwards](CJobState& state) -> CBackgroundJob::Deliver {
                       const std::size_t at = FindNoCase(*all, wanted, from, backwards,
                                                         [&state] { return state.Cancelled(); });
                       return [this, at] {
                           if (at != std::string_view::npos) {
                               GoToLine(m_large->LineOfByte(at));
                           }
                           ShowFound(at != std::string_view::npos);
                       };
                   });
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
