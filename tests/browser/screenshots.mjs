// Pictures of the main pages, into the folder that the argument names.
import { browser, desk, logIn, phone, press, site } from "./support.mjs";

const folder = process.argv[2];

async function visitor(login, viewport) {
  const context = await browser.newContext({ baseURL: site, locale: "pt-BR", viewport, deviceScaleFactor: 1.5 });
  const page = await context.newPage();
  if (login) await logIn(page, login);
  await page.mouse.move(0, 0);
  return page;
}

// The page as far as it goes, up to a window and a quarter.
async function picture(page, name, address) {
  if (address) await page.goto(address);
  const { width, height } = page.viewportSize();
  const whole = await page.evaluate(() => document.documentElement.scrollHeight);
  await page.setViewportSize({ width, height: Math.min(whole, Math.round(height * 1.25)) });
  await page.screenshot({ path: `${folder}/${name}.png`, animations: "disabled" });
  await page.setViewportSize({ width, height });
}

// The company of a list that has most to show.
async function richest(page, list) {
  await page.goto(list);
  const companies = await page.locator("tbody a").evaluateAll((all) => all.map((link) => link.pathname));
  const sizes = new Map();
  for (const company of companies) {
    await page.goto(company);
    sizes.set(company, await page.locator("main .entries li").count());
  }
  return companies.reduce((best, company) => (sizes.get(company) > sizes.get(best) ? company : best));
}

await picture(await visitor(null, { width: 1280, height: 620 }), "login", "/entrar");

const leader = await visitor("HELENA", desk);
await picture(leader, "home", "/");
await picture(leader, "agenda", "/agenda");
await picture(leader, "deals", "/negocios?estado=abertos");
await picture(leader, "board", "/negocios/quadro");
const company = await richest(leader, "/empresas?situacao=clientes");
await picture(leader, "company", company);
await leader.goto(company + "/categorias");
await press(leader, "Abrir ou fechar Serviços");
await leader.mouse.move(0, 0);
await picture(leader, "categories");
await picture(leader, "team", "/equipe");

const mobile = await visitor("ANA", phone);
await picture(mobile, "phone-home", "/");
await picture(mobile, "phone-deals", "/negocios?estado=abertos");
await browser.close();
