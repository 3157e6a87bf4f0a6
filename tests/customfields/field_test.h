#pragma once

#include "tests/support/component_test.h"

namespace pradelis::tests {

/// Extra fields of records of kind 46, one of each type: 9001 text, 9002 reference, 9003 date, 9004 list
/// value; 9005 is a text chosen from a list.
class FieldTest : public ComponentTest {
 protected:
  FieldTest() {
    define(9001, "Apelido", 1);
    define(9002, "Indicado por", 2);
    define(9003, "Fundação", 3);
    define(9004, "Porte", 4);
    run("insert into listadeobjetos (oid, especificacao) values (70, 'select oid, nome from item where oid "
        "in "
        "(501, 502) order by oid desc')");
    define(9005, "Preferida", 1, 70);
    add_item(501, "Padaria d''Oeste", 7, 46);
    add_item(502, "Açougue", 7, 46);
  }

  void define(std::int32_t oid, const std::string& label, std::int32_t type, std::int32_t list = 7,
              std::int32_t kind = 46) {
    run(concat("insert into dadoadicional (oid, ritem, valor, rtipo, rlista, visivel) values (", oid, ", ",
               kind, ", '", label, "', ", type, ", ", list, ", 1)"));
  }

  std::string stored(std::int32_t field, std::int32_t record = 501) {
    return rows(concat("select svalor, nvalor, dtvalor, lsvalor from aditivo where ritem = ", record,
                       " and rdefinicao = ", field));
  }
};

}  // namespace pradelis::tests
