// SPDX-License-Identifier: Apache-2.0
/// Little-endian fields out of bytes that are not trusted: a read beyond the end gives zero or an
/// empty text and sets Failed(), so that a caller may test once after several reads.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace zov {

class CByteReader
{
public:
    explicit CByteReader(std::string_view bytes)
        : m_begin(bytes.data())
        , m_at(bytes.data())
        , m_end(bytes.data() + bytes.size())
    {
    }

    [[nodiscard]] bool Failed() const { return m_failed; }
    void SetFailed() { m_failed = true; }
    [[nodiscard]] std::size_t Offset() const { return static_cast<std::size_t>(m_at - m_begin); }
    [[nodiscard]] std::size_t Left() const { return static_cast<std::size_t>(m_end - m_at); }

    std::uint8_t UInt8() { return Number<std::uint8_t>(); }
    std::uint16_t UInt16() { return Number<std::uint16_t>(); }
    std::uint32_t UInt32() { return Number<std::uint32_t>(); }
    std::uint64_t UInt64() { return Number<std::uint64_t>(); }
    std::int32_t Int32() { return static_cast<std::int32_t>(Number<std::uint32_t>()); }
    double Double() { return std::bit_cast<double>(Number<std::uint64_t>()); }
    /// Four bytes of length, then so many bytes.
    std::string_view Text()
    {
        const std::size_t length = UInt32();
        if (length > Left()) {
            m_failed = true;
            return {};
        }
        const std::string_view text(m_at, length);
        m_at += length;
        return text;
    }
    void Skip(std::size_t bytes)
    {
        if (bytes > Left()) {
            m_failed = true;
            bytes = Left();
        }
        m_at += bytes;
    }

private:
    template <class T>
    T Number()
    {
        if (Left() < sizeof(T)) {
            m_failed = true;
            return 0;
        }
        T value = 0;
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(&value, m_at, sizeof(T));
        } else {
            for (std::size_t i = 0; i < sizeof(T); ++i) {
                value = static_cast<T>(value | T{static_cast<unsigned char>(m_at[i])} << (8 * i));
            }
        }
        m_at += sizeof(T);
        return value;
    }

    const char* m_begin;
    const char* m_at;
    const char* m_end;
    bool m_failed = false;
};

/// The same fields appended to a string.
template <class T>
void AppendLittleEndian(std::string& out, T value)
{
    static_assert(std::is_unsigned_v<T>);
    char bytes[sizeof(T)]; // NOLINT: written before it is read
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(bytes, &value, sizeof(T));
    } else {
        for (std::size_t i = 0; i < sizeof(T); ++i) {
            bytes[i] = static_cast<char>(value >> (8 * i));
        }
    }
    out.append(bytes, sizeof(T));
}
inline void AppendSizedText(std::string& out, std::string_view text)
{
    AppendLittleEndian(out, static_cast<std::uint32_t>(text.size()));
    out += text;
}

} // namespace zov
