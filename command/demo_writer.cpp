#include "command/demo_writer.h"

#include <algorithm>

#include "command/demo_names.h"
#include "dataaccess/schema/fixed.h"
#include "site/choice_lists.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/salespeople.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::command {
namespace {

namespace fixed = dataaccess::fixed;
namespace names = demo_names;
using site::ReferenceList;

constexpr std::int32_t system_object = fixed::system_object;
constexpr int history_days = 240;

/// While it lives, the clock stands at a moment of the past, so that what is written carries that date.
class Moment {
 public:
  explicit Moment(Date date) {
    replace_clock([date] { return date; });
  }
  ~Moment() { replace_clock({}); }
  Moment(const Moment&) = delete;
  Moment& operator=(const Moment&) = delete;
};

template <class Names>
std::vector<std::int32_t> fill_list(component::CRM& crm, ReferenceList list, const Names& entries) {
  std::vector<std::int32_t> added;
  for (const std::string_view entry : entries) {
    added.push_back(site::add_entry(crm, list, std::string(entry), system_object));
  }
  return added;
}

}  // namespace

DemoWriter::DemoWriter(component::CRM& crm, const DemoOptions& options, Progress& progress)
    : crm_(crm), options_(options), progress_(progress), today_(today()) {}

std::size_t DemoWriter::steps(const DemoOptions& options) {
  return names::salespeople.size() * 10 + static_cast<std::size_t>(options.companies + options.deals);
}

Date DemoWriter::day(int from_today) const { return {today_.serial + from_today}; }

void DemoWriter::write(const std::string& password) {
  write_lists();
  write_segments();
  write_team(password);
  write_branches();
  write_extra_fields();
  for (int i = 0; i < options_.companies; ++i) write_company(i);
  if (!companies_.empty()) {
    for (int i = 0; i < options_.deals; ++i) write_deal(i);
    write_deletions();
  }
}

void DemoWriter::write_lists() {
  roles_ = fill_list(crm_, ReferenceList::Roles, names::roles);
  reasons_ = fill_list(crm_, ReferenceList::LossReasons, names::loss_reasons);
  classes_ = fill_list(crm_, ReferenceList::ProductClasses, names::product_classes);
  kinds_ = fill_list(crm_, ReferenceList::ActivityKinds, names::activity_kinds);
  for (const std::string_view product : names::products) crm_.Cadastrar_Produto(product);
  const auto states = site::entries(crm_, ReferenceList::States);
  for (const names::City& city : names::cities) {
    const auto state = std::find_if(states.begin(), states.end(),
                                    [&](const site::Option& option) { return option.label == city.state; });
    crm_.Cadastrar_Cidade(state->id, city.area_code, "", city.name, system_object);
    cities_.push_back(site::find_city(crm_, std::string(city.name)).value());
  }
}

void DemoWriter::write_segments() {
  std::vector<std::pair<std::string, std::int32_t>> tops;
  const auto find = [](const auto& list, std::string_view name) {
    return std::find_if(list.begin(), list.end(), [&](const auto& entry) { return entry.first == name; });
  };
  for (const names::Trade& trade : names::trades) {
    if (find(tops, trade.segment) == tops.end()) {
      tops.emplace_back(trade.segment, site::add_category(crm_, fixed::class_company,
                                                          std::string(trade.segment), system_object));
    }
    if (find(segments_, trade.branch) != segments_.end()) continue;
    segments_.emplace_back(trade.branch, site::add_category(crm_, find(tops, trade.segment)->second,
                                                            std::string(trade.branch), system_object));
  }
}

void DemoWriter::write_team(const std::string& password) {
  for (const names::Group& group : names::groups) {
    const std::int32_t parent =
        group.parent < 0 ? system_object : groups_[static_cast<std::size_t>(group.parent)];
    crm_.cGrupoUsuarios()->Cadastrar_Grupo(system_object, std::string(group.name), parent);
    groups_.push_back(to_int32(site::single_value(crm_, "select max(oid) from item_r where cid = 18")));
  }
  for (const names::Salesperson& person : names::salespeople) {
    site::NewSalesperson entry;
    entry.name = person.name;
    entry.login = person.login;
    entry.password = password;
    entry.groups = {groups_[static_cast<std::size_t>(person.group)]};
    entry.city = site::find_city(crm_, std::string(person.city)).value();
    entry.street = pick_from(names::streets);
    entry.house = std::to_string(100 + pick(900));
    entry.district = pick_from(names::districts);
    people_.push_back(site::register_salesperson(crm_, entry, system_object, people_.empty() ? 0 : 1));
    for (int i = 0; i < 10; ++i) progress_.step();
  }
}

