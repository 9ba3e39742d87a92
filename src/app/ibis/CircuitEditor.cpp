// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/CircuitEditor.h"

#include "app/RunBeside.h"
#include "app/ibis/ComposeFields.h"
#include "app/ibis/SignalBrowserDlg.h"
#include "app/ibis/TextTable.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "ui/Prompt.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {
namespace {

QStringList Ties()
{
    return {QStringLiteral("open"), QStringLiteral("pin"), QStringLiteral("pad"),
            QStringLiteral("package_rail"), QStringLiteral("die_rail")};
}

} // namespace

CCircuitEditor::CCircuitEditor(const QString& title, const char* objectName, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QLatin1String(objectName));
    auto* box = new QGroupBox(title, this);
    auto* form = new QFormLayout(box);
    m_name = NewField("CircuitName", box);
    m_name->setPlaceholderText(tr("empty: there is no such circuit"));
    m_file = NewField("CircuitFile", box);
    m_subcircuit = NewField("CircuitSubcircuit", box);
    m_ports = new CTextTable({{tr("Port"), {}}, {tr("Ties to"), Ties()}, {tr("Name"), {}}},
                             tr("No ports. Add a row for each port of the sub-circuit, in its "
                                "order."),
                             box);
    auto* browse = new QPushButton(tr("Browse..."), box);
    browse->setObjectName(QStringLiteral("CircuitBrowse"));
    auto* file = new QHBoxLayout;
    file->addWidget(m_file);
    file->addWidget(browse);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("SPICE file:"), file);
    form->addRow(tr("Sub-circuit:"), m_subcircuit);
    form->addRow(m_ports);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(box);
    connect(browse, &QPushButton::clicked, this, &CCircuitEditor::Browse);
}

/// A sub-circuit of a file, with its ports.
void CCircuitEditor::Browse()
{
    const QString path = ui::CPrompt::OpenFile(
        this, tr("SPICE File"),
        tr("SPICE files (*.sp *.spi *.cir *.ckt *.inc *.lib);;All files (*)"));
    if (path.isEmpty()) {
        return;
    }
    CResult<std::vector<SSubcircuit>> read = std::vector<SSubcircuit>();
    RunBeside([&] {
        CResult<std::string> text = ReadWholeFile(PathOf(path));
        read = text ? ReadSubcircuits(*text) : CResult<std::vector<SSubcircuit>>(text.TakeError());
    });
    if (!read || read->empty()) {
        ui::CPrompt::Tell(
            this, read ? tr("'%1' holds no sub-circuit.").arg(path) : Text(read.Error().Full()),
            ui::EIcon::Error);
        return;
    }
    std::vector<std::string> names;
    for (const SSubcircuit& one : *read) {
        names.push_back(one.name);
    }
    const int chosen = CTimingRefBrowserDlg::ChooseOne(this, names, tr("Choose Sub-circuit"),
                                                       tr("&Sub-circuit of the file:"));
    if (chosen >= 0) {
        const SSubcircuit& circuit = (*read)[static_cast<std::size_t>(chosen)];
        ibis::SCompositeCircuit made;
        made.name = m_name->text().isEmpty() ? circuit.name : m_name->text().toStdString();
        made.file = path.toStdString();
        made.subcircuit = circuit.name;
        for (const std::string& pin : circuit.pins) {
            made.ports.push_back({pin, ibis::ECompositeTie::Open, {}});
        }
        Set(made);
    }
}

void CCircuitEditor::Set(const ibis::SCompositeCircuit& circuit)
{
    m_name->setText(Text(circuit.name));
    m_file->setText(Text(circuit.file));
    m_subcircuit->setText(Text(circuit.subcircuit));
    m_ports->Model().Clear();
    for (const ibis::SCompositePort& port : circuit.ports) {
        m_ports->Model().Add({Text(port.name), Ties()[static_cast<int>(port.tie)], Text(port.to)});
    }
}

ibis::SCompositeCircuit CCircuitEditor::Circuit() const
{
    ibis::SCompositeCircuit circuit;
    circuit.name = m_name->text().trimmed().toStdString();
    circuit.file = m_file->text().trimmed().toStdString();
    circuit.subcircuit = m_subcircuit->text().trimmed().toStdString();
    if (circuit.subcircuit.empty()) {
        circuit.subcircuit = circuit.name;
    }
    for (const QStringList& row : m_ports->Model().Rows()) {
        const auto tie = std::max(qsizetype{0}, qsizetype{Ties().indexOf(row[1])});
        circuit.ports.push_back(
            {row[0].toStdString(), static_cast<ibis::ECompositeTie>(tie), row[2].toStdString()});
    }
    return circuit;
}

} // namespace zov::app
