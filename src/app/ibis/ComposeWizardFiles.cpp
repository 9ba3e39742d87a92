// SPDX-License-Identifier: Apache-2.0
// The compose wizard's files: descriptions, what is written, what the checker says of it.
#include "app/RunBeside.h"
#include "app/ibis/ComposeWizard.h"
#include "base/Clock.h"
#include "base/File.h"
#include "ibis/CheckReport.h"
#include "ui/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>

namespace zov::app {
namespace {

const char* const kDescriptionFilter = "Composite description (*.json)";

std::filesystem::path PathOf(const QString& path)
{
    return TextPath(path.toStdString());
}

} // namespace

void CComposeWizard::OpenDescription()
{
    const QString path =
        ui::CPrompt::OpenFile(this, tr("Open Description"), tr(kDescriptionFilter));
    if (path.isEmpty()) {
        return;
    }
    CResult<std::string> text = ReadWholeFile(PathOf(path));
    if (!text) {
        Tell(text.Error());
        return;
    }
    CResult<ibis::SComposite> read = ibis::ReadCompositeJson(*text);
    if (!read) {
        Tell(read.Error());
        return;
    }
    // Files that it names stand beside it, and so does what is written unless told otherwise.
    CResult<void> types;
    RunBeside([&] { types = FindModelTypes(*read, PathOf(QFileInfo(path).absolutePath())); });
    if (!types) {
        Tell(types.Error());
    }
    Set(*read);
    m_description = PathOf(QFileInfo(path).absoluteFilePath());
    if (OutputPath().isEmpty()) {
        const QString name = read->fileName.empty()
                                 ? QFileInfo(path).completeBaseName() + QStringLiteral(".ibs")
                                 : QString::fromStdString(read->fileName);
        m_path->setText(QFileInfo(path).absoluteDir().filePath(name));
    }
}

void CComposeWizard::SaveDescription()
{
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Save Description"), tr(kDescriptionFilter));
    if (path.isEmpty()) {
        return;
    }
    const std::filesystem::path file = PathOf(path);
    const CResult<void> saved =
        WriteFileAtomic(file, WriteCompositeJson(CompositeIn(file.parent_path())));
    if (!saved) {
        Tell(saved.Error());
    }
}

bool CComposeWizard::CheckOutputPage()
{
    QString fault;
    if (m_component->text().trimmed().isEmpty()) {
        fault = tr("The component needs a name.");
    } else if (!OutputPath().endsWith(QStringLiteral(".ibs"), Qt::CaseInsensitive)) {
        fault = tr("Give the path of the IBIS file, ending in .ibs.");
    }
    const std::filesystem::path path = PathOf(OutputPath());
    if (fault.isEmpty()) {
        const CResult<void> targets =
            CheckCompositeTargets(CompositeIn(path.parent_path()), path, m_description);
        fault = targets ? QString() : QString::fromStdString(targets.Error().Full());
    }
    if (!fault.isEmpty()) {
        ui::CPrompt::Tell(this, fault, ui::EIcon::Warning);
    }
    return fault.isEmpty();
}

/// As it goes out: names of files that stood in another folder lead there.
ibis::SComposite CComposeWizard::CompositeIn(const std::filesystem::path& folder) const
{
    ibis::SComposite composite = Composite();
    const QString output = OutputPath();
    if (!m_description.empty()) {
        MoveCompositeFiles(composite, m_description.parent_path(), folder);
    } else if (!output.isEmpty()) {
        MoveCompositeFiles(composite, PathOf(output).parent_path(), folder);
    }
    return composite;
}

bool CComposeWizard::MayReplace(const std::vector<std::filesystem::path>& files)
{
    QStringList there;
    for (const std::filesystem::path& file : files) {
        std::error_code ignored;
        if (std::filesystem::exists(file, ignored)) {
            there.append(QString::fromStdString(PathText(file)));
        }
    }
    if (there.isEmpty()) {
        return true;
    }
    const QString question = there.size() == 1 ? tr("This file exists already. Replace it?")
                                               : tr("These files exist already. Replace them?");
    return ui::CPrompt::Ask(this, question + QLatin1Char('\n') + there.join(QLatin1Char('\n')),
                            ui::EButtons::YesNo, ui::EIcon::Warning) == ui::EAnswer::Yes;
}

bool CComposeWizard::Write()
{
    const std::filesystem::path path = PathOf(OutputPath());
    ibis::SComposite composite = CompositeIn(path.parent_path());
    CResult<void> result;
    RunBeside([&] {
        result = FindModelTypes(composite, path.parent_path());
        if (result) {
            result = CheckComposite(composite);
        }
        if (result) {
            result = CheckCompositeTargets(composite, path, m_description);
        }
    });
    if (result && !MayReplace(CompositeTargets(composite, path))) {
        return false;
    }
    if (result) {
        RunBeside([&] { result = SaveComposite(composite, path, LocalTimeNow()); });
    }
    if (!result) {
        Tell(result.Error());
        return false;
    }
    m_log.Write(tr("Written: %1").arg(OutputPath()).toStdString());
    ShowFileWarnings(composite, path.parent_path());
    return true;
}

void CComposeWizard::ShowFileWarnings(const ibis::SComposite& composite,
                                      const std::filesystem::path& folder)
{
    QStringList lines;
    for (const std::string& name : MissingCompositeFiles(composite, folder)) {
        lines.append(tr("Warning: the files name '%1', which is not there.")
                         .arg(QString::fromStdString(name)));
    }
    for (const ibis::SCompositeCircuit* circuit : {&composite.package, &composite.network}) {
        if (circuit->Given() && TextPath(circuit->file).has_parent_path()) {
            lines.append(tr("Warning: IBIS files are to name circuits that stand beside them. Copy "
                            "'%1' there, or write into its folder.")
                             .arg(QString::fromStdString(circuit->file)));
        }
    }
    for (const QString& line : lines) {
        m_log.Write(line.toStdString());
    }
    m_fileWarnings->setText(lines.join(QLatin1Char('\n')));
    m_fileWarnings->setVisible(!lines.isEmpty());
}

void CComposeWizard::Check()
{
    m_verdict->setText(tr("Checking %1...").arg(OutputPath()));
    auto info = std::make_shared<ibis::SIPCheckInfo>();
    m_job.Start(tr("Checking"),
                [this, info,
                 path = OutputPath().toStdString()](CJobState& state) -> CBackgroundJob::Deliver {
                    CheckIbisFile(path.c_str(), info.get(),
                                  {ibischk::EFileType::Ibs, {}, [&state](double) {
                                       return !state.Cancelled();
                                   }});
                    return [this, info] {
                        m_report.SetMessages({info, &info->messages});
                        m_verdict->setText(
                            tr("%1 is written: %2.")
                                .arg(OutputPath(), VerdictText(info->errors, info->warnings)));
                    };
                });
}

} // namespace zov::app
