// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneText.h"

#include "base/Number.h"
#include "base/Text.h"
#include "network/MixedModeOrder.h"
#include "network/NumberText.h"
#include "network/TextLines.h"

#include <cstring>

namespace zov::network {

namespace {

constexpr int kReferenceDigits = 8;
constexpr std::size_t kNumberRoom = 33; ///< a tab and the longest number
constexpr std::size_t kPairsPerLine = 4;

void AppendReferences(std::string& out, const std::vector<SPort>& ports)
{
    for (const SPort& port : ports) {
        out += &port == ports.data() ? "" : " ";
        AppendG(out, port.referenceOhm, kReferenceDigits);
    }
    out += '\n';
}

char* PutText(char* out, std::string_view text)
{
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

char* PutPair(char* out, TComplex value)
{
    *out++ = '\t';
    out = WriteG15(out, value.real());
    *out++ = '\t';
    return WriteG15(out, value.imag());
}

} // namespace

void AppendUserComments(std::string& out, std::string_view text)
{
    constexpr std::string_view kPrefix = "!\t\t\t";
    constexpr std::size_t kLineLength = 80;
    if (text.find_first_not_of(" \t\r\n") == text.npos) {
        return;
    }
    out += "!\n!User Comments:\n";
    CTextLines lines(text);
    while (const auto line = lines.Next()) {
        std::size_t length = 0;
        for (std::size_t pos = 0; pos < line->size();) {
            if (length == 0) {
                out += kPrefix;
                length = kPrefix.size();
            }
            const std::size_t begin = pos;
            static_cast<void>(DecodeUtf8(*line, pos)); // bytes of one character stay together
            out += line->substr(begin, pos - begin);
            if (++length == kLineLength) {
                out += '\n';
                length = 0;
            }
        }
        out += length != 0 ? "\n" : "";
    }
}

void AppendComments(std::string& out, std::string_view text)
{
    CTextLines lines(text);
    while (const auto line = lines.Next()) {
        out += '!';
        out += *line;
        out += '\n';
    }
}

void AppendHeadLines(std::string& out, const SHeadLines& head)
{
    const std::vector<SPort>& ports = *head.ports;
    const bool equal = EqualReferences(ports) == ports.size();
    out += head.version2 ? "!\n[Version] 2.0\n" : "!\n";
    out += "#\t";
    out += PrefixOf(head.unit);
    out += "Hz\t";
    out += LetterOf(head.parameter);
    out += '\t';
    out += WordOf(head.format);
    out += "\tR\t";
    if (head.version2 || equal) {
        AppendG(out, ports.front().referenceOhm, kReferenceDigits);
        out += '\n';
    } else {
        AppendReferences(out, ports);
    }
    if (!head.version2) {
        return;
    }
    out += "[Number of Ports] " + std::to_string(ports.size()) + '\n';
    out += ports.size() == 2 ? "[Two-Port Data Order] 21_12\n" : "";
    out += "[Number of Frequencies] " + std::to_string(head.frequencies) + '\n';
    if (!equal) {
        out += "[Reference]\n";
        AppendReferences(out, ports);
    }
    if (head.storage != EStorage::Full) {
        out += "[Matrix Format] ";
        out += WordOf(head.storage);
        out += '\n';
    }
    if (HasMixedMode(ports)) {
        out += "[Mixed-Mode Order]\n";
        for (const SPort& port : ports) {
            out += &port == ports.data() ? "" : " ";
            out += PortDescriptor(port);
        }
        out += '\n';
    }
    out += "[Network Data]\n";
}

CMatrixText::CMatrixText(std::uint32_t ports, EStorage storage)
    : m_ports(ports)
    , m_storage(storage)
    , m_text(kNumberRoom * (2 * m_ports * m_ports + 1) +
             4 * m_ports * (m_ports / kPairsPerLine + 2))
{
}

char* CMatrixText::PutRow(char* out, std::span<const TComplex> row) const
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i != 0 && i % kPairsPerLine == 0) {
            out = PutText(out, "\n\t\t\t");
        }
        out = PutPair(out, row[i]);
    }
    *out++ = '\n';
    return out;
}

std::string_view CMatrixText::Lines(double frequency, std::span<const TComplex> values)
{
    char* out = WriteG15(m_text.data(), frequency);
    if (m_ports == 2) {
        for (const std::size_t at : {0U, 2U, 1U, 3U}) {
            out = PutPair(out, values[at]);
        }
        *out++ = '\n';
        return {m_text.data(), static_cast<std::size_t>(out - m_text.data())};
    }
    for (std::size_t row = 0; row < m_ports; ++row) {
        if (row != 0) {
            out = PutText(out, "\t\t");
        }
        const std::size_t first = m_storage == EStorage::Upper ? row : 0;
        const std::size_t stop = m_storage == EStorage::Lower ? row + 1 : m_ports;
        out = PutRow(out, values.subspan(row * m_ports + first, stop - first));
    }
    return {m_text.data(), static_cast<std::size_t>(out - m_text.data())};
}

} // namespace zov::network
