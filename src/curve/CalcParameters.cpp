// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcParameters.h"

#include "base/Text.h"
#include "curve/CalcLexer.h"
#include "curve/CurveNumber.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov::curve {

namespace {

bool IsName(std::string_view text)
{
    return !text.empty() && IsAlpha(text.front()) &&
           std::all_of(text.begin(), text.end(), IsNameCharacter) && !FindFunction(text);
}

} // namespace

SParameter& CParameterTable::Entry(std::string_view name)
{
    const auto found = m_parameters.find(name);
    if (found != m_parameters.end()) {
        return found->second;
    }
    SParameter& made = m_parameters[std::string(name)];
    made.index = m_parameters.size() - 1;
    return made;
}

void CParameterTable::Set(std::string_view name, double value)
{
    Entry(name).value = value;
}

void CParameterTable::Set(std::string_view name, std::string_view expression)
{
    SParameter& entry = Entry(name);
    entry.value.reset();
    entry.expression = expression;
}

CResult<void> CParameterTable::Define(SUserFunction function)
{
    const auto refuse = [](std::string_view name) {
        return Fail(EErr::Argument,
                    fmt::format("'{}' can't be the name of a function or of an argument", name));
    };
    const std::string key = LowerCase(function.name);
    if (!IsName(key) || key == "v" || key == "i") {
        return refuse(function.name);
    }
    for (const std::string& argument : function.arguments) {
        if (!IsName(argument)) {
            return refuse(argument);
        }
    }
    m_functions[key] = std::move(function);
    return {};
}

const SParameter* CParameterTable::Find(std::string_view name) const
{
    const auto found = m_parameters.find(name);
    return found == m_parameters.end() ? nullptr : &found->second;
}

const SUserFunction* CParameterTable::FindFunction(std::string_view name) const
{
    if (m_functions.empty()) {
        return nullptr;
    }
    const auto found = m_functions.find(LowerCase(name));
    return found == m_functions.end() ? nullptr : &found->second;
}

std::string CParameterTable::TextOf(std::string_view name) const
{
    const SParameter* parameter = Find(name);
    if (parameter == nullptr) {
        return {};
    }
    return parameter->value ? LongNumberText(*parameter->value) : parameter->expression;
}

} // namespace zov::curve
