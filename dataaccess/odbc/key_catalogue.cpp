#include "dataaccess/odbc/key_catalogue.h"

#include <map>
#include <mutex>
#include <optional>

#include "dataaccess/odbc/row_readers.h"
#include "dataaccess/odbc/wide_text.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

using Keys = std::vector<std::string>;

/// What is known of all databases of the process.
class KnownKeys {
 public:
  std::optional<Keys> find(const std::string& table) {
    const std::lock_guard lock(mutex_);
    const auto entry = keys_.find(table);
    if (entry == keys_.end()) return std::nullopt;
    return entry->second;
  }
  void add(const std::string& table, const Keys& keys) {
    const std::lock_guard lock(mutex_);
    keys_[table] = keys;
  }

 private:
  std::mutex mutex_;
  std::map<std::string, Keys> keys_;
};

KnownKeys& known_keys() {
  static KnownKeys keys;
  return keys;
}

char closing_quote(char opening) {
  switch (opening) {
    case '[':
      return ']';
    case '"':
    case '`':
      return opening;
    default:
      return '\0';
  }
}

std::string in_case(std::string_view part, SQLUSMALLINT identifier_case) {
  switch (identifier_case) {
    case SQL_IC_UPPER:
      return to_upper(part);
    case SQL_IC_LOWER:
      return to_lower(part);
    default:
      return std::string(part);
  }
}

/// Takes the first part off `rest`.
std::string take_part(std::string_view& rest, SQLUSMALLINT identifier_case) {
  rest = trim(rest);
  const char closing = rest.empty() ? '\0' : closing_quote(rest.front());
  const std::size_t end = closing == '\0' ? rest.find('.') : rest.find(closing, 1);
  const std::size_t begin = closing == '\0' ? 0 : 1;
  const std::string_view part = rest.substr(begin, end == std::string_view::npos ? end : end - begin);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end);
  const std::size_t point = rest.find('.');
  rest.remove_prefix(point == std::string_view::npos ? rest.size() : point + 1);
  return closing == '\0' ? in_case(trim(part), identifier_case) : std::string(part);
}

/// A name for the catalogue calls, where an absent one is a null address.
class NameArgument {
 public:
  explicit NameArgument(const std::string& name) : text_(wide_text(name)) {}
  SQLWCHAR* data() { return text_.empty() ? nullptr : text_.data(); }
  SQLSMALLINT length() const { return static_cast<SQLSMALLINT>(text_.size()); }

 private:
  WideText text_;
};

Keys ask_driver(Session& session, const TableName& name) {
  NameArgument catalogue(name.catalogue), schema(name.schema), plain(name.table);
  Handle statement;
  if (!statement.allocate(SQL_HANDLE_STMT, session.handle())) {
    session.fail(diagnose(SQL_HANDLE_DBC, session.handle()));
  }
  session.limit_time(statement.get(), session.last_time_limit());
  session.check(SQLPrimaryKeysW(statement.get(), catalogue.data(), catalogue.length(), schema.data(),
                                schema.length(), plain.data(), plain.length()),
                statement.get());
  Keys keys;
  for (;;) {
    const SQLRETURN result = SQLFetch(statement.get());
    if (result == SQL_NO_DATA) return keys;
    session.check(result, statement.get());
    constexpr SQLUSMALLINT column_name = 4;  // rows come in the order of the key
    std::string column;
    if (read_text(session, statement.get(), column_name, column)) keys.push_back(std::move(column));
  }
}

}  // namespace

TableName parse_table_name(std::string_view name, SQLUSMALLINT identifier_case) {
  TableName parts;
  while (!name.empty()) {
    parts.catalogue = std::move(parts.schema);
    parts.schema = std::move(parts.table);
    parts.table = take_part(name, identifier_case);
  }
  return parts;
}

std::vector<std::string> key_columns_of(Session& session, std::string_view database, std::string_view table) {
  SQLUSMALLINT identifier_case = SQL_IC_MIXED;
  SQLGetInfoW(session.handle(), SQL_IDENTIFIER_CASE, &identifier_case, sizeof identifier_case, nullptr);
  const TableName name = parse_table_name(table, identifier_case);
  const std::string entry = concat(database, "\n", name.catalogue, "\n", name.schema, "\n", name.table);
  if (std::optional<Keys> known = known_keys().find(entry)) return *known;
  Keys keys = ask_driver(session, name);
  known_keys().add(entry, keys);
  return keys;
}

}  // namespace pradelis::dataaccess::odbc
