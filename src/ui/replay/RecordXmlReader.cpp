// SPDX-License-Identifier: Apache-2.0
#include "base/Number.h"
#include "base/Text.h"
#include "ui/replay/RecordFields.h"
#include "ui/replay/RecordXml.h"
#include "ui/replay/XmlText.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <pugixml.hpp>
#include <system_error>

namespace zov::ui::replay {
namespace {

/// References are decoded here, since line breaks have a form of their own; a text of one blank is
/// a text (the space key). Entities of a document type are not known and stay as they are.
constexpr unsigned kParseFlags =
    pugi::parse_cdata | pugi::parse_ws_pcdata_single | pugi::parse_eol | pugi::parse_embed_pcdata;

class CRecordReader
{
public:
    CRecordReader(std::string_view text, std::string file)
        : m_text(text)
        , m_file(std::move(file))
    {
    }

    CResult<pugi::xml_node> Root(const char* name)
    {
        if (m_text.size() > kMaxRecordBytes) {
            return Fail(EErr::Limit,
                        fmt::format("{}: the file has {} bytes, more than the {} that a record "
                                    "may have",
                                    m_file, m_text.size(), kMaxRecordBytes));
        }
        RETURN_IF_ERROR(CheckBytes());
        const pugi::xml_parse_result parsed =
            m_document.load_buffer(m_text.data(), m_text.size(), kParseFlags, pugi::encoding_utf8);
        if (!parsed) {
            return At(parsed.offset, fmt::format("the XML is broken: {}", parsed.description()));
        }
        const pugi::xml_node root = m_document.document_element();
        if (root.name() != std::string_view(name)) {
            return At(root,
                      fmt::format("the root element is '{}', expected '{}'", root.name(), name));
        }
        return root;
    }

    CResult<SRecord> Record()
    {
        ASSIGN_OR_RETURN(const pugi::xml_node root, Root("GUI_Record"));
        SRecord record;
        RETURN_IF_ERROR(Version(root, kRecordVersion, record.version));
        const pugi::xml_node header = root.child("Header");
        if (header) {
            RETURN_IF_ERROR(Version(header, kHeaderVersion, record.headerVersion));
            RETURN_IF_ERROR(Fields(header, record.header, HeaderFields()));
        } else {
            record.headerVersion = 0;
        }
        for (const pugi::xml_node node : root.children()) {
            const std::string_view name = node.name();
            if (name != "EventInfo" && name != "CheckPoint") {
                continue;
            }
            if (record.events.size() == kMaxEvents) {
                return At(node, fmt::format("more than {} events", kMaxEvents), EErr::Limit);
            }
            record.events.emplace_back();
            record.events.back().isCheckPoint = name == "CheckPoint";
            RETURN_IF_ERROR(Entry(node, record.events.back()));
        }
        return record;
    }

    CResult<SLocatedWidget> Located()
    {
        ASSIGN_OR_RETURN(const pugi::xml_node root, Root("GUI_Locator"));
        SLocatedWidget located;
        RETURN_IF_ERROR(Locator(root, located.target));
        RETURN_IF_ERROR(Item(root, located.item));
        return located;
    }

private:
    /// Before anything is made of them: the tree of a file of nothing but tags is many times as
    /// large as the file.
    CResult<void> CheckBytes() const
    {
        if (!IsValidUtf8(m_text)) {
            std::size_t start = 0;
            std::size_t end = m_text.find('\n');
            while (IsValidUtf8(m_text.substr(start, end - start))) {
                start = end + 1;
                end = m_text.find('\n', start);
            }
            return At(static_cast<std::ptrdiff_t>(start), "the text is not UTF-8");
        }
        if (std::count(m_text.begin(), m_text.end(), '<') > kMaxTags) {
            return Fail(EErr::Limit, fmt::format("{}: more than {} tags", m_file, kMaxTags));
        }
        return {};
    }

