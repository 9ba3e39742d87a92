// SPDX-License-Identifier: Apache-2.0
#include "support/SourcePaths.h"

namespace zov::test {
std::string SourceFolder()
{
    return ZOV_SOURCE_DIR;
}
std::string DataFolder()
{
    return ZOV_SOURCE_DIR "/tests/data";
}
} // namespace zov::test
