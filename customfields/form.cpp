#include <cstdint>
#include <string>
#include <string_view>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int32_t no_list = 7;
constexpr std::int32_t birth_date_field = 16353;

template <class... Parts>
void write(const Parts&... parts) {
  thread_state().response->Write(concat(parts...));
}

/// What ends the tag of a plain input: the handlers that check a value of its column.
std::string_view input_handlers(std::string_view column, std::int32_t definition) {
  if (column == "NVALOR" || column == "LSVALOR") return " onblur=\"ChecaNumero(this)\">";
  if (column != "dtvalor") return ">";
  if (definition == birth_date_field) {
    return " onblur='vbscript: if not IsBirthDate(window.event.srcElement.value) then : "
           "alert(\"Data inválida!\") : window.event.srcElement.value = \"\" : end if'>";
  }
  return " onkeyup=\"Data_Tecla_Pressionada(this)\" onblur=\"Data_Perdeu_foco(this,false)\">";
}

void write_plain_input(dataaccess::Recordset& definition, std::int32_t number, const std::string& value,
                       const std::string& attributes) {
  write(R"(<td align=left><input type=text size=20 name="ADITIVO_VALOR)", number, "\" ", attributes);
  write(" value=\"", value, "\"");
  const std::string column = shared_base().ColunaDoTipo(to_int32(definition.value("rtipo")));
  write(input_handlers(column, to_int32(definition.value("oid"))));
  write("</td>\r\n");
}

/// A list's statement without its "INTO": the text from there up to the blank before "FROM" is cut out.
std::string without_into(const std::string& sql) {
  const std::size_t into = sql.find("INTO");
  if (into == std::string::npos) return sql;
  const std::size_t from = sql.find("FROM");
  if (from == std::string::npos || from == 0) raise(error_number::invalid_argument);
  return sql.substr(0, into) + sql.substr(from - 1);
}

std::string list_statement(dataaccess::RecordsetPtr& list, const Variant& oid) {
  list = open_snapshot(concat("select especificacao from listadeobjetos where oid=", oid));
  std::string sql = without_into(to_text(list->value("especificacao")));
  list->Close();
  return sql;
}

void write_options(dataaccess::Recordset& choices, std::string_view selected) {
  for (; !choices.Eof(); choices.MoveNext()) {
    const Variant oid = choices.value("oid");
    write("<option value=\"", oid, "\"");
    if (!oid.is_null() && concat(oid) == selected) write(" selected");
    write(">", choices.value("nome"), "</option>\r\n");
  }
}

}  // namespace

void CRM::Aditivo_Escrever(std::int32_t DadoAdicional, std::int32_t Contador, bool EscreverLinhaTab,
                           const std::string& ValorSelecionado, const std::string& ConcatHtml) {
  reporting("Aditivo_Escrever", [&] {
    GetResponse();
    working_ =
        open_snapshot(concat("select valor,rlista,rtipo,oid from dadoadicional where oid=", DadoAdicional));
    if (EscreverLinhaTab) {
      write("<tr>\r\n");
      write("<td><b>", working_->value("valor"), R"(<input type = "hidden" name="ADITIVO_DEFINICAO)",
            Contador, R"(" value = ")", working_->value("oid"), "\"></td>\r\n");
    }
    const Variant list = working_->value("rlista");
    if (!list.is_null() && to_int32(list) == no_list) {
      write_plain_input(*working_, Contador, ValorSelecionado, ConcatHtml);
    } else {
      working2_ = open_snapshot(list_statement(working2_, list));
      if (EscreverLinhaTab) write("<td align=left>\r\n");
      write("<select size=1 name=ADITIVO_VALOR", Contador, "  ", ConcatHtml, ">\r\n");
      write_options(*working2_, ValorSelecionado);
      release(working2_);
      write("</select>");
      if (EscreverLinhaTab) write("</td>\r\n");
    }
    if (EscreverLinhaTab) write("</tr>\r\n");
    release(working_);
  });
}

void CRM::Aditivo_Escrever_Item(const Variant& RITEM, std::int32_t Visivel, std::int32_t AlterarItem,
                                const std::string& ConcatHtml, const std::string& Except) {
  reporting("Aditivo_Escrever_Item", [&] {
    GetResponse();
    dataaccess::RecordsetPtr definitions =
        open_snapshot(concat("select oid from dadoadicional where oid not in (", Except, ") and ritem IN (",
                             RITEM, ") and visivel =", Visivel));
    write("<table cellpadding=0 border=0 cellspacing=0>");
    std::int32_t counter = 0;
    for (; !definitions->Eof(); definitions->MoveNext()) {
      const std::int32_t definition = to_int32(definitions->value("oid"));
      const std::string value = AlterarItem != 0 ? Aditivo_Ver(AlterarItem, definition) : std::string();
      ++counter;
      Aditivo_Escrever(definition, counter, true, value, ConcatHtml);
    }
    write("</table>\r\n");
    write(R"(<input type=hidden name="ADITIVO_TOTAL" value=)", counter, ">\r\n");
    release(definitions);
  });
}

}  // namespace pradelis::component
