#pragma once

#include "site/router.h"

/// The areas of the site: each adds its pages to the router. A page is a function of a Context.
namespace pradelis::site {

void add_login_pages(Router& router);
void add_home_pages(Router& router);
void add_company_list(Router& router);
void add_company_pages(Router& router);
/// The page of one company.
void add_company_detail(Router& router);
void add_contact_pages(Router& router);
void add_deal_list(Router& router);
/// Deals by state and month.
void add_deal_board(Router& router);
void add_deal_pages(Router& router);
void add_deal_state_pages(Router& router);
void add_activity_pages(Router& router);
void add_agenda_pages(Router& router);
void add_product_pages(Router& router);
void add_file_pages(Router& router);
/// The extra fields and the categories of one company, and what the maintenance user keeps of both.
void add_extra_field_pages(Router& router);
void add_extra_field_admin_pages(Router& router);
/// The lists that extra fields choose from.
void add_choice_list_pages(Router& router);
void add_category_pages(Router& router);
void add_group_pages(Router& router);
void add_salesperson_pages(Router& router);
/// Giving a salesperson's companies and deals to another.
void add_hand_over_pages(Router& router);
/// Deletion of companies, contacts, deals, activities and cities; the register of what was deleted.
void add_deletion_pages(Router& router);
/// Deletion of categories, and of what lists offer.
void add_category_deletion(Router& router);
void add_deletion_register(Router& router);
/// Companies with contacts from CSV files.
void add_import_pages(Router& router);
void add_city_pages(Router& router);
void add_list_pages(Router& router);

}  // namespace pradelis::site
