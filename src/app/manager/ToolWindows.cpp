// SPDX-License-Identifier: Apache-2.0
#include "app/manager/ToolWindows.h"

#include "app/curves/CurveCommands.h"
#include "app/curves/CurveForms.h"
#include "app/ibis/ComposeWizard.h"
#include "app/ibis/IbisCommands.h"
#include "app/ibis/IbisForms.h"
#include "app/ibis/IbisLoaderDlg.h"
#include "ui/Prompt.h"

#include <QFileInfo>

#include <algorithm>

namespace zov::app {
namespace {

void BringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

CToolWindows::CToolWindows(QWidget& owner, CLogSink& log)
    : QObject(&owner)
    , m_owner(owner)
    , m_log(log)
    , m_opener([this](const QString& path) { return Open(path); })
{
    RegisterCurveForms();
    RegisterIbisForms();
}

CToolWindows::~CToolWindows()
{
    delete m_curves;
    for (const QPointer<CIbisEditorFrm>& editor : m_editors) {
        delete editor;
    }
}

CUiGeneralCurveFrm& CToolWindows::Curves()
{
    if (!m_curves) {
        m_curves = new CUiGeneralCurveFrm(m_log, &m_owner);
    }
    BringUp(*m_curves);
    return *m_curves;
}

void CToolWindows::OpenCurveFiles()
{
    Curves().RouteCommand(ID_CURVE_OPEN);
}

CIbisEditorFrm& CToolWindows::IbisEditor(const QString& path)
{
    std::erase_if(m_editors, [](const QPointer<CIbisEditorFrm>& editor) { return !editor; });
    const auto shows = [&](const QPointer<CIbisEditorFrm>& editor) {
        return path.isEmpty() || (editor->Path().isEmpty() && editor->IsIdle()) ||
               QFileInfo(editor->Path()) == QFileInfo(path);
    };
    auto at = std::ranges::find_if(m_editors, shows);
    if (at == m_editors.end()) {
        auto* made = new CIbisEditorFrm(m_log, &m_owner);
        made->setAttribute(Qt::WA_DeleteOnClose);
        connect(made, &CIbisEditorFrm::LoaderAsked, this, &CToolWindows::LoadIbis);
        at = m_editors.insert(at, made);
    }
    CIbisEditorFrm& editor = **at;
    BringUp(editor);
    if (!path.isEmpty() && QFileInfo(editor.Path()) != QFileInfo(path)) {
        editor.OpenFile(path);
    }
    return editor;
}

void CToolWindows::CheckIbis()
{
    IbisEditor({}).RouteCommand(ID_IBIS_OPEN);
}

void CToolWindows::LoadIbis(const QString& path)
{
    CIBISLoaderDlg dialog(&m_owner, m_log);
    // The dialog is modal: the editor comes up behind it and is free when it is closed.
    connect(&dialog, &CIBISLoaderDlg::EditorAsked, this,
            [this](const QString& file) { IbisEditor(file); });
    if (!path.isEmpty()) {
        dialog.OpenFile(path);
    }
    dialog.DoModal();
}

void CToolWindows::ComposeIbis()
{
    auto* wizard = new CComposeWizard(&m_owner, m_log);
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    connect(wizard, &CComposeWizard::EditorAsked, this,
            [this](const QString& file) { IbisEditor(file); });
    wizard->show();
}

bool CToolWindows::Open(const QString& path)
{
    if (CIbisEditorFrm::IsIbisFile(path)) {
        IbisEditor(path);
        return true;
    }
    if (CUiGeneralCurveFrm::IsCurveFile(path)) {
        Curves().OpenFiles({path});
        return true;
    }
    return false;
}

bool CToolWindows::MayClose()
{
    if (m_curves) {
        m_curves->close();
    }
    return std::ranges::all_of(m_editors, [](const QPointer<CIbisEditorFrm>& editor) {
        return !editor || editor->close();
    });
}

} // namespace zov::app
