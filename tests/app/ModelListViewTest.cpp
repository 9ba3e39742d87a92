// SPDX-License-Identifier: Apache-2.0
#include "app/ModelListView.h"

#include "app/OutputPane.h"
#include "app/QtSettingsStore.h"
#include "support/TempFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

namespace zov::app {
namespace {

struct ModelListViewTest : testing::Test
{
    ModelListViewTest()
    {
        for (const char* name : {"C_b", "C_a", "C,c"}) {
            CZovRcdProps& record = library->Add(ERecordType::Capacitor);
            record.SetString(EPropId::ModelName, name);
            record.SetDouble(EPropId::Cnom, 1e-7);
        }
        view.resize(900, 300);
        view.show();
    }
    void Fill()
    {
        view.Model().SetLibraries({library});
        ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 3; }));
    }
    std::shared_ptr<CZovLibrary> library = std::make_shared<CZovLibrary>();
    CModelListView view{1};
};

TEST_F(ModelListViewTest, TypingSearchesAndTellsWhatIsWrong)
{
    Fill();
    QTest::keyClicks(&view.SearchField(), QStringLiteral("c_a"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 1; }));
    auto* count = view.findChild<QLabel*>(QStringLiteral("ModelCount"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return count->text() == QStringLiteral("1 of 3 models"); }));
    view.SearchField().setText(QStringLiteral("volt>=x"));
    EXPECT_TRUE(count->text().contains(QStringLiteral("'x' is no value of Volt")));
    view.SearchField().clear();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 3; }));

    SZovSettings settings;
    settings.capacitanceLess = {true, 1e-6};
    view.Take(settings);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 0; }));
    EXPECT_EQ(count->text(), QStringLiteral("0 of 3 models, others hidden by the options"));
}

TEST_F(ModelListViewTest, ALargeSelectionStaysInANewOrder)
{
    constexpr int kMany = 30000;
    while (library->Count() < kMany) {
        library->Add(ERecordType::Capacitor)
            .SetString(EPropId::ModelName, std::to_string(library->Count() * 7919 % kMany));
    }
    view.Model().SetLibraries({library});
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == kMany; }));
    view.Table().selectAll();
    EXPECT_EQ(view.Selected().size(), library->Count());
    view.Table().selectionModel()->select(view.Model().index(5, 0), QItemSelectionModel::Deselect |
                                                                        QItemSelectionModel::Rows);
    const CZovRcdProps* left = view.Model().RecordAt(5);
    QElapsedTimer clock;
    clock.start();
    QSignalSpy filled(&view.Model(), &CModelListModel::Filled);
    view.Model().sort(0, Qt::DescendingOrder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return filled.count() > 0; }));
    EXPECT_LT(clock.elapsed(), 5000) << "one range behind the other, not row by row";
    const auto selected = view.Selected();
    EXPECT_EQ(selected.size(), library->Count() - 1);
    EXPECT_EQ(std::ranges::find(selected, left), selected.end());
    EXPECT_EQ(view.SelectedByLibrary().front().records, selected);
}

TEST_F(ModelListViewTest, TheSelectionStaysWithItsRecords)
{
    Fill();
    view.Table().selectRow(2);
    const CZovRcdProps* selected = view.Selected().front();
    QSignalSpy changed(&view, &CModelListView::SelectionChanged);
    view.Model().BeginChange();
    library->Remove(library->At(0));
    view.Model().EndChange();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 2; }));
    ASSERT_EQ(view.Selected().size(), 1U);
    EXPECT_EQ(view.Selected().front(), selected);
    EXPECT_EQ(changed.count(), 0) << "nobody has to load it anew";
    view.Model().BeginChange();
    library->Remove(*selected);
    view.Model().EndChange();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Model().rowCount() == 1; }));
    EXPECT_TRUE(view.Selected().empty());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ModelListViewTest, AClickOnTheHeaderSortsAndASecondTurnsItAround)
{
    Fill();
    QHeaderView* header = view.Table().horizontalHeader();
    const QPoint name(header->sectionViewportPosition(0) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, name);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return view.Model().rowCount() == 3 && view.Model().RecordAt(0)->Name() == "C,c"; }));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, name);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return view.Model().rowCount() == 3 && view.Model().RecordAt(0)->Name() == "C_b"; }));
}

