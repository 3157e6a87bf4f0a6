#include "dataaccess/sqlite/options.h"

#include <charconv>

#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::sqlite {
namespace {

constexpr std::string_view scheme = "sqlite:";

[[noreturn]] void refuse(std::string_view option) {
  raise(error_number::database_failed,
        concat("A opção ", option,
               " da cadeia de conexão não é válida: create=1, "
               "synchronous=OFF|NORMAL|FULL|EXTRA e busy=milissegundos são as que existem."));
}

int read_milliseconds(std::string_view value, std::string_view option) {
  int number = 0;
  const char* end = value.data() + value.size();
  const auto [rest, failure] = std::from_chars(value.data(), end, number);
  if (failure != std::errc{} || rest != end || number < 0) refuse(option);
  return number;
}

void read_option(std::string_view option, Options& options) {
  const std::size_t sign = option.find('=');
  if (sign == std::string_view::npos) refuse(option);
  const std::string_view name = option.substr(0, sign);
  const std::string_view value = option.substr(sign + 1);
  if (name == "create" && (value == "1" || value == "0")) {
    options.create = value == "1";
  } else if (name == "busy") {
    options.busy_milliseconds = read_milliseconds(value, option);
  } else if (name == "synchronous") {
    for (const char* known : {"OFF", "NORMAL", "FULL", "EXTRA"}) {
      if (equal_ignoring_case(value, known)) {
        options.synchronous = known;
        return;
      }
    }
    refuse(option);
  } else {
    refuse(option);
  }
}

}  // namespace

bool is_connection_string(std::string_view text) noexcept {
  return equal_ignoring_case(text.substr(0, scheme.size()), scheme);
}

Options read_connection_string(std::string_view text) {
  text.remove_prefix(scheme.size());
  Options options;
  const std::size_t mark = text.find('?');
  options.path = text.substr(0, mark);
  if (mark != std::string_view::npos) {
    for (const std::string_view option : split(text.substr(mark + 1), '&')) read_option(option, options);
  }
  if (options.path.empty())
    raise(error_number::database_failed, "A cadeia de conexão não tem o caminho do arquivo.");
  return options;
}

}  // namespace pradelis::dataaccess::sqlite
