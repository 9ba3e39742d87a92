// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/ComposeWizard.h"

#include "base/File.h"
#include "support/SourcePaths.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

struct ComposeWizardTest : testing::Test
{
    ComposeWizardTest()
    {
        std::filesystem::copy(test::SourceFolder() + "/examples", folder.Path(),
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
        wizard.restart();
        wizard.show();
    }
    static QString Text(const std::filesystem::path& path)
    {
        return QString::fromStdString(PathText(path));
    }
    template <class T>
    T& Child(const char* name) const
    {
        return *wizard.findChild<T*>(QLatin1String(name));
    }

    void OpenExample()
    {
        answers.ThenPath(Text(folder.Path() / "memory-composite.json"));
        Child<QPushButton>("OpenDescription").click();
    }
    /// Forwards until a page keeps; its number.
    int GoOn()
    {
        for (int before = -1; before != wizard.currentId() && wizard.currentId() < 4;) {
            before = wizard.currentId();
            wizard.next();
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return wizard.IsIdle(); }));
        return wizard.currentId();
    }

    test::CTempFolder folder;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CComposeWizard wizard{nullptr, log};
};

TEST_F(ComposeWizardTest, WritesADescriptionsFilesAndShowsTheCheck)
{
    answers.ThenPath(Text(folder.Path() / "memory-composite.json"));
    Child<QPushButton>("OpenDescription").click();
    const ibis::SComposite read = wizard.Composite();
    EXPECT_FALSE(read.pins.empty());
    EXPECT_FALSE(read.buffers.empty());
    EXPECT_TRUE(read.package.Given());
    for (int page = 0; page < 4; ++page) {
        EXPECT_EQ(wizard.currentId(), page);
        wizard.next();
    }
    ASSERT_EQ(wizard.currentId(), 4)
        << (answers.Shown().empty() ? "" : answers.Shown().back().text.toStdString());
    ASSERT_TRUE(QTest::qWaitFor([&] { return wizard.IsIdle(); }));
    EXPECT_FALSE(wizard.button(QWizard::CancelButton)->isVisible()) << "all is written";
    EXPECT_TRUE(wizard.button(QWizard::FinishButton)->isVisible());
    EXPECT_FALSE(Child<QLabel>("FileWarnings").isVisible());
    const std::string written = ReadWholeFile(TextPath(wizard.OutputPath().toStdString())).Take();
    EXPECT_NE(written.find("|Composite IBIS model with on-die, pkg circuit\r\n"),
              std::string::npos);
    EXPECT_TRUE(Child<QLabel>("Verdict").text().contains(QStringLiteral(" errors, ")));
    EXPECT_EQ(log.Lines().back(), "Written: " + wizard.OutputPath().toStdString());
    EXPECT_EQ(answers.Unexpected(), 0);

    // What was read goes out the same.
    answers.ThenPath(Text(folder.Path() / "again.json"));
    Child<QPushButton>("SaveDescription").click();
    EXPECT_EQ(folder.Read("again.json"), WriteCompositeJson(wizard.Composite()));
}

