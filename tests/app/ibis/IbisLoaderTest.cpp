// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisLoaderDlg.h"
#include "app/ibis/IbisModelDlg.h"
#include "app/ibis/ModelBrowserDlg.h"
#include "app/ibis/SignalBrowserDlg.h"
#include "base/File.h"
#include "support/SourcePaths.h"
#include "support/TempFolder.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>

namespace zov::app {
namespace {

const char* const kModel = "[Model] drv\nModel_type I/O\nVinl = 0.8\nVinh = 2.0\n"
                           "C_comp 5pF 4pF 6pF\n[Voltage Range] 3.3 3.0 3.6\n"
                           "[Pulldown]\n-1 -1m NA NA\n0 0 0 0\n3 30m 20m 40m\n"
                           "[Pullup]\n-1 1m NA NA\n3 -30m -20m -40m\n"
                           "[Ramp]\ndV/dt_r 1/1n NA NA\ndV/dt_f 1/1n NA NA\n";

struct IbisLoaderTest : testing::Test
{
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    std::filesystem::path File(const std::string& name = "chip.ibs") const
    {
        return folder.Write(name,
                            "[IBIS Ver] 5.0\n[File Name] " + name +
                                "\n[File Rev] 1\n[Component] ctrl\n[Manufacturer] m\n[Package]\n"
                                "R_pkg 0.1 NA NA\nL_pkg 1n NA NA\nC_pkg 1p NA NA\n"
                                "[Pin] signal_name model_name R_pin L_pin C_pin\n"
                                "A1 DQ0 drv\nA2 DQ1 drv\nA10 DQS drv\nB1 VDD POWER\n"
                                "[Component] bare\n[Manufacturer] m\n" +
                                kModel + "[End]\n");
    }
    void Open(const std::filesystem::path& path)
    {
        dialog.OpenFile(Text(path));
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.IsIdle(); }));
    }
    template <class T>
    T& Child(const char* name) const
    {
        return *dialog.findChild<T*>(QLatin1String(name));
    }
    void Choose(int component) const
    {
        auto& components = Child<QComboBox>("ui_IDC_COMPONENT");
        components.setCurrentIndex(component);
        Q_EMIT components.activated(component);
    }
    void Click(const char* button) { Child<QPushButton>(button).click(); }
    QString Message() const { return Child<QLabel>("ui_IDC_MESSAGE").text(); }
    CBusTreeModel& Buses() const
    {
        return Child<BusDefinitionEditorView>("ui_IDC_BUS_EDITOR").Model();
    }
    /// Writes into the value column.
    bool Set(const CBusTreeModel::SPlace& place, const char* text)
    {
        return Buses().setData(Buses().IndexOf(place).siblingAtColumn(1), QLatin1String(text),
                               Qt::EditRole);
    }
    void SelectDefinition(const CBusTreeModel::SPlace& place)
    {
        Child<QTreeView>("BusTree").setCurrentIndex(Buses().IndexOf(place));
    }

    using EItem = CBusTreeModel::EItem;
    test::CTempFolder folder;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CIBISLoaderDlg dialog{nullptr, log};
};

TEST_F(IbisLoaderTest, WhatIsWrongWithAFileIsTold)
{
    struct SCase
    {
        const char* name;
        std::string bytes;
        QString message;
    };
    const SCase cases[] = {
        {"empty.ibs", "", QStringLiteral("Empty IBIS file")},
        {"text.ibs", "hello\n", QStringLiteral("File: text.ibs is not an IBIS file.")},
        {"none.ibs", "[IBIS Ver] 5.0\n[End]\n",
         QStringLiteral("There is no component in the file.")},
    };
    for (const SCase& one : cases) {
        Open(folder.Write(one.name, one.bytes));
        EXPECT_TRUE(answers.Shown().back().text.contains(one.message))
            << answers.Shown().back().text.toStdString();
        EXPECT_FALSE(Child<QPushButton>("ui_IDC_SAVE_COPY").isEnabled());
    }
    Open(File());
    EXPECT_TRUE(Child<QLabel>("ui_IDC_VERDICT").text().contains(QStringLiteral("errors")))
        << "a component without pins: the check has an error";
    EXPECT_TRUE(Child<QPlainTextEdit>("ui_IDC_MESSAGES")
                    .toPlainText()
                    .contains(QStringLiteral(" has no [Pin Mapping] section.")));
    Choose(1);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral(" has no [Pin] section.")));
    EXPECT_FALSE(Child<QPushButton>("ui_IDC_SAVE_COPY").isEnabled());
    Open(test::SourceFolder() + "/examples/memory.ibs");
    EXPECT_TRUE(Child<QLabel>("ui_IDC_VERDICT").text().startsWith(QStringLiteral("The check")));
}

