// SPDX-License-Identifier: Apache-2.0
#include "core/LibrarySet.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::test {

namespace {

class CLibrarySets : public testing::Test
{
protected:
    std::filesystem::path MakeLibrary(const std::string& name, std::size_t count = 1)
    {
        CZovLibrary library;
        for (std::size_t i = 0; i < count; ++i) {
            CZovRcdProps& record = library.Add(ERecordType::Resistor);
            record.SetString(EPropId::ModelName, "R" + std::to_string(i));
            record.SetDouble(EPropId::Resistance, 1.0);
        }
        CNullLog log;
        std::filesystem::path path = m_folder.Path() / TextPath(name);
        std::filesystem::create_directories(path.parent_path());
        EXPECT_TRUE(SaveLibrary(library, path, {}, log).Ok());
        return path;
    }
    std::string Externals(const CLibrarySet& set) const
    {
        std::string out;
        for (const SLibraryEntry& entry : set.Externals()) {
            out += PathText(entry.path.lexically_relative(m_folder.Path())) +
                   (entry.on ? " on\n" : " off\n");
        }
        return out;
    }
    CTempFolder m_folder;
    CVectorLog m_log;
    CLibrarySet m_set;
};

/// Answers and remembers what was asked.
class CAsked final : public CQuestions
{
public:
    explicit CAsked(bool answer)
        : m_answer(answer)
    {
    }
    bool YesNo(std::string_view text) override
    {
        texts.emplace_back(text);
        return m_answer;
    }
    std::vector<std::string> texts;

private:
    bool m_answer;
};

} // namespace

TEST_F(CLibrarySets, PreferenceFileIsWrittenToTheLetterAndReadBack)
{
    const auto a = MakeLibrary("board/caps.zov");
    const auto b = MakeLibrary("shared/R&D größe 5%.zov");
    const auto forgotten = MakeLibrary("board/forgotten.zov");
    ASSERT_EQ(*m_set.AddExternal(a, m_log), EOpened::Opened);
    ASSERT_EQ(*m_set.AddExternal(b, m_log, false), EOpened::Opened);
    ASSERT_EQ(*m_set.AddExternal(forgotten, m_log, true, false), EOpened::Opened);
    ASSERT_TRUE(m_set.SavePreferences(m_folder.Path() / "board/board.zovp").Ok());
    EXPECT_EQ(m_folder.Read("board/board.zovp"), "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n"
                                                 "<ZOVP Version = \"1.0\">\n"
                                                 "<Library>\n"
                                                 "<Lib Path=\"caps.zov\" On=\"YES\"/>\n"
                                                 "<Lib Path=\"../shared/R&D gr\xF6\xDF"
                                                 "e 5%.zov\" On=\"NO\"/>\n"
                                                 "</Library>\n"
                                                 "</ZOVP>\n");
    CLibrarySet again;
    ASSERT_EQ(*again.Open(m_folder.Path() / "board/board.zovp", m_log), EOpened::Opened);
    EXPECT_EQ(Externals(again), "board/caps.zov on\nshared/R&D größe 5%.zov off\n");
    EXPECT_EQ(again.ActiveLibraries().size(), 1U);
    EXPECT_EQ(again.Project(), nullptr);
}

TEST_F(CLibrarySets, PathsThatThePreferenceFileCannotHoldAreRefusedBeforeWriting)
{
    const auto file = m_folder.Write("set.zovp", "old");
    for (const std::string name : {"Ω.zov", "a\" On=\"NO.zov", "R&amp;D.zov", "a\nb.zov"}) {
        CLibrarySet set;
        ASSERT_EQ(*set.AddExternal(MakeLibrary(name), m_log), EOpened::Opened) << name;
        const CResult<void> saved = set.SavePreferences(file);
        const bool survives = saved.Ok();
        if (survives) { // a line break may be kept; then it must be read back
            CLibrarySet again;
            ASSERT_TRUE(again.Open(file, m_log).Ok());
            EXPECT_EQ(Externals(again), name + " on\n");
            m_folder.Write("set.zovp", "old");
        } else {
            EXPECT_NE(saved.Error().text.find(name), std::string::npos) << saved.Error().text;
            EXPECT_EQ(m_folder.Read("set.zovp"), "old");
        }
    }
    CLibrarySet set;
    ASSERT_TRUE(set.AddExternal(MakeLibrary("Ω.zov"), m_log).Ok());
    EXPECT_NE(set.SavePreferences(file).Error().text.find("'Ω'"), std::string::npos);
    EXPECT_FALSE(m_set.SavePreferences(m_folder.Path() / "none" / "x.zovp").Ok());
}

