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
#include <QPushButton>
#include <QStandardItemModel>
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
        dialog.setWindowTitle(QStringLiteral("Name"));
        auto* layout = new QVBoxLayout(&dialog);
        auto* name = new QLineEdit(&dialog);
        name->setObjectName(QStringLiteral("NameField"));
        auto* ok = new QPushButton(QStringLiteral("&OK"), &dialog);
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
        recorder.Start(path);
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
    } cases[] = {
        {"larger window", [](CWindow& w) { w.resize(1100, 900); }, {}},
        {"small window", [](CWindow& w) { w.resize(330, 300); }, {}},
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
                 widget->setStyle(QStyleFactory::create(QStringLiteral("Windows")));
             }
         },
         {}},
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
        if (!result.stopped && std::string(row.name) != "renamed menu entry" &&
            std::string(row.name) != "text in the field") {
            EXPECT_EQ(window->done->text(), kAllDone) << logged;
        }
    }
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

TEST_F(PlayTest, SubMenusAreOpenedWithoutAMove)
{
    window->show();
    CRecorder recorder(*window, Environment());
    recorder.Start(path);
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
    recorder.Start(path);
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
    EXPECT_NE(Logged().find("Info: Watch point "), std::string::npos);

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
    window->setStyle(QStyleFactory::create(QStringLiteral("Windows")));
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
