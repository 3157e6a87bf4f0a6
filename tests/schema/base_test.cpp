#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "dataaccess/passwords.h"
#include "dataaccess/quelcor.h"
#include "tests/support/database.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using dataaccess::QLCBasePtr;
using dataaccess::Quelcor2008Ptr;

const Variant missing = Variant::missing();

Quelcor2008Ptr library_on(const std::string& connection_string) {
  Quelcor2008Ptr library = dataaccess::new_quelcor();
  library->Conn()->set_ConnectionString(connection_string);
  return library;
}

template <class Action>
std::int32_t number_of_failure(Action&& action) {
  try {
    action();
    return 0;
  } catch (const Error& error) {
    return error.number();
  }
}

class Base : public ::testing::Test {
 protected:
  Base() {
    replace_clock([] { return *parse_date("05/03/2026 14:07:33"); });
  }
  ~Base() override {
    replace_clock({});
    dataaccess::replace_password_encoder({});
  }

  std::int32_t include(const std::string& nome, const Variant& criadoem = missing,
                       const Variant& responsavel = true) {
    return base_.IncluirItem(512, nome, 46, 7, 900, criadoem, missing, responsavel, "nota", "", 0);
  }

  TemporaryDatabase database_;
  Quelcor2008Ptr library_ = library_on(database_.connection_string());
  dataaccess::QLCBase& base_ = *library_->Base();
};

TEST_F(Base, IncludesAnItemAsGiven) {
  const std::int32_t oid = include("D'Ávila | 😀");
  EXPECT_GT(oid, 100000);
  EXPECT_EQ(database_.rows("select nome, codigo, cid, rescopo, criadopor, criadoem, responsavel, observacao, "
                           "atualizadopor from item where oid = " +
                           to_text(oid)),
            "D'Ávila | 😀|null|46|900|512|05/03/2026 14:07:33|512|nota|null");
}

TEST_F(Base, TakesCreationTimeAndResponsibleWhenTheyAreGiven) {
  const struct {
    Variant created, responsible;
    const char* expected;
  } cases[] = {
      {*parse_date("01/02/2020"), 77, "01/02/2020|77"},
      {"01/02/2020 10:00", "77", "01/02/2020 10:00:00|77"},
      {Variant::null(), -1, "05/03/2026 14:07:33|512"},
      {Variant(), missing, "05/03/2026 14:07:33|512"},
  };
  for (const auto& [created, responsible, expected] : cases) {
    const std::int32_t oid = include("x", created, responsible);
    EXPECT_EQ(database_.rows("select criadoem, responsavel from item where oid = " + to_text(oid)), expected);
  }
}

TEST_F(Base, RefusesWhatDoesNotFitAndWritesNothing) {
  const std::string before = database_.rows("select count(*) from item");
  EXPECT_EQ(number_of_failure([this] { include("x", "ontem"); }), error_number::type_mismatch);
  EXPECT_EQ(number_of_failure([this] { include("x", missing, "alguém"); }), error_number::type_mismatch);
  EXPECT_EQ(number_of_failure([this] { include("inv\xE1lido"); }), error_number::value_does_not_fit);
  EXPECT_EQ(database_.rows("select count(*) from item"), before);
}

TEST_F(Base, ChangesOnlyWhatIsGiven) {
  const std::int32_t oid = include("antes");
  const std::string row =
      "select nome, rescopo, observacao, atualizadopor, atualizadoem from item where oid = " + to_text(oid);
  EXPECT_EQ(base_.AlterarItem(oid, 600, missing, missing, missing, missing, missing), oid);
  EXPECT_EQ(database_.rows(row), "antes|900|nota|600|05/03/2026 14:07:33");
  base_.AlterarItem(oid, 601, "depois", missing, missing, Variant::null(), missing);
  EXPECT_EQ(database_.rows(row), "depois|900|null|601|05/03/2026 14:07:33");
  base_.AlterarItem(oid, 602, missing, "901", missing, 12, missing);
  EXPECT_EQ(database_.rows(row), "depois|901|12|602|05/03/2026 14:07:33");
  EXPECT_EQ(
      number_of_failure([this] { base_.AlterarItem(99999999, 1, "x", missing, missing, missing, missing); }),
      error_number::no_current_row);
}

