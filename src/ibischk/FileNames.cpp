// SPDX-License-Identifier: Apache-2.0
// Which names a file may have. Up to 6.1 they had to survive every operating system of their time:
// short, lower case, one point. From 7.0 a name may lead into folders below.
#include "base/Text.h"
#include "ibischk/cmn.h"

#include <algorithm>

namespace zov::ibischk {

namespace {

constexpr std::size_t kExtensionLimit = 3;
constexpr std::size_t kFolderLimit = 64;

bool LegalCharacter(char c)
{
    return IsAlpha(c) || IsDigit(c) ||
           std::string_view("_^$~!#%&-{})(@'`.").find(c) != std::string_view::npos;
}

struct SNameCheck
{
    SCheck& check;
    std::string_view name;
    EFileName role;
    SPlace place;
    bool good = true;

    template <class... T>
    void Error(int code, const T&... args)
    {
        check.report.ErrorAt(place, code, args...);
        good = false;
    }

    void Characters(std::string_view alsoLegal)
    {
        for (const char c : name) {
            if (!LegalCharacter(c) && alsoLegal.find(c) == std::string_view::npos) {
                Error(1927, name, static_cast<int>(static_cast<unsigned char>(c)));
                return;
            }
        }
    }

    void Case()
    {
        const auto upper = std::ranges::find_if(name, [](char c) { return c >= 'A' && c <= 'Z'; });
        if (upper == name.end()) {
            return;
        }
        if (role == EFileName::Declared) {
            Error(1010, name, *upper);
        } else {
            check.report.WarningAt(place, 901, name);
        }
    }

    void Stem(std::string_view stem, std::size_t length, std::size_t limit)
    {
        if (stem.empty()) {
            Error(1929, name);
        }
        if (length <= limit) {
            return;
        }
        if (role == EFileName::Referenced) {
            Error(1925, name, length, limit);
        } else {
            check.report.WarningAt(place, 1925, name, length, limit);
        }
    }

    void Before70()
    {
        Case();
        // A folder is told below; its separator must not be told as a character too.
        Characters("/");
        const std::size_t point = name.find('.');
        const std::string_view stem = name.substr(0, point);
        Stem(stem, stem.size(), LimitsOf(check.state.version).fileStem);
        const std::string_view extension =
            point == std::string_view::npos ? std::string_view() : name.substr(point + 1);
        if (extension.empty() || extension.size() > kExtensionLimit ||
            name.find('/') != std::string_view::npos ||
            extension.find('.') != std::string_view::npos) {
            check.report.WarningAt(place, 1930, name);
        }
    }

    void Sequences()
    {
        constexpr std::string_view kSequences[] = {"\\", "..", "//", "./", ":"};
        for (const std::string_view sequence : kSequences) {
            if (name.find(sequence) != std::string_view::npos) {
                Error(1928, name, sequence);
                return;
            }
        }
        if (check.state.AtLeast(EVersion::V71) && name.ends_with('.')) {
            Error(1928, name, ".");
        }
    }

    void From70()
    {
        if (name.starts_with('/')) {
            Error(1926, name);
        }
        Sequences();
        Characters("/\\:");
        const std::size_t slash = name.rfind('/');
        const std::size_t folder = slash == std::string_view::npos ? 0 : slash;
        const std::string_view last =
            slash == std::string_view::npos ? name : name.substr(slash + 1);
        Stem(last.substr(0, last.rfind('.')), std::max(last.size(), folder),
             std::min(kFolderLimit, LimitsOf(check.state.version).fileStem));
    }
};

} // namespace

bool CheckFileName(SCheck& check, std::string_view name, EFileName role, SPlace place)
{
    SNameCheck names{check, name, role, place};
    if (check.state.AtLeast(EVersion::V70)) {
        names.From70();
    } else {
        names.Before70();
    }
    return names.good;
}

} // namespace zov::ibischk
