// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CalcDlg.h"

#include "base/Number.h"
#include "curve/Calculator.h"

#include <QHeaderView>
#include <QPushButton>
#include <QStringListModel>

#include <algorithm>

namespace zov::app {
namespace {

/// From the last key to the preview.
constexpr int kDelayMs = 250;

/// Bytes of UTF-8 to characters.
int CharactersOf(const std::string& text, std::size_t bytes)
{
    return QString::fromUtf8(text.data(), static_cast<int>(std::min(bytes, text.size()))).size();
}

} // namespace

CCalcParameterModel::CCalcParameterModel(std::vector<SCalcParameter> parameters, QObject* parent)
    : QAbstractTableModel(parent)
    , m_parameters(std::move(parameters))
{
}

bool CCalcParameterModel::IsName(const QString& text)
{
    const auto isLetter = [](QChar c) { return c.isLetter() && c.unicode() < 128; };
    return !text.isEmpty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [&](QChar c) {
               return isLetter(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
                      c == QLatin1Char('_');
           });
}

void CCalcParameterModel::Remove(int row)
{
    if (row >= 0 && row < static_cast<int>(m_parameters.size())) {
        beginRemoveRows({}, row, row);
        m_parameters.erase(m_parameters.begin() + row);
        endRemoveRows();
        Q_EMIT Changed();
    }
}

curve::CParameterTable CCalcParameterModel::Table() const
{
    curve::CParameterTable table;
    for (const SCalcParameter& parameter : m_parameters) {
        const std::string name = parameter.name.toStdString();
        const std::string value = parameter.value.toStdString();
        if (const auto number = ParseDouble(value)) {
            table.Set(name, *number);
        } else if (!value.empty()) {
            table.Set(name, std::string_view(value));
        }
    }
    return table;
}

int CCalcParameterModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_parameters.size()) + 1;
}

int CCalcParameterModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant CCalcParameterModel::data(const QModelIndex& index, int role) const
{
    const auto row = static_cast<std::size_t>(index.row());
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    if (row == m_parameters.size()) {
        return role == Qt::DisplayRole && index.column() == 0 ? tr("new...") : QString();
    }
    return index.column() == 0 ? m_parameters[row].name : m_parameters[row].value;
}

bool CCalcParameterModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QString text = value.toString().trimmed();
    const auto row = static_cast<std::size_t>(index.row());
    if (role != Qt::EditRole || (index.column() == 0 && !IsName(text))) {
        return false;
    }
    if (row == m_parameters.size()) {
        if (index.column() != 0) {
            return false;
        }
        beginInsertRows({}, index.row(), index.row());
        m_parameters.push_back({text, QStringLiteral("0")});
        endInsertRows();
    } else {
        (index.column() == 0 ? m_parameters[row].name : m_parameters[row].value) = text;
        Q_EMIT dataChanged(index, index);
    }
    Q_EMIT Changed();
    return true;
}

QVariant CCalcParameterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == 0 ? tr("Parameter") : tr("Value or expression");
}

Qt::ItemFlags CCalcParameterModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

CCalcDlg::CCalcDlg(QWidget* parent, const curve::CCurveSet& set, const SPlotAxes& axes,
                   std::vector<SCalcParameter> parameters)
    : CqtDialogRes(parent)
    , m_set(set)
    , m_parameters(std::move(parameters), nullptr)
{
    m_set.onChanged = {};
    m_preview = new CCurvePlot(m_previewCurves, m_previewMarkers, m_form.ui_IDC_PREVIEW);
    m_preview->setObjectName(QStringLiteral("ui_IDC_PREVIEW_PLOT"));
    m_preview->SetHint(tr("The result is shown here while you write."));
    m_preview->SetLegend(false);
    m_preview->SetAxes({axes.xName, axes.xUnit, tr("Result"), {}});
    m_form.ui_IDC_PREVIEW_LAYOUT->addWidget(m_preview);
    QFont fixed(QStringLiteral("monospace"), font().pointSize());
    fixed.setStyleHint(QFont::Monospace);
    m_form.ui_IDC_EXPRESSION->setFont(fixed);
    m_form.ui_IDC_CARET->setFont(fixed);
    m_form.ui_IDC_PARAMETERS->setModel(&m_parameters);
    m_form.ui_IDC_PARAMETERS->horizontalHeader()->setStretchLastSection(true);
    m_form.ui_IDC_PARAMETERS->verticalHeader()->hide();
    m_form.ui_IDC_PARAMETERS->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    FillCurves();
    Forget();
    m_due.setSingleShot(true);
    m_due.setInterval(kDelayMs);
    connect(&m_due, &QTimer::timeout, this, &CCalcDlg::Compute);
    const auto later = [this] {
        Forget();
        m_due.start();
    };
    connect(m_form.ui_IDC_EXPRESSION, &QLineEdit::textChanged, this, later);
    connect(&m_parameters, &CCalcParameterModel::Changed, this, later);
    connect(m_form.ui_IDC_EXPRESSION, &QLineEdit::returnPressed, this, [this] {
        m_acceptWhenDone = IsComputing();
        if (m_due.isActive()) {
            Compute();
        }
    });
    connect(m_form.ui_IDC_CURVES, &QListView::activated, this, [this](const QModelIndex& index) {
        InsertText(InsertionOf(static_cast<std::size_t>(index.row())));
    });
    connect(m_form.ui_IDC_REMOVE, &QPushButton::clicked, this,
            [this] { m_parameters.Remove(m_form.ui_IDC_PARAMETERS->currentIndex().row()); });
    Compute();
}

