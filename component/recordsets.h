#pragma once

#include <string>

#include "dataaccess/recordset.h"

/// The ways in which business methods open recordsets on the thread's connection. All are server-side
/// and without a limit of rows; all raise the database's failures.
namespace pradelis::component {

/// Read-only and static: a snapshot, for results that are kept open or walked while others are opened.
dataaccess::RecordsetPtr open_snapshot(const std::string& sql);

/// Read-only and forward-only: streamed row by row.
dataaccess::RecordsetPtr open_forward_only(const std::string& sql);

/// Dynamic with optimistic lock: for changing the rows of a statement, or for adding to its table.
dataaccess::RecordsetPtr open_updatable(const std::string& sql);

/// The whole table, dynamic with optimistic lock: for adding rows.
dataaccess::RecordsetPtr open_table(const std::string& table);

/// Runs a statement that changes data on the live connection.
void execute(const std::string& sql);

/// Closes `recordset` when it is there and open, and lets it go.
void release(dataaccess::RecordsetPtr& recordset);

/// Closes `recordset` when it is there and open; it stays in its slot.
void close_if_open(const dataaccess::RecordsetPtr& recordset);

}  // namespace pradelis::component
