// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/WidgetState.h"

#include "ui/replay/CheckPointText.h"
#include "ui/replay/WidgetFacts.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QTreeView>

#include <algorithm>

namespace zov::ui::replay {
namespace {

constexpr int kMaxRows = 5000; ///< of one view; the count says how many there are
constexpr int kMaxDepth = 64;

QString Ability(bool enabled)
{
    return enabled ? QStringLiteral("Enabled") : QStringLiteral("Disabled");
}

QString Check(bool checked)
{
    return checked ? QStringLiteral("Checked") : QStringLiteral("Unchecked");
}

QString CheckMark(const QVariant& state)
{
    if (!state.isValid()) {
        return {};
    }
    switch (state.toInt()) {
    case Qt::Checked:
        return QStringLiteral(" [Checked]");
    case Qt::PartiallyChecked:
        return QStringLiteral(" [PartialChecked]");
    default:
        return QStringLiteral(" [Unchecked]");
    }
}

QString OneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QStringLiteral("\\n")).remove(QLatin1Char('\r'));
}

/// Columns in the order in which they are seen, hidden ones left out.
std::vector<int> ShownColumns(const QAbstractItemView& view)
{
    const QHeaderView* header = nullptr;
    if (const auto* table = qobject_cast<const QTableView*>(&view)) {
        header = table->horizontalHeader();
    } else if (const auto* tree = qobject_cast<const QTreeView*>(&view)) {
        header = tree->header();
    }
    std::vector<int> columns;
    if (header == nullptr) {
        return {0};
    }
    for (int place = 0; place < header->count(); ++place) {
        if (const int column = header->logicalIndex(place); !header->isSectionHidden(column)) {
            columns.push_back(column);
        }
    }
    return columns;
}

class CStateText
{
public:
    [[nodiscard]] QString Take()
    {
        EndBlock();
        return m_blocks.join(QLatin1String(kBlockLine.data(), static_cast<int>(kBlockLine.size())));
    }

    void Add(const QWidget& widget, int depth)
    {
        const bool isRoot = depth == 0;
        if (depth > kMaxDepth || (!isRoot && !Counts(widget))) {
            return;
        }
        if (AddCustom(widget) || AddItems(widget) || AddControl(widget)) {
            return;
        }
        if (isRoot || IsNamed(widget)) {
            AddContainer(widget);
        }
        for (const QObject* child : widget.children()) {
            if (const auto* inner = qobject_cast<const QWidget*>(child)) {
                Add(*inner, depth + 1);
            }
        }
    }

private:
    static bool Counts(const QWidget& widget)
    {
        return widget.isVisible() && !widget.isWindow() &&
               qobject_cast<const QScrollBar*>(&widget) == nullptr &&
               qobject_cast<const QHeaderView*>(&widget) == nullptr &&
               qobject_cast<const QMenuBar*>(&widget) == nullptr;
    }

    /// Named by the program; parts of the toolkit's own widgets have names of this form.
    static bool IsNamed(const QWidget& widget)
    {
        return !widget.objectName().isEmpty() &&
               !widget.objectName().startsWith(QLatin1String("qt_"));
    }

    static QString Name(const QWidget& widget)
    {
        const QString name = NameOf(widget);
        return name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name;
    }

    void Line(const QString& line) { m_lines += line; }
    void EndBlock()
    {
        if (!m_lines.isEmpty()) {
            m_blocks += m_lines.join(QString());
            m_lines.clear();
        }
    }

    bool AddCustom(const QWidget& widget)
    {
        const QVariant custom = widget.property(kRecChkCustomContent);
        QString content = custom.type() == QVariant::String ? custom.toString() : QString();
        if (custom.type() == QVariant::Bool && custom.toBool()) {
            // The call changes nothing by its meaning, only the meta-object asks for a way to
            // write.
            QMetaObject::invokeMethod(const_cast<QWidget*>(&widget), kRecChkCustomContent,
                                      Qt::DirectConnection, Q_RETURN_ARG(QString, content));
        }
        if (content.isEmpty()) {
            return false;
        }
        Line(content.endsWith(QLatin1Char('\n')) ? content : content + QLatin1Char('\n'));
        return true;
    }

