// SPDX-License-Identifier: Apache-2.0
#include "app/BoxQuestions.h"
#include "app/generator/DlgVendorDecapLibrary.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/generator/GeneratorPage.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/KilledChild.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QAbstractItemView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace zov::app::test {
namespace {

using enum ERecordType;
using ui::EAnswer;
using zov::test::CKilledChild;
using zov::test::CTempFolder;

const char* const kResistors = "Part Number,Resistance (Ohm),Maker,Model Type\n"
                               "R-10,10,Kappa,RLC\n"
                               "R-20,20,Kappa,RLC\n"
                               "R-10,11,Kappa,RLC\n"
                               "R-30,much,Kappa,RLC\n";

class CGeneratorTest : public testing::Test
{
protected:
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    template <class Widget>
    Widget& Child(const char* name, ERecordType type = Resistor)
    {
        auto* found = dialog.Page(type).findChild<Widget*>(QLatin1String(name));
        return *(found != nullptr ? found : dialog.findChild<Widget*>(QLatin1String(name)));
    }
    void Settle(ERecordType type = Resistor)
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                return !dialog.Page(type).IsBusy() && !dialog.IsRunning() &&
                       !session.Job().IsRunning();
            },
            20000));
    }
    void SetSource(const std::string& lines, ERecordType type = Resistor)
    {
        const auto name = std::string(InfoOf(type).name) + ".csv";
        dialog.Page(type).SetSource(Text(folder.Write(name, lines)));
        Settle(type);
    }
    void SetDestination(const char* name, ERecordType type = Resistor)
    {
        dialog.Page(type).SetDestination(Text(folder.Path() / name));
        Settle(type);
    }
    /// Writes into a cell of the mapping list as a user does.
    void Map(const char* property, const char* text, int column = CMappingModel::kXlsProp,
             ERecordType type = Resistor)
    {
        QAbstractItemModel& rows = *Child<QAbstractItemView>("ui_IDC_MAPPING", type).model();
        for (int i = 0; i < rows.rowCount(); ++i) {
            if (rows.index(i, 0).data().toString() == QLatin1String(property)) {
                rows.setData(rows.index(i, column), QLatin1String(text), Qt::EditRole);
            }
        }
        Settle(type);
    }
    void Generate()
    {
        QTest::mouseClick(&Child<QPushButton>("ui_IDC_GENERATE"), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return !dialog.IsRunning() && !session.Job().IsRunning(); }, 20000));
        QTest::qWait(1);
    }
    QString Log() { return Child<QPlainTextEdit>("ui_IDC_LOG").toPlainText(); }
    bool Logged(const QString& text) { return Log().contains(text); }
    QString Cell(int row, int column) { return Preview().index(row, column).data().toString(); }
    QAbstractItemModel& Preview(ERecordType type = Resistor)
    {
        return *Child<QAbstractItemView>("ui_IDC_PREVIEW", type).model();
    }
    std::size_t Count(const char* name) const
    {
        CNullLog silent;
        const auto library = LoadLibrary(folder.Path() / name, {}, silent);
        return library ? library->Count() : 9999;
    }

    CTempFolder folder;
    CMemorySettings store;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CZovSession session{store, log, [](const char*) { return std::nullopt; }};
    QWidget window;
    CBoxQuestions questions{window};
    CDlgZovGenMain dialog{&session, &window};
};

