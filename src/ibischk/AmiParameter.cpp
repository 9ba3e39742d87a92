// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiParameter.h"

#include "base/Number.h"

#include <algorithm>
#include <array>

namespace zov::ibischk {

namespace {

enum ELeaf : std::uint8_t
{
    kUsage,
    kType,
    kFormat, ///< and its short forms
    kDefault,
    kListTip,
    kDescription,
    kLeafCount
};

std::optional<ELeaf> FindLeaf(std::string_view name)
{
    constexpr std::array<std::string_view, kLeafCount> kNames = {
        "Usage", "Type", "Format", "Default", "List_Tip", "Description"};
    const auto* found = std::ranges::find(kNames, name);
    if (found != kNames.end()) {
        return static_cast<ELeaf>(found - kNames.begin());
    }
    return FindAmiFormat(name) ? std::optional<ELeaf>(kFormat) : std::nullopt;
}

using Leaves = std::array<std::uint32_t, kLeafCount>;

Leaves NoLeaves()
{
    Leaves leaves{};
    leaves.fill(SAmiParameter::kNone);
    return leaves;
}

/// The words, format and values that the leaves hold, right or wrong.
void FillIn(SAmiParameter& p, const Leaves& leaves)
{
    const CAmiTree& tree = *p.tree;
    if (leaves[kUsage] != SAmiParameter::kNone && !tree.Values(leaves[kUsage]).empty()) {
        const SAmiToken word = tree.Values(leaves[kUsage]).front();
        p.usage = FindAmiUsage(tree.Raw(word)).value_or(EAmiUsage::None);
    }
    if (leaves[kType] != SAmiParameter::kNone) {
        p.typeWords = tree.Values(leaves[kType]);
        if (!p.typeWords.empty()) {
            p.type = FindAmiType(tree.Raw(p.typeWords.front()));
        }
    }
    p.formatNode = leaves[kFormat];
    if (p.formatNode != SAmiParameter::kNone) {
        p.values = tree.Values(p.formatNode);
        std::string_view word = tree.Name(p.formatNode);
        if (word == "Format") {
            word = p.values.empty() ? std::string_view() : tree.Raw(p.values.front());
            p.values = p.values.empty() ? p.values : p.values.subspan(1);
        }
        p.format = FindAmiFormat(word).value_or(EAmiFormat::None);
    }
    if (leaves[kDefault] != SAmiParameter::kNone && !tree.Values(leaves[kDefault]).empty()) {
        p.defaultValue = &tree.Values(leaves[kDefault]).front();
    }
}

/// Steps of the check of one parameter that look at its leaves.
class CLeafCheck
{
public:
    CLeafCheck(SAmiCheck& ami, SAmiParameter& p, const SAmiSets& sets)
        : m_ami(ami)
        , m_report(ami.report)
        , m_tree(ami.tree)
        , m_p(p)
        , m_sets(sets)
    {
    }

    void Run()
    {
        for (const std::uint32_t child : m_tree.Children(m_p.node)) {
            TakeChild(child);
        }
        FillIn(m_p, m_leaves);
        Usage();
        Type();
        Format();
        Values();
        ListTip();
        if (Given(kDescription)) {
            CheckAmiDescription(m_ami, m_leaves[kDescription], m_p.name);
        }
    }

private:
    [[nodiscard]] bool Given(ELeaf leaf) const { return m_leaves[leaf] != SAmiParameter::kNone; }
    [[nodiscard]] SPlace PlaceOf(ELeaf leaf) const { return m_tree.Place(m_leaves[leaf]); }
    [[nodiscard]] std::span<const SAmiToken> ValuesOf(ELeaf leaf) const
    {
        return m_tree.Values(m_leaves[leaf]);
    }

    void TakeChild(std::uint32_t child)
    {
        const std::string_view name = m_tree.Name(child);
        if (name.empty()) {
            return;
        }
        const auto leaf = FindLeaf(name);
        if (m_tree.HasChildren(child) && !m_tree.IsTable(child)) {
            m_report.ErrorAt(m_tree.Place(child), 4628, ShownAmi(name), m_p.name);
            return;
        }
        if (!leaf) {
            m_report.ErrorAt(m_tree.Place(child), 4624, ShownAmi(name), m_p.name);
            return;
        }
        if (Given(*leaf)) {
            const std::string_view shown = *leaf == kFormat ? std::string_view("Format") : name;
            m_report.ErrorAt(m_tree.Place(child), 4640, m_p.name, shown);
            return;
        }
        m_leaves[*leaf] = child;
    }

    /// 4630 and 4626.
    bool HasWord(ELeaf leaf, std::string_view name, EReport missing)
    {
        if (!Given(leaf)) {
            m_report.At(missing, m_p.place, 4630, name, m_p.name);
            return false;
        }
        if (ValuesOf(leaf).empty()) {
            m_report.ErrorAt(PlaceOf(leaf), 4626, name, m_p.name);
            return false;
        }
        return true;
    }

