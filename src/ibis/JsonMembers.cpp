// SPDX-License-Identifier: Apache-2.0
#include "ibis/JsonMembers.h"

#include "base/Number.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov::ibis {

CMembers::CMembers(const TJson& object, std::string where, const std::vector<std::string>& known)
    : m_object(object)
    , m_where(std::move(where))
{
    if (!object.is_object()) {
        Refuse("is no object");
        return;
    }
    for (const auto& [name, value] : object.items()) {
        if (std::ranges::find(known, name) == known.end()) {
            Refuse("has no member '" + name + "'");
        }
    }
}

const TJson* CMembers::Find(const char* name) const
{
    if (!m_object.is_object()) {
        return nullptr;
    }
    const auto found = m_object.find(name);
    return found == m_object.end() ? nullptr : &*found;
}

void CMembers::Text(const char* name, std::string& out)
{
    const TJson* value = Find(name);
    if (value == nullptr) {
        return;
    }
    if (value->is_string()) {
        out = value->get<std::string>();
    } else if (value->is_number()) {
        out = FormatShortest(value->get<double>());
    } else {
        Refuse(fmt::format("has a member '{}' that is no text", name));
    }
}

const TJson* CMembers::List(const char* name)
{
    const TJson* value = Find(name);
    if (value != nullptr && !value->is_array()) {
        Refuse(fmt::format("has a member '{}' that is no list", name));
        return nullptr;
    }
    return value;
}

void CMembers::RequireVersion(int version)
{
    const TJson* found = Find("version");
    if (found == nullptr || *found != version) {
        Refuse(fmt::format("needs \"version\": {}", version));
    }
}

void CMembers::Refuse(const std::string& why)
{
    if (m_problem.empty()) {
        m_problem = m_where + ' ' + why;
    }
}

void CMembers::Refuse(const CMembers& inner)
{
    if (m_problem.empty()) {
        m_problem = inner.m_problem;
    }
}

} // namespace zov::ibis
