// SPDX-License-Identifier: Apache-2.0
#include "app/curves/TouchstoneDlg.h"

#include "network/MixedModeOrder.h"

#include <QHeaderView>
#include <QPushButton>

#include <algorithm>

namespace zov::app {
namespace {

using network::EParameter;
using network::SPort;

/// "D1,2 D3,4 C1,2 C3,4": neighbours as pairs, differential modes first.
QString UsualOrder(std::uint32_t ports)
{
    QString order;
    for (const char mode : {'D', 'C'}) {
        for (std::uint32_t port = 1; port < ports; port += 2) {
            order += QStringLiteral("%1%2,%3 ").arg(QLatin1Char(mode)).arg(port).arg(port + 1);
        }
    }
    if (ports % 2 == 1) {
        order += QStringLiteral("S%1").arg(ports);
    }
    return order.trimmed();
}

} // namespace

CEntryModel::CEntryModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void CEntryModel::SetMatrix(EParameter parameter, std::vector<SPort> ports)
{
    beginResetModel();
    const bool sameSize = ports.size() == m_ports.size();
    m_parameter = parameter;
    m_ports = std::move(ports);
    if (!sameSize) {
        m_chosen.assign(m_ports.size() * m_ports.size(), false);
    }
    endResetModel();
    if (!sameSize) {
        constexpr std::size_t kFewPorts = 2;
        Choose(m_ports.size() <= kFewPorts ? kAll : kDiagonal);
    }
}

void CEntryModel::Choose(EChoice choice)
{
    const std::size_t count = m_ports.size();
    for (std::size_t i = 0; i < m_chosen.size(); ++i) {
        m_chosen[i] = choice == kAll || (choice == kDiagonal && i / count == i % count) ||
                      (choice == kFirstColumn && i % count == 0);
    }
    if (count > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

std::vector<curve::SMatrixEntry> CEntryModel::Chosen() const
{
    std::vector<curve::SMatrixEntry> entries;
    for (std::size_t i = 0; i < m_chosen.size(); ++i) {
        if (m_chosen[i]) {
            entries.push_back({static_cast<int>(i / m_ports.size()) + 1,
                               static_cast<int>(i % m_ports.size()) + 1});
        }
    }
    return entries;
}

int CEntryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_ports.size());
}

int CEntryModel::columnCount(const QModelIndex& parent) const
{
    return rowCount(parent);
}

std::size_t CEntryModel::Place(const QModelIndex& index) const
{
    return static_cast<std::size_t>(index.row()) * m_ports.size() +
           static_cast<std::size_t>(index.column());
}

QVariant CEntryModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::CheckStateRole) {
        return m_chosen[Place(index)] ? Qt::Checked : Qt::Unchecked;
    }
    if (role == Qt::DisplayRole) {
        return QString::fromStdString(
            EntryName(m_parameter, m_ports, {index.row() + 1, index.column() + 1}));
    }
    return {};
}

bool CEntryModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole) {
        return false;
    }
    m_chosen[Place(index)] = value.toInt() == Qt::Checked;
    Q_EMIT dataChanged(index, index);
    return true;
}

QVariant CEntryModel::headerData(int section, Qt::Orientation, int role) const
{
    if (role == Qt::DisplayRole) {
        return section + 1;
    }
    if (role == Qt::ToolTipRole) {
        return QString::fromStdString(m_ports[static_cast<std::size_t>(section)].name);
    }
    return {};
}

Qt::ItemFlags CEntryModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsUserCheckable;
}

