// SPDX-License-Identifier: Apache-2.0
// make_records SCRIPT RECORD.xml: drives the desktop by a script of lines and records what happens.
//
// clang-format off
//     menu Library > Open Library...       a menu of the window worked in, then its entries
//     context LibraryTree "caps" "Rename"  the context menu of an item ("" for the empty space)
//     key Ctrl+S                           to the widget that has the focus
//     keys "text"                          the same, a text
//     type SearchField x7r                 a click into the widget, then the text in place of its own
//     file %RECPATH%/caps.zov              the name field of the file dialog that is open, and Return
//     click Ok                             a control by object name, action name or text
//     drag CurveCanvas 20,30 60,70         the left button from one point to another, in hundredths
//     item ModelTable "C1"                 an item by its text; "itemdouble" with a double click,
//                                          "itemadd" with Ctrl, "itemcheck" on its check mark
//     header ModelTable "Value"            a column's title; "headermenu" and an entry of its menu
//     tab Tabs "Second"
//     choose Combo "Text"                  an entry of a combo box
//     check ModelTable                     a check point
//     wait OptionsDlg                      until a widget is there
// clang-format on
//
// A line is tried until it is possible; lines go on inside menus and dialogs.
#include "app/QtSettingsStore.h"
#include "app/manager/MainFrame.h"
#include "base/Environment.h"
#include "base/File.h"
#include "ui/replay/ReplayBar.h"
#include "ui/replay/WidgetFacts.h"
#include "ui/replay/WidgetState.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QSettings>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <clocale>
#include <cstdio>

namespace {

using zov::ui::replay::NameOf;
using zov::ui::replay::PlainText;
using zov::ui::replay::TitleOf;

constexpr int kLineMs = 15'000;
constexpr int kIdleMs = 250;

struct SLine
{
    QString verb;
    QStringList words; ///< quotes taken off; "a > b" is two words
};

SLine Parse(const QString& text)
{
    SLine line;
    line.verb = text.section(QLatin1Char(' '), 0, 0);
    QString rest = text.section(QLatin1Char(' '), 1);
    if (line.verb == QStringLiteral("menu")) {
        for (const QString& word : rest.split(QLatin1Char('>'))) {
            line.words += word.trimmed();
        }
        return line;
    }
    while (!rest.isEmpty()) {
        const bool quoted = rest.startsWith(QLatin1Char('"'));
        const int end = quoted ? rest.indexOf(QLatin1Char('"'), 1) : rest.indexOf(QLatin1Char(' '));
        line.words += rest.mid(quoted ? 1 : 0, end < 0 ? -1 : end - (quoted ? 1 : 0));
        rest = end < 0 ? QString() : rest.mid(end + 1).trimmed();
    }
    line.words.removeAll(QStringLiteral(">"));
    return line;
}

/// Windows in which the user can do something now: pop-up, modal, the others.
QList<QWidget*> OpenWindows()
{
    if (QWidget* popup = QApplication::activePopupWidget()) {
        return {popup};
    }
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return {modal};
    }
    QList<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            windows += window;
        }
    }
    return windows;
}

QWidget* Find(const QString& name)
{
    for (QWidget* window : OpenWindows()) {
        if (NameOf(*window) == name || window->metaObject()->className() == name.toLatin1()) {
            return window;
        }
        QWidget* byTitle = nullptr;
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->window() != window) {
                continue;
            }
            if (NameOf(*widget) == name) {
                return widget;
            }
            if (qobject_cast<QAbstractButton*>(widget) != nullptr && TitleOf(*widget) == name) {
                byTitle = widget;
            }
        }
        if (byTitle != nullptr) {
            return byTitle;
        }
    }
    return nullptr;
}

QModelIndex FindItem(const QAbstractItemModel& model, const QString& text,
                     const QModelIndex& parent)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const QModelIndex at = model.index(row, column, parent);
            if (at.data().toString() == text) {
                return at;
            }
        }
        const QModelIndex below = FindItem(model, text, model.index(row, 0, parent));
        if (below.isValid()) {
            return below;
        }
    }
    return {};
}

/// Where the keyboard writes to now.
QWidget& KeyReceiver(QWidget& window)
{
    if (QWidget* popup = QApplication::activePopupWidget()) {
        return *popup;
    }
    // Without a window manager nobody gives the focus back when a dialog closes.
    if (!window.isActiveWindow()) {
        QApplication::setActiveWindow(&window);
    }
    QWidget* focus = QApplication::focusWidget();
    return focus != nullptr ? *focus : window;
}

