// SPDX-License-Identifier: Apache-2.0
#include "app/editor/RecordEditor.h"

#include "base/File.h"
#include "base/Text.h"
#include "ui/Prompt.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <unordered_set>

namespace zov::app {
namespace {

QString ToText(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

CRecordEditor::CRecordEditor(CZovSession& session, QWidget* parent)
    : QWidget(parent)
    , m_session(session)
    , m_head(new QLabel(this))
    , m_truthLine(new QLabel(this))
    , m_hint(new QLabel(this))
    , m_tabs(new QTabWidget(this))
    , m_buttons(new QWidget(this))
    , m_apply(new QPushButton(tr("&Apply"), m_buttons))
    , m_reset(new QPushButton(tr("&Reset"), m_buttons))
{
    setObjectName(QStringLiteral("RecordEditor"));
    m_head->setObjectName(QStringLiteral("EditorHead"));
    m_head->setTextFormat(Qt::PlainText);
    m_head->setWordWrap(true);
    m_truthLine->setObjectName(QStringLiteral("EditorTruth"));
    m_truthLine->setTextFormat(Qt::PlainText);
    m_truthLine->setWordWrap(true);
    connect(&m_truth, &CTruthCache::Updated, this, &CRecordEditor::ShowTruth);
    m_hint->setObjectName(QStringLiteral("EditorHint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setEnabled(false);
    m_tabs->setObjectName(QStringLiteral("EditorPages"));
    m_tabs->setDocumentMode(true);
    m_tabs->setUsesScrollButtons(true);
    m_apply->setObjectName(QStringLiteral("EditorApply"));
    m_apply->setToolTip(tr("Put the changes into the library"));
    m_reset->setObjectName(QStringLiteral("EditorReset"));
    m_reset->setToolTip(tr("Show again what the library holds"));
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch(1);
    buttons->addWidget(m_apply);
    buttons->addWidget(m_reset);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_head);
    layout->addWidget(m_truthLine);
    layout->addWidget(m_hint, 1);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_buttons);

    m_context.trackFolder = [this] {
        const CUiEditorPage* page = m_pages.size() > 1 ? PageIn(*m_pages[1]) : nullptr;
        const CFieldEditor* field = page == nullptr ? nullptr : page->FieldOf("TrackFolder");
        const std::string* text = field == nullptr ? nullptr : field->Value().As<std::string>();
        return text == nullptr ? QString() : ToText(*text);
    };
    m_context.isNameTaken = [this](const std::string& name) {
        const CZovRcdProps* found = m_library ? m_library->Find(m_type, name) : nullptr;
        return found != nullptr && (m_records.size() > 1 || found != m_records.front());
    };
    connect(m_apply, &QPushButton::clicked, this, &CRecordEditor::Apply);
    connect(m_reset, &QPushButton::clicked, this, &CRecordEditor::Reset);
    connect(&session, &CZovSession::LibraryChanged, this, &CRecordEditor::LibraryChanged);
    connect(&session, &CZovSession::SettingsChanged, this, [this] { Load(true); });
    connect(&session, &CZovSession::LibrariesChanged, this, [this] {
        const auto entries = m_session.Set().Entries();
        const bool isOpen = std::ranges::any_of(
            entries, [this](const SLibraryEntry* entry) { return entry->library == m_library; });
        if (m_library && !isOpen) {
            Take(nullptr, {});
        }
    });
    Take(nullptr, {});
}

CRecordEditor::~CRecordEditor() = default;

QString CRecordEditor::WhyNothing(const TRecords& records) const
{
    if (records.empty()) {
        return tr("Select a model in the list to see and edit it here. Several of one type are "
                  "edited together.");
    }
    if (records.size() > kMaxRecords) {
        return tr("%L1 models are selected. Select at most %L2 to edit them together.")
            .arg(records.size())
            .arg(kMaxRecords);
    }
    const bool mixed = std::ranges::any_of(records, [&](const CZovRcdProps* record) {
        return record->Type() != records.front()->Type();
    });
    return mixed ? tr("Models of different types are selected. Select those of one type to edit "
                      "them together.")
                 : QString();
}

bool CRecordEditor::Show(const CZovSession::TLibrary& library, const TRecords& records)
{
    if (library == m_library && records == m_records && !records.empty()) {
        return true;
    }
    if (!MayLeave()) {
        return false;
    }
    Take(library, records);
    return true;
}

void CRecordEditor::Take(const CZovSession::TLibrary& library, const TRecords& records)
{
    const QString why = WhyNothing(records);
    m_hint->setText(why);
    m_library = why.isEmpty() ? library : nullptr;
    m_records = why.isEmpty() ? records : TRecords();
    const bool any = !m_records.empty();
    m_hint->setVisible(!any);
    m_tabs->setVisible(any);
    m_head->setVisible(any);
    m_buttons->setVisible(any);
    if (any) {
        ShowPagesOf(m_records.front()->Type());
    }
    Load(false);
}

void CRecordEditor::ShowPagesOf(ERecordType type)
{
    if (type == m_type) {
        return;
    }
    m_type = type;
    m_tabs->clear();
    qDeleteAll(m_pages);
    m_pages.clear();
    for (const SRecordPage& page : PagesOf(type)) {
        ui::CUiDialog* dialog = MakeEditorPage(page, m_context, m_tabs).release();
        m_pages.push_back(dialog);
        m_tabs->addTab(dialog, tr(page.title));
        connect(PageIn(*dialog), &CUiEditorPage::Edited, this, &CRecordEditor::UpdateState);
    }
}

void CRecordEditor::Load(bool keepTyped)
{
    m_context.units = m_session.Settings().units;
    m_context.several = m_records.size() > 1;
    m_context.folder =
        m_library && !m_library->Path().empty()
            ? std::filesystem::absolute(m_library->Path()).lexically_normal().parent_path()
            : std::filesystem::path();
    if (!m_records.empty()) {
        for (const ui::CUiDialog* page : m_pages) {
            PageIn(*page)->Load(m_records, keepTyped);
        }
    }
    m_head->setText(Headline());
    m_truth.SetUnits(m_context.units);
    ShowTruth();
    UpdateState();
    Q_EMIT Shown();
}

QString CRecordEditor::Headline() const
{
    if (m_records.empty()) {
        return {};
    }
    const QString type = ToText(InfoOf(m_type).name);
    return m_records.size() == 1
               ? tr("%1 '%2'").arg(type, ToText(m_records.front()->Name()))
               : tr("%1 models of type %2; what you don't touch stays as it is in each")
                     .arg(m_records.size())
                     .arg(type);
}

/// What the model of the one record says about its values.
void CRecordEditor::ShowTruth()
{
    const bool isOne = m_records.size() == 1 && IsDiscrete(m_type);
    const curve::SRecordTruth* truth =
        isOne ? m_truth.Find(*m_library, *m_records.front()) : nullptr;
    m_truthLine->setVisible(truth != nullptr);
    if (truth == nullptr) {
        return;
    }
    QStringList values;
    for (const curve::STruthItem& item : truth->items) {
        if (item.model) {
            values += ToText(item.name) + QLatin1Char(' ') +
                      ToText(FormatQuantity(*item.model, item.quantity, m_context.units));
        }
    }
    QString text = values.isEmpty() ? QString() : tr("Its model: %1").arg(values.join(tr(", ")));
    if (truth->connection && *truth->connection != network::EConnection::OnePort) {
        text +=
            QStringLiteral(" (") + ToText(network::WordOf(*truth->connection)) + QLatin1Char(')');
    }
    const QString verdict =
        truth->text.empty() ? tr("agrees with what the record states") : ToText(truth->text);
    m_truthLine->setText(text.isEmpty() ? verdict : text + QStringLiteral("; ") + verdict);
    QPalette palette;
    if (truth->verdict > curve::ETruth::Agrees) {
        palette.setColor(QPalette::WindowText, TruthColor(truth->verdict));
    }
    m_truthLine->setPalette(palette);
}

void CRecordEditor::LibraryChanged(const CZovLibrary* library)
{
    if (library != m_library.get() || m_applying || m_records.empty()) {
        return;
    }
    const std::unordered_set<const CZovRcdProps*> shown(m_records.begin(), m_records.end());
    const auto there = std::ranges::count_if(
        library->Records(), [&](const CZovRcdProps* record) { return shown.contains(record); });
    if (there == static_cast<std::ptrdiff_t>(m_records.size())) {
        Load(true);
    } else {
        Take(nullptr, {}); // deleted, or the library was read anew
    }
}

bool CRecordEditor::IsTouched() const
{
    return !m_records.empty() && std::ranges::any_of(m_pages, [](const ui::CUiDialog* page) {
        return PageIn(*page)->IsTouched();
    });
}

void CRecordEditor::UpdateState()
{
    const bool touched = IsTouched();
    m_apply->setEnabled(touched);
    m_reset->setEnabled(touched);
    ShowTabMarks();
    Q_EMIT TouchedChanged();
}

/// A page with changes that are not applied carries a star.
void CRecordEditor::ShowTabMarks()
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const CUiEditorPage& page = *PageIn(*m_pages[i]);
        m_tabs->setTabText(static_cast<int>(i),
                           tr(page.Page().title) +
                               (page.IsTouched() ? QStringLiteral("*") : QString()));
    }
}

bool CRecordEditor::MayLeave()
{
    if (!IsTouched()) {
        return true;
    }
    const QString what =
        m_records.size() == 1
            ? tr("The changes of '%1' are not applied. Apply them?")
                  .arg(ToText(m_records.front()->Name()))
            : tr("The changes of %1 models are not applied. Apply them?").arg(m_records.size());
    switch (ui::CPrompt::Ask(this, what, ui::EButtons::YesNoCancel)) {
    case ui::EAnswer::Yes:
        return Apply();
    case ui::EAnswer::No:
        Reset();
        return true;
    default:
        return false;
    }
}

bool CRecordEditor::Apply()
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        if (const CFieldEditor* fault = PageIn(*m_pages[i])->FirstError()) {
            m_tabs->setCurrentIndex(static_cast<int>(i));
            fault->Input()->setFocus();
            return false;
        }
    }
    if (!IsTouched()) {
        return true;
    }
    CLibraryChange change(m_library);
    for (const CZovRcdProps* record : m_records) {
        CZovRcdProps& draft = change.Replace(*record);
        for (const ui::CUiDialog* page : m_pages) {
            PageIn(*page)->Apply(draft);
        }
    }
    m_applying = true;
    m_session.Edits().Apply(change, m_records.size() == 1
                                        ? tr("Edit '%1'").arg(ToText(m_records.front()->Name()))
                                        : tr("Edit %1 Models").arg(m_records.size()));
    m_applying = false;
    Load(false);
    return true;
}

void CRecordEditor::Reset()
{
    Load(false);
}

void CRecordEditor::HideButtons()
{
    m_buttons->setMaximumHeight(0);
}

CUiEditorPage* CRecordEditor::PageOf(const char* title) const
{
    const auto at = std::ranges::find_if(m_pages, [title](const ui::CUiDialog* page) {
        return std::string_view(PageIn(*page)->Page().title) == title;
    });
    return at == m_pages.end() ? nullptr : PageIn(**at);
}

void CRecordEditor::ShowPage(const char* title)
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        if (std::string_view(PageIn(*m_pages[i])->Page().title) == title) {
            m_tabs->setCurrentIndex(static_cast<int>(i));
        }
    }
}

} // namespace zov::app
