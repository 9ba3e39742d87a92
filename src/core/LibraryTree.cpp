// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryTree.h"

#include "base/Text.h"

#include <algorithm>

namespace zov {
namespace {

constexpr std::string_view kNewLibrary = "*New Library*";
/// Deeper names of a hostile configuration end up in the last collection.
constexpr std::size_t kMaxNested = 64;
constexpr std::string_view kHasCollections = " (Sub Collections)";

} // namespace

CLibraryTree::CLibraryTree()
{
    m_nodes[kRoot] = {};
}

bool CLibraryTree::IsCollection(TNode node) const
{
    return m_nodes.at(node).library == nullptr;
}

const std::vector<CLibraryTree::TNode>& CLibraryTree::ChildrenOf(TNode node) const
{
    return m_nodes.at(node).children;
}

std::size_t CLibraryTree::PlaceOf(TNode node) const
{
    const std::vector<TNode>& siblings = ChildrenOf(ParentOf(node));
    return static_cast<std::size_t>(std::ranges::find(siblings, node) - siblings.begin());
}

std::string CLibraryTree::NameOf(TNode node) const
{
    const SNode& at = m_nodes.at(node);
    if (at.library == nullptr) {
        return at.name;
    }
    return at.library->Path().empty() ? std::string(kNewLibrary) : at.library->Name();
}

std::string CLibraryTree::ShownName(TNode node) const
{
    const bool hasCollections =
        std::ranges::any_of(ChildrenOf(node), [this](TNode child) { return IsCollection(child); });
    return NameOf(node) + std::string(hasCollections ? kHasCollections : std::string_view());
}

const std::shared_ptr<CZovLibrary>& CLibraryTree::LibraryOf(TNode node) const
{
    return m_nodes.at(node).library;
}

CLibraryTree::TNode CLibraryTree::Find(const CZovLibrary& library) const
{
    const auto at = std::ranges::find_if(
        m_nodes, [&](const auto& node) { return node.second.library.get() == &library; });
    return at == m_nodes.end() ? kNone : at->first;
}

std::vector<std::shared_ptr<CZovLibrary>> CLibraryTree::LibrariesOf(TNode node) const
{
    std::vector<std::shared_ptr<CZovLibrary>> libraries;
    std::vector<TNode> open = {node};
    while (!open.empty()) {
        const TNode at = open.back();
        open.pop_back();
        if (const auto& library = LibraryOf(at)) {
            libraries.push_back(library);
        }
        open.insert(open.end(), ChildrenOf(at).rbegin(), ChildrenOf(at).rend());
    }
    return libraries;
}

CLibraryTree::TNode CLibraryTree::Add(TNode parent, SNode node)
{
    const TNode added = m_next++;
    node.parent = parent;
    m_nodes[added] = std::move(node);
    m_nodes.at(parent).children.push_back(added);
    return added;
}

CLibraryTree::TNode CLibraryTree::ChildNamed(TNode parent, std::string_view name) const
{
    for (const TNode child : ChildrenOf(parent)) {
        if (IsCollection(child) && EqualsNoCase(m_nodes.at(child).name, name)) {
            return child;
        }
    }
    return kNone;
}

std::string CLibraryTree::FreeName(TNode parent, const std::string& wanted) const
{
    std::string name = wanted;
    for (int number = 2; ChildNamed(parent, name) != kNone; ++number) {
        name = wanted + '_' + std::to_string(number);
    }
    return name;
}

CLibraryTree::TNode CLibraryTree::AddCollection(TNode parent, const std::string& name)
{
    SNode node;
    node.name = FreeName(parent, name);
    return Add(parent, std::move(node));
}

CLibraryTree::TNode CLibraryTree::AddLibrary(TNode parent, std::shared_ptr<CZovLibrary> library)
{
    if (const TNode there = Find(*library); there != kNone) {
        return there;
    }
    SNode node;
    node.library = std::move(library);
    return Add(parent, std::move(node));
}

bool CLibraryTree::Rename(TNode collection, const std::string& name)
{
    if (collection == kRoot || !IsCollection(collection) || Trim(name).empty() ||
        name.find('/') != std::string::npos) {
        return false;
    }
    const TNode there = ChildNamed(ParentOf(collection), name);
    if (there != kNone && there != collection) {
        return false;
    }
    m_nodes.at(collection).name = Trim(name);
    return true;
}

void CLibraryTree::Detach(TNode node)
{
    std::erase(m_nodes.at(ParentOf(node)).children, node);
}

void CLibraryTree::Remove(TNode node)
{
    Detach(node);
    std::vector<TNode> doomed = {node};
    while (!doomed.empty()) {
        const TNode at = doomed.back();
        doomed.pop_back();
        doomed.insert(doomed.end(), ChildrenOf(at).begin(), ChildrenOf(at).end());
        m_nodes.erase(at);
    }
}

bool CLibraryTree::CanMove(TNode node, int by) const
{
    if (node == kRoot || !Has(node)) {
        return false;
    }
    const auto to = static_cast<std::ptrdiff_t>(PlaceOf(node)) + by;
    return to >= 0 && to < static_cast<std::ptrdiff_t>(ChildrenOf(ParentOf(node)).size());
}

bool CLibraryTree::Move(TNode node, int by)
{
    if (!CanMove(node, by)) {
        return false;
    }
    std::vector<TNode>& siblings = m_nodes.at(ParentOf(node)).children;
    const auto at = siblings.begin() + static_cast<std::ptrdiff_t>(PlaceOf(node));
    std::iter_swap(at, at + by);
    return true;
}

bool CLibraryTree::MoveTo(TNode node, TNode parent)
{
    if (node == kRoot || !IsCollection(parent)) {
        return false;
    }
    for (TNode at = parent; at != kNone; at = m_nodes.at(at).parent) {
        if (at == node) {
            return false;
        }
    }
    Detach(node);
    if (IsCollection(node)) {
        m_nodes.at(node).name = FreeName(parent, NameOf(node));
    }
    m_nodes.at(node).parent = parent;
    m_nodes.at(parent).children.push_back(node);
    return true;
}

std::vector<std::pair<CLibraryTree::TNode, std::string>> CLibraryTree::Collections() const
{
    std::vector<std::pair<TNode, std::string>> collections;
    std::vector<std::pair<TNode, std::string>> open = {{kRoot, {}}};
    while (!open.empty()) {
        const auto [at, name] = open.back();
        open.pop_back();
        if (at != kRoot) {
            collections.emplace_back(at, name);
        }
        const std::vector<TNode>& children = ChildrenOf(at);
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (IsCollection(*child)) {
                open.emplace_back(*child,
                                  name.empty() ? NameOf(*child) : name + '/' + NameOf(*child));
            }
        }
    }
    return collections;
}

