#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Creating a database, and bringing an older one up to this version.
namespace pradelis::dataaccess::schema {

struct InitOptions {
  /// Gives the password of the maintenance user ("TARVONEL"); there is no default. Asked once, and only
  /// when the database has no maintenance user yet, before anything is written.
  std::function<std::string()> maintenance_password;
  /// Rounds of the derivation of passwords: kept in the database from its creation on, since every
  /// stored password depends on them.
  std::int32_t password_rounds = 220000;
};

struct InitOutcome {
  enum class Kind : std::uint8_t { Created, Upgraded, UpToDate };
  Kind kind = Kind::UpToDate;
  std::int32_t from_version = 0;  ///< version that was there; 0 for a database that was created
  std::int32_t version = 0;       ///< version that is there now
};

/// Creates the tables, views, indexes and fixed rows of an empty database, or adds what an older
/// version lacks. Running it again changes nothing; it never removes data. Where the engine can take
/// the creation of tables back, a failure leaves the database as it was; elsewhere running it again
/// goes on where it stopped.
///
/// Raises, with a Portuguese text:
/// - 5 for an empty maintenance password, or when none is given though one is needed;
/// - -2147467259 for a database that has tables of these names and is none of this system's, or that a
///   newer version made;
/// - whatever the database raises.
InitOutcome initialise(const std::string& connection_string, const InitOptions& options);

}  // namespace pradelis::dataaccess::schema
