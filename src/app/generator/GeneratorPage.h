// SPDX-License-Identifier: Apache-2.0
/// A tab of the generator dialog: one component type with its part list, destination, mapping and
/// preview.
#pragma once

#include "app/BackgroundJob.h"
#include "app/generator/MappingModel.h"
#include "app/generator/PreviewModel.h"
#include "sheet/Workbook.h"
#include "ui_dlg_IDD_DLG_ZOVGENPAGE.h"

#include <QWidget>

#include <memory>
#include <mutex>
#include <optional>

namespace zov::app {

class CGeneratorPage : public QWidget
{
    Q_OBJECT

public:
    CGeneratorPage(ERecordType type, const CDisplayUnits& units, QWidget* parent);

    [[nodiscard]] ERecordType Type() const { return m_type; }
    [[nodiscard]] batch::SDialogTab Tab() const;
    [[nodiscard]] bool HasSource() const { return !m_form.ui_IDC_SOURCE->text().isEmpty(); }
    /// Why the part list can't be read; none when it can, or was not looked at yet.
    [[nodiscard]] const std::optional<SError>& SourceError() const { return m_sourceError; }
    /// The part list is being read, or the preview made.
    [[nodiscard]] bool IsBusy() const { return m_job.IsRunning() || m_due.isActive(); }

    /// The fields as they were when the tab was seen last; the part list is read again.
    void Restore(const batch::SDialogTab& tab);
    void SetSource(const QString& path);
    void SetDestination(const QString& path);
    /// Vendors' lists that the options know: offered while one is typed.
    void OfferVendors(const QStringList& lists);

Q_SIGNALS:
    /// Another part list, or none.
    void SourceChanged();

private:
    /// The open part list. A job that was left behind may still read it.
    struct SSource
    {
        std::mutex mutex;
        std::unique_ptr<CWorkbook> book;
    };
    /// What was read of it.
    struct SRead
    {
        std::shared_ptr<SSource> source;
        std::optional<SError> error;
        QStringList sheets;
        int sheet = -1;
        std::uint32_t headerRow = 1;
        QStringList titles;
    };

    void ConnectFields();
    void BrowseSource();
    void BrowseDestination();
    void BrowseVendor();
    void EditVendor();
    void LoadMapping();
    void SaveMapping();
    void ReadSource(const QString& sheet, std::uint32_t headerRow);
    static void ReadTitles(SRead& read, ERecordType type, const std::string& sheet,
                           std::uint32_t headerRow);
    void TakeRead(const SRead& read);
    void ShowPreview();
    void TakePreview(CResult<batch::SPreview>& preview);

    static constexpr int kTypingPauseMs = 250;
    static constexpr std::uint32_t kPreviewRows = 100;

    Ui::dlg_IDD_DLG_ZOVGENPAGE m_form;
    ERecordType m_type;
    CDisplayUnits m_units;
    CMappingModel* m_mapping;
    CPreviewModel* m_preview;
    std::shared_ptr<SSource> m_source;
    QString m_sourcePath; ///< that was read
    std::optional<SError> m_sourceError;
    bool m_mappedByUser = false;
    QTimer m_due;
    CBackgroundJob m_job;
};

} // namespace zov::app
