// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/DlgFindModel.h"

#include "assign/AssignTexts.h"
#include "ui/ShownText.h"

#include <QPushButton>

namespace zov::app {
namespace {

enum EFindDialogId : unsigned
{
    ID_KEY_UP = 1,
    ID_KEY_DOWN
};

using ui::Shown;

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CDlgFindModel, ui::CUiDialog)
ZOV_ON_COMMAND_UPDATE(ID_KEY_UP, KeyUp)
ZOV_ON_COMMAND_UPDATE(ID_KEY_DOWN, KeyDown)
ZOV_END_MESSAGE_MAP()

CDlgFindModel::CDlgFindModel(SFindRequest request, QWidget* parent)
    : CqtDialogRes(parent)
    , m_request(std::move(request))
    , m_keys(new CSearchKeyModel(m_request.options, this))
    , m_hits(new CModelHitModel(this))
{
    const std::string component = m_request.component.toStdString();
    setWindowTitle(Shown(component.empty()
                             ? std::string(assigntext::kFindTitle)
                             : assigntext::Fill(assigntext::kFindTitleFor, {component})));
    FillTypes();
    m_form.ui_IDC_KEYS->setModel(m_keys);
    m_form.ui_IDC_KEYS->setCurrentIndex(m_keys->index(0));
    m_form.ui_IDC_KEYS->setMaximumHeight(m_form.ui_IDC_KEY_UP->sizeHint().height() * 3);
    m_form.ui_IDC_RESULTS->setModel(m_hits);
    m_form.ui_IDC_RESULTS->setSelectionMode(QAbstractItemView::SingleSelection);
    m_form.ui_IDC_RESULTS->setRootIsDecorated(false);
    m_form.ui_IDC_RESULTS->SetColumnWidths({-20, -22, -17, -13, -14, -14});
    (m_request.mode == EFindMode::ByKeys ? m_form.ui_IDC_BY_KEYS : m_form.ui_IDC_BY_SCHEMA)
        ->setChecked(true);
    m_form.ui_IDC_FIND_TEXT->setText(m_request.mode == EFindMode::BySchema && !component.empty()
                                         ? m_request.component + QLatin1Char('*')
                                         : m_request.component);
    m_form.ui_IDC_FIND_TEXT->selectAll();
    BindButton(*m_form.ui_IDC_KEY_UP, ID_KEY_UP);
    BindButton(*m_form.ui_IDC_KEY_DOWN, ID_KEY_DOWN);
    m_due.setSingleShot(true);
    m_due.setInterval(kTypingPauseMs);

    connect(&m_due, &QTimer::timeout, this, &CDlgFindModel::Search);
    connect(&m_job, &CBackgroundJob::Finished, this, [this] {
        if (std::exchange(m_again, false)) {
            Search();
        }
    });
    connect(m_form.ui_IDC_FIND_TEXT, &QLineEdit::textChanged, this, &CDlgFindModel::SearchSoon);
    connect(m_form.ui_IDC_FIND_TYPE, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CDlgFindModel::SearchSoon);
    connect(m_form.ui_IDC_BY_KEYS, &QRadioButton::toggled, this, [this] {
        ShowState();
        SearchSoon();
    });
    connect(m_keys, &CSearchKeyModel::OptionsChanged, this, &CDlgFindModel::SearchSoon);
    connect(m_form.ui_IDC_KEYS->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { OnIdleUpdateCmdUI(); });
    connect(m_form.ui_IDC_RESULTS->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CDlgFindModel::ShowState);
    connect(m_form.ui_IDC_RESULTS, &QAbstractItemView::doubleClicked, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    OnIdleUpdateCmdUI();
    Search();
}

void CDlgFindModel::FillTypes()
{
    m_form.ui_IDC_FIND_TYPE->addItem(tr("(any type)"), 0U);
    for (const SRecordTypeInfo& info : RecordTypes()) {
        m_form.ui_IDC_FIND_TYPE->addItem(Shown(info.name), static_cast<unsigned>(info.type));
    }
    m_form.ui_IDC_FIND_TYPE->setCurrentIndex(
        m_form.ui_IDC_FIND_TYPE->findData(static_cast<unsigned>(m_request.type)));
}

EFindMode CDlgFindModel::Mode() const
{
    return m_form.ui_IDC_BY_KEYS->isChecked() ? EFindMode::ByKeys : EFindMode::BySchema;
}

SModelRef CDlgFindModel::Chosen() const
{
    return m_hits->HitAt(m_form.ui_IDC_RESULTS->currentIndex());
}

void CDlgFindModel::MoveKey(int by)
{
    const int row = m_form.ui_IDC_KEYS->currentIndex().row();
    if (m_keys->Move(row, by)) {
        m_form.ui_IDC_KEYS->setCurrentIndex(m_keys->index(row + by));
    }
}

void CDlgFindModel::OnKeyUp()
{
    MoveKey(-1);
}

void CDlgFindModel::OnUpdateKeyUp(ui::CCmdUI& ui)
{
    ui.Enable(Mode() == EFindMode::ByKeys && m_form.ui_IDC_KEYS->currentIndex().row() > 0);
}

void CDlgFindModel::OnKeyDown()
{
    MoveKey(1);
}

void CDlgFindModel::OnUpdateKeyDown(ui::CCmdUI& ui)
{
    const int row = m_form.ui_IDC_KEYS->currentIndex().row();
    ui.Enable(Mode() == EFindMode::ByKeys && row >= 0 && row + 1 < m_keys->rowCount());
}

void CDlgFindModel::SearchSoon()
{
    m_due.start();
}

void CDlgFindModel::Search()
{
    if (m_job.IsRunning()) { // waiting for it would hold up the typing
        m_again = true;
        return;
    }
    const std::string text = m_form.ui_IDC_FIND_TEXT->text().trimmed().toStdString();
    if (m_request.search == nullptr || text.empty()) {
        Take({});
        return;
    }
    const auto type = static_cast<ERecordType>(m_form.ui_IDC_FIND_TYPE->currentData().toUInt());
    m_job.Start(tr("Searching"), [this, text, type, mode = Mode(), search = m_request.search,
                                  libraries = m_request.libraries,
                                  keys = Options().EnabledKeys()](CJobState&) {
        auto hits = std::make_shared<std::vector<SModelRef>>(
            mode == EFindMode::ByKeys ? search->FindByKeys(libraries, type, keys, text, kMostHits)
                                      : search->FindBySchema(libraries, type, text, kMostHits));
        return [this, hits] { Take(std::move(*hits)); };
    });
}

void CDlgFindModel::Take(std::vector<SModelRef> hits)
{
    const int count = static_cast<int>(hits.size());
    m_hits->Show(std::move(hits));
    m_form.ui_IDC_RESULTS->SetHint(
        m_form.ui_IDC_FIND_TEXT->text().trimmed().isEmpty()
            ? tr("Type a part of what you look for.")
            : tr("No model is found. Shorten the text, choose another type, or switch more keys "
                 "on."));
    m_form.ui_IDC_COUNT->setText(
        count < static_cast<int>(kMostHits)
            ? tr("Models: %1").arg(count)
            : tr("The first %L1 models; type more to see others").arg(count));
    if (count > 0) {
        m_form.ui_IDC_RESULTS->setCurrentIndex(m_hits->index(0, 0));
    }
    ShowState();
}

void CDlgFindModel::ShowState()
{
    m_form.ui_IDC_KEYS->setEnabled(Mode() == EFindMode::ByKeys);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(static_cast<bool>(Chosen()));
    OnIdleUpdateCmdUI();
}

} // namespace zov::app
