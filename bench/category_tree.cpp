#include <string>
#include <vector>

#include "bench/cases.h"
#include "bench/harness.h"

namespace pradelis::bench {
namespace {

class TreeByHand {
 public:
  explicit TreeByHand(Database& database) : database_(database) {}

  const std::string& write(std::string_view check_box) {
    html_.clear();
    counter_ = 0;
    check_box_ = check_box;
    html_ += "<font color=\"#000000\" size=1 face=\"Verdana, Arial, Helvetica\">";
    for (const Category& root : read(roots_)) write(root, 10);
    html_.append("<input type=\"hidden\" name=\"ultimo\"  value=\"")
        .append(std::to_string(counter_))
        .append("\">");
    return html_ += "</font>\r\n";
  }

 private:
  struct Category {
    std::int64_t oid;
    std::string name;
  };

  static std::vector<Category> read(Statement& statement) {
    std::vector<Category> found;
    while (statement.step()) found.push_back({statement.integer(0), std::string(statement.text(1))});
    statement.reset();
    return found;
  }

  void write_spacer(int width) {
    html_.append("<img src=\"/images/1ptrans.gif\" width=\"")
        .append(std::to_string(width))
        .append("\" height=1>");
  }

  void write_box(const Category& category, const std::string& number) {
    html_.append("<input type=\"checkbox\" name=\"").append(check_box_).append("\" value=\"");
    html_.append(std::to_string(category.oid))
        .append("\" id=\"")
        .append(check_box_)
        .append(number)
        .append("\" >");
  }

  void write(const Category& category, int indent) {
    const std::string number = std::to_string(++counter_);
    const std::vector<Category> children = read(children_.bind(1, category.oid));
    if (children.empty()) {
      write_spacer(indent + 9);
      write_box(category, number);
      html_.append(" ").append(category.name).append("<br>\r\n");
      return;
    }
    write_spacer(indent);
    html_.append("<img src=\"/images/mais.gif\" width=9 height=9 id=\"img").append(number);
    html_.append("\" onclick=\"tier1Menu(menu").append(number).append(",img").append(number);
    html_ +=
        ")\" class=\"tier1\" onmouseover=\"this.className='tier1over'\"  "
        "onmouseout=\"this.className='tier1'\" "
        "style=\"CURSOR: hand\"><b>";
    write_box(category, number);
    html_.append(category.name)
        .append("</b><br><span ID=\"menu")
        .append(number)
        .append("\" STYLE=\"DISPLAY: none\">\r\n");
    for (const Category& child : children) write(child, indent + 20);
    html_ += "</span>";
  }

  Database& database_;
  Statement roots_{database_,
                   "Select oid, nome from categoria_r where rsuper = 46 and oid > 100000 order by nome"};
  Statement children_{database_, "Select oid, nome from categoria_r where rsuper = ? order by nome"};
  std::string html_, check_box_;
  int counter_ = 0;
};

}  // namespace

void measure_category_tree(Fixture& fixture) {
  TreeByHand by_hand(fixture.by_hand());
  const component::CRMPtr crm = fixture.crm();
  const component::PessoaJuridicaPtr tree = crm->cPessoaJuridica();
  tree->Montar_Arv_Classif("cat", 10, "");
  if (fixture.written() != by_hand.write("cat")) throw std::runtime_error("the trees differ");
  report({"a tree of 2,000 categories, depth 5", 1.2, 100,
          [&] {
            fixture.forget_written();
            tree->Montar_Arv_Classif("cat", 10, "");
          },
          [&] { by_hand.write("cat"); }});
}

}  // namespace pradelis::bench
