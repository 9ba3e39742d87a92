// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Message.h"

#include "base/Number.h"

#include <array>
#include <charconv>

namespace zov::ibischk {

namespace {

void AppendInteger(std::string& out, std::int64_t value, int base)
{
    std::array<char, 24> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, base).ptr;
    out.append(buffer.data(), end);
}

} // namespace

void CArg::AppendTo(std::string& out, char conversion) const
{
    switch (m_kind) {
    case EKind::Text:
        out += m_text;
        break;
    case EKind::Integer:
        if (conversion == 'c') {
            out += static_cast<char>(m_integer);
        } else {
            AppendInteger(out, m_integer, conversion == 'x' ? 16 : 10);
        }
        break;
    case EKind::Real:
        AppendG(out, m_real);
        break;
    }
}

std::string FormatMessage(std::string_view text, std::span<const CArg> args,
                          std::vector<std::string>* shown)
{
    std::string out;
    out.reserve(text.size() + 32 * args.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char conversion = text[++i];
        if (conversion == '%') {
            out += '%';
        } else if (next == args.size()) {
            out += '%';
            out += conversion;
        } else {
            const std::size_t start = out.size();
            args[next++].AppendTo(out, conversion);
            if (shown != nullptr) {
                shown->push_back(out.substr(start));
            }
        }
    }
    return out;
}

} // namespace zov::ibischk
