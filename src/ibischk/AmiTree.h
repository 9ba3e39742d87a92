// SPDX-License-Identifier: Apache-2.0
/// The tree of parentheses in a parameter file, over the joined text.
///
///     const auto tree = CAmiTree::Parse(report, text, "rx.ami");
///     for (const std::uint32_t child : tree->Children(tree->Root())) {
///         use(tree->Name(child), tree->Values(child));
///     }
///
/// Nodes lie in the order of their opening parentheses, so that a branch and all below it are one
/// run. Reading takes two passes over the text and no recursion.
#pragma once

#include "ibischk/AmiReader.h"
#include "ibischk/Report.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class EAmiToken : std::uint8_t
{
    String,  ///< in quotes
    Integer, ///< sign and digits
    Boolean, ///< True, False
    Real,    ///< digits with a point, an exponent, or both
    Word,    ///< anything else
    None     ///< the name of a node that has none
};

/// What a run of characters without blanks, quotes and parentheses is.
[[nodiscard]] EAmiToken ClassifyAmiRun(std::string_view run);

struct SAmiToken
{
    std::uint32_t at = 0;
    std::uint32_t length : 29 = 0; ///< quotes included
    std::uint32_t kindBits : 3 = static_cast<std::uint32_t>(EAmiToken::None);

    [[nodiscard]] EAmiToken Kind() const { return static_cast<EAmiToken>(kindBits); }
};

struct SAmiNode
{
    SAmiToken name;
    std::uint32_t end = 0; ///< the node behind the last one below this
    std::uint32_t firstValue = 0;
    std::uint32_t valueCount = 0; ///< in front of the first child
};

/// The children of a node, by their numbers.
class CAmiChildren
{
public:
    class CIterator
    {
    public:
        CIterator(const SAmiNode* nodes, std::uint32_t at)
            : m_nodes(nodes)
            , m_at(at)
        {
        }
        std::uint32_t operator*() const { return m_at; }
        CIterator& operator++()
        {
            m_at = m_nodes[m_at].end;
            return *this;
        }
        bool operator==(const CIterator& other) const { return m_at == other.m_at; }

    private:
        const SAmiNode* m_nodes;
        std::uint32_t m_at;
    };

    CAmiChildren(const SAmiNode* nodes, std::uint32_t parent)
        : m_nodes(nodes)
        , m_parent(parent)
    {
    }
    [[nodiscard]] CIterator begin() const { return {m_nodes, m_parent + 1}; }
    [[nodiscard]] CIterator end() const { return {m_nodes, m_nodes[m_parent].end}; }

private:
    const SAmiNode* m_nodes;
    std::uint32_t m_parent;
};

class CAmiTree
{
public:
    /// Reports 4619 or 4620 and gives none when the parentheses don't match or nest too deeply; 922
    /// for a text of 512 MiB and more. Reports 4634, 4635, 4664, 4668 and goes on.
    /// @param text  must outlive the tree
    /// @param file  for the messages
    static std::optional<CAmiTree> Parse(CReport& report, const SAmiText& text,
                                         std::string_view file);

    /// Is there no node at all?
    [[nodiscard]] bool Empty() const { return m_nodes.empty(); }
    [[nodiscard]] static constexpr std::uint32_t Root() { return 0; }
    [[nodiscard]] const SAmiNode& Node(std::uint32_t node) const { return m_nodes[node]; }
    [[nodiscard]] bool HasChildren(std::uint32_t node) const
    {
        return m_nodes[node].end > node + 1;
    }
    [[nodiscard]] CAmiChildren Children(std::uint32_t node) const { return {m_nodes.data(), node}; }
    /// The values of a node; of one with children those in front of the first.
    [[nodiscard]] std::span<const SAmiToken> Values(std::uint32_t node) const
    {
        return {m_values.data() + m_nodes[node].firstValue, m_nodes[node].valueCount};
    }

    /// The token as it stands in the file.
    [[nodiscard]] std::string_view Raw(SAmiToken token) const
    {
        return std::string_view(m_text->text).substr(token.at, token.length);
    }
    /// Without its quotes.
    [[nodiscard]] std::string_view Text(SAmiToken token) const;
    /// The name as it stands; empty for none.
    [[nodiscard]] std::string_view Name(std::uint32_t node) const
    {
        return Raw(m_nodes[node].name);
    }

    [[nodiscard]] SPlace Place(SAmiToken token) const { return m_text->Place(Raw(token)); }
    [[nodiscard]] SPlace Place(std::uint32_t node) const { return Place(m_nodes[node].name); }

    /// A "Table" with rows, or a "Format" whose word is Table: the node whose children are rows.
    [[nodiscard]] bool IsTable(std::uint32_t node) const;

private:
    friend class CAmiParser;

    const SAmiText* m_text = nullptr;
    std::vector<SAmiNode> m_nodes;
    std::vector<SAmiToken> m_values;
};

/// A text of the file as messages show it: a hostile one is cut.
[[nodiscard]] std::string_view ShownAmi(std::string_view text, std::size_t limit = 80);

} // namespace zov::ibischk
