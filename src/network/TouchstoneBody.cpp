// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneBody.h"

#include "base/Text.h"
#include "network/NumberText.h"
#include "network/Polar.h"
#include "network/TextLines.h"

#include <algorithm>
#include <cmath>

namespace zov::network {

namespace {

constexpr bool IsSeparator(char c)
{
    constexpr std::uint64_t kMask =
        1ULL << ' ' | 1ULL << '\t' | 1ULL << '\r' | 1ULL << '\n' | 1ULL << ',';
    const auto code = static_cast<unsigned char>(c);
    return code < 64 && (kMask >> code & 1U) != 0;
}

/// To the next character that is neither separator nor part of a comment.
const char* SkipToToken(const char* p, const char* end, std::size_t& comments)
{
    for (;;) {
        while (p < end && IsSeparator(*p)) {
            ++p;
        }
        if (p >= end || (*p != '!' && *p != '#')) {
            return p;
        }
        ++comments;
        while (p < end && *p != '\n' && *p != '\r') {
            ++p;
        }
    }
}

/// What a number may be followed by.
bool EndsNumber(const char* p, const char* end)
{
    return p >= end || IsSeparator(*p) || *p == '!';
}

/// Values converted at a time while they are in the cache.
constexpr std::size_t kConvertBlock = 2048;
/// Least text of a number with what separates it.
constexpr std::size_t kLeastBytes = 2;

class CBodyScanner
{
public:
    CBodyScanner(std::string_view text, const SBodyLayout& layout)
        : m_layout(layout)
        , m_begin(text.data())
        , m_end(text.data() + text.size())
        , m_ports(layout.ports)
        , m_matrix(m_ports * m_ports)
        , m_pairs(layout.storage == EStorage::Full ? m_matrix : m_ports * (m_ports + 1) / 2)
    {
        if (m_pairs != m_matrix) {
            m_triangle.resize(2 * m_pairs);
        }
    }

    SBody Scan()
    {
        const char* p = m_begin;
        while (ScanPoint(p)) {
        }
        m_body.values.resize(m_body.hz.size() * m_matrix);
        ConvertUpTo(m_body.hz.size());
        return std::move(m_body);
    }

private:
    /// One frequency with its matrix; false when the data ended for whatever reason.
    bool ScanPoint(const char*& p)
    {
        p = SkipToToken(p, m_end, m_body.comments);
        if (p >= m_end) {
            return Stop(EBodyEnd::Text, p);
        }
        if (*p == '[') {
            return Stop(EBodyEnd::Keyword, p);
        }
        m_body.point = static_cast<std::size_t>(p - m_begin);
        double hz = 0.0;
        const char* next = ScanNumber(p, m_end, m_layout.frequencyPower, hz);
        if (next == nullptr || !EndsNumber(next, m_end)) {
            return Stop(EBodyEnd::BrokenNumber, p);
        }
        if (!(hz > m_lastHz)) {
            return Stop(IsNoise(p) ? EBodyEnd::Noise : EBodyEnd::BadFrequency, p);
        }
        Reserve(p);
        double* out = m_pairs == m_matrix ? Slot(m_body.hz.size()) : m_triangle.data();
        p = next;
        for (double* const last = out + 2 * m_pairs; out != last; ++out) {
            p = SkipToToken(p, m_end, m_body.comments);
            next = ScanNumber(p, m_end, 0, *out);
            if (next == nullptr || !EndsNumber(next, m_end)) {
                return Stop(EBodyEnd::BrokenPoint, p);
            }
            p = next;
        }
        Arrange();
        m_body.hz.push_back(hz);
        m_lastHz = hz;
        if ((m_body.hz.size() - m_converted) * m_matrix >= kConvertBlock) {
            ConvertUpTo(m_body.hz.size());
        }
        return true;
    }

    bool Stop(EBodyEnd end, const char* at)
    {
        m_body.end = end;
        m_body.stop = static_cast<std::size_t>(at - m_begin);
        return false;
    }

    [[nodiscard]] double* Slot(std::size_t point)
    {
        return reinterpret_cast<double*>(m_body.values.data() + point * m_matrix);
    }

    /// The pairs as they stood into their places of the matrix.
    void Arrange()
    {
        double* const matrix = Slot(m_body.hz.size());
        if (m_layout.columnFirst) {
            std::swap_ranges(matrix + 2, matrix + 4, matrix + 4);
        }
        if (m_pairs == m_matrix) {
            return;
        }
        const double* in = m_triangle.data();
        const auto put = [&](std::size_t row, std::size_t column) {
            for (const std::size_t at : {row * m_ports + column, column * m_ports + row}) {
                matrix[2 * at] = in[0];
                matrix[2 * at + 1] = in[1];
            }
            in += 2;
        };
        for (std::size_t row = 0; row < m_ports; ++row) {
            const bool lower = m_layout.storage == EStorage::Lower;
            const std::size_t stop = lower ? row + 1 : m_ports;
            for (std::size_t column = lower ? 0 : row; column < stop; ++column) {
                put(row, column);
            }
        }
    }

