// Small comforts; every page works without them.
"use strict";

// A form is sent once, however often its button is pressed.
addEventListener("submit", (event) => {
  const form = event.target;
  if (form.method !== "post") return;
  if (form.dataset.sent) return event.preventDefault();
  form.dataset.sent = "yes";
  if ("upload" in form.dataset) sendFiles(form, event);
  for (const button of form.querySelectorAll("button[type=submit]")) {
    setTimeout(() => { button.disabled = true; });
  }
});
// A form with a file shows how far it has come, and puts the page that follows in its place.
function sendFiles(form, event) {
  const chosen = form.querySelector("input[type=file]").files[0];
  if (!chosen) return;
  event.preventDefault();
  const progress = form.querySelector(".progress");
  const [bar, text] = progress.children;
  const tell = (message) => { progress.hidden = false; text.textContent = message; };
  const give_up = (message) => {
    tell(message);
    delete form.dataset.sent;
    for (const button of form.querySelectorAll("button[disabled]")) button.disabled = false;
  };
  const request = new XMLHttpRequest();
  request.open("POST", form.action);
  request.responseType = "document";
  request.upload.addEventListener("progress", (sent) => {
    bar.value = sent.loaded / sent.total;
    tell(Math.floor(100 * sent.loaded / sent.total) + "%");
  });
  request.addEventListener("error", () => give_up("O envio foi interrompido. Tente de novo."));
  request.addEventListener("load", () => {
    if (request.status === 413) return give_up("O arquivo é grande demais. O limite é de 20 MB.");
    const page = request.response;
    if (!page) return give_up("O arquivo não pôde ser enviado. Tente de novo.");
    if (request.responseURL !== form.action) history.pushState(null, "", request.responseURL);
    document.title = page.title;
    document.querySelector("main").replaceWith(document.adoptNode(page.querySelector("main")));
    document.querySelector("main").focus();
    dispatchEvent(new Event("pradelis:page"));
  });
  request.send(new FormData(form));
}

// A page that comes back from the browser's memory can be sent again.
addEventListener("pageshow", () => {
  for (const form of document.forms) {
    delete form.dataset.sent;
    for (const button of form.querySelectorAll("button[disabled]")) button.disabled = false;
  }
});

// Choosing in a filter is enough to apply it.
addEventListener("change", (event) => {
  if (event.target.matches("form.filters select")) event.target.form.requestSubmit();
});

// Amounts are shown as 1.234,56 once they were typed.
addEventListener("focusout", (event) => {
  if (!event.target.matches("input[data-money]")) return;
  const typed = event.target.value.trim();
  if (!/^\d{1,3}(\.\d{3})*(,\d{1,2})?$|^\d+(,\d{1,2})?$/.test(typed)) return;
  const amount = Number(typed.replaceAll(".", "").replace(",", "."));
  event.target.value = amount.toLocaleString("pt-BR", { minimumFractionDigits: 2, maximumFractionDigits: 2 });
});

// Suggestions for a text field, as a list that arrow keys walk.
for (const input of document.querySelectorAll("input[data-suggestions]")) offerSuggestions(input);

function offerSuggestions(input) {
  const list = document.createElement("ul");
  list.className = "suggestions";
  list.id = input.id + "-sugestoes";
  list.setAttribute("role", "listbox");
  list.hidden = true;
  const place = document.createElement("div");
  place.className = "suggesting";
  input.replaceWith(place);
  place.append(input, list);
  for (const [name, value] of Object.entries({
    role: "combobox", "aria-autocomplete": "list", "aria-expanded": "false", "aria-controls": list.id,
  })) input.setAttribute(name, value);
  if (input.autofocus) input.focus();

  let chosen = -1;
  let timer = 0;
  const close = () => {
    list.hidden = true;
    chosen = -1;
    input.setAttribute("aria-expanded", "false");
    input.removeAttribute("aria-activedescendant");
  };
  const take = (item) => { input.value = item.textContent; close(); };
  const mark = (index) => {
    chosen = (index + list.children.length) % list.children.length;
    [...list.children].forEach((item, i) => item.setAttribute("aria-selected", String(i === chosen)));
    input.setAttribute("aria-activedescendant", list.children[chosen].id);
    list.children[chosen].scrollIntoView({ block: "nearest" });
  };
  const ask = async () => {
    const typed = input.value.trim();
    if (typed.length < 2) return close();
    const answer = await fetch(input.dataset.suggestions + "?busca=" + encodeURIComponent(typed));
    if (!answer.ok || input.value.trim() !== typed) return;
    const names = await answer.json();
    list.replaceChildren(...names.map((name, index) => {
      const item = document.createElement("li");
      item.id = list.id + index;
      item.setAttribute("role", "option");
      item.textContent = name;
      item.addEventListener("mousedown", (event) => { event.preventDefault(); take(item); });
      return item;
    }));
    const known = names.length === 1 && names[0] === typed;
    if (names.length === 0 || known || document.activeElement !== input) return close();
    list.hidden = false;
    input.setAttribute("aria-expanded", "true");
  };
  input.addEventListener("input", () => { clearTimeout(timer); timer = setTimeout(ask, 120); });
  input.addEventListener("blur", close);
  input.addEventListener("keydown", (event) => {
    if (list.hidden) return;
    if (event.key === "ArrowDown") mark(chosen + 1);
    else if (event.key === "ArrowUp") mark(chosen < 0 ? -1 : chosen - 1);
    else if (event.key === "Escape") close();
    else if (event.key === "Enter" && chosen >= 0) take(list.children[chosen]);
    else return;
    event.preventDefault();
  });
}
