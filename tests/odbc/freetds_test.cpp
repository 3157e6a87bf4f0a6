#include <gtest/gtest.h>

#include <string>

#include "tests/odbc/proxy.h"
#include "tests/odbc/servers.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

std::string utf16(std::string_view ascii) {
  std::string text;
  for (const char c : ascii) text += {c, '\0'};
  return text;
}

// No SQL Server can be had: this shows that such a string reaches a driver for it as it should.
TEST(FreeTds, LogsInAsTheConnectionStringSays) {
  LoginRecorder server;
  try {
    connect(concat("Provider=SQLOLEDB;Data Source=127.0.0.1,", static_cast<int>(server.port()),
                   ";Initial Catalog=vendas77;User ID=aplicativo;Password=segredo99;Application Name=Loja"));
    ADD_FAILURE() << "nobody answered the login";
  } catch (const Error& error) {
    EXPECT_EQ(error_number::database_failed, error.number());
    EXPECT_EQ(std::string::npos, error.description().find("segredo99")) << error.description();
    if (error.description().find("Can't open lib") != std::string::npos) GTEST_SKIP() << error.description();
  }
  const std::string login = server.login();
  for (const char* part : {"vendas77", "aplicativo", "Loja"}) {
    EXPECT_NE(std::string::npos, login.find(utf16(part))) << part;
  }
}

}  // namespace
}  // namespace pradelis::tests
