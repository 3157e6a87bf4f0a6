#include "dataaccess/odbc/diagnostics.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "dataaccess/odbc/wide_text.h"
#include "values/error.h"

namespace pradelis::dataaccess::odbc {
namespace {

struct StateNumber {
  std::string_view state;  ///< a state, or the class that begins it
  std::int32_t number;
};

/// The first entry that begins a state counts.
constexpr std::array state_numbers{
    StateNumber{"42S02", error_number::no_such_table},
    StateNumber{"42P01", error_number::no_such_table},       // PostgreSQL: undefined table
    StateNumber{"3F000", error_number::no_such_table},       // unknown schema
    StateNumber{"42501", error_number::database_failed},     // no right to it: the statement is not wrong
    StateNumber{"42804", error_number::value_does_not_fit},  // PostgreSQL: a value of another type
    StateNumber{"22012", error_number::wrong_statement},     // division by zero
    StateNumber{"220", error_number::value_does_not_fit},
    StateNumber{"22P", error_number::value_does_not_fit},
    StateNumber{"07006", error_number::value_does_not_fit},
    StateNumber{"23", error_number::constraint_refused},
    StateNumber{"44000", error_number::constraint_refused},
    StateNumber{"HYT0", error_number::timed_out},
    StateNumber{"S1T00", error_number::timed_out},
    StateNumber{"57014", error_number::timed_out},  // PostgreSQL: cancelled by its own limit
    StateNumber{"55P03", error_number::timed_out},  // PostgreSQL: waited too long for a lock
    StateNumber{"25006", error_number::not_writable},
    StateNumber{"21", error_number::wrong_statement},
    StateNumber{"37", error_number::wrong_statement},
    StateNumber{"42", error_number::wrong_statement},
    StateNumber{"07", error_number::wrong_statement},
    StateNumber{"S00", error_number::wrong_statement},
};

struct NativeNumber {
  Engine engine;
  SQLINTEGER native;
  std::int32_t number;
};

/// Engines whose drivers give general states for some failures.
constexpr std::array native_numbers{
    NativeNumber{Engine::SqlServer, 208, error_number::no_such_table},
    NativeNumber{Engine::SqlServer, 515, error_number::constraint_refused},   // null not allowed
    NativeNumber{Engine::SqlServer, 547, error_number::constraint_refused},   // foreign key, check
    NativeNumber{Engine::SqlServer, 2601, error_number::constraint_refused},  // unique index
    NativeNumber{Engine::SqlServer, 2627, error_number::constraint_refused},  // unique key
    NativeNumber{Engine::SqlServer, 241, error_number::value_does_not_fit},   // date from text
    NativeNumber{Engine::SqlServer, 242, error_number::value_does_not_fit},   // date out of range
    NativeNumber{Engine::SqlServer, 245, error_number::value_does_not_fit},   // number from text
    NativeNumber{Engine::SqlServer, 248, error_number::value_does_not_fit},   // integer overflow
    NativeNumber{Engine::SqlServer, 2628, error_number::value_does_not_fit},  // text too long
    NativeNumber{Engine::SqlServer, 8114, error_number::value_does_not_fit},  // conversion
    NativeNumber{Engine::SqlServer, 8115, error_number::value_does_not_fit},  // overflow
    NativeNumber{Engine::SqlServer, 8152, error_number::value_does_not_fit},  // text too long
    NativeNumber{Engine::SqlServer, 1222, error_number::timed_out},           // lock
    NativeNumber{Engine::Oracle, 942, error_number::no_such_table},
    NativeNumber{Engine::Oracle, 1, error_number::constraint_refused},      // unique key
    NativeNumber{Engine::Oracle, 1400, error_number::constraint_refused},   // null not allowed
    NativeNumber{Engine::Oracle, 2290, error_number::constraint_refused},   // check
    NativeNumber{Engine::Oracle, 2291, error_number::constraint_refused},   // foreign key
    NativeNumber{Engine::Oracle, 2292, error_number::constraint_refused},   // row is referred to
    NativeNumber{Engine::Oracle, 1438, error_number::value_does_not_fit},   // number too large
    NativeNumber{Engine::Oracle, 1722, error_number::value_does_not_fit},   // number from text
    NativeNumber{Engine::Oracle, 1861, error_number::value_does_not_fit},   // date from text
    NativeNumber{Engine::Oracle, 12899, error_number::value_does_not_fit},  // text too long
    NativeNumber{Engine::Oracle, 1013, error_number::timed_out},            // cancelled
    NativeNumber{Engine::Sqlite, 19, error_number::constraint_refused},
    NativeNumber{Engine::Sqlite, 8, error_number::not_writable},
    NativeNumber{Engine::Sqlite, 9, error_number::timed_out},  // interrupted
    NativeNumber{Engine::Sqlite, 5, error_number::timed_out},  // locked by another
    NativeNumber{Engine::Sqlite, 1, error_number::wrong_statement},
};

bool begins(std::string_view text, std::string_view with) { return text.substr(0, with.size()) == with; }

bool contains(const Diagnosis& diagnosis, std::string_view words) {
  return diagnosis.text.find(words) != std::string::npos;
}

}  // namespace

Diagnosis diagnose(SQLSMALLINT handle_type, SQLHANDLE handle) {
  Diagnosis diagnosis;
  WideText text(1024);
  for (SQLSMALLINT record = 1;;) {
    std::array<SQLWCHAR, 6> state{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRecW(handle_type, handle, record, state.data(), &native, text.data(),
                                            static_cast<SQLSMALLINT>(text.size()), &length);
    if (!succeeded(result)) return diagnosis;
    if (static_cast<std::size_t>(length) >= text.size()) {
      text.resize(static_cast<std::size_t>(length) + 1);
      continue;
    }
    if (record == 1) {
      diagnosis.state = utf8_text(state.data(), 5);
      diagnosis.native = native;
    } else {
      diagnosis.text += ' ';
    }
    append_utf8(diagnosis.text, text.data(), static_cast<std::size_t>(length));
    ++record;
  }
}

std::int32_t number_of(const Diagnosis& diagnosis, Engine engine) {
  if (engine == Engine::Sqlite && contains(diagnosis, "no such table")) return error_number::no_such_table;
  for (const NativeNumber& entry : native_numbers) {
    if (entry.engine == engine && entry.native == diagnosis.native) return entry.number;
  }
  for (const StateNumber& entry : state_numbers) {
    if (begins(diagnosis.state, entry.state)) return entry.number;
  }
  return error_number::database_failed;
}

bool means_lost(const Diagnosis& diagnosis) {
  // 57P: the server is shutting down, was killed, or starts up.
  return begins(diagnosis.state, "08") || begins(diagnosis.state, "57P") || diagnosis.state == "HYT01";
}

bool means_busy(const Diagnosis& diagnosis) {
  return diagnosis.state == "24000" || contains(diagnosis, "busy with results");
}

bool means_stale(const Diagnosis& diagnosis) {
  return diagnosis.state == "0A000" || diagnosis.state == "26000";
}

}  // namespace pradelis::dataaccess::odbc
