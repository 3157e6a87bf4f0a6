// What the HTML that the component writes expects of its page: the functions that its handlers name. Handlers,
// styles and scripts inside HTML are forbidden by the site's policy, so pages carry that HTML as the text of an
// attribute, data-component. Here its handlers and styles are set aside before a browser sees them, bound to
// the functions below, and the HTML is shown.
"use strict";

const componentFunctions = {
  tier1Menu, Expandir_Selecionado, ChecaNumero, Data_Tecla_Pressionada, Data_Perdeu_foco,
};

addEventListener("DOMContentLoaded", showComponents);
addEventListener("pradelis:page", showComponents);

function showComponents() {
  for (const place of document.querySelectorAll("[data-component]")) showComponent(place);
}

function showComponent(place) {
  const template = document.createElement("template");
  template.innerHTML = setAside(place.dataset.component);
  delete place.dataset.component;
  const content = template.content;
  const scripts = [...content.querySelectorAll("script")];
  for (const script of scripts) script.remove();
  for (const box of content.querySelectorAll("input[type=checkbox], input[type=radio]")) labelBox(box);
  for (const row of content.querySelectorAll("tr")) labelRow(row);
  place.append(content);
  for (const element of place.querySelectorAll("*")) bindAttributes(element);
  for (const image of place.querySelectorAll("img")) prepareImage(image);
  for (const script of scripts) runScript(script.textContent);
}

// The same HTML with data-onclick in place of onclick, data-style in place of style, and so on. What stands
// in quotes stays as it is.
function setAside(html) {
  const tags = /<[a-z](?:"[^"]*"|'[^']*'|[^>"'])*>/gi;
  const names = /"[^"]*"|'[^']*'|\s(on\w+|style)(?=\s*=)/gi;
  return html.replace(tags, (tag) => tag.replace(names, (text, name) => name ? " data-" + name : text));
}

function bindAttributes(element) {
  for (const [name, value] of Object.entries(element.dataset)) {
    if (name === "style") element.style.cssText = value;
    else if (name.startsWith("on")) bindHandler(element, name.slice(2), value);
  }
}

// Handlers are calls such as tier1Menu(menu1,img1) or Data_Perdeu_foco(this,false), or set the element's class;
// the one of dates of birth is in a language that browsers have forgotten.
function bindHandler(element, type, code) {
  const look = /^this\.className='(\w+)'$/.exec(code);
  const call = /^(\w+)\(([^()]*)\)$/.exec(code);
  if (look) {
    element.addEventListener(type, () => { element.className = look[1]; });
  } else if (call && call[1] in componentFunctions) {
    const words = call[2].split(",").map((word) => word.trim());
    const value = (word) => word === "this" ? element
      : word === "true" || word === "false" ? word === "true" : document.getElementById(word);
    element.addEventListener(type, () => componentFunctions[call[1]](...words.map(value)));
  } else if (code.includes("IsBirthDate")) {
    element.addEventListener(type, () => Data_Perdeu_foco(element, false));
  }
}

function runScript(text) {
  const call = /(\w+)\(document\.all\.item\("([\w-]+)"\)\)/.exec(text);
  if (call && call[1] in componentFunctions) componentFunctions[call[1]](document.getElementById(call[2]));
}

// The text that follows a box becomes its label; that of the tree's root stands in the element that follows.
function labelBox(box) {
  let text = box.nextSibling;
  if (text && text.textContent.trim() === "") text = box.nextElementSibling?.querySelector("b")?.firstChild;
  if (!text || text.nodeType !== Node.TEXT_NODE) return;
  const label = box.ownerDocument.createElement("label");
  label.htmlFor = box.id;
  text.replaceWith(label);
  label.append(text);
}

// The first cell of a row names the field in the second.
function labelRow(row) {
  const field = row.querySelector("[name^=ADITIVO_VALOR]");
  const cell = row.cells[0];
  if (!field || !cell) return;
  cell.id = field.name + "_ROTULO";
  field.setAttribute("aria-labelledby", cell.id);
  field.setAttribute("autocomplete", "off");
}

// Spacers say nothing; expanders are buttons.
function prepareImage(image) {
  image.alt = "";
  if (!image.classList.contains("tier1")) return;
  const label = image.parentElement.querySelector(`label[for="${boxAfter(image)?.id}"]`);
  image.alt = "Abrir ou fechar " + (label?.textContent.trim() ?? "");
  image.tabIndex = 0;
  image.setAttribute("role", "button");
  image.setAttribute("aria-expanded", "false");
  image.addEventListener("keydown", (event) => {
    if (event.key !== "Enter" && event.key !== " ") return;
    event.preventDefault();
    image.click();
  });
}

function boxAfter(image) {
  let element = image.nextElementSibling;
  while (element && !element.querySelector("input")) element = element.nextElementSibling;
  return element?.querySelector("input");
}

// Opens or closes a branch of a tree.
function tier1Menu(menu, image) {
  const opens = menu.style.display === "none";
  menu.style.display = opens ? "" : "none";
  image.setAttribute("aria-expanded", String(opens));
}

// Opens the branches that hold a chosen box.
function Expandir_Selecionado(box) {
  for (let menu = box?.closest("span[id]"); menu; menu = menu.parentElement.closest("span[id]")) {
    const image = document.getElementById(menu.id.replace(/^\D+/, "img"));
    if (image && menu.style.display === "none") tier1Menu(menu, image);
  }
}

// Says what is wrong with a field, under it, until somebody types in it again: a message that went when the
// field is left would move the button away that is just being clicked. Nothing that was typed is lost.
function complain(field, reason) {
  const old = document.getElementById(field.name + "_ERRO");
  field.setCustomValidity(reason);
  field.toggleAttribute("aria-invalid", reason !== "");
  field.removeAttribute("aria-describedby");
  old?.remove();
  if (reason === "") return;
  const message = document.createElement("p");
  message.className = "error";
  message.id = field.name + "_ERRO";
  message.setAttribute("role", "alert");
  message.textContent = reason;
  field.setAttribute("aria-describedby", message.id);
  field.after(message);
  field.addEventListener("input", () => complain(field, ""), { once: true });
}

function ChecaNumero(field) {
  const typed = field.value.trim();
  const right = typed === "" || /^-?\d{1,3}(\.\d{3})*(,\d+)?$|^-?\d+(,\d+)?$/.test(typed);
  complain(field, right ? "" : "Escreva um número, como 1.234,56.");
}

// Puts the strokes of a date in while its digits are typed.
function Data_Tecla_Pressionada(field) {
  const grown = field.value.length > Number(field.dataset.length ?? 0);
  if (grown && /^\d{2}$|^\d{2}\/\d{2}$/.test(field.value)) field.value += "/";
  field.dataset.length = field.value.length;
}

function Data_Perdeu_foco(field, required) {
  const typed = field.value.trim();
  const parts = /^(\d{1,2})\/(\d{1,2})\/(\d{4})$/.exec(typed);
  const [day, month, year] = parts ? parts.slice(1).map(Number) : [];
  const date = new Date(year, month - 1, day);
  const right = typed === "" ? !required
    : parts && year >= 1900 && date.getMonth() === month - 1 && date.getDate() === day;
  complain(field, right ? "" : "Data inválida. Escreva como 31/12/2026.");
  if (right && parts) field.value = [parts[1].padStart(2, "0"), parts[2].padStart(2, "0"), parts[3]].join("/");
}