TEST_F(CLibrarySets, PreferenceFilesOfOtherHandsAreRead)
{
    MakeLibrary("a.zov");
    MakeLibrary("libs/b.zov");
    struct SCase
    {
        const char* what;
        std::string text;
        std::string expected; ///< "!" and the note for a failure
    };
    const std::string absolute = PathText(m_folder.Path() / "a.zov");
    const SCase cases[] = {
        {"no Lib", "<ZOVP Version=\"1.0\"><Library></Library></ZOVP>", ""},
        {"closed at once", "<ZOVP Version='1.0'/>", ""},
        {"On missing, unknown, any case",
         "<ZOVP Version=\"1\"><Library><Lib Path=\"a.zov\"/><Lib On='no' Path='libs/b.zov'/>"
         "</Library></ZOVP>",
         "a.zov on\nlibs/b.zov off\n"},
        {"absolute, backslash, twice",
         "<ZOVP Version=\"1\"><Library><Lib Path=\"" + absolute +
             "\" On=\"YES\"/><Lib Path=\"libs\\b.zov\" On=\"YES\"/><Lib Path=\"./a.zov\" "
             "On=\"NO\"/></Library></ZOVP>",
         "a.zov off\nlibs/b.zov on\n"},
        {"gone, empty, of another kind",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><ZOVP Version=\"1\"><Other><Lib "
         "Path=\"a.zov\"/></Other><Library><Lib Path=\"gone.zov\"/><Lib/><Lib Path=\"set.zovp\"/>"
         "</Library><Library><Lib Path=\"a.zov\"/></Library></ZOVP>",
         "a.zov on\n"},
        {"no Version", "<ZOVP><Library><Lib Path=\"a.zov\"/></Library></ZOVP>",
         "!its root element has no 'Version'"},
        {"cut off", "<ZOVP Version=\"1\"><Library><Lib Path=\"a.zov\"/>", "!"},
        {"empty", "", "!it holds no element"},
    };
    for (const SCase& one : cases) {
        SCOPED_TRACE(one.what);
        CLibrarySet set;
        const auto opened = set.Open(m_folder.Write("set.zovp", one.text), m_log);
        if (one.expected.starts_with('!')) {
            ASSERT_FALSE(opened.Ok());
            EXPECT_NE(opened.Error().notes.at(0).find(one.expected.substr(1)), std::string::npos);
            EXPECT_TRUE(set.Externals().empty());
        } else {
            ASSERT_TRUE(opened.Ok());
            EXPECT_EQ(Externals(set), one.expected);
        }
    }
}

TEST_F(CLibrarySets, OnlyOneProjectLibraryIsOpen)
{
    const auto a = MakeLibrary("a.zov", 3);
    const auto b = MakeLibrary("b.ZOV");
    EXPECT_EQ(*m_set.Open(m_folder.Path() / "gone.zov", m_log), EOpened::Ignored);
    EXPECT_EQ(*m_set.Open(m_folder.Write("a.txt", "x"), m_log), EOpened::Ignored);
    ASSERT_EQ(*m_set.Open(a, m_log), EOpened::Opened);
    EXPECT_EQ(m_log.Lines().back(),
              "'3' models loaded from the ZOV library file '" + PathText(a) + "'.");
    EXPECT_EQ(m_set.Project()->Listed(), "a (" + PathText(a) + ")");

    EXPECT_EQ(*m_set.Open(b, m_log), EOpened::Refused);
    EXPECT_EQ(m_log.Lines().back(),
              "[WARNING] You cannot open multiple top level Project Libraries. '" + PathText(b) +
                  "'");
    CAsked no(false);
    EXPECT_EQ(*m_set.Open(b, m_log, &no), EOpened::Refused);
    EXPECT_EQ(no.texts.at(0), "Cannot open multiple top level Project Libraries.\n"
                              "Replace existing project library with '" +
                                  PathText(b) + "'?");
    EXPECT_EQ(*m_set.AddToProject(b, m_log), EOpened::Refused);
    EXPECT_EQ(m_log.Lines().back(),
              "Cannot add the ZOV library file to the project library '" + PathText(a) +
                  "'. Only one ZOV file is allowed to be added to the project library.");
    EXPECT_EQ(m_set.Project()->path, a);

    // One that cannot be read leaves the open one in place.
    CAsked yes(true);
    EXPECT_FALSE(m_set.Open(m_folder.Write("bad.zov", "no library"), m_log, &yes).Ok());
    EXPECT_EQ(m_set.Project()->path, a);
    EXPECT_EQ(*m_set.Open(b, m_log, &yes), EOpened::Opened);
    EXPECT_EQ(m_set.Project()->path, b);

    EXPECT_EQ(m_set.NewProject(m_log, &yes), EOpened::Opened);
    EXPECT_EQ(m_set.Project()->Listed(), "*New Library*");
    EXPECT_FALSE(m_set.SaveProject({}, m_log).Ok());
    ASSERT_TRUE(m_set.SaveProject(m_folder.Path() / "new.zov", m_log).Ok());
    EXPECT_EQ(m_set.Project()->DisplayName(), "new");
}

