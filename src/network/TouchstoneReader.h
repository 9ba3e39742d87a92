// SPDX-License-Identifier: Apache-2.0
/// Touchstone files, versions 1, 2.0 and 2.1, to network data.
///
///     CNullDiag diag;
///     ASSIGN_OR_RETURN(const CNetworkData data, ReadTouchstone("filter.s2p", diag));
///
/// Errors carry the file, the line and one of the fixed texts; a note says what was found there.
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "network/NetworkData.h"

#include <filesystem>
#include <string_view>

namespace zov::network {

/// Reads a file. Values of Z, Y, G and H stay as they stand: those of version 1 files are
/// normalised (CNetworkData::Normalised), unless the file's own flag comment says otherwise.
/// Oddities that were read over (a count that is not right, noise data, a name that contradicts the
/// data) go to `diag`.
CResult<CNetworkData> ReadTouchstone(const std::filesystem::path& path, CDiagSink& diag);

/// The same over bytes. `file` names them in messages, and its extension says how many ports a
/// version 1 file has.
CResult<CNetworkData> ReadTouchstoneText(std::string_view bytes, const std::filesystem::path& file,
                                         CDiagSink& diag);

} // namespace zov::network
