// SPDX-License-Identifier: Apache-2.0
/// Whether a server can be reached.
#pragma once

#include "base/Result.h"

#include <string>

namespace zov {

/// Opens a TCP connection and closes it again; sends nothing.
/// @param timeoutMs at most that long for each address that the name has
/// Errors: NotFound for a name without address, Io when nobody answers or the connection is
/// refused, Argument for a port out of 1 to 65535.
CResult<void> ProbeTcp(const std::string& host, int port, int timeoutMs);

} // namespace zov
