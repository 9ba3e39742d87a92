// SPDX-License-Identifier: Apache-2.0
#include "network/NetworkSource.h"

#include "base/File.h"
#include "base/Text.h"
#include "network/Convert.h"
#include "network/MixedMode.h"
#include "network/TouchstoneMessages.h"

#include <algorithm>

namespace zov::network {

namespace {

std::string Joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += '\n';
    }
    return text;
}

/// The data with values as the file's version has them, in an order that it can tell.
CResult<CNetworkData> FitFor(const CNetworkData& data, const SWriteOptions& options)
{
    CNetworkData fit = data;
    fit.Traits().unit = options.unit;
    const bool normalised = options.version == 1 && data.Parameter() != EParameter::S;
    ASSIGN_OR_RETURN(SConverted converted,
                     Normalise(std::move(fit), normalised ? ENormalised::Yes : ENormalised::No));
    if (!HasMixedMode(converted.data.Ports())) {
        RETURN_IF_ERROR(ToSingleEnded(converted.data));
    }
    return std::move(converted.data);
}

} // namespace

CNetworkSource::CNetworkSource(const CNetworkData& data, EStorage storage)
    : m_data(data)
    , m_storage(storage)
{
}

int CNetworkSource::FillMatrix(SSourceMatrix& matrix) const
{
    if (matrix.index >= m_data.FrequencyCount()) {
        return 0;
    }
    matrix.hz = m_data.FrequenciesHz()[matrix.index];
    matrix.type = CodeOf(m_data.Parameter());
    matrix.format = static_cast<std::uint32_t>(EDataFormat::Ri);
    std::ranges::copy(m_data.Matrix(matrix.index), matrix.values);
    return 1;
}

int CNetworkSource::Answer(int operation, std::uint32_t /*parameterType*/, SSourceRecord& record,
                           std::string& /*message*/, void* context)
{
    const auto& self = *static_cast<const CNetworkSource*>(context);
    const CNetworkData& data = self.m_data;
    switch (operation) {
    case kSourceInfo: {
        const bool absolute =
            data.Parameter() != EParameter::S && data.Normalised() == ENormalised::No;
        record.info = {data.PortCount(), static_cast<std::uint32_t>(data.FrequencyCount()),
                       static_cast<std::uint32_t>(self.m_storage),
                       static_cast<char>(data.Traits().unit),
                       absolute || HasMixedMode(data.Ports()) ? kTypeZ2 : 0};
        return 1;
    }
    case kSourcePort: {
        const SPort& port = data.Ports()[record.port.port];
        record.port.mode = static_cast<std::uint32_t>(port.mode);
        record.port.first = port.first;
        record.port.second = port.second;
        record.port.referenceOhm = port.referenceOhm;
        record.port.name = port.name;
        return 1;
    }
    case kSourceComment:
        record.comment = Joined(data.Traits().comments);
        return 1;
    case kSourceMatrix:
        return self.FillMatrix(record.matrix);
    default:
        return 1;
    }
}

SWriteOptions OptionsLike(const CNetworkData& data)
{
    const SFileTraits& traits = data.Traits();
    return {traits.version, traits.format, traits.unit, traits.storage, ThisProgram()};
}

bool IsSymmetrical(const CNetworkData& data)
{
    const std::uint32_t ports = data.PortCount();
    for (std::size_t f = 0; f < data.FrequencyCount(); ++f) {
        for (std::uint32_t row = 1; row < ports; ++row) {
            for (std::uint32_t column = 0; column < row; ++column) {
                if (data.At(f, row, column) != data.At(f, column, row)) {
                    return false;
                }
            }
        }
    }
    return true;
}

CResult<void> WriteTouchstone(const CNetworkData& data, const std::filesystem::path& path,
                              const SWriteOptions& options)
{
    ASSIGN_OR_RETURN(const CNetworkData fit, FitFor(data, options));
    const bool triangle = options.version == 2 && fit.PortCount() != 2 && IsSymmetrical(fit);
    CNetworkSource source(fit, triangle ? options.storage : EStorage::Full);
    const std::string userComment = Joined(fit.Traits().userComments);
    CTouchstoneWriter writer(options.identity);
    if (writer.Write(path, fit.Traits().origin, CNetworkSource::Answer, &source,
                     static_cast<std::uint32_t>(options.format), options.version == 2 ? 1 : 0, 0,
                     userComment.c_str(), CodeOf(fit.Parameter())) == 0) {
        SError error = FailAt(writer.Message() == messages::kOpen ? EErr::Io : EErr::Argument,
                              {PathText(path), 0, 0}, writer.Message());
        const std::string named = ".s" + std::to_string(fit.PortCount()) + "p";
        if (options.version == 1 && !EqualsNoCase(ExtensionOf(path), named)) {
            error.notes.push_back("a version 1 file of " + std::to_string(fit.PortCount()) +
                                  " ports has the extension " + named);
        }
        return error;
    }
    return {};
}

} // namespace zov::network
