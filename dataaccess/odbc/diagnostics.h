#pragma once

#include <cstdint>
#include <string>

#include "dataaccess/odbc/engine.h"
#include "dataaccess/odbc/odbc_api.h"

namespace pradelis::dataaccess::odbc {

/// What the driver says about a failed call.
struct Diagnosis {
  std::string state;      ///< five characters of the first record; empty when there is none
  SQLINTEGER native = 0;  ///< the engine's own number
  std::string text;       ///< texts of all records, with blanks between
};

/// Reads the records of the last call on a handle.
Diagnosis diagnose(SQLSMALLINT handle_type, SQLHANDLE handle);

/// The `error_number` that a failure means: the one place where states and engines' numbers are mapped.
std::int32_t number_of(const Diagnosis& diagnosis, Engine engine);

/// Whether the failure shows that the connection is gone.
bool means_lost(const Diagnosis& diagnosis);

/// Whether the statement was refused since another result stands open on the connection.
bool means_busy(const Diagnosis& diagnosis);

/// Whether a prepared statement was refused since it has grown stale (its table was changed, or the
/// server has forgotten it): nothing was run, and preparing it again helps.
bool means_stale(const Diagnosis& diagnosis);

}  // namespace pradelis::dataaccess::odbc
