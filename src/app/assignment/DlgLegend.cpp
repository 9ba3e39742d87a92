// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/DlgLegend.h"

#include "app/TruthCache.h"
#include "app/assignment/AssignRowModel.h"
#include "assign/AssignTexts.h"
#include "ui/ShownText.h"

#include <QHeaderView>
#include <QStandardItemModel>

namespace zov::app {
namespace {

using ui::Shown;

/// Groups of rows: sign and word as lists show them, then what it means.
class CLegend
{
public:
    CLegend()
        : m_model(new QStandardItemModel(0, 2))
    {
    }
    void Group(const QString& title)
    {
        m_group = new QStandardItem(title);
        QFont bold = m_group->font();
        bold.setBold(true);
        m_group->setFont(bold);
        m_model->appendRow({m_group, new QStandardItem});
    }
    QStandardItem& Row(const QString& word, const QString& meaning)
    {
        auto* item = new QStandardItem(word);
        m_group->appendRow({item, new QStandardItem(meaning)});
        return *item;
    }
    void Status(EAssignState state, const QString& word, const QString& meaning)
    {
        QStandardItem& item = Row(word, meaning);
        item.setIcon(IconOf(state));
        item.setForeground(ColourOf(state));
    }
    [[nodiscard]] QStandardItemModel* Model() const { return m_model; }

private:
    QStandardItemModel* m_model;
    QStandardItem* m_group = nullptr;
};

} // namespace

CDlgLegend::CDlgLegend(QWidget* parent)
    : CqtDialogRes(parent)
{
    CLegend legend;
    legend.Group(tr("Status of components"));
    legend.Status(EAssignState::Valid, Shown(assigntext::kValidated),
                  tr("has a model, in a library that is on"));
    legend.Status(EAssignState::Ambiguous, tr("%1, ...").arg(Shown(assigntext::kValidated)),
                  tr("more than one model matches; \"Why\" names the others"));
    legend.Status(EAssignState::NotFound, Shown(assigntext::kNotFound),
                  tr("no model matches: find, browse or create one"));
    legend.Status(EAssignState::Off, tr("... switched off or closed"),
                  tr("has a model, but its library is switched off or closed"));
    legend.Row(tr("(empty)"), tr("not checked yet; Refresh Status does it"));
    legend.Group(tr("Rows of components"));
    legend.Row(tr("tinted"), tr("found by the pattern of the filter bar"))
        .setBackground(CAssignRowModel::HitColour());
    legend.Group(tr("C of model, ESR, resonance in lists of models"));
    legend.Row(tr("1nF"), tr("agrees with what the record states, within a factor of two"));
    legend.Row(tr("1nF"), tr("differs by a factor of two or more"))
        .setForeground(TruthColor(curve::ETruth::Differs));
    legend.Row(tr("1nF"), tr("asks for the unit, or for Series or Shunt; the tip says which"))
        .setForeground(TruthColor(curve::ETruth::AskUnit));
    legend.Row(tr("..."), tr("being computed"));
    legend.Row(tr("(empty)"), tr("the model does not say it; the tip says why"));
    legend.Model()->setParent(this);
    m_form.ui_IDC_LEGEND->setModel(legend.Model());
    m_form.ui_IDC_LEGEND->expandAll();
    m_form.ui_IDC_LEGEND->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    for (int i = 0; i < legend.Model()->rowCount(); ++i) {
        m_form.ui_IDC_LEGEND->setFirstColumnSpanned(i, {}, true);
    }
    m_form.ui_IDC_BUTTONS->setFocus();
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

} // namespace zov::app
