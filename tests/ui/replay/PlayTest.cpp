// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"
#include "ui/replay/Player.h"
#include "ui/replay/RecordXml.h"
#include "ui/replay/Recorder.h"
#include "ui/replay/WidgetFacts.h"
#include "ui/replay/WidgetState.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <functional>
#include <gtest/gtest.h>

namespace zov::ui::replay {
namespace {

// A widget doesn't own the style that it is given.
void UseOtherStyle(QWidget& widget)
{
    QStyle* style = QStyleFactory::create(QStringLiteral("Windows"));
    style->setParent(&widget);
    widget.setStyle(style);
}

const QString kAllDone = QStringLiteral("Ctrl+D;inductors 1;Open...;C1;");

/// A window with the things that records go to; what it did is told by its label.
class CWindow : public QMainWindow
{
public:
    CWindow()
    {
        setObjectName(QStringLiteral("Window"));
        resize(640, 480);
        auto* page = new QWidget(this);
        auto* layout = new QVBoxLayout(page);
        done->setObjectName(QStringLiteral("Done"));
        edit->setObjectName(QStringLiteral("Edit"));
        box->setObjectName(QStringLiteral("Box"));
        button->setObjectName(QStringLiteral("Ask"));
        tree->setObjectName(QStringLiteral("Tree"));
        tree->setModel(&model);
        tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
        tabs->setObjectName(QStringLiteral("Tabs"));
        tabs->addTab(new QLabel(QStringLiteral("first"), tabs), QStringLiteral("First"));
        tabs->addTab(new QLabel(QStringLiteral("second"), tabs), QStringLiteral("Second"));
        for (QWidget* widget : {static_cast<QWidget*>(edit), static_cast<QWidget*>(box),
                                static_cast<QWidget*>(button), static_cast<QWidget*>(tree),
                                static_cast<QWidget*>(tabs), static_cast<QWidget*>(done)}) {
            layout->addWidget(widget);
        }
        setCentralWidget(page);
        model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Value")});
        for (const char* name : {"caps", "inductors", "resistors"}) {
            auto* row = new QStandardItem(QLatin1String(name));
            row->appendRow({new QStandardItem(QLatin1String(name) + QStringLiteral(" 1")),
                            new QStandardItem(QStringLiteral("1"))});
            model.appendRow({row, new QStandardItem(QStringLiteral("-"))});
        }
        tree->expandAll();
        menu = menuBar()->addMenu(QStringLiteral("&File"));
        menu->setObjectName(QStringLiteral("FileMenu"));
        for (const char* name : {"&New", "&Open...", "&Save"}) {
            QAction* action = menu->addAction(QLatin1String(name));
            connect(action, &QAction::triggered, this,
                    [this, action] { Did(PlainText(action->text())); });
        }
        sub = menu->addMenu(QStringLiteral("More"));
        connect(sub->addAction(QStringLiteral("Deep")), &QAction::triggered, this,
                [this] { Did(QStringLiteral("Deep")); });
        auto* shortcut = new QAction(this);
        shortcut->setShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
        addAction(shortcut);
        connect(shortcut, &QAction::triggered, this, [this] { Did(QStringLiteral("Ctrl+D")); });
        connect(button, &QPushButton::clicked, this, &CWindow::AskName);
        connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [this](const QModelIndex& at) { Did(at.data().toString()); });
    }

    void Did(const QString& what) { done->setText(done->text() + what + QLatin1Char(';')); }
    void AskName()
    {
        QDialog dialog(this);
        dialog.setObjectName(QStringLiteral("NameDlg"));
        dialog.setWindowTitle(nameWord);
        auto* layout = new QVBoxLayout(&dialog);
        auto* name = new QLineEdit(&dialog);
        name->setObjectName(QStringLiteral("NameField"));
        auto* ok = new QPushButton(okWord, &dialog);
        ok->setObjectName(QStringLiteral("Ok"));
        layout->addWidget(name);
        layout->addWidget(ok);
        connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
        if (dialog.exec() == QDialog::Accepted) {
            Did(name->text());
        }
    }

