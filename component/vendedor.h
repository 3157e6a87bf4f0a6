#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "values/object.h"

namespace pradelis::component {

/// The tree of branches and salespeople, with radio buttons.
class Vendedor : public Object {
 public:
  /// Writes the tree below a person into the response.
  /// \param CheckBox  name of every radio button, and prefix of their ids
  /// \param OidPF     the person at the top, always shown and preselected
  /// \param NomePF    that person's name, written as it is
  /// \param Tamanho   indentation of the first level, in pixels
  void Montar_Arv_Vendedor(const std::string& CheckBox, std::int32_t OidPF, const std::string& NomePF,
                           std::int16_t Tamanho);
};
using VendedorPtr = std::shared_ptr<Vendedor>;

}  // namespace pradelis::component
