// SPDX-License-Identifier: Apache-2.0
// Every question and refusal of the assignment frame, with each answer.
#include "app/assignment/AssignFrameSupport.h"
#include "app/assignment/DlgAssignModel.h"
#include "app/assignment/DlgCreateModel.h"

#include <QCheckBox>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTreeView>

namespace zov::app::test {
namespace {

using enum ERecordType;
using ui::EAnswer;

class CPromptTest : public CAssignFrameTest
{
protected:
    void SetUp() override
    {
        OpenProject(Library(
            "board",
            {{Ic, "CPU"}, {Ic, "FPGA", "FAST"}, {Capacitor, "C100N"}, {Spice, "R 0402, 10K"}}));
        AddExternal(Library("other", {{Ic, "CPU", "NEW"}, {Capacitor, "C100N"}}));
        variables["KVE_TAVRELY_ZOV_DLLVER"] = "1"; // nothing is mapped by itself
        OpenDesign("Component,RefDes\nA,U1 U2\nB,U3\nC,U4\n");
    }
    /// Gives rows the model of that place in a library.
    void Give(std::initializer_list<int> rows, const CZovSession::TLibrary& library, std::size_t at)
    {
        Select(rows);
        answers.ThenDialog([&](QDialog& dialog) {
            auto& list = *dialog.findChild<CModelListView*>(QStringLiteral("BrowseModels"));
            ASSERT_TRUE(QTest::qWaitFor([&] { return !list.Model().IsFilling(); }));
            list.Select(library->At(at));
            dialog.accept();
        });
        Trigger(ID_BROWSE_MODEL);
    }
    [[nodiscard]] CZovSession::TLibrary Project() const { return session.ProjectLibrary(); }
    QString models;
    [[nodiscard]] CZovSession::TLibrary Other() const
    {
        return session.Set().Externals()[0].library;
    }
};

TEST_F(CPromptTest, AModelOfOtherComponentsIsOverwrittenOnYesOnly)
{
    Give({0, 1}, Project(), 0);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU|B=CPU|C=|"));
    const QString question = QStringLiteral(
        "The model has already been assigned to the component: \nA CPU\nB CPU\n\nDo you want to "
        "overwrite it with the new model from the ZOV library?\nClick Yes to continue.\nClick No "
        "to retain the existing model.");
    answers.Then(EAnswer::No);
    Give({2}, Other(), 0);
    EXPECT_EQ(LastPrompt(), question);
    EXPECT_EQ(answers.Shown().back().buttons, ui::EButtons::YesNo);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU|B=CPU|C=CPU : NEW|"));
    answers.Then(EAnswer::Yes);
    Give({2}, Other(), 0);
    EXPECT_EQ(LastPrompt(), question);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU : NEW|B=CPU : NEW|C=CPU : NEW|"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CPromptTest, DiscreteModelsAreOverwrittenOnYesOnly)
{
    Give({0}, Project(), 2);
    const auto libraryOfA = [&] {
        return frame.View().Table()->ModelsOf(*frame.View().Table()->Rows()[0])[0].library;
    };
    for (const EAnswer answer : {EAnswer::No, EAnswer::Yes}) {
        answers.Then(answer);
        Give({1}, Other(), 1);
        EXPECT_EQ(LastPrompt(),
                  QStringLiteral("The model has already been assigned to discrete components\nDo "
                                 "you want to overwrite it with the new model from the ZOV "
                                 "library?\nClick Yes to continue.\nClick No to retain the "
                                 "existing model."));
        EXPECT_EQ(libraryOfA() == Other(), answer == EAnswer::Yes);
    }
}

TEST_F(CPromptTest, AnotherModelForOneDesignatorIsRefusedInTheOutput)
{
    Trigger(ID_SWITCH_VIEW);
    Give({0}, Project(), 0);
    Give({1}, Project(), 1);
    EXPECT_EQ(Cells(), QStringLiteral("U1=CPU|U2=|U3=|U4=|"));
    const char* const refusal = "Cannot assign model 'FPGA' to the component 'A'. Choose the valid "
                                "model 'CPU' and try again.";
    EXPECT_TRUE(Output().contains(QLatin1String(refusal)));
    EXPECT_EQ(log.Lines().back(), refusal) << "also in the library manager's pane";
}

TEST_F(CPromptTest, RemovingAsksForOneAndForAll)
{
    Give({0}, Project(), 0);
    Select({0});
    answers.Then(EAnswer::No);
    Trigger(ID_REMOVE_MODEL);
    EXPECT_EQ(LastPrompt(), QStringLiteral("The model 'CPU', has been assigned to the 'A'. Do you "
                                           "want to remove the model from the 'A'?\n"));
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU|B=|C=|"));
    answers.Then(EAnswer::Yes);
    Trigger(ID_REMOVE_MODEL);
    EXPECT_EQ(Cells(), QStringLiteral("A=|B=|C=|"));
    EXPECT_FALSE(IsEnabled(ID_REMOVE_MODEL));

    Give({0, 1}, Project(), 0);
    const QString all = QStringLiteral(
        "The model has already been assigned to the component:\nB CPU\n and will be removed from "
        "there as well. Do you want to remove the model?\n");
    Select({0, 1}); // one question for both: the answer holds for the model
    answers.Then(EAnswer::No);
    Trigger(ID_REMOVE_MODEL);
    EXPECT_EQ(LastPrompt(), all);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU|B=CPU|C=|"));
    answers.Then(EAnswer::Yes);
    Trigger(ID_REMOVE_MODEL);
    EXPECT_EQ(LastPrompt(), all);
    EXPECT_EQ(Cells(), QStringLiteral("A=|B=|C=|"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CPromptTest, MapFilesGoOutAndComeBack)
{
    Give({0}, Project(), 3);
    Give({1}, Other(), 0);
    EXPECT_TRUE(frame.isWindowModified());
    answers.ThenPath({});
    Trigger(ID_EXPORT_MAP_FILE);
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Save Map File"));
    EXPECT_EQ(LastPrompt(), QStringLiteral("ZOV Map File (*.csv)"));
    EXPECT_TRUE(frame.isWindowModified());
    answers.ThenPath(Text(folder.Path() / "nowhere" / "map.csv"));
    Trigger(ID_EXPORT_MAP_FILE);
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Fatal Error"));
    EXPECT_TRUE(LastPrompt().endsWith(QStringLiteral("map.csv creating file")));
    answers.ThenPath(Text(folder.Path() / "map"));
    Trigger(ID_EXPORT_MAP_FILE);
    EXPECT_FALSE(frame.isWindowModified());
    EXPECT_NE(
        folder.Read("map.csv").find("A,U1 U2,R_0402__10K," + PathText(Project()->Path()) + ",\n"),
        std::string::npos);

    Select({0});
    answers.Then(EAnswer::Yes);
    Trigger(ID_REMOVE_MODEL);
    answers.ThenPath({});
    Trigger(ID_IMPORT_MAP_FILE);
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Import Map File"));
    EXPECT_EQ(Cells(), QStringLiteral("A=|B=CPU : NEW|C=|"));
    answers.ThenPath(Text(folder.Path() / "map.csv"));
    Trigger(ID_IMPORT_MAP_FILE);
    EXPECT_EQ(Cells(), QStringLiteral("A=R 0402, 10K|B=CPU : NEW|C=|"));
    EXPECT_FALSE(frame.isWindowModified());
    EXPECT_TRUE(
        Cells(EAssignColumn::Status).startsWith(QStringLiteral("A=Validated|B=Validated|")));

    const auto import = [&](const std::filesystem::path& path) {
        answers.ThenPath(Text(path));
        Trigger(ID_IMPORT_MAP_FILE);
        return answers.Shown().back().title + QLatin1Char(':') + LastPrompt();
    };
    EXPECT_TRUE(
        import(folder.Path() / "absent.csv").endsWith(QStringLiteral("absent.csv opening file")));
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Fatal Error"));
    const QString newer = import(folder.Write("new.csv", "p,2.00\nt\nh\nC,U4,CPU,,\n\n"));
    EXPECT_TRUE(newer.startsWith(QStringLiteral("Error:")));
    EXPECT_TRUE(newer.endsWith(QStringLiteral("new.csv, file version is too new")));
    EXPECT_TRUE(Cells().endsWith(QStringLiteral("C=|"))) << "refused whole";
}

TEST_F(CPromptTest, TheMapFileOfADesignIsTakenWhenItIsOpenedAgain)
{
    Give({0}, Project(), 0);
    answers.ThenPath(Text(folder.Path() / "map.csv"));
    Trigger(ID_EXPORT_MAP_FILE);
    variables.clear();
    OpenDesign("Component,RefDes\nA,U1 U2\nCPU,U3\n");
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU|CPU=|")) << "as they stand: nothing is mapped";
    std::filesystem::remove(folder.Path() / "map.csv");
    OpenDesign("Component,RefDes\nA,U1 U2\nCPU,U3\n");
    EXPECT_EQ(Cells(), QStringLiteral("A=|CPU=|"));
    variables["KVE_TAVRELY_PWT_ASSIGNMODEL"] = "1";
    OpenDesign("Component,RefDes\nA,U1 U2\nCPU,U3\n");
    EXPECT_EQ(Cells(), QStringLiteral("A=FPGA : FAST|CPU=CPU|"));
}

TEST_F(CPromptTest, AssignmentsAreNotLostUnasked)
{
    Give({0}, Project(), 0);
    answers.Then(EAnswer::Cancel);
    EXPECT_FALSE(frame.close());
    EXPECT_EQ(LastPrompt(), QStringLiteral("The assignments of 'board.csv' are not exported as a "
                                           "map file. Export them?"));
    answers.Then(EAnswer::Yes).ThenPath({});
    EXPECT_FALSE(frame.close()) << "no file was chosen";
    answers.Then(EAnswer::No);
    EXPECT_TRUE(frame.close());
    Give({1}, Project(), 1);
    answers.Then(EAnswer::Yes).ThenPath(Text(folder.Path() / "kept.csv"));
    EXPECT_TRUE(frame.close());
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "kept.csv"));
    EXPECT_TRUE(frame.close()) << "exported: nothing is asked";
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CPromptTest, AssignmentsThatACrashLeftBehindAreOffered)
{
    const char* const board = "Component,RefDes\nA,U1 U2\nB,U3\nC,U4\n";
    const auto kept = folder.Path() / ".board.csv.zovra-map";
    const auto crash = [&] {
        Give({1}, Project(), 1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(kept); }));
        // A second frame stands for the next start: the first one never came to an end.
        CAssignFrm next(session, layout, environment);
        ASSERT_TRUE(next.OnCreate().Ok());
        next.OpenDesign(Text(folder.Path() / "board.csv"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !next.View().IsBusy(); }));
        EXPECT_EQ(LastPrompt(), QStringLiteral("The program ended before assignments of "
                                               "'board.csv' were exported. Take them over?"));
        models = next.View().model()->index(1, 3).data().toString();
        EXPECT_EQ(next.View().IsModified(), !models.isEmpty());
    };
    OpenDesign(board);
    answers.Then(EAnswer::Yes);
    crash();
    EXPECT_EQ(models, QStringLiteral("FPGA : FAST"));
    answers.Then(EAnswer::No);
    crash();
    EXPECT_TRUE(answers.AllUsed());
    EXPECT_EQ(models, QString());
    EXPECT_FALSE(std::filesystem::exists(kept)) << "given up";
}

