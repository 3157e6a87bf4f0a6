#pragma once

#include <cstdint>

/// Identifiers that every installation has, all below the first one that `NovoOid` hands out.
namespace pradelis::dataaccess::fixed {

inline constexpr std::int32_t first_free_oid = 100001;

/// The reserved system object: also a person, a role and a user account that nobody can log in to.
inline constexpr std::int32_t system_object = 7;
/// The user account that counts as creator of contacts, and whose configuration is the installation's.
inline constexpr std::int32_t component_user = 1;
inline constexpr std::int32_t maintenance_user = 26737;
inline constexpr const char* maintenance_name = "TARVONEL";

// Classes (`item.cid`); the classes are items themselves.
inline constexpr std::int32_t class_system = 7;
inline constexpr std::int32_t class_group = 18;
inline constexpr std::int32_t class_city = 19;
inline constexpr std::int32_t class_person = 45;
inline constexpr std::int32_t class_company = 46;
inline constexpr std::int32_t class_address = 48;
inline constexpr std::int32_t class_user = 65;
inline constexpr std::int32_t class_deal = 16075;
inline constexpr std::int32_t class_activity = 16202;

// Categories (`classificacao.rcategoria`).
inline constexpr std::int32_t category_contact = 1000;
inline constexpr std::int32_t category_company_address = 1066;
inline constexpr std::int32_t category_client = 2121;
inline constexpr std::int32_t category_prospect = 2127;

// Lists that forms choose from: each is the set of categories below one of these.
inline constexpr std::int32_t list_contact_roles = 2201;
inline constexpr std::int32_t list_loss_reasons = 2202;
inline constexpr std::int32_t list_product_classes = 2203;
inline constexpr std::int32_t list_states = 2204;  ///< of the country; filled, from 2301 on
inline constexpr std::int32_t list_activity_kinds = 2205;

/// Role of a person in a user group.
inline constexpr std::int32_t role_group_member = 26735;
/// Group of all user accounts; they are members in role 7.
inline constexpr std::int32_t group_user_accounts = 26736;
/// Relation of a person to his user account.
inline constexpr std::int32_t relation_user_account = 1121;
/// This application in the suite.
inline constexpr std::int32_t application = 20090;
/// Configuration unit that names the current company.
inline constexpr std::int32_t unit_current_company = 10449;
/// Extra field "date of birth".
inline constexpr std::int32_t field_birth_date = 16353;

// The current company of a new installation, and what belongs to it.
inline constexpr std::int32_t current_company = 50000;
inline constexpr std::int32_t current_company_setting = 50001;
inline constexpr std::int32_t current_company_address = 50002;

}  // namespace pradelis::dataaccess::fixed