    QLabel* done = new QLabel(this);
    QLineEdit* edit = new QLineEdit(this);
    QCheckBox* box = new QCheckBox(QStringLiteral("Tolerances"), this);
    QPushButton* button = new QPushButton(QStringLiteral("Ask..."), this);
    QTreeView* tree = new QTreeView(this);
    QTabWidget* tabs = new QTabWidget(this);
    QMenu* menu = nullptr;
    QMenu* sub = nullptr;
    QStandardItemModel model;
    QString nameWord = QStringLiteral("Name");
    QString okWord = QStringLiteral("&OK");
};

void ClickAction(QWidget& bar, const QRect& at)
{
    QTest::mouseClick(&bar, Qt::LeftButton, {}, at.center());
}

/// What a user of the window does, one thing after the other; each may leave a menu or a dialog
/// open for the next.
std::vector<std::function<void(CWindow&)>> UserSteps()
{
    const auto inDialog = [](auto&& action) {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        action(*dialog);
    };
    return {
        [](CWindow& w) { QTest::keyClicks(w.edit, QStringLiteral("x7r")); },
        [](CWindow& w) { QTest::keyClick(w.edit, Qt::Key_D, Qt::ControlModifier); },
        [](CWindow& w) {
            QTest::mouseClick(w.box, Qt::LeftButton, {}, {8, w.box->height() / 2});
        },
        [](CWindow& w) {
            const QModelIndex at = w.model.index(0, 0, w.model.index(1, 0));
            QTest::mouseClick(w.tree->viewport(), Qt::LeftButton, {},
                              w.tree->visualRect(at).center());
        },
        [](CWindow& w) {
            QTabBar* bar = w.tabs->tabBar();
            ClickAction(*bar, bar->tabRect(1));
        },
        [](CWindow& w) {
            QMenuBar* bar = w.menuBar();
            QTest::mousePress(bar, Qt::LeftButton, {},
                              bar->actionGeometry(w.menu->menuAction()).center());
        },
        [](CWindow& w) { ClickAction(*w.menu, w.menu->actionGeometry(w.menu->actions()[1])); },
        [](CWindow& w) { QTest::mouseClick(w.button, Qt::LeftButton); },
        [inDialog](CWindow&) {
            inDialog([](QWidget& d) {
                QTest::keyClicks(d.findChild<QLineEdit*>(), QStringLiteral("C1"));
            });
        },
        [inDialog](CWindow&) {
            inDialog(
                [](QWidget& d) { QTest::mouseClick(d.findChild<QPushButton*>(), Qt::LeftButton); });
        },
    };
}

struct PlayTest : testing::Test
{
    void SetUp() override { window = std::make_unique<CWindow>(); }

    /// Records the steps in a fresh window, with a check point on the whole window at the end.
    void RecordSteps()
    {
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        CRecorder recorder(*window, Environment());
        ASSERT_TRUE(recorder.Start(path).Ok());
        // A timer for each, set before the step, which may open a dialog and stay in it.
        const auto steps = UserSteps();
        std::size_t at = 0;
        const std::function<void()> next = [&] {
            if (at < steps.size()) {
                QTimer::singleShot(1, window.get(), next);
                steps[at++](*window);
            }
        };
        next();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->done->text().contains(kAllDone); }));
        ASSERT_EQ(window->done->text(), kAllDone);
        ASSERT_TRUE(recorder.AddCheckPoint(*window->centralWidget(), recorder.NextGolden()).Ok());
        const CResult<void> saved = recorder.Stop();
        ASSERT_TRUE(saved.Ok()) << saved.Error().Full();
        window = std::make_unique<CWindow>();
    }

    /// Records what the user does in a fresh window; the next one is fresh again.
    void RecordThis(const std::function<void(CWindow&, CRecorder&)>& user)
    {
        window = std::make_unique<CWindow>();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        CRecorder recorder(*window, Environment());
        ASSERT_TRUE(recorder.Start(path).Ok());
        user(*window, recorder);
        ASSERT_TRUE(recorder.Stop().Ok());
        window = std::make_unique<CWindow>();
    }
    /// What a play in the changed window logs.
    std::string PlayChanged(const std::function<void(CWindow&)>& change, bool good)
    {
        window = std::make_unique<CWindow>();
        change(*window);
        const std::size_t before = log.Lines().size();
        const SPlayResult result = PlayRecord();
        std::string logged;
        for (std::size_t i = before; i < log.Lines().size(); ++i) {
            logged += log.Lines()[i] + '\n';
        }
        EXPECT_EQ(result.Good(), good) << logged;
        return logged;
    }

    SPlayResult PlayRecord()
    {
        if (!window->isVisible()) {
            window->show();
        }
        const auto loaded = LoadRecord(path, SReplayOptions::Of(Environment()), log);
        EXPECT_TRUE(loaded.Ok());
        return PlayLoaded(*loaded);
    }
    SPlayResult PlayLoaded(SLoadedRecord loaded)
    {
        CPlayer player(*window, Environment(), log);
        player.Play(std::move(loaded), 0.0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !player.IsPlaying(); }, 30'000));
        return player.Result();
    }

    FEnvironment Environment() const
    {
        return [this](const char* name) -> std::optional<std::string> {
            const auto at = environment.find(name);
            return at == environment.end() ? std::nullopt : std::optional(at->second);
        };
    }
    std::string Logged() const
    {
        std::string all;
        for (const std::string& line : log.Lines()) {
            all += line + '\n';
        }
        return all;
    }

    test::CTempFolder folder;
    std::filesystem::path path = folder.Path() / "GUIReplay_steps.xml";
    std::map<std::string, std::string> environment{{"VRSHL_GUIREPLAY_STEP_TIMEOUT", "2"}};
    CVectorLog log;
    std::unique_ptr<CWindow> window;
};

