#pragma once

#include <string_view>

#include "component/crm.h"
#include "dataaccess/connection.h"
#include "dataaccess/quelcor.h"
#include "dataaccess/recordset.h"

namespace pradelis::automation {

/// Name of a class or an enumeration in the interface.
template <class T>
inline constexpr std::string_view interface_name = {};

template <>
inline constexpr std::string_view interface_name<component::CRM> = "CRM";
template <>
inline constexpr std::string_view interface_name<component::GrupoUsuarios> = "GrupoUsuarios";
template <>
inline constexpr std::string_view interface_name<component::PessoaJuridica> = "PessoaJuridica";
template <>
inline constexpr std::string_view interface_name<component::Vendedor> = "Vendedor";
template <>
inline constexpr std::string_view interface_name<dataaccess::Recordset> = "Recordset";
template <>
inline constexpr std::string_view interface_name<dataaccess::Fields> = "Fields";
template <>
inline constexpr std::string_view interface_name<dataaccess::Field> = "Field";
template <>
inline constexpr std::string_view interface_name<dataaccess::Connection> = "Connection";
template <>
inline constexpr std::string_view interface_name<dataaccess::QLCConn> = "QLCConn";
template <>
inline constexpr std::string_view interface_name<dataaccess::QLCBase> = "QLCBase";
template <>
inline constexpr std::string_view interface_name<dataaccess::QLCData> = "QLCData";

template <>
inline constexpr std::string_view interface_name<dataaccess::CursorType> = "CursorType";
template <>
inline constexpr std::string_view interface_name<dataaccess::LockType> = "LockType";
template <>
inline constexpr std::string_view interface_name<dataaccess::CursorLocation> = "CursorLocation";
template <>
inline constexpr std::string_view interface_name<dataaccess::ConnectMode> = "ConnectMode";
template <>
inline constexpr std::string_view interface_name<dataaccess::ObjectState> = "ObjectState";

}  // namespace pradelis::automation
