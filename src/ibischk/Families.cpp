// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Check.h"
#include "ibischk/Family.h"

#include <array>

namespace zov::ibischk {

namespace {

// The order of their steps at the end of a section and of the file: tables before the section that
// holds them, what marks something as used before what tells that it isn't (cmpnt).
constexpr const SFamily* kFamilies[] = {
    &kHdrFamily,     &kPinFamily,       &kPkgFamily,      &kDifpinFamily,   &kMselFamily,
    &kSswchFamily,   &kClockpinsFamily, &kBuslabelFamily, &kDspadFamily,    &kPdndmnFamily,
    &kCrvFamily,     &kWvfrmFamily,     &kRampFamily,     &kRcvthFamily,    &kAlgmodFamily,
    &kMdlFamily,     &kSubmdlFamily,    &kTestdataFamily, &kTestloadFamily, &kNodeFamily,
    &kCircuitFamily, &kCmpntFamily,     &kPkgmdlFamily,   &kMtxFamily,      &kEbdmdlFamily,
    &kImsmdlFamily,  &kEmdFamily,       &kEmdsetFamily,
};

std::array<SHandler, kKeywordCount> CollectHandlers()
{
    std::array<SHandler, kKeywordCount> handlers{};
    handlers.fill({EKeyword::NotKey, nullptr, nullptr, nullptr});
    for (const SFamily* family : kFamilies) {
        for (const SHandler& handler : family->handlers) {
            handlers[static_cast<std::size_t>(handler.keyword)] = handler;
        }
    }
    return handlers;
}

} // namespace

std::span<const SFamily* const> Families()
{
    return kFamilies;
}

const SHandler& HandlerOf(EKeyword code)
{
    static const std::array<SHandler, kKeywordCount> kHandlers = CollectHandlers();
    return kHandlers[static_cast<std::size_t>(code)];
}

void CloseSection(SCheck& check, EScope scope)
{
    for (const SFamily* family : kFamilies) {
        for (const SSectionHandler& section : family->sections) {
            if (section.scope == scope) {
                section.close(check);
            }
        }
    }
}

void FinishFamilies(SCheck& check)
{
    for (const SFamily* family : kFamilies) {
        if (family->finish != nullptr) {
            family->finish(check);
        }
    }
}

void PassOver(SCheck& /*check*/, const SLine& /*line*/)
{
}

} // namespace zov::ibischk