TEST_F(ModelListViewTest, SelectionIsCopiedAsCsvWithVisibleColumnsInTheirOrder)
{
    Fill();
    for (int i = 1; i < view.Model().columnCount(); ++i) {
        view.Table().setColumnHidden(i, i != 2);
    }
    view.Table().horizontalHeader()->moveSection(2, 0);
    view.Select(library->At(2));
    QTest::keyClick(&view.Table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Value,Model\n100nF,\"C,c\"\n"));
    view.Table().clearSelection();
    EXPECT_EQ(view.SelectionAsCsv().count(QLatin1Char('\n')), 4) << "all when none is selected";
}

TEST_F(ModelListViewTest, ColumnsGoThroughTheSettings)
{
    view.Table().horizontalHeader()->moveSection(3, 1);
    view.Table().setColumnHidden(4, true);
    SZovSettings settings;
    view.Store(settings);
    CModelListView other(1);
    other.Take(settings);
    EXPECT_EQ(other.Table().horizontalHeader()->visualIndex(3), 1);
    EXPECT_TRUE(other.Table().isColumnHidden(4));
    EXPECT_FALSE(other.Table().isColumnHidden(0));
    CModelListView elsewhere(2);
    elsewhere.Take(settings);
    EXPECT_FALSE(elsewhere.Table().isColumnHidden(4)) << "another list has columns of its own";
}

TEST_F(ModelListViewTest, TheColumnMenuShowsAndHides)
{
    QSignalSpy changed(&view, &CModelListView::ColumnsChanged);
    QTimer::singleShot(0, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_FALSE(menu->actions()[0]->isEnabled());
        menu->actions()[1]->trigger();
        menu->close();
    });
    Q_EMIT view.Table().horizontalHeader()->customContextMenuRequested({5, 5});
    EXPECT_TRUE(view.Table().isColumnHidden(1));
    EXPECT_EQ(changed.count(), 1);
}

TEST(OutputPane, TakesLinesFromAnyThread)
{
    COutputPane pane;
    QSignalSpy unseen(&pane, &COutputPane::Unseen);
    std::thread other([&] {
        for (int i = 0; i < 1000; ++i) {
            pane.Write("line " + std::to_string(i) + "\n");
        }
    });
    other.join();
    pane.Write("last, without an end");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return pane.toPlainText().endsWith(QStringLiteral("last, without an end")); }));
    EXPECT_EQ(pane.blockCount(), 1001);
    EXPECT_GE(unseen.count(), 1);
}

TEST(QtSettingsStore, KeepsTextsAndNumbersThroughAFile)
{
    const test::CTempFolder folder;
    const QString file = QString::fromStdString((folder.Path() / "settings.ini").string());
    {
        QSettings settings(file, QSettings::IniFormat);
        CQtSettingsStore store(settings);
        store.SetText("ZOV Settings", "Column Order", "1=\" 0 2 1 1\";");
        store.SetText("ZOV Settings", "External Library", "<Lib Path=\"\xC3\xA4, b.zov\"/>");
        store.SetInteger("ZOV Settings", "GUI V2", 1);
    }
    QSettings settings(file, QSettings::IniFormat);
    const CQtSettingsStore store(settings);
    EXPECT_EQ(store.Text("ZOV Settings", "Column Order"), "1=\" 0 2 1 1\";");
    EXPECT_EQ(store.Text("ZOV Settings", "External Library"), "<Lib Path=\"\xC3\xA4, b.zov\"/>");
    EXPECT_EQ(store.Integer("ZOV Settings", "GUI V2"), 1);
    EXPECT_EQ(store.Integer("ZOV Settings", "Column Order"), std::nullopt);
    EXPECT_EQ(store.Text("ZOV Settings", "absent"), std::nullopt);
}

} // namespace
} // namespace zov::app
