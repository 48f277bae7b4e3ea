#include "report/table/DatabaseRows.h"

#include <sqlite3.h>

#include <algorithm>

#include "report/options/ListText.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

/// A query may read, and nothing else: no other file is attached, no setting changed.
int allowReading(void* /*unused*/, int action, const char* /*first*/, const char* second,
                 const char* /*database*/, const char* /*trigger*/)
{
    const bool loads =
        action == SQLITE_FUNCTION && second != nullptr && std::string_view(second) == "load_extension";
    const bool reads = action == SQLITE_SELECT || action == SQLITE_READ || action == SQLITE_FUNCTION ||
                       action == SQLITE_RECURSIVE;
    return reads && !loads ? SQLITE_OK : SQLITE_DENY;
}

class Database {
 public:
    Database(const std::string& path, std::string name) : name_(std::move(name))
    {
        const int result = sqlite3_open_v2(path.c_str(), &handle_, SQLITE_OPEN_READONLY, nullptr);
        if (result != SQLITE_OK) {
            const std::string reason = describe();
            sqlite3_close(handle_);
            fail("{}: the database cannot be opened: {}.", name_, reason);
        }
        sqlite3_set_authorizer(handle_, allowReading, nullptr);
    }
    ~Database() { sqlite3_close(handle_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* getHandle() const { return handle_; }
    [[noreturn]] void refuse() const
    {
        const auto code = sqlite3_errcode(handle_);
        if (code == SQLITE_AUTH) fail("{}: a --query can only select.", name_);
        const bool isDamaged = code == SQLITE_NOTADB || code == SQLITE_CORRUPT;
        fail("{}: the {}: {}.", name_, isDamaged ? "database cannot be read" : "query is refused",
             describe());
    }
    const std::string& getName() const { return name_; }

 private:
    std::string describe() const { return quoteText(sqlite3_errmsg(handle_), 200); }

    std::string name_;
    sqlite3* handle_ = nullptr;
};

class Statement {
 public:
    Statement(const Database& database, const std::string& query) : database_(database)
    {
        const char* rest = nullptr;
        const int result = sqlite3_prepare_v2(database.getHandle(), query.c_str(),
                                              static_cast<int>(query.size()) + 1, &handle_, &rest);
        if (result == SQLITE_OK && handle_ != nullptr &&
            std::string_view(rest).find_first_not_of(" \t\r\n;") == std::string_view::npos)
            return;
        sqlite3_finalize(handle_);
        if (result != SQLITE_OK) database.refuse();
        fail("{}: expected one SELECT in --query.", database.getName());
    }
    ~Statement() { sqlite3_finalize(handle_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Whether there is a further row.
    bool step() const
    {
        const int result = sqlite3_step(handle_);
        if (result != SQLITE_ROW && result != SQLITE_DONE) database_.refuse();
        return result == SQLITE_ROW;
    }
    int countColumns() const { return sqlite3_column_count(handle_); }
    std::string getName(int column) const
    {
        const char* name = sqlite3_column_name(handle_, column);
        return name == nullptr ? "" : name;
    }
    std::string_view getText(int column) const
    {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
        return {text == nullptr ? "" : text, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column))};
    }
    Cell getCell(int column, const SourcePlace& place, std::size_t row) const
    {
        const int type = sqlite3_column_type(handle_, column);
        if (type == SQLITE_NULL) return {};
        if (type == SQLITE_INTEGER || type == SQLITE_FLOAT)
            return {{}, CellKind::Number, sqlite3_column_double(handle_, column)};
        if (type == SQLITE_BLOB)
            fail("{}: column {}: expected a number or a text, got binary data.", place.at(row),
                 quoteText(getName(column)));
        return {getText(column)};
    }

 private:
    const Database& database_;
    sqlite3_stmt* handle_ = nullptr;
};

/// The query for the only table. Throws: std::runtime_error that lists the tables.
std::string selectOnlyTable(const Database& database)
{
    const Statement list(
        database,
        "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite_%'");
    std::vector<std::string> tables;
    while (list.step()) tables.emplace_back(list.getText(0));
    if (tables.size() == 1) return "SELECT * FROM " + putInQuotes(tables.front());
    if (tables.empty()) fail("{}: the database has no table.", database.getName());
    fail("{}: the database has {} tables, {}; --query says what to read, as in \"SELECT * FROM {}\".",
         database.getName(), tables.size(), listNames(tables), tables.front());
}

}  // namespace

std::unique_ptr<RowSource> readDatabaseRows(const std::string& path, const std::string& name,
                                            const TableOptions& options)
{
    const Database database(path, name);
    const Statement query(database, options.query.empty() ? selectOnlyTable(database) : options.query);
    const SourcePlace place{name, false};
    auto rows = std::make_unique<StoredRows>(place, true, '.', 0);
    std::vector<std::string> names(static_cast<std::size_t>(query.countColumns()));
    for (int i = 0; i < query.countColumns(); ++i) names[static_cast<std::size_t>(i)] = query.getName(i);
    rows->addNames(names);
    std::vector<Cell> cells(names.size());
    for (std::size_t row = 1; query.step(); ++row) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            cells[i] = query.getCell(static_cast<int>(i), place, row);
        rows->add(row, cells);
    }
    return rows;
}

}  // namespace quillon::report
