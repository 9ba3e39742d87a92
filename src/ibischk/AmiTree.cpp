// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiTree.h"

#include "base/Text.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kMaxDepth = 256;
constexpr std::size_t kMaxText = std::size_t{1} << 29U;
constexpr std::size_t kShownOutside = 40;

struct SParentheses
{
    std::size_t nodes = 0;
    std::size_t deepest = 0;
    std::size_t leftOpen = 0;
    std::optional<std::size_t> surplus; ///< where a ")" closes nothing
};

/// The end of the string that opens at `at`, behind its closing quote.
std::size_t StringEnd(std::string_view text, std::size_t at)
{
    const std::size_t close = text.find('"', at + 1);
    return close == std::string_view::npos ? text.size() : close + 1;
}

SParentheses CountParentheses(std::string_view text)
{
    SParentheses found;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (c == '"') {
            i = StringEnd(text, i);
            continue;
        }
        if (c == '(') {
            ++found.nodes;
            found.deepest = std::max(found.deepest, ++found.leftOpen);
        } else if (c == ')') {
            if (found.leftOpen == 0) {
                found.surplus = i;
                return found;
            }
            --found.leftOpen;
        }
        ++i;
    }
    return found;
}

/// Where the root opens; the text's size when nothing does. A parenthesis in a string opens
/// nothing.
std::size_t FirstOpen(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size() && text[at] != '(') {
        at = text[at] == '"' ? StringEnd(text, at) : at + 1;
    }
    return at;
}

/// Where the innermost "(" stands that nothing closes; there is one.
std::size_t LastOpen(std::string_view text)
{
    std::size_t closed = 0;
    bool inString = false;
    for (std::size_t i = text.size(); i-- > 0;) {
        if (text[i] == '"') {
            inString = !inString;
        } else if (!inString && text[i] == ')') {
            ++closed;
        } else if (!inString && text[i] == '(' && closed-- == 0) {
            return i;
        }
    }
    return 0;
}

bool EndsRun(char c)
{
    return IsSpace(c) || c == '(' || c == ')' || c == '"';
}

std::size_t SkipDigits(std::string_view text, std::size_t at)
{
    while (at < text.size() && IsDigit(text[at])) {
        ++at;
    }
    return at;
}

std::size_t SkipSign(std::string_view text, std::size_t at)
{
    return at < text.size() && (text[at] == '+' || text[at] == '-') ? at + 1 : at;
}

} // namespace

EAmiToken ClassifyAmiRun(std::string_view run)
{
    if (run == "True" || run == "False") {
        return EAmiToken::Boolean;
    }
    const std::size_t begin = SkipSign(run, 0);
    std::size_t at = SkipDigits(run, begin);
    std::size_t digits = at - begin;
    if (digits > 0 && at == run.size()) {
        return EAmiToken::Integer;
    }
    if (at < run.size() && run[at] == '.') {
        const std::size_t fraction = at + 1;
        at = SkipDigits(run, fraction);
        digits += at - fraction;
    }
    if (digits > 0 && at < run.size() && (run[at] == 'e' || run[at] == 'E')) {
        const std::size_t exponent = SkipSign(run, at + 1);
        at = SkipDigits(run, exponent);
        digits = at - exponent;
    }
    return digits > 0 && at == run.size() ? EAmiToken::Real : EAmiToken::Word;
}

std::string_view ShownAmi(std::string_view text, std::size_t limit)
{
    return text.substr(0, limit);
}

std::string_view CAmiTree::Text(SAmiToken token) const
{
    std::string_view raw = Raw(token);
    if (token.Kind() == EAmiToken::String) {
        raw.remove_prefix(1);
        if (raw.ends_with('"')) {
            raw.remove_suffix(1);
        }
    }
    return raw;
}

bool CAmiTree::IsTable(std::uint32_t node) const
{
    const std::string_view name = Name(node);
    return name == "Table" ||
           (name == "Format" && !Values(node).empty() && Raw(Values(node).front()) == "Table");
}

/// Builds the nodes of a text whose parentheses match.
class CAmiParser
{
public:
    CAmiParser(CReport& report, CAmiTree& tree)
        : m_report(report)
        , m_tree(tree)
        , m_text(tree.m_text->text)
    {
    }

    void Run()
    {
        const std::size_t root = FirstOpen(m_text);
        Outside(m_text.substr(0, root));
        m_at = root;
        while (m_at < m_text.size()) {
            Step();
            if (m_open.empty()) {
                break;
            }
        }
        Outside(m_text.substr(m_at));
    }

private:
    struct SOpen
    {
        std::uint32_t node;
        bool valuesBehind = false; ///< a value stands behind a child
    };

    void Outside(std::string_view text)
    {
        text = Trim(text);
        if (!text.empty()) {
            m_report.ErrorAt(m_tree.m_text->Place(text), 4668, ShownAmi(text, kShownOutside));
        }
    }

    void Step()
    {
        const char c = m_text[m_at];
        if (c == '(') {
            Open();
        } else if (c == ')') {
            Close();
        } else if (c == '"') {
            Take(StringEnd(m_text, m_at), EAmiToken::String);
        } else if (IsSpace(c)) {
            ++m_at;
        } else {
            std::size_t end = m_at + 1;
            while (end < m_text.size() && !EndsRun(m_text[end])) {
                ++end;
            }
            Take(end, ClassifyAmiRun(m_text.substr(m_at, end - m_at)));
        }
    }

