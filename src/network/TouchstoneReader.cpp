// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneReader.h"

#include "base/File.h"
#include "base/Text.h"
#include "network/MixedModeOrder.h"
#include "network/TextLines.h"
#include "network/TouchstoneBody.h"
#include "network/TouchstoneHeader.h"
#include "network/TouchstoneMessages.h"
#include "network/TouchstonePorts.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace zov::network {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

class CReader
{
public:
    CReader(std::string_view text, const std::filesystem::path& file, CDiagSink& diag)
        : m_text(text)
        , m_file(PathText(file))
        , m_namePorts(PortCountOfName(file))
        , m_diag(diag)
    {
    }

    CResult<CNetworkData> Read();

private:
    CResult<void> SettlePorts();
    [[nodiscard]] SError ContradictsName(std::uint32_t looksLike) const;
    CResult<void> SettleReferences(std::vector<SPort>& ports) const;
    CResult<void> SettleOrder(std::vector<SPort>& ports) const;
    [[nodiscard]] SBodyLayout Layout() const;
    CResult<void> CheckEnd(const SBody& body);
    CResult<void> ReadTail(std::string_view tail, std::size_t offset);
    CResult<void> CheckCount(std::size_t points);
    [[nodiscard]] SError BrokenData(const SBody& body) const;
    [[nodiscard]] std::size_t BodyLine(std::size_t offset) const;
    [[nodiscard]] SError Wrong(std::string_view message, std::size_t line, std::string note) const;
    void Tell(std::string text, std::size_t line = 0);

    std::string_view m_text;
    std::string m_file;
    std::uint32_t m_namePorts;
    CDiagSink& m_diag;
    STouchstoneHeader m_header;
};

SError CReader::Wrong(std::string_view message, std::size_t line, std::string note) const
{
    SError error = FailAt(EErr::Format, {m_file, line, 0}, std::string(message));
    if (!note.empty()) {
        error.notes.push_back(std::move(note));
    }
    return error;
}

void CReader::Tell(std::string text, std::size_t line)
{
    m_diag.Report({ESeverity::Warning, "", {m_file, line, 0}, std::move(text)});
}

std::size_t CReader::BodyLine(std::size_t offset) const
{
    CTextLines lines(m_text);
    const std::size_t at = m_header.bodyBegin + offset;
    while (lines.NextBegin() <= at && lines.Next()) {
    }
    return lines.Line();
}

CResult<CNetworkData> CReader::Read()
{
    ASSIGN_OR_RETURN(m_header, ReadTouchstoneHeader(m_text, m_file, m_namePorts));
    if (m_header.dataUnannounced) {
        Tell("[Network Data] is missing", BodyLine(0));
    }
    RETURN_IF_ERROR(SettlePorts());
    CNetworkData data(m_header.ports, m_header.parameter);
    RETURN_IF_ERROR(SettleReferences(data.Ports()));
    RETURN_IF_ERROR(SettleOrder(data.Ports()));
    SBody body = ScanBody(m_text.substr(m_header.bodyBegin), Layout());
    RETURN_IF_ERROR(CheckEnd(body));
    RETURN_IF_ERROR(CheckCount(body.hz.size()));
    m_header.traits.dataComments = body.comments;
    data.Assign(std::move(body.hz), std::move(body.values));

    SFileTraits& traits = m_header.traits;
    const bool normalised =
        traits.version == 1 && traits.formatFlag != 2 && m_header.parameter != EParameter::S;
    data.Declare(m_header.parameter, normalised ? ENormalised::Yes : ENormalised::No);
    traits.hasNames = m_header.names.size() == m_header.ports;
    for (std::size_t p = 0; traits.hasNames && p < m_header.names.size(); ++p) {
        data.Ports()[p].name = m_header.names[p];
    }
    data.Traits() = std::move(traits);
    return data;
}

