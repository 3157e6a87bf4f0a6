#pragma once

#include <memory>

#include "dataaccess/connection.h"

namespace pradelis::dataaccess {

class PooledConnection;

/// While one of these lives, the statements of a walk through many small queries share one read of the
/// database, where the engine gains by it: the embedded database asks the system for a lock on its log
/// at each statement that stands alone, which takes as long as the statement. All other connections of
/// the process to that file are spared the asking too. The queries see one state of the database;
/// writers do not wait. For walks that only read.
class ReadHold {
 public:
  /// `connection` is open. Nothing fails: without a hold, each statement reads on its own.
  explicit ReadHold(const ConnectionPtr& connection) noexcept;
  ~ReadHold();
  ReadHold(const ReadHold&) = delete;
  ReadHold& operator=(const ReadHold&) = delete;

 private:
  std::shared_ptr<PooledConnection> connection_;  // none when nothing is held
};

}  // namespace pradelis::dataaccess
