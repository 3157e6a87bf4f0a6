#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/form.h"
#include "site/session_store.h"

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

/// States of deals, as the component's selection tells them apart.
struct DealStates {
  bool open = true;
  bool won = true;
  bool lost = true;
};

/// The one place that decides what the logged-in user may see or change, for lists, details and
/// changes alike. Everything rests on the session value that login filled ("InformacoesUsuario") and
/// on the component's own selections.
class Visibility {
 public:
  Visibility(component::CRM& crm, const User& user) : crm_(crm), user_(user) {}

  // Statements that select identifiers, to stand in an IN ( … ).

  /// Companies: prospects of the users whom he may see, and all clients.
  std::string companies() const;
  /// The same companies as tables to join, j the companies' items: to be followed by the condition
  /// `company_join`. The engine goes through all companies in their order and looks each up in the
  /// selection, which costs less than working the selection out first.
  std::string company_rows() const;
  static constexpr const char* company_join = "v.oid = q.oid and j.oid = q.oid";
  /// Deals of salespeople whom he may see, with companies that he may see. At least one state.
  std::string deals(DealStates states = {}) const;
  /// Deals of one company that he may see.
  std::string deals_of(std::int32_t company) const;
  /// "21, 22, 10": the users whose records he may see, he himself included.
  std::string users() const;

  // Each refuses with 404 what he may not see, and what does not exist.

  void require_company(std::int32_t company) const;
  void require_deal(std::int32_t deal) const;
  /// What stands on a company or on a deal: whoever sees the deal sees it, or, when there is none (0), the
  /// company.
  void require_company_or_deal(std::int32_t company, std::int32_t deal) const;
  /// A contact of this company.
  void require_contact(std::int32_t company, std::int32_t contact) const;
  /// A group that he may administer.
  void require_group(std::int32_t group) const;

  /// Whether he may see this person's records.
  bool sees(std::int32_t person) const;
  /// Salespeople whom he may give records to, by name.
  std::vector<Option> salespeople() const;
  /// Whether he administers any group.
  bool administers() const { return user_.maintenance || !user_.groups.empty(); }
  /// Whether he administers this group.
  bool administers(std::int32_t group) const;

 private:
  void require(const std::string& statement) const;

  component::CRM& crm_;
  const User& user_;
};

}  // namespace pradelis::site
