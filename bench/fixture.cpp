#include "bench/fixture.h"

#include <string>

#include "component/thread_state.h"
#include "component/web_objects.h"
#include "dataaccess/schema/schema.h"
#include "values/error.h"

namespace pradelis::bench {
namespace {

constexpr const char* write_something = "update instalacao set proximooid = proximooid + 50";

std::string connection_string;
std::string written;

class BenchApplication : public component::Application {
 public:
  Variant Value(const std::string& name) override {
    if (name == "dataconn_ConnectionString") return connection_string;
    return name == "Link_local" ? Variant("") : Variant(std::int32_t{30});
  }
};

class BenchResponse : public component::Response {
 public:
  void Write(const std::string& html) override { written += html; }
};

class BenchContext : public component::ObjectContext {
 public:
  ObjectPtr Item(const std::string& name) override {
    if (name == "Application") return application_;
    if (name == "Response") return response_;
    raise(error_number::subscript_out_of_range);
  }

 private:
  ObjectPtr application_ = std::make_shared<BenchApplication>();
  ObjectPtr response_ = std::make_shared<BenchResponse>();
};

class BenchServer : public component::AppServer {
 public:
  component::ObjectContextPtr GetObjectContext() override { return context_; }

 private:
  component::ObjectContextPtr context_ = std::make_shared<BenchContext>();
};

void add_item(Statement& insert, std::int32_t oid, const std::string& name, std::int32_t cid,
              std::int32_t scope) {
  insert.bind(1, std::int64_t{oid})
      .bind(2, name)
      .bind(3, std::int64_t{cid})
      .bind(4, std::int64_t{scope})
      .run();
}

void add_companies_and_deals(Database& database, Statement& item) {
  Statement company(database, "insert into pessoajuridica (oid) values (?)");
  for (std::int32_t i = 0; i < Contents::companies; ++i) {
    add_item(item, Contents::first_company + i, "Empresa " + std::to_string(i), 46, 7);
    company.bind(1, std::int64_t{Contents::first_company + i}).run();
  }
  Statement deal(
      database,
      "insert into crm_pos_negocio (oid, rpessoa, rvendedor, valorprovavel) values (?, ?, ?, 1500)");
  Statement product(database,
                    "insert into crm_classeprodutos_negocio (rclasseproduto, rnegocio) values (?, ?)");
  for (std::int32_t i = 0; i < Contents::deals; ++i) {
    const std::int64_t oid = Contents::first_deal + i;
    add_item(item, Contents::first_deal + i, "Negócio " + std::to_string(i), 16075, 7);
    deal.bind(1, oid)
        .bind(2, std::int64_t{Contents::first_company + i % Contents::companies})
        .bind(3, std::int64_t{Contents::seller})
        .run();
    for (std::int64_t product_class = 101; product_class <= 103; ++product_class)
      product.bind(1, product_class).bind(2, oid).run();
  }
}

void add_groups(Database& database, Statement& item) {
  Statement member(database, "insert into agrupamento (oid, ritem, rgrupo, rpapel) values (?, ?, ?, 26735)");
  for (std::int32_t i = 0; i < Contents::groups; ++i) {
    const std::int32_t parent = i == 0 ? 7 : Contents::first_group + (i - 1) / 10;
    add_item(item, Contents::first_group + i, "Grupo " + std::to_string(i), 18, parent);
  }
  for (std::int32_t i = 0; i < Contents::members; ++i) {
    member.bind(1, std::int64_t{6'000'000 + i})
        .bind(2, std::int64_t{Contents::first_member + i})
        .bind(3, std::int64_t{Contents::first_group + i % Contents::groups})
        .run();
  }
}

void add_categories(Database& database, Statement& item) {
  Statement category(database, "insert into categoria (oid, rsuper) values (?, ?)");
  for (std::int32_t i = 0; i < Contents::categories; ++i) {
    // Six below each gives five levels for 2,000 categories.
    const std::int32_t parent = i < 6 ? 46 : Contents::first_category + (i - 6) / 6;
    add_item(item, Contents::first_category + i, "Categoria " + std::to_string(i), 17, parent);
    category.bind(1, std::int64_t{Contents::first_category + i}).bind(2, std::int64_t{parent}).run();
  }
}

void fill(Database& database) {
  database.run("begin");
  Statement item(database,
                 "insert into item (oid, nome, cid, rescopo, criadopor, criadoem, codigo, observacao) "
                 "values (?, ?, ?, ?, 7, '2026-03-05 14:07:33', 'C-17', 'Observação de vinte letras')");
  add_companies_and_deals(database, item);
  add_groups(database, item);
  add_categories(database, item);
  Statement classification(database,
                           "insert into classificacao (oid, ritem, rcategoria) values (?, ?, 2127)");
  for (std::int32_t i = 0; i < classifications; ++i)
    classification.bind(1, std::int64_t{10'000'000 + i}).bind(2, std::int64_t{10'000'000 + i / 3}).run();
  database.run("commit");
  database.run("pragma wal_checkpoint(truncate)");
}

}  // namespace

Fixture::Fixture() {
  std::string pattern = (std::filesystem::temp_directory_path() / "pradelis-bench-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  const std::filesystem::path component_file = folder_ / "component.db", hand_file = folder_ / "hand.db";
  dataaccess::schema::InitOptions options;
  options.maintenance_password = [] { return std::string("bench"); };
  options.password_rounds = 1'000;
  dataaccess::schema::initialise("sqlite:" + component_file.string() + "?create=1", options);
  component::reset_thread_state();
  {
    Database filled(component_file.string());
    fill(filled);
  }
  std::filesystem::copy_file(component_file, hand_file);
  by_hand_ = std::make_unique<Database>(hand_file.string());
  // Both sides read and write beside a log that is in use, as on a running site.
  Database(component_file.string()).run(write_something);
  by_hand_->run(write_something);
  connection_string = "sqlite:" + component_file.string() + "?synchronous=NORMAL";
  component::set_app_server_factory([] { return std::make_shared<BenchServer>(); });
}

Fixture::~Fixture() {
  component::reset_thread_state();
  by_hand_.reset();
  std::error_code ignored;  // a temporary folder that cannot be removed is no failure of the measurement
  std::filesystem::remove_all(folder_, ignored);
}

const std::string& Fixture::written() const { return bench::written; }

void Fixture::forget_written() { bench::written.clear(); }

}  // namespace pradelis::bench
