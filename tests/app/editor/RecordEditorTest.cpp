// SPDX-License-Identifier: Apache-2.0
#include "app/editor/RecordEditor.h"

#include "app/ModelFiles.h"
#include "app/editor/EditorDlg.h"
#include "app/editor/EditorListCtrl.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

struct CNoQuestions final : CQuestions
{
    bool YesNo(std::string_view /*text*/) override { return true; }
};

struct RecordEditorTest : testing::Test
{
    RecordEditorTest()
    {
        CNoQuestions questions;
        const std::filesystem::path path = folder.Path() / "lib" / "board.zov";
        std::filesystem::create_directories(path.parent_path());
        EXPECT_TRUE(session.NewProject(path, questions).Ok());
        library = session.ProjectLibrary();
        CLibraryChange change(library);
        for (const char* name : {"C_a", "C_b"}) {
            CZovRcdProps& c = change.Insert(ERecordType::Capacitor);
            c.SetString(EPropId::ModelName, name);
            c.SetString(EPropId::Manuf, name[2] == 'a' ? "Norvik" : "Tesal");
            c.SetString(EPropId::Size, "0402E");
            c.SetDouble(EPropId::Cnom, 1.234567891e-7);
            c.SetDiscreteModel({false, "", "", 0.01, 1e-9, 1.234567891e-7});
        }
        CZovRcdProps& ic = change.Insert(ERecordType::Ic);
        ic.SetString(EPropId::ModelName, "U1");
        ic.SetComposite(SDcModel{true, {}, {{1.2, 0.05, 0.05, 2.0, {"A1", "A2"}}}});
        session.Edits().Apply(change, QStringLiteral("Add"));
        session.Edits().SetSaved(library);
        editor.resize(520, 560);
        editor.show();
    }
    CZovRcdProps* At(std::size_t index) { return &library->At(index); }
    QLineEdit& Line(const char* page, const char* name)
    {
        return *editor.PageOf(page)->findChild<QLineEdit*>(QLatin1String("ui_IDC_") +
                                                           QLatin1String(name));
    }
    static void Type(QLineEdit& line, const char* text)
    {
        line.selectAll();
        QTest::keyClicks(&line, QLatin1String(text));
        if (*text == '\0') {
            QTest::keyClick(&line, Qt::Key_Delete);
        }
    }
    QString RemarkOf(const char* page, const char* name)
    {
        return editor.PageOf(page)
            ->findChild<QLabel*>(QLatin1String("Remark_") + QLatin1String(name))
            ->text();
    }
    CUiEditorListCtrl& Rows(const char* page)
    {
        return *editor.PageOf(page)->findChild<CUiEditorListCtrl*>();
    }

    test::CTempFolder folder;
    CMemorySettings store;
    CNullLog log;
    ui::CScriptedAnswers answers;
    CZovSession session{store, log, [](const char*) { return std::nullopt; }};
    CZovSession::TLibrary library;
    CRecordEditor editor{session, nullptr};
};

TEST_F(RecordEditorTest, ValuesAreTypedWithAnyUnitAndFaultsStayAtTheirField)
{
    ASSERT_TRUE(editor.Show(library, {At(0)}));
    QLineEdit& cnom = Line("General", "Cnom");
    EXPECT_EQ(cnom.text(), QStringLiteral("123.457nF"));
    struct
    {
        const char* typed;
        double farad; ///< 0: a fault
    } const cases[] = {{"4.7uF", 4.7e-6}, {"4.7", 4.7e-9}, {"1e-6 F", 1e-6}, {"100p", 1e-10},
                       {"4.7 volts", 0},  {"abc", 0},      {"47V", 0}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.typed);
        Type(cnom, test.typed);
        EXPECT_EQ(editor.Apply(), test.farad != 0);
        if (test.farad != 0) {
            EXPECT_EQ(At(0)->GetDouble(EPropId::Cnom), test.farad);
        } else {
            EXPECT_TRUE(RemarkOf("General", "Cnom").contains(QStringLiteral("such as 4.7nF")));
            EXPECT_EQ(cnom.text(), QLatin1String(test.typed)) << "nothing is lost";
        }
    }
    Type(cnom, "");
    EXPECT_TRUE(editor.Apply());
    EXPECT_FALSE(At(0)->Has(EPropId::Cnom));
    EXPECT_EQ(RemarkOf("General", "Cnom"), QStringLiteral("A value is required here."));
}

