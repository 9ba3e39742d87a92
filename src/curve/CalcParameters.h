// SPDX-License-Identifier: Apache-2.0
/// What the names in expressions stand for: parameters with values or expressions of their own,
/// functions, node voltages and currents.
#pragma once

#include "base/Result.h"
#include "curve/CalcPostfix.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zov::curve {

/// A function of the user: `body` with the arguments' values in place of their names.
struct SUserFunction
{
    std::string name;
    std::vector<std::string> arguments;
    std::string body;
};

struct SParameter
{
    std::size_t index = 0; ///< place in the table
    std::optional<double> value;
    std::string expression; ///< when there is no value
};

/// A voltage between nodes or a current.
struct SCircuitVariable
{
    char kind; ///< 'v' or 'i'
    std::string_view first;
    std::string_view second; ///< second node; may be empty
};
/// None when the circuit has no such node.
using FVariable = std::function<std::optional<double>(const SCircuitVariable&)>;

/// Names of parameters are compared exactly, names of functions without regard to case.
class CParameterTable
{
public:
    void Set(std::string_view name, double value);
    /// The expression may name other parameters, also later ones, and is read when it is needed.
    void Set(std::string_view name, std::string_view expression);
    /// Errors: Argument for a name that is no name or that of a given function, and for an argument
    /// that is no name.
    CResult<void> Define(SUserFunction function);

    [[nodiscard]] const SParameter* Find(std::string_view name) const;
    [[nodiscard]] const SUserFunction* FindFunction(std::string_view name) const;
    [[nodiscard]] std::size_t Count() const { return m_parameters.size(); }

    /// What a parameter stands for: its expression, or its value as "%.30e" prints it. Empty when
    /// there is none of that name.
    [[nodiscard]] std::string TextOf(std::string_view name) const;

    FVariable variables;

private:
    struct SHash
    {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const
        {
            return std::hash<std::string_view>()(text);
        }
    };
    template <class T>
    using TNamed = std::unordered_map<std::string, T, SHash, std::equal_to<>>;

    SParameter& Entry(std::string_view name);

    TNamed<SParameter> m_parameters;
    TNamed<SUserFunction> m_functions; ///< by name in lower case
};

} // namespace zov::curve
