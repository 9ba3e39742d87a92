// SPDX-License-Identifier: Apache-2.0
/// Network data from one parameter type, normalisation and set of references to another.
///
///     CResult<SConverted> z = ConvertTo(data, EParameter::Z);
#pragma once

#include "base/Result.h"
#include "network/FormMap.h"
#include "network/NetworkData.h"

namespace zov::network {

struct SConverted
{
    CNetworkData data;              ///< without the frequencies at which it is singular
    std::vector<double> singularHz; ///< those
};

/// "The derived Z-parameters are singular at frequencies: 1000000.000000." with one frequency or
/// more, in Hz; of many the first ones and their number.
[[nodiscard]] std::string SingularText(EParameter parameter, const std::vector<double>& hz);

/// What the data's values are, by its references and declaration.
[[nodiscard]] SForm FormOf(const CNetworkData& data);

/// Mixed-mode data is converted by way of its single-ended ports and has its modes again
/// afterwards. Frequencies are shared over the processors when there is enough to do.
/// Errors: Singular (SingularText) when nothing is left; Argument: a reference that is not above 0,
/// G or H with other than two ports or with mixed modes.
CResult<SConverted> Convert(CNetworkData data, const SForm& to);

/// The same with the data's references, values not normalised.
CResult<SConverted> ConvertTo(CNetworkData data, EParameter parameter);

/// The same type with values as in version 1 files (Yes) or in ohm and siemens (No).
CResult<SConverted> Normalise(CNetworkData data, ENormalised normalised);

/// Other references. Values that do not depend on them (Z, Y, G and H not normalised) stay.
CResult<SConverted> Renormalise(CNetworkData data, std::vector<double> referencesOhm);

/// How many threads are worth it for so many units of work of about a nanosecond each.
[[nodiscard]] unsigned ThreadsFor(double work);

} // namespace zov::network