TEST_F(PlayTest, WhatAUserDidIsDoneAgain)
{
    RecordSteps();
    const SPlayResult result = PlayRecord();
    EXPECT_TRUE(result.Good()) << Logged();
    EXPECT_EQ(result.checkPointsPassed, 1);
    EXPECT_EQ(result.played, result.events);
    EXPECT_EQ(window->done->text(), kAllDone);
    EXPECT_EQ(Logged().find("Warning"), std::string::npos) << Logged();
    const std::string playLog = folder.Read("GUIReplay_steps.playlog");
    for (const char* line : {"]--#Playing Enviroment:", "]--Play Started", "]--Playing ",
                             "]--Verifying: Passed for CheckPoint1.", "]--Play Ended"}) {
        EXPECT_NE(playLog.find(line), std::string::npos) << line;
    }
    const std::string all = folder.Read("GUIReplay_All.log");
    EXPECT_NE(all.find(":Recording stopped."), std::string::npos);
    EXPECT_NE(all.find("]--Play Ended"), std::string::npos);
    const std::string brief = folder.Read("GUIReplay_steps.brf");
    EXPECT_NE(brief.find("KeyInputs \"x7r<Ctrl+D>\""), std::string::npos) << brief;
}

TEST_F(PlayTest, PlaysInAChangedWindow)
{
    RecordSteps();
    const struct
    {
        const char* name;
        std::function<void(CWindow&)> change;
        std::vector<std::string> notices; ///< each is in the log; none: the log has no warning
        bool good = true;
        QString done = kAllDone;
    } cases[] = {
        {"larger window", [](CWindow& w) { w.resize(1100, 900); }, {}},
        {"half the window", [](CWindow& w) { w.resize(320, 240); }, {}},
        {"large font",
         [](CWindow& w) {
             QFont font = w.font();
             font.setPointSizeF(2.0 * font.pointSizeF());
             w.setFont(font);
         },
         {}},
        {"other theme",
         [](CWindow& w) {
             w.setPalette(QPalette(Qt::black));
             for (QWidget* widget : w.findChildren<QWidget*>()) {
                 UseOtherStyle(*widget);
             }
         },
         {}},
        {"all at once",
         [](CWindow& w) {
             w.resize(320, 240);
             QFont font = w.font();
             font.setPointSizeF(2.0 * font.pointSizeF());
             w.setFont(font);
             w.setPalette(QPalette(Qt::black));
             for (QWidget* widget : w.findChildren<QWidget*>()) {
                 UseOtherStyle(*widget);
             }
         },
         {}},
        {"other dialog title", [](CWindow& w) { w.nameWord = QStringLiteral("Part"); }, {}},
        {"another language",
         [](CWindow& w) {
             w.setWindowTitle(QStringLiteral("Fenster"));
             w.nameWord = QStringLiteral("Bezeichnung");
             w.okWord = QStringLiteral("Übernehmen");
             w.box->setText(QStringLiteral("Toleranzen"));
             w.button->setText(QStringLiteral("Fragen..."));
             w.menu->setTitle(QStringLiteral("&Datei"));
             w.menu->actions()[1]->setText(QStringLiteral("Öffnen..."));
             w.tabs->setTabText(1, QStringLiteral("Zweite"));
             w.model.setHorizontalHeaderLabels({QStringLiteral("Bauteil"), QStringLiteral("Wert")});
         },
         {"Warning: The menu item \"File\" has been changed or deleted. \"Datei\" will be selected "
          "instead.",
          "Warning: The menu item \"Open...\" has been changed or deleted. \"Öffnen...\" will be "
          "selected instead.",
          "Warning: The text or index of tab \"Second\" may be changed.",
          "Verifying: Failed for CheckPoint1"},
         false,
         QStringLiteral("Ctrl+D;inductors 1;Öffnen...;C1;")},
        {"renamed object",
         [](CWindow& w) { w.box->setObjectName(QStringLiteral("ToleranceBox")); },
         {"Info: The hierarchy of target widget has been changed, it is better to upgrade the "
          "script.",
          "Verifying: Failed for CheckPoint1"},
         false},
        {"moved into a frame",
         [](CWindow& w) {
             auto* frame = new QWidget(w.centralWidget());
             auto* inner = new QVBoxLayout(frame);
             inner->addWidget(w.box);
             w.centralWidget()->layout()->addWidget(frame);
         },
         {"Info: The hierarchy of target widget has been changed"},
         false},
        {"inserted row",
         [](CWindow& w) { w.model.insertRow(0, new QStandardItem(QStringLiteral("boards"))); },
         {"Warning: The index of item \"inductors\" has been changed."},
         false},
        {"inserted row, located by path",
         [](CWindow& w) {
             w.tree->setProperty(kLocRowPath, true);
             w.model.insertRow(0, new QStandardItem(QStringLiteral("boards")));
         },
         {"Verifying: Failed"},
         false},
        {"moved menu entry",
         [](CWindow& w) { w.menu->insertAction(w.menu->actions()[0], w.menu->actions()[1]); },
         {"Warning: The index of menu item \"Open...\" has been changed."}},
        {"renamed menu entry",
         [](CWindow& w) { w.menu->actions()[1]->setText(QStringLiteral("&Load...")); },
         {"Warning: The menu item \"Open...\" has been changed or deleted. \"Load...\" will be "
          "selected instead."},
         false,
         QStringLiteral("Ctrl+D;inductors 1;Load...;C1;")},
        {"deleted menu entries",
         [](CWindow& w) {
             while (w.menu->actions().size() > 1) {
                 w.menu->removeAction(w.menu->actions()[1]);
             }
         },
         {"Error: \"Open...\" is not there any more.", "Play Stopped"},
         false},
        {"moved tab",
         [](CWindow& w) { w.tabs->tabBar()->moveTab(1, 0); },
         {"Warning: The text or index of tab \"Second\" may be changed."}},
        {"moved column", [](CWindow& w) { w.tree->header()->moveSection(1, 0); }, {}, false},
        {"text in the field",
         [](CWindow& w) { w.edit->setText(QStringLiteral("old ")); },
         {"Warning: The initial text of the input widget is changed from \"\" to \"old \"."},
         false},
        {"two of one name",
         [](CWindow& w) {
             auto* twin = new QCheckBox(QStringLiteral("Tolerances"), w.centralWidget());
             twin->setObjectName(QStringLiteral("Box"));
             w.centralWidget()->layout()->addWidget(twin);
         },
         {"Warning: There are 2 QCheckBox objects sharing the same object name \"Box\" and the "
          "same "
          "display text."},
         false},
        {"disabled",
         [](CWindow& w) { w.box->setEnabled(false); },
         {"\n\tWarning: MouseButtonPress target widget is not enabled."},
         false},
        {"deleted",
         [](CWindow& w) { delete w.edit; },
         {"Error: Cannot locate KeyPress target widget.", "Play Stopped"},
         false},
    };
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.4";
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        window = std::make_unique<CWindow>();
        row.change(*window);
        const std::size_t before = log.Lines().size();
        const SPlayResult result = PlayRecord();
        std::string logged;
        for (std::size_t i = before; i < log.Lines().size(); ++i) {
            logged += log.Lines()[i] + '\n';
        }
        EXPECT_EQ(result.Good(), row.good) << logged;
        for (const std::string& notice : row.notices) {
            EXPECT_NE(logged.find(notice), std::string::npos) << logged;
        }
        if (row.notices.empty()) {
            EXPECT_EQ(logged.find("Warning"), std::string::npos) << logged;
            EXPECT_EQ(logged.find("Info"), std::string::npos) << logged;
        }
        if (!result.stopped) {
            EXPECT_EQ(window->done->text(), row.done) << logged;
        }
    }
}

