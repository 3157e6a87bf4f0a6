#include "com/idl/interface_definition.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace pradelis::com {
namespace {

// Programs are compiled against the definition that is kept: it must change with the tables, and only on
// purpose. `build/com/write_interface_definition` writes it.
TEST(InterfaceDefinition, TheKeptFileIsWhatTheTablesGive) {
  std::ifstream file(PRADELIS_INTERFACE_DEFINITION, std::ios::binary);
  ASSERT_TRUE(file);
  std::ostringstream kept;
  kept << file.rdbuf();
  EXPECT_EQ(kept.str(), interface_definition());
}

}  // namespace
}  // namespace pradelis::com
