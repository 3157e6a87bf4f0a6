#include <cstdint>
#include <string>

#include "component/descent.h"
#include "component/error_reporting.h"
#include "component/integer16.h"
#include "component/vendedor.h"
#include "trees/tree_page.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

std::string entries_below(std::int32_t oid) {
  return concat("select oid,nome from item where rescopo= ", oid,
                " and oid in  (select oid from vendedor_r union select oid from filial_r)");
}

class SalespersonTree {
 public:
  explicit SalespersonTree(const std::string& check_box) : check_box_(check_box) {}

  void write(std::int32_t person, const std::string& nome, std::int16_t indent) {
    NodeRows entries(entries_below(person), NodeRows::Of::Root);
    page_.write("<br>\r\n<input type=\"radio\" checked name=\"", check_box_, "\" value=\"", person,
                "\" id=\"", check_box_, "0\">\r\n<font size=1 color=#000000><b>", nome, "</b><br>\r\n");
    for (; !entries.at_end(); entries.next()) write_node(entries.oid(), entries.nome(), indent);
    entries.close();
    page_.write("</font>\r\n");
    page_.write("<input type=\"hidden\" name=\"ultimo\"  value=\"", counter_, "\">");
  }

 private:
  void write_node(std::int32_t oid, const std::string& nome, std::int16_t indent) {
    descent_.enter(oid);
    const std::int16_t number = counter_ = add_int16(counter_, 1);
    NodeRows entries(entries_below(oid));
    if (entries.at_end()) {
      page_.write_spacer(add_int16(indent, expander_width));
      page_.write("<input type=\"radio\"   name=\"", check_box_, "\" value=\"", oid, "\" id=\"", check_box_,
                  number, "\">");
      page_.write(nome, "<br>\r\n");
    } else {
      page_.write_spacer(indent);
      page_.write_expander(number);
      page_.write("<b><input type=\"radio\" name=\"", check_box_, "\" value=\"", oid, "\" id=\"", check_box_,
                  number, "\">", nome, "</b><br>");
      page_.write_span_start(number);
      for (; !entries.at_end(); entries.next()) {
        write_node(entries.oid(), entries.nome(), add_int16(indent, level_indent));
      }
      page_.write("</span>\r\n");
    }
    entries.close();
    descent_.leave();
  }

  const std::string& check_box_;
  TreePage page_;
  Descent descent_{Descent::recursion_limit};
  std::int16_t counter_ = 0;
};

}  // namespace

void Vendedor::Montar_Arv_Vendedor(const std::string& CheckBox, std::int32_t OidPF, const std::string& NomePF,
                                   std::int16_t Tamanho) {
  reporting("Pradelis.Vendedor.", "Montar_Arv_Vendedor",
            [&] { SalespersonTree(CheckBox).write(OidPF, NomePF, Tamanho); });
}

}  // namespace pradelis::component