    void Illegal(std::string_view leaf, SAmiToken word)
    {
        m_report.ErrorAt(m_tree.Place(word), 4627, leaf, ShownAmi(m_tree.Raw(word)), m_p.name);
    }

    void Usage()
    {
        if (!HasWord(kUsage, "Usage", EReport::Error)) {
            return;
        }
        const auto words = ValuesOf(kUsage);
        if (words.size() > 1) {
            m_report.ErrorAt(PlaceOf(kUsage), 4631, m_p.name, "Usage");
        }
        if (m_p.usage == EAmiUsage::None) {
            Illegal("Usage", words.front());
        } else if (m_ami.type == EFileType::Parameters) {
            if (m_p.usage != EAmiUsage::Info) {
                m_report.ErrorAt(PlaceOf(kUsage), 4629, m_p.name);
            }
        } else if (!InSet(m_sets.usages, m_p.usage)) {
            Illegal("Usage", words.front());
        } else if (m_p.usage == EAmiUsage::Dep) {
            Dependent();
        }
    }

    void Dependent()
    {
        if (!m_ami.AtLeast(6.1)) {
            m_report.ErrorAt(PlaceOf(kUsage), 4665, m_p.name);
        } else if (!m_ami.resolves) {
            m_report.ErrorAt(PlaceOf(kUsage), 4666, m_p.name);
        }
    }

    void Type()
    {
        // The first version took Float where none was given.
        const bool optional = m_ami.implicitVersion && m_ami.type == EFileType::Ami;
        if (!HasWord(kType, "Type", optional ? EReport::Warning : EReport::Error)) {
            return;
        }
        for (const SAmiToken& word : m_p.typeWords) {
            const auto type = FindAmiType(m_tree.Raw(word));
            if (!type || !InSet(m_sets.types, *type)) {
                Illegal("Type", word);
                m_typesGood = false;
            }
        }
        if (m_p.typeWords.size() > 1 && m_p.format != EAmiFormat::Table) {
            m_report.ErrorAt(PlaceOf(kType), 4631, m_p.name, "Type");
        }
    }

    void Format()
    {
        if (!Given(kFormat)) {
            if (!Given(kDefault)) {
                m_report.ErrorAt(m_p.place, 4641, m_p.name);
            }
            return;
        }
        const std::uint32_t node = m_leaves[kFormat];
        const auto words = m_tree.Values(node);
        const bool longForm = m_tree.Name(node) == "Format";
        if (longForm && words.empty()) {
            m_report.ErrorAt(m_tree.Place(node), 4626, "Format", m_p.name);
            return;
        }
        if (m_p.format == EAmiFormat::None) {
            Illegal("Format", words.front());
            return;
        }
        const SAmiToken word = longForm ? words.front() : m_tree.Node(node).name;
        if (m_sets.reserved && !InSet(m_sets.formats, m_p.format)) {
            Illegal("Format", word);
            m_formatGood = false;
        } else if (m_p.type && m_typesGood) {
            Fits(word);
        }
    }

    void Fits(SAmiToken word)
    {
        const bool distribution = IsDistribution(m_p.format);
        bool fits = !(distribution || HasLimits(m_p.format)) || IsNumeric(*m_p.type);
        if (distribution) {
            fits = *m_p.type == EAmiType::Float || *m_p.type == EAmiType::UI;
        } else if (m_p.format == EAmiFormat::Table) {
            fits = *m_p.type != EAmiType::Tap;
        }
        const bool yieldsOne = !distribution && m_p.format != EAmiFormat::Table;
        if (!fits || (m_ami.type == EFileType::Parameters && !yieldsOne)) {
            m_report.ErrorAt(m_tree.Place(word), 4636, m_p.name, WordOf(m_p.format),
                             WordOf(*m_p.type));
            m_formatGood = false;
        }
        if (distribution && (m_p.usage == EAmiUsage::In || m_p.usage == EAmiUsage::InOut)) {
            m_report.WarningAt(m_tree.Place(word), 4639, m_p.name, WordOf(m_p.format),
                               WordOf(m_p.usage));
        }
    }

    void Values()
    {
        if (!m_typesGood) {
            m_p.type.reset();
        }
        if (m_p.format == EAmiFormat::Table && m_formatGood) {
            CheckAmiTable(m_ami, m_p);
        } else if (m_p.format != EAmiFormat::None && m_formatGood) {
            CheckAmiValues(m_ami, m_p);
        }
        if (!Given(kDefault)) {
            return;
        }
        const auto values = ValuesOf(kDefault);
        if (values.empty()) {
            m_report.ErrorAt(PlaceOf(kDefault), 4626, "Default", m_p.name);
            return;
        }
        if (values.size() > 1) {
            m_report.ErrorAt(PlaceOf(kDefault), 4632, m_p.name, "Default", 1, values.size());
        }
        CheckAmiDefault(m_ami, m_p, m_sets);
    }