TEST_F(RecordEditorTest, WhatIsNotTouchedKeepsEveryDigitAndApplyingIsOneStep)
{
    editor.Show(library, {At(0)});
    EXPECT_FALSE(editor.IsTouched());
    QLineEdit& cnom = Line("General", "Cnom");
    Type(cnom, "5nF");
    EXPECT_TRUE(editor.IsTouched());
    Type(cnom, "123.457nF");
    EXPECT_FALSE(editor.IsTouched()) << "as it was shown is as it was";
    Type(Line("General", "Manuf"), "Acme & Sons");
    EXPECT_TRUE(RemarkOf("General", "Manuf").contains(QStringLiteral(".zovx")));
    Type(Line("General", "Volt"), "16");
    ASSERT_TRUE(editor.Apply());
    EXPECT_EQ(At(0)->GetDouble(EPropId::Cnom), 1.234567891e-7);
    EXPECT_EQ(At(0)->GetString(EPropId::Manuf), "Acme & Sons");
    EXPECT_EQ(session.Edits().UndoText(), QStringLiteral("Edit 'C_a'"));
    session.Edits().Undo();
    EXPECT_FALSE(At(0)->Has(EPropId::Volt));
    EXPECT_EQ(Line("General", "Manuf").text(), QStringLiteral("Norvik")) << "the editor follows";
    EXPECT_FALSE(session.IsModified(*library));
}

TEST_F(RecordEditorTest, SeveralRecordsChangeOnlyWhereTheUserTyped)
{
    editor.Show(library, {At(0), At(1)});
    EXPECT_EQ(Line("General", "Manuf").text(), QString());
    EXPECT_EQ(Line("General", "Manuf").placeholderText(), QStringLiteral("several values"));
    EXPECT_EQ(Line("General", "Size").text(), QStringLiteral("0402E"));
    Type(Line("General", "TCC"), "X7R");
    ASSERT_TRUE(editor.Apply());
    EXPECT_EQ(At(0)->GetString(EPropId::Tcc), "X7R");
    EXPECT_EQ(At(1)->GetString(EPropId::Tcc), "X7R");
    EXPECT_EQ(At(0)->GetString(EPropId::Manuf), "Norvik");
    EXPECT_EQ(At(1)->GetString(EPropId::Manuf), "Tesal");
    Type(Line("General", "Manuf"), "One");
    Type(Line("General", "Manuf"), "");
    EXPECT_TRUE(editor.IsTouched()) << "nothing is a value when several were there";
    ASSERT_TRUE(editor.Apply());
    EXPECT_FALSE(At(0)->Has(EPropId::Manuf));
    session.Edits().Undo();
    EXPECT_EQ(At(1)->GetString(EPropId::Manuf), "Tesal");

    editor.Show(library, {At(0), At(2)});
    EXPECT_TRUE(editor.Records().empty());
    EXPECT_TRUE(editor.findChild<QLabel*>(QStringLiteral("EditorHint"))
                    ->text()
                    .startsWith(QStringLiteral("Models of different types")));
}

TEST_F(RecordEditorTest, SeveralRecordsDontTakeOneName)
{
    editor.Show(library, {At(0), At(1)});
    QLineEdit& name = Line("General", "ModelName");
    Type(name, "C_same");
    EXPECT_TRUE(RemarkOf("General", "ModelName").contains(QStringLiteral("one model")));
    EXPECT_FALSE(editor.Apply());
    EXPECT_EQ(At(0)->Name(), "C_a");
    EXPECT_EQ(At(1)->Name(), "C_b");
    Type(name, "");
    EXPECT_FALSE(editor.IsTouched()) << "nothing is what was shown";
    Type(Line("General", "TCC"), "X7R");
    ASSERT_TRUE(editor.Apply());
    EXPECT_EQ(At(1)->Name(), "C_b");
}

