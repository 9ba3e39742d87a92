// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiWords.h"

#include <algorithm>
#include <iterator>

namespace zov::ibischk {

namespace {

template <class T>
struct SWord
{
    std::string_view text;
    T word;
};

constexpr SWord<EAmiUsage> kUsages[] = {{"In", EAmiUsage::In},
                                        {"Out", EAmiUsage::Out},
                                        {"InOut", EAmiUsage::InOut},
                                        {"Info", EAmiUsage::Info},
                                        {"Dep", EAmiUsage::Dep}};
constexpr SWord<EAmiType> kTypes[] = {{"Float", EAmiType::Float},   {"Integer", EAmiType::Integer},
                                      {"String", EAmiType::String}, {"Boolean", EAmiType::Boolean},
                                      {"Tap", EAmiType::Tap},       {"UI", EAmiType::UI}};
constexpr SWord<EAmiFormat> kFormats[] = {{"Value", EAmiFormat::Value},
                                          {"Range", EAmiFormat::Range},
                                          {"List", EAmiFormat::List},
                                          {"Corner", EAmiFormat::Corner},
                                          {"Increment", EAmiFormat::Increment},
                                          {"Steps", EAmiFormat::Steps},
                                          {"Table", EAmiFormat::Table},
                                          {"Gaussian", EAmiFormat::Gaussian},
                                          {"Dual-Dirac", EAmiFormat::DualDirac},
                                          {"DjRj", EAmiFormat::DjRj}};

template <class T, std::size_t N>
std::optional<T> Find(const SWord<T> (&words)[N], std::string_view text)
{
    const auto* found = std::ranges::find(words, text, &SWord<T>::text);
    return found == std::end(words) ? std::nullopt : std::optional<T>(found->word);
}

template <class T, std::size_t N>
std::string_view TextOf(const SWord<T> (&words)[N], T word)
{
    const auto* found = std::ranges::find(words, word, &SWord<T>::word);
    return found == std::end(words) ? std::string_view() : found->text;
}

} // namespace

std::optional<EAmiUsage> FindAmiUsage(std::string_view word)
{
    return Find(kUsages, word);
}
std::optional<EAmiType> FindAmiType(std::string_view word)
{
    return Find(kTypes, word);
}
std::optional<EAmiFormat> FindAmiFormat(std::string_view word)
{
    return Find(kFormats, word);
}
std::string_view WordOf(EAmiUsage usage)
{
    return TextOf(kUsages, usage);
}
std::string_view WordOf(EAmiType type)
{
    return TextOf(kTypes, type);
}
std::string_view WordOf(EAmiFormat format)
{
    return TextOf(kFormats, format);
}

} // namespace zov::ibischk
