// SPDX-License-Identifier: Apache-2.0
// A working day through the real windows: a part list comes in, a library is made of it, a model is
// mended, a board gets its models, they go out as a map file and into a fresh design.
#include "MainFrameFixture.h"
#include "app/Autosave.h"
#include "app/assignment/AssignCommands.h"
#include "app/assignment/AssignFrm.h"
#include "app/assignment/DlgFindModel.h"
#include "app/editor/RecordEditor.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/generator/GeneratorPage.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>

#include <algorithm>

namespace zov::app {
namespace {

const char* const kParts = "Part Number,Size,Capacitance,Voltage,ESR (mOhm),ESL (nH),Model Type\n"
                           "KP0402-104,0402,100nF,16,5,0.4,RLC\n"
                           "KP0603-475,0603,4u7,10,3,0.5,RLC\n"
                           "KP0805-226,0805,22uF,6.3,3,0.6,RLC\n"
                           "KP0805-476,0805,ten,6.3,3,0.6,RLC\n";
const char* const kBoard = "Component,RefDes,Value\n"
                           "KP0402-104,C1-C8,100nF\n"
                           "KP0603,C9 C10,4.7uF\n"
                           "PULLUP,R1 R2,10k\n"
                           "CPU,U1,\n";

struct StoryTest : MainFrameTest
{
    /// The generator dialog: source and destination typed, generated, closed.
    void MakeLibrary(const std::filesystem::path& parts, const std::filesystem::path& library)
    {
        answers.ThenDialog([&](QDialog& shown) {
            auto& generator = dynamic_cast<CDlgZovGenMain&>(shown);
            CGeneratorPage& page = generator.Page(ERecordType::Capacitor);
            const auto type = [&](const char* field, const QString& text) {
                auto* edit = page.findChild<QLineEdit*>(QLatin1String(field));
                QTest::keyClicks(edit, text);
                QTest::keyClick(edit, Qt::Key_Return);
                ASSERT_TRUE(QTest::qWaitFor([&] { return !page.IsBusy(); }));
            };
            type("ui_IDC_DESTINATION", Text(library));
            type("ui_IDC_SOURCE", Text(parts));
            QTest::mouseClick(generator.findChild<QPushButton*>(QStringLiteral("ui_IDC_GENERATE")),
                              Qt::LeftButton);
            ASSERT_TRUE(QTest::qWaitFor([&] { return !generator.IsRunning(); }));
            QTest::mouseClick(generator.findChild<QPushButton*>(QStringLiteral("ui_IDC_CLOSE")),
                              Qt::LeftButton);
        });
        Trigger(ID_TOOLS_GENERATE);
        WaitIdle();
    }
    CAssignFrm& Assignment()
    {
        Trigger(ID_TOOLS_ASSIGN);
        CAssignFrm* found = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            found = found == nullptr ? qobject_cast<CAssignFrm*>(window) : found;
        }
        return *found;
    }
    static void Settle(CAssignFrm& assign)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !assign.View().IsBusy(); }));
    }
    static void Run(CAssignFrm& assign, unsigned command)
    {
        assign.Actions().Action(command)->trigger();
        Settle(assign);
    }
    static QString Cells(CAssignFrm& assign, EAssignColumn column = EAssignColumn::AssignedModels)
    {
        const QAbstractItemModel& rows = *assign.View().model();
        QStringList cells;
        for (int i = 0; i < rows.rowCount(); ++i) {
            cells += rows.index(i, static_cast<int>(column)).data().toString();
        }
        return cells.join(QLatin1Char('|'));
    }
    CZovLibrary& Project() { return *frame.Session().ProjectLibrary(); }
};

