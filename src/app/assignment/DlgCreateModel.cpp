// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/DlgCreateModel.h"

#include "app/assignment/DiscreteGuess.h"
#include "batch/CellValue.h"
#include "ui/ShownText.h"

#include <QPushButton>

#include <cmath>

namespace zov::app {
namespace {

using ui::Shown;

EQuantity QuantityOf(ERecordType type)
{
    return type == ERecordType::Capacitor  ? EQuantity::Capacitance
           : type == ERecordType::Inductor ? EQuantity::Inductance
                                           : EQuantity::Resistance;
}

/// In the largest unit of which there is one at least: "10kOhm".
QString ValueText(double value, EQuantity quantity)
{
    CDisplayUnits units;
    std::optional<SUnit> best;
    for (const SUnit& unit : UnitsOf(quantity)) {
        const bool fits = std::abs(value) >= std::pow(10.0, unit.exponent);
        if (fits && (!best || unit.exponent > best->exponent)) {
            best = unit;
        }
    }
    if (best) {
        units.Set(quantity, best->suffix);
    }
    return Shown(FormatQuantity(value, quantity, units));
}

} // namespace

CDlgCreateModel::CDlgCreateModel(CZovLibrary* library, const SDesignComponent& component,
                                 QWidget* parent)
    : CqtDialogRes(parent)
    , m_library(library)
{
    for (const SRecordTypeInfo& info : RecordTypes()) {
        m_form.ui_IDC_TYPE->addItem(Shown(info.name), static_cast<unsigned>(info.type));
    }
    const auto guess = GuessDiscrete(component);
    const ERecordType type = component.requiredType != ERecordType::Any ? component.requiredType
                             : guess                                    ? guess->type
                                     : DiscreteTypeOf(component).value_or(ERecordType::Ic);
    m_form.ui_IDC_TYPE->setCurrentIndex(m_form.ui_IDC_TYPE->findData(static_cast<unsigned>(type)));
    m_form.ui_IDC_NAME->setText(Shown(component.name));
    m_form.ui_IDC_VALUE->setText(guess ? ValueText(guess->value, QuantityOf(guess->type))
                                       : QString());
    connect(m_form.ui_IDC_NAME, &QLineEdit::textChanged, this, &CDlgCreateModel::ShowState);
    connect(m_form.ui_IDC_VALUE, &QLineEdit::textChanged, this, &CDlgCreateModel::ShowState);
    connect(m_form.ui_IDC_TYPE, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CDlgCreateModel::ShowState);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowState();
}

ERecordType CDlgCreateModel::Type() const
{
    return static_cast<ERecordType>(m_form.ui_IDC_TYPE->currentData().toUInt());
}

std::optional<double> CDlgCreateModel::Value() const
{
    const batch::SCellReading cell =
        batch::ReadQuantity(m_form.ui_IDC_VALUE->text().toStdString(), QuantityOf(Type()), {});
    return cell.state == batch::ECell::Value ? std::optional(cell.value) : std::nullopt;
}

void CDlgCreateModel::ShowState()
{
    const bool discrete = IsDiscrete(Type());
    m_form.ui_IDC_VALUE->setVisible(discrete);
    m_form.ui_IDC_VALUE_LABEL->setVisible(discrete);
    const QString name = m_form.ui_IDC_NAME->text().trimmed();
    QString why;
    if (m_library == nullptr) {
        why = tr("No project library is open. Make or open one in the library manager.");
    } else if (name.isEmpty()) {
        why = tr("The model needs a name.");
    } else if (m_library->Find(Type(), name.toStdString()) != nullptr) {
        why = tr("'%1' has a model of this type and name already.").arg(Shown(m_library->Name()));
    } else if (discrete && !Value()) {
        why =
            tr("The model needs a value: %1.").arg(Shown(batch::ExpectedText(QuantityOf(Type()))));
    }
    // The value as it was understood, since a number may be typed without a unit.
    const QString what = discrete && Value()
                             ? tr("The model of %1").arg(ValueText(*Value(), QuantityOf(Type())))
                             : tr("The model");
    m_form.ui_IDC_HINT->setText(
        why.isEmpty() ? tr("%1 goes to the project library '%2' and to the component.")
                            .arg(what, Shown(m_library->Name()))
                      : why);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(why.isEmpty());
}

void CDlgCreateModel::Fill(CZovRcdProps& record) const
{
    const std::string name = m_form.ui_IDC_NAME->text().trimmed().toStdString();
    if (IsDiscrete(Type())) {
        FillDiscrete(record, name, {Type(), Value().value_or(0.0), {}, {}, {}});
    } else {
        record.SetString(EPropId::ModelName, name);
    }
    record.SetString(EPropId::Description, m_form.ui_IDC_DESCRIPTION->text().toStdString());
}

} // namespace zov::app