/// A key as the keyboard gives it, through the window, so that shortcuts work.
void Key(const QKeySequence& keys, QWidget& window)
{
    const auto key = static_cast<Qt::Key>(keys[0] & ~static_cast<int>(Qt::KeyboardModifierMask));
    const auto modifiers =
        Qt::KeyboardModifiers(QFlag(keys[0] & static_cast<int>(Qt::KeyboardModifierMask)));
    QTest::keyClick(&KeyReceiver(window), key, modifiers);
}

class CUser
{
public:
    CUser(zov::app::CZovMainFrm& frame, QStringList lines)
        : m_frame(frame)
        , m_lines(std::move(lines))
    {
        m_sinceLine.start();
    }

    void Next()
    {
        // Set before the line is done, which may stay in a menu or dialog.
        QTimer::singleShot(20, &m_frame, [this] { Next(); });
        if (zov::app::CJobState::AnyAlive() || m_busy) {
            return;
        }
        if (m_at == m_lines.size()) {
            QCoreApplication::exit(Finish());
            return;
        }
        const int at = m_at;
        const SLine line = Parse(m_lines[at]);
        m_at = at + 1;
        if (Do(line)) {
            m_sinceLine.start();
        } else {
            m_at = at;
            if (m_sinceLine.elapsed() > kLineMs) {
                std::fprintf(stderr, "cannot be done: %s\n", m_lines[at].toLocal8Bit().constData());
                for (QWidget* window : OpenWindows()) {
                    std::fprintf(stderr, "  open: %s\n%s",
                                 zov::ui::replay::Shown(*window).toLocal8Bit().constData(),
                                 zov::ui::replay::StateOf(*window).toLocal8Bit().constData());
                }
                std::_Exit(1);
            }
        }
    }

private:
    int Finish()
    {
        const auto saved = m_frame.ReplayBar().Recorder().Stop();
        if (!saved) {
            std::fprintf(stderr, "%s\n", saved.Error().Full().c_str());
        }
        return saved ? 0 : 1;
    }

    bool Do(const SLine& line)
    {
        const QString& first = line.words.value(0);
        const QString& second = line.words.value(1);
        if (line.verb == QStringLiteral("menu")) {
            return Menu(line.words);
        }
        if (line.verb == QStringLiteral("entry")) {
            return Entry(first);
        }
        if (line.verb == QStringLiteral("context")) {
            return Context(first, second, line.words.value(2));
        }
        if (line.verb == QStringLiteral("key")) {
            if (m_sinceLine.elapsed() < kIdleMs) {
                return false; // shortcuts are enabled in idle time
            }
            Key(QKeySequence(first), CurrentWindow());
            return true;
        }
        if (line.verb == QStringLiteral("keys")) {
            QTest::keyClicks(&KeyReceiver(CurrentWindow()), Expanded(first));
            return true;
        }
        if (line.verb == QStringLiteral("type")) {
            return Type(first, second);
        }
        if (line.verb == QStringLiteral("file")) {
            return File(first);
        }
        if (line.verb == QStringLiteral("click")) {
            return Click(first);
        }
        if (line.verb == QStringLiteral("drag")) {
            return Drag(first, second, line.words.value(2));
        }
        if (line.verb.startsWith(QStringLiteral("item"))) {
            return Item(first, second, line.verb);
        }
        if (line.verb.startsWith(QStringLiteral("header"))) {
            return Header(first, second, line.words.value(2));
        }
        if (line.verb == QStringLiteral("tab")) {
            return Tab(first, second);
        }
        if (line.verb == QStringLiteral("choose")) {
            return Choose(first, second);
        }
        if (line.verb == QStringLiteral("check")) {
            return Check(first);
        }
        return line.verb == QStringLiteral("wait") && Find(first) != nullptr;
    }

