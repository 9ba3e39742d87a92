// SPDX-License-Identifier: Apache-2.0
// The files that a composite names and those that are written.
#include "base/File.h"
#include "ibis/Composite.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov::ibis {

namespace fs = std::filesystem;

namespace {

/// Of the buffers, which are taken from there, and of the circuits.
template <class TComposite, class F>
void EachFile(TComposite& composite, F use)
{
    for (auto* circuit : {&composite.package, &composite.network}) {
        if (!circuit->file.empty()) {
            use(circuit->file);
        }
    }
    for (auto& buffer : composite.buffers) {
        if (!buffer.file.empty()) {
            use(buffer.file);
        }
    }
}

bool SameFile(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    return a.lexically_normal() == b.lexically_normal() || fs::equivalent(a, b, ignored);
}

/// Absolute, without links as far as it is there.
fs::path FolderOf(const fs::path& folder)
{
    std::error_code ignored;
    const fs::path whole = fs::absolute(folder.empty() ? fs::path(".") : folder, ignored);
    fs::path plain = fs::weakly_canonical(whole / "", ignored);
    plain = ignored ? whole.lexically_normal() : plain;
    return plain.has_filename() ? plain : plain.parent_path();
}

} // namespace

std::vector<fs::path> CompositeTargets(const SComposite& composite, const fs::path& path)
{
    std::vector<fs::path> targets = {path};
    if (!composite.buffers.empty()) {
        targets.push_back(path.parent_path() / TextPath(composite.wrapperFile));
    }
    return targets;
}

CResult<void> CheckCompositeTargets(const SComposite& composite, const fs::path& path,
                                    const fs::path& description)
{
    const std::vector<fs::path> targets = CompositeTargets(composite, path);
    if (targets.size() > 1 && SameFile(targets[0], targets[1])) {
        return Fail(EErr::Argument, fmt::format("'{}' would be the IBIS file and the wrapper file",
                                                composite.wrapperFile));
    }
    CResult<void> result;
    const auto check = [&](const fs::path& source, const std::string& name) {
        for (std::size_t i = 0; i < targets.size() && result; ++i) {
            if (SameFile(source, targets[i])) {
                result = Fail(EErr::Argument,
                              fmt::format("'{}', to which the composite refers, would be "
                                          "overwritten by its {} file; give that another name",
                                          name, i > 0 ? "wrapper" : "IBIS"));
            }
        }
    };
    EachFile(composite,
             [&](const std::string& file) { check(path.parent_path() / TextPath(file), file); });
    if (!description.empty()) {
        check(description, PathText(description));
    }
    return result;
}

void MoveCompositeFiles(SComposite& composite, const fs::path& from, const fs::path& to)
{
    const fs::path before = FolderOf(from);
    const fs::path after = FolderOf(to);
    if (before == after) {
        return;
    }
    EachFile(composite, [&](std::string& file) {
        const fs::path named = TextPath(file);
        if (named.is_absolute()) {
            return;
        }
        const fs::path there = FolderOf((before / named).parent_path()) / named.filename();
        const fs::path moved = there.lexically_relative(after);
        file = PathText(moved.empty() ? there : moved);
    });
}

std::vector<std::string> MissingCompositeFiles(const SComposite& composite, const fs::path& folder)
{
    std::vector<std::string> missing;
    EachFile(composite, [&](const std::string& file) {
        std::error_code ignored;
        if (!fs::is_regular_file(folder / TextPath(file), ignored) &&
            std::ranges::find(missing, file) == missing.end()) {
            missing.push_back(file);
        }
    });
    return missing;
}

CResult<void> SaveComposite(const SComposite& composite, const fs::path& path,
                            const SLocalTime& date)
{
    ASSIGN_OR_RETURN(const std::string ibis, WriteCompositeIbis(composite, date));
    ASSIGN_OR_RETURN(const std::string spice, WriteCompositeSpice(composite));
    RETURN_IF_ERROR(CheckCompositeTargets(composite, path));
    const std::vector<fs::path> targets = CompositeTargets(composite, path);
    if (targets.size() > 1) {
        RETURN_IF_ERROR(WriteFileAtomic(targets[1], spice));
    }
    return WriteFileAtomic(path, ibis);
}

} // namespace zov::ibis
