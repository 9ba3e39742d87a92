// SPDX-License-Identifier: Apache-2.0
// What the frame shows and how its commands, searches and panes behave.
#include "app/assignment/AssignFrameSupport.h"
#include "app/assignment/DiscreteGuess.h"
#include "app/assignment/DlgAssignModel.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace zov::app::test {
namespace {

using enum ERecordType;

const std::vector<SModel> kModels = {{Capacitor, "C100N", "RLC", "C 100n;0402", "ceramic"},
                                     {Resistor, "R10K"},
                                     {Capacitor, "C100N_50V"},
                                     {Ic, "U1"}};
const char* const kBoard = "Component,RefDes,Required Type\n"
                           "C100N,C1 C2 C3,Capacitor\nR10K,R1,\nNONE,N1 N2,\n";

QString Entries(const QMenu& menu)
{
    QStringList texts;
    for (const QAction* action : menu.actions()) {
        texts += action->isSeparator() ? QStringLiteral("-") : action->text();
    }
    return texts.join(QLatin1Char('|'));
}

TEST_F(CAssignFrameTest, MenusAndToolBarsAreInTheirOrder)
{
    QStringList titles;
    for (const QAction* action : frame.menuBar()->actions()) {
        titles += action->text();
    }
    EXPECT_EQ(titles.join(QLatin1Char(' ')), QStringLiteral("&File &Assign &View &Help"));
    EXPECT_EQ(Entries(*frame.findChild<QMenu*>(QStringLiteral("FileMenu"))),
              QStringLiteral("&Open Design...|&Save Library...|-|&Exit"));
    EXPECT_TRUE(Entries(*frame.findChild<QMenu*>(QStringLiteral("AssignMenu")))
                    .startsWith(QStringLiteral(
                        "&Find Model...|&Browse Model...|&Create Model...|&Import Map File...|"
                        "Expo&rt Map File...|&Expand|Colla&pse|"
                        "&Show Models with Sub-Model Options...|-")));
    for (const char* bar : {"Model Assignment", "Model Creation"}) {
        const auto bars = frame.findChildren<QToolBar*>();
        EXPECT_TRUE(std::ranges::any_of(bars, [&](const QToolBar* one) {
            return one->windowTitle() == QLatin1String(bar);
        })) << bar;
    }
    // Every command of both tables has one handler.
    for (const auto& table : {AssignFrameCommands(), AssignViewCommands()}) {
        for (const ui::SCommand& command : table) {
            EXPECT_NE(frame.FindTarget(command.id), nullptr) << command.name;
            EXPECT_FALSE(frame.Actions().Action(command.id)->text().isEmpty()) << command.name;
        }
    }
    EXPECT_EQ(frame.Actions().Action(ID_IMPORT_MAP_FILE)->toolTip(),
              QStringLiteral("Assign Model by Map File"));
}

class CBrokenFrm final : public CAssignFrm
{
public:
    CBrokenFrm(CZovSession& session, QSettings& layout, const FEnvironment& environment, int step)
        : CAssignFrm(session, layout, environment)
        , m_left(step)
    {
    }

private:
    QToolBar* NewToolBar(const QString& title, const char* objectName) override
    {
        return m_left-- == 0 ? nullptr : CAssignFrm::NewToolBar(title, objectName);
    }
    CAssignModelView* NewView() override { return m_left-- == 0 ? nullptr : CAssignFrm::NewView(); }
    int m_left;
};

TEST_F(CAssignFrameTest, WhatCannotBeCreatedStopsTheFrame)
{
    const char* const texts[] = {
        "Failed to create toolbar", "Failed to create ZvMgr Assign toolbar",
        "Failed to create ZvMgr Assign toolbar", "Failed to create AssignView"};
    for (int step = 0; step < 4; ++step) {
        CBrokenFrm broken(session, layout, environment, step);
        const CResult<void> made = broken.OnCreate();
        ASSERT_FALSE(made.Ok());
        EXPECT_EQ(made.Error().text, texts[step]);
    }
}

TEST_F(CAssignFrameTest, ADesignIsMappedWhenItIsOpened)
{
    OpenProject(Library("board", kModels));
    EXPECT_FALSE(IsEnabled(ID_AUTO_MAPPING));
    OpenDesign(kBoard);
    EXPECT_EQ(Cells(), QStringLiteral("C100N=C100N : RLC|R10K=R10K|NONE=|"));
    EXPECT_EQ(Cells(EAssignColumn::Status),
              QStringLiteral("C100N=Validated, more than one model matches|R10K=Validated|"
                             "NONE=Model Not Found|"));
    EXPECT_EQ(StateOf(*frame.View().Table(), *frame.View().Table()->Rows()[0]),
              EAssignState::Ambiguous);
    EXPECT_FALSE(
        frame.View().model()->index(2, 6).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_FALSE(frame.isWindowModified()) << "a mapping can be had again";

    Trigger(ID_ENABLE_SUB_MODELS);
    EXPECT_TRUE(Cells().startsWith(QStringLiteral("C100N=C100N|")));
    EXPECT_FALSE(frame.Actions().Action(ID_ENABLE_SUB_MODELS)->isChecked());
}

TEST_F(CAssignFrameTest, ViewsAndLayoutsSwitch)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    frame.show();
    const auto columns = [&] {
        QStringList shown;
        const QHeaderView& header = *frame.View().header();
        for (int i = 0; i < header.count(); ++i) {
            if (!header.isSectionHidden(i)) {
                shown += frame.View().model()->headerData(i, Qt::Horizontal).toString();
            }
        }
        return shown.join(QLatin1Char('|'));
    };
    EXPECT_EQ(columns(), QStringLiteral("Component|Model Type|Assigned Models|Description|Status"));
    Trigger(ID_VIEW_ORIGIN);
    EXPECT_EQ(
        columns(),
        QStringLiteral("Component|Original Model|Model Type|Assigned Model|Description|Status"));
    const QHeaderView& header = *frame.View().header();
    EXPECT_NEAR(header.sectionSize(1) * 15.0 / 25.0, header.sectionSize(0), 2.0);

    EXPECT_EQ(frame.Actions().Action(ID_SWITCH_VIEW)->text(),
              QStringLiteral("Switch to RefDes View"));
    Select({1});
    Trigger(ID_SWITCH_VIEW);
    EXPECT_EQ(columns(),
              QStringLiteral("RefDes|Device|Model Type|Assigned Model|Description|Status"));
    EXPECT_EQ(Cells(EAssignColumn::Origin),
              QStringLiteral("C1=C100N|C2=C100N|C3=C100N|R1=R10K|N1=NONE|N2=NONE|"));
    EXPECT_EQ(frame.View().currentIndex().row(), 3) << "the same component is current";
    EXPECT_EQ(frame.Actions().Action(ID_SWITCH_VIEW)->text(),
              QStringLiteral("Switch to Model/RefDes View"));
    Trigger(ID_VIEW_ORIGIN);
    EXPECT_EQ(columns(), QStringLiteral("RefDes|Model Type|Assigned Models|Description|Status"));
}

TEST_F(CAssignFrameTest, ComponentsOpenIntoTheirModels)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    Trigger(ID_SWITCH_VIEW);
    Select({0, 1, 2});
    Find(QStringLiteral("C100N_50V"));
    Select({2});
    Trigger(ID_SWITCH_VIEW);
    Trigger(ID_EXPAND_MODEL);
    const QAbstractItemModel& rows = *frame.View().model();
    const QModelIndex first = rows.index(0, 0);
    ASSERT_EQ(rows.rowCount(first), 2);
    EXPECT_EQ(rows.index(0, 3, first).data().toString(), QStringLiteral("C100N : RLC"));
    EXPECT_EQ(rows.index(0, 0, first).data().toString(), QString()) << "no designator follows it";
    EXPECT_EQ(rows.index(1, 0, first).data().toString(), QStringLiteral("C1 C2 C3"));
    EXPECT_EQ(rows.index(1, 3, first).data().toString(), QStringLiteral("C100N_50V"));
    EXPECT_TRUE(frame.View().isExpanded(first));
    EXPECT_EQ(rows.rowCount(rows.index(2, 0)), 0);
    Trigger(ID_COLLAPSE_MODEL);
    EXPECT_FALSE(frame.View().isExpanded(first));
}

