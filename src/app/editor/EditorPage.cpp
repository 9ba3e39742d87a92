// SPDX-License-Identifier: Apache-2.0
#include "app/editor/EditorPage.h"

#include "ui/EventFilters.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace zov::app {
namespace {

/// The label with a key of its own among those of the page.
QString WithMnemonic(const QString& label, std::set<QChar>& used)
{
    for (int i = 0; i < label.size(); ++i) {
        const QChar c = label[i].toLower();
        if (c.isLetter() && used.insert(c).second) {
            return label.left(i) + QLatin1Char('&') + label.mid(i);
        }
    }
    return label;
}

} // namespace

CUiEditorPage::CUiEditorPage(const SRecordPage& page, const SFieldContext& context, QCheckBox* has,
                             QWidget* parent)
    : QWidget(parent)
    , m_page(page)
    , m_has(has)
{
    setObjectName(QLatin1String("Page_") + QLatin1String(page.title));
    ui::CQtHelpTopicEventFilter::SetTopic(
        *this, QString::fromUtf8(HelpTopicOf(page.page).data(),
                                 static_cast<int>(HelpTopicOf(page.page).size())));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    layout->addLayout(form);
    std::set<QChar> used = {QLatin1Char('p')}; // of "The model has this &part"
    bool hasTable = false;
    for (const SRecordField& field : page.fields) {
        auto* editor = new CFieldEditor(field, context, this);
        m_fields.push_back(editor);
        if (editor->IsTable()) {
            layout->addWidget(editor, 1);
            hasTable = true;
        } else {
            auto* label = new QLabel(WithMnemonic(tr(field.info.label), used), this);
            label->setBuddy(editor->Input());
            form->addRow(label, editor);
        }
        connect(editor, &CFieldEditor::Edited, this, [this, editor] {
            if (m_has != nullptr && editor->IsTouched()) {
                m_has->setCheckState(Qt::Checked);
            }
            ShowEnabled();
            Q_EMIT Edited();
        });
    }
    if (!hasTable) {
        layout->addStretch(1);
    }
    if (m_has != nullptr) {
        m_has->setVisible(page.IsOptional());
        connect(m_has, &QCheckBox::clicked, this, [this] {
            m_has->setTristate(false);
            ShowEnabled();
            Q_EMIT Edited();
        });
    }
}

void CUiEditorPage::Load(const TRecords& records, bool keepTyped)
{
    for (CFieldEditor* editor : m_fields) {
        const SRecordField& field = editor->Field();
        const SFieldValue first = records.empty() ? SFieldValue() : field.Get(*records.front());
        const bool differ = std::ranges::any_of(records, [&](const CZovRcdProps* record) {
            return record != records.front() && field.Get(*record) != first;
        });
        editor->Load(first, differ, keepTyped);
    }
    if (m_has != nullptr && m_page.IsOptional()) {
        const bool wasTouched = m_has->checkState() != m_loadedHas;
        const auto having = std::ranges::count_if(
            records, [this](const CZovRcdProps* record) { return record->Has(m_page.optional); });
        m_loadedHas = having == 0 ? Qt::Unchecked
                      : having == static_cast<std::ptrdiff_t>(records.size())
                          ? Qt::Checked
                          : Qt::PartiallyChecked;
        if (!keepTyped || !wasTouched) {
            m_has->setTristate(m_loadedHas == Qt::PartiallyChecked);
            m_has->setCheckState(m_loadedHas);
        }
    }
    ShowEnabled();
}

bool CUiEditorPage::IsUsable(const CFieldEditor& field) const
{
    if (m_has != nullptr && m_page.IsOptional() && m_has->checkState() == Qt::Unchecked) {
        return false;
    }
    return IsFirst(field.Field().onlyWhenFirstIs);
}

bool CUiEditorPage::IsFirst(int wanted) const
{
    const int* index = wanted < 0 ? nullptr : m_fields.front()->Value().As<int>();
    return wanted < 0 || (index == nullptr ? 0 : *index) == wanted;
}

void CUiEditorPage::ShowEnabled()
{
    for (CFieldEditor* editor : m_fields) {
        editor->setEnabled(IsUsable(*editor));
        editor->SetWanted(IsFirst(editor->Field().requiredWhenFirstIs));
        if (editor->Field().onlyWhenFirstIs >= 0) {
            editor->setVisible(IsUsable(*editor));
            QWidget* label = nullptr;
            for (QLabel* candidate : findChildren<QLabel*>()) {
                label = candidate->buddy() == editor->Input() ? candidate : label;
            }
            if (label != nullptr) {
                label->setVisible(IsUsable(*editor));
            }
        }
    }
}

bool CUiEditorPage::IsTouched() const
{
    const bool has = m_has != nullptr && m_page.IsOptional() && m_has->checkState() != m_loadedHas;
    return has || std::ranges::any_of(m_fields, [this](const CFieldEditor* field) {
               return IsUsable(*field) && field->IsTouched();
           });
}

CFieldEditor* CUiEditorPage::FirstError() const
{
    const auto at = std::ranges::find_if(m_fields, [this](const CFieldEditor* field) {
        return IsUsable(*field) && field->HasError();
    });
    return at == m_fields.end() ? nullptr : *at;
}

void CUiEditorPage::Apply(CZovRcdProps& draft) const
{
    if (m_has != nullptr && m_page.IsOptional() && m_has->checkState() != m_loadedHas) {
        if (m_has->checkState() == Qt::Unchecked) {
            draft.Remove(m_page.optional);
            return;
        }
        if (!draft.Has(m_page.optional)) {
            draft.SetComposite(m_page.make());
        }
    }
    for (const CFieldEditor* field : m_fields) {
        if (IsUsable(*field) && field->IsTouched()) {
            field->Field().Set(draft, field->Value());
        }
    }
}

CFieldEditor* CUiEditorPage::FieldOf(std::string_view name) const
{
    const auto at = std::ranges::find_if(
        m_fields, [name](const CFieldEditor* field) { return field->Field().info.name == name; });
    return at == m_fields.end() ? nullptr : *at;
}

} // namespace zov::app
