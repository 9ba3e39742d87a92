// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/ComposeWizard.h"

#include "app/RunBeside.h"
#include "app/ibis/ComposeFields.h"
#include "app/ibis/EmptyHint.h"
#include "app/ibis/ModelBrowserDlg.h"
#include "app/ibis/SignalBrowserDlg.h"
#include "base/File.h"
#include "ibis/IbisLoader.h"
#include "ui/Prompt.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {
CComposeWizard::CComposeWizard(QWidget* parent, CLogSink& log)
    : CQtWizard(parent)
    , m_log(log)
{
    setObjectName(QStringLiteral("ComposeWizard"));
    setWindowTitle(tr("Compose IBIS"));
    setOption(QWizard::NoCancelButtonOnLastPage); // nothing is taken back there
    resize(900, 620);
    MakeOutputPage();
    MakeBufferPage();
    MakePinPage();
    MakeCircuitPage();
    MakeResultPage();
}

CComposeWizard::~CComposeWizard() = default;

void CComposeWizard::MakeOutputPage()
{
    ui::CQtWizardPage* page =
        &AddPage(kOutput, tr("File"),
                 tr("One component whose buffers, package and on-die network are "
                    "SPICE circuits is written, with a SPICE file beside it."));
    m_component = NewField("Component", page);
    m_path = NewField("OutputPath", page);
    m_component->setPlaceholderText(tr("name of the component, or open a description below"));
    m_path->setPlaceholderText(tr("file that is written, ending in .ibs"));
    m_wrapper = NewField("WrapperFile", page);
    m_wrapper->setPlaceholderText(tr("name of the IBIS file with .sp"));
    auto* browse = new QPushButton(tr("B&rowse..."), page);
    browse->setObjectName(QStringLiteral("BrowseOutput"));
    auto* file = new QHBoxLayout;
    file->addWidget(m_path);
    file->addWidget(browse);
    auto* open = new QPushButton(tr("&Open Description..."), page);
    open->setObjectName(QStringLiteral("OpenDescription"));
    auto* form = new QFormLayout(page);
    auto* fileLabel = new QLabel(tr("&IBIS file:"), page);
    fileLabel->setBuddy(m_path);
    form->addRow(tr("&Component:"), m_component);
    form->addRow(fileLabel, file);
    form->addRow(tr("&SPICE file:"), m_wrapper);
    auto* below = new QHBoxLayout;
    below->addWidget(open);
    below->addStretch(1);
    form->addRow({}, below);
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString path = ui::CPrompt::SaveFile(this, tr("Compose IBIS"),
                                                   tr("IBIS file (*.ibs)"), m_path->text());
        if (!path.isEmpty()) {
            m_path->setText(path);
        }
    });
    connect(open, &QPushButton::clicked, this, &CComposeWizard::OpenDescription);
    page->SetCheck([this] { return CheckOutputPage(); });
}

void CComposeWizard::MakeBufferPage()
{
    ui::CQtWizardPage* page =
        &AddPage(kBuffers, tr("Buffers"),
                 tr("IBIS models that are wrapped into SPICE sub-circuits; pins name them."));
    m_buffers = new CTextTable(
        {{tr("Name"), {}}, {tr("IBIS file"), {}}, {tr("Model"), {}}, {tr("Model_type"), {}}},
        tr("No buffers. Choose models with \"From IBIS File...\", or add a row."), page);
    m_buffers->setObjectName(QStringLiteral("Buffers"));
    m_buffers->AddButton(tr("&From IBIS File..."), "FromIbisFile", [this] { BrowseModels(); });
    (new QVBoxLayout(page))->addWidget(m_buffers);
}

void CComposeWizard::MakePinPage()
{
    ui::CQtWizardPage* page =
        &AddPage(kPins, tr("Pins"),
                 tr("Each pin has a buffer or a model (POWER, GND, NC, a name). "
                    "Buffers name their rails."));
    m_pins = new CTextTable({{tr("Pin"), {}},
                             {tr("Signal"), {}},
                             {tr("Buffer"), {}},
                             {tr("Model"), {}},
                             {tr("R"), {}},
                             {tr("L"), {}},
                             {tr("C"), {}},
                             {tr("Pulldown"), {}},
                             {tr("Pullup"), {}},
                             {tr("GND clamp"), {}},
                             {tr("POWER clamp"), {}},
                             {tr("Inverts"), {}}},
                            tr("No pins. Take those of a component with \"From IBIS File...\", or "
                               "add a row."),
                            page);
    m_pins->setObjectName(QStringLiteral("Pins"));
    m_pins->AddButton(tr("&From IBIS File..."), "PinsFromIbisFile", [this] {
        const QString path =
            ui::CPrompt::OpenFile(this, tr("IBIS File"), tr("IBIS files (*.ibs);;All files (*)"));
        if (!path.isEmpty()) {
            TakePins(path);
        }
    });
    (new QVBoxLayout(page))->addWidget(m_pins);
    page->SetCheck([this] { return CheckPinPage(); });
}