TEST_F(CAssignFrameTest, TheFilterFindsAndSteps)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    Trigger(ID_SWITCH_VIEW);
    auto& pattern = *frame.findChild<QComboBox*>(QStringLiteral("FindPattern"));
    pattern.setEditText(QStringLiteral("c1, R* N2"));
    Trigger(ID_ZVMGR_FIND_ALL);
    EXPECT_EQ(frame.View().Table()->FoundRows().size(), 3U);
    EXPECT_EQ(frame.View().currentIndex().row(), 0);
    Trigger(ID_ZVMGR_FIND_NEXT);
    EXPECT_EQ(frame.View().currentIndex().row(), 3);
    Trigger(ID_ZVMGR_FIND_PREV);
    Trigger(ID_ZVMGR_FIND_PREV);
    EXPECT_EQ(frame.View().currentIndex().row(), 5);
    Trigger(ID_FOUND_ONLY);
    EXPECT_EQ(Cells(EAssignColumn::Name), QStringLiteral("C1=C1|R1=R1|N2=N2|"));
    Trigger(ID_AMBIGUOUS_ONLY);
    EXPECT_EQ(Cells(EAssignColumn::Name), QStringLiteral("C1=C1|"));
    pattern.setEditText({});
    QTest::keyClick(pattern.lineEdit(), Qt::Key_Return);
    Trigger(ID_ZVMGR_FIND_ALL);
    EXPECT_EQ(Cells(EAssignColumn::Name), QStringLiteral("C1=C1|C2=C2|C3=C3|"));
    Trigger(ID_FOUND_ONLY);
    EXPECT_EQ(frame.View().model()->rowCount(), 6);
}

