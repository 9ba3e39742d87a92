// SPDX-License-Identifier: Apache-2.0
#include "app/generator/GeneratorPage.h"

#include "app/generator/DlgVendorDecapLibrary.h"
#include "base/File.h"
#include "batch/CellText.h"
#include "batch/TitleSearch.h"
#include "ui/EventFilters.h"
#include "ui/Prompt.h"
#include "ui/ShownText.h"

#include <QCompleter>
#include <QHeaderView>

#include <algorithm>

namespace zov::app {
namespace {

constexpr const char* kSheetFilter = "Part lists (*.xlsx *.xls *.csv);;All files (*)";
constexpr const char* kLibraryFilter = "ZOV Library (*.zov);;Exchange file (*.zovx)";
constexpr const char* kMappingFilter = "Column mapping (*.txt);;All files (*)";
constexpr const char* kVendorFilter = "Vendor lists (*.txt *.xml);;All files (*)";

using ui::Shown;

} // namespace

CGeneratorPage::CGeneratorPage(ERecordType type, const CDisplayUnits& units, QWidget* parent)
    : QWidget(parent)
    , m_type(type)
    , m_units(units)
    , m_mapping(new CMappingModel(type, this))
    , m_preview(new CPreviewModel(this))
{
    m_form.setupUi(this);
    setObjectName(QStringLiteral("Generate") + Shown(InfoOf(type).name));
    for (QWidget* widget : {static_cast<QWidget*>(m_form.ui_IDC_VENDOR),
                            static_cast<QWidget*>(m_form.ui_IDC_VENDOR_LABEL),
                            static_cast<QWidget*>(m_form.ui_IDC_VENDOR_EDIT),
                            static_cast<QWidget*>(m_form.ui_IDC_VENDOR_BROWSE)}) {
        widget->setVisible(type == ERecordType::Capacitor);
    }
    m_form.ui_IDC_MAPPING->setModel(m_mapping);
    m_form.ui_IDC_MAPPING->setItemDelegate(new CChoiceDelegate(this));
    m_form.ui_IDC_MAPPING->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_form.ui_IDC_MAPPING->setSelectionMode(QAbstractItemView::SingleSelection);
    m_form.ui_IDC_MAPPING->SetColumnWidths({-46, -35, -19});
    m_form.ui_IDC_PREVIEW->setModel(m_preview);
    m_form.ui_IDC_PREVIEW->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_form.ui_IDC_PREVIEW->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_form.ui_IDC_PREVIEW->setWordWrap(false);
    m_form.layoutFiles->setColumnStretch(1, 1);
    m_form.ui_IDC_SPLITTER->setStretchFactor(0, 3);
    m_form.ui_IDC_SPLITTER->setStretchFactor(1, 4);
    m_form.ui_IDC_SPLITTER->setSizes({480, 640});
    m_form.ui_IDC_SOURCE->setPlaceholderText(tr("The part list: .xlsx, .xls or .csv"));
    m_form.ui_IDC_DESTINATION->setPlaceholderText(tr("The library that the models go to: .zov"));
    m_form.ui_IDC_VENDOR->setPlaceholderText(tr("None: every value comes from the part list"));
    m_due.setSingleShot(true);
    m_due.setInterval(kTypingPauseMs);
    ConnectFields();
    ShowPreview();
}

void CGeneratorPage::ConnectFields()
{
    const auto clicked = [this](QPushButton* button, void (CGeneratorPage::*handler)()) {
        connect(button, &QPushButton::clicked, this, handler);
    };
    clicked(m_form.ui_IDC_SOURCE_BROWSE, &CGeneratorPage::BrowseSource);
    clicked(m_form.ui_IDC_DESTINATION_BROWSE, &CGeneratorPage::BrowseDestination);
    clicked(m_form.ui_IDC_VENDOR_BROWSE, &CGeneratorPage::BrowseVendor);
    clicked(m_form.ui_IDC_VENDOR_EDIT, &CGeneratorPage::EditVendor);
    clicked(m_form.ui_IDC_MAPPING_LOAD, &CGeneratorPage::LoadMapping);
    clicked(m_form.ui_IDC_MAPPING_SAVE, &CGeneratorPage::SaveMapping);
    connect(m_form.ui_IDC_RECOGNISE, &QPushButton::clicked, m_mapping, &CMappingModel::Recognise);
    const auto readTyped = [this] {
        if (m_form.ui_IDC_SOURCE->text() != m_sourcePath) {
            SetSource(m_form.ui_IDC_SOURCE->text());
        }
    };
    connect(m_form.ui_IDC_SOURCE, &QLineEdit::editingFinished, this, readTyped);
    // Enter reads the part list; it doesn't start the run.
    new ui::CQtEnterKeyPressEventFilter(*m_form.ui_IDC_SOURCE, readTyped);
    connect(m_form.ui_IDC_SHEET, &QComboBox::currentTextChanged, this,
            [this](const QString& sheet) { ReadSource(sheet, 0); });
    connect(m_form.ui_IDC_HEADER_ROW, qOverload<int>(&QSpinBox::valueChanged), this,
            [this](int row) {
                ReadSource(m_form.ui_IDC_SHEET->currentText(), static_cast<std::uint32_t>(row));
            });
    const auto soon = [this] { m_due.start(); };
    connect(m_mapping, &CMappingModel::MappingChanged, this, [this](bool byUser) {
        m_mappedByUser = m_mappedByUser || byUser;
        m_due.start();
    });
    connect(m_form.ui_IDC_VENDOR, &QLineEdit::textChanged, this, soon);
    connect(m_form.ui_IDC_DESTINATION, &QLineEdit::textChanged, this, soon);
    for (const QRadioButton* choice :
         {m_form.ui_IDC_ADD_SUFFIX, m_form.ui_IDC_KEEP_FIRST, m_form.ui_IDC_REPLACE}) {
        connect(choice, &QRadioButton::toggled, this, soon);
    }
    connect(&m_due, &QTimer::timeout, this, &CGeneratorPage::ShowPreview);
}

batch::SDialogTab CGeneratorPage::Tab() const
{
    batch::SDialogTab tab;
    tab.type = m_type;
    tab.sourceFile = m_form.ui_IDC_SOURCE->text().trimmed().toStdString();
    tab.workSheet = m_form.ui_IDC_SHEET->currentText().toStdString();
    tab.headerRow = static_cast<std::uint32_t>(m_form.ui_IDC_HEADER_ROW->value());
    tab.destination = m_form.ui_IDC_DESTINATION->text().trimmed().toStdString();
    tab.vendorLibrary = m_type == ERecordType::Capacitor
                            ? m_form.ui_IDC_VENDOR->text().trimmed().toStdString()
                            : std::string();
    tab.mapping = m_mapping->Mapping();
    tab.duplicates = m_form.ui_IDC_ADD_SUFFIX->isChecked() ? batch::ESheetDuplicate::AddSuffix
                     : m_form.ui_IDC_REPLACE->isChecked()  ? batch::ESheetDuplicate::ReplaceWithNew
                                                           : batch::ESheetDuplicate::KeepTheFirst;
    return tab;
}

void CGeneratorPage::Restore(const batch::SDialogTab& tab)
{
    m_form.ui_IDC_DESTINATION->setText(Shown(tab.destination));
    m_form.ui_IDC_VENDOR->setText(Shown(tab.vendorLibrary));
    QRadioButton* duplicates =
        tab.duplicates == batch::ESheetDuplicate::AddSuffix        ? m_form.ui_IDC_ADD_SUFFIX
        : tab.duplicates == batch::ESheetDuplicate::ReplaceWithNew ? m_form.ui_IDC_REPLACE
                                                                   : m_form.ui_IDC_KEEP_FIRST;
    duplicates->setChecked(true);
    m_form.ui_IDC_SOURCE->setText(Shown(tab.sourceFile));
    m_sourcePath = Shown(tab.sourceFile);
    if (!m_sourcePath.isEmpty()) {
        m_mappedByUser = true;
        m_mapping->Restore(tab.mapping);
        ReadSource(Shown(tab.workSheet), tab.headerRow);
    }
    Q_EMIT SourceChanged();
}

// --- files -----------------------------------------------------------------------------------

void CGeneratorPage::SetSource(const QString& path)
{
    m_form.ui_IDC_SOURCE->setText(path);
    m_sourcePath = path;
    m_source.reset();
    m_sourceError.reset();
    m_mappedByUser = false;
    ReadSource({}, 0);
    Q_EMIT SourceChanged();
}

void CGeneratorPage::SetDestination(const QString& path)
{
    m_form.ui_IDC_DESTINATION->setText(path);
}

void CGeneratorPage::OfferVendors(const QStringList& lists)
{
    if (lists.isEmpty()) {
        return;
    }
    auto* completer = new QCompleter(lists, this);
    completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_form.ui_IDC_VENDOR->setCompleter(completer);
    m_form.ui_IDC_VENDOR->setToolTip(
        tr("Known lists are offered while you type; the options hold them."));
}

void CGeneratorPage::BrowseSource()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Source File"), tr(kSheetFilter));
    if (!path.isEmpty()) {
        SetSource(path);
    }
}

