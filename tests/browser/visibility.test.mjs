// What one group keeps, another does not see; those above do.
import assert from "node:assert/strict";
import { attach, complete, day, links, registerCompany, registerDeal, saw, site, walk } from "./support.mjs";

// All that a company may have, under names with `mark` in them. Gives the addresses of its pages and forms.
async function keepRecords(page, mark) {
  const company = await registerCompany(page, `Empresa ${mark}`);
  await page.goto(company + "/contatos/novo");
  await complete(page, { Nome: `Contato ${mark}`, Cargo: "Sócio" }, "Cadastrar contato", "Contato cadastrado.");
  const deal = await registerDeal(page, company, `Negócio ${mark}`, { "Fechamento previsto": day(3) });
  await attach(page, deal, { name: `${mark}.txt`, mimeType: "text/plain", buffer: Buffer.from(mark) });
  await attach(page, company, { name: `${mark}.csv`, mimeType: "text/csv", buffer: Buffer.from(mark) });
  for (const query of ["", "?negocio=" + deal.split("/").pop()]) {
    await page.goto(company + "/atividades/nova" + query);
    await complete(page, {
      "O que foi feito": "Visita", Observação: `Atividade ${mark}`, "Próximo contato": day(0), "O que fazer": "Visita",
    }, "Registrar atividade", "Atividade registrada.");
  }
  const own = /^\/(empresas|negocios|atividades|arquivos)\/\d+/;
  const addresses = new Set();
  for (const record of [company, deal]) {
    await page.goto(record);
    for (const address of await links(page)) if (own.test(address)) addresses.add(address);
    for (const form of await page.locator("main form").all()) addresses.add(await form.getAttribute("action"));
  }
  return { company, deal, addresses: [...addresses] };
}

const lists = (mark) => [
  "/", "/agenda", "/agenda?ver=sem-plano", "/agenda?ver=parados", "/negocios/quadro", "/negocios",
  "/negocios?estado=abertos", "/empresas", "/excluidos", "/excluidos/exportar", `/empresas?busca=${mark}`, `/negocios?busca=${mark}`,
  "/empresas/exportar", "/negocios/exportar", `/empresas/exportar?busca=${mark}`, `/negocios/exportar?busca=${mark}`,
];

async function listsThatShow(page, mark) {
  const found = [];
  for (const address of lists(mark)) {
    const answer = await page.request.get(address);
    assert.equal(answer.status(), 200, address);
    // A search shows what it searched for.
    const text = (await answer.text()).replaceAll(`value="${mark}"`, "").replaceAll(`“${mark}”`, "")
      .replaceAll(`busca=${mark}`, "");
    if (text.includes(mark)) found.push(address);
  }
  return found;
}

async function addressesThatAnswer(page, addresses) {
  const open = [];
  await page.goto("/empresas/nova");
  const _token = await page.locator("main [name=_token]").inputValue();
  for (const address of addresses) {
    const headers = { Origin: site };
    const answers = [
      await page.request.get(address, { maxRedirects: 0 }),
      await page.request.post(address, { form: { _token }, headers, maxRedirects: 0 }),
    ];
    if (answers.some((answer) => ![404, 405].includes(answer.status()))) open.push(address);
  }
  return open;
}

walk("a prospect and all that hangs on it", async (as) => {
  const mark = "Guarani-Reservado";
  const owner = await as("RAFAEL");
  const { company, addresses } = await keepRecords(owner, mark);
  assert.ok(addresses.length >= 20, "too few addresses to try: " + addresses);
  const other = await as("ANA");
  assert.deepEqual(await listsThatShow(other, mark), []);
  assert.deepEqual(await addressesThatAnswer(other, addresses), []);
  const forms = await other.request.get("/empresas/nova").then((answer) => answer.text());
  assert.ok(!forms.includes("Rafael"), "a form offers somebody whom one may not see");
  const leader = await as("SILVIA");
  const shown = await listsThatShow(leader, mark);
  for (const address of ["/", "/agenda", "/negocios/quadro", "/empresas/exportar", `/negocios?busca=${mark}`]) {
    assert.ok(shown.includes(address), address + " does not show it to the one above");
  }
  await owner.goto(company + "/excluir");
  await owner.getByRole("button", { name: "Excluir empresa" }).click();
  await saw(owner, "Excluído: ");
  assert.deepEqual(await listsThatShow(other, mark), []);
  assert.deepEqual(await listsThatShow(leader, mark), ["/excluidos", "/excluidos/exportar"]);
});

walk("a client is everybody's, its deals are not", async (as) => {
  const mark = "Tropical-Aberto";
  const owner = await as("VINICIUS");
  const { company, deal } = await keepRecords(owner, mark);
  await owner.goto(company);
  await owner.getByRole("button", { name: "Tornar cliente" }).click();
  await owner.getByText("A empresa agora é cliente.").waitFor();
  const other = await as("ANA");
  await other.goto(company);
  const shown = await other.locator("main").innerText();
  for (const part of [`Empresa ${mark}`, `Contato ${mark}`, `${mark}.csv`]) assert.ok(shown.includes(part), part);
  for (const part of [`Negócio ${mark}`, `${mark}.txt`]) assert.ok(!shown.includes(part), part);
  assert.equal((await other.request.get(deal)).status(), 404);
  const negocios = (await listsThatShow(other, mark)).filter((address) => address.startsWith("/negocios"));
  assert.deepEqual(negocios, []);
});