TEST_F(CAssignFrameTest, TheLegendShowsWhatTheListShows)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    const QAbstractItemModel& rows = *frame.View().model();
    const auto shownBy = [](const QModelIndex& index) {
        return std::pair(index.data(Qt::ForegroundRole).value<QBrush>().color(),
                         index.data(Qt::DecorationRole).value<QIcon>().cacheKey());
    };
    answers.ThenDialog([&](QDialog& dialog) {
        const auto* legend = dialog.findChild<QTreeView*>(QStringLiteral("ui_IDC_LEGEND"));
        const QAbstractItemModel& model = *legend->model();
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex status = rows.index(row, 6);
            const QModelIndexList same = model.match(
                model.index(0, 0, model.index(0, 0)), Qt::DisplayRole,
                status.data().toString().section(QLatin1Char(','), 0, 0), -1, Qt::MatchStartsWith);
            EXPECT_TRUE(std::any_of(same.begin(), same.end(), [&](const QModelIndex& index) {
                return shownBy(index) == shownBy(status);
            })) << status.data().toString().toStdString();
        }
        for (int group = 0; group < model.rowCount(); ++group) {
            EXPECT_TRUE(legend->isExpanded(model.index(group, 0)));
            EXPECT_GT(model.rowCount(model.index(group, 0)), 0);
        }
    });
    Trigger(ID_ASSIGN_LEGEND);
    EXPECT_TRUE(answers.AllUsed());
}

TEST_F(CAssignFrameTest, TheWhyFollowsTheRow)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    const auto& why = *frame.findChild<QTextBrowser*>(QStringLiteral("Why"));
    const auto waitFor = [&](const char* text) {
        return QTest::qWaitFor([&] { return why.toPlainText().contains(QLatin1String(text)); });
    };
    Select({0});
    EXPECT_TRUE(waitFor("exact by 'Model Name'")) << why.toPlainText().toStdString();
    EXPECT_TRUE(why.toPlainText().contains(
        QStringLiteral("C100N_50V (Capacitor) in board: only a part of it matches")));
    EXPECT_TRUE(frame.View()
                    .model()
                    ->index(0, 6)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .endsWith(QStringLiteral("exact by 'Model Name'")));
    Select({2});
    EXPECT_TRUE(waitFor("No model is assigned."));
    Find(QStringLiteral("U1"));
    EXPECT_TRUE(waitFor("chosen by the user"));
}

TEST_F(CAssignFrameTest, LibrariesThatChangeAreFollowed)
{
    OpenProject(Library("board", kModels));
    OpenDesign(kBoard);
    AddExternal(Library("more", {{Spice, "NONE"}}));
    EXPECT_EQ(Cells(), QStringLiteral("C100N=C100N : RLC|R10K=R10K|NONE=NONE|"))
        << "the mapping looks into a new library";
    const CZovSession::TLibrary project = session.ProjectLibrary();
    session.BeginChange(project);
    project->Remove(project->At(1));
    project->At(0).SetString(EPropId::Description, "new words");
    session.EndChange(project);
    Settle();
    EXPECT_EQ(Cells(), QStringLiteral("C100N=C100N : RLC|R10K=|NONE=NONE|"));
    EXPECT_EQ(Cells(EAssignColumn::Status),
              QStringLiteral("C100N=Validated, more than one model matches|"
                             "R10K=Model Not Found|NONE=Validated|"));
    session.SwitchOn(*session.Set().Externals()[0].library, false);
    Settle();
    EXPECT_TRUE(Cells(EAssignColumn::Status).contains(QStringLiteral("NONE=Model Not Found|")));
    session.RemoveNode(session.Tree().Find(*project));
    Settle();
    EXPECT_EQ(Cells(), QStringLiteral("C100N=|R10K=|NONE=NONE|"));
}

