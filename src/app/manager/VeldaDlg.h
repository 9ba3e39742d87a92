// SPDX-License-Identifier: Apache-2.0
/// The VELDA library server: its address, whether it answers, and what can be done without it.
#pragma once

#include "app/BackgroundJob.h"
#include "app/Session.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_DLG_VELDA.h"
#include "ui_dlg_IDD_ZOV_VELDA_MGR.h"

namespace zov::app {

/// Tests the connection beside the window and shows the outcome in a label.
class CVeldaTest : public QObject
{
    Q_OBJECT

public:
    CVeldaTest(QLabel& state, QAbstractButton& button);
    void Run(const QString& server, int port);

private:
    QLabel& m_state;
    QAbstractButton& m_button;
    CBackgroundJob m_job;
};

/// Address and port of the server.
class CVeldaDlg final : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_DLG_VELDA>
{
    Q_OBJECT

public:
    CVeldaDlg(CZovSession& session, QWidget* parent);
    void accept() override;

private:
    CZovSession& m_session;
    CVeldaTest m_test;
};

/// The navigation page "VELDA".
class CVeldaMgr final : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_VELDA_MGR>
{
    Q_OBJECT

public:
    CVeldaMgr(CZovSession& session, QWidget* parent);
    void reject() override;

Q_SIGNALS:
    void ImportAsked();

private:
    void Show();

    CZovSession& m_session;
    CVeldaTest m_test;
};

} // namespace zov::app