CTouchstoneDlg::CTouchstoneDlg(QWidget* parent, const QString& fileName,
                               const network::CNetworkData& matrices)
    : CqtDialogRes(parent)
    , m_data(matrices)
    , m_entries(this)
{
    m_form.ui_IDC_FILE->setText(tr("%1: ports %2, frequencies %3, %4 parameters")
                                    .arg(fileName)
                                    .arg(matrices.PortCount())
                                    .arg(matrices.FrequencyCount())
                                    .arg(QLatin1Char(LetterOf(matrices.Parameter()))));
    m_form.ui_IDC_ENTRIES->setModel(&m_entries);
    m_form.ui_IDC_ORDER->setText(UsualOrder(matrices.PortCount()));
    if (HasMixedMode(matrices.Ports())) {
        QString order;
        for (const SPort& port : matrices.Ports()) {
            order += QString::fromStdString(network::PortDescriptor(port)) + QLatin1Char(' ');
        }
        m_form.ui_IDC_ORDER->setText(order.trimmed());
    }
    FillParameters();
    connect(m_form.ui_IDC_PARAMETER, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CTouchstoneDlg::ShowMatrix);
    connect(m_form.ui_IDC_MODES, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CTouchstoneDlg::ShowMatrix);
    connect(m_form.ui_IDC_ORDER, &QLineEdit::textChanged, this, &CTouchstoneDlg::ShowMatrix);
    connect(&m_entries, &QAbstractItemModel::dataChanged, this, &CTouchstoneDlg::ShowFault);
    const std::pair<QPushButton*, CEntryModel::EChoice> buttons[] = {
        {m_form.ui_IDC_ALL, CEntryModel::kAll},
        {m_form.ui_IDC_NONE, CEntryModel::kNone},
        {m_form.ui_IDC_DIAGONAL, CEntryModel::kDiagonal},
        {m_form.ui_IDC_FIRST_COLUMN, CEntryModel::kFirstColumn}};
    for (const auto& [button, choice] : buttons) {
        connect(button, &QPushButton::clicked, this,
                [this, what = choice] { m_entries.Choose(what); });
    }
    ShowMatrix();
}

void CTouchstoneDlg::FillParameters()
{
    QComboBox& box = *m_form.ui_IDC_PARAMETER;
    for (const EParameter parameter :
         {EParameter::S, EParameter::Z, EParameter::Y, EParameter::G, EParameter::H}) {
        if (!IsHybrid(parameter) || m_data.PortCount() == 2) {
            box.addItem(QString(QLatin1Char(LetterOf(parameter))), static_cast<int>(parameter));
        }
    }
    box.setCurrentIndex(box.findData(static_cast<int>(m_data.Parameter())));
}

QString CTouchstoneDlg::ReadOrder(std::vector<SPort>& order) const
{
    if (Modes() == kSingleEnded) {
        order = network::DefaultPorts(m_data.PortCount());
    }
    if (Modes() != kMixed) {
        return {};
    }
    const std::string text = m_form.ui_IDC_ORDER->text().toStdString();
    std::string_view rest = text;
    if (!ReadPortDescriptors(rest, order)) {
        return tr("'%1' is no port: write D1,2 for a differential pair, C1,2 for its common mode, "
                  "S3 for a single-ended port.")
            .arg(QString::fromUtf8(rest.data(), static_cast<int>(rest.size())));
    }
    if (order.size() != m_data.PortCount() || CheckOrder(order) != network::EOrder::Right) {
        return tr("Each of the %1 ports has to stand once as S, or once in a D and once in a C.")
            .arg(m_data.PortCount());
    }
    return {};
}

void CTouchstoneDlg::ShowMatrix()
{
    m_order.clear();
    m_fault = ReadOrder(m_order);
    const bool isOther = m_fault.isEmpty() && !m_order.empty();
    m_form.ui_IDC_ORDER->setEnabled(Modes() == kMixed);
    m_entries.SetMatrix(static_cast<EParameter>(m_form.ui_IDC_PARAMETER->currentData().toInt()),
                        isOther ? m_order : m_data.Ports());
    m_form.ui_IDC_ENTRIES->resizeColumnsToContents();
    ShowFault();
}

void CTouchstoneDlg::ShowFault()
{
    const QString fault = !m_fault.isEmpty()           ? m_fault
                          : m_entries.Chosen().empty() ? tr("Choose at least one element.")
                                                       : QString();
    m_form.ui_IDC_FAULT->setText(fault);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
}

SMatrixChoice CTouchstoneDlg::Choice() const
{
    return {static_cast<EParameter>(m_form.ui_IDC_PARAMETER->currentData().toInt()), m_order,
            m_entries.Chosen()};
}

} // namespace zov::app
