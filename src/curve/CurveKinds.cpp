// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveKinds.h"

#include "base/Text.h"

#include <array>

namespace zov::curve {

namespace {

constexpr std::array kBanners = {
    SBanner{"*******Voltage*********", EKind::Voltage},
    SBanner{"*******VSWR*********", EKind::Vswr},
    SBanner{"*******ERL*********", EKind::Erl},
    SBanner{"*******Frequency Domain Parameters*********", EKind::FrequencyDomain},
};

constexpr std::array<std::string_view, 5> kStyleWords = {"REAL", "DASH", "DOT", "DASHDOT",
                                                         "DASHDOTDOT"};

struct SRename
{
    std::string_view inFile;
    std::string_view stored;
};
constexpr std::array kRenames = {
    SRename{"kz_real_imag", kPropagationName},
    SRename{"Zc_real_imag", kImpedanceName},
};

constexpr std::string_view kDiff = "Diff(";
constexpr std::string_view kComm = "Comm(";

bool Holds(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

} // namespace

std::string_view NameOf(EKind kind)
{
    switch (kind) {
    case EKind::FrequencyDomain:
        return "frequency-domain parameters";
    case EKind::MixedMode:
        return "mixed-mode parameters";
    case EKind::Voltage:
        return "voltage";
    case EKind::VoltageFullHeader:
        return "voltage with full headers";
    case EKind::Erl:
        return "ERL";
    case EKind::Vswr:
        return "VSWR";
    case EKind::Fixed:
        break;
    }
    return "any";
}

std::string_view StyleWord(ELineStyle style)
{
    return kStyleWords[static_cast<std::size_t>(style)];
}

std::optional<ELineStyle> FindStyle(std::string_view word)
{
    for (std::size_t i = 0; i < kStyleWords.size(); ++i) {
        if (EqualsNoCase(word, kStyleWords[i])) {
            return static_cast<ELineStyle>(i);
        }
    }
    return std::nullopt;
}

std::string_view StoredValueName(std::string_view nameInFile)
{
    for (const SRename& rename : kRenames) {
        if (EqualsNoCase(nameInFile, rename.inFile)) {
            return rename.stored;
        }
    }
    return nameInFile;
}

EValueClass ClassOf(std::string_view valueName)
{
    if (EqualsNoCase(valueName, kImpedanceName)) {
        return EValueClass::Impedance;
    }
    return EqualsNoCase(valueName, kPropagationName) ? EValueClass::Propagation : EValueClass::None;
}

bool NamesMode(std::string_view name, std::string_view valueName)
{
    return Holds(name, kDiff) || Holds(name, kComm) || Holds(valueName, kDiff) ||
           Holds(valueName, kComm);
}

EModePair ModesOf(std::string_view name, std::string_view valueName)
{
    if (Holds(name, kDiff)) {
        return Holds(valueName, kDiff)   ? EModePair::DiffDiff
               : Holds(valueName, kComm) ? EModePair::DiffComm
                                         : EModePair::None;
    }
    if (Holds(name, kComm)) {
        return Holds(valueName, kDiff)   ? EModePair::CommDiff
               : Holds(valueName, kComm) ? EModePair::CommComm
                                         : EModePair::None;
    }
    return EModePair::None;
}

std::span<const SBanner> Banners()
{
    return kBanners;
}

std::string_view BannerOf(EKind kind)
{
    if (kind == EKind::VoltageFullHeader) {
        kind = EKind::Voltage;
    }
    for (const SBanner& banner : kBanners) {
        if (banner.kind == kind) {
            return banner.text;
        }
    }
    return kBanners.back().text;
}

} // namespace zov::curve
