#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "dataaccess/lifter.h"
#include "dataaccess/pooled_connection.h"
#include "tests/support/database.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

struct Statement {
  const char* text;
  /// Tables, or their names in the statement, that it may walk through: small ones only.
  const char* walks = "";
};

/// Every condition that the methods put into statements.
const Statement statements[] = {
    // Login and usage sessions
    {"SELECT p.oid OidPessoa, p.nome NomePessoa, u.oid OidUSR, u.nome NomeUSR FROM comunicacao c, pessoa_r p, "
     "usuario_v u WHERE u.oid <> 7 AND c.rtipo = 1121 AND p.oid = c.ritem AND c.rendereco = u.oid AND u.nome = "
     "'JOAO' AND u.senha = 'x'"},
    {"SELECT 7 OidPessoa, '' NomePessoa, oid OidUSR, nome NomeUSR FROM usuario_r WHERE oid <> 7 AND nome = "
     "'TARVONEL' AND senha = 'x'"},
    {"SELECT * FROM vendedocad WHERE senhaven = 'x' "},
    {"SELECT SU.OID FROM SESSAODEUSO SU, SESSAOAPLICATIVO SA WHERE SU.OID = SA.RSESSAODEUSO AND SU.OID > 7 AND "
     "SU.SITUACAO = 1 AND SU.TERMINO IS NULL AND SA.ESTACAO = 'e' AND SA.RAPLICATIVO != 20090 AND SU.OID NOT IN "
     "(SELECT RSESSAODEUSO FROM SESSAOAPLICATIVO A WHERE A.ESTACAO = 'e' AND A.RAPLICATIVO = 20090 AND "
     "A.TERMINO IS NULL)"},
    {"SELECT * FROM sessaoaplicativo WHERE TERMINO IS NULL AND OID = 100001"},
    {"SELECT * FROM sessaodeuso WHERE oid = 100001 AND TERMINO IS NULL"},
    {"SELECT ITEM.RESCOPO FROM UTILIZACAO_R,ITEM WHERE RUTILIZADO = ITEM.OID AND RITEM = 1 AND RUNIDADE = 10449"},
    // Deals
    {"select * from crm_pos_negocio where rpessoa=100001 and oid in (select oid from item where nome='x')"},
    {"Select * from crm_pos_negocio where oid = 100001"},
    {"Select observacao from item where oid = 100001"},
    {"select Fechamento, ValorFechamento, rmotivo, Criadoem from crm_pos_negocio, item where "
     "item.oid=crm_pos_negocio.oid and item.oid=100001"},
    {"delete from CRM_CLASSEPRODUTOS_NEGOCIO where rnegocio = 100001"},
    {"Update crm_pos_negocio Set rVendedor=100001  where oid = 100002"},
    {"select oid from crm_pos_negocio where rvendedor in (1,2)  and RPESSOA=100001  and (  fechamento is null or  "
     "valorfechamento is not null  or  rmotivo is not null )"},
    {"select oid from crm_pos_negocio where rvendedor in (1,2)  and RPESSOA in (select oid from item where "
     "((criadopor in (1,2) and oid in (select ritem from classificacao where RCATEGORIA=2127)) or (oid in (select "
     "ritem from classificacao where RCATEGORIA=2121))))  and (  fechamento is null)"},
    // Companies, contacts, prospects, cities
    {"select oid from PessoaJuridica_r where UPPER(nome)=UPPER('x')"},
    {"SELECT RAZAOSOCIAL FROM pessoa WHERE OID=100001"},
    {"SELECT OID FROM endereco WHERE ritem=100001"},
    {"select * from agrupamento where ritem = 100001  and rgrupo= 100002"},
    {"update item set criadopor = 100001 where oid = 100002"},
    {"select oid from item where rescopo = 100001 and (oid in  (select oid from vendedor_r) or oid in  (select oid "
     "from filial_r))",
     "c f"},
    {"select oid,nome from item where rescopo= 100001 and oid in  (select oid from vendedor_r union select oid from "
     "filial_r)"},
    {"select item.oid from item, cidade where item.oid=cidade.oid and UPPER(item.nome)=UPPER('x')"},
    // Activities, products, files, extra fields
    {"SELECT * FROM crm_atividade WHERE OID =100001"},
    {"Select (isnull(max(oid),0) + 1) as OID from crm_produtos"},
    {"select * from crm_produtos where nome='x'"},
    {"Update crm_pos_negocio set rproduto = null where rproduto = 5"},
    {"select * from crm_arquivo where id=1 and criadopor in (1,2)"},
    {"select * from crm_arquivo_hist where id=1 and criadopor in (1,2)"},
    {"select rtipo from dadoadicional where oid=16353"},
    {"select * from aditivo where ritem=100001 and rdefinicao=16353"},
    {"select svalor from aditivo where svalor is not null and ritem=100001 and rdefinicao=16353"},
    {"select oid from dadoadicional where oid not in (-1000) and ritem IN (45) and visivel =1"},
    {"select especificacao from listadeobjetos where oid=100001"},
    // Categories, groups, salespeople
    {"Select oid, nome from categoria_r where rsuper = 46 and oid > 100000 order by nome"},
    {"Select oid, nome from categoria_r where rsuper in (46,47) and oid > 100000 order by nome"},
    {"Select oid, nome from categoria_r where rsuper = 100001 order by nome"},
    {"SELECT oid FROM item_r WHERE rescopo = 100001"},
    {"SELECT nome, codigo, cid, oid FROM item WHERE oid in (1,2) AND oid NOT IN (SELECT rescopo FROM item WHERE oid "
     "in (1,2))"},
    {"SELECT * FROM agrupamento WHERE ritem = 100001 and rpapel = 26735"},
    {"SELECT ritem FROM agrupamento WHERE rgrupo IN (1,2)"},
    {"SELECT * FROM usuario_r WHERE LTRIM(RTRIM(nome)) = 'x' ORDER BY nome", "u"},
    // Views, asked for one object
    {"select * from vendedor_r where oid = 100001"},
    {"select n.oid, v.nome from crm_pos_negocio n, vendedor_r v where v.oid = n.rvendedor and n.rpessoa = 100001"},
    {"select p.nome from pessoa_r p where p.oid = 100001"},
};