TEST_F(Base, WritesMembershipsCategoriesAndRelations) {
  EXPECT_TRUE(base_.ClassificarItem(5, 2127));
  EXPECT_TRUE(base_.ClassificarItem(5, 2127));
  EXPECT_TRUE(base_.IncluirAgrupamento(26735, 12, 5));
  EXPECT_TRUE(base_.RelacionarItens(5, 1121, 6, 0));
  EXPECT_EQ(database_.rows("select rcategoria from classificacao where ritem = 5"), "2127\n2127");
  EXPECT_EQ(database_.rows("select rpapel, rgrupo from agrupamento where ritem = 5"), "26735|12");
  EXPECT_EQ(database_.rows("select rtipo, rendereco from comunicacao where ritem = 5"), "1121|6");
}

TEST_F(Base, KeepsAddressesAsObjects) {
  const std::int32_t oid =
      base_.IncluirEndereco(5, 8, "13000-000", "Centro", "", "12", "Rua d'Ouro", "", 512);
  const std::string row =
      "select a.ritem, rcidade, cep, bairro, complemento, numero, rua, extra, cid, rescopo, criadopor, atualizadopor "
      "from endereco a, item i where i.oid = a.oid and a.oid = " +
      to_text(oid);
  EXPECT_EQ(database_.rows(row), "5|8|13000-000|Centro||12|Rua d'Ouro||48|5|512|null");
  EXPECT_EQ(base_.AlterarEndereco(oid, 5, 9, "1", "2", "3", "4", "5", "", 513), oid);
  EXPECT_EQ(database_.rows(row), "5|9|1|2|3|4|5||48|5|512|513");
  EXPECT_EQ(number_of_failure([this] { base_.AlterarEndereco(1, 5, 9, "", "", "", "", "", "", 513); }),
            error_number::no_current_row);
}

TEST_F(Base, EntersDeletionsInTheRegister) {
  const std::int32_t oid = include("apagado");
  base_.ExcluirItem("apagado", "c1", 600, *parse_date("01/02/2026 03:04:05"), 20090, 46, oid, 0);
  EXPECT_EQ(database_.rows(
                "select nome, codigo, excluidopor, excluidoem, raplicativo, cid from excluido where oid = " +
                to_text(oid)),
            "apagado|c1|600|01/02/2026 03:04:05|20090|46");
  EXPECT_EQ(database_.rows("select oid from item_r where oid = " + to_text(oid)), "");
}

TEST_F(Base, NeverGivesAnIdentifierTwice) {
  constexpr std::size_t threads = 8;
  constexpr std::size_t each = 500;
  std::vector<std::vector<std::int32_t>> taken(threads);
  {
    std::vector<std::jthread> running;
    for (std::vector<std::int32_t>& oids : taken) {
      running.emplace_back([this, &oids] {
        const Quelcor2008Ptr library = library_on(database_.connection_string());
        for (std::size_t i = 0; i < each; ++i) oids.push_back(library->Base()->NovoOid());
      });
    }
  }
  std::set<std::int32_t> different;
  for (const std::vector<std::int32_t>& oids : taken) different.insert(oids.begin(), oids.end());
  EXPECT_EQ(different.size(), threads * each);
  EXPECT_GT(*different.begin(), 100000);
}

TEST_F(Base, HandsOutEachDatabasesOwnIdentifiers) {
  TemporaryDatabase other;
  const std::int32_t first = base_.NovoOid();
  library_->Conn()->set_ConnectionString(other.connection_string());
  EXPECT_EQ(base_.NovoOid(), 100001);
  library_->Conn()->set_ConnectionString(database_.connection_string());
  EXPECT_EQ(base_.NovoOid(), first + 1);
}

