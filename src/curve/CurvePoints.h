// SPDX-License-Identifier: Apache-2.0
/// The points of a curve, a column for each of their seven numbers, so that plots and expressions
/// read them where they lie.
#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <span>
#include <vector>

namespace zov::curve {

/// x and three complex values; what a file does not give is zero.
struct SCurvePoint
{
    double x = 0.0;
    std::array<std::complex<double>, 3> values{};

    friend bool operator==(const SCurvePoint&, const SCurvePoint&) = default;
};

/// Numbers of a point: 0 is x, 1 and 2 are real and imaginary part of the first value, and so on.
constexpr std::size_t kPointNumbers = 7;

class CCurvePoints
{
public:
    [[nodiscard]] std::size_t Count() const { return m_columns[0].size(); }
    [[nodiscard]] bool Empty() const { return Count() == 0; }
    /// Number `which` (0 to 6) of every point; empty when it is zero throughout because no point
    /// ever gave it.
    [[nodiscard]] std::span<const double> Column(std::size_t which) const
    {
        return m_columns[which];
    }
    [[nodiscard]] SCurvePoint At(std::size_t index) const;
    /// How many of the columns are kept, x included: the highest that any point gave.
    [[nodiscard]] std::size_t Columns() const { return m_used; }

    /// Adds a point of up to seven numbers; missing ones are zero.
    void Add(std::span<const double> numbers)
    {
        if (numbers.size() == m_used) {
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                m_columns[i].push_back(numbers[i]);
            }
        } else {
            AddOther(numbers);
        }
    }
    void Add(const SCurvePoint& point);
    /// Room for `count` points of `numbers` numbers. Only a hint.
    void Reserve(std::size_t count, std::size_t numbers);
    /// Gives back room beyond the points when it is worth it.
    void Trim();

    friend bool operator==(const CCurvePoints& a, const CCurvePoints& b);

private:
    void AddOther(std::span<const double> numbers);

    std::array<std::vector<double>, kPointNumbers> m_columns;
    std::size_t m_used = 1;
};

} // namespace zov::curve
