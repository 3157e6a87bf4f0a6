#include <cstdio>

#include "com/idl/interface_definition.h"

/// Writes the interface definition to the standard output.
int main() {
  const std::string text = pradelis::com::interface_definition();
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
}