TEST_F(IbisLoaderTest, WhatDoesNotFitInAComponentIsListed)
{
    const std::string text =
        "[IBIS Ver] 5.0\n[File Name] odd.ibs\n[File Rev] 1\n[Component] c\n[Manufacturer] m\n"
        "[Pin] signal_name model_name\n1 a m\n2 b m\n"
        "[Pin Mapping] pulldown_ref pullup_ref\n1 G V\n3 G V\n"
        "[Series Pin Mapping] pin_2 model_name\n1 4 rs\n5 2 rs\n1 2\n"
        "[Model] m\nModel_type Input\n[Model] m\nModel_type Input\n[End]\n";
    Open(folder.Write("odd.ibs", text));
    const QString shown = Child<QPlainTextEdit>("ui_IDC_MESSAGES").toPlainText();
    for (const char* message :
         {"Pin: 3 in the [Pin Mapping] section is not found in the [Pin] section.",
          "Pin 2 : 4 in the [Series Pin Mapping] section is not found in the [Pin] section.",
          "Pin 1 : 5 in the [Series Pin Mapping] section is not found in the [Pin] section.",
          "Series pin model is not specified for Pin pair : 1 and 2 in the [Series Pin Mapping].",
          "Warning: There are more than one model m in the file odd.ibs and the settings of the "
          "previous one is covered."}) {
        EXPECT_TRUE(shown.split(QLatin1Char('\n')).contains(QLatin1String(message)))
            << message << "\n"
            << shown.toStdString();
        EXPECT_NE(std::ranges::find(log.Lines(), message), log.Lines().end()) << message;
    }
    EXPECT_FALSE(Child<QPlainTextEdit>("ui_IDC_MESSAGES").isHidden());
    EXPECT_TRUE(answers.Shown().empty()) << "none of these stops the work";
}

TEST_F(IbisLoaderTest, AComponentIsTypedOrChosen)
{
    Open(File());
    auto& components = Child<QComboBox>("ui_IDC_COMPONENT");
    components.setCurrentText(QStringLiteral("memory7"));
    QTest::keyClick(components.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("Can not find component 'memory7'."));
    EXPECT_EQ(components.currentText(), QStringLiteral("ctrl")) << "what is shown stays";
    EXPECT_EQ(dialog.Loader()->Pins().component, "ctrl");
    components.setCurrentText(QStringLiteral("bare"));
    QTest::keyClick(components.lineEdit(), Qt::Key_Return);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral(" has no [Pin] section.")));
    EXPECT_EQ(Child<IBISPinListEditorView>("ui_IDC_PIN_LIST").List().Table().model()->rowCount(),
              0);
    EXPECT_TRUE(Child<QPlainTextEdit>("ui_IDC_MESSAGES").isHidden());
    EXPECT_TRUE(dialog.isEnabled());
}

