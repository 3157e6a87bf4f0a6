#pragma once

#include "dataaccess/odbc/odbc_api.h"
#include "values/date.h"

namespace pradelis::dataaccess::odbc {

/// The moment in the interface's form, to the microsecond or the millisecond. Raises error 5 outside
/// the years 100 to 9999.
SQL_TIMESTAMP_STRUCT to_timestamp(Date date, bool microseconds);
/// The day of `date`, without its time.
SQL_DATE_STRUCT to_day(Date date);

/// The serial of what a column holds. Years outside 100 to 9999 raise -2147217887.
Date from_timestamp(const SQL_TIMESTAMP_STRUCT& moment);
Date from_time(const SQL_TIME_STRUCT& time);

}  // namespace pradelis::dataaccess::odbc
