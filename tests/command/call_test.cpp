#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "process.h"

/// `pradelis call` as another program meets it: lines in, lines out.
namespace pradelis::command {
namespace {

using Json = nlohmann::ordered_json;

const char* const new_crm = R"({"new":"Pradelis.CRM","as":"crm"})";
const char* const ok = R"({"ok":true})";

class Call : public testing::Test {
 protected:
  /// Asks, and expects exactly this answer.
  void expect(const std::string& request, const std::string& answer) {
    EXPECT_EQ(process_.ask(request), answer) << "for " << request;
  }
  Json ask(const std::string& request) { return Json::parse(process_.ask(request)); }
  /// The error's number for a request that fails.
  int failure(const std::string& request) {
    const Json answer = ask(request);
    return answer.contains("error") ? answer["error"]["number"].get<int>() : 0;
  }

  TemporaryFolder folder_;
  std::string database_ = new_database(folder_);
  Process process_{{"call", "--database", database_}};
};

TEST_F(Call, RunsADialogue) {
  expect(new_crm, ok);
  expect(R"({"call":"crm.Cadastrar_Cidade","args":[1,"11","","Campinas",7]})",
         R"({"result":0,"type":"int16","args":[1,"11","","Campinas",7]})");
  expect(R"({"call":"crm.cadastrar_CIDADE","args":[1,"11","","Campinas",7]})",
         R"({"result":"Já existe uma cidade com esse nome","type":"text","args":[1,"11","","Campinas",7]})");
  expect(
      R"({"call":"crm.Executar","args":["select nome, cid from item_r where cid = 19 and nome = 'Campinas'"]})",
      R"({"result":"0","type":"text","args":["select nome, cid from item_r where cid = 19 and nome = 'Campinas'"]})");
  expect(R"({"rows":"crm.rs","limit":100})",
         R"({"columns":["nome","cid"],"types":["text","int32"],"rows":[["Campinas",19]]})");
  expect(R"({"get":"crm.rs.eof"})", R"({"result":true,"type":"boolean"})");
  expect(R"({"set":"crm.sValor","value":"1, 2"})", ok);
  expect(R"({"get":"crm.sValor"})", R"({"result":"1, 2","type":"text"})");
  expect(R"({"get":"crm.cGrupoUsuarios","as":"grupos"})", ok);
  expect(R"({"get":"grupos.strSQL"})", R"({"result":"","type":"text"})");
  expect(R"({"release":"crm"})", ok);
  const Process::Outcome end = process_.finish();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.output + end.complaint, "");
}

TEST_F(Call, GivesRowsFromTheCurrentOneOn) {
  expect(new_crm, ok);
  ask(R"({"call":"crm.Executar2","args":["select 1 as a union all select 2 union all select 3"]})");
  EXPECT_EQ(ask(R"({"rows":"crm.rs2","limit":2})")["rows"], Json::parse("[[1],[2]]"));
  EXPECT_EQ(ask(R"({"rows":"crm.rs2"})")["rows"], Json::parse("[[3]]"));
  EXPECT_EQ(ask(R"({"rows":"crm.rs2","limit":0})")["rows"], Json::parse("[]"));
  expect(R"({"get":"crm.rs2","as":"linhas"})", ok);
  expect(R"({"call":"linhas.MoveFirst"})", R"({"result":{"$":"empty"},"type":"empty","args":[]})");
  EXPECT_EQ(ask(R"({"rows":"linhas"})")["rows"], Json::parse("[[1],[2],[3]]"));
  ask(R"({"call":"linhas.Close"})");
  EXPECT_EQ(failure(R"({"rows":"linhas"})"), 3704);
  EXPECT_EQ(failure(R"({"rows":"crm.rs3"})"), 91);
  EXPECT_EQ(failure(R"({"rows":"crm"})"), 13);
}

TEST_F(Call, ReachesFieldsThroughDefaultMembers) {
  expect(new_crm, ok);
  ask(R"({"call":"crm.Executar","args":["select oid, nome from item where oid = 7", 3, 3]})");
  expect(R"({"get":"crm.rs","args":["nome"],"as":"campo"})", R"({"ok":true,"args":["nome"]})");
  expect(R"({"set":"crm.rs","args":["NOME"],"value":"Sistema"})", ok);
  expect(R"({"get":"campo.Value"})", R"({"result":"Sistema","type":"text"})");
  expect(R"({"call":"crm.rs.Update"})", R"({"result":{"$":"empty"},"type":"empty","args":[]})");
  expect(R"({"call":"crm.PrepararVariavel","args":[{"$":"object","name":"campo"}]})",
         R"({"result":"Sistema","type":"text","args":[{"$":"object","class":"Field"}]})");
  EXPECT_EQ(failure(R"({"get":"crm.rs","args":["outro"]})"), 3265);
  EXPECT_EQ(failure(R"({"get":"crm.rs","args":["nome",1]})"), 450);
}

TEST_F(Call, ValuesComeBackAsTheyWent) {
  expect(new_crm, ok);
  const std::pair<const char*, const char*> cases[] = {
      {"null", "null"},
      {"true", "boolean"},
      {"2147483647", "int32"},
      {"-2147483648", "int32"},
      {"1.5", "double"},
      {"5.0", "double"},
      {"0.1", "double"},
      {"5e-324", "double"},
      {"1.7976931348623157e+308", "double"},
      {R"("")", "text"},
      {R"("São Paulo \"ç\" \u0000 𝄞\n")", "text"},
      {R"([1,"a",[null,{"$":"empty"}]])", "array"},
      {R"({"$":"empty"})", "empty"},
      {R"({"$":"missing"})", "missing"},
      {R"({"$":"date","value":"2026-03-05T14:07:33"})", "date"},
      {R"({"$":"date","value":"0100-01-01T00:00:00"})", "date"},
      {R"({"$":"date","value":"1899-12-29T18:00:00.250"})", "date"},
      {R"({"$":"bytes","value":""})", "bytes"},
      {R"({"$":"bytes","value":"/w=="})", "bytes"},
      {R"({"$":"bytes","value":"AP8Q+/A="})", "bytes"},
  };
  for (const auto& [value, type] : cases) {
    SCOPED_TRACE(value);
    EXPECT_EQ(ask(R"({"set":"crm.sValor","value":)" + std::string(value) + "}"), Json::parse(ok));
    const Json answer = ask(R"({"get":"crm.sValor"})");
    EXPECT_EQ(answer["result"].dump(), Json::parse(value).dump());
    EXPECT_EQ(answer["type"], type);
  }
  expect(R"({"set":"crm.sValor","value":2147483648})", ok);
  expect(R"({"get":"crm.sValor"})", R"({"result":2147483648.0,"type":"double"})");
  expect(R"({"set":"crm.sValor","value":{"$":"date","value":"2026-03-05"}})", ok);
  expect(R"({"get":"crm.sValor"})", R"({"result":{"$":"date","value":"2026-03-05T00:00:00"},"type":"date"})");
  expect(R"({"get":"crm.rs"})", R"({"result":{"$":"object","class":null},"type":"object"})");
}

TEST_F(Call, FailingCallsShowTheErrorAndTheArgumentsAsTheyStand) {
  expect(new_crm, ok);
  expect(R"({"call":"crm.Executar","args":["select * from nada"]})",
         ask(R"({"call":"crm.Executar","args":["select * from nada"]})").dump());
  const Json answer = ask(R"({"call":"crm.Executar","args":["select * from nada"]})");
  EXPECT_EQ(answer["error"]["source"], "Pradelis.CRM.Executar");
  EXPECT_EQ(answer["error"]["number"], -2147217865);
  EXPECT_EQ(answer["args"], Json::parse(R"(["select * from nada"])"));

  const Json formatted = ask(R"({"call":"crm.FormataNumero","args":["1.234,50"]})");
  EXPECT_EQ(formatted["result"], 1234.5);
  EXPECT_EQ(formatted["args"][0], "1234,50");

  const Json deal = ask(R"({"call":"crm.Cadastrar_Negocio","args":[1,1,1,"não é data","",0,"","N",1,0]})");
  EXPECT_GT(deal["args"][9], 0) << "the step reached: " << deal;

  const std::pair<const char*, int> cases[] = {
      {R"({"new":"Pradelis.Nada","as":"x"})", 429},
      {R"({"call":"crm.Nada"})", 438},
      {R"({"set":"crm.QLCConn","value":1})", 438},
      {R"({"call":"outro.Nada"})", 91},
      {R"({"release":"outro"})", 91},
      {R"({"get":"crm.rs.EOF"})", 91},
      {R"({"call":"crm.Negocio_Status","args":["doze"]})", 13},
      {R"({"call":"crm.Negocio_Status","args":[null]})", 94},
      {R"({"call":"crm.Negocio_Status","args":[3000000000]})", 6},
      {R"({"call":"crm.Negocio_Status"})", 449},
      {R"({"call":"crm.Negocio_Status","args":[1,2]})", 450},
  };
  for (const auto& [request, number] : cases) EXPECT_EQ(failure(request), number) << request;
  EXPECT_EQ(process_.finish().status, 0);
}

TEST_F(Call, IsTheWebServerOfItsObjects) {
  expect(new_crm, ok);
  expect(R"({"session":{"InformacoesUsuario":[0,1,2,3,"7, 26737"]}})", ok);
  ask(R"({"call":"crm.String_Negocio_Vendedor","args":[0,null]})");
  expect(R"({"get":"crm.sValor"})", R"({"result":"7, 26737","type":"text"})");

  expect(R"({"application":{"Link_local":"/imagens"}})", ok);
  expect(R"({"get":"crm.cVendedor","as":"arvore"})", ok);
  ask(R"({"call":"arvore.Montar_Arv_Vendedor","args":["v",7,"Sistema",10]})");
  const std::string html = ask(R"({"written":true})")["written"];
  EXPECT_NE(html.find("Sistema"), std::string::npos) << html;
  expect(R"({"written":true})", R"({"written":""})");

  expect(R"({"application":{"dataconn_ConnectionTimeout":"quinze"}})", ok);
  EXPECT_EQ(failure(R"({"new":"Pradelis.CRM","as":"outro"})"), 13);
}

TEST_F(Call, SaysWhichLinesItDoesNotUnderstand) {
  const char* const lines[] = {
      "",
      "oi",
      "[1]",
      "{}",
      R"({"new":"Pradelis.CRM"})",
      R"({"new":"Pradelis.CRM","as":""})",
      R"({"new":"Pradelis.CRM","as":"a.b"})",
      R"({"new":"Pradelis.CRM","as":"crm","args":[]})",
      R"({"call":"crm"})",
      R"({"call":"crm."})",
      R"({"call":"crm.Excluir","args":{}})",
      R"({"call":"crm.Excluir","agrs":[]})",
      R"({"call":"crm.Excluir","get":"crm.rs"})",
      R"({"set":"crm.sValor"})",
      R"({"set":"crm.sValor","value":{"$":"data"}})",
      R"({"set":"crm.sValor","value":{"a":1}})",
      R"({"set":"crm.sValor","value":1e999})",
      R"({"set":"crm.sValor","value":{"$":"date","value":"2024-02-31"}})",
      R"({"set":"crm.sValor","value":{"$":"bytes","value":"AAA"}})",
      R"({"set":"crm.sValor","value":{"$":"bytes","value":"AB=="}})",
      R"({"rows":"crm.rs","limit":-1})",
      R"({"session":[]})",
      R"({"written":false})",
      "{\"set\":\"crm.sValor\",\"value\":\"\xC3\x28\"}",
      "{\"set\":\"crm.sValor\",\"value\":\"\xED\xA0\x80\"}",
  };
  expect(new_crm, ok);
  for (const char* line : lines) {
    const Json answer = ask(line);
    EXPECT_TRUE(answer.size() == 1 && answer.contains("invalid")) << line << " -> " << answer;
  }
  const std::string deep = std::string(200, '[') + std::string(200, ']');
  EXPECT_TRUE(ask(R"({"set":"crm.sValor","value":)" + deep + "}").contains("invalid"));
  expect(R"({"get":"crm.sValor"})", R"({"result":{"$":"empty"},"type":"empty"})");
  EXPECT_EQ(process_.finish().status, 2);
}

TEST_F(Call, TakesLinesOfAnyLengthAndALastOneWithoutEnd) {
  expect(new_crm, ok);
  const std::string megabytes(8 << 20, 'x');
  expect(R"({"set":"crm.sValor","value":")" + megabytes + "\"}", ok);
  EXPECT_EQ(ask(R"({"get":"crm.sValor"})")["result"].get_ref<const std::string&>().size(), megabytes.size());
  process_.write(R"({"call":"crm.DataAgora","args":[false]})");
  const Process::Outcome end = process_.finish();
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(Json::parse(end.output)["type"], "text");
}

TEST_F(Call, TracesItsStatements) {
  const std::string trace = folder_ / "trace.txt";
  run({"call", "--database", database_, "--trace-sql", trace},
      std::string(new_crm) + "\n" +
          R"({"call":"crm.Executar","args":["select nome\nfrom item where oid = 7"]})");
  std::ifstream file(trace);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_NE(text.str().find("\tselect nome\\nfrom item where oid = 7\n"), std::string::npos) << text.str();
}

}  // namespace
}  // namespace pradelis::command