TEST_F(IbisLoaderTest, AFileThatFailsLeavesTheOneBefore)
{
    Open(File());
    const QString verdict = Child<QLabel>("ui_IDC_VERDICT").text();
    Click("AddBus");
    answers.Then(ui::EAnswer::No);
    Open(folder.Write("text.ibs", "hello\n"));
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("File: text.ibs is not an IBIS file."));
    EXPECT_EQ(Child<QLineEdit>("ui_IDC_FILE").text(), Text(folder.Path() / "chip.ibs"));
    EXPECT_EQ(Child<QLabel>("ui_IDC_VERDICT").text(), verdict);
    EXPECT_EQ(Buses().rowCount(), 1) << "and what was edited in it";
}

TEST_F(IbisLoaderTest, PinsAreFilteredAndSortedAsPeopleCount)
{
    Open(File());
    CFilteredTable& list = Child<IBISPinListEditorView>("ui_IDC_PIN_LIST").List();
    QAbstractItemModel& rows = *list.Table().model();
    EXPECT_EQ(rows.rowCount(), 4);
    list.Table().sortByColumn(0, Qt::AscendingOrder);
    QStringList pins;
    for (int row = 0; row < rows.rowCount(); ++row) {
        pins += rows.index(row, 0).data().toString();
    }
    EXPECT_EQ(pins.join(QLatin1Char(' ')), QStringLiteral("A1 A2 A10 B1"));
    list.Filter().setText(QStringLiteral("dq"));
    EXPECT_EQ(rows.rowCount(), 3);
    list.Filter().setText(QStringLiteral("power"));
    EXPECT_EQ(rows.rowCount(), 1);
}

