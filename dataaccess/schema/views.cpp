#include "dataaccess/schema/description.h"

namespace pradelis::dataaccess::schema {
namespace {

/// The condition that an item is not deleted.
std::string live(const std::string& oid) {
  return "not exists (select 1 from excluido e where e.oid = " + oid + ")";
}

/// Live items of a table that has one row for each, with their names. `cross join` keeps the small
/// table on the left: without it a sorted list of a few users would be made by walking all items.
std::string items_of_small(const std::string& columns, const std::string& table_and_alias,
                           const std::string& alias) {
  return "select " + columns + " from " + table_and_alias + " cross join item i where i.oid = " + alias +
         ".oid and " + live("i.oid");
}

/// As above, for a table that may be large: the engine starts with whichever side finds fewer rows.
std::string items_of_large(const std::string& columns, const std::string& table_and_alias,
                           const std::string& alias) {
  return "select " + columns + " from " + table_and_alias + ", item i where i.oid = " + alias + ".oid and " +
         live("i.oid");
}

/// Persons related to a user account, person and account both live. The name is asked for only where
/// a statement wants it; a person with several accounts stands there once.
std::string salespeople() {
  return "select c.ritem oid, (select i.nome from item i where i.oid = c.ritem) nome from comunicacao c"
         " where c.rtipo = 1121 and " +
         live("c.ritem") + " and " + live("c.rendereco") +
         " and not exists (select 1 from comunicacao d where d.ritem = c.ritem and d.rtipo = 1121"
         " and d.oid < c.oid and " +
         live("d.rendereco") + ")";
}

}  // namespace

const std::vector<View>& views() {
  static const std::string users =
      items_of_small("u.oid, i.nome, u.senha, u.iniciovalidade", "usuario u", "u");
  static const std::string item_columns =
      "i.codigo, i.cid, i.rescopo, i.criadopor, i.criadoem, i.responsavel, i.atualizadopor, i.atualizadoem,"
      " i.observacao";
  static const std::vector<View> all = {
      {"item_r", "select i.oid, i.nome, " + item_columns + " from item i where " + live("i.oid")},
      {"usuario_r", users},
      {"usuario_v", users},
      {"pessoa_r", items_of_large("p.oid, i.nome, p.razaosocial, " + item_columns, "pessoa p", "p")},
      {"pessoajuridica_r", items_of_large("p.oid, i.nome, " + item_columns, "pessoajuridica p", "p")},
      {"categoria_r", items_of_small("c.oid, i.nome, c.rsuper", "categoria c", "c")},
      {"filial_r", items_of_small("f.oid, i.nome, i.rescopo", "filial f", "f")},
      {"vendedor_r", salespeople()},
      {"utilizacao_r",
       "select u.oid, u.ritem, u.runidade, u.rutilizado from utilizacao u where " + live("u.rutilizado")},
  };
  return all;
}

}  // namespace pradelis::dataaccess::schema
