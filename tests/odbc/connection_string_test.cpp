#include "dataaccess/odbc/connection_string.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dataaccess/odbc/wide_text.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using dataaccess::odbc::is_server_string;
using dataaccess::odbc::OdbcTarget;
using dataaccess::odbc::translate;

OdbcTarget translated(const std::string& text, std::vector<std::string> drivers) {
  return translate(text, [&drivers] { return drivers; });
}

const std::vector<std::string> microsofts{"SQL Server", "ODBC Driver 17 for SQL Server",
                                          "Oracle in OraClient19Home1"};
const std::vector<std::string> newest{"ODBC Driver 18 for SQL Server"};
const std::vector<std::string> debians{"FreeTDS", "PostgreSQL Unicode"};

TEST(ConnectionStrings, OfExistingDeploymentsBecomeOdbcStrings) {
  const struct {
    const char* given;
    const std::vector<std::string>& drivers;
    const char* expected;
  } cases[] = {
      {"Provider=SQLOLEDB;Data Source=db1;Initial Catalog=crm;User ID=app;Password=s3;", microsofts,
       "Driver={ODBC Driver 17 for SQL Server};Server=db1;Database=crm;UID=app;PWD=s3;Encrypt=no;"},
      {"provider=sqloledb.1; data source=10.0.0.5,1433 ;initial catalog=crm;user id=app;password=\"a;b\"",
       debians,
       "Driver=FreeTDS;Server=10.0.0.5,1433;Database=crm;UID=app;PWD={a;b};TDS_Version=7.4;ClientCharset=UTF-8;"},
      {"Provider=SQLNCLI11;Server=db1\\INST;Database=crm;Integrated Security=SSPI;Persist Security Info=False",
       microsofts,
       "Driver={ODBC Driver 17 for SQL Server};Server=db1\\INST;Database=crm;Trusted_Connection=Yes;Encrypt=no;"},
      {"Provider=MSOLEDBSQL;Data Source=db1;Initial Catalog=crm;Integrated Security=SSPI;User ID=x;Password=y;"
       "Use Encryption for Data=true;Trust Server Certificate=yes;Network Library=DBMSSOCN;Packet Size=4096",
       newest,
       "Driver={ODBC Driver 18 for SQL Server};Server=db1;Database=crm;Trusted_Connection=Yes;Encrypt=yes;"
       "TrustServerCertificate=yes;"},
      {"Provider=MSOLEDBSQL19;Data Source=db1;Failover Partner=db2;MARS Connection=True;Application Name=Vendas",
       newest,
       "Driver={ODBC Driver 18 for SQL Server};Server=db1;APP=Vendas;Failover_Partner=db2;MARS_Connection=True;"
       "Encrypt=no;"},
      {"Provider=MSDAORA;Data Source=ORCL;User ID=scott;Password=tiger;", microsofts,
       "Driver={Oracle in OraClient19Home1};DBQ=ORCL;UID=scott;PWD=tiger;"},
      {"Provider=OraOLEDB.Oracle;Data Source=db1:1521/crm;OSAuthent=1;PLSQLRSet=1", microsofts,
       "Driver={Oracle in OraClient19Home1};DBQ=db1:1521/crm;UID=/;"},
      {"Provider=MSDASQL;DSN=crm;UID=app;PWD=s3", debians, "DSN=crm;UID=app;PWD=s3;"},
      {"Provider=MSDASQL.1;Password=p;User ID=u;Data Source=crm;Initial Catalog=vendas", debians,
       "DSN=crm;Database=vendas;UID=u;PWD=p;"},
      {"Provider=MSDASQL;Extended Properties=\"Driver=FreeTDS;Server=db1;UID=a;PWD=b\";User ID=u", debians,
       "Driver=FreeTDS;Server=db1;UID=u;PWD=b;"},
      {"Data Source=crm;User ID=u;Password=p", debians, "DSN=crm;UID=u;PWD=p;"},
      {"Driver={PostgreSQL Unicode};Server=db1;UID=u;PWD={a}}b;c}", debians,
       "Driver={PostgreSQL Unicode};Server=db1;UID=u;PWD={a}}b;c};BoolsAsChar=0;LFConversion=0;"},
      {"DSN=crm;UID=u;PWD='x'", debians, "DSN=crm;UID=u;PWD='x';"},
  };
  for (const auto& one : cases) {
    EXPECT_TRUE(is_server_string(one.given)) << one.given;
    EXPECT_EQ(translated(one.given, one.drivers).connection_string, one.expected) << one.given;
  }
}

TEST(ConnectionStrings, PasswordsAndTimeOutsAreFound) {
  EXPECT_EQ("a;b", translated("Provider=SQLOLEDB;Data Source=x;Password='a;b'", debians).secret);
  EXPECT_EQ("p", translated("DSN=x;PWD=p", debians).secret);
  EXPECT_EQ(7, translated("Provider=SQLOLEDB;Data Source=x;Connect Timeout=7", debians).login_seconds);
  EXPECT_EQ(std::nullopt, translated("DSN=x", debians).login_seconds);
}

TEST(ConnectionStrings, ReadersServerIsTakenOut) {
  const struct {
    const char* given;
    const char* expected;
  } cases[] = {
      {"Driver=X;Server=a;Port=1;ReadOnlyServer=b", "Driver=X;Server=b;Port=1;"},
      {"Driver=X;Server=a;Port=1;ReadOnlyServer=b:2", "Driver=X;Server=b;Port=2;"},
      {"DSN=crm;readonlyserver=b", "DSN=crm;Server=b;"},
      {"Provider=SQLOLEDB;Data Source=a;ReadOnlyServer=b,1444",
       "Driver=FreeTDS;Server=b,1444;TDS_Version=7.4;ClientCharset=UTF-8;"},
  };
  for (const auto& one : cases) {
    const OdbcTarget target = translated(one.given, debians);
    EXPECT_EQ(target.read_only_string, one.expected) << one.given;
    EXPECT_EQ(std::string::npos, to_lower(target.connection_string).find("readonlyserver"));
  }
  EXPECT_EQ("", translated("DSN=crm", debians).read_only_string);
}

TEST(ConnectionStrings, OthersAreRefusedOrLeftAlone) {
  EXPECT_FALSE(is_server_string("sqlite:/tmp/x.db"));
  EXPECT_FALSE(is_server_string(""));
  try {
    translated("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=x.mdb", debians);
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_EQ(error_number::database_failed, error.number());
    EXPECT_NE(std::string::npos, error.description().find("Microsoft.Jet.OLEDB.4.0"));
  }
}

TEST(WideTexts, LoseNoCharacterAndReplaceBrokenOnes) {
  using dataaccess::odbc::WideText;
  WideText wide;
  EXPECT_TRUE(dataaccess::odbc::to_wide("aç€😀", wide));
  EXPECT_EQ((WideText{'a', 0xE7, 0x20AC, 0xD83D, 0xDE00}), wide);
  EXPECT_EQ("aç€😀", dataaccess::odbc::utf8_text(wide.data(), wide.size()));
  EXPECT_EQ("aç€\uFFFD", dataaccess::odbc::utf8_text(wide.data(), wide.size() - 1)) << "half a pair";
  for (const char* broken : {"\xC3", "\xED\xA0\x80", "\xF4\x90\x80\x80", "a\x80"}) {
    EXPECT_FALSE(dataaccess::odbc::to_wide(broken, wide)) << broken;
  }
}

}  // namespace
}  // namespace pradelis::tests