TEST_F(ComposeWizardTest, FilesThatAreThereAreAskedAboutOnce)
{
    struct SCase
    {
        bool ibis;
        bool spice;
    };
    OpenExample();
    Child<QLineEdit>("OutputPath").setText(Text(folder.Path() / "out.ibs"));
    for (const SCase& one : {SCase{true, false}, SCase{false, true}, SCase{true, true}}) {
        std::filesystem::remove(folder.Path() / "out.ibs");
        std::filesystem::remove(folder.Path() / "out.sp");
        if (one.ibis) {
            folder.Write("out.ibs", "kept");
        }
        if (one.spice) {
            folder.Write("out.sp", "kept");
        }
        answers.Then(ui::EAnswer::No);
        EXPECT_EQ(GoOn(), 3);
        const QString asked = answers.Shown().back().text;
        EXPECT_EQ(asked.contains(QStringLiteral("out.ibs")), one.ibis) << asked.toStdString();
        EXPECT_EQ(asked.contains(QStringLiteral("out.sp")), one.spice) << asked.toStdString();
        EXPECT_EQ(std::filesystem::exists(folder.Path() / "out.ibs"), one.ibis);
        EXPECT_EQ(std::filesystem::exists(folder.Path() / "out.sp"), one.spice);
        EXPECT_TRUE(answers.AllUsed());
    }
    EXPECT_EQ(folder.Read("out.ibs"), "kept");
    EXPECT_EQ(folder.Read("out.sp"), "kept");
    answers.Then(ui::EAnswer::Yes);
    EXPECT_EQ(GoOn(), 4);
    EXPECT_NE(folder.Read("out.ibs"), "kept");
    EXPECT_NE(folder.Read("out.sp"), "kept");
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ComposeWizardTest, WhatItIsMadeOfIsNeverOverwritten)
{
    std::filesystem::create_directory_symlink(folder.Path(), folder.Path() / "link");
    const std::string description = folder.Read("memory-composite.json");
    const std::string ibis = folder.Read("memory.ibs");
    const std::string package = folder.Read("nvm2_pkg.sp");
    OpenExample();
    for (const char* output :
         {"memory.ibs", "nvm2_pkg.ibs", "link/memory.ibs", "models/../memory.ibs"}) {
        Child<QLineEdit>("OutputPath").setText(Text(folder.Path() / output));
        EXPECT_EQ(GoOn(), 0) << output;
        EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("would be overwritten")));
    }
    Child<QLineEdit>("OutputPath").setText(Text(folder.Path() / "out.ibs"));
    Child<QLineEdit>("WrapperFile").setText(QStringLiteral("memory-composite.json"));
    EXPECT_EQ(GoOn(), 0);
    Child<QLineEdit>("WrapperFile").clear();
    wizard.next();
    // An input that comes later is looked at when the files are written.
    wizard.AddBuffer(Text(folder.Path() / "link/out.ibs"), QStringLiteral("dq_io"), {});
    std::filesystem::copy_file(folder.Path() / "memory.ibs", folder.Path() / "out.ibs");
    EXPECT_EQ(GoOn(), 3);
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("would be overwritten")));
    EXPECT_EQ(folder.Read("out.ibs"), ibis);
    EXPECT_EQ(folder.Read("memory.ibs"), ibis);
    EXPECT_EQ(folder.Read("nvm2_pkg.sp"), package);
    EXPECT_EQ(folder.Read("memory-composite.json"), description);
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ComposeWizardTest, FilesOfADescriptionElsewhereAreFoundFromTheOutput)
{
    std::filesystem::create_directory(folder.Path() / "out");
    OpenExample();
    Child<QLineEdit>("OutputPath").setText(Text(folder.Path() / "out" / "sys.ibs"));
    EXPECT_EQ(GoOn(), 4) << (answers.Shown().empty() ? ""
                                                     : answers.Shown().back().text.toStdString());
    const std::string spice = folder.Read("out/sys.sp");
    EXPECT_NE(spice.find(".include '../nvm2_pkg.sp'"), std::string::npos) << spice;
    EXPECT_NE(spice.find("file='../memory.ibs'"), std::string::npos) << spice;
    EXPECT_NE(folder.Read("out/sys.ibs").find("Corner Typ ../nvm2_pkg.sp "), std::string::npos);
    const auto warnings = [this] {
        const auto& label = Child<QLabel>("FileWarnings");
        return label.isVisible() ? label.text().toStdString() : std::string();
    };
    const auto beside = [](const char* name) {
        return std::string("Warning: IBIS files are to name circuits that stand beside them. Copy "
                           "'../") +
               name + "' there, or write into its folder.";
    };
    EXPECT_EQ(warnings(), beside("nvm2_pkg.sp") + '\n' + beside("nvm2_pdn.sp"));
    answers.ThenPath(Text(folder.Path() / "out" / "again.json"));
    Child<QPushButton>("SaveDescription").click();
    EXPECT_NE(folder.Read("out/again.json").find("\"../nvm2_pkg.sp\""), std::string::npos);

    std::filesystem::remove(folder.Path() / "nvm2_pkg.sp");
    wizard.restart();
    answers.Then(ui::EAnswer::Yes);
    EXPECT_EQ(GoOn(), 4);
    EXPECT_EQ(warnings(), "Warning: the files name '../nvm2_pkg.sp', which is not there.\n" +
                              beside("nvm2_pkg.sp") + '\n' + beside("nvm2_pdn.sp"));
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ComposeWizardTest, ComponentsAndSubcircuitsAreChosen)
{
    const auto two = folder.Write("two.ibs", "[IBIS Ver] 5.0\n[Component] a\n[Pin]\n1 x GND\n"
                                             "[Component] b\n[Pin]\n1 y GND\n2 z NC\n[End]\n");
    answers.ThenDialog([](QDialog& shown) {
        auto* names = shown.findChild<QComboBox*>(QStringLiteral("ui_IDC_REFERENCES"));
        EXPECT_EQ(names->count(), 2);
        names->setCurrentIndex(1);
        shown.accept();
    });
    wizard.TakePins(Text(two));
    ASSERT_EQ(wizard.Composite().pins.size(), 2U);
    EXPECT_EQ(wizard.Composite().pins[0].signal, "y");
    answers.ThenDialog([](QDialog& shown) { shown.accept(); });
    wizard.TakePins(Text(two));
    EXPECT_EQ(wizard.Composite().pins.size(), 2U);
    EXPECT_EQ(wizard.Composite().pins[0].signal, "y") << "what is in the list stays";

    auto& package = Child<CCircuitEditor>("PackageCircuit");
    auto& browse = *package.findChild<QPushButton*>(QStringLiteral("CircuitBrowse"));
    const auto circuit = folder.Write("pkg.sp", "* no circuit\n");
    answers.ThenPath(Text(circuit));
    browse.click();
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("holds no sub-circuit")));
    folder.Write("pkg.sp", ".subckt pkg p1 p2\n+ die1\nr1 p1 die1 1\n.ends\n");
    answers.ThenPath(Text(circuit));
    browse.click();
    const ibis::SCompositeCircuit made = wizard.Composite().package;
    EXPECT_EQ(made.name, "pkg");
    EXPECT_EQ(made.subcircuit, "pkg");
    EXPECT_EQ(made.file, PathText(circuit));
    ASSERT_EQ(made.ports.size(), 3U);
    EXPECT_EQ(made.ports[2].name, "die1");
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(ComposeWizardTest, WhatIsMissingIsToldBeforeAnythingIsWritten)
{
    wizard.next();
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("The component needs a name."));
    Child<QLineEdit>("Component").setText(QStringLiteral("c"));
    wizard.next();
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Give the path of the IBIS file, ending in .ibs."));
    Child<QLineEdit>("OutputPath").setText(Text(folder.Path() / "out.ibs"));
    wizard.next();
    wizard.next();
    wizard.next();
    EXPECT_EQ(wizard.currentId(), 2);
    EXPECT_EQ(answers.Shown().back().text, QStringLiteral("A component has at least one pin."));

    wizard.AddBuffer(Text(folder.Path() / "memory.ibs"), QStringLiteral("no_such"), {});
    wizard.AddBuffer(Text(folder.Path() / "memory.ibs"), QStringLiteral("no_such"), {});
    EXPECT_EQ(wizard.Composite().buffers[1].name, "no_such_2");
    wizard.TakePins(Text(folder.Path() / "memory.ibs"));
    EXPECT_FALSE(wizard.Composite().pins.empty());
    wizard.TakePins(Text(folder.Path() / "gone.ibs"));
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    wizard.next();
    wizard.next();
    EXPECT_EQ(wizard.currentId(), 3) << "the models are not in their file";
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "out.ibs"));
}

} // namespace
} // namespace zov::app