TEST_F(CPromptTest, TheFindDialogHasItsTitleModesAndKeys)
{
    EXPECT_EQ(CDlgFindModel({}, nullptr).windowTitle(), QStringLiteral("Zovra - Find Model"));
    Select({0});
    answers.ThenDialog([&](QDialog& dialog) {
        auto& find = dynamic_cast<CDlgFindModel&>(dialog);
        const auto child = [&](const char* name) {
            return find.findChild<QWidget*>(QLatin1String(name));
        };
        auto& text = dynamic_cast<QLineEdit&>(*child("ui_IDC_FIND_TEXT"));
        auto& keys = dynamic_cast<QTreeView&>(*child("ui_IDC_KEYS"));
        auto& hits = *dynamic_cast<QTreeView&>(*child("ui_IDC_RESULTS")).model();
        const auto search = [&](const char* what) {
            text.setText(QLatin1String(what));
            EXPECT_TRUE(QTest::qWaitFor([&] { return !find.IsSearching(); }));
            QStringList names;
            for (int i = 0; i < hits.rowCount(); ++i) {
                names += hits.index(i, 0).data().toString();
            }
            return names.join(QLatin1Char('|'));
        };
        EXPECT_EQ(find.windowTitle(), QStringLiteral("Zovra - Find Model (A)"));
        EXPECT_EQ(search("pu"), QStringLiteral("CPU|CPU"));
        EXPECT_EQ(search("nothing"), QString());
        EXPECT_FALSE(
            find.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
        // Model Name off: only keywords and part numbers, which no model here has.
        keys.model()->setData(keys.model()->index(1, 0), Qt::Unchecked, Qt::CheckStateRole);
        EXPECT_EQ(search("CPU"), QString());
        keys.setCurrentIndex(keys.model()->index(2, 0));
        QTest::mouseClick(child("ui_IDC_KEY_UP"), Qt::LeftButton);
        QTest::mouseClick(child("ui_IDC_KEY_UP"), Qt::LeftButton);
        EXPECT_FALSE(child("ui_IDC_KEY_UP")->isEnabled());
        auto& schema = dynamic_cast<QRadioButton&>(*child("ui_IDC_BY_SCHEMA"));
        EXPECT_EQ(schema.text(), QStringLiteral("Based on Model Name Naming Schema"));
        schema.setChecked(true);
        EXPECT_EQ(search("?pga"), QStringLiteral("FPGA"));
        EXPECT_FALSE(keys.isEnabled());
        find.reject();
    });
    Trigger(ID_FIND_MODEL);
    EXPECT_EQ(store.Text("ZOV Settings", "Search Options"), "2 2 1;0 0 1;1 1 0;")
        << "stored whatever the dialog was closed by";
    EXPECT_EQ(Cells(), QStringLiteral("A=|B=|C=|"));
    answers.ThenDialog([](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<CDlgFindModel&>(dialog).Mode(), EFindMode::BySchema);
    });
    Trigger(ID_FIND_MODEL);
    answers.ThenDialog([](QDialog& dialog) { TakeFirst(dialog, QStringLiteral("FPGA")); });
    Trigger(ID_FIND_MODEL_BY_SCHEMA);
    EXPECT_EQ(Cells(), QStringLiteral("A=FPGA : FAST|B=|C=|"));
}

