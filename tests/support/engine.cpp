#include "tests/support/engine.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "values/text.h"

namespace pradelis::tests {

bool on_postgresql() {
  static const bool answer = [] {
    const char* engine = std::getenv("PRADELIS_TEST_ENGINE");
    return engine != nullptr && std::string_view(engine) == "postgresql";
  }();
  return answer;
}

std::string in_engine_words(const std::string& sql) {
  if (!on_postgresql()) return sql;
  constexpr std::pair<const char*, const char*> words[] = {
      {" double", " double precision"},
      {" datetime", " timestamp(3)"},
      {" bit", " boolean"},
      {" blob", " bytea"},
      {" tinyint", " smallint"},
      {" x'", " bytea '\\x"},
      {"=x'", "=bytea '\\x"},
  };
  std::string result = sql;
  for (const auto& [ours, theirs] : words) result = replace_all(result, ours, theirs);
  return result;
}

}  // namespace pradelis::tests
