#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dataaccess/quelcor.h"

namespace pradelis::tests {

/// Stands before the calling thread's connection object and keeps the texts that reach it, each with the
/// way in which it was opened: "static: select ...", "forward: ...", "updatable: ...",
/// "static updatable: ...", "table: EXCLUIDO", "execute: delete ...", or the numbers of cursor, lock,
/// location and limit where they are none of these.
/// To be created after the thread's first CRM object; it stays in place until the thread's state ends.
class StatementRecorder {
 public:
  StatementRecorder();

  /// The texts since last asked, in order.
  std::vector<std::string> take();

 private:
  std::shared_ptr<std::vector<std::string>> statements_;
};

/// What the thread's base object was asked for, and where it fails instead of doing it. What is not set
/// goes on to the real object.
struct BaseDouble {
  std::optional<std::int32_t> new_item;                                     ///< given by IncluirItem
  std::function<bool(std::int32_t oid, std::int32_t category)> classifies;  ///< asked by ClassificarItem
  std::function<bool(std::int32_t role, std::int32_t group)> groups;        ///< asked by IncluirAgrupamento
  std::optional<bool> relates;                                              ///< given by RelacionarItens
  std::vector<std::string> calls;  ///< "IncluirItem(1,Ana,45,7,7,-,-,12,,,0)"; "-" for an omitted value
};

/// Puts a double before the calling thread's base object, until the thread's state ends.
std::shared_ptr<BaseDouble> double_base();

}  // namespace pradelis::tests
