// SPDX-License-Identifier: Apache-2.0
/// The jobs of zov_bench done by libraries that people know, for the same files and with the same
/// output:
///
///     zov_peers sqlite-make FILE.zov DB   zov_peers sqlite-load DB      zov_peers sqlite-save
///     FILE.zov DB zov_peers libxml2 FILE              zov_peers pugixml FILE        zov_peers
///     pugixml-save FILE OUT zov_peers orcus FILE.xlsx           zov_peers freexl FILE.xls
#include "BenchSupport.h"
#include "MuParserPeer.h"
#include "OrcusPeer.h"
#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>

#ifdef ZOV_PEER_XML2
#include <libxml/parser.h>
#endif
#ifdef ZOV_PEER_PUGI
#include <pugixml.hpp>
#endif
#ifdef ZOV_PEER_SQLITE
#include <sqlite3.h>
#endif
#ifdef ZOV_PEER_FREEXL
#include <freexl.h>
#endif

namespace zov::bench {
namespace {

[[noreturn]] void Stop(std::string_view text)
{
    fmt::print(stderr, "zov_peers: {}\n", text);
    std::exit(3);
}

/// The same work on an attribute as the engine's: a number is converted, a text is looked at.
struct STally
{
    std::size_t attributes = 0;
    std::size_t bytes = 0;
    std::size_t records = 0;
    double sum = 0.0;

    void Attribute(std::string_view value)
    {
        ++attributes;
        bytes += value.size();
        if (!value.empty() &&
            (value.front() == '-' || (value.front() >= '0' && value.front() <= '9'))) {
            std::string_view rest = value;
            sum += ConsumeDouble(rest).value_or(0.0);
        }
    }
    void Print() const
    {
        PrintNumber("attributes", attributes);
        PrintNumber("records", records);
        PrintNumber("text_bytes", bytes);
        PrintNumber("sum", sum);
    }
};

#ifdef ZOV_PEER_XML2
void Libxml2(const char* path)
{
    STally tally;
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = [](void* context, const xmlChar* name, const xmlChar*, const xmlChar*,
                                int, const xmlChar**, int count, int, const xmlChar** attributes) {
        auto& into = *static_cast<STally*>(context);
        into.records += std::strcmp(reinterpret_cast<const char*>(name), "Capacitor") == 0 ? 1 : 0;
        for (int i = 0; i < count; ++i) {
            const auto* begin = reinterpret_cast<const char*>(attributes[5 * i + 3]);
            const auto* end = reinterpret_cast<const char*>(attributes[5 * i + 4]);
            into.Attribute({begin, static_cast<std::size_t>(end - begin)});
        }
    };
    const CStopwatch watch;
    const int failed = xmlSAXUserParseFile(&handler, &tally, path);
    PrintTime("load", watch.Seconds());
    if (failed != 0) {
        Stop("libxml2 refuses the file");
    }
    tally.Print();
}
#endif

#ifdef ZOV_PEER_PUGI
void Visit(const pugi::xml_node& node, STally& tally)
{
    tally.records += std::strcmp(node.name(), "Capacitor") == 0 ? 1 : 0;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        tally.Attribute(attribute.value());
    }
    for (const pugi::xml_node& child : node.children()) {
        Visit(child, tally);
    }
}

void Pugixml(const char* path)
{
    STally tally;
    const CStopwatch watch;
    pugi::xml_document document;
    if (!document.load_file(path)) {
        Stop("pugixml refuses the file");
    }
    Visit(document, tally);
    PrintTime("load", watch.Seconds());
    tally.Print();
}

void PugixmlSave(const char* path, const char* out)
{
    pugi::xml_document document;
    if (!document.load_file(path)) {
        Stop("pugixml refuses the file");
    }
    const CStopwatch watch;
    if (!document.save_file(out, "", pugi::format_raw)) {
        Stop("pugixml cannot write");
    }
    PrintTime("save", watch.Seconds());
}
#endif

#ifdef ZOV_PEER_SQLITE
class CDatabase
{
public:
    explicit CDatabase(const char* path)
    {
        if (sqlite3_open(path, &m_database) != SQLITE_OK) {
            Stop(sqlite3_errmsg(m_database));
        }
    }
    ~CDatabase() { sqlite3_close(m_database); }
    CDatabase(const CDatabase&) = delete;
    CDatabase& operator=(const CDatabase&) = delete;

    void Run(const char* sql)
    {
        if (sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
            Stop(sqlite3_errmsg(m_database));
        }
    }
    sqlite3_stmt* Prepare(const std::string& sql)
    {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
            Stop(sqlite3_errmsg(m_database));
        }
        return statement;
    }

private:
    sqlite3* m_database = nullptr;
};

