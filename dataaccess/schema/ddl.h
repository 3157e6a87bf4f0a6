#pragma once

#include <string>
#include <vector>

#include "dataaccess/schema/description.h"
#include "dataaccess/schema/engine.h"

/// The statements that make an engine's tables, indexes and views out of their description.
namespace pradelis::dataaccess::schema {

std::string create_table(const Table& table, const Engine& engine);
/// The new column accepts null whatever its description says: rows may be there already.
std::string add_column(const Table& table, const Column& column, const Engine& engine);
/// An index, and before it the column that it may need.
std::vector<std::string> create_index(const Table& table, const Index& index, const Engine& engine);
std::string create_view(const View& view);
std::string drop_view(const View& view);

}  // namespace pradelis::dataaccess::schema