void CGeneratorPage::BrowseDestination()
{
    const QString path = ui::CPrompt::SaveFile(this, tr("Destination File"), tr(kLibraryFilter),
                                               m_form.ui_IDC_DESTINATION->text());
    if (!path.isEmpty()) {
        SetDestination(path);
    }
}

void CGeneratorPage::BrowseVendor()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Vendor Library"), tr(kVendorFilter));
    if (!path.isEmpty()) {
        m_form.ui_IDC_VENDOR->setText(path);
    }
}

void CGeneratorPage::EditVendor()
{
    CDlgVendorDecapLibrary dialog(m_form.ui_IDC_VENDOR->text(), this);
    if (dialog.DoModal() == ui::EAnswer::Ok) {
        m_form.ui_IDC_VENDOR->setText(dialog.ListFile());
    }
}

void CGeneratorPage::LoadMapping()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Load Mapping"), tr(kMappingFilter));
    if (path.isEmpty()) {
        return;
    }
    CVectorLog log;
    const auto lines = batch::ReadColumnMapping(TextPath(path.toStdString()), log);
    if (!lines) {
        ui::CPrompt::Tell(this, QString::fromStdString(lines.Error().Full()), ui::EIcon::Error);
        return;
    }
    m_mappedByUser = true;
    m_mapping->Take(*lines);
}

