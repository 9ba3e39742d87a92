// SPDX-License-Identifier: Apache-2.0
/// The browse dialogs: all models of the open libraries, one of which is assigned. The extended one
/// is for several components at once and shows which they are.
#pragma once

#include "app/ModelListView.h"
#include "app/Session.h"
#include "assign/ModelSearch.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_ASSIGNM.h"
#include "ui_dlg_IDD_ZOV_DLG_ASSIGNMEX.h"

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QStandardItemModel;

namespace zov::app {

/// The list of models with the choice of the library, put into either form.
class CModelPick : public QObject
{
    Q_OBJECT

public:
    /// @param session  null: no library is offered
    /// @param required the type that is shown until the user checks `allTypes`; Any shows all, and
    ///                 there is nothing to check then
    CModelPick(const CZovSession* session, ERecordType required, QComboBox& library,
               QCheckBox& allTypes, QLayout& place);

    [[nodiscard]] SModelRef Chosen() const;
    [[nodiscard]] CModelListView& List() { return *m_list; }

Q_SIGNALS:
    void ChosenChanged();
    void Activated();

private:
    void ShowLibrary(int index);

    std::vector<std::shared_ptr<CZovLibrary>> m_libraries;
    CModelListView* m_list;
};

class CDlgAssignModel : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_ASSIGNM>
{
    Q_OBJECT

public:
    /// @param component that the model is for
    /// @param required  the type that the design asks for
    CDlgAssignModel(const CZovSession* session, const QString& component, ERecordType required,
                    QWidget* parent);

    [[nodiscard]] SModelRef Chosen() const { return m_pick->Chosen(); }

private:
    CModelPick* m_pick;
};

class CDlgAssignModelEx : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_ASSIGNMEX>
{
    Q_OBJECT

public:
    /// @param required the type that the design asks for all of them; Any when they differ
    CDlgAssignModelEx(const CZovSession* session, const QStringList& components,
                      ERecordType required, QWidget* parent);

    [[nodiscard]] SModelRef Chosen() const { return m_pick->Chosen(); }
    /// Whether the model is for the component of that place; all are at first.
    [[nodiscard]] bool IsFor(int component) const;

private:
    void ShowState();

    CModelPick* m_pick;
    QStandardItemModel* m_components;
    CDisplayUnits m_units;
};

} // namespace zov::app