void CComposeWizard::MakeCircuitPage()
{
    ui::CQtWizardPage* page =
        &AddPage(kCircuits, tr("Package and Network"),
                 tr("SPICE circuits between the pins and the buffers. The next "
                    "step writes the files."));
    page->setCommitPage(true);
    setButtonText(QWizard::CommitButton, tr("&Write"));
    m_package = new CCircuitEditor(tr("Package"), "PackageCircuit", page);
    m_network = new CCircuitEditor(tr("On-die network"), "NetworkCircuit", page);
    auto* save = new QPushButton(tr("&Save Description..."), page);
    save->setObjectName(QStringLiteral("SaveDescription"));
    auto* both = new QHBoxLayout;
    both->addWidget(m_package);
    both->addWidget(m_network);
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(both, 1);
    layout->addWidget(save, 0, Qt::AlignLeft);
    connect(save, &QPushButton::clicked, this, &CComposeWizard::SaveDescription);
    page->SetCheck([this] { return Write(); });
}

void CComposeWizard::MakeResultPage()
{
    ui::CQtWizardPage* page =
        &AddPage(kResult, tr("Check"), tr("What the checker says of the file."));
    m_verdict = new QLabel(page);
    m_verdict->setObjectName(QStringLiteral("Verdict"));
    m_verdict->setWordWrap(true);
    m_fileWarnings = new QLabel(page);
    m_fileWarnings->setObjectName(QStringLiteral("FileWarnings"));
    m_fileWarnings->setWordWrap(true);
    m_fileWarnings->hide();
    auto* list = new QTableView(page);
    list->setObjectName(QStringLiteral("Report"));
    list->setModel(&m_report);
    list->verticalHeader()->hide();
    list->horizontalHeader()->setStretchLastSection(true);
    list->setShowGrid(false);
    list->horizontalHeader()->setHighlightSections(false);
    list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list->setWordWrap(false);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    new CEmptyHint(*list, tr("The checker's messages stand here when there are any."));
    auto* editor = new QPushButton(tr("Open in &Editor"), page);
    editor->setObjectName(QStringLiteral("OpenInEditor"));
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_verdict);
    layout->addWidget(m_fileWarnings);
    layout->addWidget(list, 1);
    layout->addWidget(editor, 0, Qt::AlignLeft);
    page->SetShown([this] { Check(); });
    connect(editor, &QPushButton::clicked, this, [this] { Q_EMIT EditorAsked(OutputPath()); });
}

QString CComposeWizard::OutputPath() const
{
    return m_path->text().trimmed();
}

void CComposeWizard::Tell(const SError& error)
{
    const QString text = Text(error.Full());
    m_log.Write(error.Full());
    ui::CPrompt::Tell(this, text, ui::EIcon::Error);
}

void CComposeWizard::Set(const ibis::SComposite& composite)
{
    m_component->setText(Text(composite.component));
    m_wrapper->setText(Text(composite.wrapperFile));
    m_buffers->Model().Clear();
    for (const ibis::SCompositeBuffer& buffer : composite.buffers) {
        m_buffers->Model().Add(
            {Text(buffer.name), Text(buffer.file), Text(buffer.model), Text(buffer.modelType)});
    }
    m_pins->Model().Clear();
    for (const ibis::SCompositePin& pin : composite.pins) {
        m_pins->Model().Add({Text(pin.pin), Text(pin.signal), Text(pin.buffer), Text(pin.model),
                             Text(pin.r), Text(pin.l), Text(pin.c), Text(pin.rails.pulldown),
                             Text(pin.rails.pullup), Text(pin.rails.gndClamp),
                             Text(pin.rails.powerClamp), Text(pin.inverts)});
    }
    m_package->Set(composite.package);
    m_network->Set(composite.network);
}