TEST_F(CGeneratorTest, TabsListsAndChoicesAreAsTheyAreCalled)
{
    dialog.show();
    const auto& tabs = Child<QTabWidget>("ui_IDC_TABS");
    EXPECT_EQ(tabs.tabText(0) + tabs.tabText(1) + tabs.tabText(2),
              QStringLiteral("CapacitorInductorResistor"));
    QStringList titles;
    const QAbstractItemModel& mapping = *Child<QAbstractItemView>("ui_IDC_MAPPING").model();
    for (int i = 0; i < mapping.columnCount(); ++i) {
        titles += mapping.headerData(i, Qt::Horizontal).toString();
    }
    EXPECT_EQ(titles.join(QLatin1Char('|')), QStringLiteral("Model Prop.|XLS Prop.|Unit"));
    EXPECT_EQ(Child<QRadioButton>("ui_IDC_ADD_SUFFIX").text(),
              QStringLiteral("Add suffix to the new model"));
    EXPECT_EQ(Child<QRadioButton>("ui_IDC_KEEP_FIRST").text(),
              QStringLiteral("Keep the first one only"));
    EXPECT_EQ(Child<QRadioButton>("ui_IDC_REPLACE").text(),
              QStringLiteral("Replace with new model"));
    EXPECT_TRUE(Child<QLineEdit>("ui_IDC_VENDOR", Capacitor).isVisible());
    dialog.ShowPage(Resistor);
    EXPECT_FALSE(Child<QLineEdit>("ui_IDC_VENDOR").isVisible());
}

TEST_F(CGeneratorTest, ThePreviewShowsWhatWillBeImportedAndWhatIsWrong)
{
    SetSource(kResistors);
    constexpr int result = 0;
    EXPECT_EQ(Preview().headerData(result, Qt::Horizontal).toString(), QStringLiteral("Result"));
    int resistance = 0;
    for (int i = 1; i < Preview().columnCount(); ++i) {
        if (Preview().headerData(i, Qt::Horizontal).toString() == QStringLiteral("Resistance")) {
            resistance = i;
        }
    }
    ASSERT_EQ(Preview().rowCount(), 4);
    EXPECT_EQ(Cell(0, resistance), QStringLiteral("10000mOhm"));
    EXPECT_EQ(Cell(0, result), QStringLiteral("added"));
    EXPECT_TRUE(Cell(2, result).startsWith(QStringLiteral("skipped")));
    EXPECT_EQ(Preview().headerData(3, Qt::Vertical).toInt(), 5) << "the sheet's own row number";
    const QModelIndex bad = Preview().index(3, resistance);
    EXPECT_EQ(bad.data().toString(), QStringLiteral("much"));
    EXPECT_TRUE(bad.data(Qt::BackgroundRole).isValid());
    EXPECT_TRUE(bad.data(Qt::ToolTipRole).toString().contains(QStringLiteral("expected: ")));
    EXPECT_FALSE(Preview().index(0, resistance).data(Qt::BackgroundRole).isValid());

    Child<QRadioButton>("ui_IDC_ADD_SUFFIX").setChecked(true);
    Settle();
    EXPECT_EQ(Cell(2, 1), QStringLiteral("R-10_1"));
    Map("Resistance", "Resistance (Ohm)"); // the title says the unit
    EXPECT_EQ(Cell(0, resistance), QStringLiteral("10000mOhm"));
    Map("Resistance", "kOhm", CMappingModel::kUnit);
    EXPECT_EQ(Cell(0, resistance), QStringLiteral("1e+07mOhm"));
}

TEST_F(CGeneratorTest, ThePreviewGoesToTheFirstFault)
{
    dialog.resize(700, 500);
    dialog.ShowPage(Resistor);
    dialog.show();
    std::string lines = "Part Number,Manufacturer,Model Type,Resistance (Ohm)\n";
    for (int i = 0; i < 60; ++i) {
        lines += "R-" + std::to_string(i) + "," + std::string(60, 'M') +
                 (i < 40 ? ",RLC,10\n" : ",RLC,much\n");
    }
    SetSource(lines);
    QTest::qWait(1);
    const auto& view = Child<QTableView>("ui_IDC_PREVIEW");
    for (int i = 1; i < Preview().columnCount(); ++i) {
        if (Preview().headerData(i, Qt::Horizontal).toString() == QStringLiteral("Resistance")) {
            const QRect cell = view.visualRect(Preview().index(40, i));
            EXPECT_TRUE(view.viewport()->rect().intersects(cell)) << cell.y();
        }
    }
    EXPECT_FALSE(view.viewport()->rect().intersects(view.visualRect(Preview().index(0, 1))));
    EXPECT_LE(view.columnWidth(0), view.width() / 3) << "the words of a fault leave room";
}

