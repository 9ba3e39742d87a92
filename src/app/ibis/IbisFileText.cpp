// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisFileText.h"

#include "base/Text.h"

#include <algorithm>
#include <cstring>

namespace zov::app {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// What a text document takes for the end of a block.
bool BreaksBlock(QChar c)
{
    constexpr ushort kBreaks[] = {'\r', 0x2028, 0x2029, 0xFDD0, 0xFDD1};
    return std::find(std::begin(kBreaks), std::end(kBreaks), c.unicode()) != std::end(kBreaks);
}

bool IsLatin1(const QString& text)
{
    constexpr ushort kLast = 0xFF;
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= kLast; });
}

/// Where the line after so many line ends begins.
std::size_t BehindLines(std::string_view text, int lines)
{
    std::size_t at = 0;
    for (; lines > 0; --lines) {
        at = text.find('\n', at) + 1;
    }
    return at;
}

/// Characters of both texts from the front, as whole lines.
int CommonFront(const QString& a, const QString& b)
{
    const auto [end, ignored] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto same = static_cast<int>(end - a.begin());
    return same == 0 ? 0 : a.lastIndexOf(QLatin1Char('\n'), same - 1) + 1;
}

/// The same from the back, within the last `most` characters.
int CommonBack(const QString& a, const QString& b, int most)
{
    int same = 0;
    while (same < most && a.at(a.size() - 1 - same) == b.at(b.size() - 1 - same)) {
        ++same;
    }
    const auto beginsLine = [&](const QString& text) {
        return same == text.size() || text.at(text.size() - 1 - same) == QLatin1Char('\n');
    };
    while (same > 0 && (!beginsLine(a) || !beginsLine(b))) {
        --same;
    }
    return same;
}

} // namespace

CIbisFileText::CIbisFileText(std::string bytes)
    : m_bytes(std::move(bytes))
    , m_utf8(IsValidUtf8(m_bytes))
{
    const auto lines = std::count(m_bytes.begin(), m_bytes.end(), '\n');
    std::ptrdiff_t crLf = 0;
    for (std::size_t at = 0; (at = m_bytes.find("\r\n", at)) != std::string::npos; at += 2) {
        ++crLf;
    }
    m_crLf = crLf > 0 && crLf * 2 >= lines;
}

std::string_view CIbisFileText::Body() const
{
    std::string_view body = m_bytes;
    if (body.starts_with(kByteOrderMark)) {
        body.remove_prefix(kByteOrderMark.size());
    }
    return body;
}

QString CIbisFileText::Shown() const
{
    const std::string_view body = Body();
    const auto size = static_cast<int>(body.size());
    QString text =
        m_utf8 ? QString::fromUtf8(body.data(), size) : QString::fromLatin1(body.data(), size);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    std::replace_if(text.begin(), text.end(), BreaksBlock, QLatin1Char(' '));
    return text;
}

std::string CIbisFileText::Encoded(const QString& lines, bool latin1) const
{
    QString text = lines;
    if (m_crLf) {
        text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    }
    return (latin1 ? text.toLatin1() : text.toUtf8()).toStdString();
}

std::string CIbisFileText::BytesOf(const QString& edited) const
{
    const QString shown = Shown();
    if (edited == shown) {
        return m_bytes;
    }
    if (!m_utf8 && !IsLatin1(edited)) {
        return Encoded(edited, false);
    }
    const int front = CommonFront(shown, edited);
    const int back = CommonBack(shown, edited, std::min(shown.size(), edited.size()) - front);
    const std::string_view body = Body();
    const auto linesIn = [&](int from, int count) {
        return static_cast<int>(
            std::count(shown.begin() + from, shown.begin() + from + count, QLatin1Char('\n')));
    };
    const std::size_t frontEnd = BehindLines(body, linesIn(0, front));
    const std::size_t backBegin =
        back == 0 ? body.size() : BehindLines(body, linesIn(0, shown.size() - back));
    std::string bytes(m_bytes, 0, m_bytes.size() - body.size());
    bytes += body.substr(0, frontEnd);
    bytes += Encoded(edited.mid(front, edited.size() - front - back), !m_utf8);
    bytes += body.substr(backBegin);
    return bytes;
}

std::size_t CIbisFileText::LongestLine(std::string_view bytes)
{
    std::size_t longest = 0;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        longest = std::max(longest, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return longest;
}

} // namespace zov::app