TEST_F(IbisLoaderTest, DefinitionsAreEditedByTheRulesAndSavedIntoACopy)
{
    const std::filesystem::path path = File();
    Open(path);
    Click("AddBus");
    Click("AddBus");
    EXPECT_TRUE(Set({EItem::Bus, 0}, "DQ"));
    EXPECT_FALSE(Set({EItem::Bus, 1}, "DQ"));
    EXPECT_EQ(Message(), QStringLiteral("'DQ' is already in use."));
    EXPECT_EQ(log.Lines().back(), "'DQ' is already in use.");
    SelectDefinition({EItem::Bus, 1});
    dialog.show();
    Child<QTabWidget>("ui_IDC_TABS").setCurrentIndex(2);
    Child<QTreeView>("BusTree").setFocus();
    QTest::keyClick(&Child<QTreeView>("BusTree"), Qt::Key_Delete);
    EXPECT_EQ(Buses().rowCount(), 1);
    EXPECT_TRUE(Set({EItem::BusType, 0}, "Ctrl"));
    SelectDefinition({EItem::Bus, 0});
    answers.ThenText(QStringLiteral("lane0"));
    Click("AddGroup");
    SelectDefinition({EItem::Bus, 0});
    Click("AddReference");
    EXPECT_TRUE(Set({EItem::Reference, 0, 0}, "DQS"));
    EXPECT_TRUE(Set({EItem::Edge, 0, 0}, "RiseEdge"));
    const CBusTreeModel::SPlace setup = {EItem::Limit, 0, 0, 0};
    for (const char* bad : {"-1", "0", "fast"}) {
        EXPECT_FALSE(Set(setup, bad));
        EXPECT_TRUE(Message().endsWith(QStringLiteral(" should be positive number."))) << bad;
    }
    EXPECT_TRUE(Set(setup, "25ps"));
    EXPECT_EQ(Message(), QString()) << "what was refused is settled";
    SelectDefinition({EItem::Reference, 0, 0});
    answers.ThenDialog([](QDialog& shown) {
        shown.findChild<QLineEdit*>(QStringLiteral("ui_IDC_FILTER"))
            ->setText(QStringLiteral("DQ?"));
        shown.findChild<QListView*>(QStringLiteral("ui_IDC_NAMES"))->selectAll();
        EXPECT_EQ(dynamic_cast<CSignalBrowserDlg&>(shown).Chosen().size(), 3);
        shown.accept();
    });
    Click("AddSignal");
    SelectDefinition({EItem::Signal, 0, 0, 2});
    Click("RemoveDefinition");
    CFilteredTable& pins = Child<IBISPinListEditorView>("ui_IDC_PIN_LIST").List();
    EXPECT_FALSE(Child<QPushButton>("ui_IDC_ADD_SELECTED").isEnabled());
    pins.Table().selectRow(0);
    EXPECT_TRUE(Child<QPushButton>("ui_IDC_ADD_SELECTED").isEnabled());
    Click("ui_IDC_ADD_SELECTED");
    EXPECT_EQ(Message(), QStringLiteral("'DQ0' is already in use."));
    SelectDefinition({EItem::Bus, 0});
    Click("AddReference");
    SelectDefinition({EItem::Bus, 0});
    answers.ThenDialog([](QDialog& shown) {
        auto* references = shown.findChild<QComboBox*>(QStringLiteral("ui_IDC_REFERENCES"));
        EXPECT_EQ(references->count(), 2);
        references->setCurrentIndex(1);
        shown.accept();
    });
    Click("ui_IDC_ADD_SELECTED");
    EXPECT_EQ(dialog.Loader()->Definitions().buses[0].references[1].signals.size(), 1U);
    SelectDefinition({EItem::Reference, 0, 1});
    Click("RemoveDefinition");

    const std::string before = folder.Read("chip.ibs");
    Click("ui_IDC_SAVE_COPY");
    EXPECT_EQ(dialog.SavedCopy(), Text(folder.Path() / "chip_Copy1.ibs"));
    EXPECT_EQ(folder.Read("chip.ibs"), before);
    const std::string copy = folder.Read("chip_Copy1.ibs");
    for (const char* line : {"[Component Type]", "[Bus Type]               Ctrl", "RiseEdge",
                             "25ps", "SignalName          DQ0 DQ1\n", "lane0"}) {
        EXPECT_NE(copy.find(line), std::string::npos) << line << copy;
    }
    Open(folder.Path() / "chip_Copy1.ibs");
    EXPECT_EQ(Buses().rowCount(), 1) << "read back";
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(IbisLoaderTest, SidesAreRefusedToTheOtherType)
{
    Open(File());
    Click("ui_IDC_ASSIGN_MEMORY");
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("The component 'ctrl' is not a Memory component."));
    EXPECT_EQ(dialog.Memory(), QString());
    Click("ui_IDC_ASSIGN_CONTROLLER");
    EXPECT_EQ(dialog.Controller(), QStringLiteral("ctrl"));
    auto& type = Child<QComboBox>("ComponentType");
    type.setCurrentIndex(1);
    Q_EMIT type.activated(1);
    Click("ui_IDC_ASSIGN_CONTROLLER");
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("The component 'ctrl' is not a Controller component."));
    Click("ui_IDC_ASSIGN_MEMORY");
    EXPECT_EQ(dialog.Memory(), QStringLiteral("ctrl"));
}

TEST_F(IbisLoaderTest, EditedDefinitionsAreNotLost)
{
    Open(File());
    Click("AddBus");
    dialog.show();
    answers.Then(ui::EAnswer::Cancel);
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    answers.Then(ui::EAnswer::Cancel);
    Choose(1);
    EXPECT_EQ(Child<QComboBox>("ui_IDC_COMPONENT").currentIndex(), 0);
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_read |
                                                    std::filesystem::perms::owner_exec);
    if (::access(folder.Path().c_str(), W_OK) != 0) { // root writes everywhere
        Click("ui_IDC_SAVE_COPY");
        EXPECT_TRUE(answers.Shown().back().text.startsWith(
            QStringLiteral("Cannot make a copy of the IBIS file.")));
    }
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
    answers.Then(ui::EAnswer::Yes);
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(std::filesystem::exists(folder.Path() / "chip_Copy1.ibs"));
}

