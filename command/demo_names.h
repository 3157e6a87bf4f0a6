#pragma once

#include <array>
#include <string_view>

/// What the demonstration calls things.
namespace pradelis::command::demo_names {

struct City {
  std::string_view name, state, area_code, postal_prefix;
};
inline constexpr std::array<City, 22> cities = {{
    {"São Paulo", "São Paulo", "11", "01310"},
    {"Campinas", "São Paulo", "19", "13010"},
    {"Santos", "São Paulo", "13", "11010"},
    {"Ribeirão Preto", "São Paulo", "16", "14010"},
    {"Sorocaba", "São Paulo", "15", "18010"},
    {"São José dos Campos", "São Paulo", "12", "12210"},
    {"Belo Horizonte", "Minas Gerais", "31", "30110"},
    {"Uberlândia", "Minas Gerais", "34", "38400"},
    {"Juiz de Fora", "Minas Gerais", "32", "36010"},
    {"Rio de Janeiro", "Rio de Janeiro", "21", "20040"},
    {"Niterói", "Rio de Janeiro", "21", "24020"},
    {"Curitiba", "Paraná", "41", "80010"},
    {"Londrina", "Paraná", "43", "86010"},
    {"Maringá", "Paraná", "44", "87010"},
    {"Florianópolis", "Santa Catarina", "48", "88010"},
    {"Joinville", "Santa Catarina", "47", "89201"},
    {"Blumenau", "Santa Catarina", "47", "89010"},
    {"Porto Alegre", "Rio Grande do Sul", "51", "90010"},
    {"Caxias do Sul", "Rio Grande do Sul", "54", "95010"},
    {"Pelotas", "Rio Grande do Sul", "53", "96010"},
    {"Goiânia", "Goiás", "62", "74010"},
    {"Vitória", "Espírito Santo", "27", "29010"},
}};

inline constexpr std::array<std::string_view, 24> first_names = {
    "Ana",     "Bruno",  "Camila", "Daniel",  "Elisa",   "Fábio",  "Gabriela", "Henrique",
    "Isabel",  "João",   "Karina", "Lucas",   "Márcia",  "Nelson", "Olívia",   "Paulo",
    "Rafaela", "Sérgio", "Tânia",  "Ulisses", "Vanessa", "Wagner", "Yara",     "Zélia"};
inline constexpr std::array<std::string_view, 26> family_names = {
    "Albuquerque", "Barbosa", "Cardoso",   "D'Ávila",  "Esteves",  "Ferreira", "Gonçalves",
    "Holanda",     "Inácio",  "Junqueira", "Lacerda",  "Machado",  "Nogueira", "Oliveira",
    "Pereira",     "Queiroz", "Ribeiro",   "Siqueira", "Teixeira", "Uchôa",    "Vasconcelos",
    "Xavier",      "Zanetti", "Brandão",   "Moraes",   "Assunção"};

struct Group {
  std::string_view name;
  int parent;  ///< index of the group above; -1 for none
};
inline constexpr std::array<Group, 7> groups = {{{"Diretoria comercial", -1},
                                                 {"Regional Sudeste", 0},
                                                 {"Regional Sul", 0},
                                                 {"Equipe Campinas", 1},
                                                 {"Equipe Belo Horizonte", 1},
                                                 {"Equipe Curitiba", 2},
                                                 {"Equipe Porto Alegre", 2}}};

struct Salesperson {
  std::string_view name, login, city;
  int group;
};
/// The first leads all, the next two one region each.
inline constexpr std::array<Salesperson, 12> salespeople = {{
    {"Helena Prado Vasconcelos", "HELENA", "São Paulo", 0},
    {"Marcos Teixeira Leal", "MARCOS", "Campinas", 1},
    {"Sílvia Brandão Costa", "SILVIA", "Curitiba", 2},
    {"Ana Beatriz Moraes", "ANA", "Campinas", 3},
    {"Carlos Eduardo Pires", "CARLOS", "Campinas", 3},
    {"Fernanda Assunção", "FERNANDA", "Campinas", 3},
    {"João Pedro Siqueira", "JOAO", "Belo Horizonte", 4},
    {"Letícia Rocha Nogueira", "LETICIA", "Belo Horizonte", 4},
    {"Rafael D'Ávila", "RAFAEL", "Curitiba", 5},
    {"Tatiane Zanetti", "TATIANE", "Curitiba", 5},
    {"Vinícius Machado", "VINICIUS", "Porto Alegre", 6},
    {"Yasmin Ribeiro Lacerda", "YASMIN", "Porto Alegre", 6},
}};
inline constexpr std::size_t leaders = 3;

struct Trade {
  std::string_view company;  ///< what companies of the trade are called
  std::string_view segment, branch;
};
inline constexpr std::array<Trade, 16> trades = {{
    {"Supermercado", "Varejo", "Alimentos"},
    {"Padaria", "Varejo", "Alimentos"},
    {"Farmácia", "Varejo", "Saúde e beleza"},
    {"Perfumaria", "Varejo", "Saúde e beleza"},
    {"Móveis", "Varejo", "Casa"},
    {"Materiais de Construção", "Varejo", "Casa"},
    {"Papelaria", "Varejo", "Escritório e escola"},
    {"Livraria", "Varejo", "Escritório e escola"},
    {"Ótica", "Serviços", "Saúde"},
    {"Clínica", "Serviços", "Saúde"},
    {"Hotel", "Serviços", "Turismo"},
    {"Restaurante", "Serviços", "Turismo"},
    {"Metalúrgica", "Indústria", "Metal"},
    {"Confecções", "Indústria", "Têxtil"},
    {"Cerâmica", "Indústria", "Construção"},
    {"Laticínios", "Indústria", "Alimentos e bebidas"},
}};
inline constexpr std::array<std::string_view, 40> proper_names = {
    "São Bento",   "Boa Vista",   "Ipê Amarelo",    "Santa Clara", "Três Irmãos",  "Primavera",
    "Alvorada",    "Jacarandá",   "Bela Época",     "Serra Azul",  "Pioneiro",     "Estrela",
    "Monte Verde", "Aurora",      "Dois Vizinhos",  "Vale do Sol", "Ponte Alta",   "Girassol",
    "Bandeirante", "Arco-Íris",   "Rio Claro",      "Beira-Mar",   "Pedra Branca", "Sabiá",
    "Mangueiras",  "Central",     "do Trabalhador", "Nova Era",    "Capricórnio",  "Flor de Lis",
    "Tropical",    "Campo Largo", "Guarani",        "Ouro Fino",   "Pampulha",     "Araucária",
    "Cachoeira",   "São Jorge",   "Porto Seguro",   "Cruzeiro"};
inline constexpr std::array<std::string_view, 5> legal_forms = {"Comércio Ltda.", "Ltda.", "S.A.",
                                                                "Indústria e Comércio Ltda.", "ME"};
inline constexpr std::array<std::string_view, 14> streets = {
    "Rua das Palmeiras",     "Avenida Brasil",        "Rua XV de Novembro", "Avenida Getúlio Vargas",
    "Rua Tiradentes",        "Rua Sete de Setembro",  "Avenida Paulista",   "Rua Barão do Rio Branco",
    "Rua Marechal Deodoro",  "Avenida Independência", "Rua Dom Pedro II",   "Rua do Comércio",
    "Avenida Santos Dumont", "Rua Santa Catarina"};
inline constexpr std::array<std::string_view, 8> districts = {
    "Centro", "Jardim América", "Vila Nova",           "Cambuí",
    "Batel",  "Savassi",        "Distrito Industrial", "Bela Vista"};

inline constexpr std::array<std::string_view, 7> roles = {
    "Comprador", "Diretor comercial", "Gerente de compras", "Gerente financeiro", "Proprietário",
    "Sócio",     "Supervisor de loja"};
inline constexpr std::array<std::string_view, 6> loss_reasons = {
    "Concorrente", "Desistência do cliente", "Falta de estoque", "Preço", "Prazo de entrega", "Sem retorno"};
inline constexpr std::array<std::string_view, 8> product_classes = {
    "Automação de loja", "Expositores", "Gôndolas", "Iluminação",
    "Refrigeração",      "Sinalização", "Software", "Uniformes"};
inline constexpr std::array<std::string_view, 6> activity_kinds = {
    "Apresentação", "E-mail", "Envio de proposta", "Reunião", "Telefonema", "Visita"};
inline constexpr std::array<std::string_view, 10> products = {
    "Balança de checkout", "Câmara fria 12 m²",          "Expositor refrigerado", "Gôndola central 1,80 m",
    "Impressora de cupom", "Leitor de código de barras", "Letreiro luminoso",     "Painel de LED",
    "Sistema de caixa",    "Uniforme completo"};
inline constexpr std::array<std::string_view, 16> deals = {
    "Reforma da loja matriz",       "Abertura de filial",
    "Renovação do contrato anual",  "Troca das gôndolas",
    "Refrigeração da padaria",      "Sinalização de corredores",
    "Automação dos caixas",         "Uniformes de inverno",
    "Ampliação do depósito",        "Iluminação da fachada",
    "Expositores para campanha",    "Licenças de software",
    "Manutenção preventiva",        "Projeto piloto",
    "Modernização do autosserviço", "Lote de fim de ano"};
inline constexpr std::array<std::string_view, 8> notes = {
    "Cliente pediu proposta com duas opções de prazo.",
    "Decisão depende do orçamento do próximo trimestre.",
    "Compara conosco mais dois fornecedores.",
    "Visita à loja feita; medidas anotadas na planta em anexo.",
    "Prefere falar por telefone, depois das 14h.",
    "Indicação de um cliente antigo; atenção ao prazo.",
    "Quer ver uma loja já montada antes de fechar.",
    "Aguardando aprovação da diretoria."};

}  // namespace pradelis::command::demo_names