TEST_F(PlayTest, ItemsAndColumnsAreFoundAgainOrTheLogSaysWhyNot)
{
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.4";
    RecordThis([](CWindow& w, CRecorder&) {
        const QModelIndex at = w.model.index(0, 0, w.model.index(1, 0));
        QTest::mouseClick(w.tree->viewport(), Qt::LeftButton, {}, w.tree->visualRect(at).center());
    });
    const struct
    {
        std::function<void(CWindow&)> change;
        const char* expected;
        bool good = false;
    } items[] = {
        {[](CWindow& w) { w.tree->setRowHidden(0, w.model.index(1, 0), true); },
         "Error: The index (0,0) is not visible."},
        {[](CWindow& w) { w.model.item(1)->removeRow(0); }, "Error: The index (0,0) is invalid."},
        {[](CWindow& w) { w.model.item(1)->child(0)->setText(QStringLiteral("L1")); },
         "Warning: The item \"inductors 1\" has been changed or deleted. \"L1\" will be selected "
         "instead.",
         true},
    };
    PlayChanged([](CWindow& w) { w.tree->collapseAll(); }, true); // branches are opened
    for (const auto& row : items) {
        const std::string logged = PlayChanged(row.change, row.good);
        EXPECT_NE(logged.find(row.expected), std::string::npos) << logged;
        EXPECT_EQ(logged.find("Cannot locate MouseButtonPress target widget") == std::string::npos,
                  row.good)
            << logged;
    }

    RecordThis([](CWindow& w, CRecorder&) {
        const QHeaderView& header = *w.tree->header();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(1) + 9, 5});
    });
    int section = -1;
    const auto clickable = [&](CWindow& w) {
        w.tree->header()->setSectionsClickable(true);
        QObject::connect(w.tree->header(), &QHeaderView::sectionPressed, &w,
                         [&](int at) { section = at; });
    };
    EXPECT_EQ(PlayChanged(clickable, true).find("Warning"), std::string::npos);
    EXPECT_EQ(section, 1);
    const std::string logged = PlayChanged(
        [&](CWindow& w) {
            clickable(w);
            w.model.insertColumn(1);
            w.model.setHorizontalHeaderItem(1, new QStandardItem(QStringLiteral("Size")));
        },
        true);
    EXPECT_NE(logged.find("Warning: The text or index of header \"Value\" may be changed."),
              std::string::npos)
        << logged;
    EXPECT_EQ(section, 2);
}