TEST_F(CAssignFrameTest, TheWindowLivesWhileItSearches)
{
    CZovLibrary library;
    library.Reserve(300000);
    for (int i = 0; i < 300000; ++i) {
        library.Add(Resistor).SetString(EPropId::ModelName, "PART-" + std::to_string(i * 7));
    }
    CNullLog silent;
    const auto path = folder.Path() / "large.zov";
    ASSERT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
    OpenProject(path);
    std::string board = "Component,RefDes\n";
    for (int i = 0; i < 3000; ++i) {
        board += "ART-" + std::to_string(i * 91) + ",R" + std::to_string(i) + "\n";
    }
    frame.show();
    frame.OpenDesign(Text(folder.Write("large.csv", board)));
    QElapsedTimer since;
    since.start();
    qint64 longest = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout,
                     [&] { longest = std::max(longest, since.restart()); });
    beat.start(5);
    bool sawProgress = false;
    QElapsedTimer work;
    work.start();
    while (session.Job().IsRunning() || frame.View().IsBusy()) {
        QTest::qWait(5);
        sawProgress =
            sawProgress || frame.findChild<QWidget*>(QStringLiteral("CancelJob"))->isVisible();
    }
    constexpr qint64 kLongMs = 500; // of work that has to show its progress
    EXPECT_TRUE(sawProgress || work.elapsed() < kLongMs);
    EXPECT_LT(longest, 1000) << "even in a build without optimisation, beside other work";
    EXPECT_EQ(frame.View().Table()->Rows()[5]->assigned.size(), 1U);

    // Once more, cancelled: nothing is assigned.
    frame.OpenDesign(Text(folder.Write("again.csv", board)));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return frame.View().Title() == QStringLiteral("again.csv") &&
               frame.View().Job().IsRunning();
    }));
    frame.View().StopWork();
    Settle();
    EXPECT_TRUE(frame.View().Table()->Rows()[5]->assigned.empty());
}

TEST_F(CAssignFrameTest, ValuesOfDiscretesAreRead)
{
    struct SCase
    {
        const char* name;
        const char* value;
        const char* refdes;
        ERecordType required;
        std::optional<ERecordType> type;
        double number = 0.0;
    };
    const SCase cases[] = {
        {"100nF", "", "C1", Any, Capacitor, 1e-7},
        {"X", "4u7/10V 0603", "C7", Any, Capacitor, 4.7e-6},
        {"X", "4,7 uF", "C7", Any, Capacitor, 4.7e-6},
        {"CAP_2.2uF_16V", "", "", Any, Capacitor, 2.2e-6},
        {"R_10k-1%", "", "R1", Any, Resistor, 1e4},
        {"X", "100", "R3", Any, Resistor, 100.0},
        {"X", "100", "C3", Any, std::nullopt},
        {"2.2uH", "", "", Any, Inductor, 2.2e-6},
        {"KPL2520", "1uH", "L1", Inductor, Inductor, 1e-6},
        {"XM7-144", "", "U1", Any, std::nullopt},
        {"100nF", "", "C1", Ic, std::nullopt},
        {"100nF", "", "R1", Resistor, std::nullopt},
        {"10m", "", "", Any, std::nullopt},
    };
    for (const SCase& one : cases) {
        SDesignComponent component{one.name, {}, "", one.required, false, false, one.value};
        if (*one.refdes != '\0') {
            component.refdes.emplace_back(one.refdes);
        }
        const auto guess = GuessDiscrete(component);
        ASSERT_EQ(guess.has_value(), one.type.has_value()) << one.name << " " << one.value;
        if (guess) {
            EXPECT_EQ(guess->type, *one.type) << one.name << " " << one.value;
            EXPECT_EQ(guess->value, one.number) << one.name << " " << one.value;
        }
    }
    const auto full = GuessDiscrete({"X", {"C1"}, "", Any, false, false, "4u7/10V 0603"});
    EXPECT_EQ(full->voltage, 10.0);
    EXPECT_EQ(full->size, "0603E");
}

TEST_F(CAssignFrameTest, DiscreteModelsAreMadeOfValues)
{
    answers.ThenPath({});
    OpenDesign("Component,RefDes,Value\nC_A,C1 C2,100nF 16V\nR_A,R1,10k\nU_A,U1,chip\n");
    Trigger(ID_CREATE_DISC_MODEL);
    EXPECT_TRUE(LastPrompt().startsWith(QStringLiteral("The models go to the project library")));
    OpenProject(Library("board", {}));
    Trigger(ID_CREATE_DISC_MODEL);
    EXPECT_EQ(Cells(), QStringLiteral("C_A=C_A|R_A=R_A|U_A=|"));
    const auto& records = session.ProjectLibrary()->Records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0]->GetDouble(EPropId::Cnom), 1e-7);
    EXPECT_EQ(records[0]->GetDouble(EPropId::Volt), 16.0);
    EXPECT_EQ(records[1]->GetDouble(EPropId::Resistance), 1e4);
    EXPECT_TRUE(session.IsModified(*session.ProjectLibrary()));
    EXPECT_TRUE(Output().contains(QStringLiteral("'U_A': no value")));
    Trigger(ID_CREATE_DISC_MODEL);
    EXPECT_EQ(session.ProjectLibrary()->Count(), 2U) << "they are there already";
}

} // namespace
} // namespace zov::app::test
