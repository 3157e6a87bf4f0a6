// The site without a mouse: nothing but Tab, Enter, the space bar and typing.
import assert from "node:assert/strict";
import { passwordOf, saw, walk } from "./support.mjs";

// Goes on with Tab to what a screen reader announces so (a role and the beginning of a name), and sees where it
// stands at every step.
async function tabTo(page, announced) {
  const passed = [];
  while (passed.length < 120) {
    await page.keyboard.press("Tab");
    const focused = page.locator(":focus");
    if (await focused.count() === 0) continue;
    const visible = await focused.evaluate((element) => {
      const { outlineStyle, outlineWidth } = getComputedStyle(element);
      const box = element.getBoundingClientRect();
      return outlineStyle !== "none" && outlineWidth !== "0px" && box.width > 0 && box.height > 0
        && box.bottom > 0 && box.top < innerHeight;
    });
    passed.push((await focused.ariaSnapshot()).split("\n")[0]);
    assert.ok(visible, "focus cannot be seen at " + passed.at(-1));
    if (passed.at(-1).startsWith("- " + announced)) return;
  }
  assert.fail(`${announced} is not to be reached: ${passed.join(" | ")}`);
}

walk("logging in and registering a deal", async (as) => {
  const page = await as();
  const keys = page.keyboard;
  await page.goto("/entrar");
  await tabTo(page, 'textbox "Usuário"');
  await keys.type("FERNANDA");
  await tabTo(page, 'textbox "Senha"');
  await keys.type(passwordOf("FERNANDA"));
  await keys.press("Enter");
  await page.getByRole("button", { name: "Sair" }).waitFor();

  await tabTo(page, 'link "Ir para o conteúdo"');
  await keys.press("Enter");
  await tabTo(page, 'link "Novo negócio"');
  await keys.press("Enter");
  await page.getByText("Escolha a empresa do novo negócio.").waitFor();
  const company = await page.locator("tbody a").first().textContent();
  await tabTo(page, `link "${company}"`);
  await keys.press("Enter");
  await page.getByRole("heading", { name: "Novo negócio" }).waitFor();
  await tabTo(page, 'textbox "Nome do negócio"');
  await keys.type("Só pelo teclado");
  await tabTo(page, 'textbox "Fechamento previsto');
  await keys.type("12122099"); // the same day in every order
  await tabTo(page, 'textbox "Valor previsto"');
  await keys.type("4321");
  await tabTo(page, 'combobox "Contato');
  await keys.press("ArrowDown");
  await tabTo(page, 'checkbox "Software"');
  await keys.press("Space");
  await tabTo(page, 'button "Cadastrar negócio"');
  await keys.press("Enter");
  await saw(page, "Negócio cadastrado.");
  const facts = (await page.locator("main").innerText()).replaceAll("\u00a0", " ");
  for (const part of ["Só pelo teclado", "12/12/2099", "R$ 4.321,00", "Software"]) assert.ok(facts.includes(part), part);
});

walk("opening and ticking the tree of categories, and choosing a city that is suggested", async (as) => {
  const page = await as("FERNANDA");
  const keys = page.keyboard;
  await page.goto("/empresas/nova");
  await tabTo(page, 'textbox "Nome fantasia"');
  await keys.type("Empório do Teclado");
  await tabTo(page, 'textbox "Razão social"');
  await keys.type("Empório do Teclado ME");
  await tabTo(page, 'combobox "Cidade"');
  await keys.type("são jo");
  await page.getByRole("listbox").getByRole("option").first().waitFor();
  await keys.press("ArrowDown");
  await keys.press("Enter");
  await keys.press("Enter");
  await saw(page, "Empresa cadastrada.");
  await page.getByText("São José dos Campos").waitFor();

  await tabTo(page, 'link "Escolher categorias"');
  await keys.press("Enter");
  await tabTo(page, 'button "Abrir ou fechar Varejo"');
  await keys.press("Enter");
  await tabTo(page, 'checkbox "Alimentos"');
  await keys.press("Space");
  await tabTo(page, 'button "Salvar categorias"');
  await keys.press("Enter");
  await saw(page, "Categorias salvas.");
  assert.deepEqual(await page.locator("dd .tag").allTextContents(), ["Alimentos"]);
});
