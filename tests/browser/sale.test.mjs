// A salesperson's work, from a new company to a deal that is lost and comes back.
import assert from "node:assert/strict";
import { mkdtemp, readFile, rm, truncate, writeFile } from "node:fs/promises";
import { tmpdir } from "node:os";
import path from "node:path";
import { complete, day, field, fill, follow, menu, press, saw, walk } from "./support.mjs";

walk("a company, its categories and extra fields, a contact, a deal", async (as) => {
  const page = await as("ANA");
  await menu(page, "Empresas");
  await follow(page, "Nova empresa");
  await field(page, "Cidade").pressSequentially("campin");
  await page.getByRole("option", { name: "Campinas" }).click();
  await complete(page, { "Nome fantasia": "Casa do Norte", "Razão social": "Casa do Norte Ltda.", CEP: "13010-100" },
    "Cadastrar empresa", "Empresa cadastrada.");
  await page.getByText("CEP 13010-100").waitFor();

  await follow(page, "Escolher categorias");
  assert.equal(await field(page, "Casa").isVisible(), false);
  await press(page, "Abrir ou fechar Varejo");
  await complete(page, { Varejo: true, Casa: true }, "Salvar categorias", "Categorias salvas.");
  await follow(page, "Escolher categorias");
  assert.ok(await field(page, "Casa").isChecked(), "a ticked category is open to the eye");
  await field(page, "Varejo").uncheck();
  await press(page, "Salvar categorias");
  await saw(page, "Categorias salvas.");
  assert.deepEqual(await page.locator("dd .tag").allTextContents(), ["Casa"]);

  const since = field(page, "Cliente desde");
  await since.pressSequentially("31022020");
  await field(page, "Número de lojas").click();
  await page.getByText("Data inválida.").waitFor();
  await since.fill("");
  await since.pressSequentially("29022020");
  await complete(page, { "Número de lojas": "12", "Maior interesse": "Software" }, "Salvar campos", "Campos adicionais salvos.");
  assert.equal(await since.inputValue(), "29/02/2020");
  assert.equal(await field(page, "Número de lojas").inputValue(), "12");
  assert.equal(await field(page, "Maior interesse").locator(":checked").textContent(), "Software");

  await follow(page, "Novo contato");
  await complete(page, { Nome: "Dona Irene", Cargo: "Comprador" }, "Cadastrar contato", "Contato cadastrado.");
  await follow(page, "Novo negócio");
  await complete(page, {
    "Nome do negócio": "Balcão refrigerado", "Fechamento previsto": day(20), "Valor previsto": "1234,5",
    Contato: "Dona Irene (Comprador)", Software: true,
  }, "Cadastrar negócio", "Negócio cadastrado.");
  await page.getByText("R$ 1.234,50").waitFor();
  await page.goto("/negocios?busca=casa+do+norte");
  await follow(page, "Balcão refrigerado");
  await page.getByRole("heading", { name: "Balcão refrigerado", level: 1 }).waitFor();
});

walk("an activity, the next contact in the agenda, and the one after that", async (as) => {
  const page = await as("CARLOS");
  await page.goto("/negocios?estado=abertos");
  const deal = page.locator("tbody a").first();
  const name = await deal.textContent();
  await deal.click();
  await page.getByRole("heading", { name, level: 1 }).waitFor();
  const log = async (values) => {
    await follow(page, "Registrar atividade");
    await complete(page, values, "Registrar atividade", "Atividade registrada.");
  };
  await log({ "O que foi feito": "Visita", Observação: "Mediu a loja", "Próximo contato": day(0), "O que fazer": "Reunião" });
  await menu(page, "Agenda");
  const planned = page.getByRole("listitem").filter({ hasText: "Mediu a loja" });
  await planned.getByText("Hoje", { exact: true }).waitFor();
  await planned.getByRole("link", { name: /^Registrar Reunião/ }).click();
  assert.equal(await field(page, "Negócio").locator(":checked").textContent(), name);
  await complete(page, { Observação: "Reunião feita" }, "Registrar atividade", "Atividade registrada.");
  await menu(page, "Agenda");
  await page.getByRole("heading", { name: "Agenda" }).waitFor();
  assert.equal(await planned.count(), 0, "what was done is no longer planned");
});

// Sends from here on no faster than this; gives what ends it.
async function slowDown(page, bytesPerSecond) {
  const client = await page.context().newCDPSession(page);
  const speed = { downloadThroughput: -1, uploadThroughput: bytesPerSecond };
  await client.send("Network.emulateNetworkConditions", { offline: false, latency: 0, ...speed });
  return () => client.detach();
}

walk("a file comes back as it went, and can be deleted", async (as) => {
  const page = await as("ANA");
  await page.goto("/empresas");
  await page.locator("tbody a").first().click();
  await page.waitForURL(/\/empresas\/\d+$/);
  const company = new URL(page.url()).pathname;
  const buffer = Buffer.from(Array.from({ length: 300_000 }, (_, index) => (index * 7 + (index >> 8)) & 255));
  await page.goto(company + "/arquivos/novo");
  await fill(page, { Arquivo: { name: "proposta à Ótica.pdf", mimeType: "application/pdf", buffer } });
  const hurry = await slowDown(page, 400_000);
  await press(page, "Anexar");
  await page.getByRole("status").getByText(/^\d+%$/).waitFor();
  await saw(page, "Arquivo anexado.");
  await hurry();
  const arrived = page.waitForEvent("download");
  await follow(page, "proposta à Ótica.pdf");
  const download = await arrived;
  assert.equal(download.suggestedFilename(), "proposta à Ótica.pdf");
  assert.ok(buffer.equals(await readFile(await download.path())));
  await follow(page, "Excluir proposta à Ótica.pdf");
  await press(page, "Excluir");
  await saw(page, "Arquivo excluído.");
  assert.equal(await page.getByText("proposta à Ótica.pdf").count(), 0);

  await page.goto(company + "/arquivos/novo");
  await field(page, "Descrição").fill("não se perde");
  const folder = await mkdtemp(path.join(tmpdir(), "pradelis-"));
  try {
    const large = path.join(folder, "grande.bin");
    await writeFile(large, "");
    await truncate(large, 20 * 1024 * 1024 + 1);
    await field(page, "Arquivo").setInputFiles(large);
    await press(page, "Anexar");
    await page.getByText("O arquivo tem mais de 20 MB.").first().waitFor();
  } finally {
    await rm(folder, { recursive: true });
  }
  assert.equal(await field(page, "Descrição").inputValue(), "não se perde");
});

walk("a deal is lost, reopened and won", async (as) => {
  const page = await as("TATIANE");
  await page.goto("/negocios?estado=abertos");
  await page.locator("tbody a").first().click();
  await follow(page, "Perder");
  await press(page, "Registrar perda");
  await page.getByRole("alert").getByText("Escolha uma opção.").waitFor();
  await complete(page, { Motivo: "Preço", Observação: "Voltam em março" }, "Registrar perda", "Perda registrada.");
  await page.getByText("Motivo da perda").waitFor();
  await follow(page, "Reabrir");
  await press(page, "Reabrir");
  await saw(page, "Negócio reaberto.");
  assert.equal(await page.getByText("Motivo da perda").count(), 0);
  await page.getByText("Voltam em março").waitFor();
  await follow(page, "Fechar");
  await complete(page, { "Valor fechado": "2.500" }, "Fechar negócio", "Negócio fechado.");
  await page.getByText("R$ 2.500,00").waitFor();
});