/// Every property of the records of a native library in one table, as a program on SQLite would
/// keep them.
void SqliteSave(const char* library, const char* out)
{
    CNullLog log;
    CResult<CZovLibrary> loaded = LoadLibrary(library, {}, log);
    if (!loaded) {
        Stop(loaded.Error().Full());
    }
    std::remove(out);
    const CStopwatch watch;
    {
        CDatabase database(out);
        database.Run("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;");
        const auto ids = PropertiesOf(ERecordType::Capacitor);
        std::string columns;
        std::string marks;
        for (const EPropId id : ids) {
            columns += fmt::format("{}p{}", columns.empty() ? "" : ",", static_cast<int>(id));
            marks += marks.empty() ? "?" : ",?";
        }
        database.Run(("CREATE TABLE c (" + columns + ");").c_str());
        database.Run("BEGIN;");
        sqlite3_stmt* insert = database.Prepare("INSERT INTO c VALUES (" + marks + ")");
        for (const CZovRcdProps* record : loaded->Records()) {
            int column = 1;
            for (const EPropId id : ids) {
                if (!record->Has(id)) {
                    sqlite3_bind_null(insert, column);
                } else if (FindProperty(id)->kind == EPropKind::Double) {
                    sqlite3_bind_double(insert, column, *record->GetDouble(id));
                } else {
                    const std::string_view text = record->GetString(id);
                    sqlite3_bind_text(insert, column, text.data(), static_cast<int>(text.size()),
                                      SQLITE_STATIC);
                }
                ++column;
            }
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        database.Run("COMMIT;");
    }
    PrintTime("save", watch.Seconds());
}

void SqliteLoad(const char* path)
{
    STally tally;
    const CStopwatch watch;
    {
        CDatabase database(path);
        sqlite3_stmt* select = database.Prepare("SELECT * FROM c");
        while (sqlite3_step(select) == SQLITE_ROW) {
            ++tally.records;
            const int columns = sqlite3_column_count(select);
            for (int i = 0; i < columns; ++i) {
                if (sqlite3_column_type(select, i) == SQLITE_FLOAT) {
                    tally.sum += sqlite3_column_double(select, i);
                } else if (sqlite3_column_text(select, i) != nullptr) {
                    tally.bytes += static_cast<std::size_t>(sqlite3_column_bytes(select, i));
                }
            }
        }
        sqlite3_finalize(select);
    }
    PrintTime("load", watch.Seconds());
    tally.Print();
}
#endif

#ifdef ZOV_PEER_FREEXL
void FreeXl(const char* path)
{
    std::size_t cells = 0;
    std::size_t bytes = 0;
    const CStopwatch watch;
    const void* handle = nullptr;
    if (freexl_open(path, &handle) != FREEXL_OK ||
        freexl_select_active_worksheet(handle, 0) != FREEXL_OK) {
        Stop("FreeXL refuses the file");
    }
    unsigned rows = 0;
    unsigned short columns = 0;
    freexl_worksheet_dimensions(handle, &rows, &columns);
    for (unsigned row = 0; row < rows; ++row) {
        for (unsigned short column = 0; column < columns; ++column) {
            FreeXL_CellValue value{};
            freexl_get_cell_value(handle, row, column, &value);
            cells += value.type == FREEXL_CELL_NULL ? 0 : 1;
            if (value.type == FREEXL_CELL_TEXT || value.type == FREEXL_CELL_SST_TEXT) {
                bytes += std::strlen(value.value.text_value);
            }
        }
    }
    freexl_close(handle);
    PrintTime("load", watch.Seconds());
    PrintNumber("cells", cells);
    PrintNumber("text_bytes", bytes);
}
#endif

#ifdef ZOV_PEER_SQLITE
/// Keywords, names and part numbers of a library in one table each way: plain, with an index on the
/// upper-cased text, and as trigrams.
void SqliteKeys(const char* library, const char* out)
{
    CNullLog log;
    CResult<CZovLibrary> loaded = LoadLibrary(library, {}, log);
    if (!loaded) {
        Stop(loaded.Error().Full());
    }
    std::remove(out);
    CDatabase database(out);
    database.Run("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN;"
                 "CREATE TABLE k(key INTEGER, record INTEGER, text TEXT);");
    sqlite3_stmt* insert = database.Prepare("INSERT INTO k VALUES(?,?,?)");
    constexpr std::array keys = {EPropId::Lookup, EPropId::ModelName, EPropId::MfgPartNumber};
    for (int key = 0; key < 3; ++key) {
        for (std::size_t i = 0; i < loaded->Count(); ++i) {
            const std::string_view text =
                loaded->At(i).GetString(keys[static_cast<std::size_t>(key)]);
            for (const std::string_view one :
                 key == 0 ? Split(text, ';') : std::vector<std::string_view>{text}) {
                sqlite3_bind_int(insert, 1, key);
                sqlite3_bind_int64(insert, 2, static_cast<sqlite3_int64>(i));
                sqlite3_bind_text(insert, 3, one.data(), static_cast<int>(one.size()),
                                  SQLITE_STATIC);
                sqlite3_step(insert);
                sqlite3_reset(insert);
            }
        }
    }
    sqlite3_finalize(insert);
    const CStopwatch index;
    database.Run("CREATE INDEX byText ON k(text COLLATE NOCASE); COMMIT;");
    PrintTime("build-index", index.Seconds());
    const CStopwatch trigrams;
    database.Run("BEGIN; CREATE VIRTUAL TABLE f USING fts5(text, content='k', tokenize='trigram');"
                 "INSERT INTO f(f) VALUES('rebuild'); COMMIT;");
    PrintTime("build-fts5", trigrams.Seconds());
}

/// @param limit  names that are looked up; the time is that of one
void SqliteFind(const char* path, const char* names, std::string_view label, const std::string& sql,
                std::size_t limit)
{
    CDatabase database(path);
    sqlite3_stmt* select = database.Prepare(sql);
    const CResult<std::string> text = ReadWholeFile(names);
    if (!text) {
        Stop(text.Error().Full());
    }
    std::vector<std::string_view> lines = Split(*text, '\n');
    std::erase(lines, "");
    std::size_t hits = 0;
    const std::size_t queries = std::min(limit, lines.size());
    const CStopwatch watch;
    for (std::size_t i = 0; i < queries; ++i) {
        // The names that zov_bench takes: a step that meets all ten kinds of them alike.
        const std::string_view name = lines[i * 51 % lines.size()];
        sqlite3_bind_text(select, 1, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
        while (sqlite3_step(select) == SQLITE_ROW) {
            ++hits;
        }
        sqlite3_reset(select);
    }
    PrintTime(label, watch.Seconds() / static_cast<double>(queries));
    PrintNumber("hits", hits);
    PrintNumber("queries", queries);
    sqlite3_finalize(select);
}
#endif

struct SCommand
{
    int arguments;
    std::function<void(char**)> run;
};

int Main(int argc, char** argv)
{
    std::map<std::string_view, SCommand> commands;
#ifdef ZOV_PEER_XML2
    commands["libxml2"] = {1, [](char** a) { Libxml2(a[0]); }};
#endif
#ifdef ZOV_PEER_PUGI
    commands["pugixml"] = {1, [](char** a) { Pugixml(a[0]); }};
    commands["pugixml-save"] = {2, [](char** a) { PugixmlSave(a[0], a[1]); }};
#endif
#ifdef ZOV_PEER_SQLITE
    commands["sqlite-save"] = {2, [](char** a) { SqliteSave(a[0], a[1]); }};
    commands["sqlite-keys"] = {2, [](char** a) { SqliteKeys(a[0], a[1]); }};
    commands["sqlite-like"] = {
        2, [](char** a) {
            SqliteFind(a[0], a[1], "one", "SELECT record FROM k WHERE text LIKE '%'||?||'%'", 10);
        }};
    commands["sqlite-fts5"] = {
        2, [](char** a) {
            SqliteFind(a[0], a[1], "one",
                       "SELECT rowid FROM f WHERE text MATCH '\"' || replace(?,'\"','') || '\"'",
                       200);
        }};
    commands["sqlite-exact"] = {2, [](char** a) {
                                    SqliteFind(a[0], a[1], "one",
                                               "SELECT record FROM k WHERE text = ? COLLATE NOCASE",
                                               10000);
                                }};
    commands["sqlite-load"] = {1, [](char** a) { SqliteLoad(a[0]); }};
#endif
#ifdef ZOV_PEER_FREEXL
    commands["freexl"] = {1, [](char** a) { FreeXl(a[0]); }};
#endif
#ifdef ZOV_PEER_MUPARSER
    commands["muparser"] = {
        2, [](char** a) { MuParser(a[0], static_cast<std::size_t>(std::atoll(a[1]))); }};
    commands["muparser-bulk"] = {
        2, [](char** a) { MuParserBulk(a[0], static_cast<std::size_t>(std::atoll(a[1]))); }};
    commands["muparser-compile"] = {1, [](char** a) { MuParserCompile(a[0]); }};
#endif
#ifdef ZOV_PEER_ORCUS
    commands["orcus"] = {1, [](char** a) { Orcus(a[0]); }};
#endif
    const auto found = argc > 1 ? commands.find(argv[1]) : commands.end();
    if (found == commands.end() || argc - 2 != found->second.arguments) {
        fmt::print(stderr, "usage: zov_peers JOB ARGUMENTS; jobs:\n");
        for (const auto& [name, command] : commands) {
            fmt::print(stderr, "  {} ({} arguments)\n", name, command.arguments);
        }
        return 2;
    }
    found->second.run(argv + 2);
    PrintPeak();
    return 0;
}

} // namespace
} // namespace zov::bench

int main(int argc, char** argv)
{
    return zov::bench::Main(argc, argv);
}
