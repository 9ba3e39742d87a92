// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryTree.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

/// "A(a.zov B(b.zov)) c.zov"
struct LibraryTreeTest : testing::Test
{
    using TNode = CLibraryTree::TNode;

    static std::shared_ptr<CZovLibrary> Library(const char* path)
    {
        auto library = std::make_shared<CZovLibrary>();
        library->SetPath(path);
        return library;
    }
    std::string Text(TNode node = CLibraryTree::kRoot) const
    {
        std::string text;
        for (const TNode child : tree.ChildrenOf(node)) {
            EXPECT_EQ(tree.ParentOf(child), node);
            EXPECT_EQ(tree.ChildrenOf(node)[tree.PlaceOf(child)], child);
            text += text.empty() ? "" : " ";
            text += tree.NameOf(child);
            if (tree.IsCollection(child)) {
                text += '(' + Text(child) + ')';
            }
        }
        return text;
    }
    CLibraryTree tree;
    TNode a = tree.AddCollection(CLibraryTree::kRoot, "A");
    TNode libA = tree.AddLibrary(a, Library("x/a.zov"));
    TNode b = tree.AddCollection(a, "B");
    TNode libB = tree.AddLibrary(b, Library("x/b.zov"));
    TNode libC = tree.AddLibrary(CLibraryTree::kRoot, Library("c.zov"));
};

TEST_F(LibraryTreeTest, HoldsCollectionsAndLibraries)
{
    EXPECT_EQ(Text(), "A(a B(b)) c");
    EXPECT_EQ(tree.ShownName(a), "A (Sub Collections)");
    EXPECT_EQ(tree.ShownName(b), "B");
    EXPECT_EQ(tree.LibrariesOf(CLibraryTree::kRoot).size(), 3U);
    EXPECT_EQ(tree.LibrariesOf(a).back()->Path(), "x/b.zov");
    EXPECT_EQ(tree.Find(*tree.LibraryOf(libB)), libB);
    EXPECT_EQ(tree.AddLibrary(CLibraryTree::kRoot, tree.LibraryOf(libB)), libB) << "never twice";
    tree.AddLibrary(b, std::make_shared<CZovLibrary>());
    EXPECT_EQ(Text(), "A(a B(b *New Library*)) c");
}

TEST_F(LibraryTreeTest, NamesStayApart)
{
    EXPECT_EQ(tree.NameOf(tree.AddCollection(CLibraryTree::kRoot)), "New_Collection");
    const TNode second = tree.AddCollection(CLibraryTree::kRoot);
    EXPECT_EQ(tree.NameOf(second), "New_Collection_2");
    EXPECT_FALSE(tree.Rename(second, "a"));
    EXPECT_FALSE(tree.Rename(second, "x/y"));
    EXPECT_FALSE(tree.Rename(second, "  "));
    EXPECT_FALSE(tree.Rename(libA, "z"));
    EXPECT_TRUE(tree.Rename(second, "b")) << "B lies elsewhere";
    EXPECT_TRUE(tree.MoveTo(b, CLibraryTree::kRoot));
    EXPECT_EQ(tree.NameOf(b), "B_2");
}

TEST_F(LibraryTreeTest, NodesMove)
{
    EXPECT_FALSE(tree.Move(a, -1));
    EXPECT_TRUE(tree.Move(a, 1));
    EXPECT_EQ(Text(), "c A(a B(b))");
    EXPECT_FALSE(tree.CanMove(a, 1));
    EXPECT_TRUE(tree.MoveTo(libC, b));
    EXPECT_EQ(Text(), "A(a B(b c))");
    EXPECT_FALSE(tree.MoveTo(a, b)) << "a collection into itself";
    EXPECT_FALSE(tree.MoveTo(a, a));
    EXPECT_FALSE(tree.MoveTo(libA, libB));
    tree.Remove(b);
    EXPECT_EQ(Text(), "A(a)");
    EXPECT_FALSE(tree.Has(libC));
}

TEST_F(LibraryTreeTest, GoesThroughAConfiguration)
{
    tree.AddCollection(CLibraryTree::kRoot, "Empty");
    const auto sets = tree.ToSets([](const CZovLibrary& library) { return library.Name() != "b"; });
    ASSERT_EQ(sets.size(), 4U);
    EXPECT_EQ(sets[0].name, "");
    EXPECT_EQ(sets[2].name, "A/B");
    EXPECT_EQ(sets[2].libraries, (std::vector<SListedLibrary>{{"x/b.zov", false}}));
    CLibraryTree other;
    for (const SExternalLibSet& set : sets) {
        const TNode at = other.CollectionAt(set.name);
        for (const SListedLibrary& library : set.libraries) {
            other.AddLibrary(at, Library(library.path.string().c_str()));
        }
    }
    EXPECT_EQ(other.NameOf(other.CollectionAt("a/b")), "B") << "found, not made again";
    EXPECT_EQ(other.LibrariesOf(other.CollectionAt("A")).size(), 2U);
    EXPECT_TRUE(other.ChildrenOf(other.CollectionAt("Empty")).empty());
}

} // namespace
} // namespace zov
