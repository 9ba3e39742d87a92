// SPDX-License-Identifier: Apache-2.0
// A long part list into a large library that is open: one step, and the window stays alive. With
// ZOV_LARGE=100 in the environment it is 100,000 rows into 1,000,000 models, see docs/testing.md.
#include "app/BoxQuestions.h"
#include "app/ModelListView.h"
#include "app/generator/DlgZovGenMain.h"
#include "app/generator/GeneratorPage.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/StallMeter.h"
#include "support/TempFolder.h"
#include "ui/Prompt.h"

#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace zov::app::test {
namespace {

constexpr int kModels = 10'000;
constexpr int kRows = 1'000;

QString Text(const std::filesystem::path& path)
{
    return QString::fromStdString(PathText(path));
}

TEST(LargeImportTest, IsOneStepAndTheWindowStaysAlive)
{
    const auto factor = static_cast<std::size_t>(zov::test::LargeFactor());
    const zov::test::CTempFolder folder;
    const std::filesystem::path path = folder.Path() / "large.zov";
    {
        CZovLibrary library;
        for (std::size_t i = 0; i < kModels * factor; ++i) {
            CZovRcdProps& record = library.Add(ERecordType::Resistor);
            record.SetString(EPropId::ModelName, "R-" + std::to_string(i));
            record.SetDouble(EPropId::Resistance, 1.0);
        }
        CNullLog silent;
        ASSERT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
    }
    // Every second row replaces a model.
    std::string rows = "Part Number,Resistance (Ohm),Model Type\n";
    for (std::size_t i = 0; i < kRows * factor; ++i) {
        rows += (i % 2 == 0 ? "R-" : "N-") + std::to_string(i) + ",22,RLC\n";
    }

    CMemorySettings store;
    CVectorLog log;
    ui::CScriptedAnswers answers;
    CZovSession session(store, log, [](const char*) { return std::nullopt; });
    QWidget window;
    CBoxQuestions questions(window);
    // A list over the library, as the library manager has it.
    CModelListView list(1, &window);
    QObject::connect(&session, &CZovSession::LibraryAboutToChange, &list,
                     [&] { list.Model().BeginChange(); });
    QObject::connect(&session, &CZovSession::LibraryChanged, &list,
                     [&] { list.Model().EndChange(); });
    window.show();
    session.OpenProject(path, questions);
    ASSERT_TRUE(QTest::qWaitFor([&] { return session.ProjectLibrary() != nullptr; }, 60'000));
    const CZovSession::TLibrary library = session.ProjectLibrary();
    list.Model().SetLibraries({library});

    CDlgZovGenMain dialog(&session, &window);
    CGeneratorPage& page = dialog.Page(ERecordType::Resistor);
    page.SetDestination(Text(path));
    page.SetSource(Text(folder.Write("parts.csv", rows)));
    const auto isIdle = [&] {
        return !page.IsBusy() && !dialog.IsRunning() && !list.Model().IsFilling();
    };
    zov::test::CStallMeter meter;
    const auto measured = [&](const char* what, const std::function<void()>& run) {
        ASSERT_TRUE(QTest::qWaitFor(isIdle, 600'000));
        QTest::qWait(20);
        meter.Begin();
        run();
        ASSERT_TRUE(QTest::qWaitFor(isIdle, 600'000));
        meter.End(what);
    };
    measured("part list read", [] {});
    answers.Then(ui::EAnswer::No).Then(ui::EAnswer::Yes);
    measured("imported", [&] {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_GENERATE")),
                          Qt::LeftButton);
    });
    EXPECT_EQ(library->Count(), kModels * factor + kRows * factor / 2);
    const auto ohms = [&](const char* name) {
        return library->Find(ERecordType::Resistor, name)->GetDouble(EPropId::Resistance);
    };
    EXPECT_EQ(ohms("R-2"), 22.0);
    EXPECT_EQ(ohms("R-3"), 1.0);
    EXPECT_EQ(ohms("N-3"), 22.0);
    session.Edits().SetActive(library);
    measured("undone", [&] { session.Edits().Undo(); });
    EXPECT_EQ(library->Count(), kModels * factor);
    EXPECT_EQ(ohms("R-2"), 1.0);
    EXPECT_FALSE(session.Edits().CanUndo()) << "one step";
    measured("redone", [&] { session.Edits().Redo(); });
    EXPECT_EQ(ohms("N-3"), 22.0);
    EXPECT_EQ(answers.Unexpected(), 0);
}

} // namespace
} // namespace zov::app::test
