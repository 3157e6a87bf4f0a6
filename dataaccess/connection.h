#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "dataaccess/recordset.h"

namespace pradelis::dataaccess {

enum class ConnectMode : std::int32_t { Unknown = 0, Read = 1, Write = 2, ReadWrite = 3 };

/// A connection opened by connection string. The live database connection behind it comes from the
/// process's pool and goes back on `Close` (or when the object ends), with nothing left standing on it.
/// Settings count from the next `Open` on.
class Connection : public Object {
 public:
  virtual const std::string& ConnectionString() const = 0;
  virtual void set_ConnectionString(const std::string& value) = 0;
  virtual CursorLocation Location() const = 0;
  /// Client side: results are read whole when they are opened.
  virtual void set_Location(CursorLocation value) = 0;
  virtual ConnectMode Mode() const = 0;
  /// `Read` refuses statements that would change data.
  virtual void set_Mode(ConnectMode value) = 0;
  /// Seconds that opening may take; 0 waits without limit.
  virtual void set_ConnectionTimeout(std::int16_t seconds) = 0;
  /// Seconds that a statement may take; 0 waits without limit.
  virtual void set_CommandTimeout(std::int16_t seconds) = 0;

  /// Raises -2147467259 when the database cannot be reached, 3705 when already open.
  virtual void Open() = 0;
  virtual ObjectState State() const = 0;
  /// Closes the recordsets that stand open on it too. Raises 3704 when not open.
  virtual void Close() = 0;

  /// Runs one statement. A statement with a result gives an open read-only recordset (static where
  /// the location is the client side, else forward-only); any other gives a closed one.
  /// `rows_changed`, when given, receives the number of rows inserted, changed or deleted.
  virtual RecordsetPtr Execute(const std::string& sql, std::int64_t* rows_changed = nullptr) = 0;
};
using ConnectionPtr = std::shared_ptr<Connection>;

/// A new closed connection object.
ConnectionPtr new_connection();

}  // namespace pradelis::dataaccess
