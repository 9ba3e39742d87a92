// SPDX-License-Identifier: Apache-2.0
#include "app/editor/AddModelDlg.h"

#include <QPushButton>

namespace zov::app {
namespace {

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

std::string FreeName(const CZovLibrary& library, ERecordType type, const std::string& name)
{
    std::string free = name;
    for (int number = 2; library.Find(type, free) != nullptr; ++number) {
        free = name + "_" + std::to_string(number);
    }
    return free;
}

CAddModelDlg::CAddModelDlg(CLibraryChange::TLibrary library, const CZovRcdProps* like,
                           QWidget* parent)
    : CqtDialogRes(parent)
    , m_library(std::move(library))
    , m_like(like)
{
    setWindowTitle(tr("Add Model"));
    for (const SRecordTypeInfo& info : RecordTypes()) {
        m_form.ui_IDC_TYPE->addItem(Shown(info.name), static_cast<unsigned>(info.type));
    }
    m_form.ui_IDC_VALUE->hide();
    m_form.ui_IDC_VALUE_LABEL->hide();
    const ERecordType type = like != nullptr ? like->Type() : ERecordType::Capacitor;
    m_form.ui_IDC_TYPE->setCurrentIndex(m_form.ui_IDC_TYPE->findData(static_cast<unsigned>(type)));
    m_form.ui_IDC_COPY->setVisible(like != nullptr);
    if (like != nullptr) {
        m_form.ui_IDC_COPY->setText(tr("&Copy of '%1'").arg(Shown(like->Name())));
    }
    m_form.ui_IDC_NAME->setText(Shown(FreeName(*m_library, type, "New_Model")));
    m_form.ui_IDC_NAME->selectAll();
    connect(m_form.ui_IDC_NAME, &QLineEdit::textChanged, this, &CAddModelDlg::ShowState);
    connect(m_form.ui_IDC_TYPE, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CAddModelDlg::ShowState);
    connect(m_form.ui_IDC_COPY, &QCheckBox::toggled, this, &CAddModelDlg::CopyToggled);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowState();
}

ERecordType CAddModelDlg::Type() const
{
    return static_cast<ERecordType>(m_form.ui_IDC_TYPE->currentData().toUInt());
}

void CAddModelDlg::CopyToggled()
{
    const bool copy = m_form.ui_IDC_COPY->isChecked();
    if (copy) {
        m_form.ui_IDC_TYPE->setCurrentIndex(
            m_form.ui_IDC_TYPE->findData(static_cast<unsigned>(m_like->Type())));
        m_form.ui_IDC_NAME->setText(
            Shown(FreeName(*m_library, m_like->Type(), std::string(m_like->Name()))));
        m_form.ui_IDC_NAME->selectAll();
    }
    m_form.ui_IDC_TYPE->setEnabled(!copy);
    m_form.ui_IDC_DESCRIPTION->setEnabled(!copy);
}

void CAddModelDlg::ShowState()
{
    QString why;
    if (Name().isEmpty()) {
        why = tr("The model needs a name.");
    } else if (m_library->Find(Type(), Name().toStdString()) != nullptr) {
        why = tr("'%1' has a model of this type and name already.").arg(Shown(m_library->Name()));
    }
    m_form.ui_IDC_HINT->setText(
        why.isEmpty() ? tr("The model goes to the library '%1'.").arg(Shown(m_library->Name()))
                      : why);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(why.isEmpty());
}

void CAddModelDlg::Fill(CLibraryChange& change) const
{
    const bool copy = m_form.ui_IDC_COPY->isChecked() && m_like != nullptr;
    CZovRcdProps& draft = copy ? change.InsertCopy(*m_like) : change.Insert(Type());
    draft.SetString(EPropId::ModelName, Name().toStdString());
    if (!copy) {
        draft.SetString(IsDiscrete(Type()) ? EPropId::Comment : EPropId::Description,
                        m_form.ui_IDC_DESCRIPTION->text().toStdString());
    }
}

} // namespace zov::app
