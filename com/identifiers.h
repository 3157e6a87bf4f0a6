#pragma once

#include <array>
#include <string_view>

/// The identifiers under which the platform knows the component. Programs hold on to them: they never
/// change, whatever else does.
namespace pradelis::com {

struct ClassIdentifiers {
  std::string_view class_name;
  std::string_view program_identifier;
  std::string_view class_id;
  std::string_view interface_id;  ///< of the class's dual interface, called "_" and the class name
  std::string_view description;
};

inline constexpr std::string_view library_name = "Pradelis";
inline constexpr std::string_view library_id = "D4D3DA2E-C5D3-4CC8-A6E5-3D2C292DB1AC";
inline constexpr std::string_view library_description = "Pradelis - componente de CRM";
inline constexpr unsigned short library_major_version = 1;
inline constexpr unsigned short library_minor_version = 0;

inline constexpr std::array<ClassIdentifiers, 4> class_identifiers{{
    {"CRM", "Pradelis.CRM", "FC898BAB-4799-4E95-B50B-246C7E0B0B8C", "F2E13EDA-0C5C-49BA-9DB8-FC0C8D6FD405",
     "Objeto do CRM"},
    {"PessoaJuridica", "Pradelis.PessoaJuridica", "35D6F7F8-CF55-4B53-B51E-AA4224845F56",
     "A76A8483-4BC1-45B5-ACD9-F99E71EA71C5", "Categorias de empresas"},
    {"Vendedor", "Pradelis.Vendedor", "D27C7BC4-E935-48C1-81F1-04ABB7132528",
     "A8BCA20A-D2CC-43DF-A2CB-32D06A72BFC3", "Filiais e vendedores"},
    {"GrupoUsuarios", "Pradelis.GrupoUsuarios", "82C6143C-E8E3-421A-A53C-01E54F75CF22",
     "9F29669D-A81A-45B8-AE73-7BB72AA19183", "Grupos e visibilidade"},
}};

}  // namespace pradelis::com
