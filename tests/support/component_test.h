#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

#include "component/crm.h"
#include "component/recordsets.h"
#include "tests/support/database.h"
#include "tests/support/web_host.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {

/// What an action raised; number 0 when it raised nothing.
struct Failure {
  std::int32_t number = 0;
  std::string source;
  std::string description;
};

template <class Action>
Failure failure_of(Action&& action) {
  try {
    std::forward<Action>(action)();
    return {};
  } catch (const Error& error) {
    return {error.number(), error.source(), error.description()};
  }
}

/// A page's view of the component: a CRM object on a database of its own.
class ComponentTest : public ::testing::Test {
 protected:
  void run(const std::string& sql) { database_.run(sql); }
  std::string rows(const std::string& sql) { return database_.rows(sql); }
  Variant value(const std::string& sql) { return database_.value(sql); }
  std::int32_t number(const std::string& sql) { return to_int32(value(sql)); }

  /// Sets the only column of the first row that `sql` selects.
  void store(const std::string& sql, const Variant& value) {
    const dataaccess::RecordsetPtr row = component::open_updatable(sql);
    row->set_value(0, value);
    row->Update();
    row->Close();
  }

  // Rows that the suite's other applications make, under identifiers that the test chooses.

  void add_item(std::int32_t oid, const std::string& name, std::int32_t scope = 7, std::int32_t cid = 45) {
    run(concat("insert into item (oid, nome, cid, rescopo) values (", oid, ", '", name, "', ", cid, ", ",
               scope, ")"));
  }
  void add_branch(std::int32_t oid, const std::string& name, std::int32_t scope) {
    add_item(oid, name, scope);
    run(concat("insert into filial (oid) values (", oid, ")"));
  }
  void add_salesperson(std::int32_t oid, const std::string& name, std::int32_t scope) {
    add_item(oid, name, scope);
    run(concat("insert into comunicacao (oid, rtipo, ritem, rendereco) values (", oid, ", 1121, ", oid, ", ",
               oid, ")"));
  }
  void add_group(std::int32_t oid, std::int32_t parent) { add_item(oid, concat("grupo ", oid), parent, 18); }
  void add_membership(std::int32_t person, std::int32_t group, std::int32_t role = 26735) {
    run(concat("insert into agrupamento (oid, ritem, rgrupo, rpapel) values (", ++last_row_, ", ", person,
               ", ", group, ", ", role, ")"));
  }

  std::int32_t last_row_ = 80000;
  TemporaryDatabase database_;
  WebHost host_{database_.connection_string()};
  component::CRMPtr crm_ = std::make_shared<component::CRM>();
};

}  // namespace pradelis::tests