    SError At(std::ptrdiff_t offset, const std::string& what, EErr code = EErr::Format) const
    {
        const auto end =
            std::clamp<std::ptrdiff_t>(offset, 0, static_cast<std::ptrdiff_t>(m_text.size()));
        const auto line = 1 + std::count(m_text.begin(), m_text.begin() + end, '\n');
        return FailAt(code, {m_file, static_cast<std::size_t>(line), 0}, what);
    }
    SError At(pugi::xml_node node, const std::string& what, EErr code = EErr::Format) const
    {
        return At(node.offset_debug(), what, code);
    }
    SError Bad(pugi::xml_node node, std::string_view text, const char* expected) const
    {
        return At(node, fmt::format("{} is '{}', expected {}", node.name(), text.substr(0, 60),
                                    expected));
    }

    static std::string Text(pugi::xml_node node) { return DecodeXmlText(node.child_value()); }

    CResult<void> Version(pugi::xml_node node, int newest, int& version) const
    {
        const std::string_view text = node.attribute("version").value();
        const auto number = ParseInt(text);
        if (!number || *number < 0) {
            return At(node, fmt::format("the version of {} is '{}', expected a number", node.name(),
                                        text.substr(0, 60)));
        }
        if (*number > newest) {
            return At(node,
                      fmt::format("{} is of version {}; this program reads versions up to {}",
                                  node.name(), *number, newest),
                      EErr::Unsupported);
        }
        version = static_cast<int>(*number);
        return {};
    }

    CResult<void> Value(pugi::xml_node node, std::int64_t& number) const
    {
        const std::string text = Text(node);
        const auto value = ParseInt(text);
        if (!value) {
            return Bad(node, text, "a whole number");
        }
        number = *value;
        return {};
    }
    CResult<void> Value(pugi::xml_node node, std::uint64_t& number) const
    {
        const std::string text = Text(node);
        const std::string_view trimmed = Trim(text);
        const auto [end, failure] =
            std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), number);
        if (failure != std::errc() || end != trimmed.data() + trimmed.size()) {
            return Bad(node, text, "a whole number, not negative");
        }
        return {};
    }
    CResult<void> Value(pugi::xml_node node, SPoint& point) const
    {
        const std::string text = Text(node);
        const auto value = ParsePoint(text);
        if (!value) {
            return Bad(node, text, "two whole numbers with a comma between them");
        }
        point = *value;
        return {};
    }
    CResult<void> Value(pugi::xml_node node, SPointF& point) const
    {
        const std::string text = Text(node);
        const auto value = ParsePointF(text);
        if (!value) {
            return Bad(node, text, "two numbers with a comma between them");
        }
        point = *value;
        return {};
    }
    CResult<void> Value(pugi::xml_node node, std::string& text) const
    {
        text = Text(node);
        return {};
    }
    CResult<void> Value(pugi::xml_node node, bool& flag) const
    {
        std::int64_t number = 0;
        RETURN_IF_ERROR(Value(node, number));
        flag = number != 0;
        return {};
    }

    /// The child of that name, when there is one.
    template <typename TValue>
    CResult<void> Child(pugi::xml_node parent, const char* name, TValue& value) const
    {
        const pugi::xml_node node = parent.child(name);
        return node ? Value(node, value) : CResult<void>();
    }

    template <typename TOwner>
    CResult<void> Fields(pugi::xml_node parent, TOwner& owner,
                         std::span<const SField<TOwner>> fields) const
    {
        for (const SField<TOwner>& field : fields) {
            RETURN_IF_ERROR(
                std::visit([&](auto member) { return Child(parent, field.element, owner.*member); },
                           field.member));
        }
        return {};
    }

    CResult<void> Event(pugi::xml_node node, SEventFields& event) const
    {
        const std::string_view text = node.attribute("Type").value();
        const auto type = ParseInt(text);
        if (!type || *type < 0 || *type > 0xFFFF ||
            EventName(static_cast<EEvent>(*type)) == nullptr) {
            return At(node, fmt::format("the event type '{}' is none that is recorded",
                                        text.substr(0, 60)));
        }
        event.type = static_cast<EEvent>(*type);
        if (event.type == EEvent::InputMethod) {
            for (const pugi::xml_node child : node.children("Attribute")) {
                if (event.attributes.size() == kMaxAttributes) {
                    return At(child, fmt::format("more than {} attributes", kMaxAttributes),
                              EErr::Limit);
                }
                event.attributes.emplace_back();
                RETURN_IF_ERROR(Fields(child, event.attributes.back(), AttributeFields()));
            }
        }
        return Fields(node, event, FieldsOf(event.type));
    }

