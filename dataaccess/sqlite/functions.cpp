#include "dataaccess/sqlite/functions.h"

#include <sqlite3.h>

#include <exception>
#include <string>
#include <string_view>

#include "dataaccess/sqlite/errors.h"
#include "values/text.h"

namespace pradelis::dataaccess::sqlite {
namespace {

using Mapping = std::string (*)(std::string_view);

template <Mapping map>
void map_text(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return sqlite3_result_null(context);
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
  if (text == nullptr) return sqlite3_result_error_nomem(context);
  try {
    const std::string mapped = map({text, static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]))});
    sqlite3_result_text64(context, mapped.data(), mapped.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } catch (const std::exception&) {
    sqlite3_result_error_nomem(context);
  }
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void add(sqlite3* database, const char* name, Function function) {
  constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  const int code =
      sqlite3_create_function_v2(database, name, 1, flags, nullptr, function, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) raise_failure(database, code);
}

}  // namespace

void add_functions(sqlite3* database) {
  add(database, "upper", &map_text<to_upper>);
  add(database, "maiuscula", &map_text<to_upper>);
  add(database, "lower", &map_text<to_lower>);
}

}  // namespace pradelis::dataaccess::sqlite