    void ListTip()
    {
        if (!Given(kListTip)) {
            return;
        }
        const SPlace place = PlaceOf(kListTip);
        if (!m_ami.AtLeast(6.0)) {
            m_report.WarningAt(place, 4667, m_p.name);
        }
        const auto tips = ValuesOf(kListTip);
        if (m_p.format != EAmiFormat::List) {
            m_report.ErrorAt(place, 4653, m_p.name);
        } else if (tips.size() != m_p.values.size()) {
            m_report.ErrorAt(place, 4654, m_p.name, tips.size(), m_p.values.size());
        }
        for (const SAmiToken& tip : tips) {
            if (tip.Kind() != EAmiToken::String) {
                m_report.ErrorAt(m_tree.Place(tip), 4655, m_p.name, ShownAmi(m_tree.Raw(tip)));
            }
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const CAmiTree& m_tree;
    SAmiParameter& m_p;
    const SAmiSets& m_sets;
    Leaves m_leaves = NoLeaves();
    bool m_typesGood = true;
    bool m_formatGood = true;
};

bool HoldsRowsOnly(const CAmiTree& tree, std::uint32_t table)
{
    for (const std::uint32_t row : tree.Children(table)) {
        if (tree.HasChildren(row)) {
            return false;
        }
    }
    return true;
}

SAmiParameter NewParameter(const CAmiTree& tree, std::uint32_t node, std::string_view name)
{
    SAmiParameter p;
    p.tree = &tree;
    p.node = node;
    p.name = name;
    p.place = tree.Place(node);
    return p;
}

} // namespace

const SAmiToken* SAmiParameter::FixedValue() const
{
    if (format == EAmiFormat::Table || IsDistribution(format)) {
        return nullptr;
    }
    if (format != EAmiFormat::Value && defaultValue != nullptr) {
        return defaultValue;
    }
    return values.empty() ? defaultValue : &values.front();
}

bool SAmiParameter::IsTrue() const
{
    const SAmiToken* value = FixedValue();
    return value != nullptr && tree->Raw(*value) == "True";
}

bool SAmiParameter::IsString(std::string_view text) const
{
    const SAmiToken* value = FixedValue();
    return value != nullptr && value->Kind() == EAmiToken::String && tree->Text(*value) == text;
}

std::span<const SAmiToken> SAmiParameter::Choices() const
{
    constexpr std::size_t kTriple = 3;
    if (format == EAmiFormat::Table || IsDistribution(format)) {
        return {};
    }
    return HasLimits(format) ? values.first(std::min(values.size(), kTriple)) : values;
}

SAmiParameter FindAmiParameter(const CAmiTree& tree, std::uint32_t node, std::string_view name)
{
    SAmiParameter p = NewParameter(tree, node, name);
    Leaves leaves = NoLeaves();
    for (const std::uint32_t child : tree.Children(node)) {
        const auto leaf = FindLeaf(tree.Name(child));
        if (leaf && leaves[*leaf] == SAmiParameter::kNone) {
            leaves[*leaf] = child;
        }
    }
    FillIn(p, leaves);
    return p;
}

SAmiParameter ReadAmiParameter(SAmiCheck& ami, std::uint32_t node, std::string_view name,
                               const SAmiSets& sets)
{
    SAmiParameter p = NewParameter(ami.tree, node, name);
    CLeafCheck(ami, p, sets).Run();
    return p;
}

bool IsAmiParameter(const CAmiTree& tree, std::uint32_t node)
{
    for (const std::uint32_t child : tree.Children(node)) {
        const auto leaf = FindLeaf(tree.Name(child));
        if (!leaf || *leaf == kDescription || *leaf == kListTip) {
            continue;
        }
        if (!tree.HasChildren(child) || (tree.IsTable(child) && HoldsRowsOnly(tree, child))) {
            return true;
        }
    }
    return false;
}

void CheckAmiDescription(SAmiCheck& ami, std::uint32_t leaf, std::string_view owner)
{
    const auto values = ami.tree.Values(leaf);
    if (values.size() != 1 || values.front().Kind() != EAmiToken::String) {
        ami.report.ErrorAt(ami.tree.Place(leaf), 4663, owner);
    }
}

std::optional<double> AmiNumber(const CAmiTree& tree, SAmiToken token)
{
    const bool number = token.Kind() == EAmiToken::Integer || token.Kind() == EAmiToken::Real;
    return number ? ParseDouble(tree.Raw(token)) : std::nullopt;
}

} // namespace zov::ibischk
