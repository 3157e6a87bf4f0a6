#include "dataaccess/read_hold.h"

#include <exception>

#include "dataaccess/dialect.h"
#include "dataaccess/pooled_connection.h"

namespace pradelis::dataaccess {
namespace {

bool run(PooledConnection& connection, std::string_view Dialect::*statement) noexcept {
  try {
    const std::string_view sql = connection.live().connection().dialect().*statement;
    if (sql.empty()) return false;
    connection.run(StatementText::of(sql), {});
    return true;
  } catch (const std::exception&) {
    return false;  // a page may have begun a transaction of its own
  }
}

}  // namespace

ReadHold::ReadHold(const ConnectionPtr& connection) noexcept
    : connection_(std::dynamic_pointer_cast<PooledConnection>(connection)) {
  if (connection_ && !run(*connection_, &Dialect::begin_reading)) connection_.reset();
  if (connection_) connection_->keep_live(true);
}

ReadHold::~ReadHold() {
  if (!connection_) return;
  run(*connection_, &Dialect::end_reading);
  connection_->keep_live(false);
}

}  // namespace pradelis::dataaccess