/// The header's word counts before the file name's, and that before what the data looks like; but a
/// name that the data contradicts would make nonsense of it.
CResult<void> CReader::SettlePorts()
{
    const bool said = m_header.ports != 0;
    if (said && m_namePorts != 0 && m_namePorts != m_header.ports) {
        Tell("the file's name says " + std::to_string(m_namePorts) + " ports, its header " +
             std::to_string(m_header.ports));
    }
    if (!said) {
        const std::uint32_t guess =
            m_header.traits.version == 1 ? GuessPorts(m_text.substr(m_header.bodyBegin)) : 0;
        if (m_namePorts != 0 && guess != 0 && guess != m_namePorts) {
            return ContradictsName(guess);
        }
        m_header.ports = m_namePorts != 0 ? m_namePorts : guess;
    }
    if (m_header.ports == 0) {
        return Wrong(messages::kPortNumber, 0,
                     "neither the header nor the file's extension (.s2p for two ports) says how "
                     "many there are");
    }
    if (TooManyPorts(m_header.ports, m_text.size())) {
        return Wrong(messages::kMatrixData, 0,
                     "a matrix of " + std::to_string(m_header.ports) +
                         " ports is longer than the file");
    }
    if (IsHybrid(m_header.parameter) && m_header.ports != 2) {
        return Wrong(messages::kHybridPorts, 0,
                     "the file has " + std::to_string(m_header.ports) + " ports");
    }
    return {};
}

SError CReader::ContradictsName(std::uint32_t looksLike) const
{
    return Wrong(messages::kMatrixData, BodyLine(0),
                 "the file's name says " + std::to_string(m_namePorts) +
                     " ports, its data looks like that of " + std::to_string(looksLike));
}

CResult<void> CReader::SettleReferences(std::vector<SPort>& ports) const
{
    const std::vector<double>& listed = m_header.references;
    if (listed.size() > 1 && listed.size() != ports.size()) {
        return Wrong(listed.size() < ports.size() ? messages::kReferencesMissing
                                                  : messages::kReferencesWrong,
                     0,
                     std::to_string(listed.size()) + " references for " +
                         std::to_string(ports.size()) + " ports");
    }
    for (std::size_t p = 0; p < ports.size() && !listed.empty(); ++p) {
        ports[p].referenceOhm = listed.size() == 1 ? listed[0] : listed[p];
    }
    return {};
}

CResult<void> CReader::SettleOrder(std::vector<SPort>& ports) const
{
    for (std::size_t p = 0; p < m_header.order.size(); ++p) {
        ports[p].mode = m_header.order[p].mode;
        ports[p].first = m_header.order[p].first;
        ports[p].second = m_header.order[p].second;
    }
    const EOrder order = CheckOrder(ports);
    if (order == EOrder::WrongPort || order == EOrder::WrongOrder) {
        return Wrong(messages::kMixedModeOrder, 0,
                     "each physical port has to be there once single-ended or once in a common and "
                     "once in a differential mode");
    }
    if (!HasMixedMode(ports)) {
        return {};
    }
    if (IsHybrid(m_header.parameter)) {
        return Wrong(messages::kDifferentialType, 0, {});
    }
    if (order == EOrder::WrongReferences && m_header.parameter == EParameter::S) {
        return Wrong(messages::kMixedModeReferences, 0, {});
    }
    return {};
}

SBodyLayout CReader::Layout() const
{
    SBodyLayout layout;
    const SFileTraits& traits = m_header.traits;
    layout.ports = m_header.ports;
    layout.storage = traits.storage;
    if (layout.ports == 2 && GuessPorts(m_text.substr(m_header.bodyBegin)) == 2) {
        layout.storage = EStorage::Full; // some writers announce a triangle and give four pairs
    }
    layout.format = traits.format;
    layout.frequencyPower = PowerOf(traits.unit);
    layout.columnFirst =
        layout.ports == 2 && layout.storage == EStorage::Full && !m_header.firstIsRow;
    layout.noiseMayFollow = traits.version == 1 && layout.ports == 2;
    layout.frequencies = m_header.frequencies.value_or(0);
    return layout;
}

CResult<void> CReader::CheckEnd(const SBody& body)
{
    const std::string_view tail = m_text.substr(m_header.bodyBegin + body.stop);
    switch (body.end) {
    case EBodyEnd::Text:
        if (m_header.traits.version == 2) {
            Tell("[End] is missing");
        }
        return {};
    case EBodyEnd::Noise: {
        CTextLines lines(tail);
        while (const auto line = lines.Next()) {
            m_header.traits.noisePoints += ShapeOf(*line).numbers != 0 ? 1 : 0;
        }
        return {};
    }
    case EBodyEnd::Keyword:
        return ReadTail(tail, body.stop);
    case EBodyEnd::BrokenPoint:
    case EBodyEnd::BrokenNumber:
    case EBodyEnd::BadFrequency:
        break;
    }
    return BrokenData(body);
}