/// Branches stand below the leader of all, salespeople below the branch of their city.
void DemoWriter::write_branches() {
  std::vector<std::pair<std::string_view, std::int32_t>> branches;
  for (std::size_t i = 1; i < people_.size(); ++i) {
    const std::string_view city = names::salespeople[i].city;
    auto branch =
        std::find_if(branches.begin(), branches.end(), [&](const auto& b) { return b.first == city; });
    if (branch == branches.end()) {
      const std::int32_t oid = crm_.QLCBase()->IncluirItem(
          system_object, "Filial " + std::string(city), fixed::class_system, 7, people_.front(),
          Variant::missing(), Variant::missing(), system_object, "", "", 0);
      site::append_row(crm_, "filial", [&](dataaccess::Recordset& row) { row.set("oid", oid); });
      branch = branches.insert(branches.end(), {city, oid});
    }
    crm_.QLCBase()->AlterarItem(people_[i], system_object, Variant::missing(), branch->second,
                                Variant::missing(), Variant::missing(), Variant::missing());
  }
}

void DemoWriter::write_extra_fields() {
  constexpr std::int32_t text = 1;
  constexpr std::int32_t reference = 2;
  constexpr std::int32_t date = 3;
  const std::int32_t list = site::add_choice_list(crm_, "Interesses", system_object);
  for (const std::string_view interest : names::product_classes) {
    interests_.push_back(site::add_category(crm_, list, std::string(interest), system_object));
  }
  const auto define = [&](const char* label, std::int32_t type, std::int32_t choices) {
    const std::int32_t oid = crm_.QLCBase()->NovoOid();
    site::append_row(crm_, "dadoadicional", [&](dataaccess::Recordset& row) {
      row.set("oid", oid);
      row.set("ritem", fixed::class_company);
      row.set("valor", label);
      row.set("rtipo", type);
      row.set("rlista", choices);
      row.set("visivel", 1);
    });
    fields_.push_back(oid);
  };
  define("Número de lojas", text, system_object);
  define("Cliente desde", date, system_object);
  define("Maior interesse", reference, list);
}

void DemoWriter::write_company(int number) {
  progress_.step();
  const auto index = static_cast<std::size_t>(number);
  const names::Trade& trade = names::trades[index % names::trades.size()];
  const std::size_t combinations = names::trades.size() * names::proper_names.size();
  const std::string_view proper = names::proper_names[(index * 7 + index / 80) % names::proper_names.size()];
  std::string name = concat(trade.company, " ", proper);
  if (index >= combinations) name += " " + std::to_string(index / combinations + 1);

  const std::size_t person =
      pick(100) < 8 ? pick(names::leaders) : names::leaders + pick(people_.size() - names::leaders);
  const std::size_t city = pick(cities_.size());
  const std::int32_t owner = people_[person];
  const bool client = chance(35);
  // The last company is the newest.
  const Moment then(day(-history_days * (options_.companies - number) / options_.companies));
  const std::string oid = crm_.Cadastrar_Empresa(
      concat(name, " ", pick_from(names::legal_forms)), owner, chance(40) ? pick_from(names::notes) : "",
      name, cities_[city], concat(names::cities[city].postal_prefix, "-", std::to_string(100 + pick(900))),
      pick_from(names::districts), chance(20) ? concat("Sala ", std::to_string(1 + pick(40))) : "",
      std::to_string(1 + pick(2400)), pick_from(names::streets),
      client ? fixed::category_client : fixed::category_prospect);
  // A name drawn twice is refused; the company is simply not there.
  if (oid.empty() || oid.front() < '0' || oid.front() > '9') return;
  Company company{to_int32(Variant(oid)), owner, {}};
  const auto segment = std::find_if(segments_.begin(), segments_.end(),
                                    [&](const auto& entry) { return entry.first == trade.branch; });
  crm_.Cadastrar_Classificacao(company.id, segment->second);
  write_contacts(company);
  if (chance(40)) write_extra_values(company.id);
  if (chance(15)) write_file(company.id, owner);
  companies_.push_back(std::move(company));
}

void DemoWriter::write_contacts(Company& company) {
  const std::size_t count = 1 + pick(3);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = concat(pick_from(names::first_names), " ", pick_from(names::family_names));
    company.contacts.push_back(
        to_int32(Variant(crm_.Cadastrar_Contato(company.owner, name, pick_from(roles_), company.id))));
  }
}

