// SPDX-License-Identifier: Apache-2.0
#include "app/Session.h"

#include "app/RunBeside.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <thread>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

struct SessionTest : testing::Test
{
    fs::path Library(const std::string& name, int count = 1) const
    {
        CZovLibrary library;
        for (int i = 0; i < count; ++i) {
            library.Add(ERecordType::Ic).SetString(EPropId::ModelName, name + std::to_string(i));
        }
        CNullLog silent;
        const fs::path path = folder.Path() / (name + ".zov");
        EXPECT_TRUE(SaveLibrary(library, path, {}, silent).Ok());
        return path;
    }
    /// What the settings hold, by file name and "-" for one that is off.
    std::string Stored(const char* value = "External Library") const
    {
        std::string names;
        for (const SListedLibrary& listed :
             ParseLibraryList(store.Text(kZovSection, value).value_or(""))) {
            names += listed.path.stem().string() + (listed.on ? " " : "- ");
        }
        return names;
    }
    void Remember(const std::vector<SListedLibrary>& libraries)
    {
        store.SetText(kZovSection, "External Library", FormatLibraryList(libraries));
    }
    static void Wait(CZovSession& session)
    {
        ASSERT_TRUE(QTest::qWaitFor([&] { return !session.Job().IsRunning(); }));
    }

    test::CTempFolder folder;
    CMemorySettings store;
    CVectorLog log;
    FEnvironment environment = [this](const char* name) {
        return name == variable ? std::optional<std::string>("1") : std::nullopt;
    };
    std::string variable;
};

TEST_F(SessionTest, RememberedLibrariesThatAreNotThereStayInTheirPlace)
{
    const fs::path away = folder.Path() / "away.zov";
    folder.Write("broken.zov", "no library");
    Remember({{away, true},
              {Library("one"), true},
              {folder.Path() / "broken.zov", false},
              {Library("two"), false}});
    {
        CZovSession session(store, log, environment);
        QSignalSpy told(&session, &CZovSession::SomeUnreachable);
        QSignalSpy failed(&session, &CZovSession::Failed);
        session.OpenRemembered();
        session.StoreSettings(); // while they are being loaded
        EXPECT_EQ(Stored(), "away one broken- two- ");
        Wait(session);
        EXPECT_EQ(told.count(), 1);
        EXPECT_EQ(failed.count(), 0) << "no box for each at every start";
        ASSERT_EQ(session.Unreachable().size(), 2U);
        EXPECT_EQ(session.Unreachable()[0].listed.path, away);
        EXPECT_NE(session.Unreachable()[1].why.find("broken.zov"), std::string::npos);
        std::size_t lines = 0;
        for (const std::string& line : log.Lines()) {
            lines += line.find("could not be opened and stays remembered") != std::string::npos;
        }
        EXPECT_EQ(lines, 2U);
        session.AddExternals({Library("three")}, CLibraryTree::kRoot);
        Wait(session);
        session.MoveNode(session.Tree().Find(*session.Set().Externals()[2].library), -1);
        session.StoreSettings();
        EXPECT_EQ(Stored(), "away one broken- three two- ");
    }
    // One comes back, one is removed from the list, an open one is closed.
    CZovSession session(store, log, environment);
    session.OpenRemembered();
    Wait(session);
    Library("away", 3);
    session.OpenUnreachable(away);
    Wait(session);
    ASSERT_EQ(session.Set().Externals().size(), 4U);
    EXPECT_EQ(session.Set().Externals()[3].library->Count(), 3U);
    session.ForgetUnreachable(folder.Path() / "broken.zov");
    EXPECT_TRUE(session.Unreachable().empty());
    session.RemoveNode(session.Tree().Find(*session.Set().Externals()[0].library));
    session.StoreSettings();
    EXPECT_EQ(Stored(), "three two- away ");
}

TEST_F(SessionTest, CollectionsComeBackWithTheirLibraries)
{
    const fs::path three = Library("three");
    {
        CZovSession session(store, log, environment);
        session.AddExternals({Library("one")}, CLibraryTree::kRoot);
        const auto outer = session.AddCollection(CLibraryTree::kRoot, "outer");
        const auto inner = session.AddCollection(outer, "inner");
        session.AddCollection(CLibraryTree::kRoot, "empty");
        session.AddExternals({Library("two"), three}, inner);
        Wait(session);
        session.StoreSettings();
    }
    const auto shown = [](CZovSession& session) {
        std::string names;
        for (const auto& [node, name] : session.Tree().Collections()) {
            names += name + ':';
            for (const CLibraryTree::TNode child : session.Tree().ChildrenOf(node)) {
                names += ' ' + session.Tree().NameOf(child);
            }
            names += '\n';
        }
        return names;
    };
    // One of them is away for a while, in which settings are stored.
    fs::rename(three, folder.Path() / "elsewhere");
    {
        CZovSession session(store, log, environment);
        session.OpenRemembered();
        Wait(session);
        EXPECT_EQ(shown(session), "outer: inner\nouter/inner: two\nempty:\n");
        session.StoreSettings();
        fs::rename(folder.Path() / "elsewhere", three);
        session.OpenUnreachable(three);
        Wait(session);
        EXPECT_EQ(shown(session), "outer: inner\nouter/inner: two three\nempty:\n");
    }
    CZovSession session(store, log, environment);
    session.OpenRemembered();
    Wait(session);
    EXPECT_EQ(shown(session), "outer: inner\nouter/inner: two three\nempty:\n");
    EXPECT_EQ(session.Set().Externals().size(), 3U);
}