TEST_F(CLibrarySets, AFolderOpensTheLibraryOfItsName)
{
    MakeLibrary("board/other.zov");
    EXPECT_FALSE(m_set.OpenFolder(m_folder.Path() / "board", m_log).Ok());
    const auto named = MakeLibrary("board/board.zov");
    ASSERT_EQ(*m_set.OpenFolder(m_folder.Path() / "board/", m_log), EOpened::Opened);
    EXPECT_EQ(m_set.Project()->path, named);
    // A preference file opens the project library beside it.
    m_folder.Write("board/board.zovp",
                   "<ZOVP Version=\"1.0\"><Library><Lib Path=\"other.zov\"/></Library></ZOVP>");
    CLibrarySet set;
    ASSERT_EQ(*set.Open(m_folder.Path() / "board/board.zovp", m_log), EOpened::Opened);
    EXPECT_EQ(set.Project()->path, named);
    EXPECT_EQ(Externals(set), "board/other.zov on\n");
}

TEST_F(CLibrarySets, ConfigurationsReplaceTheExternalLibraries)
{
    const auto old = MakeLibrary("old.zov");
    MakeLibrary("a.zov");
    MakeLibrary("b.zov");
    struct SCase
    {
        const char* text;
        const char* expected;
        const char* error;
    };
    constexpr const char* kOld = "old.zov on\n";
    const SCase cases[] = {
        {R"({"Version": 1})", kOld, nullptr},
        {R"({"Version": 0.5, "ExternalLibSets": []})", "", nullptr},
        {R"({"Version": 1, "ExternalLibSets": [{"Name": "x", "Libraries": ["a.zov",
            {"Path": "b.zov", "On": false}, "gone.zov"]}]})",
         "a.zov on\nb.zov off\n", nullptr},
        {R"({"Version": 1, "ExternalLibSets": [{"On": false, "Libraries": ["a.zov"]},
            {"Libraries": [{"Path": "old.zov", "On": true}]}]})",
         "a.zov off\nold.zov on\n", nullptr},
        {R"({"Version": 1.5, "ExternalLibSets": []})", kOld,
         "Unsupported ZOV config file version: 1"},
        {R"({"Version": 2})", kOld, "Unsupported ZOV config file version: 2"},
        {R"({"Version": 1e300})", kOld, "Unsupported ZOV config file version: 2147483647"},
        {R"({"Version": "1"})", kOld, "numeric 'Version'"},
        {R"([1])", kOld, "numeric 'Version'"},
        {R"({"Version": 1, "ExternalLibSets": [{"Libraries": [7]}]})", kOld, "entry 1: library 1"},
        {R"({"Version": 1, "ExternalLibSets": 3})", kOld, "no array"},
        {R"({"Version": 1,)", kOld, "no JSON document"},
    };
    for (const SCase& one : cases) {
        SCOPED_TRACE(one.text);
        CLibrarySet set;
        ASSERT_TRUE(set.AddExternal(old, m_log).Ok());
        const CResult<void> loaded =
            set.LoadConfiguration(m_folder.Write("set.json", one.text), m_log);
        EXPECT_EQ(loaded.Ok(), one.error == nullptr);
        if (!loaded.Ok() && one.error != nullptr) {
            EXPECT_NE(loaded.Error().text.find(one.error), std::string::npos)
                << loaded.Error().text;
        }
        EXPECT_EQ(Externals(set), one.expected);
    }
    EXPECT_EQ(m_set.LoadConfiguration({}, m_log).Error().text, "Invalid ZOV config file path: ");

    const std::vector<SExternalLibSet> sets = {
        {"Approved",
         false,
         {{m_folder.Path() / "a.zov", false}, {m_folder.Path() / "b.zov", true}}},
        {"Größe", true, {}}};
    const auto read =
        ParseSetConfiguration(FormatSetConfiguration(sets, m_folder.Path()), "x", m_folder.Path());
    ASSERT_TRUE(read.Ok());
    EXPECT_EQ(**read, sets);
}

