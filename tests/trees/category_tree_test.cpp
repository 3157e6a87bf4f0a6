#include "tests/support/component_test.h"

namespace pradelis::tests {
namespace {

const std::string font = "<font color=\"#000000\" size=1 face=\"Verdana, Arial, Helvetica\">";

std::string tree_end(int last) {
  return "<input type=\"hidden\" name=\"ultimo\"  value=\"" + std::to_string(last) + "\"></font>\r\n";
}

std::string spacer(int width) {
  return "<img src=\"/crm/images/1ptrans.gif\" width=\"" + std::to_string(width) + "\" height=1>";
}

std::string branch(int number, int oid, int indent, const std::string& name, const std::string& inside,
                   const std::string& checked = "") {
  const std::string n = std::to_string(number);
  return spacer(indent) + "<img src=\"/crm/images/mais.gif\" width=9 height=9 id=\"img" + n +
         "\" onclick=\"tier1Menu(menu" + n + ",img" + n +
         ")\" class=\"tier1\" onmouseover=\"this.className='tier1over'\"  "
         "onmouseout=\"this.className='tier1'\" "
         "style=\"CURSOR: hand\"><b><input type=\"checkbox\" name=\"cat\" value=\"" +
         std::to_string(oid) + "\" id=\"cat" + n + "\" " + checked + ">" + name + "</b><br><span ID=\"menu" +
         n + "\" STYLE=\"DISPLAY: none\">\r\n" + inside + "</span>";
}

std::string leaf(int number, int oid, int indent, const std::string& name, const std::string& checked = "") {
  return spacer(indent + 9) + "<input type=\"checkbox\" name=\"cat\" value=\"" + std::to_string(oid) +
         "\" id=\"cat" + std::to_string(number) + "\" " + checked + "> " + name + "<br>\r\n";
}

std::string script(int number) {
  return "<script language=\"javascript\">\r\nExpandir_Selecionado(document.all.item(\"cat" +
         std::to_string(number) + "\"));\r\n</script>";
}

class CategoryTree : public ComponentTest {
 protected:
  CategoryTree() { host_.set_application("Link_local", "/crm"); }

