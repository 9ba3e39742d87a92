// SPDX-License-Identifier: Apache-2.0
/// The IBIS editor: a file's objects, text, curves and what the checker says of it, each following
/// the others. docs/ibis-editor.md is its page for users.
#pragma once

#include "app/BackgroundJob.h"
#include "app/curves/CurvePage.h"
#include "app/ibis/IbisFileText.h"
#include "app/ibis/IbisTreeModel.h"
#include "app/ibis/ReportModel.h"
#include "base/FileState.h"
#include "base/Sink.h"
#include "ui/CommandActions.h"
#include "ui/UiFrame.h"

#include <filesystem>
#include <functional>
#include <optional>

class QDockWidget;
class QFrame;
class QLabel;
class QLineEdit;
class QProgressBar;
class QStackedWidget;
class QTableView;
class QTextBrowser;
class QToolButton;
class QTreeView;

namespace zov::app {

class CEmptyHint;
class CIbisTextEdit;
class CLargeTextView;

class CIbisEditorFrm : public ui::CUiFrame
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// Files above this size, or with a longer line, are shown and checked, but not edited.
    static constexpr std::size_t kEditableBytes = std::size_t{4} << 20U;
    static constexpr std::size_t kEditableLine = 20000;

    /// @param log outlives the frame; the "Output" pane
    explicit CIbisEditorFrm(CLogSink& log, QWidget* parent = nullptr);
    ~CIbisEditorFrm() override;

    /// Checks, parses and shows a file, beside the window. An edited text is asked about first; a
    /// file that is on its way in is given up.
    void OpenFile(const QString& path);
    /// ".ibs", ".pkg", ".ims", ".ebd", also ".ami", ".emd" and ".ems", which have no objects.
    [[nodiscard]] static bool IsIbisFile(const QString& path);
    /// False while a file is on its way in, or text is searched for.
    [[nodiscard]] bool IsIdle() const;
    [[nodiscard]] const QString& Path() const { return m_path; }
    void GoToLine(std::size_t line);
    [[nodiscard]] std::size_t CurrentLine() const;

Q_SIGNALS:
    /// "Load Component..." was asked for.
    void LoaderAsked(const QString& path);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void OnIbisOpen();
    void OnIbisSave();
    void OnIbisSaveAs();
    void OnIbisCheck();
    void OnIbisLoader();
    void OnIbisClose();
    void OnIbisUndo();
    void OnIbisRedo();
    void OnIbisFind();
    void OnIbisFindNext();
    void OnIbisFindPrevious();
    void OnIbisGoToLine();
    void OnIbisNextMessage() { StepMessage(1); }
    void OnIbisPreviousMessage() { StepMessage(-1); }
    void OnIbisShowErrors();
    void OnIbisShowWarnings();
    void OnIbisShowNotes();
    void OnIbisPaneTree();
    void OnIbisPaneReport();
    void OnIbisPaneCurves();
    void OnIbisStop();
    void OnUpdateIbisStop(ui::CCmdUI& ui);
    void OnUpdateIbisSave(ui::CCmdUI& ui);
    void OnUpdateOfFile(ui::CCmdUI& ui);
    void OnUpdateOfEdit(ui::CCmdUI& ui);
    void OnUpdateIbisUndo(ui::CCmdUI& ui);
    void OnUpdateIbisRedo(ui::CCmdUI& ui);
    void OnUpdateOfMessages(ui::CCmdUI& ui);
    void OnUpdateIbisShow(ui::CCmdUI& ui);
    void OnUpdateIbisPane(ui::CCmdUI& ui);

    struct SLoaded;
    void MakePanes();
    void MakeMenus();
    void MakeToolBars();
    void MakeNotice();
    void ConnectViews();
    enum class ETextToo
    {
        Yes,
        No ///< only objects and report: the text is in the editor already
    };
    void Load(const QString& path, ETextToo text);
    void Take(SLoaded& loaded, ETextToo text);
    /// False: what was typed while the text came in is kept instead.
    bool MayTakeText(const SLoaded& loaded);
    void ShowReport(const SLoaded& loaded);
    void ShowTextInPlace(SLoaded& loaded, bool isSame);
    void ShowText(SLoaded& loaded);
    void ShowVerdict(const QString& verdict);
    void ClearCurves();
    void ShowTitle();
    void ShowObject();
    void ShowMessage();
    void CopyMessage();
    void FollowText();
    /// A line of the file as it was read, wherever it is in the edited text.
    void GoToFileLine(std::size_t line);
    void StepMessage(int by);
    void Find(bool backwards);
    void FindInLarge(const QString& text, bool backwards);
    void ShowFound(bool found);
    void Toggle(int which);
    bool SaveTo(const QString& path);
    /// Tells of a file that another program wrote meanwhile.
    void LookAtDisk();
    void ReadAgain();
    /// Before the file is replaced; false: rather not.
    bool MayReplace(const QString& path);
    /// Asks about an edited text; false: the user wants to go on with it.
    bool MayLeave();
    [[nodiscard]] bool IsLarge() const;
    [[nodiscard]] bool IsModified() const;
    [[nodiscard]] QDockWidget* PaneOf(unsigned command) const;

    CLogSink& m_log;
    CIbisTreeModel m_treeModel;
    CReportModel m_report;
    CCurveListModel m_curves;
    CMarkerModel m_markers;
    QTreeView* m_tree = nullptr;
    QFrame* m_notice = nullptr; ///< another program wrote the file
    QLabel* m_noticeText = nullptr;
    QStackedWidget* m_texts = nullptr;
    CIbisTextEdit* m_edit = nullptr;
    CLargeTextView* m_large = nullptr;
    QTableView* m_reportList = nullptr;
    CEmptyHint* m_reportHint = nullptr;
    QTextBrowser* m_explanation = nullptr;
    CCurvePlot* m_plot = nullptr;
    QLineEdit* m_find = nullptr;
    QLineEdit* m_reportSearch = nullptr;
    QLabel* m_verdict = nullptr;
    QLabel* m_readOnly = nullptr;
    QToolButton* m_stop = nullptr;
    QProgressBar* m_progress = nullptr;
    QDockWidget* m_treePane = nullptr;
    QDockWidget* m_reportPane = nullptr;
    QDockWidget* m_curvesPane = nullptr;
    std::shared_ptr<const ibis::CIBISDataParser> m_file;
    QString m_path;
    bool m_shown[3] = {true, true, true};         ///< errors, warnings, notes
    const ibis::CIPDataObject* m_drawn = nullptr; ///< whose curves are shown
    CIbisFileText m_fileText;                     ///< of the text that is edited, as last on disk
    std::optional<SFileState> m_state;            ///< of the file when it was read or written last
    std::optional<SFileStamp> m_seen;             ///< of a change that was told
    std::function<void()> m_goBack; ///< to where the user was in the text that comes in anew
    bool m_following = false;
    CBackgroundJob m_job;
    CBackgroundJob m_search;
};

} // namespace zov::app