TEST_F(PlayTest, UnexpectedWindowsAreClosedAndTold)
{
    RecordSteps();
    window->show();
    QTimer::singleShot(0, window.get(), [this] {
        QDialog dialog(window.get());
        dialog.setObjectName(QStringLiteral("Surprise"));
        dialog.exec();
    });
    const SPlayResult result = PlayRecord();
    EXPECT_TRUE(result.Good()) << Logged();
    EXPECT_NE(Logged().find("Warning: Unexpected modal widget is closed: QDialog Surprise."),
              std::string::npos)
        << Logged();

    window = std::make_unique<CWindow>();
    window->show();
    window->menu->popup({0, 0});
    EXPECT_TRUE(PlayRecord().Good());
    EXPECT_NE(Logged().find("Info: Popup widget is closed: QMenu FileMenu."), std::string::npos)
        << Logged();
}

/// Asks before it closes, as those do that hold something unsaved.
class CAskingDialog : public QDialog
{
public:
    using QDialog::QDialog;
    void reject() override
    {
        QMessageBox box(QMessageBox::Question, QString(), QStringLiteral("Discard?"),
                        QMessageBox::Yes | QMessageBox::No, this);
        if (box.exec() == QMessageBox::Yes) {
            QDialog::reject();
        }
    }
};

