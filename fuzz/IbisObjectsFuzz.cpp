// SPDX-License-Identifier: Apache-2.0
// Both parsers of objects. The first byte picks one. Whatever was read must print to a text that
// reads back to equal objects.
#include "ibis/Parser.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace zov::ibis;

std::unique_ptr<CIPDataFile> Parse(bool board, std::string text)
{
    CParserIBS ibs;
    CParserEBD ebd;
    return board ? ebd.Parse(std::move(text)) : ibs.Parse(std::move(text));
}

/// A comment character that changes below the header leaves texts in which the new one stands.
bool ChangesComment(const CIPDataFile& file)
{
    std::size_t seen = 0;
    for (std::size_t i = 0; i < file.Children().size(); ++i) {
        if (file.Children()[i]->Keyword() == EIPKeyword::CommentChar) {
            const bool late = i > 1 || (i == 1 && !file.Children()[0]->Children().empty());
            seen += late ? 2U : 1U;
        }
    }
    return seen > 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const bool board = data[0] % 2 == 1;
    const auto first = Parse(board, {reinterpret_cast<const char*>(data) + 1, size - 1});
    std::string printed;
    first->Print(printed);
    const auto second = Parse(board, printed);
    if (!ChangesComment(*first) && !first->Equals(*second)) {
        std::abort();
    }
    return 0;
}
