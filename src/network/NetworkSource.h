// SPDX-License-Identifier: Apache-2.0
/// Network data as a source of the Touchstone writer, and whole files of it.
///
///     SWriteOptions options = OptionsLike(data);
///     options.version = 2;
///     RETURN_IF_ERROR(WriteTouchstone(data, "out.ts", options));
#pragma once

#include "base/Result.h"
#include "network/NetworkData.h"
#include "network/TouchstoneWriter.h"

namespace zov::network {

/// Answers the writer's callback from data that outlives it.
class CNetworkSource
{
public:
    /// `storage` is what a version 2 file may leave out; the unit is the data's own.
    CNetworkSource(const CNetworkData& data, EStorage storage);

    /// The callback; its context is the CNetworkSource.
    static int Answer(int operation, std::uint32_t parameterType, SSourceRecord& record,
                      std::string& message, void* context);

private:
    int FillMatrix(SSourceMatrix& matrix) const;

    const CNetworkData& m_data;
    EStorage m_storage;
};

struct SWriteOptions
{
    int version = 1;
    EDataFormat format = EDataFormat::Ri;
    EFrequencyUnit unit = EFrequencyUnit::GHz;
    EStorage storage = EStorage::Full; ///< a triangle is for symmetrical data, version 2 and other
                                       ///< than two ports; it is Full otherwise
    SProgramIdentity identity = ThisProgram();
};
/// What the data's own file had.
[[nodiscard]] SWriteOptions OptionsLike(const CNetworkData& data);

/// Element (i, j) equals (j, i) everywhere, to the last bit.
[[nodiscard]] bool IsSymmetrical(const CNetworkData& data);

/// Writes the data as its type. Z, Y, G and H are normalised for version 1 files and made ohm and
/// siemens for version 2 when they are not so yet, as the formats want it; the writer's flag
/// comment says so. Origin, comments and names are those of the data.
/// Errors: Io or Argument with the writer's message; Singular never.
CResult<void> WriteTouchstone(const CNetworkData& data, const std::filesystem::path& path,
                              const SWriteOptions& options);

} // namespace zov::network
