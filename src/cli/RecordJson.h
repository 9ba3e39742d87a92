// SPDX-License-Identifier: Apache-2.0
/// Every property of a record as JSON, named as the exchange file names them. Numbers are in SI
/// units, tolerances are fractions; what a record does not hold is left out.
#pragma once

#include "cli/Reporting.h"
#include "core/ZovRcdProps.h"

#include <string_view>

namespace zov::cli {

[[nodiscard]] TJson PropertiesJson(const CZovRcdProps& record);

/// Quantity of a value by the last part of its name: "Cnom", "TotalCurrent"; None for plain
/// numbers and unknown names.
[[nodiscard]] EQuantity QuantityOfName(std::string_view name);

} // namespace zov::cli
