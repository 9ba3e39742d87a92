// SPDX-License-Identifier: Apache-2.0
#include "assign/DesignFile.h"
#include "base/Text.h"

#include <algorithm>

namespace zov {

namespace {

constexpr std::size_t kDepthLimit = 64;

/// The tokens of an S-expression: parentheses, words, quoted texts with backslash escapes.
class CExpressionScanner
{
public:
    enum class EToken
    {
        Open,
        Close,
        Text,
        End,
        Unfinished ///< a quoted text without its end
    };

    explicit CExpressionScanner(std::string_view text)
        : m_text(text)
    {
    }
    EToken Next()
    {
        while (m_at < m_text.size() && IsSpace(m_text[m_at])) {
            m_line += m_text[m_at++] == '\n' ? 1U : 0U;
        }
        if (m_at >= m_text.size()) {
            return EToken::End;
        }
        switch (m_text[m_at]) {
        case '(':
            ++m_at;
            return EToken::Open;
        case ')':
            ++m_at;
            return EToken::Close;
        case '"':
            return Quoted();
        default:
            return Word();
        }
    }
    [[nodiscard]] const std::string& Text() const { return m_token; }
    [[nodiscard]] std::size_t Line() const { return m_line; }

private:
    EToken Quoted()
    {
        m_token.clear();
        for (++m_at; m_at < m_text.size() && m_text[m_at] != '"'; ++m_at) {
            m_at += m_text[m_at] == '\\' && m_at + 1 < m_text.size() ? 1U : 0U;
            m_line += m_text[m_at] == '\n' ? 1U : 0U;
            m_token += m_text[m_at];
        }
        if (m_at >= m_text.size()) {
            return EToken::Unfinished;
        }
        ++m_at;
        return EToken::Text;
    }
    EToken Word()
    {
        const std::size_t end = std::min(m_text.find_first_of("() \t\r\n\"", m_at), m_text.size());
        m_token = m_text.substr(m_at, end - m_at);
        m_at = end;
        return EToken::Text;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_line = 1;
    std::string m_token;
};

/// What the lists inside `(comp ...)` say of a part.
struct SPart
{
    std::string ref;
    std::string value;
    std::string symbol; ///< "Device:C"
    std::string number; ///< of the field that names a part best
    std::size_t rank = SIZE_MAX;
    std::string model;
    std::string fieldName; ///< of the field that is open
    bool excluded = false; ///< marked as not on the board
};

/// A part number field; its value alone would also be one, but it is the symbol's own.
void TakeField(SPart& part, const std::string& name, const std::string& text)
{
    const std::string key = TitleKeyOf(name);
    if (text.empty() || text == "~" || key == "value") {
        return;
    }
    if (IsOriginalModelTitle(key)) {
        part.model = text;
    } else if (const auto rank = ComponentTitleRank(key); rank && *rank < part.rank) {
        part.rank = *rank;
        part.number = text;
    }
}

ERecordType TypeOfSymbol(std::string_view symbol)
{
    if (!symbol.starts_with("Device:")) {
        return ERecordType::Any;
    }
    symbol.remove_prefix(7);
    symbol = symbol.substr(0, symbol.find('_'));
    switch (symbol.size() == 1 ? symbol[0] : ' ') {
    case 'C':
        return ERecordType::Capacitor;
    case 'L':
        return ERecordType::Inductor;
    case 'R':
        return ERecordType::Resistor;
    default:
        return ERecordType::Any;
    }
}

SDesignComponent ComponentOf(SPart part)
{
    SDesignComponent component;
    component.name = std::string(Trim(part.number.empty() ? part.value : part.number));
    component.originalModel = std::move(part.model);
    component.value = std::move(part.value);
    component.requiredType = TypeOfSymbol(part.symbol);
    if (!part.ref.empty()) {
        component.refdes.push_back(std::move(part.ref));
    }
    return component;
}

/// Goes through the lists of the netlist, which it knows by the names of those that are open.
class CNetlistReader
{
public:
    CNetlistReader(std::string_view text, std::string shown)
        : m_scanner(text)
        , m_shown(std::move(shown))
    {
    }

    CResult<SDesignFile> Read()
    {
        using EToken = CExpressionScanner::EToken;
        for (EToken token = m_scanner.Next(); token != EToken::End; token = m_scanner.Next()) {
            switch (token) {
            case EToken::Open:
                if (m_open.size() == kDepthLimit) {
                    return Wrong("lists are nested too deeply");
                }
                m_open.emplace_back();
                m_texts.push_back(0);
                break;
            case EToken::Close:
                if (m_open.empty()) {
                    return Wrong("a ')' without its '('");
                }
                CloseList();
                break;
            case EToken::Text:
                if (m_open.empty()) {
                    return Wrong("expected '(export'");
                }
                TakeText();
                break;
            default:
                return Wrong("a quoted text has no end");
            }
        }
        if (!m_open.empty()) {
            return Wrong("it ends inside a list");
        }
        if (!m_isNetlist) {
            return Wrong("it is no KiCad netlist, expected '(export'");
        }
        return SDesignFile{m_builder.Take(), "KiCad netlist", {}};
    }

private:
    SError Wrong(std::string what) const
    {
        return FailAt(EErr::Format, {m_shown, m_scanner.Line(), 0}, std::move(what));
    }
    /// Whether the open lists are export, components, comp and then these.
    bool In(std::initializer_list<std::string_view> inner) const
    {
        constexpr std::array<std::string_view, 3> kOuter = {"export", "components", "comp"};
        return m_open.size() == kOuter.size() + inner.size() &&
               std::equal(kOuter.begin(), kOuter.end(), m_open.begin()) &&
               std::equal(inner.begin(), inner.end(), m_open.begin() + kOuter.size());
    }
    void TakeText()
    {
        const std::string& text = m_scanner.Text();
        if (m_texts.back()++ == 0 && m_open.back().empty()) {
            m_open.back() = text;
            m_isNetlist = m_isNetlist || (m_open.size() == 1 && text == "export");
            if (In({})) {
                m_part = {};
            }
            if (In({"property"}) || In({"fields", "field"})) {
                m_part.fieldName.clear();
            }
            return;
        }
        if (In({"ref"})) {
            m_part.ref = text;
        } else if (In({"value"})) {
            m_part.value = text;
        } else if (In({"libsource", "lib"})) {
            m_part.symbol = text + ':' + m_part.symbol;
        } else if (In({"libsource", "part"})) {
            m_part.symbol += text;
        } else if (In({"fields", "field", "name"}) || In({"property", "name"})) {
            m_part.fieldName = text;
            m_part.excluded = m_part.excluded || text == "exclude_from_board";
        } else if (In({"fields", "field"}) || In({"property", "value"})) {
            TakeField(m_part, m_part.fieldName, text);
        }
    }
    void CloseList()
    {
        if (In({}) && !m_part.excluded) {
            SDesignComponent component = ComponentOf(std::move(m_part));
            if (!component.name.empty()) {
                m_builder.Add(std::move(component));
            }
        }
        m_open.pop_back();
        m_texts.pop_back();
    }

    CExpressionScanner m_scanner;
    std::string m_shown;
    std::vector<std::string> m_open; ///< names of the open lists
    std::vector<std::size_t> m_texts;
    SPart m_part;
    CDesignBuilder m_builder;
    bool m_isNetlist = false;
};

} // namespace

CResult<SDesignFile> ReadKicadNetlist(std::string_view text, const std::string& shown)
{
    return CNetlistReader(text, shown).Read();
}

} // namespace zov
