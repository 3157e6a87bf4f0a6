#pragma once

#include <cstdint>
#include <string>

#include "tests/support/component_test.h"

namespace pradelis::tests {

/// Deals of company 501, salesperson 601.
class DealTest : public ComponentTest {
 protected:
  Variant register_deal(const std::string& name, std::int32_t company = 501, const std::string& date = "",
                        const std::string& classes = "", std::int32_t indicator = 0) {
    return crm_->Cadastrar_Negocio(company, 701, 601, date, classes, indicator, "primeira nota", name, 1500.5,
                                   step_);
  }

  std::int32_t new_deal(const std::string& name = "Reforma", const std::string& classes = "") {
    return register_deal(name, 501, "10/04/2026", classes).get<std::int32_t>();
  }

  void set_deal(std::int32_t deal, const std::string& column, const Variant& value) {
    store("select " + column + " from crm_pos_negocio where oid = " + to_text(deal), value);
  }

  std::string deal(std::int32_t oid, const std::string& columns) {
    return rows("select " + columns + " from crm_pos_negocio where oid = " + to_text(oid));
  }

  std::string observation(std::int32_t oid) {
    return rows("select observacao from item where oid = " + to_text(oid));
  }

  std::string classes(std::int32_t oid) {
    return rows("select rclasseproduto from crm_classeprodutos_negocio where rnegocio = " + to_text(oid) +
                " order by rclasseproduto");
  }

  static constexpr std::int32_t no_deal = 99;
  std::int16_t step_ = 0;
};

inline Date on_day(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour = 0) {
  return make_date({.year = year, .month = month, .day = day, .hour = hour});
}

}  // namespace pradelis::tests