TEST_F(CGeneratorTest, ConstantsStandInForMissingColumns)
{
    SetSource("Name,Value\nA,4u7\nB,10uF\n", Capacitor);
    const auto failed = [&] { return Preview(Capacitor).index(0, 0).data().toString(); };
    Map("Model Name", "Name", CMappingModel::kXlsProp, Capacitor);
    Map("Cnom", "Value", CMappingModel::kXlsProp, Capacitor);
    EXPECT_TRUE(failed().startsWith(QStringLiteral("failed")));
    Map("Size", "=0402", CMappingModel::kXlsProp, Capacitor);
    Map("Model Type", "=RLC", CMappingModel::kXlsProp, Capacitor);
    Map("Resistance", "=5m", CMappingModel::kXlsProp, Capacitor);
    Map("Inductance", "= 1", CMappingModel::kXlsProp, Capacitor);
    EXPECT_EQ(failed(), QStringLiteral("added"));
    SetDestination("caps.zov", Capacitor);
    Generate();
    CNullLog silent;
    const auto library = LoadLibrary(folder.Path() / "caps.zov", {}, silent);
    ASSERT_TRUE(library.Ok());
    ASSERT_EQ(library->Count(), 2U);
    EXPECT_EQ(library->At(0).GetDouble(EPropId::Cnom), 4.7e-6);
    EXPECT_EQ(library->At(1).GetString(EPropId::Size), "0402E");
    EXPECT_EQ(library->At(1).GetDiscreteModel()->resistance, 0.005);
    EXPECT_EQ(library->At(1).GetDiscreteModel()->inductance, 1e-9);
}

TEST_F(CGeneratorTest, WhatIsMissingIsToldBeforeTheRun)
{
    dialog.ShowPage(Inductor);
    Generate();
    EXPECT_TRUE(Logged(QStringLiteral("[ERROR] \"Source File\" required")));
    EXPECT_TRUE(Logged(QStringLiteral("[ERROR] Inductor \"Destination Library\" required")));
    SetSource(kResistors);
    auto& mapping = *Child<QAbstractItemView>("ui_IDC_MAPPING").model();
    for (int i = 0; i < mapping.rowCount(); ++i) {
        mapping.setData(mapping.index(i, 0), Qt::Checked, Qt::CheckStateRole);
    }
    Map("Resistance", "", CMappingModel::kUnit);
    Generate();
    EXPECT_TRUE(Logged(QStringLiteral("[ERROR] Resistor \"Destination Library\" required")));
    EXPECT_TRUE(Logged(QStringLiteral(
        "[ERROR] \"Resistor\" Tab Lookup Keyword            \"XLS Prop.\" required")));
    EXPECT_TRUE(Logged(
        QStringLiteral("[ERROR]  \"Resistor\" Tab Resistance                \"Unit\" required")));
    EXPECT_EQ(answers.Shown().size(), 0U);
}

TEST_F(CGeneratorTest, ANewLibraryIsWrittenLoggedAndOpened)
{
    SetSource(kResistors);
    SetDestination("made.zov");
    Generate();
    EXPECT_TRUE(Logged(QStringLiteral("start generating")));
    EXPECT_TRUE(Logged(QStringLiteral("Generating \"Resistor\" models...")));
    EXPECT_TRUE(Logged(QStringLiteral("[ERROR]: Cannot get 'Resistance' from (Row:5, Col:2)")));
    EXPECT_TRUE(Logged(QStringLiteral("2 models imported to library :")));
    EXPECT_TRUE(Logged(QStringLiteral("Completed.")));
    const std::string file = folder.Read("ZVLibGen.log");
    EXPECT_NE(file.find("Generating \"Resistor\" models...\n"), std::string::npos);
    EXPECT_NE(file.find("Completed.\n"), std::string::npos);
    EXPECT_TRUE(std::ranges::any_of(log.Lines(), [](const std::string& line) {
        return line.starts_with("2 models imported");
    })) << "also in the Output pane";
    ASSERT_NE(session.ProjectLibrary(), nullptr);
    EXPECT_EQ(session.ProjectLibrary()->Count(), 2U);
    EXPECT_TRUE(
        Child<QLabel>("ui_IDC_STATE")
            .text()
            .contains(QStringLiteral("Resistor: added 2, replaced 0, skipped 1, left out 1")));
}

