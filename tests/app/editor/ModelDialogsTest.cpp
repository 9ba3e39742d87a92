// SPDX-License-Identifier: Apache-2.0
#include "app/editor/AddModelDlg.h"
#include "app/editor/ColMgrDlg.h"
#include "app/editor/CopyToLibDlg.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

struct CNoQuestions final : CQuestions
{
    bool YesNo(std::string_view /*text*/) override { return true; }
};

struct ModelDialogsTest : testing::Test
{
    ModelDialogsTest()
    {
        CNoQuestions questions;
        std::filesystem::create_directories(folder.Path() / "a");
        std::filesystem::create_directories(folder.Path() / "b");
        EXPECT_TRUE(session.NewProject(folder.Path() / "a" / "from.zov", questions).Ok());
        EXPECT_TRUE(session.NewExternal(folder.Path() / "b" / "to.zov", CLibraryTree::kRoot).Ok());
        from = session.ProjectLibrary();
        to = session.Set().Externals().front().library;
    }
    static CZovRcdProps* Add(CZovSession& session, const CZovSession::TLibrary& library,
                             const char* name, const char* maker)
    {
        CLibraryChange change(library);
        CZovRcdProps& r = change.Insert(ERecordType::Capacitor);
        r.SetString(EPropId::ModelName, name);
        r.SetString(EPropId::Manuf, maker);
        return session.Edits().Apply(change, QStringLiteral("Add")).front();
    }
    static std::string Content(const CZovLibrary& library)
    {
        std::string out;
        for (const CZovRcdProps* r : library.Records()) {
            out += std::string(r->Name()) + ':' + std::string(r->GetString(EPropId::Manuf)) + ' ';
        }
        return out;
    }

    test::CTempFolder folder;
    CMemorySettings store;
    CNullLog log;
    ui::CScriptedAnswers answers;
    CZovSession session{store, log, [](const char*) { return std::nullopt; }};
    CZovSession::TLibrary from;
    CZovSession::TLibrary to;
};

TEST_F(ModelDialogsTest, AModelIsAddedByTypeAndNameOrAsACopy)
{
    CZovRcdProps* like = Add(session, from, "C1", "Norvik");
    CAddModelDlg dialog(from, like, nullptr);
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_NAME"));
    auto* copy = dialog.findChild<QCheckBox*>(QStringLiteral("ui_IDC_COPY"));
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_EQ(name->text(), QStringLiteral("New_Model"));
    EXPECT_EQ(copy->text(), QStringLiteral("&Copy of 'C1'"));
    struct
    {
        const char* name;
        bool good;
    } const cases[] = {{"", false}, {"  ", false}, {"c1", false}, {"C9", true}};
    for (const auto& test : cases) {
        name->setText(QLatin1String(test.name));
        EXPECT_EQ(ok->isEnabled(), test.good) << test.name;
    }
    copy->setChecked(true);
    EXPECT_EQ(name->text(), QStringLiteral("C1_2"));
    CLibraryChange change(from);
    dialog.Fill(change);
    session.Edits().Apply(change, QStringLiteral("Add"));
    EXPECT_EQ(Content(*from), "C1:Norvik C1_2:Norvik ");
}

TEST_F(ModelDialogsTest, NamesThatExistAreKeptReplacedOrRenamed)
{
    Add(session, from, "C1", "new");
    Add(session, from, "C2", "new");
    Add(session, to, "C1", "old");
    struct
    {
        EExisting existing;
        const char* target;
        SCopied copied;
    } const cases[] = {
        {EExisting::Keep, "C1:old C2:new ", {1, 0, 1}},
        {EExisting::Replace, "C1:new C2:new ", {1, 1, 0}},
        {EExisting::Rename, "C1:old C1_2:new C2:new ", {2, 0, 0}},
    };
    for (const auto& test : cases) {
        const SCopied copied =
            CopyModels(session, {{from, from->Records()}}, to, test.existing, false);
        EXPECT_EQ(Content(*to), test.target);
        EXPECT_EQ(copied.added, test.copied.added);
        EXPECT_EQ(copied.replaced, test.copied.replaced);
        EXPECT_EQ(copied.kept, test.copied.kept);
        session.Edits().Undo();
        EXPECT_EQ(Content(*to), "C1:old ") << "one step";
    }
    CopyModels(session, {{from, from->Records()}}, to, EExisting::Keep, true);
    EXPECT_EQ(Content(*from), "C1:new ") << "what was not taken over stays";
    EXPECT_EQ(Content(*to), "C1:old C2:new ");
}

