// SPDX-License-Identifier: Apache-2.0
/// What can't be null unless the checker itself is at fault.
#pragma once

namespace zov::ibischk {

/// Prints "module:line:assertion failed." to standard output and aborts, in every build: going on
/// would report about the wrong thing.
/// @param module  "ibischk/parse"
[[noreturn]] void AssertionFailed(const char* module, int line);

/// The pointer, which must not be null.

template <class T>
T* Guarded(T* pointer, const char* module, int line)
{
    if (pointer == nullptr) {
        AssertionFailed(module, line);
    }
    return pointer;
}

} // namespace zov::ibischk
