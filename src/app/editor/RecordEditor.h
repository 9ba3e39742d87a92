// SPDX-License-Identifier: Apache-2.0
/// The record editor: one or several records of a type, a page per sub-model. It stands in the
/// "Editor" pane and in the editor dialog.
#pragma once

#include "app/Session.h"
#include "app/TruthCache.h"
#include "app/editor/EditorPage.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;

namespace zov::app {

class CRecordEditor : public QWidget
{
    Q_OBJECT

public:
    using TRecords = CUiEditorPage::TRecords;

    /// More records than this are not edited together.
    static constexpr std::size_t kMaxRecords = 10'000;

    CRecordEditor(CZovSession& session, QWidget* parent);
    ~CRecordEditor() override;

    /// Shows records of a library; none clears the editor. Asks first when there are changes that
    /// were not applied; false, and everything stays, when the user wants to go on with them.
    bool Show(const CZovSession::TLibrary& library, const TRecords& records);
    /// The same question: true when nothing is lost, or may be.
    bool MayLeave();
    [[nodiscard]] const TRecords& Records() const { return m_records; }
    [[nodiscard]] const CZovSession::TLibrary& Library() const { return m_library; }

    [[nodiscard]] bool IsTouched() const;
    /// One undoable edit. False, and the first fault has the focus, when a field has a fault.
    bool Apply();
    /// Back to what the records hold.
    void Reset();
    /// In a dialog whose own buttons apply and cancel.
    void HideButtons();
    /// Null when the type has no such page.
    [[nodiscard]] CUiEditorPage* PageOf(const char* title) const;
    void ShowPage(const char* title);

Q_SIGNALS:
    void TouchedChanged();
    /// Other records are shown, or their values changed.
    void Shown();

private:
    void Take(const CZovSession::TLibrary& library, const TRecords& records);
    void ShowPagesOf(ERecordType type);
    void Load(bool keepTyped);
    void LibraryChanged(const CZovLibrary* library);
    void UpdateState();
    void ShowTabMarks();
    void ShowTruth();
    [[nodiscard]] QString Headline() const;
    [[nodiscard]] QString WhyNothing(const TRecords& records) const;

    CZovSession& m_session;
    SFieldContext m_context;
    CZovSession::TLibrary m_library;
    TRecords m_records;
    ERecordType m_type = ERecordType::Any;
    std::vector<ui::CUiDialog*> m_pages;
    QLabel* m_head;
    QLabel* m_truthLine;
    CTruthCache m_truth;
    QLabel* m_hint;
    QTabWidget* m_tabs;
    QWidget* m_buttons;
    QPushButton* m_apply;
    QPushButton* m_reset;
    bool m_applying = false;
};

} // namespace zov::app
