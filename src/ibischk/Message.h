// SPDX-License-Identifier: Apache-2.0
/// A message text with its arguments put in.
#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// One argument of a message. Texts are views: they must live until the report returns.
class CArg
{
public:
    CArg(std::string_view text) // NOLINT: reports list plain values
        : m_text(text)
    {
    }
    CArg(const char* text) // NOLINT
        : m_text(text)
    {
    }
    CArg(const std::string& text) // NOLINT
        : m_text(text)
    {
    }
    CArg(char c) // NOLINT
        : m_kind(EKind::Integer)
        , m_integer(static_cast<unsigned char>(c))
    {
    }
    template <std::integral T>
    CArg(T value) // NOLINT
        : m_kind(EKind::Integer)
        , m_integer(static_cast<std::int64_t>(value))
    {
    }
    CArg(double value) // NOLINT
        : m_kind(EKind::Real)
        , m_real(value)
    {
    }

    /// Appends the argument as the conversion (s d u c x g) asks. An argument of another kind is
    /// shown by its own.
    void AppendTo(std::string& out, char conversion) const;

private:
    enum class EKind : std::uint8_t
    {
        Text,
        Integer,
        Real
    };
    EKind m_kind = EKind::Text;
    std::string_view m_text;
    std::int64_t m_integer = 0;
    double m_real = 0.0;
};

/// The text with each %s %d %u %c %x %g replaced by the next argument, %% by a per cent sign. A
/// conversion without argument stays as it is. When `shown` is given it gets each argument's text.
[[nodiscard]] std::string FormatMessage(std::string_view text, std::span<const CArg> args,
                                        std::vector<std::string>* shown = nullptr);

} // namespace zov::ibischk
