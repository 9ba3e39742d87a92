// SPDX-License-Identifier: Apache-2.0
#include "ibischk/partfiles.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <set>

namespace zov::ibischk {

namespace {

std::string_view RailWord(std::string_view word)
{
    return EqualsNoCase(word, "POWER") || EqualsNoCase(word, "GND") || IsNc(word)
               ? word
               : std::string_view();
}

/// The rail that a board's signal name stands for.
std::string_view RailOfSignal(std::string_view signal)
{
    if (StartsWithNoCase(signal, "POWER")) {
        return signal.substr(0, 5);
    }
    return StartsWithNoCase(signal, "GND") ? signal.substr(0, 3) : RailWord(signal);
}

class CPartReader
{
public:
    explicit CPartReader(SPartFile& file)
        : m_file(file)
    {
    }

    void Read(std::string_view rest)
    {
        while (!rest.empty()) {
            const std::size_t length = std::min(rest.find('\n'), rest.size());
            Line(rest.substr(0, length));
            rest.remove_prefix(std::min(length + 1, rest.size()));
        }
    }

private:
    void Line(std::string_view line)
    {
        if (line.empty()) {
            return;
        }
        if (line.front() == '[') {
            Keyword(line);
        } else if (m_takesRows) {
            line = Trim(line.substr(0, line.find(m_comment)));
            if (!line.empty()) {
                Row(SWords(line));
            }
        }
    }

    void Keyword(std::string_view line)
    {
        m_takesRows = false;
        const std::size_t close = line.find(']');
        if (close == std::string_view::npos) {
            return;
        }
        m_keyword = FindKeyword(line.substr(1, close - 1));
        std::string_view behind = Trim(line.substr(close + 1));
        if (m_keyword == EKeyword::CommentChar) {
            m_comment = behind.empty() ? m_comment : behind.front();
            return;
        }
        behind = Trim(behind.substr(0, behind.find(m_comment)));
        switch (m_keyword) {
        case EKeyword::Component:
        case EKeyword::BeginBoardDescription:
        case EKeyword::BeginEMD:
            m_file.partNames.Add(behind, m_file.parts.size());
            m_file.parts.push_back({behind, {}, {}});
            break;
        case EKeyword::Pin:
        case EKeyword::PinList:
        case EKeyword::EMDPinList:
            m_takesRows = !m_file.parts.empty();
            break;
        default:
            m_takesRows =
                m_keyword == EKeyword::ReferenceDesignatorMap || m_keyword == EKeyword::EMDParts;
            break;
        }
    }

    void Row(const SWords& words)
    {
        if (m_keyword == EKeyword::ReferenceDesignatorMap || m_keyword == EKeyword::EMDParts) {
            m_file.files.push_back(words[1]);
            return;
        }
        const std::string_view rail =
            m_keyword == EKeyword::PinList ? RailOfSignal(words[1]) : RailWord(words[2]);
        SPart& part = m_file.parts.back();
        part.pinNames.Add(words[0], part.pins.size());
        part.pins.push_back({words[0], rail});
    }

    SPartFile& m_file;
    EKeyword m_keyword = EKeyword::NotKey;
    char m_comment = '|';
    bool m_takesRows = false;
};

std::string_view FolderOf(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    return path.substr(0, slash == std::string_view::npos ? 0 : slash + 1);
}

bool HasParts(std::string_view file)
{
    return EndsWithNoCase(file, ExtensionOf(EFileType::Ebd)) ||
           EndsWithNoCase(file, ExtensionOf(EFileType::Emd));
}

} // namespace

const SPart* SPartFile::Find(std::string_view part) const
{
    const auto at = partNames.Find(part);
    return at ? &parts[*at] : nullptr;
}

const SPartFile& CPartFiles::Of(SCheck& check, std::string_view named)
{
    return Read(check, check.PathOf(named));
}

const SPartFile& CPartFiles::Read(SCheck& check, const std::string& path)
{
    const auto [entry, isNew] = m_files.try_emplace(path);
    if (isNew) {
        if (const auto bytes = check.files.Read(path)) {
            entry->second.readable = true;
            CPartReader(entry->second).Read(*bytes);
        }
    }
    return entry->second;
}

bool CPartFiles::LeadsBack(SCheck& check, std::string_view named)
{
    constexpr std::size_t kMostFiles = 64;
    std::set<std::string> met = {check.PathOf(named)};
    std::vector<std::string> open(met.begin(), met.end());
    while (!open.empty()) {
        const std::string path = std::move(open.back());
        open.pop_back();
        if (path == check.path) {
            return true;
        }
        if (!HasParts(path)) {
            continue;
        }
        for (const std::string_view file : Read(check, path).files) {
            std::string next = std::string(FolderOf(path)).append(file);
            if (met.size() < kMostFiles && met.insert(next).second) {
                open.push_back(std::move(next));
            }
        }
    }
    return false;
}

} // namespace zov::ibischk
