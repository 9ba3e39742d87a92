// SPDX-License-Identifier: Apache-2.0
/// Runs a fuzz target over files instead of random bytes: a finding that was mended stays mended.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    std::size_t files = 0;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i], error)) {
            if (!entry.is_regular_file()) {
                continue;
            }
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            // Also every start of a small file: truncation is the commonest damage.
            const std::size_t step = bytes.size() < 4096 ? 1 : bytes.size() / 512;
            for (std::size_t length = bytes.size();; length -= step) {
                LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), length);
                if (length < step) {
                    break;
                }
            }
            ++files;
        }
    }
    std::printf("%zu inputs replayed\n", files);
    return files == 0 ? 1 : 0;
}