    [[nodiscard]] SAmiNode& Current() { return m_tree.m_nodes[m_open.back().node]; }

    /// The name is still to come where the token at hand is another parenthesis. A root without
    /// name is told by the driver.
    void MissName()
    {
        if (!m_awaitsName) {
            return;
        }
        m_awaitsName = false;
        if (m_open.size() > 1) {
            const std::uint32_t parent = m_open[m_open.size() - 2].node;
            m_report.ErrorAt(m_tree.Place(m_open.back().node), 4634, ShownAmi(m_tree.Name(parent)));
        }
    }

    void Open()
    {
        MissName();
        SAmiNode node;
        node.name.at = static_cast<std::uint32_t>(m_at);
        node.firstValue = static_cast<std::uint32_t>(m_tree.m_values.size());
        m_open.push_back({static_cast<std::uint32_t>(m_tree.m_nodes.size())});
        m_tree.m_nodes.push_back(node);
        m_awaitsName = true;
        m_previousEnd = ++m_at;
        m_previous = EAmiToken::None;
    }

    void Close()
    {
        MissName();
        const SOpen open = m_open.back();
        const auto end = static_cast<std::uint32_t>(m_tree.m_nodes.size());
        m_tree.m_nodes[open.node].end = end;
        const bool mixed =
            open.valuesBehind || (m_tree.m_nodes[open.node].valueCount > 0 && end > open.node + 1);
        if (mixed && !m_tree.IsTable(open.node)) {
            m_report.ErrorAt(m_tree.Place(open.node), 4635, ShownAmi(m_tree.Name(open.node)));
        }
        m_open.pop_back();
        ++m_at;
    }

    void Take(std::size_t end, EAmiToken kind)
    {
        SAmiToken token;
        token.at = static_cast<std::uint32_t>(m_at);
        token.length = static_cast<std::uint32_t>(end - m_at) & ((1U << 29U) - 1);
        token.kindBits = static_cast<std::uint32_t>(kind) & 7U;
        Touching(token);
        if (m_awaitsName) {
            TakeName(token);
        } else if (m_open.back().node + 1 < m_tree.m_nodes.size()) {
            m_open.back().valuesBehind = true;
        } else {
            m_tree.m_values.push_back(token);
            ++Current().valueCount;
        }
        m_at = end;
        m_previousEnd = end;
        m_previous = kind;
    }

    void TakeName(SAmiToken token)
    {
        m_awaitsName = false;
        Current().name = token;
        if (token.Kind() != EAmiToken::String || m_open.size() == 1) {
            return;
        }
        const std::uint32_t parent = m_open[m_open.size() - 2].node;
        if (!m_tree.IsTable(parent)) {
            Malformed(EReport::Error, token, m_tree.Name(parent));
        }
    }

    void Malformed(EReport severity, SAmiToken token, std::string_view node)
    {
        m_report.At(severity, m_tree.Place(token), 4664, ShownAmi(m_tree.Raw(token)),
                    ShownAmi(node));
    }

    /// Tokens want a blank between them, except two strings.
    void Touching(SAmiToken token)
    {
        if (m_previousEnd != m_at || m_previous == EAmiToken::None) {
            return;
        }
        const std::string_view node = m_tree.Name(m_open.back().node);
        if (token.Kind() != EAmiToken::String) {
            Malformed(EReport::Error, token, node);
        } else if (m_previous != EAmiToken::String) {
            Malformed(EReport::Warning, token, node);
        }
    }

    CReport& m_report;
    CAmiTree& m_tree;
    std::string_view m_text;
    std::vector<SOpen> m_open;
    std::size_t m_at = 0;
    std::size_t m_previousEnd = 0;
    EAmiToken m_previous = EAmiToken::None; ///< the token in front, of the same node
    bool m_awaitsName = false;
};

std::optional<CAmiTree> CAmiTree::Parse(CReport& report, const SAmiText& text,
                                        std::string_view file)
{
    if (text.text.size() >= kMaxText) {
        report.Error(922, "ibischk/ami", __LINE__);
        return std::nullopt;
    }
    const SParentheses found = CountParentheses(text.text);
    if (found.surplus) {
        const std::string_view close = std::string_view(text.text).substr(*found.surplus, 1);
        report.ErrorAt(text.Place(close), 4619, file);
        return std::nullopt;
    }
    if (found.leftOpen > 0) {
        const std::string_view open = std::string_view(text.text).substr(LastOpen(text.text), 1);
        const SDetail details[] = {{"left open", std::to_string(found.leftOpen)}};
        report.Emit(EReport::Error, text.Place(open), 4619, {CArg(file)}, details);
        return std::nullopt;
    }
    if (found.deepest > kMaxDepth) {
        report.Error(4620, file);
        return std::nullopt;
    }
    CAmiTree tree;
    tree.m_text = &text;
    tree.m_nodes.reserve(found.nodes);
    CAmiParser(report, tree).Run();
    return tree;
}

} // namespace zov::ibischk
