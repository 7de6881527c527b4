// The diagram viewer's script (views/HtmlPage.h): pan and zoom, search, tooltips, the side
// panel. It reads the model from the page's JSON block and the picture from the inline SVG, and
// fetches nothing.
(function () {
  "use strict";

  var data = JSON.parse(document.getElementById("diagram-data").textContent);
  var view = document.getElementById("view");
  var svg = view.querySelector("svg");
  var panel = document.getElementById("panel");
  var panelBody = document.getElementById("panel-body");
  var tooltip = document.getElementById("tooltip");
  var search = document.getElementById("search");
  var searchResult = document.getElementById("search-result");
  var legend = document.getElementById("legend");

  // ---- Nodes of the picture by model id ----------------------------------------------------
  var elements = {};
  Object.keys(data.nodes).forEach(function (id) {
    var element = document.getElementById(id);
    if (element) elements[id] = element;
  });
  // The viewer shows its own tooltips; Graphviz's titles would show a second one.
  Array.prototype.forEach.call(svg.querySelectorAll("title"), function (title) {
    title.parentNode.removeChild(title);
  });
  Array.prototype.forEach.call(svg.querySelectorAll("a"), function (link) {
    link.removeAttribute("xlink:title");
    link.removeAttributeNS("http://www.w3.org/1999/xlink", "title");
  });

  // ---- Pan and zoom, by the SVG's viewBox ---------------------------------------------------
  var box = svg.viewBox.baseVal;
  var whole = { x: box.x, y: box.y, width: box.width, height: box.height };
  svg.removeAttribute("width");
  svg.removeAttribute("height");
  svg.setAttribute("preserveAspectRatio", "xMidYMid meet");
  var current = { x: whole.x, y: whole.y, width: whole.width, height: whole.height };

  function apply() {
    svg.setAttribute("viewBox", [current.x, current.y, current.width, current.height].join(" "));
  }

  // The point of the picture under a point of the screen.
  function toPicture(clientX, clientY) {
    var matrix = svg.getScreenCTM();
    if (!matrix) return { x: current.x, y: current.y };
    var point = svg.createSVGPoint();
    point.x = clientX;
    point.y = clientY;
    var mapped = point.matrixTransform(matrix.inverse());
    return { x: mapped.x, y: mapped.y };
  }

  function zoom(factor, clientX, clientY) {
    var rect = svg.getBoundingClientRect();
    if (clientX === undefined) {
      clientX = rect.left + rect.width / 2;
      clientY = rect.top + rect.height / 2;
    }
    var anchor = toPicture(clientX, clientY);
    var width = current.width / factor;
    // Between the whole picture times four and a few nodes across.
    var smallest = Math.min(whole.width, 150);
    if (width > whole.width * 4 || width < smallest) return;
    var height = current.height / factor;
    current.x = anchor.x - (anchor.x - current.x) / factor;
    current.y = anchor.y - (anchor.y - current.y) / factor;
    current.width = width;
    current.height = height;
    apply();
  }

  function fit() {
    current = { x: whole.x, y: whole.y, width: whole.width, height: whole.height };
    apply();
  }

  // The first view: the whole picture when its text can still be read so, else its top at a
  // readable scale. A design of many compute units is a tall column, which the whole-picture
  // view would shrink to a thread.
  var readable = 0.75;  // screen pixels per picture unit (a point)
  function start() {
    var rect = svg.getBoundingClientRect();
    if (!rect.width || !rect.height) return fit();
    var scale = Math.min(rect.width / whole.width, rect.height / whole.height);
    if (scale >= readable) return fit();
    scale = Math.max(scale, Math.min(readable, rect.width / whole.width));
    var width = rect.width / scale;
    var height = rect.height / scale;
    current = { x: whole.x + (whole.width - width) / 2, y: whole.y, width: width, height: height };
    apply();
  }

  function pan(dx, dy) {
    var rect = svg.getBoundingClientRect();
    var scale = Math.min(rect.width / current.width, rect.height / current.height) || 1;
    current.x += dx / scale;
    current.y += dy / scale;
    apply();
  }

  // Shows `element` in the middle, at least at a scale where its text can be read.
  function centreOn(element) {
    var bounds = element.getBBox();
    var matrix = svg.getScreenCTM().inverse().multiply(element.getScreenCTM());
    var point = svg.createSVGPoint();
    point.x = bounds.x + bounds.width / 2;
    point.y = bounds.y + bounds.height / 2;
    var middle = point.matrixTransform(matrix);
    var width = Math.min(current.width, Math.max(bounds.width * 6, 600));
    var height = current.height * width / current.width;
    current = { x: middle.x - width / 2, y: middle.y - height / 2, width: width, height: height };
    apply();
  }

  // The wheel scrolls, as on any long page; with Ctrl (or a pinch, which arrives as one) it zooms
  // about the pointer.
  view.addEventListener("wheel", function (event) {
    event.preventDefault();
    if (event.ctrlKey || event.metaKey) {
      zoom(event.deltaY < 0 ? 1.2 : 1 / 1.2, event.clientX, event.clientY);
      return;
    }
    var lines = event.deltaMode === 1 ? 16 : event.deltaMode === 2 ? 400 : 1;
    if (event.shiftKey && !event.deltaX) {
      pan(event.deltaY * lines, 0);
    } else {
      pan(event.deltaX * lines, event.deltaY * lines);
    }
  }, { passive: false });

  var drag = null;
  view.addEventListener("mousedown", function (event) {
    if (event.button !== 0) return;
    drag = { x: event.clientX, y: event.clientY, moved: false, start: toPicture(event.clientX, event.clientY) };
  });
  window.addEventListener("mousemove", function (event) {
    if (!drag) return;
    if (Math.abs(event.clientX - drag.x) + Math.abs(event.clientY - drag.y) > 3) {
      drag.moved = true;
      view.classList.add("panning");
    }
    if (!drag.moved) return;
    var now = toPicture(event.clientX, event.clientY);
    current.x -= now.x - drag.start.x;
    current.y -= now.y - drag.start.y;
    apply();
  });
  window.addEventListener("mouseup", function () {
    view.classList.remove("panning");
    // A click that ends a pan is no click on a node.
    if (drag && drag.moved) {
      var swallow = function (event) {
        event.stopPropagation();
        window.removeEventListener("click", swallow, true);
      };
      window.addEventListener("click", swallow, true);
      setTimeout(function () { window.removeEventListener("click", swallow, true); }, 0);
    }
    drag = null;
  });

  document.getElementById("zoom-in").addEventListener("click", function () { zoom(1.5); });
  document.getElementById("zoom-out").addEventListener("click", function () { zoom(1 / 1.5); });
  document.getElementById("zoom-fit").addEventListener("click", fit);
  // The side column holds the panel and the legend; with both hidden the picture takes it all.
  var side = document.getElementById("side");
  function updateSide() {
    side.hidden = panel.hidden && legend.hidden;
  }
  document.getElementById("legend-toggle").addEventListener("click", function () {
    legend.hidden = !legend.hidden;
    updateSide();
  });

  // ---- Texts --------------------------------------------------------------------------------
  function mhz(value) {
    return value ? value.toFixed(2) + " MHz" : "-";
  }
  function percent(value) {
    return value === null || value === undefined ? "" : value.toFixed(2) + "%";
  }
  function text(tag, content, className) {
    var element = document.createElement(tag);
    if (content !== undefined) element.textContent = content;
    if (className) element.className = className;
    return element;
  }
  function nodeName(id) {
    var node = data.nodes[id];
    return node ? node.name : id;
  }
  function link(id) {
    var anchor = text("a", nodeName(id));
    anchor.setAttribute("data-node", id);
    anchor.addEventListener("click", function () { select(id, true); });
    return anchor;
  }

  function summary(id) {
    var node = data.nodes[id];
    if (!node) return "";
    if (node.kind === "cu") {
      var lines = ["Compute unit " + node.name, "kernel " + node.kernel + ", base " + node.baseAddress,
                   "SLR " + (node.slr || "unknown")];
      node.clocks.forEach(function (clock) {
        lines.push(clock.pin + ": requested " + mhz(clock.requested) + ", achieved " + mhz(clock.achieved));
      });
      if (node.resources.length) {
        var latest = node.resources[node.resources.length - 1];
        lines.push(latest.state + ": " + latest.amounts.map(function (amount) {
          return amount.resource + " " + (amount.used || "-") +
                 (amount.percent === null ? "" : " (" + percent(amount.percent) + ")");
        }).join(", "));
      }
      lines.push("Click for details");
      return lines.join("\n");
    }
    if (node.kind === "mem" || node.kind === "memgroup") {
      var first = node.kind === "memgroup"
          ? node.banks + " unused " + node.memoryType + " banks: " + node.name
          : node.memoryType + " memory " + node.name + (node.used ? "" : " (unused)");
      return [first, "SLR " + (node.slr || "unknown") + (node.size ? ", " + node.size : "")].join("\n");
    }
    if (node.kind === "kernel") {
      return "Kernel " + node.name + "\n" + node.computeUnits + " compute unit" +
             (node.computeUnits === 1 ? "" : "s");
    }
    return node.name;
  }

  // ---- Tooltips -----------------------------------------------------------------------------
  Object.keys(elements).forEach(function (id) {
    var element = elements[id];
    element.addEventListener("mouseenter", function () {
      tooltip.textContent = summary(id);
      tooltip.hidden = false;
    });
    element.addEventListener("mousemove", function (event) {
      var x = event.clientX + 14;
      var y = event.clientY + 14;
      if (x + tooltip.offsetWidth > window.innerWidth) x = event.clientX - tooltip.offsetWidth - 8;
      if (y + tooltip.offsetHeight > window.innerHeight) y = event.clientY - tooltip.offsetHeight - 8;
      tooltip.style.left = x + "px";
      tooltip.style.top = y + "px";
    });
    element.addEventListener("mouseleave", function () { tooltip.hidden = true; });
    element.addEventListener("click", function (event) {
      event.stopPropagation();
      select(id, false);
    });
  });

  // ---- Search -------------------------------------------------------------------------------
  function runSearch(centre) {
    var query = search.value.trim().toLowerCase();
    var hits = [];
    Object.keys(elements).forEach(function (id) {
      var node = data.nodes[id];
      var names = [node.name].concat(node.tags || []);
      var hit = query !== "" && node.kind !== "note" && names.some(function (name) {
        return name.toLowerCase().indexOf(query) !== -1;
      });
      elements[id].classList.toggle("hit", hit);
      if (hit) hits.push(id);
    });
    svg.classList.toggle("searching", query !== "");
    if (query === "") {
      searchResult.textContent = "";
      return;
    }
    searchResult.textContent = hits.length === 0 ? "no match"
        : hits.length === 1 ? "1 match: " + nodeName(hits[0]) : hits.length + " matches";
    if (centre && hits.length) centreOn(elements[hits[0]]);
  }
  search.addEventListener("input", function () { runSearch(false); });
  search.addEventListener("keydown", function (event) {
    if (event.key === "Enter") runSearch(true);
    if (event.key === "Escape") {
      search.value = "";
      runSearch(false);
    }
  });

  // ---- The side panel -----------------------------------------------------------------------
  var selected = null;

  function edgesOf(id) {
    return data.edges.filter(function (edge) { return edge.from === id || edge.to === id; });
  }

  function table(headers, rows) {
    var element = document.createElement("table");
    var head = document.createElement("tr");
    headers.forEach(function (header) { head.appendChild(text("th", header)); });
    element.appendChild(head);
    rows.forEach(function (cells) {
      var row = document.createElement("tr");
      cells.forEach(function (cell) {
        var td = document.createElement("td");
        if (cell instanceof Node) {
          td.appendChild(cell);
        } else if (cell && typeof cell === "object") {
          td.textContent = cell.text;
          if (cell.className) td.className = cell.className;
          if (cell.extra) td.appendChild(text("span", cell.extra, "pct"));
        } else {
          td.textContent = cell;
        }
        row.appendChild(td);
      });
      element.appendChild(row);
    });
    return element;
  }

  function facts(pairs) {
    var list = document.createElement("dl");
    pairs.forEach(function (pair) {
      list.appendChild(text("dt", pair[0]));
      var value = text("dd", pair[1]);
      if (pair[2]) value.id = pair[2];
      list.appendChild(value);
    });
    return list;
  }

  function computeUnitPanel(id, node) {
    var slrText = node.slr ? node.slr + (node.slrFrom === "memories" ? " (from its memories)"
        : node.slrFrom === "only SLR" ? " (the platform's only SLR)" : "") : "unplaced";
    panelBody.appendChild(facts([
      ["Kernel", node.kernel, "panel-kernel"],
      ["Base address", node.baseAddress || "-", "panel-base-address"],
      ["SLR", slrText, "panel-slr"]]));
    panelBody.appendChild(text("h3", "Clocks"));
    if (node.clocks.length === 0) {
      panelBody.appendChild(text("p", "No clock pins recorded."));
    } else {
      panelBody.appendChild(table(["Pin", "Requested", "Achieved", "Platform"],
        node.clocks.map(function (clock) {
          return [clock.pin, { text: mhz(clock.requested), className: "requested" },
                  { text: mhz(clock.achieved), className: "achieved" },
                  { text: mhz(clock.platform), className: "platform",
                    extra: clock.platformClock ? clock.platformClock : "" }];
        })));
    }
    panelBody.appendChild(text("h3", "Connections"));
    var list = document.createElement("ul");
    edgesOf(id).forEach(function (edge) {
      if (edge.kind === "instance") return;
      var item = document.createElement("li");
      if (edge.kind === "memory") {
        item.appendChild(document.createTextNode(edge.arguments.join(", ") + " \u2192 "));
        item.appendChild(link(edge.to));
        var memory = data.nodes[edge.to];
        if (memory) item.appendChild(document.createTextNode(" (" + memory.memoryType +
            (memory.slr ? ", " + memory.slr : "") + ")"));
      } else {
        var outgoing = edge.from === id;
        item.appendChild(document.createTextNode("stream " + edge.arguments.join(", ") +
            (outgoing ? " to " : " from ")));
        item.appendChild(link(outgoing ? edge.to : edge.from));
      }
      list.appendChild(item);
    });
    if (!list.firstChild) list.appendChild(text("li", "none recorded"));
    panelBody.appendChild(list);
    panelBody.appendChild(text("h3", "Resources" + (node.slr ? ", share of " + node.slr : "")));
    if (node.resources.length === 0) {
      panelBody.appendChild(text("p", "No design state has reported resources."));
      return;
    }
    var headers = ["State"].concat(node.resources[0].amounts.map(function (a) { return a.resource; }));
    panelBody.appendChild(table(headers, node.resources.map(function (state) {
      return [state.state].concat(state.amounts.map(function (amount) {
        return { text: amount.used || "-", extra: percent(amount.percent) };
      }));
    })));
  }

  function memoryPanel(id, node) {
    var pairs = [["Type", node.memoryType], ["SLR", node.slr || "-"]];
    if (node.kind === "memgroup") {
      pairs.push(["Banks", node.banks + " unused: " + node.tags.join(", ")]);
    } else {
      pairs.push(["Base address", node.baseAddress || "-"], ["In use", node.used ? "yes" : "no"]);
    }
    if (node.size) pairs.push(["Size", node.size]);
    panelBody.appendChild(facts(pairs));
    panelBody.appendChild(text("h3", "Compute units"));
    var list = document.createElement("ul");
    edgesOf(id).forEach(function (edge) {
      var item = document.createElement("li");
      item.appendChild(link(edge.from));
      item.appendChild(document.createTextNode(": " + edge.arguments.join(", ")));
      list.appendChild(item);
    });
    if (!list.firstChild) list.appendChild(text("li", "none"));
    panelBody.appendChild(list);
  }

  function kernelPanel(id, node) {
    panelBody.appendChild(facts(node.clocks.map(function (clock) {
      return [clock.pin, "compiled for " + mhz(clock.requested)];
    })));
    panelBody.appendChild(text("h3", "Compute units"));
    var list = document.createElement("ul");
    edgesOf(id).forEach(function (edge) {
      var item = document.createElement("li");
      item.appendChild(link(edge.to));
      list.appendChild(item);
    });
    if (!list.firstChild) list.appendChild(text("li", "none"));
    panelBody.appendChild(list);
  }

  var kinds = { cu: "Compute unit", mem: "Memory", memgroup: "Unused memory banks", kernel: "Kernel",
                note: "Note" };

  function select(id, centre) {
    var node = data.nodes[id];
    if (!node) return;
    if (selected && elements[selected]) elements[selected].classList.remove("selected");
    selected = id;
    if (elements[id]) elements[id].classList.add("selected");
    Array.prototype.forEach.call(svg.querySelectorAll("g.edge.near"), function (edge) {
      edge.classList.remove("near");
    });
    edgesOf(id).forEach(function (edge) {
      var element = document.getElementById(edge.id);
      if (element) element.classList.add("near");
    });
    svg.classList.add("focused");
    panelBody.textContent = "";
    panelBody.appendChild(text("h2", node.name));
    panelBody.appendChild(text("p", kinds[node.kind] || node.kind, "kind"));
    if (node.kind === "cu") computeUnitPanel(id, node);
    if (node.kind === "mem" || node.kind === "memgroup") memoryPanel(id, node);
    if (node.kind === "kernel") kernelPanel(id, node);
    panel.hidden = false;
    updateSide();
    if (centre && elements[id]) centreOn(elements[id]);
  }

  function closePanel() {
    panel.hidden = true;
    updateSide();
    if (selected && elements[selected]) elements[selected].classList.remove("selected");
    selected = null;
    svg.classList.remove("focused");
  }
  document.getElementById("panel-close").addEventListener("click", closePanel);
  document.addEventListener("keydown", function (event) {
    if (event.target === search) return;
    if (event.key === "Escape") closePanel();
    if (event.key === "+" || event.key === "=") zoom(1.5);
    if (event.key === "-") zoom(1 / 1.5);
    if (event.key === "0") fit();
  });
  svg.addEventListener("click", function () { if (!drag) closePanel(); });

  start();
})();
