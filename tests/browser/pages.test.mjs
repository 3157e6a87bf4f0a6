// Every page, on a phone: without script errors, without scrolling sideways, and with names for all that one hears.
import assert from "node:assert/strict";
import { attach, faultsHeard, links, maintenance, phone, tooWide, walk } from "./support.mjs";

// Pages of the same kind: their addresses without identifiers and without the values of what they ask for.
const kindOf = (address) => {
  const url = new URL(address, "http://site");
  const asked = [...url.searchParams].map(([name, value]) => name + "=" + (/^[a-z-]+$/.test(value) ? value : "")).sort();
  return [url.pathname.replace(/\d+/g, "{}"), ...asked].join(" ");
};
const isPage = (address) => !/\/exportar|^\/arquivos\/\d+$|\/sugestoes/.test(address);

// Visits these pages, and follows all links, to so many pages of each kind.
async function crawl(page, first, most, visit) {
  const seen = new Map();
  const waiting = [...first];
  const take = (address) => {
    const kind = kindOf(address);
    const times = seen.get(kind) ?? new Set();
    if (!isPage(address) || times.size === most || times.has(address)) return;
    seen.set(kind, times.add(address));
    waiting.push(address);
  };
  while (waiting.length > 0) {
    const address = waiting.shift();
    const answer = await page.goto(address);
    await visit(address, answer.status());
    for (const found of await links(page)) take(found);
  }
  return [...seen.keys()];
}

async function inspect(page, first, most = 2) {
  const faults = [];
  const kinds = await crawl(page, first, most, async (address, status) => {
    if (status !== 200) faults.push(`${address}: status ${status}`);
    for (const fault of await faultsHeard(page)) faults.push(`${address}: ${fault}`);
    for (const fault of await tooWide(page)) faults.push(`${address}: ${fault}`);
  });
  assert.deepEqual(faults, []);
  return kinds.map((kind) => kind.split(" ")[0]);
}

const expect = (kinds, ...addresses) => {
  for (const address of addresses) assert.ok(kinds.includes(address), "no link leads to " + address);
};

async function firstOf(page, list) {
  await page.goto(list);
  return page.locator("tbody a").first().getAttribute("href");
}

walk("all that a leader reaches", async (as) => {
  const page = await as("HELENA", phone);
  // A company of the demonstration, which has everything once it has a file; and a deal in each state.
  const company = await firstOf(page, "/empresas?busca=metal");
  await attach(page, company, { name: "planta.txt", mimeType: "", buffer: Buffer.from("planta") });
  const deals = [];
  for (const state of ["abertos", "fechados", "perdidos"]) deals.push(await firstOf(page, "/negocios?estado=" + state));
  const kinds = await inspect(page, ["/", company, ...deals]);
  expect(kinds, "/agenda", "/negocios/quadro", "/empresas/{}", "/empresas/{}/alterar", "/empresas/{}/passar",
    "/empresas/{}/categorias", "/empresas/{}/contatos/novo", "/empresas/{}/contatos/{}/alterar", "/empresas/{}/negocios/novo",
    "/empresas/{}/atividades/nova", "/empresas/{}/arquivos/novo", "/arquivos/{}/excluir", "/atividades/{}/alterar",
    "/negocios/{}", "/negocios/{}/alterar", "/negocios/{}/fechar", "/negocios/{}/perder", "/negocios/{}/reabrir",
    "/negocios/{}/passar", "/negocios/{}/arquivos/novo", "/negocios/{}/excluir", "/produtos", "/cidades/nova",
    "/empresas/importar", "/empresas/{}/excluir", "/empresas/{}/contatos/{}/excluir", "/atividades/{}/excluir",
    "/excluidos", "/equipe/vendedores", "/equipe/vendedores/novo", "/equipe/vendedores/{}", "/equipe/vendedores/{}/alterar",
    "/equipe/vendedores/{}/passar", "/equipe/vendedores/{}/excluir", "/equipe/grupos/{}/alterar", "/equipe/grupos/{}/excluir");
});

walk("all that the maintenance user reaches", async (as) => {
  const kinds = await inspect(await as(maintenance, phone), ["/"], 1);
  expect(kinds, "/produtos/novo", "/produtos/{}/alterar", "/produtos/{}/excluir", "/listas", "/campos", "/campos/novo",
    "/campos/{}/alterar", "/campos/listas/nova", "/categorias", "/categorias/nova", "/categorias/{}/alterar",
    "/equipe/grupos/novo", "/equipe/grupos/{}/alterar");
});

walk("what a visitor sees without an account, and at an address that does not exist", async (as) => {
  const page = await as(null, phone);
  await page.goto("/entrar");
  assert.deepEqual([...await faultsHeard(page), ...await tooWide(page)], []);
  await page.getByRole("button", { name: "Entrar" }).click();
  await page.getByRole("alert").waitFor();
  assert.deepEqual([...await faultsHeard(page), ...await tooWide(page)], []);
});
