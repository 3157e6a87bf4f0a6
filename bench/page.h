#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "component/crm.h"
#include "values/date.h"

/// The component's side of what is measured: what a page does in one request.
namespace pradelis::bench {

/// What a page keeps of a row of `item`.
struct ItemRow {
  std::int32_t oid = 0;
  std::string nome, codigo;
  std::int32_t cid = 0, rescopo = 0, criadopor = 0;
  Date criadoem;
  std::string observacao;
};

/// Reads a query of these columns by name.
void read_items(component::CRM& crm, const std::string& sql, std::vector<ItemRow>& rows);

/// Registers a deal with three classes. Raises `std::runtime_error` when it is refused.
void register_deal(component::CRM& crm, const std::string& name);

}  // namespace pradelis::bench
