// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryFiles.h"

namespace zov {

namespace fs = std::filesystem;

namespace {

/// One spelling for one file: links resolved, "." and ".." gone.
fs::path KeyOf(const fs::path& path)
{
    std::error_code error;
    fs::path key = fs::weakly_canonical(path, error);
    return error ? fs::absolute(path, error).lexically_normal() : key;
}

} // namespace

CResult<std::shared_ptr<CZovLibrary>> CLibraryCache::Open(const fs::path& path, CLogSink& log)
{
    const fs::path key = path.empty() ? path : KeyOf(path);
    if (const auto found = m_open.find(key); found != m_open.end()) {
        return found->second;
    }
    if (auto failed = m_failed.extract(key)) {
        return std::move(failed.mapped());
    }
    ASSIGN_OR_RETURN(CZovLibrary loaded, LoadLibrary(path, m_units, log));
    auto library = std::make_shared<CZovLibrary>(std::move(loaded));
    m_open.emplace(key, library);
    return library;
}

void CLibraryCache::Put(const fs::path& path, std::shared_ptr<CZovLibrary> library)
{
    m_open.try_emplace(KeyOf(path), std::move(library));
}

void CLibraryCache::PutFailure(const fs::path& path, SError error)
{
    m_failed.insert_or_assign(KeyOf(path), std::move(error));
}

void CLibraryCache::Close(const fs::path& path)
{
    m_open.erase(KeyOf(path));
}

} // namespace zov