TEST_F(RecordEditorTest, RemarksHaveTheRoomTheirWordsNeed)
{
    const auto expectRoom = [&](const char* when) {
        QTest::qWait(1);
        int seen = 0;
        for (const CFieldEditor* field : editor.PageOf("General")->findChildren<CFieldEditor*>()) {
            for (const QLabel* remark : field->findChildren<QLabel*>()) {
                if (remark->isVisible()) {
                    ++seen;
                    EXPECT_GE(remark->height(), remark->heightForWidth(remark->width()))
                        << when << ' ' << remark->objectName().toStdString();
                    EXPECT_GE(field->height(), remark->geometry().bottom())
                        << when << ' ' << remark->objectName().toStdString();
                }
            }
        }
        EXPECT_GT(seen, 0) << when;
    };
    CLibraryChange change(library);
    change.Insert(ERecordType::Capacitor).SetString(EPropId::ModelName, "C_empty");
    CZovRcdProps& twin = change.Insert(ERecordType::Capacitor);
    twin.SetString(EPropId::ModelName, "C_a");
    session.Edits().Apply(change, QStringLiteral("Add"));
    for (const int width : {520, 340, 230}) {
        editor.resize(width, 560);
        editor.Show(library, {At(0)});
        QTest::qWait(1);
        editor.Show(library, {At(3)});
        expectRoom("shown with values missing");
        editor.Show(library, {At(0)});
        QTest::qWait(1);
        Line("General", "ModelName").setFocus();
        Type(Line("General", "ModelName"), "C_b");
        expectRoom("typed");
        Type(Line("General", "Manuf"), "A & B");
        expectRoom("another one");
        editor.resize(width - 40, 560);
        expectRoom("narrower");
        editor.Reset();
        editor.Show(library, {At(4)});
        expectRoom("a name that is taken");
    }
}

TEST_F(RecordEditorTest, TheSelectionMovesOnOnlyWhenChangesAreSettled)
{
    struct
    {
        ui::EAnswer answer;
        bool moves;
        const char* manufacturer;
    } const cases[] = {{ui::EAnswer::Cancel, false, "Norvik"},
                       {ui::EAnswer::No, true, "Norvik"},
                       {ui::EAnswer::Yes, true, "New"}};
    for (const auto& test : cases) {
        editor.Show(library, {At(0)});
        Type(Line("General", "Manuf"), "New");
        answers.Then(test.answer);
        EXPECT_EQ(editor.Show(library, {At(1)}), test.moves);
        EXPECT_EQ(answers.Shown().back().text,
                  QStringLiteral("The changes of 'C_a' are not applied. Apply them?"));
        EXPECT_EQ(At(0)->GetString(EPropId::Manuf), test.manufacturer);
        EXPECT_EQ(editor.Records().front(), At(test.moves ? 1 : 0));
        if (!test.moves) {
            EXPECT_EQ(Line("General", "Manuf").text(), QStringLiteral("New"));
            editor.Reset();
        }
    }
    Type(Line("General", "Cnom"), "nonsense");
    answers.Then(ui::EAnswer::Yes);
    EXPECT_FALSE(editor.Show(library, {At(2)})) << "what has a fault can't be applied";
    EXPECT_EQ(Line("General", "Cnom").text(), QStringLiteral("nonsense"));
}

TEST_F(RecordEditorTest, TablesTakeAndGiveCellsOfSpreadsheets)
{
    editor.Show(library, {At(2)});
    CUiEditorListCtrl& rails = Rows("DC");
    EXPECT_EQ(rails.Model().rowCount(), 1);
    QApplication::clipboard()->setText(
        QStringLiteral("Nominal voltage\tTol. +\tTol. -\tTotal current\tPins\r\n"
                       "1800mV\t5%\t3\t500mA\t\"B1, B2\"\r\n3.3\tx\t5\t1\tC1\r\n"));
    rails.Table().setCurrentIndex(rails.Model().index(0, 0));
    rails.findChild<QToolButton*>(QStringLiteral("ui_IDC_PowerRails_Paste"))->click();
    ASSERT_EQ(rails.Model().rowCount(), 2);
    EXPECT_EQ(rails.Model().index(1, 1).data().toString(), QStringLiteral("x"));
    EXPECT_FALSE(editor.Apply()) << "one cell can't be read";
    EXPECT_TRUE(RemarkOf("DC", "PowerRails").startsWith(QStringLiteral("One cell")));
    rails.Model().setData(rails.Model().index(1, 1), QStringLiteral("5%"), Qt::EditRole);
    ASSERT_TRUE(editor.Apply());
    const SDcModel& dc = *At(2)->GetComposite<SDcModel>();
    EXPECT_TRUE(dc.worst);
    ASSERT_EQ(dc.rails.size(), 2U);
    EXPECT_EQ(dc.rails[0], (SDcRail{1.8, 0.05, 0.03, 0.5, {"B1", "B2"}}));
    EXPECT_EQ(dc.rails[1], (SDcRail{3.3, 0.05, 0.05, 1.0, {"C1"}}));

    rails.Table().selectRow(0);
    rails.findChild<QToolButton*>(QStringLiteral("ui_IDC_PowerRails_Copy"))->click();
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1.8V\t5%\t3%\t0.5A\tB1 B2\n"));
    rails.findChild<QToolButton*>(QStringLiteral("ui_IDC_PowerRails_Remove"))->click();
    rails.findChild<QToolButton*>(QStringLiteral("ui_IDC_PowerRails_Add"))->click();
    EXPECT_EQ(rails.Model().rowCount(), 2);
    EXPECT_TRUE(editor.IsTouched());
}

