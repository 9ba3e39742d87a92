// SPDX-License-Identifier: Apache-2.0
#include "NetworkJobs.h"

#include "BenchSupport.h"
#include "RandomNetwork.h"
#include "network/Convert.h"
#include "network/NetworkSource.h"
#include "network/TouchstoneReader.h"

#include <cstdio>
#include <cstdlib>

namespace zov::bench {

using namespace network;

namespace {

template <class T>
T Must(CResult<T> result)
{
    if (!result) {
        fmt::print(stderr, "zov_bench: {}\n", result.Error().Full());
        std::exit(3);
    }
    return result.Take();
}

void PrintData(const CNetworkData& data)
{
    TComplex sum = 0.0;
    for (const TComplex& value : data.Values()) {
        sum += value;
    }
    double hz = 0.0;
    for (const double one : data.FrequenciesHz()) {
        hz += one;
    }
    PrintNumber("ports", data.PortCount());
    PrintNumber("points", data.FrequencyCount());
    PrintNumber("sum_hz", hz);
    PrintNumber("sum_re", sum.real());
    PrintNumber("sum_im", sum.imag());
}

CNetworkData Load(const char* path)
{
    CNullDiag diag;
    return Must(ReadTouchstone(path, diag));
}

} // namespace

void TsRead(const char* path)
{
    const CStopwatch watch;
    const CNetworkData data = Load(path);
    PrintTime("load", watch.Seconds());
    PrintData(data);
}

void TsWrite(const char* path, const char* out)
{
    const CNetworkData data = Load(path);
    SWriteOptions options = OptionsLike(data);
    options.format = EDataFormat::Ri;
    const CStopwatch watch;
    const CResult<void> written = WriteTouchstone(data, out, options);
    PrintTime("save", watch.Seconds());
    if (!written) {
        fmt::print(stderr, "zov_bench: {}\n", written.Error().Full());
        std::exit(3);
    }
    PrintNumber("bytes", std::filesystem::file_size(out));
}

void ConvertJob(const char* ports, const char* points, const char* from, const char* to)
{
    const auto count = static_cast<std::uint32_t>(std::atoi(ports));
    const std::optional<EParameter> source = ParameterOfLetter(from);
    const std::optional<EParameter> target = ParameterOfLetter(to);
    if (count == 0 || !source || !target) {
        std::exit(2);
    }
    CNetworkData data(count, EParameter::S);
    const auto frequencies = static_cast<std::size_t>(std::atoll(points));
    CNetworkData::TValues values(frequencies * data.MatrixSize());
    FillScattering(values.data(), count, frequencies);
    std::vector<double> hz(frequencies);
    for (std::size_t f = 0; f < frequencies; ++f) {
        hz[f] = 1e6 * static_cast<double>(f + 1);
    }
    data.Assign(std::move(hz), std::move(values));
    data = Must(ConvertTo(std::move(data), *source)).data;
    const CStopwatch watch;
    SConverted converted = Must(ConvertTo(std::move(data), *target));
    PrintTime(fmt::format("{}2{}", from, to), watch.Seconds());
    PrintNumber("singular", converted.singularHz.size());
    PrintData(converted.data);
}

} // namespace zov::bench