    void ConvertUpTo(std::size_t points)
    {
        ToRectangular(m_layout.format, Slot(m_converted), (points - m_converted) * m_matrix);
        m_converted = points;
    }

    /// Room for one more point, and for all that can be expected when the memory must grow anyway.
    /// @param p  where the point begins
    void Reserve(const char* p)
    {
        const std::size_t have = m_body.hz.size();
        if (have < m_capacity) {
            return;
        }
        const auto rest = static_cast<std::size_t>(m_end - p);
        const std::size_t most = rest / ((2 * m_pairs + 1) * kLeastBytes - 1) + 1;
        std::size_t more = std::max<std::size_t>(1, 32768 / m_matrix);
        if (m_layout.frequencies > have) {
            more = m_layout.frequencies - have;
        } else if (have != 0) {
            const auto perPoint = static_cast<double>(p - m_begin) / static_cast<double>(have);
            more = static_cast<std::size_t>(static_cast<double>(rest) / perPoint * 1.02) + 16;
        }
        m_capacity = have + std::min(more, most);
        m_body.hz.reserve(m_capacity);
        m_body.values.resize(m_capacity * m_matrix);
    }

    /// Noise data: lines of five numbers up to the end, the first of them at p.
    [[nodiscard]] bool IsNoise(const char* p) const
    {
        if (!m_layout.noiseMayFollow || m_body.hz.empty()) {
            return false;
        }
        const char* back = p;
        while (back > m_begin && (back[-1] == ' ' || back[-1] == '\t')) {
            --back;
        }
        const bool beginsLine = back == m_begin || back[-1] == '\n' || back[-1] == '\r';
        CTextLines lines({p, static_cast<std::size_t>(m_end - p)});
        while (const auto line = lines.Next()) {
            const SLineShape shape = ShapeOf(*line);
            if (!shape.clean || (shape.numbers != 0 && shape.numbers != 5)) {
                return false;
            }
        }
        return beginsLine;
    }

    const SBodyLayout& m_layout;
    const char* m_begin;
    const char* m_end;
    std::size_t m_ports;
    std::size_t m_matrix; ///< elements of a full one
    std::size_t m_pairs;  ///< elements of one in the file
    std::size_t m_capacity = 0;
    std::size_t m_converted = 0; ///< points whose values are real and imaginary parts
    double m_lastHz = -std::numeric_limits<double>::denorm_min(); // 0 is above it
    std::vector<double> m_triangle;
    SBody m_body;
};

} // namespace

SBody ScanBody(std::string_view text, const SBodyLayout& layout)
{
    return CBodyScanner(text, layout).Scan();
}

SLineShape ShapeOf(std::string_view line)
{
    SLineShape shape;
    const char* p = line.data();
    const char* const end = p + line.size();
    std::size_t comments = 0;
    for (p = SkipToToken(p, end, comments); p < end; p = SkipToToken(p, end, comments)) {
        double value = 0.0;
        p = ScanNumber(p, end, 0, value);
        if (p == nullptr || !EndsNumber(p, end)) {
            shape.clean = false;
            return shape;
        }
        shape.first = shape.numbers == 0 ? value : shape.first;
        ++shape.numbers;
    }
    return shape;
}

std::uint32_t GuessPorts(std::string_view text)
{
    constexpr int kPoints = 8; // enough to see that frequencies rise
    CTextLines lines(text);
    std::size_t size = 0;    // numbers of each point so far
    std::size_t current = 0; // of the one being read
    double last = 0.0;
    int points = 0;
    while (points < kPoints) {
        auto line = lines.Next();
        if (line && Trim(*line).starts_with('[')) {
            line.reset(); // keywords end the data
        }
        const SLineShape shape = line ? ShapeOf(*line) : SLineShape{};
        const bool begins = shape.numbers % 2 != 0;
        if (!shape.clean || (current == 0 && shape.numbers != 0 && !begins)) {
            return 0;
        }
        if (current != 0 && (begins || !line)) {
            if (size != 0 && current != size) {
                return 0;
            }
            size = current;
            current = 0;
        }
        if (!line) {
            break;
        }
        if (begins && points++ != 0 && shape.first <= last) {
            return 0;
        }
        last = begins ? shape.first : last;
        current += shape.numbers;
    }
    const auto ports = static_cast<std::uint32_t>(std::lround(std::sqrt(size / 2)));
    return size % 2 != 0 && 2 * std::size_t{ports} * ports + 1 == size ? ports : 0;
}

} // namespace zov::network
