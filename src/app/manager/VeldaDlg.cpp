// SPDX-License-Identifier: Apache-2.0
#include "app/manager/VeldaDlg.h"

#include "base/TcpProbe.h"

namespace zov::app {
namespace {

constexpr int kTimeoutMs = 3000;
constexpr int kServerChars = 45;

} // namespace

CVeldaTest::CVeldaTest(QLabel& state, QAbstractButton& button)
    : m_state(state)
    , m_button(button)
{
}

void CVeldaTest::Run(const QString& server, int port)
{
    if (server.trimmed().isEmpty() || port == 0) {
        m_state.setText(tr("Enter the server's name or address and its port first."));
        return;
    }
    m_state.setText(tr("Connecting to %1:%2 ...").arg(server).arg(port));
    m_button.setEnabled(false);
    m_job.Start(tr("Connecting"), [this, server, port](CJobState&) -> CBackgroundJob::Deliver {
        const CResult<void> reached = ProbeTcp(server.trimmed().toStdString(), port, kTimeoutMs);
        const QString text =
            reached ? tr("%1:%2 answers.").arg(server).arg(port)
                    : tr("%1:%2 can't be reached: %3. Check the address, and that the server runs.")
                          .arg(server)
                          .arg(port)
                          .arg(QString::fromStdString(reached.Error().text));
        return [this, text] {
            m_state.setText(text);
            m_button.setEnabled(true);
        };
    });
}

CVeldaDlg::CVeldaDlg(CZovSession& session, QWidget* parent)
    : CqtDialogRes(parent)
    , m_session(session)
    , m_test(*m_form.ui_IDC_STATE, *m_form.ui_IDC_TEST)
{
    m_form.ui_IDC_SERVER_IP->setMinimumWidth(kServerChars * fontMetrics().averageCharWidth());
    m_form.ui_IDC_SERVER_IP->setText(QString::fromStdString(session.Settings().veldaServerIp));
    m_form.ui_IDC_SERVER_PORT->setValue(static_cast<int>(session.Settings().veldaServerPort));
    m_form.ui_IDC_STATE->setText(tr("A test opens a connection and closes it again."));
    connect(m_form.ui_IDC_TEST, &QPushButton::clicked, this, [this] {
        m_test.Run(m_form.ui_IDC_SERVER_IP->text(), m_form.ui_IDC_SERVER_PORT->value());
    });
}

void CVeldaDlg::accept()
{
    SZovSettings settings = m_session.Settings();
    settings.veldaServerIp = m_form.ui_IDC_SERVER_IP->text().trimmed().toStdString();
    settings.veldaServerPort = m_form.ui_IDC_SERVER_PORT->value();
    m_session.SetSettings(std::move(settings));
    m_session.StoreSettings();
    QDialog::accept();
}

CVeldaMgr::CVeldaMgr(CZovSession& session, QWidget* parent)
    : CqtDialogRes(parent)
    , m_session(session)
    , m_test(*m_form.ui_IDC_STATE, *m_form.ui_IDC_TEST)
{
    connect(m_form.ui_IDC_SETTINGS, &QPushButton::clicked, this,
            [this] { CVeldaDlg(m_session, this).DoModal(); });
    connect(m_form.ui_IDC_TEST, &QPushButton::clicked, this, [this] {
        m_test.Run(QString::fromStdString(m_session.Settings().veldaServerIp),
                   static_cast<int>(m_session.Settings().veldaServerPort));
    });
    connect(m_form.ui_IDC_IMPORT, &QPushButton::clicked, this, &CVeldaMgr::ImportAsked);
    connect(&session, &CZovSession::SettingsChanged, this, &CVeldaMgr::Show);
    Show();
    m_form.ui_IDC_STATE->setText(
        tr("This version reaches the server, but does not speak its protocol: models are not "
           "fetched from it. Have the library exported to a file (.zov, .zovx or .xml) and import "
           "that file."));
}

void CVeldaMgr::Show()
{
    const SZovSettings& settings = m_session.Settings();
    m_form.ui_IDC_SERVER->setText(
        settings.veldaServerIp.empty()
            ? tr("No VELDA server is set. Enter its address under Server Settings.")
            : tr("Server: %1:%2")
                  .arg(QString::fromStdString(settings.veldaServerIp))
                  .arg(settings.veldaServerPort));
    m_form.ui_IDC_TEST->setEnabled(!settings.veldaServerIp.empty());
}

void CVeldaMgr::reject()
{
    if (isWindow()) { // a page of the main frame has nothing to close
        QDialog::reject();
    }
}

} // namespace zov::app