void DemoWriter::write_extra_values(std::int32_t company) {
  crm_.Alterar_Aditivo(company, fields_[0], std::to_string(1 + pick(12)));
  crm_.Alterar_Aditivo(company, fields_[1], day(-static_cast<int>(300 + pick(4000))));
  crm_.Alterar_Aditivo(company, fields_[2], pick_from(interests_));
}

void DemoWriter::write_file(std::int32_t company, std::int32_t owner) {
  const std::string content =
      concat("Anotações da visita\r\n\r\n", pick_from(names::notes), "\r\n", pick_from(names::notes), "\r\n");
  const auto* first = reinterpret_cast<const std::byte*>(content.data());
  crm_.Adicionar_Arquivo(Bytes(first, first + content.size()), "visita.txt", owner, "Anotações da visita",
                         company);
}

void DemoWriter::write_deal(int number) {
  progress_.step();
  const Company& company = companies_[static_cast<std::size_t>(number) % companies_.size()];
  const int age = history_days / 2 * (options_.deals - number) / options_.deals;
  const std::int32_t contact = chance(85) ? pick_from(company.contacts) : 0;
  const double value = static_cast<double>(8 + pick(900)) * 125.0 + (chance(30) ? 49.9 : 0);
  std::vector<std::int32_t> classes;
  for (const std::int32_t one : classes_) {
    if (chance(18)) classes.push_back(one);
  }
  std::string list;
  for (const std::int32_t one : classes) list += (list.empty() ? "" : ",") + std::to_string(one);
  const bool dated = chance(92);
  const Date expected = day(static_cast<int>(pick(130)) - 25);
  const Moment then(day(-age));
  const std::size_t first_name = pick(names::deals.size());
  for (std::size_t i = 0; i < names::deals.size(); ++i) {
    std::int16_t step = 0;
    const Variant result = crm_.Cadastrar_Negocio(
        company.id, contact, company.owner, dated ? crm_.QLCData()->DataParaTexto(expected, 0, 0) : "", list,
        chance(10) ? contact : 0, chance(50) ? std::string(pick_from(names::notes)) : "",
        std::string(names::deals[(first_name + i) % names::deals.size()]), value, step);
    if (result.is(VariantType::Text)) continue;
    end_deal(to_int32(result), value, day(-static_cast<int>(pick(static_cast<std::size_t>(age) + 1))));
    write_activities(company, to_int32(result), contact);
    return;
  }
}

void DemoWriter::end_deal(std::int32_t deal, double value, Date day_of_end) {
  const std::size_t fate = pick(100);
  if (fate < 45) return;
  if (fate < 78) {
    crm_.Executar(concat("select valorfechamento, rproduto from crm_pos_negocio where oid = ", deal),
                  dataaccess::CursorType::Dynamic, dataaccess::LockType::Optimistic);
    crm_.rs->set("valorfechamento", value * static_cast<double>(80 + pick(30)) / 100.0);
    crm_.rs->set("rproduto", static_cast<std::int32_t>(1 + pick(names::products.size())));
    crm_.rs->Update();
    crm_.rs.reset();
    crm_.Fechar_Negocio(day_of_end, deal);
  } else {
    crm_.Perder_Negocio(day_of_end, pick_from(reasons_), pick_from(names::notes), deal);
  }
}

void DemoWriter::write_activities(const Company& company, std::int32_t deal, std::int32_t contact) {
  const std::size_t count = pick(3);
  for (std::size_t i = 0; i < count; ++i) {
    const Date done = day(-static_cast<int>(pick(45)));
    const bool planned = i + 1 == count && chance(70);
    const Variant nothing = Variant::null();
    const Variant next = planned ? Variant(day(static_cast<int>(pick(40)) - 10)) : nothing;
    const std::int32_t kind = pick_from(kinds_);
    crm_.Cadastrar_Atividade(company.id, deal, kind, company.owner, contact, done,
                             std::string(pick_from(names::notes)), next,
                             planned ? Variant(pick_from(kinds_)) : nothing, done, "Atividade",
                             planned ? Variant(company.owner) : nothing);
  }
}

/// The last companies turn out to be duplicates.
void DemoWriter::write_deletions() {
  const std::size_t count = std::min<std::size_t>(3, companies_.size() / 20);
  for (std::size_t i = 0; i < count; ++i) {
    const Company& company = companies_[companies_.size() - 1 - i];
    const std::string name =
        to_text(site::single_value(crm_, concat("select nome from item where oid = ", company.id)));
    crm_.Excluir(name, "", company.owner, day(-1), fixed::application, fixed::class_company, company.id);
  }
}

}  // namespace pradelis::command
