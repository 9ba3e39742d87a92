// SPDX-License-Identifier: Apache-2.0
/// Names that are looked up: pins, models, sets. Exact first; a name that differs only in case is
/// found too, so that a message can say so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace zov::ibischk {

class CNameIndex
{
public:
    /// Files a name under a number, normally its place in a vector.
    /// @param name  must outlive the index
    /// @return the number under which the same name was filed before; it stays there
    std::optional<std::size_t> Add(std::string_view name, std::size_t number);

    /// Exact comparison.
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view name) const;
    /// Without regard to case: for names that Find didn't find.
    [[nodiscard]] std::optional<std::size_t> FindNoCase(std::string_view name) const;

    [[nodiscard]] std::size_t Size() const { return m_exact.size(); }
    void Clear();

private:
    struct SHashNoCase
    {
        std::size_t operator()(std::string_view name) const;
    };
    struct SEqualNoCase
    {
        bool operator()(std::string_view a, std::string_view b) const;
    };

    std::unordered_map<std::string_view, std::size_t> m_exact;
    // Built when it is first asked for: files whose names are right never pay for it.
    mutable std::unordered_map<std::string_view, std::size_t, SHashNoCase, SEqualNoCase> m_folded;
};

} // namespace zov::ibischk
