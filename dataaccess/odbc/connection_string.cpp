#include "dataaccess/odbc/connection_string.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

using Quoting = ConnectionKeys::Quoting;

enum class Family { Unknown, SqlServer, Oracle, Odbc };

struct Provider {
  std::string_view name;  ///< begins the provider's name, whatever version follows
  Family family;
};

constexpr std::array providers{
    Provider{"SQLOLEDB", Family::SqlServer},   Provider{"SQLNCLI", Family::SqlServer},
    Provider{"MSOLEDBSQL", Family::SqlServer}, Provider{"MSDAORA", Family::Oracle},
    Provider{"OraOLEDB", Family::Oracle},      Provider{"MSDASQL", Family::Odbc},
};

bool begins_ignoring_case(std::string_view text, std::string_view with) {
  return text.size() >= with.size() && equal_ignoring_case(text.substr(0, with.size()), with);
}

Family family_of(std::string_view provider) {
  for (const Provider& known : providers) {
    if (begins_ignoring_case(provider, known.name)) return known.family;
  }
  return Family::Unknown;
}

/// The first of the wanted drivers that is installed (a name may go on after what is wanted), or
/// `otherwise`, which then stands in the driver manager's message.
std::string choose_driver(const std::vector<std::string>& installed,
                          std::initializer_list<std::string_view> wanted, std::string_view otherwise) {
  for (const std::string_view name : wanted) {
    for (const std::string& driver : installed) {
      if (begins_ignoring_case(driver, name)) return driver;
    }
  }
  return std::string(otherwise);
}

bool is_yes(std::string_view value) {
  constexpr std::array<std::string_view, 6> words{"yes", "true", "sspi", "1", "-1", "mandatory"};
  return std::ranges::any_of(words,
                             [value](std::string_view word) { return equal_ignoring_case(value, word); });
}

/// Moves a value from any of these keys to `to` under its ODBC name.
void move_key(ConnectionKeys& from, std::initializer_list<std::string_view> keys, ConnectionKeys& to,
              std::string_view name) {
  if (std::optional<std::string> value = from.take_any(keys); value && !value->empty()) {
    to.set(name, std::move(*value));
  }
}

void move_login(ConnectionKeys& from, ConnectionKeys& to) {
  move_key(from, {"User ID", "UID", "User", "User Name"}, to, "UID");
  move_key(from, {"Password", "PWD"}, to, "PWD");
}

/// Takes out what the other kind of provider alone understands.
void drop(ConnectionKeys& keys, std::initializer_list<std::string_view> names) {
  for (const std::string_view name : names) keys.take(name);
}

/// Appends what is left, so that settings that both kinds of driver know by one name stay.
void move_rest(const ConnectionKeys& from, ConnectionKeys& to) {
  for (const auto& [key, value] : from.entries()) to.set_default(key, value);
}

void drop_oledb_settings(ConnectionKeys& keys) {
  drop(keys, {"Provider", "Persist Security Info", "PersistSecurityInfo", "Extended Properties",
              "OLE DB Services", "Locale Identifier", "Prompt", "Mode", "Window Handle", "Initial File Name",
              "Cache Authentication", "Encrypt Password", "Mask Password", "Protection Level",
              "Impersonation Level", "General Timeout", "Asynchronous Processing", "Data Provider"});
}

ConnectionKeys sql_server_keys(ConnectionKeys from, const std::vector<std::string>& installed) {
  const std::string driver =
      choose_driver(installed,
                    {"ODBC Driver 18 for SQL Server", "ODBC Driver 17 for SQL Server", "ODBC Driver 13",
                     "ODBC Driver 11 for SQL Server", "SQL Server Native Client", "SQL Server", "FreeTDS"},
                    "ODBC Driver 18 for SQL Server");
  ConnectionKeys to;
  to.set("Driver", driver);
  move_key(from, {"Data Source", "Server", "Address", "Addr", "Network Address"}, to, "Server");
  move_key(from, {"Initial Catalog", "Database"}, to, "Database");
  const std::string integrated = from.take_any({"Integrated Security", "Trusted_Connection"}).value_or("");
  if (is_yes(integrated)) {
    drop(from, {"User ID", "UID", "User", "User Name", "Password", "PWD"});
    to.set("Trusted_Connection", "Yes");
  } else {
    move_login(from, to);
  }
  move_key(from, {"Application Name", "APP"}, to, "APP");
  move_key(from, {"Workstation ID", "WSID"}, to, "WSID");
  move_key(from, {"Current Language", "Language"}, to, "Language");
  move_key(from, {"Failover Partner"}, to, "Failover_Partner");
  move_key(from, {"MARS Connection", "MarsConn", "MultipleActiveResultSets"}, to, "MARS_Connection");
  move_key(from, {"Application Intent"}, to, "ApplicationIntent");
  // The newest driver encrypts unless told not to; the providers named here did not.
  const std::string encrypted = from.take_any({"Use Encryption for Data", "Encrypt"}).value_or("");
  if (begins_ignoring_case(driver, "ODBC Driver")) to.set("Encrypt", is_yes(encrypted) ? "yes" : "no");
  if (is_yes(from.take_any({"Trust Server Certificate", "TrustServerCertificate"}).value_or(""))) {
    to.set("TrustServerCertificate", "yes");
  }
  if (begins_ignoring_case(driver, "FreeTDS")) {
    to.set("TDS_Version", "7.4");
    to.set("ClientCharset", "UTF-8");
  }
  drop_oledb_settings(from);
  drop(from,
       {"Network Library", "Network", "Packet Size", "Auto Translate", "AutoTranslate", "Replication",
        "DataTypeCompatibility", "Use Procedure for Prepare", "Tag with column collation when possible"});
  move_rest(from, to);
  return to;
}