    CResult<void> Locator(pugi::xml_node parent, SLocator& target) const
    {
        const pugi::xml_node node = parent.child("LocateWidget");
        if (!node) {
            return At(parent, fmt::format("{} has no LocateWidget", parent.name()));
        }
        target.topIsMain = node.attribute("TopisMain").value() == std::string_view("1");
        for (const pugi::xml_node child : node.child("WidgetList").children("Widget")) {
            if (target.widgets.size() == kMaxLevels) {
                return At(child, fmt::format("more than {} widgets in a chain", kMaxLevels),
                          EErr::Limit);
            }
            SWidgetLevel& widget = target.widgets.emplace_back();
            widget.keyTitle = child.attribute("KeyTitle").value() == std::string_view("1");
            RETURN_IF_ERROR(Child(child, "ClassName", widget.className));
            RETURN_IF_ERROR(Child(child, "ObjectName", widget.objectName));
            RETURN_IF_ERROR(Child(child, "WindowTitle", widget.windowTitle));
            RETURN_IF_ERROR(Child(child, "Pos", widget.pos));
        }
        if (target.widgets.empty()) {
            return At(node, "LocateWidget names no widget");
        }
        RETURN_IF_ERROR(Child(node, "PtRefToTop", target.ptRefToTop));
        return Child(node, "ExtraIndex", target.extraIndex);
    }

    CResult<void> Item(pugi::xml_node parent, std::optional<SInsideItemView>& item) const
    {
        const pugi::xml_node node = parent.child("InsideItemView");
        if (!node) {
            return {};
        }
        item.emplace();
        for (const pugi::xml_node column : node.child("Header").children("Col")) {
            if (item->columns.size() == kMaxColumns) {
                return At(column, fmt::format("more than {} columns", kMaxColumns), EErr::Limit);
            }
            item->columns.push_back(DecodeXmlText(column.attribute("Title").value()));
        }
        for (pugi::xml_node row = node.child("Tree").child("TreeNode"); row;
             row = row.child("TreeNode")) {
            if (item->path.size() == kMaxLevels) {
                return At(row, fmt::format("items nested deeper than {}", kMaxLevels), EErr::Limit);
            }
            const auto number = ParseInt(row.attribute("Row").value());
            if (!number || *number < 0 || *number > 0x7FFFFFFF) {
                return At(row, fmt::format("Row is '{}', expected a whole number, not negative",
                                           row.attribute("Row").value()));
            }
            item->path.push_back(
                {static_cast<int>(*number), DecodeXmlText(row.attribute("Title").value())});
        }
        return {};
    }

    CResult<void> Entry(pugi::xml_node node, SRecordedEvent& event) const
    {
        const pugi::xml_node fields = node.child("Event");
        if (!fields) {
            return At(node, fmt::format("{} has no Event", node.name()));
        }
        RETURN_IF_ERROR(Event(fields, event.fields));
        RETURN_IF_ERROR(Child(node, "Delay", event.delayMs));
        RETURN_IF_ERROR(Child(node, "HasExtraInfo", event.hasExtraInfo));
        RETURN_IF_ERROR(Child(node, "ExtraInfo", event.extraInfo));
        RETURN_IF_ERROR(Child(node, "RealPos", event.realPos));
        RETURN_IF_ERROR(Child(node, "ASync", event.async));
        RETURN_IF_ERROR(Locator(node, event.target));
        return Item(node, event.item);
    }

    std::string_view m_text;
    std::string m_file;
    pugi::xml_document m_document;
};

} // namespace

CResult<SRecord> ParseRecord(std::string_view text, const std::string& file)
{
    return CRecordReader(text, file).Record();
}

CResult<SLocatedWidget> ParseLocator(std::string_view text, const std::string& file)
{
    return CRecordReader(text, file).Located();
}

} // namespace zov::ui::replay