void CGeneratorPage::SaveMapping()
{
    const QString path = ui::CPrompt::SaveFile(this, tr("Save Mapping"), tr(kMappingFilter));
    if (path.isEmpty()) {
        return;
    }
    if (const auto saved = WriteFileAtomic(TextPath(path.toStdString()), m_mapping->AsFile());
        !saved) {
        ui::CPrompt::Tell(this, QString::fromStdString(saved.Error().Full()), ui::EIcon::Error);
    }
}

// --- the part list ---------------------------------------------------------------------------

void CGeneratorPage::ReadSource(const QString& sheet, std::uint32_t headerRow)
{
    m_job.Abandon(); // a large workbook can't be left in the middle
    if (m_sourcePath.isEmpty()) {
        m_mapping->SetTitles({});
        return;
    }
    m_form.ui_IDC_PREVIEW_STATE->setText(tr("The part list is being read."));
    m_job.Start(tr("Reading"), [this, source = m_source, path = m_sourcePath.toStdString(),
                                type = m_type, name = sheet.toStdString(), headerRow](CJobState&) {
        auto read = std::make_shared<SRead>();
        read->source = source;
        if (!read->source) {
            read->source = std::make_shared<SSource>();
            auto book = OpenWorkbook(TextPath(path), {.text = EText::Exact});
            if (book) {
                read->source->book = book.Take();
            } else {
                read->error = book.TakeError();
            }
        }
        if (!read->error) {
            const std::lock_guard lock(read->source->mutex);
            ReadTitles(*read, type, name, headerRow);
        }
        return [this, read] { TakeRead(*read); };
    });
}

