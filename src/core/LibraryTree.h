// SPDX-License-Identifier: Apache-2.0
/// How the user arranges the open libraries: collections, which may hold libraries and further
/// collections. Which libraries are open, and which are searched, is the library set's business.
///
///     CLibraryTree tree;
///     const auto approved = tree.AddCollection(CLibraryTree::kRoot, "Approved");
///     tree.AddLibrary(approved, library);
#pragma once

#include "core/SetConfiguration.h"
#include "core/ZovLibrary.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zov {

class CLibraryTree
{
public:
    using TNode = std::uint32_t;
    static constexpr TNode kRoot = 0;
    static constexpr TNode kNone = ~TNode{0};

    CLibraryTree();

    [[nodiscard]] bool Has(TNode node) const { return m_nodes.contains(node); }
    [[nodiscard]] bool IsCollection(TNode node) const;
    [[nodiscard]] TNode ParentOf(TNode node) const { return m_nodes.at(node).parent; }
    [[nodiscard]] const std::vector<TNode>& ChildrenOf(TNode node) const;
    /// Position among the children of its parent.
    [[nodiscard]] std::size_t PlaceOf(TNode node) const;
    /// Name of a collection; of a library what DisplayNameOf gives.
    [[nodiscard]] std::string NameOf(TNode node) const;
    /// As the tree shows it: a collection with collections in it is "%s (Sub Collections)".
    [[nodiscard]] std::string ShownName(TNode node) const;
    /// Null for a collection.
    [[nodiscard]] const std::shared_ptr<CZovLibrary>& LibraryOf(TNode node) const;
    /// The node of a library; kNone when it is not in the tree.
    [[nodiscard]] TNode Find(const CZovLibrary& library) const;
    /// Libraries of a node and below, as the tree shows them from top to bottom.
    [[nodiscard]] std::vector<std::shared_ptr<CZovLibrary>> LibrariesOf(TNode node) const;

    /// Every collection with its nested name ("outer/inner"), as the tree shows them from top to
    /// bottom.
    [[nodiscard]] std::vector<std::pair<TNode, std::string>> Collections() const;

    /// A new collection at the end; a name that a sibling collection has gets "_2", "_3", ...
    TNode AddCollection(TNode parent, const std::string& name = kNewCollection);
    /// At the end; a library that is in the tree already stays where it is.
    TNode AddLibrary(TNode parent, std::shared_ptr<CZovLibrary> library);
    /// False for a library, an empty name, a name with a slash (it joins the names of nested
    /// collections in files), or one that a sibling has.
    bool Rename(TNode collection, const std::string& name);
    /// With all that is below it.
    void Remove(TNode node);

    [[nodiscard]] bool CanMove(TNode node, int by) const;
    /// Up (-1) or down (1) among its siblings; false when it is at that end.
    bool Move(TNode node, int by);
    /// To another collection, at its end; false for a library as parent, or a collection that would
    /// get into itself.
    bool MoveTo(TNode node, TNode parent);

    /// Collections as a configuration keeps them, nested ones by "outer/inner"; libraries outside
    /// of all collections come as a set without a name. `isOn` tells which are searched.
    [[nodiscard]] std::vector<SExternalLibSet>
    ToSets(const std::function<bool(const CZovLibrary&)>& isOn) const;
    /// The collection of such a name, made where it is missing.
    TNode CollectionAt(std::string_view nestedName);

    static constexpr const char* kNewCollection = "New_Collection";

private:
    struct SNode
    {
        TNode parent = kNone;
        std::string name;
        std::shared_ptr<CZovLibrary> library;
        std::vector<TNode> children;
    };
    TNode Add(TNode parent, SNode node);
    [[nodiscard]] TNode ChildNamed(TNode parent, std::string_view name) const;
    [[nodiscard]] std::string FreeName(TNode parent, const std::string& wanted) const;
    void Detach(TNode node);
    std::map<TNode, SNode> m_nodes;
    TNode m_next = kRoot + 1;
};

} // namespace zov