TEST_F(RecordEditorTest, ATableInATableBelongsToItsRow)
{
    editor.Show(library, {At(2)});
    CUiEditorListCtrl& rails = Rows("Impedance");
    auto* points = rails.findChild<CUiEditorListCtrl*>();
    EXPECT_FALSE(points->isEnabled()) << "no rail yet";
    rails.Model().insertRows(0, 2);
    rails.Table().setCurrentIndex(rails.Model().index(1, 0));
    points->Model().PasteText(0, 0, QStringLiteral("1MHz\t10mOhm\n10MHz\t20\n"));
    rails.Table().setCurrentIndex(rails.Model().index(0, 0));
    EXPECT_EQ(points->Model().rowCount(), 0);
    rails.Table().setCurrentIndex(rails.Model().index(1, 0));
    EXPECT_EQ(points->Model().rowCount(), 2);
    ASSERT_TRUE(editor.Apply());
    const SAcModel& ac = *At(2)->GetComposite<SAcModel>();
    ASSERT_EQ(ac.rails.size(), 2U);
    EXPECT_EQ(ac.rails[1].points, (std::vector<SFeqImp>{{1e6, 0.01}, {1e7, 0.02}}));
}

TEST_F(RecordEditorTest, SubModelsComeAndGoAndDefinitionsHaveTwoForms)
{
    editor.Show(library, {At(2)});
    const auto boxOf = [&](const char* page) {
        QWidget* at = editor.PageOf(page);
        while (at->findChild<QCheckBox*>(QStringLiteral("ui_IDC_HAS")) == nullptr) {
            at = at->parentWidget();
        }
        return at->findChild<QCheckBox*>(QStringLiteral("ui_IDC_HAS"));
    };
    EXPECT_TRUE(boxOf("DC")->isChecked());
    EXPECT_FALSE(boxOf("Thermal")->isChecked());
    EXPECT_FALSE(Line("Thermal", "Thickness").isEnabled());
    boxOf("DC")->click();
    boxOf("Thermal")->click();
    Type(Line("Thermal", "Thickness"), "0.5");
    ASSERT_TRUE(editor.Apply());
    EXPECT_FALSE(At(2)->Has(EPropId::DcModel));
    EXPECT_EQ(At(2)->GetComposite<SThermalModel>()->thickness, 0.5);

    editor.Show(library, {At(0)});
    auto* type =
        editor.PageOf("Capacitor")->findChild<QComboBox*>(QStringLiteral("ui_IDC_ModelType"));
    auto* file =
        editor.PageOf("Capacitor")->findChild<QPlainTextEdit*>(QStringLiteral("ui_IDC_CktDef"));
    EXPECT_TRUE(file->isHidden() || !file->isEnabled());
    QTest::keyClick(type, Qt::Key_Down);
    Q_EMIT type->activated(type->currentIndex());
    EXPECT_TRUE(file->isEnabled());
    answers.ThenPath(
        QString::fromStdString(PathText(folder.Write("models/c.s2p", "# Hz S RI R 50\n"))));
    editor.PageOf("Capacitor")
        ->findChild<QToolButton*>(QStringLiteral("ui_IDC_CktDef_Pick"))
        ->click();
    EXPECT_EQ(file->toPlainText(), QStringLiteral("../models/c.s2p"))
        << "from the library's folder";
    EXPECT_EQ(RemarkOf("Capacitor", "CktDef"), QString());
    auto* open =
        editor.PageOf("Capacitor")->findChild<QToolButton*>(QStringLiteral("ui_IDC_CktDef_Open"));
    EXPECT_TRUE(open->isEnabled());
    open->click();
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("There is no window for files of this kind."));
    QString opened;
    {
        const CModelFileOpener opener([&](const QString& path) {
            opened = path;
            return true;
        });
        open->click();
    }
    EXPECT_TRUE(opened.endsWith(QStringLiteral("models/c.s2p"))) << opened.toStdString();
    ASSERT_TRUE(editor.Apply());
    EXPECT_EQ(At(0)->GetDiscreteModel(), (SDiscreteModel{true, "../models/c.s2p", "", {}, {}, {}}));
    file->setPlainText(QStringLiteral("gone.s2p"));
    EXPECT_EQ(RemarkOf("Capacitor", "CktDef"), QStringLiteral("There is no such file."));
    EXPECT_FALSE(open->isEnabled());
}

