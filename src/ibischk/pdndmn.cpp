// SPDX-License-Identifier: Apache-2.0
#include "ibischk/pdndmn.h"

#include "ibischk/cmn.h"

namespace zov::ibischk {

namespace {

constexpr SHandler kHandlers[] = {
    {EKeyword::PDNDomain, nullptr, &PassOver, nullptr},
    {EKeyword::EndPDNDomain, nullptr, nullptr, nullptr},
    {EKeyword::PDNModel, nullptr, &PassOver, nullptr},
    {EKeyword::EndPDNModel, nullptr, nullptr, nullptr},
};

} // namespace

const SFamily kPdndmnFamily = {"pdndmn", kHandlers, {}, nullptr};

} // namespace zov::ibischk
