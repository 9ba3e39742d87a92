// SPDX-License-Identifier: Apache-2.0
/// One field of the record editor: what one or several records hold there, what the user typed
/// instead, and what is to be said about it.
#pragma once

#include "core/RecordFields.h"

#include <QWidget>

#include <filesystem>
#include <functional>

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QToolButton;

namespace zov::app {

class CFieldRemark;
class CUiEditorListCtrl;

/// What fields need to know of the world.
struct SFieldContext
{
    CDisplayUnits units;
    std::filesystem::path folder; ///< of the library; empty for one that was never saved
    /// The folder in which a circuit file is looked for, too.
    std::function<QString()> trackFolder;
    bool several = false; ///< more than one record is shown
    /// Whether another record has that name.
    std::function<bool(const std::string&)> isNameTaken;
};

class CFieldEditor : public QWidget
{
    Q_OBJECT

public:
    /// @param context outlives the editor
    CFieldEditor(const SRecordField& field, const SFieldContext& context, QWidget* parent);

    [[nodiscard]] const SRecordField& Field() const { return m_field; }
    /// Values that records hold: one when all are equal, none of them to be shown when `differ`.
    /// What the user typed stays when `keepTyped`.
    void Load(const SFieldValue& value, bool differ, bool keepTyped);
    /// The user changed it, and what there is now is not what was loaded.
    [[nodiscard]] bool IsTouched() const;
    /// What was typed is no value.
    [[nodiscard]] bool HasError() const;
    [[nodiscard]] const SFieldValue& Value() const { return m_value; }
    /// Whether a required value is required as things are; it is unless somebody says otherwise.
    void SetWanted(bool wanted);
    /// Says again what there is to say, after a change of something around.
    void Check();
    /// The widget that takes the input; for buddies and the focus.
    [[nodiscard]] QWidget* Input() const;
    /// A table takes the whole width.
    [[nodiscard]] bool IsTable() const { return m_rows != nullptr; }

Q_SIGNALS:
    void Edited();

private:
    void Make();
    void PickFile();
    void OpenFile();
    /// Where the file is that is named; empty when it is nowhere.
    [[nodiscard]] std::filesystem::path FilePath() const;
    void TextTyped();
    void ChoiceMade();
    void RowsEdited();
    void ShowLoaded();
    void ShowText(const QString& text);
    [[nodiscard]] QString TypedText() const;
    [[nodiscard]] QString Remark() const;

    SRecordField m_field;
    const SFieldContext& m_context;
    SFieldValue m_loaded;
    SFieldValue m_value;
    QString m_error;
    bool m_differ = false;
    bool m_edited = false;
    bool m_showing = false;
    bool m_wanted = true;

    QLineEdit* m_line = nullptr;
    QPlainTextEdit* m_text = nullptr;
    QComboBox* m_choice = nullptr;
    CUiEditorListCtrl* m_rows = nullptr;
    QToolButton* m_open = nullptr;
    CFieldRemark* m_remark = nullptr;
};

} // namespace zov::app