TEST_F(ModelDialogsTest, CopiesLeadToTheSameFiles)
{
    folder.Write("a/m/c.s2p", "# Hz S RI R 50\n");
    CLibraryChange change(from);
    CZovRcdProps& draft = change.Insert(ERecordType::Capacitor);
    draft.SetString(EPropId::ModelName, "C1");
    draft.SetDiscreteModel({true, "m/c.s2p", "", {}, {}, {}});
    session.Edits().Apply(change, QStringLiteral("Add"));
    CopyModels(session, {{from, from->Records()}}, to, EExisting::Keep, false);
    EXPECT_EQ(to->At(0).GetString(EPropId::CktDef), "../a/m/c.s2p");
}

TEST_F(ModelDialogsTest, TargetsAreTheOtherLibrariesAndNewOnesInCollections)
{
    const CLibraryTree::TNode set = session.AddCollection(CLibraryTree::kRoot, "Parts");
    CCopyToLibDlg dialog(session, 2, from.get(), nullptr);
    auto* target = dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_TARGET"));
    ASSERT_EQ(target->count(), 3);
    EXPECT_EQ(target->itemText(0), QStringLiteral("to"));
    EXPECT_EQ(target->itemText(1), QStringLiteral("(new library)"));
    EXPECT_EQ(target->itemText(2), QStringLiteral("Parts / (new library)"));
    EXPECT_EQ(dialog.Target(), to);
    target->setCurrentIndex(2);
    EXPECT_EQ(dialog.Target(), nullptr) << "no name was given";
    answers.ThenPath(QString::fromStdString((folder.Path() / "fresh.zov").string()));
    const CZovSession::TLibrary made = dialog.Target();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->Name(), "fresh");
    EXPECT_EQ(session.Tree().LibrariesOf(set).size(), 1U);
    target->setCurrentIndex(1);
    answers.ThenPath(QString::fromStdString((folder.Path() / "plain.zov").string()));
    const CZovSession::TLibrary plain = dialog.Target();
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->Name(), "plain");
    EXPECT_EQ(session.Tree().LibrariesOf(set).size(), 1U) << "in no collection";
}

TEST_F(ModelDialogsTest, ColumnsAreChosenAndOrdered)
{
    SZovSettings settings;
    CModelListView list(1);
    list.Store(settings);
    CColMgrDlg dialog(settings, 1, nullptr);
    auto* view = dialog.findChild<QListView*>(QStringLiteral("ui_IDC_COLUMNS"));
    EXPECT_EQ(view->model()->index(0, 0).data().toString(), QStringLiteral("Model"));
    EXPECT_FALSE(view->model()->flags(view->model()->index(0, 0)) & Qt::ItemIsUserCheckable);
    dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_DOWN"))->click();
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        if (view->model()->index(row, 0).data().toString() == QStringLiteral("C of model")) {
            view->model()->setData(view->model()->index(row, 0), Qt::Checked, Qt::CheckStateRole);
        }
    }
    dialog.Store(settings);
    list.Take(settings);
    const QHeaderView& header = *list.Table().horizontalHeader();
    EXPECT_EQ(header.visualIndex(0), 1) << "the name stands second";
    int shown = 0;
    for (int i = 0; i < list.Model().columnCount(); ++i) {
        shown += IsOfModelFile(ModelColumns()[static_cast<std::size_t>(i)].column) &&
                 !list.Table().isColumnHidden(i);
    }
    EXPECT_EQ(shown, 1);
}

TEST_F(ModelDialogsTest, ColumnsOfTheModelFileAreComputedWhenTheyAreLookedAt)
{
    CLibraryChange change(from);
    CZovRcdProps& draft = change.Insert(ERecordType::Capacitor);
    draft.SetString(EPropId::ModelName, "C1");
    draft.SetDouble(EPropId::Cnom, 1e-7);
    draft.SetDiscreteModel({false, "", "", 0.012, 1e-9, 1e-10});
    session.Edits().Apply(change, QStringLiteral("Add"));
    CModelListModel model;
    model.SetLibraries({from});
    ASSERT_TRUE(QTest::qWaitFor([&] { return model.rowCount() == 1; }));
    const auto cell = [&](EModelColumn wanted) {
        const auto at = std::ranges::find(ModelColumns(), wanted, &SModelColumn::column);
        return model.index(0, static_cast<int>(at - ModelColumns().begin()));
    };
    EXPECT_EQ(cell(EModelColumn::ModelC).data().toString(), QStringLiteral("..."));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return cell(EModelColumn::ModelC).data().toString() == QStringLiteral("0.1nF"); }));
    EXPECT_EQ(cell(EModelColumn::ModelEsr).data().toString(), QStringLiteral("12mOhm"));
    EXPECT_EQ(cell(EModelColumn::ModelResonance).data().toString(), QStringLiteral("503.292MHz"));
    EXPECT_TRUE(cell(EModelColumn::ModelC).data(Qt::ForegroundRole).isValid());
    EXPECT_TRUE(cell(EModelColumn::ModelC)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .endsWith(QStringLiteral("is the unit right?")));
}

} // namespace
} // namespace zov::app
