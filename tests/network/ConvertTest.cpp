// SPDX-License-Identifier: Apache-2.0
// Conversions against networks whose parameters are known in closed form.
#include "network/Convert.h"

#include "network/MixedMode.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <numbers>

namespace zov::network {
namespace {

using TMatrix = std::vector<TComplex>;

CNetworkData DataOf(EParameter parameter, const TMatrix& matrix, const std::vector<double>& ohm)
{
    CNetworkData data(static_cast<std::uint32_t>(ohm.size()), parameter);
    for (std::size_t p = 0; p < ohm.size(); ++p) {
        data.Ports()[p].referenceOhm = ohm[p];
    }
    data.Append(1e9, matrix);
    return data;
}

/// Largest difference, relative to the largest element.
double Apart(std::span<const TComplex> a, const TMatrix& b)
{
    double apart = 0.0;
    double size = 0.0;
    for (std::size_t i = 0; i < b.size(); ++i) {
        apart = std::max(apart, std::abs(a[i] - b[i]));
        size = std::max(size, std::abs(b[i]));
    }
    return apart / size;
}

/// A network by the parameters that it has; the others do not exist.
struct SNetwork
{
    const char* name;
    std::map<EParameter, TMatrix> forms;
    std::vector<double> ohm;
};

/// A series impedance: V1 - V2 = z I1, I2 = -I1.
SNetwork Series(TComplex z, double r1, double r2)
{
    const TComplex sum = z + r1 + r2;
    const TComplex through = 2.0 * std::sqrt(r1 * r2) / sum;
    return {"series R",
            {{EParameter::S, {(z + r2 - r1) / sum, through, through, (z + r1 - r2) / sum}},
             {EParameter::Y, {1.0 / z, -1.0 / z, -1.0 / z, 1.0 / z}},
             {EParameter::H, {z, 1, -1, 0}},
             {EParameter::G, {0, -1, 1, z}}},
            {r1, r2}};
}

/// A shunt admittance: V1 = V2, I1 + I2 = y V1.
SNetwork Shunt(TComplex y, double r1, double r2)
{
    const TComplex sum = r1 + r2 + y * r1 * r2;
    const TComplex through = 2.0 * std::sqrt(r1 * r2) / sum;
    return {"shunt C",
            {{EParameter::S,
              {(r2 - r1 - y * r1 * r2) / sum, through, through, (r1 - r2 - y * r1 * r2) / sum}},
             {EParameter::Z, {1.0 / y, 1.0 / y, 1.0 / y, 1.0 / y}},
             {EParameter::H, {0, 1, -1, y}},
             {EParameter::G, {y, -1, 1, 0}}},
            {r1, r2}};
}

/// A lossless line of impedance z0 and electrical length theta.
SNetwork Line(double z0, double theta, double r)
{
    const TComplex j(0, 1);
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const TComplex sum = 2.0 * c + j * (z0 / r + r / z0) * s;
    const TComplex reflected = j * (z0 / r - r / z0) * s / sum;
    const TComplex self = -j * z0 * c / s;
    const TComplex mutual = -j * z0 / s;
    return {"ideal line",
            {{EParameter::S, {reflected, 2.0 / sum, 2.0 / sum, reflected}},
             {EParameter::Z, {self, mutual, mutual, self}},
             {EParameter::Y,
              {self / (z0 * z0), -mutual / (z0 * z0), -mutual / (z0 * z0), self / (z0 * z0)}},
             {EParameter::H, {j * z0 * s / c, 1 / c, -1 / c, j * s / (z0 * c)}},
             {EParameter::G, {j * s / (z0 * c), -1 / c, 1 / c, j * z0 * s / c}}},
            {r, r}};
}

/// An ideal transformer: V1 = n V2, I2 = -n I1.
SNetwork Transformer(double n, double r1, double r2)
{
    const double sum = n * n * r2 + r1;
    const TComplex through = 2.0 * n * std::sqrt(r1 * r2) / sum;
    const TComplex reflected = (n * n * r2 - r1) / sum;
    return {"transformer",
            {{EParameter::S, {reflected, through, through, -reflected}},
             {EParameter::H, {0, n, -n, 0}},
             {EParameter::G, {0, -1 / n, 1 / n, 0}}},
            {r1, r2}};
}

/// A matched T attenuator for r that lets through a.
SNetwork Attenuator(double a, double r)
{
    const double arm = r * (1 - a) / (1 + a);
    const double stem = 2 * r * a / (1 - a * a);
    const double all = arm + stem;
    const double det = all * all - stem * stem;
    return {"attenuator",
            {{EParameter::S, {0, a, a, 0}},
             {EParameter::Z, {all, stem, stem, all}},
             {EParameter::Y, {all / det, -stem / det, -stem / det, all / det}},
             {EParameter::H, {det / all, stem / all, -stem / all, 1 / all}},
             {EParameter::G, {1 / all, -stem / all, stem / all, det / all}}},
            {r, r}};
}

TEST(Convert, AgreesWithClosedForms)
{
    const double w = 2 * std::numbers::pi * 1e9;
    const SNetwork networks[] = {
        Series(25.0, 50, 50),          Series(25.0, 50, 75), Shunt({0, w * 1e-12}, 50, 50),
        Shunt({0, w * 1e-12}, 10, 75), Line(75, 0.7, 50),    Transformer(3, 50, 50),
        Transformer(3, 50, 20),        Attenuator(0.5, 50)};
    std::map<std::string, double> worst;
    for (const SNetwork& network : networks) {
        for (const auto& [from, matrix] : network.forms) {
            for (const EParameter to :
                 {EParameter::S, EParameter::Z, EParameter::Y, EParameter::G, EParameter::H}) {
                const std::string what =
                    std::string(network.name) + ' ' + LetterOf(from) + '>' + LetterOf(to);
                const CResult<SConverted> got = ConvertTo(DataOf(from, matrix, network.ohm), to);
                const auto expected = network.forms.find(to);
                if (expected == network.forms.end()) {
                    ASSERT_FALSE(got.Ok()) << what;
                    EXPECT_EQ(got.Error().text, std::string("The derived ") + LetterOf(to) +
                                                    "-parameters are singular at frequencies: "
                                                    "1000000000.000000.")
                        << what;
                    continue;
                }
                ASSERT_TRUE(got.Ok()) << what << ": " << got.Error().text;
                const double apart = Apart(got->data.Matrix(0), expected->second);
                EXPECT_LT(apart, 1e-14) << what;
                worst[network.name] = std::max(worst[network.name], apart);
            }
        }
    }
    for (const auto& [name, apart] : worst) {
        RecordProperty(name, std::to_string(apart * 1e16) + "e-16");
    }
}

/// A star of equal resistors between n ports: Y = (I - 1/n) / r.
TMatrix StarY(std::size_t n, double r)
{
    TMatrix y(n * n, TComplex(-1.0 / (static_cast<double>(n) * r)));
    for (std::size_t i = 0; i < n; ++i) {
        y[i * (n + 1)] += 1.0 / r;
    }
    return y;
}

/// Its S for references r: S = (1 - Y r)(1 + Y r)^-1 = J / 2n, J all ones, as Y r = 1 - J/n has
/// the eigenvalues 1 and 0.
TEST(Convert, AgreesForManyPorts)
{
    for (const std::size_t n : {1U, 2U, 3U, 4U, 9U, 16U}) {
        TMatrix s(n * n, TComplex(1.0 / static_cast<double>(n)));
        const std::vector<double> ohm(n, 20.0);
        const CResult<SConverted> got =
            ConvertTo(DataOf(EParameter::Y, StarY(n, 20.0), ohm), EParameter::S);
        ASSERT_TRUE(got.Ok());
        EXPECT_LT(Apart(got->data.Matrix(0), s), 5e-15) << n; // of 1 / n
        const CResult<SConverted> back = ConvertTo(DataOf(EParameter::S, s, ohm), EParameter::Y);
        ASSERT_TRUE(back.Ok());
        if (n > 1) {
            EXPECT_LT(Apart(back->data.Matrix(0), StarY(n, 20.0)), 1e-14) << n;
        }
        EXPECT_FALSE(ConvertTo(DataOf(EParameter::S, s, ohm), EParameter::Z).Ok()) << n;
    }
}

TEST(Convert, LeavesOutOnlySingularFrequencies)
{
    CNetworkData data(1, EParameter::S);
    for (int i = 0; i < 12; ++i) {
        const TComplex value(i == 3 || i == 7 ? 1.0 : 0.5);
        data.Append(i * 1e6, {&value, 1});
    }
    const CResult<SConverted> got = ConvertTo(data, EParameter::Z);
    ASSERT_TRUE(got.Ok());
    EXPECT_EQ(got->singularHz, (std::vector<double>{3e6, 7e6}));
    EXPECT_EQ(got->data.FrequencyCount(), 10U);
    EXPECT_EQ(got->data.FrequenciesHz()[3], 4e6);
    EXPECT_DOUBLE_EQ(got->data.At(9, 0, 0).real(), 150.0);
    EXPECT_EQ(SingularText(EParameter::Z, std::vector<double>(10, 1.5)),
              "The derived Z-parameters are singular at frequencies: 1.500000, 1.500000, 1.500000, "
              "1.500000, 1.500000, 1.500000, 1.500000, 1.500000 and 2 more.");
}

TEST(Convert, ChangesReferences)
{
    const SNetwork at50 = Line(75, 0.7, 50);
    const SNetwork at75 = Line(75, 0.7, 75);
    const CResult<SConverted> s =
        Renormalise(DataOf(EParameter::S, at50.forms.at(EParameter::S), {50, 50}), {75, 75});
    ASSERT_TRUE(s.Ok());
    EXPECT_LT(Apart(s->data.Matrix(0), at75.forms.at(EParameter::S)), 1e-15);
    // One reference of two, and of three ports where the closed form of the pair is not used.
    const SNetwork unequal = Series(25.0, 50, 20);
    const CResult<SConverted> one = Renormalise(
        DataOf(EParameter::S, Series(25.0, 50, 50).forms.at(EParameter::S), {50, 50}), {50, 20});
    ASSERT_TRUE(one.Ok());
    EXPECT_LT(Apart(one->data.Matrix(0), unequal.forms.at(EParameter::S)), 1e-15);
    const TMatrix pair = Series(25.0, 50, 50).forms.at(EParameter::S);
    const TMatrix& pair20 = unequal.forms.at(EParameter::S);
    const CResult<SConverted> three = Renormalise(
        DataOf(EParameter::S, {pair[0], pair[1], 0, pair[2], pair[3], 0, 0, 0, 0.5}, {50, 50, 50}),
        {50, 20, 50});
    ASSERT_TRUE(three.Ok());
    EXPECT_LT(
        Apart(three->data.Matrix(0), {pair20[0], pair20[1], 0, pair20[2], pair20[3], 0, 0, 0, 0.5}),
        1e-15);
    EXPECT_FALSE(Renormalise(DataOf(EParameter::S, pair, {50, 50}), {50, 0}).Ok());
    // Ohms do not depend on references; values normalised to them do.
    const TMatrix z = {3, 1, 1, 5};
    EXPECT_EQ(Apart(Renormalise(DataOf(EParameter::Z, z, {50, 50}), {1, 2})->data.Matrix(0), z), 0);
    CNetworkData relative = DataOf(EParameter::Z, z, {50, 50});
    relative.Declare(EParameter::Z, ENormalised::Yes);
    EXPECT_EQ(Apart(Normalise(relative, ENormalised::No)->data.Matrix(0), {150, 50, 50, 250}), 0);
    EXPECT_LT(Apart(Renormalise(relative, {25, 100})->data.Matrix(0), {6, 1, 1, 2.5}), 1e-15);
}

TEST(Convert, NormalisesEveryType)
{
    const std::map<EParameter, TMatrix> normalised = {
        {EParameter::Z, {8. / 4, 6. / 6, 6. / 6, 18. / 9}},
        {EParameter::Y, {8. * 4, 6. * 6, 6. * 6, 18. * 9}},
        {EParameter::H, {8. / 4, 6 * 1.5, 6 * 1.5, 18. * 9}},
        {EParameter::G, {8. * 4, 6 / 1.5, 6 / 1.5, 18. / 9}}};
    for (const auto& [parameter, expected] : normalised) {
        const CResult<SConverted> got =
            Normalise(DataOf(parameter, {8, 6, 6, 18}, {4, 9}), ENormalised::Yes);
        ASSERT_TRUE(got.Ok());
        EXPECT_LT(Apart(got->data.Matrix(0), expected), 1e-15) << LetterOf(parameter);
        EXPECT_LT(Apart(Normalise(got->data, ENormalised::No)->data.Matrix(0), {8, 6, 6, 18}),
                  1e-15);
        const CResult<SConverted> s = ConvertTo(got->data, EParameter::S);
        const CResult<SConverted> direct =
            ConvertTo(DataOf(parameter, {8, 6, 6, 18}, {4, 9}), EParameter::S);
        ASSERT_TRUE(s.Ok() && direct.Ok());
        const std::span<const TComplex> same = direct->data.Matrix(0);
        EXPECT_LT(Apart(s->data.Matrix(0), {same.begin(), same.end()}), 1e-14)
            << LetterOf(parameter);
    }
}

std::vector<SPort> Modes(std::initializer_list<SPort> ports)
{
    return {ports};
}
SPort Mode(EPortMode mode, std::uint32_t first, std::uint32_t second)
{
    return {mode, first, second, 50, ""};
}

/// Two uncoupled lines are one line of half the impedance to the common mode and of twice to the
/// differential mode, and the modes do not couple.
TEST(MixedMode, AgreesWithClosedForms)
{
    const SNetwork line = Line(75, 0.7, 50);
    const auto pairOf = [](const TMatrix& m) {
        return TMatrix{m[0], 0, m[1], 0, 0, m[0], 0, m[1], m[2], 0, m[3], 0, 0, m[2], 0, m[3]};
    };
    const auto order =
        Modes({Mode(EPortMode::Differential, 0, 1), Mode(EPortMode::Differential, 2, 3),
               Mode(EPortMode::Common, 0, 1), Mode(EPortMode::Common, 2, 3)});
    const auto blocks = [](const TMatrix& d, const TMatrix& c) {
        return TMatrix{d[0], d[1], 0, 0, d[2], d[3], 0, 0, 0, 0, c[0], c[1], 0, 0, c[2], c[3]};
    };
    const auto scaled = [](TMatrix m, double factor) {
        for (TComplex& value : m) {
            value *= factor;
        }
        return m;
    };
    const std::map<EParameter, std::pair<double, double>> factors = {
        {EParameter::S, {1, 1}}, {EParameter::Z, {2, 0.5}}, {EParameter::Y, {0.5, 2}}};
    for (const auto& [parameter, factor] : factors) {
        const TMatrix& one = line.forms.at(parameter);
        const TMatrix ports = pairOf(one);
        CNetworkData data = DataOf(parameter, ports, {50, 50, 50, 50});
        ASSERT_TRUE(ToModes(data, order).Ok());
        EXPECT_LT(
            Apart(data.Matrix(0), blocks(scaled(one, factor.first), scaled(one, factor.second))),
            1e-15)
            << LetterOf(parameter);
        const CResult<SConverted> z = ConvertTo(data, EParameter::Z);
        ASSERT_TRUE(z.Ok());
        const TMatrix& ohms = line.forms.at(EParameter::Z);
        EXPECT_LT(Apart(z->data.Matrix(0), blocks(scaled(ohms, 2), scaled(ohms, 0.5))), 1e-14);
        ASSERT_TRUE(ToSingleEnded(data).Ok());
        EXPECT_LT(Apart(data.Matrix(0), ports), 1e-15);
    }
}

TEST(MixedMode, ReordersAndRefuses)
{
    CNetworkData data = DataOf(EParameter::S, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {50, 50, 50});
    ASSERT_TRUE(
        ToModes(data, Modes({Mode(EPortMode::SingleEnded, 2, 2), Mode(EPortMode::SingleEnded, 0, 0),
                             Mode(EPortMode::SingleEnded, 1, 1)}))
            .Ok());
    EXPECT_EQ(Apart(data.Matrix(0), {9, 7, 8, 3, 1, 2, 6, 4, 5}), 0.0);
    ASSERT_TRUE(ToSingleEnded(data).Ok());
    EXPECT_EQ(Apart(data.Matrix(0), {1, 2, 3, 4, 5, 6, 7, 8, 9}), 0.0);

    const auto half =
        Modes({Mode(EPortMode::Differential, 0, 1), Mode(EPortMode::SingleEnded, 0, 0),
               Mode(EPortMode::SingleEnded, 2, 2)});
    EXPECT_EQ(ToModes(data, half).Error().text, "Incorrect mixed-mode order.");
    data.Ports()[1].referenceOhm = 75;
    const auto pair = Modes({Mode(EPortMode::Differential, 0, 1), Mode(EPortMode::Common, 0, 1),
                             Mode(EPortMode::SingleEnded, 2, 2)});
    EXPECT_EQ(ToModes(data, pair).Error().text,
              "The reference impedances are different for the mixed-mode S parameter.");
}

} // namespace
} // namespace zov::network
