#include "tests/support/component_test.h"
#include "tests/support/recording.h"
#include "values/clock.h"

namespace pradelis::tests {
namespace {

class Files : public ComponentTest {
 protected:
  ~Files() override { replace_clock({}); }

  std::int32_t attach(const Bytes& content, std::int32_t creator = 601) {
    EXPECT_EQ(crm_->Adicionar_Arquivo(content, "planta d'obra.pdf", creator, "nota", std::int32_t{501}),
              Variant(std::int16_t{0}));
    return number("select max(id) from crm_arquivo");
  }

  Variant content_of(std::int32_t id) {
    crm_->Executar3("select dado from crm_arquivo where id = " + to_text(id));
    return crm_->rs3->value("dado");
  }
};

TEST_F(Files, BytesComeBackAsTheyWere) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{50} << 20}) {
    Bytes content(size);
    std::uint32_t state = 7;
    for (std::byte& byte : content) {
      state = state * 1664525 + 1013904223;
      byte = static_cast<std::byte>(state >> 24);
    }
    const std::int32_t id = attach(content);
    EXPECT_TRUE(content_of(id) == Variant(content)) << size;
  }
}

TEST_F(Files, AnAttachedFileSaysWhoseAndWhen) {
  std::int32_t second = 0;
  replace_clock([&] { return make_date({.year = 2026, .month = 3, .day = 5, .second = ++second}); });
  StatementRecorder recorder;
  attach({std::byte{0}});
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{"table: crm_arquivo"}));
  EXPECT_EQ(rows("select ritem, nome, observacao, criadopor, atualizadopor, criadoem, atualizadoem from "
                 "crm_arquivo"),
            "501|planta d'obra.pdf|nota|601|601|05/03/2026 00:00:01|05/03/2026 00:00:02");
  EXPECT_EQ(crm_->rs, nullptr);
  const Failure failure =
      failure_of([&] { crm_->Adicionar_Arquivo(Bytes{}, "x", std::int32_t{601}, "", "empresa"); });
  EXPECT_EQ(failure.number, error_number::value_does_not_fit);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Adicionar_Arquivo");
}

TEST_F(Files, OnlyTheListOfTheScopeWalkMayDelete) {
  const Variant refusal = "Você não tem permissão para excluir o arquivo.";
  add_salesperson(602, "subordinado", 601);
  add_salesperson(603, "outro subordinado", 601);
  const std::int32_t own = attach({}, 602), superiors = attach({}, 601);
  run("insert into crm_arquivo_hist (id, criadopor) values (9001, 602)");
  StatementRecorder recorder;

  EXPECT_EQ(crm_->Excluir_Arquivo(superiors, 602), refusal);
  EXPECT_EQ(crm_->sValor, Variant(std::int32_t{602}));
  const auto statements = recorder.take();
  const std::string id = to_text(superiors);
  ASSERT_EQ(statements.size(), 3U);
  EXPECT_EQ(statements[1],
            "static updatable: select * from crm_arquivo where id=" + id + " and criadopor in (602)");
  EXPECT_EQ(statements[2],
            "static updatable: select * from crm_arquivo_hist where id=" + id + " and criadopor in (602)");

  EXPECT_EQ(crm_->Excluir_Arquivo(superiors, 601), refusal) << "the walk ends at the first one below";
  EXPECT_EQ(crm_->Excluir_Arquivo(77, 602), refusal);
  EXPECT_EQ(rows("select count(*) from crm_arquivo"), "2");

  EXPECT_EQ(crm_->Excluir_Arquivo(own, 601), Variant(std::int16_t{0}));
  EXPECT_EQ(rows("select id from crm_arquivo"), id);
  EXPECT_EQ(crm_->Excluir_Arquivo(9001, 602), Variant(std::int16_t{0}));
  EXPECT_EQ(rows("select count(*) from crm_arquivo_hist"), "0");
}

TEST_F(Files, SizesAreTextsOfTheirUnit) {
  const struct {
    Variant size;
    std::string text;
    Variant after;
  } cases[] = {
      {std::int32_t{0}, "0Bytes", std::int32_t{0}},
      {std::int32_t{1024}, "1024Bytes", std::int32_t{1024}},
      {std::int32_t{1025}, "1,001KBytes", "1,001K"},
      {std::int32_t{1536}, "1,500KBytes", "1,500K"},
      {std::int32_t{1048576}, "1.024,000KBytes", "1.024,000K"},
      {std::int32_t{3145728}, "3,000MBytes", "3,000M"},
      {5368709120.0, "5.120,000MBytes", "5.120,000M"},
      {"1536", "1,500KBytes", "1,500K"},
      {Variant(), "Bytes", Variant()},
      {Variant::null(), "Bytes", Variant::null()},
  };
  for (const auto& expected : cases) {
    Variant size = expected.size;
    EXPECT_EQ(crm_->Escrever_Tamanho_Arquivo(size), expected.text);
    EXPECT_EQ(size, expected.after);
  }
  Variant written = "3,000M";
  const Failure failure = failure_of([&] { crm_->Escrever_Tamanho_Arquivo(written); });
  EXPECT_EQ(failure.number, error_number::type_mismatch);
  EXPECT_EQ(failure.source, "");
}

}  // namespace
}  // namespace pradelis::tests