TEST_F(IbisLoaderTest, ACopyThatFailsIsTold)
{
    const std::filesystem::path inner = folder.Path() / "inner";
    std::filesystem::create_directory(inner);
    std::filesystem::rename(File(), inner / "chip.ibs");
    Open(inner / "chip.ibs");
    Click("AddBus");
    std::filesystem::remove_all(inner);
    Click("ui_IDC_SAVE_COPY");
    EXPECT_TRUE(answers.Shown().back().text.startsWith(
        QStringLiteral("Cannot make a copy of the IBIS file.")))
        << answers.Shown().back().text.toStdString();
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("inner"))) << "and why";
    EXPECT_EQ(dialog.SavedCopy(), QString());
    EXPECT_TRUE(dialog.Loader()->Changed());
}

TEST_F(IbisLoaderTest, EveryLimitIsAPositiveNumber)
{
    Open(File());
    Click("AddBus");
    SelectDefinition({EItem::Bus, 0});
    Click("AddReference");
    const char* const labels[] = {"Min Transmit Setup",
                                  "Min Transmit Hold",
                                  "Min Receive Setup",
                                  "Min Receive Hold",
                                  "Min Strobe Setup",
                                  "Min Strobe Hold",
                                  "tDQSQ",
                                  "tQH",
                                  "Max Receive Skew (+)",
                                  "Max Receive Skew (-)",
                                  "Max Strobe Clock Skew (+)",
                                  "Max Strobe Clock Skew (-)"};
    for (std::size_t i = 0; i < std::size(labels); ++i) {
        const CBusTreeModel::SPlace limit = {EItem::Limit, 0, 0, i};
        const QString label = QLatin1String(labels[i]);
        EXPECT_EQ(Buses().IndexOf(limit).data().toString(), label);
        EXPECT_FALSE(Set(limit, "-5ps")) << labels[i];
        EXPECT_EQ(Message(), label + QStringLiteral(" should be positive number."));
        EXPECT_TRUE(Set(limit, "1.5e-12")) << labels[i];
        EXPECT_EQ(Message(), QString());
    }
    EXPECT_TRUE(Set({EItem::Limit, 0, 0, 11}, "")) << "a limit is taken away";
    const ibis::STimingReference& made = dialog.Loader()->Definitions().buses[0].references[0];
    EXPECT_EQ(made.limits[0], "1.5e-12");
    EXPECT_EQ(made.limits[11], "");
}

TEST_F(IbisLoaderTest, ManySignalsAreTakenAtOnceButThoseInUse)
{
    std::string text = "[IBIS Ver] 5.0\n[File Name] many.ibs\n[Component] c\n[Pin] signal model\n";
    for (int i = 0; i < 1500; ++i) {
        text += "P" + std::to_string(i) + " S" + std::to_string(i) + " GND\n";
    }
    Open(folder.Write("many.ibs", text + "[End]\n"));
    Click("AddBus");
    SelectDefinition({EItem::Bus, 0});
    Click("AddReference");
    SelectDefinition({EItem::Reference, 0, 0});
    QTableView& pins = Child<IBISPinListEditorView>("ui_IDC_PIN_LIST").List().Table();
    pins.selectRow(7);
    Click("ui_IDC_ADD_SELECTED");
    pins.selectAll();
    QElapsedTimer clock;
    clock.start();
    Click("ui_IDC_ADD_SELECTED");
    EXPECT_LT(clock.elapsed(), 5000) << "even in a build without optimisation, beside other work";
    EXPECT_EQ(dialog.Loader()->Definitions().buses[0].references[0].signals.size(), 1500U);
    EXPECT_EQ(Message(), QStringLiteral("'S7' is already in use.")) << "told behind the others";
    SelectDefinition({EItem::Reference, 0, 0});
    for (const char* button : {"AddClock", "AddClock"}) {
        answers.ThenDialog([](QDialog& shown) {
            shown.findChild<QListView*>(QStringLiteral("ui_IDC_NAMES"))
                ->setCurrentIndex(shown.findChild<QListView*>(QStringLiteral("ui_IDC_NAMES"))
                                      ->model()
                                      ->index(0, 0));
            shown.accept();
        });
        Click(button);
    }
    EXPECT_EQ(Message(), QStringLiteral("'S0' is already in use.")) << "as a clock";
    SelectDefinition({EItem::Bus, 0});
    answers.ThenText(QStringLiteral("g"));
    Click("AddGroup");
    SelectDefinition({EItem::Bus, 0});
    answers.ThenText(QStringLiteral("g"));
    Click("AddGroup");
    EXPECT_EQ(Message(), QStringLiteral("'g' is already in use.")) << "as a group";
    SelectDefinition({EItem::Bus, 0});
    Click("AddReference");
    EXPECT_FALSE(Set({EItem::Reference, 0, 1}, "Ref1"));
    EXPECT_EQ(Message(), QStringLiteral("'Ref1' is already in use.")) << "as a timing reference";
}