TEST_F(SessionTest, WhatWasNotLoadedIsNotForgotten)
{
    Remember({{Library("large", 100000), true}, {Library("one"), true}});
    store.SetText("ZOV Collections", "Sets",
                  R"({"Version": 1, "ExternalLibSets": [{"Name": "empty", "Libraries": []}]})");
    CZovSession session(store, log, environment);
    session.OpenRemembered();
    session.CancelLoading();
    EXPECT_TRUE(session.Set().Externals().empty());
    session.StoreSettings();
    EXPECT_EQ(Stored(), "large one ");
    EXPECT_NE(store.Text("ZOV Collections", "Sets")->find("\"empty\""), std::string::npos);
}

TEST_F(SessionTest, AStartWithoutRememberedLibrariesKeepsTheListForTheNext)
{
    Remember({{Library("one"), true}});
    variable = "KVE_TAVRELY_REMEMBER_EXTERNAL_LIB_DISABLE";
    CZovSession session(store, log, environment);
    session.OpenRemembered();
    Wait(session);
    EXPECT_TRUE(session.Set().Externals().empty());
    session.AddExternals({Library("two")}, CLibraryTree::kRoot);
    Wait(session);
    session.StoreSettings();
    EXPECT_EQ(Stored(), "one two ");
}

TEST_F(SessionTest, TheOtherInterfaceIsChosenForTheNextStartWithItsOwnList)
{
    Remember({{Library("one"), true}});
    store.SetText(kZovSection, "External Library V2", FormatLibraryList({{{Library("v2"), true}}}));
    CZovSession session(store, log, environment);
    session.OpenRemembered();
    Wait(session);
    SZovSettings settings = session.Settings();
    settings.storedGuiV2 = true;
    session.SetSettings(settings);
    session.StoreSettings();
    EXPECT_EQ(Stored("External Library V2"), "v2 ");
    EXPECT_EQ(Stored(), "one ");
    CZovSession next(store, log, environment);
    EXPECT_EQ(next.Settings().externalLibraries.front().path.stem(), "v2");
}

TEST_F(SessionTest, AClosedLibraryIsToldOnceNobodyHasItAnyMore)
{
    CZovSession session(store, log, environment);
    session.AddExternals({Library("one"), Library("two")}, CLibraryTree::kRoot);
    Wait(session);
    QStringList told;
    const auto tell = [&](const char* what) {
        return [&told, what](CZovLibrary* library) {
            told += QLatin1String(what) + QString::fromStdString(library->Name());
        };
    };
    QObject::connect(&session, &CZovSession::LibraryAboutToChange, tell("before "));
    QObject::connect(&session, &CZovSession::LibraryClosed, tell("closed "));
    std::weak_ptr<CZovLibrary> one = session.Set().Externals()[0].library;
    session.RemoveNode(session.Tree().Find(*one.lock()));
    EXPECT_EQ(told.join(QLatin1Char('|')), QStringLiteral("before one|closed one"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return one.expired(); }));
}

TEST_F(SessionTest, AFolderOrAProjectIsReadBesideTheWindow)
{
    struct CYes final : CQuestions
    {
        bool YesNo(std::string_view) override { return true; }
    } yes;
    fs::create_directories(folder.Path() / "board");
    fs::rename(Library("board"), folder.Path() / "board" / "board.zov");
    folder.Write("board/board.zovp", "<?xml version=\"1.0\"?>\n<ZOVP Version = \"1.0\">\n<Library>"
                                     "\n<Lib Path=\"../one.zov\" On=\"YES\"/>\n</Library>\n"
                                     "</ZOVP>\n");
    Library("one");
    for (const char* opened : {"board", "board/board.zovp"}) {
        EXPECT_EQ(CLibrarySet::FilesOf(folder.Path() / opened).size(), 2U) << opened;
        CZovSession session(store, log, environment);
        if (std::string_view(opened) == "board") {
            session.OpenFolder(folder.Path() / opened, yes);
        } else {
            session.OpenProject(folder.Path() / opened, yes);
        }
        Wait(session);
        EXPECT_NE(session.ProjectLibrary(), nullptr) << opened;
        EXPECT_EQ(session.Set().Externals().size(), 1U) << opened;
    }
}

TEST(RunBeside, LongWorkIsShownAndCanBeCancelled)
{
    bool wasShown = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QProgressDialog*>(window);
            if (box != nullptr && box->isVisible()) {
                wasShown = true;
                EXPECT_EQ(box->labelText(), QStringLiteral("Saving a.zov"));
                box->findChild<QPushButton*>()->click();
            }
        }
    });
    poll.start(20);
    RunBeside(QStringLiteral("Saving a.zov"), [](CJobState& state) {
        while (!state.Cancelled()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    EXPECT_TRUE(wasShown);
}

} // namespace
} // namespace zov::app
