#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/file_data.h"
#include "site/pages/pages.h"
#include "values/convert.h"

namespace pradelis::site {
namespace {

/// The company or deal that a file is attached to.
struct Record {
  std::int32_t id = 0;
  std::string page;
  std::vector<Link> trail;
};

Record read_record(Context& context, std::int32_t id, bool deal) {
  if (deal) {
    const Deal found = read_deal(context, id);
    return {id, deal_address(id), deal_trail(found)};
  }
  const Company found = read_company(context, id);
  return {id, company_address(id), company_trail(found)};
}

Form upload_form() {
  Form form;
  form.file("arquivo", "Arquivo").hint("Até 20 MB.");
  form.text("descricao", "Descrição").limit(250);
  return form;
}

void show_upload(Context& context, const Form& form, const Record& record) {
  context.show_form(form, {"Anexar arquivo", "empresas", "Anexar", record.trail});
}

template <bool deal>
void ask_upload(Context& context) {
  show_upload(context, upload_form(), read_record(context, context.id(), deal));
}

/// The file that was sent; null, with the reason in the form, when there is none that may be stored.
const Upload* sent_file(Context& context, Form& form) {
  for (const Upload& upload : context.request().uploads) {
    if (upload.field != "arquivo") continue;
    if (upload.content.size() <= largest_file) return &upload;
    form.refuse("arquivo", "O arquivo tem mais de 20 MB.");
    return nullptr;
  }
  form.refuse("arquivo", "Escolha um arquivo.");
  return nullptr;
}

template <bool deal>
void store_upload(Context& context) {
  const Record record = read_record(context, context.id(), deal);
  Form form = upload_form();
  form.read(context.request().form);
  const Upload* upload = sent_file(context, form);
  const bool done = !form.refused() && attempt(form, [&] {
    const auto* bytes = reinterpret_cast<const std::byte*>(upload->content.data());
    context.crm().Adicionar_Arquivo(Bytes(bytes, bytes + upload->content.size()),
                                    safe_file_name(upload->name), context.person(), form.text_of("descricao"),
                                    record.id);
  });
  if (!done) return show_upload(context, form, record);
  context.redirect(record.page, "Arquivo anexado.");
}

void download(Context& context) {
  const StoredFile file = read_file(context, context.id());
  context.send_file(file.name, read_content(context, file));
}

void show_deletion(Context& context, const Form& form, const StoredFile& file) {
  const Record record = read_record(context, file.record, file.of_deal);
  context.show_form(form, {"Excluir arquivo", "empresas", "Excluir", record.trail, file.name, true});
}

void ask_deletion(Context& context) { show_deletion(context, Form(), read_file(context, context.id())); }

void delete_file(Context& context) {
  const StoredFile file = read_file(context, context.id());
  Form form;
  const bool done = attempt(form, [&] {
    const Variant result = context.crm().Excluir_Arquivo(file.id, context.person());
    if (result.is(VariantType::Text)) form.refuse(result.get<std::string>());
  });
  if (!done) return show_deletion(context, form, file);
  context.redirect(file.of_deal ? deal_address(file.record) : company_address(file.record),
                   "Arquivo excluído.");
}

}  // namespace

void add_file_pages(Router& router) {
  router.get("/empresas/{}/arquivos/novo", ask_upload<false>);
  router.post("/empresas/{}/arquivos/novo", store_upload<false>);
  router.get("/negocios/{}/arquivos/novo", ask_upload<true>);
  router.post("/negocios/{}/arquivos/novo", store_upload<true>);
  router.get("/arquivos/{}", download);
  router.get("/arquivos/{}/excluir", ask_deletion);
  router.post("/arquivos/{}/excluir", delete_file);
}

}  // namespace pradelis::site
