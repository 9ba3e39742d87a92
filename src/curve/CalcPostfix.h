// SPDX-License-Identifier: Apache-2.0
/// An expression in postfix form: operands first, then what is done with them.
#pragma once

#include "curve/CalcOperators.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

enum class EItem : std::uint8_t
{
    Number,
    Name,     ///< parameter, curve, argument or "$" reference
    Operator, ///< operator or given function
    UserCall, ///< function of the caller's table
    Variable  ///< "v(" or "i(" with its nodes, or a part of a complex curve, "mag(" and the like
};

struct SPostfixItem
{
    EItem item = EItem::Number;
    EOp op = EOp::Plus;
    int operands = 0; ///< of a user function
    double number = 0.0;
    std::string_view text;   ///< number, name; of a call or variable the name without "("
    std::string_view first;  ///< node or curve of a variable
    std::string_view second; ///< second node of "v(", number of a curve's value; may be empty
};

/// A parsed expression. The texts of its items stay valid as long as it lives, also when it is
/// moved.
class CPostfix
{
public:
    CPostfix() = default;
    /// @param owner  keeps what the texts of the items point to
    CPostfix(std::shared_ptr<const void> owner, std::vector<SPostfixItem> items)
        : m_owner(std::move(owner))
        , m_items(std::move(items))
    {
    }

    [[nodiscard]] std::span<const SPostfixItem> Items() const { return m_items; }
    /// The list as texts: numbers and names as written, operators, "-@" and "+@", functions. A
    /// call of a user function is its name with "(", behind its operands; a variable is "v(", its
    /// nodes, ")".
    [[nodiscard]] std::vector<std::string> Texts() const;

private:
    std::shared_ptr<const void> m_owner;
    std::vector<SPostfixItem> m_items;
};

} // namespace zov::curve
