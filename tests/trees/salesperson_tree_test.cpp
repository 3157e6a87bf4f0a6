#include "tests/support/component_test.h"
#include "tests/support/engine.h"

namespace pradelis::tests {
namespace {

std::string root(const std::string& name) {
  return "<br>\r\n<input type=\"radio\" checked name=\"sel\" value=\"600\" id=\"sel0\">\r\n<font size=1 "
         "color=#000000><b>" +
         name + "</b><br>\r\n";
}

std::string tree_end(int last) {
  return "</font>\r\n<input type=\"hidden\" name=\"ultimo\"  value=\"" + std::to_string(last) + "\">";
}

std::string spacer(int width) {
  return "<img src=\"/images/1ptrans.gif\" width=\"" + std::to_string(width) + "\" height=1>";
}

std::string branch(int number, int oid, int indent, const std::string& name, const std::string& inside) {
  const std::string n = std::to_string(number);
  return spacer(indent) + "<img src=\"/images/mais.gif\" width=9 height=9 id=\"img" + n +
         "\" onclick=\"tier1Menu(menu" + n + ",img" + n +
         ")\" class=\"tier1\" onmouseover=\"this.className='tier1over'\"  "
         "onmouseout=\"this.className='tier1'\" "
         "style=\"CURSOR: hand\"><b><input type=\"radio\" name=\"sel\" value=\"" +
         std::to_string(oid) + "\" id=\"sel" + n + "\">" + name + "</b><br><span ID=\"menu" + n +
         "\" STYLE=\"DISPLAY: none\">\r\n" + inside + "</span>\r\n";
}

std::string leaf(int number, int oid, int indent, const std::string& name) {
  return spacer(indent + 9) + "<input type=\"radio\"   name=\"sel\" value=\"" + std::to_string(oid) +
         "\" id=\"sel" + std::to_string(number) + "\">" + name + "<br>\r\n";
}

class SalespersonTree : public ComponentTest {
 protected:
  std::string tree(const std::string& name = "Ana") {
    crm_->cVendedor()->Montar_Arv_Vendedor("sel", 600, name, 5);
    return host_.take_written();
  }
};

TEST_F(SalespersonTree, TheRootIsAlwaysThere) {
  EXPECT_EQ(tree("<Ana> d'Oeste"), root("<Ana> d'Oeste") + tree_end(0));
}

TEST_F(SalespersonTree, HoldsBranchesAndSalespeopleBelowEachOther) {
  if (!gives_unsorted_rows_by_key()) GTEST_SKIP() << "siblings come in any order";
  add_branch(610, "Filial d''Oeste", 600);
  add_salesperson(611, "Bia", 610);
  add_salesperson(612, "Caio", 610);
  add_item(613, "contato", 600);
  add_salesperson(614, "abaixo do contato", 613);
  add_salesperson(615, "Davi", 600);
  EXPECT_EQ(tree(),
            root("Ana") +
                branch(1, 610, 5, "Filial d'Oeste", leaf(2, 611, 25, "Bia") + leaf(3, 612, 25, "Caio")) +
                leaf(4, 615, 5, "Davi") + tree_end(4));
}

TEST_F(SalespersonTree, ACycleEndsAsAFailure) {
  add_salesperson(600, "Ana", 611);
  add_branch(610, "f", 600);
  add_branch(611, "g", 610);
  const Failure failure = failure_of([&] { tree(); });
  EXPECT_EQ(failure.number, error_number::out_of_stack);
  EXPECT_EQ(failure.source, "Pradelis.Vendedor.Montar_Arv_Vendedor");
  EXPECT_TRUE(host_.take_written().starts_with(root("Ana")));
}

TEST_F(SalespersonTree, ANodeWithoutNameFails) {
  add_branch(610, "f", 600);
  run("update item set nome = null where oid = 610");
  EXPECT_EQ(failure_of([&] { tree(); }).number, error_number::invalid_use_of_null);
}

}  // namespace
}  // namespace pradelis::tests
