#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "component/descent.h"
#include "component/error_reporting.h"
#include "component/integer16.h"
#include "component/pessoa_juridica.h"
#include "trees/tree_page.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// The ticked categories. A piece of the list is converted when a search first reaches it, so that a
/// piece which is no number fails there and not before.
class Selection {
 public:
  explicit Selection(const Variant& list) : list_(list) {}

  bool contains(std::int32_t oid) {
    if (!text_) read_list();
    if (std::find(converted_.begin(), converted_.end(), oid) != converted_.end()) return true;
    while (converted_.size() < pieces_.size()) {
      converted_.push_back(to_int32(pieces_[converted_.size()]));
      if (converted_.back() == oid) return true;
    }
    return false;
  }

 private:
  void read_list() {
    text_ = to_text(list_);
    pieces_ = split(*text_, ',');
  }

  const Variant& list_;
  std::optional<std::string> text_;
  std::vector<std::string_view> pieces_;
  std::vector<std::int32_t> converted_;
};

class CategoryTree {
 public:
  CategoryTree(const std::string& check_box, const Variant& selection)
      : check_box_(check_box), selection_(selection) {}

  void write(std::int16_t indent, const std::string& parents) {
    page_.write("<font color=\"#000000\" size=1 face=\"Verdana, Arial, Helvetica\">");
    NodeRows roots(parents.empty()
                       ? "Select oid, nome from categoria_r where rsuper = 46 and oid > 100000 order by nome"
                       : concat("Select oid, nome from categoria_r where rsuper in (", parents,
                                ") and oid > 100000 order by nome"),
                   NodeRows::Of::Root);
    for (; !roots.at_end(); roots.next()) write_node(roots.oid(), roots.nome(), 0, indent);
    roots.close();
    page_.write("<input type=\"hidden\" name=\"ultimo\"  value=\"", counter_, "\">");
    page_.write("</font>\r\n");
  }

 private:
  void write_node(std::int32_t oid, const std::string& nome, std::int16_t parent, std::int16_t indent) {
    descent_.enter(oid);
    const std::int16_t number = counter_ = add_int16(counter_, 1);
    const bool checked = selection_.contains(oid);
    NodeRows children(concat("Select oid, nome from categoria_r where rsuper = ", oid, " order by nome"));
    if (children.at_end()) {
      page_.write_spacer(add_int16(indent, expander_width));
      write_check_box(oid, number, checked, "> ");
      page_.write(nome, "<br>\r\n");
    } else {
      page_.write_spacer(indent);
      page_.write_expander(number);
      page_.write("<b>");
      write_check_box(oid, number, checked, concat(">", nome, "</b><br>"));
      page_.write_span_start(number);
      for (; !children.at_end(); children.next()) {
        write_node(children.oid(), children.nome(), number, add_int16(indent, level_indent));
      }
      page_.write("</span>");
    }
    children.close();
    if (checked) open_branch(parent, number);
    descent_.leave();
  }

  void write_check_box(std::int32_t oid, std::int16_t number, bool checked, std::string_view end) {
    page_.write("<input type=\"checkbox\" name=\"", check_box_, "\" value=\"", oid, "\" id=\"", check_box_,
                number, "\" ", checked ? " Checked " : "", end);
  }

  /// Makes the page open the branch that holds a ticked category, once for each run of siblings. Roots
  /// (parent 0) start as if theirs were open.
  void open_branch(std::int16_t parent, std::int16_t number) {
    if (last_script_parent_ == parent) return;
    last_script_parent_ = parent;
    page_.write("<script language=\"javascript\">\r\nExpandir_Selecionado(document.all.item(\"", check_box_,
                number, "\"));\r\n</script>");
  }

  const std::string& check_box_;
  Selection selection_;
  TreePage page_;
  Descent descent_{Descent::recursion_limit};
  std::int16_t counter_ = 0;
  std::int16_t last_script_parent_ = 0;
};

}  // namespace

void PessoaJuridica::Montar_Arv_Classif(const std::string& CheckBox, std::int16_t Tamanho,
                                        const Variant& CollClassifSelec, const std::string& RSuper) {
  reporting("Pradelis.PessoaJuridica.", "Montar_Arv_Classif",
            [&] { CategoryTree(CheckBox, CollClassifSelec).write(Tamanho, RSuper); });
}

}  // namespace pradelis::component
