// SPDX-License-Identifier: Apache-2.0
/// A page of the record editor: the fields of one sub-model, or the record's own, in the form of
/// their dialog.
#pragma once

#include "app/LibraryEdits.h"
#include "app/editor/FieldEditor.h"
#include "ui/UiDialog.h"

#include <memory>

class QCheckBox;

namespace zov::app {

class CUiEditorPage : public QWidget
{
    Q_OBJECT

public:
    using TRecords = std::vector<CZovRcdProps*>;

    /// @param has     the form's box that says whether the sub-model is there; null without one
    /// @param context outlives the page
    CUiEditorPage(const SRecordPage& page, const SFieldContext& context, QCheckBox* has,
                  QWidget* parent);

    [[nodiscard]] const SRecordPage& Page() const { return m_page; }
    void Load(const TRecords& records, bool keepTyped);
    [[nodiscard]] bool IsTouched() const;
    /// The first field whose text is no value; null when there is none.
    [[nodiscard]] CFieldEditor* FirstError() const;
    /// Puts what was touched into the draft.
    void Apply(CZovRcdProps& draft) const;
    [[nodiscard]] CFieldEditor* FieldOf(std::string_view name) const;

Q_SIGNALS:
    void Edited();

private:
    void ShowEnabled();
    /// Whether the first field, a choice, has that index; true for -1.
    [[nodiscard]] bool IsFirst(int wanted) const;
    [[nodiscard]] bool IsUsable(const CFieldEditor& field) const;

    const SRecordPage& m_page;
    QCheckBox* m_has;
    Qt::CheckState m_loadedHas = Qt::Unchecked;
    std::vector<CFieldEditor*> m_fields;
};

/// The dialog of a page, made by the name of the page's form, with the page in it. As a child of
/// the editor it is a plain widget: the keys that end dialogs go on to the window.
std::unique_ptr<ui::CUiDialog> MakeEditorPage(const SRecordPage& page, const SFieldContext& context,
                                              QWidget* parent);
CUiEditorPage* PageIn(const ui::CUiDialog& dialog);

/// Makes the forms of the editor known by name. More than once is the same as once.
void RegisterEditorForms();

} // namespace zov::app
