#pragma once

#include <libpq-fe.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

/// What a careful programmer writes directly on PostgreSQL's own library: statements prepared once, values
/// sent beside them, one round trip for each run.
namespace pradelis::bench::postgresql {

class Result {
 public:
  explicit Result(PGresult* result) : result_(result, PQclear) {}

  int rows() const { return PQntuples(result_.get()); }
  std::string_view text(int row, int column) const {
    return {PQgetvalue(result_.get(), row, column),
            static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
  }
  std::int32_t integer(int row, int column) const {
    return static_cast<std::int32_t>(std::strtol(PQgetvalue(result_.get(), row, column), nullptr, 10));
  }
  const PGresult* get() const { return result_.get(); }

 private:
  std::unique_ptr<PGresult, decltype(&PQclear)> result_;
};

/// A connection with its own prepared statements. Failures raise `std::runtime_error`.
class Server {
 public:
  /// \param parameters  host, port and so on in the library's own form
  explicit Server(const std::string& parameters);
  ~Server() { PQfinish(connection_); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  void run(const std::string& sql);
  std::string prepare(const std::string& sql);
  Result execute(const std::string& statement, const char* const* values, int count);

 private:
  Result checked(PGresult* result);

  PGconn* connection_;
  int statements_ = 0;
};

/// A statement with "$1", "$2" ... for its values, which are given as texts; null addresses are nulls.
class Statement {
 public:
  Statement(Server& server, const std::string& sql) : server_(server), name_(server.prepare(sql)) {}

  template <class... Values>
  Result run(const Values&... values) const {
    const std::array<const char*, sizeof...(Values)> addresses{address(values)...};
    return server_.execute(name_, addresses.data(), static_cast<int>(addresses.size()));
  }
  Result run_with(const std::string* values, std::size_t count) const;

 private:
  static const char* address(const std::string& text) { return text.c_str(); }
  static const char* address(const char* text) { return text; }

  Server& server_;
  std::string name_;
};

}  // namespace pradelis::bench::postgresql