TEST_F(CGeneratorTest, AnOpenLibraryIsChangedInOneStep)
{
    SetSource(kResistors);
    SetDestination("made.zov");
    Generate();
    const CZovSession::TLibrary library = session.ProjectLibrary();
    CLibraryChange edit(library);
    edit.Insert(Capacitor).SetString(EPropId::ModelName, "BY-HAND");
    session.Edits().Apply(edit, QStringLiteral("Add"));

    const auto value = [&] {
        return library->Find(Resistor, "R-10")->GetDouble(EPropId::Resistance);
    };
    SetSource("Part Number,Resistance (Ohm),Model Type\nR-10,99,RLC\nR-40,40,RLC\n");
    const QString replaceFile = QStringLiteral(
        "These ZOV files with the same name already exists.Do you want to replace the existing "
        "file?\nIf you click No, the new models in the source file would be appended to the "
        "existing ZOV file.");
    const QString replaceModels = QStringLiteral(
        "Models with the same name already exist in the selected ZOV file. Do you want to replace "
        "them with the new models?\nIf you click No, the existing models would be retained.");
    const std::string before = folder.Read("made.zov");
    answers.Then(EAnswer::Cancel);
    Generate();
    EXPECT_EQ(folder.Read("made.zov"), before);
    EXPECT_EQ(library->Count(), 3U);
    EXPECT_TRUE(session.IsModified(*library));
    EXPECT_TRUE(Log().trimmed().endsWith(QStringLiteral("Stopped."))) << Log().toStdString();
    EXPECT_EQ(answers.Shown().back().buttons, ui::EButtons::YesNoCancel);
    const std::size_t shown = answers.Shown().size();
    answers.Then(EAnswer::No).Then(EAnswer::No);
    Generate();
    ASSERT_EQ(answers.Shown().size(), shown + 2);
    EXPECT_EQ(answers.Shown()[shown].text, replaceFile);
    EXPECT_EQ(answers.Shown()[shown + 1].text, replaceModels);
    EXPECT_EQ(library->Count(), 4U);
    EXPECT_EQ(value(), 10.0) << "retained";
    EXPECT_TRUE(Logged(QStringLiteral("'R-10' exsits in library...skip")));
    EXPECT_EQ(Count("made.zov"), 4U) << "saved, what was made by hand as well";
    EXPECT_FALSE(session.IsModified(*library));

    answers.Then(EAnswer::No).Then(EAnswer::Yes);
    Generate();
    EXPECT_EQ(value(), 99.0);
    EXPECT_TRUE(Logged(QStringLiteral("'R-10' exsits in library,updating...")));
    session.Edits().SetActive(library);
    EXPECT_EQ(session.Edits().UndoText(), QStringLiteral("Import Models"));
    session.Edits().Undo();
    EXPECT_EQ(value(), 10.0);
    EXPECT_EQ(library->Count(), 4U);
    session.Edits().Undo();
    EXPECT_EQ(library->Count(), 3U) << "the first import is a step of its own";

    answers.Then(EAnswer::Yes);
    Generate();
    EXPECT_EQ(library->Count(), 2U) << "the file is replaced";
    EXPECT_EQ(Count("made.zov"), 2U);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CGeneratorTest, TabsNotInUseOfferTheProjectLibrary)
{
    SetSource(kResistors);
    SetDestination("made.zov");
    Generate();
    CDlgZovGenMain next(&session, &window);
    EXPECT_EQ(next.Page(Capacitor).Tab().destination, PathText(session.ProjectLibrary()->Path()));
    EXPECT_EQ(next.Page(Resistor).Tab().sourceFile, dialog.Page(Resistor).Tab().sourceFile);
}