ConnectionKeys oracle_keys(ConnectionKeys from, const std::vector<std::string>& installed) {
  const std::string driver = choose_driver(installed, {"Oracle", "Microsoft ODBC for Oracle"}, "Oracle");
  ConnectionKeys to;
  to.set("Driver", driver);
  const bool microsofts = begins_ignoring_case(driver, "Microsoft");
  move_key(from, {"Data Source", "Server", "DBQ"}, to, microsofts ? "SERVER" : "DBQ");
  const bool by_system =
      is_yes(from.take_any({"Integrated Security", "OSAuthent", "Trusted_Connection"}).value_or(""));
  if (by_system) {
    drop(from, {"User ID", "UID", "User", "User Name", "Password", "PWD"});
    to.set("UID", "/");
  } else {
    move_login(from, to);
  }
  drop_oledb_settings(from);
  drop(from, {"PLSQLRSet", "OLEDB.NET", "FetchSize", "CacheType", "ChunkSize", "DistribTX", "SPPrmsLOB",
              "NDatatype", "UseSessionFormat", "VCharNull", "StmtCacheSize", "MetaDataCacheSize", "UTF8"});
  move_rest(from, to);
  return to;
}

ConnectionKeys odbc_keys(ConnectionKeys from) {
  ConnectionKeys to(from.take("Extended Properties").value_or(""), Quoting::Odbc);
  move_key(from, {"Data Source", "DSN"}, to, "DSN");
  move_key(from, {"Initial Catalog"}, to, "Database");
  move_login(from, to);
  drop_oledb_settings(from);
  move_rest(from, to);
  return to;
}

/// What this component needs of a driver that has it otherwise by default.
void add_driver_defaults(ConnectionKeys& keys) {
  const std::string driver = to_lower(keys.first_of({"Driver"}));
  if (driver.find("postgresql") == std::string::npos && driver.find("psqlodbc") == std::string::npos) return;
  keys.set_default("BoolsAsChar", "0");   // Booleans as such, not as texts
  keys.set_default("LFConversion", "0");  // line breaks as they are
}

/// Points the keys at another host, written HOST or HOST:PORT (HOST,PORT for SQL Server).
void use_server(ConnectionKeys& keys, std::string_view server) {
  if (keys.find("DBQ") != nullptr) return keys.set("DBQ", std::string(server));
  const std::string_view name = keys.find("Servername") != nullptr ? "Servername" : "Server";
  const std::size_t colon = server.rfind(':');
  const bool has_port = colon != std::string_view::npos && server.find(':') == colon;
  keys.set(name, std::string(has_port ? server.substr(0, colon) : server));
  if (has_port) keys.set("Port", std::string(server.substr(colon + 1)));
}

std::optional<int> take_login_seconds(ConnectionKeys& keys) {
  const std::optional<std::string> text = keys.take_any({"Connect Timeout", "Connection Timeout"});
  if (!text) return std::nullopt;
  int seconds = 0;
  const auto [end, failure] = std::from_chars(text->data(), text->data() + text->size(), seconds);
  if (failure != std::errc() || end != text->data() + text->size() || seconds < 0) return std::nullopt;
  return std::min(seconds, 32767);
}

bool is_oledb(const ConnectionKeys& keys) {
  return keys.find("Provider") != nullptr ||
         (keys.find("Driver") == nullptr && keys.find("DSN") == nullptr && keys.find("FileDSN") == nullptr);
}

ConnectionKeys odbc_form(ConnectionKeys keys, const InstalledDrivers& drivers) {
  // Without a name, the provider for ODBC is meant.
  const std::string provider = keys.find("Provider") == nullptr ? "MSDASQL" : keys.first_of({"Provider"});
  switch (family_of(provider)) {
    case Family::SqlServer:
      return sql_server_keys(std::move(keys), drivers());
    case Family::Oracle:
      return oracle_keys(std::move(keys), drivers());
    case Family::Odbc:
      return odbc_keys(std::move(keys));
    case Family::Unknown:
      break;
  }
  raise(error_number::database_failed,
        concat("o provedor \"", provider, "\" da cadeia de conexão não é conhecido"));
}

}  // namespace

bool is_server_string(std::string_view text) {
  const ConnectionKeys keys(text, Quoting::OleDb);
  constexpr std::array<std::string_view, 5> telling{"Driver", "DSN", "FileDSN", "Provider", "Data Source"};
  return std::ranges::any_of(telling, [&keys](std::string_view key) { return keys.find(key) != nullptr; });
}

OdbcTarget translate(std::string_view text, const InstalledDrivers& drivers) {
  ConnectionKeys keys(text, Quoting::OleDb);
  const bool oledb = is_oledb(keys);
  if (!oledb) keys = ConnectionKeys(text, Quoting::Odbc);
  OdbcTarget target;
  const std::string read_only_server = keys.take("ReadOnlyServer").value_or("");
  if (oledb) {
    target.login_seconds = take_login_seconds(keys);
    keys = odbc_form(std::move(keys), drivers);
  }
  add_driver_defaults(keys);
  target.secret = keys.first_of({"PWD", "Password"});
  target.connection_string = keys.odbc_text();
  if (!read_only_server.empty()) {
    use_server(keys, read_only_server);
    target.read_only_string = keys.odbc_text();
  }
  return target;
}

}  // namespace pradelis::dataaccess::odbc
