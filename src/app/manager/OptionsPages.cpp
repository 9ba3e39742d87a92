// SPDX-License-Identifier: Apache-2.0
#include "app/manager/OptionsPages.h"

#include "base/Number.h"
#include "core/Units.h"
#include "ui_dlg_IDD_ZOV_DLG_OPGENERAL.h"
#include "ui_dlg_IDD_ZOV_DLG_OPGENERALV2.h"
#include "ui_dlg_IDD_ZOV_DLG_OPUNITS.h"
#include "ui_dlg_IDD_ZOV_DLG_OPVDR.h"

#include <QStringListModel>

#include <array>

namespace zov::app {
namespace {

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// The value in the unit that gives it one to three digits before the point.
QString LimitText(double siValue, EQuantity quantity)
{
    CDisplayUnits units;
    for (const SUnit& unit : UnitsOf(quantity)) {
        const double shown = ScaleByPowerOfTen(siValue, -unit.exponent);
        if (shown >= 1.0 && shown < 1000.0) {
            units.Set(quantity, unit.suffix);
        }
    }
    return Shown(FormatQuantity(siValue, quantity, units));
}

/// A page's dialog. In the options it is a part of the window and has nothing to close.
template <class Form>
class CPageOf : public ui::CqtDialogRes<Form>, public COptionsPage
{
public:
    using ui::CqtDialogRes<Form>::CqtDialogRes;

    ui::CUiDialog& Dialog() final { return *this; }
    void accept() override { EndUnlessPage(&QDialog::accept); }
    void reject() override { EndUnlessPage(&QDialog::reject); }

private:
    void EndUnlessPage(void (QDialog::*end)())
    {
        if (this->isWindow()) {
            (this->*end)();
        }
    }
};

// --- general -------------------------------------------------------------------------------------

template <class Form>
class CGeneralPage final : public CPageOf<Form>
{
public:
    CGeneralPage(QWidget* parent, SPreferenceActions actions)
        : CPageOf<Form>(parent)
        , m_limits({{
              {this->m_form.ui_IDC_SYNC_MIN_CAP, this->m_form.ui_IDC_MIN_CAP,
               &SZovSettings::capacitanceLess, EQuantity::Capacitance},
              {this->m_form.ui_IDC_SYNC_MAX_CAP, this->m_form.ui_IDC_MAX_CAP,
               &SZovSettings::capacitanceMore, EQuantity::Capacitance},
              {this->m_form.ui_IDC_SYNC_MIN_VOL, this->m_form.ui_IDC_MIN_VOL,
               &SZovSettings::voltageLess, EQuantity::Voltage},
              {this->m_form.ui_IDC_SYNC_MAX_VOL, this->m_form.ui_IDC_MAX_VOL,
               &SZovSettings::voltageMore, EQuantity::Voltage},
          }})
    {
        const auto changed = [this] { this->Changed(); };
        for (const SLimit& limit : m_limits) {
            ui::CUiDlgItemChkMgr::Enable(*limit.check, {limit.edit});
            QObject::connect(limit.check, &QCheckBox::clicked, this, changed);
            QObject::connect(limit.edit, &QLineEdit::editingFinished, this, changed);
        }
        for (QCheckBox* check : {this->m_form.ui_IDC_AUTO_SAVE, this->m_form.ui_IDC_SYNC_MODEL_PATH,
                                 this->m_form.ui_IDC_GUI_V2}) {
            QObject::connect(check, &QCheckBox::clicked, this, changed);
        }
        Bind(*this->m_form.ui_IDC_SAVE_PREFERENCE, std::move(actions.save));
        Bind(*this->m_form.ui_IDC_OPEN_PREFERENCE, std::move(actions.open));
    }

    void Show(const SOptions& options) override
    {
        const SZovSettings& settings = options.settings;
        this->m_form.ui_IDC_AUTO_SAVE->setChecked(settings.autoSaveExternalLibrary);
        this->m_form.ui_IDC_SYNC_MODEL_PATH->setChecked(settings.syncModelPath);
        this->m_form.ui_IDC_GUI_V2->setChecked(settings.storedGuiV2);
        for (const SLimit& limit : m_limits) {
            const SHideLimit& hide = settings.*limit.member;
            limit.check->setChecked(hide.on);
            limit.edit->setText(LimitText(hide.limit, limit.quantity));
        }
    }

    bool Store(SOptions& options, QString& trouble) const override
    {
        SZovSettings& settings = options.settings;
        settings.autoSaveExternalLibrary = this->m_form.ui_IDC_AUTO_SAVE->isChecked();
        settings.syncModelPath = this->m_form.ui_IDC_SYNC_MODEL_PATH->isChecked();
        // From the next start on: until then the list of the interface in use is kept.
        settings.storedGuiV2 = this->m_form.ui_IDC_GUI_V2->isChecked();
        for (const SLimit& limit : m_limits) {
            const std::optional<double> value =
                ParseQuantity(limit.edit->text().toStdString(), limit.quantity);
            if (!value && limit.check->isChecked()) {
                trouble = QObject::tr("'%1' is no value for '%2'. Write a number with its unit, "
                                      "such as 100pF or 2.5V.")
                              .arg(limit.edit->text(), limit.check->text());
                limit.edit->setFocus();
                return false;
            }
            SHideLimit& hide = settings.*limit.member;
            hide.on = limit.check->isChecked();
            // The field shows six digits; what was not touched is kept whole.
            if (value && limit.edit->isModified()) {
                hide.limit = *value;
            }
        }
        return true;
    }

private:
    struct SLimit
    {
        QCheckBox* check;
        QLineEdit* edit;
        SHideLimit SZovSettings::*member;
        EQuantity quantity;
    };

