// Quotes, tags and ampersands in every text field, and wherever they show.
import assert from "node:assert/strict";
import { attach, day, field, fill, links, maintenance, walk } from "./support.mjs";

const typed = `O'Brien <b>"&`;
const name = (of) => `${of} ${typed}`;

// Fills every text of a form with what is hard to show, then `values`, and sends it. Gives the page that follows.
async function register(page, address, values = {}) {
  await page.goto(address);
  for (const input of await page.locator("main input[type=text]:not([data-money]), main textarea").all()) {
    const limit = Number(await input.getAttribute("maxlength"));
    await input.fill(typed.slice(0, limit));
  }
  await fill(page, values);
  await page.locator(".actions button").click();
  await page.locator("p.message").waitFor();
  return new URL(page.url()).pathname;
}

// What a page shows: its text, and what stands in its fields.
async function shown(page, address) {
  await page.goto(address);
  const fields = await page.locator("main input:not([type=hidden]), main textarea, main select").evaluateAll((all) =>
    all.map((one) => (one.tagName === "SELECT" ? [...one.options].map((option) => option.text).join("\n") : one.value)));
  return [await page.title(), await page.locator("main").innerText(), ...fields].join("\n");
}

async function expectShown(page, address, ...texts) {
  const all = await shown(page, address);
  for (const text of texts) assert.ok(all.includes(text), `${text} is not shown as typed on ${address}:\n${all}`);
}

walk("what administrators name", async (as) => {
  const page = await as(maintenance);
  for (const list of ["cargos", "classes", "motivos", "atividades"]) {
    await register(page, `/listas/${list}/nova`, { Nome: name(list) });
  }
  await register(page, "/cidades/nova", { Estado: "Paraná", "Nome da cidade": name("Cidade") });
  await register(page, "/produtos/novo");
  await register(page, "/categorias/nova");
  await register(page, "/campos/listas/nova");
  await page.getByRole("link", { name: "Incluir opção em " + typed }).click();
  await page.waitForURL(/listas\/\d+/);
  await register(page, page.url());
  await register(page, "/campos/novo", { Rótulo: name("Lista"), "O que se escreve nele": "Lista de opções", Lista: typed });
  await register(page, "/campos/novo", { Rótulo: name("Texto"), "O que se escreve nele": "Texto" });
  await register(page, "/equipe/grupos/novo");
  await register(page, "/equipe/vendedores/novo", {
    "Nome completo": name("Vendedor"), Grupo: "Equipe Curitiba", Usuário: "OBRIEN", Senha: `8 ${typed}`, Cidade: "Curitiba",
    "Abaixo de": "Helena Prado Vasconcelos",
  });
  await expectShown(page, "/listas", ...["cargos", "classes", "motivos", "atividades"].map(name));
  await expectShown(page, "/cidades", name("Cidade"));
  await expectShown(page, "/produtos?busca=" + encodeURIComponent(typed), typed);
  await expectShown(page, "/categorias", typed);
  await expectShown(page, "/campos", typed, name("Lista"), name("Texto"));
  await expectShown(page, "/equipe", typed, name("Vendedor"));
  await page.getByRole("link", { name: name("Vendedor") }).click();
  await page.getByRole("heading", { name: name("Vendedor") }).waitFor();
  const person = page.url();
  for (const form of ["", "/alterar", "/passar", "/excluir"]) await expectShown(page, person + form, name("Vendedor"));
  for (const [list, link] of [["/campos", name("Texto")], ["/categorias", "Alterar " + typed], ["/equipe", "Alterar " + typed]]) {
    await page.goto(list);
    await expectShown(page, await page.getByRole("link", { name: link, exact: true }).getAttribute("href"), typed);
  }

  await page.goto("/equipe/vendedores/novo");
  await fill(page, { "Nome completo": typed, Usuário: typed });
  await page.locator(".actions button").click();
  await page.getByText("Não use aspas simples").first().waitFor();
  assert.equal(await field(page, "Usuário").inputValue(), typed, "what is refused stays");
});