  void add_category(std::int32_t oid, const std::string& name, std::int32_t parent) {
    add_item(oid, name);
    run(concat("insert into categoria (oid, rsuper) values (", oid, ", ", parent, ")"));
  }
  std::string tree(const Variant& selected = "", const std::string& parents = "") {
    crm_->cPessoaJuridica()->Montar_Arv_Classif("cat", 10, selected, parents);
    return host_.take_written();
  }
  Failure failure(const Variant& selected, const std::string& parents = "") {
    return failure_of([&] { tree(selected, parents); });
  }
};

TEST_F(CategoryTree, WithoutCategoriesIsAnEmptyFrame) { EXPECT_EQ(tree("abc"), font + tree_end(0)); }

TEST_F(CategoryTree, BranchesLeavesAndTheirSelection) {
  add_category(100201, "Comércio", 46);
  add_category(100202, "Atacado", 100201);
  add_category(100203, "Varejo d''Oeste", 100201);
  add_category(100204, "<Serviços>", 46);
  const std::string checked = " Checked ";
  const auto expected = [](const std::string& services, const std::string& commerce) {
    return font + services + commerce + tree_end(4);
  };
  const auto commerce = [](const std::string& inside) { return branch(2, 100201, 10, "Comércio", inside); };
  const std::string services = leaf(1, 100204, 10, "<Serviços>");
  const std::string wholesale = leaf(3, 100202, 30, "Atacado"),
                    retail = leaf(4, 100203, 30, "Varejo d'Oeste");
  const std::string wholesale_ticked = leaf(3, 100202, 30, "Atacado", checked) + script(3);
  const std::string retail_ticked = leaf(4, 100203, 30, "Varejo d'Oeste", checked);
  const struct {
    Variant selected;
    std::string html;
  } cases[] = {
      {"", expected(services, commerce(wholesale + retail))},
      {Variant(), expected(services, commerce(wholesale + retail))},
      {"999, 100203", expected(services, commerce(wholesale + retail_ticked + script(4)))},
      {"100202,100203", expected(services, commerce(wholesale_ticked + retail_ticked))},
      {std::int32_t{100204},
       expected(leaf(1, 100204, 10, "<Serviços>", checked), commerce(wholesale + retail))},
      {"100201,100202",
       expected(services, branch(2, 100201, 10, "Comércio", wholesale_ticked + retail, checked) + script(2))},
  };
  for (const auto& expected_tree : cases) EXPECT_EQ(tree(expected_tree.selected), expected_tree.html);
}

TEST_F(CategoryTree, TheScriptIsWrittenOncePerRunOfSiblings) {
  add_category(100201, "a", 46);
  add_category(100202, "a1", 100201);
  add_category(100203, "a2", 100201);
  add_category(100204, "a21", 100203);
  add_category(100205, "a3", 100201);
  const std::string checked = " Checked ";
  EXPECT_EQ(tree("100202,100204,100205"),
            font +
                branch(1, 100201, 10, "a",
                       leaf(2, 100202, 30, "a1", checked) + script(2) +
                           branch(3, 100203, 30, "a2", leaf(4, 100204, 50, "a21", checked) + script(4)) +
                           leaf(5, 100205, 30, "a3", checked) + script(5)) +
                tree_end(5));
}

TEST_F(CategoryTree, OtherParentsGiveOtherRootsSortedTogether) {
  add_category(100201, "b", 47);
  add_category(100202, "a", 48);
  add_category(100203, "c", 47);
  add_category(99000, "reservada", 48);
  add_category(99001, "reservada abaixo", 100202);
  EXPECT_EQ(tree("", "47,48"), font + branch(1, 100202, 10, "a", leaf(2, 99001, 30, "reservada abaixo")) +
                                   leaf(3, 100201, 10, "b") + leaf(4, 100203, 10, "c") + tree_end(4));
}

TEST_F(CategoryTree, APieceThatIsNoNumberFailsWhereItIsReached) {
  add_category(100201, "a", 46);
  add_category(100202, "b", 46);
  const Failure trailing = failure("100201,");
  EXPECT_EQ(trailing.number, error_number::type_mismatch);
  EXPECT_EQ(trailing.source, "Pradelis.PessoaJuridica.Montar_Arv_Classif");
  EXPECT_EQ(host_.take_written(), font + leaf(1, 100201, 10, "a", " Checked ")) << "the first was found";
  EXPECT_EQ(failure(Variant::null()).number, error_number::invalid_use_of_null);
  EXPECT_EQ(failure("", "47)").number, error_number::wrong_statement);
}

TEST_F(CategoryTree, ACycleEndsAsAFailureAndTheNextTreeIsWhole) {
  add_category(100201, "a", 100203);
  add_category(100202, "b", 100201);
  add_category(100203, "c", 100202);
  for (int again = 0; again < 3; ++again) {
    const Failure cycle = failure("", "100203");
    EXPECT_EQ(cycle.number, error_number::out_of_stack);
    EXPECT_EQ(cycle.source, "Pradelis.PessoaJuridica.Montar_Arv_Classif");
  }
  host_.take_written();
  run("update categoria set rsuper = 46 where oid = 100201");
  EXPECT_EQ(tree(), font + branch(1, 100201, 10, "a", branch(2, 100202, 30, "b", leaf(3, 100203, 50, "c"))) +
                        tree_end(3));
}

TEST_F(CategoryTree, MoreNodesThanCanBeCountedFailAfterTheLastOne) {
  run("insert into item (oid, nome, cid, rescopo) with recursive n(i) as (select 100200 union all select i + "
      "1 from n where i < 132967) select i, 'x', 45, 7 from n");
  run("insert into categoria (oid, rsuper) select oid, 46 from item where oid >= 100200");
  const Failure overflow = failure("");
  EXPECT_EQ(overflow.number, error_number::overflow);
  EXPECT_EQ(overflow.source, "Pradelis.PessoaJuridica.Montar_Arv_Classif");
  const std::string written = host_.take_written();
  EXPECT_NE(written.find("id=\"cat32767\""), std::string::npos);
  EXPECT_TRUE(written.ends_with("> x<br>\r\n"));
}

}  // namespace
}  // namespace pradelis::tests
