// SPDX-License-Identifier: Apache-2.0
#include "network/Convert.h"
#include "network/Interpolate.h"
#include "network/Losses.h"
#include "network/NetworkChecks.h"
#include "network/NetworkDiff.h"

#include <cmath>
#include <gtest/gtest.h>

namespace zov::network {
namespace {

/// A delay of 1 ns and loss, 10 MHz to 2 GHz.
CNetworkData Delay(double gain, double back, double turn)
{
    CNetworkData data(2, EParameter::S);
    for (int i = 1; i <= 200; ++i) {
        const TComplex through = std::polar(gain, turn * 0.0628 * i);
        const TComplex s[] = {0.0, through * back, through, 0.0};
        data.Append(i * 1e7, s);
    }
    return data;
}

TEST(NetworkChecks, TellPassiveReciprocalAndCausalData)
{
    const CResult<SNetworkChecks> good = CheckNetwork(Delay(0.9, 1.0, -1));
    ASSERT_TRUE(good.Ok());
    EXPECT_NEAR(good->gain.value, 0.9, 1e-15);
    EXPECT_EQ(good->asymmetry.value, 0.0);
    EXPECT_EQ(good->clockwise.value, 1.0);

    CNetworkData amplifier = Delay(0.5, 0.1, -1);
    amplifier.Matrix(42)[2] *= 6.0;
    const CResult<SNetworkChecks> active = CheckNetwork(amplifier);
    EXPECT_NEAR(active->gain.value, 3.0, 1e-14);
    EXPECT_EQ(active->gain.hz, 43e7);
    EXPECT_NEAR(active->asymmetry.value, 2.95, 1e-14);
    EXPECT_EQ(active->asymmetry.row, 1U);

    const CResult<SNetworkChecks> early = CheckNetwork(Delay(0.9, 1.0, 1));
    EXPECT_LT(early->clockwise.value, 0.01);

    CNetworkData onePort(1, EParameter::Z); // R and C in series, by its impedance
    for (int i = 1; i <= 100; ++i) {
        const TComplex z(5.0, -1e10 / (6.28 * i * 1e7));
        onePort.Append(i * 1e7, {&z, 1});
    }
    const CResult<SNetworkChecks> one = CheckNetwork(onePort);
    ASSERT_TRUE(one.Ok());
    EXPECT_LT(one->gain.value, 1.0);
    EXPECT_EQ(one->asymmetry.value, 0.0);
    EXPECT_GT(one->clockwise.value, 0.99);
}

TEST(Interpolate, KeepsKnownPointsAndRefusesOthers)
{
    CNetworkData data(1, EParameter::S);
    for (const double hz : {1.0, 2.0, 4.0}) {
        const TComplex value(hz, -hz);
        data.Append(hz, {&value, 1});
    }
    const CResult<CNetworkData> got = Interpolate(data, {1, 1.5, 3, 4});
    ASSERT_TRUE(got.Ok());
    EXPECT_EQ(got->At(1, 0, 0), TComplex(1.5, -1.5));
    EXPECT_EQ(got->At(2, 0, 0), TComplex(3, -3));
    EXPECT_EQ(got->At(3, 0, 0), TComplex(4, -4));
    EXPECT_FALSE(Interpolate(data, {0.5}).Ok());
    EXPECT_FALSE(Interpolate(data, {4.5}).Ok());
    EXPECT_FALSE(Interpolate(data, {2, 2}).Ok());
    const auto list = FrequencyList(1, 1000, 4, ESpacing::Logarithmic);
    EXPECT_NEAR((*list)[1], 10, 1e-12);
    EXPECT_EQ(list->back(), 1000);
    EXPECT_EQ(*FrequencyList(0, 2, 3, ESpacing::Linear), (std::vector<double>{0, 1, 2}));
    EXPECT_FALSE(FrequencyList(0, 2, 3, ESpacing::Logarithmic).Ok());
    EXPECT_FALSE(FrequencyList(1, 2, 1, ESpacing::Linear).Ok());
}

TEST(NetworkDiff, FindsTheLargestDifference)
{
    const CNetworkData a = Delay(0.5, 1.0, -1);
    EXPECT_EQ(CompareNetworks(a, a, 0)->largest.value, 0.0);
    CNetworkData b = a;
    b.Matrix(10)[1] += 0.25;
    b.Matrix(11)[2] += 1e-9;
    const CResult<SNetworkDiff> diff = CompareNetworks(a, b, 1e-6);
    EXPECT_EQ(diff->above, 1U);
    EXPECT_NEAR(diff->largest.value, 0.25, 1e-15);
    EXPECT_EQ(diff->largest.hz, 11e7);
    EXPECT_EQ(diff->largest.column, 1U);
    // The same network as other parameters with other references.
    CResult<SConverted> other = ConvertTo(Renormalise(a, {75, 20})->data, EParameter::Y);
    ASSERT_TRUE(other.Ok());
    const CResult<SNetworkDiff> same = CompareNetworks(a, other->data, 1e-13);
    EXPECT_EQ(same->facts,
              (std::vector<std::string>{"type: S and Y", "references: 50 ohm and 75 20 ohm"}));
    EXPECT_EQ(same->above, 0U);
    EXPECT_EQ(same->compared, 200U);
    std::vector<bool> keep(200, true);
    keep[0] = false;
    b.Keep(keep);
    EXPECT_EQ(CompareNetworks(a, b, 1)->onlyA, 1U);
    EXPECT_EQ(CompareNetworks(a, CNetworkData(1, EParameter::S), 1)->facts,
              std::vector<std::string>{"ports: 2 and 1"});
}

TEST(Losses, TellsWhatTheTargetCannotHold)
{
    CNetworkData data = Delay(0.5, 1.0, -1);
    SWriteOptions options;
    EXPECT_EQ(LossesOf(data, options), std::vector<std::string>{});
    data.Traits().noisePoints = 2;
    data.Traits().information = {"x"};
    data.Traits().dataComments = 3;
    data.Ports()[1].referenceOhm = 50.123456789;
    data.Ports()[1].name = "a\nb";
    options.storage = EStorage::Lower;
    EXPECT_EQ(
        LossesOf(data, options),
        (std::vector<std::string>{
            "noise data (2 frequencies) is left out", "[Begin Information] (1 lines) is left out",
            "comments among the data (3) are left out",
            "port names (1) do not fit on a line of their own",
            "reference 50.123456789 ohm is written with 8 digits as 50.123457",
            "a reference for each port: many readers of version 1 files know one",
            "[Matrix Format] Lower: not for version 1 and two-ports, full matrices are written"}));
}

} // namespace
} // namespace zov::network