TEST_F(CGeneratorTest, StoppingLeavesEverythingAsItWas)
{
    std::string lines = "Part Number,Resistance (Ohm),Model Type\n";
    for (int i = 0; i < 60000; ++i) {
        lines += "R-" + std::to_string(i) + ",10,RLC\n";
    }
    SetSource(lines);
    SetDestination("large.zov");
    QTest::mouseClick(&Child<QPushButton>("ui_IDC_GENERATE"), Qt::LeftButton);
    EXPECT_TRUE(Child<QPushButton>("ui_IDC_STOP").isEnabled());
    QTest::mouseClick(&Child<QPushButton>("ui_IDC_STOP"), Qt::LeftButton);
    Settle();
    QTest::qWait(1);
    EXPECT_TRUE(Logged(QStringLiteral("Stopped.")));
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "large.zov"));
    EXPECT_EQ(session.ProjectLibrary(), nullptr);
}

TEST_F(CGeneratorTest, PartListsAndLibrariesThatAreNoneAreTold)
{
    dialog.Page(Resistor).SetSource(Text(folder.Write("broken.xlsx", "no workbook")));
    SetDestination("made.zov");
    Map("Model Name", "X");
    Generate();
    ASSERT_EQ(answers.Shown().size(), 1U);
    EXPECT_EQ(answers.Shown()[0].text,
              QStringLiteral("the file is corrupted. Use another Microsoft Excel file that is "
                             "useable."));
    dialog.Page(Resistor).SetSource(Text(folder.Path() / "absent.csv"));
    Settle();
    Generate();
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("[ERROR]: Open %1 failed").arg(Text(folder.Path() / "absent.csv")));

    folder.Write("made.zov", "no library");
    SetSource(kResistors);
    answers.Then(EAnswer::No);
    Generate();
    EXPECT_TRUE(Logged(QStringLiteral("Cannot load ZOV model from file '%1' because '")
                           .arg(Text(folder.Path() / "made.zov"))));
    EXPECT_EQ(folder.Read("made.zov"), "no library");
}

TEST_F(CGeneratorTest, SeveralTabsRunAfterEachOther)
{
    SetSource(kResistors);
    SetDestination("both.zov");
    SetSource("Part Number,Inductance (uH),DCR (mOhm),Model Type\nL-1,2.2,30,RLC\n", Inductor);
    SetDestination("both.zov", Inductor);
    Generate();
    EXPECT_TRUE(answers.Shown().empty()) << "the second adds to what the first made";
    EXPECT_EQ(Count("both.zov"), 3U);
    EXPECT_TRUE(Logged(QStringLiteral("Generating \"Inductor\" models...")));
    EXPECT_EQ(session.ProjectLibrary()->Count(), 3U);
    EXPECT_TRUE(session.Set().Externals().empty()) << "opened once";
    const std::string file = folder.Read("ZVLibGen.log");
    EXPECT_LT(file.find("\"Inductor\""), file.find("\"Resistor\"")) << "one log for both";

    answers.Then(EAnswer::No).Then(EAnswer::Yes); // each for both tabs
    Generate();
    EXPECT_EQ(answers.Shown().size(), 2U);
    EXPECT_TRUE(Logged(QStringLiteral("'L-1' exsits in library,updating...")));
    EXPECT_TRUE(Logged(QStringLiteral("'R-20' exsits in library,updating...")));
    EXPECT_EQ(Count("both.zov"), 3U);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CGeneratorTest, MappingFilesGoOutAndIn)
{
    SetSource(kResistors);
    Map("Resistance", "Resistance (Ohm)");
    answers.ThenPath(Text(folder.Path() / "map"));
    QTest::mouseClick(&Child<QPushButton>("ui_IDC_MAPPING_SAVE"), Qt::LeftButton);
    EXPECT_NE(folder.Read("map.txt").find("Resistance,Resistance (Ohm)\n"), std::string::npos);
    Map("Resistance", "");
    answers.ThenPath(Text(folder.Path() / "map.txt"));
    QTest::mouseClick(&Child<QPushButton>("ui_IDC_MAPPING_LOAD"), Qt::LeftButton);
    Settle();
    EXPECT_EQ(Preview().rowCount(), 4);
    answers.ThenPath(Text(folder.Write("bad.txt", ",no property\n")));
    QTest::mouseClick(&Child<QPushButton>("ui_IDC_MAPPING_LOAD"), Qt::LeftButton);
    EXPECT_TRUE(answers.Shown().back().text.contains(
        QStringLiteral("Column map file format is wrong,can not start with ','")));
}