TEST_F(StoryTest, FromAPartListToAFreshDesign)
{
    frame.show();
    const std::filesystem::path library = folder.Path() / "board.zov";
    MakeLibrary(folder.Write("parts.csv", kParts), library);
    ASSERT_NE(frame.Session().ProjectLibrary(), nullptr);
    ASSERT_EQ(Models().Model().rowCount(), 3) << "the row with a fault stays out";

    // A model is mended in the editor pane: its part number, for the board says 106.
    auto* editor = frame.findChild<CRecordEditor*>();
    Models().Table().selectRow(1);
    ASSERT_EQ(editor->Records().size(), 1U);
    auto* number =
        editor->PageOf("General")->findChild<QLineEdit*>(QStringLiteral("ui_IDC_MfgPartNumber"));
    ASSERT_NE(number, nullptr);
    QTest::keyClicks(number, QStringLiteral("KP0603-106"));
    EXPECT_TRUE(editor->Apply());
    WaitIdle();
    Trigger(ID_FILE_SAVE);

    CAssignFrm& assign = Assignment();
    answers.ThenPath(Text(folder.Write("board.csv", kBoard)));
    Run(assign, ID_OPEN_DESIGN);
    EXPECT_EQ(Cells(assign), QStringLiteral("KP0402-104|KP0603-475||"));
    EXPECT_EQ(Cells(assign, EAssignColumn::Status),
              QStringLiteral("Validated|Validated|Model Not Found|"
                             "Model Not Found"));

    Run(assign, ID_CREATE_DISC_MODEL);
    EXPECT_EQ(Cells(assign), QStringLiteral("KP0402-104|KP0603-475|PULLUP|"));
    EXPECT_EQ(Project().Find(ERecordType::Resistor, "PULLUP")->GetDouble(EPropId::Resistance), 1e4);

    assign.View().setCurrentIndex(assign.View().model()->index(1, 0));
    answers.ThenDialog([](QDialog& shown) {
        auto& find = dynamic_cast<CDlgFindModel&>(shown);
        auto* text = find.findChild<QLineEdit*>(QStringLiteral("ui_IDC_FIND_TEXT"));
        text->clear();
        QTest::keyClicks(text, QStringLiteral("805-2"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !find.IsSearching(); }));
        find.accept();
    });
    Run(assign, ID_FIND_MODEL);
    EXPECT_EQ(Cells(assign), QStringLiteral("KP0402-104|KP0805-226|PULLUP|"));
    EXPECT_TRUE(assign.isWindowModified());

    answers.ThenPath(Text(folder.Path() / "board_map.csv"));
    Run(assign, ID_EXPORT_MAP_FILE);
    EXPECT_NE(folder.Read("board_map.csv").find("KP0603,C10 C9,KP0805-226,"), std::string::npos);

    // A later issue of the board, which nobody mapped: the map brings the choice along.
    answers.ThenPath(Text(folder.Write("issue2.csv", kBoard)));
    Run(assign, ID_OPEN_DESIGN);
    EXPECT_EQ(Cells(assign), QStringLiteral("KP0402-104|KP0603-475|PULLUP|"));
    answers.ThenPath(Text(folder.Path() / "board_map.csv"));
    Run(assign, ID_IMPORT_MAP_FILE);
    EXPECT_EQ(Cells(assign), QStringLiteral("KP0402-104|KP0805-226|PULLUP|"));

    // What was made for the board is saved with the library.
    answers.ThenPath(Text(library));
    Run(assign, ID_SAVE_LIBRARY);
    EXPECT_TRUE(frame.Session().ModifiedLibraries().empty());
    EXPECT_TRUE(frame.close());
    CNullLog silent;
    EXPECT_EQ(LoadLibrary(library, {}, silent)->Count(), 4U);
    EXPECT_EQ(answers.Unexpected(), 0);
    EXPECT_TRUE(answers.AllUsed());
}

TEST_F(StoryTest, WhatACrashLeftIsOffered)
{
    const std::filesystem::path library = Library("board", 2);
    const std::filesystem::path copy = CAutosave::PathOf(library);
    const QString question = QStringLiteral("'board' holds changes of ");
    struct
    {
        ui::EAnswer answer;
        std::size_t models;
        bool copyStays; ///< a restored one stays until it is saved
    } const cases[] = {
        {ui::EAnswer::Cancel, 2, true}, {ui::EAnswer::Yes, 3, true}, {ui::EAnswer::No, 2, false}};
    for (const auto& test : cases) {
        if (!std::filesystem::exists(copy)) {
            std::filesystem::rename(Library("later", 3), copy);
        }
        answers.Then(test.answer);
        OpenProject(library);
        ASSERT_TRUE(QTest::qWaitFor([&] { return answers.AllUsed(); }));
        EXPECT_TRUE(answers.Shown().back().text.startsWith(question));
        EXPECT_EQ(answers.Shown().back().buttons, ui::EButtons::YesNoCancel);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Project().Count() == test.models; }));
        EXPECT_EQ(std::filesystem::exists(copy), test.copyStays);
        EXPECT_EQ(frame.Session().IsModified(Project()), test.answer == ui::EAnswer::Yes);
        frame.Session().RemoveNode(frame.Session().Tree().Find(Project()));
        WaitIdle();
    }
    EXPECT_EQ(answers.Unexpected(), 0);
}

} // namespace
} // namespace zov::app