TEST_F(Base, DoesNotGiveIdentifiersThatATransactionGaveBack) {
  const dataaccess::ConnectionPtr connection = library_->Conn()->Conexao();
  connection->Execute("begin");
  for (int i = 0; i < 60; ++i) base_.NovoOid();
  const std::int32_t lost = base_.NovoOid();
  connection->Execute("rollback");
  std::int32_t taken = 0;
  std::jthread([&] { taken = library_on(database_.connection_string())->Base()->NovoOid(); }).join();
  EXPECT_LE(taken, lost) << "the block has gone back";
  EXPECT_GE(base_.NovoOid(), taken + 50);

  connection->Execute("begin");
  for (int i = 0; i < 60; ++i) base_.NovoOid();
  connection->Close();
  std::jthread([&] { taken = library_on(database_.connection_string())->Base()->NovoOid(); }).join();
  EXPECT_GE(base_.NovoOid(), taken + 50) << "the connection took it back";

  const dataaccess::ConnectionPtr again = library_->Conn()->Conexao();
  again->Execute("begin");
  for (int i = 0; i < 60; ++i) base_.NovoOid();
  EXPECT_THROW(again->Execute("insert into item (oid) values ('x', 1)"), Error);
  again->Execute("commit");
  std::jthread([&] { taken = library_on(database_.connection_string())->Base()->NovoOid(); }).join();
  EXPECT_GE(base_.NovoOid(), taken + 50) << "a failure may have taken it back";
}

TEST_F(Base, EncodesPasswordsWithTheInstallationsSaltAndRounds) {
  database_.run("update instalacao set sal = 'sal', rodadas = 1000");
  EXPECT_EQ(base_.CodificarSenha("JOAOsenha", 11),
            "fe7ef48b305746bb2922a3b95e951ddc4bcfd09b0fc1def2acba79fc00400b28"
            "ffc2f86ed4bda766a1842f46ea67862a3a18286b76464d8c2a3779f42b873d99");
  EXPECT_EQ(number_of_failure([this] { base_.CodificarSenha("x", 10); }), error_number::invalid_argument);
}

TEST_F(Base, StoresTheMaintenancePasswordAsALoginEncodesIt) {
  EXPECT_EQ(database_.rows("select senha from usuario where oid = 26737"),
            base_.CodificarSenha(concat("TARVONEL", maintenance_password), 11));
}

TEST_F(Base, UsesTheDeploymentsOwnPasswordEncoder) {
  dataaccess::replace_password_encoder([](const std::string& text) { return "<" + text + ">"; });
  EXPECT_EQ(base_.CodificarSenha("JOAOx", 11), "<JOAOx>");
  dataaccess::replace_password_encoder({});
  EXPECT_EQ(base_.CodificarSenha("JOAOx", 11).size(), 128U);
}

TEST_F(Base, NamesTheColumnOfEachTypeOfExtraField) {
  const std::pair<std::int32_t, const char*> cases[] = {{1, "svalor"},  {2, "NVALOR"}, {3, "dtvalor"},
                                                        {4, "LSVALOR"}, {0, "svalor"}, {99, "svalor"}};
  for (const auto& [type, column] : cases) EXPECT_EQ(base_.ColunaDoTipo(type), column);
  EXPECT_EQ(library_->Data()->DataParaTexto(*parse_date("05/03/2026"), 0, 0), "05/03/2026");
}

TEST_F(Base, SaysWhenADatabaseWasNotInitialised) {
  database_.run("delete from instalacao");
  EXPECT_EQ(number_of_failure([this] { base_.NovoOid(); }), error_number::database_failed);
  EXPECT_EQ(number_of_failure([this] { base_.CodificarSenha("x", 11); }), error_number::database_failed);
}

}  // namespace
}  // namespace pradelis::tests