walk("what the component's tree of salespeople shows", async (as) => {
  const page = await as("HELENA");
  await page.goto("/equipe/vendedores");
  await field(page, name("Vendedor")).check();
  await page.getByRole("button", { name: "Ver vendedor" }).click();
  await page.getByRole("heading", { name: name("Vendedor"), level: 1 }).waitFor();
});

walk("what salespeople write", async (as) => {
  const page = await as("SILVIA");
  const company = await register(page, "/empresas/nova", {
    "Nome fantasia": name("Empresa"), Cidade: name("Cidade"), Vendedor: name("Vendedor"),
  });
  await register(page, company + "/contatos/novo", { Nome: name("Contato"), Cargo: name("cargos") });
  const person = `${name("Contato")} (${name("cargos")})`;
  const deal = await register(page, company + "/negocios/novo", {
    "Nome do negócio": name("Negócio"), "Valor previsto": "10", Contato: person, "Indicado por": person,
    [name("classes")]: true, Vendedor: name("Vendedor"), "Fechamento previsto": day(1),
  });
  await register(page, company + "/atividades/nova", {
    "O que foi feito": name("atividades"), "Com quem": person, Negócio: name("Negócio"),
    "Próximo contato": day(1), "O que fazer": name("atividades"), "Quem faz": name("Vendedor"),
  });
  for (const record of [company, deal]) {
    await attach(page, record, { name: `${typed}.txt`, mimeType: "", buffer: Buffer.from("x") });
  }
  await page.goto(company);
  await fill(page, { [name("Texto")]: typed, [name("Lista")]: typed });
  await page.getByRole("button", { name: "Salvar campos" }).click();
  await page.locator("p.message").waitFor();
  await page.goto(company + "/categorias");
  await field(page, typed).check();
  await page.locator(".actions button").click();
  await page.locator("p.message").waitFor();
  assert.deepEqual(await page.locator("dd .tag").allTextContents(), [typed]);

  const [empresa, contato, negocio, vendedor] = ["Empresa", "Contato", "Negócio", "Vendedor"].map(name);
  await expectShown(page, company, empresa, typed.slice(0, 9), name("Cidade"), vendedor, contato, name("cargos"), negocio,
    name("atividades"), `${typed}.txt`, name("Texto"), name("Lista"));
  assert.equal(await field(page, name("Texto")).inputValue(), typed);
  assert.equal(await field(page, name("Lista")).locator(":checked").textContent(), typed);
  await expectShown(page, deal, negocio, empresa, vendedor, contato, name("classes"), name("atividades"), `${typed}.txt`);
  await page.goto(company);
  const forms = (await links(page)).filter((address) => address.endsWith("/alterar")).concat(deal + "/alterar");
  assert.equal(forms.length, 4, "the company's, the contact's, the activity's, the deal's");
  for (const form of forms) {
    await page.goto(form);
    const texts = await page.locator("main input[type=text]:not([data-money]), main textarea").all();
    for (const text of texts) assert.ok((await text.inputValue()).includes(typed.slice(0, 9)), form);
  }
  await expectShown(page, deal + "/perder", negocio, empresa, name("motivos"));
  await expectShown(page, "/", empresa, negocio, vendedor);
  await expectShown(page, "/agenda", empresa, negocio, vendedor, name("atividades"));
  await expectShown(page, "/negocios/quadro", negocio, empresa);
  const search = "?busca=" + encodeURIComponent(typed);
  await expectShown(page, "/empresas" + search, empresa, vendedor, typed);
  await expectShown(page, "/negocios" + search, negocio, empresa);
  await expectShown(page, "/produtos?busca=" + encodeURIComponent(typed + "zz"), `“${typed}zz”`);
  await page.goto("/empresas/nova");
  await field(page, "Cidade").pressSequentially(name("Cidade").slice(0, -1));
  await page.getByRole("option", { name: name("Cidade"), exact: true }).waitFor();
  for (const [list, cell] of [["empresas", empresa], ["negocios", negocio]]) {
    const file = await (await page.request.get(`/${list}/exportar${search}`)).text();
    assert.ok(file.includes(`"${cell.replaceAll('"', '""')}"`), file);
  }
});
