// SPDX-License-Identifier: Apache-2.0
/// Comma-separated data sets: a head of three lines (path and version, title, column titles), rows,
/// an empty line and the time of writing.
#pragma once

#include "base/Clock.h"
#include "base/File.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zov {

/// Why a data set could not be loaded or saved: what a message box shows.
struct SDataSetError
{
    std::string caption; ///< "Fatal Error" or "Error"
    std::string text;    ///< " opening file", " creating file", ", file version is too new"
    std::string path;
    /// The path followed by the text.
    [[nodiscard]] std::string Message() const { return path + text; }
};
using TDataSetResult = std::optional<SDataSetError>; ///< empty: it went well

/// A file of lines that end with a line feed. A line holds at most kLineLimit bytes; the rest of a
/// longer one is cut off.
class ArctermFile
{
public:
    static constexpr std::size_t kLineLimit = 102399;

    /// "Fatal Error", " opening file"
    [[nodiscard]] TDataSetResult Open(const std::filesystem::path& path);
    /// Lines of a text in memory.
    void OpenText(std::string text);
    /// "Fatal Error", " creating file"
    [[nodiscard]] TDataSetResult Create(const std::filesystem::path& path);
    /// The next line without its line end; false at the end.
    bool ReadLine(std::string& line);
    void WriteLine(std::string_view line);
    /// After Create: the file appears, whole. Its failure is that of Create.
    [[nodiscard]] TDataSetResult Close();
    /// The lines written, when there was no Create: for callers without a file.
    [[nodiscard]] const std::string& Written() const { return m_text; }

private:
    std::string m_text;
    std::size_t m_next = 0;
    std::unique_ptr<CAtomicFile> m_out;
    std::string m_path;
};

/// Fields of such lines, separated by commas, never quoted.
class CSVFile : public ArctermFile
{
public:
    static constexpr std::size_t kFieldLimit = 1023; ///< bytes of a field; the rest is passed over

    /// The fields of the next line, upper-cased as a whole, each trimmed of blanks at both ends and
    /// cut; false at the end of the file and at a line that is empty or holds only commas.
    bool ReadFields(std::vector<std::string>& fields);
    void WriteFields(const std::vector<std::string>& fields);
};

class csvDataSet // NOLINT(readability-identifier-naming): the layer's name
{
public:
    csvDataSet() = default;
    csvDataSet(const csvDataSet&) = default;
    csvDataSet(csvDataSet&&) = default;
    csvDataSet& operator=(const csvDataSet&) = default;
    csvDataSet& operator=(csvDataSet&&) = default;
    virtual ~csvDataSet() = default;

    virtual void Clear() = 0;
    /// Replaces the rows by those of a file; they stay as they were when it fails: "Fatal Error",
    /// " opening file", or "Error", ", file version is too new".
    [[nodiscard]] virtual TDataSetResult Load(const std::filesystem::path& path);
    /// "Fatal Error", " creating file"; nothing is written then.
    [[nodiscard]] virtual TDataSetResult Save(const std::filesystem::path& path,
                                              const FClock& clock = LocalTimeNow) const;
    virtual void ReadRows(CSVFile& file) = 0;
    /// Rows of a version below this class's.
    virtual void ReadOldRows(CSVFile& file, float version) = 0;
    virtual void WriteRows(CSVFile& file) const = 0;
    [[nodiscard]] virtual std::string_view Title() const = 0;
    [[nodiscard]] virtual std::string_view Header() const = 0;

    [[nodiscard]] float Version() const { return m_version; }
    /// Load of a text in memory; `shown` stands for the path.
    [[nodiscard]] TDataSetResult LoadText(std::string text, const std::string& shown);

protected:
    float m_version = 1.0F;

private:
    [[nodiscard]] TDataSetResult LoadFrom(CSVFile& file, const std::string& shown);
};

} // namespace zov
