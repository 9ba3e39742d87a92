// SPDX-License-Identifier: Apache-2.0
#include "batch/ZvLibGenApp.h"

#include <cstdio>

int main(int argc, char** argv)
{
    const zov::batch::CZvLibGenApp app({argv, argv + argc});
    if (app.IsBatch()) {
        zov::CFunctionLog trouble([](std::string_view text) {
            std::fprintf(stderr, "zovra: %.*s\n", static_cast<int>(text.size()), text.data());
        });
        return app.RunBatch({}, trouble);
    }
    std::fputs("zovra: this build has no desktop. Generate libraries with 'zovra -b ...' (see "
               "docs/zovra.md) or 'zov import', and look into them with 'zov lib'.\n",
               stderr);
    return 1;
}
