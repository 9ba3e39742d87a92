// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/RecordFields.h"
#include "ui/replay/RecordXml.h"
#include "ui/replay/XmlText.h"

#include <fmt/format.h>
#include <iterator>

namespace zov::ui::replay {
namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

class CXmlWriter
{
public:
    [[nodiscard]] std::string Take() { return std::move(m_out); }

    /// A line as it stands.
    void Line(std::string_view text)
    {
        m_out.append(m_depth, '\t');
        m_out += text;
        m_out += '\n';
    }
    void Open(std::string_view tag)
    {
        Line(tag);
        ++m_depth;
    }
    void Close(std::string_view name)
    {
        --m_depth;
        Line(fmt::format("</{}>", name));
    }
    void Text(std::string_view name, std::string_view text)
    {
        m_out.append(m_depth, '\t');
        fmt::format_to(std::back_inserter(m_out), "<{}>", name);
        AppendXmlText(m_out, text);
        fmt::format_to(std::back_inserter(m_out), "</{}>\n", name);
    }
    void Number(std::string_view name, std::int64_t number)
    {
        Text(name, fmt::format("{}", number));
    }
    /// A tag up to its title attribute: `<Col Title="..."` and what closes it.
    void Titled(std::string_view begin, std::string_view title, std::string_view end)
    {
        m_out.append(m_depth, '\t');
        m_out += begin;
        m_out += " Title=\"";
        AppendXmlText(m_out, title);
        m_out += '"';
        m_out += end;
        m_out += '\n';
    }
    void Indent() { ++m_depth; }

    template <typename TOwner>
    void Fields(const TOwner& owner, std::span<const SField<TOwner>> fields)
    {
        for (const SField<TOwner>& field : fields) {
            std::visit([&](auto member) { Value(field.element, owner.*member); }, field.member);
        }
    }

private:
    void Value(std::string_view name, std::int64_t number) { Number(name, number); }
    void Value(std::string_view name, std::uint64_t number)
    {
        Text(name, fmt::format("{}", number));
    }
    void Value(std::string_view name, const SPoint& point) { Text(name, FormatPoint(point)); }
    void Value(std::string_view name, const SPointF& point) { Text(name, FormatFixed(point)); }
    void Value(std::string_view name, const std::string& text) { Text(name, text); }

    std::string m_out{kDeclaration};
    std::size_t m_depth = 0;
};

void WriteEvent(CXmlWriter& xml, const SEventFields& event)
{
    xml.Open(fmt::format("<Event Type=\"{}\">", static_cast<int>(event.type)));
    for (const SInputAttribute& attribute : event.attributes) {
        xml.Open("<Attribute>");
        xml.Fields(attribute, AttributeFields());
        xml.Close("Attribute");
    }
    xml.Fields(event, FieldsOf(event.type));
    xml.Close("Event");
}

void WriteLocator(CXmlWriter& xml, const SLocator& target)
{
    xml.Open(fmt::format("<LocateWidget TopisMain=\"{}\">", target.topIsMain ? 1 : 0));
    xml.Open("<WidgetList>");
    for (const SWidgetLevel& widget : target.widgets) {
        xml.Open(widget.keyTitle ? "<Widget KeyTitle=\"1\">" : "<Widget>");
        xml.Text("ClassName", widget.className);
        xml.Text("ObjectName", widget.objectName);
        xml.Text("WindowTitle", widget.windowTitle);
        xml.Text("Pos", FormatPoint(widget.pos));
        xml.Close("Widget");
    }
    xml.Close("WidgetList");
    xml.Text("PtRefToTop", FormatPoint(target.ptRefToTop));
    xml.Text("ExtraIndex", target.extraIndex);
    xml.Close("LocateWidget");
}

void WriteItem(CXmlWriter& xml, const SInsideItemView& item)
{
    xml.Open("<InsideItemView>");
    xml.Open("<Header>");
    for (const std::string& column : item.columns) {
        xml.Titled("<Col", column, "/>");
    }
    xml.Close("Header");
    xml.Open("<Tree>");
    for (const STreeNode& node : item.path) {
        xml.Titled(fmt::format("<TreeNode Row=\"{}\"", node.row), node.title, ">");
        xml.Indent();
    }
    for (std::size_t i = 0; i < item.path.size(); ++i) {
        xml.Close("TreeNode");
    }
    xml.Close("Tree");
    xml.Close("InsideItemView");
}

void WriteEntry(CXmlWriter& xml, const SRecordedEvent& event)
{
    const std::string_view name = event.isCheckPoint ? "CheckPoint" : "EventInfo";
    xml.Open(fmt::format("<{}>", name));
    WriteEvent(xml, event.fields);
    xml.Number("Delay", event.delayMs);
    xml.Number("HasExtraInfo", event.hasExtraInfo ? 1 : 0);
    xml.Text("ExtraInfo", event.extraInfo);
    xml.Text("RealPos", FormatScientific(event.realPos));
    xml.Number("ASync", event.async ? 1 : 0);
    WriteLocator(xml, event.target);
    if (event.item) {
        WriteItem(xml, *event.item);
    }
    xml.Close(name);
}

} // namespace

std::string FormatRecord(const SRecord& record)
{
    CXmlWriter xml;
    xml.Open(fmt::format("<GUI_Record version = \"{}\">", record.version));
    xml.Open(fmt::format("<Header version = \"{}\">", record.headerVersion));
    xml.Fields(record.header, HeaderFields());
    xml.Close("Header");
    for (const SRecordedEvent& event : record.events) {
        WriteEntry(xml, event);
    }
    xml.Close("GUI_Record");
    return xml.Take();
}

std::string FormatLocator(const SLocatedWidget& located)
{
    CXmlWriter xml;
    xml.Open("<GUI_Locator>");
    WriteLocator(xml, located.target);
    if (located.item) {
        WriteItem(xml, *located.item);
    }
    xml.Close("GUI_Locator");
    return xml.Take();
}

} // namespace zov::ui::replay
