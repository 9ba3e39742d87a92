// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneHeader.h"

#include "base/Number.h"
#include "base/Text.h"
#include "network/HeaderComments.h"
#include "network/MixedModeOrder.h"
#include "network/TextLines.h"
#include "network/TouchstoneMessages.h"
#include "network/TouchstonePorts.h"

#include <array>
#include <cmath>

namespace zov::network {

namespace {

constexpr std::string_view kSeparators = " \t,";

/// The next word of a line, cut off its front; empty at the end.
std::string_view NextWord(std::string_view& line)
{
    line.remove_prefix(std::min(line.find_first_not_of(kSeparators), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(kSeparators));
    line.remove_prefix(word.size());
    return word;
}

/// "[Number  of Ports]" as "number of ports"; empty when the bracket is not closed.
std::string KeywordName(std::string_view line)
{
    const std::size_t close = line.find(']');
    std::string name;
    if (close == line.npos) {
        return name;
    }
    std::string_view rest = line.substr(1, close - 1);
    for (std::string_view word = NextWord(rest); !word.empty(); word = NextWord(rest)) {
        name += name.empty() ? "" : " ";
        name += LowerCase(word);
    }
    return name;
}

std::string_view WithoutComment(std::string_view line)
{
    return line.substr(0, line.find('!'));
}

bool BeginsNumber(std::string_view line)
{
    return IsDigit(line.front()) || line.find_first_of("+-.") == 0;
}

/// A word that only a number that is no finite one explains.
bool IsNotFinite(std::string_view word)
{
    const std::size_t sign = word.find_first_not_of("+-");
    const std::string_view rest = word.substr(std::min(sign, word.size()));
    if (EqualsNoCase(rest, "inf") || EqualsNoCase(rest, "infinity") || EqualsNoCase(rest, "nan")) {
        return true;
    }
    return !rest.empty() && rest.find_first_not_of("0123456789.eEdD+-") == rest.npos;
}

class CHeaderReader
{
public:
    CHeaderReader(std::string_view text, std::string_view file, std::uint32_t namePorts)
        : m_text(text)
        , m_file(file)
        , m_namePorts(namePorts)
        , m_lines(text)
    {
    }

    CResult<STouchstoneHeader> Read();

private:
    using FReadKeyword = CResult<void> (CHeaderReader::*)(std::string_view rest);
    struct SKeyword
    {
        std::string_view name;
        FReadKeyword read;
    };
    static const std::array<SKeyword, 8> kKeywords;

    [[nodiscard]] SError Wrong(std::string_view message, std::string note = {}) const;
    /// The next line that is neither empty nor a comment, blanks in front cut off.
    std::optional<std::string_view> NextLine();
    CResult<void> ReadVersion(std::string_view line);
    CResult<void> ReadVersion1();
    CResult<void> ReadVersion2();
    CResult<void> ReadOptions(std::string_view line);
    CResult<void> ReadOptionReferences(std::string_view& line, std::string_view& word);
    CResult<double> ReadReference(std::string_view word) const;

    CResult<void> ReadPorts(std::string_view rest);
    CResult<void> ReadDataOrder(std::string_view rest);
    CResult<void> ReadFrequencies(std::string_view rest);
    CResult<void> ReadNoiseFrequencies(std::string_view rest);
    CResult<void> ReadReferences(std::string_view rest);
    CResult<void> ReadMatrixFormat(std::string_view rest);
    CResult<void> ReadMixedModeOrder(std::string_view rest);
    CResult<void> ReadInformation(std::string_view rest);
    CResult<std::uint64_t> ReadCount(std::string_view rest) const;
    CResult<std::uint32_t> KnownPorts() const;

    std::string_view m_text;
    std::string_view m_file;
    std::uint32_t m_namePorts;
    CTextLines m_lines;
    CHeaderComments m_comments;
    STouchstoneHeader m_header;
};

SError CHeaderReader::Wrong(std::string_view message, std::string note) const
{
    SError error =
        FailAt(EErr::Format, {std::string(m_file), m_lines.Line(), 0}, std::string(message));
    if (!note.empty()) {
        error.notes.push_back(std::move(note));
    }
    return error;
}

std::optional<std::string_view> CHeaderReader::NextLine()
{
    while (std::optional<std::string_view> line = m_lines.Next()) {
        std::string_view text = *line;
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
        if (text.empty()) {
            continue;
        }
        if (text.front() != '!') {
            return text;
        }
        const std::uint32_t ports = PortCountOfComment(text);
        m_header.ports = ports != 0 && m_header.ports == 0 ? ports : m_header.ports;
        m_comments.Add(text.substr(1));
    }
    return std::nullopt;
}

CResult<STouchstoneHeader> CHeaderReader::Read()
{
    const std::optional<std::string_view> first = NextLine();
    if (!first) {
        return Wrong(messages::kMatrixData, "the file holds no data");
    }
    if (first->front() == '[') {
        RETURN_IF_ERROR(ReadVersion(*first));
        RETURN_IF_ERROR(ReadVersion2());
    } else if (first->front() == '#') {
        RETURN_IF_ERROR(ReadOptions(*first));
        RETURN_IF_ERROR(ReadVersion1());
    } else {
        return Wrong(messages::kHeader, "expected an option line, which begins with '#', or "
                                        "[Version] before anything but comments");
    }
    m_comments.Finish(m_header.traits, m_header.names,
                      m_header.ports != 0 ? m_header.ports : m_namePorts);
    return std::move(m_header);
}

CResult<void> CHeaderReader::ReadVersion(std::string_view line)
{
    if (KeywordName(line) != "version") {
        return Wrong(messages::kVersionFirst);
    }
    std::string_view rest = WithoutComment(line.substr(line.find(']') + 1));
    const std::string_view version = NextWord(rest);
    if ((version != "2.0" && version != "2.1") || !NextWord(rest).empty()) {
        return Wrong(messages::kHeader,
                     "version '" + std::string(version) + "' is not known, only 2.0 and 2.1");
    }
    m_header.traits.version = 2;
    m_header.ports = 0; // the keyword says it
    const std::optional<std::string_view> options = NextLine();
    if (!options || options->front() != '#') {
        return Wrong(messages::kOptionAfterVersion);
    }
    return ReadOptions(*options);
}

CResult<void> CHeaderReader::ReadOptions(std::string_view line)
{
    line = WithoutComment(line.substr(1));
    for (std::string_view word = NextWord(line); !word.empty();) {
        if (const auto unit = UnitOfWord(word)) {
            m_header.traits.unit = *unit;
        } else if (const auto format = FormatOfWord(word)) {
            m_header.traits.format = *format;
        } else if (const auto parameter = ParameterOfLetter(word)) {
            m_header.parameter = *parameter;
        } else if (EqualsNoCase(word, "R")) {
            RETURN_IF_ERROR(ReadOptionReferences(line, word));
            continue;
        } else {
            return Wrong(messages::kOptionWord,
                         "'" + std::string(word) + "' is no unit, parameter, format or R");
        }
        word = NextWord(line);
    }
    return {};
}

/// The numbers behind "R"; `word` is the first one behind them afterwards.
CResult<void> CHeaderReader::ReadOptionReferences(std::string_view& line, std::string_view& word)
{
    m_header.references.clear();
    for (word = NextWord(line); !word.empty(); word = NextWord(line)) {
        if (!ParseDouble(word) && !IsNotFinite(word)) {
            break;
        }
        ASSIGN_OR_RETURN(const double ohm, ReadReference(word));
        m_header.references.push_back(ohm);
    }
    if (m_header.references.empty()) {
        return word.empty() ? Wrong(messages::kReferencesMissing, "expected a number behind R")
                            : Wrong(messages::kOptionWord,
                                    "'" + std::string(word) + "' is no reference impedance");
    }
    return {};
}

CResult<double> CHeaderReader::ReadReference(std::string_view word) const
{
    const std::optional<double> ohm = ParseDouble(word);
    if (!ohm || !std::isfinite(*ohm) || *ohm <= 0.0) {
        return Wrong(messages::kReferencesWrong,
                     "'" + std::string(word) + "' is no finite impedance above 0 ohm");
    }
    return *ohm;
}

CResult<void> CHeaderReader::ReadVersion1()
{
    while (const std::optional<std::string_view> line = NextLine()) {
        if (line->front() == '[') {
            return Wrong(messages::kVersionFirst);
        }
        if (line->front() == '#') {
            continue; // only the first option line counts
        }
        if (!BeginsNumber(*line)) {
            return Wrong(messages::kHeader, "expected a frequency");
        }
        m_header.bodyBegin = m_lines.Begin();
        return {};
    }
    return Wrong(messages::kMatrixData, "the file holds no data");
}

const std::array<CHeaderReader::SKeyword, 8> CHeaderReader::kKeywords = {{
    {"number of ports", &CHeaderReader::ReadPorts},
    {"two-port data order", &CHeaderReader::ReadDataOrder},
    {"number of frequencies", &CHeaderReader::ReadFrequencies},
    {"number of noise frequencies", &CHeaderReader::ReadNoiseFrequencies},
    {"reference", &CHeaderReader::ReadReferences},
    {"matrix format", &CHeaderReader::ReadMatrixFormat},
    {"mixed-mode order", &CHeaderReader::ReadMixedModeOrder},
    {"begin information", &CHeaderReader::ReadInformation},
}};

CResult<void> CHeaderReader::ReadVersion2()
{
    while (const std::optional<std::string_view> line = NextLine()) {
        if (BeginsNumber(*line) && m_header.ports != 0) { // some writers leave the keyword out
            m_header.bodyBegin = m_lines.Begin();
            m_header.dataUnannounced = true;
            return {};
        }
        if (line->front() != '[') {
            return Wrong(messages::kHeader, "expected a keyword in brackets");
        }
        const std::string name = KeywordName(*line);
        const std::size_t rest = line->find(']') + 1;
        if (name == "network data") {
            m_header.bodyBegin = static_cast<std::size_t>(line->data() - m_text.data()) + rest;
            return {};
        }
        const auto* const known = std::ranges::find(kKeywords, name, &SKeyword::name);
        if (known == kKeywords.end()) {
            return name == "version" ? Wrong(messages::kVersionFirst)
                                     : Wrong(messages::kKeyword, std::string(Trim(*line)));
        }
        RETURN_IF_ERROR((this->*known->read)(Trim(WithoutComment(line->substr(rest)))));
    }
    return Wrong(messages::kMatrixData, "[Network Data] is missing");
}

CResult<std::uint64_t> CHeaderReader::ReadCount(std::string_view rest) const
{
    const std::optional<std::int64_t> count = ParseInt(rest);
    if (!count || *count < 0) {
        return Wrong(messages::kHeader, "'" + std::string(rest) + "' is no count");
    }
    return static_cast<std::uint64_t>(*count);
}

CResult<void> CHeaderReader::ReadPorts(std::string_view rest)
{
    const std::optional<std::int64_t> count = ParseInt(rest);
    if (!count || *count < 1 || *count > std::int64_t{0xFFFFFFFF}) {
        return Wrong(messages::kPortNumber, "'" + std::string(rest) + "' is no count of ports");
    }
    if (TooManyPorts(static_cast<std::uint64_t>(*count), m_text.size())) {
        return Wrong(messages::kMatrixData,
                     "a matrix of " + std::to_string(*count) + " ports is longer than the file");
    }
    m_header.ports = static_cast<std::uint32_t>(*count);
    return {};
}

CResult<std::uint32_t> CHeaderReader::KnownPorts() const
{
    const std::uint32_t ports = m_header.ports != 0 ? m_header.ports : m_namePorts;
    if (ports == 0) {
        return Wrong(messages::kPortNumber, "[Number of Ports] has to come before");
    }
    return ports;
}

CResult<void> CHeaderReader::ReadDataOrder(std::string_view rest)
{
    if (rest != "21_12" && rest != "12_21") {
        return Wrong(messages::kHeader,
                     "'" + std::string(rest) + "' is no order, expected 21_12 or 12_21");
    }
    m_header.firstIsRow = rest == "12_21";
    return {};
}

CResult<void> CHeaderReader::ReadFrequencies(std::string_view rest)
{
    ASSIGN_OR_RETURN(const std::uint64_t count, ReadCount(rest));
    if (count > m_text.size()) {
        return Wrong(messages::kMatrixData,
                     std::to_string(count) + " frequencies are longer than the file");
    }
    m_header.frequencies = count;
    return {};
}

CResult<void> CHeaderReader::ReadNoiseFrequencies(std::string_view rest)
{
    ASSIGN_OR_RETURN(const std::uint64_t count, ReadCount(rest));
    m_header.traits.noisePoints = count;
    return {};
}

/// One number a port, over as many lines as they take.
CResult<void> CHeaderReader::ReadReferences(std::string_view rest)
{
    ASSIGN_OR_RETURN(const std::uint32_t ports, KnownPorts());
    m_header.references.clear();
    for (;;) {
        for (std::string_view word = NextWord(rest); !word.empty(); word = NextWord(rest)) {
            ASSIGN_OR_RETURN(const double ohm, ReadReference(word));
            m_header.references.push_back(ohm);
        }
        if (m_header.references.size() > ports) {
            return Wrong(messages::kReferencesWrong, std::to_string(m_header.references.size()) +
                                                         " references for " +
                                                         std::to_string(ports) + " ports");
        }
        if (m_header.references.size() == ports) {
            return {};
        }
        const std::optional<std::string_view> next = NextLine();
        if (!next || next->front() == '[') {
            return Wrong(messages::kReferencesMissing, std::to_string(m_header.references.size()) +
                                                           " references for " +
                                                           std::to_string(ports) + " ports");
        }
        rest = WithoutComment(*next);
    }
}

CResult<void> CHeaderReader::ReadMatrixFormat(std::string_view rest)
{
    for (const EStorage storage : {EStorage::Full, EStorage::Lower, EStorage::Upper}) {
        if (EqualsNoCase(rest, WordOf(storage))) {
            m_header.traits.storage = storage;
            return {};
        }
    }
    return Wrong(messages::kMatrixFormat, "'" + std::string(rest) + "'");
}

CResult<void> CHeaderReader::ReadMixedModeOrder(std::string_view rest)
{
    ASSIGN_OR_RETURN(const std::uint32_t ports, KnownPorts());
    std::vector<SPort>& order = m_header.order;
    order.clear();
    for (;;) {
        if (!ReadPortDescriptors(rest, order)) {
            return Wrong(messages::kMixedModeOrder, "'" + std::string(Trim(rest)) + "'");
        }
        if (order.size() == ports) {
            return {};
        }
        const std::optional<std::string_view> next = NextLine();
        if (order.size() > ports || !next || next->front() == '[') {
            return Wrong(messages::kMixedModeOrder, std::to_string(order.size()) +
                                                        " descriptors for " +
                                                        std::to_string(ports) + " ports");
        }
        rest = WithoutComment(*next);
    }
}

CResult<void> CHeaderReader::ReadInformation(std::string_view /*rest*/)
{
    while (const std::optional<std::string_view> line = m_lines.Next()) {
        const std::string_view text = Trim(*line);
        if (text.starts_with('[') && KeywordName(text) == "end information") {
            return {};
        }
        m_header.traits.information.emplace_back(text);
    }
    return Wrong(messages::kHeader, "[End Information] is missing");
}

} // namespace

bool TooManyPorts(std::uint64_t ports, std::size_t bytes)
{
    // Two numbers of two bytes for each element of a triangle: more than one byte for each of N*N.
    return ports > 0xFFFFFFFFU || ports * ports > bytes;
}

CResult<STouchstoneHeader> ReadTouchstoneHeader(std::string_view text, std::string_view file,
                                                std::uint32_t namePorts)
{
    return CHeaderReader(text, file, namePorts).Read();
}

} // namespace zov::network
