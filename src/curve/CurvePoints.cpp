// SPDX-License-Identifier: Apache-2.0
#include "curve/CurvePoints.h"

#include <algorithm>

namespace zov::curve {

SCurvePoint CCurvePoints::At(std::size_t index) const
{
    const auto number = [&](std::size_t column) {
        return column < m_used ? m_columns[column][index] : 0.0;
    };
    return {number(0),
            {std::complex{number(1), number(2)}, std::complex{number(3), number(4)},
             std::complex{number(5), number(6)}}};
}

void CCurvePoints::AddOther(std::span<const double> numbers)
{
    numbers = numbers.first(std::min(numbers.size(), kPointNumbers));
    const std::size_t count = Count();
    for (; m_used < numbers.size(); ++m_used) {
        m_columns[m_used].resize(count, 0.0);
    }
    for (std::size_t i = 0; i < m_used; ++i) {
        m_columns[i].push_back(i < numbers.size() ? numbers[i] : 0.0);
    }
}

void CCurvePoints::Add(const SCurvePoint& point)
{
    const std::array<double, kPointNumbers> numbers = {point.x,
                                                       point.values[0].real(),
                                                       point.values[0].imag(),
                                                       point.values[1].real(),
                                                       point.values[1].imag(),
                                                       point.values[2].real(),
                                                       point.values[2].imag()};
    std::size_t count = kPointNumbers;
    while (count > std::max<std::size_t>(m_used, 1) && numbers[count - 1] == 0.0) {
        --count;
    }
    Add(std::span(numbers).first(count));
}

void CCurvePoints::Reserve(std::size_t count, std::size_t numbers)
{
    for (std::size_t i = 0; i < std::min(numbers, kPointNumbers); ++i) {
        m_columns[i].reserve(count);
    }
}

void CCurvePoints::Trim()
{
    for (std::vector<double>& column : m_columns) {
        if (column.capacity() - column.size() > column.size() / 4) {
            column.shrink_to_fit();
        }
    }
}

bool operator==(const CCurvePoints& a, const CCurvePoints& b)
{
    if (a.Count() != b.Count()) {
        return false;
    }
    for (std::size_t i = 0; i < a.Count(); ++i) {
        if (a.At(i) != b.At(i)) {
            return false;
        }
    }
    return true;
}

} // namespace zov::curve
