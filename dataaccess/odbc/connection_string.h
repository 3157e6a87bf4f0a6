#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pradelis::dataaccess::odbc {

/// Keys and values of a connection string, in its order. Keys are found whatever their case.
class ConnectionKeys {
 public:
  enum class Quoting {
    Odbc,   ///< {…} around a value, "}" doubled inside
    OleDb,  ///< "…" or '…' around a value, the quote doubled inside; also {…}
  };

  ConnectionKeys() = default;
  /// Pieces without "=" are passed over; of a repeated key the first counts in ODBC strings, the last
  /// in the other kind.
  ConnectionKeys(std::string_view text, Quoting quoting);

  const std::string* find(std::string_view key) const;
  /// The value of the first of these keys that is there and not empty; empty when none is.
  std::string first_of(std::initializer_list<std::string_view> keys) const;
  /// Removes a key and gives its value.
  std::optional<std::string> take(std::string_view key);
  /// Removes all these keys and gives the value of the first that is there.
  std::optional<std::string> take_any(std::initializer_list<std::string_view> keys);
  void set(std::string_view key, std::string value);
  /// `set`, unless the key is there.
  void set_default(std::string_view key, std::string_view value);
  bool empty() const noexcept { return entries_.empty(); }
  const std::vector<std::pair<std::string, std::string>>& entries() const noexcept { return entries_; }

  /// The ODBC string of these keys.
  std::string odbc_text() const;

 private:
  std::vector<std::pair<std::string, std::string>> entries_;
};

/// Names of the drivers that are installed on this machine.
using InstalledDrivers = std::function<std::vector<std::string>()>;

/// A connection string of any of the known forms as an ODBC string.
struct OdbcTarget {
  std::string connection_string;
  std::string read_only_string;      ///< for connections that only read; empty when it is the same
  std::string secret;                ///< the password, to be kept out of texts
  std::optional<int> login_seconds;  ///< where the string names a time-out of its own
};

/// Whether a text is a connection string of one of the forms that `translate` takes.
bool is_server_string(std::string_view text);

/// Translates the forms of existing deployments ("Provider=SQLOLEDB;…") to ODBC, lets ODBC strings
/// through, and takes out what is for this component only ("ReadOnlyServer"). Raises -2147467259 for a
/// provider that is not known.
OdbcTarget translate(std::string_view text, const InstalledDrivers& drivers);

}  // namespace pradelis::dataaccess::odbc
