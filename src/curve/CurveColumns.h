// SPDX-License-Identifier: Apache-2.0
/// The columns that an expression over curves asks for, all on the abscissas of one curve.
#pragma once

#include "curve/CalcCompiler.h"
#include "curve/CurveSet.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace zov::curve {

enum class ECurvePart : std::uint8_t
{
    Abscissa,
    Real,
    Imaginary,
    Magnitude,
    Phase ///< in degrees
};

class CCurveColumns
{
public:
    CCurveColumns(const CCurveSet& set, const CParameterTable& parameters)
        : m_set(set)
        , m_parameters(parameters)
    {
    }

    /// Answers the compiler. Throws CCalcException for a complex curve whose name stands alone, for
    /// a name of several curves, and for a value that there is not.
    [[nodiscard]] std::optional<std::size_t> Find(const SColumnRequest& request);

    /// Makes the columns once all are asked for.
    /// Throws CCalcException when the curves don't fit together.
    void Make();

    /// After Make: the abscissas and the columns, one value per point.
    [[nodiscard]] const std::vector<double>& Abscissas() const { return m_x; }
    [[nodiscard]] std::span<const double* const> Columns() const { return m_columns; }
    [[nodiscard]] const std::vector<std::string>& Notes() const { return m_notes; }

private:
    struct SWanted
    {
        std::size_t curve = 0;
        ECurvePart part = ECurvePart::Real;
        std::size_t value = 0; ///< 0 to 2
    };

    [[nodiscard]] std::optional<std::size_t> FindCurve(std::string_view name) const;
    [[nodiscard]] std::optional<std::size_t> Want(const SWanted& wanted);
    [[nodiscard]] std::string NameOfCurve(std::size_t curve) const;
    [[nodiscard]] const CCurvePoints& PointsOf(std::size_t curve) const;
    void TakeCommonPoints(const std::vector<std::size_t>& others);
    [[nodiscard]] const double* MakeColumn(const SWanted& wanted);
    [[nodiscard]] const double* Number(std::size_t curve, std::size_t number);

    const CCurveSet& m_set;
    const CParameterTable& m_parameters;
    std::vector<SWanted> m_wanted;
    std::size_t m_base = 0;           ///< curve whose abscissas count
    std::vector<std::size_t> m_kept;  ///< points of it, when some are left out
    std::vector<bool> m_interpolated; ///< by curve of the set
    std::vector<double> m_x;
    std::deque<std::vector<double>> m_made; ///< columns that no curve has as they are
    std::vector<const double*> m_columns;
    std::vector<std::string> m_notes;
};

} // namespace zov::curve
