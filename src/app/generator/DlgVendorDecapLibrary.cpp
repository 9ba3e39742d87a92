// SPDX-License-Identifier: Apache-2.0
#include "app/generator/DlgVendorDecapLibrary.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/Messages.h"
#include "batch/VendorLibrary.h"

#include <QStandardItemModel>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

enum EVendorDialogId : unsigned
{
    ID_VENDOR_ADD = 1,
    ID_VENDOR_REMOVE
};

constexpr std::uint64_t kListLimit = std::uint64_t{16} << 20U;

QString Shown(const fs::path& path)
{
    return QString::fromStdString(PathText(path));
}

fs::path PathOf(const QStandardItemModel& model, int row)
{
    return TextPath(model.item(row)->text().toStdString());
}

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CDlgVendorDecapLibrary, ui::CUiDialog)
ZOV_ON_COMMAND(ID_VENDOR_ADD, Add)
ZOV_ON_COMMAND_UPDATE(ID_VENDOR_REMOVE, Remove)
ZOV_END_MESSAGE_MAP()

CDlgVendorDecapLibrary::CDlgVendorDecapLibrary(const QString& path, QWidget* parent)
    : CqtDialogRes(parent)
    , m_libraries(new QStandardItemModel(0, 2, this))
{
    m_libraries->setHorizontalHeaderLabels({tr("Library"), tr("Parts")});
    m_form.ui_IDC_LIBRARIES->setModel(m_libraries);
    m_form.ui_IDC_LIBRARIES->SetColumnWidths({-75, -25});
    m_form.ui_IDC_LIBRARIES->SetHint(tr("Add the vendors' decap libraries (.xml)."));
    BindButton(*m_form.ui_IDC_ADD, ID_VENDOR_ADD);
    BindButton(*m_form.ui_IDC_REMOVE, ID_VENDOR_REMOVE);
    connect(m_form.ui_IDC_LIBRARIES->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { OnIdleUpdateCmdUI(); });
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);

    const fs::path given = TextPath(path.trimmed().toStdString());
    std::error_code ignored;
    if (fs::is_directory(given, ignored)) {
        m_list = TextPath(batch::Text(batch::msg::kVendorList, PathText(given)));
    } else if (EqualsNoCase(ExtensionOf(given), ".txt")) {
        m_list = given;
    } else if (!given.empty()) {
        Add(given);
    }
    if (const auto text = m_list.empty() ? CResult<std::string>(Fail(EErr::NotFound, {}))
                                         : ReadWholeFile(m_list, kListLimit)) {
        for (const std::string_view line : Split(*text, '\n')) {
            const std::string_view entry = Trim(line);
            if (!entry.empty() && !entry.starts_with('#')) {
                Add(m_list.parent_path() / TextPath(entry));
            }
        }
    }
    m_form.ui_IDC_LIST_FILE->setText(
        m_list.empty() ? tr("The list is written into a folder that you choose then.")
                       : tr("List: %1").arg(Shown(m_list)));
    Count();
    OnIdleUpdateCmdUI();
}

void CDlgVendorDecapLibrary::Add(const fs::path& library)
{
    const QString text = Shown(library.lexically_normal());
    if (m_libraries->findItems(text).isEmpty()) {
        m_libraries->appendRow({new QStandardItem(text), new QStandardItem});
        m_libraries->item(m_libraries->rowCount() - 1, 0)->setToolTip(text);
    }
}

void CDlgVendorDecapLibrary::OnAdd()
{
    for (const QString& path : ui::CPrompt::OpenFiles(
             this, tr("Add Decap Library"), tr("Decap libraries (*.xml);;All files (*)"))) {
        Add(TextPath(path.toStdString()));
    }
    Count();
}

void CDlgVendorDecapLibrary::OnRemove()
{
    QModelIndexList rows = m_form.ui_IDC_LIBRARIES->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    while (!rows.isEmpty()) {
        m_libraries->removeRow(rows.takeLast().row());
    }
    Count();
}

void CDlgVendorDecapLibrary::OnUpdateRemove(ui::CCmdUI& ui)
{
    ui.Enable(m_form.ui_IDC_LIBRARIES->selectionModel()->hasSelection());
}

/// How many parts each library has, or why it has none.
void CDlgVendorDecapLibrary::Count()
{
    std::vector<fs::path> paths;
    for (int row = 0; row < m_libraries->rowCount(); ++row) {
        paths.push_back(PathOf(*m_libraries, row));
    }
    m_job.Abandon();
    m_job.Start(tr("Reading"), [this, paths](CJobState& state) {
        auto texts = std::make_shared<std::vector<QString>>();
        for (const fs::path& path : paths) {
            if (state.Cancelled()) {
                break;
            }
            CNullLog silent;
            const auto library = batch::CVendorLibrary::Load(path, silent);
            texts->push_back(
                library ? QString::number(library->PartCount())
                        : tr("not loaded: %1").arg(QString::fromStdString(library.Error().text)));
        }
        return [this, texts] {
            for (int row = 0; row < static_cast<int>(texts->size()); ++row) {
                const QString& text = (*texts)[static_cast<std::size_t>(row)];
                m_libraries->item(row, 1)->setText(text);
                m_libraries->item(row, 1)->setToolTip(text);
            }
        };
    });
}

std::string CDlgVendorDecapLibrary::ListText() const
{
    std::string text;
    for (int row = 0; row < m_libraries->rowCount(); ++row) {
        const fs::path path = fs::absolute(PathOf(*m_libraries, row));
        const fs::path relative =
            path.lexically_relative(fs::absolute(m_list).parent_path().lexically_normal());
        const bool below = !relative.empty() && *relative.begin() != "..";
        text += PathText(below ? relative : path) + "\n";
    }
    return text;
}

QString CDlgVendorDecapLibrary::ListFile() const
{
    return Shown(m_list);
}

void CDlgVendorDecapLibrary::accept()
{
    fs::path list = m_list;
    if (list.empty()) {
        const QString folder = ui::CPrompt::Folder(this, tr("Folder of the vendor list"));
        if (folder.isEmpty()) {
            return;
        }
        list = TextPath(batch::Text(batch::msg::kVendorList, folder.toStdString()));
    }
    std::swap(m_list, list);
    if (const auto written = WriteFileAtomic(m_list, ListText()); !written) {
        std::swap(m_list, list);
        ui::CPrompt::Tell(this, QString::fromStdString(written.Error().Full()), ui::EIcon::Error);
        return;
    }
    CqtDialogRes::accept();
}

} // namespace zov::app
