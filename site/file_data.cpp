#include "site/file_data.h"

#include "dataaccess/schema/fixed.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::size_t longest_name = 200;  // bytes; what is cut is the beginning, not the extension

bool in_character(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

StoredFile read_file(Context& context, std::int32_t id) {
  StoredFile file;
  std::int32_t kind = 0;
  each_row(context.crm(),
           concat("select f.ritem, f.nome, i.cid from crm_arquivo f join item_r i on i.oid = f.ritem"
                  " where f.id = ",
                  id),
           1, [&](const Row& row) {
             file.id = id;
             file.record = row.id(0);
             file.name = row.text(1);
             kind = row.id(2);
           });
  file.of_deal = kind == dataaccess::fixed::class_deal;
  // What is attached to records of other kinds is shown nowhere on the site.
  if (!file.of_deal && kind != dataaccess::fixed::class_company) throw Refusal{404};
  if (file.of_deal) {
    context.visible().require_deal(file.record);
  } else {
    context.visible().require_company(file.record);
  }
  return file;
}

std::string read_content(Context& context, const StoredFile& file) {
  const Variant content =
      single_value(context.crm(), concat("select dado from crm_arquivo where id = ", file.id));
  if (content.is_null()) return {};
  const auto& bytes = content.get<Bytes>();
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::vector<View> file_views(Context& context, std::int32_t record) {
  component::CRM& crm = context.crm();
  std::vector<View> views;
  each_row(crm,
           concat("select f.id, f.nome, f.observacao, o.nome, f.criadoem, datalength(f.dado)"
                  " from crm_arquivo f left join item o on o.oid = f.criadopor where f.ritem = ",
                  record, " order by f.id desc"),
           0, [&](const Row& row) {
             const std::string address = "/arquivos/" + std::to_string(row.id(0));
             Variant size = row.id(5);
             View view;
             view.set("address", address).set("name", row.text(1)).optional("note", row.text(2));
             view.set("creator", row.component_text(3)).set("date", day_text(row.value(4)));
             view.set("size", crm.Escrever_Tamanho_Arquivo(size)).set("deletion", address + "/excluir");
             views.push_back(std::move(view));
           });
  return views;
}

std::string safe_file_name(std::string_view sent) {
  const std::size_t folder = sent.find_last_of("/\\");
  if (folder != std::string_view::npos) sent.remove_prefix(folder + 1);
  if (!is_valid_utf8(sent)) return "arquivo";
  std::string name;
  for (const char c : sent) {
    if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7f) name += c;
  }
  if (name.size() > longest_name) {
    std::size_t begin = name.size() - longest_name;
    while (in_character(name[begin])) ++begin;
    name.erase(0, begin);
  }
  name = std::string(trim(name));
  return name.empty() || name == "." || name == ".." ? "arquivo" : name;
}

}  // namespace pradelis::site
