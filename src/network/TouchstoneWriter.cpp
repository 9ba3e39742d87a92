// SPDX-License-Identifier: Apache-2.0
#include "network/TouchstoneWriter.h"

#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"
#include "network/Convert.h"
#include "network/MixedModeOrder.h"
#include "network/Polar.h"
#include "network/TouchstoneMessages.h"
#include "network/TouchstonePorts.h"
#include "network/TouchstoneText.h"

#include <algorithm>

namespace zov::network {

namespace {

constexpr std::uint32_t kModeBits = 3;

/// A text that has to stay on its line.
std::string OneLine(std::string_view text)
{
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return line;
}

struct SRequest
{
    const std::filesystem::path& path;
    std::string_view origin;
    FDataSource source;
    void* context;
    std::uint32_t dataFormat;
    bool version2;
    std::uint32_t terminalCount;
    const char* userComment;
    std::uint32_t type;
};

/// One file being written. Functions return false when it failed, with the reason in the slot.
class CWriting
{
public:
    CWriting(const SRequest& request, const SProgramIdentity& identity, std::string& message)
        : m_request(request)
        , m_identity(identity)
        , m_message(message)
    {
    }

    bool Run()
    {
        if (!CheckRequest() || !CheckInfo() || !Open()) {
            return false;
        }
        const bool written = WritePorts() && WriteHead() && WriteData();
        if (written) {
            Ask(kSourceFinished);
        }
        if (const CResult<void> finished = m_file->Finish(); !finished && written) {
            return Fails(finished.Error().text);
        }
        return written;
    }

private:
    bool Fails(std::string_view message)
    {
        m_message = message;
        return false;
    }
    int Ask(int operation)
    {
        return m_request.source(operation, m_request.type, m_record, m_message, m_request.context);
    }
    /// The source failed: its own reason stands, or ours.
    bool SourceFails() { return m_message.empty() ? Fails(messages::kInvalidSource) : false; }

    bool CheckRequest();
    bool CheckInfo();
    bool Open();
    bool WritePorts();
    bool CheckPort(std::uint32_t port);
    bool WriteHead();
    bool WriteData();
    bool BringToRequest(std::span<TComplex> values);
    bool ConvertType(std::span<TComplex> values, EParameter from);