TEST_F(PlayTest, WhatAsksBeforeItClosesDoesNotHoldThePlay)
{
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.4";
    const auto asking = [](CWindow& w) {
        w.button->disconnect();
        QObject::connect(w.button, &QPushButton::clicked, &w, [&w] {
            CAskingDialog dialog(&w);
            dialog.setObjectName(QStringLiteral("Asking"));
            dialog.exec();
            w.Did(QStringLiteral("closed"));
        });
    };
    const std::string closed = "Warning: Unexpected modal widget is closed: ";
    for (const bool inTheWay : {false, true}) {
        RecordThis([&](CWindow& w, CRecorder&) {
            w.button->disconnect();
            QTest::mouseClick(w.button, Qt::LeftButton);
            if (inTheWay) {
                QTest::keyClicks(w.edit, QStringLiteral("x"));
            }
        });
        const std::string logged = PlayChanged(asking, true);
        EXPECT_NE(logged.find(closed + "QDialog Asking."), std::string::npos) << logged;
        EXPECT_NE(logged.find(closed + "QMessageBox"), std::string::npos) << logged;
        EXPECT_TRUE(QTest::qWaitFor([this] { return !window->done->text().isEmpty(); }));
        EXPECT_EQ(logged.find(closed, logged.find("QMessageBox")), std::string::npos) << logged;
        EXPECT_EQ(window->edit->text(), inTheWay ? QStringLiteral("x") : QString());
    }
}

TEST_F(PlayTest, SubMenusAreOpenedWithoutAMove)
{
    window->show();
    CRecorder recorder(*window, Environment());
    ASSERT_TRUE(recorder.Start(path).Ok());
    QMenuBar* bar = window->menuBar();
    QTest::mousePress(bar, Qt::LeftButton, {},
                      bar->actionGeometry(window->menu->menuAction()).center());
    window->menu->setActiveAction(window->sub->menuAction());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->sub->isVisible(); }));
    ClickAction(*window->sub, window->sub->actionGeometry(window->sub->actions()[0]));
    ASSERT_TRUE(recorder.Stop().Ok());
    ASSERT_EQ(window->done->text(), QStringLiteral("Deep;"));
    window = std::make_unique<CWindow>();
    EXPECT_TRUE(PlayRecord().Good()) << Logged();
    EXPECT_EQ(window->done->text(), QStringLiteral("Deep;"));
}

TEST_F(PlayTest, StepByStep)
{
    RecordSteps();
    environment["VRSHL_GUIREPLAY_MANUAL"] = "1";
    environment["VRSHL_GUIREPLAY_FULLLOG"] = "1";
    window->show();
    const auto loaded = LoadRecord(path, SReplayOptions::Of(Environment()), log);
    CPlayer player(*window, Environment(), log);
    player.Play(*loaded, 0.0);
    EXPECT_TRUE(player.IsWaiting());
    for (int i = 1; i <= 4; ++i) {
        player.Next();
        ASSERT_TRUE(QTest::qWaitFor([&] { return player.IsWaiting(); }));
        EXPECT_EQ(player.Result().played, i);
    }
    EXPECT_EQ(window->edit->text(), QStringLiteral("x7")) << "press and release of two keys";
    EXPECT_NE(Logged().find("Playing KeyPress [#Window]"), std::string::npos) << Logged();
    player.Stop();
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_FALSE(player.Result().Good());
}

