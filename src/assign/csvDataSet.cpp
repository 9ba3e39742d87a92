// SPDX-License-Identifier: Apache-2.0
#include "assign/csvDataSet.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace zov {

namespace {

constexpr std::uint64_t kFileLimit = std::uint64_t{1} << 30U;

SDataSetError OpenError(const std::string& path)
{
    return {"Fatal Error", " opening file", path};
}
SDataSetError CreateError(const std::string& path)
{
    return {"Fatal Error", " creating file", path};
}

std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The version that the second field of the first line gives, 1.0 without one.
float VersionIn(const std::string& line)
{
    const std::vector<std::string_view> fields = Split(line, ',');
    if (fields.size() < 2 || TrimBlanks(fields[1]).empty()) {
        return 1.0F;
    }
    std::string_view text = TrimBlanks(fields[1]);
    return static_cast<float>(ConsumeDouble(text).value_or(0.0));
}

} // namespace

TDataSetResult ArctermFile::Open(const std::filesystem::path& path)
{
    m_path = PathText(path);
    CResult<std::string> bytes = ReadWholeFile(path, kFileLimit);
    if (!bytes) {
        return OpenError(m_path);
    }
    OpenText(bytes.Take());
    return std::nullopt;
}

void ArctermFile::OpenText(std::string text)
{
    m_text = std::move(text);
    m_next = 0;
}

TDataSetResult ArctermFile::Create(const std::filesystem::path& path)
{
    m_path = PathText(path);
    auto file = CAtomicFile::Create(path);
    if (!file) {
        return CreateError(m_path);
    }
    m_out = file.Take();
    return std::nullopt;
}

bool ArctermFile::ReadLine(std::string& line)
{
    if (m_next >= m_text.size()) {
        return false;
    }
    const std::size_t end = std::min(m_text.find('\n', m_next), m_text.size());
    std::string_view view = std::string_view(m_text).substr(m_next, end - m_next);
    m_next = end + 1;
    if (view.ends_with('\r')) {
        view.remove_suffix(1);
    }
    line = view.substr(0, kLineLimit);
    return true;
}

void ArctermFile::WriteLine(std::string_view line)
{
    line = line.substr(0, kLineLimit);
    if (m_out) {
        m_out->Append(line);
        m_out->Append("\n");
    } else {
        m_text += line;
        m_text += '\n';
    }
}

TDataSetResult ArctermFile::Close()
{
    if (m_out && !m_out->Commit()) {
        return CreateError(m_path);
    }
    m_out.reset();
    return std::nullopt;
}

bool CSVFile::ReadFields(std::vector<std::string>& fields)
{
    std::string line;
    fields.clear();
    if (!ReadLine(line) || line.find_first_not_of(',') == std::string::npos) {
        return false;
    }
    line = UpperCase(line);
    for (const std::string_view field : Split(line, ',')) {
        fields.emplace_back(TrimBlanks(field).substr(0, kFieldLimit));
    }
    return true;
}

void CSVFile::WriteFields(const std::vector<std::string>& fields)
{
    std::string line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        line += i == 0 ? "" : ",";
        line += fields[i];
    }
    WriteLine(line);
}

TDataSetResult csvDataSet::Load(const std::filesystem::path& path)
{
    CSVFile file;
    if (TDataSetResult failed = file.Open(path)) {
        return failed;
    }
    return LoadFrom(file, PathText(path));
}

TDataSetResult csvDataSet::LoadText(std::string text, const std::string& shown)
{
    CSVFile file;
    file.OpenText(std::move(text));
    return LoadFrom(file, shown);
}

TDataSetResult csvDataSet::LoadFrom(CSVFile& file, const std::string& shown)
{
    std::string line;
    static_cast<void>(file.ReadLine(line));
    const float version = VersionIn(line);
    if (version > m_version) {
        return SDataSetError{"Error", ", file version is too new", shown};
    }
    static_cast<void>(file.ReadLine(line) && file.ReadLine(line)); // title and column titles
    Clear();
    if (version < m_version) {
        ReadOldRows(file, version);
    } else {
        ReadRows(file);
    }
    return std::nullopt;
}

TDataSetResult csvDataSet::Save(const std::filesystem::path& path, const FClock& clock) const
{
    CSVFile file;
    if (TDataSetResult failed = file.Create(path)) {
        return failed;
    }
    const SLocalTime now = clock();
    file.WriteLine(fmt::format("{},{:.2f}", PathText(std::filesystem::absolute(path)), m_version));
    file.WriteLine(Title());
    file.WriteLine(Header());
    WriteRows(file);
    file.WriteLine("");
    file.WriteLine(fmt::format("{}/{:02}/{},{}:{}:{}", now.month, now.day, now.year, now.hour,
                               now.minute, now.second));
    return file.Close();
}

} // namespace zov