void CGeneratorPage::ReadTitles(SRead& read, ERecordType type, const std::string& sheet,
                                std::uint32_t headerRow)
{
    CWorkbook& book = *read.source->book;
    batch::SMappingRequest request;
    request.type = type;
    const auto run = [&]() -> CResult<void> {
        RETURN_IF_ERROR(sheet.empty() ? batch::SelectTitledSheet(book, request)
                                      : book.SelectSheet(sheet));
        read.headerRow = headerRow;
        if (headerRow == 0) {
            ASSIGN_OR_RETURN(const batch::STitleRowFound found, batch::FindTitleRow(book, request));
            read.headerRow = std::max(found.row, 1U);
        }
        return book.ReadRows([&](const SSheetRow& row) {
            for (std::size_t i = 0; row.number == read.headerRow && i < row.cells.size(); ++i) {
                read.titles += QString::fromStdString(batch::FoldSpaces(row.cells[i]));
            }
            return row.number < read.headerRow ? EVisit::Continue : EVisit::Stop;
        });
    };
    if (auto done = run(); !done) {
        read.error = done.TakeError();
        return;
    }
    for (const SSheetInfo& info : book.Sheets()) {
        read.sheets += QString::fromStdString(info.name);
    }
    read.sheet = static_cast<int>(book.SelectedSheet());
}

void CGeneratorPage::TakeRead(const SRead& read)
{
    m_sourceError = read.error;
    if (read.error) {
        m_mapping->SetTitles({});
        m_form.ui_IDC_PREVIEW_STATE->setText(QString::fromStdString(read.error->Full()));
        return;
    }
    m_source = read.source;
    {
        const QSignalBlocker sheets(m_form.ui_IDC_SHEET);
        const QSignalBlocker header(m_form.ui_IDC_HEADER_ROW);
        m_form.ui_IDC_SHEET->clear();
        m_form.ui_IDC_SHEET->addItems(read.sheets);
        m_form.ui_IDC_SHEET->setCurrentIndex(read.sheet);
        m_form.ui_IDC_HEADER_ROW->setValue(static_cast<int>(read.headerRow));
    }
    m_mapping->SetTitles(read.titles);
    if (!m_mappedByUser) {
        m_mapping->Recognise();
    }
    ShowPreview();
}

// --- the preview -----------------------------------------------------------------------------

void CGeneratorPage::ShowPreview()
{
    const batch::SDialogTab tab = Tab();
    const bool named = std::ranges::any_of(tab.mapping, [](const batch::SDialogMapping& row) {
        return row.field == batch::EField::ModelName;
    });
    if (!m_source || !named) {
        m_preview->Show({});
        if (m_source || !HasSource()) {
            m_form.ui_IDC_PREVIEW_STATE->setText(
                m_source ? tr("Map \"Model Name\" to a column to see what will be imported.")
                         : tr("Choose a part list; its first rows are shown here as they would be "
                              "imported."));
        }
        return;
    }
    m_job.Abandon();
    m_job.Start(tr("Preview"), [this, source = m_source, tab, units = m_units](CJobState&) {
        const std::lock_guard lock(source->mutex);
        CNullLog silent;
        auto preview =
            std::make_shared<CResult<batch::SPreview>>(Fail(EErr::Unspecified, std::string()));
        if (auto selected = source->book->SelectSheet(tab.workSheet); !selected) {
            *preview = selected.TakeError();
        } else {
            *preview = batch::PreviewTab(tab, *source->book, kPreviewRows, units, silent);
        }
        return [this, preview] { TakePreview(*preview); };
    });
}

void CGeneratorPage::TakePreview(CResult<batch::SPreview>& preview)
{
    if (!preview) {
        m_preview->Show({});
        m_form.ui_IDC_PREVIEW_STATE->setText(QString::fromStdString(preview.Error().Full()));
        return;
    }
    const auto failed = std::ranges::count_if(preview->rows, &batch::SPreviewRow::failed);
    QStringList lines = {tr("First rows: %1; with faults: %2")
                             .arg(preview->rows.size())
                             .arg(static_cast<int>(failed))};
    for (const std::string& finding : preview->findings) {
        lines += QString::fromStdString(finding);
    }
    m_form.ui_IDC_PREVIEW_STATE->setText(lines.join(QLatin1Char('\n')));
    m_preview->Show(preview.Take());
    m_form.ui_IDC_PREVIEW->resizeColumnsToContents();
    // The words of a fault are in the tip, too; the fields stay in view beside them.
    m_form.ui_IDC_PREVIEW->setColumnWidth(
        0, std::min(m_form.ui_IDC_PREVIEW->columnWidth(0), m_form.ui_IDC_PREVIEW->width() / 3));
    if (const QModelIndex fault = m_preview->FirstFault(); fault.isValid()) {
        m_form.ui_IDC_PREVIEW->scrollTo(fault);
    }
}

} // namespace zov::app
