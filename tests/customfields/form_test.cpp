#include "tests/customfields/field_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class FieldForm : public FieldTest {
 protected:
  std::string field(std::int32_t definition, std::int32_t number, bool row, const std::string& value = "",
                    const std::string& attributes = "") {
    crm_->Aditivo_Escrever(definition, number, row, value, attributes);
    return host_.take_written();
  }

  void set_list(const std::string& statement) {
    store("select especificacao from listadeobjetos where oid = 70", statement);
  }
};

const std::string birth_date_handler =
    "onblur='vbscript: if not IsBirthDate(window.event.srcElement.value) then : alert(\"Data inválida!\") : "
    "window.event.srcElement.value = \"\" : end if'>";

TEST_F(FieldForm, PlainInputsEndWithTheHandlersOfTheirColumn) {
  run("update dadoadicional set rlista = 7, rtipo = 3 where oid = 16353");
  const struct {
    std::int32_t definition;
    std::string end;
  } cases[] = {
      {9001, ">"},
      {9002, " onblur=\"ChecaNumero(this)\">"},
      {9003, " onkeyup=\"Data_Tecla_Pressionada(this)\" onblur=\"Data_Perdeu_foco(this,false)\">"},
      {9004, " onblur=\"ChecaNumero(this)\">"},
      {16353, " " + birth_date_handler},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(field(expected.definition, 3, false),
              "<td align=left><input type=text size=20 name=\"ADITIVO_VALOR3\"  value=\"\"" + expected.end +
                  "</td>\r\n");
  }
}

TEST_F(FieldForm, RowsAndBareFields) {
  const std::string label =
      "<tr>\r\n<td><b>Preferida<input type = \"hidden\" name=\"ADITIVO_DEFINICAO2\" value = "
      "\"9005\"></td>\r\n<td align=left>\r\n";
  const std::string select =
      "<select size=1 name=ADITIVO_VALOR2  class=x>\r\n"
      "<option value=\"502\">Açougue</option>\r\n"
      "<option value=\"501\" selected>Padaria d'Oeste</option>\r\n"
      "</select>";
  EXPECT_EQ(field(9005, 2, true, "501", "class=x"), label + select + "</td>\r\n</tr>\r\n");
  EXPECT_EQ(field(9005, 2, false, "501", "class=x"), select);
  EXPECT_EQ(field(9001, 1, true, "\"<&>", "class=x"),
            "<tr>\r\n<td><b>Apelido<input type = \"hidden\" name=\"ADITIVO_DEFINICAO1\" value = "
            "\"9001\"></td>\r\n<td align=left><input type=text size=20 name=\"ADITIVO_VALOR1\" class=x "
            "value=\"\"<&>\"></td>\r\n</tr>\r\n");
}

TEST_F(FieldForm, AListLosesItsInto) {
  const std::string options = "<option value=\"501\">Padaria d'Oeste</option>\r\n";
  const struct {
    std::string list, run;
  } cases[] = {
      {"SELECT oid, nome INTO copia FROM item WHERE oid = 501",
       "SELECT oid, nome  FROM item WHERE oid = 501"},
      {"SELECT oid, nome FROM item WHERE oid = 501", "SELECT oid, nome FROM item WHERE oid = 501"},
  };
  for (const auto& expected : cases) {
    set_list(expected.list);
    StatementRecorder recorder;
    EXPECT_EQ(field(9005, 1, false), "<select size=1 name=ADITIVO_VALOR1  >\r\n" + options + "</select>");
    EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                   "static: select valor,rlista,rtipo,oid from dadoadicional where oid=9005",
                                   "static: select especificacao from listadeobjetos where oid=70",
                                   "static: " + expected.run,
                               }));
  }
  for (const std::string refused :
       {"SELECT oid, nome into copia FROM item", "SELECT 1 INTO copia from item", "FROM item INTO copia"}) {
    set_list(refused);
    EXPECT_NE(failure_of([&] { field(9005, 1, false); }).number, 0) << refused;
  }
}

TEST_F(FieldForm, ATableHoldsTheVisibleFieldsOfAKindWithTheirValues) {
  run("update dadoadicional set visivel = 0 where oid = 9002");
  define(9100, "De outra espécie", 1, 7, 47);
  crm_->Alterar_Aditivo("501", "9001", "d'Oeste");
  crm_->Alterar_Aditivo("501", "9005", "502");
  const auto row = [](const std::string& label, const std::string& number, const std::string& oid,
                      const std::string& cell) {
    return "<tr>\r\n<td><b>" + label + "<input type = \"hidden\" name=\"ADITIVO_DEFINICAO" + number +
           "\" value = \"" + oid + "\"></td>\r\n" + cell + "</tr>\r\n";
  };
  const auto input = [](const std::string& number, const std::string& value) {
    return "<td align=left><input type=text size=20 name=\"ADITIVO_VALOR" + number + "\" disabled value=\"" +
           value + "\"></td>\r\n";
  };
  const auto choice = [](const std::string& number, const std::string& selected) {
    return "<td align=left>\r\n<select size=1 name=ADITIVO_VALOR" + number +
           "  disabled>\r\n<option value=\"502\"" + selected +
           ">Açougue</option>\r\n<option value=\"501\">Padaria d'Oeste</option>\r\n</select></td>\r\n";
  };
  const std::string begin = "<table cellpadding=0 border=0 cellspacing=0>";
  const auto end = [](const std::string& total) {
    return "</table>\r\n<input type=hidden name=\"ADITIVO_TOTAL\" value=" + total + ">\r\n";
  };

  StatementRecorder recorder;
  crm_->Aditivo_Escrever_Item("46", 1, 501, "disabled", "9003,9004");
  EXPECT_EQ(host_.take_written(), begin + row("Apelido", "1", "9001", input("1", "d'Oeste")) +
                                      row("Preferida", "2", "9005", choice("2", " selected")) + end("2"));
  EXPECT_EQ(recorder.take().front(),
            "static: select oid from dadoadicional where oid not in (9003,9004) and ritem IN (46) and "
            "visivel =1");

  crm_->Aditivo_Escrever_Item("46, 47", 1, 0, "disabled", "9001,9003,9004");
  EXPECT_EQ(host_.take_written(), begin + row("Preferida", "1", "9005", choice("1", "")) +
                                      row("De outra espécie", "2", "9100", input("2", "")) + end("2"));

  crm_->Aditivo_Escrever_Item(std::int32_t{48}, 1);
  EXPECT_EQ(host_.take_written(), begin + end("0"));
}

TEST_F(FieldForm, AFailureLeavesWhatWasWritten) {
  run("update dadoadicional set rlista = 71 where oid = 9001");
  const Failure table = failure_of([&] { crm_->Aditivo_Escrever_Item("46", 1); });
  EXPECT_EQ(table.number, error_number::no_current_row);
  EXPECT_EQ(table.source, "Pradelis.CRM.Aditivo_Escrever_Item");
  EXPECT_EQ(host_.take_written(),
            "<table cellpadding=0 border=0 cellspacing=0><tr>\r\n<td><b>Apelido<input type = \"hidden\" "
            "name=\"ADITIVO_DEFINICAO1\" value = \"9001\"></td>\r\n");
  const Failure unknown = failure_of([&] { field(404, 1, true); });
  EXPECT_EQ(unknown.number, error_number::no_current_row);
  EXPECT_EQ(unknown.source, "Pradelis.CRM.Aditivo_Escrever");
}

}  // namespace
}  // namespace pradelis::tests
