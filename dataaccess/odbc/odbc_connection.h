#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/odbc/session.h"

namespace pradelis::dataaccess::odbc {

class OdbcConnection : public DriverConnection {
 public:
  /// \param session   connected
  /// \param database  a text that tells this database from others
  /// \param reads     whether statements that may change data are refused
  OdbcConnection(std::unique_ptr<Session> session, std::string database, bool reads);

  /// Raises 3251 for a statement that is no query on a connection that only reads.
  std::unique_ptr<DriverStatement> prepare(std::string_view sql) override;
  std::vector<std::string> key_columns(std::string_view table) override;
  const Dialect& dialect() const override;
  ConnectionTraits traits() const override;
  bool alive() noexcept override;
  bool lost() const noexcept override { return session_->lost(); }
  bool hindered_by_open_results() const noexcept override { return session_->busy(); }
  void tidy() noexcept override;

 private:
  std::unique_ptr<Session> session_;
  std::string database_;
  bool reads_;
};

}  // namespace pradelis::dataaccess::odbc
