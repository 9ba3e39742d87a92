// SPDX-License-Identifier: Apache-2.0
#include "AssignJobs.h"

#include "BenchSupport.h"
#include "assign/ModelSearch.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unordered_map>

namespace zov::bench {

namespace {

template <class T>
T Must(CResult<T> result)
{
    if (!result) {
        fmt::print(stderr, "zov_bench: {}\n", result.Error().Full());
        std::exit(3);
    }
    return result.Take();
}

CZovLibrary Loaded(const char* path)
{
    CNullLog log;
    return Must(LoadLibrary(path, {}, log));
}

std::vector<SWanted> ReadNames(const char* path)
{
    std::vector<SWanted> wanted;
    const std::string text = Must(ReadWholeFile(path));
    for (const std::string_view line : Split(text, '\n')) {
        if (!Trim(line).empty()) {
            wanted.push_back({std::string(Trim(line)), ERecordType::Any});
        }
    }
    return wanted;
}

/// Count, and a sum over places in the library, of what was found.
void PrintFound(std::string_view name, const std::vector<SFound>& found, const CZovLibrary& library)
{
    std::unordered_map<const CZovRcdProps*, std::uint64_t> places;
    for (std::size_t i = 0; i < library.Count(); ++i) {
        places.emplace(&library.At(i), i);
    }
    std::size_t count = 0;
    std::uint64_t sum = 0;
    for (const SFound& one : found) {
        if (one.model) {
            ++count;
            sum += places.at(one.model.record);
        }
    }
    PrintNumber(fmt::format("{}_found", name), count);
    PrintNumber(fmt::format("{}_places", name), sum);
}

FEnvironment ExactOnly(bool on)
{
    return [on](const char*) { return on ? std::optional<std::string>("1") : std::nullopt; };
}

} // namespace

void MakeNames(const char* path, const char* count, const char* out)
{
    const CZovLibrary library = Loaded(path);
    constexpr std::array keys = {EPropId::MfgPartNumber, EPropId::ModelName};
    std::string text;
    std::uint64_t state = 88172645463325252ULL;
    for (long i = 0; i < std::atol(count); ++i) {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        const CZovRcdProps& record = library.At(state % library.Count());
        std::string name(record.GetString(keys[state >> 32U & 1U]));
        switch (i % 10) {
        case 0:
            name = fmt::format("XQ{:08}-NONE", state % 100000000U);
            break;
        case 1:
            name.insert(3, " ");
            break;
        case 2:
        case 3:
        case 4:
        case 5:
            name.resize(name.size() - 2);
            break;
        default:
            break;
        }
        text += name + '\n';
    }
    if (const CResult<void> written = WriteFileAtomic(out, text); !written) {
        fmt::print(stderr, "zov_bench: {}\n", written.Error().Full());
        std::exit(3);
    }
}

void AssignNames(const char* path, const char* names)
{
    const auto library = std::make_shared<CZovLibrary>(Loaded(path));
    const std::vector<std::shared_ptr<CZovLibrary>> node = {library};
    const std::vector<SWanted> wanted = ReadNames(names);
    const std::vector<EPropId> keys = {EPropId::Lookup, EPropId::ModelName, EPropId::MfgPartNumber};
    const auto all = [&](std::string_view label, bool exactOnly) {
        CModelSearch search(ExactOnly(exactOnly));
        const CStopwatch watch;
        const std::vector<SFound> found = search.FindAll(node, keys, wanted);
        PrintTime(label, watch.Seconds());
        PrintFound(label, found, *library);
    };
    all("all", false);
    all("exact", true);
    CModelSearch search(ExactOnly(false));
    const CStopwatch build;
    const CKeyIndex& index = search.IndexOf(library);
    PrintTime("build", build.Seconds());
    const std::size_t queries = std::min<std::size_t>(200, wanted.size());
    std::size_t candidates = 0;
    const CStopwatch watch;
    for (std::size_t i = 0; i < queries; ++i) {
        std::vector<SModelRef> list;
        search.CollectCandidates(node, ERecordType::Any, wanted[i * 51 % wanted.size()].name, list);
        candidates += list.size();
    }
    PrintTime("one", watch.Seconds() / static_cast<double>(queries));
    PrintNumber("one_candidates", candidates);
    const CStopwatch counting;
    const auto counts = search.CountCandidates(node, wanted, 2);
    PrintTime("ambiguous", counting.Seconds());
    PrintNumber("ambiguous_names",
                std::count_if(counts.begin(), counts.end(), [](std::size_t n) { return n > 1; }));
    PrintNumber("index_bytes", index.BytesHeld());
    PrintNumber("library_bytes", library->BytesHeld());
}

} // namespace zov::bench