    const SRequest& m_request;
    const SProgramIdentity& m_identity;
    std::string& m_message;
    SSourceRecord m_record;
    SSourceInfo m_info;
    EParameter m_parameter = EParameter::S;
    EDataFormat m_format = EDataFormat::Ri;
    std::vector<SPort> m_ports;
    std::unique_ptr<CExclusiveFile> m_file;
};

bool CWriting::CheckRequest()
{
    const std::optional<EParameter> parameter = ParameterOfCode(m_request.type);
    if (!parameter || m_request.dataFormat > static_cast<std::uint32_t>(EDataFormat::Ri)) {
        return Fails(messages::kInvalidInput);
    }
    m_parameter = *parameter;
    m_format = static_cast<EDataFormat>(m_request.dataFormat);
    return true;
}

bool CWriting::CheckInfo()
{
    if (Ask(kSourceInfo) == 0) {
        return SourceFails();
    }
    m_info = m_record.info;
    if (m_info.ports == 0 || m_info.frequencies == 0 ||
        m_info.storage > static_cast<std::uint32_t>(EStorage::Upper)) {
        return Fails(messages::kInvalidSource);
    }
    if (!m_request.version2 && m_request.terminalCount == 0 &&
        m_info.ports != PortCountOfName(m_request.path)) {
        return Fails(messages::kInvalidSource);
    }
    return !IsHybrid(m_parameter) || m_info.ports == 2 || Fails(messages::kHybridPorts);
}

bool CWriting::Open()
{
    CResult<std::unique_ptr<CExclusiveFile>> file = CExclusiveFile::Create(m_request.path);
    if (!file) {
        return Fails(messages::kOpen);
    }
    m_file = file.Take();
    m_file->Append("!Generated from: " + OneLine(m_request.origin) + '\n');
    return true;
}

bool CWriting::WritePorts()
{
    for (std::uint32_t p = 0; p < m_info.ports; ++p) {
        m_record.port = {p, 0, 0, p, p, kDefaultReferenceOhm, DefaultPortName(p)};
        if (Ask(kSourcePort) == 0) {
            return SourceFails();
        }
        if (!CheckPort(p)) {
            return false;
        }
        const SSourcePort& port = m_record.port;
        m_ports.push_back({static_cast<EPortMode>(port.mode & kModeBits), port.first, port.second,
                           port.referenceOhm, port.name});
        m_file->Append("! " + OneLine(port.name) + '\n');
    }
    m_file->Append("!\n");
    return !HasMixedMode(m_ports) || CheckOrder(m_ports) == EOrder::Right ||
           Fails(messages::kMixedModeOrder);
}

bool CWriting::CheckPort(std::uint32_t p)
{
    const SSourcePort& port = m_record.port;
    const std::uint32_t mode = port.mode & kModeBits;
    const bool mixed = mode == 1 || mode == 2;
    const bool outside = port.first >= m_info.ports || port.second >= m_info.ports;
    if (mixed && !m_request.version2) {
        return Fails(messages::kVersion1MixedMode);
    }
    if (mode > 2) {
        return Fails(messages::kMixedModeType);
    }
    if (outside || mixed == (port.first == port.second)) {
        return Fails(messages::kMixedModePort);
    }
    if (mixed && IsHybrid(m_parameter)) {
        return Fails(messages::kHybridMixedMode);
    }
    return m_request.version2 || port.first == p || Fails(messages::kVersion1MixedMode);
}

bool CWriting::WriteHead()
{
    std::string head;
    if (!m_identity.product.empty()) {
        head += '!' + m_identity.product + " Version: " + m_identity.version + '\n';
    }
    if (!m_identity.host.empty()) {
        head += "!Computer Host Name: " + m_identity.host + '\n';
    }
    head += "!\n!TouchstoneFormatFlag = ";
    head += (m_info.formatFlags & kVersion2Flags) != 0 ? "2\n" : "1\n";
    if (m_request.terminalCount == 0 && Ask(kSourceComment) != 0) {
        AppendComments(head, m_record.comment);
    }
    if (m_request.userComment != nullptr) {
        AppendUserComments(head, m_request.userComment);
    }
    const auto unit = static_cast<EFrequencyUnit>(ToUpper(m_info.unit));
    const auto storage = static_cast<EStorage>(m_info.storage);
    AppendHeadLines(head, {m_request.version2, unit, m_parameter, m_format, storage,
                           m_info.frequencies, &m_ports});
    m_file->Append(head);
    return true;
}

bool CWriting::WriteData()
{
    const auto storage =
        m_request.version2 ? static_cast<EStorage>(m_info.storage) : EStorage::Full;
    const int power = PowerOf(static_cast<EFrequencyUnit>(ToUpper(m_info.unit)));
    CMatrixText text(m_info.ports, storage);
    std::vector<TComplex> values(std::size_t{m_info.ports} * m_info.ports);
    std::uint64_t index = 0;
    for (;; ++index) {
        m_record.matrix = {index, 0.0, m_request.type, 2, values.data()};
        const int answer = Ask(kSourceMatrix);
        if (answer < 0) {
            return SourceFails();
        }
        if (answer == 0) {
            break;
        }
        if (!BringToRequest(values)) {
            return Fails(messages::kTransform);
        }
        m_file->Append(text.Lines(ScaleByPowerOfTen(m_record.matrix.hz, -power), values));
    }
    if (!m_request.version2) {
        return true;
    }
    if (index != m_info.frequencies) { // the header has promised another number
        return Fails(messages::kInvalidSource);
    }
    m_file->Append("[End]\n");
    return true;
}

bool CWriting::BringToRequest(std::span<TComplex> values)
{
    const std::optional<EParameter> from = ParameterOfCode(m_record.matrix.type);
    const auto format = static_cast<EDataFormat>(m_record.matrix.format);
    if (!from || format > EDataFormat::Ri) {
        return false;
    }
    if (*from == m_parameter && format == m_format) {
        return true;
    }
    ToRectangular(format, reinterpret_cast<double*>(values.data()), values.size());
    if (*from != m_parameter && !ConvertType(values, *from)) {
        return false;
    }
    for (TComplex& value : values) {
        value = FromRectangular(m_format, value);
    }
    return true;
}

/// Values of a version 1 file are normalised unless the source flags them otherwise; that is so on
/// both sides.
bool CWriting::ConvertType(std::span<TComplex> values, EParameter from)
{
    const bool normalised = !m_request.version2 && (m_info.formatFlags & kVersion2Flags) == 0;
    const auto scale = [&](EParameter parameter) {
        return normalised && parameter != EParameter::S ? ENormalised::Yes : ENormalised::No;
    };
    CNetworkData data(m_info.ports, from);
    data.Ports() = m_ports;
    data.Declare(from, scale(from));
    data.Append(m_record.matrix.hz, values);
    SForm to = FormOf(data);
    to.parameter = m_parameter;
    to.normalised = scale(m_parameter);
    const CResult<SConverted> converted = Convert(std::move(data), to);
    if (!converted || converted->data.FrequencyCount() != 1) {
        return false;
    }
    std::ranges::copy(converted->data.Matrix(0), values.begin());
    return true;
}

} // namespace

SProgramIdentity ThisProgram()
{
    return {"Zovra", ZOV_VERSION, HostName()};
}

CTouchstoneWriter::CTouchstoneWriter(SProgramIdentity identity)
    : m_identity(std::move(identity))
{
}

int CTouchstoneWriter::Write(const std::filesystem::path& path, std::string_view origin,
                             FDataSource source, void* context, std::uint32_t dataFormat,
                             int version2, std::uint32_t terminalCount, const char* userComment,
                             std::uint32_t parameterType)
{
    m_message.clear();
    if (source == nullptr) {
        m_message = messages::kInvalidInput;
        return 0;
    }
    const SRequest request{path,          origin,        source,      context,      dataFormat,
                           version2 != 0, terminalCount, userComment, parameterType};
    const bool written = CWriting(request, m_identity, m_message).Run();
    SSourceRecord record;
    source(kSourceClose, parameterType, record, m_message, context);
    return written ? 1 : 0;
}

} // namespace zov::network
