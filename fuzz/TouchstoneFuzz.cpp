// SPDX-License-Identifier: Apache-2.0
// Touchstone files. The first byte picks the port count of the name (0: a name that says nothing).
// What is read has as many finite values as it says, and can be converted.
#include "network/Convert.h"
#include "network/TouchstoneReader.h"
#include "network/TwoTerminal.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::network;
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const unsigned ports = data[0] % 10;
    zov::CNullDiag diag;
    const auto read = ReadTouchstoneText(
        bytes, ports == 0 ? "file.ts" : "file.s" + std::to_string(ports) + "p", diag);
    if (!read) {
        return 0;
    }
    if (read->FrequencyCount() == 0 ||
        read->Values().size() != read->FrequencyCount() * read->MatrixSize()) {
        std::abort();
    }
    double last = -1.0;
    for (const double hz : read->FrequenciesHz()) {
        if (!(hz > last) || !std::isfinite(hz)) {
            std::abort();
        }
        last = hz;
    }
    if (read->PortCount() <= 8) {
        static_cast<void>(ConvertTo(*read, EParameter::Z));
        if (const auto part = TwoTerminalOf(*read)) {
            static_cast<void>(PartValuesOf(*part));
        }
    }
    return 0;
}
