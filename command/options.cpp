#include "command/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iostream>
#include <limits>
#include <memory>

#include "command/exit_status.h"

namespace pradelis::command {
namespace {

struct Settings {
  std::string trace_file;
  InitOptions init;
  CallOptions call;
  DemoOptions demo;
  site::ServeOptions serve;
};

/// A whole number within limits, refused in the command's own language.
CLI::Validator whole_number(int least, int most) {
  return {[least, most](std::string& text) {
            int number = 0;
            const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
            const bool fits = failure == std::errc() && end == text.data() + text.size();
            if (fits && number >= least && number <= most) return std::string();
            return "\"" + text + "\" não é um número de " + std::to_string(least) + " a " +
                   std::to_string(most);
          },
          "", ""};
}

/// One of some words.
CLI::Validator one_of(std::vector<std::string> words) {
  return {[words = std::move(words)](std::string& text) {
            if (std::find(words.begin(), words.end(), text) != words.end()) return std::string();
            return "\"" + text + "\" não é " + CLI::detail::join(words, " nem ");
          },
          "", ""};
}

constexpr int most = std::numeric_limits<int>::max();

CLI::App* add_subcommand(CLI::App& app, Settings& settings, const char* name, const char* description,
                         std::string& database) {
  CLI::App* command = app.add_subcommand(name, description)->group("Comandos");
  command->get_help_ptr()->group("Opções");
  command
      ->add_option("--database", database,
                   "Banco de dados: sqlite:ARQUIVO ou uma cadeia de conexão (obrigatório)")
      ->type_name("URL");
  command->add_option("--trace-sql", settings.trace_file, "Grava neste arquivo cada comando enviado ao banco")
      ->type_name("ARQUIVO");
  return command;
}

void declare_init(CLI::App& app, Settings& settings) {
  CLI::App* command = add_subcommand(app, settings, "init", "Cria ou atualiza as tabelas do banco de dados",
                                     settings.init.database);
  command
      ->add_option("--maintenance-password-file", settings.init.password_file,
                   "Arquivo cuja primeira linha é a senha do usuário de manutenção; - lê da entrada "
                   "padrão. Sem esta opção a senha é pedida no terminal")
      ->type_name("ARQUIVO");
}

void declare_call(CLI::App& app, Settings& settings) {
  add_subcommand(app, settings, "call",
                 "Atende pedidos em JSON, um por linha: cria objetos do componente e chama seus métodos",
                 settings.call.database);
}

void declare_demo(CLI::App& app, Settings& settings) {
  CLI::App* command = add_subcommand(
      app, settings, "demo", "Preenche um banco novo com dados de demonstração", settings.demo.database);
  command->add_option("--companies", settings.demo.companies, "Quantas empresas")
      ->check(whole_number(0, most))
      ->type_name("N")
      ->capture_default_str();
  command->add_option("--deals", settings.demo.deals, "Quantos negócios")
      ->check(whole_number(0, most))
      ->type_name("N")
      ->capture_default_str();
}

void declare_serve(CLI::App& app, Settings& settings) {
  CLI::App* command =
      add_subcommand(app, settings, "serve", "Serve as páginas do CRM na rede", settings.serve.database);
  command->add_option("--host", settings.serve.host, "Endereço em que atende")
      ->type_name("HOST")
      ->capture_default_str();
  command->add_option("--port", settings.serve.port, "Porta; 0 escolhe uma livre")
      ->check(whole_number(0, 65535))
      ->type_name("N")
      ->capture_default_str();
  command
      ->add_option("--threads", settings.serve.threads,
                   "Pedidos atendidos ao mesmo tempo; 0 decide pela máquina")
      ->check(whole_number(0, 1024))
      ->type_name("N")
      ->capture_default_str();
  command->add_flag("--behind-proxy", settings.serve.behind_proxy,
                    "Confia no endereço e no protocolo que o proxy da frente informa");
  command
      ->add_option_function<std::string>(
          "--sessions",
          [&settings](const std::string& place) {
            settings.serve.sessions_in_database = place == "database";
          },
          "Onde fica quem entrou: memory, neste processo, ou database, no banco de dados, para vários "
          "servidores do mesmo banco")
      ->check(one_of({"memory", "database"}))
      ->type_name("LUGAR")
      ->default_str("memory");
}

void speak_portuguese(CLI::App& app) {
  const auto formatter = app.get_formatter();
  formatter->label("Usage", "Uso");
  formatter->label("OPTIONS", "OPÇÕES");
  formatter->label("SUBCOMMAND", "COMANDO");
  app.option_defaults()->group("Opções");
  app.set_help_flag("-h,--help", "Mostra esta ajuda");
  app.set_version_flag("--version", "pradelis " PRADELIS_VERSION, "Mostra a versão");
}

/// Why the command line makes no sense. Missing and superfluous things are found here and not by the
/// parser, which would say it in English.
std::string complaint(const CLI::App& app) {
  const std::vector<CLI::App*> chosen = app.get_subcommands();
  const std::vector<std::string> unknown = app.remaining(true);
  if (!unknown.empty()) return "não se espera: " + unknown.front();
  if (chosen.empty()) return "falta o comando";
  if (chosen.size() > 1) return "só um comando de cada vez";
  if (chosen.front()->count("--database") == 0) return "falta a opção --database";
  return {};
}

Options refuse(const std::string& why) {
  std::cerr << "pradelis: " << why << "\nUse pradelis --help para ver as opções.\n";
  return {{}, exit_status::not_understood, {}};
}

std::function<int()> runner(const CLI::App& chosen, const std::shared_ptr<const Settings>& settings) {
  const std::string& name = chosen.get_name();
  if (name == "init") return [settings] { return init(settings->init); };
  if (name == "call") return [settings] { return call(settings->call); };
  if (name == "demo") return [settings] { return demo(settings->demo); };
  return [settings] { return site::serve(settings->serve); };
}

}  // namespace

Options read_options(int count, const char* const* arguments) {
  const auto settings = std::make_shared<Settings>();
  CLI::App app("Componente de negócios do CRM: comandos de administração", "pradelis");
  speak_portuguese(app);
  app.allow_extras();
  declare_init(app, *settings);
  declare_call(app, *settings);
  declare_demo(app, *settings);
  declare_serve(app, *settings);
  try {
    app.parse(count, arguments);
  } catch (const CLI::Success& wish) {
    return {{}, app.exit(wish), {}};
  } catch (const CLI::ArgumentMismatch& failure) {
    const std::string what = failure.what();
    return refuse("número errado de valores: " + what.substr(0, what.find(':')));
  } catch (const CLI::ParseError& failure) {
    return refuse(failure.what());
  }
  if (const std::string why = complaint(app); !why.empty()) return refuse(why);
  return {runner(*app.get_subcommands().front(), settings), exit_status::done, settings->trace_file};
}

}  // namespace pradelis::command
