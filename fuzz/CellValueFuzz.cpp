// SPDX-License-Identifier: Apache-2.0
/// Cells of any bytes: a value is finite and not negative, and what is written from it reads back
/// as the same.
#include "base/Number.h"
#include "batch/CaseSize.h"
#include "batch/CellTolerance.h"
#include "batch/CellValue.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::batch;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (int i = 0; i < 10; ++i) {
        const auto quantity = static_cast<zov::EQuantity>(i);
        for (const SColumnUnit unit :
             {SColumnUnit{0, false}, SColumnUnit{-9, false}, SColumnUnit{0, true}}) {
            const SCellReading reading = ReadQuantity(text, quantity, unit);
            if (reading.state != ECell::Value) {
                Require(reading.state == ECell::Empty || !reading.why.empty());
                continue;
            }
            Require(std::isfinite(reading.value) && reading.value >= 0);
            const SCellReading again =
                ReadQuantity(zov::FormatShortest(reading.value), quantity, SColumnUnit{});
            Require(again.state == ECell::Value && again.value == reading.value);
        }
    }
    for (const SToleranceUnit unit :
         {SToleranceUnit{}, SToleranceUnit{SToleranceUnit::EKind::Absolute, -12}}) {
        const SToleranceReading tolerance =
            ReadTolerance(text, zov::EQuantity::Capacitance, 1e-9, unit);
        Require((tolerance.state == ECell::Value) == (tolerance.up || tolerance.low));
        Require(std::isfinite(tolerance.up.value_or(0)) && tolerance.up.value_or(0) >= 0);
        Require(std::isfinite(tolerance.low.value_or(0)) && tolerance.low.value_or(0) >= 0);
    }
    for (const ESizeSystem system : {ESizeSystem::FromFile, ESizeSystem::Metric}) {
        const SSizeReading size1 = ReadSize(text, system);
        Require(size1.state != ECell::Value || size1.size.size() > kMinSizeLength);
    }
    return 0;
}
