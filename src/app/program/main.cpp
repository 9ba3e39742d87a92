// SPDX-License-Identifier: Apache-2.0
// The program's entry: the batch generator, or the desktop, which is loaded only then.
#include "base/DynamicLibrary.h"
#include "base/File.h"
#include "batch/ZvLibGenApp.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr const char* kHelp =
    "zovra [FILE...]           opens the desktop: a library (.zov .zovx .xml .sp), a project\n"
    "                          (.zovp) or a folder; further libraries are opened as external ones\n"
    "zovra -b OPTION...        makes a library of a spreadsheet, without a window; see zovra(1)\n"
    "zovra -replay FILE [-speed N]   plays a record of the desktop N times as fast (0: without\n"
    "                          delays); status 0 when every check point passed, 1 otherwise\n"
    "zovra --exit-when-idle    ends the desktop once all is loaded and painted, for measurements\n"
    "zovra --help, --version\n"
    "\n"
    "The desktop also takes the toolkit's options, such as -platform and -style.\n";

using DesktopEntry = int(int argc, char** argv);

/// Where the build and the installation put the desktop.
DesktopEntry* FindDesktop(std::string& trouble)
{
    const std::filesystem::path folder = zov::ProgramFolder();
    for (const char* place : {ZOVRA_DESKTOP_FILE, ZOVRA_DESKTOP_INSTALLED}) {
        const std::filesystem::path path = folder / place;
        std::error_code ignored;
        if (!std::filesystem::exists(path, ignored)) {
            continue;
        }
        const zov::CResult<zov::CDynamicLibrary> library = zov::CDynamicLibrary::Open(path);
        if (!library) {
            trouble = library.Error().text;
        } else if (DesktopEntry* entry = library->Function<DesktopEntry>("ZovraDesktop")) {
            return entry;
        }
    }
    if (trouble.empty()) {
        trouble =
            "'" ZOVRA_DESKTOP_FILE "' is neither beside the program nor where it is installed";
    }
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    const zov::batch::CZvLibGenApp app({argv, argv + argc});
    if (app.IsBatch()) {
        zov::CFunctionLog trouble([](std::string_view text) {
            std::fprintf(stderr, "zovra: %.*s\n", static_cast<int>(text.size()), text.data());
        });
        return app.RunBatch({}, trouble);
    }
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::puts("zovra " ZOV_VERSION);
        return 0;
    }
    std::string trouble;
    if (DesktopEntry* desktop = FindDesktop(trouble)) {
        return desktop(argc, argv);
    }
    std::fprintf(stderr, "zovra: the desktop cannot be opened: %s\n", trouble.c_str());
    return 1;
}