TEST_F(CPromptTest, BrowsingShowsLibrariesAndComponents)
{
    Select({0, 1, 2});
    answers.ThenDialog([&](QDialog& dialog) {
        auto& browse = dynamic_cast<CDlgAssignModelEx&>(dialog);
        auto& list = *browse.findChild<CModelListView*>(QStringLiteral("BrowseModels"));
        const auto settled = [&] {
            return QTest::qWaitFor([&] { return !list.Model().IsFilling(); });
        };
        ASSERT_TRUE(settled());
        EXPECT_EQ(list.Model().rowCount(), 6);
        browse.findChild<QComboBox*>(QStringLiteral("ui_IDC_LIBRARY"))->setCurrentIndex(2);
        ASSERT_TRUE(settled());
        EXPECT_EQ(list.Model().rowCount(), 2);
        auto& components = *browse.findChild<QListView*>(QStringLiteral("ui_IDC_COMPONENTS"));
        components.model()->setData(components.model()->index(1, 0), Qt::Unchecked,
                                    Qt::CheckStateRole);
        EXPECT_FALSE(
            browse.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
        list.Table().selectRow(0);
        browse.accept();
    });
    Trigger(ID_BROWSE_MODEL);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU : NEW|B=|C=CPU : NEW|"));
    answers.ThenDialog([](QDialog& dialog) { dialog.reject(); });
    Trigger(ID_BROWSE_MODEL);
    EXPECT_EQ(Cells(), QStringLiteral("A=CPU : NEW|B=|C=CPU : NEW|"));
}

TEST_F(CPromptTest, BrowsingBeginsWithTheTypeThatTheDesignAsksFor)
{
    OpenDesign("Component,RefDes,Model Type\nR10K,R1,Resistor\nC1U,C1,Capacitor\nX,U1,\n");
    const auto browse = [&](std::initializer_list<int> rows, int typed, bool all, int take) {
        Select(rows);
        answers.ThenDialog([&](QDialog& dialog) {
            auto& list = *dialog.findChild<CModelListView*>(QStringLiteral("BrowseModels"));
            auto& box = *dialog.findChild<QCheckBox*>(QStringLiteral("ui_IDC_ALL_TYPES"));
            const auto settled = [&] {
                return QTest::qWaitFor([&] { return !list.Model().IsFilling(); });
            };
            ASSERT_TRUE(settled());
            EXPECT_EQ(list.Model().rowCount(), typed);
            EXPECT_EQ(box.isVisible(), typed < 6);
            box.setChecked(all);
            ASSERT_TRUE(settled());
            EXPECT_EQ(list.Model().rowCount(), all ? 6 : typed);
            if (take >= 0) {
                list.Select(Project()->At(static_cast<std::size_t>(take)));
                dialog.accept();
            }
        });
        Trigger(ID_BROWSE_MODEL);
    };
    browse({0}, 0, false, -1);
    browse({1}, 2, false, 2);
    EXPECT_EQ(Cells(), QStringLiteral("R10K=|C1U=C100N|X=|"));
    EXPECT_EQ(Output(), QString());
    browse({0, 1}, 6, false, -1); // of different types
    browse({2}, 6, false, 0);
    EXPECT_EQ(Output(), QString()) << "any type will do";

    answers.Then(EAnswer::No);
    browse({0}, 0, true, 2);
    EXPECT_EQ(Cells(), QStringLiteral("R10K=C100N|C1U=C100N|X=CPU|"));
    const QString line = QStringLiteral(
        "'R10K': the design asks for a model of type Resistor, and 'C100N' is of type Capacitor.");
    EXPECT_TRUE(Output().trimmed().endsWith(line));
    EXPECT_EQ(Output().count(QStringLiteral("asks for")), 1);
    EXPECT_EQ(frame.statusBar()->currentMessage(), line);
    EXPECT_TRUE(Cells(EAssignColumn::Status).startsWith(QStringLiteral("R10K=Validated")));
    browse({0}, 0, true, 0); // the one after it is asked about no more
    EXPECT_EQ(Output().count(QStringLiteral("of type Resistor")), 2);
}

TEST_F(CPromptTest, ModelsAreCreatedForComponents)
{
    const auto drive = [&](const std::function<void(CDlgCreateModel&)>& how) {
        Select({0});
        answers.ThenDialog([&](QDialog& dialog) { how(dynamic_cast<CDlgCreateModel&>(dialog)); });
        Trigger(ID_CREATE_MODEL);
    };
    drive([](CDlgCreateModel& dialog) { dialog.reject(); });
    EXPECT_EQ(Project()->Count(), 4U);
    drive([](CDlgCreateModel& dialog) {
        auto& name = *dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_NAME"));
        auto& value = *dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_VALUE"));
        auto& type = *dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_TYPE"));
        const QPushButton& ok =
            *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        EXPECT_EQ(name.text(), QStringLiteral("A"));
        EXPECT_TRUE(ok.isEnabled());
        name.setText(QStringLiteral("cpu"));
        EXPECT_FALSE(ok.isEnabled()) << "there is one";
        name.setText(QStringLiteral("A"));
        type.setCurrentIndex(type.findData(static_cast<unsigned>(ERecordType::Capacitor)));
        EXPECT_FALSE(ok.isEnabled()) << "without a value";
        value.setText(QStringLiteral("4u7"));
        EXPECT_TRUE(ok.isEnabled());
        dialog.accept();
    });
    ASSERT_EQ(Project()->Count(), 5U);
    EXPECT_EQ(Project()->At(4).GetDouble(EPropId::Cnom), 4.7e-6);
    EXPECT_EQ(Cells(), QStringLiteral("A=A|B=|C=|"));
    session.Edits().SetActive(Project());
    session.Edits().Undo();
    Settle();
    EXPECT_EQ(Cells(), QStringLiteral("A=|B=|C=|"));
    session.Edits().Redo();
    Settle();
    EXPECT_EQ(Cells(), QStringLiteral("A=A|B=|C=|")) << "the row has it again";
    session.RemoveNode(session.Tree().Find(*Project()));
    Settle();
    drive([](CDlgCreateModel& dialog) {
        EXPECT_FALSE(
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    });
}

TEST_F(CPromptTest, TheProjectLibraryIsSavedFromHere)
{
    Project()->Add(ERecordType::Ic).SetString(EPropId::ModelName, "ADDED");
    const auto stored = [&](const std::filesystem::path& path) {
        CNullLog silent;
        const auto library = LoadLibrary(path, {}, silent);
        return library ? library->Count() : 0;
    };
    const std::filesystem::path old = Project()->Path();
    answers.ThenPath({});
    Trigger(ID_SAVE_LIBRARY);
    EXPECT_EQ(answers.Shown().back().title, QStringLiteral("Save Library"));
    EXPECT_EQ(stored(old), 4U);
    answers.ThenPath(Text(folder.Path() / "nowhere" / "lib.zov"));
    Trigger(ID_SAVE_LIBRARY);
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    EXPECT_EQ(Project()->Path(), old);
    answers.ThenPath(Text(folder.Path() / "other_name"));
    Trigger(ID_SAVE_LIBRARY);
    EXPECT_EQ(stored(folder.Path() / "other_name.zov"), 5U);
    EXPECT_EQ(stored(old), 4U);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CPromptTest, WhatIsNoDesignIsTold)
{
    answers.ThenPath(Text(folder.Write("bad.csv", "nothing,of\nuse,here\n")));
    Trigger(ID_OPEN_DESIGN);
    EXPECT_TRUE(LastPrompt().contains(QStringLiteral("has no row of titles")));
    EXPECT_EQ(frame.View().Title(), QStringLiteral("board.csv")) << "the design stays";
    answers.ThenPath(Text(folder.Write(
        "kicad.net",
        "(export (components (comp (ref U9) (value CPU) (libsource (lib x) (part y)))))")));
    Trigger(ID_OPEN_DESIGN);
    EXPECT_EQ(Cells(EAssignColumn::Name), QStringLiteral("CPU=CPU|"));
}

} // namespace
} // namespace zov::app::test