TEST_F(CLibrarySets, ExternalLibrariesAreOrderedAndSwitched)
{
    for (const char* name : {"a.zov", "b.zov", "c.zov"}) {
        ASSERT_TRUE(m_set.AddExternal(MakeLibrary(name), m_log).Ok());
    }
    EXPECT_TRUE(m_set.MoveExternal(2, 0));
    EXPECT_TRUE(m_set.SwitchExternal(1, false));
    EXPECT_EQ(Externals(m_set), "c.zov on\na.zov off\nb.zov on\n");
    EXPECT_TRUE(m_set.RemoveExternal(0));
    EXPECT_TRUE(m_set.RememberExternal(1, false));
    EXPECT_EQ(m_set.Remembered().size(), 1U);
    EXPECT_FALSE(m_set.SwitchExternal(2, true));
    EXPECT_FALSE(m_set.MoveExternal(0, 2));
    EXPECT_EQ(Externals(m_set), "a.zov off\nb.zov on\n");
}

TEST_F(CLibrarySets, AFileIsOneLibraryHoweverOftenItIsOpened)
{
    const auto a = MakeLibrary("a.zov");
    const auto project = [this] { return m_set.Project()->library.get(); };
    CAsked yes(true);
    ASSERT_EQ(*m_set.Open(a, m_log), EOpened::Opened);
    ASSERT_EQ(*m_set.Open(a, m_log, &yes), EOpened::Opened); // in its own place
    ASSERT_EQ(*m_set.AddExternal(a, m_log), EOpened::Opened);
    EXPECT_EQ(m_set.Externals()[0].library.get(), project());
    m_set.CloseProject();
    ASSERT_EQ(*m_set.Open(a, m_log), EOpened::Opened);
    EXPECT_EQ(m_set.Externals()[0].library.get(), project());
    EXPECT_TRUE(m_set.RemoveExternal(0));
    ASSERT_EQ(*m_set.AddExternal(a, m_log), EOpened::Opened);
    EXPECT_EQ(m_set.Externals()[0].library.get(), project());

    // Once nobody has it, it is read anew.
    m_set.CloseProject();
    EXPECT_TRUE(m_set.RemoveExternal(0));
    MakeLibrary("a.zov", 2);
    ASSERT_EQ(*m_set.Open(a, m_log), EOpened::Opened);
    EXPECT_EQ(project()->Count(), 2U);
}

TEST_F(CLibrarySets, TheSearchStampFollowsChangesOfSearchedTexts)
{
    CZovLibrary library;
    std::uint64_t last = library.SearchStamp();
    const auto changed = [&] {
        const std::uint64_t before = std::exchange(last, library.SearchStamp());
        return before != last;
    };
    CZovRcdProps& a = library.Add(ERecordType::Capacitor);
    EXPECT_TRUE(changed());
    a.SetString(EPropId::Lookup, "x");
    EXPECT_TRUE(changed());
    a.SetString(EPropId::Manuf, "x");
    a.SetDouble(EPropId::Cnom, 1.0);
    EXPECT_FALSE(changed());
    CZovRcdProps& b = library.AddCopy(a);
    EXPECT_TRUE(changed());
    library.Remove(b);
    EXPECT_TRUE(changed());
    a.Remove(EPropId::Lookup);
    EXPECT_TRUE(changed());
    library.Clear();
    EXPECT_TRUE(changed());
    EXPECT_NE(CZovLibrary().SearchStamp(), CZovLibrary().SearchStamp());
}

} // namespace zov::test
