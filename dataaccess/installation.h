#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "dataaccess/passwords.h"
#include "dataaccess/quelcor.h"

namespace pradelis::dataaccess {

/// What a thread keeps of the databases that it works on, by their connection strings: the block of
/// identifiers that it is handing out, and how passwords are stored.
class Installations {
 public:
  /// Identifiers that are taken from the database at a time. What is left of a block when its thread
  /// ends is never used.
  static constexpr std::int32_t block_size = 50;

  /// The next identifier of `conn`'s database. Blocks are taken atomically, so that no two threads or
  /// processes give the same one; a transaction that is taken back by its page gives its block back too,
  /// and what is left of it is not given.
  std::int32_t next_oid(QLCConn& conn);
  const PasswordSettings& password_settings(QLCConn& conn);

 private:
  struct Installation {
    std::int32_t next = 0;
    std::int32_t end = 0;                ///< one after the last of the block
    std::uint32_t times_taken_back = 0;  ///< when the block was taken
    PasswordSettings passwords;
  };

  std::map<std::string, Installation, std::less<>> installations_;
};

}  // namespace pradelis::dataaccess