TEST_F(CGeneratorTest, ItOpensAsItWasLeft)
{
    SetSource(kResistors);
    SetDestination("made.zov");
    Map("Resistance", "kOhm", CMappingModel::kUnit);
    Map("Mfg.Part No.", "=same for all");
    Map("Manufacturer", "");
    Child<QRadioButton>("ui_IDC_REPLACE").setChecked(true);
    dialog.Page(Capacitor).SetDestination(QStringLiteral("caps.zov"));
    Child<QLineEdit>("ui_IDC_VENDOR", Capacitor).setText(QStringLiteral("vendors"));
    dialog.ShowPage(Resistor);
    EXPECT_EQ(Child<QLabel>("ui_IDC_STATE").text(), QStringLiteral("To be generated: Resistor"));
    dialog.reject();

    const auto field = [](CGeneratorPage& page, const char* name) {
        return page.findChild<QLineEdit*>(QLatin1String(name))->text();
    };
    CDlgZovGenMain again(&session, &window);
    CGeneratorPage& page = again.Page(Resistor);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !page.IsBusy(); }));
    const batch::SDialogTab was = dialog.Page(Resistor).Tab();
    const batch::SDialogTab is = page.Tab();
    EXPECT_EQ(is.sourceFile, was.sourceFile);
    EXPECT_EQ(is.workSheet, was.workSheet);
    EXPECT_EQ(is.headerRow, was.headerRow);
    EXPECT_EQ(is.destination, was.destination);
    EXPECT_EQ(is.duplicates, batch::ESheetDuplicate::ReplaceWithNew);
    ASSERT_EQ(is.mapping.size(), was.mapping.size());
    for (std::size_t i = 0; i < is.mapping.size(); ++i) {
        EXPECT_EQ(is.mapping[i].field, was.mapping[i].field);
        EXPECT_EQ(is.mapping[i].title, was.mapping[i].title);
        EXPECT_EQ(is.mapping[i].unit, was.mapping[i].unit);
        EXPECT_EQ(is.mapping[i].constant, was.mapping[i].constant);
    }
    EXPECT_EQ(
        page.findChild<QAbstractItemView*>(QStringLiteral("ui_IDC_PREVIEW"))->model()->rowCount(),
        4);
    EXPECT_EQ(field(again.Page(Capacitor), "ui_IDC_VENDOR"), QStringLiteral("vendors"));
    EXPECT_EQ(field(again.Page(Capacitor), "ui_IDC_DESTINATION"), QStringLiteral("caps.zov"));
    EXPECT_FALSE(again.Page(Inductor).HasSource());
    EXPECT_EQ(again.findChild<QTabWidget*>()->currentWidget(), &page);

    // The part list is gone, or has other sheets: it is told, and the fields stay.
    std::filesystem::remove(folder.Path() / "Resistor.csv");
    CDlgZovGenMain late(&session, &window);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !late.Page(Resistor).IsBusy(); }));
    EXPECT_TRUE(late.Page(Resistor).SourceError());
    EXPECT_EQ(late.Page(Resistor).Tab().mapping.size(), was.mapping.size());
}

