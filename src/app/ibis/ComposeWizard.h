// SPDX-License-Identifier: Apache-2.0
/// Puts a composite IBIS file together, page by page: what is written, the buffers, the pins, the
/// circuits of package and on-die network; then writes it and shows what the checker says of it.
#pragma once

#include "app/BackgroundJob.h"
#include "app/ibis/CircuitEditor.h"
#include "app/ibis/ReportModel.h"
#include "app/ibis/TextTable.h"
#include "base/Sink.h"
#include "ibis/Composite.h"
#include "ibis/PinList.h"
#include "ui/Wizard.h"

#include <filesystem>
#include <memory>
#include <vector>

class QLabel;
class QLineEdit;
class QTableView;

namespace zov::app {

class CComposeWizard : public ui::CQtWizard
{
    Q_OBJECT

public:
    /// @param log outlives the wizard; the "Output" pane
    CComposeWizard(QWidget* parent, CLogSink& log);
    ~CComposeWizard() override;

    void Set(const ibis::SComposite& composite);
    [[nodiscard]] ibis::SComposite Composite() const;
    /// Models as buffers, each under a name that no other has.
    void AddBuffer(const QString& file, const QString& model, const QString& modelType);
    /// The pins of a component of a file, which the user chooses when there are several.
    void TakePins(const QString& path);
    [[nodiscard]] bool IsIdle() const { return !m_job.IsRunning(); }
    [[nodiscard]] QString OutputPath() const;

Q_SIGNALS:
    /// The file that was written is to be opened in the editor.
    void EditorAsked(const QString& path);

private:
    enum EPage
    {
        kOutput,
        kBuffers,
        kPins,
        kCircuits,
        kResult
    };
    void MakeOutputPage();
    void MakeBufferPage();
    void MakePinPage();
    void MakeCircuitPage();
    void MakeResultPage();
    void BrowseModels();
    void OpenDescription();
    void SaveDescription();
    /// Tells the first fault of the page; true for none.
    bool CheckOutputPage();
    bool CheckPinPage();
    [[nodiscard]] ibis::SComposite CompositeIn(const std::filesystem::path& folder) const;
    /// Asks about files that are there.
    bool MayReplace(const std::vector<std::filesystem::path>& files);
    bool Write();
    /// Of files that are named and not there, or not where the standard wants them.
    void ShowFileWarnings(const ibis::SComposite& composite, const std::filesystem::path& folder);
    void Check();
    void TakePin(const ibis::SPinListRow& row);
    void Tell(const SError& error);

    CLogSink& m_log;
    QLineEdit* m_component = nullptr;
    QLineEdit* m_path = nullptr;
    QLineEdit* m_wrapper = nullptr;
    CTextTable* m_buffers = nullptr;
    CTextTable* m_pins = nullptr;
    CCircuitEditor* m_package = nullptr;
    CCircuitEditor* m_network = nullptr;
    QLabel* m_verdict = nullptr;
    QLabel* m_fileWarnings = nullptr;
    std::filesystem::path m_description; ///< that was opened; relative names begin beside it
    CReportModel m_report;
    CBackgroundJob m_job;
};

} // namespace zov::app