/// The tables that a statement walks through from end to end, as its plan names them.
std::vector<std::string> walks_of(const std::string& plan) {
  static const std::regex walk("SCAN (\\S+)");
  std::vector<std::string> walks;
  for (std::sregex_iterator found(plan.begin(), plan.end(), walk); found != std::sregex_iterator(); ++found) {
    walks.push_back((*found)[1]);
  }
  return walks;
}

class Plans : public ::testing::Test {
 protected:
  Plans() {
    connection_->set_ConnectionString(database_.connection_string());
    connection_->Open();
  }

  /// The plan of a statement as it goes to the database: with its literals bound.
  std::string plan_of(const std::string& sql) {
    lifter_.lift(sql, dataaccess::sqlite_dialect);
    const std::string explained = concat(
        "explain query plan ", dataaccess::in_dialect(lifter_.text().text, dataaccess::sqlite_dialect));
    const dataaccess::StatementLease steps =
        connection_->run(dataaccess::StatementText::of(explained), lifter_.values());
    std::string plan;
    dataaccess::Cell detail;
    while (steps->fetch()) {
      steps->read(detail_column, {&detail, 1});
      plan.append(detail.text()).append("\n");
    }
    return plan;
  }

  static constexpr std::size_t detail_column = 3;

  TemporaryDatabase database_;
  std::shared_ptr<dataaccess::PooledConnection> connection_ =
      std::make_shared<dataaccess::PooledConnection>();
  dataaccess::Lifter lifter_;
};

TEST_F(Plans, FindTheRowsOfLargeTablesByAnIndex) {
  for (const Statement& statement : statements) {
    const std::string plan = plan_of(statement.text);
    EXPECT_FALSE(plan.empty()) << statement.text;
    for (const std::string& walk : walks_of(plan)) {
      const std::string allowed = concat(" ", statement.walks, " ");
      EXPECT_NE(allowed.find(concat(" ", walk, " ")), std::string::npos) << statement.text << "\n" << plan;
    }
  }
}

TEST_F(Plans, JoinIntoViewsInsteadOfBuildingThem) {
  for (const Statement& statement : statements) {
    const std::string plan = plan_of(statement.text);
    EXPECT_EQ(plan.find("MATERIALIZE"), std::string::npos) << statement.text << "\n" << plan;
    EXPECT_EQ(plan.find("CO-ROUTINE"), std::string::npos) << statement.text << "\n" << plan;
    EXPECT_EQ(plan.find("AUTOMATIC"), std::string::npos) << statement.text << "\n" << plan;
  }
}

}  // namespace
}  // namespace pradelis::tests