TEST_F(PlayTest, CheckPointsWaitAndTell)
{
    window->show();
    CRecorder recorder(*window, Environment());
    ASSERT_TRUE(recorder.Start(path).Ok());
    window->edit->setText(QStringLiteral("done"));
    ASSERT_TRUE(recorder.AddCheckPoint(*window->edit, recorder.NextGolden()).Ok());
    recorder.AddWatchPoint(*window->box);
    ASSERT_TRUE(recorder.Stop().Ok());
    EXPECT_EQ(folder.Read("GUIReplay_steps_CheckPoint1.ckp"), "Edit: \"done\", Enabled\n");
    const auto located = ParseLocator(folder.Read("GUIReplay_steps_CheckPoint1.loc"), "x");
    ASSERT_TRUE(located.Ok());
    EXPECT_EQ(located->target.widgets.back().objectName, "Edit");

    // Work beside the window ends later.
    window->edit->clear();
    QTimer::singleShot(300, window.get(),
                       [this] { window->edit->setText(QStringLiteral("done")); });
    environment["VRSHL_GUIREPLAY_SNAPCHK"] = "0";
    EXPECT_EQ(PlayRecord().checkPointsPassed, 1) << Logged();
    EXPECT_EQ(folder.Read("WatchPointFiles/WatchPoint1.ckp"), "Box: Unchecked, Enabled\n");
    EXPECT_NE(Logged().find("Info: Watch point " +
                            PathText(folder.Path() / "WatchPointFiles/WatchPoint1.ckp") +
                            " has been generated."),
              std::string::npos)
        << Logged();

    window->edit->setText(QStringLiteral("else"));
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.2";
    const SPlayResult failed = PlayRecord();
    EXPECT_EQ(failed.checkPointsFailed, 1);
    EXPECT_FALSE(failed.Good());
    EXPECT_EQ(folder.Read("CheckPointFiles/CheckPoint1.ckp"), "Edit: \"else\", Enabled\n");
    int pictures = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(folder.Path() / "CheckPointFiles")) {
        pictures += file.path().extension() == ".png" ? 1 : 0;
    }
    EXPECT_GE(pictures, 1) << "the window as it was, and the screen where that can be seen";
    std::filesystem::remove(folder.Path() / "GUIReplay_steps_CheckPoint1.ckp");
    EXPECT_FALSE(PlayRecord().Good()) << "no golden file is no pass";
}

TEST_F(PlayTest, PicturesAreComparedWhereAskedFor)
{
    environment["VRSHL_GUIREPLAY_SNAPCHK"] = "1";
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.2";
    RecordThis([](CWindow& w, CRecorder& recorder) {
        EXPECT_TRUE(recorder.AddCheckPoint(*w.box, recorder.NextGolden()).Ok());
    });
    std::string logged = PlayChanged([](CWindow&) {}, true);
    EXPECT_NE(logged.find("Verifying: Passed for CheckPoint1.png."), std::string::npos) << logged;
    const auto paint = [](CWindow& w) {
        QPalette red;
        red.setColor(QPalette::WindowText, Qt::red);
        w.box->setPalette(red);
    };
    logged = PlayChanged(paint, false);
    EXPECT_NE(logged.find("Verifying: Passed for CheckPoint1.\n"), std::string::npos) << logged;
    EXPECT_NE(logged.find("Verifying: Failed for CheckPoint1.png, compare the following two files "
                          "for details:\n\t[Golden]" +
                          PathText(folder.Path() / "GUIReplay_steps_CheckPoint1.png") +
                          "\n\t[TestResult]" +
                          PathText(folder.Path() / "CheckPointFiles/CheckPoint1.png")),
              std::string::npos)
        << logged;
    std::filesystem::remove(folder.Path() / "GUIReplay_steps_CheckPoint1.png");
    PlayChanged([](CWindow&) {}, false); // no golden picture is no pass
    environment.erase("VRSHL_GUIREPLAY_SNAPCHK");
    PlayChanged(paint, true);
}

TEST_F(PlayTest, LinesMayStandInAnyOrderWhereAskedFor)
{
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.2";
    RecordThis([](CWindow& w, CRecorder& recorder) {
        EXPECT_TRUE(recorder.AddCheckPoint(*w.tree, recorder.NextGolden()).Ok());
    });
    const auto turn = [](CWindow& w) {
        w.tree->setSortingEnabled(true);
        w.tree->sortByColumn(0, Qt::DescendingOrder);
        w.tree->expandAll();
    };
    PlayChanged(turn, false);
    environment["VRSHL_GUIREPLAY_CHKNOORDER"] = "1";
    PlayChanged(turn, true);
    EXPECT_EQ(folder.Read("CheckPointFiles/CheckPoint1.ckp.noorder"),
              folder.Read("CheckPointFiles/CheckPoint1.golden.ckp.noorder"));
}

