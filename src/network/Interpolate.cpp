// SPDX-License-Identifier: Apache-2.0
#include "network/Interpolate.h"

#include "base/Number.h"

#include <algorithm>
#include <cmath>

namespace zov::network {

CResult<CNetworkData> Interpolate(const CNetworkData& data, const std::vector<double>& hz)
{
    const std::vector<double>& known = data.FrequenciesHz();
    CNetworkData out(data.PortCount(), data.Parameter());
    out.Declare(data.Parameter(), data.Normalised());
    out.Ports() = data.Ports();
    out.Traits() = data.Traits();
    std::vector<TComplex> matrix(data.MatrixSize());
    double last = -1.0;
    for (const double at : hz) {
        if (known.empty() || !(at >= known.front() && at <= known.back())) {
            return Fail(EErr::Argument,
                        FormatShortest(at) + " Hz is outside the data's frequencies");
        }
        if (at <= last) {
            return Fail(EErr::Argument,
                        FormatShortest(at) + " Hz is not above the frequency before it");
        }
        last = at;
        const auto above =
            static_cast<std::size_t>(std::ranges::lower_bound(known, at) - known.begin());
        const std::span<const TComplex> high = data.Matrix(above);
        if (known[above] == at) {
            out.Append(at, high);
            continue;
        }
        const std::span<const TComplex> low = data.Matrix(above - 1);
        const double way = (at - known[above - 1]) / (known[above] - known[above - 1]);
        for (std::size_t i = 0; i < matrix.size(); ++i) {
            matrix[i] = low[i] + way * (high[i] - low[i]);
        }
        out.Append(at, matrix);
    }
    return out;
}

CResult<std::vector<double>> FrequencyList(double firstHz, double lastHz, std::size_t count,
                                           ESpacing spacing)
{
    constexpr std::size_t kMost = 100000000;
    const bool fromZero = spacing == ESpacing::Logarithmic && !(firstHz > 0.0);
    if (count < 2 || count > kMost || !(firstHz >= 0.0 && lastHz > firstHz) || fromZero) {
        return Fail(EErr::Argument, "expected two frequencies or more, rising, and above 0 for a "
                                    "logarithmic list");
    }
    std::vector<double> hz(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double way = static_cast<double>(i) / static_cast<double>(count - 1);
        hz[i] = spacing == ESpacing::Linear ? firstHz + way * (lastHz - firstHz)
                                            : firstHz * std::pow(lastHz / firstHz, way);
    }
    hz.back() = lastHz;
    return hz;
}

} // namespace zov::network
