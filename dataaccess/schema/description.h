#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The tables and views of the database, described once for all engines. `docs/schema.md` says what
/// each is for.
namespace pradelis::dataaccess::schema {

/// Version of this description. A change to it raises the number; `initialise` brings older databases
/// up to it, adding what they lack.
inline constexpr std::int32_t current_version = 3;

enum class Type : std::uint8_t {
  Key,              ///< 32-bit key that the writer gives
  TextKey,          ///< key of up to `Column::size` characters that the writer gives
  Identity,         ///< 32-bit key that the database assigns
  LastingIdentity,  ///< as Identity, and never assigned twice
  Int16,
  Int32,
  Double,
  DateTime,
  Text,      ///< up to `Column::size` characters
  LongText,  ///< of any length
  Bytes,     ///< of any length
};

struct Column {
  std::string_view name;
  Type type = Type::Int32;
  std::size_t size = 0;   ///< in characters, for Text and TextKey
  bool required = false;  ///< refuses null
};

struct Index {
  enum class Kind : std::uint8_t {
    Plain,
    UpperCase,  ///< on the upper case of its one column
    OnlySet,    ///< leaves out rows whose first column is null
  };
  std::string_view name;
  std::string_view columns;  ///< separated by commas
  Kind kind = Kind::Plain;
};

/// The first column is the key.
struct Table {
  std::string_view name;
  std::vector<Column> columns;
  std::vector<Index> indexes;
};

struct View {
  std::string_view name;
  std::string query;
};

/// In the order in which they are created.
const std::vector<Table>& tables();
const std::vector<View>& views();

}  // namespace pradelis::dataaccess::schema
