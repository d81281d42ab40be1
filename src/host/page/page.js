// The page works without this: it sorts, filters, chooses a project and scales the drawing.
(() => {
  "use strict";
  const root = document.documentElement;
  const one = (selector, within = document) => within.querySelector(selector);
  const all = (selector, within = document) => [...within.querySelectorAll(selector)];
  root.classList.add("js");

  // What a browser remembers may be forbidden to a page from a file.
  const memory = {
    get(key) { try { return localStorage.getItem(key); } catch { return null; } },
    set(key, value) { try { localStorage.setItem(key, value); } catch { /* for this time only */ } },
  };

  // Colours: as the system has them, or as chosen. The dark ones stand in the style once, behind the system's word.
  const dark = [...document.styleSheets[0].cssRules].find((rule) => /color-scheme/.test(rule.media?.mediaText)).media;
  const media = { auto: dark.mediaText, light: "not all", dark: "screen" };
  const schemes = Object.keys(media);
  const schemeButton = one("#scheme");
  const applyScheme = (scheme) => {
    dark.mediaText = media[scheme];
    one("b", schemeButton).textContent = scheme;
  };
  const remembered = memory.get("hearthmake-colours");
  let scheme = schemes.includes(remembered) ? remembered : "auto";
  applyScheme(scheme);
  schemeButton.hidden = false;
  schemeButton.addEventListener("click", () => {
    scheme = schemes[(schemes.indexOf(scheme) + 1) % schemes.length];
    applyScheme(scheme);
    memory.set("hearthmake-colours", scheme);
  });

  // Times as the reader's clock has them.
  for (const time of all("time")) {
    const at = new Date(time.dateTime);
    if (!isNaN(at)) time.textContent = at.toLocaleString(undefined, { dateStyle: "medium", timeStyle: "short" });
  }

  // The table
  const table = one("#list");
  const rows = all("tbody tr", table);
  const names = new Map(rows.map((row) => [row, one("th", row).textContent.toLocaleLowerCase()]));
  const status = one(".count");
  const find = one("#find");

  const filter = () => {
    const words = find.value.toLocaleLowerCase().split(/\s+/).filter(Boolean);
    const chosen = one('input[name="outcome"]:checked');
    const outcome = chosen ? chosen.value : "";
    let shown = 0;
    for (const row of rows) {
      const fits = (!outcome || row.dataset.o === outcome) && words.every((word) => names.get(row).includes(word));
      row.hidden = !fits;
      if (fits) shown += 1;
    }
    status.textContent = shown === rows.length ? "" : `${shown} of ${rows.length} shown`;
  };
  find.addEventListener("input", filter);
  all('input[name="outcome"]').forEach((input) => input.addEventListener("change", filter));
  one(".filter").addEventListener("submit", (event) => event.preventDefault());

  const collator = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });
  const heads = all("thead th", table);
  const keyOf = (row, column, isNumber) => {
    const cell = row.cells[column];
    return isNumber ? Number(cell.dataset.s ?? cell.textContent) : cell.textContent;
  };
  const sortBy = (column) => {
    const head = heads[column];
    const isNumber = "n" in head.dataset;
    const isUp = head.getAttribute("aria-sort")
      ? head.getAttribute("aria-sort") === "descending"
      : column === 0 || !isNumber;
    heads.forEach((other) => other.removeAttribute("aria-sort"));
    head.setAttribute("aria-sort", isUp ? "ascending" : "descending");
    const sign = isUp ? 1 : -1;
    const keyed = rows.map((row) => [keyOf(row, column, isNumber), row]);
    keyed.sort((a, b) => sign * (isNumber ? a[0] - b[0] : collator.compare(a[0], b[0])));
    one("tbody", table).append(...keyed.map((pair) => pair[1]));
  };
  heads.forEach((head, column) => {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = head.textContent;
    button.addEventListener("click", () => sortBy(column));
    head.replaceChildren(button);
  });
  table.addEventListener("click", (event) => {
    const row = event.target.closest("tbody tr");
    if (row && !event.target.closest("a") && !String(getSelection())) location.hash = `p${row.dataset.p}`;
  });

  // One project is chosen by the address, so that it can be sent to somebody and Back works.
  const sheet = one("#details");
  const openAtFirst = new Set(all("[open]", sheet));
  const drawing = one("#drawing");
  let cameFrom = null;
  one("#details-h").textContent = "Project";

  const markNeighbours = (id) => {
    if (!drawing) return;
    drawing.classList.toggle("chosen", id !== null);
    const near = new Set();
    for (const line of all(".lines path", drawing)) {
      const isNear = line.dataset.f === id || line.dataset.t === id;
      line.classList.toggle("near", isNear);
      if (isNear) near.add(line.dataset.f).add(line.dataset.t);
    }
    for (const node of all(".nodes a", drawing)) node.classList.toggle("near", near.has(node.dataset.p));
  };

  const showChosen = () => {
    const match = /^#p(\d+)$/.exec(location.hash);
    const place = match && document.getElementById(`p${match[1]}`);
    const id = place ? match[1] : null;
    for (const shown of all(".on", sheet)) shown.open = openAtFirst.has(shown);
    all("[data-p].on, #details .on").forEach((element) => element.classList.remove("on"));
    markNeighbours(id);
    sheet.classList.toggle("open", id !== null);
    if (!id) return;
    all(`[data-p="${id}"]`).forEach((element) => element.classList.add("on"));
    const project = place.closest("details");
    project.classList.add("on");
    project.open = true;
    if (!sheet.contains(document.activeElement)) cameFrom = document.activeElement;
    sheet.scrollTop = 0;
    sheet.focus({ preventScroll: true });
  };
  const close = () => {
    if (!sheet.classList.contains("open")) return;
    history.replaceState(null, "", location.pathname + location.search);
    showChosen();
    if (cameFrom && cameFrom.isConnected) cameFrom.focus({ preventScroll: true });
  };
  addEventListener("hashchange", showChosen);
  one(".close").addEventListener("click", close);
  addEventListener("keydown", (event) => { if (event.key === "Escape") close(); });
  // A link to the project that is shown already, or a jump by the browser, must not move the page.
  document.addEventListener("click", (event) => {
    const link = event.target.closest('a[href^="#p"]');
    if (!link || !/^#p\d+$/.test(link.getAttribute("href"))) return;
    event.preventDefault();
    if (location.hash === link.getAttribute("href")) return showChosen();
    history.pushState(null, "", link.getAttribute("href"));
    showChosen();
  });
  addEventListener("popstate", showChosen);

  // The drawing: scrolls by itself, is dragged with the mouse, and scaled.
  const canvas = one(".canvas");
  if (canvas) {
    const width = drawing.viewBox.baseVal.width;
    const height = drawing.viewBox.baseVal.height;
    let scale = 1;
    const setScale = (wanted, x = canvas.clientWidth / 2, y = canvas.clientHeight / 2) => {
      const next = Math.min(3, Math.max(0.1, wanted));
      const left = (canvas.scrollLeft + x) * next / scale - x;
      const top = (canvas.scrollTop + y) * next / scale - y;
      scale = next;
      drawing.style.width = `${Math.round(width * scale)}px`;
      drawing.style.height = `${Math.round(height * scale)}px`;
      canvas.scrollLeft = left;
      canvas.scrollTop = top;
      canvas.classList.toggle("grab", canvas.scrollWidth > canvas.clientWidth || canvas.scrollHeight > canvas.clientHeight);
    };
    // The whole, but no smaller than can be read a little.
    const fit = () => setScale(Math.max(0.45, Math.min(1.15, canvas.clientWidth / width)));
    fit();
    all("[data-zoom]").forEach((button) => button.addEventListener("click", () => {
      if (button.dataset.zoom === "fit") setScale(Math.min(1.15, canvas.clientWidth / width));
      else setScale(scale * (button.dataset.zoom === "in" ? 1.3 : 1 / 1.3));
    }));
    canvas.addEventListener("wheel", (event) => {
      if (!event.ctrlKey) return;
      event.preventDefault();
      const box = canvas.getBoundingClientRect();
      setScale(scale * Math.exp(-event.deltaY / 300), event.clientX - box.left, event.clientY - box.top);
    }, { passive: false });

    let drag = null;
    let wasDragged = false;
    canvas.addEventListener("pointerdown", (event) => {
      wasDragged = false;
      if (event.pointerType === "mouse" && event.button === 0)
        drag = { x: event.clientX, y: event.clientY, left: canvas.scrollLeft, top: canvas.scrollTop };
    });
    addEventListener("pointermove", (event) => {
      if (!drag) return;
      const x = event.clientX - drag.x;
      const y = event.clientY - drag.y;
      if (!wasDragged && Math.hypot(x, y) < 5) return;
      wasDragged = true;
      canvas.classList.add("grabbing");
      canvas.scrollLeft = drag.left - x;
      canvas.scrollTop = drag.top - y;
    });
    addEventListener("pointerup", () => { drag = null; canvas.classList.remove("grabbing"); });
    canvas.addEventListener("dragstart", (event) => event.preventDefault());
    canvas.addEventListener("click", (event) => {
      if (!wasDragged) return;
      event.preventDefault();
      event.stopPropagation();
    }, true);
  }

  showChosen();
})();