ibis::SComposite CComposeWizard::Composite() const
{
    ibis::SComposite composite;
    composite.component = m_component->text().trimmed().toStdString();
    const QFileInfo file(OutputPath());
    composite.fileName = file.fileName().toStdString();
    composite.wrapperFile = m_wrapper->text().trimmed().toStdString();
    if (composite.wrapperFile.empty()) {
        composite.wrapperFile = (file.completeBaseName() + QStringLiteral(".sp")).toStdString();
    }
    for (const QStringList& row : m_buffers->Model().Rows()) {
        composite.buffers.push_back({row[0].toStdString(), row[1].toStdString(),
                                     row[2].toStdString(), row[3].toStdString()});
    }
    for (const QStringList& row : m_pins->Model().Rows()) {
        ibis::SCompositePin pin;
        std::string* const members[] = {&pin.pin,
                                        &pin.signal,
                                        &pin.buffer,
                                        &pin.model,
                                        &pin.r,
                                        &pin.l,
                                        &pin.c,
                                        &pin.rails.pulldown,
                                        &pin.rails.pullup,
                                        &pin.rails.gndClamp,
                                        &pin.rails.powerClamp,
                                        &pin.inverts};
        for (int i = 0; i < row.size(); ++i) {
            *members[i] = row[i].toStdString();
        }
        composite.pins.push_back(std::move(pin));
    }
    composite.package = m_package->Circuit();
    composite.network = m_network->Circuit();
    return composite;
}

void CComposeWizard::AddBuffer(const QString& file, const QString& model, const QString& modelType)
{
    const auto isTaken = [this](const QString& name) {
        return std::ranges::any_of(m_buffers->Model().Rows(),
                                   [&](const QStringList& row) { return row[0] == name; });
    };
    QString name = model;
    for (int number = 2; isTaken(name); ++number) {
        name = QStringLiteral("%1_%2").arg(model).arg(number);
    }
    m_buffers->Model().Add({name, file, model, modelType});
}

void CComposeWizard::BrowseModels()
{
    CModelBrowserDlg dialog(this);
    if (dialog.DoModal() == ui::EAnswer::Ok) {
        for (const CModelBrowserDlg::SChosen& chosen : dialog.Chosen()) {
            AddBuffer(chosen.file, chosen.model, chosen.modelType);
        }
    }
}

void CComposeWizard::TakePins(const QString& path)
{
    ibis::CIBISLoader loader;
    CResult<void> read;
    RunBeside([&] { read = loader.Open(PathOf(path)); });
    if (read) {
        const auto& all = loader.Components();
        const int chosen = CTimingRefBrowserDlg::ChooseOne(this, all, tr("Choose Component"),
                                                           tr("&Component whose pins are taken:"));
        if (chosen < 0) {
            return;
        }
        RunBeside([&] { read = loader.Select(all[static_cast<std::size_t>(chosen)]); });
    }
    if (!read) {
        Tell(read.Error());
        return;
    }
    for (const ibis::SPinListRow& row : loader.Pins().pins) {
        TakePin(row);
    }
}

/// A pin that is in the table stays as it is.
void CComposeWizard::TakePin(const ibis::SPinListRow& row)
{
    const auto& pins = m_pins->Model().Rows();
    const QString name = Text(row.pin);
    if (std::ranges::any_of(pins, [&](const QStringList& pin) { return pin[0] == name; })) {
        return;
    }
    const std::vector<QStringList>& buffers = m_buffers->Model().Rows();
    // A pin whose model is a buffer here gets that.
    const auto buffer = std::ranges::find_if(
        buffers, [&](const QStringList& one) { return one[2] == Text(row.model); });
    const bool isBuffer = buffer != buffers.end();
    m_pins->Model().Add({name, Text(row.signal), isBuffer ? (*buffer)[0] : QString(),
                         isBuffer ? QString() : Text(row.model), Text(row.r), Text(row.l),
                         Text(row.c), Text(row.pulldownRef), Text(row.pullupRef),
                         Text(row.gndClampRef), Text(row.powerClampRef),
                         row.inverting ? Text(row.diffPin) : QString()});
}

bool CComposeWizard::CheckPinPage()
{
    if (m_pins->Model().rowCount() == 0) {
        ui::CPrompt::Tell(this, tr("A component has at least one pin."), ui::EIcon::Warning);
        return false;
    }
    return true;
}

} // namespace zov::app
