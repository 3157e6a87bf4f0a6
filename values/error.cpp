#include "values/error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pradelis {
namespace {

using NumberedText = std::pair<std::int32_t, std::string_view>;

constexpr std::string_view general_text = "Erro definido pelo aplicativo ou pelo objeto";

constexpr std::array platform_texts = {
    NumberedText{error_number::invalid_argument, "Argumento ou chamada de procedimento inválida"},
    NumberedText{error_number::overflow, "Estouro"},
    NumberedText{error_number::out_of_memory, "Memória insuficiente"},
    NumberedText{error_number::subscript_out_of_range, "Subscrito fora do intervalo"},
    NumberedText{error_number::type_mismatch, "Tipos incompatíveis"},
    NumberedText{error_number::out_of_stack, "Espaço insuficiente para pilha"},
    NumberedText{error_number::object_not_set, "A variável do objeto não foi definida"},
    NumberedText{error_number::invalid_use_of_null, "Uso de Null inválido"},
    NumberedText{error_number::cannot_create_object, "O componente ActiveX não pode criar o objeto"},
    NumberedText{error_number::no_such_member, "O objeto não aceita esta propriedade ou método"},
    NumberedText{error_number::named_argument_not_found, "Argumento nomeado não encontrado"},
    NumberedText{error_number::argument_not_optional, "Argumento não opcional"},
    NumberedText{error_number::wrong_number_of_arguments,
                 "Número de argumentos incorreto ou atribuição de propriedade inválida"},
};

}  // namespace

std::string_view platform_text(std::int32_t number) noexcept {
  const auto found = std::find_if(platform_texts.begin(), platform_texts.end(),
                                  [number](const NumberedText& text) { return text.first == number; });
  return found == platform_texts.end() ? general_text : found->second;
}

void raise(std::int32_t number) { throw Error(number, {}, std::string(platform_text(number))); }

void raise(std::int32_t number, std::string description) { throw Error(number, {}, std::move(description)); }

}  // namespace pradelis
