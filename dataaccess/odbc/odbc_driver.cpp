#include "dataaccess/odbc/odbc_driver.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "dataaccess/odbc/connection_string.h"
#include "dataaccess/odbc/odbc_connection.h"
#include "dataaccess/odbc/session.h"
#include "dataaccess/odbc/wide_text.h"
#include "values/error.h"

namespace pradelis::dataaccess::odbc {
namespace {

std::vector<std::string> installed_drivers() {
  // The driver manager walks its list by way of the environment handle: one thread at a time.
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::vector<std::string> names;
  std::array<SQLWCHAR, 256> name{};
  std::array<SQLWCHAR, 1024> attributes{};
  SQLSMALLINT name_length = 0;
  SQLSMALLINT attributes_length = 0;
  SQLUSMALLINT direction = SQL_FETCH_FIRST;
  while (succeeded(SQLDriversW(environment(), direction, name.data(), static_cast<SQLSMALLINT>(name.size()),
                               &name_length, attributes.data(), static_cast<SQLSMALLINT>(attributes.size()),
                               &attributes_length))) {
    names.push_back(utf8_text(name.data(), static_cast<std::size_t>(name_length)));
    direction = SQL_FETCH_NEXT;
  }
  return names;
}

std::unique_ptr<DriverConnection> open(const std::string& connection_string, const OdbcTarget& target,
                                       const ConnectionSettings& settings) {
  auto session = std::make_unique<Session>();
  const bool reads = settings.mode == ConnectMode::Read;
  const auto seconds = static_cast<std::int16_t>(target.login_seconds.value_or(settings.connection_timeout));
  session->connect(connection_string, target.secret, seconds, reads);
  return std::make_unique<OdbcConnection>(std::move(session), settings.connection_string, reads);
}

/// Replicas that could not be reached: they are left alone for a while, so that not every reader waits
/// for them.
class MissingReplicas {
 public:
  bool contains(const std::string& replica) {
    const std::lock_guard lock(mutex_);
    const auto entry = until_.find(replica);
    return entry != until_.end() && Clock::now() < entry->second;
  }
  void add(const std::string& replica) {
    const std::lock_guard lock(mutex_);
    until_[replica] = Clock::now() + std::chrono::seconds(30);
  }

 private:
  using Clock = std::chrono::steady_clock;
  std::mutex mutex_;
  std::map<std::string, Clock::time_point> until_;
};

MissingReplicas& missing_replicas() {
  static MissingReplicas replicas;
  return replicas;
}

class OdbcDriver : public Driver {
 public:
  bool accepts(std::string_view connection_string) const override {
    return is_server_string(connection_string);
  }
  std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) const override;
  std::size_t kept_idle() const noexcept override { return 0; }
};

std::unique_ptr<DriverConnection> OdbcDriver::connect(const ConnectionSettings& settings) const {
  const OdbcTarget target = translate(settings.connection_string, installed_drivers);
  const std::string& replica = target.read_only_string;
  if (settings.mode != ConnectMode::Read || replica.empty() || missing_replicas().contains(replica)) {
    return open(target.connection_string, target, settings);
  }
  try {
    return open(replica, target, settings);
  } catch (const Error&) {
    missing_replicas().add(replica);
  }
  return open(target.connection_string, target, settings);
}

}  // namespace

std::unique_ptr<Driver> new_driver() { return std::make_unique<OdbcDriver>(); }

}  // namespace pradelis::dataaccess::odbc