    /// The window that the user worked in last, or the one it belongs to.
    QWidget& CurrentWindow() const
    {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            return *modal;
        }
        QWidget* window = m_current;
        while (window != nullptr && !window->isVisible()) {
            window = window->parentWidget() == nullptr ? nullptr : window->parentWidget()->window();
        }
        return window == nullptr ? m_frame : *window;
    }
    QWidget* Find(const QString& name)
    {
        QWidget* widget = ::Find(name);
        if (widget != nullptr && widget->window()->windowType() != Qt::Popup &&
            !widget->window()->isModal()) {
            m_current = widget->window();
        }
        return widget;
    }
    QAbstractItemView* FindView(const QString& name)
    {
        return qobject_cast<QAbstractItemView*>(Find(name));
    }
    static QString Expanded(QString text)
    {
        return text.replace(QStringLiteral("%RECPATH%"), qEnvironmentVariable("RECPATH"));
    }

    /// What is still to be done of this line comes before the next one.
    void Then(const QString& line) { m_lines.insert(m_at, line); }

    bool Menu(const QStringList& path)
    {
        auto* window = qobject_cast<QMainWindow*>(&CurrentWindow());
        if (window == nullptr || !OpenWindows().contains(window)) {
            return false;
        }
        QMenuBar* bar = window->menuBar();
        for (QAction* action : bar->actions()) {
            if (PlainText(action->text()) == path.first()) {
                for (int i = path.size() - 1; i > 0; --i) {
                    Then(QStringLiteral("entry \"%1\"").arg(path[i]));
                }
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(action).center());
                return true;
            }
        }
        return false;
    }

    bool Entry(const QString& text)
    {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr) {
            return false;
        }
        for (QAction* action : menu->actions()) {
            if (PlainText(action->text()) != text || !action->isEnabled()) {
                continue;
            }
            if (action->menu() != nullptr) {
                menu->setActiveAction(action); // as when the pointer rests on it
                return true;
            }
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return true;
        }
        return false;
    }

    bool Context(const QString& name, const QString& item, const QString& entry)
    {
        QAbstractItemView* view = FindView(name);
        const QModelIndex at =
            view == nullptr || item.isEmpty() ? QModelIndex() : FindItem(*view->model(), item, {});
        if (view == nullptr || (!item.isEmpty() && !at.isValid())) {
            return false;
        }
        const QPoint pos = at.isValid() ? view->visualRect(at).center()
                                        : view->viewport()->rect().bottomRight() - QPoint(5, 5);
        RightClick(*view->viewport(), pos, entry);
        return true;
    }

    void RightClick(QWidget& widget, const QPoint& pos, const QString& entry)
    {
        QTest::mouseClick(&widget, Qt::RightButton, {}, pos);
        for (const QString& word : ReversedWords(entry)) {
            Then(QStringLiteral("entry \"%1\"").arg(word));
        }
        QContextMenuEvent event(QContextMenuEvent::Mouse, pos, widget.mapToGlobal(pos));
        QSpontaneKeyEvent::setSpontaneous(&event);
        QApplication::instance()->notify(&widget, &event);
    }

    /// "Move To>Collection" from the last on.
    static QStringList ReversedWords(const QString& path)
    {
        QStringList words;
        for (const QString& word : path.split(QLatin1Char('>'))) {
            words.prepend(word);
        }
        return words;
    }

    bool Header(const QString& name, const QString& title, const QString& entry)
    {
        QAbstractItemView* view = FindView(name);
        auto* header = view == nullptr ? nullptr : view->findChild<QHeaderView*>();
        for (QHeaderView* one :
             view == nullptr ? QList<QHeaderView*>() : view->findChildren<QHeaderView*>()) {
            header = one->orientation() == Qt::Horizontal ? one : header;
        }
        for (int i = 0; header != nullptr && i < header->count(); ++i) {
            if (header->model()->headerData(i, Qt::Horizontal).toString() != title) {
                continue;
            }
            const QPoint pos(header->sectionViewportPosition(i) + header->sectionSize(i) / 2,
                             header->height() / 2);
            entry.isEmpty() ? QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, pos)
                            : RightClick(*header->viewport(), pos, entry);
            return true;
        }
        return false;
    }

    bool Type(const QString& name, const QString& text)
    {
        QWidget* widget = Find(name);
        if (widget == nullptr || !widget->isEnabled()) {
            return false;
        }
        QTest::mouseClick(widget, Qt::LeftButton, {}, {12, widget->height() / 2});
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(widget, Expanded(text));
        return true;
    }

    bool File(const QString& path)
    {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        auto* name = dialog == nullptr
                         ? nullptr
                         : dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name == nullptr) {
            return false;
        }
        QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(name, Expanded(path));
        QTest::keyClick(name, Qt::Key_Return);
        return true;
    }

    bool Click(const QString& name)
    {
        QWidget* widget = Find(name);
        if (widget == nullptr || !widget->isEnabled()) {
            return false;
        }
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
        return true;
    }

    static QPoint InHundredths(const QWidget& widget, const QString& point)
    {
        return {point.section(QLatin1Char(','), 0, 0).toInt() * widget.width() / 100,
                point.section(QLatin1Char(','), 1).toInt() * widget.height() / 100};
    }

    bool Drag(const QString& name, const QString& from, const QString& to)
    {
        QWidget* widget = Find(name);
        if (widget == nullptr) {
            return false;
        }
        const QPoint start = InHundredths(*widget, from);
        const QPoint end = InHundredths(*widget, to);
        QTest::mousePress(widget, Qt::LeftButton, {}, start);
        for (const QPoint& at : {(start + end) / 2, end}) {
            // A move that says which button is held, unlike that of the test library.
            QMouseEvent move(QEvent::MouseMove, at, widget->mapTo(widget->window(), at),
                             widget->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
            QSpontaneKeyEvent::setSpontaneous(&move);
            QApplication::instance()->notify(widget, &move);
        }
        QTest::mouseRelease(widget, Qt::LeftButton, {}, end);
        return true;
    }

    bool Item(const QString& name, const QString& text, const QString& verb)
    {
        QAbstractItemView* view = FindView(name);
        const QModelIndex at = view == nullptr || view->model() == nullptr
                                   ? QModelIndex()
                                   : FindItem(*view->model(), text, view->rootIndex());
        if (!at.isValid()) {
            return false;
        }
        view->scrollTo(at);
        const QRect rect = view->visualRect(at);
        const bool check = verb == QStringLiteral("itemcheck");
        const QPoint pos = check ? QPoint(rect.x() + 8, rect.center().y()) : rect.center();
        const Qt::KeyboardModifiers with =
            verb == QStringLiteral("itemadd") ? Qt::ControlModifier : Qt::NoModifier;
        QTest::mouseClick(view->viewport(), Qt::LeftButton, with, pos);
        if (verb == QStringLiteral("itemdouble")) {
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, pos);
        }
        return true;
    }

    bool Tab(const QString& name, const QString& text)
    {
        QWidget* widget = Find(name);
        auto* bar = qobject_cast<QTabBar*>(widget);
        if (bar == nullptr && widget != nullptr) {
            bar = widget->findChild<QTabBar*>();
        }
        for (int i = 0; bar != nullptr && i < bar->count(); ++i) {
            if (PlainText(bar->tabText(i)) == text) {
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(i).center());
                return true;
            }
        }
        return false;
    }

    bool Choose(const QString& name, const QString& text)
    {
        auto* box = qobject_cast<QComboBox*>(Find(name));
        const int wanted = box == nullptr ? -1 : box->findText(text);
        if (wanted < 0) {
            return false;
        }
        // By the keyboard, as those do who know where they want to go.
        QTest::mouseClick(box, Qt::LeftButton, {}, {12, box->height() / 2});
        for (int at = box->currentIndex(); at != wanted; at += at < wanted ? 1 : -1) {
            QTest::keyClick(box->view(), at < wanted ? Qt::Key_Down : Qt::Key_Up);
        }
        QTest::keyClick(box->view(), Qt::Key_Return);
        return true;
    }

    bool Check(const QString& name)
    {
        QWidget* widget = Find(name);
        if (widget == nullptr) {
            return false;
        }
        // What is on its way (searches, idle updates) is to be there.
        m_busy = true;
        QTest::qWait(400);
        m_busy = false;
        auto& recorder = m_frame.ReplayBar().Recorder();
        const auto added = recorder.AddCheckPoint(*widget, recorder.NextGolden());
        if (!added) {
            std::fprintf(stderr, "%s\n", added.Error().Full().c_str());
            std::_Exit(1);
        }
        return true;
    }

    zov::app::CZovMainFrm& m_frame;
    QPointer<QWidget> m_current;
    QStringList m_lines;
    int m_at = 0;
    bool m_busy = false;
    QElapsedTimer m_sinceLine;
};

QStringList ReadLines(const char* file)
{
    QStringList lines;
    const auto text = zov::ReadWholeFile(zov::TextPath(file));
    for (const QString& line :
         QString::fromStdString(text ? *text : std::string()).split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            lines += line.trimmed();
        }
    }
    return lines;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "make_records SCRIPT RECORD.xml\n");
        return 2;
    }
    QCoreApplication::setOrganizationName(QStringLiteral("Zovra"));
    QCoreApplication::setApplicationName(QStringLiteral("Zovra"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZOV_VERSION));
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QSettings settings;
    zov::app::CQtSettingsStore store(settings);
    zov::app::CZovMainFrm frame(settings, store, zov::ProcessEnvironment());
    frame.show();
    if (const auto started = frame.ReplayBar().Recorder().Start(zov::TextPath(argv[2])); !started) {
        std::fprintf(stderr, "%s\n", started.Error().Full().c_str());
        return 1;
    }
    CUser user(frame, ReadLines(argv[1]));
    QTimer::singleShot(100, &frame, [&user] { user.Next(); });
    return QApplication::exec();
}
