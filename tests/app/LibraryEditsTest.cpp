// SPDX-License-Identifier: Apache-2.0
#include "app/LibraryEdits.h"

#include "core/LibraryFiles.h"
#include "support/Libraries.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

struct CBytes final : CByteWriter
{
    void Append(std::string_view more) override { bytes += more; }
    std::string bytes;
};

std::string SavedBytes(const CZovLibrary& library)
{
    CBytes out;
    WriteNative(library, out);
    return out.bytes;
}

/// One edit of each kind, several of them, or a whole new content.
void EditAtRandom(CLibraryEdits& edits, const std::shared_ptr<CZovLibrary>& library,
                  test::CRandomLibrary& random)
{
    CLibraryChange change(library);
    if (random.Below(8) == 0) {
        auto imported = std::make_shared<CZovLibrary>(random.Make(random.Below(8), true));
        for (const CZovRcdProps* record : library->Records()) {
            if (random.Below(4) != 0) {
                CZovRcdProps& copy = imported->AddCopy(*record);
                if (random.Maybe()) {
                    copy.SetString(EPropId::Manuf, random.Word());
                }
            }
        }
        change.ReplaceAllBy(*imported);
        edits.Apply(change, QStringLiteral("Import"));
        EXPECT_EQ(SavedBytes(*library), SavedBytes(*imported));
        return;
    }
    for (std::size_t i = random.Below(4); i > 0; --i) {
        change.InsertCopy(random.Make(1, true).At(0));
    }
    for (std::size_t i = random.Below(4); i > 0 && library->Count() > 0; --i) {
        const CZovRcdProps& record = library->At(random.Below(library->Count()));
        if (random.Maybe()) {
            change.Remove(record);
        } else {
            CZovRcdProps& draft = change.Replace(record);
            draft.SetString(EPropId::ModelName, random.Word());
            draft.SetComposite(SThroughModel{random.Maybe(), {{"1", random.Word(), 1e-9, 2.0}}});
        }
    }
    edits.Apply(change, QStringLiteral("Edit"));
}

TEST(LibraryEditsTest, UndoingAllGivesTheStartAndRedoingAllTheEnd)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        test::CRandomLibrary random(seed);
        const auto library = std::make_shared<CZovLibrary>(random.Make(12, true));
        CLibraryEdits edits;
        edits.SetSaved(library);
        std::vector<std::string> states = {SavedBytes(*library)};
        for (int i = 0; i < 25; ++i) {
            EditAtRandom(edits, library, random);
            if (const std::string now = SavedBytes(*library); now != states.back()) {
                states.push_back(now);
            }
        }
        EXPECT_TRUE(edits.IsModified(*library));
        const std::vector<CZovRcdProps*> atTheEnd = library->Records();
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            edits.Undo();
            ASSERT_EQ(SavedBytes(*library), states[i - 1]) << "step " << i;
            ASSERT_EQ(library->Find(ERecordType::Any, "M-no-such-name"), nullptr);
        }
        EXPECT_FALSE(edits.CanUndo()) << "a change that changes nothing is no step";
        EXPECT_FALSE(edits.IsModified(*library));
        for (std::size_t i = 1; i < states.size(); ++i) {
            edits.Redo();
            ASSERT_EQ(SavedBytes(*library), states[i]) << "step " << i;
        }
        EXPECT_FALSE(edits.CanRedo());
        EXPECT_EQ(library->Records(), atTheEnd) << "records keep their address";
    }
}

TEST(LibraryEditsTest, NamesAreFoundAfterEveryStep)
{
    const auto library = std::make_shared<CZovLibrary>();
    CZovRcdProps& record = library->Add(ERecordType::Resistor);
    record.SetString(EPropId::ModelName, "old");
    ASSERT_EQ(library->Find(ERecordType::Any, "old"), &record);
    CLibraryEdits edits;
    CLibraryChange change(library);
    change.Replace(record).SetString(EPropId::ModelName, "new");
    const std::uint64_t stamp = library->SearchStamp();
    edits.Apply(change, QStringLiteral("Rename"));
    EXPECT_NE(library->SearchStamp(), stamp);
    EXPECT_EQ(library->Find(ERecordType::Any, "new"), &record);
    EXPECT_EQ(library->Find(ERecordType::Any, "old"), nullptr);
    edits.Undo();
    EXPECT_EQ(library->Find(ERecordType::Any, "old"), &record);
}

