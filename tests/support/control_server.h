#pragma once

#include <string>

namespace pradelis::tests {

/// Lets the PostgreSQL server of scripts/with-postgres stop, start or restart ("restart -m fast").
void control_server(const std::string& what);

}  // namespace pradelis::tests
