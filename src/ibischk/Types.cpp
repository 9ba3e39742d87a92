// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Types.h"

namespace zov::ibischk {

std::string_view ExtensionOf(EFileType type)
{
    switch (type) {
    case EFileType::Ibs:
        return ".ibs";
    case EFileType::Pkg:
        return ".pkg";
    case EFileType::Ebd:
        return ".ebd";
    case EFileType::Ami:
        return ".ami";
    case EFileType::Parameters:
        return "";
    case EFileType::Ims:
        return ".ims";
    case EFileType::Emd:
        return ".emd";
    case EFileType::Ems:
        return ".ems";
    }
    return "";
}

std::string_view VersionText(EVersion version)
{
    constexpr std::string_view kTexts[] = {"",    "",    "2.1", "3.2", "4.2", "5.1",
                                           "6.0", "6.1", "7.0", "7.1", "7.2"};
    return kTexts[static_cast<std::size_t>(version)];
}

} // namespace zov::ibischk
