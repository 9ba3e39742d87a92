// SPDX-License-Identifier: Apache-2.0
// The main frame's commands that open other windows, and the steps that add models of a kind.
#include "app/generator/DlgVendorDecapLibrary.h"
#include "app/manager/CommandIds.h"
#include "app/manager/MainFrame.h"
#include "app/manager/ToolWindows.h"
#include "ui/Prompt.h"

namespace zov::app {

void CZovMainFrm::FillWindows()
{
    m_windows[ID_VIEW_CURVES] = [this] { m_toolWindows->Curves(); };
    m_windows[ID_OPEN_CURVE_FILES] = [this] { m_toolWindows->OpenCurveFiles(); };
    m_windows[ID_LOAD_IBIS] = [this] { m_toolWindows->LoadIbis(); };
    m_windows[ID_CHECK_IBIS] = [this] { m_toolWindows->CheckIbis(); };
    m_windows[ID_VENDOR_DECAP_LIBRARY] = [this] {
        QStringList known = m_session.VendorLibraries();
        CDlgVendorDecapLibrary vendors(known.value(0), this);
        if (vendors.DoModal() == ui::EAnswer::Ok && !known.contains(vendors.ListFile())) {
            known.prepend(vendors.ListFile());
            m_session.SetVendorLibraries(known);
        }
    };
}

void CZovMainFrm::OpenWindow(unsigned command)
{
    m_windows.at(command)();
}

void CZovMainFrm::OnUpdateWindow(ui::CCmdUI& ui)
{
    ui.Enable(m_windows.contains(ui.Command()));
}

void CZovMainFrm::OnViewCurves()
{
    OpenWindow(ID_VIEW_CURVES);
}

void CZovMainFrm::OnOpenCurveFiles()
{
    OpenWindow(ID_OPEN_CURVE_FILES);
}

void CZovMainFrm::OnVendorDecapLibrary()
{
    OpenWindow(ID_VENDOR_DECAP_LIBRARY);
}

void CZovMainFrm::OnLoadIbis()
{
    OpenWindow(ID_LOAD_IBIS);
}

void CZovMainFrm::OnCheckIbis()
{
    OpenWindow(ID_CHECK_IBIS);
}

void CZovMainFrm::AddModelOf(ERecordType type)
{
    const CZovSession::TLibrary library = m_session.ProjectLibrary();
    CLibraryChange change(library);
    const std::string kind(InfoOf(type).element);
    std::string name = "new_" + kind;
    for (int number = 2; library->Find(type, name) != nullptr; ++number) {
        name = "new_" + kind + '_' + std::to_string(number);
    }
    change.Insert(type).SetString(EPropId::ModelName, name);
    const std::vector<CZovRcdProps*> added =
        m_session.Edits().Apply(change, tr("Add %1").arg(QString::fromStdString(kind)));
    ShowPage(kProjectPage);
    m_tree->setCurrentIndex(m_treeModel.IndexOf(m_session.Tree().Find(*library)));
    SelectWhenShown({added.begin(), added.end()});
    m_editorPane->show();
    m_editorPane->raise();
}

void CZovMainFrm::SelectWhenShown(const std::vector<const CZovRcdProps*>& records)
{
    disconnect(m_selecting);
    m_selecting = connect(&m_models->Model(), &CModelListModel::Filled, this, [this, records] {
        if (m_models->Select(records) > 0) {
            disconnect(m_selecting);
        }
    });
}

void CZovMainFrm::OnUpdateAddModelOf(ui::CCmdUI& ui)
{
    ui.Enable(m_session.ProjectLibrary() != nullptr);
}

void CZovMainFrm::OnAddIc()
{
    AddModelOf(ERecordType::Ic);
}

void CZovMainFrm::OnAddCapacitor()
{
    AddModelOf(ERecordType::Capacitor);
}

void CZovMainFrm::OnAddInductor()
{
    AddModelOf(ERecordType::Inductor);
}

void CZovMainFrm::OnAddResistor()
{
    AddModelOf(ERecordType::Resistor);
}

void CZovMainFrm::OnAddVrm()
{
    AddModelOf(ERecordType::Vrm);
}

void CZovMainFrm::OnAddConnector()
{
    AddModelOf(ERecordType::Connector);
}

void CZovMainFrm::OnAddPackage()
{
    AddModelOf(ERecordType::Package);
}

void CZovMainFrm::OnAddSpice()
{
    AddModelOf(ERecordType::Spice);
}

void CZovMainFrm::ShowHelp(const QString& topic)
{
    const QString folder = CHelpWindow::DocumentsFolder();
    if (folder.isEmpty()) {
        ui::CPrompt::Tell(this, tr("The documents are not installed."));
        return;
    }
    if (!m_help) {
        m_help = new CHelpWindow(folder, this);
    }
    m_help->ShowPage(CHelpWindow::PageOf(topic));
}

} // namespace zov::app