TEST_F(CGeneratorTest, VendorListsArePutTogether)
{
    answers.ThenDialog([&](QDialog& shown) {
        auto& vendor = dynamic_cast<CDlgVendorDecapLibrary&>(shown);
        const QAbstractItemModel& libraries =
            *vendor.findChild<QAbstractItemView*>(QStringLiteral("ui_IDC_LIBRARIES"))->model();
        EXPECT_FALSE(vendor.findChild<QPushButton*>(QStringLiteral("ui_IDC_REMOVE"))->isEnabled());
        answers.ThenPaths({Text(folder.Write("vendor/one.xml", "<no/>")),
                           Text(folder.Path() / "vendor" / "two.xml")});
        QTest::mouseClick(vendor.findChild<QPushButton*>(QStringLiteral("ui_IDC_ADD")),
                          Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !vendor.IsBusy(); }));
        ASSERT_EQ(libraries.rowCount(), 2);
        EXPECT_TRUE(
            libraries.index(1, 1).data().toString().startsWith(QStringLiteral("not loaded")));
        answers.ThenPath(Text(folder.Path() / "vendor"));
        vendor.accept();
    });
    dialog.Page(Capacitor).findChild<QPushButton*>(QStringLiteral("ui_IDC_VENDOR_EDIT"))->click();
    EXPECT_EQ(folder.Read("vendor/Manufacturer_Decap_Library.txt"), "one.xml\ntwo.xml\n");
    EXPECT_EQ(Child<QLineEdit>("ui_IDC_VENDOR", Capacitor).text(),
              Text(folder.Path() / "vendor" / "Manufacturer_Decap_Library.txt"));
    CDlgVendorDecapLibrary again(Text(folder.Path() / "vendor"), nullptr);
    EXPECT_EQ(again.findChild<QAbstractItemView*>(QStringLiteral("ui_IDC_LIBRARIES"))
                  ->model()
                  ->rowCount(),
              2);
}

constexpr int kKilledRows = 1500;

/// Not a test: the process that the next one kills. Imports the list into the open library again
/// and again, with another value in all rows each time.
TEST_F(CGeneratorTest, DISABLED_ImportsUntilKilled)
{
    const std::filesystem::path library =
        TextPath(CKilledChild::Folder().toStdString()) / "killed.zov";
    session.OpenProject(library, questions);
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.ProjectLibrary() != nullptr; }));
    dialog.Page(Resistor).SetDestination(Text(library));
    for (int round = 1;; ++round) {
        std::string lines = "Part Number,Resistance (Ohm),Model Type\n";
        for (int i = 0; i < kKilledRows; ++i) {
            lines += "R-" + std::to_string(i) + ',' + std::to_string(round) + ",RLC\n";
        }
        SetSource(lines);
        answers.Then(EAnswer::No).Then(EAnswer::Yes);
        Generate();
        CKilledChild::Say("imported");
    }
}

TEST_F(CGeneratorTest, KilledWhileItImportsTheLibraryIsOfOneListOnly)
{
    const std::filesystem::path path = folder.Path() / "killed.zov";
    CNullLog silent;
    {
        CZovLibrary library;
        for (int i = 0; i < kKilledRows; ++i) {
            CZovRcdProps& record = library.Add(Resistor);
            record.SetString(EPropId::ModelName, "R-" + std::to_string(i));
            record.SetDouble(EPropId::Resistance, 0.0);
        }
        ASSERT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
    }
    for (int round = 0; round < 3; ++round) {
        CKilledChild child("CGeneratorTest.DISABLED_Imports*", Text(folder.Path()));
        ASSERT_TRUE(child.WaitFor("imported"));
        QTest::qWait(70 * round); // reading, asking, applying, saving
        child.Kill();
        const auto found = LoadLibrary(path, {}, silent);
        ASSERT_TRUE(found.Ok()) << found.Error().Full();
        ASSERT_EQ(found->Count(), static_cast<std::size_t>(kKilledRows));
        const std::optional<double> value = found->At(0).GetDouble(EPropId::Resistance);
        EXPECT_GE(value, static_cast<double>(child.Count("imported"))) << "what was saved is there";
        for (const CZovRcdProps* record : found->Records()) {
            ASSERT_EQ(record->GetDouble(EPropId::Resistance), value) << record->Name();
        }
    }
}

} // namespace
} // namespace zov::app::test
