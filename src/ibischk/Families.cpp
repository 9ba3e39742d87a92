// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Check.h"
#include "ibischk/Family.h"

#include <array>

namespace zov::ibischk {

namespace {

// What stands per component, models and their tables, then packages, boards and modules: tables are
// read before what compares them.
constexpr const SFamily* kFamilies[] = {
    &kHdrFamily,      &kCmpntFamily,     &kPkgFamily,      &kPinFamily,    &kDifpinFamily,
    &kSswchFamily,    &kClockpinsFamily, &kBuslabelFamily, &kDspadFamily,  &kNodeFamily,
    &kPdndmnFamily,   &kMselFamily,      &kMdlFamily,      &kCrvFamily,    &kWvfrmFamily,
    &kRampFamily,     &kRcvthFamily,     &kSubmdlFamily,   &kAlgmodFamily, &kCircuitFamily,
    &kTestdataFamily, &kTestloadFamily,  &kPkgmdlFamily,   &kMtxFamily,    &kEbdmdlFamily,
    &kImsmdlFamily,   &kEmdFamily,       &kEmdsetFamily,
};

std::array<SHandler, kKeywordCount> CollectHandlers()
{
    std::array<SHandler, kKeywordCount> handlers{};
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