TEST_F(RecordEditorTest, WhatIsTypedOutlivesChangesAroundIt)
{
    editor.Show(library, {At(0)});
    Type(Line("General", "TCC"), "C0G");
    CLibraryChange change(library);
    change.Replace(*At(0)).SetString(EPropId::Manuf, "Other");
    session.Edits().Apply(change, QStringLiteral("Elsewhere"));
    EXPECT_EQ(Line("General", "Manuf").text(), QStringLiteral("Other"));
    EXPECT_EQ(Line("General", "TCC").text(), QStringLiteral("C0G"));
    SZovSettings settings = session.Settings();
    settings.units.Set(EQuantity::Capacitance, "uF");
    session.SetSettings(settings);
    EXPECT_EQ(Line("General", "Cnom").text(), QStringLiteral("0.123457uF"));
    EXPECT_EQ(Line("General", "TCC").text(), QStringLiteral("C0G"));
    CLibraryChange removal(library);
    removal.Remove(*At(0));
    session.Edits().Apply(removal, QStringLiteral("Delete"));
    EXPECT_TRUE(editor.Records().empty());
}

TEST_F(RecordEditorTest, ALineSaysWhatTheModelSays)
{
    editor.Show(library, {At(0)});
    auto* line = editor.findChild<QLabel*>(QStringLiteral("EditorTruth"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return line->isVisible(); }));
    EXPECT_TRUE(line->text().startsWith(QStringLiteral("Its model: C 123.457nF, ESR 10mOhm")));
    EXPECT_TRUE(line->text().endsWith(QStringLiteral("agrees with what the record states")));
    Type(Line("General", "Cnom"), "123pF");
    ASSERT_TRUE(editor.Apply());
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return line->text().endsWith(QStringLiteral("is the unit right?")); }));
    editor.Show(library, {At(2)});
    EXPECT_FALSE(line->isVisible());
}

TEST_F(RecordEditorTest, EveryTypeHasItsPagesAndTheDialogKeepsThemOpenOnFaults)
{
    struct
    {
        ERecordType type;
        const char* pages;
    } const cases[] = {
        {ERecordType::Ic, "General I/O Timing DC DC-DC AC Impedance VRM Thermal Through"},
        {ERecordType::Capacitor, "General Capacitor Through"},
        {ERecordType::Inductor, "General Inductor Through"},
        {ERecordType::Resistor, "General Resistor Through"},
        {ERecordType::Vrm, "General VRM Through"},
        {ERecordType::Connector, "General SPICE Through"},
        {ERecordType::Package, "General SPICE Through"},
        {ERecordType::Spice, "General SPICE Through"},
    };
    for (const auto& test : cases) {
        CLibraryChange change(library);
        change.Insert(test.type).SetString(EPropId::ModelName, "M");
        CZovRcdProps* record = session.Edits().Apply(change, QStringLiteral("Add")).front();
        editor.Show(library, {record});
        QStringList titles;
        const auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("EditorPages"));
        for (int i = 0; i < tabs->count(); ++i) {
            titles += tabs->tabText(i);
        }
        EXPECT_EQ(titles.join(QLatin1Char(' ')), QLatin1String(test.pages));
    }
    answers.ThenDialog([](QDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_Volt"));
        Type(*name, "x");
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        Type(*name, "25");
        QTest::keyClick(name, Qt::Key_Escape);
        EXPECT_TRUE(name->isVisible()) << "the page stays; the dialog asks";
        dialog.accept();
    });
    answers.Then(ui::EAnswer::Cancel);
    CUiEditorDlg dialog(session, library, {At(0)}, nullptr);
    EXPECT_EQ(dialog.DoModal(), ui::EAnswer::Ok);
    EXPECT_EQ(At(0)->GetDouble(EPropId::Volt), 25.0);
}

} // namespace
} // namespace zov::app