    void Bind(QPushButton& button, std::function<void()> action)
    {
        button.setEnabled(static_cast<bool>(action));
        QObject::connect(&button, &QPushButton::clicked, this, [action] { action(); });
    }

    std::array<SLimit, 4> m_limits;
};

// --- units ---------------------------------------------------------------------------------------

class CUnitsPage final : public CPageOf<Ui::dlg_IDD_ZOV_DLG_OPUNITS>
{
public:
    explicit CUnitsPage(QWidget* parent)
        : CPageOf(parent)
        , m_units({{{m_form.ui_IDC_UNIT_RESISTANCE, EQuantity::Resistance},
                    {m_form.ui_IDC_UNIT_INDUCTANCE, EQuantity::Inductance},
                    {m_form.ui_IDC_UNIT_CAPACITANCE, EQuantity::Capacitance},
                    {m_form.ui_IDC_UNIT_VOLTAGE, EQuantity::Voltage},
                    {m_form.ui_IDC_UNIT_CURRENT, EQuantity::Current},
                    {m_form.ui_IDC_UNIT_TIME, EQuantity::Time},
                    {m_form.ui_IDC_UNIT_FREQUENCY, EQuantity::Frequency},
                    {m_form.ui_IDC_UNIT_POWER, EQuantity::Power}}})
    {
        for (const auto& [combo, quantity] : m_units) {
            for (const SUnit& unit : UnitsOf(quantity)) {
                combo->addItem(Shown(unit.suffix));
            }
            connect(combo, qOverload<int>(&QComboBox::activated), this, [this] { Changed(); });
        }
    }

    void Show(const SOptions& options) override
    {
        for (const auto& [combo, quantity] : m_units) {
            combo->setCurrentText(Shown(options.settings.units.Of(quantity).suffix));
        }
    }
    bool Store(SOptions& options, QString&) const override
    {
        for (const auto& [combo, quantity] : m_units) {
            options.settings.units.Set(quantity, combo->currentText().toStdString());
        }
        return true;
    }

private:
    std::array<std::pair<QComboBox*, EQuantity>, 8> m_units;
};

// --- vendors -------------------------------------------------------------------------------------

class CVendorsPage final : public CPageOf<Ui::dlg_IDD_ZOV_DLG_OPVDR>
{
public:
    explicit CVendorsPage(QWidget* parent)
        : CPageOf(parent)
    {
        m_form.ui_IDC_VENDORS->setModel(&m_paths);
        m_form.ui_IDC_VENDORS->setEditTriggers(QAbstractItemView::NoEditTriggers);
        connect(m_form.ui_IDC_ADD, &QPushButton::clicked, this, [this] { Add(); });
        connect(m_form.ui_IDC_REMOVE, &QPushButton::clicked, this, [this] { Remove(); });
        const auto update = [this] {
            m_form.ui_IDC_REMOVE->setEnabled(
                m_form.ui_IDC_VENDORS->selectionModel()->hasSelection());
        };
        connect(m_form.ui_IDC_VENDORS->selectionModel(), &QItemSelectionModel::selectionChanged,
                this, update);
        update();
    }

    void Show(const SOptions& options) override { m_paths.setStringList(options.vendorLibraries); }
    bool Store(SOptions& options, QString&) const override
    {
        options.vendorLibraries = m_paths.stringList();
        return true;
    }

private:
    void Add()
    {
        QStringList paths = m_paths.stringList();
        for (const QString& path : ui::CPrompt::OpenFiles(
                 this, tr("Add Vendor Library"),
                 tr("Decap libraries and lists (*.xml *.csv *.txt);;All files (*)"))) {
            if (!paths.contains(path)) {
                paths += path;
            }
        }
        m_paths.setStringList(paths);
        Changed();
    }
    void Remove()
    {
        QModelIndexList rows = m_form.ui_IDC_VENDORS->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end());
        for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
            m_paths.removeRow(row->row());
        }
        Changed();
    }

    QStringListModel m_paths;
};

} // namespace

std::unique_ptr<COptionsPage> NewGeneralPage(bool secondInterface, QWidget* parent,
                                             SPreferenceActions actions)
{
    if (secondInterface) {
        return std::make_unique<CGeneralPage<Ui::dlg_IDD_ZOV_DLG_OPGENERALV2>>(parent,
                                                                               std::move(actions));
    }
    return std::make_unique<CGeneralPage<Ui::dlg_IDD_ZOV_DLG_OPGENERAL>>(parent,
                                                                         std::move(actions));
}

std::unique_ptr<COptionsPage> NewUnitsPage(QWidget* parent)
{
    return std::make_unique<CUnitsPage>(parent);
}

std::unique_ptr<COptionsPage> NewVendorsPage(QWidget* parent)
{
    return std::make_unique<CVendorsPage>(parent);
}

} // namespace zov::app
