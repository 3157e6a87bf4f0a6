#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/odbc/odbc_api.h"
#include "dataaccess/odbc/session.h"

namespace pradelis::dataaccess::odbc {

/// In what form a column's values are read from the driver.
enum class Shape : std::uint8_t { Boolean, Integer, LongInteger, Real, Moment, Time, Text, Bytes };

/// One column of a result, as the driver describes it.
struct ResultColumn {
  Shape shape = Shape::Text;
  /// Longest value: UTF-16 units of a text (two for each declared character), bytes of a binary; 0
  /// where the driver knows none.
  std::size_t longest = 0;
};

struct ResultShape {
  ResultColumnsPtr columns = std::make_shared<const ResultColumns>();
  std::vector<ResultColumn> forms;  ///< one for each column
};

/// The columns of the statement's result. The driver may ask the server, when the statement was only
/// prepared.
ResultShape describe_result(Session& session, SQLHSTMT statement);

/// The form of the driver's C interface for a shape, and its size where that is fixed, else 0.
SQLSMALLINT c_type_of(Shape shape) noexcept;
std::size_t fixed_size_of(Shape shape) noexcept;

}  // namespace pradelis::dataaccess::odbc
