// SPDX-License-Identifier: Apache-2.0
#include "app/ModelListModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

std::shared_ptr<CZovLibrary> Caps(int count)
{
    auto library = std::make_shared<CZovLibrary>();
    for (int i = 0; i < count; ++i) {
        CZovRcdProps& record = library->Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, "C" + std::to_string(i));
        record.SetString(EPropId::Manuf, i % 2 == 0 ? "Even" : "Odd");
        record.SetDouble(EPropId::Cnom, 1e-9 * (count - i));
    }
    return library;
}

struct ModelListModelTest : testing::Test
{
    CModelListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy filled{&model, &CModelListModel::Filled};

    void WaitFilled(int times)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return filled.count() >= times; }));
    }
    QString Cell(int row, EModelColumn column) const
    {
        for (int i = 0; i < model.columnCount(); ++i) {
            if (ModelColumns()[static_cast<std::size_t>(i)].column == column) {
                return model.index(row, i).data().toString();
            }
        }
        return QStringLiteral("no such column");
    }
};

TEST_F(ModelListModelTest, ShowsWhatTheQueryFindsInTheUnitsOfTheUser)
{
    model.SetLibraries({Caps(1000)});
    WaitFilled(1);
    EXPECT_EQ(model.rowCount(), 1000);
    EXPECT_EQ(Cell(0, EModelColumn::Value), QStringLiteral("1000nF"));
    EXPECT_TRUE(model.SetQuery(QStringLiteral("maker:odd c<=3nF")));
    WaitFilled(2);
    EXPECT_EQ(filled.last(), (QVariantList{2, 1000}));
    EXPECT_EQ(Cell(0, EModelColumn::Name), QStringLiteral("C997"));
    CDisplayUnits units;
    ASSERT_TRUE(units.Set(EQuantity::Capacitance, "pF"));
    model.SetUnits(units);
    EXPECT_EQ(Cell(0, EModelColumn::Value), QStringLiteral("3000pF"));

    EXPECT_FALSE(model.SetQuery(QStringLiteral("c<=3xF")));
    EXPECT_FALSE(model.QueryError().isEmpty());
    EXPECT_EQ(model.rowCount(), 2) << "a query on its way keeps the rows";
}

TEST_F(ModelListModelTest, SortsByTheColumnThatIsClicked)
{
    model.SetLibraries({Caps(100)});
    WaitFilled(1);
    for (int i = 0; i < model.columnCount(); ++i) {
        if (ModelColumns()[static_cast<std::size_t>(i)].column == EModelColumn::Value) {
            model.sort(i, Qt::AscendingOrder);
        }
    }
    WaitFilled(2);
    EXPECT_EQ(Cell(0, EModelColumn::Name), QStringLiteral("C99"));
    EXPECT_EQ(model.RowOf(model.Libraries()[0]->At(99)), 0);
}

TEST_F(ModelListModelTest, SortsByWhatModelsSayAsItBecomesKnown)
{
    constexpr int kCount = 330;
    auto library = std::make_shared<CZovLibrary>();
    library->Add(ERecordType::Ic).SetString(EPropId::ModelName, "U");
    for (int i = 0; i < kCount; ++i) {
        CZovRcdProps& record = library->Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, std::to_string(i * 37 % kCount));
        record.SetDouble(EPropId::Cnom, 1e-9);
        record.SetDiscreteModel({false, {}, {}, 1.0, 1e-9, 1e-9 * (i * 37 % kCount + 1)});
    }
    model.SetLibraries({library});
    WaitFilled(1);
    const auto names = [this] {
        QStringList shown;
        for (int row = 0; row < model.rowCount(); ++row) {
            shown += Cell(row, EModelColumn::Name);
        }
        return shown;
    };
    QStringList rising;
    QStringList falling;
    for (int i = 0; i < kCount; ++i) {
        rising += QString::number(i);
        falling.prepend(QString::number(i));
    }
    for (int i = 0; i < model.columnCount(); ++i) {
        if (ModelColumns()[static_cast<std::size_t>(i)].column != EModelColumn::ModelC) {
            continue;
        }
        model.sort(i, Qt::AscendingOrder);
        ASSERT_TRUE(QTest::qWaitFor([&] { return names().mid(0, kCount) == rising; }, 20'000));
        EXPECT_EQ(names().last(), QStringLiteral("U")) << "it has no value";
        model.sort(i, Qt::DescendingOrder);
        ASSERT_TRUE(QTest::qWaitFor([&] { return names().mid(0, kCount) == falling; }));
        EXPECT_EQ(names().last(), QStringLiteral("U"));
        QTest::qWait(50);
        EXPECT_FALSE(model.IsFilling()) << "it comes to rest";
    }
}

TEST_F(ModelListModelTest, RowsThatWereSortedBeforeAChangeAreNotUsedAfterIt)
{
    const auto library = Caps(3000);
    const auto other = Caps(5);
    model.SetLibraries({library, other});
    model.sort(0, Qt::DescendingOrder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount() == 3005; }));
    model.SetQuery(QStringLiteral("maker:odd"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount() == 1502; }));
    model.BeginChange();
    while (library->Count() > 10) {
        library->Remove(library->At(library->Count() - 1));
    }
    model.EndChange();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.IsFilling(); }));
    EXPECT_EQ(model.rowCount(), 7);
    EXPECT_EQ(Cell(0, EModelColumn::Name), QStringLiteral("C9"));
    // A library that is closed leaves the list usable, whether it was told of a change or not.
    model.BeginChange();
    model.DropLibrary(*library);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.IsFilling(); }));
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(library.use_count(), 1);
}

TEST_F(ModelListModelTest, ChangesOfTheLibraryAreSafeWhileItSearches)
{
    const auto library = Caps(200000);
    model.SetLibraries({library});
    for (int i = 0; i < 20; ++i) {
        model.SetQuery(QStringLiteral("nothing%1").arg(i)); // the worker is at it
        model.BeginChange();
        library->Remove(library->At(0));
        model.EndChange();
        EXPECT_EQ(model.rowCount(), 0);
    }
    model.SetQuery({});
    WaitFilled(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount() == 199980; }));
    EXPECT_EQ(model.RecordAt(0)->Name(), "C20");
    EXPECT_EQ(model.RecordAt(199980), nullptr);
    EXPECT_EQ(model.RecordAt(-1), nullptr);
}

TEST_F(ModelListModelTest, ANewSearchTakesThePlaceOfTheOldOne)
{
    model.SetLibraries({Caps(100000)});
    for (const char* text : {"C1", "C12", "C123", "C1234", "C12345"}) {
        EXPECT_TRUE(model.SetQuery(QString::fromUtf8(text)));
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return !model.IsFilling(); }));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(filled.count(), 1) << "answers that nobody waits for are dropped";
}

} // namespace
} // namespace zov::app