TEST_F(IbisLoaderTest, TheTabKeyGoesFromTopToBottom)
{
    const char* const wanted[] = {"ui_IDC_BROWSE",
                                  "ui_IDC_REPORT",
                                  "ui_IDC_MODELS",
                                  "Filter",
                                  "Rows",
                                  "ui_IDC_ADD_SELECTED",
                                  "ComponentType",
                                  "BusTree",
                                  "AddBus",
                                  "AddGroup",
                                  "AddReference",
                                  "AddClock",
                                  "AddSignal",
                                  "RemoveDefinition",
                                  "ui_IDC_MESSAGES",
                                  "ui_IDC_ASSIGN_CONTROLLER",
                                  "ui_IDC_SAVE_COPY"};
    std::size_t found = 0;
    const QWidget* const first = &Child<QPushButton>("ui_IDC_BROWSE");
    const QWidget* at = first;
    do {
        if (found < std::size(wanted) && at->objectName() == QLatin1String(wanted[found])) {
            ++found;
        }
        at = at->nextInFocusChain();
    } while (at != first);
    EXPECT_EQ(found, std::size(wanted))
        << "stopped before " << wanted[std::min<std::size_t>(found, 16)];
}

TEST_F(IbisLoaderTest, SignalsNeedATimingReference)
{
    Open(File());
    Child<IBISPinListEditorView>("ui_IDC_PIN_LIST").List().Table().selectRow(0);
    Click("ui_IDC_ADD_SELECTED");
    EXPECT_EQ(Message(), QStringLiteral("Add a timing reference under \"Bus Definitions\" first."));
    EXPECT_FALSE(dialog.Loader()->Changed());
}

TEST_F(IbisLoaderTest, ModelsAreBrowsed)
{
    Open(File());
    answers.ThenDialog([&](QDialog& shown) {
        auto& browser = dynamic_cast<CModelBrowserDlg&>(shown);
        ASSERT_TRUE(QTest::qWaitFor([&] { return browser.IsIdle(); }));
        auto* models = browser.findChild<QTableView*>(QStringLiteral("ui_IDC_MODELS"));
        ASSERT_EQ(models->model()->rowCount(), 1);
        EXPECT_FALSE(
            browser.findChild<QPushButton*>(QStringLiteral("ui_IDC_DETAILS"))->isEnabled());
        models->selectRow(0);
        ASSERT_EQ(browser.Chosen().size(), 1U);
        EXPECT_EQ(browser.Chosen()[0].modelType, QStringLiteral("I/O"));
        EXPECT_EQ(browser.findChild<CCurvePlot*>()->Axes().yUnit, QStringLiteral("A"));
        answers.ThenDialog([](QDialog& details) {
            auto* values = details.findChild<QTreeView*>(QStringLiteral("ui_IDC_VALUES"));
            EXPECT_GT(values->model()->rowCount(), 6);
        });
        browser.findChild<QPushButton*>(QStringLiteral("ui_IDC_DETAILS"))->click();
    });
    Click("ui_IDC_MODELS");
    EXPECT_TRUE(answers.AllUsed());
}

} // namespace
} // namespace zov::app