TEST(LibraryEditsTest, LargeChangesGiveTheLibraryTheirMemory)
{
    test::CRandomLibrary random(11);
    const auto library = std::make_shared<CZovLibrary>(random.Make(50, true));
    CLibraryEdits edits;
    std::vector<std::string> states = {SavedBytes(*library)};
    for (int i = 0; i < 3; ++i) {
        CLibraryChange change(library);
        {
            const CZovLibrary imported = random.Make(3000, true);
            change.ReplaceAllBy(imported);
            states.push_back(SavedBytes(imported));
        }
        const std::vector<CZovRcdProps*> added = edits.Apply(change, QStringLiteral("Import"));
        ASSERT_EQ(SavedBytes(*library), states.back());
        ASSERT_GT(added.size(), 2000U);
        ASSERT_EQ(library->Find(added[7]->Type(), added[7]->Name())->Name(), added[7]->Name());
        library->At(9).SetComposite(SThroughModel{true, {{"1", "2", 1e-9, 2.0}}});
        states.back() = SavedBytes(*library);
    }
    for (std::size_t i = states.size() - 1; i > 0; --i) {
        edits.Undo();
        ASSERT_EQ(SavedBytes(*library), states[i - 1]);
    }
}

TEST(LibraryEditsTest, UndoAndRedoCostNoMemory)
{
    test::CRandomLibrary random(7);
    const auto library = std::make_shared<CZovLibrary>(random.Make(2000, false));
    CLibraryEdits edits;
    CLibraryChange change(library);
    for (const CZovRcdProps* record : library->Records()) {
        change.Replace(*record).SetString(EPropId::Lookup, "key of " + std::string(record->Name()));
    }
    edits.Apply(change, QStringLiteral("Edit 2000 Models"));
    const std::size_t held = library->BytesHeld();
    for (int i = 0; i < 50; ++i) {
        edits.Undo();
        edits.Redo();
    }
    EXPECT_EQ(library->BytesHeld(), held);
}

TEST(LibraryEditsTest, TheModifiedStateFollowsTheSavedOne)
{
    const auto a = std::make_shared<CZovLibrary>();
    const auto b = std::make_shared<CZovLibrary>();
    CLibraryEdits edits;
    QSignalSpy modified(&edits, &CLibraryEdits::ModifiedChanged);
    const auto insert = [&edits](const std::shared_ptr<CZovLibrary>& library) {
        CLibraryChange change(library);
        change.Insert(ERecordType::Ic).SetString(EPropId::ModelName, "U");
        return edits.Apply(change, QStringLiteral("Add Model")).front();
    };
    const CZovRcdProps* inserted = insert(a);
    EXPECT_EQ(inserted, &a->At(0));
    EXPECT_TRUE(edits.IsModified(*a));
    EXPECT_EQ(edits.UndoText(), QStringLiteral("Add Model"));
    edits.SetSaved(a);
    EXPECT_FALSE(edits.IsModified(*a));
    edits.Undo();
    EXPECT_TRUE(edits.IsModified(*a)) << "what was saved is not what is there";
    edits.Redo();
    EXPECT_FALSE(edits.IsModified(*a));
    EXPECT_EQ(modified.count(), 4);

    insert(b);
    edits.SetActive(a);
    edits.Undo();
    EXPECT_EQ(a->Count(), 0U) << "each library has steps of its own";
    EXPECT_EQ(b->Count(), 1U);
    edits.Forget(a, true);
    EXPECT_FALSE(edits.CanUndo());
    EXPECT_TRUE(edits.IsModified(*a));
    edits.Forget(a, false);
    EXPECT_FALSE(edits.IsModified(*a));
    edits.Drop(*b);
    EXPECT_FALSE(edits.IsModified(*b));
}

} // namespace
} // namespace zov::app