/// Keywords behind the data: [Noise Data], whose points are counted, and [End].
CResult<void> CReader::ReadTail(std::string_view tail, std::size_t offset)
{
    if (m_header.traits.version == 1) {
        return Wrong(messages::kVersionFirst, BodyLine(offset), {});
    }
    CTextLines lines(tail);
    bool inNoise = false;
    std::size_t noise = 0;
    bool ended = false;
    while (const auto next = lines.Next()) {
        const std::string_view line = Trim(*next);
        if (StartsWithNoCase(line, "[End]")) {
            ended = true;
            break;
        }
        if (StartsWithNoCase(line, "[Noise Data]")) {
            inNoise = true;
        } else if (line.starts_with('[') || (!inNoise && ShapeOf(line).numbers != 0)) {
            return Wrong(messages::kKeyword, BodyLine(offset + lines.Begin()), std::string(line));
        } else {
            noise += ShapeOf(line).numbers != 0 ? 1 : 0;
        }
    }
    if (!ended) {
        Tell("[End] is missing");
    }
    m_header.traits.noisePoints = inNoise ? noise : 0;
    return {};
}

CResult<void> CReader::CheckCount(std::size_t points)
{
    const std::uint64_t announced = m_header.frequencies.value_or(points);
    if (points == 0 || points < announced) {
        return Wrong(messages::kMatrixData, 0,
                     std::to_string(points) + " frequencies, " +
                         (points == 0
                              ? "at least 1 is needed"
                              : "[Number of Frequencies] says " + std::to_string(announced)));
    }
    if (points > announced) {
        Tell(std::to_string(points) + " frequencies were read, [Number of Frequencies] says " +
             std::to_string(announced));
    }
    return {};
}

/// What was wrong is often seen late, since rows may be broken anywhere: the first line that begins
/// with the frequency of a point and does not lead to the start of a line for the next one is told
/// when there is one.
SError CReader::BrokenData(const SBody& body) const
{
    const std::size_t line = BodyLine(body.stop);
    const std::string_view tail = m_text.substr(m_header.bodyBegin + body.stop);
    const std::string found(
        tail.substr(0, std::min<std::size_t>(24, tail.find_first_of(" \t,\r\n"))));
    const std::size_t wanted = SBodyLayout(Layout()).ports;
    CTextLines lines(m_text.substr(m_header.bodyBegin));
    while (const auto next = m_header.ports <= 2 && lines.NextBegin() <= body.stop
                                 ? lines.Next()
                                 : std::optional<std::string_view>()) {
        const std::size_t numbers = ShapeOf(*next).numbers;
        if (numbers != 0 && numbers != 2 * wanted * wanted + 1) {
            return Wrong(messages::kMatrixData, BodyLine(lines.Begin()),
                         std::to_string(numbers) + " numbers on the line, a frequency of " +
                             std::to_string(wanted) + " ports has " +
                             std::to_string(2 * wanted * wanted + 1));
        }
    }
    if (body.end == EBodyEnd::BadFrequency) {
        return Wrong(messages::kFrequency, line,
                     "'" + found + "' is not above the frequency before it");
    }
    const std::string what = found.empty() ? "the file ends" : "'" + found + "' was found";
    return Wrong(messages::kMatrixData, line,
                 what + (body.end == EBodyEnd::BrokenPoint
                             ? ", the frequency on line " + std::to_string(BodyLine(body.point)) +
                                   " has not all its values yet"
                             : ", expected a frequency"));
}

} // namespace

CResult<CNetworkData> ReadTouchstoneText(std::string_view bytes, const std::filesystem::path& file,
                                         CDiagSink& diag)
{
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    try {
        return CReader(bytes, file, diag).Read();
    } catch (const std::bad_alloc&) {
        return FailAt(EErr::Limit, {PathText(file), 0, 0},
                      "there is not enough memory for the data");
    }
}

CResult<CNetworkData> ReadTouchstone(const std::filesystem::path& path, CDiagSink& diag)
{
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        SError error = view.TakeError();
        error.notes.insert(error.notes.begin(), std::move(error.text));
        error.text = messages::kOpen;
        error.pos.file = PathText(path);
        return error;
    }
    return ReadTouchstoneText(view->Bytes(), path, diag);
}

} // namespace zov::network