CCalcDlg::~CCalcDlg() = default;

void CCalcDlg::FillCurves()
{
    QStringList curves;
    for (std::size_t i = 0; i < m_set.Curves().size(); ++i) {
        const curve::CCurve& curve = *m_set.Curves()[i];
        const QString word = WordOf(curve);
        curves +=
            QStringLiteral("$%1  %2%3%4")
                .arg(i + 1)
                .arg(word == CurveTitle(curve) || word.isEmpty() ? QString()
                                                                 : word + QStringLiteral("  "),
                     CurveTitle(curve),
                     curve.Points().Column(2).empty() ? QString() : tr("  (complex)"));
    }
    auto* model = new QStringListModel(curves, this);
    m_form.ui_IDC_CURVES->setModel(model);
}

QString CCalcDlg::WordOf(const curve::CCurve& curve) const
{
    const auto nameOf = [](const curve::CCurve& one) {
        return one.Header().name.empty() ? one.Header().legend : one.Header().name;
    };
    const auto same = std::ranges::count_if(
        m_set.Curves(), [&](const curve::TCurvePtr& one) { return nameOf(*one) == nameOf(curve); });
    const QString name = QString::fromStdString(nameOf(curve));
    return same == 1 && CCalcParameterModel::IsName(name) ? name : QString();
}

QString CCalcDlg::InsertionOf(std::size_t curve) const
{
    const curve::CCurve& chosen = *m_set.Curves()[curve];
    const QString word = WordOf(chosen);
    const QString name = word.isEmpty() ? QStringLiteral("$%1").arg(curve + 1) : word;
    return chosen.Points().Column(2).empty() ? name : QStringLiteral("mag(%1)").arg(name);
}

void CCalcDlg::InsertText(const QString& text)
{
    m_form.ui_IDC_EXPRESSION->insert(text);
    m_form.ui_IDC_EXPRESSION->setFocus();
}

QString CCalcDlg::Expression() const
{
    return m_form.ui_IDC_EXPRESSION->text();
}

void CCalcDlg::Forget()
{
    m_job.Abandon(); // it holds what it needs
    m_result = nullptr;
    m_acceptWhenDone = false;
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(false);
}

void CCalcDlg::Compute()
{
    m_due.stop();
    if (Expression().trimmed().isEmpty()) {
        ShowMark(-1, tr("Write an expression, for example db($1) - db($2). A double click on a "
                        "curve inserts it."));
        return;
    }
    m_job.Start(tr("Computing"),
                [this, set = m_set, table = m_parameters.Table(),
                 expression = Expression().toStdString()](CJobState&) -> CBackgroundJob::Deliver {
                    auto result = std::make_shared<CResult<curve::SComputedCurve>>(
                        curve::ComputeCurve(expression, set, table));
                    return [this, result] { Take(*result); };
                });
}

void CCalcDlg::Take(const CResult<curve::SComputedCurve>& result)
{
    while (m_previewCurves.rowCount() > 0) {
        m_previewCurves.Remove(0);
    }
    if (!result) {
        m_acceptWhenDone = false;
        ShowError(result.Error());
        return;
    }
    m_result = result->curve;
    QString notes;
    for (const std::string& note : result->notes) {
        notes += QString::fromStdString(note) + QLatin1Char('\n');
    }
    ShowMark(-1,
             notes.isEmpty() ? tr("%1 points").arg(m_result->Points().Count()) : notes.trimmed());
    m_previewCurves.Add({m_result, curve::EUnitClass::None, CurveColor(0), true, {}});
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(true);
    if (m_acceptWhenDone) {
        accept();
    }
}

void CCalcDlg::ShowError(const SError& error)
{
    const std::string expression = Expression().toStdString();
    const auto place = curve::PlaceOfError(expression, error);
    QString text = QString::fromStdString(error.text);
    for (const std::string& note : error.notes) {
        text += QLatin1Char('\n') + QString::fromStdString(note);
    }
    ShowMark(place ? CharactersOf(expression, *place) : -1, text);
}

void CCalcDlg::ShowMark(int offset, const QString& text)
{
    const QString expression = Expression();
    QString caret;
    if (offset >= 0) {
        // A piece of the expression with the mark below it, also when the field has scrolled.
        constexpr int kBefore = 60;
        const int from = std::max(0, offset - kBefore);
        caret = expression.mid(from, 2 * kBefore) + QLatin1Char('\n') +
                QString(offset - from, QLatin1Char(' ')) + QLatin1Char('^');
    }
    m_form.ui_IDC_CARET->setText(caret);
    m_form.ui_IDC_CARET->setVisible(!caret.isEmpty());
    m_form.ui_IDC_MESSAGE->setText(text);
}

curve::TCurvePtr CCalcDlg::Result() const
{
    const QString legend = m_form.ui_IDC_NAME->text().trimmed();
    if (m_result && !legend.isEmpty()) {
        m_result->Header().legend = legend.toStdString();
    }
    return m_result;
}

} // namespace zov::app