std::vector<SExternalLibSet>
CLibraryTree::ToSets(const std::function<bool(const CZovLibrary&)>& isOn) const
{
    std::vector<std::pair<TNode, std::string>> collections = Collections();
    collections.insert(collections.begin(), {kRoot, {}});
    std::vector<SExternalLibSet> sets;
    for (const auto& [collection, name] : collections) {
        SExternalLibSet set;
        set.name = name;
        for (const TNode child : ChildrenOf(collection)) {
            const auto& library = LibraryOf(child);
            if (library && !library->Path().empty()) {
                set.libraries.push_back({library->Path(), isOn(*library)});
            }
        }
        if (collection != kRoot || !set.libraries.empty()) {
            sets.push_back(std::move(set));
        }
    }
    return sets;
}

CLibraryTree::TNode CLibraryTree::CollectionAt(std::string_view nestedName)
{
    TNode at = kRoot;
    std::size_t depth = 0;
    for (const std::string_view name : Split(nestedName, '/')) {
        if (depth++ == kMaxNested) {
            break;
        }
        if (Trim(name).empty()) {
            continue;
        }
        const TNode there = ChildNamed(at, Trim(name));
        at = there == kNone ? AddCollection(at, std::string(Trim(name))) : there;
    }
    return at;
}

} // namespace zov