TEST_F(PlayTest, TheLogTellsWhatWasFoundOnTheWay)
{
    environment["VRSHL_GUIREPLAY_STEP_TIMEOUT"] = "0.4";
    environment["VRSHL_GUIREPLAY_FULLLOG"] = "1";
    environment["VRSHL_GUIREPLAY_QTLOGPATH"] = PathText(folder.Path() / "toolkit.log");
    RecordThis([](CWindow& w, CRecorder& recorder) {
        EXPECT_TRUE(recorder.AddCheckPoint(*w.edit, recorder.NextGolden()).Ok());
    });
    folder.Write("GUIReplay_steps.brf", "##Version=1\n");
    path.replace_extension(".brf");
    std::string logged = PlayChanged(
        [](CWindow& w) {
            w.edit->hide();
            QTimer::singleShot(0, &w, [] { qWarning("said by the toolkit"); });
        },
        true);
    EXPECT_NE(logged.find("\n\tWarning: CheckPoint target widget is not visible."),
              std::string::npos)
        << logged;
    EXPECT_NE(logged.find("Playing CheckPoint [#Window]"), std::string::npos) << logged;
    EXPECT_EQ(folder.Read("toolkit.log"), "said by the toolkit\n");
    const std::string mismatch = "Warning: The .brf file may not match the .xml file.";
    EXPECT_NE(folder.Read("GUIReplay_steps.playlog").find("]--" + mismatch), std::string::npos);

    environment["VRSHL_GUIREPLAY_QTLOGPATH"] = PathText(folder.Path() / "absent" / "toolkit.log");
    logged = PlayChanged([](CWindow&) {}, true);
    EXPECT_NE(logged.find("toolkit.log' cannot be written."), std::string::npos) << logged;

    // Waiting for a state tells what it has to tell once.
    logged = PlayChanged(
        [](CWindow& w) {
            w.edit->setObjectName(QStringLiteral("Edit2"));
            w.box->setObjectName(QStringLiteral("Edit"));
        },
        false);
    const std::string info = "Info: The hierarchy of target widget has been changed";
    EXPECT_EQ(logged.find(info), logged.rfind(info)) << logged;
}

TEST_F(PlayTest, StatesAreTheSameInAnotherSize)
{
    window->show();
    window->box->setChecked(true);
    window->edit->setText(QStringLiteral("x7r"));
    window->model.item(1)->setEnabled(false);
    window->model.item(2)->setCheckable(true);
    const QString state = StateOf(*window->centralWidget());
    EXPECT_EQ(state.toStdString(), std::string("QWidget: Enabled\n"
                                               "Edit: \"x7r\", Enabled\n"
                                               "Box: Checked, Enabled\n"
                                               "Ask: \"Ask...\", Enabled\n"
                                               "--------\n"
                                               "Tree: items=3 columns=2, Enabled\n"
                                               "  caps\t-\n"
                                               "    caps 1\t1\n"
                                               "  inductors [Disabled]\t-\n"
                                               "    inductors 1\t1\n"
                                               "  resistors [Unchecked]\t-\n"
                                               "    resistors 1\t1\n"
                                               "--------\n"
                                               "Tabs: count=2 active=\"First\"\n"
                                               "QLabel: \"first\", Enabled\n"
                                               "Done: \"\", Enabled\n"));
    window->resize(250, 220);
    UseOtherStyle(*window);
    QTest::qWait(1);
    EXPECT_EQ(StateOf(*window->centralWidget()).toStdString(), state.toStdString());
    window->tree->setProperty(kRecChkCustomContent, QStringLiteral("three parts"));
    EXPECT_EQ(StateOf(*window->tree), QStringLiteral("three parts\n"));
}

TEST_F(PlayTest, ComposedInputIsNotSupported)
{
    window->show();
    SLoadedRecord loaded;
    loaded.path = path;
    SRecordedEvent& event = loaded.record.events.emplace_back();
    event.fields.type = EEvent::InputMethod;
    event.target.topIsMain = true;
    event.target.widgets = {LevelOf(*window)};
    EXPECT_EQ(PlayLoaded(loaded).errors, 1);
    EXPECT_NE(Logged().find("Error: InputMethod is not yet fully supported. It would be better to "
                            "use default english input when recording."),
              std::string::npos);
}

} // namespace
} // namespace zov::ui::replay
