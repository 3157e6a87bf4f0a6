#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "values/variant.h"

namespace pradelis::component {

/// The category tree of companies, with check boxes.
class PessoaJuridica : public Object {
 public:
  /// Writes the tree of categories into the response.
  /// \param CheckBox          name of every check box, and prefix of their ids
  /// \param Tamanho           indentation of the first level, in pixels
  /// \param CollClassifSelec  identifiers of the ticked categories, separated by ","; a piece that is
  ///                          no number raises error 13
  /// \param RSuper            parents whose children are the roots, separated by ","; empty for 46.
  ///                          Goes into the statement as it is
  void Montar_Arv_Classif(const std::string& CheckBox, std::int16_t Tamanho, const Variant& CollClassifSelec,
                          const std::string& RSuper = "");
};
using PessoaJuridicaPtr = std::shared_ptr<PessoaJuridica>;

}  // namespace pradelis::component