    bool AddItems(const QWidget& widget)
    {
        if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget)) {
            EndBlock();
            const QAbstractItemModel* model = view->model();
            const std::vector<int> columns = ShownColumns(*view);
            const QModelIndex root = view->rootIndex();
            Line(QStringLiteral("%1: items=%2 columns=%3, %4\n")
                     .arg(Name(*view))
                     .arg(model == nullptr ? 0 : model->rowCount(root))
                     .arg(columns.size())
                     .arg(Ability(view->isEnabled())));
            int rows = 0;
            if (model != nullptr) {
                AddRows(*model, columns, root, 0, rows);
            }
            EndBlock();
            return true;
        }
        if (const auto* menu = qobject_cast<const QMenu*>(&widget)) {
            EndBlock();
            Line(QStringLiteral("%1: %2\n").arg(Name(*menu), Ability(menu->isEnabled())));
            AddActions(*menu);
            EndBlock();
            return true;
        }
        return false;
    }

    void AddActions(const QMenu& menu)
    {
        for (const QAction* action : menu.actions()) {
            if (!action->isVisible() || action->isSeparator()) {
                continue;
            }
            Line(QStringLiteral("  ") + PlainText(action->text()) +
                 (action->isCheckable()
                      ? QStringLiteral(" [") + Check(action->isChecked()) + QLatin1Char(']')
                      : QString()) +
                 (action->isEnabled() ? QString() : QStringLiteral(" [Disabled]")) +
                 QLatin1Char('\n'));
        }
    }

    void AddRows(const QAbstractItemModel& model, const std::vector<int>& columns,
                 const QModelIndex& parent, int depth, int& rows)
    {
        const int count = model.rowCount(parent);
        for (int row = 0; row < count && rows < kMaxRows && depth < kMaxDepth; ++row, ++rows) {
            QStringList cells;
            for (const int column : columns) {
                const QModelIndex index = model.index(row, column, parent);
                cells += OneLine(index.data().toString()) +
                         CheckMark(index.data(Qt::CheckStateRole)) +
                         ((index.flags() & Qt::ItemIsEnabled) != 0 ? QString()
                                                                   : QStringLiteral(" [Disabled]"));
            }
            Line(QString(2 * (depth + 1), QLatin1Char(' ')) + cells.join(QLatin1Char('\t')) +
                 QLatin1Char('\n'));
            AddRows(model, columns, model.index(row, 0, parent), depth + 1, rows);
        }
    }

    void Texted(const QWidget& widget, const QString& text)
    {
        Line(QStringLiteral("%1: \"%2\", %3\n")
                 .arg(Name(widget), OneLine(text), Ability(widget.isEnabled())));
    }
    void Checked(const QWidget& widget, bool checked)
    {
        Line(QStringLiteral("%1: %2, %3\n")
                 .arg(Name(widget), Check(checked), Ability(widget.isEnabled())));
    }

    /// Controls that are one thing to the user, whatever they are made of.
    bool AddControl(const QWidget& widget)
    {
        if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
            Line(QStringLiteral("%1: \"%2\", count=%3, %4\n")
                     .arg(Name(*box), OneLine(box->currentText()))
                     .arg(box->count())
                     .arg(Ability(box->isEnabled())));
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            // Inside a tab widget it is that which tells.
            if (qobject_cast<const QTabWidget*>(tabs->parentWidget()) == nullptr) {
                AddTabs(*tabs, tabs->count(), tabs->tabText(tabs->currentIndex()));
            }
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            button->isCheckable() ? Checked(*button, button->isChecked())
                                  : Texted(*button, PlainText(button->text()));
        } else if (const QString text = InputText(widget); !text.isNull()) {
            Texted(widget, text);
        } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            Texted(*label, label->text());
        } else if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(&widget)) {
            Texted(*spin, spin->text());
        } else if (const auto* slider = qobject_cast<const QAbstractSlider*>(&widget)) {
            Texted(*slider, QString::number(slider->value()));
        } else if (const auto* progress = qobject_cast<const QProgressBar*>(&widget)) {
            Texted(*progress, progress->text());
        } else {
            return false;
        }
        return true;
    }

    void AddTabs(const QWidget& tabs, int count, const QString& active)
    {
        Line(QStringLiteral("%1: count=%2 active=\"%3\"\n")
                 .arg(Name(tabs))
                 .arg(count)
                 .arg(PlainText(active)));
    }

    void AddContainer(const QWidget& widget)
    {
        if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
            AddTabs(*tabs, tabs->count(), tabs->tabText(tabs->currentIndex()));
        } else if (const auto* pages = qobject_cast<const QStackedWidget*>(&widget)) {
            Line(QStringLiteral("%1: count=%2 current=%3\n")
                     .arg(Name(*pages))
                     .arg(pages->count())
                     .arg(pages->currentIndex()));
        } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget);
                   group != nullptr && group->isCheckable()) {
            Checked(*group, group->isChecked());
        } else {
            Line(QStringLiteral("%1: %2\n").arg(Name(widget), Ability(widget.isEnabled())));
        }
    }

    QStringList m_lines;
    QStringList m_blocks;
};

} // namespace

QString StateOf(const QWidget& widget)
{
    CStateText text;
    text.Add(widget, 0);
    return text.Take();
}

} // namespace zov::ui::replay
