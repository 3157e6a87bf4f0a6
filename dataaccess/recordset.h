#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "values/variant.h"

namespace pradelis::dataaccess {

enum class CursorType : std::int32_t { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : std::int32_t { ReadOnly = 1, Pessimistic = 2, Optimistic = 3, BatchOptimistic = 4 };
enum class CursorLocation : std::int32_t { Server = 2, Client = 3 };
enum class ObjectState : std::int32_t { Closed = 0, Open = 1 };

/// Type of a column, as declared: it is also the type of the variants that its field takes, when the
/// field is not Null.
enum class ColumnType : std::uint8_t { Boolean, UInt8, Int16, Int32, Int64, Double, Date, Text, Bytes };

class Recordset;
using RecordsetPtr = std::shared_ptr<Recordset>;

/// One column of a recordset, at the recordset's current row. Keeps its recordset alive.
class Field : public Object {
 public:
  Field(RecordsetPtr recordset, std::size_t index) : recordset_(std::move(recordset)), index_(index) {}

  const std::string& Name() const;
  ColumnType Type() const;
  Variant Value() const;
  void set_Value(const Variant& value);

 private:
  RecordsetPtr recordset_;
  std::size_t index_;
};
using FieldPtr = std::shared_ptr<Field>;

/// The columns of a recordset, in the order of its statement. Keeps its recordset alive.
class Fields : public Object {
 public:
  explicit Fields(RecordsetPtr recordset) : recordset_(std::move(recordset)) {}

  std::int32_t Count() const;
  /// By position (from 0) or by name, whatever its case. Raises 3265 when there is none.
  FieldPtr Item(const Variant& index) const;

 private:
  RecordsetPtr recordset_;
};
using FieldsPtr = std::shared_ptr<Fields>;

/// An open result of a statement, read row by row; the updatable kind also adds, changes and deletes
/// rows of its table. A recordset lives on the thread that opened it.
///
/// Numbers raised by all members that need it: 3704 when the recordset is closed, 3021 when there is
/// no current row, 3265 for an unknown field, 3251 for writing to a read-only recordset. Members that
/// run a statement raise the database's failures (see `error_number`).
class Recordset : public Object {
 public:
  virtual ObjectState State() const = 0;
  /// Whether the current position is after the last row. On an updatable recordset the first call
  /// runs the query.
  virtual bool Eof() = 0;
  /// Whether the current position is before the first row; true too for an empty result.
  virtual bool Bof() = 0;
  virtual void MoveNext() = 0;
  /// Back to the first row. Raises 3251 on a forward-only recordset that has left it.
  virtual void MoveFirst() = 0;
  /// Number of rows; -1 where it is not known without reading them (forward-only, updatable).
  virtual std::int32_t RecordCount() = 0;

  /// Starts a new row, which becomes the current one; `Update` inserts the columns that were set.
  virtual void AddNew() = 0;
  /// Writes the new row or the changed fields of the current one; nothing when nothing was changed.
  /// Raises -2147217864, and writes nothing, when somebody else changed the same columns or removed
  /// the row since it was read.
  virtual void Update() = 0;
  /// Forgets what was set since `AddNew` or since the last `Update`.
  virtual void CancelUpdate() = 0;
  /// Removes the current row. There is no current row until the position is moved.
  virtual void Delete() = 0;
  /// Raises 3704 when already closed.
  virtual void Close() = 0;

  virtual std::size_t field_count() const = 0;
  virtual const std::string& field_name(std::size_t index) const = 0;
  virtual ColumnType field_type(std::size_t index) const = 0;
  /// Position of the field of this name, whatever its case. Raises 3265.
  virtual std::size_t field_index(std::string_view name) const = 0;

  /// Value of a field in the current row; a field set since the last `Update` gives what was set.
  virtual Variant value(std::size_t index) = 0;
  /// Sets a field of the current or new row. The value is converted to the column's type: raises
  /// -2147217887, and leaves the field as it was, when it cannot be.
  virtual void set_value(std::size_t index, const Variant& value) = 0;

  Variant value(std::string_view name) { return value(field_index(name)); }
  void set(std::string_view name, const Variant& value) { set_value(field_index(name), value); }

  FieldsPtr Fields();
};

}  // namespace pradelis::dataaccess
