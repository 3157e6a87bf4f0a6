// What the maintenance user and the leaders of groups keep, and what others see of it.
import assert from "node:assert/strict";
import { complete, field, fill, follow, logIn, maintenance, menu, press, registerCompany, saw, walk } from "./support.mjs";

walk("categories, and lists and extra fields in their order", async (as) => {
  const page = await as(maintenance);
  await menu(page, "Equipe");
  await follow(page, "Categorias");
  await follow(page, "Nova categoria");
  await complete(page, { Nome: "Atacado" }, "Criar categoria", "Categoria criada.");
  await follow(page, "Nova categoria abaixo de Atacado");
  await complete(page, { Nome: "Bebida" }, "Criar categoria", "Categoria criada.");
  await follow(page, "Alterar Atacado › Bebida");
  await complete(page, { Nome: "Bebidas" }, "Salvar alterações", "Alterações salvas.");

  await page.goto("/campos");
  await follow(page, "Nova lista");
  await complete(page, { Nome: "Porte" }, "Criar lista", "Lista criada.");
  for (const size of ["Pequena", "Grande"]) {
    await follow(page, "Incluir opção em Porte");
    await complete(page, { Nome: size }, "Incluir", "Incluído na lista.");
  }
  await follow(page, "Novo campo");
  const choice = { Rótulo: "Porte da loja", "O que se escreve nele": "Lista de opções", Lista: "Porte" };
  await complete(page, choice, "Criar campo", "Campo criado.");
  await follow(page, "Novo campo");
  await complete(page, { Rótulo: "Área em m²", "O que se escreve nele": "Número" }, "Criar campo", "Campo criado.");
  await press(page, "Subir Área em m²");
  await page.waitForURL("/campos");

  const seller = await as("LETICIA");
  await registerCompany(seller, "Atacado Letícia");
  const labels = await seller.locator(".component tr td:first-child").allInnerTexts();
  assert.deepEqual(labels.slice(-2), ["Área em m²", "Porte da loja"]);
  await field(seller, "Área em m²").fill("muita");
  await field(seller, "Porte da loja").focus();
  await seller.getByText("Escreva um número").waitFor();
  await complete(seller, { "Área em m²": "1.250,5", "Porte da loja": "Grande" }, "Salvar campos", "Campos adicionais salvos.");
  assert.equal(await field(seller, "Porte da loja").locator(":checked").textContent(), "Grande");
  await follow(seller, "Escolher categorias");
  await press(seller, "Abrir ou fechar Atacado");
  await complete(seller, { Bebidas: true }, "Salvar categorias", "Categorias salvas.");

  await press(page, "Ocultar Porte da loja");
  await saw(page, "O campo não aparece mais");
  await seller.reload();
  assert.equal(await field(seller, "Porte da loja").count(), 0);
});

walk("a group and a salesperson, who logs in and sees what is his", async (as) => {
  const page = await as("MARCOS");
  await menu(page, "Equipe");
  await follow(page, "Novo grupo abaixo de Equipe Campinas");
  await complete(page, { "Nome do grupo": "Equipe Santos" }, "Criar grupo", "Grupo criado.");
  await follow(page, "Novo vendedor em Equipe Santos");
  await fill(page, { "Nome completo": "Nádia Prates", Usuário: "NADIA", Senha: "curta", Cidade: "Santos" });
  await press(page, "Cadastrar vendedor");
  await page.getByRole("alert").getByText("ao menos 8 caracteres").waitFor();
  assert.equal(await field(page, "Nome completo").inputValue(), "Nádia Prates");
  await complete(page, { Senha: "senha-de-nadia" }, "Cadastrar vendedor", "Vendedor cadastrado.");

  const nadia = await as();
  await logIn(nadia, "NADIA", "senha-de-nadia");
  await nadia.goto("/negocios");
  await nadia.getByText("Nenhum negócio aqui").waitFor();
  const company = await registerCompany(nadia, "Cafeteria do Porto", { Cidade: "Santos" });
  assert.equal((await page.goto(company)).status(), 200, "whoever leads the group above sees it");
});
