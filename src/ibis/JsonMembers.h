// SPDX-License-Identifier: Apache-2.0
/// Reading JSON objects member by member, with messages that name the place.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

using TJson = nlohmann::ordered_json;

/// One object of a document; the first fault sticks.
class CMembers
{
public:
    /// @param where  how messages call the object
    /// @param known  names that its members may have; any other is a fault
    CMembers(const TJson& object, std::string where, const std::vector<std::string>& known);

    /// A text, or a number as its shortest text; left as it is when the member is not there.
    void Text(const char* name, std::string& out);
    /// Calls `take(element, "pins 3")` for each element of an array.
    template <class F>
    void Each(const char* name, F&& take)
    {
        const TJson* list = List(name);
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
            take((*list)[i], std::string(name) + ' ' + std::to_string(i + 1));
        }
    }
    /// Null when the member is not there.
    [[nodiscard]] const TJson* Find(const char* name) const;
    void RequireVersion(int version);

    /// "pins 3 `why`"
    void Refuse(const std::string& why);
    /// Takes over the fault of an object inside.
    void Refuse(const CMembers& inner);
    /// Empty for none.
    [[nodiscard]] const std::string& Problem() const { return m_problem; }

private:
    [[nodiscard]] const TJson* List(const char* name);

    const TJson& m_object;
    std::string m_where;
    std::string m_problem;
};

} // namespace zov::ibis
