// SPDX-License-Identifier: Apache-2.0
#include "network/TwoTerminal.h"

#include "network/Convert.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace zov::network {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;

/// r + l + c in series, or l with r beside c in parallel.
TComplex CapacitorOhm(double hz, double r, double l, double c)
{
    const double w = kTwoPi * hz;
    return {r, w * l - 1 / (w * c)};
}
TComplex InductorOhm(double hz, double r, double l, double c)
{
    const double w = kTwoPi * hz;
    return 1.0 / (TComplex(0, w * c) + 1.0 / TComplex(r, w * l));
}

/// The part measured with references r1, r2 in the given connection, from 100 Hz to 10 GHz.
CNetworkData Measured(EConnection connection, double r1, double r2, TComplex (*ohm)(double))
{
    CNetworkData data(connection == EConnection::OnePort ? 1 : 2, EParameter::S);
    data.Ports()[0].referenceOhm = r1;
    if (connection != EConnection::OnePort) {
        data.Ports()[1].referenceOhm = r2;
    }
    for (int i = 0; i <= 800; ++i) {
        const double hz = 100.0 * std::pow(10.0, i / 100.0);
        const TComplex z = ohm(hz);
        if (connection == EConnection::OnePort) {
            const TComplex s = (z - r1) / (z + r1);
            data.Append(hz, {&s, 1});
            continue;
        }
        const bool series = connection == EConnection::Series;
        const TComplex sum = series ? z + r1 + r2 : r1 + r2 + r1 * r2 / z;
        const TComplex through = 2 * std::sqrt(r1 * r2) / sum;
        const TComplex part = series ? z : -r1 * r2 / z;
        const TComplex s[] = {(part + (r2 - r1)) / sum, through, through, (part + (r1 - r2)) / sum};
        data.Append(hz, s);
    }
    return data;
}

TEST(TwoTerminal, FindsConnectionAndImpedance)
{
    const auto ohm = [](double hz) { return CapacitorOhm(hz, 0.005, 0.4e-9, 1e-6); };
    for (const EConnection connection :
         {EConnection::OnePort, EConnection::Series, EConnection::Shunt}) {
        for (const double r2 : {50.0, 75.0}) {
            const CNetworkData data = Measured(connection, 50, r2, ohm);
            const CResult<STwoTerminal> part = TwoTerminalOf(data);
            ASSERT_TRUE(part.Ok()) << WordOf(connection);
            EXPECT_EQ(part->connection, connection);
            ASSERT_EQ(part->hz.size(), data.FrequencyCount());
            for (std::size_t f = 0; f < part->hz.size(); f += 50) {
                // S-parameters of 16 digits resolve 50 ohm / 1e16 near the reference.
                EXPECT_LT(std::abs(part->ohm[f] - ohm(part->hz[f])),
                          1e-9 * std::abs(ohm(part->hz[f])) + 1e-12)
                    << WordOf(connection) << part->hz[f];
            }
            if (connection == EConnection::Series) {
                EXPECT_LT(part->fit.series, 1e-12);
                EXPECT_GT(part->fit.shunt, 0.9);
            }
            const CResult<SConverted> h = ConvertTo(data, EParameter::Y);
            if (connection == EConnection::Series) {
                ASSERT_TRUE(h.Ok());
                EXPECT_EQ(TwoTerminalOf(h->data)->connection, connection);
            }
        }
    }
}

TEST(TwoTerminal, TellsFiltersApart)
{
    CNetworkData line(2, EParameter::S);
    for (int i = 1; i < 20; ++i) { // a matched line turns the phase: neither identity holds
        const TComplex through = std::polar(1.0, -0.4 * i);
        const TComplex s[] = {0, through, through, 0};
        line.Append(i * 1e9, s);
    }
    EXPECT_EQ(TwoTerminalOf(line).Error().text,
              "the two-port is neither a series nor a shunt element of two terminals");
    EXPECT_TRUE(TwoTerminalOf(line, EConnection::Series).Ok());
    EXPECT_FALSE(TwoTerminalOf(CNetworkData(3, EParameter::S)).Ok());
    EXPECT_FALSE(TwoTerminalOf(CNetworkData(2, EParameter::S)).Ok());
}

TEST(TwoTerminal, FindsValues)
{
    const auto values = [](EConnection connection, TComplex (*ohm)(double)) {
        return PartValuesOf(*TwoTerminalOf(Measured(connection, 50, 50, ohm)));
    };
    const SPartValues c =
        values(EConnection::Shunt, [](double hz) { return CapacitorOhm(hz, 0.005, 0.4e-9, 1e-6); });
    EXPECT_EQ(c.kind, EPartKind::Capacitor);
    EXPECT_NEAR(*c.capacitanceF, 1e-6, 1e-11);
    EXPECT_NEAR(*c.resistanceOhm, 0.005, 1e-8);
    EXPECT_NEAR(*c.inductanceH, 0.4e-9, 0.4e-12);
    EXPECT_NEAR(*c.resonanceHz, 1 / (kTwoPi * std::sqrt(0.4e-15)), 1e4);

    const SPartValues l =
        values(EConnection::Series, [](double hz) { return InductorOhm(hz, 0.2, 1e-6, 1e-12); });
    EXPECT_EQ(l.kind, EPartKind::Inductor);
    EXPECT_NEAR(*l.inductanceH, 1e-6, 1e-11);
    EXPECT_NEAR(*l.resistanceOhm, 0.2, 1e-6);
    EXPECT_FALSE(l.capacitanceF.has_value());

    const SPartValues r = values(EConnection::OnePort,
                                 [](double hz) { return InductorOhm(hz, 100, 0.3e-9, 0.02e-12); });
    EXPECT_EQ(r.kind, EPartKind::Resistor);
    EXPECT_NEAR(*r.resistanceOhm, 100, 1e-9);

    // Below resonance only: C is known, ESL and ESR are not.
    const SPartValues low =
        values(EConnection::Series, [](double hz) { return CapacitorOhm(hz, 0.01, 0, 10e-12); });
    EXPECT_NEAR(*low.capacitanceF, 10e-12, 1e-17);
    EXPECT_FALSE(low.inductanceH || low.resistanceOhm || low.resonanceHz);
    EXPECT_EQ(PartValuesOf({}).kind, EPartKind::Unknown);
}

} // namespace
} // namespace zov::network
