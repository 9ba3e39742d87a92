// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "network/NetworkData.h"

#include <string_view>

namespace zov::network {

/// Takes the comments of a header in their order: what the writer put there comes back as what it
/// was (origin, names, flag, user comments), other tools' lines as comments.
class CHeaderComments
{
public:
    /// @param text  behind the "!"
    void Add(std::string_view text);
    /// Into the traits and the names, once the header is read.
    void Finish(SFileTraits& traits, std::vector<std::string>& names, std::uint32_t ports);

private:
    enum class EPart
    {
        First,
        Names,
        Program,
        Free,
        User
    };
    bool AddOwn(std::string_view text);
    void AddFree(std::string_view text);

    EPart m_part = EPart::First;
    std::string m_origin;
    std::vector<std::string> m_names;       ///< of our writer's form
    std::vector<std::string> m_listedNames; ///< of "Port[n] = name"
    std::vector<std::string> m_comments;
    std::vector<std::string> m_userComments;
    int m_flag = 0;
};

} // namespace zov::network
