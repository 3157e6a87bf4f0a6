// What becomes of records in the hands of several people: changed twice, deleted, handed on, exported and imported.
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { complete, field, fill, follow, menu, press, registerCompany, registerDeal, saw, walk } from "./support.mjs";

walk("two people change one company, and neither loses what he wrote", async (as) => {
  const [first, second] = [await as("ANA"), await as("MARCOS")];
  const company = await registerCompany(first, "Sabiá Duas Mãos");
  await second.goto(company + "/alterar");
  await first.goto(company + "/alterar");
  await complete(first, { Rua: "Rua Nova", Observação: "Mudou-se" }, "Salvar alterações", "Alterações salvas.");
  await fill(second, { Rua: "Avenida Brasil", Número: "77" });
  await press(second, "Salvar alterações");
  await second.getByRole("alert").getByText("Outra pessoa mudou este registro").waitFor();
  assert.equal(await field(second, "Rua").inputValue(), "Avenida Brasil");
  await second.getByText("Está gravado: Rua Nova").waitFor();
  await second.getByText("Está gravado: Mudou-se").waitFor();
  await complete(second, { Observação: "Mudou-se" }, "Salvar alterações", "Alterações salvas.");
  const facts = await second.locator("main").innerText();
  for (const part of ["Avenida Brasil, 77", "Mudou-se"]) assert.ok(facts.includes(part), part);
});

walk("a company leaves with what hangs below it, and comes back by its own export", async (as) => {
  const page = await as("YASMIN");
  const note = `=1+1; "O'Brien"\nna segunda linha`;
  const company = await registerCompany(page, "Araucária <Ida & Volta>", { Rua: "-Rua do Comércio", Observação: note });
  await page.goto(company + "/contatos/novo");
  await complete(page, { Nome: "Tereza & Filhos", Cargo: "Sócio" }, "Cadastrar contato", "Contato cadastrado.");
  await registerDeal(page, company, "Negócio que sai junto");
  await page.goto("/empresas?busca=ida");
  const arrived = page.waitForEvent("download");
  await follow(page, "Exportar");
  const exported = await readFile(await (await arrived).path(), "utf8");

  await page.goto(company);
  await follow(page, "Excluir");
  for (const part of ["1 contato: Tereza & Filhos", "1 negócio: Negócio que sai junto"]) await page.getByText(part).waitFor();
  await press(page, "Excluir empresa");
  await saw(page, "Excluído: ");
  await follow(page, "Excluídos");
  await page.getByRole("row").filter({ hasText: "Araucária <Ida & Volta>" }).first().waitFor();
  assert.equal((await page.request.get(company)).status(), 404);

  const lines = exported + 'Sem Cidade;Sem Cidade ME;Prospecto;;;;;;Lugar Nenhum;;;;;\r\n';
  const file = { name: "empresas.csv", mimeType: "text/csv", buffer: Buffer.from(lines) };
  await menu(page, "Empresas");
  await follow(page, "Importar");
  await fill(page, { "Arquivo CSV": file });
  await press(page, "Conferir");
  await page.getByText("Entrariam: 1 empresa, 1 contato. 1 linha recusada.").waitFor();
  await page.getByText("Não há cidade cadastrada com esse nome.").waitFor();
  assert.equal(await page.getByRole("alert").count(), 0, "nothing is wrong with the columns");
  await press(page, "Importar");
  await page.getByText("Gravado: 1 empresa, 1 contato. 1 linha recusada.").waitFor();
  await page.goto("/empresas?busca=ida");
  await follow(page, "Araucária <Ida & Volta>");
  const facts = await page.locator("main").innerText();
  for (const part of ["-Rua do Comércio", note, "Campinas", "Tereza & Filhos", "Sócio"]) assert.ok(facts.includes(part), facts);
  await page.goto("/empresas?busca=Sem+Cidade");
  await page.getByText("Nada encontrado").waitFor();

  await page.goto("/empresas/importar");
  await fill(page, { "Arquivo CSV": file });
  await press(page, "Conferir");
  await page.getByText("Entrariam: 0 empresas, 0 contatos. 2 linhas recusadas.").waitFor();
});

walk("a salesperson's records are handed over in the component's tree", async (as) => {
  const seller = await as("JOAO");
  const company = await registerCompany(seller, "Pampulha que Passa");
  const leader = await as("HELENA");
  await leader.goto("/equipe");
  await follow(leader, "João Pedro Siqueira");
  await follow(leader, "Passar empresas e negócios");
  await press(leader, "Abrir ou fechar Filial Belo Horizonte");
  await field(leader, "Letícia Rocha Nogueira").check();
  await press(leader, "Passar");
  await saw(leader, "Registros passados a outro vendedor.");
  assert.equal((await seller.request.get(company)).status(), 404);
  const receiver = await as("LETICIA");
  assert.equal((await receiver.goto(company)).status(), 200);
});
