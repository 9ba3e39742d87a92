// SPDX-License-Identifier: Apache-2.0
/// Numbers with a unit as exchange files hold them, millions of them and nearly all with the same
/// unit.
#pragma once

#include "core/Units.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace zov {

/// Reads values of one attribute. The same answers as ParseQuantity, which it asks for everything
/// that is not a short decimal number with the unit that stood there last.
class CQuantityReader
{
public:
    explicit CQuantityReader(EQuantity quantity = EQuantity::None)
        : m_quantity(quantity)
    {
    }
    [[nodiscard]] std::optional<double> Read(std::string_view text);

private:
    static constexpr std::uint64_t kNoSuffix = ~std::uint64_t{0};

    std::optional<double> ReadSlowly(std::string_view text, std::uint64_t suffix,
                                     std::size_t suffixLength);

    EQuantity m_quantity;
    std::uint64_t m_suffix = kNoSuffix; ///< characters of the last unit, packed
    int m_exponent = 0;                 ///< its power of ten
};

} // namespace zov
