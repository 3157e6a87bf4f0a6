// What the tests share: visitors with a browser of their own each, forms filled in by their labels, and what is
// wrong with a page.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { chromium } from "playwright-core";

const { PRADELIS_SITE, PRADELIS_PASSWORD, PRADELIS_MAINTENANCE_PASSWORD, PRADELIS_CHROMIUM } = process.env;
export const site = PRADELIS_SITE;
export const maintenance = "TARVONEL";
export const desk = { width: 1280, height: 860 };
export const phone = { width: 360, height: 740 };

export const browser = await chromium.launch({ executablePath: PRADELIS_CHROMIUM, args: ["--lang=pt-BR"] });
after(() => browser.close());

// A test whose visitors see no script error, no breach of the content policy and no request that fails. `body`
// gets `as(login)`: the page of a visitor who has logged in; without a login, of one who has not.
export function walk(name, body) {
  test(name, async () => {
    const contexts = [];
    const faults = [];
    const as = async (login, viewport = desk) => {
      const context = await browser.newContext({ baseURL: site, locale: "pt-BR", viewport });
      context.setDefaultTimeout(15000);
      contexts.push(context);
      const page = await context.newPage();
      watch(page, faults);
      if (login) await logIn(page, login);
      return page;
    };
    try {
      await body(as);
    } finally {
      await Promise.all(contexts.map((context) => context.close()));
    }
    assert.deepEqual(faults, []);
  });
}

// Breaches of the policy reach the console. A refused form is no fault, nor is a download, which ends its request.
function watch(page, faults) {
  const note = (what) => faults.push(`${new URL(page.url()).pathname}: ${what}`);
  page.on("pageerror", (error) => note(error.stack));
  page.on("console", (line) => {
    const refusedForm = /status of 422/.test(line.text());
    if (["error", "warning"].includes(line.type()) && !refusedForm) note(line.text());
  });
  page.on("requestfailed", (request) => {
    if (request.failure().errorText !== "net::ERR_ABORTED") note(request.url() + " " + request.failure().errorText);
  });
}

export const passwordOf = (login) => (login === maintenance ? PRADELIS_MAINTENANCE_PASSWORD : PRADELIS_PASSWORD);

export async function logIn(page, login, password = passwordOf(login)) {
  await page.goto("/entrar");
  await fill(page, { Usuário: login, Senha: password });
  await page.getByRole("button", { name: "Entrar" }).click();
  await page.getByRole("button", { name: "Sair" }).waitFor();
}

export function field(page, label) {
  const exact = label.replace(/[^\p{L}\p{N} ]/gu, "\\$&");
  return page.getByLabel(new RegExp(`^\\s*${exact}( \\(opcional\\))?\\s*$`));
}

// Fills fields in by their labels: texts, choices by what they show, true to tick, files as playwright has them.
export async function fill(page, values) {
  for (const [label, value] of Object.entries(values)) {
    const input = field(page, label);
    const kind = await input.evaluate((element) => element.type);
    if (value === true) await input.check();
    else if (kind === "select-one") await input.selectOption({ label: value });
    else if (kind === "file") await input.setInputFiles(value);
    else await input.fill(value);
  }
}

export const press = (page, name) => page.getByRole("button", { name, exact: true }).click();
export const menu = (page, name) =>
  page.getByRole("navigation", { name: "Principal" }).getByRole("link", { name, exact: true }).click();
export const follow = (page, name) => page.locator("main").getByRole("link", { name, exact: true }).first().click();
export const saw = (page, message) => page.getByRole("status").filter({ hasText: message }).waitFor();

// Fills a form in, sends it and waits for the message that follows.
export async function complete(page, values, button, message) {
  await fill(page, values);
  await press(page, button);
  await saw(page, message);
}

// Registers a company, and stays on its page; gives its address.
export async function registerCompany(page, name, more = {}) {
  await page.goto("/empresas/nova");
  const values = { "Nome fantasia": name, "Razão social": name + " Ltda.", Cidade: "Campinas", ...more };
  await complete(page, values, "Cadastrar empresa", "Empresa cadastrada.");
  return new URL(page.url()).pathname;
}

export async function registerDeal(page, company, name, more = {}) {
  await page.goto(company + "/negocios/novo");
  const values = { "Nome do negócio": name, "Valor previsto": "1000", ...more };
  await complete(page, values, "Cadastrar negócio", "Negócio cadastrado.");
  return new URL(page.url()).pathname;
}

export async function attach(page, record, file) {
  await page.goto(record + "/arquivos/novo");
  await complete(page, { Arquivo: file }, "Anexar", "Arquivo anexado.");
}

// A day as date fields take it.
export function day(fromToday) {
  const date = new Date();
  date.setDate(date.getDate() + fromToday);
  return date.toLocaleDateString("sv-SE");
}

// The addresses of the site that a page links to, without those of its own parts.
export async function links(page) {
  const targets = await page.locator("a[href]").evaluateAll((all) => all.map((link) => link.href));
  return [...new Set(targets.map((target) => target.split("#")[0]))]
    .filter((target) => target.startsWith(site + "/"))
    .map((target) => target.slice(site.length));
}

// What is wrong with a page for whoever hears it instead of seeing it, by the browser's own accessibility tree.
export async function faultsHeard(page) {
  const client = await page.context().newCDPSession(page);
  const { nodes } = await client.send("Accessibility.getFullAXTree");
  await client.detach();
  const seen = nodes.filter((node) => !node.ignored);
  const all = (role) => seen.filter((node) => node.role?.value === role);
  const named = ["button", "link", "textbox", "searchbox", "combobox", "listbox", "checkbox", "radio", "spinbutton",
    "Date", "image", "navigation", "progressbar"];
  const faults = named.flatMap((role) =>
    all(role).filter((node) => !node.name?.value.trim()).map(() => `${role} without a name`));
  const level = (node) => node.properties.find((property) => property.name === "level")?.value.value;
  const headings = all("heading").filter((node) => level(node) === 1).length;
  if (headings !== 1) faults.push(`${headings} headings of level 1`);
  if (all("main").length !== 1) faults.push(`${all("main").length} main landmarks`);
  return faults.concat(await page.evaluate(() => {
    const ids = [...document.querySelectorAll("[id]")].map((element) => element.id);
    const twice = ids.filter((id, index) => ids.indexOf(id) !== index);
    const wrong = twice.map((id) => `two elements with the id ${id}`);
    if (document.documentElement.lang !== "pt-BR") wrong.push("language " + document.documentElement.lang);
    if (!document.title) wrong.push("no title");
    return wrong;
  }));
}

// What does not fit the window's width: the page itself, or something that a box cuts off.
export function tooWide(page) {
  return page.evaluate(() => {
    const width = document.documentElement.clientWidth;
    const wide = [];
    if (document.scrollingElement.scrollWidth > width) wide.push(`page of ${document.scrollingElement.scrollWidth}`);
    const scrolls = (element) =>
      element && (/auto|scroll/.test(getComputedStyle(element).overflowX) || scrolls(element.parentElement));
    for (const element of document.querySelectorAll("main *")) {
      const box = element.getBoundingClientRect();
      const cut = box.right > width + 1 && box.width > 0 && getComputedStyle(element).clipPath === "none";
      if (cut && !scrolls(element)) wide.push(`${element.tagName} ${element.className} to ${Math.round(box.right)}`);
    }
    return wide.slice(0, 3);
  });
}
