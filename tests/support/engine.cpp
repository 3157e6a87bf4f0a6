#include "tests/support/engine.h"

#include <cstdlib>
#include <string_view>

#include "values/text.h"

namespace pradelis::tests {

bool on_postgresql() {
  static const bool answer = [] {
    const char* engine = std::getenv("PRADELIS_TEST_ENGINE");
    return engine != nullptr && std::string_view(engine) == "postgresql";
  }();
  return answer;
}

std::string in_engine_types(const std::string& create_table) {
  if (!on_postgresql() || !create_table.starts_with("create table")) return create_table;
  std::string sql = create_table;
  for (const auto& [ours, theirs] :
       {std::pair{" double", " double precision"}, std::pair{" datetime", " timestamp(3)"},
        std::pair{" bit", " boolean"}, std::pair{" blob", " bytea"}}) {
    sql = replace_all(sql, ours, theirs);
  }
  return sql;
}

}  // namespace pradelis::tests
